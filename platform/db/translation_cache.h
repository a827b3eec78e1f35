#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include "platform/db/engine.h"
#include "platform/db/translate_sql.h"

namespace orvo::db {

// What a connection's statements become on its engine, remembered by their shape: the statement
// with its values cut out (CutLiterals). A writer sends the same few shapes again and again with
// other values, so each shape is translated once, checked once against the whole statement's
// translation, and from then on only has the values put back. Anything that cannot be cut, or
// whose shape's translation did not give the statement's own, is translated whole every time.
class TranslationCache {
public:
    // Debug builds (the tests) hold every statement filled from a shape to its whole
    // translation, logging and sending the whole one on a difference; `holdToWhole` false
    // leaves that out, so a test can see what the shapes alone give.
    explicit TranslationCache(Engine engine, bool holdToWhole = kDebugBuild)
        : engine_(engine), holdToWhole_(holdToWhole) {}

    // A shape's translation cut at its stand-ins: the value of `places[i]` goes between
    // pieces[i] and pieces[i + 1]. A shape that cannot be filled is kept unusable, so that it
    // is not tried again.
    struct Translated {
        QStringList pieces;
        QList<qsizetype> places;
        bool usable = false;
    };

    // The same text as TranslateSql(sql, engine).
    QString Translate(const QString& sql);
    // The same, for a statement already cut (CutLiterals); `*shape` is set to its shape's
    // translation when that gives the statement's own, and to null otherwise.
    QString Translate(const QString& sql, const std::optional<LiteralShape>& cut,
                      const Translated** shape);

    static QString Fill(const Translated& translated, const QStringList& literals);

    qsizetype size() const { return shapes_.size(); }

private:
#ifdef NDEBUG
    static constexpr bool kDebugBuild = false;
#else
    static constexpr bool kDebugBuild = true;
#endif
    static qsizetype StandInAt(const QString& text, qsizetype at, qsizetype* length);
    static Translated Cut(const QString& translatedShape, qsizetype literalCount);

    Engine engine_;
    bool holdToWhole_;
    QHash<QString, Translated> shapes_;
};

}  // namespace orvo::db
