#pragma once

#include <QString>
#include <array>
#include <memory>

#include "component/editing_dialog.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvo::people {

namespace Ui {
class frmContact;
}

// Edits a person's two contact blocks, home and work, each of two phones, fax, e-mail, cell and
// pager, and which entry of each block is the one number that lists and small screens show.
//
// The caller sets PatientID (and OwnerForm, SetupTab), calls Setup_Screen and shows the screen
// modal. Opened under a person's screen (OwnerForm set), the row's lock is that screen's; opened
// on its own, the screen takes it and shows the row read only when another station holds it. A
// person who is not there refuses to open (db::RowNotFoundError). ChangeMade tells the caller
// whether anything was saved; the host hears of it when the screen closes.
class frmContact : public component::EditingDialog {
    Q_OBJECT
public:
    explicit frmContact(GIC& gic, QWidget* parent = nullptr);
    ~frmContact() override;

    // The person's screen that opened this one; null when opened on its own.
    QWidget* OwnerForm = nullptr;
    int PatientID = 0;
    // The tab in front when the screen opens: 0 home, 1 work.
    int SetupTab = 0;
    // Something was saved (by OK, Apply or the close question).
    bool ChangeMade = false;

    void Setup_Screen();

    // Controls, by the indexes of the blocks' entries: 0 phone, 1 phone 2, 2 fax, 3 e-mail,
    // 4 cell, 5 pager. lblHome and lblWork carry the chosen column (pHomCon, pBusCon).
    std::array<QLineEdit*, 6> txtHome{};
    std::array<QLineEdit*, 6> txtWork{};
    std::array<QCheckBox*, 6> chkHome{};
    std::array<QCheckBox*, 6> chkWork{};
    QLabel* lblHome = nullptr;
    QLabel* lblWork = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdAddressBook = nullptr;

protected:
    void Save_Record() override;
    int AskSave() override;
    void Closing() override;

private:
    struct Block {
        int number;
        std::array<QLineEdit*, 6>* fields;
        std::array<QCheckBox*, 6>* boxes;
        QLabel* carrier;
        QLabel* shown;
    };
    Block BlockAt(int block) const;
    FieldHolders Holders() const;
    void LimitToColumns();
    void ShowChoice(const Block& block);
    void TickBox(const Block& block, int index);
    void Apply();
    void UseAddressBook();
    void SetEditable(bool editable);
    void MarkChanged();

    std::unique_ptr<Ui::frmContact> ui_;
};

}  // namespace orvo::people
