#pragma once

#include <QString>

namespace orvo::db {

class Connection;

// The schema in which a server database keeps the case-insensitive text type when it has none
// yet. It holds the extension only, never a table, so that it can stand on every practice's
// search path without letting one practice see another's tables.
inline constexpr char kExtensionSchema[] = "orvo_ext";

// A name made safe to stand in a statement as an identifier: "name", inner quotes doubled.
QString QuoteIdentifier(const QString& name);

// The schema that holds the citext extension in this database; empty when it is not installed.
QString CitextSchema(Connection& connection);

// True when the schema holds a table, view or sequence.
bool SchemaHoldsTables(Connection& connection, const QString& schema);

// Sets a new server connection's search path. With a practice schema, that schema and the one
// holding citext are the whole path, and both must exist; a citext schema that holds tables of
// its own is refused, since they would show through to the practice. Without one, the server's
// own path stays and the citext schema is added after it. Installs citext first when the
// database has none, safely when several connections start at once.
void SetSearchPath(Connection& connection, const QString& practiceSchema);

}  // namespace orvo::db
