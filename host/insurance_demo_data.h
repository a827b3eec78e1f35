#pragma once

#include <QList>

#include "platform/db/connection.h"

namespace orvo::host {

// More employers (keys from 110) and group plans (keys from 510) for the demo practice, beside
// those of its coverage chains: addresses, plans of the carriers with their amounts, a managed
// care plan with a live link and one whose link has ended, and a plan no employer offers yet.
void SeedDemoEmployersAndPlans(db::Connection& c, const QList<qint64>& carrierIds);

// After the persons: the doctors have their specialties.
void LinkDemoPersonsToEmployers(db::Connection& c);

}  // namespace orvo::host
