#include "platform/db/one_statement.h"

namespace orvo::db {
namespace {

bool IsIdentChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

// End (one past) of a quoted run opened at `from`; a doubled `close` stands for one, and with
// `backslash` a backslash takes the next character as it is. The end of the text when it never
// closes: the engine refuses it, and there is nothing after it either way.
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
    return s.size();
}

// The server's $tag$ ... $tag$; -1 when no dollar quote opens at `from`.
qsizetype EndOfDollarQuote(QStringView s, qsizetype from) {
    if (from > 0 && IsIdentChar(s[from - 1]))
        return -1;
    qsizetype j = from + 1;
    while (j < s.size() && (s[j].isLetterOrNumber() || s[j] == u'_'))
        ++j;
    if (j >= s.size() || s[j] != u'$' || (j > from + 1 && s[from + 1].isDigit()))
        return -1;
    const QStringView tag = s.mid(from, j - from + 1);
    const qsizetype close = s.indexOf(tag, j + 1);
    return close < 0 ? s.size() : close + tag.size();
}

// End of a block comment opened at `from`; the server's nest.
qsizetype EndOfBlockComment(QStringView s, qsizetype from, bool nested) {
    int depth = 0;
    for (qsizetype i = from; i + 1 < s.size(); ++i) {
        if (nested && s[i] == u'/' && s[i + 1] == u'*') {
            ++depth;
            ++i;
        } else if (s[i] == u'*' && s[i + 1] == u'/') {
            ++i;
            if (--depth == 0 || !nested)
                return i + 1;
        }
    }
    return s.size();
}

bool OneStatement(QStringView s, Engine engine, bool backslashInStrings) {
    const bool pg = engine == Engine::Postgres;
    bool ended = false;  // a ';' was read: nothing but blanks and comments may follow
    for (qsizetype i = 0; i < s.size();) {
        const QChar c = s[i];
        const QChar d = i + 1 < s.size() ? s[i + 1] : QChar();
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (c == u'-' && d == u'-') {
            while (i < s.size() && s[i] != u'\n' && !(pg && s[i] == u'\r'))
                ++i;
            continue;
        }
        if (c == u'/' && d == u'*') {
            i = EndOfBlockComment(s, i, pg);
            continue;
        }
        if (c == u';') {
            ended = true;
            ++i;
            continue;
        }
        if (ended)
            return false;
        if (c == u'\'') {
            const bool escapes =
                pg && (backslashInStrings || (i > 0 && (s[i - 1] == u'E' || s[i - 1] == u'e') &&
                                              (i < 2 || !IsIdentChar(s[i - 2]))));
            i = EndOfQuoted(s, i, u'\'', escapes);
        } else if (c == u'"') {
            i = EndOfQuoted(s, i, u'"', false);
        } else if (!pg && c == u'[') {
            const qsizetype close = s.indexOf(u']', i + 1);
            i = close < 0 ? s.size() : close + 1;
        } else if (!pg && c == u'`') {
            i = EndOfQuoted(s, i, u'`', false);
        } else if (pg && c == u'$' && EndOfDollarQuote(s, i) > 0) {
            i = EndOfDollarQuote(s, i);
        } else if (IsIdentChar(c)) {
            while (i < s.size() && IsIdentChar(s[i]))
                ++i;
        } else {
            ++i;
        }
    }
    return true;
}

}  // namespace

bool HoldsOneStatement(QStringView sql, Engine engine) {
    return OneStatement(sql, engine, false) &&
           (engine != Engine::Postgres || OneStatement(sql, engine, true));
}

}  // namespace orvo::db
