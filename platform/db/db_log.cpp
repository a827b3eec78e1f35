#include "platform/db/db_log.h"

Q_LOGGING_CATEGORY(lcDb, "orvo.db")
Q_LOGGING_CATEGORY(lcSql, "orvo.sql")
