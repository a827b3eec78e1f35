#include "tests/support/modal_driver.h"

#include <QDialog>
#include <QPointer>

namespace orvo::test {

ModalDriver::ModalDriver()
    : watcher_([this](QDialog& dialog) { return !ScriptName(dialog).isEmpty(); },
               [this](QDialog& dialog) {
                   const QString name = ScriptName(dialog);
                   if (name.isEmpty())
                       return;
                   ++handled_[name];
                   QPointer<QDialog> target(&dialog);
                   scripts_[name](dialog);
                   if (target && target->isVisible())
                       target->reject();
               }) {}

void ModalDriver::On(const QString& name, Script script) {
    scripts_[name] = std::move(script);
}

int ModalDriver::handled(const QString& name) const {
    const auto it = handled_.find(name);
    return it == handled_.end() ? 0 : it->second;
}

QString ModalDriver::ScriptName(const QDialog& dialog) const {
    const QString className =
        QString::fromLatin1(dialog.metaObject()->className()).section(QStringLiteral("::"), -1);
    if (scripts_.count(className))
        return className;
    if (scripts_.count(dialog.objectName()))
        return dialog.objectName();
    return {};
}

}  // namespace orvo::test
