#pragma once

#include <gtest/gtest.h>

#include "platform/db/recordset.h"
#include "reminders/reminder_tables.h"
#include "tests/support/practice_fixture.h"

namespace orvo::reminders::test {

// A practice with the host's and the reminder tables, at office location 1, over the reference
// host, on both engines.
class ReminderDatabaseTest : public orvo::test::PracticeTest {
protected:
    void DeclareTables(schema::Catalog& catalog) override { DeclareReminderTables(catalog); }

    int AddRecall(const QString& title, int office = 1) {
        return static_cast<int>(connection().InsertWithIdentity(
            QStringLiteral("Insert into RSTable (RCTtl, OffLocID) values ('%1', %2)")
                .arg(title)
                .arg(office)));
    }
    qint64 Count(const QString& sql) { return db::ReadScalar(connection(), sql).toLongLong(); }
};

}  // namespace orvo::reminders::test
