#include "tests/support/modal_driver.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace orvo::test {

ModalDriver::ModalDriver() {
    qApp->installEventFilter(this);
}
ModalDriver::~ModalDriver() {
    qApp->removeEventFilter(this);
}

void ModalDriver::On(const QString& name, Script script) {
    scripts_[name] = std::move(script);
}

int ModalDriver::handled(const QString& name) const {
    const auto it = handled_.find(name);
    return it == handled_.end() ? 0 : it->second;
}

bool ModalDriver::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (!dialog)
        return false;
    QString key =
        QString::fromLatin1(dialog->metaObject()->className()).section(QStringLiteral("::"), -1);
    if (!scripts_.count(key))
        key = dialog->objectName();
    if (!scripts_.count(key))
        return false;
    QPointer<QDialog> target(dialog);
    // Queued, so the script runs inside the dialog's own exec() loop.
    QTimer::singleShot(0, this, [this, target, key] {
        if (!target)
            return;
        ++handled_[key];
        scripts_[key](*target);
        if (target && target->isVisible())
            target->reject();
    });
    return false;
}

}  // namespace orvo::test
