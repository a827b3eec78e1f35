#pragma once

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

// The fieldNumber-th (from 1) field of text between separators; empty past the last.
QString DelimitedField(const QString& text, const QString& separator, int fieldNumber);

}  // namespace orvo::host
