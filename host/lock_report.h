#pragma once

#include <QString>

namespace orvo::host {

// For support staff: the record and table locks in a data folder's TEMP/, who holds each (from
// the holder files), whether it is held now or was left by a station that has ended, and what
// each station's list says it holds. Plain text, one lock a line; control characters in the
// files are shown as \xNN. Throws std::runtime_error when the data folder does not exist.
QString LockReport(const QString& dataPath);

}  // namespace orvo::host
