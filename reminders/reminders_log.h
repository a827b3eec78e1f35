#pragma once

#include <QLoggingCategory>

// Recalls and reminders: the reminder store and the message editors.
Q_DECLARE_LOGGING_CATEGORY(lcReminders)
