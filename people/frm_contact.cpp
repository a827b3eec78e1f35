#include "people/frm_contact.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "component/record_lock.h"
#include "people/contacts.h"
#include "people/people_tables.h"
#include "platform/address_book.h"
#include "platform/db/database_error.h"
#include "platform/prompts.h"
#include "platform/schema/schema.h"
#include "ui_frm_contact.h"

namespace orvo::people {
namespace {

const QString kCaption = QStringLiteral("Contact Information for ");
const QString kSaveTitle = QStringLiteral("Save Changes");
const QString kSaveText = QStringLiteral("Do you want to save you changes?");
const QString kNoInbox =
    QStringLiteral("ORVO Windows was not able to connect to your Windows inbox.");

// The station's setting that names its address book file.
const QString kAddressBookSetting = QStringLiteral("ADDRESS_BOOK");

constexpr int kEmailEntry = 3;
// Entries that hold phone numbers and are put in the host's format when left: the two phones,
// the fax and the cell.
constexpr std::array<bool, 6> kIsPhone = {true, true, true, false, true, false};

}  // namespace

frmContact::frmContact(GIC& gic, QWidget* parent)
    : EditingDialog(gic, parent), ui_(std::make_unique<Ui::frmContact>()) {
    ui_->setupUi(this);
    txtHome = {ui_->txtHome_0, ui_->txtHome_1, ui_->txtHome_2,
               ui_->txtHome_3, ui_->txtHome_4, ui_->txtHome_5};
    txtWork = {ui_->txtWork_0, ui_->txtWork_1, ui_->txtWork_2,
               ui_->txtWork_3, ui_->txtWork_4, ui_->txtWork_5};
    chkHome = {ui_->chkHome_0, ui_->chkHome_1, ui_->chkHome_2,
               ui_->chkHome_3, ui_->chkHome_4, ui_->chkHome_5};
    chkWork = {ui_->chkWork_0, ui_->chkWork_1, ui_->chkWork_2,
               ui_->chkWork_3, ui_->chkWork_4, ui_->chkWork_5};
    lblHome = ui_->lblHome;
    lblWork = ui_->lblWork;
    cmdOK = ui_->cmdOK;
    cmdCancel = ui_->cmdCancel;
    cmdApply = ui_->cmdApply;
    cmdAddressBook = ui_->cmdAddressBook;

    for (const int number : {Contacts::kHomeBlock, Contacts::kWorkBlock}) {
        const Block block = BlockAt(number);
        const QStringList columns = Contacts::EntryColumns(number);
        block.carrier->setProperty("DataField", Contacts::BlockPrefix(number) + "Con");
        for (int i = 0; i < 6; ++i) {
            QLineEdit* field = (*block.fields)[i];
            field->setProperty("DataField", columns[i]);
            if (kIsPhone[i]) {
                OnLeave(field, [this, field] {
                    const QString formatted = this->gic().FormatPhone(field->text());
                    if (formatted != field->text())
                        field->setText(formatted);
                });
            } else {
                AddFields({field});
            }
            connect(field, &QLineEdit::textChanged, this, [this] { MarkChanged(); });
            connect((*block.boxes)[i], &QCheckBox::clicked, this, [this, number, i] {
                RunAction([this, number, i] { TickBox(BlockAt(number), i); });
            });
        }
    }
    LimitToColumns();

    SetOkButton(cmdOK);
    SetCancelButton(cmdCancel);
    connect(cmdApply, &QPushButton::clicked, this, [this] { Apply(); });
    connect(cmdAddressBook, &QPushButton::clicked, this,
            [this] { RunAction([this] { UseAddressBook(); }); });
}

frmContact::~frmContact() = default;

frmContact::Block frmContact::BlockAt(int block) const {
    auto* self = const_cast<frmContact*>(this);
    if (block == Contacts::kWorkBlock)
        return {block, &self->txtWork, &self->chkWork, lblWork, ui_->lblWorkShown};
    return {Contacts::kHomeBlock, &self->txtHome, &self->chkHome, lblHome, ui_->lblHomeShown};
}

// The 14 fields of the row: the six entries and the chosen column of each block.
FieldHolders frmContact::Holders() const {
    FieldHolders holders;
    for (QLineEdit* field : txtHome)
        holders << field;
    for (QLineEdit* field : txtWork)
        holders << field;
    holders << lblHome << lblWork;
    return holders;
}

// An entry takes no more than its column holds.
void frmContact::LimitToColumns() {
    schema::Catalog catalog;
    DeclarePeopleTables(catalog);
    const schema::Table* table = catalog.Find(QStringLiteral("PATable"));
    for (QWidget* holder : Holders()) {
        auto* field = qobject_cast<QLineEdit*>(holder);
        if (!field || !table)
            continue;
        const schema::Column* column = table->FindColumn(field->property("DataField").toString());
        if (column && column->width > 0)
            field->setMaxLength(column->width);
    }
}

void frmContact::Setup_Screen() {
    const LoadingScope loading(*this);
    RequireRecord(QStringLiteral("PATable"), QStringLiteral("pID"), PatientID);
    RecordID = PatientID;
    setWindowTitle(kCaption + gic().GetPersonName(PatientID, QStringLiteral(" "), "pTTL"));
    if (OwnerForm) {
        // The person's screen that opened this one holds the row's lock.
        RecordLock = component::kNewRecordLock;
    } else {
        LockRecordFor(QStringLiteral("PATABLE"));
    }
    // Reading the labels settles each block's choice first (a row from before the blocks moves
    // its one phone over), so that the fields read the row as it now is.
    for (const int number : {Contacts::kHomeBlock, Contacts::kWorkBlock}) {
        QString label;
        int length = 0;
        Contacts::ReadDisplayContact(gic(), PatientID, number, label, length);
        BlockAt(number).shown->setText(label);
    }
    gic().ReadBoundRecord(PatientID, QStringLiteral("pID"), QStringLiteral("Patable"), Holders());
    for (const int number : {Contacts::kHomeBlock, Contacts::kWorkBlock})
        ShowChoice(BlockAt(number));
    ui_->tabContact->setCurrentIndex(SetupTab == 1 ? 1 : 0);
    SetEditable(RecordLock != 0);
    Modified = false;
    cmdApply->setEnabled(false);
}

// Ticks the box of the chosen entry, and only that one.
void frmContact::ShowChoice(const Block& block) {
    const QString chosen = Contacts::ChosenColumn(block.number, block.carrier->text());
    const QStringList columns = Contacts::EntryColumns(block.number);
    for (int i = 0; i < 6; ++i)
        (*block.boxes)[i]->setChecked(columns[i].compare(chosen, Qt::CaseInsensitive) == 0);
    block.shown->setText(Contacts::DisplayLabel(block.number, chosen));
}

// A box ticked makes its entry the one shown; an entry with no text can't be. The chosen entry
// stays ticked: a block always shows one.
void frmContact::TickBox(const Block& block, int index) {
    QCheckBox* box = (*block.boxes)[index];
    QLineEdit* field = (*block.fields)[index];
    if (!box->isChecked() || field->text().trimmed().isEmpty()) {
        if (box->isChecked())
            prompts().Beep();
        ShowChoice(block);
        if (field->text().trimmed().isEmpty())
            field->setFocus(Qt::OtherFocusReason);
        return;
    }
    block.carrier->setText(Contacts::EntryColumns(block.number)[index]);
    ShowChoice(block);
    MarkChanged();
    Modified = true;
}

void frmContact::MarkChanged() {
    if (!Loading && RecordLock != 0)
        cmdApply->setEnabled(true);
}

void frmContact::SetEditable(bool editable) {
    for (QWidget* holder : Holders()) {
        if (auto* field = qobject_cast<QLineEdit*>(holder))
            field->setReadOnly(!editable);
    }
    for (QCheckBox* box : chkHome)
        box->setEnabled(editable);
    for (QCheckBox* box : chkWork)
        box->setEnabled(editable);
    cmdOK->setEnabled(editable);
    cmdAddressBook->setEnabled(editable);
}

void frmContact::Save_Record() {
    for (QWidget* holder : Holders()) {
        if (auto* field = qobject_cast<QLineEdit*>(holder);
            field && field->text() != field->text().trimmed())
            field->setText(field->text().trimmed());
    }
    try {
        gic().SaveBoundFields(Holders());
        for (const int number : {Contacts::kHomeBlock, Contacts::kWorkBlock}) {
            const Block block = BlockAt(number);
            for (int i = 0; i < 6; ++i) {
                if ((*block.boxes)[i]->isChecked())
                    Contacts::SyncDisplayContact(gic(), PatientID, number,
                                                 (*block.fields)[i]->text());
            }
        }
    } catch (const db::RowNotFoundError& gone) {
        // Contact entries are no record of their own: there is nothing to save them as new.
        throw ComponentError(gone.driverMessage());
    }
    ChangeMade = true;
    cmdApply->setEnabled(false);
}

void frmContact::Apply() {
    if (!FinishLeaveSteps())
        return;
    RunAction([this] {
        Save_Record();
        Modified = false;
    });
}

int frmContact::AskSave() {
    return prompts().Message(kSaveText, Buttons::YesNoCancel, Icon::Question, kSaveTitle, 1);
}

void frmContact::Closing() {
    if (ChangeMade)
        gic().NotifyPersonChanged(PatientID);
}

// The address book: the first recipient chosen becomes the e-mail entry of the tab in front.
void frmContact::UseAddressBook() {
    const QString source = gic().ReadStationSetting(kAddressBookSetting, QString()).toString();
    const std::unique_ptr<AddressBook> book = OpenAddressBook(source);
    if (!book->SignOn()) {
        prompts().Message(kNoInbox, Buttons::Ok, Icon::Warning, windowTitle());
        return;
    }
    struct SignOff {
        AddressBook& book;
        ~SignOff() { book.SignOff(); }
    } signOff{*book};
    const std::optional<QString> address = book->ChooseAddress(this);
    if (!address || address->trimmed().isEmpty())
        return;
    const Block block =
        BlockAt(ui_->tabContact->currentIndex() == 1 ? Contacts::kWorkBlock : Contacts::kHomeBlock);
    QLineEdit* field = (*block.fields)[kEmailEntry];
    const QString chosen = address->trimmed();
    if (chosen.size() > field->maxLength()) {
        throw ComponentError(
            QStringLiteral("The address %1 is longer than the %2 characters an e-mail entry holds.")
                .arg(chosen)
                .arg(field->maxLength()));
    }
    field->setText(chosen);
    field->setFocus(Qt::OtherFocusReason);
}

}  // namespace orvo::people
