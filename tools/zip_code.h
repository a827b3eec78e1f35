#pragma once

// ZIPCODE: the city, state and zip list (ZipCodTable) behind every address on the screens.
// While a city or a zip is typed, the rows from the typed key on are listed; choosing one fills
// the city, the state and the zip together. New places are added from the typed text, and rows
// are corrected or deleted from the list. No widgets here: the panel is zip_code_panel.h.

#include <QList>
#include <QString>
#include <optional>

#include "component/public/gic.h"

namespace orvo::tools {

// The field a search runs in, and so the column it reads and the form of its list lines.
enum class ZipMode {
    City,  // by ZipCodCit, lines "city, state zip"
    Zip,   // by ZipCodZip, lines "zip city, state"
};

struct ZipParts {
    QString city;
    QString state;
    QString zip;

    bool isEmpty() const { return city.isEmpty() && state.isEmpty() && zip.isEmpty(); }
    friend bool operator==(const ZipParts&, const ZipParts&) = default;
};

// One row of the list, as shown.
struct ZipRow {
    int id = 0;  // ZipCodID
    ZipParts parts;
    QString line;  // the list line, in the form of the search's mode
};

struct ZipSearchResult {
    bool stopped = false;  // the key asked the panel to end: nothing was read
    QList<ZipRow> rows;
    int selected = -1;  // the first row that begins with the key, or -1
};

// Splits one typed line such as "Springfield IL 62704" into its city, state and zip. With the
// office setting NON_US_ZIP_CODE on, the postal code after the city is kept whole, letters and
// blanks included; with it off, the zip is the first run of digits and hyphens. An empty line
// writes nothing; any other line writes all three.
void ParseCityStateZip(GIC& gic, const QString& text, QString& city, QString& state, QString& zip);

// The ZipCodID of the row holding exactly this city, state and zip (letter case aside), or 0.
int FindZipCodeID(GIC& gic, const QString& city, const QString& state, const QString& zip);

// A key that begins with "STOP" ends the panel instead of searching.
bool IsStopKey(const QString& key);
// The statement of one search: the first `rows` rows from the key on, in the mode's order.
QString ZipSearchStatement(GIC& gic, ZipMode mode, const QString& key, int rows);
// The search as typed: reads the rows and selects the first that begins with the key.
ZipSearchResult SearchZip(GIC& gic, ZipMode mode, const QString& key, int rows);
// Index of the first row whose city (or zip) begins with the key, letter case aside; -1 if none.
int PrefixRow(const QList<ZipRow>& rows, ZipMode mode, const QString& key);

// The list line of a row in the mode's form; empty parts leave no stray separators.
QString ZipLine(ZipMode mode, const ZipParts& parts);
// Splits an entry typed in the mode's field ("city, state zip" in the city field, "zip city,
// state" in the zip field) the way Add and Edit store it. A city entry without a comma is read
// as one typed line (ParseCityStateZip).
ZipParts SplitZipEntry(GIC& gic, ZipMode mode, const QString& entry);

std::optional<ZipRow> ReadZipRow(GIC& gic, ZipMode mode, int id);
// The first row, in the mode's order, that agrees with every part given (letter case aside);
// none when no part is given or no row agrees.
std::optional<ZipRow> MatchZipParts(GIC& gic, ZipMode mode, const ZipParts& parts);

// The panel's commands. Each asks first and answers whether it changed the list.
// Add: answers the new row's ZipCodID, 0 when the person said No or the entry was empty.
int AddZipCode(GIC& gic, ZipMode mode, const QString& entry);
// Edit: asks about the row's line, then for the corrected line (the row as stored, by default).
// False when declined, cancelled, or the row is gone.
bool EditZipCode(GIC& gic, ZipMode mode, const ZipRow& row);
bool DeleteZipCode(GIC& gic, const ZipRow& row);

// Whether a chosen row may replace the address on the record: asks "Update City, State, and
// Zipcode?" when the record holds an address and the chosen one differs from it.
bool ConfirmZipUpdate(bool recordHasAddress, const ZipParts& onRecord, const ZipParts& chosen);

}  // namespace orvo::tools
