#pragma once

#include <QStringView>

#include "platform/db/engine.h"

namespace orvo::db {

// Whether the text is at most one statement as the engine itself reads it (a ';' at the end is
// allowed). The server runs every statement of a text it is sent in one call, so each text goes
// to a driver only after this answered true. It reads strings, quoted names, comments and the
// server's dollar-quoted bodies the way the engine does; where the engine's reading depends on a
// setting (backslashes in strings), the text must be one statement under either reading.
bool HoldsOneStatement(QStringView sql, Engine engine);

}  // namespace orvo::db
