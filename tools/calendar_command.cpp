#include "tools/calendar_command.h"

#include <QRegularExpression>

namespace orvo::tools {

CalendarCommand CalendarCommand::Parse(const QString& tagIn) {
    QString tag = tagIn;
    if (tag == QLatin1String("DEF_CALC_JD"))
        tag = QStringLiteral("DEF_VAL_SET_LAST_INPUT_NUMS_GET_TITLE_CALCULATOR");
    CalendarCommand c;
    // "NOCALCULATOR" also ends in "CALCULATOR": the longer word is read first.
    if (tag.endsWith(QLatin1String("NOCALCULATOR")))
        c.calculator = Calculator::NumberPad;
    else if (tag.endsWith(QLatin1String("CALCULATOR")))
        c.calculator = Calculator::First;
    else if (tag == QLatin1String("NONE"))
        c.calculator = Calculator::None;
    c.small = tag.startsWith(QLatin1String("SMALL"));
    c.callerValue = tag.startsWith(QLatin1String("DEF_VAL"));
    c.callerTitle = tag.contains(QLatin1String("GET_TITLE"));
    c.digitsAdd = tag.contains(QLatin1String("SET_LAST_INPUT_NUMS"));
    c.transactionDate = tag.contains(QLatin1String("TXDATE"));
    c.offerDelete = tag.contains(QLatin1String("ACTIVATE DEL"));
    c.extend = tag.contains(QLatin1String("EXTEND"));
    return c;
}

QString CalendarCommand::Title(bool calculatorShown) const {
    if (!calculatorShown)
        return QStringLiteral("Calendar");
    return calculator == Calculator::NumberPad ? QStringLiteral("Numeric Pad")
                                               : QStringLiteral("Calculator");
}

QString DistanceCaption(const QDate& day, const QDate& today) {
    if (!day.isValid() || !today.isValid())
        return QString();
    const qint64 days = today.daysTo(day);
    if (days == 0)
        return QStringLiteral("today");
    if (days == 1)
        return QStringLiteral("1") + QStringLiteral(" day from today");
    if (days > 1)
        return QString::number(days) + QStringLiteral(" days from today");
    if (days == -1)
        return QStringLiteral("1") + QStringLiteral(" day ago");
    return QString::number(-days) + QStringLiteral(" days ago");
}

QDate MonthsAhead(const QDate& from, int months) {
    return from.addMonths(months).addDays(1);
}

std::optional<QDate> MoveToYear(const QDate& selected, const QString& yearText) {
    static const QRegularExpression fourDigits(QStringLiteral("^\\d{4}$"));
    const QString text = yearText.trimmed();
    if (!fourDigits.match(text).hasMatch() || !selected.isValid())
        return std::nullopt;
    const QDate yearForm =
        QDate::fromString(QStringLiteral("01-01-") + text, QStringLiteral("MM-dd-yyyy"));
    if (!yearForm.isValid() || yearForm.year() < 1)
        return std::nullopt;
    return selected.addYears(yearForm.year() - selected.year());
}

std::optional<QDate> CallerDate(const QString& textIn, const QDate& today) {
    const QString text = textIn.trimmed();
    if (text.compare(QLatin1String("today"), Qt::CaseInsensitive) == 0)
        return today;
    for (const char* format : {"MM-dd-yyyy", "M-d-yyyy", "MM/dd/yyyy", "M/d/yyyy", "yyyy-MM-dd"}) {
        const QDate day = QDate::fromString(text, QLatin1String(format));
        if (day.isValid())
            return day;
    }
    return std::nullopt;
}

QString CalendarDateText(const QDate& day) {
    return day.toString(QStringLiteral("MM-dd-yyyy"));
}

}  // namespace orvo::tools
