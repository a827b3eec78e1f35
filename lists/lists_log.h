#pragma once

#include <QLoggingCategory>

// The list windows.
Q_DECLARE_LOGGING_CATEGORY(lcLists)
