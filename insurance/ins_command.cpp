#include "insurance/ins_command.h"

#include <QHash>
#include <QStringList>

namespace orvo::insurance {
namespace {

// A flag line as the suite writes it: "-1" (or any number but 0) and "True" are true.
bool IsTrueFlag(const QString& line) {
    bool isNumber = false;
    const int number = line.trimmed().toInt(&isNumber);
    if (isNumber)
        return number != 0;
    return line.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

}  // namespace

int CarrierFieldForLabel(const QString& label) {
    static const QHash<QString, int> fields{
        {QStringLiteral("INSURANCE COMPANY"), 1},
        {QStringLiteral("NAME"), 1},
        {QStringLiteral("PHARMACY"), 1},
        {QStringLiteral("ADDRESS 1"), 2},
        {QStringLiteral("ADDRESS 2"), 3},
        {QStringLiteral("CITY"), 4},
        {QStringLiteral("STATE"), 5},
        {QStringLiteral("ZIP"), 6},
        {QStringLiteral("PHONE NUMBER"), 7},
        {QStringLiteral("PHONE NUMBER 1"), 7},
        {QStringLiteral("PHONE NUMBER 2"), 8},
        {QStringLiteral("FAX NUMBER"), 9},
        {QStringLiteral("REMARK 1"), 10},
        {QStringLiteral("REMARK 2"), 11},
        {QStringLiteral("EMAIL"), 12},
        {QStringLiteral("E-MAIL"), 12},
    };
    return fields.value(label.toUpper(), 0);
}

CarrierCommandFields ParseCarrierCommand(const QString& command) {
    CarrierCommandFields result;
    const QStringList lines = command.split(QChar(10));
    if (!IsTrueFlag(lines.value(0))) {
        const QString name = lines.value(1);
        if (!name.isEmpty())
            result.text.insert(1, name);
        return result;
    }
    const QChar mark(1);
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype at = lines[i].indexOf(mark);
        if (at < 0)
            continue;
        const int field = CarrierFieldForLabel(lines[i].left(at));
        if (field > 0)
            result.text.insert(field, lines[i].mid(at + 1));
    }
    result.modified = true;
    return result;
}

}  // namespace orvo::insurance
