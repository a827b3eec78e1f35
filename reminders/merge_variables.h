#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace orvo::reminders {

// The merge variables of a message body, as offered for insertion.
const QStringList& MergeVariables();

// Stands in template files for the folder of the template's images.
inline const QString kImagePathVariable = QStringLiteral("{ImagePath}");

// The values a sample of a message is merged with, one for each variable.
const QHash<QString, QString>& SampleValues();

// Older bodies and template files name the variables at length; text read from a template file
// is brought to the current names, every occurrence, in the table's order.
QString ReplaceOldVariableNames(QString text);

}  // namespace orvo::reminders
