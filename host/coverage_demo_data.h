#pragma once

#include <QList>

#include "platform/db/connection.h"

namespace orvo::host {

// The employers and group plans that the demo's employer-plan links name, each employer's "No
// Insurance Coverage" link, and a few coverage chains with a past: a family that changed plans
// at the turn of the year, a child whose second coverage through another family ended, a
// subscriber who left one employer for another. Ended rows carry their end dates and who ended
// them, and each change its history notes, as the coverage engine writes them. The persons'
// records name their first two coverage positions. Runs in the caller's transaction.
void SeedDemoCoverageChains(db::Connection& connection, const QList<int>& subscriberIds);

}  // namespace orvo::host
