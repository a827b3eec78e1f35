#include "bench/gen/bench_support.h"

#include <QApplication>
#include <chrono>
#include <cstdio>

namespace orvo::bench {

db::ConnectionOptions BenchDatabase(db::Engine engine, const QTemporaryDir& dir,
                                    const QString& prefix) {
    db::ConnectionOptions options;
    options.engine = engine;
    if (engine == db::Engine::Sqlite) {
        options.sqliteFile = dir.filePath(prefix + QStringLiteral(".db"));
        return options;
    }
    options.pgConnInfo = qEnvironmentVariable("ORVO_TEST_PG");
    const QString schema =
        QStringLiteral("%1_%2").arg(prefix).arg(QCoreApplication::applicationPid());
    auto admin = db::Connection::Open(options);
    admin->Execute(QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext"));
    admin->Execute(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(schema));
    admin->Execute(QStringLiteral("CREATE SCHEMA %1").arg(schema));
    options.pgSchema = schema;
    return options;
}

void DropBenchDatabase(std::shared_ptr<db::Connection>& connection) {
    if (!connection || connection->engine() != db::Engine::Postgres) {
        connection.reset();
        return;
    }
    db::ConnectionOptions admin = connection->options();
    const QString schema = admin.pgSchema;
    connection.reset();
    admin.pgSchema.clear();
    db::Connection::Open(admin)->Execute(QStringLiteral("DROP SCHEMA %1 CASCADE").arg(schema));
}

db::Engine EngineArg(const benchmark::State& state) {
    return state.range(0) == 0 ? db::Engine::Sqlite : db::Engine::Postgres;
}

bool SkipWithoutEngine(benchmark::State& state, db::Engine engine) {
    if (engine == db::Engine::Postgres && qEnvironmentVariableIsEmpty("ORVO_TEST_PG")) {
        state.SkipWithError("ORVO_TEST_PG is not set");
        return true;
    }
    return false;
}

namespace {

// The offscreen platform says, for every screen shown, that it cannot raise a window; a line a
// modal show would drown the figures.
void QuietPlatformNotes(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith(QLatin1String("This plugin does not support")))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

}  // namespace

void RunPaired(benchmark::State& state, benchmark::TimeUnit unit,
               const std::function<void(size_t)>& round, const std::function<void(size_t)>& floor) {
    using Clock = std::chrono::steady_clock;
    std::chrono::duration<double> measured{0};
    std::chrono::duration<double> floored{0};
    const auto timed = [](const std::function<void(size_t)>& work, size_t n) {
        const auto start = Clock::now();
        work(n);
        return std::chrono::duration<double>(Clock::now() - start);
    };
    size_t i = 0;
    for (auto _ : state) {
        // Which goes first alternates, so that neither always finds the other's pages warm.
        std::chrono::duration<double> m{0};
        if (i % 2 == 0) {
            m = timed(round, i);
            floored += timed(floor, i);
        } else {
            floored += timed(floor, i);
            m = timed(round, i);
        }
        measured += m;
        state.SetIterationTime(m.count());
        ++i;
    }
    if (i == 0 || floored.count() <= 0)
        return;
    state.counters["ratio"] = measured.count() / floored.count();
    const double perRound = floored.count() / static_cast<double>(i);
    state.counters[unit == benchmark::kMillisecond ? "floor_ms" : "floor_us"] =
        perRound * (unit == benchmark::kMillisecond ? 1e3 : 1e6);
}

int RunBenchmarks(int argc, char** argv, const std::function<void()>& beforeExit) {
    qInstallMessageHandler(QuietPlatformNotes);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (beforeExit)
        beforeExit();
    return 0;
}

}  // namespace orvo::bench
