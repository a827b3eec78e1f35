#include "platform/db/unicode_text.h"

#include <sqlite3.h>

#include <QChar>
#include <QSqlDriver>
#include <QVariant>
#include <string>

#include "platform/db/database_error.h"

namespace orvo::db {
namespace {

// Reads one code point of UTF-8 at text[i] and moves i past it. A byte that starts no valid
// sequence reads as itself, so that any bytes compare in a stable order.
char32_t NextCodePoint(const unsigned char* text, int size, int& i) {
    const unsigned char lead = text[i++];
    if (lead < 0x80)
        return lead;
    int extra = lead >= 0xf0 ? 3 : lead >= 0xe0 ? 2 : lead >= 0xc0 ? 1 : 0;
    char32_t code = lead & (0x3f >> extra);
    if (extra == 0 || i + extra > size)
        return lead;
    for (int k = 0; k < extra; ++k) {
        if ((text[i + k] & 0xc0) != 0x80)
            return lead;
        code = (code << 6) | (text[i + k] & 0x3f);
    }
    i += extra;
    return code;
}

char32_t Fold(char32_t code) {
    if (code < 0x80)
        return code >= 'A' && code <= 'Z' ? code + 32 : code;
    return QChar::toLower(code);
}

int CompareUnicase(void*, int sizeA, const void* dataA, int sizeB, const void* dataB) {
    const auto* a = static_cast<const unsigned char*>(dataA);
    const auto* b = static_cast<const unsigned char*>(dataB);
    int i = 0, j = 0;
    while (i < sizeA && j < sizeB) {
        const char32_t x = Fold(NextCodePoint(a, sizeA, i));
        const char32_t y = Fold(NextCodePoint(b, sizeB, j));
        if (x != y)
            return x < y ? -1 : 1;
    }
    return (i < sizeA) - (j < sizeB);
}

std::u32string Folded(sqlite3_value* value) {
    const auto* text = sqlite3_value_text(value);
    const int size = sqlite3_value_bytes(value);
    std::u32string out;
    out.reserve(static_cast<size_t>(size));
    for (int i = 0; i < size;)
        out.push_back(Fold(NextCodePoint(text, size, i)));
    return out;
}

// One step of a LIKE pattern: a letter to match (already folded), '_' or '%'.
struct PatternStep {
    enum Kind { Letter, One, Any } kind;
    char32_t letter;
};

std::vector<PatternStep> ReadPattern(const std::u32string& pattern, char32_t escape) {
    std::vector<PatternStep> steps;
    steps.reserve(pattern.size());
    for (size_t p = 0; p < pattern.size(); ++p) {
        const char32_t c = pattern[p];
        if (c == escape && p + 1 < pattern.size()) {
            steps.push_back({PatternStep::Letter, pattern[++p]});
        } else if (c == U'%') {
            if (steps.empty() || steps.back().kind != PatternStep::Any)
                steps.push_back({PatternStep::Any, 0});
        } else if (c == U'_') {
            steps.push_back({PatternStep::One, 0});
        } else {
            steps.push_back({PatternStep::Letter, c});
        }
    }
    return steps;
}

// Matching with a return to the last '%' on a mismatch: linear in practice, never exponential.
bool Matches(const std::vector<PatternStep>& steps, const std::u32string& text) {
    size_t p = 0, s = 0, anyAt = steps.size(), resumeAt = 0;
    while (s < text.size()) {
        if (p < steps.size() && steps[p].kind == PatternStep::Any) {
            anyAt = p++;
            resumeAt = s;
            continue;
        }
        if (p < steps.size() && (steps[p].kind == PatternStep::One || steps[p].letter == text[s])) {
            ++p;
            ++s;
            continue;
        }
        if (anyAt == steps.size())
            return false;
        p = anyAt + 1;
        s = ++resumeAt;
    }
    while (p < steps.size() && steps[p].kind == PatternStep::Any)
        ++p;
    return p == steps.size();
}

// like(pattern, text[, escape]): what "text LIKE pattern [ESCAPE escape]" calls.
void Like(sqlite3_context* context, int argc, sqlite3_value** argv) {
    for (int k = 0; k < argc; ++k) {
        if (sqlite3_value_type(argv[k]) == SQLITE_NULL) {
            sqlite3_result_null(context);
            return;
        }
    }
    char32_t escape = U'\\';
    if (argc == 3) {
        const std::u32string given = Folded(argv[2]);
        if (given.size() != 1) {
            sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
            return;
        }
        escape = given[0];
    }
    sqlite3_result_int(context, Matches(ReadPattern(Folded(argv[0]), escape), Folded(argv[1])));
}

char32_t Upper(char32_t code) {
    return QChar::toUpper(code);
}
char32_t Lower(char32_t code) {
    return QChar::toLower(code);
}

// upper() and lower() letter by letter, as the server's do (ß stays ß).
template <char32_t (*Map)(char32_t)>
void MapLetters(sqlite3_context* context, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto* text = sqlite3_value_text(argv[0]);
    const int size = sqlite3_value_bytes(argv[0]);
    std::u32string letters;
    letters.reserve(static_cast<size_t>(size));
    for (int i = 0; i < size;)
        letters.push_back(Map(NextCodePoint(text, size, i)));
    const QByteArray out = QString::fromUcs4(letters.data(), qsizetype(letters.size())).toUtf8();
    sqlite3_result_text(context, out.constData(), int(out.size()), SQLITE_TRANSIENT);
}

}  // namespace

void InstallUnicodeText(QSqlDatabase& database) {
    const QVariant handle = database.driver()->handle();
    sqlite3* db = nullptr;
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0)
        db = *static_cast<sqlite3* const*>(handle.data());
    if (db == nullptr)
        throw DatabaseError(QStringLiteral("The embedded database has no handle."), QString());
    const QByteArray collation =
        QByteArray(kSqliteTextCollation.data(), kSqliteTextCollation.size());
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    int rc =
        sqlite3_create_collation(db, collation.constData(), SQLITE_UTF8, nullptr, CompareUnicase);
    for (int args : {2, 3}) {
        if (rc == SQLITE_OK)
            rc = sqlite3_create_function(db, "like", args, flags, nullptr, Like, nullptr, nullptr);
    }
    if (rc == SQLITE_OK) {
        rc = sqlite3_create_function(db, "upper", 1, flags, nullptr, MapLetters<Upper>, nullptr,
                                     nullptr);
    }
    if (rc == SQLITE_OK) {
        rc = sqlite3_create_function(db, "lower", 1, flags, nullptr, MapLetters<Lower>, nullptr,
                                     nullptr);
    }
    if (rc != SQLITE_OK) {
        throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(db)),
                            QStringLiteral("registering the text collation and functions"));
    }
}

}  // namespace orvo::db
