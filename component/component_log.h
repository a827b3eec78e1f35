#pragma once

#include <QLoggingCategory>

// Errors the component caught at the boundary of a start method or entry point.
Q_DECLARE_LOGGING_CATEGORY(lcComponent)
// Record and table locks: taken, refused, left behind by a station that is gone.
Q_DECLARE_LOGGING_CATEGORY(lcLocks)
