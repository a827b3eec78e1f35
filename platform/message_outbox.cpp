#include "platform/message_outbox.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSaveFile>
#include <QUuid>

namespace orvo {
namespace {

// A header value with characters beyond ASCII, as an encoded word.
QByteArray HeaderText(const QString& text) {
    bool plain = true;
    for (const QChar c : text)
        plain = plain && c.unicode() >= 0x20 && c.unicode() < 0x7f;
    if (plain)
        return text.toLatin1();
    return "=?UTF-8?B?" + text.toUtf8().toBase64() + "?=";
}

QString Stamp() {
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmsszzz"));
}

}  // namespace

OutboxSender::OutboxSender(QString outboxFolder, QString fromAddress, QString mailCommand)
    : folder_(std::move(outboxFolder)),
      from_(std::move(fromAddress)),
      command_(std::move(mailCommand)) {}

bool OutboxSender::WriteFile(const QString& name, const QByteArray& bytes, QString& problem) {
    if (!QDir().mkpath(folder_)) {
        problem = QStringLiteral("The outbox folder %1 cannot be made.").arg(folder_);
        return false;
    }
    // Written aside and renamed into place, so that the sending program never picks up half a
    // message.
    QSaveFile file(QDir(folder_).filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        problem = file.errorString();
        return false;
    }
    return true;
}

bool OutboxSender::SendTextMessage(const QString& cellPhone, const QString& text,
                                   QString& problem) {
    const QString digits = PhoneDigits(cellPhone);
    if (digits.isEmpty()) {
        problem = QStringLiteral("No cell phone number.");
        return false;
    }
    return WriteFile(digits + u'-' + Stamp() + QStringLiteral(".txt"), text.toUtf8(), problem);
}

QByteArray OutboxSender::MailMessage(const QString& from, const QString& to, const QString& subject,
                                     const QString& html) {
    QByteArray message;
    message += "From: " + from.toLatin1() + "\r\n";
    message += "To: " + to.toLatin1() + "\r\n";
    message += "Subject: " + HeaderText(subject) + "\r\n";
    message +=
        "Date: " + QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1() + "\r\n";
    const QString domain = from.section(u'@', 1);
    message += "Message-ID: <" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1() +
               "@" + (domain.isEmpty() ? QByteArray("localhost") : domain.toLatin1()) + ">\r\n";
    message += "MIME-Version: 1.0\r\n";
    message += "Content-Type: text/html; charset=UTF-8\r\n";
    message += "Content-Transfer-Encoding: base64\r\n\r\n";
    const QByteArray body = html.toUtf8().toBase64();
    for (qsizetype i = 0; i < body.size(); i += 76)
        message += body.mid(i, 76) + "\r\n";
    return message;
}

bool OutboxSender::SendEMail(const QString& address, const QString& subject, const QString& html,
                             QString& problem) {
    if (!IsValidEMailAddress(address)) {
        problem = QStringLiteral("The address %1 cannot take mail.").arg(address);
        return false;
    }
    const QByteArray message = MailMessage(from_, address, subject, html);
    if (command_.trimmed().isEmpty())
        return WriteFile(Stamp() + QStringLiteral(".eml"), message, problem);

    QStringList arguments = QProcess::splitCommand(command_);
    const QString program = arguments.takeFirst();
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted(10000)) {
        problem = QStringLiteral("%1 could not be started: %2").arg(program, process.errorString());
        return false;
    }
    process.write(message);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        problem =
            QStringLiteral("%1 did not take the message: %2")
                .arg(program, QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
        return false;
    }
    return true;
}

bool IsValidEMailAddress(const QString& address) {
    static const QRegularExpression valid(
        QStringLiteral(R"(^[^@\s<>(),;:"\[\]]+@[^@\s<>(),;:"\[\]]+\.[^@\s<>(),;:"\[\].]{2,}$)"));
    return valid.match(address).hasMatch() && !address.contains(QStringLiteral(".."));
}

QString PhoneDigits(const QString& text) {
    QString digits;
    for (const QChar c : text) {
        if (c.isDigit() && c.unicode() < 128)
            digits += c;
    }
    return digits;
}

}  // namespace orvo
