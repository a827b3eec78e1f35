#include "reminders/reminders_log.h"

Q_LOGGING_CATEGORY(lcReminders, "orvo.reminders")
