#include "component/record_lock.h"

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QWidget>
#include <array>
#include <cerrno>
#include <cstring>
#include <exception>
#include <utility>

#include "component/component_log.h"
#include "component/public/gic.h"
#include "platform/file_error.h"
#include "platform/file_lock.h"
#include "platform/lock_files.h"
#include "platform/prompts.h"
#include "platform/shared_files.h"

namespace orvo::component {
namespace {

using lockfiles::AsStored;
using lockfiles::HolderPath;
using lockfiles::kSlotKeySize;
using lockfiles::kSlotSize;
using lockfiles::kStationWidth;
using lockfiles::kTableHolderSize;
using lockfiles::ReadProfileString;
using lockfiles::SlotKey;
using lockfiles::SlotStation;

const QString kProgramTitle = QStringLiteral("ORVO Windows");
const QString kCrLf = QStringLiteral("\r\n");
const QString kReadOnlyOffer =
    QStringLiteral("Click [OK] to open a read-only copy of this patient's record.");

constexpr int kTableNameWidth = 8;

// The locks behind the file numbers this process has handed out; not held where a number is free.
std::array<FileLock, kMaxLockFileNumber + 1>& openFiles() {
    static std::array<FileLock, kMaxLockFileNumber + 1> files;
    return files;
}

// The first free file number, or 0 when all are taken.
int FreeFileNumber() {
    const auto& files = openFiles();
    for (int number = 1; number <= kMaxLockFileNumber; ++number) {
        if (!files[number].held())
            return number;
    }
    return 0;
}

// Gives up the number and answers its lock, one not held when the number is not one of ours.
FileLock TakeFileNumber(int number) {
    if (number < 1 || number > kMaxLockFileNumber)
        return {};
    return std::move(openFiles()[number]);
}

QString TempFolder(GIC& gic) {
    return gic.GetDataPath() + QStringLiteral("TEMP/");
}

// Makes TEMP/ when it is missing, shared with every user of the practice as the data folder says
// (see platform/shared_files.h), and answers the rule its files are made by. The data folder is
// never made here: a missing one is a share that is not there, and locks taken in a folder of
// our own would keep nobody out.
shared::Sharing PrepareTempFolder(GIC& gic) {
    const QString data = gic.GetDataPath();
    int error = 0;
    const shared::Sharing sharing = shared::Sharing::Of(data, &error);
    if (error != 0)
        throw FileError(QStringLiteral("Cannot reach the data folder"), data, error);
    error = shared::MakeSharedFolder(TempFolder(gic), sharing);
    if (error != 0)
        throw FileError(QStringLiteral("Cannot create the lock folder"), TempFolder(gic), error);
    return sharing;
}

void WriteRecordHolder(GIC& gic, const QString& lockPath, const shared::Sharing& sharing) {
    const QString text = lockfiles::RecordHolderText(
        {gic.GetLoginName(), gic.GetStationID(), gic.GetComputerName()});
    // Written aside and renamed, so that a station refused meanwhile reads a whole file. Not
    // synced: the file means nothing once the lock is gone, and a crash takes the lock with it.
    const QString holderPath = HolderPath(lockPath);
    const int error = shared::WriteSharedFile(holderPath, text.toUtf8(), sharing);
    if (error != 0)
        qCWarning(lcLocks) << "Cannot write" << holderPath << std::strerror(error);
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
    const QByteArray bytes = text.toUtf8();
    return file.seek(0) && file.write(bytes) == bytes.size() && file.flush() &&
           file.resize(bytes.size());
}

// Opens a file of TEMP/ for reading and writing, creating it shared when it is missing.
bool OpenSharedFile(QFile& file, const shared::Sharing& sharing) {
    const int fd = shared::OpenShared(file.fileName(), O_RDWR | O_CREAT, sharing);
    if (fd < 0) {
        qCWarning(lcLocks) << "Cannot open" << file.fileName() << std::strerror(errno);
        return false;
    }
    return file.open(fd, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle);
}

int StationLockListUnguarded(GIC& gic, const QString& tableKey, int recordId, short mode) {
    const shared::Sharing sharing = PrepareTempFolder(gic);
    QFile file(TempFolder(gic) + lockfiles::SafeFileName(gic.GetStationID()) +
               QStringLiteral(".LCK"));
    if (!OpenSharedFile(file, sharing))
        return 0;
    QString text = lockfiles::DecodeStored(file.readAll());
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

void WriteTableHolder(GIC& gic, const QString& path, const shared::Sharing& sharing) {
    const QByteArray who = AsStored(gic.GetLoginName().left(kTableHolderSize))
                               .leftJustified(kTableHolderSize)
                               .toUtf8();
    QFile file(path);
    if (!OpenSharedFile(file, sharing) || file.write(who) != who.size() ||
        !file.resize(who.size())) {
        qCWarning(lcLocks) << "Cannot write" << path << file.errorString();
    }
}

QString ReadTableHolder(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return lockfiles::DecodeStored(file.readAll()).left(kTableHolderSize).trimmed();
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
           QLatin1Char('.') + lockfiles::SafeFileName(TableKey.left(3).toUpper());
}

int LockRecord(GIC& gic, const QString& TableKey, int RecordID, bool ShowMessage) {
    const shared::Sharing sharing = PrepareTempFolder(gic);
    const QString path = RecordLockPath(gic, TableKey, RecordID);
    const int number = FreeFileNumber();
    FileLock::Outcome outcome = FileLock::Outcome::TooManyFiles;
    if (number > 0) {
        FileLock lock = FileLock::Take(path, sharing);
        if (lock.held()) {
            openFiles()[number] = std::move(lock);
            if (StationLockList(gic, TableKey, RecordID, kStationListAdd)) {
                WriteRecordHolder(gic, path, sharing);
            }
            return number;
        }
        // A file that cannot be opened is no record locked by someone else.
        if (lock.outcome() == FileLock::Outcome::Failed)
            throw FileError(QStringLiteral("Cannot open the lock file"), path, lock.error());
        outcome = lock.outcome();
    }
    if (ShowMessage)
        TellRecordLocked(gic, path);
    if (outcome == FileLock::Outcome::TooManyFiles) {
        TellTooManyFiles(number > 0 ? number : kMaxLockFileNumber + 1);
    }
    return 0;
}

void UnlockRecord(GIC& gic, const QString& TableKey, int RecordID, int& FileNumber) {
    if (FileNumber <= 0)
        return;
    FileLock lock = TakeFileNumber(FileNumber);
    FileNumber = 0;
    const QString path = RecordLockPath(gic, TableKey, RecordID);
    // Not a lock of ours: the files go only when nobody holds the record.
    if (!lock.held())
        lock = FileLock::TakeExisting(path);
    lock.DeleteWhileHeld({HolderPath(path)});
    lock.Release();
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
    const shared::Sharing sharing = PrepareTempFolder(gic);
    const QString base = TempFolder(gic) + lockfiles::SafeFileName(TableName.left(kTableNameWidth));
    const QString lockPath = base + QStringLiteral(".LCK");
    const QString holderPath = base + QStringLiteral(".Who");
    const int waitMilliseconds = qMax(0, qRound(WaitSeconds * 1000.0));
    for (int attempts = 1;; ++attempts) {
        const int number = FreeFileNumber();
        if (number > 0) {
            FileLock lock = FileLock::Take(lockPath, sharing);
            if (lock.held()) {
                openFiles()[number] = std::move(lock);
                WriteTableHolder(gic, holderPath, sharing);
                return number;
            }
            if (lock.outcome() == FileLock::Outcome::Failed)
                throw FileError(QStringLiteral("Cannot open the lock file"), lockPath,
                                lock.error());
        }
        if (!Retry)
            return 0;
        if (attempts % 10 == 0 && !AskRetryTable(holderPath, Title, cursor))
            return 0;
        gic.PauseMilliseconds(waitMilliseconds);
    }
}

void UnlockTable(int& FileNumber) {
    TakeFileNumber(FileNumber).Release();
    FileNumber = 0;
}

}  // namespace orvo::component
