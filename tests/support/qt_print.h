#pragma once

#include <QString>
#include <ostream>

// Qt's text as GoogleTest prints it in a failure: the text itself, not its bytes.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
