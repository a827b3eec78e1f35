#pragma once

#include <QString>

#include "component/public/gic.h"
#include "reminders/reminder_store.h"

namespace orvo::reminders {

// The body that applies to a reminder type, stage and channel, read from the reminder tables
// with the built-in defaults behind them, and the confirmation instruction that goes with it.
class ReminderMessages {
public:
    // Where the suite's online service takes confirmations; the setting names the site.
    static const QString kSettingsSection;  // "eReminders"
    static const QString kConfirmationSiteKey;
    static const QString kDefaultConfirmationSite;

    explicit ReminderMessages(GIC& gic);

    // The confirmation page without the appointment: the site + "/c.aspx?a=".
    QString ConfirmationAddress();
    // The last stage of an appointment schedule before stop tracking; 0 for another type or an
    // empty schedule.
    int LastStage(int type);
    QString GetConfirmText(int lastStage, int stage, int channel, int language);
    QString GetReminderMessage(int type, int channel, int recallEntry, int stage, bool autoConfirm,
                               int language);

private:
    QString AppointmentMessage(int type, int channel, int stage, bool autoConfirm, int language);

    GIC& gic_;
    ReminderStore store_;
};

}  // namespace orvo::reminders
