// Coverage changes on a practice of 2,000 persons covered through 200 subscribers, each with two
// plans of one employer, on each engine:
//  - CoverageChange: 10,000 changes of a person's coverage to the subscriber's other plan through
//    the engine, each its own transaction with the person locked, its history note written;
//  - BareStatements, the floor: the very statements those changes sent, recorded as they went to
//    the driver, run again in one transaction through a plain Qt SQL loop;
//  - BareStatementsEachCommitted, the floor of the same work done safely: the same loop with each
//    change in a transaction of its own, begun and committed as the engine does.
// The figures to read are the ratios of CoverageChange to each floor, per change; "statements"
// is the count sent per change. The schema is dropped with the
// program's temporary folder (SQLite) or made afresh for the run and dropped after it
// (PostgreSQL, when ORVO_TEST_PG names a server).
#include <benchmark/benchmark.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <algorithm>
#include <vector>

#include "bench/gen/bench_support.h"
#include "host/host_gic.h"
#include "host/host_tables.h"
#include "insurance/coverage_engine.h"
#include "insurance/insurance_tables.h"
#include "people/people_tables.h"
#include "platform/db/recordset.h"

namespace {

using namespace orvo;

constexpr int kSubscribers = 200;
constexpr int kMembers = 9;  // covered persons per subscriber besides the subscriber
constexpr int kChanges = 10000;

struct Person {
    int id = 0;
    int links[2] = {0, 0};  // the subscriber's two subscriber links (PatEmpID)
    int current = 0;        // which of them covers the person now
};

struct Fixture {
    ~Fixture() { bench::DropBenchDatabase(session.connection); }
    QTemporaryDir dir;
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
    std::vector<Person> persons;
    std::vector<QStringList> recorded;  // the statements of each change, as sent
};

void Exec(QSqlQuery& query, const QString& sql) {
    if (!query.exec(sql))
        throw db::DatabaseError(query.lastError().text(), sql);
}

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    f->session.connection = db::Connection::Open(
        bench::BenchDatabase(engine, f->dir, QStringLiteral("bench_coverage")));
    db::Connection& c = *f->session.connection;
    schema::Catalog catalog;
    host::DeclareHostTables(catalog);
    people::DeclarePeopleTables(catalog);
    insurance::DeclareInsuranceTables(catalog);
    schema::Apply(c, catalog);
    f->session.loginName = QStringLiteral("BENCH");
    f->session.stationId = QStringLiteral("BENCH");
    f->gic = std::make_unique<host::HostGIC>(f->session);

    db::Transaction transaction(c);
    const int employer = static_cast<int>(
        c.InsertWithIdentity(QStringLiteral("INSERT INTO EmpTable (EmpNam) VALUES ('Müller AG')")));
    int plans[2];
    for (int p = 0; p < 2; ++p) {
        const int carrier = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO InsCoTable (InsCoNam) VALUES ('Carrier %1')").arg(p)));
        const int plan = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO GroPlaTable (GroPlaGroNum) VALUES ('G-%1')").arg(p)));
        plans[p] = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) "
                           "VALUES (%1, %2, %3, #01/02/2024#, 0)")
                .arg(employer)
                .arg(carrier)
                .arg(plan)));
    }
    for (int s = 0; s < kSubscribers; ++s) {
        int head = 0;
        int links[2] = {0, 0};
        for (int m = 0; m <= kMembers; ++m) {
            const int id = static_cast<int>(c.InsertWithIdentity(
                QStringLiteral("INSERT INTO PATable (pLASNAM, pFIRNAM, pTypPat, pFAMHEAIND) "
                               "VALUES ('Peña %1', 'Member %2', '1', %3)")
                    .arg(s)
                    .arg(m)
                    .arg(head)));
            if (m == 0) {
                head = id;
                c.Execute(
                    QStringLiteral("UPDATE PATable SET pFAMHEAIND = %1 WHERE pID = %1").arg(id));
                for (int p = 0; p < 2; ++p) {
                    links[p] = static_cast<int>(c.InsertWithIdentity(
                        QStringLiteral("INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, "
                                       "PatEmpOrd, PatEmpStaDat, PatEmpFla) VALUES (%1, %2, %3, "
                                       "#01/02/2024#, 0)")
                            .arg(id)
                            .arg(plans[p])
                            .arg(p + 1)));
                }
            }
            c.Execute(QStringLiteral("INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, "
                                     "CovOrd, CovStaDat, CovFla) VALUES (%1, %2, %3, 1, "
                                     "#01/02/2024#, 0)")
                          .arg(id)
                          .arg(m == 0 ? 1 : 4)
                          .arg(links[0]));
            f->persons.push_back({id, {links[0], links[1]}, 0});
        }
    }
    transaction.Commit();
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

void CoverageChange(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    db::Connection& c = *f->session.connection;
    f->recorded.clear();
    QStringList* statements = nullptr;
    c.SetStatementHook([&statements](const QString& sql) {
        if (statements)
            statements->append(sql);
    });
    size_t i = 0;
    for (auto _ : state) {
        Person& person = f->persons[i++ % f->persons.size()];
        state.PauseTiming();
        const int coverage = static_cast<int>(
            db::ReadScalar(c, QStringLiteral("SELECT CovID FROM CovTable WHERE CovPatID = %1 AND "
                                             "CovFla = 0")
                                  .arg(person.id))
                .toInt());
        f->recorded.emplace_back();
        statements = &f->recorded.back();
        state.ResumeTiming();
        bool update = true;
        bool failed = true;
        insurance::Update_Coverage(*f->gic, person.id, coverage, person.links[1 - person.current],
                                   true, update, failed);
        if (failed)
            state.SkipWithError("a change was refused");
        person.current = 1 - person.current;
        statements = nullptr;
    }
    c.SetStatementHook({});
    state.SetItemsProcessed(state.iterations());
    size_t sent = 0;
    for (const QStringList& change : f->recorded)
        sent += static_cast<size_t>(change.size());
    state.counters["statements"] =
        static_cast<double>(sent) / static_cast<double>(std::max<size_t>(f->recorded.size(), 1));
}

// The recorded statements run through one plain query: all changes in one transaction, or
// each change in a transaction of its own as the engine runs it.
void RunBare(benchmark::State& state, bool transactionPerChange) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    if (f->recorded.size() < kChanges) {
        state.SkipWithError("CoverageChange records the statements: run it first");
        return;
    }
    db::Connection& c = *f->session.connection;
    const bool sqlite = c.engine() == db::Engine::Sqlite;
    QSqlQuery query(c.database());
    if (!transactionPerChange)
        c.BeginTransaction();
    size_t i = 0;
    for (auto _ : state) {
        const QStringList& change = f->recorded[i++];
        if (transactionPerChange && !sqlite)
            Exec(query, QStringLiteral("BEGIN"));  // the embedded engine's is recorded
        for (const QString& sql : change) {
            if (!transactionPerChange &&
                sql.startsWith(QLatin1String("BEGIN"), Qt::CaseInsensitive))
                continue;  // the bare list runs in the one transaction around it
            Exec(query, sql);
            while (query.next())
                benchmark::DoNotOptimize(query.value(0));
        }
        if (transactionPerChange)
            Exec(query, QStringLiteral("COMMIT"));
    }
    if (!transactionPerChange)
        c.Commit();
    state.SetItemsProcessed(state.iterations());
}

void BareStatements(benchmark::State& state) {
    RunBare(state, false);
}

void BareStatementsEachCommitted(benchmark::State& state) {
    RunBare(state, true);
}

void Engines(benchmark::internal::Benchmark* b) {
    b->ArgName("pg")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->Iterations(kChanges);
}

BENCHMARK(CoverageChange)->Apply(Engines);
BENCHMARK(BareStatements)->Apply(Engines);
BENCHMARK(BareStatementsEachCommitted)->Apply(Engines);

}  // namespace

int main(int argc, char** argv) {
    return bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
