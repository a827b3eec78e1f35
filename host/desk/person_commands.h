#pragma once

class QMenu;
class QMenuBar;

namespace orvo::host {

class MainWindow;

// The commands on persons that the main window offers: for now "Find a Patient", find-or-add
// among the patients and the patient screen on the one taken. They go under the Patients menu,
// which is made when there is none yet.
void AddPersonCommands(QMenuBar& menus, MainWindow& window);

// The Patients menu of the menu bar, made when there is none yet.
QMenu& PatientsMenu(QMenuBar& menus);

}  // namespace orvo::host
