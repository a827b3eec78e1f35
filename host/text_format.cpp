#include "host/text_format.h"

#include <QRegularExpression>
#include <QStringList>

#include "component/public/component_error.h"

namespace orvo::host {
namespace {

bool IsApostrophe(QChar c) {
    return c == QLatin1Char('\'') || c == QChar(0x2019);
}

// Endings after an apostrophe that stay lower case: "JOHN'S" is "John's", "O'NEIL" "O'Neil".
bool IsContractionEnding(const QString& word) {
    static const QStringList endings{
        QStringLiteral("s"),  QStringLiteral("t"),  QStringLiteral("d"), QStringLiteral("ll"),
        QStringLiteral("re"), QStringLiteral("ve"), QStringLiteral("m")};
    return endings.contains(word, Qt::CaseInsensitive);
}

// A run that starts with a digit is a number: an ordinal ("3RD") takes a lower-case suffix,
// anything else ("3B", an apartment) stays as typed.
void CaseNumber(QString& text, qsizetype begin, qsizetype end) {
    static const QRegularExpression ordinal(QStringLiteral("^\\d+(st|nd|rd|th)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    if (!ordinal.match(text.mid(begin, end - begin)).hasMatch())
        return;
    for (qsizetype i = begin; i < end; ++i)
        text[i] = text[i].toLower();
}

// One run of letters and digits. A run typed in mixed case ("McDonald") is left as it is, and
// so is a code of letters and digits ("M5V", a postal code).
void CaseWord(QString& text, qsizetype begin, qsizetype end) {
    if (text[begin].isDigit())
        return CaseNumber(text, begin, end);
    for (qsizetype i = begin; i < end; ++i) {
        if (text[i].isDigit())
            return;
    }
    bool lower = false;
    bool upper = false;
    for (qsizetype i = begin; i < end; ++i) {
        lower = lower || text[i].isLower();
        upper = upper || text[i].isUpper();
    }
    if (lower && upper)
        return;
    const bool contraction = begin > 0 && IsApostrophe(text[begin - 1]) &&
                             IsContractionEnding(text.mid(begin, end - begin));
    for (qsizetype i = begin; i < end; ++i) {
        text[i] = (i == begin && !contraction) ? text[i].toUpper() : text[i].toLower();
    }
}

QString FormatTenDigits(const QString& digits) {
    return QStringLiteral("(%1) %2-%3").arg(digits.left(3), digits.mid(3, 3), digits.mid(6, 4));
}

}  // namespace

QString ProperCaseText(QString text) {
    qsizetype i = 0;
    while (i < text.size()) {
        if (!text[i].isLetterOrNumber()) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && text[end].isLetterOrNumber())
            ++end;
        CaseWord(text, i, end);
        i = end;
    }
    return text;
}

QString FormatPhoneText(const QString& text) {
    const QString typed = text.trimmed();
    QString digits;
    for (const QChar c : typed) {
        if (c.isLetter())
            return typed;
        if (c.isDigit())
            digits += c;
    }
    if (digits.size() == 11 && digits.startsWith(QLatin1Char('1')))
        digits.remove(0, 1);
    if (digits.size() == 10)
        return FormatTenDigits(digits);
    if (digits.size() > 10)
        return FormatTenDigits(digits) + QStringLiteral(" x") + digits.mid(10);
    if (digits.size() == 7)
        return digits.left(3) + QLatin1Char('-') + digits.mid(3);
    return typed;
}

void SplitPersonNameText(const QString& text, QString& lastName, QString& firstName) {
    const QString name = text.simplified();
    const qsizetype comma = name.indexOf(QLatin1Char(','));
    if (comma >= 0) {
        lastName = name.left(comma).trimmed();
        firstName = name.mid(comma + 1).trimmed();
        return;
    }
    const qsizetype blank = name.lastIndexOf(QLatin1Char(' '));
    lastName = name.mid(blank + 1);
    firstName = blank < 0 ? QString() : name.left(blank);
}

QString DelimitedField(const QString& text, const QString& separator, int fieldNumber) {
    if (fieldNumber < 1)
        return QString();
    if (separator.isEmpty())
        return fieldNumber == 1 ? text : QString();
    const QStringList fields = text.split(separator);
    return fieldNumber <= fields.size() ? fields[fieldNumber - 1] : QString();
}

QString FormatSsnText(const QString& text) {
    const QString typed = text.trimmed();
    QString digits;
    for (const QChar c : typed) {
        if (c.isDigit())
            digits += c;
        else if (c != QLatin1Char('-') && c != QLatin1Char(' '))
            return typed;
    }
    if (digits.size() != 9)
        return typed;
    return digits.left(3) + QLatin1Char('-') + digits.mid(3, 2) + QLatin1Char('-') + digits.mid(5);
}

QString NormalizeDateText(const QString& text, const QString& formatName, const QDate& today) {
    if (formatName.compare(QLatin1String("Short Date"), Qt::CaseInsensitive) != 0)
        throw ComponentError(QStringLiteral("No date format is named \"%1\"").arg(formatName));
    const QString typed = text.trimmed();
    static const QRegularExpression kSeparated(
        QStringLiteral("^(\\d{1,2})[/.-](\\d{1,2})[/.-](\\d{2}|\\d{4})$"));
    static const QRegularExpression kRunTogether(QStringLiteral("^(\\d{2})(\\d{2})(\\d{4})$"));
    QRegularExpressionMatch match = kSeparated.match(typed);
    if (!match.hasMatch())
        match = kRunTogether.match(typed);
    if (!match.hasMatch())
        return QString();
    const int month = match.captured(1).toInt();
    const int day = match.captured(2).toInt();
    int year = match.captured(3).toInt();
    if (match.captured(3).size() == 2) {
        // "07" is 2007 until that day lies ahead of today; then 1907.
        year += today.year() / 100 * 100;
        const QDate inThisCentury(year, month, day);
        if (!inThisCentury.isValid() || inThisCentury > today)
            year -= 100;
    }
    const QDate date(year, month, day);
    return date.isValid() ? date.toString(QStringLiteral("MM-dd-yyyy")) : QString();
}

QString AgeText(const QString& birthDate, const QDate& today) {
    const QDate born =
        QDate::fromString(NormalizeDateText(birthDate, QStringLiteral("Short Date"), today),
                          QStringLiteral("MM-dd-yyyy"));
    if (!born.isValid() || born > today)
        return QString();
    int months = (today.year() - born.year()) * 12 + today.month() - born.month();
    if (today.day() < born.day())
        --months;
    const int years = months / 12;
    months %= 12;
    const auto count = [](int n, const char* one, const char* many) {
        return QString::number(n) + QLatin1Char(' ') + QLatin1String(n == 1 ? one : many);
    };
    return count(years, "Year", "Years") + QLatin1Char(' ') + count(months, "Month", "Months");
}

}  // namespace orvo::host
