#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "component/public/lookup_list.h"

namespace orvo::host {

// The host's handler of a list window's events: each event is written to the practice's log
// and kept as one line of text (its name and arguments, separated by blanks), and an observer,
// when set, hears of it (orvo-desk shows it in its status bar).
class HostListEvents : public LookUpListEvents {
public:
    void SwapModuleCalled(QString& Whereto, QString& Designation_String) override;
    void ButtonClicked(QString& ButtonKey, int& CurrentID) override;
    void BeforePrint(bool& bCancel) override;
    void AfterPrint() override;
    void CheckEvent(bool& bHandled) override;

    // The events received since the last Take, in order; Take empties the list.
    QStringList Take();
    const QStringList& received() const { return received_; }
    // Whether BeforePrint cancels the print.
    bool cancelPrint = false;
    std::function<void(const QString&)> observer;

private:
    void Record(const QString& line);
    QStringList received_;
};

}  // namespace orvo::host
