#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace orvo::tools {

// What a screen asks of the calendar form through its Tag. Several words may stand in one text.
struct CalendarCommand {
    enum class Calculator {
        Offered,    // the calendar first; Calendar_CMD turns to the calculator
        First,      // CALCULATOR: the calculator first, titled "Calculator"
        NumberPad,  // NOCALCULATOR: the digits without the operators, titled "Numeric Pad"
        None,       // NONE: the calendar alone
    };
    Calculator calculator = Calculator::Offered;
    bool small = false;            // SMALL: the extension panel stays hidden
    bool callerValue = false;      // DEF_VAL: the readout starts from the caller's value
    bool callerTitle = false;      // GET_TITLE: the window title is the caller's
    bool digitsAdd = false;        // SET_LAST_INPUT_NUMS: the first digit adds to the value
    bool transactionDate = false;  // TXDATE: the transaction date panel
    bool offerDelete = false;      // "ACTIVATE DEL": the &Del button
    bool extend = false;           // EXTEND: the extension panel is shown on activation

    // The Tag's words as the form reads them. DEF_CALC_JD stands for the calculator that adds
    // to the caller's value under the caller's title.
    static CalendarCommand Parse(const QString& tag);
    // The window title for the face shown, before a caller's title replaces it.
    QString Title(bool calculatorShown) const;
    bool extensionShown() const { return extend || !small; }
};

// "today", "1 day from today", "12 days ago"...: how far day is from today; empty for no day.
QString DistanceCaption(const QDate& day, const QDate& today);

// "3mo+" and "6mo+": months ahead by calendar months, then one day more.
QDate MonthsAhead(const QDate& from, int months);

// The selection moved to the year typed ("YYYY"), keeping month and day (the 29th of February
// becomes the 28th in a common year). Nothing for text that is not a four-digit year.
std::optional<QDate> MoveToYear(const QDate& selected, const QString& yearText);

// The day a caller's text names: "today", "MM-DD-YYYY", "M/D/YYYY" or ISO. Nothing otherwise.
std::optional<QDate> CallerDate(const QString& text, const QDate& today);

// How the form hands a day back.
QString CalendarDateText(const QDate& day);

}  // namespace orvo::tools
