#pragma once

#include <QLoggingCategory>

// The database layer's messages: every failed statement (orvo.db), and statements the
// translation could not read and passed on as they came (orvo.sql).
Q_DECLARE_LOGGING_CATEGORY(lcDb)
Q_DECLARE_LOGGING_CATEGORY(lcSql)
