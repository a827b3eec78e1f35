#include "insurance/insurance_log.h"

Q_LOGGING_CATEGORY(lcInsurance, "orvo.insurance")
