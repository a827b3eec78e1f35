#pragma once

#include <QDate>
#include <QList>
#include <QPair>
#include <QString>

#include "platform/db/connection.h"

namespace orvo::host {

// One coverage row of a person as it stood on a day.
struct CoverageHistoryRow {
    int coverageId = 0;
    int order = 0;              // the place on the day; for an ended row its place when it ended
    bool activeOnDate = false;  // begun by the day and not ended by it
    QString relation;           // "Self", "Spouse", ... as the coverage grid shows it
    int subscriberId = 0;
    QString subscriber;
    QString employer;
    QString carrier;
    QString groupNumber;
    QDate began;
    QDate ended;  // invalid while the row had not ended by the day
    QString endedBy;
};

// A person's coverage as of a day: every row begun by that day (those active on it first, in
// their order, then the ended ones, latest first), and the coverage notes written by that day,
// latest first, each led by its date and login.
struct CoverageHistory {
    QList<CoverageHistoryRow> rows;
    QStringList notes;
};
CoverageHistory ReadCoverageHistory(db::Connection& connection, int personId, const QDate& asOf);

// The relation of a covered person to the subscriber by its code; empty for 0 and unknown codes.
QString RelationName(int code);

// Persons to choose from for a text: the person of that id when it is a number, else those whose
// last name begins with it (at most 200), as id and "Last, First".
QList<QPair<int, QString>> FindPersonsForHistory(db::Connection& connection, const QString& text);

}  // namespace orvo::host
