#pragma once

#include <QString>
#include <QStringList>

#include "platform/db/engine.h"

namespace orvo::db {

// Rewrites a statement written in the suite's Access dialect (with the SQL Server forms the
// reminder code sends) for the given engine. Idempotent: a statement already in the engine's
// dialect comes back unchanged. A statement it cannot make sense of (an open quote, an
// unbalanced bracket) is returned as it came and logged under orvo.sql.
QString TranslateSql(const QString& sql, Engine engine);

// The statement cut at each '?' mark that stands outside strings, quoted names and comments:
// one piece more than there are marks. A shape such as "... WHERE ZipCodCit>=?" is translated
// once, and a value goes in between the pieces each time it runs.
QStringList SplitAtPlaceholders(const QString& sql);

// Cuts a batch into its statements at top-level semicolons (not inside strings, brackets or
// quoted names). Empty statements are dropped; each piece is trimmed.
QStringList SplitSqlStatements(const QString& sql);

}  // namespace orvo::db
