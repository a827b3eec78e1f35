#pragma once

#include <gtest/gtest.h>

#include <QDate>
#include <QString>
#include <memory>

#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "platform/schema/schema.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"

namespace orvo::test {

// A practice of its own for each test, once per engine: a fresh database with the host's tables
// and those the test adds (DeclareTables), a data folder, a session logged in as JDOE at office
// location 1 on station FRONT1 working on 03-15-2024, the reference host object over it, and
// scripted prompts in force. A prompt the script did not expect fails the test, and so does an
// expected prompt that never came.
class PracticeTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<TestDatabase>(GetParam());
        schema::Catalog catalog;
        host::DeclareHostTables(catalog);
        DeclareTables(catalog);
        schema::Apply(database_->connection(), catalog);
        session_.connection = database_->Connect();
        session_.dataPath = database_->folder() + QLatin1Char('/');
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.computerName = QStringLiteral("FRONT1");
        session_.officeLocationId = 1;
        session_.today = QDate(2024, 3, 15);
        gic_ = std::make_unique<host::HostGIC>(session_);
        scope_ = std::make_unique<PromptsScope>(prompts_);
    }
    void TearDown() override {
        if (database_) {
            EXPECT_EQ(prompts_.pending(), 0) << "expected prompts never came";
        }
        scope_.reset();
    }

    // The tables of the subsystem under test, besides the host's own.
    virtual void DeclareTables(schema::Catalog&) {}

    db::Connection& connection() { return *session_.connection; }
    host::HostGIC& gic() { return *gic_; }

    std::unique_ptr<TestDatabase> database_;
    host::HostSession session_;
    std::unique_ptr<host::HostGIC> gic_;
    ScriptedPrompts prompts_;
    std::unique_ptr<PromptsScope> scope_;
};

}  // namespace orvo::test
