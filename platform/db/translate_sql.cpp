#include "platform/db/translate_sql.h"
#include "platform/db/db_log.h"
#include "platform/db/sql_scan.h"

#include <QDate>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTime>
#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

// The rewriter reads a statement into tokens, rewrites tokens (and, for the few join forms of
// UPDATE and DELETE, whole clauses), and writes the statement back. Text it does not rewrite
// keeps its spacing and letter case, so a statement that is already in the engine's dialect comes
// back as it went in, and translating twice gives what translating once gave.

namespace orvo::db {
namespace {

using namespace Qt::StringLiterals;

enum class Kind : quint8 {
    Space,
    Comment,
    String,      // '...' (and $tag$...$tag$ bodies, which are never looked into)
    QuotedName,  // "..."
    Bracketed,   // [...]
    Date,        // #...#
    Word,        // identifiers and keywords
    Variable,    // @name, @@IDENTITY, $1
    Number,
    Op,
    Punct,
};

struct Token {
    Kind kind;
    QString text;
};
using Tokens = std::vector<Token>;

bool Same(QStringView text, QLatin1String word) {
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

// Whether the text is one of the words of a list written as one text, "FROM WHERE", in any case.
bool AnyOf(QStringView text, QLatin1String words) {
    const char* word = words.data();
    const char* const end = word + words.size();
    while (word < end) {
        const char* stop = word;
        while (stop < end && *stop != ' ')
            ++stop;
        if (stop - word == text.size() && Same(text, QLatin1String(word, stop - word)))
            return true;
        word = stop + 1;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------
// Reading

struct Lexed {
    Tokens tokens;
    QString problem;  // empty when the text could be read
};

using scan::IsIdentPart;
using scan::IsIdentStart;

// The text of an Access date literal (what stands between the number signs) as ISO text:
// "YYYY-MM-DD", or "YYYY-MM-DD HH:MM:SS" when it holds a time.
std::optional<QString> IsoDate(QStringView inner) {
    static const QRegularExpression us(QStringLiteral(
        R"(^\s*(\d{1,2})[/-](\d{1,2})[/-](\d{4}|\d{2})(?:\s+(\d{1,2}):(\d{2})(?::(\d{2}))?\s*([AaPp][Mm])?)?\s*$)"));
    static const QRegularExpression iso(QStringLiteral(
        R"(^\s*(\d{4})-(\d{1,2})-(\d{1,2})(?:[ T](\d{1,2}):(\d{2})(?::(\d{2}))?)?\s*$)"));
    int year = 0, month = 0, day = 0;
    QRegularExpressionMatch m = us.match(inner);
    if (m.hasMatch()) {
        month = m.capturedView(1).toInt();
        day = m.capturedView(2).toInt();
        year = m.capturedView(3).toInt();
        // Two-digit years read as Access reads them: 00-29 this century, 30-99 the last one.
        if (m.capturedView(3).size() == 2)
            year += year < 30 ? 2000 : 1900;
    } else {
        m = iso.match(inner);
        if (!m.hasMatch())
            return std::nullopt;
        year = m.capturedView(1).toInt();
        month = m.capturedView(2).toInt();
        day = m.capturedView(3).toInt();
    }
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    QString text = date.toString(Qt::ISODate);
    if (m.capturedView(4).isEmpty())
        return text;
    int hour = m.capturedView(4).toInt();
    const QStringView half = m.lastCapturedIndex() >= 7 ? m.capturedView(7) : QStringView();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (Same(half, "PM"_L1) ? 12 : 0);
    }
    const QTime time(hour, m.capturedView(5).toInt(), m.capturedView(6).toInt());
    if (!time.isValid())
        return std::nullopt;
    return text + u' ' + time.toString(QStringLiteral("HH:mm:ss"));
}

// A number sign opens a date literal only when a date stands before the next one; otherwise it
// is an operator (the server engine's bitwise XOR).
qsizetype EndOfDate(QStringView s, qsizetype from) {
    const qsizetype close = s.indexOf(u'#', from + 1);
    if (close < 0 || close - from > 32)
        return -1;
    return IsoDate(s.mid(from + 1, close - from - 1)) ? close + 1 : -1;
}

// Reads a text into tokens. With `borrow`, the tokens' texts point into s instead of holding
// copies: a statement has dozens of tokens and most are never rewritten, so reading is then
// one allocation instead of one per token. Borrowed tokens must not outlive s, and whatever
// is made of them and kept past it goes through Owned first.
Lexed Lex(QStringView s, bool borrow = false) {
    Lexed out;
    Tokens& tokens = out.tokens;
    tokens.reserve(static_cast<size_t>(s.size() / 3 + 1));
    const qsizetype n = s.size();
    qsizetype i = 0;
    auto push = [&](Kind kind, qsizetype end) {
        tokens.push_back({kind, borrow ? QString::fromRawData(s.data() + i, end - i)
                                       : s.mid(i, end - i).toString()});
        i = end;
    };
    auto fail = [&](const char* problem) {
        out.problem = QString::fromLatin1(problem);
        return out;
    };
    while (i < n) {
        const QChar c = s[i];
        const QChar d = i + 1 < n ? s[i + 1] : QChar();
        qsizetype j = i + 1;
        if (c.isSpace()) {
            while (j < n && s[j].isSpace())
                ++j;
            push(Kind::Space, j);
        } else if (c == u'-' && d == u'-') {
            j = s.indexOf(u'\n', i);
            push(Kind::Comment, j < 0 ? n : j);
        } else if (c == u'/' && d == u'*') {
            j = scan::EndOfBlockComment(s, i, false);
            if (j < 0)
                return fail("unterminated comment");
            push(Kind::Comment, j);
        } else if (c == u'\'') {
            j = scan::EndOfQuoted(s, i, u'\'');
            if (j < 0)
                return fail("unterminated string");
            push(Kind::String, j);
        } else if (c == u'"') {
            j = scan::EndOfQuoted(s, i, u'"');
            if (j < 0)
                return fail("unterminated quoted name");
            push(Kind::QuotedName, j);
        } else if (c == u'[') {
            j = scan::EndOfQuoted(s, i, u']');
            if (j < 0)
                return fail("unterminated bracket");
            push(Kind::Bracketed, j);
        } else if (c == u']') {
            return fail("unbalanced bracket");
        } else if (c == u'#' && (j = EndOfDate(s, i)) > 0) {
            push(Kind::Date, j);
        } else if (IsIdentStart(c)) {
            while (j < n && IsIdentPart(s[j]))
                ++j;
            push(Kind::Word, j);
        } else if (c.isDigit()) {
            while (j < n && s[j].isDigit())
                ++j;
            if (j + 1 < n && s[j] == u'.' && s[j + 1].isDigit()) {
                for (++j; j < n && s[j].isDigit();)
                    ++j;
            }
            if (j < n && (s[j] == u'e' || s[j] == u'E')) {
                qsizetype k = j + 1;
                if (k < n && (s[k] == u'+' || s[k] == u'-'))
                    ++k;
                if (k < n && s[k].isDigit()) {
                    for (j = k; j < n && s[j].isDigit();)
                        ++j;
                }
            }
            push(Kind::Number, j);
        } else if (c == u'@') {
            if (d == u'@')
                ++j;
            while (j < n && IsIdentPart(s[j]))
                ++j;
            push(Kind::Variable, j);
        } else if (c == u'$' && d.isDigit()) {
            while (j < n && s[j].isDigit())
                ++j;
            push(Kind::Variable, j);
        } else if (c == u'$' && !scan::DollarTag(s, i).isEmpty() &&
                   (j = scan::EndOfDollarQuote(s, i, scan::DollarTag(s, i))) > 0) {
            // $tag$ ... $tag$, a function body on the server engine, is one opaque string.
            push(Kind::String, j);
        } else {
            if (i + 1 < n && AnyOf(s.mid(i, 2), "<> <= >= != || :: =="_L1)) {
                push(Kind::Op, i + 2);
            } else if (QStringView(u"=<>+-*/%&|^~!").contains(c)) {
                push(Kind::Op, i + 1);
            } else {
                push(Kind::Punct, i + 1);
            }
        }
    }
    int depth = 0;
    for (const Token& t : tokens) {
        if (t.kind != Kind::Punct)
            continue;
        if (t.text == u'(')
            ++depth;
        if (t.text == u')' && --depth < 0)
            return fail("unbalanced parentheses");
    }
    if (depth != 0)
        return fail("unbalanced parentheses");
    return out;
}

// A text made of borrowed tokens, as a copy of its own (a text that owns its data, or is
// empty, is passed on as it is).
QString Owned(QString text) {
    if (!text.isEmpty() && !text.data_ptr().isMutable())
        return QString(text.constData(), text.size());
    return text;
}

// A fragment this file writes itself, known to read cleanly.
Tokens Fragment(const QString& text) {
    return Lex(text).tokens;
}

QString Render(const Tokens& tokens, size_t begin, size_t end) {
    QString out;
    qsizetype length = 0;
    for (size_t i = begin; i < end && i < tokens.size(); ++i)
        length += tokens[i].text.size();
    out.reserve(length);
    for (size_t i = begin; i < end && i < tokens.size(); ++i)
        out += tokens[i].text;
    return out;
}

QString Render(const Tokens& tokens) {
    return Render(tokens, 0, tokens.size());
}

// Statements of a batch: [begin, end) of the tokens, and whether a ';' follows at `end`.
struct Piece {
    size_t begin;
    size_t end;
    bool separated;
};

// A ';' ends a statement only outside parentheses and outside BEGIN ... END and CASE ... END, so
// a trigger body or a server-side block stays whole. BEGIN at the head of a statement is the
// statement itself (a transaction), not a block.
std::vector<Piece> SplitPieces(const Tokens& tokens) {
    std::vector<Piece> pieces;
    int depth = 0, blocks = 0;
    bool atHead = true;
    size_t begin = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        if (t.kind == Kind::Space || t.kind == Kind::Comment)
            continue;
        if (t.kind == Kind::Punct && t.text == u';' && depth == 0 && blocks == 0) {
            pieces.push_back({begin, i, true});
            begin = i + 1;
            atHead = true;
            continue;
        }
        if (t.kind == Kind::Punct && t.text == u'(')
            ++depth;
        if (t.kind == Kind::Punct && t.text == u')')
            --depth;
        if (t.kind == Kind::Word && !atHead) {
            if (AnyOf(t.text, "BEGIN CASE"_L1))
                ++blocks;
            if (Same(t.text, "END"_L1) && blocks > 0)
                --blocks;
        }
        atHead = false;
    }
    pieces.push_back({begin, tokens.size(), false});
    return pieces;
}

// ---------------------------------------------------------------------------------------------
// Word lists

// Words that begin or join clauses: never a value, a table or an alias.
constexpr QLatin1String kClauseWords(
    "SELECT FROM WHERE AND OR NOT ON AS JOIN INNER LEFT RIGHT FULL OUTER CROSS "
    "NATURAL GROUP ORDER BY HAVING UNION INTERSECT EXCEPT ALL DISTINCT INTO "
    "VALUES SET UPDATE DELETE INSERT IN IS LIKE ILIKE BETWEEN CASE WHEN THEN "
    "ELSE LIMIT OFFSET ASC DESC EXISTS TOP WITH USING ESCAPE RETURNING NOCOUNT");

// Names that cannot stand bare as identifiers on one engine or the other.
constexpr QLatin1String kReservedNames(
    "ALL ALTER AND ANY ARRAY AS ASC ASYMMETRIC AUTHORIZATION BETWEEN BINARY BOTH "
    "BY CASE CAST CHECK COLLATE COLLATION COLUMN CONCURRENTLY CONSTRAINT CREATE "
    "CROSS CURRENT_CATALOG CURRENT_DATE CURRENT_ROLE CURRENT_SCHEMA CURRENT_TIME "
    "CURRENT_TIMESTAMP CURRENT_USER DEFAULT DEFERRABLE DELETE DESC DISTINCT "
    "DISTINCTROW DO DROP ELSE END ESCAPE EXCEPT EXISTS FALSE FETCH FOR FOREIGN "
    "FREEZE FROM FULL GLOB GRANT GROUP HAVING ILIKE IN INDEX INITIALLY INNER "
    "INSERT INTERSECT INTO IS ISNULL JOIN LATERAL LEADING LEFT LIKE LIMIT "
    "LOCALTIME LOCALTIMESTAMP NATURAL NOT NOTNULL NULL OFFSET ON ONLY OR ORDER "
    "OUTER OVERLAPS PLACING PRIMARY REFERENCES REGEXP RETURNING RIGHT SELECT "
    "SESSION_USER SET SIMILAR SOME SYMMETRIC TABLE TABLESAMPLE THEN TO TOP "
    "TRAILING TRANSACTION TRUE UNION UNIQUE UPDATE USER USING VALUES VARIADIC "
    "VERBOSE WHEN WHERE WINDOW WITH");

// Functions whose value is text: a '+' beside a call of one of them joins strings.
constexpr QLatin1String kTextFunctions(
    "UPPER LOWER UCASE LCASE TRIM LTRIM RTRIM MID SUBSTR SUBSTRING LEFT RIGHT "
    "FORMAT REPLACE CONCAT STR CSTR CHR SPACE LPAD RPAD TO_CHAR");

constexpr QLatin1String kTextTypes("TEXT VARCHAR NVARCHAR NTEXT CHAR NCHAR CITEXT");

bool IsSimpleName(QStringView name) {
    if (name.isEmpty() || !(name[0].isLetter() || name[0] == u'_'))
        return false;
    return std::all_of(name.begin(), name.end(), [](QChar c) {
        return (c.isLetterOrNumber() && c.unicode() < 128) || c == u'_';
    });
}

// An ISO date in quotes is what a date literal turns into; it takes part in date arithmetic,
// not in joining strings.
bool IsIsoDateString(const QString& text) {
    static const QRegularExpression iso(
        QStringLiteral(R"(^'\d{4}-\d{2}-\d{2}( \d{2}:\d{2}:\d{2})?'$)"));
    return text.size() >= 12 && iso.match(text).hasMatch();
}

// ---------------------------------------------------------------------------------------------
// Editing a token list

struct Edit {
    size_t begin;
    size_t end;
    Tokens with;
};

class Edits {
public:
    void Replace(size_t begin, size_t end, Tokens with) {
        edits_.push_back({begin, end, std::move(with)});
    }
    void Replace(size_t begin, size_t end, const QString& text) {
        Replace(begin, end, Fragment(text));
    }
    void Remove(size_t begin, size_t end) { Replace(begin, end, Tokens()); }
    void Insert(size_t at, const QString& text) { Replace(at, at, text); }
    bool empty() const { return edits_.empty(); }

    // Edits apply in the order of their places; an edit that overlaps one before it is dropped,
    // which the passes avoid by touching disjoint tokens.
    Tokens ApplyTo(const Tokens& tokens) {
        std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) {
            if (a.begin != b.begin)
                return a.begin < b.begin;
            return (a.begin == a.end) > (b.begin == b.end);
        });
        Tokens out;
        out.reserve(tokens.size() + 8);
        // Where an edit meets what stands beside it, two words (Now()Name made LOCALTIMESTAMP
        // and Name) are kept apart by a blank: otherwise the text would read back as one word,
        // and a second translation would see another statement than this one did.
        bool seam = false;
        auto push = [&](const Token& t) {
            if (seam && !out.empty() && !out.back().text.isEmpty() && !t.text.isEmpty() &&
                IsIdentPart(out.back().text.back()) && IsIdentPart(t.text.front())) {
                out.push_back({Kind::Space, u" "_s});
            }
            seam = false;
            out.push_back(t);
        };
        size_t at = 0;
        for (Edit& e : edits_) {
            if (e.begin < at)
                continue;
            for (size_t i = at; i < e.begin; ++i)
                push(tokens[i]);
            seam = true;
            for (Token& t : e.with)
                push(t);
            seam = true;
            at = e.end;
        }
        for (size_t i = at; i < tokens.size(); ++i)
            push(tokens[i]);
        edits_.clear();
        return out;
    }

private:
    std::vector<Edit> edits_;
};

// A table named in a FROM clause or join, with its alias when it has one.
struct TableRef {
    QString name;
    QString alias;
    bool Is(const QString& nameOrAlias) const {
        const QString& own = alias.isEmpty() ? name : alias;
        return own.compare(nameOrAlias, Qt::CaseInsensitive) == 0 ||
               name.compare(nameOrAlias, Qt::CaseInsensitive) == 0;
    }
};

// ---------------------------------------------------------------------------------------------
// One statement

class Statement {
public:
    Statement(Tokens tokens, Engine engine) : t_(std::move(tokens)), engine_(engine) {}

    // The statement for the engine; nullopt when it cannot be translated and must go as it came,
    // with the reason in problem(). An empty text means the statement has no counterpart.
    std::optional<QString> Translate();
    const QString& problem() const { return problem_; }

private:
    static constexpr size_t npos = static_cast<size_t>(-1);

    // Navigation over the current tokens.
    size_t size() const { return t_.size(); }
    bool Sig(size_t i) const {
        return i < t_.size() && t_[i].kind != Kind::Space && t_[i].kind != Kind::Comment;
    }
    size_t Next(size_t i) const {
        for (++i; i < t_.size(); ++i) {
            if (Sig(i))
                return i;
        }
        return t_.size();
    }
    size_t Prev(size_t i) const {
        while (i-- > 0) {
            if (Sig(i))
                return i;
        }
        return npos;
    }
    size_t First() const { return Sig(0) ? 0 : Next(0); }
    size_t Last() const { return Prev(t_.size()); }
    bool IsWord(size_t i, QLatin1String word) const {
        return i < t_.size() && t_[i].kind == Kind::Word && Same(t_[i].text, word);
    }
    bool IsWordIn(size_t i, QLatin1String words) const {
        return i < t_.size() && t_[i].kind == Kind::Word && AnyOf(t_[i].text, words);
    }
    bool IsPunct(size_t i, char16_t c) const {
        return i < t_.size() && t_[i].kind == Kind::Punct && t_[i].text.size() == 1 &&
               t_[i].text[0] == c;
    }
    bool IsOp(size_t i, QLatin1String op) const {
        return i < t_.size() && t_[i].kind == Kind::Op && t_[i].text == op;
    }
    bool IsComparison(size_t i) const {
        return IsOp(i, "="_L1) || IsOp(i, "<>"_L1) || IsOp(i, "!="_L1);
    }
    // A name a clause word cannot be: a column, table or alias.
    bool IsName(size_t i) const {
        if (i >= t_.size())
            return false;
        if (t_[i].kind == Kind::QuotedName)
            return true;
        return t_[i].kind == Kind::Word && !AnyOf(t_[i].text, kClauseWords);
    }
    // Whether token i can end an operand, which makes an operator after it a binary one.
    bool EndsOperand(size_t i) const {
        if (i >= t_.size())
            return false;
        switch (t_[i].kind) {
            case Kind::String:
            case Kind::QuotedName:
            case Kind::Number:
            case Kind::Variable:
            case Kind::Date:
                return true;
            case Kind::Word:
                return IsName(i) || IsWord(i, "END"_L1);
            case Kind::Punct:
                return t_[i].text == u')';
            default:
                return false;
        }
    }
    // The count of SELECT TOP n or TOP (n): once TOP goes, what follows it follows SELECT.
    bool IsTopCount(size_t i) const {
        if (i < size() && t_[i].kind == Kind::Number)
            return IsWord(Prev(i), "TOP"_L1);
        return IsPunct(i, u')') && Partner(i) != npos && IsWord(Prev(Partner(i)), "TOP"_L1);
    }
    bool IsCall(size_t i) const {
        return t_.size() > i && t_[i].kind == Kind::Word && IsPunct(Next(i), u'(');
    }
    size_t Partner(size_t i) const { return partner_[i]; }
    int Depth(size_t i) const { return depth_[i]; }
    // First token at or after `from`, at the depth of `from`, that satisfies `stop`; the end of
    // the enclosing parentheses (or of the statement) when none does.
    template <class Stop>
    size_t Scan(size_t from, Stop stop) const {
        const int depth = from < size() ? Depth(from) : 0;
        for (size_t i = from; i < size(); ++i) {
            if (depth_[i] < depth)
                return i;
            if (depth_[i] == depth && stop(i))
                return i;
        }
        return size();
    }
    QString RenderTrimmed(size_t begin, size_t end) const {
        return Render(t_, begin, end).trimmed();
    }

    void Index();
    void Apply(Edits& edits);

    bool IsNoCount() const;
    std::optional<QString> BackupGuard();
    void RewriteLiterals();
    void RewriteQualifiers();
    void RewriteNamesAndCalls();
    void RewriteIsNull();
    bool RewriteTop();
    void RewriteBooleans();
    void RewriteConcatenation();
    void RewriteSelectedConditions();
    void RewriteTableTypes();
    void RewritePrefixLike();
    // The '=' of each assignment of an UPDATE's SET list, and the end of its value.
    std::vector<std::pair<size_t, size_t>> AssignedValues() const;
    // A parenthesised condition from item to end (an item of a SELECT list, an assigned value)
    // is cast to a number on the server engine.
    void CastCondition(size_t item, size_t end, Edits& edits) const;
    void RewriteUpdate();
    void RewriteDelete();
    void RewriteInsertSource();
    void RewriteBackslashStrings();

    bool IsTextOperandEnd(size_t i) const;
    bool IsTextOperandStart(size_t i) const;
    bool CastsToText(size_t open) const;
    bool GroupJoinsText(size_t open) const;
    size_t OperandStart(size_t end) const;
    size_t OperandEnd(size_t start) const;
    std::vector<TableRef> TableRefs(size_t begin, size_t end) const;
    QString RowKey() const {
        return engine_ == Engine::Sqlite ? QStringLiteral("rowid") : QStringLiteral("ctid");
    }

    Tokens t_;
    Engine engine_;
    std::vector<size_t> partner_;
    std::vector<int> depth_;
    QString problem_;
};

void Statement::Index() {
    partner_.assign(t_.size(), npos);
    depth_.assign(t_.size(), 0);
    std::vector<size_t> open;
    int depth = 0;
    for (size_t i = 0; i < t_.size(); ++i) {
        if (IsPunct(i, u')')) {
            --depth;
            if (!open.empty()) {
                partner_[i] = open.back();
                partner_[open.back()] = i;
                open.pop_back();
            }
        }
        depth_[i] = depth;
        if (IsPunct(i, u'(')) {
            open.push_back(i);
            ++depth;
        }
    }
}

void Statement::Apply(Edits& edits) {
    if (edits.empty())
        return;
    t_ = edits.ApplyTo(t_);
    Index();
}

std::optional<QString> Statement::Translate() {
    Index();
    if (IsNoCount())
        return QString();
    if (IsWord(First(), "IF"_L1))
        return BackupGuard();
    RewriteLiterals();
    RewritePrefixLike();
    RewriteQualifiers();
    RewriteNamesAndCalls();
    RewriteIsNull();
    RewriteBooleans();
    if (!RewriteTop())
        return std::nullopt;
    RewriteConcatenation();
    RewriteSelectedConditions();
    RewriteTableTypes();
    RewriteUpdate();
    RewriteDelete();
    RewriteInsertSource();
    RewriteBackslashStrings();
    return Render(t_);
}

// The server reads a backslash in a plain string as itself or as an escape, by a setting of the
// session that any statement may change; a string that holds one would then end elsewhere, and
// the text is refused as more than one statement. It is sent in the escape form that every
// setting reads alike, E'...' with the backslash doubled. A string already in that form (our own
// output, read again) is left as it is.
void Statement::RewriteBackslashStrings() {
    if (engine_ != Engine::Postgres)
        return;
    for (size_t i = 0; i < size(); ++i) {
        Token& t = t_[i];
        if (t.kind != Kind::String || !t.text.startsWith(u'\'') || !t.text.contains(u'\\'))
            continue;
        if (i > 0 && t_[i - 1].kind == Kind::Word && Same(t_[i - 1].text, "E"_L1))
            continue;
        // Glued to a word (malformed text), the E stands apart, or it would lengthen the word.
        const bool glued =
            i > 0 && (t_[i - 1].kind == Kind::Word || t_[i - 1].kind == Kind::Number ||
                      t_[i - 1].kind == Kind::Variable);
        t.text = (glued ? u" E"_s : u"E"_s) + QString(t.text).replace(u"\\"_s, u"\\\\"_s);
    }
}

// SET NOCOUNT ON only quiets row counts on the server the suite was written for; here it has
// no counterpart and the statement is dropped.
bool Statement::IsNoCount() const {
    const size_t set = First();
    if (!IsWord(set, "SET"_L1) || !IsWord(Next(set), "NOCOUNT"_L1))
        return false;
    const size_t value = Next(Next(set));
    return IsWordIn(value, "ON OFF"_L1) && Next(value) == size();
}

// Brackets go, dates become ISO text, N'...' loses its N.
void Statement::RewriteLiterals() {
    Edits edits;
    for (size_t i = 0; i < size(); ++i) {
        Token& t = t_[i];
        if (t.kind == Kind::Bracketed) {
            const QString name = t.text.mid(1, t.text.size() - 2).replace(u"]]"_s, u"]"_s);
            if (IsSimpleName(name) && !AnyOf(name, kReservedNames)) {
                t = {Kind::Word, name};
            } else {
                // A quoted name keeps its letter case on the server engine, where bare names
                // fold to lower case; a keyword used as a column must match the folded name.
                const bool keyword = IsSimpleName(name) && engine_ == Engine::Postgres;
                QString quoted = keyword ? name.toLower() : name;
                quoted.replace(u'"', u"\"\""_s);
                t = {Kind::QuotedName, u'"' + quoted + u'"'};
            }
        } else if (t.kind == Kind::Date) {
            t = {Kind::String,
                 u'\'' + *IsoDate(QStringView(t.text).mid(1, t.text.size() - 2)) + u'\''};
            // A string right beside it would read back as one string with it.
            if (i > 0 && t_[i - 1].text.endsWith(u'\''))
                edits.Insert(i, u" "_s);
            if (i + 1 < size() && t_[i + 1].text.startsWith(u'\''))
                edits.Insert(i + 1, u" "_s);
        } else if (t.kind == Kind::Word && Same(t.text, "N"_L1) && i + 1 < size() &&
                   ((t_[i + 1].kind == Kind::String && t_[i + 1].text.startsWith(u'\'')) ||
                    t_[i + 1].kind == Kind::Date)) {
            // A date glued to an N becomes a string in this same pass.
            edits.Remove(i, i + 1);
        }
    }
    Apply(edits);
}

// Names of the other database and of the owner: both engines hold every table in the one
// database, so ORVOWIN.dbo.rsTable, ORVOWIN..rsTable and dbo.rsTable are plain rsTable. A prefix
// counts only where a name begins (after a blank, an operator or punctuation other than a dot:
// never glued to a number, never after another dot), only when a name follows it, and never
// inside the reach of a number sign that opened no date, where taking text out could make one.
// What follows a prefix taken out begins a name in turn, so one pass leaves nothing that a
// second would take.
void Statement::RewriteQualifiers() {
    Edits edits;
    bool nameStart = true;
    bool dateReach = false;
    for (size_t i = 0; i < size(); ++i) {
        const Token& t = t_[i];
        const bool boundary = nameStart;
        nameStart = t.kind == Kind::Space || t.kind == Kind::Comment || t.kind == Kind::Op ||
                    (t.kind == Kind::Punct && t.text != u'.');
        if (t.kind == Kind::Punct && t.text == u'#') {
            dateReach = true;
        } else if (t.text.contains(u'#')) {
            dateReach = false;
        }
        if (t.kind != Kind::Word || !boundary || dateReach || !IsPunct(i + 1, u'.'))
            continue;
        // A value word, ours after a call was translated, names no database.
        if (IsWordIn(i, "NULL TRUE FALSE CURRENT_DATE CURRENT_TIMESTAMP LOCALTIMESTAMP"_L1))
            continue;
        size_t end = 0;  // one past the prefix
        if (i + 3 < size() && IsWord(i + 2, "dbo"_L1) && IsPunct(i + 3, u'.')) {
            end = i + 4;
        } else if (Same(t.text, "dbo"_L1)) {
            end = i + 2;
        } else if (IsPunct(i + 2, u'.')) {
            end = i + 3;
        }
        if (end == 0)
            continue;
        // @@IDENTITY becomes a call of the engine's, which would then read as the name the
        // prefix qualified.
        const bool identity =
            end < size() && t_[end].kind == Kind::Variable && Same(t_[end].text, "@@IDENTITY"_L1);
        if (!IsName(end) && !identity)
            continue;
        edits.Remove(i, end);
        i = end - 1;
        nameStart = true;
    }
    Apply(edits);
}

void Statement::RewriteNamesAndCalls() {
    const bool sqlite = engine_ == Engine::Sqlite;
    const QString identity = sqlite ? u"last_insert_rowid()"_s : u"lastval()"_s;
    const QString now = sqlite ? u"datetime('now','localtime')"_s : u"LOCALTIMESTAMP"_s;
    const QString today = sqlite ? u"date('now','localtime')"_s : u"CURRENT_DATE"_s;
    Edits edits;
    for (size_t i = 0; i < size(); ++i) {
        Token& t = t_[i];
        const bool qualified = i > 0 && IsPunct(i - 1, u'.');
        if (t.kind == Kind::Variable && Same(t.text, "@@IDENTITY"_L1)) {
            edits.Replace(i, i + 1, identity);
            continue;
        }
        if (t.kind == Kind::Op && t.text == u'&' && EndsOperand(Prev(i))) {
            t.text = u"||"_s;
            continue;
        }
        if (t.kind != Kind::Word || qualified)
            continue;
        if (Same(t.text, "DISTINCTROW"_L1)) {
            t.text = u"DISTINCT"_s;
            continue;
        }
        if (engine_ == Engine::Postgres && Same(t.text, "LIKE"_L1)) {
            t.text = u"ILIKE"_s;
            continue;
        }
        if (IsPunct(i + 1, u'.'))
            continue;
        if (!IsCall(i))
            continue;
        const size_t open = Next(i);
        const size_t close = Partner(open);
        const bool empty = Next(open) == close;
        if (Same(t.text, "UCASE"_L1)) {
            t.text = u"UPPER"_s;
        } else if (Same(t.text, "LCASE"_L1)) {
            t.text = u"LOWER"_s;
        } else if (Same(t.text, "LEN"_L1)) {
            t.text = u"LENGTH"_s;
        } else if (Same(t.text, "MID"_L1)) {
            t.text = u"SUBSTR"_s;
        } else if (empty && AnyOf(t.text, "GETDATE NOW"_L1)) {
            edits.Replace(i, close + 1, now);
        } else if (empty && Same(t.text, "DATE"_L1)) {
            edits.Replace(i, close + 1, today);
        } else if (empty && Same(t.text, "SCOPE_IDENTITY"_L1)) {
            edits.Replace(i, close + 1, identity);
        } else if (Same(t.text, "CAST"_L1)) {
            // CAST(x AS varchar(n)) and nvarchar: both engines take TEXT.
            const size_t as = Scan(Next(open), [this](size_t k) { return IsWord(k, "AS"_L1); });
            const size_t type = Next(as);
            if (as < close && IsWordIn(type, "VARCHAR NVARCHAR NTEXT"_L1)) {
                const size_t width = Next(type);
                const size_t end = IsPunct(width, u'(') ? Partner(width) + 1 : type + 1;
                edits.Replace(type, end, u"TEXT"_s);
            }
        }
    }
    Apply(edits);
}

// IsNull(x) = TRUE -> (x) IS NULL, IsNull(x) = FALSE -> (x) IS NOT NULL, a bare IsNull(x) as a
// condition -> (x) IS NULL; the server's two-argument ISNULL(a, b) is COALESCE(a, b).
void Statement::RewriteIsNull() {
    Edits edits;
    for (size_t i = 0; i < size(); ++i) {
        if (!IsWord(i, "ISNULL"_L1) || !IsCall(i) || (i > 0 && IsPunct(i - 1, u'.')))
            continue;
        const size_t open = Next(i);
        const size_t close = Partner(open);
        if (Next(open) == close)
            continue;
        const size_t comma = Scan(Next(open), [this](size_t k) { return IsPunct(k, u','); });
        if (comma < close) {
            t_[i].text = u"COALESCE"_s;
            continue;
        }
        const size_t op = Next(close);
        if (IsComparison(op)) {
            const size_t value = Next(op);
            if (!IsWordIn(value, "TRUE FALSE"_L1))
                continue;
            const bool isNull = IsOp(op, "="_L1) == IsWord(value, "TRUE"_L1);
            edits.Remove(i, open);
            edits.Replace(close + 1, value + 1, isNull ? u" IS NULL"_s : u" IS NOT NULL"_s);
        } else {
            edits.Remove(i, open);
            edits.Insert(close + 1, u" IS NULL"_s);
        }
        // The argument is read on: an IsNull inside it (IsNull(IsNull(a))) is rewritten too,
        // and its edits lie within the parentheses, apart from this call's own.
    }
    Apply(edits);
}

// SELECT TOP n ... -> SELECT ... LIMIT n, at the end of that SELECT, whatever its depth. False
// when a TOP has no LIMIT counterpart here (TOP n PERCENT, a TOP inside a UNION).
bool Statement::RewriteTop() {
    Edits edits;
    for (size_t i = 0; i < size(); ++i) {
        if (!IsWord(i, "SELECT"_L1))
            continue;
        size_t top = Next(i);
        if (IsWordIn(top, "DISTINCT ALL"_L1))
            top = Next(top);
        if (!IsWord(top, "TOP"_L1))
            continue;
        size_t count = Next(top);
        size_t countEnd = count;
        if (IsPunct(count, u'(') && t_[Next(count)].kind == Kind::Number &&
            Next(Next(count)) == Partner(count)) {
            countEnd = Partner(count);
            count = Next(count);
        } else if (count >= size() || t_[count].kind != Kind::Number) {
            continue;  // a column that happens to be called top
        } else if (count + 1 < size() && t_[count + 1].kind == Kind::Word) {
            continue;  // a number glued to a word is no count
        }
        const size_t after = Next(countEnd);
        if (after >= size() || IsPunct(after, u')'))
            continue;  // nothing selected: left as it is, in brackets or not
        if (IsWordIn(after, "PERCENT WITH"_L1)) {
            problem_ = u"TOP n PERCENT has no counterpart"_s;
            return false;
        }
        const size_t end = Scan(
            after, [this](size_t k) { return IsWordIn(k, "UNION INTERSECT EXCEPT LIMIT"_L1); });
        if (end < size() && t_[end].kind == Kind::Word) {
            problem_ = u"TOP in a compound or already limited SELECT"_s;
            return false;
        }
        edits.Remove(top, after);
        edits.Insert(Prev(end) + 1, u" LIMIT "_s + t_[count].text);
    }
    Apply(edits);
    return true;
}

// Flags are SMALLINT 0/1. A comparison with TRUE or FALSE becomes a test against 0 (an Access
// TRUE was -1, a flag set here is 1, and both are "not 0"); an assignment in an UPDATE's SET list
// and any other TRUE or FALSE, as in a VALUES list, becomes 1 or 0.
void Statement::RewriteBooleans() {
    std::vector<bool> assignment(size(), false);
    const size_t update = First();
    if (IsWord(update, "UPDATE"_L1)) {
        const size_t set = Scan(update, [this](size_t k) { return IsWord(k, "SET"_L1); });
        bool expectTarget = true;
        for (size_t k = Next(set); k < size() && Depth(k) >= Depth(set); k = Next(k)) {
            if (Depth(k) > Depth(set))
                continue;
            if (IsWordIn(k, "FROM WHERE"_L1))
                break;
            if (IsPunct(k, u','))
                expectTarget = true;
            if (expectTarget && IsOp(k, "="_L1)) {
                assignment[k] = true;
                expectTarget = false;
            }
        }
    }
    for (size_t i = 0; i < size(); ++i) {
        if (!IsWordIn(i, "TRUE FALSE"_L1) || IsCall(i) || (i > 0 && IsPunct(i - 1, u'.')))
            continue;
        const bool value = IsWord(i, "TRUE"_L1);
        size_t op = Prev(i);
        if (!IsComparison(op) || assignment[op]) {
            op = Next(i);
            if (!IsComparison(op) || assignment[op])
                op = npos;
        }
        if (op == npos) {
            t_[i] = {Kind::Number, value ? u"1"_s : u"0"_s};
            continue;
        }
        // flag = TRUE, flag <> FALSE: "<> 0"; flag = FALSE, flag <> TRUE: "= 0".
        const bool equals = IsOp(op, "="_L1);
        t_[i] = {Kind::Number, u"0"_s};
        t_[op].text = equals == value ? u"<>"_s : u"="_s;
    }
}

bool Statement::GroupJoinsText(size_t open) const {
    const size_t close = Partner(open);
    for (size_t k = open + 1; k < close; ++k) {
        if (IsPunct(k, u'(')) {
            k = Partner(k);
        } else if (IsOp(k, "||"_L1)) {
            return true;
        }
    }
    return false;
}

bool Statement::CastsToText(size_t open) const {
    const size_t as = Scan(Next(open), [this](size_t k) { return IsWord(k, "AS"_L1); });
    return as < Partner(open) && IsWordIn(Next(as), kTextTypes);
}

// Whether the operand that ends at token i (before a '+') is text.
bool Statement::IsTextOperandEnd(size_t i) const {
    if (i >= size())
        return false;
    if (t_[i].kind == Kind::String)
        return !IsIsoDateString(t_[i].text);
    if (!IsPunct(i, u')'))
        return false;
    const size_t open = Partner(i);
    const size_t callee = Prev(open);
    if (callee != npos && t_[callee].kind == Kind::Word && Next(callee) == open) {
        if (IsWord(callee, "CAST"_L1))
            return CastsToText(open);
        if (AnyOf(t_[callee].text, kTextFunctions))
            return true;
        if (IsName(callee))
            return false;  // a call of some other function
    }
    return GroupJoinsText(open);
}

// Whether the operand that starts at token i (after a '+') is text.
bool Statement::IsTextOperandStart(size_t i) const {
    if (i >= size())
        return false;
    if (t_[i].kind == Kind::String)
        return !IsIsoDateString(t_[i].text);
    if (IsCall(i)) {
        if (IsWord(i, "CAST"_L1))
            return CastsToText(Next(i));
        return AnyOf(t_[i].text, kTextFunctions);
    }
    return IsPunct(i, u'(') && GroupJoinsText(i);
}

size_t Statement::OperandStart(size_t end) const {
    size_t start = end;
    if (IsPunct(end, u')')) {
        start = Partner(end);
        const size_t callee = Prev(start);
        if (callee != npos && t_[callee].kind == Kind::Word && Next(callee) == start)
            start = callee;
        return start;
    }
    while (start >= 2 && IsPunct(start - 1, u'.') && IsName(start - 2))
        start -= 2;
    return start;
}

size_t Statement::OperandEnd(size_t start) const {
    if (IsCall(start))
        return Partner(Next(start));
    if (IsPunct(start, u'('))
        return Partner(start);
    size_t end = start;
    while (IsPunct(end + 1, u'.') && IsName(end + 2))
        end += 2;
    return end;
}

// '+' joins strings when a string literal, a text function or a text CAST stands on either
// side, or when it continues a chain already found to join strings, as in
// PATABLE.pLASNAM+', '+PATABLE.pFIRNAM. Between numbers and plain columns it stays '+'.
void Statement::RewriteConcatenation() {
    std::vector<size_t> plus;
    for (size_t i = 0; i < size(); ++i) {
        if (IsOp(i, "+"_L1) && EndsOperand(Prev(i)))
            plus.push_back(i);
    }
    bool changed = true;
    while (changed) {
        changed = false;
        for (size_t i : plus) {
            if (t_[i].text != u'+')
                continue;
            const size_t left = Prev(i);
            const size_t right = Next(i);
            const size_t before = Prev(OperandStart(left));
            const size_t after = Next(OperandEnd(right));
            if (IsTextOperandEnd(left) || IsTextOperandStart(right) || IsOp(before, "||"_L1) ||
                IsOp(after, "||"_L1)) {
                t_[i].text = u"||"_s;
                changed = true;
            }
        }
    }
}

// A condition selected as a value, as in SELECT (PATABLE.OffLocID=OffLocTable.OffLocID) AS
// PriLoc, is a number on the embedded engine and in Access, but a boolean on the server engine,
// which will not store it in a SMALLINT flag: there it is cast to a number.
void Statement::RewriteSelectedConditions() {
    if (engine_ != Engine::Postgres)
        return;
    Edits edits;
    for (size_t select = 0; select < size(); ++select) {
        if (!IsWord(select, "SELECT"_L1))
            continue;
        const size_t end =
            Scan(Next(select), [this](size_t k) { return IsWordIn(k, "FROM INTO"_L1); });
        size_t item = Next(select);
        if (IsWordIn(item, "DISTINCT ALL"_L1))
            item = Next(item);
        while (item < end) {
            const size_t itemEnd =
                std::min(end, Scan(item, [this](size_t k) { return IsPunct(k, u','); }));
            CastCondition(item, itemEnd, edits);
            item = itemEnd < end ? Next(itemEnd) : end;
        }
    }
    // A condition assigned to a column is stored in a flag the same way; a joined UPDATE moves
    // the value into a SELECT list, where it would be cast on the next reading.
    for (const auto& [sign, end] : AssignedValues())
        CastCondition(Next(sign), end, edits);
    Apply(edits);
}

void Statement::CastCondition(size_t item, size_t itemEnd, Edits& edits) const {
    const size_t close = IsPunct(item, u'(') ? Partner(item) : npos;
    if (close == npos)
        return;
    const size_t after = Next(close);
    const bool aliasOnly =
        after >= itemEnd || IsWord(after, "AS"_L1) || (IsName(after) && Next(after) >= itemEnd);
    if (aliasOnly && !IsWordIn(Next(item), "SELECT WITH"_L1) &&
        Scan(Next(item), [this](size_t k) {
            return IsComparison(k) || IsOp(k, "<"_L1) || IsOp(k, ">"_L1) || IsOp(k, "<="_L1) ||
                   IsOp(k, ">="_L1);
        }) < close) {
        edits.Insert(item, u"CAST("_s);
        edits.Insert(close + 1, u" AS INTEGER)"_s);
    }
}

// The column types of a CREATE TABLE written for the server the suite came from.
void Statement::RewriteTableTypes() {
    const size_t create = First();
    if (!IsWord(create, "CREATE"_L1) || !IsWord(Next(create), "TABLE"_L1))
        return;
    const size_t open = Scan(create, [this](size_t k) { return IsPunct(k, u'('); });
    if (open >= size())
        return;
    Edits edits;
    const size_t close = Partner(open);
    for (size_t item = Next(open); item < close;) {
        const size_t type = Next(item);
        const size_t end = Scan(item, [this](size_t k) { return IsPunct(k, u','); });
        if (!IsWordIn(item, "CONSTRAINT PRIMARY FOREIGN UNIQUE CHECK"_L1) && type < end &&
            t_[type].kind == Kind::Word) {
            const size_t width = Next(type);
            const bool max = IsPunct(width, u'(') && IsWord(Next(width), "MAX"_L1);
            const QString& name = t_[type].text;
            QString mapped;
            if (max || AnyOf(name, "NTEXT"_L1)) {
                mapped = u"TEXT"_s;
            } else if (Same(name, "NVARCHAR"_L1)) {
                mapped = u"VARCHAR"_s;
            } else if (Same(name, "NCHAR"_L1)) {
                mapped = u"CHAR"_s;
            } else if (AnyOf(name, "DATETIME SMALLDATETIME"_L1)) {
                mapped = u"TIMESTAMP"_s;
            } else if (AnyOf(name, "BIT TINYINT"_L1)) {
                mapped = u"SMALLINT"_s;
            } else if (Same(name, "MONEY"_L1)) {
                mapped = u"NUMERIC(19,4)"_s;
            }
            if (!mapped.isEmpty())
                edits.Replace(type, max ? Partner(width) + 1 : type + 1, mapped);
        }
        item = end < close ? Next(end) : close;
    }
    Apply(edits);
}

// The highest code point: a text that starts with a prefix sorts below the prefix followed by
// it, under the case-insensitive order of both engines.
const QString kAboveEveryLetter = QString(QChar(0xdbff)) + QChar(0xdfff);

// col LIKE 'abc%' -> (col >= 'abc' AND col < 'abc<highest> AND col LIKE 'abc%'): the range lets
// the engine read an index of the column (neither engine can for a LIKE that folds case), and
// the LIKE keeps the answer exact. Only a plain column against a plain prefix, so that nothing
// around it binds tighter than the AND. It runs before LIKE becomes the server's ILIKE, so a
// statement already in the server's dialect is left as it is.
void Statement::RewritePrefixLike() {
    Edits edits;
    // A value assigned in an UPDATE is one of its own, as it is once a joined UPDATE has moved
    // it into the list of a SELECT.
    const auto assigned = AssignedValues();
    for (size_t like = 0; like < size(); ++like) {
        if (!IsWord(like, "LIKE"_L1))
            continue;
        const size_t pattern = Next(like);
        if (pattern >= size() || t_[pattern].kind != Kind::String ||
            !t_[pattern].text.startsWith(u'\''))
            continue;
        const QString& literal = t_[pattern].text;
        const QStringView prefix = QStringView(literal).mid(1, literal.size() - 3);
        if (!literal.endsWith(u"%'"_s) || prefix.isEmpty() || prefix.contains(u'%') ||
            prefix.contains(u'_') || prefix.contains(u'\\'))
            continue;
        const size_t after = Next(pattern);
        if (after < size() && (t_[after].kind == Kind::Op || IsWordIn(after, "ESCAPE COLLATE"_L1) ||
                               IsPunct(after, u'.') || IsPunct(after, u'(')))
            continue;
        const size_t columnEnd = Prev(like);
        if (columnEnd == npos || !IsName(columnEnd))
            continue;
        const size_t columnStart = OperandStart(columnEnd);
        const size_t before = Prev(columnStart);
        if (before != npos && !IsPunct(before, u'(') && !IsPunct(before, u',') &&
            !IsWordIn(before, "WHERE AND OR NOT ON WHEN HAVING THEN ELSE SELECT"_L1) &&
            !IsTopCount(before) &&
            std::none_of(assigned.begin(), assigned.end(),
                         [before](const auto& a) { return a.first == before; }))
            continue;
        // Already in this form: the LIKE that a range stands in front of.
        if (IsWord(before, "AND"_L1) && Prev(before) != npos &&
            t_[Prev(before)].kind == Kind::String &&
            t_[Prev(before)].text.endsWith(kAboveEveryLetter + u'\''))
            continue;
        const QString column = RenderTrimmed(columnStart, columnEnd + 1);
        const QString low = literal.left(literal.size() - 2) + u'\'';
        const QString high = literal.left(literal.size() - 2) + kAboveEveryLetter + u'\'';
        edits.Insert(columnStart, u'(' + column + u" >= "_s + low + u" AND "_s + column + u" < "_s +
                                      high + u" AND "_s);
        edits.Insert(pattern + 1, u")"_s);
    }
    Apply(edits);
}

std::vector<std::pair<size_t, size_t>> Statement::AssignedValues() const {
    std::vector<std::pair<size_t, size_t>> values;
    if (!IsWord(First(), "UPDATE"_L1))
        return values;
    const size_t set = Scan(Next(First()), [this](size_t k) { return IsWord(k, "SET"_L1); });
    const size_t listEnd =
        Scan(Next(set), [this](size_t k) { return IsWordIn(k, "FROM WHERE"_L1); });
    for (size_t item = Next(set); item < listEnd;) {
        const size_t end =
            std::min(listEnd, Scan(item, [this](size_t k) { return IsPunct(k, u','); }));
        const size_t eq = Scan(item, [this](size_t k) { return IsOp(k, "="_L1); });
        if (eq < end)
            values.emplace_back(eq, end);
        item = end < listEnd ? Next(end) : listEnd;
    }
    return values;
}

// Tables named between begin and end of a FROM clause or join, nested joins included.
std::vector<TableRef> Statement::TableRefs(size_t begin, size_t end) const {
    std::vector<TableRef> refs;
    bool expectTable = true;
    for (size_t i = begin; i < end; i = Next(i)) {
        if (!Sig(i))
            continue;
        if (IsPunct(i, u'(')) {
            if (!expectTable || IsWordIn(Next(i), "SELECT WITH"_L1)) {
                i = Partner(i);  // a condition, or a derived table whose alias follows
                if (expectTable) {
                    size_t alias = Next(i);
                    if (IsWord(alias, "AS"_L1))
                        alias = Next(alias);
                    if (IsName(alias))
                        refs.push_back({QString(), t_[alias].text});
                    expectTable = false;
                }
            }
            continue;
        }
        if (IsPunct(i, u',') || IsWord(i, "JOIN"_L1)) {
            expectTable = true;
            continue;
        }
        if (!expectTable || !IsName(i))
            continue;
        size_t name = i;
        while (IsPunct(name + 1, u'.') && IsName(name + 2))
            name += 2;
        TableRef ref{t_[name].text, QString()};
        size_t alias = Next(name);
        if (IsWord(alias, "AS"_L1))
            alias = Next(alias);
        if (IsName(alias) && alias < end) {
            ref.alias = t_[alias].text;
            name = alias;
        }
        refs.push_back(ref);
        expectTable = false;
        i = name;
    }
    return refs;
}

// UPDATE over joined tables, in the Access form "UPDATE (A INNER JOIN B ON ...) SET A.x = ...
// WHERE ..." or the server form "UPDATE A SET A.x = ... FROM A INNER JOIN B ON ... WHERE ...",
// becomes an UPDATE of the one table from the joined rows, matched by the engine's row key:
//   UPDATE A SET x = joined.value1 FROM (SELECT A.rowid AS row_key, <value> AS value1 FROM
//   <joins> WHERE ...) AS joined WHERE A.rowid = joined.row_key
// Values without a column in them stay in the SET list, so they take the column's type. In a
// plain UPDATE only the table names in front of the SET columns go.
void Statement::RewriteUpdate() {
    const size_t update = First();
    if (!IsWord(update, "UPDATE"_L1))
        return;
    const size_t set = Scan(Next(update), [this](size_t k) { return IsWord(k, "SET"_L1); });
    if (set >= size())
        return;
    const size_t listEnd =
        Scan(Next(set), [this](size_t k) { return IsWordIn(k, "FROM WHERE"_L1); });
    const size_t where =
        IsWord(listEnd, "FROM"_L1)
            ? Scan(Next(listEnd), [this](size_t k) { return IsWord(k, "WHERE"_L1); })
            : listEnd;

    struct Assignment {
        QString qualifier;  // the table name in front of the column, if any
        QString column;
        size_t valueBegin;
        size_t valueEnd;
        size_t targetBegin;  // where the qualifier (or the column) starts
        size_t columnAt;
    };
    std::vector<Assignment> assignments;
    for (size_t item = Next(set); item < listEnd;) {
        const size_t end = Scan(item, [this](size_t k) { return IsPunct(k, u','); });
        const size_t eq = Scan(item, [this](size_t k) { return IsOp(k, "="_L1); });
        if (eq >= end || eq >= listEnd)
            return;
        const size_t column = Prev(eq);
        Assignment a{QString(), t_[column].text, Next(eq), std::min(end, listEnd), column, column};
        while (a.targetBegin >= 2 && IsPunct(a.targetBegin - 1, u'.') && IsName(a.targetBegin - 2))
            a.targetBegin -= 2;
        if (a.targetBegin < column)
            a.qualifier = t_[column - 2].text;
        assignments.push_back(a);
        item = end < listEnd ? Next(end) : listEnd;
    }
    if (assignments.empty())
        return;

    // Which form: the target between UPDATE and SET, and the joined tables.
    const size_t targetBegin = Next(update);
    const bool accessJoin = IsPunct(targetBegin, u'(') ||
                            Scan(targetBegin, [this, set](size_t k) {
                                return k < set && (IsWord(k, "JOIN"_L1) || IsPunct(k, u','));
                            }) < set;
    size_t joinBegin = npos, joinEnd = npos;
    QString target;
    std::vector<TableRef> refs;
    if (accessJoin) {
        joinBegin = targetBegin;
        joinEnd = set;
        refs = TableRefs(joinBegin, joinEnd);
        target = assignments.front().qualifier;
        if (target.isEmpty() && !refs.empty())
            target = refs.front().alias.isEmpty() ? refs.front().name : refs.front().alias;
    } else if (IsWord(listEnd, "FROM"_L1) && Next(targetBegin) == set && IsName(targetBegin)) {
        target = t_[targetBegin].text;
        refs = TableRefs(Next(listEnd), where);
        const bool named =
            std::any_of(refs.begin(), refs.end(), [&](const TableRef& r) { return r.Is(target); });
        if (named) {
            joinBegin = Next(listEnd);
            joinEnd = where;
        }
    }

    if (joinBegin == npos) {
        Edits edits;
        for (const Assignment& a : assignments) {
            if (!a.qualifier.isEmpty())
                edits.Remove(a.targetBegin, a.columnAt);
        }
        Apply(edits);
        return;
    }

    const auto ref =
        std::find_if(refs.begin(), refs.end(), [&](const TableRef& r) { return r.Is(target); });
    // A target named like the owner stays as it is: its row key, dbo.rowid, would read as the
    // owner's prefix on the next pass and lose its table.
    if (target.isEmpty() || ref == refs.end() || ref->name.isEmpty() || Same(target, "dbo"_L1))
        return;
    const QString table = ref->name;
    const QString key = RowKey();
    QString sets, values;
    int moved = 0;
    for (const Assignment& a : assignments) {
        bool constant = true;
        for (size_t k = a.valueBegin; k < a.valueEnd; ++k) {
            if (t_[k].kind == Kind::QuotedName ||
                (t_[k].kind == Kind::Word && !IsCall(k) &&
                 !IsWordIn(k, "NULL CURRENT_DATE LOCALTIMESTAMP CURRENT_TIMESTAMP AND OR NOT"_L1)))
                constant = false;
        }
        QString value = RenderTrimmed(a.valueBegin, a.valueEnd);
        if (!constant) {
            const QString name = u"value"_s + QString::number(++moved);
            values += u", "_s + value + u" AS "_s + name;
            value = u"joined."_s + name;
        }
        if (!sets.isEmpty())
            sets += u", "_s;
        sets += a.column + u" = "_s + value;
    }
    QString text = t_[update].text + u' ' + table + u' ' + t_[set].text + u' ' + sets +
                   u" FROM (SELECT "_s + target + u'.' + key + u" AS row_key"_s + values +
                   u" FROM "_s + RenderTrimmed(joinBegin, joinEnd);
    if (where < size())
        text += u' ' + RenderTrimmed(where, size());
    text += u") AS joined WHERE "_s + table + u'.' + key + u" = joined.row_key"_s;
    t_ = Fragment(text);
    Index();
}

// DELETE * FROM t -> DELETE FROM t. The forms that name the table to delete from and then join
// it, "DELETE t.* FROM a LEFT JOIN t ON ... WHERE ..." and the server's "DELETE t FROM ..." and
// "DELETE FROM t FROM ...", delete the rows of t that the join finds, by the engine's row key.
void Statement::RewriteDelete() {
    const size_t del = First();
    if (!IsWord(del, "DELETE"_L1))
        return;
    size_t target = Next(del);
    Edits edits;
    if (IsOp(target, "*"_L1) && IsWord(Next(target), "FROM"_L1)) {
        // DELETE * FROM is DELETE FROM, read on as such: it may be a joined form too.
        edits.Remove(target, Next(target));
        Apply(edits);
        target = Next(del);
    }
    if (IsWord(target, "FROM"_L1)) {
        target = Next(target);
        if (!IsName(target) || !IsWord(Next(target), "FROM"_L1))
            return;
    } else if (!IsName(target)) {
        return;
    }
    size_t from = Next(target);
    if (IsPunct(from, u'.') && IsOp(Next(from), "*"_L1))
        from = Next(Next(from));
    if (!IsWord(from, "FROM"_L1))
        return;
    const QString name = t_[target].text;
    const size_t joinBegin = Next(from);
    const size_t where = Scan(joinBegin, [this](size_t k) { return IsWord(k, "WHERE"_L1); });
    const std::vector<TableRef> refs = TableRefs(joinBegin, where);
    const auto ref =
        std::find_if(refs.begin(), refs.end(), [&](const TableRef& r) { return r.Is(name); });
    if (ref == refs.end() || ref->name.isEmpty())
        return;
    const bool single = refs.size() == 1 && !IsPunct(joinBegin, u'(');
    if (single) {
        edits.Remove(Next(del), from);  // DELETE t.* FROM t WHERE ... -> DELETE FROM t WHERE ...
        Apply(edits);
        RewriteDelete();  // what is left may be a form of its own: DELETE FROM t FROM t ...
        return;
    }
    const QString key = RowKey();
    QString text = t_[del].text + u" FROM "_s + ref->name + u" WHERE "_s + key + u" IN (SELECT "_s +
                   name + u'.' + key + u" FROM "_s + RenderTrimmed(joinBegin, where);
    if (where < size())
        text += u' ' + RenderTrimmed(where, size());
    text += u')';
    t_ = Fragment(text);
    Index();
}

// INSERT INTO t (cols) (SELECT ...): the embedded engine takes the SELECT only without the
// parentheses around it.
void Statement::RewriteInsertSource() {
    const size_t insert = First();
    if (!IsWord(insert, "INSERT"_L1) || !IsWord(Next(insert), "INTO"_L1))
        return;
    size_t k = Next(Next(Next(insert)));
    while (IsPunct(k, u'.'))
        k = Next(Next(k));
    if (IsPunct(k, u'(') && !IsWordIn(Next(k), "SELECT WITH"_L1))
        k = Next(Partner(k));
    if (!IsPunct(k, u'(') || !IsWordIn(Next(k), "SELECT WITH"_L1) || Partner(k) != Last())
        return;
    Edits edits;
    edits.Remove(k, k + 1);
    edits.Remove(Partner(k), Partner(k) + 1);
    Apply(edits);
}

QString Unquote(const QString& literal) {
    return literal.mid(1, literal.size() - 2).replace(u"''"_s, u"'"_s);
}

// The one-time backup the recall setup sends in the server's procedural form:
//   IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME='X')
//   BEGIN EXEC('CREATE TABLE X(...)') INSERT INTO X (...) (SELECT ... FROM Y) END
// Neither engine runs such a block as plain SQL, so it becomes two statements that do the same:
//   CREATE TABLE IF NOT EXISTS X(...);
//   INSERT INTO X (...) SELECT * FROM (SELECT ... FROM Y) AS backup_source
//     WHERE NOT EXISTS (SELECT 1 FROM X)
// The copy is made while X is empty; as X is filled only here, that is once.
std::optional<QString> Statement::BackupGuard() {
    auto fail = [this]() -> std::optional<QString> {
        problem_ = u"an IF block other than the one-time table backup"_s;
        return std::nullopt;
    };
    const size_t ifWord = First();
    const size_t exists = Next(Next(ifWord));
    const size_t test = Next(exists);
    if (!IsWord(Next(ifWord), "NOT"_L1) || !IsWord(exists, "EXISTS"_L1) || !IsPunct(test, u'('))
        return fail();
    QString table;
    for (size_t k = test; k < Partner(test); ++k) {
        if (IsWord(k, "TABLE_NAME"_L1) && IsOp(Next(k), "="_L1) &&
            t_[Next(Next(k))].kind == Kind::String)
            table = Unquote(t_[Next(Next(k))].text);
    }
    const size_t begin = Next(Partner(test));
    const size_t exec = Next(begin);
    const size_t open = Next(exec);
    const size_t ddl = Next(open);
    const size_t end = Last();
    if (table.isEmpty() || !IsWord(begin, "BEGIN"_L1) || !IsWordIn(exec, "EXEC EXECUTE"_L1) ||
        !IsPunct(open, u'(') || t_[ddl].kind != Kind::String || Next(ddl) != Partner(open) ||
        !IsWord(end, "END"_L1))
        return fail();

    const Lexed create = Lex(Unquote(t_[ddl].text));
    Statement body(Tokens(t_.begin() + static_cast<ptrdiff_t>(Next(Partner(open))),
                          t_.begin() + static_cast<ptrdiff_t>(end)),
                   engine_);
    body.Index();
    const size_t insert = body.First();
    const size_t into = body.Next(insert);
    size_t source = body.Next(body.Next(into));
    if (!create.problem.isEmpty() || !body.IsWord(insert, "INSERT"_L1) ||
        !body.IsWord(into, "INTO"_L1))
        return fail();
    if (body.IsPunct(source, u'(') && !body.IsWord(body.Next(source), "SELECT"_L1))
        source = body.Next(body.Partner(source));
    QString select;
    if (body.IsPunct(source, u'(') && body.Partner(source) == body.Last()) {
        select = body.RenderTrimmed(source + 1, body.Partner(source));
    } else if (body.IsWord(source, "SELECT"_L1)) {
        select = body.RenderTrimmed(source, body.size());
    } else {
        return fail();
    }

    Statement ddlStatement(create.tokens, engine_);
    ddlStatement.Index();
    const size_t createWord = ddlStatement.First();
    const size_t tableWord = ddlStatement.Next(createWord);
    if (!ddlStatement.IsWord(createWord, "CREATE"_L1) ||
        !ddlStatement.IsWord(tableWord, "TABLE"_L1))
        return fail();
    QString createText = ddlStatement.RenderTrimmed(0, ddlStatement.size());
    if (!ddlStatement.IsWord(ddlStatement.Next(tableWord), "IF"_L1)) {
        createText =
            ddlStatement.RenderTrimmed(0, tableWord + 1) + u" IF NOT EXISTS"_s +
            Render(create.tokens, tableWord + 1, create.tokens.size()).trimmed().prepend(u' ');
    }
    const QString copy = body.RenderTrimmed(insert, source) + u" SELECT * FROM ("_s + select +
                         u") AS backup_source WHERE NOT EXISTS (SELECT 1 FROM "_s + table + u')';
    return TranslateSql(createText, engine_) + u"; "_s + TranslateSql(copy, engine_);
}

// The tokens of a text the caller keeps alive while they are used; they borrow from it.
std::optional<Tokens> Read(const QString& sql, const char* what) {
    Lexed lexed = Lex(sql, true);
    if (lexed.problem.isEmpty())
        return std::move(lexed.tokens);
    qCWarning(lcSql).noquote() << QStringLiteral("%1: %2; sent unchanged: %3")
                                      .arg(QLatin1String(what), lexed.problem, sql);
    return std::nullopt;
}

// One pass of the rewrites over every statement of the text.
QString TranslatePass(const QString& sql, Engine engine) {
    const std::optional<Tokens> tokens = Read(sql, "cannot translate");
    if (!tokens)
        return sql;
    QString out;
    out.reserve(sql.size() + sql.size() / 4);
    bool dropped = false;
    for (const Piece& piece : SplitPieces(*tokens)) {
        const auto begin = tokens->begin();
        Tokens statementTokens(begin + static_cast<ptrdiff_t>(piece.begin),
                               begin + static_cast<ptrdiff_t>(piece.end));
        const QString original = Render(statementTokens);
        Statement statement(std::move(statementTokens), engine);
        std::optional<QString> text = statement.Translate();
        if (!text) {
            qCWarning(lcSql).noquote() << statement.problem() + u"; sent unchanged: "_s + original;
            text = original;
        }
        if (text->trimmed().isEmpty() && !original.trimmed().isEmpty()) {
            dropped = true;  // and its ';' with it
            continue;
        }
        if (dropped && out.isEmpty()) {
            qsizetype lead = 0;
            while (lead < text->size() && text->at(lead).isSpace())
                ++lead;
            text->remove(0, lead);
        }
        out += *text;
        if (piece.separated)
            out += u';';
    }
    return Owned(std::move(out));
}

}  // namespace

// Text that is already in the engine's dialect comes out of a pass as it went in. Malformed text
// may not: a rewrite can make of it something that reads differently again (a bracketed name
// taken bare and glued to a prefix, a clause moved out of a number sign's reach). The text goes
// through the passes until one leaves it as it is, so what comes out translates to itself.
QString TranslateSql(const QString& sql, Engine engine) {
    constexpr int kMostPasses = 4;
    QString text = TranslatePass(sql, engine);
    if (text == sql)
        return text;
    for (int pass = 1; pass < kMostPasses; ++pass) {
        QString again = TranslatePass(text, engine);
        if (again == text)
            break;
        text = std::move(again);
    }
    return text;
}

QStringList SplitAtPlaceholders(const QString& sql) {
    QStringList pieces{QString()};
    const Lexed lexed = Lex(sql, true);
    if (!lexed.problem.isEmpty()) {
        pieces.front() = sql;
        return pieces;
    }
    for (const Token& t : lexed.tokens) {
        if (t.kind == Kind::Punct && t.text == u'?')
            pieces << QString();
        else
            pieces.back() += t.text;
    }
    for (QString& piece : pieces)
        piece = Owned(std::move(piece));
    return pieces;
}

namespace {

constexpr QChar kStandInMark = u'\x01';
const QString kNumberStandInHead = u"707070"_s;

QString Padded(qsizetype index) {
    return u"%1"_s.arg(index, 7, 10, QLatin1Char('0'));
}

bool IsStatementWord(const Token& t) {
    return t.kind == Kind::Word && AnyOf(t.text, "SELECT INSERT UPDATE DELETE"_L1);
}

// Whether the translation may rewrite or read this string: then its text stays in the shape.
bool StringStaysInShape(const Token& t, const Token* before) {
    return !t.text.startsWith(u'\'') || t.text.contains(u'\\') || t.text.contains(u'#') ||
           IsIsoDateString(t.text) ||
           (before && before->kind == Kind::Word && Same(before->text, "LIKE"_L1));
}

}  // namespace

QString StringStandIn(qsizetype index) {
    static const QStringList first = [] {
        QStringList made;
        for (int i = 0; i < 64; ++i)
            made << u'\'' + kStandInMark + Padded(i) + kStandInMark + u'\'';
        return made;
    }();
    return index < first.size() ? first[index]
                                : u'\'' + kStandInMark + Padded(index) + kStandInMark + u'\'';
}

QString NumberStandIn(qsizetype index) {
    static const QStringList first = [] {
        QStringList made;
        for (int i = 0; i < 64; ++i)
            made << kNumberStandInHead + Padded(i);
        return made;
    }();
    return index < first.size() ? first[index] : kNumberStandInHead + Padded(index);
}

bool MayHoldStandIn(QStringView text) {
    return text.contains(kStandInMark) || text.contains(kNumberStandInHead);
}

std::optional<LiteralShape> CutLiterals(const QString& sql) {
    if (MayHoldStandIn(sql))
        return std::nullopt;
    const Lexed lexed = Lex(sql, true);
    if (!lexed.problem.isEmpty())
        return std::nullopt;
    LiteralShape out;
    out.shape.reserve(sql.size());
    const Token* before = nullptr;      // the last token that is not blank or a comment
    const Token* beforeThat = nullptr;  // and the one before it
    bool ended = false;                 // after the ';' that closes the statement
    // What a value may stand for besides a value stays as written: what a query answers before
    // its first FROM (a literal there names its column), and a number once ORDER or GROUP has
    // come (ORDER BY 1 means the first column).
    bool inSelectList = false;
    bool numbersStay = false;
    int depth = 0;
    for (const Token& t : lexed.tokens) {
        if (t.kind == Kind::Space || t.kind == Kind::Comment) {
            out.shape += t.text;
            continue;
        }
        if (ended || (!before && !IsStatementWord(t)))
            return std::nullopt;
        if (!before)
            inSelectList = Same(t.text, "SELECT"_L1);
        if (t.kind == Kind::Punct) {
            if (t.text == u'?')
                return std::nullopt;  // a mark for a value of its own
            ended = t.text == u';';
            depth += t.text == u'(' ? 1 : t.text == u')' ? -1 : 0;
        } else if (t.kind == Kind::Word) {
            if (depth == 0 && Same(t.text, "FROM"_L1))
                inSelectList = false;
            if (AnyOf(t.text, "ORDER GROUP"_L1))
                numbersStay = true;
        }
        const bool topCount =
            (before && before->kind == Kind::Word && Same(before->text, "TOP"_L1)) ||
            (before && before->kind == Kind::Punct && before->text == u'(' && beforeThat &&
             beforeThat->kind == Kind::Word && Same(beforeThat->text, "TOP"_L1));
        const bool cut =
            !inSelectList && ((t.kind == Kind::Number && !topCount && !numbersStay) ||
                              (t.kind == Kind::String && !StringStaysInShape(t, before)));
        if (cut) {
            if (out.literals.size() + 1 >= kMostStandIns)
                return std::nullopt;
            out.shape += t.kind == Kind::Number ? NumberStandIn(out.literals.size())
                                                : StringStandIn(out.literals.size());
            out.literals << t.text;  // borrows from sql, as the tokens do
        } else {
            out.shape += t.text;
        }
        beforeThat = before;
        before = &t;
    }
    if (!before)
        return std::nullopt;
    return out;
}

QStringList SplitSqlStatements(const QString& sql) {
    const std::optional<Tokens> tokens = Read(sql, "cannot split");
    if (!tokens)
        return sql.trimmed().isEmpty() ? QStringList() : QStringList{sql.trimmed()};
    QStringList statements;
    for (const Piece& piece : SplitPieces(*tokens)) {
        const QString text = Render(*tokens, piece.begin, piece.end).trimmed();
        if (!text.isEmpty())
            statements << Owned(text);
    }
    return statements;
}

}  // namespace orvo::db
