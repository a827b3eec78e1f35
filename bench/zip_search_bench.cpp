// The city search as typed over 42,000 places: "SPRINGFIELD" typed one character at a time, each
// keystroke one search of the 12 rows the panel shows, with the selection of the first row that
// begins with the typed text. Its floor is the bare query: the same translated statement read
// through a plain Qt SQL loop on the same engine. The figure to read is the ratio of the two
// per-keystroke times. PostgreSQL runs when ORVO_TEST_PG names a server.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "bench/gen/bench_support.h"
#include "bench/gen/zip_gen.h"
#include "host/host_gic.h"
#include "platform/schema/schema.h"
#include "tools/tools_tables.h"
#include "tools/zip_code.h"

namespace {

using namespace orvo;

constexpr int kRows = 42000;
constexpr int kVisibleRows = 12;
const QString kTyped = QStringLiteral("SPRINGFIELD");

struct Fixture {
    QTemporaryDir dir;
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    const db::ConnectionOptions options =
        bench::BenchDatabase(engine, f->dir, QStringLiteral("zipbench"));
    f->session.connection = db::Connection::Open(options);
    schema::Catalog catalog;
    tools::DeclareToolsTables(catalog);
    schema::Apply(*f->session.connection, catalog);
    bench::GenerateZipCodes(*f->session.connection, kRows);
    if (engine == db::Engine::Postgres)
        f->session.connection->Execute(QStringLiteral("ANALYZE ZipCodTable"));
    f->gic = std::make_unique<host::HostGIC>(f->session);
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

void CountKeystrokes(benchmark::State& state) {
    const auto keystrokes = static_cast<double>(state.iterations() * kTyped.size());
    state.SetItemsProcessed(static_cast<int64_t>(keystrokes));
    state.counters["per_keystroke"] =
        benchmark::Counter(keystrokes, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BareQuery(benchmark::State& state, db::Engine engine) {
    Fixture* f = fixtures.For(state, engine);
    if (!f)
        return;
    db::Connection& connection = *f->session.connection;
    QStringList statements;
    for (int typed = 1; typed <= kTyped.size(); ++typed) {
        statements << connection.Translate(tools::ZipSearchStatement(
            *f->gic, tools::ZipMode::City, kTyped.left(typed), kVisibleRows));
    }
    for (auto _ : state) {
        qint64 sum = 0;
        for (const QString& sql : statements) {
            QSqlQuery q(connection.database());
            q.setForwardOnly(true);
            q.exec(sql);
            while (q.next()) {
                sum += q.value(0).toLongLong() + q.value(1).toString().size() +
                       q.value(2).toString().size() + q.value(3).toString().size();
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    CountKeystrokes(state);
}

void SearchAsTyped(benchmark::State& state, db::Engine engine) {
    Fixture* f = fixtures.For(state, engine);
    if (!f)
        return;
    int selected = 0;
    for (auto _ : state) {
        for (int typed = 1; typed <= kTyped.size(); ++typed) {
            const tools::ZipSearchResult result =
                tools::SearchZip(*f->gic, tools::ZipMode::City, kTyped.left(typed), kVisibleRows);
            selected += result.selected;
        }
        benchmark::DoNotOptimize(selected);
    }
    CountKeystrokes(state);
}

BENCHMARK_CAPTURE(BareQuery, Sqlite, db::Engine::Sqlite)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(SearchAsTyped, Sqlite, db::Engine::Sqlite)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(BareQuery, Postgres, db::Engine::Postgres)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(SearchAsTyped, Postgres, db::Engine::Postgres)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    return orvo::bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
