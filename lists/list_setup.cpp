#include "lists/list_setup.h"

#include "component/session.h"
#include "component/start_sequence.h"
#include "lists/frm_tg_list.h"
#include "lists/list_definitions.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"

namespace orvo::lists {
namespace {

// The wait banner for the time of a scope.
class Banner {
public:
    explicit Banner(const QString& text) : shown_(!text.isEmpty()) {
        if (shown_)
            prompts().ShowBanner(text);
    }
    ~Banner() { Hide(); }
    void Hide() {
        if (shown_)
            prompts().HideBanner();
        shown_ = false;
    }
    Banner(const Banner&) = delete;
    Banner& operator=(const Banner&) = delete;

private:
    bool shown_;
};

QStringList Specialties(GIC& gic) {
    QStringList values;
    for (db::Recordset rs(gic.GetConnection(),
                          gic.TranslateSql(SpecialtySql(gic.GetDatabaseKind())));
         !rs.Eof(); rs.MoveNext()) {
        const QString value = rs.Text(0).trimmed();
        if (!value.isEmpty())
            values << value;
    }
    return values;
}

}  // namespace

QString RunListSetup(GIC& gic, ListRequest& request, frmTGList& window) {
    ListOptions options;
    options.GroupPlanCompanyID = request.GroupPlanCompanyID;
    options.FamHeadIncPatID = request.FamHeadIncPatID;
    options.bSelectMode = request.bSelectMode;
    options.ListTitle = request.ListTitle;
    if (request.ListType == lulGroupPlan && request.GroupPlanCompanyID != 0)
        options.CarrierName = gic.GetCarrierName(request.GroupPlanCompanyID);
    const ListDefinition definition = DefineList(request.ListType, options);

    Banner banner(definition.Banner);
    component::Session& state = component::session();
    if (request.Skip_List_IF_New)
        state.ListCommand = QStringLiteral("SKIP LIST IF NEW") + state.ListCommand;
    window.Form_Load();

    window.ListType = request.ListType;
    window.OwnerForm = request.frmOwner;
    window.ShowMode = request.ShowMode;
    window.MultiSelect = request.ListType == lulFamilyHead && request.MultiSel != 0;
    window.ListKey = definition.ListKey;
    window.setProperty("Tag", definition.ListKey);
    window.SetIDField(definition.IDField);
    window.SetNameField(definition.NameField);
    window.SearchFields = definition.SearchFields;
    window.No_Double_Click = request.No_Double_Click;
    window.ShowFacilityOptions = request.ShowFacilityOptions;
    window.AllowDelete = request.AllowDelete;
    window.EmployerPatientID = request.EmployerPatientID;
    window.GroupPlanCompanyID = request.GroupPlanCompanyID;
    window.NewEmployeePasswordID = request.NewEmployeePasswordID;
    window.setWindowTitle(definition.Caption);

    window.SetSortBy(definition.SortBy);
    window.SetSQL(definition.SQL);
    if (request.ListType == lulPhysician1 || request.ListType == lulPhysician2 ||
        request.ListType == lulReferInOut) {
        window.SetFilterChoices(QStringLiteral("Specialty"), Specialties(gic));
    }
    window.SetGridLayout(definition.LayoutKey);
    const QString init = request.InitField.trimmed();
    if (!definition.InitFilterColumn.isEmpty() && !init.isEmpty() &&
        init.compare(QLatin1String("ALL"), Qt::CaseInsensitive) != 0) {
        window.SetColumnFilter(definition.InitFilterColumn, init);
    }

    const int saved = gic.GetSavedRecordID();
    if (saved != 0) {
        window.PositionOn(saved);
        gic.PutSavedRecordID(0);
    }
    if (request.SelectedID != 0)
        window.PositionOn(request.SelectedID);

    banner.Hide();
    component::ApplyTheme(window);
    window.Setup_ToolBar(request.ShowPatientButtons, true, request.bSelectMode,
                         request.ListType == lulInsuranceCo);

    window.RestoreScreenPosition();
    if (!window.FirstActivation()) {
        request.SelectedID = window.SelectedID;
        request.Select_String = window.Select_String;
        return definition.Caption;
    }
    if (request.ShowMode == 1) {
        window.setWindowModality(Qt::ApplicationModal);
        window.exec();
        request.SelectedID = window.SelectedID;
        request.Select_String = window.Select_String;
    } else {
        window.setWindowModality(Qt::NonModal);
        window.show();
        window.raise();
    }
    return definition.Caption;
}

}  // namespace orvo::lists
