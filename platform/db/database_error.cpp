#include "platform/db/database_error.h"

namespace orvo::db {

DatabaseError::DatabaseError(const QString& driverMessage, const QString& statement)
    : std::runtime_error((driverMessage + QStringLiteral("\n") + statement).toStdString()),
      driverMessage_(driverMessage),
      statement_(statement) {}

QString DatabaseError::describe() const {
    return driverMessage_ + QStringLiteral("\n\nStatement:\n") + statement_;
}

RowNotFoundError::RowNotFoundError(const QString& statement)
    : DatabaseError(QStringLiteral("The record is no longer in the database; another station may "
                                   "have deleted it."),
                    statement) {}

}  // namespace orvo::db
