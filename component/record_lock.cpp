#include "component/record_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QWidget>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <utility>

#include "component/public/gic.h"
#include "platform/lock_files.h"
#include "platform/prompts.h"

namespace orvo::component {
namespace {

using lockfiles::AsStored;
using lockfiles::HolderPath;
using lockfiles::kSlotKeySize;
using lockfiles::kSlotSize;
using lockfiles::kStationWidth;
using lockfiles::ReadProfileString;
using lockfiles::SlotKey;
using lockfiles::SlotStation;

Q_LOGGING_CATEGORY(lcLocks, "orvo.locks")

const QString kProgramTitle = QStringLiteral("ORVO Windows");
const QString kCrLf = QStringLiteral("\r\n");
const QString kReadOnlyOffer =
    QStringLiteral("Click [OK] to open a read-only copy of this patient's record.");

constexpr qsizetype kTableHolderSize = 25;
constexpr int kTableNameWidth = 8;
// A name that keeps being released and taken again between our open and our lock is, for all
// practical purposes, held.
constexpr int kMaxOpenRounds = 100;

// The descriptors behind the file numbers this process has handed out; -1 where a number is free.
std::array<int, kMaxLockFileNumber + 1>& openFiles() {
    static std::array<int, kMaxLockFileNumber + 1> files = [] {
        std::array<int, kMaxLockFileNumber + 1> all;
        all.fill(-1);
        return all;
    }();
    return files;
}

// The first free file number, or 0 when all are taken.
int FreeFileNumber() {
    const auto& files = openFiles();
    for (int number = 1; number <= kMaxLockFileNumber; ++number) {
        if (files[number] < 0)
            return number;
    }
    return 0;
}

// Gives up the number and answers its descriptor, -1 when the number is not one of ours.
int TakeFileNumber(int number) {
    if (number < 1 || number > kMaxLockFileNumber)
        return -1;
    return std::exchange(openFiles()[number], -1);
}

QString TempFolder(GIC& gic) {
    return gic.GetDataPath() + QStringLiteral("TEMP/");
}

void EnsureTempFolder(GIC& gic) {
    const QString folder = TempFolder(gic);
    if (!QDir().mkpath(folder))
        qCWarning(lcLocks) << "Cannot create the lock folder" << folder;
}

enum class OpenResult { Locked, Refused, TooManyFiles, Failed };

struct Opened {
    OpenResult result = OpenResult::Failed;
    int fd = -1;
};

bool IsSameFile(int fd, const QByteArray& path) {
    struct stat held {};
    struct stat named {};
    return ::fstat(fd, &held) == 0 && ::stat(path.constData(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

bool LockWholeFile(int fd) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 0;
    return ::fcntl(fd, F_OFD_SETLK, &lock) == 0;
}

// The exclusive open. A lock counts only on the file that still carries the name: a holder
// deletes its files before it lets go, so an open that raced a release may have locked a file
// that is gone, and then opens the name again.
Opened OpenExclusive(const QString& path, bool create) {
    const QByteArray native = QFile::encodeName(path);
    const int flags = O_RDWR | O_CLOEXEC | (create ? O_CREAT : 0);
    for (int round = 0; round < kMaxOpenRounds; ++round) {
        const int fd = ::open(native.constData(), flags, 0666);
        if (fd < 0) {
            const int error = errno;
            if (error == EINTR)
                continue;
            if (error == EMFILE || error == ENFILE)
                return {OpenResult::TooManyFiles};
            qCDebug(lcLocks) << "Cannot open" << path << std::strerror(error);
            return {OpenResult::Failed};
        }
        if (!LockWholeFile(fd)) {
            const int error = errno;
            ::close(fd);
            if (error == EAGAIN || error == EACCES)
                return {OpenResult::Refused};
            qCWarning(lcLocks) << "Cannot lock" << path << std::strerror(error);
            return {OpenResult::Failed};
        }
        if (IsSameFile(fd, native))
            return {OpenResult::Locked, fd};
        ::close(fd);
    }
    return {OpenResult::Refused};
}

// Deletes a record's lock and holder files while the lock on them is held by fd, so that nobody
// can take the lock between the delete and the release.
void DeleteHeldFiles(int fd, const QString& lockPath) {
    const QByteArray native = QFile::encodeName(lockPath);
    if (!IsSameFile(fd, native))
        return;
    QFile::remove(HolderPath(lockPath));
    ::unlink(native.constData());
}

void WriteRecordHolder(GIC& gic, const QString& lockPath) {
    const QString text = lockfiles::RecordHolderText(
        {gic.GetLoginName(), gic.GetStationID(), gic.GetComputerName()});
    // Written aside and renamed, so that a station refused meanwhile reads a whole file. Not
    // synced: the file means nothing once the lock is gone, and a crash takes the lock with it.
    const QString holderPath = HolderPath(lockPath);
    const QString aside = holderPath + QLatin1Char('.') + QString::number(::getpid());
    QFile file(aside);
    const QByteArray bytes = text.toUtf8();
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                         file.write(bytes) == bytes.size() && file.flush();
    file.close();
    if (!written || ::rename(QFile::encodeName(aside).constData(),
                             QFile::encodeName(holderPath).constData()) != 0) {
        qCWarning(lcLocks) << "Cannot write" << holderPath << file.errorString();
        QFile::remove(aside);
    }
}

// The help window would stand in front of the message.
void HideHelpWindow() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->objectName().compare(QLatin1String("FRMHELP"), Qt::CaseInsensitive) == 0) {
            window->hide();
        }
    }
}

void TellRecordLocked(GIC& gic, const QString& lockPath) {
    HideHelpWindow();
    const QString holderPath = HolderPath(lockPath);
    QString text;
    if (gic.FileExists(holderPath)) {
        const QString user =
            ReadProfileString(holderPath, QStringLiteral("DATA"), QStringLiteral("USER"));
        const QString computer =
            ReadProfileString(holderPath, QStringLiteral("DATA"), QStringLiteral("COMP"));
        text = QStringLiteral("This entry is locked for editing by user [") + user +
               QStringLiteral("] on computer [") + computer + QStringLiteral("].");
    } else {
        text = QStringLiteral("This entry is locked for editing by another user.");
    }
    prompts().Message(text + kCrLf + kCrLf + kReadOnlyOffer, Buttons::Ok, Icon::Information,
                      kProgramTitle);
}

void TellTooManyFiles(int numberTried) {
    const QString text =
        QStringLiteral(
            "Windows will not open any more files for ORVO Windows. Please close any Patient or "
            "Transaction Information screens that are open and try again. If you have any other "
            "programs running, please close them also.") +
        QStringLiteral("\r\r") + QStringLiteral("The current limit is : ") +
        QString::number(numberTried - 1) + QStringLiteral(" of 255 maximum.");
    prompts().Message(text, Buttons::Ok, Icon::None, kProgramTitle);
}

// Free slots are looked for on slot boundaries only, so that the blank end of one slot and the
// blank start of the next are never taken for a free one.
qsizetype FirstFreeSlot(const QString& text) {
    const QString blank(kSlotSize, QLatin1Char(' '));
    for (qsizetype at = 0; at + kSlotSize <= text.size(); at += kSlotSize) {
        if (QStringView(text).mid(at, kSlotSize) == blank)
            return at;
    }
    return -1;
}

bool WriteWhole(QFile& file, const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return file.seek(0) && file.write(bytes) == bytes.size() && file.flush();
}

int StationLockListUnguarded(GIC& gic, const QString& tableKey, int recordId, short mode) {
    EnsureTempFolder(gic);
    QFile file(TempFolder(gic) + gic.GetStationID() + QStringLiteral(".LCK"));
    if (!file.open(QIODevice::ReadWrite)) {
        qCDebug(lcLocks) << "Cannot open" << file.fileName() << file.errorString();
        return 0;
    }
    QString text = QString::fromLatin1(file.readAll());
    const QString key = SlotKey(tableKey, recordId);
    const qsizetype found = (text + QLatin1Char(' ')).indexOf(key);
    if (mode == kStationListFind)
        return static_cast<int>(found + 1);

    const QString station = SlotStation(gic.GetStationID());
    if (found < 0) {
        if (mode == kStationListRemove)
            return 0;
        const QString slot = key + station;
        const qsizetype free = FirstFreeSlot(text);
        if (free >= 0) {
            text.replace(free, kSlotSize, slot);
        } else {
            text += slot;
        }
        return WriteWhole(file, text) ? 1 : 0;
    }

    // Compared in the form the slot keeps, so that a station id longer than the field still
    // knows its own slots.
    const bool ours = text.mid(found + kSlotKeySize, kStationWidth).trimmed() == station.trimmed();
    if (mode != kStationListRemove)
        return ours ? 1 : 0;
    if (!ours)
        return 0;
    const qsizetype length = qMin(kSlotSize, text.size() - found);
    text.replace(found, length, QString(length, QLatin1Char(' ')));
    return WriteWhole(file, text) ? 1 : 0;
}

// Keeps the hourglass up for the life of the object.
class BusyCursor {
public:
    BusyCursor() { Set(); }
    ~BusyCursor() { Restore(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

    void Set() {
        if (set_ || !qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
            return;
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        set_ = true;
    }
    void Restore() {
        if (!set_)
            return;
        QGuiApplication::restoreOverrideCursor();
        set_ = false;
    }

private:
    bool set_ = false;
};

void WriteTableHolder(GIC& gic, const QString& path) {
    const QByteArray who =
        gic.GetLoginName().left(kTableHolderSize).leftJustified(kTableHolderSize).toLatin1();
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || file.write(who) != who.size() ||
        !file.resize(kTableHolderSize)) {
        qCWarning(lcLocks) << "Cannot write" << path << file.errorString();
    }
}

QString ReadTableHolder(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLatin1(file.read(kTableHolderSize)).trimmed();
}

bool AskRetryTable(const QString& holderPath, const QString& title, BusyCursor& cursor) {
    const QString text =
        ReadTableHolder(holderPath) +
        QStringLiteral(
            " is currently updating to the database on another computer. Please wait a "
            "few seconds and click the [Retry] button.");
    cursor.Restore();
    const int answer = prompts().Message(text, Buttons::RetryCancel, Icon::None,
                                         title.isEmpty() ? kProgramTitle : title);
    cursor.Set();
    return answer == AnswerRetry;
}

}  // namespace

QString RecordLockPath(GIC& gic, const QString& TableKey, int RecordID) {
    return TempFolder(gic) + QString::number(static_cast<quint32>(RecordID), 16).toUpper() +
           QLatin1Char('.') + TableKey.left(3).toUpper();
}

int LockRecord(GIC& gic, const QString& TableKey, int RecordID, bool ShowMessage) {
    EnsureTempFolder(gic);
    const QString path = RecordLockPath(gic, TableKey, RecordID);
    const int number = FreeFileNumber();
    OpenResult result = OpenResult::TooManyFiles;
    if (number > 0) {
        const Opened opened = OpenExclusive(path, true);
        if (opened.result == OpenResult::Locked) {
            openFiles()[number] = opened.fd;
            if (StationLockList(gic, TableKey, RecordID, kStationListAdd)) {
                WriteRecordHolder(gic, path);
            }
            return number;
        }
        result = opened.result;
    }
    if (ShowMessage)
        TellRecordLocked(gic, path);
    if (result == OpenResult::TooManyFiles) {
        TellTooManyFiles(number > 0 ? number : kMaxLockFileNumber + 1);
    }
    return 0;
}

void UnlockRecord(GIC& gic, const QString& TableKey, int RecordID, int& FileNumber) {
    if (FileNumber <= 0)
        return;
    const int fd = TakeFileNumber(FileNumber);
    FileNumber = 0;
    const QString path = RecordLockPath(gic, TableKey, RecordID);
    if (fd >= 0) {
        DeleteHeldFiles(fd, path);
        ::close(fd);
    } else {
        // Not a lock of ours: the files go only when nobody holds the record.
        const Opened opened = OpenExclusive(path, false);
        if (opened.result == OpenResult::Locked) {
            DeleteHeldFiles(opened.fd, path);
            ::close(opened.fd);
        }
    }
    StationLockList(gic, TableKey, RecordID, kStationListRemove);
}

int StationLockList(GIC& gic, const QString& TableKey, int RecordID, short Mode) {
    // The list only informs; no failure of it may cost a lock.
    try {
        return StationLockListUnguarded(gic, TableKey, RecordID, Mode);
    } catch (const std::exception& error) {
        qCWarning(lcLocks) << "Station lock list:" << error.what();
    } catch (...) {
        qCWarning(lcLocks) << "Station lock list: unknown error";
    }
    return 0;
}

int LockTable(GIC& gic, const QString& TableName, const QString& Title, bool Retry,
              double WaitSeconds) {
    BusyCursor cursor;
    EnsureTempFolder(gic);
    const QString base = TempFolder(gic) + TableName.left(kTableNameWidth);
    const QString lockPath = base + QStringLiteral(".LCK");
    const QString holderPath = base + QStringLiteral(".Who");
    const int waitMilliseconds = qMax(0, qRound(WaitSeconds * 1000.0));
    for (int attempts = 1;; ++attempts) {
        const int number = FreeFileNumber();
        if (number > 0) {
            const Opened opened = OpenExclusive(lockPath, true);
            if (opened.result == OpenResult::Locked) {
                openFiles()[number] = opened.fd;
                WriteTableHolder(gic, holderPath);
                return number;
            }
        }
        if (!Retry)
            return 0;
        if (attempts % 10 == 0 && !AskRetryTable(holderPath, Title, cursor))
            return 0;
        gic.PauseMilliseconds(waitMilliseconds);
    }
}

void UnlockTable(int& FileNumber) {
    const int fd = TakeFileNumber(FileNumber);
    if (fd >= 0)
        ::close(fd);
    FileNumber = 0;
}

}  // namespace orvo::component
