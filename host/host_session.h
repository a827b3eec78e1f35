#pragma once

#include <QDate>
#include <QString>
#include <memory>

#include "platform/db/connection.h"

namespace orvo::host {

// What the host knows of the session it runs: the practice database, the shared data folder,
// who is logged in where.
struct HostSession {
    std::shared_ptr<db::Connection> connection;
    QString dataPath;     // the shared data folder, ending with '/'
    QString programPath;  // the folder of the installed programs, ending with '/'
    QString loginName;
    QString stationId;     // from --station, else the computer's name
    QString computerName;  // the machine's network name
    int officeLocationId = 0;
    QDate today;  // the working date; an invalid date means the real one
};

}  // namespace orvo::host
