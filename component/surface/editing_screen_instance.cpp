#include "component/surface/editing_screen_instance.h"

#include "component/command_text.h"
#include "component/component_log.h"
#include "component/find_record.h"
#include "component/public/component_error.h"
#include "component/public/gic.h"
#include "component/session.h"
#include "component/start_sequence.h"
#include "component/surface/lookup_list_instance.h"
#include "insurance/build_new_command.h"
#include "insurance/ins_screen.h"
#include "people/find_person.h"
#include "people/frm_contact.h"
#include "people/pat_screen_sm.h"

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

// The small patient screen. A start string "FIND" (and a name to search for) with no person
// first runs find-or-add among the patients: the person taken opens, a new one starts with the
// names typed, and a search given up opens nothing.
void EditingScreenInstance::Load_PatInfo_Small(int& l_ID, QString& s_ID, bool* GoToQuickAppoint) {
    GIC& gic = RequireGIC("Load_PatInfo_Small");
    int person = l_ID;
    QString start = s_ID;
    if (person == 0 && start.startsWith(QLatin1String("FIND"))) {
        const people::FoundPerson found =
            people::Find_Person(gic, QStringLiteral("PTYPPAT"), start.mid(4).trimmed(), false);
        if (found.answer == kFindCancel)
            return;
        person = found.pID;
        start = found.answer == QLatin1String("NEW")
                    ? QStringLiteral("NEW") + found.lastName + QLatin1Char('\n') + found.firstName
                    : QString();
    }
    bool book = GoToQuickAppoint && *GoToQuickAppoint;
    gic.PutPatientID(person);
    session().ListCommand = start;
    // Only OK and save-and-book ask for booking; a request left from an earlier call is none.
    gic.SetBookAppointmentRequest(false);
    StartScreen<people::patScreen_SM>(
        StartContextFor("Load_PatInfo_Small"),
        [&gic] { return std::make_unique<people::patScreen_SM>(gic); },
        [&](people::patScreen_SM& screen) {
            screen.ShowReferralList = [](QWidget* owner, int current) {
                return ChooseFromList(lulReferral, owner, current);
            };
            screen.Setup_Screen(gic.GetPatientID(), session().ListCommand);
            screen.SetShowSaveNBookAppt(book);
        },
        [&](people::patScreen_SM&) {
            l_ID = gic.GetPatientID();
            book = gic.GetGoToQuickAppoint();
        },
        l_ID);
    if (GoToQuickAppoint)
        *GoToQuickAppoint = book;
}

// A list of the component shown modal over owner to pick one record: the id chosen, 0 when none
// was, or the list was left on current.
int EditingScreenInstance::ChooseFromList(LookUpListTypes type, QWidget* owner, int current) {
    LookUpListInstance list;
    list.SetfrmOwner(owner);
    list.SetListType(type);
    list.SetShowMode(1);
    list.SetbSelectMode(true);
    list.SetSelectedID(current);
    list.ShowList(false);
    return list.SelectedID() == current ? 0 : list.SelectedID();
}

void EditingScreenInstance::PaTable_Edit_Start(QString&, QString&) {
    NotYet("PaTable_Edit_Start");
}

bool EditingScreenInstance::eReminder_PersonalSetup(int) {
    NotYet("eReminder_PersonalSetup");
}

}  // namespace orvo::component
