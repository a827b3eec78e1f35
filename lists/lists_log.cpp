#include "lists/lists_log.h"

Q_LOGGING_CATEGORY(lcLists, "orvo.lists")
