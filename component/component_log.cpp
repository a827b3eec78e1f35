#include "component/component_log.h"

Q_LOGGING_CATEGORY(lcComponent, "orvo.component")
Q_LOGGING_CATEGORY(lcLocks, "orvo.locks")
