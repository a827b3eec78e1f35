#pragma once

// What every benchmark program shares: a database of its own on either engine, the rule that
// PostgreSQL runs only when ORVO_TEST_PG names a server, and a main that keeps the application
// object alive for the whole run.

#include <benchmark/benchmark.h>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "platform/db/connection.h"

namespace orvo::bench {

// Where a benchmark's database lives: a file in dir on SQLite; on PostgreSQL a schema named
// prefix plus the process id, made afresh.
db::ConnectionOptions BenchDatabase(db::Engine engine, const QTemporaryDir& dir,
                                    const QString& prefix);

// Closes a benchmark's database and, on PostgreSQL, drops the schema BenchDatabase made for it.
void DropBenchDatabase(std::shared_ptr<db::Connection>& connection);

// The engine a benchmark's first argument names: 0 SQLite, 1 PostgreSQL.
db::Engine EngineArg(const benchmark::State& state);

// True (and the benchmark marked skipped) when the engine is PostgreSQL and no server is named.
bool SkipWithoutEngine(benchmark::State& state, db::Engine engine);

// One fixture per engine, made on first use and kept for the whole run; Clear drops them (in
// RunBenchmarks' beforeExit, while the application object still lives).
template <class Fixture>
class EngineFixtures {
public:
    using Make = std::unique_ptr<Fixture> (*)(db::Engine);
    explicit EngineFixtures(Make make) : make_(make) {}

    // The engine's fixture, or null (and the benchmark marked skipped) when the engine has no
    // server.
    Fixture* For(benchmark::State& state, db::Engine engine) {
        if (SkipWithoutEngine(state, engine))
            return nullptr;
        auto& f = fixtures_[engine == db::Engine::Sqlite ? 0 : 1];
        if (!f)
            f = make_(engine);
        return f.get();
    }
    // The fixture of the engine the benchmark's first argument names.
    Fixture* For(benchmark::State& state) { return For(state, EngineArg(state)); }
    void Clear() {
        for (auto& f : fixtures_)
            f.reset();
    }

private:
    Make make_;
    std::unique_ptr<Fixture> fixtures_[2];
};

// A measure and its floor run in turns, one round of each per iteration, so that whatever slows
// the machine for a while (a checkpoint's sync, another process, the server's upkeep) falls on
// both alike and their ratio holds from run to run. round(i) and floor(i) do the i-th round of
// each. The benchmark's time is the measure's (register it with UseManualTime); the counters
// give the floor's mean time per round ("floor_ms" or "floor_us", as unit says) and the ratio
// of the two totals ("ratio").
void RunPaired(benchmark::State& state, benchmark::TimeUnit unit,
               const std::function<void(size_t)>& round, const std::function<void(size_t)>& floor);

// Runs the registered benchmarks under an application object (offscreen unless told
// otherwise). beforeExit runs while the application still lives: fixtures that hold
// connections or widgets are dropped there.
int RunBenchmarks(int argc, char** argv, const std::function<void()>& beforeExit = {});

}  // namespace orvo::bench
