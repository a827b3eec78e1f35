#include "platform/db/translation_cache.h"

#include <QLoggingCategory>

#include "platform/db/db_log.h"
#include "platform/db/translate_sql.h"

namespace orvo::db {
namespace {

// Shapes are written in the code, so a session meets a few hundred at most; a caller that
// made shapes of something else would only fill the cache, and it starts again.
constexpr qsizetype kMostShapes = 1024;

qsizetype DigitsAt(const QString& text, qsizetype at, qsizetype count) {
    if (at + count > text.size())
        return -1;
    qsizetype value = 0;
    for (qsizetype i = at; i < at + count; ++i) {
        if (!text[i].isDigit() || text[i].unicode() > 127)
            return -1;
        value = value * 10 + (text[i].unicode() - u'0');
    }
    return value;
}

}  // namespace

// The index of the stand-in that starts at `at`, or -1 when none does.
qsizetype TranslationCache::StandInAt(const QString& text, qsizetype at, qsizetype* length) {
    static const QString stringHead = StringStandIn(0).left(2);
    static const QString numberHead = NumberStandIn(0).chopped(7);
    if (text[at] == u'\'' && QStringView(text).mid(at).startsWith(stringHead)) {
        *length = stringHead.size() + 7 + 2;
        const qsizetype index = DigitsAt(text, at + stringHead.size(), 7);
        return index >= 0 && QStringView(text).mid(at, *length) == StringStandIn(index) ? index
                                                                                        : -1;
    }
    if (text[at] == numberHead[0] && QStringView(text).mid(at).startsWith(numberHead) &&
        (at == 0 || !text[at - 1].isLetterOrNumber())) {
        *length = numberHead.size() + 7;
        const qsizetype end = at + *length;
        if (end < text.size() && text[end].isLetterOrNumber())
            return -1;
        return DigitsAt(text, at + numberHead.size(), 7);
    }
    return -1;
}

TranslationCache::Translated TranslationCache::Cut(const QString& text, qsizetype literalCount) {
    Translated out;
    out.pieces << QString();
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size();) {
        qsizetype length = 0;
        const qsizetype index = StandInAt(text, i, &length);
        if (index < 0) {
            ++i;
            continue;
        }
        if (index >= literalCount)
            return Translated{};  // a stand-in the statement did not have: never filled
        out.pieces.back() += QStringView(text).mid(from, i - from);
        out.places << index;
        out.pieces << QString();
        i += length;
        from = i;
    }
    out.pieces.back() += QStringView(text).mid(from);
    out.usable = true;
    return out;
}

QString TranslationCache::Fill(const Translated& translated, const QStringList& literals) {
    qsizetype length = 0;
    for (const QString& piece : translated.pieces)
        length += piece.size();
    for (const qsizetype slot : translated.places)
        length += literals[slot].size();
    QString out;
    out.reserve(length);
    out += translated.pieces.front();
    for (qsizetype i = 0; i < translated.places.size(); ++i) {
        out += literals[translated.places[i]];
        out += translated.pieces[i + 1];
    }
    return out;
}

QString TranslationCache::Translate(const QString& sql) {
    const Translated* shape = nullptr;
    return Translate(sql, CutLiterals(sql), &shape);
}

QString TranslationCache::Translate(const QString& sql, const std::optional<LiteralShape>& cut,
                                    const Translated** shape) {
    *shape = nullptr;
    if (!cut)
        return TranslateSql(sql, engine_);
    auto found = shapes_.find(cut->shape);
    if (found == shapes_.end()) {
        if (shapes_.size() >= kMostShapes)
            shapes_.clear();
        const QString whole = TranslateSql(sql, engine_);
        Translated translated = Cut(TranslateSql(cut->shape, engine_), cut->literals.size());
        if (translated.usable && Fill(translated, cut->literals) != whole) {
            qCDebug(lcDb).noquote() << "translated whole each time:" << cut->shape;
            translated = Translated{};
        }
        found = shapes_.insert(cut->shape, std::move(translated));
        if (found->usable)
            *shape = &*found;
        return whole;
    }
    if (!found->usable)
        return TranslateSql(sql, engine_);
    QString filled = Fill(*found, cut->literals);
    if (holdToWhole_) {
        const QString whole = TranslateSql(sql, engine_);
        if (filled != whole) {
            qCCritical(lcDb).noquote() << "a shape translated otherwise than its statement:" << sql
                                       << "gave" << filled << "instead of" << whole;
            return whole;
        }
    }
    *shape = &*found;
    return filled;
}

}  // namespace orvo::db
