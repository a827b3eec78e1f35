#include "component/surface/lookup_list_instance.h"

#include "component/public/component_error.h"
#include "component/public/gic.h"
#include "component/session.h"
#include "component/surface/editing_screen_instance.h"
#include "lists/frm_tg_list.h"
#include "lists/list_setup.h"
#include "platform/user_action.h"

namespace orvo::component {
namespace {

[[noreturn]] void NotYet(const char* method) {
    throw NotImplemented(QStringLiteral("LookUpList.") + QString::fromLatin1(method));
}

}  // namespace

LookUpListInstance::LookUpListInstance() = default;

LookUpListInstance::~LookUpListInstance() {
    delete persistent_.data();
}

lists::frmTGList* LookUpListInstance::Window() const {
    return window_.data();
}

std::unique_ptr<EditingScreen> LookUpListInstance::NewEditingScreen(QWidget* owner) {
    auto screen = std::make_unique<EditingScreenInstance>();
    screen->SetfrmOwner(owner);
    screen->SetStartForm(startForm_);
    screen->SetImaList(imaList_);
    return screen;
}

void LookUpListInstance::ShowList(bool InsLLCanMultiSel) {
    GIC* gic = session().gic;
    if (!gic) {
        throw ComponentError(
            QStringLiteral("LookUpList.ShowList needs the host object: set IGlobal_GIC first."));
    }
    BindMainWindow(startForm_);
    multiSel_ = InsLLCanMultiSel ? 1 : 0;
    const QString title = LookUpListTitle(listType_);
    RunUserAction(listTitle_.isEmpty() ? title : listTitle_, [this] { RunShowList(); });
}

// ShowMode 0 shows the persistent window modeless; any other mode a window made for the call,
// modal, which goes when the call ends.
void LookUpListInstance::RunShowList() {
    GIC& gic = *session().gic;
    if (!LookUpListPersonTypeField(listType_).isEmpty())
        gic.PutPersonTypeField(LookUpListPersonTypeField(listType_));
    QWidget* owner = frmOwner_ ? frmOwner_.data() : startForm_.data();
    lists::frmTGList* window = nullptr;
    if (showMode_ == 0) {
        if (!persistent_)
            persistent_ = new lists::frmTGList(gic, *this, owner);
        window = persistent_;
    } else {
        window = new lists::frmTGList(gic, *this, owner);
    }
    window_ = window;
    struct Dropped {
        QPointer<lists::frmTGList> window;
        bool fresh;
        ~Dropped() {
            if (fresh)
                delete window.data();
        }
    } dropped{window, showMode_ != 0};

    lists::ListRequest request;
    request.ListType = listType_;
    request.Skip_List_IF_New = skipListIfNew_;
    request.ShowMode = showMode_;
    request.InitField = initField_;
    request.MultiSel = multiSel_;
    request.No_Double_Click = noDoubleClick_;
    request.bSelectMode = selectMode_;
    request.ShowFacilityOptions = showFacilityOptions_;
    request.frmOwner = frmOwner_;
    request.StartForm = startForm_;
    request.ListTitle = listTitle_;
    request.SelectedID = selectedID_;
    request.ShowPatientButtons = showPatientButtons_;
    request.GroupPlanCompanyID = groupPlanCompanyID_;
    request.EmployerPatientID = employerPatientID_;
    request.FamHeadIncPatID = famHeadIncPatID_;
    request.NewEmployeePasswordID = newEmployeePasswordID_;
    request.AllowDelete = allowDelete_;
    if (showMode_ == 0) {
        // The modeless window hands its choice back when it closes.
        QObject::disconnect(window, &QDialog::finished, nullptr, nullptr);
        QObject::connect(window, &QDialog::finished, window, [this, window] {
            selectedID_ = window->SelectedID;
            selectString_ = window->Select_String;
        });
    }
    listTitle_ = lists::RunListSetup(gic, request, *window);
    if (showMode_ != 0 || !window->isVisible()) {
        selectedID_ = request.SelectedID;
        selectString_ = request.Select_String;
    }
}

bool LookUpListInstance::SetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("SetPrinter");
}

bool LookUpListInstance::GetPrinter(QByteArray&, QByteArray&, QByteArray&) {
    NotYet("GetPrinter");
}

}  // namespace orvo::component
