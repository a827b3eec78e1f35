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

// The first 25 characters of a station list slot: the key a slot is found by.
QString SlotKey(const QString& tableKey, int recordId);
// The last 15 characters of a slot.
QString SlotStation(const QString& stationId);
// The text as the one-byte-per-character files keep it.
QString AsStored(const QString& text);

struct StationSlot {
    QString tableKey;
    QString recordId;
    QString station;
};
// The taken slots of a station list, in file order.
QList<StationSlot> ParseStationList(const QString& text);

}  // namespace orvo::lockfiles
