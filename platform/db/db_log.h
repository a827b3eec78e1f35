#pragma once

#include <QLoggingCategory>

// The database layer's messages: every failed statement (orvo.db; its debug messages, off unless
// asked for, name the statement shapes that are translated whole or run as text each time), and
// statements the translation could not read and passed on as they came (orvo.sql).
Q_DECLARE_LOGGING_CATEGORY(lcDb)
Q_DECLARE_LOGGING_CATEGORY(lcSql)
