#pragma once

#include <QMainWindow>

#include "host/list_events.h"

class QLabel;
class QTableWidget;

namespace orvo::host {

class ComponentLoader;
class HostGIC;
struct HostSession;

// The host's main window: what the practice holds at a glance, and the menu commands that open
// the component's screens.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(HostSession& session, HostGIC& gic, ComponentLoader& component);
    ~MainWindow() override;

    // Re-reads the figures shown.
    void Refresh();
    // Builds the list of family heads anew from the persons, for a list that went astray.
    void RebuildFamilyHeads();

    // Runs a start method of the component by its name (see host/start_methods.h) with its first
    // argument as text (for the carrier screens an id, or "NEW" and a name), the others left to
    // their defaults, and answers the result it gives back. An unknown method throws.
    QString RunStartMethod(const QString& method, const QString& text);
    // The same with the method's arguments one by one; answers all it gave back.
    QStringList RunStartMethodWith(const QString& method, const QStringList& args);

private:
    void BuildMenus();
    // Asks for an id or a name, runs the start method, and tells what came back.
    void OpenFromMenu(const QString& method, bool asNew, const QString& noun);
    // Shows a list of the component, modal; its events go to the status bar and the log.
    void OpenList(int listType);

    HostSession& session_;
    HostGIC& gic_;
    ComponentLoader& component_;
    QTableWidget* summary_ = nullptr;
    HostListEvents listEvents_;
};

}  // namespace orvo::host
