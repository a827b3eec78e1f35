#pragma once

// Record and table locks in the shared data folder.
//
// Two stations must not edit one row at once, and the database is no help there: a screen reads
// a row, lets a person think, and writes it much later. So the locks live as files in
// GetDataPath() + "TEMP/", which every station of the practice shares. The lock itself is an
// open-file-description lock (fcntl F_OFD_SETLK, a write lock over the whole file) taken on an
// open of a small file. Such a lock is refused to every other open of the file, in another
// process and in this one alike, and the kernel drops it when the holding process dies. That is
// the only synchronisation between stations; no server takes part.
//
// Files in TEMP/:
//
//   <ID>.<KEY>            Record lock. ID is the record id in upper-case hexadecimal, KEY the
//                         first three characters of the table key in upper case: id 6703 of
//                         "INSCOTABLE" is 1A2F.INS, of "PHATABLE" 1A2F.PHA, of "PATABLE"
//                         1A2F.PAT. Keys that share three letters share the file. Empty; it
//                         carries the lock by being held open. Held while a screen shows the row.
//   <ID>.<KEY>.UserData   Who holds the record lock, for the refusal message. A profile:
//                             [DATA]
//                             USER=<login>
//                             STNID=<station>
//                             COMP=<computer>
//                         Written by the holder right after it took the lock.
//   <station>.LCK         The record locks this station has taken: slots of 40 characters with
//                         no line ends. Offset 0, 15 characters: the table key in upper case,
//                         padded right with blanks, cut to 15. Offset 15, 10: the record id in
//                         decimal, right-aligned, keeping the last 10 characters. Offset 25, 15:
//                         the station id, right-aligned, keeping the last 15. The first 25
//                         characters are the slot's key; a free slot is 40 blanks. A slot is
//                         found by searching the file text, with one blank appended, for its key
//                         at any position. A new slot takes the first free one, else goes at the
//                         end. The file is the station's own and is not locked.
//   <name8>.LCK           Table lock: the first eight characters of the table name. No content.
//                         Held for the seconds of a critical update ("IPTable" while plan
//                         details are written).
//   <name8>.Who           Who holds the table lock: exactly 25 characters, the login padded with
//                         blanks or cut.
//
// The text of the station lists and the table holder files is UTF-8 (a file an older station
// wrote one byte a character reads as well). A station id, a table key's three letters and a
// table name's eight are made safe before they become part of a file name
// (lockfiles::SafeFileName): a plain name stays as it is, a name that could lead out of TEMP/ or
// that a file system refuses is escaped, and nothing is ever written outside the data folder.
//
// Who holds what. A screen takes its record lock when it sets up and keeps the file number in its
// own RecordLock field until it unloads; unload always calls UnlockRecord. A new row has nothing
// to lock and keeps kNewRecordLock instead; any number other than 0 means leave to edit, and 0
// means the screen shows the row read only. A table lock is taken by LockTable, with retries
// and a question every tenth refusal, and released by UnlockTable; its two files stay on disk.
//
// Releasing a record lock deletes the holder file and the lock file while the lock is still held,
// and only then closes it. A file we do not hold is never deleted: on this file system a file can
// be deleted while another station holds it open, and the next opener would then lock a new file
// beside the old holder. For the same reason a lock counts only when the file that was locked is
// still the one under the name; an opener that raced a release finds the name gone or pointing
// elsewhere, and opens again.
//
// Sharing. The stations of a practice usually run as different operating-system users, so TEMP/
// and every file in it are made so that all of them can open them: group-writable in the data
// folder's group, or writable by all where the data folder is (platform/shared_files.h). A lock
// file made by one user is then taken by another once it is free, a stale one included.
//
// Failures. A record or table that another open holds is refused, as the design says; a lock
// file that cannot be opened at all (a folder nobody may write, a directory in the way, a data
// folder that is not there) is no such refusal: LockRecord and LockTable throw FileError with the
// path and the system's reason, which the start method's boundary shows, and no screen opens
// editable without its lock.
//
// Stale locks. A lock never outlives its process. A station that dies leaves its lock file and
// holder file on disk, unlocked; the next LockRecord opens and overwrites them, so nothing needs
// cleaning. Only the dead session's slot stays in the station's list, which is harmless: for the
// same station the list answers as if the slot were new.
//
// File numbers. The numbers handed out are small integers, 1 to 255, the first one free, each
// standing for one open lock file of this process. When none is free, or the system will open no
// more files, the person is told how many are open.
//
// All calls come on the GUI thread.

#include <QString>

namespace orvo {
class GIC;
}

namespace orvo::component {

// The record-lock number a screen keeps for a new row, which has nothing to lock.
inline constexpr int kNewRecordLock = 9999;

// The highest file number this module hands out.
inline constexpr int kMaxLockFileNumber = 255;

// Modes of StationLockList.
inline constexpr short kStationListRemove = 0;
inline constexpr short kStationListAdd = -1;
inline constexpr short kStationListFind = 9999;

// The full path of the record lock file.
QString RecordLockPath(GIC& gic, const QString& TableKey, int RecordID);

// Locks the record for this screen: a file number greater than 0, or 0 when the record is
// locked elsewhere. With ShowMessage the person is told who holds it. Running out of file
// numbers is always told. Throws FileError when the lock file cannot be opened.
int LockRecord(GIC& gic, const QString& TableKey, int RecordID, bool ShowMessage);

// Releases a record lock taken by LockRecord: deletes its files, frees the station's slot and
// sets FileNumber to 0. Nothing happens for 0, so a second call on the same field is harmless. A
// number this process does not hold, such as kNewRecordLock, deletes the files only when nobody
// holds the record.
void UnlockRecord(GIC& gic, const QString& TableKey, int RecordID, int& FileNumber);

// The station's list of record locks. kStationListFind answers the 1-based position of the
// record's slot in the list text, 0 when there is none. kStationListRemove frees this station's
// slot of the record: 1 when it did, 0 when there was none or it names another station. Any
// other mode adds the slot when missing: 1 when the slot is (now) this station's, else 0. Any
// error answers 0.
int StationLockList(GIC& gic, const QString& TableKey, int RecordID, short Mode);

// Locks a table for a short update: a file number greater than 0, or 0. Without Retry a refusal
// answers 0 at once. With it, the lock is tried again every WaitSeconds, the window messages
// going on meanwhile, and every tenth refusal asks the person, under Title (or "ORVO Windows"),
// whether to go on trying; Cancel answers 0. Throws FileError when the lock file cannot be
// opened.
int LockTable(GIC& gic, const QString& TableName, const QString& Title, bool Retry,
              double WaitSeconds);

// Releases a table lock and sets FileNumber to 0; the lock and holder files stay on disk.
void UnlockTable(int& FileNumber);

}  // namespace orvo::component
