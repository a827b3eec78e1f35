#pragma once

#include "platform/db/connection.h"
#include "platform/db/database_error.h"

namespace orvo::test {

// Fails the statement numbered `failAt` (from 1) of what runs on the connection while it is in
// force; counts every statement sent.
class StatementFault {
public:
    StatementFault(db::Connection& connection, int failAt)
        : connection_(connection), failAt_(failAt) {
        connection_.SetStatementHook([this](const QString& statement) {
            if (++sent_ == failAt_)
                throw db::DatabaseError(QStringLiteral("injected failure"), statement);
        });
    }
    ~StatementFault() { connection_.SetStatementHook({}); }
    StatementFault(const StatementFault&) = delete;
    StatementFault& operator=(const StatementFault&) = delete;
    int sent() const { return sent_; }

private:
    db::Connection& connection_;
    int failAt_;
    int sent_ = 0;
};

}  // namespace orvo::test
