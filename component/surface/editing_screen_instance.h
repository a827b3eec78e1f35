#pragma once

#include "component/public/editing_screen.h"
#include "component/start_sequence.h"
#include "component/surface/instance_properties.h"

namespace orvo::component {

// The component's EditingScreen. Each start method runs the start sequence over its screen.
class EditingScreenInstance final : public CommonProperties<EditingScreen> {
public:
    EditingScreenInstance();
    // Lets go of the host's windows, and as the last EditingScreen clears the main window in
    // GIC.
    ~EditingScreenInstance() override;

    int ExtraID() const override { return extraID_; }
    void SetExtraID(int value) override { extraID_ = value; }

    bool Edit_AdjustPlan_Info(int& EmployerID, int& CarrierID, int& GroupID, QString& TreatmentCode,
                              Currency& OfficeFee, Currency& AllowedFee,
                              Currency& PlanCalculationFee, float& CoveragePercent,
                              Currency& PlanPayment, Currency& ProviderAdjustment,
                              Currency& PatientPortion, bool AllowEditPayment) override;
    bool Edit_PPO_Adjustment() override;
    int Select_Coverage(int EmployerID, bool bMustSelect, int HideElID) override;
    bool Edit_Patient_Coverage(int PatientID) override;
    bool Location_Edit_Screen() override;
    bool PatientLocation_Setup(int PatientID) override;
    bool LoginLocation_Setup(int PasswordID) override;
    bool SetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) override;
    bool GetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) override;
    void Show_InsPlan_Screen(int EmpID, int InsID, int GroID, const QString& Title,
                             int HelpID) override;
    void Employer_Start(QString& Tmp, int& EmpID, int& PatID, QString& FormTag, int& SubscriberID,
                        int& Subscriber_elID, EmployerStartTab StartTab,
                        bool ShowFacilityOptions) override;
    void Grp_Plan_Start(QString& Tmp, int& GroPlaID, int& InsCoID) override;
    void Recall_Master_Start(QString& sTmpRecNum, int& RecallID) override;
    void Ins_Company_Start(QString& Ins_Com_ID_Num, int& InsCoID) override;
    void Pharmacy_Start(QString& sPhaID, int& PhaID) override;
    void Load_PatInfo_Small(int& l_ID, QString& s_ID, bool* GoToQuickAppoint) override;
    void PaTable_Edit_Start(QString& SrchFld, QString& Tmp) override;
    bool eReminder_PersonalSetup(int PatientID) override;

    void SetEventSink(EditingScreenEvents* sink) override { relay_.SetSink(sink); }

    // The start sequence's view of this instance, for the start method named.
    StartContext StartContextFor(const char* method);

private:
    void StartCarrierScreen(const char* method, bool pharmacy, QString& text, int& id);
    static GIC& RequireGIC(const char* method);
    static int ChooseFromList(LookUpListTypes type, QWidget* owner, int current);
    int extraID_ = 0;
    PrintEventsRelay relay_;
};

}  // namespace orvo::component
