#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <memory>

#include "host/host_gic.h"
#include "host/host_tables.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/schema/schema.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"
#include "tools/tools_tables.h"
#include "tools/zip_code.h"

namespace orvo::tools::test {

inline const QString kZipTitle = QStringLiteral("City State, Zip Code");
inline const QString kUpdateTitle = QStringLiteral("City, State, and Zipcode");
inline const QString kUpdateQuestion = QStringLiteral("Update City, State, and Zipcode?");

// A practice database with the host's tables (for the settings) and the city, state and zip
// list, the reference host over it, and scripted prompts that every test must use up.
class ZipDatabaseTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        schema::Catalog catalog;
        host::DeclareHostTables(catalog);
        DeclareToolsTables(catalog);
        schema::Apply(database_->connection(), catalog);
        session_.connection = database_->Connect();
        session_.dataPath = database_->folder() + QLatin1Char('/');
        session_.loginName = QStringLiteral("SUPERVISOR");
        gic_ = std::make_unique<host::HostGIC>(session_);
        scope_ = std::make_unique<orvo::test::PromptsScope>(prompts_);
    }
    void TearDown() override {
        if (database_) {
            EXPECT_EQ(prompts_.pending(), 0) << "expected prompts never came";
        }
    }

    GIC& gic() { return *gic_; }
    db::Connection& Db() { return *session_.connection; }

    void SetNonUsZip(bool on) {
        gic_->WriteSetting(QStringLiteral("DEFAULT_OFFICE_SETUP"),
                           QStringLiteral("NON_US_ZIP_CODE"), 0, on);
    }
    // An empty part is stored as NULL, as rows of older lists may hold.
    int AddRow(const QString& city, const QString& state, const QString& zip) {
        const auto literal = [this](const QString& v) { return db::TextOrNull(v); };
        return static_cast<int>(Db().InsertWithIdentity(
            "INSERT INTO ZipCodTable (ZipCodCit, ZipCodSta, ZipCodZip) VALUES (" + literal(city) +
            ", " + literal(state) + ", " + literal(zip) + ")"));
    }
    int RowCount() {
        return db::ReadScalar(Db(), QStringLiteral("SELECT count(*) FROM ZipCodTable")).toInt();
    }
    ZipParts Stored(int id) {
        const db::Recordset rs(
            Db(), QStringLiteral("SELECT * FROM ZipCodTable WHERE ZipCodID=%1").arg(id));
        if (rs.IsEmpty())
            return {QStringLiteral("<no row>"), {}, {}};
        return {rs.Text("ZipCodCit"), rs.Text("ZipCodSta"), rs.Text("ZipCodZip")};
    }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    host::HostSession session_;
    std::unique_ptr<host::HostGIC> gic_;
    orvo::test::ScriptedPrompts prompts_;
    std::unique_ptr<orvo::test::PromptsScope> scope_;
};

}  // namespace orvo::tools::test

namespace orvo::tools {
inline void PrintTo(const ZipParts& parts, std::ostream* os) {
    *os << '{' << parts.city.toStdString() << '|' << parts.state.toStdString() << '|'
        << parts.zip.toStdString() << '}';
}
}  // namespace orvo::tools
