#include "component/component_log.h"

Q_LOGGING_CATEGORY(lcComponent, "orvo.component")
