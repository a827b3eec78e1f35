// Record locks between processes: each lock_holder is a station of its own.
#include <QFileInfo>
#include <memory>

#include "tests/locks/lock_fixture.h"
#include "tests/locks/station.h"

namespace orvo::locks::test {
namespace {

using namespace orvo::component;

class LockProcessTest : public LockTest {
protected:
    void SetUp() override {
        LockTest::SetUp();
        ASSERT_TRUE(QFileInfo(HolderProgram()).isExecutable()) << qPrintable(HolderProgram());
    }
    std::unique_ptr<Station> Start(const QString& station, const QString& user,
                                   const QString& computer, const QStringList& command) {
        return std::make_unique<Station>(session_.dataPath, station, user, computer, command);
    }
};

TEST_F(LockProcessTest, OneStationWinsTheOtherIsToldWhoHoldsTheRecord) {
    auto other = Start("BACK2", "DRSMITH", "BACKOFFICE-PC", {"lock", "INSCOTABLE", "6703"});
    ASSERT_EQ(other->ReadLine(), "LOCKED 1");

    prompts_.Expect("ORVO Windows", LockedBy("DRSMITH", "BACKOFFICE-PC"), AnswerOk);
    EXPECT_EQ(LockRecord(host(), "INSCOTABLE", 6703, true), 0);
    EXPECT_EQ(prompts_.pending(), 0);

    ASSERT_TRUE(other->Release());
    HeldRecord mine(host(), "INSCOTABLE", 6703);
    ASSERT_GT(mine.number, 0);

    auto late = Start("BACK2", "DRSMITH", "BACKOFFICE-PC", {"lock", "INSCOTABLE", "6703"});
    EXPECT_EQ(late->ReadLine(), "REFUSED");
}

TEST_F(LockProcessTest, ContendingStationsNeverHoldOneRecordTogether) {
    constexpr int kStations = 8;
    constexpr int kRounds = 200;
    const QString witness = folder_->filePath("witness");
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
    EXPECT_EQ(LockRecord(host(), "PATABLE", 6703, false), 0);

    ASSERT_TRUE(doomed->Kill());
    EXPECT_TRUE(TempExists("1A2F.PAT"));
    HeldRecord mine(host(), "PATABLE", 6703);
    EXPECT_GT(mine.number, 0);
    EXPECT_EQ(ReadTemp("1A2F.PAT.UserData"),
              "[DATA]\r\nUSER=ADMIN\r\nSTNID=FRONT1\r\nCOMP=FRONTDESK-PC\r\n");
}

}  // namespace
}  // namespace orvo::locks::test
