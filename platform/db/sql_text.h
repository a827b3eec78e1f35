#pragma once

#include <QString>

namespace orvo::db {

// A text as an SQL string literal: in single quotes, each quote doubled. Both engines read it
// back exactly (the server keeps backslashes as they are in a plain literal).
QString QuoteText(const QString& text);

// The literal of a text, or NULL for an empty one: how an empty field is stored.
QString TextOrNull(const QString& text);

}  // namespace orvo::db
