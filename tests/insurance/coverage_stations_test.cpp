// Two stations, each a process of its own, changing one person's coverage at the same time.
#include <QCoreApplication>
#include <QProcess>

#include "tests/insurance/coverage_fixture.h"

namespace orvo::insurance::test {
namespace {

using orvo::test::EngineParamName;

QString ChurnProgram() {
    const QString built = qEnvironmentVariable("ORVO_BUILD_DIR");
    if (!built.isEmpty())
        return built + QStringLiteral("/bin/coverage_churn");
    return QCoreApplication::applicationDirPath() + QStringLiteral("/coverage_churn");
}

class CoverageStationsTest : public CoverageTest {};

TEST_P(CoverageStationsTest, TwoStationsChangingOnePersonKeepTheChainWhole) {
    const int head = chain().Person(QStringLiteral("Peña"), QStringLiteral("José"));
    const int person = chain().Person(QStringLiteral("Peña"), QStringLiteral("Lucía"), head);
    const int employer = chain().Employer(QStringLiteral("Müller Tool & Die"));
    for (int s = 0; s < 5; ++s) {
        const int subscriber =
            s < 2 ? head
                  : chain().Person(QStringLiteral("Okafor %1").arg(s), QStringLiteral("Zoë"));
        Subscribe(subscriber, 0,
                  chain().PlanLink(employer, QStringLiteral("Carrier %1").arg(s),
                                   QStringLiteral("G%1").arg(s)));
    }
    constexpr int kSteps = 300;
    std::vector<std::unique_ptr<QProcess>> stations;
    for (const QString& name : {QStringLiteral("FRONT1"), QStringLiteral("FRONT2")}) {
        QStringList args{QStringLiteral("--person"),  QString::number(person),
                         QStringLiteral("--steps"),   QString::number(kSteps),
                         QStringLiteral("--seed"),    QString::number(name.back().digitValue()),
                         QStringLiteral("--station"), name};
        const db::ConnectionOptions& options = database_->options();
        if (options.engine == db::Engine::Sqlite)
            args << QStringLiteral("--sqlite") << options.sqliteFile;
        else
            args << QStringLiteral("--pg") << options.pgConnInfo << QStringLiteral("--schema")
                 << options.pgSchema;
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(ChurnProgram(), args);
        ASSERT_TRUE(process->waitForStarted()) << ChurnProgram().toStdString();
        stations.push_back(std::move(process));
    }
    int done = 0;
    for (auto& station : stations) {
        ASSERT_TRUE(station->waitForFinished(240000));
        const QString output = QString::fromLocal8Bit(station->readAllStandardOutput()).trimmed();
        ASSERT_EQ(station->exitCode(), 0) << output.toStdString();
        ASSERT_TRUE(output.startsWith(QStringLiteral("done "))) << output.toStdString();
        done += output.mid(5).toInt();
    }
    EXPECT_GT(done, kSteps);  // most changes went through on both stations
    EXPECT_TRUE(chain().InvariantFaults().isEmpty())
        << chain().InvariantFaults().join(QLatin1Char('\n')).toStdString();
    // Each change that went through wrote its note, and only those did.
    EXPECT_EQ(chain().Long(QStringLiteral("SELECT count(*) FROM cmTable WHERE cmPID=%1 AND "
                                          "cmDoc LIKE 'The following % insurance plan was %'")
                               .arg(person)),
              done);
    // Both stations ended rows: each row ended by who ended it.
    EXPECT_EQ(chain().Long(QStringLiteral("SELECT count(DISTINCT CovEndWho) FROM CovTable WHERE "
                                          "CovPatID=%1 AND CovFla=1")
                               .arg(person)),
              2);
}

INSTANTIATE_TEST_SUITE_P(Engines, CoverageStationsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         EngineParamName());

}  // namespace
}  // namespace orvo::insurance::test
