#pragma once

#include <QLoggingCategory>

// Errors the component caught at the boundary of a start method or entry point.
Q_DECLARE_LOGGING_CATEGORY(lcComponent)
