#pragma once

#include <QString>
#include <stdexcept>

namespace orvo::db {

// A failed database call: the driver's message and the statement as it was sent.
class DatabaseError : public std::runtime_error {
public:
    DatabaseError(const QString& driverMessage, const QString& statement);

    const QString& driverMessage() const { return driverMessage_; }
    const QString& statement() const { return statement_; }
    // Message and statement together, as shown to the user and written to the log.
    QString describe() const;

private:
    QString driverMessage_;
    QString statement_;
};

}  // namespace orvo::db
