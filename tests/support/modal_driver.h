#pragma once

#include <QString>
#include <functional>
#include <map>

#include "platform/dialog_watcher.h"

class QDialog;

namespace orvo::test {

// Drives modal dialogs the way a person would: when a dialog of a given class (or object name)
// is shown, its script runs against it once the dialog's event loop is up. A script that leaves
// the dialog open has it closed with reject(), so that a test never hangs on a modal show.
class ModalDriver {
public:
    using Script = std::function<void(QDialog&)>;

    ModalDriver();

    // Runs script for every dialog whose class name (QMetaObject) or object name is `name`.
    void On(const QString& name, Script script);
    // How many dialogs each script has handled.
    int handled(const QString& name) const;

private:
    // The name a script is kept under for this dialog; empty when none is.
    QString ScriptName(const QDialog& dialog) const;

    std::map<QString, Script> scripts_;
    std::map<QString, int> handled_;
    DialogWatcher watcher_;
};

}  // namespace orvo::test
