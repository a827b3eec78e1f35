#pragma once

#include <QString>

#include "platform/db/connection.h"

namespace orvo::host {

// Whether the login holds a right at the office location. SUPERVISOR holds every right. A
// login without it is refused in a message box when a message is given: a sentence as it
// stands, or the words of what is refused ("edit carriers").
bool CheckLoginRight(db::Connection& connection, const QString& login, int location,
                     const QString& rightKey, const QString& message);

}  // namespace orvo::host
