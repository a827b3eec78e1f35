// The person record on a practice of 500,000 persons in families, on each engine:
//  - ReadPersonRecord against its floor, the bare "SELECT *" of the same row read through a
//    plain Qt SQL loop (every value taken by index);
//  - SetPersonType (a referral role switched on and off for patients) against its floor, the
//    bare UPDATE it composes, run through Qt SQL.
// Both reads and both writes go through statements kept prepared, which the bare statements,
// parsed on every run, are not: with floor_prepared:1 the floor is the same statement prepared
// once, so that what the record read and the role change add of their own (mapping a hundred
// columns, the role's consequences, the host's upkeep of the family-head list) shows as well.
// Each measure runs in turns with its floor; the figure to read is the counter "ratio". The
// practice is made once and kept (see KeptPersonPractice); the first run on a machine spends
// minutes on it. PostgreSQL runs when ORVO_TEST_PG names a server. ORVO_BENCH_PERSONS changes
// the size.
#include <benchmark/benchmark.h>

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <cstdio>
#include <random>

#include "bench/gen/bench_support.h"
#include "bench/gen/person_gen.h"
#include "host/host_gic.h"
#include "people/person_record.h"
#include "platform/db/recordset.h"

namespace {

using namespace orvo;

struct Fixture {
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
    std::vector<int> ids;  // patients spread over the whole table
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    const db::ConnectionOptions options =
        bench::KeptPersonPractice(engine, bench::KeptPracticePersons());
    f->session.connection = db::Connection::Open(options);
    f->session.loginName = QStringLiteral("BENCH");
    f->gic = std::make_unique<host::HostGIC>(f->session);
    const int first =
        db::ReadScalar(*f->session.connection,
                       QStringLiteral("SELECT min(pID) FROM PATable WHERE pTypPat = '1' AND "
                                      "pPROIND <> 0 AND pTypX1 IS NULL"))
            .toInt();
    std::mt19937 rng(7);
    for (int i = 0; i < 2000; ++i)
        f->ids.push_back(first + static_cast<int>(rng() % (bench::KeptPracticePersons() - first)));
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

void Exec(QSqlQuery& query) {
    if (!query.exec())
        throw db::DatabaseError(query.lastError().text(), query.lastQuery());
}

void Exec(QSqlQuery& query, const QString& sql) {
    if (!query.exec(sql))
        throw db::DatabaseError(query.lastError().text(), sql);
}

// Takes every value of the row the query stands before.
void TakeRow(QSqlQuery& query) {
    if (query.next()) {
        const int columns = query.record().count();
        for (int c = 0; c < columns; ++c)
            benchmark::DoNotOptimize(query.value(c));
    }
}

// The floor takes the patients half the list away from the measure's, so that neither finds
// the row the other has just read.
int FloorId(const Fixture& f, size_t i) {
    return f.ids[(i + 1000) % 2000];
}

// Switched on for the first two thousand rounds, off for the next, and so on.
QString RoleValue(size_t i) {
    return (i / 2000) % 2 ? QStringLiteral("0") : QStringLiteral("1");
}

// The floors: 0, the bare statement as text; 1, the same statement prepared once.
enum FloorKind { kText = 0, kPrepared = 1 };

void ReadPersonRecord(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    QSqlQuery prepared(f->session.connection->database());
    prepared.setForwardOnly(true);
    prepared.prepare(QStringLiteral("SELECT * FROM PATable WHERE pID=?"));
    const bool text = state.range(1) == kText;
    people::PersonRecord record;
    bench::RunPaired(
        state, benchmark::kMicrosecond,
        [&](size_t i) {
            people::ReadPersonRecord(*f->gic, f->ids[i % 2000], record);
            benchmark::DoNotOptimize(record.pLASNAM);
        },
        [&](size_t i) {
            if (text) {
                QSqlQuery query(f->session.connection->database());
                query.setForwardOnly(true);
                Exec(query,
                     QStringLiteral("SELECT * FROM PATable WHERE pID=%1").arg(FloorId(*f, i)));
                TakeRow(query);
            } else {
                prepared.bindValue(0, FloorId(*f, i));
                Exec(prepared);
                TakeRow(prepared);
                prepared.finish();
            }
        });
}

void SetPersonType(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    QSqlQuery text(f->session.connection->database());
    QSqlQuery prepared(f->session.connection->database());
    prepared.prepare(QStringLiteral("UPDATE PATABLE SET PTYPREF = ? WHERE pID = ?"));
    const bool asText = state.range(1) == kText;
    bench::RunPaired(
        state, benchmark::kMicrosecond,
        [&](size_t i) {
            people::SetPersonType(*f->gic, f->ids[i % 2000], QStringLiteral("PTYPREF"),
                                  RoleValue(i));
        },
        [&](size_t i) {
            if (asText) {
                Exec(text, QStringLiteral("UPDATE PATABLE SET PTYPREF = '%1' WHERE pID = %2;")
                               .arg(RoleValue(i))
                               .arg(FloorId(*f, i)));
            } else {
                prepared.bindValue(0, RoleValue(i));
                prepared.bindValue(1, FloorId(*f, i));
                Exec(prepared);
            }
        });
}

void Engines(benchmark::internal::Benchmark* b) {
    b->ArgNames({"pg", "floor_prepared"})
        ->ArgsProduct({{0, 1}, {kText, kPrepared}})
        ->Unit(benchmark::kMicrosecond)
        ->UseManualTime()
        ->MinTime(2.0);
}

BENCHMARK(ReadPersonRecord)->Apply(Engines);
BENCHMARK(SetPersonType)->Apply(Engines);

}  // namespace

int main(int argc, char** argv) {
    return bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
