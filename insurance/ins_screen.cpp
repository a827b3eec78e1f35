#include "insurance/ins_screen.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QToolButton>

#include "component/record_lock.h"
#include "insurance/carrier_change.h"
#include "insurance/coverage_counts.h"
#include "insurance/ins_command.h"
#include "insurance/insurance_log.h"
#include "insurance/insurance_tables.h"
#include "insurance/payer_link.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "tools/city_state_zip.h"
#include "ui_ins_screen.h"

namespace orvo::insurance {
namespace {

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

const QString kNameRequired =
    QStringLiteral("You must enter a company name before you can save these changes.");
const QString kConfirmPrompt =
    QStringLiteral(", to accept this change, type [Yes] below and click OK.");

const QString kEditRight = QStringLiteral("EDIT-EMP-INS");

// Column suffixes of Text1(1..13); the carrier's columns start "InsCo", the pharmacy's "Pha".
// A pharmacy keeps no prefix.
const char* const kColumnSuffixes[] = {"",    "Nam",  "Add1", "Add2", "Cit",  "Sta", "Zip",
                                       "Tel", "Tel2", "Fax",  "Rem1", "Rem2", "Ema", "PreFix"};

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

insScreen::insScreen(GIC& gic, QWidget* parent)
    : EditingDialog(gic, parent), ui_(std::make_unique<Ui::insScreen>()) {
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

    LimitToColumns();
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        OnLeave(Text1[i], [this, i] { CleanUpField(i); });
    AddFields({txtRemID, txtNEA});
    // City, state and zip fill each other from the zip table.
    zip_ = new tools::CityStateZip(gic, *this);
    zip_->Attach(Text1[4], Text1[5], Text1[6], Command3D1[0], Command3D1[1]);
    zip_->SetRecordHasAddress([this] { return !IsNewRecord; });

    SetOkButton(Command3D2[2]);
    SetCancelButton(Command3D2[1]);
    connect(cmdLin[0], &QPushButton::clicked, this, [this] { RunAction([this] { LinkPayer(); }); });
    connect(cmdLin[1], &QPushButton::clicked, this,
            [this] { RunAction([this] { ChangePayerLink(txtRemID->text(), QString()); }); });

    ShowPayerPage(ui_->pnlNoPayer);
    AlignLabelColumns();
}

insScreen::~insScreen() = default;

void insScreen::Setup_Screen(bool IsPharmacy, const QString& Command, int RecordID) {
    const LoadingScope loading(*this);
    this->IsPharmacy = IsPharmacy;
    ApplyMode();
    RefreshPayerLine();
    if (RecordID != 0) {
        RequireRecord(TableName(), KeyColumn(), RecordID);
        this->RecordID = RecordID;
        LockRecordFor(IsPharmacy ? QStringLiteral("PHATABLE") : QStringLiteral("INSCOTABLE"));
        Load_Data();
    } else {
        IsNewRecord = true;
        RecordLock = component::kNewRecordLock;
        ApplyCommand(Command);
    }
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
}

// A field takes no more than its column holds; the pharmacy's columns are as wide as the
// carrier's.
void insScreen::LimitToColumns() {
    schema::Catalog catalog;
    DeclareInsuranceTables(catalog);
    const schema::Table* table = catalog.Find(QStringLiteral("InsCoTable"));
    const auto limit = [table](QLineEdit* field, const QString& column) {
        if (const schema::Column* found = table->FindColumn(column); found && found->width > 0)
            field->setMaxLength(found->width);
    };
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        limit(Text1[i], QStringLiteral("InsCo") + QLatin1String(kColumnSuffixes[i]));
    limit(txtRemID, QStringLiteral("InsCoAccID"));
    limit(txtNEA, QStringLiteral("InsCoSWChr"));
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
    const LoadingScope loading(*this);
    gic().ReadBoundRecord(RecordID, KeyColumn(), TableName(), Holders());
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        CleanUpField(i);
    RefreshPayerLine();
    Modified = false;
}

void insScreen::Save_Record() {
    if (!IsPharmacy) {
        const LoadingScope loading(*this);
        txtRemID->setText(txtRemID->text().toUpper());
    }
    int id = RecordID;
    gic().WriteBoundRecord(id, KeyColumn(), TableName(), Holders());
    RecordID = id;
}

void insScreen::SetEditRights() {
    bool flag = false;
    // A new row and a pharmacy are anyone's to edit; a carrier is shared by its patients.
    CanEdit = IsNewRecord || IsPharmacy || gic().CheckRight(kEditRight, QString(), flag);
    const bool editable = CanEdit && RecordLock != 0;
    for (int i = 1; i < static_cast<int>(Text1.size()); ++i)
        Text1[i]->setReadOnly(!editable);
    txtNEA->setReadOnly(!editable);
    Command3D2[2]->setEnabled(editable);
    for (QToolButton* lookup : Command3D1)
        lookup->setEnabled(editable);
    const bool electronicClaims = gic()
                                      .ReadSetting(QStringLiteral("DEFAULT_OFFICE_SETUP"),
                                                   QStringLiteral("ELECTRONIC_CLAIMS"), 0, true)
                                      .toBool();
    // The link writes txtRemID, a field: it is locked with the others.
    for (QPushButton* command : cmdLin)
        command->setEnabled(electronicClaims && editable);
}

bool insScreen::CheckFields() {
    if (!Text1[1]->text().isEmpty())
        return true;
    prompts().Message(kNameRequired, Buttons::Ok, Icon::Warning, windowTitle());
    return false;
}

void insScreen::Closing() {
    gic().PutSavedRecordID(RecordID);
}

int insScreen::ConfirmGlobalChange() {
    if (IsPharmacy || IsNewRecord)
        return AnswerYes;
    db::Connection& connection = gic().GetConnection();
    int patients = 0;
    if (!CountCarrierCoverages(connection, RecordID, patients) || patients == 0)
        return AnswerYes;

    const db::Recordset rs(connection, QStringLiteral("Select * from InsCoTable where InsCoInd=") +
                                           QString::number(RecordID));
    if (rs.IsEmpty())
        return AnswerYes;
    // What was typed is set against the row as the screen showed it on loading, so that the
    // load's own tidying (a phone put in its format) is no change of the person's.
    CarrierIdentity stored;
    CarrierIdentity shown;
    CarrierIdentity typed;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        stored[i] = rs.Text(CarrierIdentityColumns()[static_cast<qsizetype>(i)]);
        shown[i] = CleanedUp(index, stored[i]);
        typed[i] = Text1[index]->text();
    }
    if (!IsGlobalChange(shown, typed))
        return AnswerYes;

    const int answer = prompts().Message(GlobalChangeWarning(stored, typed, patients),
                                         Buttons::YesNoCancel, Icon::Warning, windowTitle(), 3);
    if (answer != AnswerYes)
        return answer;
    const QString login = gic().GetLoginName();
    const std::optional<QString> typedAnswer =
        prompts().Input(login + kConfirmPrompt, windowTitle());
    if (!typedAnswer || typedAnswer->toUpper() != QLatin1String("YES"))
        return AnswerCancel;

    const QString entry = CarrierChangeLogEntry(RecordID, login, gic().GetToday(), stored, typed);
    // The log is a courtesy to whoever asks later what happened; the change stands without it.
    if (!AppendCarrierChangeLog(gic().GetDataPath() + QStringLiteral("STP/InsCo.LOG"), entry)) {
        qCWarning(lcInsurance) << "Could not append to the carrier change log in"
                               << gic().GetDataPath();
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
    gic().ReadBoundRecord(payerId, QStringLiteral("epPayID"), QStringLiteral("ePayerTable"),
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
    const std::shared_ptr<PayerListWindow> payers = gic().GetPayerListWindow(gic().GetLoginName());
    if (!payers)
        return;
    QString chosen;
    if (!payers->ChoosePayer(this, txtRemID->text().trimmed().toUpper(), chosen))
        return;
    ChangePayerLink(txtRemID->text(), chosen);
}

void insScreen::ChangePayerLink(QString oldId, QString newId) {
    if (!Confirm_Payer_Link_Change(oldId, newId))
        return;
    txtRemID->setText(newId);
    RefreshPayerLine();
}

// A field left with a change is tidied: names and addresses in mixed case, the state in
// capitals, phone numbers in the host's format. Loading tidies every field the same way.
QString insScreen::CleanedUp(int index, const QString& text) const {
    if (index >= 1 && index <= 4)
        return gic().ProperCase(text).toString();
    if (index == 5)
        return text.toUpper();
    if (index >= 7 && index <= 9)
        return gic().FormatPhone(text);
    return text;
}

void insScreen::CleanUpField(int index) {
    const QString cleaned = CleanedUp(index, Text1[index]->text());
    if (cleaned != Text1[index]->text())
        Text1[index]->setText(cleaned);
}

}  // namespace orvo::insurance
