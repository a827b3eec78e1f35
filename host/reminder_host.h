#pragma once

#include <functional>
#include <memory>

#include "platform/db/connection.h"

namespace orvo::host {

// The host's side of the eReminder code: the second connection on which the reminder tables
// are read and written, the stored procedures made on it, the link codes of schedules and
// contact sequences, and what an entry of the recall list records.
class ReminderHost {
public:
    // The codes of the rows of a schedule or a contact sequence: rows that hang on a recall
    // (RCRecNum), and rows that hang on a reminder master (emmID).
    static constexpr int kLinkRecall = 1;
    static constexpr int kLinkMaster = 2;

    using ConnectionSource = std::function<db::Connection&()>;
    explicit ReminderHost(ConnectionSource connection) : connection_(std::move(connection)) {}

    // A second connection to the practice database, opened on first use.
    db::Connection& SecondConnection();
    void EnsureStoredProcedure(const QString& name, const QString& body, const QString& parameters);
    static int LinkType(int reminderType, bool linkedToMaster);
    // The contact method and the stage recorded on an entry of the recall list; 0 for an entry
    // that is not there.
    int RecallContactMethod(int recallEntryId);
    int RecallStage(int recallEntryId);

private:
    ConnectionSource connection_;
    std::shared_ptr<db::Connection> second_;
};

}  // namespace orvo::host
