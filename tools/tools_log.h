#pragma once

#include <QLoggingCategory>

// The small tools: the city, state and zip engine and its panel.
Q_DECLARE_LOGGING_CATEGORY(lcTools)
