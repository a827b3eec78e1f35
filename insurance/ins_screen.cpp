#include "insurance/ins_screen.h"

#include "component/record_lock.h"
#include "tools/city_state_zip.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QToolButton>

#include "insurance/carrier_change.h"
#include "insurance/coverage_counts.h"
#include "insurance/ins_command.h"
#include "insurance/insurance_tables.h"
#include "insurance/payer_link.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "ui_ins_screen.h"

namespace orvo::insurance {
namespace {

Q_LOGGING_CATEGORY(lcInsurance, "orvo.insurance")

const QString kCarrierCaption = QStringLiteral("Insurance Information");
const QString kPharmacyCaption = QStringLiteral("Pharmacy Information");
const QString kCarrierNameLabel = QStringLiteral("Insurance Name");
const QString kPharmacyNameLabel = QStringLiteral("Pharmacy Name");

const QString kNoPayerTitle = QStringLiteral("No Electronic Payer Selected");
const QString kNoPayerText =
    QStringLiteral(
        "To use Electronic Claims and Real-Time Online Eligibility, please connect "
        "this Insurance Company to an Electronic Payer by clicking then Link ") +
    QStringLiteral(
        "icon to open the Electronic Payer list. Highlight the Electronic Payer that "
        "matches this ") +
    QStringLiteral("Insurance Company and click OK.");
const QString kNoPayerNote = QStringLiteral(
    "Please note that a single Electronic Payer may match several claim processing centers.");

const QString kSaveQuestion = QStringLiteral("Save current changes?");
const QString kNameRequired =
    QStringLiteral("You must enter a company name before you can save these changes.");
const QString kConfirmPrompt =
    QStringLiteral(", to accept this change, type [Yes] below and click OK.");

const QString kEditRight = QStringLiteral("EDIT-EMP-INS");

// Column suffixes of Text1(1..13); the carrier's columns start "InsCo", the pharmacy's "Pha".
// A pharmacy keeps no prefix.
const char* const kColumnSuffixes[] = {"",    "Nam",  "Add1", "Add2", "Cit",  "Sta", "Zip",
                                       "Tel", "Tel2", "Fax",  "Rem1", "Rem2", "Ema", "PreFix"};

// Clean-ups of a field left with a change: names and addresses in mixed case, the state in
// capitals, phone numbers in the host's format.
bool IsProperCaseField(int index) {
    return index >= 1 && index <= 4;
}
bool IsStateField(int index) {
    return index == 5;
}
bool IsPhoneField(int index) {
    return index >= 7 && index <= 9;
}

int LabelColumnWidth(const QGridLayout& grid) {
    int width = 0;
    for (int row = 0; row < grid.rowCount(); ++row) {
        const QLayoutItem* item = grid.itemAtPosition(row, 0);
        const QWidget* label = item ? item->widget() : nullptr;
        if (label && !label->isHidden())
            width = qMax(width, label->sizeHint().width());
    }
    return width;
}

}  // namespace

template <class Action>
bool insScreen::RunAction(Action&& action) {
    try {
        action();
        return true;
    } catch (const db::DatabaseError& error) {
        qCWarning(lcInsurance).noquote() << error.describe();
        ShowActionError(error.describe());
    } catch (const NotImplemented& error) {
        qCWarning(lcInsurance) << error.what();
        ShowActionError(QString::fromUtf8(error.what()));
    }
    return false;
}

insScreen::insScreen(GIC& gic, QWidget* parent)
    : QDialog(parent), gic_(gic), ui_(std::make_unique<Ui::insScreen>()) {
    ui_->setupUi(this);
    Text1 = {nullptr,       ui_->Text1_1,  ui_->Text1_2,  ui_->Text1_3, ui_->Text1_4,
             ui_->Text1_5,  ui_->Text1_6,  ui_->Text1_7,  ui_->Text1_8, ui_->Text1_9,
             ui_->Text1_10, ui_->Text1_11, ui_->Text1_12, ui_->Text1_13};
    txtLin = {ui_->txtLin_0, ui_->txtLin_1, ui_->txtLin_2};
    txtRemID = ui_->txtRemID;
    txtNEA = ui_->txtNEA;
    Command3D2 = {nullptr, ui_->Command3D2_1, ui_->Command3D2_2};
    Command3D1 = {ui_->Command3D1_0, ui_->Command3D1_1};
    cmdLin = {ui_->cmdLin_0, ui_->cmdLin_1};

    ui_->lblNoPayerTitle->setText(kNoPayerTitle);
    // A label breaks its lines at LF.
    ui_->lblNoPayer->setText(kNoPayerText + QLatin1Char('\n') + kNoPayerNote);

    for (int i = 1; i < static_cast<int>(Text1.size()); ++i) {
        Text1[i]->installEventFilter(this);
        connect(Text1[i], &QLineEdit::textChanged, this, [this, i] { OnFieldChanged(i); });
    }
    for (QLineEdit* field : {txtRemID, txtNEA}) {
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this, [this] {
            if (!Loading)
                Modified = true;
        });
    }

    // City, state and zip fill each other from the zip table; attached after the screen's own
    // key handling, so that the panel sees Up, Down and Enter first while it is open.
    zip_ = new tools::CityStateZip(gic_, this);
    zip_->Attach(Text1[4], Text1[5], Text1[6], Command3D1[0], Command3D1[1]);
    zip_->SetRecordHasAddress([this] { return !IsNewRecord; });

    connect(Command3D2[2], &QPushButton::clicked, this, [this] {
        Command3D2[2]->setProperty("Tag", QString::fromLatin1(kOkTag));
        accept();
    });
    connect(Command3D2[1], &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdLin[0], &QPushButton::clicked, this, [this] { RunAction([this] { LinkPayer(); }); });
    connect(cmdLin[1], &QPushButton::clicked, this,
            [this] { RunAction([this] { UnlinkPayer(); }); });

    ShowPayerPage(ui_->pnlNoPayer);
    AlignLabelColumns();
}

insScreen::~insScreen() {
    if (lockHeld_) {
        lockHeld_ = false;
        ReleaseRecordLock();
    }
}

void insScreen::Setup_Screen(bool IsPharmacy, const QString& Command, int RecordID) {
    Loading = true;
    this->IsPharmacy = IsPharmacy;
    ApplyMode();
    RefreshPayerLine();
    if (RecordID != 0) {
        this->RecordID = RecordID;
        RecordLock = TakeRecordLock(
            IsPharmacy ? QStringLiteral("PHATABLE") : QStringLiteral("INSCOTABLE"), RecordID);
        lockHeld_ = RecordLock != 0;
        Load_Data();
        Modified = false;
    } else {
        IsNewRecord = true;
        RecordLock = component::kNewRecordLock;
        ApplyCommand(Command);
    }
    Loading = false;
    SetEditRights();
}

void insScreen::ApplyMode() {
    setWindowTitle(IsPharmacy ? kPharmacyCaption : kCarrierCaption);
    ui_->lblName->setText(IsPharmacy ? kPharmacyNameLabel : kCarrierNameLabel);
    ui_->fraPayer->setHidden(IsPharmacy);
    ui_->lblPreFix->setHidden(IsPharmacy);
    Text1[13]->setHidden(IsPharmacy);
    BindFields();
    AlignLabelColumns();
}

void insScreen::BindFields() {
    const QString prefix = IsPharmacy ? QStringLiteral("Pha") : QStringLiteral("InsCo");
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i) {
        const bool unbound = IsPharmacy && i == 13;
        Text1[i]->setProperty("DataField",
                              unbound ? QString() : prefix + QLatin1String(kColumnSuffixes[i]));
    }
    txtRemID->setProperty("DataField", QStringLiteral("InsCoAccID"));
    txtNEA->setProperty("DataField", QStringLiteral("InsCoSWChr"));
    txtLin[0]->setProperty("DataField", QStringLiteral("epPayID"));
    txtLin[1]->setProperty("DataField", QStringLiteral("epNam"));
    txtLin[2]->setProperty("DataField", QStringLiteral("epAddInf"));

    // A field takes no more than its column holds.
    schema::Catalog catalog;
    DeclareInsuranceTables(catalog);
    const schema::Table* table = catalog.Find(TableName());
    for (QWidget* holder : Holders()) {
        const schema::Column* column =
            table ? table->FindColumn(holder->property("DataField").toString()) : nullptr;
        auto* field = qobject_cast<QLineEdit*>(holder);
        if (field && column && column->width > 0)
            field->setMaxLength(column->width);
    }
}

FieldHolders insScreen::Holders() const {
    FieldHolders holders;
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        holders << Text1[i];
    if (!IsPharmacy)
        holders << txtRemID << txtNEA;
    return holders;
}

QString insScreen::TableName() const {
    return IsPharmacy ? QStringLiteral("PhaTable") : QStringLiteral("InsCoTable");
}

QString insScreen::KeyColumn() const {
    return IsPharmacy ? QStringLiteral("PhaID") : QStringLiteral("InsCoInd");
}

void insScreen::ApplyCommand(const QString& command) {
    const CarrierCommandFields fields = ParseCarrierCommand(command);
    for (auto it = fields.text.cbegin(); it != fields.text.cend(); ++it) {
        Text1[it.key()]->setText(it.value());
    }
    Modified = fields.modified;
}

// Labels sit right-aligned in one column across the address fields and the payer frame.
void insScreen::AlignLabelColumns() {
    int width = LabelColumnWidth(*ui_->gridFields);
    if (!ui_->fraPayer->isHidden())
        width = qMax(width, LabelColumnWidth(*ui_->gridPayer));
    ui_->gridFields->setColumnMinimumWidth(0, width);
    ui_->gridPayer->setColumnMinimumWidth(0, width);
}

void insScreen::Load_Data() {
    const bool wasLoading = Loading;
    Loading = true;
    gic_.ReadBoundRecord(RecordID, KeyColumn(), TableName(), Holders());
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        CleanUpField(i);
    RefreshPayerLine();
    pendingCleanUp_.fill(false);
    Modified = false;
    Loading = wasLoading;
}

void insScreen::Save_Record() {
    if (!IsPharmacy) {
        const bool wasLoading = Loading;
        Loading = true;
        txtRemID->setText(txtRemID->text().trimmed().toUpper());
        Loading = wasLoading;
    }
    int id = RecordID;
    gic_.WriteBoundRecord(id, KeyColumn(), TableName(), Holders());
    RecordID = id;
    Modified = false;
}

void insScreen::SetEditRights() {
    bool flag = false;
    // A new row and a pharmacy are anyone's to edit; a carrier is shared by its patients.
    CanEdit = IsNewRecord || IsPharmacy || gic_.CheckRight(kEditRight, QString(), flag);
    const bool editable = CanEdit && RecordLock != 0;
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        Text1[i]->setReadOnly(!editable);
    txtNEA->setReadOnly(!editable);
    Command3D2[2]->setEnabled(editable);
    for (QToolButton* lookup : Command3D1)
        lookup->setEnabled(editable);
    const bool electronicClaims = gic_.ReadSetting(QStringLiteral("DEFAULT_OFFICE_SETUP"),
                                                   QStringLiteral("ELECTRONIC_CLAIMS"), 0, true)
                                      .toBool();
    // The link writes txtRemID, a field: it is locked with the others.
    for (QPushButton* command : cmdLin)
        command->setEnabled(electronicClaims && editable);
}

int insScreen::CheckSave() {
    if (RecordLock == 0 || Loading || !Modified)
        return AnswerYes;
    int answer = AnswerYes;
    if (Command3D2[2]->property("Tag").toString() != QLatin1String(kOkTag)) {
        answer = prompts().Message(kSaveQuestion, Buttons::YesNoCancel, Icon::Question,
                                   windowTitle(), 1);
    }
    if (answer != AnswerYes)
        return answer;
    if (Text1[1]->text().trimmed().isEmpty()) {
        prompts().Message(kNameRequired, Buttons::Ok, Icon::Warning, windowTitle());
        return AnswerCancel;
    }
    const int confirmed = ConfirmGlobalChange();
    if (confirmed != AnswerYes)
        return confirmed;
    Save_Record();
    return AnswerYes;
}

int insScreen::ConfirmGlobalChange() {
    if (IsPharmacy || IsNewRecord)
        return AnswerYes;
    db::Connection& connection = gic_.GetConnection();
    int patients = 0;
    if (!CountCarrierCoverages(connection, RecordID, patients) || patients == 0)
        return AnswerYes;

    const db::Recordset rs(connection, QStringLiteral("Select * from InsCoTable where InsCoInd=") +
                                           QString::number(RecordID));
    if (rs.IsEmpty())
        return AnswerYes;
    CarrierIdentity stored;
    CarrierIdentity typed;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        stored[i] = rs.Text(CarrierIdentityColumns()[static_cast<qsizetype>(i)]);
        typed[i] = Text1[i + 1]->text();
    }
    if (!IsGlobalChange(stored, typed))
        return AnswerYes;

    const int answer = prompts().Message(GlobalChangeWarning(stored, typed, patients),
                                         Buttons::YesNoCancel, Icon::Warning, windowTitle(), 3);
    if (answer != AnswerYes)
        return answer;
    const QString login = gic_.GetLoginName();
    const std::optional<QString> typedAnswer =
        prompts().Input(login + kConfirmPrompt, windowTitle());
    if (!typedAnswer || typedAnswer->toUpper() != QLatin1String("YES"))
        return AnswerCancel;

    const QString entry = CarrierChangeLogEntry(RecordID, login, gic_.GetToday(), stored, typed);
    // The log is a courtesy to whoever asks later what happened; the change stands without it.
    if (!AppendCarrierChangeLog(gic_.GetDataPath() + QStringLiteral("STP/InsCo.LOG"), entry)) {
        qCWarning(lcInsurance) << "Could not append to the carrier change log in"
                               << gic_.GetDataPath();
    }
    return AnswerYes;
}

void insScreen::RefreshPayerLine() {
    const QString payerId = txtRemID->text().trimmed().toUpper();
    for (QLineEdit* line : txtLin)
        line->clear();
    if (payerId.isEmpty()) {
        ShowPayerPage(ui_->pnlNoPayer);
        txtNEA->clear();
        return;
    }
    gic_.ReadBoundRecord(payerId, QStringLiteral("epPayID"), QStringLiteral("ePayerTable"),
                         FieldHolders{txtLin[0], txtLin[1], txtLin[2]});
    ShowPayerPage(ui_->pnlPayerLine);
}

// The stack takes the height of the page it shows, not that of its tallest page.
void insScreen::ShowPayerPage(QWidget* page) {
    for (int i = 0; i < ui_->stkPayer->count(); ++i) {
        QWidget* each = ui_->stkPayer->widget(i);
        each->setSizePolicy(QSizePolicy::Preferred,
                            each == page ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    }
    ui_->stkPayer->setCurrentWidget(page);
}

void insScreen::LinkPayer() {
    const std::shared_ptr<PayerListWindow> payers = gic_.GetPayerListWindow(gic_.GetLoginName());
    if (!payers)
        return;
    QString chosen;
    if (!payers->ChoosePayer(this, txtRemID->text().trimmed().toUpper(), chosen))
        return;
    ChangePayerLink(txtRemID->text(), chosen);
}

void insScreen::UnlinkPayer() {
    ChangePayerLink(txtRemID->text(), QString());
}

void insScreen::ChangePayerLink(QString oldId, QString newId) {
    if (!Confirm_Payer_Link_Change(oldId, newId))
        return;
    txtRemID->setText(newId);
    RefreshPayerLine();
}

int insScreen::FieldIndex(const QObject* widget) const {
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i) {
        if (Text1[i] == widget)
            return i;
    }
    return 0;
}

void insScreen::OnFieldChanged(int index) {
    if (Loading)
        return;
    Modified = true;
    pendingCleanUp_[index] = true;
}

void insScreen::CleanUpField(int index) {
    QLineEdit* field = Text1[index];
    const QString text = field->text();
    QString cleaned = text;
    if (IsProperCaseField(index)) {
        cleaned = gic_.ProperCase(text).toString();
    } else if (IsStateField(index)) {
        cleaned = text.toUpper();
    } else if (IsPhoneField(index)) {
        cleaned = gic_.FormatPhone(text);
    }
    if (cleaned != text)
        field->setText(cleaned);
    pendingCleanUp_[index] = false;
}

// A close does what leaving the field would have done first, so that what is saved is what
// the user would have seen.
void insScreen::CleanUpPendingFields() {
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i) {
        if (pendingCleanUp_[i])
            CleanUpField(i);
    }
}

bool insScreen::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (!field)
        return QDialog::eventFilter(watched, event);
    if (event->type() == QEvent::FocusOut) {
        const int index = FieldIndex(field);
        if (index > 0 && pendingCleanUp_[index])
            RunAction([this, index] { CleanUpField(index); });
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if ((key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    switch (key->key()) {
        case Qt::Key_Up:
            focusNextPrevChild(false);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            focusNextPrevChild(true);
            return true;
        default:
            return false;
    }
}

void insScreen::done(int result) {
    int answer = AnswerCancel;
    const bool ran = RunAction([this, &answer] {
        CleanUpPendingFields();
        answer = CheckSave();
    });
    // The mark says where this close came from, not the next one.
    Command3D2[2]->setProperty("Tag", QVariant());
    if (!ran || answer == AnswerCancel)
        return;
    gic_.PutSavedRecordID(RecordID);
    ObjParent = nullptr;
    if (lockHeld_) {
        lockHeld_ = false;
        ReleaseRecordLock();
    }
    QDialog::done(result);
}

int insScreen::TakeRecordLock(const QString& tableKey, int recordId) {
    lockTableKey_ = tableKey;
    return component::LockRecord(gic_, tableKey, recordId, true);
}

void insScreen::ReleaseRecordLock() {
    component::UnlockRecord(gic_, lockTableKey_, RecordID, RecordLock);
}

void insScreen::ShowActionError(const QString& description) {
    prompts().Message(description, Buttons::Ok, Icon::Critical, windowTitle());
}

}  // namespace orvo::insurance
