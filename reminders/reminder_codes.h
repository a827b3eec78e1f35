#pragma once

#include <QList>
#include <QString>

namespace orvo::reminders {

// Reminder types, the values of emmAppDefTyp.
enum ReminderType {
    kRecallReminder = 1,
    kAppointmentConfirmation = 2,
    kAppointmentReminder = 3,
    kBirthdayReminder = 4,
    kNewsLetter = 5,
};

// Contact methods, the values of ebcConMet and the channel of a message.
enum ContactMethod {
    kTextMessage = 1,
    kEMail = 2,
    kLetter = 4,
    kPostCard = 8,
    kPhone = 16,
    kVoiceReminder = 32,
};

enum Language { kEnglish = 1, kSpanish = 2 };

// The stage of a recall schedule at which tracking stops: 7 in a contact sequence, the largest
// long in a schedule stage.
constexpr int kStopTrackingStage = 7;
constexpr int kStopTrackingSequence = 2147483647;

// "Recall Reminder" ... "News Letter"; empty for another code.
QString ReminderTypeText(int type);
// "Text Message" ... "Voice Reminder"; "Unknown" for another code.
QString ContactMethodText(int method);
// The message column of a channel: text message for 1 and any code without a column of its own,
// the Spanish voice message for voice in language 2.
QString MessageColumn(int method, int language);
// The methods a reminder type offers, in their default order; empty for another type.
QList<int> GetDefaultMethods(int type);

}  // namespace orvo::reminders
