#pragma once

#include <QList>
#include <QString>

#include "component/public/gic.h"

namespace orvo::insurance {

// The chain a person reaches a plan through: an employer-plan link (ELTable, elID), a person on
// such a link (PatEmpTable, the subscriber link, PatEmpID) and a covered person on a subscriber
// link (CovTable, CovID). Rows of the three tables are never deleted: they end, with an end
// date, the login that ended them and their flag set to 1, and every read of current state
// tests the flags.

// What one coverage reaches, in the order the screens index it (0 elID ... 7 CovOrd).
struct CoverageDetail {
    int elID = 0;
    int elEmpID = 0;
    int elInsID = 0;
    int elGroID = 0;
    int PatEmpPatID = 0;
    int CovRel = 0;
    int CovID = 0;
    int CovOrd = 0;
    bool operator==(const CoverageDetail&) const = default;
};

// A coverage row of a person, with the subscriber link it hangs on.
struct CoverageRow {
    CoverageDetail detail;
    int PatEmpID = 0;
};

// A subscriber link of a person whose employer-plan link has a plan.
struct PlanLink {
    int elID = 0;
    int elEmpID = 0;
    int elInsID = 0;
    int elGroID = 0;
    int PatEmpID = 0;
};

// The relations the engine itself writes; the coverage controls offer the whole table.
inline constexpr int kRelationSelf = 1;
inline constexpr int kRelationOther = 4;

// Each reader runs one statement on the session connection and answers 0, an empty text or an
// empty list when nothing matches.
QString Get_El_Employer_Name(GIC& gic, int elID);
QString Get_El_Group_Number(GIC& gic, int elID);
QString Get_El_Carrier_Name(GIC& gic, int elID);
// 0 for a "No Insurance Coverage" link, which has no carrier or plan.
int Get_El_Carrier_ID(GIC& gic, int elID);
int Get_El_Group_ID(GIC& gic, int elID);
// Ended links answer too.
int Get_El_Employer_ID(GIC& gic, int elID);
// The person's first active link with the employer.
int Get_El_For_Person_Employer(GIC& gic, int person, int employer);
// No flag test: ended rows answer too.
int Get_Coverage_El(GIC& gic, int CovID);
int Get_Subscriber_Person(GIC& gic, int PatEmpID);
// Active coverage rows of the person whose subscriber link and employer-plan link are active
// too: a coverage on an ended link does not count.
int Count_Coverage(GIC& gic, int person);
int Count_Subscriber_Links(GIC& gic, int person);
bool Coverage_Exists(GIC& gic, int person, int PatEmpID);
// True when no active link of the employer has the carrier and the plan; false when any of the
// three is 0.
bool Employer_Lacks_Plan_Link(GIC& gic, int employer, int carrier, int groupPlan);
// False only for an active link with a carrier and a plan: true for 0, for an ended link and
// for a "No Insurance Coverage" link.
bool Is_No_Insurance_Link(GIC& gic, int elID);
// The person's active subscriber links that have a plan, in PatEmpOrd order.
QList<PlanLink> Load_Plan_Links(GIC& gic, int person);
// The elID of each active subscriber link of the person, with a plan or not, in PatEmpOrd
// order.
QList<int> Load_Subscriber_Links(GIC& gic, int person);
// The person's coverage rows in CovOrd order; with includeEnded false only those whose three
// rows are active.
QList<CoverageRow> Load_Coverage_Rows(GIC& gic, int person, bool includeEnded);
// No flag test; an all-zero detail when the coverage or a row of its chain is missing.
CoverageDetail Load_Coverage_Detail(GIC& gic, int CovID);
bool Can_Change_Plan_Detail(GIC& gic);

// "primary" ... "seventh" for 1 to 7; empty for any other number.
QString Get_Order_Word(int order);
// The four lines that describe a coverage (subscriber, employer, carrier, group number), each
// with its id, joined by CRLF.
QString Get_Coverage_Text(GIC& gic, const CoverageDetail& detail);

}  // namespace orvo::insurance
