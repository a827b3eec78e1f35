// orvo-scenario: runs scenario files end to end against a fresh practice each, and prints one
// line per scenario and the totals.
#include <QApplication>
#include <QCommandLineParser>
#include <QFont>
#include <cstdio>

#include "host/component_loader.h"
#include "host/practice.h"
#include "host/scenario/runner.h"
#include "host/scenario/scenario.h"
#include "host/scenario/verbs.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvo-scenario"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));

    QCommandLineParser args;
    args.setApplicationDescription(QStringLiteral("Runs scenario files against fresh practices."));
    args.addHelpOption();
    args.addOptions({
        {QStringLiteral("pg"), QStringLiteral("Run on PostgreSQL (libpq conninfo)."),
         QStringLiteral("CONNINFO")},
        {QStringLiteral("engine"),
         QStringLiteral(
             "sqlite (default) or pg; pg without --pg takes the server from ORVO_TEST_PG "
             "and skips (exit 77) when that is not set."),
         QStringLiteral("ENGINE")},
        {QStringLiteral("station"), QStringLiteral("This station's id."), QStringLiteral("NAME")},
        {QStringLiteral("keep"),
         QStringLiteral("Keep the data folder of each failed scenario, and name it.")},
        {QStringLiteral("verbs"), QStringLiteral("List the steps a scenario file may use.")},
    });
    args.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Scenario files."),
                               QStringLiteral("FILE..."));
    args.process(app);
    if (args.isSet(QStringLiteral("verbs"))) {
        for (const orvo::scenario::Verb& verb : orvo::scenario::Verbs())
            std::printf("%s\n", verb.usage);
        return 0;
    }

    orvo::scenario::RunOptions options;
    try {
        if (args.isSet(QStringLiteral("pg")))
            options.pgConnInfo = orvo::host::CheckedConnInfo(args.value(QStringLiteral("pg")));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvo-scenario: %s\n", error.what());
        return 2;
    }
    options.stationId = args.value(QStringLiteral("station"));
    options.keepData = args.isSet(QStringLiteral("keep"));
    if (args.value(QStringLiteral("engine")) == QLatin1String("pg") &&
        options.pgConnInfo.isEmpty()) {
        options.pgConnInfo = qEnvironmentVariable("ORVO_TEST_PG");
        if (options.pgConnInfo.isEmpty()) {
            std::printf("skipped: ORVO_TEST_PG is not set\n");
            return 77;
        }
    }
    if (args.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "orvo-scenario: no scenario file given\n");
        return 2;
    }

    int passed = 0;
    int failed = 0;
    try {
        orvo::host::ComponentLoader component(orvo::host::DefaultComponentPath());
        for (const QString& file : args.positionalArguments()) {
            std::vector<orvo::scenario::Scenario> scenarios;
            try {
                scenarios = orvo::scenario::ParseScenarioFile(file);
            } catch (const std::exception& error) {
                std::printf("FAIL %s: %s\n", qPrintable(file), error.what());
                ++failed;
                continue;
            }
            for (const auto& scenario : scenarios) {
                orvo::scenario::Runner runner(options, component);
                if (runner.Run(scenario)) {
                    ++passed;
                    std::printf("PASS %s: %s\n", qPrintable(file), qPrintable(scenario.name));
                } else {
                    ++failed;
                    std::printf("FAIL %s: %s: %s\n", qPrintable(file), qPrintable(scenario.name),
                                qPrintable(runner.failure()));
                }
                std::fflush(stdout);
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvo-scenario: %s\n", error.what());
        ++failed;
    }
    std::printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}
