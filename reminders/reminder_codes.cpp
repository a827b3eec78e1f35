#include "reminders/reminder_codes.h"

namespace orvo::reminders {

QString ReminderTypeText(int type) {
    switch (type) {
        case kRecallReminder:
            return QStringLiteral("Recall Reminder");
        case kAppointmentConfirmation:
            return QStringLiteral("Appointment Confirmation");
        case kAppointmentReminder:
            return QStringLiteral("Appointment Reminder");
        case kBirthdayReminder:
            return QStringLiteral("Birthday Reminder");
        case kNewsLetter:
            return QStringLiteral("News Letter");
        default:
            return {};
    }
}

QString ContactMethodText(int method) {
    switch (method) {
        case kTextMessage:
            return QStringLiteral("Text Message");
        case kEMail:
            return QStringLiteral("e-Mail");
        case kLetter:
            return QStringLiteral("Letter");
        case kPostCard:
            return QStringLiteral("Post Card");
        case kPhone:
            return QStringLiteral("Phone");
        case kVoiceReminder:
            return QStringLiteral("Voice Reminder");
        default:
            return QStringLiteral("Unknown");
    }
}

QString MessageColumn(int method, int language) {
    switch (method) {
        case kEMail:
            return QStringLiteral("rmtEMaMes");
        case kLetter:
            return QStringLiteral("rmtLetFil");
        case kPostCard:
            return QStringLiteral("rmtCarMes");
        case kVoiceReminder:
            return language == kSpanish ? QStringLiteral("rmtVoiMesSpanish")
                                        : QStringLiteral("rmtVoiMes");
        default:
            return QStringLiteral("rmtTexMes");
    }
}

QList<int> GetDefaultMethods(int type) {
    switch (type) {
        case kRecallReminder:
        case kBirthdayReminder:
            return {kTextMessage, kEMail, kPostCard, kLetter, kVoiceReminder};
        case kAppointmentConfirmation:
        case kAppointmentReminder:
            return {kTextMessage, kEMail, kVoiceReminder};
        case kNewsLetter:
            return {kEMail, kLetter};
        default:
            return {};
    }
}

}  // namespace orvo::reminders
