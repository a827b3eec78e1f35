#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "platform/db/connection.h"

namespace orvo::test {

// The engines a database test runs on. Both are always listed, so every test shows up once per
// engine; a Postgres case skips itself when ORVO_TEST_PG names no server.
std::vector<db::Engine> AllEngines();
std::string EngineName(db::Engine engine);
// For INSTANTIATE_TEST_SUITE_P: names the cases .../Sqlite and .../Postgres.
struct EngineParamName {
    template <class ParamInfo>
    std::string operator()(const ParamInfo& info) const {
        return EngineName(info.param);
    }
};
bool PostgresAvailable();

// A database of its own for one test: a file in a temporary folder on SQLite, a fresh schema
// on PostgreSQL, dropped again when the object goes. Connect() opens further connections to the
// same database, as a second station would.
class TestDatabase {
public:
    explicit TestDatabase(db::Engine engine);
    ~TestDatabase();

    db::Engine engine() const { return options_.engine; }
    const db::ConnectionOptions& options() const { return options_; }
    std::shared_ptr<db::Connection> Connect() const;
    // The first connection, opened on construction.
    db::Connection& connection() { return *connection_; }
    // A folder that lives as long as the database, for data-folder files.
    QString folder() const { return dir_.path(); }

private:
    QTemporaryDir dir_;
    db::ConnectionOptions options_;
    std::shared_ptr<db::Connection> connection_;
};

}  // namespace orvo::test

// In a test fixture's SetUp: skips a Postgres case when no server was named.
#define ORVO_SKIP_WITHOUT_ENGINE(engine)                                                    \
    do {                                                                                    \
        if ((engine) == ::orvo::db::Engine::Postgres && !::orvo::test::PostgresAvailable()) \
            GTEST_SKIP() << "ORVO_TEST_PG is not set: no PostgreSQL server to use";         \
    } while (0)
