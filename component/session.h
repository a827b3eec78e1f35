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

// Upper-cases the first letter and every letter after a blank, after trimming the blanks at
// either end; the other letters stay as they are.
QString CapitalizeWords(const QString& text);

// The number a text starts with, as the suite reads an id out of a command: leading blanks and a
// sign are taken, reading stops at the first other character, and no number at all is 0.
int Val(const QString& text);

// The host's main window: asked of GIC while none is known, then kept.
QWidget* GetMainWindow();

// The preamble of every start method: while the host has no main window, it takes startForm.
void BindMainWindow(QWidget* startForm);

}  // namespace orvo::component
