// The person search of find-or-add on a practice of 500,000 persons in families, on each engine:
// Find_Person for a family head by last name and the first letter of the first name (the
// search window and the offer answered by script, the first match taken) against its floor, the
// bare indexed query of the same statement run through a plain Qt SQL loop that reads the same
// columns by index. The figure to read is the pair's ratio. The practice is the one the person
// benchmarks keep (see KeptPersonPractice). PostgreSQL runs when ORVO_TEST_PG names a server.
#include <benchmark/benchmark.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <cstdio>

#include "bench/gen/bench_support.h"
#include "bench/gen/person_gen.h"
#include "host/host_gic.h"
#include "people/find_person.h"
#include "platform/db/recordset.h"
#include "platform/db/translate_sql.h"
#include "platform/scripted_prompts.h"

namespace {

using namespace orvo;

struct Search {
    QString typed;      // "Smith, J"
    QString statement;  // the search's own statement, in the engine's dialect
};

struct Fixture {
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
    std::vector<Search> searches;
    ScriptedPrompts prompts{[](const QString& message) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        std::abort();
    }};
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    f->session.connection =
        db::Connection::Open(bench::KeptPersonPractice(engine, bench::KeptPracticePersons()));
    f->session.loginName = QStringLiteral("BENCH");
    f->gic = std::make_unique<host::HostGIC>(f->session);
    // Heads spread over the table, each searched as a person would type them.
    db::Recordset heads(*f->session.connection,
                        QStringLiteral("SELECT pLASNAM, pFIRNAM FROM PATable WHERE pFAMHEAIND = "
                                       "pID AND pTypPat >= '1' AND pID % 997 = 0"));
    const people::PersonRole role = people::PersonRole::Of(QStringLiteral("PTYPPAT"));
    for (; !heads.Eof() && f->searches.size() < 64; heads.MoveNext()) {
        const QString typed = heads.Text(0) + QStringLiteral(", ") + heads.Text(1).left(1);
        const QString sql = QStringLiteral("Select * from Patable where ") +
                            people::PersonRoleCriteria(role) +
                            people::PersonNameCriteria(*f->gic, typed) +
                            QStringLiteral(" order by pLasNam, pFirNam");
        f->searches.push_back({typed, db::TranslateSql(sql, engine)});
    }
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

// The columns the search reads of each row.
const QStringList kRead = {"pID",     "pFIRNAM", "pLASNAM", "pTypPat", "OffLocID",
                           "pHOMPHO", "pBUSPHO", "pSSN",    "pADD1",   "pADD2",
                           "pCIT",    "pSTA",    "pZIP"};

void BareFind(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    size_t i = 0;
    qint64 rows = 0;
    for (auto _ : state) {
        QSqlQuery query(f->session.connection->database());
        query.setForwardOnly(true);
        const QString& sql = f->searches[i++ % f->searches.size()].statement;
        if (!query.exec(sql))
            throw db::DatabaseError(query.lastError().text(), sql);
        const QSqlRecord record = query.record();
        std::vector<int> columns;
        for (const QString& name : kRead)
            columns.push_back(record.indexOf(name));
        while (query.next()) {
            for (const int c : columns)
                benchmark::DoNotOptimize(query.value(c).toString());
            ++rows;
        }
    }
    state.counters["rows/search"] = double(rows) / double(state.iterations());
}

void FindPerson(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    PromptsScope scope(f->prompts);
    size_t i = 0;
    for (auto _ : state) {
        const Search& search = f->searches[i++ % f->searches.size()];
        f->prompts.ExpectInput(QStringLiteral("Search Window"), QString(), search.typed);
        f->prompts.ExpectContaining(QStringLiteral("Database Search"),
                                    QStringLiteral("Add as this patient's Family Head?"),
                                    AnswerYes);
        const people::FoundPerson found =
            people::Find_Person(*f->gic, QStringLiteral("PTYPPAT"), QString(), false);
        benchmark::DoNotOptimize(found.pID);
    }
}

void Engines(benchmark::internal::Benchmark* b) {
    b->ArgName("pg")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2.0);
}

BENCHMARK(BareFind)->Apply(Engines);
BENCHMARK(FindPerson)->Apply(Engines);

}  // namespace

int main(int argc, char** argv) {
    return bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
