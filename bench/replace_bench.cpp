// Replacing a carrier that 10,000 subscribers reach through 100 employers' links (each with the
// subscriber covered), on each engine:
//  - ReplaceCarrier: the replace engine as the list command runs it, one transaction with the
//    audit line, moving every subscriber with a note; the carrier goes back and forth between
//    two carriers, one replace per iteration;
//  - BareStatements, the floor: the very statements the first replace sent, recorded as they
//    went to the driver, run again in one transaction through a plain Qt SQL loop.
// The figure to read is the ratio of the two times. The schema is dropped with the program's
// temporary folder (SQLite) or made afresh for the run and dropped after it (PostgreSQL, when
// ORVO_TEST_PG names a server).
#include <benchmark/benchmark.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "bench/gen/bench_support.h"
#include "host/host_gic.h"
#include "host/host_tables.h"
#include "insurance/insurance_tables.h"
#include "lists/engines/shared_record_engines.h"
#include "people/people_tables.h"

namespace {

using namespace orvo;

constexpr int kEmployers = 100;
constexpr int kSubscribersPerEmployer = 100;
constexpr int kSubscribers = kEmployers * kSubscribersPerEmployer;

struct Fixture {
    ~Fixture() { bench::DropBenchDatabase(session.connection); }
    QTemporaryDir dir;
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
    int carriers[2] = {0, 0};
    int replaces = 0;      // which way the next replace goes
    QStringList recorded;  // the statements of the first replace, as sent
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    f->session.connection =
        db::Connection::Open(bench::BenchDatabase(engine, f->dir, QStringLiteral("bench_replace")));
    db::Connection& c = *f->session.connection;
    schema::Catalog catalog;
    host::DeclareHostTables(catalog);
    people::DeclarePeopleTables(catalog);
    insurance::DeclareInsuranceTables(catalog);
    schema::Apply(c, catalog);
    f->session.loginName = QStringLiteral("BENCH");
    f->session.stationId = QStringLiteral("BENCH");
    f->session.today = QDate(2024, 3, 15);
    f->gic = std::make_unique<host::HostGIC>(f->session);

    db::Transaction transaction(c);
    for (int& carrier : f->carriers) {
        carrier = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO InsCoTable (InsCoNam) VALUES ('Carrier Ünited')")));
    }
    const int plan = static_cast<int>(c.InsertWithIdentity(
        QStringLiteral("INSERT INTO GroPlaTable (GroPlaGroNum, GroPlaInsID) VALUES ('G-1', %1)")
            .arg(f->carriers[0])));
    for (int e = 0; e < kEmployers; ++e) {
        const int employer = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO EmpTable (EmpNam) VALUES ('Müller %1')").arg(e)));
        const int link = static_cast<int>(c.InsertWithIdentity(
            QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) "
                           "VALUES (%1, %2, %3, #01/02/2024#, 0)")
                .arg(employer)
                .arg(f->carriers[0])
                .arg(plan)));
        for (int s = 0; s < kSubscribersPerEmployer; ++s) {
            const int id = static_cast<int>(c.InsertWithIdentity(
                QStringLiteral("INSERT INTO PATable (pLASNAM, pFIRNAM, pTypPat) VALUES ('Peña "
                               "%1', 'José %2', '1')")
                    .arg(e)
                    .arg(s)));
            c.Execute(QStringLiteral("UPDATE PATable SET pFAMHEAIND = %1 WHERE pID = %1").arg(id));
            const int patEmp = static_cast<int>(c.InsertWithIdentity(
                QStringLiteral("INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, "
                               "PatEmpStaDat, PatEmpFla) VALUES (%1, %2, 1, #01/02/2024#, 0)")
                    .arg(id)
                    .arg(link)));
            c.Execute(QStringLiteral("INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, "
                                     "CovOrd, CovStaDat, CovFla) VALUES (%1, 1, %2, 1, "
                                     "#01/02/2024#, 0)")
                          .arg(id)
                          .arg(patEmp));
        }
    }
    transaction.Commit();
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

void ReplaceCarrier(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    db::Connection& c = *f->session.connection;
    bool recording = f->recorded.isEmpty();
    c.SetStatementHook([&](const QString& sql) {
        if (recording)
            f->recorded.append(sql);
    });
    for (auto _ : state) {
        const int from = f->carriers[f->replaces % 2];
        const int to = f->carriers[1 - f->replaces % 2];
        db::Transaction transaction(c, db::Transaction::Write);
        lists::Replace_Carrier_Links(*f->gic, from, to);
        f->gic->WriteAuditLog(QStringLiteral("INS_LOG"), QStringLiteral("REPLACE"),
                              QStringLiteral("bench"));
        transaction.Commit();
        ++f->replaces;
        recording = false;
    }
    c.SetStatementHook({});
    state.counters["subscribers"] = kSubscribers;
    state.SetItemsProcessed(state.iterations() * kSubscribers);
}

void BareStatements(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    if (f->recorded.isEmpty()) {
        state.SkipWithError("ReplaceCarrier records the statements: run it first");
        return;
    }
    db::Connection& c = *f->session.connection;
    QSqlQuery query(c.database());
    for (auto _ : state) {
        c.BeginTransaction();
        for (const QString& sql : f->recorded) {
            const QString head = sql.left(8).toUpper();
            if (head.startsWith(QLatin1String("BEGIN")) || head.startsWith(QLatin1String("COMMIT")))
                continue;  // the bare list runs in the one transaction around it
            if (!query.exec(sql))
                throw db::DatabaseError(query.lastError().text(), sql);
            while (query.next())
                benchmark::DoNotOptimize(query.value(0));
        }
        c.Commit();
    }
    state.counters["statements"] = static_cast<double>(f->recorded.size());
    state.SetItemsProcessed(state.iterations() * kSubscribers);
}

void Engines(benchmark::internal::Benchmark* b) {
    b->ArgName("pg")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(2);
}

BENCHMARK(ReplaceCarrier)->Apply(Engines);
BENCHMARK(BareStatements)->Apply(Engines);

}  // namespace

int main(int argc, char** argv) {
    return bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
