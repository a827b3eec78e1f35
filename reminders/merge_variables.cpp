#include "reminders/merge_variables.h"

#include <QList>
#include <utility>

namespace orvo::reminders {

const QStringList& MergeVariables() {
    static const QStringList variables{
        QStringLiteral("{Patient Full Name}"),
        QStringLiteral("{Patient Last Name}"),
        QStringLiteral("{Patient First Name}"),
        QStringLiteral("{Patient Title}"),
        QStringLiteral("{Patient Insurance Eligibility}"),
        QStringLiteral("{Patient Premed}"),
        QStringLiteral("{Patient Birth Date}"),
        QStringLiteral("{Provider Full Name}"),
        QStringLiteral("{Provider Last Name}"),
        QStringLiteral("{Provider First Name}"),
        QStringLiteral("{Provider Title}"),
        QStringLiteral("{Office Name}"),
        QStringLiteral("{Office Phone}"),
        QStringLiteral("{Office Fax}"),
        QStringLiteral("{Office Website Address}"),
        QStringLiteral("{Office Address Line 1}"),
        QStringLiteral("{Office Address Line 2}"),
        QStringLiteral("{Office City, State Zip}"),
        QStringLiteral("{Office Address for Map}"),
        QStringLiteral("{Current date}"),
        QStringLiteral("{Appointment Date}"),
        QStringLiteral("{Appointment Time}"),
        QStringLiteral("{Appointment Day of the Week}"),
        QStringLiteral("{Appointment Confirmation Link}"),
        QStringLiteral("{Appointment ID}"),
        QStringLiteral("{Recall Title}"),
        QStringLiteral("{Last Recall Date}"),
        QStringLiteral("{Recall Period}"),
        QStringLiteral("{Next Recall Appointment Date}"),
        QStringLiteral("{Next Recall Appointment Time}"),
        QStringLiteral("{Recommended Recall Date}"),
        QStringLiteral("{Preferred Recall Date}"),
    };
    return variables;
}

QString ReplaceOldVariableNames(QString text) {
    static const QList<std::pair<QString, QString>> replacements{
        {QStringLiteral("{Appointment Patient First,Middle,Last Name}"),
         QStringLiteral("{Patient Full Name}")},
        {QStringLiteral("{Appointment Patient Last Name}"), QStringLiteral("{Patient Last Name}")},
        {QStringLiteral("{Appointment Patient First Name}"),
         QStringLiteral("{Patient First Name}")},
        {QStringLiteral("{Appointment Patient Title}"), QStringLiteral("{Patient Title}")},
        {QStringLiteral("{Appointment Provider First and Last Name}"),
         QStringLiteral("{Provider Full Name}")},
        {QStringLiteral("{Appointment Provider Last Name}"),
         QStringLiteral("{Provider Last Name}")},
        {QStringLiteral("{Appointment Provider First Name}"),
         QStringLiteral("{Provider First Name}")},
        {QStringLiteral("{Appointment Provider Title}"), QStringLiteral("{Provider Title}")},
        {QStringLiteral("{Appointment Provider Business Phone}"), QStringLiteral("{Office Phone}")},
        {QStringLiteral("{Recall Patient First,Middle,Last Name}"),
         QStringLiteral("{Patient Full Name}")},
        {QStringLiteral("{Recall Patient Last Name}"), QStringLiteral("{Patient Last Name}")},
        {QStringLiteral("{Recall Patient First Name}"), QStringLiteral("{Patient First Name}")},
        {QStringLiteral("{Recall Patient Title}"), QStringLiteral("{Patient Title}")},
        {QStringLiteral("{Recall Provider First and Last Name}"),
         QStringLiteral("{Provider Full Name}")},
        {QStringLiteral("{Recall Provider Last Name}"), QStringLiteral("{Provider Last Name}")},
        {QStringLiteral("{Recall Provider First Name}"), QStringLiteral("{Provider First Name}")},
        {QStringLiteral("{Recall Provider Title}"), QStringLiteral("{Provider Title}")},
        {QStringLiteral("{Recall Provider Business Phone}"), QStringLiteral("{Office Phone}")},
        {QStringLiteral("{Birthday Patient First,Middle,Last Name}"),
         QStringLiteral("{Patient Full Name}")},
        {QStringLiteral("{Birthday Patient Last Name}"), QStringLiteral("{Patient Last Name}")},
        {QStringLiteral("{Birthday Patient First Name}"), QStringLiteral("{Patient First Name}")},
        {QStringLiteral("{Birthday Patient Patient Title}"), QStringLiteral("{Patient Title}")},
        {QStringLiteral("{Birthday Patient Provider First and Last Name}"),
         QStringLiteral("{Provider Full Name}")},
        {QStringLiteral("{Birthday Patient Provider Last Name}"),
         QStringLiteral("{Provider Last Name}")},
        {QStringLiteral("{Birthday Patient Provider First Name}"),
         QStringLiteral("{Provider First Name}")},
        {QStringLiteral("{Birthday Patient Provider Title}"), QStringLiteral("{Provider Title}")},
        {QStringLiteral("{Birthday Patient Provider Business Phone}"),
         QStringLiteral("{Office Phone}")},
        {QStringLiteral("{Appointment Start Time}"), QStringLiteral("{Appointment Time}")},
        {QStringLiteral("{Appointment Provider Business Name}"), QStringLiteral("{Office Name}")},
        {QStringLiteral("{Appointment Provider Business Address}"),
         QStringLiteral("{Office Address for Map}")},
        {QStringLiteral("{Appointment Provider Business Fax}"), QStringLiteral("{Office Fax}")},
        {QStringLiteral("{Appointment Provider Business Website Address}"),
         QStringLiteral("{Office Website Address}")},
        {QStringLiteral("{Appointment Provider Business Address,city,state,zip}"),
         QStringLiteral("{Office City, State Zip}")},
        {QStringLiteral("{Appointment Provider Address line 1}"),
         QStringLiteral("{Office Address Line 1}")},
        {QStringLiteral("{Appointment Provider Address line 2}"),
         QStringLiteral("{Office Address Line 2}")},
        {QStringLiteral("{Appointment Provider city,state,zip}"),
         QStringLiteral("{Office City, State Zip}")},
        {QStringLiteral("{Appointment Provider Business Address for Map}"),
         QStringLiteral("{Office Address for Map}")},
    };
    for (const auto& [oldName, newName] : replacements)
        text.replace(oldName, newName);
    return text;
}

}  // namespace orvo::reminders
