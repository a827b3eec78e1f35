#include "host/lock_report.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

#include "platform/file_lock.h"
#include "platform/lock_files.h"

namespace orvo::host {
namespace {

QString State(const QString& path) {
    return FileLock::IsHeldElsewhere(path) ? QStringLiteral("held") : QStringLiteral("left");
}

}  // namespace

QString LockReport(const QString& dataPath) {
    QString report;
    QTextStream out(&report);
    const QDir temp(QDir(dataPath).filePath(QStringLiteral("TEMP")));
    out << "Locks in " << QDir::cleanPath(temp.absolutePath()) << "/\n";
    if (!temp.exists()) {
        out << "(no TEMP folder: nothing was ever locked here)\n";
        return report;
    }

    // Record lock files are named <hex id>.<three letters of the table key>.
    static const QRegularExpression recordLock(QStringLiteral("^([0-9A-F]+)\\.([A-Z0-9_]{1,3})$"),
                                               QRegularExpression::CaseInsensitiveOption);
    out << "\nRecord locks:\n";
    int records = 0;
    for (const QString& name : temp.entryList(QDir::Files, QDir::Name)) {
        const auto match = recordLock.match(name);
        if (!match.hasMatch())
            continue;
        const QString path = temp.filePath(name);
        const auto holder = lockfiles::ReadRecordHolder(lockfiles::HolderPath(path));
        bool ok = false;
        const qint64 id = match.captured(1).toLongLong(&ok, 16);
        out << QStringLiteral(
                   "  %1  table %2  record %3  user [%4] station [%5] computer [%6]  %7\n")
                   .arg(name.leftJustified(12), match.captured(2).toUpper())
                   .arg(ok ? id : 0)
                   .arg(holder.user, holder.station, holder.computer, State(path));
        ++records;
    }
    if (records == 0)
        out << "  none\n";

    out << "\nTable locks:\n";
    int tables = 0;
    for (const QString& name : temp.entryList({QStringLiteral("*.Who")}, QDir::Files, QDir::Name)) {
        QFile who(temp.filePath(name));
        const QString holder = who.open(QIODevice::ReadOnly)
                                   ? QString::fromLatin1(who.readAll()).trimmed()
                                   : QString();
        const QString lockPath = temp.filePath(name.chopped(4) + QStringLiteral(".LCK"));
        out << QStringLiteral("  %1  last taken by [%2]  %3\n")
                   .arg((name.chopped(4) + QStringLiteral(".LCK")).leftJustified(12), holder,
                        State(lockPath));
        ++tables;
    }
    if (tables == 0)
        out << "  none\n";

    out << "\nStation lists:\n";
    int lists = 0;
    for (const QString& name : temp.entryList({QStringLiteral("*.LCK")}, QDir::Files, QDir::Name)) {
        const QString stationFile = temp.filePath(name);
        // A table lock file has a holder file beside it; a station list has none.
        if (QFile::exists(temp.filePath(name.chopped(4) + QStringLiteral(".Who"))))
            continue;
        QFile file(stationFile);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto taken = lockfiles::ParseStationList(QString::fromLatin1(file.readAll()));
        out << "  " << name.chopped(4) << ": " << taken.size() << " slot(s)\n";
        for (const auto& slot : taken) {
            out << QStringLiteral("    %1 record %2 (station %3)\n")
                       .arg(slot.tableKey.leftJustified(15), slot.recordId, slot.station);
        }
        ++lists;
    }
    if (lists == 0)
        out << "  none\n";
    return report;
}

}  // namespace orvo::host
