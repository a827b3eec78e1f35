#pragma once

#include <QLoggingCategory>
#include <QString>

// The host's own messages: settings that read as something else, the component loader.
Q_DECLARE_LOGGING_CATEGORY(lcHost)

namespace orvo::host {

// The practice's log: every message of the program's logging categories (database errors,
// locks, the component's caught errors, ...) is appended, stamped with the time, the station and
// the category, to STP/ORVO.LOG in the data folder, which every station of the practice shares.
// Messages still reach the handler that was in force before (standard error), too.
//
// Installs the handler on the first call; a later call points it at another practice.
void WriteLogToDataFolder(const QString& dataPath, const QString& stationId);

// Where the log of a data folder is.
QString LogFilePath(const QString& dataPath);

}  // namespace orvo::host
