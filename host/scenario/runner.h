#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

#include "host/list_events.h"
#include "host/scenario/scenario.h"
#include "platform/dialog_watcher.h"

namespace orvo {
class ScriptedPrompts;
namespace db {
class Connection;
}
namespace host {
class ComponentLoader;
class HostGIC;
struct HostSession;
class StartInstances;
}  // namespace host
}  // namespace orvo

namespace orvo::scenario {

struct RunOptions {
    QString pgConnInfo;  // empty: the embedded engine
    QString stationId;
    bool keepData = false;  // leave the data folder of a failed scenario behind
};

// A step that does not hold; the run goes on with the next scenario.
struct StepFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};
[[noreturn]] void Throw(const QString& message);

// Runs one scenario against a database and data folder of its own, as a person at a station
// would: start methods are called for real, and while their modal screens are up the following
// steps are carried out inside them, one screen level at a time. What each verb does is in the
// verb table (verbs.h); the runner gives the verbs the session and the screens.
class Runner : public QObject {
    Q_OBJECT
public:
    Runner(const RunOptions& options, host::ComponentLoader& component);
    ~Runner() override;

    // True when every step held; otherwise failure() says which line and why.
    bool Run(const Scenario& scenario);
    const QString& failure() const { return failure_; }

    // For the verbs.
    host::HostSession& session() { return *session_; }
    db::Connection& db();
    host::HostGIC& gic() { return *gic_; }
    ScriptedPrompts& prompts() { return *prompts_; }
    QStringList& lastArgs() { return lastArgs_; }
    // The events of the lists the scenario showed, as the host received them.
    host::HostListEvents& listEvents() { return listEvents_; }
    // The innermost screen that is up; throws when none is.
    QDialog* ActiveScreen() const;
    // The control the step names in its word argIndex, on the innermost screen.
    QWidget* Control(const Step& step, int argIndex = 0) const;
    // Calls a start method (host/start_methods.h); the steps that follow run inside the screen
    // it opens, and $arg1... are what it gave back.
    void Call(const Step& step);
    // "station NAME opens METHOD TEXT [as LOGIN]" and "station NAME closes".
    void Station(const Step& step);

private:
    // A modal screen that comes up and is not known yet becomes the innermost one.
    bool ClaimScreen(QDialog& dialog);
    void RunScenario(const QString& dataDir);
    void RunSteps();
    void Do(const Step& step);
    void Fail(const QString& message);
    void CloseAllScreens();
    QString Expand(const QString& text) const;
    void CloseOtherStations();

    RunOptions options_;
    host::ComponentLoader& component_;
    std::unique_ptr<host::HostSession> session_;
    std::unique_ptr<host::HostGIC> gic_;
    std::unique_ptr<ScriptedPrompts> prompts_;
    std::unique_ptr<host::StartInstances> instances_;
    const Scenario* scenario_ = nullptr;
    size_t pc_ = 0;
    std::vector<QPointer<QDialog>> screens_;
    QStringList lastArgs_;
    host::HostListEvents listEvents_;
    QString failure_;
    // Where the practice's database is on the server, for the other stations.
    QString pgConnInfo_;
    QString pgSchema_;
    // Other stations: orvo-desk processes on the same practice, each holding one screen open.
    std::map<QString, std::unique_ptr<QProcess>> stations_;
    DialogWatcher watcher_;
};

}  // namespace orvo::scenario
