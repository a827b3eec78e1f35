#include "bench/gen/bench_support.h"

#include <QApplication>

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

bool SkipWithoutEngine(benchmark::State& state, db::Engine engine) {
    if (engine == db::Engine::Postgres && qEnvironmentVariableIsEmpty("ORVO_TEST_PG")) {
        state.SkipWithError("ORVO_TEST_PG is not set");
        return true;
    }
    return false;
}

int RunBenchmarks(int argc, char** argv, const std::function<void()>& beforeExit) {
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
