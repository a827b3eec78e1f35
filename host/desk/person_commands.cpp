#include "host/desk/person_commands.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "host/desk/main_window.h"
#include "platform/prompts.h"
#include "platform/user_action.h"

namespace orvo::host {
namespace {

// Find-or-add among the patients, then the patient screen on the one taken (or the new one).
void FindPatient(MainWindow& window) {
    const QString title = QObject::tr("Find a Patient");
    RunUserAction(title, [&] {
        const QStringList results = window.RunStartMethodWith(
            QStringLiteral("Load_PatInfo_Small"), {QStringLiteral("0"), QStringLiteral("FIND")});
        const QString id = results.value(0);
        window.statusBar()->showMessage(id == QLatin1String("0")
                                            ? QObject::tr("No patient saved")
                                            : QObject::tr("Patient %1").arg(id));
    });
}

}  // namespace

QMenu& PatientsMenu(QMenuBar& menus) {
    for (QAction* action : menus.actions()) {
        QMenu* menu = action->menu();
        if (menu && menu->objectName() == QLatin1String("mnuPatients"))
            return *menu;
    }
    QMenu* menu = menus.addMenu(QObject::tr("&Patients"));
    menu->setObjectName(QStringLiteral("mnuPatients"));
    return *menu;
}

void AddPersonCommands(QMenuBar& menus, MainWindow& window) {
    PatientsMenu(menus).addAction(QObject::tr("&Find a Patient..."), &window,
                                  [&window] { FindPatient(window); });
}

}  // namespace orvo::host
