// Stations that start together on a practice that is not there yet: each is a process of its
// own, as on a real practice. The first creates the tables and the first login, the others wait
// their turn and find them; none fails and nothing is made twice.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>

#include "platform/db/recordset.h"
#include "platform/schema/schema.h"
#include "tests/support/test_database.h"

namespace orvo {
namespace {

using db::Engine;
using schema::Flag;
using schema::Identity;
using schema::Long;
using schema::Text;

const char* const kChildDatabase = "ORVO_RACE_DATABASE";  // where a started station opens

schema::Catalog StationCatalog() {
    schema::Catalog catalog;
    for (int t = 0; t < 12; ++t) {
        const QString name = QStringLiteral("Race%1Table").arg(t);
        catalog.Add({name,
                     {Identity(name + "ID"), Text(name + "Nam", 40), Long(name + "Ref"),
                      Flag(name + "Fla")},
                     {{name + "Nam"}}});
    }
    catalog.AddUpgrade({2, QStringLiteral("first login"), [](db::Connection& c) {
                            c.Execute("INSERT INTO Race0Table (Race0TableNam) VALUES ('upgraded')");
                        }});
    return catalog;
}

// What one station does at start: open the practice, create or upgrade it, make sure the first
// login exists, and write a row of its own.
void StartStation(const db::ConnectionOptions& options) {
    auto connection = db::Connection::Open(options);
    schema::Apply(*connection, StationCatalog(), [](db::Connection& c) {
        if (db::ReadScalar(c, "SELECT count(*) FROM Race1Table WHERE Race1TableNam='SUPERVISOR'")
                .toInt() == 0) {
            c.Execute("INSERT INTO Race1Table (Race1TableNam) VALUES ('SUPERVISOR')");
        }
    });
    connection->Execute("INSERT INTO Race2Table (Race2TableNam) VALUES ('station')");
}

// Runs in a started process only: the station above, on the database the parent names.
TEST(PracticeRaceStation, Start) {
    const QStringList parts = qEnvironmentVariable(kChildDatabase).split(u'\x1f');
    if (parts.size() != 4)
        GTEST_SKIP() << "started by PracticeRace only";
    db::ConnectionOptions options;
    options.engine = parts[0] == "pg" ? Engine::Postgres : Engine::Sqlite;
    options.sqliteFile = parts[1];
    options.pgConnInfo = parts[2];
    options.pgSchema = parts[3];
    StartStation(options);
}

class PracticeRace : public testing::TestWithParam<Engine> {};

TEST_P(PracticeRace, StationsStartingTogetherOnANewPracticeAllSucceed) {
    ORVO_SKIP_WITHOUT_ENGINE(GetParam());
    // The database exists (a fresh file name, an empty schema) but holds nothing yet.
    test::TestDatabase database(GetParam());
    db::ConnectionOptions options = database.options();
    const bool pg = GetParam() == Engine::Postgres;
    if (!pg)  // not even the file: the first station makes it
        options.sqliteFile = database.folder() + "/race.db";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kChildDatabase, QStringList{pg ? "pg" : "sqlite", options.sqliteFile,
                                                   options.pgConnInfo, options.pgSchema}
                                           .join(u'\x1f'));
    constexpr int kStations = 4;
    std::vector<std::unique_ptr<QProcess>> stations;
    for (int i = 0; i < kStations; ++i) {
        auto station = std::make_unique<QProcess>();
        station->setProcessEnvironment(environment);
        station->setProcessChannelMode(QProcess::MergedChannels);
        station->start(QCoreApplication::applicationFilePath(),
                       {"--gtest_filter=PracticeRaceStation.Start"});
        stations.push_back(std::move(station));
    }
    for (auto& station : stations) {
        ASSERT_TRUE(station->waitForFinished(120000));
        const QString output = QString::fromUtf8(station->readAll());
        EXPECT_EQ(station->exitCode(), 0) << output.toStdString();
        EXPECT_FALSE(output.contains("SKIPPED")) << output.toStdString();
    }
    auto connection = db::Connection::Open(options);
    const auto count = [&](const QString& sql) { return db::ReadScalar(*connection, sql).toInt(); };
    EXPECT_EQ(count("SELECT count(*) FROM Race1Table WHERE Race1TableNam='SUPERVISOR'"), 1);
    EXPECT_EQ(count("SELECT count(*) FROM Race0Table WHERE Race0TableNam='upgraded'"), 1);
    EXPECT_EQ(count("SELECT count(*) FROM Race2Table"), kStations);
    EXPECT_EQ(schema::StoredVersion(*connection), 2);
}

INSTANTIATE_TEST_SUITE_P(Engines, PracticeRace, testing::ValuesIn(test::AllEngines()),
                         test::EngineParamName());

}  // namespace
}  // namespace orvo
