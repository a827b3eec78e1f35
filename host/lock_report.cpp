#include "host/lock_report.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>
#include <stdexcept>

#include "platform/file_lock.h"
#include "platform/lock_files.h"

namespace orvo::host {
namespace {

QString State(const QString& path) {
    return FileLock::IsHeldElsewhere(path) ? QStringLiteral("held") : QStringLiteral("left");
}

// Text from the files as it can be shown on a terminal: a control character (a NUL in a holder
// file, a line end in a name) as \xNN, so that it neither ends the report nor breaks its lines.
QString Shown(const QString& text) {
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control) {
            shown += QStringLiteral("\\x") +
                     QString::number(c.unicode(), 16).rightJustified(2, QLatin1Char('0')).toUpper();
        } else {
            shown += c;
        }
    }
    return shown;
}

// Record lock files are named <hex id>.<table key's first letters, upper case>. A table lock
// (<name>.LCK beside <name>.Who) or a station list (<station>.LCK) can look the same when the
// name is hexadecimal, as a station "12" does: a .LCK file is taken for a record lock only when
// a record holder file stands beside it. A .Who, in its mixed case, is never one.
bool IsRecordLock(const QDir& temp, const QString& name) {
    static const QRegularExpression pattern(QStringLiteral("^[0-9A-F]+\\.([^.]+)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    const auto match = pattern.match(name);
    if (!match.hasMatch())
        return false;
    const QString key = match.captured(1);
    if (key == QLatin1String("Who"))
        return false;
    if (key == QLatin1String("LCK"))
        return QFile::exists(temp.filePath(lockfiles::HolderPath(name)));
    return true;
}

}  // namespace

QString LockReport(const QString& dataPath) {
    QString report;
    QTextStream out(&report);
    const QDir temp(QDir(dataPath).filePath(QStringLiteral("TEMP")));
    if (!QDir(dataPath).exists()) {
        throw std::runtime_error(
            QStringLiteral("the data folder %1 does not exist").arg(dataPath).toStdString());
    }
    out << "Locks in " << QDir::cleanPath(temp.absolutePath()) << "/\n";
    if (!temp.exists()) {
        out << "(no TEMP folder: nothing was ever locked here)\n";
        return report;
    }

    out << "\nRecord locks:\n";
    int records = 0;
    for (const QString& name : temp.entryList(QDir::Files, QDir::Name)) {
        if (!IsRecordLock(temp, name))
            continue;
        const QString path = temp.filePath(name);
        const auto holder = lockfiles::ReadRecordHolder(lockfiles::HolderPath(path));
        const qsizetype dot = name.indexOf(QLatin1Char('.'));
        bool ok = false;
        const qint64 id = name.left(dot).toLongLong(&ok, 16);
        out << QStringLiteral(
                   "  %1  table %2  record %3  user [%4] station [%5] computer [%6]  %7\n")
                   .arg(Shown(name).leftJustified(12),
                        Shown(lockfiles::NameOfFile(name.mid(dot + 1))))
                   .arg(ok ? id : 0)
                   .arg(Shown(holder.user), Shown(holder.station), Shown(holder.computer),
                        State(path));
        ++records;
    }
    if (records == 0)
        out << "  none\n";

    out << "\nTable locks:\n";
    int tables = 0;
    for (const QString& name : temp.entryList({QStringLiteral("*.Who")}, QDir::Files, QDir::Name)) {
        QFile who(temp.filePath(name));
        const QString holder = who.open(QIODevice::ReadOnly)
                                   ? lockfiles::DecodeStored(who.readAll()).trimmed()
                                   : QString();
        const QString lockPath = temp.filePath(name.chopped(4) + QStringLiteral(".LCK"));
        out << QStringLiteral("  %1  last taken by [%2]  %3\n")
                   .arg(Shown(name.chopped(4) + QStringLiteral(".LCK")).leftJustified(12),
                        Shown(holder), State(lockPath));
        ++tables;
    }
    if (tables == 0)
        out << "  none\n";

    out << "\nStation lists:\n";
    int lists = 0;
    for (const QString& name : temp.entryList({QStringLiteral("*.LCK")}, QDir::Files, QDir::Name)) {
        const QString stationFile = temp.filePath(name);
        // A table lock file has a holder file beside it, a record lock a record holder file; a
        // station list has none.
        if (QFile::exists(temp.filePath(name.chopped(4) + QStringLiteral(".Who"))) ||
            IsRecordLock(temp, name)) {
            continue;
        }
        QFile file(stationFile);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto taken = lockfiles::ParseStationList(lockfiles::DecodeStored(file.readAll()));
        out << "  " << Shown(lockfiles::NameOfFile(name.chopped(4))) << ": " << taken.size()
            << " slot(s)\n";
        for (const auto& slot : taken) {
            out << QStringLiteral("    %1 record %2 (station %3)\n")
                       .arg(Shown(slot.tableKey).leftJustified(15), Shown(slot.recordId),
                            Shown(slot.station));
        }
        ++lists;
    }
    if (lists == 0)
        out << "  none\n";
    return report;
}

}  // namespace orvo::host
