// The support listing of a data folder's locks, read from the files the stations leave.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

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

TEST(LockReport, EmptyFolderSaysSo) {
    QTemporaryDir data;
    EXPECT_TRUE(LockReport(data.path()).contains("nothing was ever locked here"));
    QDir().mkpath(data.filePath("TEMP"));
    EXPECT_EQ(LockReport(data.path()).count("  none"), 3);
}

}  // namespace
}  // namespace orvo::host
