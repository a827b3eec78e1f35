// Opening the small patient screen on a patient of the kept practice of 500,000 persons, from the
// start method (Load_PatInfo_Small, through the loaded component) until the screen is shown
// (offscreen), on each engine. In the same loop and on the same patients, its floor: the reads
// the opening performs, run bare through Qt SQL, plus the same dialog built and shown empty.
// The counters give each part in microseconds and the ratio of the opening to its floor, which
// is the figure to read. The practice is made once and kept (see KeptPersonPractice);
// PostgreSQL runs when ORVO_TEST_PG names a server. ORVO_BENCH_PERSONS changes the size.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <random>

#include "bench/gen/bench_support.h"
#include "bench/gen/person_gen.h"
#include "component/public/editing_screen.h"
#include "host/component_loader.h"
#include "host/host_gic.h"
#include "people/pat_screen_sm.h"
#include "platform/db/recordset.h"

namespace {

using namespace orvo;

// Ends each modal show as soon as the screen is up, without its close questions.
class CloseOnShow : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog && dialog->isWindow())
            QTimer::singleShot(0, dialog, &QDialog::hide);
        return false;
    }
};

struct Fixture {
    QTemporaryDir dir;  // the data folder: the record locks go to its TEMP/
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
    std::unique_ptr<host::ComponentLoader> component;
    std::unique_ptr<EditingScreen> screen;
    std::vector<int> ids;  // patients spread over the whole table
};

std::unique_ptr<Fixture> MakeFixture(db::Engine engine) {
    auto f = std::make_unique<Fixture>();
    const db::ConnectionOptions options =
        bench::KeptPersonPractice(engine, bench::KeptPracticePersons());
    QDir(f->dir.path()).mkpath(QStringLiteral("TEMP"));
    f->session.connection = db::Connection::Open(options);
    f->session.loginName = QStringLiteral("BENCH");
    f->session.stationId = QStringLiteral("BENCH");
    f->session.dataPath = f->dir.path() + QLatin1Char('/');
    f->gic = std::make_unique<host::HostGIC>(f->session);
    f->component = std::make_unique<host::ComponentLoader>(host::DefaultComponentPath());
    f->screen = f->component->CreateEditingScreen();
    f->screen->SetIGlobal_GIC(f->gic.get());
    const int first =
        db::ReadScalar(*f->session.connection,
                       QStringLiteral("SELECT min(pID) FROM PATable WHERE pTypPat = '1' AND "
                                      "pPROIND <> 0 AND pTypX1 IS NULL"))
            .toInt();
    std::mt19937 rng(11);
    for (int i = 0; i < 2000; ++i)
        f->ids.push_back(first + static_cast<int>(rng() % (bench::KeptPracticePersons() - first)));
    return f;
}

bench::EngineFixtures<Fixture> fixtures(MakeFixture);

void Read(db::Connection& c, const QString& sql) {
    QSqlQuery q(c.database());
    q.setForwardOnly(true);
    if (!q.exec(c.Translate(sql)))
        throw db::DatabaseError(QStringLiteral("bare read failed"), sql);
    while (q.next()) {
        for (int i = 0, n = q.record().count(); i < n; ++i)
            benchmark::DoNotOptimize(q.value(i));
    }
}

// What opening the screen reads of the database: the row's presence, the station's tip setting,
// the two contact blocks, the row, the names of referral and provider.
void BareReads(db::Connection& c, int id) {
    const QString person = QString::number(id);
    Read(c,
         QStringLiteral("SELECT SetVal, SetValTyp FROM SetTable WHERE SetSec='STATION_SETUP' AND "
                        "SetKey='BENCHPOPUP_HELP_FLAG'"));
    Read(c, QStringLiteral("SELECT pID FROM PATable WHERE pID=") + person);
    Read(c, QStringLiteral("SELECT * FROM PATable WHERE pID=") + person);
    Read(c, QStringLiteral("SELECT * FROM PATable WHERE pID=") + person);
    Read(c, QStringLiteral("SELECT * FROM PATable WHERE pID=") + person);
    QSqlQuery links(c.database());
    links.exec(
        c.Translate(QStringLiteral("SELECT pREFIND, pPROIND FROM PATable WHERE pID=") + person));
    if (links.next()) {
        for (int i = 0; i < 2; ++i) {
            Read(c, QStringLiteral("SELECT pFIRNAM, pLASNAM FROM PATable WHERE pID=") +
                        QString::number(links.value(i).toInt()));
        }
    }
}

void EmptyDialog(Fixture& f) {
    people::patScreen_SM screen(*f.gic);
    screen.show();
    QCoreApplication::processEvents();
    screen.hide();
}

void PatientScreen(benchmark::State& state) {
    Fixture* f = fixtures.For(state);
    if (!f)
        return;
    CloseOnShow closer;
    qApp->installEventFilter(&closer);
    qint64 open = 0;
    qint64 reads = 0;
    qint64 empty = 0;
    size_t i = 0;
    for (auto _ : state) {
        const int id = f->ids[i++ % f->ids.size()];
        QElapsedTimer clock;
        clock.start();
        BareReads(*f->session.connection, id);
        reads += clock.nsecsElapsed();
        clock.restart();
        EmptyDialog(*f);
        empty += clock.nsecsElapsed();
        clock.restart();
        int person = id;
        QString start;
        bool book = false;
        f->screen->Load_PatInfo_Small(person, start, &book);
        open += clock.nsecsElapsed();
        benchmark::DoNotOptimize(person);
    }
    qApp->removeEventFilter(&closer);
    const double n = static_cast<double>(state.iterations());
    state.counters["open_us"] = open / n / 1000.0;
    state.counters["reads_us"] = reads / n / 1000.0;
    state.counters["empty_us"] = empty / n / 1000.0;
    state.counters["ratio"] = static_cast<double>(open) / static_cast<double>(reads + empty);
}

BENCHMARK(PatientScreen)->Arg(0)->Name("PatientScreen/Sqlite")->Unit(benchmark::kMillisecond);
BENCHMARK(PatientScreen)->Arg(1)->Name("PatientScreen/Postgres")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return orvo::bench::RunBenchmarks(argc, argv, [] { fixtures.Clear(); });
}
