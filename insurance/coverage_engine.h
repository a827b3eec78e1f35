#pragma once

#include <QString>
#include <QVariant>

#include "component/public/gic.h"
#include "insurance/coverage_reads.h"

class QWidget;

namespace orvo::insurance {

// The one place that writes a person's insurance: subscriber links (PatEmpTable) and coverages
// (CovTable), with the "No Insurance Coverage" link of an employer (ELTable). A change ends the
// old row (end date today, the login, flag 1) and inserts its successor, so who was covered by
// what on any day stays readable. Order numbers run 1, 2, 3 ... without gaps over a person's
// active rows; 1 is primary, 2 secondary.
//
// Each writer runs in one transaction on the session connection (joining the caller's when one
// is open): a failure at any statement leaves the chain as it was, with no history note. The
// person whose chain is written is locked for the transaction, so stations that change one
// person at once take turns, and every number is read after the lock is held. Questions to the
// user come before the lock is taken; a refusal found under the lock (another station got
// there first) is quiet.

// Adds (old 0), changes (both set) or removes (new 0) a coverage of the person, and writes the
// person's history note. failed is false when it was done; true when it was refused, answered
// No, or the coverage was no longer active, with nothing written. With updatePerson false a
// change leaves the person's record alone. Silent: no question and no refusal box.
void Update_Coverage(GIC& gic, int person, int oldCovID, int newPatEmpID, bool silent,
                     bool& updatePerson, bool& failed);

// Adds (old 0), changes (both set) or removes (new 0) the person's subscriber link to an
// employer-plan link. The person's first link with a plan covers a person who has no coverage;
// a changed or removed link carries or takes the coverage hung on it with it, for everyone
// covered through the person.
void Update_Subscriber_Link(GIC& gic, int person, int oldElID, int newElID, bool silent,
                            bool& updatePerson);

// Every active coverage hung on any link (active or ended) that the subscriber has or had with
// the employer, for the subscriber and for everyone covered through the subscriber, except the
// person spared (0 spares nobody): removed, or changed to the new subscriber link. Each gets
// its own history note on the covered person.
void Remove_Coverage_Through_Employer(GIC& gic, int subscriber, int employer, int spare);
void Change_Coverage_Through_Employer(GIC& gic, int subscriber, int employer, int newPatEmpID,
                                      int spare, bool& updatePerson);

// The employer's "No Insurance Coverage" link (carrier 0, plan 0), made when it has none.
int Get_No_Insurance_Link(GIC& gic, int employer);

// Opens the employer screen to choose a link of the employer (0: a new employer). Answers the
// link chosen; when the screen reports a change but chose none, the employer's "No Insurance
// Coverage" link.
int Edit_Employer_For_Link(GIC& gic, int employer, QWidget*& owner, bool& changed,
                           QVariant& fourth);

// The texts of the questions and the refusal.
inline const QString kAlreadyCoveredText = QStringLiteral(
    " is already covered by this insurance plan. Please select a different plan or edit the "
    "existing one.");
inline const QString kChangeCoverageTitle = QStringLiteral("Change Insurance Coverage");
inline const QString kChangeCoverageText =
    QStringLiteral("Are you sure you want to change this insurance coverage?");
inline const QString kRemoveCoverageTitle = QStringLiteral("Remove Insurance Coverage");
inline const QString kRemoveCoverageText = QStringLiteral(
    "Removing insurance will change coverage year to date, remaining balance, and remaining "
    "deductible.\r\n\r\nAre you sure you want continue ?");

// The history notes' keys.
inline const QString kCoverageNoteType = QStringLiteral("CM");
inline const QString kCoverageNoteSource = QStringLiteral("LogInsCov");
inline const QString kCoverageNoteField = QStringLiteral("Comment");

}  // namespace orvo::insurance
