#pragma once

#include <QString>
#include <QStringList>

namespace orvo::reminders {

// The merge variables of a message body, as offered for insertion.
const QStringList& MergeVariables();

// Stands in template files for the folder of the template's images.
inline const QString kImagePathVariable = QStringLiteral("{ImagePath}");

// Older bodies and template files name the variables at length; text read from a template file
// is brought to the current names, every occurrence, in the table's order.
QString ReplaceOldVariableNames(QString text);

}  // namespace orvo::reminders
