#include "platform/db/sql_text.h"

namespace orvo::db {

QString QuoteText(const QString& text) {
    QString quoted;
    quoted.reserve(text.size() + 2);
    quoted += QLatin1Char('\'');
    for (const QChar c : text) {
        quoted += c;
        if (c == QLatin1Char('\''))
            quoted += c;
    }
    quoted += QLatin1Char('\'');
    return quoted;
}

QString TextOrNull(const QString& text) {
    return text.isEmpty() ? QStringLiteral("NULL") : QuoteText(text);
}

}  // namespace orvo::db
