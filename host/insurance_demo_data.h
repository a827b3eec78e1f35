#pragma once

#include <QList>

#include "platform/db/connection.h"

namespace orvo::host {

// The demo practice's employers (keys from 100) and group plans (keys from 500), the plan of
// each carrier that the demo's links name, a managed care plan with a live link and one whose
// link has ended, and a plan no employer offers yet.
void SeedDemoEmployersAndPlans(db::Connection& c, const QList<qint64>& carrierIds);

// After the persons: each subscriber works for the employer of the first link, and the outside
// doctors have their specialties.
void LinkDemoPersonsToEmployers(db::Connection& c);

}  // namespace orvo::host
