// Translation of the statements the component sends, against a floor of one plain pass over the
// same text (upper-casing each statement), so the figure reads as a ratio on any machine.

#include <benchmark/benchmark.h>
#include <time.h>

#include "platform/db/translate_sql.h"
#include "tests/support/sql_corpus.h"

namespace {

using orvo::db::Engine;

// CPU time of this thread, so that other work on a busy machine stays out of the ratio.
double ThreadNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e9 + double(now.tv_nsec);
}

// One pass of the floor over the corpus, in nanoseconds: the best of several runs.
double FloorNanoseconds(const QStringList& corpus) {
    double best = 0;
    for (int run = 0; run < 50; ++run) {
        const double start = ThreadNanoseconds();
        for (const QString& sql : corpus)
            benchmark::DoNotOptimize(sql.toUpper());
        const double took = ThreadNanoseconds() - start;
        if (run == 0 || took < best)
            best = took;
    }
    return best;
}

void SetCorpusCounters(benchmark::State& state, const QStringList& corpus) {
    qint64 bytes = 0;
    for (const QString& sql : corpus)
        bytes += sql.size() * qint64(sizeof(QChar));
    state.SetItemsProcessed(state.iterations() * corpus.size());
    state.SetBytesProcessed(state.iterations() * bytes);
}

// x_floor: the time of one translation pass over the corpus over that of the floor.
void BM_TranslateCorpus(benchmark::State& state) {
    const Engine engine = static_cast<Engine>(state.range(0));
    const QStringList corpus = orvo::test::SqlCorpus();
    const double floor = FloorNanoseconds(corpus);
    const double start = ThreadNanoseconds();
    for (auto _ : state) {
        for (const QString& sql : corpus)
            benchmark::DoNotOptimize(orvo::db::TranslateSql(sql, engine));
    }
    const double took = ThreadNanoseconds() - start;
    SetCorpusCounters(state, corpus);
    state.counters["x_floor"] = took / double(state.iterations()) / floor;
}
BENCHMARK(BM_TranslateCorpus)
    ->ArgName("engine")
    ->Arg(int(Engine::Sqlite))
    ->Arg(int(Engine::Postgres));

void BM_UpperCaseCorpusFloor(benchmark::State& state) {
    const QStringList corpus = orvo::test::SqlCorpus();
    for (auto _ : state) {
        for (const QString& sql : corpus)
            benchmark::DoNotOptimize(sql.toUpper());
    }
    SetCorpusCounters(state, corpus);
}
BENCHMARK(BM_UpperCaseCorpusFloor);

}  // namespace

BENCHMARK_MAIN();
