#pragma once

#include <QList>
#include <QString>

#include "component/public/gic.h"

namespace orvo::people {

// What Find_Person answers.
struct FoundPerson {
    // The person's id as text, "NEW" (the names below are the person to add), or kFindCancel.
    QString answer;
    int pID = 0;
    QString lastName, firstName;
    // The button the person was taken with: "" (Yes), "Trans." or "Family".
    QString command;
};

// The role a search is for: the person-type key ("PTYPDOC", "PTYPPAT", "PTYPPHY1", "PTYPPHY2",
// "PTYPREF"), its word and its column. PTYPPAT seeks a family head.
struct PersonRole {
    QString key, word, column;
    static PersonRole Of(const QString& field);
    bool familyHead() const { return key == QLatin1String("PTYPPAT"); }
};

// The criteria of a name or (with allowID) an id, without the role: "pID = 3412", or the last
// and first name prefixes of "Smith, John" and "John Smith" alike.
QString PersonNameCriteria(GIC& gic, const QString& text, bool allowID = true);
// The role's test put in front of the criteria.
QString PersonRoleCriteria(const PersonRole& role);

// Asks for a name (or an id with allowID) and finds the person for a role: first among those
// who have it, then among everyone (Match_Person), then offers to add a new one. A person taken
// in a role they did not have gets it. forList words the offer for a list of persons. A read-only
// screen is refused with "Read only, cannot modify.".
FoundPerson Find_Person(GIC& gic, const QString& Field, const QString& defaultText, bool readOnly,
                        bool forList = false, bool allowID = true);

// The answers of Match_Person: kMatchTaken or more when a row was taken (plus 1 for "Trans.",
// 2 for "Family"), 0 when no row was left, below 0 when the person cancelled.
inline constexpr int kMatchTaken = 65535;

// Offers the rows of PATable that meet criteria, whatever their roles, one at a time, skipping
// those already offered; writes the id taken to pID.
int Match_Person(GIC& gic, const QString& criteria, const PersonRole& role, bool forList, int& pID,
                 const QList<int>& offered = {});

}  // namespace orvo::people
