#include "platform/db/one_statement.h"

#include "platform/db/sql_scan.h"

namespace orvo::db {
namespace {

using scan::IsIdentPart;

// The end of a piece the engine reads as one; a piece that never closes runs to the end of the
// text: the engine refuses it, and there is nothing after it either way.
qsizetype OrEnd(QStringView s, qsizetype end) {
    return end < 0 ? s.size() : end;
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
            i = OrEnd(s, scan::EndOfBlockComment(s, i, pg));
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
                                              (i < 2 || !IsIdentPart(s[i - 2]))));
            i = OrEnd(s, scan::EndOfQuoted(s, i, u'\'', escapes));
        } else if (c == u'"') {
            i = OrEnd(s, scan::EndOfQuoted(s, i, u'"'));
        } else if (!pg && c == u'[') {
            const qsizetype close = s.indexOf(u']', i + 1);
            i = close < 0 ? s.size() : close + 1;
        } else if (!pg && c == u'`') {
            i = OrEnd(s, scan::EndOfQuoted(s, i, u'`'));
        } else if (pg && c == u'$' && !(i > 0 && IsIdentPart(s[i - 1])) &&
                   !scan::DollarTag(s, i).isEmpty()) {
            i = OrEnd(s, scan::EndOfDollarQuote(s, i, scan::DollarTag(s, i)));
        } else if (IsIdentPart(c)) {
            while (i < s.size() && IsIdentPart(s[i]))
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
