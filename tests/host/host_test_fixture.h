#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <deque>
#include <memory>
#include <optional>

#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "platform/prompts.h"
#include "platform/schema/schema.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"

namespace orvo::host::test {

// A session over a fresh database holding the host's tables, logged in as JDOE at office
// location 1 on station FRONT1, working on 03-15-2024.
class HostDatabaseTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        session_.connection = database_->Connect();
        schema::Catalog catalog;
        DeclareHostTables(catalog);
        schema::Apply(*session_.connection, catalog);
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.officeLocationId = 1;
        session_.today = QDate(2024, 3, 15);
        gic_ = std::make_unique<HostGIC>(session_);
        SetPrompts(&prompts_);
    }
    void TearDown() override { SetPrompts(nullptr); }

    db::Connection& connection() { return *session_.connection; }
    HostGIC& gic() { return *gic_; }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    HostSession session_;
    orvo::test::ScriptedPrompts prompts_;
    std::unique_ptr<HostGIC> gic_;
};

}  // namespace orvo::host::test
