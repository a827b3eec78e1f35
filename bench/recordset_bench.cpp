// Reading rows through Recordset against the bare Qt SQL loop on the same engine and table.
// The figure to read is the ratio of the two times. PostgreSQL runs when ORVO_TEST_PG names a
// server. Rows: 20,000 carriers.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "bench/gen/bench_support.h"
#include "platform/db/recordset.h"
#include "platform/schema/schema.h"

namespace {

using namespace orvo;

constexpr int kRows = 20000;

struct Fixture {
    QTemporaryDir dir;
    std::shared_ptr<db::Connection> connection;
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    const db::ConnectionOptions options =
        bench::BenchDatabase(engine, f->dir, QStringLiteral("recordset_bench"));
    f->connection = db::Connection::Open(options);
    schema::Catalog catalog;
    catalog.Add({"InsCoTable",
                 {{"InsCoInd", schema::ColumnType::Long, 0, true, true, {}},
                  {"InsCoNam", schema::ColumnType::Text, 50},
                  {"InsCoCit", schema::ColumnType::Text, 30},
                  {"InsCoZip", schema::ColumnType::Text, 10}},
                 {}});
    schema::Apply(*f->connection, catalog);
    db::Transaction t(*f->connection);
    for (int i = 0; i < kRows; ++i) {
        f->connection->Execute(
            QStringLiteral("INSERT INTO InsCoTable (InsCoNam, InsCoCit, InsCoZip) "
                           "VALUES ('Carrier %1', 'City %2', '%3')")
                .arg(i)
                .arg(i % 97)
                .arg(10000 + i));
    }
    t.Commit();
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

const QString kSelect =
    QStringLiteral("SELECT InsCoInd, InsCoNam, InsCoCit, InsCoZip FROM InsCoTable");

void BareQtLoop(benchmark::State& state, db::Engine engine) {
    Fixture* f = fixtures.For(state, engine);
    if (!f)
        return;
    auto& connection = *f->connection;
    const QString sql = connection.Translate(kSelect);
    for (auto _ : state) {
        QSqlQuery q(connection.database());
        q.setForwardOnly(true);
        q.exec(sql);
        qint64 sum = 0;
        while (q.next()) {
            sum += q.value(0).toLongLong() + q.value(1).toString().size() +
                   q.value(2).toString().size() + q.value(3).toString().size();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void RecordsetByIndex(benchmark::State& state, db::Engine engine) {
    Fixture* f = fixtures.For(state, engine);
    if (!f)
        return;
    auto& connection = *f->connection;
    for (auto _ : state) {
        qint64 sum = 0;
        for (db::Recordset rs(connection, kSelect); !rs.Eof(); rs.MoveNext()) {
            sum += rs.Long(0) + rs.Text(1).size() + rs.Text(2).size() + rs.Text(3).size();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void RecordsetByName(benchmark::State& state, db::Engine engine) {
    Fixture* f = fixtures.For(state, engine);
    if (!f)
        return;
    auto& connection = *f->connection;
    for (auto _ : state) {
        qint64 sum = 0;
        for (db::Recordset rs(connection, kSelect); !rs.Eof(); rs.MoveNext()) {
            sum += rs.Long("InsCoInd") + rs.Text("InsCoNam").size() + rs.Text("InsCoCit").size() +
                   rs.Text("InsCoZip").size();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK_CAPTURE(BareQtLoop, Sqlite, db::Engine::Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RecordsetByIndex, Sqlite, db::Engine::Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RecordsetByName, Sqlite, db::Engine::Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BareQtLoop, Postgres, db::Engine::Postgres)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RecordsetByIndex, Postgres, db::Engine::Postgres)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RecordsetByName, Postgres, db::Engine::Postgres)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return orvo::bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
