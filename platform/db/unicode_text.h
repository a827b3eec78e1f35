#pragma once

#include <QLatin1StringView>
#include <QSqlDatabase>

namespace orvo::db {

// Text compares case-insensitively for all of Unicode on both engines, with the same answers:
// two texts are equal when they are equal letter for letter once every letter is in lower case,
// and they sort by the code points of those lower-case letters. The server gets this from its
// case-insensitive text type under a code-point collation; the embedded engine, whose own NOCASE
// folds A-Z only, from the collation and functions below.

// The collation of every text column on the embedded engine.
inline constexpr QLatin1StringView kSqliteTextCollation("UNICASE");

// Registers on an open embedded connection: the UNICASE collation, LIKE (with the optional
// ESCAPE; backslash escapes by default, as on the server) folding case the same way, and
// upper() and lower() for every letter.
void InstallUnicodeText(QSqlDatabase& database);

}  // namespace orvo::db
