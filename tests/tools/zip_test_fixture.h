#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <memory>

#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "tests/support/practice_fixture.h"
#include "tools/tools_tables.h"
#include "tools/zip_code.h"

namespace orvo::tools::test {

inline const QString kZipTitle = QStringLiteral("City State, Zip Code");
inline const QString kUpdateTitle = QStringLiteral("City, State, and Zipcode");
inline const QString kUpdateQuestion = QStringLiteral("Update City, State, and Zipcode?");

// A practice with the city, state and zip list, logged in as SUPERVISOR.
class ZipDatabaseTest : public orvo::test::PracticeTest {
protected:
    void SetUp() override {
        PracticeTest::SetUp();
        session_.loginName = QStringLiteral("SUPERVISOR");
    }
    void DeclareTables(schema::Catalog& catalog) override { DeclareToolsTables(catalog); }

    db::Connection& Db() { return connection(); }

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
};

}  // namespace orvo::tools::test

namespace orvo::tools {
inline void PrintTo(const ZipParts& parts, std::ostream* os) {
    *os << '{' << parts.city.toStdString() << '|' << parts.state.toStdString() << '|'
        << parts.zip.toStdString() << '}';
}
}  // namespace orvo::tools
