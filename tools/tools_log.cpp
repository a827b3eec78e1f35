#include "tools/tools_log.h"

Q_LOGGING_CATEGORY(lcTools, "orvo.tools")
