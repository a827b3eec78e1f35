#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

namespace orvo {
class GIC;
}

namespace orvo::component {

// What the component holds once for all its instances. Modal screens nest, so whatever a start
// method needs of it is read at once and kept in its own locals.
struct Session {
    // The four host objects of the IGlobal properties. Only GIC is ever called.
    QPointer<QObject> DAC;
    GIC* gic = nullptr;
    QPointer<QObject> GC;
    QPointer<QObject> PV;
    // Live EditingScreen instances; the last one to go clears the main window in GIC.
    int EditingInstanceCount = 0;
    // Live instances of either class, which keep the library loaded.
    int LiveInstanceCount = 0;
    // The host's main window, fetched once from GIC.
    QPointer<QWidget> MainForm;
    // The command of the list window in progress.
    QString ListCommand;
};

Session& session();

// The host's main window: asked of GIC while none is known, then kept.
QWidget* GetMainWindow();

// The preamble of every start method: while the host has no main window, it takes startForm.
void BindMainWindow(QWidget* startForm);

}  // namespace orvo::component
