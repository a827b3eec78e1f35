#include "host/reminder_host.h"

#include "platform/db/recordset.h"

namespace orvo::host {

db::Connection& ReminderHost::SecondConnection() {
    // The reminder tables live in the practice database itself; a connection of their own keeps
    // the eReminder reads and writes apart from the session's, as the suite has always had it.
    // The main tables' three-part names resolve in it through the translation.
    if (!second_)
        second_ = db::Connection::Open(connection_().options());
    return *second_;
}

void ReminderHost::EnsureStoredProcedure(const QString& name, const QString& body,
                                         const QString& parameters) {
    SecondConnection().EnsureProcedure(name, body, parameters);
}

int ReminderHost::LinkType(int reminderType, bool linkedToMaster) {
    return reminderType == 1 && !linkedToMaster ? kLinkRecall : kLinkMaster;
}

int ReminderHost::RecallContactMethod(int recallEntryId) {
    return static_cast<int>(
        db::ReadScalar(
            connection_(),
            QStringLiteral("Select rConMet from RecTable where rRecNum=%1").arg(recallEntryId))
            .toLongLong());
}

int ReminderHost::RecallStage(int recallEntryId) {
    return static_cast<int>(
        db::ReadScalar(
            connection_(),
            QStringLiteral("Select rStage from RecTable where rRecNum=%1").arg(recallEntryId))
            .toLongLong());
}

}  // namespace orvo::host
