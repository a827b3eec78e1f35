#include "host/scenario/scenario_database.h"

#include <QUuid>
#include <cstdio>

#include "platform/db/connection.h"
#include "platform/db/pg_search_path.h"

namespace orvo::scenario {
namespace {

std::shared_ptr<db::Connection> Admin(const QString& conninfo) {
    return db::Connection::Open({db::Engine::Postgres, {}, conninfo, {}});
}

QString UniqueName(const char* prefix) {
    return QLatin1String(prefix) + QUuid::createUuid().toString(QUuid::Id128).left(16);
}

}  // namespace

ScenarioDatabase::ScenarioDatabase(const QString& conninfo)
    : adminConnInfo_(conninfo), conninfo_(conninfo) {
    auto admin = Admin(conninfo);
    const QString ext = db::CitextSchema(*admin);
    if (!db::SchemaHoldsTables(*admin, ext)) {
        schema_ = UniqueName("scn_");
        admin->Execute(QStringLiteral("CREATE SCHEMA ") + db::QuoteIdentifier(schema_));
        return;
    }
    // Made from the empty template, so that nothing of the named database comes along.
    const QString name = UniqueName("orvo_scn_");
    try {
        admin->Execute(
            QStringLiteral("CREATE DATABASE %1 TEMPLATE template0").arg(db::QuoteIdentifier(name)));
    } catch (const db::DatabaseError& error) {
        throw std::runtime_error(
            QStringLiteral("citext is in the schema %1 together with tables, so a scenario needs a "
                           "database of its own, and none could be made: %2")
                .arg(ext, error.driverMessage())
                .toStdString());
    }
    database_ = name;
    conninfo_ = conninfo + QStringLiteral(" dbname=") + database_;
}

ScenarioDatabase::~ScenarioDatabase() {
    try {
        auto admin = Admin(adminConnInfo_);
        if (!schema_.isEmpty()) {
            admin->Execute(
                QStringLiteral("DROP SCHEMA %1 CASCADE").arg(db::QuoteIdentifier(schema_)));
        } else {
            admin->Execute(QStringLiteral("DROP DATABASE %1 WITH (FORCE)")
                               .arg(db::QuoteIdentifier(database_)));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvo-scenario: could not drop the scenario's %s %s: %s\n",
                     schema_.isEmpty() ? "database" : "schema",
                     qPrintable(schema_.isEmpty() ? database_ : schema_), error.what());
    }
}

}  // namespace orvo::scenario
