#include "platform/db/one_statement.h"

#include <QString>

#include "platform/db/sql_scan.h"

namespace orvo::db {
namespace {

using scan::IsIdentPart;

// The end of a piece the engine reads as one; a piece that never closes runs to the end of the
// text: the engine refuses it, and there is nothing after it either way.
qsizetype OrEnd(QStringView s, qsizetype end) {
    return end < 0 ? s.size() : end;
}

bool SameWord(QStringView word, QLatin1StringView expected) {
    return word.compare(expected, Qt::CaseInsensitive) == 0;
}

bool OneStatement(QStringView s, Engine engine, bool backslashInStrings) {
    const bool pg = engine == Engine::Postgres;
    bool ended = false;  // a ';' was read: nothing but blanks and comments may follow
    // The embedded engine's CREATE [TEMP] TRIGGER holds statements of its own, each ended by a
    // ';': there, as the engine reads it, only a ';' right after the word END ends the whole.
    int words = 0;
    bool trigger = false;
    QStringView lastWord;
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
            ended = !trigger || SameWord(lastWord, QLatin1StringView("END"));
            lastWord = {};
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
            const qsizetype start = i;
            while (i < s.size() && IsIdentPart(s[i]))
                ++i;
            lastWord = s.sliced(start, i - start);
            if (!pg && words < 3) {
                const bool create = words == 0 && SameWord(lastWord, QLatin1StringView("CREATE"));
                const bool temp =
                    words == 1 && (SameWord(lastWord, QLatin1StringView("TEMP")) ||
                                   SameWord(lastWord, QLatin1StringView("TEMPORARY")));
                if (words > 0 && SameWord(lastWord, QLatin1StringView("TRIGGER")))
                    trigger = true;
                // Counting stops at the first word that is not the statement's opening.
                words = create || temp ? words + 1 : 3;
            }
            continue;
        } else {
            ++i;
        }
        lastWord = {};
    }
    return true;
}

}  // namespace

bool HoldsOneStatement(QStringView sql, Engine engine) {
    return OneStatement(sql, engine, false) &&
           (engine != Engine::Postgres || OneStatement(sql, engine, true));
}

}  // namespace orvo::db
