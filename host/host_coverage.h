#pragma once

#include <QString>

#include "component/public/gic.h"
#include "platform/db/connection.h"

namespace orvo::host {

// The office's annual coverage maximum, in section DEFAULT_OFFICE_SETUP, as money text.
inline const QString kAnnualCoverageKey = QStringLiteral("INS_ANN_COV");
inline const QString kAnnualCoverageDefault = QStringLiteral("1000.00");

// The host's part for the coverage chain: the person's record kept in step with the first two
// coverage positions and the first employer, the year-to-date figures of a position, the family
// a person belongs to, and the names the coverage texts show. HostGIC forwards to these.
void SetPersonCoverageLink(db::Connection& connection, int personId, int linkId, bool isPrimary,
                           bool afterRemoval);
void SetPersonPrimaryEmployer(db::Connection& connection, int personId, int employerId,
                              int groupPlanId);
CoverageYearToDate PersonCoverageYearToDate(GIC& gic, int personId, bool isPrimary);
void SetPersonCoverageYearToDate(db::Connection& connection, int personId, bool isPrimary,
                                 const CoverageYearToDate& figures);
// The family head's pID; a person with none (0 or null) heads a family of one. 0 for a person
// who is not in the table.
int PersonFamilyId(db::Connection& connection, int personId);
QString EmployerName(db::Connection& connection, int employerId);
QString CarrierName(db::Connection& connection, int carrierId);
QString GroupNumber(db::Connection& connection, int groupPlanId);

}  // namespace orvo::host
