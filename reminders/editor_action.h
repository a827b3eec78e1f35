#pragma once

#include <functional>

namespace orvo::reminders {

// Runs what a button or a change in an editor does: a database error or an operation the host
// has not built is logged and shown, and the editor stays usable. False when it failed.
bool RunEditorAction(const std::function<void()>& action);

}  // namespace orvo::reminders
