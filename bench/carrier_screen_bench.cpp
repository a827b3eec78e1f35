// Opening the carrier screen on a loaded row, from the start method until the screen is shown
// (offscreen), beside the bare reads that opening performs, on the same engine. The figure to
// read is the ratio: what the screen, the start sequence and the host add to the reads.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTimer>

#include "bench/gen/bench_support.h"
#include "component/public/editing_screen.h"
#include "host/component_loader.h"
#include "host/demo_data.h"
#include "host/host_gic.h"
#include "host/practice.h"

namespace {

using namespace orvo;

// Ends each modal show as soon as the screen is up, without its close questions.
class CloseOnShow : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog && dialog->isWindow()) {
            QTimer::singleShot(0, dialog, &QDialog::hide);
        }
        return false;
    }
};

struct Practice {
    QTemporaryDir dir;
    std::unique_ptr<host::ComponentLoader> component;
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
};

// Made on first use, and closed in main while the application object still lives.
std::unique_ptr<Practice> practices[2];

Practice& PracticeFor(db::Engine engine) {
    auto& p = practices[engine == db::Engine::Sqlite ? 0 : 1];
    if (p)
        return *p;
    p = std::make_unique<Practice>();
    p->component = std::make_unique<host::ComponentLoader>(host::DefaultComponentPath());
    host::PracticeOptions options;
    options.dataDir = p->dir.path();
    if (engine == db::Engine::Postgres) {
        options.pgConnInfo = qEnvironmentVariable("ORVO_TEST_PG");
        options.pgSchema =
            QStringLiteral("bench_carrier_%1").arg(QCoreApplication::applicationPid());
        db::ConnectionOptions admin{db::Engine::Postgres, {}, options.pgConnInfo, {}};
        db::Connection::Open(admin)->Execute(QStringLiteral("CREATE SCHEMA IF NOT EXISTS ") +
                                             options.pgSchema);
    }
    p->session = host::OpenPractice(options, host::PracticeCatalog(*p->component));
    p->session.loginName = QStringLiteral("SUPERVISOR");
    host::SeedDemoPractice(p->session);
    p->gic = std::make_unique<host::HostGIC>(p->session);
    return *p;
}

void OpenCarrierScreen(benchmark::State& state, db::Engine engine) {
    if (bench::SkipWithoutEngine(state, engine))
        return;
    Practice& p = PracticeFor(engine);
    CloseOnShow closer;
    qApp->installEventFilter(&closer);
    auto screen = p.component->CreateEditingScreen();
    screen->SetIGlobal_GIC(p.gic.get());
    for (auto _ : state) {
        QString text = QStringLiteral("1");
        int id = 0;
        screen->Ins_Company_Start(text, id);
        benchmark::DoNotOptimize(id);
    }
    qApp->removeEventFilter(&closer);
}

// The reads behind opening carrier 1: that its row is there, the row, its payer, the right, the
// claims setting.
void BareReads(benchmark::State& state, db::Engine engine) {
    if (bench::SkipWithoutEngine(state, engine))
        return;
    Practice& p = PracticeFor(engine);
    db::Connection& c = *p.session.connection;
    const QStringList statements = {
        c.Translate(QStringLiteral("SELECT InsCoInd FROM InsCoTable WHERE InsCoInd=1")),
        c.Translate(QStringLiteral("SELECT * FROM InsCoTable WHERE InsCoInd=1")),
        c.Translate(QStringLiteral("SELECT * FROM ePayerTable WHERE epPayID='BWD01'")),
        c.Translate(
            QStringLiteral("SELECT PWAWriFla FROM PWATable WHERE PWAUseNam='SUPERVISOR' AND "
                           "OffLocID=0 AND PWAAreOfPro='EDIT-EMP-INS'")),
        c.Translate(QStringLiteral(
            "SELECT SetVal, SetValTyp FROM SetTable WHERE SetSec='DEFAULT_OFFICE_SETUP' "
            "AND SetKey='ELECTRONIC_CLAIMS'")),
    };
    for (auto _ : state) {
        for (const QString& sql : statements) {
            QSqlQuery q(c.database());
            q.setForwardOnly(true);
            q.exec(sql);
            while (q.next())
                benchmark::DoNotOptimize(q.value(0));
        }
    }
}

BENCHMARK_CAPTURE(BareReads, Sqlite, db::Engine::Sqlite)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OpenCarrierScreen, Sqlite, db::Engine::Sqlite)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BareReads, Postgres, db::Engine::Postgres)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OpenCarrierScreen, Postgres, db::Engine::Postgres)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    return orvo::bench::RunBenchmarks(argc, argv, [] {
        for (auto& p : practices)
            p.reset();
    });
}
