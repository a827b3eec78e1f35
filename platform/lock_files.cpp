#include "platform/lock_files.h"

#include <QFile>
#include <QStringList>

namespace orvo::lockfiles {

QString HolderPath(const QString& lockPath) {
    return lockPath + QStringLiteral(".UserData");
}

QString RecordHolderText(const RecordHolder& holder) {
    const QString crlf = QStringLiteral("\r\n");
    return QStringLiteral("[DATA]") + crlf + QStringLiteral("USER=") + holder.user + crlf +
           QStringLiteral("STNID=") + holder.station + crlf + QStringLiteral("COMP=") +
           holder.computer + crlf;
}

RecordHolder ReadRecordHolder(const QString& holderPath) {
    const QString section = QStringLiteral("DATA");
    return {ReadProfileString(holderPath, section, QStringLiteral("USER")),
            ReadProfileString(holderPath, section, QStringLiteral("STNID")),
            ReadProfileString(holderPath, section, QStringLiteral("COMP"))};
}

QString ReadProfileString(const QString& path, const QString& section, const QString& key) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    bool inSection = false;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            inSection =
                line.mid(1, line.size() - 2).trimmed().compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inSection)
            continue;
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals > 0 && line.left(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            return line.mid(equals + 1).trimmed();
        }
    }
    return QString();
}

QString AsStored(const QString& text) {
    return QString::fromLatin1(text.toLatin1());
}

QString SlotKey(const QString& tableKey, int recordId) {
    return AsStored(tableKey.toUpper()).left(kTableKeyWidth).leftJustified(kTableKeyWidth) +
           QString::number(recordId).right(kRecordIdWidth).rightJustified(kRecordIdWidth);
}

QString SlotStation(const QString& stationId) {
    return AsStored(stationId).right(kStationWidth).rightJustified(kStationWidth);
}

QList<StationSlot> ParseStationList(const QString& text) {
    QList<StationSlot> taken;
    for (qsizetype at = 0; at + kSlotSize <= text.size(); at += kSlotSize) {
        const QStringView slot = QStringView(text).mid(at, kSlotSize);
        if (slot.trimmed().isEmpty())
            continue;
        taken.append({slot.left(kTableKeyWidth).trimmed().toString(),
                      slot.mid(kTableKeyWidth, kRecordIdWidth).trimmed().toString(),
                      slot.mid(kSlotKeySize, kStationWidth).trimmed().toString()});
    }
    return taken;
}

}  // namespace orvo::lockfiles
