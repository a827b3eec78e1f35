#pragma once

#include <QChar>
#include <QStringView>

// How SQL text is read, piece by piece, wherever it is read: by the translation of the suite's
// dialect and by the check that a text is one statement as the engine reads it. Each answers
// the end (one past) of the piece that opens at `from`, or -1 when it never closes.
namespace orvo::db::scan {

inline bool IsIdentStart(QChar c) {
    return c.isLetter() || c == u'_';
}
inline bool IsIdentPart(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

// A run opened at `from` and closed by `close`, where a doubled `close` stands for one; with
// `backslash`, a backslash takes the next character as it is.
qsizetype EndOfQuoted(QStringView s, qsizetype from, QChar close, bool backslash = false);

// A block comment opened at `from`; `nested` as the server reads them, where they nest.
qsizetype EndOfBlockComment(QStringView s, qsizetype from, bool nested);

// The server's dollar-quoted body, $tag$ ... $tag$ or $$ ... $$: the opening tag at `from`, or
// an empty view when none opens there ($1 is a parameter, not a tag).
QStringView DollarTag(QStringView s, qsizetype from);
// The body whose opening tag is `tag` at `from`.
qsizetype EndOfDollarQuote(QStringView s, qsizetype from, QStringView tag);

}  // namespace orvo::db::scan
