#include "platform/db/sql_scan.h"

namespace orvo::db::scan {

qsizetype EndOfQuoted(QStringView s, qsizetype from, QChar close, bool backslash) {
    for (qsizetype i = from + 1; i < s.size(); ++i) {
        if (backslash && s[i] == u'\\') {
            ++i;
        } else if (s[i] == close) {
            if (i + 1 < s.size() && s[i + 1] == close) {
                ++i;
                continue;
            }
            return i + 1;
        }
    }
    return -1;
}

qsizetype EndOfBlockComment(QStringView s, qsizetype from, bool nested) {
    int depth = 0;
    for (qsizetype i = from; i + 1 < s.size(); ++i) {
        if (s[i] == u'/' && s[i + 1] == u'*' && (nested || depth == 0)) {
            ++depth;
            ++i;
        } else if (s[i] == u'*' && s[i + 1] == u'/') {
            ++i;
            if (--depth == 0)
                return i + 1;
        }
    }
    return -1;
}

QStringView DollarTag(QStringView s, qsizetype from) {
    qsizetype j = from + 1;
    while (j < s.size() && (s[j].isLetterOrNumber() || s[j] == u'_'))
        ++j;
    if (j >= s.size() || s[j] != u'$' || (j > from + 1 && s[from + 1].isDigit()))
        return {};
    return s.mid(from, j - from + 1);
}

qsizetype EndOfDollarQuote(QStringView s, qsizetype from, QStringView tag) {
    const qsizetype close = s.indexOf(tag, from + tag.size());
    return close < 0 ? -1 : close + tag.size();
}

}  // namespace orvo::db::scan
