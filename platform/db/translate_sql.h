#pragma once

#include <QString>
#include <QStringList>
#include <optional>

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

// A statement with its plain values cut out: each number, and each string the translation
// never looks into, is replaced by a stand-in of the same kind. Statements that differ only in
// such values share one shape, which translates as they do with the stand-ins in their places,
// so a connection translates a shape once and puts each statement's values back
// (TranslationCache). Only a single SELECT, INSERT, UPDATE or DELETE that reads cleanly is cut;
// left in the shape are strings the translation rewrites or reads (with a backslash, a number
// sign, after LIKE, holding an ISO date), the count of TOP, and date literals; and, so that
// each value cut could as well be bound as a parameter, what a query answers before its first
// FROM and numbers after ORDER or GROUP. A text with a '?' mark of its own is not cut.
struct LiteralShape {
    QString shape;
    QStringList literals;  // in the order of their stand-ins; they borrow from the text cut
};
std::optional<LiteralShape> CutLiterals(const QString& sql);

// The stand-in of the literal at `index` (below kMostStandIns), of a string or of a number, and
// whether a text holds characters that could be taken for one, which keeps it from being cut.
constexpr qsizetype kMostStandIns = 10000000;
QString StringStandIn(qsizetype index);
QString NumberStandIn(qsizetype index);
bool MayHoldStandIn(QStringView text);

}  // namespace orvo::db
