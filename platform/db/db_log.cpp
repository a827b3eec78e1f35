#include "platform/db/db_log.h"

Q_LOGGING_CATEGORY(lcDb, "orvo.db", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSql, "orvo.sql")
