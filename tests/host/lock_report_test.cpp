// The support listing of a data folder's locks, read from the files the stations leave.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>
#include <stdexcept>

#include "host/lock_report.h"
#include "platform/lock_files.h"

namespace orvo::host {
namespace {

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(LockReport, NamesHolderAndTellsHeldFromLeftLocks) {
    QTemporaryDir data;
    const QString temp = data.filePath("TEMP");
    QDir().mkpath(temp);
    // Carrier 6703 held now by FRONT1; pharmacy 31 left behind by a station that ended.
    const QString held = temp + "/1A2F.INS";
    Write(held, {});
    Write(lockfiles::HolderPath(held),
          lockfiles::RecordHolderText({"DRSMITH", "FRONT1", "PC-7"}).toUtf8());
    const QString left = temp + "/1F.PHA";
    Write(left, {});
    Write(lockfiles::HolderPath(left),
          lockfiles::RecordHolderText({"ANN", "BACK2", "PC-9"}).toUtf8());
    Write(temp + "/IPTable.LCK", {});
    Write(temp + "/IPTable.Who", QByteArray("MANAGER").leftJustified(25, ' '));
    Write(temp + "/FRONT1.LCK",
          (lockfiles::SlotKey("INSCOTABLE", 6703) + lockfiles::SlotStation("FRONT1") +
           QString(40, ' ') + lockfiles::SlotKey("PATABLE", 12) + lockfiles::SlotStation("FRONT1"))
              .toLatin1());

    const int fd = ::open(QFile::encodeName(held).constData(), O_RDWR);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    ASSERT_EQ(::fcntl(fd, F_OFD_SETLK, &lock), 0);

    const QString report = LockReport(data.path());
    ::close(fd);
    EXPECT_TRUE(
        report.contains("1A2F.INS      table INS  record 6703  user [DRSMITH] station [FRONT1] "
                        "computer [PC-7]  held"))
        << report.toStdString();
    EXPECT_TRUE(report.contains(
        "1F.PHA        table PHA  record 31  user [ANN] station [BACK2] computer [PC-9]  left"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("IPTable.LCK   last taken by [MANAGER]  left"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("FRONT1: 2 slot(s)")) << report.toStdString();
    EXPECT_TRUE(report.contains("PATABLE         record 12 (station FRONT1)"))
        << report.toStdString();
    EXPECT_FALSE(report.contains("IPTable: ")) << "a table lock is no station list";
    EXPECT_FALSE(LockReport(data.path()).contains("held")) << "released once closed";
}

TEST(LockReport, EmptyFolderSaysSoAndAMissingOneIsAnError) {
    QTemporaryDir data;
    EXPECT_TRUE(LockReport(data.path()).contains("nothing was ever locked here"));
    QDir().mkpath(data.filePath("TEMP"));
    EXPECT_EQ(LockReport(data.path()).count("  none"), 3);

    const QString missing = data.filePath("not-mounted");
    try {
        LockReport(missing);
        ADD_FAILURE() << "a missing data folder was reported on";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(QString::fromUtf8(error.what()),
                  "the data folder " + missing + " does not exist");
    }
}

TEST(LockReport, StationFilesAreNeverTakenForRecordLocksAndOddTextStaysOnItsLine) {
    QTemporaryDir data;
    const QString temp = data.filePath("TEMP");
    QDir().mkpath(temp);
    // Stations named like hexadecimal numbers, one with a record locked, one with a name that
    // had to be escaped, one outside Latin-1.
    auto list = [](const QString& station, const QString& key, int id) {
        return (lockfiles::SlotKey(key, id) + lockfiles::SlotStation(station)).toUtf8();
    };
    Write(temp + "/12.LCK", list("12", "PATABLE", 7));
    Write(temp + "/ABC.LCK", {});
    Write(temp + "/" + lockfiles::SafeFileName("FRONT/DESK") + ".LCK",
          list("FRONT/DESK", "RSTABLE", 3));
    Write(temp + "/Łódź.LCK", list("Łódź", "EMPTABLE", 9));
    // A record lock whose key happens to be LCK, and a holder with a NUL and a line end in it.
    Write(temp + "/5.LCK", {});
    static const char holder[] = "[DATA]\r\nUSER=DR\0SMITH\r\nSTNID=A\x1b[2J\r\n";
    Write(temp + "/5.LCK.UserData", QByteArray(holder, sizeof holder - 1));
    Write(temp + "/7.PAT", {});
    Write(temp + "/7.PAT.UserData",
          lockfiles::RecordHolderText({"NURSE", "12", "Peña-PC"}).toUtf8());

    const QString report = LockReport(data.path());
    const QString records = report.section("Record locks:", 1).section("Table locks:", 0, 0);
    EXPECT_EQ(records.count("record "), 2) << report.toStdString();
    EXPECT_TRUE(
        records.contains("7.PAT         table PAT  record 7  user [NURSE] station [12] "
                         "computer [Peña-PC]  left"))
        << report.toStdString();
    EXPECT_TRUE(
        records.contains("5.LCK         table LCK  record 5  user [DR\\x00SMITH] station "
                         "[A\\x1B[2J] computer []  left"))
        << report.toStdString();
    EXPECT_FALSE(report.contains(QChar(0)));

    const QString lists = report.section("Station lists:", 1);
    EXPECT_TRUE(lists.contains("  12: 1 slot(s)\n    PATABLE         record 7 (station 12)"))
        << report.toStdString();
    EXPECT_TRUE(lists.contains("  ABC: 0 slot(s)")) << report.toStdString();
    EXPECT_TRUE(
        lists.contains("  FRONT/DESK: 1 slot(s)\n    RSTABLE         record 3 (station "
                       "FRONT/DESK)"))
        << report.toStdString();
    EXPECT_TRUE(lists.contains("  Łódź: 1 slot(s)\n    EMPTABLE        record 9 (station Łódź)"))
        << report.toStdString();
    EXPECT_FALSE(lists.contains("  5:")) << report.toStdString();
}

}  // namespace
}  // namespace orvo::host
