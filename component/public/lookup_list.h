#pragma once

#include <QByteArray>
#include <QString>

#include "component/public/component_types.h"
#include "component/public/print_events.h"

class QObject;
class QWidget;

namespace orvo {

class GIC;

// What a running list window tells its host. A host derives from this, overrides what it
// handles and hands the object to SetEventSink. The default handlers do nothing.
class LookUpListEvents : public PrintEvents {
public:
    // The user asked to go to another module of the suite.
    virtual void SwapModuleCalled(QString& Whereto, QString& Designation_String) {}
    // A toolbar button the host handles was clicked, on the record CurrentID.
    virtual void ButtonClicked(QString& ButtonKey, int& CurrentID) {}
    // Set bHandled to true when the host has handled the check itself.
    virtual void CheckEvent(bool& bHandled) {}
};

// One list window of a chosen kind. A host creates the instance through its factory, sets
// IGlobal_GIC before anything else, sets the list properties, calls ShowList and reads the
// results; deleting the instance ends it.
//
// The four IGlobal objects are held once for the whole component: setting one on any instance
// of either class serves all. DAC, GC and PV are kept and given back, never called.
class LookUpList {
public:
    virtual ~LookUpList() = default;

    virtual LookUpListTypes ListType() const = 0;
    virtual void SetListType(LookUpListTypes value) = 0;
    // "SKIP LIST IF NEW" goes before the list command: the list goes straight to a new record
    // when a search finds nothing.
    virtual bool Skip_List_IF_New() const = 0;
    virtual void SetSkip_List_IF_New(bool value) = 0;
    // 0: modeless, on the persistent list window; 1: modal, on a window built for the call.
    virtual short ShowMode() const = 0;
    virtual void SetShowMode(short value) = 0;
    virtual short Include_Ins() const = 0;
    virtual void SetInclude_Ins(short value) = 0;
    // Initial search text or field.
    virtual QString InitField() const = 0;
    virtual void SetInitField(const QString& value) = 0;
    // Set from the argument of ShowList.
    virtual short MultiSel() const = 0;
    virtual void SetMultiSel(short value) = 0;
    virtual bool No_Double_Click() const = 0;
    virtual void SetNo_Double_Click(bool value) = 0;
    // The list is opened for picking a record.
    virtual bool bSelectMode() const = 0;
    virtual void SetbSelectMode(bool value) = 0;
    virtual bool ShowFacilityOptions() const = 0;
    virtual void SetShowFacilityOptions(bool value) = 0;
    // The window that owns the modal screens; may be null.
    virtual QWidget* frmOwner() const = 0;
    virtual void SetfrmOwner(QWidget* value) = 0;
    // A window offered as the host's main window, used while the host has none.
    virtual QWidget* StartForm() const = 0;
    virtual void SetStartForm(QWidget* value) = 0;
    // A title set by the host wins over the list's own; ShowList writes back the title used.
    virtual QString ListTitle() const = 0;
    virtual void SetListTitle(const QString& value) = 0;
    // In: the record to position on. Out: the record chosen.
    virtual int SelectedID() const = 0;
    virtual void SetSelectedID(int value) = 0;
    // Out: the text of the choice; for a multi-select list, the ids chosen.
    virtual QString Select_String() const = 0;
    virtual void SetSelect_String(const QString& value) = 0;
    // An orvo::ImageList with the toolbar's pictures. Any other object throws ComponentError
    // and keeps the old value; null clears it.
    virtual QObject* ImaList() const = 0;
    virtual void SetImaList(QObject* value) = 0;
    virtual bool ShowPatientButtons() const = 0;
    virtual void SetShowPatientButtons(bool value) = 0;
    // Carrier that restricts the group plan list.
    virtual int GroupPlanCompanyID() const = 0;
    virtual void SetGroupPlanCompanyID(int value) = 0;
    virtual int EmployerPatientID() const = 0;
    virtual void SetEmployerPatientID(int value) = 0;
    virtual int FamHeadIncPatID() const = 0;
    virtual void SetFamHeadIncPatID(int value) = 0;
    virtual int NewEmployeePasswordID() const = 0;
    virtual void SetNewEmployeePasswordID(int value) = 0;
    virtual bool AllowDelete() const = 0;
    virtual void SetAllowDelete(bool value) = 0;
    virtual QObject* IGlobal_DAC() const = 0;
    virtual void SetIGlobal_DAC(QObject* value) = 0;
    virtual GIC* IGlobal_GIC() const = 0;
    virtual void SetIGlobal_GIC(GIC* value) = 0;
    virtual QObject* IGlobal_GC() const = 0;
    virtual void SetIGlobal_GC(QObject* value) = 0;
    virtual QObject* IGlobal_PV() const = 0;
    virtual void SetIGlobal_PV(QObject* value) = 0;

    // Runs the whole list session. InsLLCanMultiSel becomes MultiSel.
    virtual void ShowList(bool InsLLCanMultiSel = false) = 0;
    // Copy the host's printer choice into the component and back: the printer name, device
    // mode and device names records. False when the choice could not be taken over.
    virtual bool SetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) = 0;
    virtual bool GetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) = 0;

    // The host's handler of the list's events; not owned, null for none.
    virtual void SetEventSink(LookUpListEvents* sink) = 0;
};

}  // namespace orvo
