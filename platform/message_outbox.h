#pragma once

#include <QString>

namespace orvo {

// Sends a message out of the practice: a text message to a cell phone number, or an e-mail.
class MessageSender {
public:
    virtual ~MessageSender() = default;
    // True when the message went; else false with a reason in `problem`.
    virtual bool SendTextMessage(const QString& cellPhone, const QString& text,
                                 QString& problem) = 0;
    virtual bool SendEMail(const QString& address, const QString& subject, const QString& html,
                           QString& problem) = 0;
};

// Hands each message to the practice's outbox folder as a standard file for the sending
// program to pick up: an Internet mail message (.eml) for e-mail, a text file (.txt) named
// after the number for a text message. With a mail transfer command (as "/usr/sbin/sendmail
// -t -i"), an e-mail goes to the command's standard input instead.
class OutboxSender : public MessageSender {
public:
    OutboxSender(QString outboxFolder, QString fromAddress, QString mailCommand = QString());

    bool SendTextMessage(const QString& cellPhone, const QString& text, QString& problem) override;
    bool SendEMail(const QString& address, const QString& subject, const QString& html,
                   QString& problem) override;

    // The Internet mail message of an e-mail: headers, and the HTML in base64 as UTF-8.
    static QByteArray MailMessage(const QString& from, const QString& to, const QString& subject,
                                  const QString& html);

private:
    bool WriteFile(const QString& name, const QByteArray& bytes, QString& problem);

    QString folder_;
    QString from_;
    QString command_;
};

// Whether a text is an e-mail address a message can go to: one "@", a name before it, a
// domain with a dot after it, no blanks.
bool IsValidEMailAddress(const QString& address);
// The digits of a typed phone number.
QString PhoneDigits(const QString& text);

}  // namespace orvo
