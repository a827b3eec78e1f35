#pragma once

#include <QString>
#include <QStringList>

#include "component/public/component_types.h"

namespace orvo::lists {

// What a list's definition depends on besides its type.
struct ListOptions {
    int GroupPlanCompanyID = 0;  // restricts the group plan list to a carrier
    int FamHeadIncPatID = 0;     // a person the family-head list must include
    bool bSelectMode = false;    // picks the select-mode layout key
    QString ListTitle;           // the host's title; wins over the list's own
    QString CarrierName;         // of GroupPlanCompanyID, for the group plan list's title
};

// One list type: what the generic list window is given to show it.
struct ListDefinition {
    LookUpListTypes type = lulProvider;
    QString Banner;        // the wait banner's words; empty for none
    QString ListKey;       // the window's tag
    QString IDField;       // alias of the record id
    QString NameField;     // alias the list calls the name
    QString SearchFields;  // "[a]" Chr(1) "[b]" Chr(1) ...
    QString SQL;
    QString SortBy;
    QString LayoutKey;
    QString Caption;
    // The column that a host's InitField filters ("Specialty", "Insurance Company"); empty
    // when InitField does not filter this list.
    QString InitFilterColumn;
};

// Whether the type lists persons (providers ... employees).
bool IsPersonList(LookUpListTypes type);
// Carriers, employers, group plans: the lists whose rows need "EDIT-EMP-INS" to be changed.
bool IsInsuranceList(LookUpListTypes type);

ListDefinition DefineList(LookUpListTypes type, const ListOptions& options);

// The statement that fills the physician list's specialty choices, as the engine of this
// kind takes it.
QString SpecialtySql(short databaseKind);

// The search fields joined as a definition holds them.
QString JoinSearchFields(const QStringList& fields);
QStringList SplitSearchFields(const QString& joined);

}  // namespace orvo::lists
