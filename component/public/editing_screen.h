#pragma once

#include <QByteArray>
#include <QString>

#include "component/public/component_types.h"
#include "component/public/print_events.h"
#include "platform/currency.h"

class QObject;
class QWidget;

namespace orvo {

class GIC;

// The events of an EditingScreen: BeforePrint and AfterPrint, raised by a screen while it
// prints.
class EditingScreenEvents : public PrintEvents {};

// Shows one editing screen per call. A host creates the instance through its factory, sets
// IGlobal_GIC before anything else, then ImaList, frmOwner and StartForm, calls one method and
// reads the results; deleting the instance ends it. One instance may run several methods one
// after the other. While the last EditingScreen goes, the host's main window is cleared in GIC.
//
// The start methods take their arguments by reference, as the caller's own variables: a method
// writes back those it names, and leaves all of them as they came when it shows no screen.
// An optional argument that is written back is a pointer, null when the caller leaves it out.
class EditingScreen {
public:
    virtual ~EditingScreen() = default;

    // A second id for the call: the login a new employee is bound to (PaTable_Edit_Start).
    virtual int ExtraID() const = 0;
    virtual void SetExtraID(int value) = 0;
    // The window that owns the modal screens; may be null.
    virtual QWidget* frmOwner() const = 0;
    virtual void SetfrmOwner(QWidget* value) = 0;
    // A window offered as the host's main window, used while the host has none.
    virtual QWidget* StartForm() const = 0;
    virtual void SetStartForm(QWidget* value) = 0;
    // An orvo::ImageList. Any other object throws ComponentError and keeps the old value; null
    // clears it.
    virtual QObject* ImaList() const = 0;
    virtual void SetImaList(QObject* value) = 0;
    // Held once for the whole component (see LookUpList).
    virtual QObject* IGlobal_DAC() const = 0;
    virtual void SetIGlobal_DAC(QObject* value) = 0;
    virtual GIC* IGlobal_GIC() const = 0;
    virtual void SetIGlobal_GIC(GIC* value) = 0;
    virtual QObject* IGlobal_GC() const = 0;
    virtual void SetIGlobal_GC(QObject* value) = 0;
    virtual QObject* IGlobal_PV() const = 0;
    virtual void SetIGlobal_PV(QObject* value) = 0;

    // The PPO adjustment of one treatment line. True when it was saved; the fees are written
    // back unless the screen was cancelled.
    virtual bool Edit_AdjustPlan_Info(int& EmployerID, int& CarrierID, int& GroupID,
                                      QString& TreatmentCode, Currency& OfficeFee,
                                      Currency& AllowedFee, Currency& PlanCalculationFee,
                                      float& CoveragePercent, Currency& PlanPayment,
                                      Currency& ProviderAdjustment, Currency& PatientPortion,
                                      bool AllowEditPayment = false) = 0;
    // The PPO adjustment table; always false.
    virtual bool Edit_PPO_Adjustment() = 0;
    // The coverage link chosen among the employer's.
    virtual int Select_Coverage(int EmployerID, bool bMustSelect = false, int HideElID = 0) = 0;
    // Always false.
    virtual bool Edit_Patient_Coverage(int PatientID) = 0;
    // Each answers whether the screen changed anything.
    virtual bool Location_Edit_Screen() = 0;
    virtual bool PatientLocation_Setup(int PatientID) = 0;
    virtual bool LoginLocation_Setup(int PasswordID) = 0;
    // As on LookUpList.
    virtual bool SetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) = 0;
    virtual bool GetPrinter(QByteArray& PN, QByteArray& DM, QByteArray& dn) = 0;
    // The plan detail window.
    virtual void Show_InsPlan_Screen(int EmpID, int InsID, int GroID, const QString& Title,
                                     int HelpID) = 0;
    // Writes back EmpID. FormTag is accepted and not used.
    virtual void Employer_Start(QString& Tmp, int& EmpID, int& PatID, QString& FormTag,
                                int& SubscriberID, int& Subscriber_elID,
                                EmployerStartTab StartTab = estEmployer,
                                bool ShowFacilityOptions = false) = 0;
    // Writes back GroPlaID.
    virtual void Grp_Plan_Start(QString& Tmp, int& GroPlaID, int& InsCoID) = 0;
    // Writes back RecallID.
    virtual void Recall_Master_Start(QString& sTmpRecNum, int& RecallID) = 0;
    // Writes back InsCoID.
    virtual void Ins_Company_Start(QString& Ins_Com_ID_Num, int& InsCoID) = 0;
    // Writes back PhaID.
    virtual void Pharmacy_Start(QString& sPhaID, int& PhaID) = 0;
    // Writes back l_ID and GoToQuickAppoint.
    virtual void Load_PatInfo_Small(int& l_ID, QString& s_ID, bool* GoToQuickAppoint = nullptr) = 0;
    // Writes back Tmp: the person's id as text, or a result word.
    virtual void PaTable_Edit_Start(QString& SrchFld, QString& Tmp) = 0;
    // Whether the screen changed anything.
    virtual bool eReminder_PersonalSetup(int PatientID) = 0;
    // The host's handler of the events; not owned, null for none.
    virtual void SetEventSink(EditingScreenEvents* sink) = 0;
};

}  // namespace orvo
