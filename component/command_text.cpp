#include "component/command_text.h"

#include <algorithm>
#include <climits>

namespace orvo::component {

int Val(const QString& text) {
    const QString t = text.trimmed();
    qsizetype end = (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+'))) ? 1 : 0;
    while (end < t.size() && t[end].isDigit() && end < 11)
        ++end;
    return static_cast<int>(std::clamp(t.left(end).toLongLong(), qint64(INT_MIN), qint64(INT_MAX)));
}

QString CapitalizeWords(const QString& text) {
    // Blanks only: a tab or line break at either end is part of the text.
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    QString result = text.mid(first, last - first);
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (i == 0 || result[i - 1] == u' ')
            result[i] = result[i].toUpper();
    }
    return result;
}

}  // namespace orvo::component
