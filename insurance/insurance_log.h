#pragma once

#include <QLoggingCategory>

// Carriers, pharmacies and the coverage chain.
Q_DECLARE_LOGGING_CATEGORY(lcInsurance)
