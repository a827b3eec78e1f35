#include "tests/support/test_database.h"

#include <QAtomicInteger>
#include <QCoreApplication>
#include <QUuid>

namespace orvo::test {

std::vector<db::Engine> AllEngines() {
    return {db::Engine::Sqlite, db::Engine::Postgres};
}

std::string EngineName(db::Engine engine) {
    return engine == db::Engine::Sqlite ? "Sqlite" : "Postgres";
}

bool PostgresAvailable() {
    return !qEnvironmentVariable("ORVO_TEST_PG").isEmpty();
}

TestDatabase::TestDatabase(db::Engine engine) {
    options_.engine = engine;
    if (engine == db::Engine::Sqlite) {
        options_.sqliteFile = dir_.filePath(QStringLiteral("practice.db"));
    } else {
        options_.pgConnInfo = qEnvironmentVariable("ORVO_TEST_PG");
        const QString schema =
            QStringLiteral("t_") + QUuid::createUuid().toString(QUuid::Id128).left(16);
        auto admin = db::Connection::Open(options_);
        try {
            admin->Execute(QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext"));
        } catch (const db::DatabaseError&) {
            // Another test made it at the same moment; it is there either way.
        }
        admin->Execute(QStringLiteral("CREATE SCHEMA ") + schema);
        options_.pgSchema = schema;
    }
    connection_ = db::Connection::Open(options_);
}

TestDatabase::~TestDatabase() {
    connection_.reset();
    if (options_.engine != db::Engine::Postgres)
        return;
    try {
        db::ConnectionOptions admin = options_;
        admin.pgSchema.clear();
        db::Connection::Open(admin)->Execute(
            QStringLiteral("DROP SCHEMA %1 CASCADE").arg(options_.pgSchema));
    } catch (const std::exception&) {
        // A schema left behind is dropped with the throwaway server.
    }
}

std::shared_ptr<db::Connection> TestDatabase::Connect() const {
    return db::Connection::Open(options_);
}

}  // namespace orvo::test
