#pragma once

#include <QList>

#include "platform/db/connection.h"

namespace orvo::host {

// The demo office's people: two providers, employees (one hidden from the time clock), referral
// sources and physicians, and a family for each of the demo's insurance subscribers, whose ids
// the coverages already name (the subscriber heads it, the next id is a member). Among them
// heads who are not patients and an archived patient; names as a practice has them, accents
// included. Fills FamTable. Answers the persons added. The family-head list is the caller's.
int SeedDemoPersons(db::Connection& connection, const QList<int>& subscriberIds);

}  // namespace orvo::host
