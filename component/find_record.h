#pragma once

#include <QList>
#include <QPair>
#include <QString>

#include "component/public/gic.h"

namespace orvo {

// Find-or-add: wherever a record is named by typing, the database is searched first, what is
// found is shown, and the user takes it or adds a new record. Callers compare the answers as
// text.
inline const QString kFindNew = QStringLiteral("-9997NEW");
inline const QString kFindCancel = QStringLiteral("-9999CANCEL");
// "LIST" + an id: the caller shows its full list at that record (the id from the fifth
// character).
inline const QString kFindList = QStringLiteral("LIST");
// A leading Chr(0) on the id column arms the list offer; on the text, it means the rest is the
// search text as it stands (no search window).
inline const QChar kFindMark = QChar(0);

// The search window's text: with allowID the id form is offered too.
QString NamePrompt(bool AllowID);

// A label and the column it shows, as "Address 1" with EmpAdd1.
using DisplayFields = QList<QPair<QString, QString>>;

// Searches Table for rows whose NameColumn begins with the text, offers each in turn, and
// answers in Result: the id taken, kFindNew (Text then holds the name to add), kFindCancel, or
// kFindList + an id. Question closes each offer; empty, it is "Is this the correct entry?".
void Find_Record(GIC& gic, QString& Result, const QString& Table, const QString& NameColumn,
                 const QString& IDColumn, const DisplayFields& fields, QString& Text,
                 const QString& Question);

}  // namespace orvo
