#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <map>
#include <memory>
#include <vector>

#include "host/scenario/scenario.h"

namespace orvo {
class EditingScreen;
namespace host {
class ComponentLoader;
class HostGIC;
struct HostSession;
}  // namespace host
class ScriptedPrompts;
}  // namespace orvo

namespace orvo::scenario {

struct RunOptions {
    QString pgConnInfo;  // empty: the embedded engine
    QString stationId;
    bool keepData = false;  // leave the data folder behind, for a look after a failure
};

// Runs one scenario against a database and data folder of its own, as a person at a station
// would: start methods are called for real, and while their modal screens are up the following
// steps are carried out inside them, one screen level at a time.
class Runner : public QObject {
    Q_OBJECT
public:
    Runner(const RunOptions& options, host::ComponentLoader& component);
    ~Runner() override;

    // True when every step held; otherwise failure() says which line and why.
    bool Run(const Scenario& scenario);
    const QString& failure() const { return failure_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void RunSteps();
    void Do(const Step& step);
    void Call(const Step& step);
    void Fail(const QString& message);
    void CloseAllScreens();
    QDialog* ActiveScreen() const;
    QWidget* Control(const Step& step, int argIndex = 0) const;
    QString Expand(const QString& text) const;
    void OpenOnOtherStation(const Step& step);
    void CloseOtherStations();

    RunOptions options_;
    host::ComponentLoader& component_;
    std::unique_ptr<host::HostSession> session_;
    std::unique_ptr<host::HostGIC> gic_;
    std::unique_ptr<ScriptedPrompts> prompts_;
    std::unique_ptr<EditingScreen> editing_;
    const Scenario* scenario_ = nullptr;
    size_t pc_ = 0;
    std::vector<QPointer<QDialog>> screens_;
    QStringList lastArgs_;
    QString failure_;
    QString pgSchema_;
    // Other stations: orvo-desk processes on the same practice, each holding one screen open.
    std::map<QString, std::unique_ptr<QProcess>> stations_;
};

}  // namespace orvo::scenario
