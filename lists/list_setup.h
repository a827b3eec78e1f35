#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "component/public/component_types.h"
#include "component/public/gic.h"

namespace orvo::lists {

class frmTGList;

// The properties of a LookUpList that a list session reads, and the choice it writes back.
struct ListRequest {
    LookUpListTypes ListType = lulProvider;
    bool Skip_List_IF_New = false;
    short ShowMode = 0;
    QString InitField;
    short MultiSel = 0;
    bool No_Double_Click = false;
    bool bSelectMode = false;
    bool ShowFacilityOptions = false;
    QWidget* frmOwner = nullptr;
    QWidget* StartForm = nullptr;
    QString ListTitle;  // the host's; empty for the list's own
    int SelectedID = 0;
    QString Select_String;
    bool ShowPatientButtons = false;
    int GroupPlanCompanyID = 0;
    int EmployerPatientID = 0;
    int FamHeadIncPatID = 0;
    int NewEmployeePasswordID = 0;
    bool AllowDelete = false;
};

// Sets up the window for the request and shows it (the caller made the window under frmOwner,
// or StartForm when there is none): modal when ShowMode is 1 (the choice is in
// the request when it returns), modeless otherwise. Answers the title used. Errors on the way
// are the caller's boundary's.
QString RunListSetup(GIC& gic, ListRequest& request, frmTGList& window);

}  // namespace orvo::lists
