#include "reminders/reminder_messages.h"

#include "platform/db/recordset.h"
#include "reminders/default_messages.h"
#include "reminders/reminder_codes.h"

namespace orvo::reminders {

const QString ReminderMessages::kSettingsSection = QStringLiteral("eReminders");
const QString ReminderMessages::kConfirmationSiteKey = QStringLiteral("ConfirmationSite");
const QString ReminderMessages::kDefaultConfirmationSite =
    QStringLiteral("https://confirm.orvo-online.example");

ReminderMessages::ReminderMessages(GIC& gic) : gic_(gic), store_(gic) {}

QString ReminderMessages::ConfirmationAddress() {
    QString site =
        gic_.ReadSetting(kSettingsSection, kConfirmationSiteKey, 0, kDefaultConfirmationSite)
            .toString()
            .trimmed();
    if (site.isEmpty())
        site = kDefaultConfirmationSite;
    while (site.endsWith(u'/'))
        site.chop(1);
    return site + QStringLiteral("/c.aspx?a=");
}

int ReminderMessages::LastStage(int type) {
    if (type != kAppointmentConfirmation && type != kAppointmentReminder)
        return 0;
    return static_cast<int>(
        db::ReadScalar(gic_.GetSecondConnection(),
                       QStringLiteral("Select top 1 emsSeq from ") + store_.ScheduleJoin(type) +
                           QStringLiteral("where emmAppDefTyp=") + QString::number(type) +
                           QStringLiteral(" and emsSeq< ") +
                           QString::number(kStopTrackingSequence) +
                           QStringLiteral(" and OffLocID=-1 and emmEna=1 order by emsSeq desc"))
            .toLongLong());
}

QString ReminderMessages::GetConfirmText(int lastStage, int stage, int channel, int language) {
    return reminders::GetConfirmText(lastStage, stage, channel, language, ConfirmationAddress());
}

QString ReminderMessages::GetReminderMessage(int type, int channel, int recallEntry, int stage,
                                             bool autoConfirm, int language) {
    const QString column = MessageColumn(channel, language);
    switch (type) {
        case kRecallReminder: {
            const int recall = store_.RecallNumberOfEntry(recallEntry);
            const int method = gic_.GetRecallContactMethod(recallEntry);
            const int entryStage = std::max(gic_.GetRecallStage(recallEntry), 0);
            const QString entryColumn = method > 0 ? MessageColumn(method, language) : column;
            db::Recordset rs(
                gic_.GetSecondConnection(),
                store_.GetRecallSchedule(
                    recall, QStringLiteral("Select ") + entryColumn + QStringLiteral(",emsSeq ")));
            for (; !rs.Eof(); rs.MoveNext()) {
                if (rs.Long(1) == entryStage)
                    return rs.Text(0);
            }
            return {};
        }
        case kAppointmentConfirmation:
        case kAppointmentReminder:
            return AppointmentMessage(type, channel, stage, autoConfirm, language);
        case kBirthdayReminder: {
            db::Recordset rs(
                gic_.GetSecondConnection(),
                QStringLiteral("Select top 1 ") + column + QStringLiteral(" from ") +
                    store_.ScheduleJoin(type) +
                    QStringLiteral("Left Join ReminderMessageTable on rmtEmmID=emmID and "
                                   "rmtLinID=emsID") +
                    QStringLiteral(" where emmAppDefTyp=4") +
                    QStringLiteral(" and OffLocID=-1 and emmEna=1 ") +
                    QStringLiteral("order by emsSeq"));
            const QString body = rs.IsEmpty() ? QString() : rs.Text(0);
            // An empty body is stored as one blank.
            return body.trimmed().isEmpty() ? GetDefaultMessage(type, channel, false, language)
                                            : body;
        }
        default:
            return {};
    }
}

QString ReminderMessages::AppointmentMessage(int type, int channel, int stage, bool autoConfirm,
                                             int language) {
    if (stage <= 0)
        return {};
    QString body;
    bool confirmationAllowed = true;
    bool found = false;
    {
        db::Recordset rs(gic_.GetSecondConnection(),
                         QStringLiteral("Select rmtTexAutRetMes, ") +
                             MessageColumn(channel, language) + QStringLiteral(" from ") +
                             store_.ScheduleJoin(type) +
                             QStringLiteral(" Left Join ReminderMessageTable on rmtEmmID=emmID and "
                                            "rmtLinID=emsID ") +
                             QStringLiteral("where emmAppDefTyp=") + QString::number(type) +
                             QStringLiteral(" and OffLocID=-1 and emmEna=1 and emsSeq=") +
                             QString::number(stage));
        // An empty body is stored as one blank: a row whose body trims to nothing has none.
        if (!rs.IsEmpty() && !rs.Text(1).trimmed().isEmpty()) {
            found = true;
            body = rs.Text(1);
            confirmationAllowed = rs.IsNull(0) || rs.Long(0) != 0;
        }
    }
    if (!found) {
        if (stage > 1)
            return AppointmentMessage(type, channel, stage - 1, autoConfirm, language);
        body = GetDefaultMessage(type, channel, false, language);
    }
    if (autoConfirm && confirmationAllowed) {
        body = AddConfirmation(body, GetConfirmText(LastStage(type), stage, channel, language),
                               channel);
    }
    return body;
}

}  // namespace orvo::reminders
