#pragma once

#include "platform/schema/schema.h"

namespace orvo::reminders {

// The recall masters of the practice database, and the eReminder tables that the second
// connection reaches: reminder masters, schedule stages, message bodies and contact sequences.
void DeclareReminderTables(schema::Catalog& catalog);

}  // namespace orvo::reminders
