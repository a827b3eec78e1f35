#pragma once

#include <QString>
#include <functional>

namespace orvo {

// The boundary of one thing a person asked for: a button, a menu command, a key, a start method.
// Whatever error the action throws (a database error, a row another station deleted, something
// not built yet, any other) is logged, shown through the prompts service under `title`, and
// goes no further: the window it came from stays usable and the event loop never sees it.
// Answers true when the action ran to its end.
bool RunUserAction(const QString& title, const std::function<void()>& action);

}  // namespace orvo
