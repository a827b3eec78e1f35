// Record locks, the station list and table locks within one process.
#include <QApplication>
#include <QDir>
#include <QWidget>
#include <list>

#include "platform/file_error.h"
#include "platform/lock_files.h"
#include "tests/locks/lock_fixture.h"

namespace orvo::locks::test {
namespace {

using namespace orvo::component;

const QString kTooManyFiles = QStringLiteral(
    "Windows will not open any more files for ORVO Windows. Please close any Patient or "
    "Transaction Information screens that are open and try again. If you have any other programs "
    "running, please close them also.\r\rThe current limit is : ");

TEST_F(LockTest, LockFileNamesTakeHexIdAndThreeLettersOfTheKey) {
    EXPECT_EQ(RecordLockPath(host(), "INSCOTABLE", 6703), TempPath("1A2F.INS"));
    EXPECT_EQ(RecordLockPath(host(), "PHATABLE", 6703), TempPath("1A2F.PHA"));
    EXPECT_EQ(RecordLockPath(host(), "PATABLE", 6703), TempPath("1A2F.PAT"));

    // Keys that share three letters share the lock.
    HeldRecord person(host(), "PATABLE", 6703);
    ASSERT_GT(person.number, 0);
    EXPECT_TRUE(TempExists("1A2F.PAT"));
    EXPECT_EQ(LockRecord(host(), "PATIENTS", 6703, false), 0);
}

TEST_F(LockTest, SecondLockInTheSameProcessIsRefusedWithTheHolderNamed) {
    HeldRecord first(host(), "INSCOTABLE", 6703);
    ASSERT_GT(first.number, 0);
    EXPECT_EQ(ReadTemp("1A2F.INS.UserData"),
              "[DATA]\r\nUSER=ADMIN\r\nSTNID=FRONT1\r\nCOMP=FRONTDESK-PC\r\n");

    QWidget help;
    help.setObjectName("frmHelp");
    help.show();
    prompts_.Expect("ORVO Windows", LockedBy("ADMIN", "FRONTDESK-PC"), AnswerOk);
    EXPECT_EQ(LockRecord(host(), "INSCOTABLE", 6703, true), 0);
    EXPECT_EQ(prompts_.pending(), 0);
    EXPECT_EQ(prompts_.messageIcons(), std::vector<Icon>{Icon::Information});
    EXPECT_FALSE(help.isVisible());

    // Without the holder file the holder is not named; without ShowMessage nothing is said.
    ASSERT_TRUE(QFile::remove(TempPath("1A2F.INS.UserData")));
    prompts_.Expect("ORVO Windows",
                    "This entry is locked for editing by another user." + kLockedOffer, AnswerOk);
    EXPECT_EQ(LockRecord(host(), "INSCOTABLE", 6703, true), 0);
    EXPECT_EQ(LockRecord(host(), "INSCOTABLE", 6703, false), 0);
    EXPECT_EQ(prompts_.shown().size(), 2u);

    first.Release();
    HeldRecord again(host(), "INSCOTABLE", 6703);
    EXPECT_GT(again.number, 0);
}

TEST_F(LockTest, UnlockDeletesOnlyWhatItHolds) {
    int number = LockRecord(host(), "EMPTABLE", 42, false);
    ASSERT_GT(number, 0);
    int zero = 0;
    UnlockRecord(host(), "EMPTABLE", 42, zero);
    EXPECT_TRUE(TempExists("2A.EMP"));
    EXPECT_EQ(LockRecord(host(), "EMPTABLE", 42, false), 0);

    UnlockRecord(host(), "EMPTABLE", 42, number);
    EXPECT_EQ(number, 0);
    EXPECT_FALSE(TempExists("2A.EMP"));
    EXPECT_FALSE(TempExists("2A.EMP.UserData"));
    EXPECT_EQ(StationLockList(host(), "EMPTABLE", 42, kStationListFind), 0);

    // Another screen takes the record; the first screen's second unlock must not touch it.
    HeldRecord other(host(), "EMPTABLE", 42);
    ASSERT_GT(other.number, 0);
    UnlockRecord(host(), "EMPTABLE", 42, number);
    EXPECT_TRUE(TempExists("2A.EMP.UserData"));
    EXPECT_EQ(LockRecord(host(), "EMPTABLE", 42, false), 0);

    // A new-record screen holds no lock: it may not delete a live one, only a dead one's files.
    int newRecord = kNewRecordLock;
    UnlockRecord(host(), "EMPTABLE", 42, newRecord);
    EXPECT_EQ(newRecord, 0);
    EXPECT_TRUE(TempExists("2A.EMP"));
    EXPECT_TRUE(TempExists("2A.EMP.UserData"));
    EXPECT_EQ(LockRecord(host(), "EMPTABLE", 42, false), 0);

    WriteTemp("2B.EMP", "");
    WriteTemp("2B.EMP.UserData", "[DATA]\r\nUSER=GONE\r\n");
    newRecord = kNewRecordLock;
    UnlockRecord(host(), "EMPTABLE", 43, newRecord);
    EXPECT_FALSE(TempExists("2B.EMP"));
    EXPECT_FALSE(TempExists("2B.EMP.UserData"));
}

// What a FileError says, or "<no error>" when the call went through.
template <class Call>
QString ErrorOf(Call&& call) {
    try {
        call();
    } catch (const FileError& error) {
        return error.describe();
    }
    return QStringLiteral("<no error>");
}

TEST_F(LockTest, ALockFileThatCannotBeOpenedIsAnErrorNotARefusal) {
    ASSERT_TRUE(QDir().mkpath(TempPath("1A2F.INS")));
    EXPECT_EQ(ErrorOf([&] { LockRecord(host(), "INSCOTABLE", 6703, true); }),
              "Cannot open the lock file " + TempPath("1A2F.INS") + ": Is a directory");
    ASSERT_TRUE(QDir().mkpath(TempPath("IPTable.LCK")));
    EXPECT_EQ(ErrorOf([&] { LockTable(host(), "IPTable", "", true, 0.5); }),
              "Cannot open the lock file " + TempPath("IPTable.LCK") + ": Is a directory");
    EXPECT_EQ(host().pauses, 0);
    EXPECT_TRUE(prompts_.shown().empty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    // No file number went with the failures.
    HeldRecord other(host(), "INSCOTABLE", 6704);
    EXPECT_EQ(other.number, 1);
    other.Release();

    // A file where the lock folder should be.
    ASSERT_TRUE(QDir(TempPath("")).removeRecursively());
    WriteFile(TempPath("").chopped(1), "");
    EXPECT_EQ(ErrorOf([&] { LockRecord(host(), "PATABLE", 1, false); }),
              "Cannot create the lock folder " + TempPath("") + ": Not a directory");
    EXPECT_EQ(StationLockList(host(), "PATABLE", 1, kStationListAdd), 0);

    // A data folder that is not there (a share not mounted) is not made here.
    session_.dataPath = folder_->filePath("gone/");
    EXPECT_EQ(ErrorOf([&] { LockTable(host(), "IPTable", "", false, 0.5); }),
              "Cannot reach the data folder " + folder_->filePath("gone/") +
                  ": No such file or directory");
    EXPECT_FALSE(QFile::exists(folder_->filePath("gone")));
}

TEST(SafeFileNameTest, PlainNamesStayOthersAreEscapedReadablyAndReversibly) {
    using lockfiles::NameOfFile;
    using lockfiles::SafeFileName;
    for (const QString name :
         {"FRONT1", "WORKSTATION-NUMBER-0042", "IPTable", "Peña", "Łódź 2", "Müller.PC"}) {
        EXPECT_EQ(SafeFileName(name), name);
    }
    EXPECT_EQ(SafeFileName("../../escape"), "%2E.%2F..%2Fescape");
    EXPECT_EQ(SafeFileName("."), "%2E");
    EXPECT_EQ(SafeFileName("A:B\\C%\n"), "A%3AB%5CC%25%0A");
    EXPECT_EQ(SafeFileName("FRONT "), "FRONT%20");
    for (const QString name : {"../../escape", "A:B\\C%\n", "FRONT ", "50%/José"})
        EXPECT_EQ(NameOfFile(SafeFileName(name)), name);

    // Long names are cut to a length every file system takes, and stay apart.
    const QString longName = QString(290, QChar(0x00E9)) + "0001";
    const QString cut = SafeFileName(longName);
    EXPECT_LE(cut.toUtf8().size(), lockfiles::kMaxNameBytes);
    EXPECT_TRUE(cut.startsWith(QString(50, QChar(0x00E9)))) << cut.toStdString();
    EXPECT_NE(cut, SafeFileName(QString(290, QChar(0x00E9)) + "0002"));
    EXPECT_EQ(cut, SafeFileName(longName));
}

TEST_F(LockTest, StationNamesNeverLeadOutOfTheLockFolder) {
    const QString outside = QDir(folder_->path()).filePath("../escape.LCK");
    session_.stationId = "../../escape";
    {
        HeldRecord carrier(host(), "INSCOTABLE", 6703);
        ASSERT_GT(carrier.number, 0);
        EXPECT_TRUE(TempExists("%2E.%2F..%2Fescape.LCK"));
        EXPECT_EQ(lockfiles::ReadRecordHolder(TempPath("1A2F.INS.UserData")).station,
                  "../../escape");
    }
    EXPECT_FALSE(QFile::exists(outside));
    QFile::remove(outside);
    EXPECT_EQ(QDir(folder_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"TEMP"});

    // Keys and table names too.
    EXPECT_EQ(RecordLockPath(host(), "../PATABLE", 1), TempPath("1.%2E.%2F"));
    int table = LockTable(host(), "../../x", "", false, 0);
    EXPECT_GT(table, 0);
    UnlockTable(table);
    EXPECT_TRUE(TempExists("%2E.%2F..%2Fx.LCK"));
    EXPECT_TRUE(TempExists("%2E.%2F..%2Fx.Who"));
}

TEST_F(LockTest, LongSlashedAndAccentedStationNamesKeepTheirListsAndHolders) {
    const QString names[] = {QString(300, 'W'), QString(299, 'W') + 'X', "FRONT/DESK",
                             "Recepción Łódź-1"};
    QStringList lists;
    for (const QString& station : names) {
        session_.stationId = station;
        HeldRecord person(host(), "PATABLE", 12);
        ASSERT_GT(person.number, 0) << station.toStdString();
        EXPECT_EQ(lockfiles::ReadRecordHolder(TempPath("C.PAT.UserData")).station, station);
        EXPECT_EQ(StationLockList(host(), "PATABLE", 12, kStationListAdd), 1) << "the slot is ours";
        const QString list = lockfiles::SafeFileName(station) + ".LCK";
        EXPECT_TRUE(TempExists(list)) << list.toStdString();
        lists << list;
    }
    EXPECT_EQ(lists.removeDuplicates(), 0);

    // The slot keeps the last fifteen characters as they are: no question marks.
    session_.stationId = "Recepción Łódź-1";
    HeldRecord person(host(), "PATABLE", 12);
    EXPECT_EQ(QString::fromUtf8(ReadTemp("Recepción Łódź-1.LCK")),
              "PATABLE                12ecepción Łódź-1");
    EXPECT_EQ(StationLockList(host(), "PATABLE", 12, kStationListFind), 1);
}

TEST_F(LockTest, FileNumbersRunOutAt255) {
    std::list<HeldRecord> held;
    for (int i = 1; i <= kMaxLockFileNumber; ++i) {
        held.emplace_back(host(), "PATABLE", i);
        ASSERT_EQ(held.back().number, i);
    }
    prompts_.Expect("ORVO Windows", kTooManyFiles + "255 of 255 maximum.", AnswerOk);
    EXPECT_EQ(LockRecord(host(), "PATABLE", 1000, false), 0);

    // The refusal is told first when asked for, then the count.
    prompts_.Expect("ORVO Windows",
                    "This entry is locked for editing by another user." + kLockedOffer, AnswerOk);
    prompts_.Expect("ORVO Windows", kTooManyFiles + "255 of 255 maximum.", AnswerOk);
    EXPECT_EQ(LockRecord(host(), "PATABLE", 1000, true), 0);
    EXPECT_EQ(prompts_.pending(), 0);

    // The first free number is handed out again.
    auto seventh = std::next(held.begin(), 6);
    seventh->Release();
    HeldRecord next(host(), "PATABLE", 1000);
    EXPECT_EQ(next.number, 7);
}

TEST_F(LockTest, StationListSlotsAreFortyCharactersWithNoLineEnds) {
    HeldRecord carrier(host(), "INSCOTABLE", 6703);
    HeldRecord person(host(), "patable", 12);
    ASSERT_GT(carrier.number, 0);
    ASSERT_GT(person.number, 0);
    EXPECT_EQ(ReadTemp("FRONT1.LCK"),
              "INSCOTABLE           6703         FRONT1"
              "PATABLE                12         FRONT1");
    EXPECT_EQ(StationLockList(host(), "PATABLE", 12, kStationListFind), 41);

    // Long fields keep the left of the key and the right of the id and the station.
    session_.stationId = "WORKSTATION-NUMBER-0042";
    EXPECT_EQ(StationLockList(host(), "GROPLATABLE_EXTRA", -2147483647 - 1, kStationListAdd), 1);
    EXPECT_EQ(ReadTemp("WORKSTATION-NUMBER-0042.LCK"), "GROPLATABLE_EXT2147483648ION-NUMBER-0042");
    // The station still knows its own slot by the part the slot keeps.
    EXPECT_EQ(StationLockList(host(), "GROPLATABLE_EXTRA", -2147483647 - 1, kStationListAdd), 1);
    EXPECT_EQ(StationLockList(host(), "GROPLATABLE_EXTRA", -2147483647 - 1, kStationListRemove), 1);
    EXPECT_EQ(ReadTemp("WORKSTATION-NUMBER-0042.LCK"), QByteArray(40, ' '));
}

TEST_F(LockTest, StationListReusesAFreeSlotInTheMiddle) {
    HeldRecord a(host(), "PATABLE", 1);
    HeldRecord b(host(), "PATABLE", 2);
    HeldRecord c(host(), "PATABLE", 3);
    b.Release();
    const QByteArray slotA = "PATABLE                 1         FRONT1";
    const QByteArray slotC = "PATABLE                 3         FRONT1";
    EXPECT_EQ(ReadTemp("FRONT1.LCK"), slotA + QByteArray(40, ' ') + slotC);

    HeldRecord d(host(), "RSTABLE", 4);
    EXPECT_EQ(ReadTemp("FRONT1.LCK"), slotA + "RSTABLE                 4         FRONT1" + slotC);
}

TEST_F(LockTest, StationListFindsKeysAtAnyPositionAndOnlyFreesItsOwn) {
    ASSERT_TRUE(QDir().mkpath(TempPath("")));
    const QByteArray mine = "PATABLE                 5         FRONT1";
    const QByteArray theirs = "DTTABLE                 5          OTHER";
    WriteTemp("FRONT1.LCK", "XYZ" + mine + theirs);

    EXPECT_EQ(StationLockList(host(), "PATABLE", 5, kStationListFind), 4);
    EXPECT_EQ(StationLockList(host(), "PATABLE", 5, kStationListAdd), 1);
    EXPECT_EQ(StationLockList(host(), "DTTABLE", 5, kStationListAdd), 0);
    EXPECT_EQ(StationLockList(host(), "DTTABLE", 5, kStationListRemove), 0);
    EXPECT_EQ(StationLockList(host(), "EMPTABLE", 5, kStationListFind), 0);
    EXPECT_EQ(StationLockList(host(), "EMPTABLE", 5, kStationListRemove), 0);
    EXPECT_EQ(ReadTemp("FRONT1.LCK"), "XYZ" + mine + theirs);

    EXPECT_EQ(StationLockList(host(), "PATABLE", 5, kStationListRemove), 1);
    EXPECT_EQ(ReadTemp("FRONT1.LCK"), "XYZ" + QByteArray(40, ' ') + theirs);
}

TEST_F(LockTest, TableLockWritesItsHolderInTwentyFiveCharacters) {
    int plans = LockTable(host(), "IPTable", "", false, 0.5);
    ASSERT_GT(plans, 0);
    EXPECT_EQ(ReadTemp("IPTable.Who"), "ADMIN                    ");

    session_.loginName = "A-VERY-LONG-LOGIN-NAME-OF-THIRTY";
    int other = LockTable(host(), "PlanDetailsTable", "", false, 0.5);
    ASSERT_GT(other, 0);
    EXPECT_EQ(ReadTemp("PlanDeta.Who"), "A-VERY-LONG-LOGIN-NAME-OF");
    EXPECT_TRUE(TempExists("PlanDeta.LCK"));

    UnlockTable(plans);
    UnlockTable(other);
    EXPECT_EQ(plans, 0);
    EXPECT_TRUE(TempExists("IPTable.LCK"));
    EXPECT_TRUE(TempExists("IPTable.Who"));
    int again = LockTable(host(), "IPTable", "", false, 0.5);
    EXPECT_GT(again, 0);
    UnlockTable(again);
}

TEST_F(LockTest, TableLockWithoutRetryGivesUpAtOnceAndSilently) {
    int held = LockTable(host(), "IPTable", "", false, 0.5);
    ASSERT_GT(held, 0);
    EXPECT_EQ(LockTable(host(), "IPTable", "Plan Details", false, 0.5), 0);
    EXPECT_EQ(host().pauses, 0);
    EXPECT_TRUE(prompts_.shown().empty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    UnlockTable(held);
}

TEST_F(LockTest, TableLockAsksOnEveryTenthRefusal) {
    session_.loginName = "DRJONES";
    int held = LockTable(host(), "IPTable", "", false, 0.5);
    ASSERT_GT(held, 0);
    session_.loginName = "ADMIN";

    const QString text =
        "DRJONES is currently updating to the database on another computer. "
        "Please wait a few seconds and click the [Retry] button.";
    prompts_.Expect("Plan Details", text, AnswerRetry)
        .Expect("Plan Details", text, AnswerRetry)
        .Expect("Plan Details", text, AnswerCancel);
    std::vector<int> pausesAtPrompt;
    std::vector<bool> busyAtPrompt;
    prompts_.onMessage = [&] {
        pausesAtPrompt.push_back(host().pauses);
        busyAtPrompt.push_back(QApplication::overrideCursor() != nullptr);
    };
    bool busyWhileWaiting = true;
    host().onPause = [&](int) { busyWhileWaiting &= QApplication::overrideCursor() != nullptr; };

    EXPECT_EQ(LockTable(host(), "IPTable", "Plan Details", true, 0.5), 0);
    EXPECT_EQ(prompts_.pending(), 0);
    EXPECT_EQ(pausesAtPrompt, (std::vector<int>{9, 19, 29}));
    EXPECT_EQ(host().pauses, 29);
    EXPECT_EQ(host().lastPause, 500);
    EXPECT_EQ(busyAtPrompt, (std::vector<bool>{false, false, false}));
    EXPECT_TRUE(busyWhileWaiting);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    UnlockTable(held);
}

TEST_F(LockTest, TableLockTakenOnceTheHolderLetsGo) {
    int held = LockTable(host(), "IPTable", "", false, 0.5);
    ASSERT_GT(held, 0);
    prompts_.Expect("ORVO Windows",
                    "ADMIN is currently updating to the database on another computer. Please "
                    "wait a few seconds and click the [Retry] button.",
                    AnswerRetry);
    host().onPause = [&](int pauses) {
        if (pauses == 12)
            UnlockTable(held);
    };
    session_.loginName = "NURSE";
    int taken = LockTable(host(), "IPTable", "", true, 0);
    EXPECT_GT(taken, 0);
    EXPECT_EQ(host().pauses, 12);
    EXPECT_EQ(host().lastPause, 0);
    EXPECT_EQ(ReadTemp("IPTable.Who"), "NURSE                    ");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    UnlockTable(taken);
}

}  // namespace
}  // namespace orvo::locks::test
