#include "tools/zip_code.h"

#include <QStringList>
#include <algorithm>

#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "tools/tools_tables.h"

namespace orvo::tools {
namespace {

const QString kTitle = QStringLiteral("City State, Zip Code");
const QString kUpdateTitle = QStringLiteral("City, State, and Zipcode");
const QString kUpdateQuestion = QStringLiteral("Update City, State, and Zipcode?");
const QString kSection = QStringLiteral("DEFAULT_OFFICE_SETUP");
const QString kNonUsZip = QStringLiteral("NON_US_ZIP_CODE");
const QString kZipCharacters = QStringLiteral("0123456789-");

QString Column(ZipMode mode) {
    return mode == ZipMode::City ? QStringLiteral("ZipCodCit") : QStringLiteral("ZipCodZip");
}

QString Order(ZipMode mode) {
    return mode == ZipMode::City ? QStringLiteral("ZipCodCit,ZipCodZip")
                                 : QStringLiteral("ZipCodZip,ZipCodCit");
}

bool HoldsDigit(const QString& word) {
    return std::any_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
}

// A city typed as "Springfield, IL" keeps no comma once its state is split off.
QString CleanCity(const QString& text) {
    QString city = text.trimmed();
    while (city.endsWith(QLatin1Char(',')))
        city = city.chopped(1).trimmed();
    return city;
}

// The first run of zip characters in the text: its start, or -1. A run of hyphens alone (as in
// "Winston-Salem") is part of a name, not a zip, and the walk goes on past it.
qsizetype FindZipRun(const QString& text, qsizetype& length) {
    qsizetype i = 0;
    while (i < text.size()) {
        if (!kZipCharacters.contains(text[i])) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && kZipCharacters.contains(text[end]))
            ++end;
        if (HoldsDigit(text.mid(i, end - i))) {
            length = end - i;
            return i;
        }
        i = end;
    }
    length = 0;
    return -1;
}

// The blank that parts the city (and state) from the postal code: the one before the first
// word holding a digit that follows a word without one, so that "Toronto ON M5V 3L9" parts
// before "M5V" and "Twentynine Palms CA 92277" before the zip. -1 when there is none.
qsizetype SeparatingBlank(const QString& line) {
    bool sawName = false;
    qsizetype start = 0;
    while (start < line.size()) {
        const qsizetype blank = line.indexOf(QLatin1Char(' '), start);
        const qsizetype end = blank < 0 ? line.size() : blank;
        const QString word = line.mid(start, end - start);
        if (!word.isEmpty()) {
            if (HoldsDigit(word) && sawName)
                return start - 1;
            sawName = sawName || !HoldsDigit(word);
        }
        start = end + 1;
    }
    return -1;
}

// The state is the last two characters of the city part when a blank stands before them.
void SplitState(const QString& part, QString& city, QString& state) {
    if (part.size() > 4 && part[part.size() - 3] == QLatin1Char(' ')) {
        state = part.right(2);
        city = CleanCity(part.left(part.size() - 3));
        return;
    }
    state.clear();
    city = CleanCity(part);
}

// "IL 62704" or "ON M5V 3L9": the words before the first one holding a digit are the state.
void SplitStateZip(const QString& text, QString& state, QString& zip) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    qsizetype first = 0;
    while (first < words.size() && !HoldsDigit(words[first]))
        ++first;
    state = words.mid(0, first).join(QLatin1Char(' '));
    zip = words.mid(first).join(QLatin1Char(' '));
}

// Parts as stored: the state in capitals, each part within its column's width.
ZipParts Stored(ZipParts parts) {
    parts.city = parts.city.trimmed().left(kZipCityWidth);
    parts.state = parts.state.trimmed().toUpper().left(kZipStateWidth);
    parts.zip = parts.zip.trimmed().left(kZipCodeWidth);
    return parts;
}

// Where the columns of a "SELECT *" of the list are, found once per read.
struct ZipColumns {
    explicit ZipColumns(const db::Recordset& rs)
        : id(rs.IndexOf(QStringLiteral("ZipCodID"))),
          city(rs.IndexOf(QStringLiteral("ZipCodCit"))),
          state(rs.IndexOf(QStringLiteral("ZipCodSta"))),
          zip(rs.IndexOf(QStringLiteral("ZipCodZip"))) {}

    ZipRow Read(const db::Recordset& rs, ZipMode mode) const {
        ZipRow row;
        row.id = static_cast<int>(rs.Long(id));
        row.parts = {rs.Text(city), rs.Text(state), rs.Text(zip)};
        row.line = ZipLine(mode, row.parts);
        return row;
    }

    int id;
    int city;
    int state;
    int zip;
};

std::optional<ZipRow> FirstRow(GIC& gic, ZipMode mode, const QString& sql) {
    const db::Recordset rs(gic.GetConnection(), sql);
    if (rs.IsEmpty())
        return std::nullopt;
    return ZipColumns(rs).Read(rs, mode);
}

bool AskYes(const QString& text, int defaultButton) {
    return prompts().Message(text, Buttons::YesNo, Icon::Question, kTitle, defaultButton) ==
           AnswerYes;
}

}  // namespace

void ParseCityStateZip(GIC& gic, const QString& text, QString& city, QString& state, QString& zip) {
    const QString line = text.trimmed();
    if (line.isEmpty())
        return;
    state.clear();
    zip.clear();
    const bool nonUs = gic.ReadSetting(kSection, kNonUsZip, 0, false).toBool();
    qsizetype length = 0;
    if (nonUs) {
        const qsizetype blank = SeparatingBlank(line);
        if (blank < 0) {
            city = line;
            return;
        }
        const QString cityPart = line.left(blank).trimmed();
        const QString rest = line.mid(blank + 1).trimmed();
        const qsizetype start = FindZipRun(rest, length);
        if (start >= 0 && rest.mid(start, length) == rest) {
            zip = rest;
            SplitState(cityPart, city, state);
        } else {
            city = CleanCity(cityPart);
            zip = rest;
        }
        return;
    }
    const qsizetype start = FindZipRun(line, length);
    QString cityPart = line;
    if (start >= 0) {
        zip = line.mid(start, length);
        cityPart.remove(start, length);
    }
    SplitState(cityPart.trimmed(), city, state);
}

int FindZipCodeID(GIC& gic, const QString& city, const QString& state, const QString& zip) {
    const QString sql =
        "SELECT ZipCodID FROM ZipCodTable WHERE (ZipCodCit=" + gic.SqlQuoteText(city) +
        ") AND (ZipCodSta=" + gic.SqlQuoteText(state) +
        ") AND (ZipCodZip=" + gic.SqlQuoteText(zip) + ");";
    const db::Recordset rs(gic.GetConnection(), sql);
    return rs.IsEmpty() ? 0 : static_cast<int>(rs.Long(0));
}

bool IsStopKey(const QString& key) {
    return key.startsWith(QLatin1String("STOP"));
}

namespace {

// The search with a mark for the typed key: translated once per connection, not per keystroke.
QString ZipSearchShape(ZipMode mode, int rows) {
    return "Select Top " + QString::number(rows) + " * from ZipCodTable where " + Column(mode) +
           ">=? order by " + Order(mode) + ";";
}

}  // namespace

QString ZipSearchStatement(GIC& gic, ZipMode mode, const QString& key, int rows) {
    return ZipSearchShape(mode, rows).replace(QLatin1Char('?'), gic.SqlQuoteText(key));
}

ZipSearchResult SearchZip(GIC& gic, ZipMode mode, const QString& key, int rows) {
    ZipSearchResult result;
    if (IsStopKey(key)) {
        result.stopped = true;
        return result;
    }
    db::Recordset rs(gic.GetConnection(), ZipSearchShape(mode, rows), {gic.SqlQuoteText(key)});
    const ZipColumns columns(rs);
    result.rows.reserve(rows);
    for (; !rs.Eof(); rs.MoveNext())
        result.rows.append(columns.Read(rs, mode));
    result.selected = PrefixRow(result.rows, mode, key);
    return result;
}

int PrefixRow(const QList<ZipRow>& rows, ZipMode mode, const QString& key) {
    const QString prefix = key.toUpper();
    for (int i = 0; i < rows.size(); ++i) {
        const QString& value = mode == ZipMode::City ? rows[i].parts.city : rows[i].parts.zip;
        if (value.toUpper().startsWith(prefix))
            return i;
    }
    return -1;
}

QString ZipLine(ZipMode mode, const ZipParts& parts) {
    if (mode == ZipMode::City) {
        const QString tail = (parts.state + QLatin1Char(' ') + parts.zip).trimmed();
        return tail.isEmpty() ? parts.city : parts.city + QStringLiteral(", ") + tail;
    }
    QString place = parts.city;
    if (!parts.state.isEmpty())
        place += QStringLiteral(", ") + parts.state;
    return (parts.zip + QLatin1Char(' ') + place).trimmed();
}

namespace {

ZipParts SplitZipEntryAsTyped(GIC& gic, ZipMode mode, const QString& entry) {
    const QString text = entry.simplified();
    ZipParts parts;
    if (mode == ZipMode::City) {
        const qsizetype comma = text.lastIndexOf(QLatin1Char(','));
        if (comma < 0) {
            ParseCityStateZip(gic, text, parts.city, parts.state, parts.zip);
            return parts;
        }
        parts.city = CleanCity(text.left(comma));
        SplitStateZip(text.mid(comma + 1).trimmed(), parts.state, parts.zip);
        return parts;
    }
    // The zip is the leading words that hold a digit ("62704", "M5V 3L9"), at least one word.
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    qsizetype zipWords = 0;
    while (zipWords < words.size() && HoldsDigit(words[zipWords]))
        ++zipWords;
    zipWords = std::max<qsizetype>(zipWords, std::min<qsizetype>(1, words.size()));
    parts.zip = words.mid(0, zipWords).join(QLatin1Char(' '));
    const QString place = words.mid(zipWords).join(QLatin1Char(' '));
    const qsizetype comma = place.lastIndexOf(QLatin1Char(','));
    if (comma < 0) {
        SplitState(place, parts.city, parts.state);
    } else {
        parts.city = CleanCity(place.left(comma));
        parts.state = place.mid(comma + 1).trimmed();
    }
    return parts;
}

}  // namespace

ZipParts SplitZipEntry(GIC& gic, ZipMode mode, const QString& entry) {
    // A state is a code, whatever case the line was typed or cleaned up in.
    ZipParts parts = SplitZipEntryAsTyped(gic, mode, entry);
    parts.state = parts.state.toUpper();
    return parts;
}

std::optional<ZipRow> ReadZipRow(GIC& gic, ZipMode mode, int id) {
    return FirstRow(gic, mode,
                    "SELECT * FROM ZipCodTable WHERE ZipCodID=" + QString::number(id) + ";");
}

std::optional<ZipRow> MatchZipParts(GIC& gic, ZipMode mode, const ZipParts& given) {
    const ZipParts parts = Stored(given);
    QStringList terms;
    const auto term = [&](const char* column, const QString& value) {
        if (!value.isEmpty())
            terms << QLatin1String(column) + QLatin1Char('=') + gic.SqlQuoteText(value);
    };
    term("ZipCodCit", parts.city);
    term("ZipCodSta", parts.state);
    term("ZipCodZip", parts.zip);
    if (terms.isEmpty())
        return std::nullopt;
    return FirstRow(gic, mode,
                    "SELECT Top 1 * FROM ZipCodTable WHERE " + terms.join(QStringLiteral(" AND ")) +
                        " ORDER BY " + Order(mode) + ";");
}

int AddZipCode(GIC& gic, ZipMode mode, const QString& entry) {
    const QString text = entry.trimmed();
    if (text.isEmpty())
        return 0;
    if (!AskYes("Add [ " + text + " ] to database", 1))
        return 0;
    const ZipParts parts = Stored(SplitZipEntry(gic, mode, text));
    if (parts.isEmpty())
        return 0;
    return static_cast<int>(gic.GetConnection().InsertWithIdentity(
        "INSERT INTO ZipCodTable (ZipCodCit, ZipCodSta, ZipCodZip) VALUES (" +
        gic.SqlQuoteText(parts.city) + ", " + gic.SqlQuoteText(parts.state) + ", " +
        gic.SqlQuoteText(parts.zip) + ")"));
}

bool EditZipCode(GIC& gic, ZipMode mode, const ZipRow& row) {
    if (!AskYes("Edit [ " + row.line + " ] ?", 1))
        return false;
    // Read again: another station may have corrected or deleted the row since it was listed.
    const std::optional<ZipRow> stored = ReadZipRow(gic, mode, row.id);
    if (!stored)
        return false;
    const QString form = mode == ZipMode::City ? QStringLiteral("City, State Zip")
                                               : QStringLiteral("Zip City, State");
    const std::optional<QString> corrected = prompts().Input(form, kTitle, stored->line);
    if (!corrected)
        return false;
    const ZipParts parts = Stored(SplitZipEntry(gic, mode, *corrected));
    if (parts.isEmpty())
        return false;
    gic.GetConnection().Execute("UPDATE ZipCodTable SET ZipCodCit=" + gic.SqlQuoteText(parts.city) +
                                ", ZipCodSta=" + gic.SqlQuoteText(parts.state) +
                                ", ZipCodZip=" + gic.SqlQuoteText(parts.zip) +
                                " WHERE ZipCodID=" + QString::number(row.id) + ";");
    return true;
}

bool DeleteZipCode(GIC& gic, const ZipRow& row) {
    if (!AskYes("Delete [ " + row.line + " ] ?", 2))
        return false;
    // Addresses keep their own copy of the text: no other table is touched.
    gic.GetConnection().Execute(
        "DELETE * FROM ZipCodTable WHERE ZipCodID=" + QString::number(row.id) + ";");
    return true;
}

bool ConfirmZipUpdate(bool recordHasAddress, const ZipParts& onRecord, const ZipParts& chosen) {
    if (!recordHasAddress || onRecord == chosen)
        return true;
    return prompts().Message(kUpdateQuestion, Buttons::YesNo, Icon::Question, kUpdateTitle, 1) ==
           AnswerYes;
}

}  // namespace orvo::tools
