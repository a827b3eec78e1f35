#pragma once

#include <QString>
#include <QStringList>

namespace orvo::lists {

// The SQL of a list as the engine of this kind takes it: on any kind but 1 each DISTINCTROW
// becomes DISTINCT, before the statement is used for anything else.
QString ListSqlForKind(const QString& sql, short databaseKind);

// The grid's columns and sort, read off a list's SELECT.
struct GridSource {
    QStringList captions;  // the alias of each selected column, brackets taken off
    QStringList sort;      // the sort columns as named, each with " DESC" kept when given
    bool sortFromOrderBy = false;
};

// Reads the select list up to " FROM ": each " AS " alias names a column (a column without
// one is named by its expression's last part). The sort is what follows "ORDER BY " when the
// statement has one, otherwise sortBy; both are split at commas outside parentheses.
GridSource BuildGridSource(const QString& sql, const QString& sortBy);

// The statement of LookupColumn: the list's SQL narrowed to one record, with " and " when it
// holds " WHERE " and " Where " otherwise, and any ORDER BY or final semicolon left off.
QString LookupSql(const QString& sql, const QString& idField, int id);

// "[Last Name]" -> "Last Name".
QString StripBrackets(const QString& name);

}  // namespace orvo::lists
