#include "reminders/default_messages.h"

#include "reminders/reminder_codes.h"

namespace orvo::reminders {
namespace {

const QString kDialToConfirm = QStringLiteral("Please dial 1 to confirm.");
const QString kDialToConfirmSpanish = QStringLiteral("Marque el numero 1 para confirmar.");

QString RecallWords() {
    return QStringLiteral("{Patient Full Name}") + QStringLiteral(", it's time for ") +
           QStringLiteral("{Recall Title}") + QStringLiteral(" with ") +
           QStringLiteral("{Provider Title}") + u' ' + QStringLiteral("{Provider Last Name}") +
           QStringLiteral(". ") + QStringLiteral("Please call our office at ") +
           QStringLiteral("{Office Phone}") + QStringLiteral(" to schedule your appointment.");
}

QString AppointmentWords() {
    return QStringLiteral("{Patient Full Name}") +
           QStringLiteral(" has an appointment scheduled with ") +
           QStringLiteral("{Provider Title}") + u' ' + QStringLiteral("{Provider Last Name}") +
           QStringLiteral(" on ") + QStringLiteral("{Appointment Date}") + QStringLiteral(" at ") +
           QStringLiteral("{Appointment Time}") + QStringLiteral(". ");
}

QString BirthdayWords() {
    return QStringLiteral("Dear ") + QStringLiteral("{Patient First Name}") + u',' + kLineBreak +
           kLineBreak +
           QStringLiteral(
               "On behalf of everyone at our office we want to wish you a very HAPPY "
               "BIRTHDAY!! Have a wonderful day.") +
           kLineBreak + kLineBreak + QStringLiteral("Dr. ") +
           QStringLiteral("{Provider Full Name}") + QStringLiteral(" and staff");
}

QString SpanishWords(int type) {
    switch (type) {
        case kRecallReminder:
            return QStringLiteral("{Patient Full Name}") + QStringLiteral(", Es tiempo para su ") +
                   QStringLiteral("{Recall Title}") + QStringLiteral(" con el ") +
                   QStringLiteral("{Provider Title}") + u' ' +
                   QStringLiteral("{Provider Last Name}") + QStringLiteral(". ") +
                   QStringLiteral("Favor de llamar a la officina al numero ") +
                   QStringLiteral("{Office Phone}") + QStringLiteral(" para fijar su cita.");
        case kAppointmentConfirmation:
        case kAppointmentReminder:
            return QStringLiteral("{Patient Full Name}") +
                   QStringLiteral(" tiene una cita con el ") + QStringLiteral("{Provider Title}") +
                   u' ' + QStringLiteral("{Provider Last Name}") + QStringLiteral(" el ") +
                   QStringLiteral("{Appointment Date}") + QStringLiteral(" a las ") +
                   QStringLiteral("{Appointment Time}") + QStringLiteral(". ");
        case kBirthdayReminder:
            return QStringLiteral("Estimado ") + QStringLiteral("{Patient First Name}") + u',' +
                   kLineBreak + kLineBreak +
                   QStringLiteral(
                       "En nombre de todos en la officina queremos deciarle un Feliz "
                       "Cumpleanos!!! Y Que tenga un maravilloso dia.") +
                   kLineBreak + kLineBreak + QStringLiteral("Dr. ") +
                   QStringLiteral("{Provider Full Name}") + QStringLiteral(" y personal");
        default:
            return {};
    }
}

QString EnglishWords(int type) {
    switch (type) {
        case kRecallReminder:
            return RecallWords();
        case kAppointmentConfirmation:
        case kAppointmentReminder:
            return AppointmentWords();
        case kBirthdayReminder:
            return BirthdayWords();
        default:
            return {};
    }
}

// The small page in which the e-mail defaults of recalls and appointments stand.
QString SimplePage(const QString& words) {
    return QStringLiteral(
               "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0 Transitional//EN\">\r\n"
               "<html>\r\n<head>\r\n"
               "<meta content=\"TX_HTML32 12.0.230.500\" name=\"GENERATOR\">\r\n"
               "<title></title>\r\n</head>\r\n"
               "<body bgcolor=\"#FFFFFF\" text=\"#000000\">\r\n"
               "<p><span style=\"font-family:'Arial';font-size:12pt;\">") +
           words + QStringLiteral("</span></p>\r\n</body>\r\n</html>\r\n");
}

QString BirthdayPage() {
    const QString span = QStringLiteral("<p><span style=\"font-family:'Arial';font-size:12pt;\"");
    return QStringLiteral(
               "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0 Transitional//EN\">\r\n"
               "<html>\r\n<head>\r\n"
               "<meta content=\"TX14_HTM 14.0.236.501\" name=\"GENERATOR\">\r\n"
               "<title></title>\r\n"
               "<style type=\"text/css\">\r\n"
               "p { margin-top:0pt;margin-bottom:0pt; }\r\n"
               "</style>\r\n</head>\r\n"
               "<body bgcolor=\"#FFFFFF\" text=\"#000000\">\r\n") +
           span + QStringLiteral(">Dear ") + QStringLiteral("{Patient First Name}") +
           QStringLiteral("</span></p>\r\n") + span + QStringLiteral(">&nbsp;</span></p>\r\n") +
           span +
           QStringLiteral(
               ">On behalf of everyone at our office we want to wish you a very HAPPY "
               "BIRTHDAY!! It is during occasions such as this that we have an "
               "opportunity to let you know you are special to us.</span></p>") +
           QStringLiteral("\r\n") + span +
           QStringLiteral(">Have a wonderful birthday!</span></p>") + QStringLiteral("\r\n") +
           span + QStringLiteral(">Sincerely,</span></p>") + QStringLiteral("\r\n") + span +
           QStringLiteral(">Dr. ") + QStringLiteral("{Provider Full Name}") +
           QStringLiteral(" and staff &nbsp;&nbsp;</span></p></body>") +
           QStringLiteral("\r\n</html>\r\n");
}

}  // namespace

QString GetDefaultMessage(int type, int channel, bool confirmOnly, int language) {
    if (confirmOnly) {
        if (channel == kVoiceReminder && type == kAppointmentConfirmation)
            return language == kSpanish ? kDialToConfirmSpanish : kDialToConfirm;
        return {};
    }
    switch (channel) {
        case kTextMessage:
        case kPostCard:
            return EnglishWords(type);
        case kVoiceReminder:
            return language == kSpanish ? SpanishWords(type) : EnglishWords(type);
        case kEMail:
            if (type == kRecallReminder) {
                // The recall's page ends its words with a blank before the span closes.
                return SimplePage(RecallWords() + u' ');
            }
            if (type == kAppointmentConfirmation || type == kAppointmentReminder)
                return SimplePage(AppointmentWords());
            if (type == kBirthdayReminder)
                return BirthdayPage();
            if (type == kNewsLetter)
                return QStringLiteral("NewsLetter.RTF");
            return {};
        case kLetter:
            if (type == kBirthdayReminder)
                return QStringLiteral("Birthday.rtf");
            if (type == kNewsLetter)
                return QStringLiteral("NewsLetter.RTF");
            return {};
        default:
            return {};
    }
}

QString GetConfirmText(int lastStage, int stage, int channel, int language,
                       const QString& confirmationAddress) {
    if (channel == kVoiceReminder)
        return language == kSpanish ? kDialToConfirmSpanish : kDialToConfirm;
    if (stage > lastStage || lastStage < 1)
        return {};
    const QString link = confirmationAddress + QStringLiteral("{Appointment ID}");
    if (channel == kTextMessage)
        return QStringLiteral("Click to confirm") + kLineBreak + link;
    return QStringLiteral("Please call us at {Office Phone} or ") + QStringLiteral("<a href=\"") +
           link + QStringLiteral("\" style=\"color: blue\">Click Here</a>") +
           QStringLiteral(" to confirm your appointment.");
}

QString AddConfirmation(const QString& body, const QString& confirmation, int channel) {
    if (confirmation.isEmpty())
        return body;
    if (channel == kTextMessage || channel == kVoiceReminder)
        return body + kLineBreak + confirmation;
    if (channel == kEMail) {
        QString page = body;
        const qsizetype end = page.lastIndexOf(QStringLiteral("</body>"), -1, Qt::CaseInsensitive);
        if (end < 0)
            return page + confirmation + QStringLiteral("<br>");
        return page.insert(end, confirmation + QStringLiteral("<br>"));
    }
    return body;
}

}  // namespace orvo::reminders
