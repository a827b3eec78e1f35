#pragma once

#include <QString>

#include "platform/db/connection.h"

namespace orvo::host {

// The demo office's eReminders: the five reminder masters, two recalls with their schedules,
// the appointment schedules with messages and contact sequences, a few recall list entries,
// and one pre-defined template per reminder type in the data folder, with small images drawn
// here.
void SeedDemoReminders(db::Connection& connection, const QString& dataPath, int officeLocationId);

// The template folders alone; a folder that exists is left as it is.
void SeedDemoTemplates(const QString& dataPath);

}  // namespace orvo::host
