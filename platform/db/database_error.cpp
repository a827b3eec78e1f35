#include "platform/db/database_error.h"

#include <QRegularExpression>
#include <QSqlError>

namespace orvo::db {

QString DriverMessage(const QSqlError& error) {
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.driverText().trimmed();
    if (text.isEmpty())
        text = error.text().trimmed();
    return text;
}

QString HidePasswords(const QString& text) {
    static const QRegularExpression keyValue(
        QStringLiteral(R"((\b(?:password|pgpassword)\s*=\s*)('(?:[^'\\]|\\.)*'?|[^\s;]*))"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression uri(
        QStringLiteral(R"((\b[a-z][a-z0-9+.-]*://[^:/@\s]*:)[^@\s]*@)"),
        QRegularExpression::CaseInsensitiveOption);
    QString masked = text;
    masked.replace(keyValue, QStringLiteral("\\1*****"));
    masked.replace(uri, QStringLiteral("\\1*****@"));
    return masked;
}

DatabaseError::DatabaseError(const QString& driverMessage, const QString& statement)
    : std::runtime_error(
          HidePasswords(driverMessage + QStringLiteral("\n") + statement).toStdString()),
      driverMessage_(HidePasswords(driverMessage)),
      statement_(HidePasswords(statement)) {}

QString DatabaseError::describe() const {
    return driverMessage_ + QStringLiteral("\n\nStatement:\n") + statement_;
}

RowNotFoundError::RowNotFoundError(const QString& statement)
    : DatabaseError(QStringLiteral("The record is no longer in the database; another station may "
                                   "have deleted it."),
                    statement) {}

}  // namespace orvo::db
