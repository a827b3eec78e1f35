#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>

namespace orvo::insurance {

// A carrier row is shared by every patient it covers, so a change to what identifies it (name,
// address, phones) is a change to all of them. These are the eight columns of that identity, in
// the order of the screen's fields Text1(1..8).
using CarrierIdentity = std::array<QString, 8>;
const QStringList& CarrierIdentityColumns();

// True when the typed identity differs from the stored one in a way that reaches the patients:
// compared ignoring case, a difference counts when it is the name or when the stored value was
// not empty (filling in what was empty is no change to anyone).
bool IsGlobalChange(const CarrierIdentity& stored, const CarrierIdentity& typed);

// The warning shown before such a change is saved, with CRLF between its parts.
QString GlobalChangeWarning(const CarrierIdentity& stored, const CarrierIdentity& typed,
                            int patientCount);

// The entry appended to the carrier change log for a confirmed change, every line ended with
// CRLF.
QString CarrierChangeLogEntry(int carrierId, const QString& login, const QDate& today,
                              const CarrierIdentity& stored, const CarrierIdentity& typed);

// Appends the entry to the log file. False when the file could not be written.
bool AppendCarrierChangeLog(const QString& path, const QString& entry);

}  // namespace orvo::insurance
