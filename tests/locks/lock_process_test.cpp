// Record locks between processes: each lock_holder is a station of its own.
#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <memory>

#include "tests/locks/lock_fixture.h"

namespace orvo::locks::test {
namespace {

using namespace orvo::component;

QString HolderProgram() {
    const QString built = qEnvironmentVariable("ORVO_BUILD_DIR");
    if (!built.isEmpty())
        return built + QStringLiteral("/bin/lock_holder");
    return QCoreApplication::applicationDirPath() + QStringLiteral("/lock_holder");
}

// One lock_holder process, as station "station" of user "user" on computer "computer".
class Station {
public:
    Station(const QString& dataPath, const QString& station, const QString& user,
            const QString& computer, const QStringList& command) {
        process_.setProgram(HolderProgram());
        process_.setArguments(QStringList{"--data", dataPath, "--station", station, "--user", user,
                                          "--computer", computer} +
                              command);
        process_.start();
    }
    ~Station() {
        if (process_.state() == QProcess::NotRunning)
            return;
        process_.kill();
        process_.waitForFinished();
    }

    // The next line the station prints, or "<none>" when it printed nothing in time.
    QString ReadLine() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60000))
                return QStringLiteral("<none>");
        }
        return QString::fromLocal8Bit(process_.readLine()).trimmed();
    }
    // Closes its stdin: a holder then releases its lock and ends.
    bool Release() {
        process_.closeWriteChannel();
        return process_.waitForFinished(60000) && process_.exitCode() == 0;
    }
    bool Kill() {
        process_.kill();
        return process_.waitForFinished(60000);
    }
    QProcess& process() { return process_; }

private:
    QProcess process_;
};

class LockProcessTest : public LockTest {
protected:
    void SetUp() override {
        LockTest::SetUp();
        ASSERT_TRUE(QFileInfo(HolderProgram()).isExecutable()) << qPrintable(HolderProgram());
    }
    std::unique_ptr<Station> Start(const QString& station, const QString& user,
                                   const QString& computer, const QStringList& command) {
        return std::make_unique<Station>(session.dataPath, station, user, computer, command);
    }
};

TEST_F(LockProcessTest, OneStationWinsTheOtherIsToldWhoHoldsTheRecord) {
    auto other = Start("BACK2", "DRSMITH", "BACKOFFICE-PC", {"lock", "INSCOTABLE", "6703"});
    ASSERT_EQ(other->ReadLine(), "LOCKED 1");

    prompts.Expect("ORVO Windows", LockedBy("DRSMITH", "BACKOFFICE-PC"), AnswerOk);
    EXPECT_EQ(LockRecord(*gic, "INSCOTABLE", 6703, true), 0);
    EXPECT_EQ(prompts.pending(), 0);

    ASSERT_TRUE(other->Release());
    HeldRecord mine(*gic, "INSCOTABLE", 6703);
    ASSERT_GT(mine.number, 0);

    auto late = Start("BACK2", "DRSMITH", "BACKOFFICE-PC", {"lock", "INSCOTABLE", "6703"});
    EXPECT_EQ(late->ReadLine(), "REFUSED");
}

TEST_F(LockProcessTest, ContendingStationsNeverHoldOneRecordTogether) {
    constexpr int kStations = 8;
    constexpr int kRounds = 200;
    const QString witness = dir.filePath("witness");
    std::vector<std::unique_ptr<Station>> stations;
    for (int i = 0; i < kStations; ++i) {
        stations.push_back(Start(QStringLiteral("ST%1").arg(i), "USER", "PC",
                                 {"contend", "PATABLE", "77", QString::number(kRounds), witness}));
    }
    for (auto& station : stations) {
        QProcess& process = station->process();
        ASSERT_TRUE(process.waitForFinished(300000));
        const QString output = QString::fromLocal8Bit(process.readAll());
        EXPECT_EQ(process.exitCode(), 0) << qPrintable(output);
        EXPECT_EQ(output.trimmed(), QStringLiteral("DONE %1").arg(kRounds));
    }
    // The last one out left nothing behind.
    EXPECT_FALSE(TempExists("4D.PAT"));
    EXPECT_FALSE(TempExists("4D.PAT.UserData"));
}

TEST_F(LockProcessTest, AKilledStationLeavesItsRecordLockable) {
    auto doomed = Start("BACK2", "DRSMITH", "BACKOFFICE-PC", {"lock", "PATABLE", "6703"});
    ASSERT_EQ(doomed->ReadLine(), "LOCKED 1");
    EXPECT_EQ(LockRecord(*gic, "PATABLE", 6703, false), 0);

    ASSERT_TRUE(doomed->Kill());
    EXPECT_TRUE(TempExists("1A2F.PAT"));
    HeldRecord mine(*gic, "PATABLE", 6703);
    EXPECT_GT(mine.number, 0);
    EXPECT_EQ(ReadTemp("1A2F.PAT.UserData"),
              "[DATA]\r\nUSER=ADMIN\r\nSTNID=FRONT1\r\nCOMP=FRONTDESK-PC\r\n");
}

}  // namespace
}  // namespace orvo::locks::test
