#include "component/surface/editing_screen_instance.h"

#include "component/command_text.h"
#include "component/component_log.h"
#include "component/public/component_error.h"
#include "component/public/gic.h"
#include "component/session.h"
#include "component/start_sequence.h"
#include "insurance/build_new_command.h"
#include "insurance/ins_screen.h"
#include "people/frm_contact.h"

namespace orvo::component {
namespace {

[[noreturn]] void NotYet(const char* method) {
    throw NotImplemented(QStringLiteral("EditingScreen.") + QString::fromLatin1(method));
}

}  // namespace

EditingScreenInstance::EditingScreenInstance() {
    ++session().EditingInstanceCount;
}

EditingScreenInstance::~EditingScreenInstance() {
    frmOwner_ = nullptr;
    startForm_ = nullptr;
    Session& state = session();
    --state.EditingInstanceCount;
    if (state.EditingInstanceCount >= 1 || !state.gic)
        return;
    try {
        state.gic->SetMainForm(nullptr);
    } catch (const std::exception& error) {
        qCWarning(lcComponent) << "Clearing the main window in GIC failed:" << error.what();
    }
}

StartContext EditingScreenInstance::StartContextFor(const char* method) {
    StartContext context;
    context.method = QStringLiteral("EditingScreen.") + QString::fromLatin1(method);
    context.owner = frmOwner_;
    context.startForm = startForm_;
    context.objParent = &relay_;
    return context;
}

bool EditingScreenInstance::Edit_AdjustPlan_Info(int&, int&, int&, QString&, Currency&, Currency&,
                                                 Currency&, float&, Currency&, Currency&, Currency&,
                                                 bool) {
    NotYet("Edit_AdjustPlan_Info");
}

bool EditingScreenInstance::Edit_PPO_Adjustment() {
    NotYet("Edit_PPO_Adjustment");
}

int EditingScreenInstance::Select_Coverage(int, bool, int) {
    NotYet("Select_Coverage");
}

bool EditingScreenInstance::Edit_Patient_Coverage(int) {
    NotYet("Edit_Patient_Coverage");
}

bool EditingScreenInstance::Location_Edit_Screen() {
    NotYet("Location_Edit_Screen");
}

bool EditingScreenInstance::PatientLocation_Setup(int) {
    NotYet("PatientLocation_Setup");
}

bool EditingScreenInstance::LoginLocation_Setup(int) {
    NotYet("LoginLocation_Setup");
}

bool EditingScreenInstance::SetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("SetPrinter");
}

bool EditingScreenInstance::GetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("GetPrinter");
}

void EditingScreenInstance::Show_InsPlan_Screen(int, int, int, const QString&, int) {
    NotYet("Show_InsPlan_Screen");
}

void EditingScreenInstance::Employer_Start(QString&, int&, int&, QString&, int&, int&,
                                           EmployerStartTab, bool) {
    NotYet("Employer_Start");
}

void EditingScreenInstance::Grp_Plan_Start(QString&, int&, int&) {
    NotYet("Grp_Plan_Start");
}

void EditingScreenInstance::Recall_Master_Start(QString&, int&) {
    NotYet("Recall_Master_Start");
}

void EditingScreenInstance::Ins_Company_Start(QString& Ins_Com_ID_Num, int& InsCoID) {
    StartCarrierScreen("Ins_Company_Start", false, Ins_Com_ID_Num, InsCoID);
}

void EditingScreenInstance::Pharmacy_Start(QString& sPhaID, int& PhaID) {
    StartCarrierScreen("Pharmacy_Start", true, sPhaID, PhaID);
}

// One screen edits carriers and pharmacies; the flag given to Setup_Screen picks the table.
void EditingScreenInstance::StartCarrierScreen(const char* method, bool pharmacy, QString& text,
                                               int& id) {
    GIC& gic = RequireGIC(method);
    gic.PutCarrierSearchText(text);
    StartScreen<insurance::insScreen>(
        StartContextFor(method), [&gic] { return std::make_unique<insurance::insScreen>(gic); },
        [&](insurance::insScreen& screen) {
            if (text.startsWith(QLatin1String("NEW"))) {
                screen.Setup_Screen(pharmacy, insurance::BuildNewCommand(text), 0);
            } else {
                screen.Setup_Screen(pharmacy, QString(), Val(text));
            }
        },
        [&](insurance::insScreen&) { id = gic.GetSavedRecordID(); }, text, id);
}

GIC& EditingScreenInstance::RequireGIC(const char* method) {
    GIC* gic = session().gic;
    if (!gic) {
        throw ComponentError(
            QStringLiteral("EditingScreen.%1 needs the host object: set IGlobal_GIC first.")
                .arg(QLatin1String(method)));
    }
    return *gic;
}

void EditingScreenInstance::Load_PatInfo_Small(int&, QString&, bool*) {
    NotYet("Load_PatInfo_Small");
}

void EditingScreenInstance::PaTable_Edit_Start(QString&, QString&) {
    NotYet("PaTable_Edit_Start");
}

bool EditingScreenInstance::eReminder_PersonalSetup(int) {
    NotYet("eReminder_PersonalSetup");
}

bool EditingScreenInstance::Contact_Start(int PatientID, int SetupTab) {
    if (PatientID == 0)
        return false;
    GIC& gic = RequireGIC("Contact_Start");
    bool changed = false;
    StartScreen<people::frmContact>(
        StartContextFor("Contact_Start"),
        [&gic] { return std::make_unique<people::frmContact>(gic); },
        [&](people::frmContact& screen) {
            screen.PatientID = PatientID;
            screen.SetupTab = SetupTab;
            screen.Setup_Screen();
        },
        [&](people::frmContact& screen) { changed = screen.ChangeMade; });
    return changed;
}

}  // namespace orvo::component
