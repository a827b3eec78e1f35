#pragma once

#include <QPointer>
#include <memory>

#include "component/public/lookup_list.h"
#include "component/surface/instance_properties.h"
#include "lists/list_owner.h"

namespace orvo::lists {
class frmTGList;
}

namespace orvo::component {

// The component's LookUpList: the list properties the host sets, and the list session that
// ShowList runs over them.
class LookUpListInstance final : public CommonProperties<LookUpList>, private lists::ListOwner {
public:
    LookUpListInstance();
    // Drops the persistent list window.
    ~LookUpListInstance() override;

    LookUpListTypes ListType() const override { return listType_; }
    void SetListType(LookUpListTypes value) override { listType_ = value; }
    bool Skip_List_IF_New() const override { return skipListIfNew_; }
    void SetSkip_List_IF_New(bool value) override { skipListIfNew_ = value; }
    short ShowMode() const override { return showMode_; }
    void SetShowMode(short value) override { showMode_ = value; }
    short Include_Ins() const override { return includeIns_; }
    void SetInclude_Ins(short value) override { includeIns_ = value; }
    QString InitField() const override { return initField_; }
    void SetInitField(const QString& value) override { initField_ = value; }
    short MultiSel() const override { return multiSel_; }
    void SetMultiSel(short value) override { multiSel_ = value; }
    bool No_Double_Click() const override { return noDoubleClick_; }
    void SetNo_Double_Click(bool value) override { noDoubleClick_ = value; }
    bool bSelectMode() const override { return selectMode_; }
    void SetbSelectMode(bool value) override { selectMode_ = value; }
    bool ShowFacilityOptions() const override { return showFacilityOptions_; }
    void SetShowFacilityOptions(bool value) override { showFacilityOptions_ = value; }
    QString ListTitle() const override { return listTitle_; }
    void SetListTitle(const QString& value) override { listTitle_ = value; }
    int SelectedID() const override { return selectedID_; }
    void SetSelectedID(int value) override { selectedID_ = value; }
    QString Select_String() const override { return selectString_; }
    void SetSelect_String(const QString& value) override { selectString_ = value; }
    bool ShowPatientButtons() const override { return showPatientButtons_; }
    void SetShowPatientButtons(bool value) override { showPatientButtons_ = value; }
    int GroupPlanCompanyID() const override { return groupPlanCompanyID_; }
    void SetGroupPlanCompanyID(int value) override { groupPlanCompanyID_ = value; }
    int EmployerPatientID() const override { return employerPatientID_; }
    void SetEmployerPatientID(int value) override { employerPatientID_ = value; }
    int FamHeadIncPatID() const override { return famHeadIncPatID_; }
    void SetFamHeadIncPatID(int value) override { famHeadIncPatID_ = value; }
    int NewEmployeePasswordID() const override { return newEmployeePasswordID_; }
    void SetNewEmployeePasswordID(int value) override { newEmployeePasswordID_ = value; }
    bool AllowDelete() const override { return allowDelete_; }
    void SetAllowDelete(bool value) override { allowDelete_ = value; }

    void ShowList(bool InsLLCanMultiSel) override;
    bool SetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) override;
    bool GetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) override;

    void SetEventSink(LookUpListEvents* sink) override {
        sink_ = sink;
        relay_.SetSink(sink);
    }

    // The window of the list session in progress, or the persistent one; null when none.
    lists::frmTGList* Window() const;

private:
    LookUpListEvents& Events() override { return sink_ ? *sink_ : noEvents_; }
    std::unique_ptr<EditingScreen> NewEditingScreen(QWidget* owner) override;
    void RunShowList();

    LookUpListTypes listType_ = lulProvider;
    bool skipListIfNew_ = false;
    short showMode_ = 0;
    short includeIns_ = 0;
    QString initField_;
    short multiSel_ = 0;
    bool noDoubleClick_ = false;
    bool selectMode_ = false;
    bool showFacilityOptions_ = false;
    QString listTitle_;
    int selectedID_ = 0;
    QString selectString_;
    bool showPatientButtons_ = false;
    int groupPlanCompanyID_ = 0;
    int employerPatientID_ = 0;
    int famHeadIncPatID_ = 0;
    int newEmployeePasswordID_ = 0;
    bool allowDelete_ = false;

    LookUpListEvents* sink_ = nullptr;
    LookUpListEvents noEvents_;
    PrintEventsRelay relay_;
    // The window that stays between ShowList calls of mode 0, and the one of the call running.
    QPointer<lists::frmTGList> persistent_;
    QPointer<lists::frmTGList> window_;
};

}  // namespace orvo::component
