// The person record on a practice of 500,000 persons in families, on each engine:
//  - ReadPersonRecord against its floor, the bare "SELECT *" of the same row read through a
//    plain Qt SQL loop (every value taken by index);
//  - SetPersonType (a referral role switched on and off for patients) against its floor, the
//    bare UPDATE it composes, run through Qt SQL.
// Both reads and both writes go through statements kept prepared, which the bare loops, parsing
// their statement on every run, do not: the "Prepared" floors are the same bare loops over a
// statement prepared once, so that what the record read and the role change add of their own
// (mapping a hundred columns, the role's consequences, the host's upkeep of the family-head list)
// shows as well. The figure to read is each pair's ratio. The practice is made once and kept (see
// KeptPersonPractice); the first run on a machine spends minutes on it. PostgreSQL runs when
// ORVO_TEST_PG names a server. ORVO_BENCH_PERSONS changes the size.
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

void Exec(QSqlQuery& query, const QString& sql) {
    if (!query.exec(sql))
        throw db::DatabaseError(query.lastError().text(), sql);
}

void BareSelect(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    size_t i = 0;
    for (auto _ : state) {
        QSqlQuery query(f->session.connection->database());
        query.setForwardOnly(true);
        Exec(query, QStringLiteral("SELECT * FROM PATable WHERE pID=%1").arg(f->ids[i++ % 2000]));
        if (query.next()) {
            const int columns = query.record().count();
            for (int c = 0; c < columns; ++c)
                benchmark::DoNotOptimize(query.value(c));
        }
    }
}

void BareSelectPrepared(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    QSqlQuery query(f->session.connection->database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT * FROM PATable WHERE pID=?"));
    size_t i = 0;
    for (auto _ : state) {
        query.bindValue(0, f->ids[i++ % 2000]);
        if (!query.exec())
            throw db::DatabaseError(query.lastError().text(), query.lastQuery());
        if (query.next()) {
            const int columns = query.record().count();
            for (int c = 0; c < columns; ++c)
                benchmark::DoNotOptimize(query.value(c));
        }
        query.finish();
    }
}

void ReadPersonRecord(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    size_t i = 0;
    people::PersonRecord record;
    for (auto _ : state) {
        people::ReadPersonRecord(*f->gic, f->ids[i++ % 2000], record);
        benchmark::DoNotOptimize(record.pLASNAM);
    }
}

void BareUpdate(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    QSqlQuery query(f->session.connection->database());
    size_t i = 0;
    for (auto _ : state) {
        const int id = f->ids[i % 2000];
        const QString value = (i++ / 2000) % 2 ? QStringLiteral("0") : QStringLiteral("1");
        Exec(
            query,
            QStringLiteral("UPDATE PATABLE SET PTYPREF = '%1' WHERE pID = %2;").arg(value).arg(id));
    }
}

void BareUpdatePrepared(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    QSqlQuery query(f->session.connection->database());
    query.prepare(QStringLiteral("UPDATE PATABLE SET PTYPREF = ? WHERE pID = ?"));
    size_t i = 0;
    for (auto _ : state) {
        const int id = f->ids[i % 2000];
        query.bindValue(0, (i++ / 2000) % 2 ? QStringLiteral("0") : QStringLiteral("1"));
        query.bindValue(1, id);
        if (!query.exec())
            throw db::DatabaseError(query.lastError().text(), query.lastQuery());
    }
}

void SetPersonType(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    size_t i = 0;
    for (auto _ : state) {
        const int id = f->ids[i % 2000];
        const QString value = (i++ / 2000) % 2 ? QStringLiteral("0") : QStringLiteral("1");
        people::SetPersonType(*f->gic, id, QStringLiteral("PTYPREF"), value);
    }
}

void Engines(benchmark::internal::Benchmark* b) {
    b->ArgName("pg")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
}

BENCHMARK(BareSelect)->Apply(Engines);
BENCHMARK(BareSelectPrepared)->Apply(Engines);
BENCHMARK(ReadPersonRecord)->Apply(Engines);
BENCHMARK(BareUpdate)->Apply(Engines);
BENCHMARK(BareUpdatePrepared)->Apply(Engines);
BENCHMARK(SetPersonType)->Apply(Engines);

}  // namespace

int main(int argc, char** argv) {
    return bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
