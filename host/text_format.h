#pragma once

#include <QDate>
#include <QString>

namespace orvo::host {

// The host's text helpers, as the component's screens see them through GIC.

// Capitals at the start of each word, the rest lower case. A word typed in mixed case
// ("McDonald"), a code of letters and digits ("M5V") and a number ("3B") stay as typed; an
// ordinal takes a lower-case suffix ("3rd"), and so do contractions ("John's").
QString ProperCaseText(QString text);

// A telephone number as the suite shows it: "(614) 555-0100", with " x" and the rest for an
// extension, "555-0100" for seven digits; anything with letters, or another count of digits,
// as typed.
QString FormatPhoneText(const QString& text);

// "Last, First" or "First Middle Last" into last and first name.
void SplitPersonNameText(const QString& text, QString& lastName, QString& firstName);

// A social security number as the suite shows it: "123-45-6789" for nine digits, with or
// without the dashes; anything else as typed, trimmed.
QString FormatSsnText(const QString& text);

// A typed date in the named format. "Short Date" takes month, day and year separated by "/",
// "-" or "." (or eight digits run together, MMDDYYYY), a year of two digits being the latest
// year so written that is not after today's; the answer is "MM-DD-YYYY", or empty text when
// the typed text is no date. Any other format name throws ComponentError.
QString NormalizeDateText(const QString& text, const QString& formatName, const QDate& today);

// The age on today of someone born on birthDate ("MM-DD-YYYY", or as NormalizeDateText reads),
// in years and months: "34 Years 2 Months", "1 Year 1 Month", "0 Years 5 Months". Empty for
// text that is no date or a date after today.
QString AgeText(const QString& birthDate, const QDate& today);

// The fieldNumber-th (from 1) field of text between separators; empty past the last.
QString DelimitedField(const QString& text, const QString& separator, int fieldNumber);

}  // namespace orvo::host
