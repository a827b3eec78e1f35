#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "platform/db/recordset.h"
#include "platform/schema/schema.h"
#include "reminders/reminder_tables.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"

namespace orvo::reminders::test {

// A practice with the host's and the reminder tables, at office location 1, over the reference
// host, on both engines.
class ReminderDatabaseTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        session_.connection = database_->Connect();
        schema::Catalog catalog;
        host::DeclareHostTables(catalog);
        DeclareReminderTables(catalog);
        schema::Apply(*session_.connection, catalog);
        session_.dataPath = database_->folder() + QLatin1Char('/');
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.officeLocationId = 1;
        gic_ = std::make_unique<host::HostGIC>(session_);
        SetPrompts(&prompts_);
    }
    void TearDown() override { SetPrompts(nullptr); }

    db::Connection& main() { return *session_.connection; }
    host::HostGIC& gic() { return *gic_; }

    int AddRecall(const QString& title, int office = 1) {
        return static_cast<int>(main().InsertWithIdentity(
            QStringLiteral("Insert into RSTable (RCTtl, OffLocID) values ('%1', %2)")
                .arg(title)
                .arg(office)));
    }
    qint64 Count(const QString& sql) { return db::ReadScalar(main(), sql).toLongLong(); }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    host::HostSession session_;
    orvo::test::ScriptedPrompts prompts_;
    std::unique_ptr<host::HostGIC> gic_;
};

}  // namespace orvo::reminders::test
