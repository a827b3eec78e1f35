#include "platform/currency.h"

namespace orvo {

Currency Currency::Parse(const QString& text, bool* ok) {
    QString t = text.trimmed();
    t.remove(QLatin1Char('$'));
    t.remove(QLatin1Char(','));
    bool negative = false;
    if (t.startsWith(QLatin1Char('-'))) {
        negative = true;
        t = t.mid(1);
    }
    const qsizetype dot = t.indexOf(QLatin1Char('.'));
    const QString whole = dot < 0 ? t : t.left(dot);
    QString fraction = dot < 0 ? QString() : t.mid(dot + 1);
    bool good = !t.isEmpty() && fraction.size() <= 4;
    for (QChar c : whole + fraction)
        good = good && c.isDigit();
    if (!good) {
        if (ok)
            *ok = false;
        return Currency();
    }
    fraction = fraction.leftJustified(4, QLatin1Char('0'));
    const qint64 units = (whole.isEmpty() ? 0 : whole.toLongLong()) * 10000 + fraction.toLongLong();
    if (ok)
        *ok = true;
    return Currency(negative ? -units : units);
}

QString Currency::ToString() const {
    const qint64 magnitude = units_ < 0 ? -units_ : units_;
    const qint64 cents = (magnitude + 50) / 100;
    const QString text =
        QStringLiteral("%1.%2").arg(cents / 100).arg(cents % 100, 2, 10, QLatin1Char('0'));
    return units_ < 0 && cents != 0 ? QLatin1Char('-') + text : text;
}

}  // namespace orvo
