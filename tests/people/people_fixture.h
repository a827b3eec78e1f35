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
#include "tests/support/practice_fixture.h"

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

// The practice of tests/support with the people tables, on each engine, and the recording host.
class PeopleTest : public orvo::test::PracticeTest {
protected:
    void DeclareTables(schema::Catalog& catalog) override { DeclarePeopleTables(catalog); }
    std::unique_ptr<host::HostGIC> MakeHost(host::HostSession& session) override {
        return std::make_unique<RecordingHost>(session);
    }

    db::Connection& Db() { return connection(); }
    RecordingHost& Host() { return static_cast<RecordingHost&>(gic()); }

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
};

}  // namespace orvo::people::test
