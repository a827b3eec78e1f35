#pragma once

#include <QString>
#include <array>
#include <functional>
#include <memory>

#include "component/editing_dialog.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QToolButton;

namespace orvo::tools {
class CityStateZip;
}

namespace orvo::people {

namespace Ui {
class patScreen_SM;
}

// The small patient form: adds or edits one patient of PATable with what the front desk needs
// (names, sex and title, birth date, social security number, two phones, address, referral,
// provider, medical alert), so that a patient can be added without the family screen.
//
// The caller calls Setup_Screen with the person (0 for a new one) and the start string, sets
// ShowSaveNBookAppt, and shows the screen modal. The screen takes the lock on "PATABLE" for an
// existing person and is read only, every change refused, when another station holds it. Its
// close goes through the editing-screen base: the leave steps of the fields run first,
// whatever closes it. When it closes, the host holds the person's id (PutPatientID, 0 for a
// new patient not saved), the record it ended on (SetActiveRecord) and whether booking an
// appointment follows (SetBookAppointmentRequest, set by OK and by save-and-book).
//
// Object names, for scenario files: the fields "Text1_0".."Text1_15", the hidden carriers
// "Label5_0".."Label5_21", the database buttons "Command3D1_0" (referral list), "_1" (Sex and
// Title), "_2" (city), "_3" (zip), "_4" (provider), "_5" (medical alert), "_6" (calendar),
// "_7" (also referred by), the list "Name_List", "picSwapName", "cmdContact", "Command3D2_3"
// (save and book), "cmdOK", "cmdCancel"; the labels "lblAge", "lblAlertDate", "lblReferral",
// "lblHomePhone", "lblWorkPhone".
class patScreen_SM : public component::EditingDialog {
    Q_OBJECT
public:
    explicit patScreen_SM(GIC& gic, QWidget* parent = nullptr);
    ~patScreen_SM() override;

    // Called once, before the show. A person who is not there refuses to open
    // (db::RowNotFoundError). StartString, read only for a new person, is "EMERGENCY" or "NEW"
    // followed by last and first name separated by a line feed.
    void Setup_Screen(int PersonID, const QString& StartString);

    bool ShowSaveNBookAppt() const;
    void SetShowSaveNBookAppt(bool show);

    // The two phone fields and the person's contact blocks in step.
    void Contacts_Save();
    void Contacts_Setup();
    void picSwapName_Click();

    // Shows the referral list at current and answers the referral chosen, 0 for none. The
    // component sets it when it starts the screen (the list window lies above this layer).
    std::function<int(QWidget* owner, int current)> ShowReferralList;

    // The save with its question, called by the closing commands: newText and changeText are
    // the question for a new and for an existing person (empty for the usual ones); mode 0
    // asks nothing, 999 offers Yes and No only. Answers 6 when saved or nothing was to save,
    // -1 for No, 2 for Cancel.
    int Save(const QString& newText, const QString& changeText, int mode);

    bool Editable() const { return RecordLock != 0; }
    // A close is running; a second click does nothing meanwhile.
    bool Exiting = false;
    // Taken at load from the person's provider and referral roles; they arm the name rights.
    bool IsProvider = false;
    bool IsReferral = false;

    // Controls, by the indexes the screen's rules use.
    std::array<QLineEdit*, 16> Text1{};
    std::array<QLabel*, 22> Label5{};  // 14 to 18 are not used
    std::array<QToolButton*, 8> Command3D1{};
    QPushButton* Command3D2_3 = nullptr;  // save and book an appointment
    QPushButton* cmdContact = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QListWidget* Name_List = nullptr;

    // What the database buttons and the lists do with a choice; public for the tests.
    void ChooseReferral(int pID);
    void ChooseProvider(int pID);
    void ChooseSexTitle(const QString& choice);
    void ChooseMedicalAlert(const QString& choice);

protected:
    int CheckSave() override;
    int AskSave() override;
    void Save_Record() override;
    void Closing() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A link to another person shown by name: the referral or the provider.
    struct NameLink {
        int field;      // Text1 index of the name
        int carrier;    // Label5 index of the pID
        QString title;  // "Referral", "Provider"
        QString role;   // the role column the name drop-down searches
    };
    const NameLink& Referral() const;
    const NameLink& Provider() const;

    void BindFields();
    void LimitToColumns();
    FieldHolders Holders() const;
    void Load_Data();
    void ApplyStartString(const QString& start);
    void SetEditState();
    void ConnectCommands();
    int LinkedId(const NameLink& link) const;
    void ShowLinkedName(const NameLink& link);
    bool ChooseLinked(const NameLink& link, int pID);
    void ClearLink(const NameLink& link);
    void ResolveTypedName(const NameLink& link);
    int AddNamedPerson(const NameLink& link, const QString& name);
    void AskFeeSchedule(int provider);
    void ShowBirthDate();
    void LeaveBirthDate();
    void ShowAlertDate();
    void StampAlertDate();
    void SexEntered();
    void CleanUpField(int index);
    void SetCarrier(int index, const QString& text);
    void FillBlankNames();
    void FillNumberCarriers();
    void Write_Record();
    void OpenSexTitleList();
    void OpenMedicalAlertList();
    void OpenReferralList();
    void OpenProviderList();
    void OpenCalendar();
    void ShowAlsoReferred();
    void EditLinkedPerson(const NameLink& link);
    void OpenContacts();
    bool KeyInField(int index, const QKeyEvent& key);
    bool NameRightsRefuse(int index);
    void RefuseReadOnly();

    std::unique_ptr<Ui::patScreen_SM> ui_;
    tools::CityStateZip* zip_ = nullptr;
    bool bookAppointment_ = false;
    bool bookRequested_ = false;
    bool closedByOk_ = false;
    // The person the screen loaded; a save after another station deleted the row goes to a new
    // row, which is no member of the family the gone one headed.
    int loadedId_ = 0;
};

}  // namespace orvo::people
