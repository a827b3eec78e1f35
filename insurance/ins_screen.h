#pragma once

#include <QString>
#include <array>
#include <memory>

#include "component/editing_dialog.h"

class QLineEdit;
class QPushButton;
class QToolButton;

namespace orvo::tools {
class CityStateZip;
}

namespace orvo::insurance {

namespace Ui {
class insScreen;
}

// Edits one row of the carriers (InsCoTable) or of the pharmacies (PhaTable); the mode is
// chosen once by Setup_Screen. A carrier also carries its link to an electronic payer.
//
// The screen is shown modal after Setup_Screen. Closing it goes through the editing-screen
// base; a close that goes on leaves RecordID in the host's saved-record slot, which the start
// method reads (0 when nothing was saved of a new record).
class insScreen : public component::EditingDialog {
    Q_OBJECT
public:
    explicit insScreen(GIC& gic, QWidget* parent = nullptr);
    ~insScreen() override;

    // Called once, before the show. Command is a new-record command (BuildNewCommand) and is
    // read only when RecordID is 0. A RecordID with no row refuses to open (db::RowNotFoundError);
    // a DatabaseError while reading the row propagates to the start method.
    void Setup_Screen(bool IsPharmacy, const QString& Command, int RecordID);
    void Load_Data();
    void Save_Record() override;
    void SetEditRights();
    // 6 to go on with the save, 2 (or 7, the user's No) to stop.
    int ConfirmGlobalChange();
    void RefreshPayerLine();

    bool IsPharmacy = false;
    bool CanEdit = false;

    // Controls, by the indexes the screen's rules use; index 0 of Text1 is not used.
    std::array<QLineEdit*, 14> Text1{};
    std::array<QLineEdit*, 3> txtLin{};
    QLineEdit* txtRemID = nullptr;
    QLineEdit* txtNEA = nullptr;
    std::array<QPushButton*, 3> Command3D2{};  // 1 Cancel, 2 OK
    std::array<QToolButton*, 2> Command3D1{};  // city and zip lookup
    std::array<QPushButton*, 2> cmdLin{};      // 0 link a payer, 1 remove the link

protected:
    bool CheckFields() override;
    int ConfirmSave() override { return ConfirmGlobalChange(); }
    void Closing() override;

private:
    void BindFields();
    void LimitToColumns();
    FieldHolders Holders() const;
    QString TableName() const;
    QString KeyColumn() const;
    void ApplyMode();
    void ApplyCommand(const QString& command);
    void AlignLabelColumns();
    QString CleanedUp(int index, const QString& text) const;
    void CleanUpField(int index);
    void ShowPayerPage(QWidget* page);
    void LinkPayer();
    void ChangePayerLink(QString oldId, QString newId);

    std::unique_ptr<Ui::insScreen> ui_;
    tools::CityStateZip* zip_ = nullptr;
};

}  // namespace orvo::insurance
