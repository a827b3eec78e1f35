#pragma once

// The formats of the lock files in a data folder's TEMP/, shared by the stations that take the
// locks and by the support report that lists them. How locks are taken and given back is the
// component's record lock module, over platform/file_lock.h; this is only what the files hold.

#include <QList>
#include <QString>

namespace orvo::lockfiles {

// Station list slots: 15 characters of table key, 10 of record id, 15 of station id.
inline constexpr qsizetype kSlotSize = 40;
inline constexpr qsizetype kSlotKeySize = 25;
inline constexpr qsizetype kTableKeyWidth = 15;
inline constexpr qsizetype kRecordIdWidth = 10;
inline constexpr qsizetype kStationWidth = 15;
// A table holder file holds the login in exactly this many characters.
inline constexpr qsizetype kTableHolderSize = 25;

// The holder file beside a record lock file.
QString HolderPath(const QString& lockPath);

// Who holds a record lock, as its holder file says.
struct RecordHolder {
    QString user;
    QString station;
    QString computer;
};
QString RecordHolderText(const RecordHolder& holder);
RecordHolder ReadRecordHolder(const QString& holderPath);

// A value of a profile file of "[SECTION]" and "KEY=value" lines, names in any case; "" when
// the file, section or key is missing.
QString ReadProfileString(const QString& path, const QString& section, const QString& key);

// A station id, a table key or a table name as the part of a file name in TEMP/ it becomes. A
// plain name stays as it is, accents and all (names are kept in UTF-8), so that the files keep
// the names people know. What could lead out of the folder, or what a shared file system refuses,
// is escaped as %XX for each of its UTF-8 bytes, which can be undone: '/', '\', '%', control
// characters, : * ? " < > |, a leading dot and a trailing dot or blank. A name of more than
// kMaxNameBytes bytes is cut and ends in "~" and eight hexadecimal digits of a hash of the whole
// name, so that two long names that begin alike keep files of their own.
inline constexpr qsizetype kMaxNameBytes = 120;
QString SafeFileName(const QString& name);
// The name that SafeFileName made fileName of; a name that was cut comes back cut.
QString NameOfFile(const QString& fileName);

// The text of a station list or a table holder file. They are written in UTF-8; a file that is
// not valid UTF-8 was written one byte a character, and is read so.
QString DecodeStored(const QByteArray& bytes);

// The first 25 characters of a station list slot: the key a slot is found by.
QString SlotKey(const QString& tableKey, int recordId);
// The last 15 characters of a slot.
QString SlotStation(const QString& stationId);
// The text as the files keep it: a half of a character pair that a cut left is a replacement
// character, as it reads back.
QString AsStored(const QString& text);

struct StationSlot {
    QString tableKey;
    QString recordId;
    QString station;
};
// The taken slots of a station list, in file order.
QList<StationSlot> ParseStationList(const QString& text);

}  // namespace orvo::lockfiles
