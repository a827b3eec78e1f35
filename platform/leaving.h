#pragma once

#include <QFocusEvent>

namespace orvo {

// True when a field's focus-out is the person leaving it. A prompt or another window coming up,
// or the window losing its turn as the active one, takes the focus away for a while and is not
// leaving the field.
inline bool IsLeaving(const QFocusEvent& event) {
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

}  // namespace orvo
