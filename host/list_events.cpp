#include "host/list_events.h"

#include "host/log_file.h"

namespace orvo::host {

void HostListEvents::Record(const QString& line) {
    qCInfo(lcHost).noquote() << "list event:" << QString(line).replace(QChar(10), "\\n");
    received_ << line;
    if (observer)
        observer(line);
}

void HostListEvents::SwapModuleCalled(QString& Whereto, QString& Designation_String) {
    Record(QStringLiteral("SwapModuleCalled %1 %2").arg(Whereto, Designation_String));
}

void HostListEvents::ButtonClicked(QString& ButtonKey, int& CurrentID) {
    Record(QStringLiteral("ButtonClicked %1 %2").arg(ButtonKey).arg(CurrentID));
}

void HostListEvents::BeforePrint(bool& bCancel) {
    bCancel = cancelPrint;
    Record(QStringLiteral("BeforePrint"));
}

void HostListEvents::AfterPrint() {
    Record(QStringLiteral("AfterPrint"));
}

// Asked between the steps of a long command; the host has nothing queued to handle. Logged,
// not kept: how often it comes is no part of what a command did.
void HostListEvents::CheckEvent(bool& bHandled) {
    qCDebug(lcHost) << "list event: CheckEvent";
}

QStringList HostListEvents::Take() {
    QStringList taken;
    taken.swap(received_);
    return taken;
}

}  // namespace orvo::host
