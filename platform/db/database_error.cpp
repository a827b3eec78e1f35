#include "platform/db/database_error.h"

namespace orvo::db {

DatabaseError::DatabaseError(const QString& driverMessage, const QString& statement)
    : std::runtime_error((driverMessage + QStringLiteral("\n") + statement).toStdString()),
      driverMessage_(driverMessage),
      statement_(statement) {}

QString DatabaseError::describe() const {
    return driverMessage_ + QStringLiteral("\n\nStatement:\n") + statement_;
}

}  // namespace orvo::db
