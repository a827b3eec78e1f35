#include "platform/dialog_watcher.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace orvo {

DialogWatcher::DialogWatcher(Claim claim, Act act)
    : claim_(std::move(claim)), act_(std::move(act)) {
    qApp->installEventFilter(this);
}

DialogWatcher::~DialogWatcher() {
    qApp->removeEventFilter(this);
}

bool DialogWatcher::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (!dialog || !dialog->isWindow() || !claim_(*dialog))
        return false;
    QPointer<QDialog> target(dialog);
    // Queued: the dialog's exec() runs its own loop once it is shown, and the work runs in it.
    QTimer::singleShot(0, this, [this, target] {
        if (target)
            act_(*target);
    });
    return false;
}

}  // namespace orvo
