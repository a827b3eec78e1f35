#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <memory>

#include "component/public/gic.h"
#include "component/public/print_events.h"

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
// The screen is shown modal after Setup_Screen. Every way of closing it (OK, Cancel, Escape,
// the window's close) goes through CheckSave; a close that goes on leaves RecordID in the host's
// saved-record slot, which the start method reads.
class insScreen : public QDialog {
    Q_OBJECT
public:
    explicit insScreen(GIC& gic, QWidget* parent = nullptr);
    ~insScreen() override;

    // Called once, before the show. Command is a new-record command (BuildNewCommand) and is
    // read only when RecordID is 0. A DatabaseError while reading the row propagates to the
    // start method.
    void Setup_Screen(bool IsPharmacy, const QString& Command, int RecordID);
    void Load_Data();
    void Save_Record();
    void SetEditRights();
    // 6 when the close may go on (saved, or nothing to save), 7 when it goes on without saving,
    // 2 when the screen is to stay open.
    int CheckSave();
    // 6 to go on with the save, 2 (or 7, the user's No) to stop.
    int ConfirmGlobalChange();
    void RefreshPayerLine();

    // Screen state.
    int RecordID = 0;
    // The record lock number: 0 when the lock was refused (read only), 9999 for a new row.
    int RecordLock = 0;
    bool IsPharmacy = false;
    bool Modified = false;
    bool Loading = false;
    bool CanEdit = false;
    bool IsNewRecord = false;
    // The component instance that started the screen, through which it would print; cleared
    // on close.
    PrintEvents* ObjParent = nullptr;
    void SetObjParent(PrintEvents* parent) { ObjParent = parent; }

    // Controls, by the indexes the screen's rules use; index 0 of Text1 is not used.
    std::array<QLineEdit*, 14> Text1{};
    std::array<QLineEdit*, 3> txtLin{};
    QLineEdit* txtRemID = nullptr;
    QLineEdit* txtNEA = nullptr;
    std::array<QPushButton*, 3> Command3D2{};  // 1 Cancel, 2 OK
    std::array<QToolButton*, 2> Command3D1{};  // city and zip lookup
    std::array<QPushButton*, 2> cmdLin{};      // 0 link a payer, 1 remove the link

    // The value that marks OK as the source of a close, in the OK button's "Tag" property.
    static constexpr const char* kOkTag = "OK";

    void done(int result) override;

protected:
    // Where the record lock on tableKey/recordId is taken: its number, or 0 when another
    // station holds the row (the person has been told who), which opens it read only.
    virtual int TakeRecordLock(const QString& tableKey, int recordId);
    // Where the lock is given back, once, when the screen closes.
    virtual void ReleaseRecordLock();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BindFields();
    FieldHolders Holders() const;
    QString TableName() const;
    QString KeyColumn() const;
    void ApplyMode();
    void ApplyCommand(const QString& command);
    void AlignLabelColumns();
    int FieldIndex(const QObject* widget) const;
    void OnFieldChanged(int index);
    void CleanUpField(int index);
    void CleanUpPendingFields();
    void ShowPayerPage(QWidget* page);
    void LinkPayer();
    void UnlinkPayer();
    void ChangePayerLink(QString oldId, QString newId);
    void ShowActionError(const QString& description);
    template <class Action>
    bool RunAction(Action&& action);

    GIC& gic_;
    std::unique_ptr<Ui::insScreen> ui_;
    std::array<bool, 14> pendingCleanUp_{};
    tools::CityStateZip* zip_ = nullptr;
    QString lockTableKey_;
    bool lockHeld_ = false;
};

}  // namespace orvo::insurance
