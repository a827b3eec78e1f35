#include "platform/lock_files.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringDecoder>
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

namespace {

bool MustEscape(char32_t c, bool first, bool last) {
    if (c < 0x20 || c == 0x7F || (c >= 0x80 && c <= 0x9F))
        return true;
    switch (c) {
        case '/':
        case '\\':
        case '%':
        case ':':
        case '*':
        case '?':
        case '"':
        case '<':
        case '>':
        case '|':
            return true;
        case '.':
            return first || last;
        case ' ':
            return last;
        default:
            return false;
    }
}

}  // namespace

QString SafeFileName(const QString& name) {
    const QList<uint> characters = QString::fromUtf8(name.toUtf8()).toUcs4();
    // Each character as it goes into the name: its UTF-8 bytes, or their escapes.
    QList<QByteArray> pieces;
    qsizetype bytes = 0;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t c = characters[i];
        const QByteArray utf8 = QString::fromUcs4(&c, 1).toUtf8();
        QByteArray piece;
        if (MustEscape(c, i == 0, i == characters.size() - 1)) {
            for (const char byte : utf8)
                piece += '%' + QByteArray::number(static_cast<uchar>(byte), 16)
                                   .rightJustified(2, '0')
                                   .toUpper();
        } else {
            piece = utf8;
        }
        bytes += piece.size();
        pieces.append(piece);
    }
    QByteArray safe;
    if (bytes <= kMaxNameBytes) {
        for (const QByteArray& piece : pieces)
            safe += piece;
        return QString::fromUtf8(safe);
    }
    const QByteArray hash =
        QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex().left(8).toUpper();
    for (const QByteArray& piece : pieces) {
        if (safe.size() + piece.size() > kMaxNameBytes - 1 - hash.size())
            break;
        safe += piece;
    }
    return QString::fromUtf8(safe + '~' + hash);
}

QString NameOfFile(const QString& fileName) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(fileName.toUtf8()));
}

QString DecodeStored(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

QString AsStored(const QString& text) {
    return QString::fromUtf8(text.toUtf8());
}

QString SlotKey(const QString& tableKey, int recordId) {
    return AsStored(tableKey.toUpper().left(kTableKeyWidth)).leftJustified(kTableKeyWidth) +
           QString::number(recordId).right(kRecordIdWidth).rightJustified(kRecordIdWidth);
}

QString SlotStation(const QString& stationId) {
    return AsStored(stationId.right(kStationWidth)).rightJustified(kStationWidth);
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
