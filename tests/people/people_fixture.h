#pragma once

#include <gtest/gtest.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include "host/host_gic.h"
#include "host/host_persons.h"
#include "host/host_tables.h"
#include "people/people_tables.h"
#include "platform/db/recordset.h"
#include "platform/schema/schema.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/test_database.h"

namespace orvo::people::test {

// The reference host, with a record of the calls the person operations make to it.
class RecordingHost : public host::HostGIC {
public:
    using HostGIC::HostGIC;
    void NotifyPersonChanged(int personId) override {
        calls << QStringLiteral("notify %1").arg(personId);
        HostGIC::NotifyPersonChanged(personId);
    }
    void SetPatientStatus(int personId, const QString& status) override {
        calls << QStringLiteral("status %1 %2").arg(personId).arg(status);
        HostGIC::SetPatientStatus(personId, status);
    }
    void PersonRoleAdded(int personId, int extraId) override {
        calls << QStringLiteral("role-added %1 %2").arg(personId).arg(extraId);
        HostGIC::PersonRoleAdded(personId, extraId);
    }
    void RestorePersonRecalls(int personId) override {
        calls << QStringLiteral("recalls %1").arg(personId);
        HostGIC::RestorePersonRecalls(personId);
    }
    QStringList calls;
};

// A fresh practice with the host's and the people tables, on each engine.
class PeopleTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        session_.connection = database_->Connect();
        if (CreateTables()) {
            schema::Catalog catalog;
            host::DeclareHostTables(catalog);
            DeclarePeopleTables(catalog);
            schema::Apply(*session_.connection, catalog);
        }
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.today = QDate(2024, 3, 15);
        host_ = std::make_unique<RecordingHost>(session_);
        scope_ = std::make_unique<orvo::test::PromptsScope>(prompts_);
    }
    void TearDown() override {
        if (database_)
            EXPECT_EQ(prompts_.pending(), 0) << "expected prompts never came";
    }
    virtual bool CreateTables() { return true; }

    db::Connection& Db() { return *session_.connection; }
    RecordingHost& Host() { return *host_; }

    // Adds a person with the given columns; answers the new pID.
    int AddPerson(const QStringList& columns, const QStringList& literals) {
        return static_cast<int>(Db().InsertWithIdentity(
            QStringLiteral("INSERT INTO PATable (%1) VALUES (%2)")
                .arg(columns.join(QStringLiteral(", ")), literals.join(QStringLiteral(", ")))));
    }
    QString Column(int pID, const QString& column) {
        db::Recordset rs(
            Db(), QStringLiteral("SELECT %1 FROM PATable WHERE pID=%2").arg(column).arg(pID));
        return rs.IsEmpty() ? QStringLiteral("<no row>") : rs.Text(0);
    }
    // Every column of the row as text, for comparing a row before and after.
    QStringList Row(int pID) {
        db::Recordset rs(Db(), QStringLiteral("SELECT * FROM PATable WHERE pID=%1").arg(pID));
        QStringList out;
        for (int i = 0; i < rs.FieldCount(); ++i)
            out << rs.FieldName(i).toLower() + QLatin1Char('=') + rs.Text(i);
        return out;
    }
    void Setting(const QString& key, const QVariant& value) {
        Host().WriteSetting(host::kOfficeSection, key, 0, value);
    }
    // Runs DDL on the engine directly (trigger bodies are no suite SQL).
    void RawExec(const QString& sql) {
        QSqlQuery query(Db().database());
        ASSERT_TRUE(query.exec(sql)) << query.lastError().text().toStdString();
    }
    // A trigger on PATable updates: "fail" makes every UPDATE raise, "log" writes the new role
    // columns of each updated row to UpdLog, one row per statement and row.
    void InstallUpdateTrigger(const QString& mode) {
        const bool fail = mode == QLatin1String("fail");
        if (!fail)
            RawExec(QStringLiteral("CREATE TABLE UpdLog (doc TEXT, emp TEXT)"));
        if (GetParam() == db::Engine::Sqlite) {
            RawExec(fail ? QStringLiteral("CREATE TRIGGER pa_upd BEFORE UPDATE ON PATable BEGIN "
                                          "SELECT RAISE(ABORT, 'role change refused'); END")
                         : QStringLiteral("CREATE TRIGGER pa_upd AFTER UPDATE ON PATable BEGIN "
                                          "INSERT INTO UpdLog VALUES (new.pTypDoc, new.pTypEmp); "
                                          "END"));
            return;
        }
        RawExec(fail ? QStringLiteral("CREATE FUNCTION pa_upd() RETURNS trigger AS $$ BEGIN "
                                      "RAISE EXCEPTION 'role change refused'; END $$ LANGUAGE "
                                      "plpgsql")
                     : QStringLiteral("CREATE FUNCTION pa_upd() RETURNS trigger AS $$ BEGIN "
                                      "INSERT INTO UpdLog VALUES (NEW.pTypDoc, NEW.pTypEmp); "
                                      "RETURN NEW; END $$ LANGUAGE plpgsql"));
        RawExec(QStringLiteral("CREATE TRIGGER pa_upd %1 UPDATE ON PATable FOR EACH ROW EXECUTE "
                               "FUNCTION pa_upd()")
                    .arg(fail ? QStringLiteral("BEFORE") : QStringLiteral("AFTER")));
    }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    host::HostSession session_;
    orvo::test::ScriptedPrompts prompts_;
    std::unique_ptr<orvo::test::PromptsScope> scope_;
    std::unique_ptr<RecordingHost> host_;
};

}  // namespace orvo::people::test
