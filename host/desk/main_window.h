#pragma once

#include <QMainWindow>

class QLabel;
class QTableWidget;

namespace orvo {
class EditingScreen;
}

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

    // Runs a start method of the component by its name ("Ins_Company_Start",
    // "Pharmacy_Start") with its text argument (an id, or "NEW" and a name) and answers the id
    // it gives back. An unknown method throws.
    int RunStartMethod(const QString& method, const QString& text);

private:
    void BuildMenus();
    // Asks for an id or a name, runs the start method, and tells what came back.
    void OpenFromMenu(const QString& method, bool asNew, const QString& noun);
    // Creates an editing screen instance bound to this host.
    std::unique_ptr<EditingScreen> NewEditingScreen();

    HostSession& session_;
    HostGIC& gic_;
    ComponentLoader& component_;
    QTableWidget* summary_ = nullptr;
};

}  // namespace orvo::host
