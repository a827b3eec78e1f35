#include "lists/person_delete_command.h"

#include <QFileInfo>

#include "component/record_lock.h"
#include "component/session.h"
#include "lists/affected_preview.h"
#include "lists/engines/provider_delete.h"
#include "lists/frm_tg_list.h"
#include "lists/lists_log.h"
#include "people/doc_list.h"
#include "people/person_record.h"
#include "platform/db/recordset.h"
#include "platform/file_lock.h"
#include "platform/prompts.h"

namespace orvo::lists {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kProviderTitle = QStringLiteral("Delete Provider");

QString RoleOf(GIC& gic, int id, const QString& column) {
    return db::ReadScalar(gic.GetConnection(), QStringLiteral("SELECT ") + column +
                                                   QStringLiteral(" FROM PATable WHERE pID = ") +
                                                   QString::number(id))
        .toString()
        .trimmed();
}

}  // namespace

PersonDeleteCommand::PersonDeleteCommand(GIC& gic, frmTGList& window)
    : gic_(gic), window_(window) {}

void PersonDeleteCommand::Delete_Person() {
    const int id = window_.CurrentID;
    const QString name = window_.LookupColumn(id, window_.NameField()).trimmed();
    switch (window_.ListType) {
        case lulFamilyHead:
            return Delete_Family_Head(id, name);
        case lulEmployee:
            return Delete_Employee(id, name);
        case lulProvider:
            return Delete_Provider(id, name);
        case lulReferral:
            return Delete_Role(id, name, QStringLiteral("pTypRef"));
        case lulPhysician1:
        case lulPhysician2:
        case lulReferInOut:
            return Delete_Role(id, name, QStringLiteral("pTypPhy"));
        default:
            return;
    }
}

void PersonDeleteCommand::Delete_Family_Head(int id, const QString& name) {
    const QString path = component::RecordLockPath(gic_, QStringLiteral("PATABLE"), id);
    if (QFileInfo::exists(path) && FileLock::IsHeldElsewhere(path)) {
        if (component::StationLockList(gic_, QStringLiteral("PATABLE"), id,
                                       component::kStationListFind) > 0) {
            prompts().Message(
                QStringLiteral("You cannot delete the patient you are currently editing,") +
                    QStringLiteral("\n\r") +
                    QStringLiteral("Please delete from the Patient Information Screen"),
                Buttons::Ok, Icon::Information, QStringLiteral("Edit Family Head Information"));
            return;
        }
        // Held at another station: its holder is named, and nothing is deleted.
        component::LockRecord(gic_, QStringLiteral("PATABLE"), id, true);
        return;
    }
    // The patient's delete rules belong to the family screen, which is not built yet.
    throw NotImplemented(QStringLiteral("Deleting a family head (") + name + QLatin1Char(')'));
}

void PersonDeleteCommand::Delete_Employee(int id, const QString& name) {
    if (RoleOf(gic_, id, QStringLiteral("pTypDoc")) == QLatin1String("1")) {
        prompts().Message(
            name + QStringLiteral(" is a provider and cannot be removed from the employee ") +
                QStringLiteral("list. This is because all service providers are considered ") +
                QStringLiteral("employees in ORVO Windows.") + kCrLf + kCrLf +
                QStringLiteral("If you still want to delete ") + name +
                QStringLiteral(", please use ") + QStringLiteral("the provider list instead."),
            Buttons::Ok, Icon::Information, QStringLiteral("Delete Employee"));
        return;
    }
    const QString text =
        QStringLiteral("For your protection, the ability to delete employees is only available ") +
        QStringLiteral(
            "on the Employee Editing Screen. On this screen, Supervisors have options "
            "to Delete and Terminate employment.") +
        kCrLf + kCrLf + QStringLiteral("Would you like to open the Employee Editing Screen now?");
    if (prompts().Message(text, Buttons::YesNo, Icon::Question,
                          QStringLiteral("Delete Employee")) == AnswerYes) {
        window_.Command_Edit();
    }
}

int PersonDeleteCommand::PickNewProvider(int oldId, const QString& name) {
    prompts().Message(
        QStringLiteral("Please select a new provider for patients' records and appointments "
                       "assigned to ") +
            name + QStringLiteral(" ..."),
        Buttons::Ok, Icon::Information, kProviderTitle);
    for (;;) {
        gic_.PutPersonTypeField(QStringLiteral("pTypDoc"));
        component::session().ListCommand = QStringLiteral("CANCEL_BUTTON");
        const QList<int> chosen = people::DocList::Run(gic_, &window_);
        if (chosen.isEmpty() || chosen.first() == 0)
            return 0;
        if (chosen.first() != oldId)
            return chosen.first();
        prompts().Message(QStringLiteral("You cannot select the provider you are deleting.") +
                              kCrLf + kCrLf +
                              QStringLiteral("Please select a different provider for patients "
                                             "currently assigned to ") +
                              name,
                          Buttons::Ok, Icon::Information, kProviderTitle);
    }
}

void PersonDeleteCommand::Delete_Provider(int id, const QString& name) {
    bool flag = false;
    if (!gic_.CheckRight(QStringLiteral("DELETE-PROVIDER"), QStringLiteral("delete providers"),
                         flag)) {
        return;
    }
    const int practice = gic_.ReadSetting(QStringLiteral("DEFAULT_OFFICE_SETUP"),
                                          QStringLiteral("OFF_PRA_PRO"), 0, 0)
                             .toInt();
    const bool isPractice = practice != 0 && practice == id;
    const bool isDefault = gic_.GetDefaultProviderID() == id;
    if (isPractice || isDefault) {
        const QString what = isPractice && isDefault
                                 ? QStringLiteral("Practice Provider and the Default Provider")
                             : isDefault ? QStringLiteral("Default Provider")
                                         : QStringLiteral("Practice Provider");
        prompts().Message(
            QStringLiteral("Cannot delete selected provider from the Provider List because ") +
                name + QStringLiteral(" is setup") + kCrLf + QStringLiteral("as the ") + what +
                kCrLf + kCrLf + QStringLiteral("In order to delete ") + name +
                QStringLiteral(", please change the ") + what + kCrLf +
                QStringLiteral("from the Office Setup Screen first."),
            Buttons::Ok, Icon::Warning, kProviderTitle);
        return;
    }
    // The host's delete prompt: a question of Yes and No with this text.
    if (!gic_.AskYesNo(false, kProviderTitle,
                       QStringLiteral("Do you wish to delete the selected provider?") + kCrLf +
                           QStringLiteral("By deleting this provider, the program will also "
                                          "delete the appointment templates for this provider."))) {
        return;
    }
    const int newId = PickNewProvider(id, name);
    if (newId == 0)
        return;
    const QString newName = gic_.GetPersonName(newId, QStringLiteral(" "), QString()).trimmed();
    if (!ConfirmAffected(gic_, &window_, kProviderTitle, PatientsOfProvider(gic_, id),
                         QObject::tr("given to %1").arg(newName), true)) {
        return;
    }
    lists::Delete_Provider(gic_, id, newId);
    qCInfo(lcLists).noquote() << "Provider" << id << "deleted; patients to" << newId;
    if (RoleOf(gic_, id, QStringLiteral("pTypEmp")) == QLatin1String("1")) {
        prompts().Message(
            name + QStringLiteral(" has been removed from the provider list.") + kCrLf + kCrLf +
                QStringLiteral("For your protection, the ability to delete employees is only "
                               "available ") +
                QStringLiteral("on the Employee Editing Screen.") + kCrLf + kCrLf +
                QStringLiteral("To remove this provider from your employee database as well, "
                               "please open ") +
                QStringLiteral("the Employee Editing Screen for this person and select either "
                               "'Delete' or 'Terminate'."),
            Buttons::Ok, Icon::Information, QStringLiteral("Employee Provider"));
    }
    window_.CurrentID = 0;
    window_.SetSQL(window_.SQL());
}

void PersonDeleteCommand::Delete_Role(int id, const QString& name, const QString& roleColumn) {
    if (!gic_.AskYesNo(
            false, window_.windowTitle(),
            QStringLiteral("Do you wish to remove ") + name + QStringLiteral(" from this list?"))) {
        return;
    }
    people::SetPersonType(gic_, id, roleColumn, QStringLiteral("Z"));
    window_.CurrentID = 0;
    window_.SetSQL(window_.SQL());
}

}  // namespace orvo::lists
