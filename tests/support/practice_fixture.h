#pragma once

#include <gtest/gtest.h>

#include <QDate>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <type_traits>

#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "platform/schema/schema.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"

namespace orvo::test {

// A practice of its own for each test: a data folder, a session logged in as JDOE at office
// location 1 on station FRONT1 working on 03-15-2024, the host object over it (the reference
// host, or the test's own from MakeHost), and scripted prompts in force. A prompt the script
// did not expect fails the test, and so does an expected prompt that never came. A test changes
// the session's identity and date after SetUp as it needs; the host reads them when asked.
//
// PracticeTest runs once per engine, with a fresh database holding the host's tables and those
// the test adds (DeclareTables); FolderPracticeTest is the practice without a database, for what
// keeps only files (record and table locks).
template <class Base>
class BasicPracticeTest : public Base {
protected:
    static constexpr bool kWithDatabase =
        std::is_base_of_v<testing::WithParamInterface<db::Engine>, Base>;

    void SetUp() override {
        if constexpr (kWithDatabase) {
            ORVO_SKIP_WITHOUT_ENGINE(this->GetParam());
            database_ = std::make_unique<TestDatabase>(this->GetParam());
            schema::Catalog catalog;
            host::DeclareHostTables(catalog);
            DeclareTables(catalog);
            schema::Apply(database_->connection(), catalog);
            session_.connection = database_->Connect();
            session_.dataPath = database_->folder() + QLatin1Char('/');
        } else {
            folder_ = std::make_unique<QTemporaryDir>();
            ASSERT_TRUE(folder_->isValid());
            session_.dataPath = folder_->path() + QLatin1Char('/');
        }
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.computerName = QStringLiteral("FRONT1");
        session_.officeLocationId = 1;
        session_.today = QDate(2024, 3, 15);
        gic_ = MakeHost(session_);
        scope_ = std::make_unique<PromptsScope>(prompts_);
    }
    void TearDown() override {
        if (scope_) {
            EXPECT_EQ(prompts_.pending(), 0) << "expected prompts never came";
        }
        scope_.reset();
    }

    // The tables of the subsystem under test, besides the host's own.
    virtual void DeclareTables(schema::Catalog&) {}
    // The host object over the session; a test that needs to see or steer what the host is
    // asked gives its own.
    virtual std::unique_ptr<host::HostGIC> MakeHost(host::HostSession& session) {
        return std::make_unique<host::HostGIC>(session);
    }

    db::Connection& connection() { return *session_.connection; }
    host::HostGIC& gic() { return *gic_; }
    // The data folder, ending with '/'.
    const QString& dataPath() const { return session_.dataPath; }

    std::unique_ptr<TestDatabase> database_;
    std::unique_ptr<QTemporaryDir> folder_;
    host::HostSession session_;
    std::unique_ptr<host::HostGIC> gic_;
    ScriptedPrompts prompts_;
    std::unique_ptr<PromptsScope> scope_;
};

class PracticeTest : public BasicPracticeTest<testing::TestWithParam<db::Engine>> {};
class FolderPracticeTest : public BasicPracticeTest<testing::Test> {};

}  // namespace orvo::test
