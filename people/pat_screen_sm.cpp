#include "people/pat_screen_sm.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>

#include "component/record_lock.h"
#include "component/session.h"
#include "people/contacts.h"
#include "people/database_list.h"
#include "people/doc_list.h"
#include "people/find_person.h"
#include "people/frm_contact.h"
#include "people/people_tables.h"
#include "people/person_record.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"
#include "platform/schema/schema.h"
#include "tools/calendar.h"
#include "tools/city_state_zip.h"
#include "ui_pat_screen_sm.h"

namespace orvo::people {
namespace {

const QString kCaption = QStringLiteral("Patient Information");
const QString kReadOnly = QStringLiteral("Read only, cannot modify.");
const QString kSexRule = QStringLiteral("Only letters F or M are allowed.");
const QString kDateKeys = QStringLiteral("Date field only accept 0 to 9, / and - characters");
const QString kPressF9 = QStringLiteral("Please press F9 or click button.");
const QString kDeleteAddress = QStringLiteral("Do you want delete this City, State, and Zip Code?");
const QString kDatabaseTip = QStringLiteral("DATABASE LIST, Left mouse - Database list");
const QString kSaveTitle = QStringLiteral("Save Changes");
const QString kSaveNew = QStringLiteral("Save this new record?");
const QString kSaveChange = QStringLiteral("Save changes to this record?");
const QString kBlankName = QStringLiteral("Zzzzz");
const QString kAgeLabel = QStringLiteral(" Age : ");
const QString kAlertDateLabel = QStringLiteral(" Date : ");
const QString kReferredBy = QStringLiteral("Referred By :");
const QString kAlsoReferredBy = QStringLiteral("Also Referred By :");
const QString kFeeTitle = QStringLiteral("Fee Schedule");
const QString kSexTitleTitle = QStringLiteral("Sex and Title");
const QString kAlertTitle = QStringLiteral("Medical Alert");
const QString kAlertQuestion = QStringLiteral(
    "Update Medical Alert?\r\nClick 'Yes' to append to the existing data.\r\nClick 'No' to "
    "replace the existing data.\r\nClick 'Cancel' to discard the changes.");
const QString kContactFirst = QStringLiteral(
    "Before editing contact information, this new entry must be saved.\r\n\r\n"
    "Do you want to save now?");
const QString kNothingToEdit = QStringLiteral("Nothing to edit. Do you want to add one?");
const QString kSuiteTitle = QStringLiteral("ORVO Windows");
const QString kSearchTitle = QStringLiteral("Database Search");
const QString kOfficeSection = QStringLiteral("DEFAULT_OFFICE_SETUP");
// The separator between the name and what the name drop-down shows after it.
const QString kDropDownSeparator = QStringLiteral(" --- ");

// The columns of Text1(0..15) and Label5(0..21); empty where the field holds no column.
const char* const kTextColumns[16] = {"pLASNAM", "pFIRNAM", "",        "pSEX",   "pTTL",  "",
                                      "pSSN",    "pHOMPHO", "pBUSPHO", "pADD1",  "pADD2", "pCIT",
                                      "pSTA",    "pZIP",    "",        "pMEDALE"};
const char* const kCarrierColumns[22] = {
    "pMEDALEUPD", "pTypPat", "pTypDoc", "pTypRef",    "pTypPhy", "pTypEmp",      "pTypX1",
    "pTypX2",     "pBIRDAT", "pREFIND", "pFAMHEAIND", "pPROIND", "pPHY1",        "pPHY2",
    "",           "",        "",        "",           "",        "pGPDenFeeTyp", "pGPDenFeeTypPerm",
    "pACCTYP"};
// Carriers of numbers, which hold "0" rather than nothing.
constexpr int kNumberCarriers[] = {9, 10, 11, 12, 13, 19, 20};

enum Field {
    kLast = 0,
    kFirst = 1,
    kReferral = 2,
    kSex = 3,
    kTitle = 4,
    kBirth = 5,
    kSsn = 6,
    kHomePhone = 7,
    kWorkPhone = 8,
    kAdd1 = 9,
    kAdd2 = 10,
    kCity = 11,
    kState = 12,
    kZip = 13,
    kProvider = 14,
    kAlert = 15,
};
enum Carrier {
    kAlertDate = 0,
    kTypPat = 1,
    kTypDoc = 2,
    kTypRef = 3,
    kBirthDate = 8,
    kRefInd = 9,
    kFamilyHead = 10,
    kProInd = 11,
    kFeeType = 19,
    kFeeTypePerm = 20,
    kAccountType = 21,
};
enum Button {
    kReferralList = 0,
    kSexTitleList = 1,
    kCityList = 2,
    kZipList = 3,
    kProviderList = 4,
    kAlertList = 5,
    kCalendar = 6,
    kAlsoReferred = 7,
};

bool IsEditingKey(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete)
        return true;
    if (key.matches(QKeySequence::Paste) || key.matches(QKeySequence::Cut) ||
        key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo))
        return true;
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    return !key.text().isEmpty() && key.text().at(0).isPrint();
}

bool IsSoleKey(const QKeyEvent& key, Qt::Key which) {
    return key.key() == which && (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

}  // namespace

patScreen_SM::patScreen_SM(GIC& gic, QWidget* parent)
    : EditingDialog(gic, parent), ui_(std::make_unique<Ui::patScreen_SM>()) {
    ui_->setupUi(this);
    Text1 = {ui_->Text1_0,  ui_->Text1_1,  ui_->Text1_2,  ui_->Text1_3,
             ui_->Text1_4,  ui_->Text1_5,  ui_->Text1_6,  ui_->Text1_7,
             ui_->Text1_8,  ui_->Text1_9,  ui_->Text1_10, ui_->Text1_11,
             ui_->Text1_12, ui_->Text1_13, ui_->Text1_14, ui_->Text1_15};
    Label5 = {ui_->Label5_0,  ui_->Label5_1,  ui_->Label5_2,  ui_->Label5_3,  ui_->Label5_4,
              ui_->Label5_5,  ui_->Label5_6,  ui_->Label5_7,  ui_->Label5_8,  ui_->Label5_9,
              ui_->Label5_10, ui_->Label5_11, ui_->Label5_12, ui_->Label5_13, nullptr,
              nullptr,        nullptr,        nullptr,        nullptr,        ui_->Label5_19,
              ui_->Label5_20, ui_->Label5_21};
    Command3D1 = {ui_->Command3D1_0, ui_->Command3D1_1, ui_->Command3D1_2, ui_->Command3D1_3,
                  ui_->Command3D1_4, ui_->Command3D1_5, ui_->Command3D1_6, ui_->Command3D1_7};
    Command3D2_3 = ui_->Command3D2_3;
    cmdContact = ui_->cmdContact;
    cmdOK = ui_->cmdOK;
    cmdCancel = ui_->cmdCancel;
    Name_List = ui_->Name_List;
    setWindowTitle(kCaption);
    Command3D2_3->setVisible(false);

    BindFields();
    LimitToColumns();
    // Names and addresses in mixed case, the state in capitals, numbers in the host's format.
    for (const int i : {kLast, kFirst, kAdd1, kAdd2, kState, kSsn, kHomePhone, kWorkPhone})
        OnLeave(Text1[i], [this, i] { CleanUpField(i); });
    OnLeave(Text1[kBirth], [this] { LeaveBirthDate(); });
    OnLeave(Text1[kReferral], [this] { ResolveTypedName(Referral()); });
    OnLeave(Text1[kProvider], [this] { ResolveTypedName(Provider()); });
    AddFields({Text1[kSex], Text1[kTitle], Text1[kAlert]});
    zip_ = new tools::CityStateZip(gic, *this);
    zip_->Attach(Text1[kCity], Text1[kState], Text1[kZip], Command3D1[kCityList],
                 Command3D1[kZipList]);
    zip_->SetRecordHasAddress([this] { return !IsNewRecord; });
    // The screen's keys come before those of the city and zip list: its filter is installed
    // last, so it is asked first.
    for (QLineEdit* field : Text1)
        field->installEventFilter(this);
    Name_List->installEventFilter(this);

    connect(Text1[kSex], &QLineEdit::textEdited, this,
            [this] { RunAction([this] { SexEntered(); }); });
    connect(Text1[kState], &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text != text.toUpper()) {
            const int cursor = Text1[kState]->cursorPosition();
            Text1[kState]->setText(text.toUpper());
            Text1[kState]->setCursorPosition(cursor);
        }
    });
    connect(Text1[kAlert], &QLineEdit::textChanged, this, [this] { StampAlertDate(); });
    ConnectCommands();
    SetOkButton(cmdOK);
    SetCancelButton(cmdCancel);
}

patScreen_SM::~patScreen_SM() = default;

const patScreen_SM::NameLink& patScreen_SM::Referral() const {
    static const NameLink link{kReferral, kRefInd, QStringLiteral("Referral"),
                               QStringLiteral("pTypRef")};
    return link;
}

const patScreen_SM::NameLink& patScreen_SM::Provider() const {
    static const NameLink link{kProvider, kProInd, QStringLiteral("Provider"),
                               QStringLiteral("pTypDoc")};
    return link;
}

void patScreen_SM::BindFields() {
    for (int i = 0; i < static_cast<int>(Text1.size()); ++i)
        Text1[i]->setProperty("DataField", QString::fromLatin1(kTextColumns[i]));
    for (int i = 0; i < static_cast<int>(Label5.size()); ++i) {
        if (Label5[i])
            Label5[i]->setProperty("DataField", QString::fromLatin1(kCarrierColumns[i]));
    }
}

// A field takes no more than its column holds.
void patScreen_SM::LimitToColumns() {
    schema::Catalog catalog;
    DeclarePeopleTables(catalog);
    const schema::Table* table = catalog.Find(QStringLiteral("PATable"));
    for (QLineEdit* field : Text1) {
        const schema::Column* column = table->FindColumn(field->property("DataField").toString());
        // The city and zip fields take a whole line while it is typed (the zip helper holds
        // them to their columns on saving).
        if (column && column->width > 0 && field != Text1[kCity] && field != Text1[kZip])
            field->setMaxLength(column->width);
    }
    Text1[kBirth]->setMaxLength(10);
}

FieldHolders patScreen_SM::Holders() const {
    FieldHolders holders;
    for (QLineEdit* field : Text1) {
        if (!field->property("DataField").toString().isEmpty())
            holders << field;
    }
    for (QLabel* carrier : Label5) {
        if (carrier && !carrier->property("DataField").toString().isEmpty())
            holders << carrier;
    }
    return holders;
}

void patScreen_SM::ConnectCommands() {
    const auto on = [this](QAbstractButton* button, void (patScreen_SM::*command)()) {
        connect(button, &QAbstractButton::clicked, this,
                [this, command] { RunAction([this, command] { (this->*command)(); }); });
    };
    on(Command3D1[kReferralList], &patScreen_SM::OpenReferralList);
    on(Command3D1[kSexTitleList], &patScreen_SM::OpenSexTitleList);
    on(Command3D1[kProviderList], &patScreen_SM::OpenProviderList);
    on(Command3D1[kAlertList], &patScreen_SM::OpenMedicalAlertList);
    on(Command3D1[kCalendar], &patScreen_SM::OpenCalendar);
    on(Command3D1[kAlsoReferred], &patScreen_SM::ShowAlsoReferred);
    on(ui_->picSwapName, &patScreen_SM::picSwapName_Click);
    on(cmdContact, &patScreen_SM::OpenContacts);
    // OK (connected before the base's close) says whether booking follows; save-and-book is
    // OK with booking.
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        bookAppointment_ = bookRequested_;
        bookRequested_ = false;
    });
    connect(Command3D2_3, &QPushButton::clicked, this, [this] {
        bookRequested_ = true;
        cmdOK->click();
        bookRequested_ = false;
    });
    connect(Name_List, &QListWidget::itemDoubleClicked, this,
            [this] { ui_->lblReferral->setText(kReferredBy); });
    for (const int field : {kReferral, kProvider}) {
        Text1[field]->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(Text1[field], &QLineEdit::customContextMenuRequested, this, [this, field] {
            RunAction(
                [this, field] { EditLinkedPerson(field == kReferral ? Referral() : Provider()); });
        });
    }
}

void patScreen_SM::Setup_Screen(int PersonID, const QString& StartString) {
    const LoadingScope loading(*this);
    // Where the host asked for no tips, the database buttons say what they are.
    if (!gic().ReadStationSetting(QStringLiteral("POPUP_HELP_FLAG"), false).toBool()) {
        for (QToolButton* button : Command3D1) {
            if (button->toolTip().isEmpty())
                button->setToolTip(kDatabaseTip);
        }
    }
    if (PersonID != 0) {
        RequireRecord(QStringLiteral("PATable"), QStringLiteral("pID"), PersonID);
        RecordID = PersonID;
        Load_Data();
        LockRecordFor(QStringLiteral("PATABLE"));
    } else {
        IsNewRecord = true;
        RecordLock = component::kNewRecordLock;
        ApplyStartString(StartString);
        SetCarrier(kAccountType,
                   gic()
                       .ReadSetting(kOfficeSection, QStringLiteral("PAT_AC_TYP"), 0, QString())
                       .toString());
        Text1[kAlert]->setText(
            gic()
                .ReadSetting(kOfficeSection, QStringLiteral("PAT_MED_ALT"), 0, QString())
                .toString()
                .trimmed());
        if (!Text1[kAlert]->text().isEmpty())
            SetCarrier(kAlertDate, gic().GetToday().toString(QStringLiteral("MM-dd-yyyy")));
        component::session().ListCommand.clear();
    }
    FillNumberCarriers();
    ShowBirthDate();
    ShowAlertDate();
    if (LinkedId(Provider()) == 0) {
        SetCarrier(kProInd, QString::number(gic().GetDefaultProviderID()));
        ShowLinkedName(Provider());
    }
    IsProvider = Label5[kTypDoc]->text().trimmed() == QLatin1String("1");
    IsReferral = Label5[kTypRef]->text().trimmed() == QLatin1String("1");
    SetEditState();
    Modified = false;
}

void patScreen_SM::Load_Data() {
    const LoadingScope loading(*this);
    // The contact blocks settle first (a row from before them moves its phone over), so that
    // the phone fields read the row as it then is.
    Contacts_Setup();
    gic().ReadBoundRecord(RecordID, QStringLiteral("pID"), QStringLiteral("Patable"), Holders());
    loadedId_ = RecordID;
    ShowLinkedName(Referral());
    ShowLinkedName(Provider());
    ShowBirthDate();
    ShowAlertDate();
}

// "EMERGENCY" or "NEW", then the last and the first name separated by a line feed.
void patScreen_SM::ApplyStartString(const QString& start) {
    QString rest;
    if (start.startsWith(QLatin1String("EMERGENCY"))) {
        setWindowTitle(QStringLiteral("Emergency ") + kCaption);
        rest = start.mid(9);
    } else if (start.startsWith(QLatin1String("NEW"))) {
        setWindowTitle(QStringLiteral("New ") + kCaption);
        rest = start.mid(3);
    } else {
        return;
    }
    const QStringList names = rest.split(QLatin1Char('\n'));
    Text1[kLast]->setText(gic().ProperCase(names.value(0).trimmed()).toString());
    Text1[kFirst]->setText(gic().ProperCase(names.value(1).trimmed()).toString());
}

// A number carrier read as null, or never read, holds 0.
void patScreen_SM::FillNumberCarriers() {
    for (const int i : kNumberCarriers) {
        if (Label5[i]->text().trimmed().isEmpty())
            Label5[i]->setText(QStringLiteral("0"));
    }
}

void patScreen_SM::SetEditState() {
    const bool editable = Editable();
    for (QLineEdit* field : Text1)
        field->setReadOnly(!editable);
    for (QToolButton* button : Command3D1)
        button->setEnabled(editable);
    Command3D1[kAlsoReferred]->setEnabled(true);
    ui_->picSwapName->setEnabled(editable);
    cmdOK->setEnabled(editable);
    Command3D2_3->setEnabled(editable);
}

bool patScreen_SM::ShowSaveNBookAppt() const {
    return !Command3D2_3->isHidden();
}

void patScreen_SM::SetShowSaveNBookAppt(bool show) {
    Command3D2_3->setVisible(show);
}

// ---- Hidden carriers and what shows them ----

void patScreen_SM::SetCarrier(int index, const QString& text) {
    Label5[index]->setText(text);
    if (index == kBirthDate)
        ShowBirthDate();
    if (index == kAlertDate)
        ShowAlertDate();
}

void patScreen_SM::ShowBirthDate() {
    const LoadingScope quiet(*this);
    const QString stored = Label5[kBirthDate]->text().trimmed();
    const QString date =
        stored.isEmpty() ? QString() : gic().NormalizeDate(stored, QStringLiteral("Short Date"));
    if (date.isEmpty()) {
        Text1[kBirth]->clear();
        ui_->lblAge->setText(kAgeLabel);
        return;
    }
    Text1[kBirth]->setText(date);
    ui_->lblAge->setText(kAgeLabel + gic().CalculateAge(date));
}

void patScreen_SM::LeaveBirthDate() {
    const QString typed = Text1[kBirth]->text().trimmed();
    if (typed.isEmpty()) {
        SetCarrier(kBirthDate, QString());
        return;
    }
    const QString date = gic().NormalizeDate(typed, QStringLiteral("Short Date"));
    if (date.isEmpty()) {
        // Not a date: the last good one comes back, and the field keeps the focus.
        ShowBirthDate();
        Text1[kBirth]->setFocus(Qt::OtherFocusReason);
        return;
    }
    SetCarrier(kBirthDate, date);
}

void patScreen_SM::ShowAlertDate() {
    const QString date = Label5[kAlertDate]->text().trimmed();
    const QString normal =
        date.isEmpty() ? QString() : gic().NormalizeDate(date, QStringLiteral("Short Date"));
    ui_->lblAlertDate->setText(normal.isEmpty() ? QString() : kAlertDateLabel + normal);
}

void patScreen_SM::StampAlertDate() {
    if (Loading)
        return;
    SetCarrier(kAlertDate, gic().GetToday().toString(QStringLiteral("MM-dd-yyyy")));
}

void patScreen_SM::SexEntered() {
    QLineEdit* sex = Text1[kSex];
    const QString upper = sex->text().toUpper();
    if (upper != sex->text())
        sex->setText(upper);
    if (upper.isEmpty() || upper.front() == QLatin1Char('F') || upper.front() == QLatin1Char('M'))
        return;
    sex->clear();
    prompts().Beep();
    prompts().Message(kSexRule, Buttons::Ok, Icon::Information, windowTitle());
}

void patScreen_SM::CleanUpField(int index) {
    QLineEdit* field = Text1[index];
    QString cleaned = field->text();
    switch (index) {
        case kState:
            cleaned = cleaned.toUpper();
            break;
        case kSsn:
            cleaned = gic().FormatSsn(cleaned);
            break;
        case kHomePhone:
        case kWorkPhone:
            cleaned = gic().FormatPhone(cleaned);
            break;
        default:
            cleaned = gic().ProperCase(cleaned).toString();
            break;
    }
    if (cleaned != field->text())
        field->setText(cleaned);
}

// ---- Referral and provider ----

int patScreen_SM::LinkedId(const NameLink& link) const {
    return Label5[link.carrier]->text().trimmed().toInt();
}

void patScreen_SM::ShowLinkedName(const NameLink& link) {
    const LoadingScope quiet(*this);
    const int id = LinkedId(link);
    Text1[link.field]->setText(id == 0 ? QString()
                                       : gic().GetPersonName(id, QStringLiteral(" "), QString()));
}

void patScreen_SM::ClearLink(const NameLink& link) {
    if (LinkedId(link) != 0)
        Modified = true;
    SetCarrier(link.carrier, QStringLiteral("0"));
    ShowLinkedName(link);
}

// The person chosen for a link, through its list or its name drop-down. False when the person
// answered No to the change.
bool patScreen_SM::ChooseLinked(const NameLink& link, int pID) {
    const int current = LinkedId(link);
    if (pID == current) {
        ShowLinkedName(link);
        return false;
    }
    if (current != 0) {
        const QString name = gic().GetPersonName(pID, QStringLiteral(" "), QString());
        if (!gic().AskYesNo(true, link.title,
                            QStringLiteral("Change this patient's ") + link.title.toLower() +
                                QStringLiteral(" to [ ") + name + QStringLiteral(" ] ?"))) {
            ShowLinkedName(link);
            return false;
        }
    }
    SetCarrier(link.carrier, QString::number(pID));
    ShowLinkedName(link);
    Modified = true;
    return true;
}

void patScreen_SM::ChooseReferral(int pID) {
    ChooseLinked(Referral(), pID);
}

void patScreen_SM::ChooseProvider(int pID) {
    if (ChooseLinked(Provider(), pID) && !IsNewRecord)
        AskFeeSchedule(pID);
}

// A patient who moves to a provider of another fee schedule may move with the provider.
void patScreen_SM::AskFeeSchedule(int provider) {
    const short schedule = gic().GetProviderFeeSchedule(provider);
    if (schedule == Label5[kFeeTypePerm]->text().trimmed().toInt())
        return;
    if (!gic().AskYesNo(true, kFeeTitle,
                        QStringLiteral("Change this patient from Fee Schedule ") +
                            Label5[kFeeType]->text().trimmed() + QStringLiteral(" to ") +
                            QString::number(schedule) + QStringLiteral(" ?"))) {
        return;
    }
    SetCarrier(kFeeType, QString::number(schedule));
    SetCarrier(kFeeTypePerm, QString::number(schedule));
}

// The name drop-down: the name typed (the text before " --- ") is looked for among those who
// hold the role; one found is taken, several open the list to choose from, none is offered as
// a new entry.
void patScreen_SM::ResolveTypedName(const NameLink& link) {
    const QString name = Text1[link.field]->text().section(kDropDownSeparator, 0, 0).trimmed();
    const int current = LinkedId(link);
    if (name.isEmpty()) {
        ClearLink(link);
        return;
    }
    if (current != 0 &&
        name == gic().GetPersonName(current, QStringLiteral(" "), QString()).trimmed()) {
        return;
    }
    QList<int> found;
    {
        db::Recordset rs(gic().GetConnection(),
                         QStringLiteral("SELECT pID FROM PATable WHERE ") +
                             PersonRoleCriteria(PersonRole::Of(link.role.toUpper())) +
                             PersonNameCriteria(gic(), name, false) +
                             QStringLiteral(" ORDER BY pLASNAM, pFIRNAM, pID"));
        for (; !rs.Eof(); rs.MoveNext())
            found << static_cast<int>(rs.Long(0));
    }
    if (found.size() == 1) {
        link.field == kReferral ? ChooseReferral(found.front()) : ChooseProvider(found.front());
        return;
    }
    if (found.size() > 1) {
        link.field == kReferral ? OpenReferralList() : OpenProviderList();
        ShowLinkedName(link);
        return;
    }
    if (!gic().AskYesNo(true, kSearchTitle,
                        QStringLiteral("[ ") + name +
                            QStringLiteral(" ] was not found in the database. Add as new ?"))) {
        ShowLinkedName(link);
        return;
    }
    const int added = AddNamedPerson(link, name);
    link.field == kReferral ? ChooseReferral(added) : ChooseProvider(added);
}

// A new entry from the name drop-down: a person with the names typed and the link's role.
int patScreen_SM::AddNamedPerson(const NameLink& link, const QString& name) {
    QString last;
    QString first;
    gic().SplitPersonName(name, last, first);
    last = gic().ProperCase(last).toString();
    first = gic().ProperCase(first).toString();
    const int pID = static_cast<int>(gic().GetConnection().InsertWithIdentity(
        QStringLiteral("INSERT INTO PATable (pLASNAM, pFIRNAM) VALUES (%1, %2)")
            .arg(db::QuoteText(last.left(30)), db::QuoteText(first.left(30)))));
    SetPersonType(gic(), pID, link.role, QStringLiteral("1"));
    SetDefaultNickName(gic(), pID, first, kUseDefaultNickName);
    return pID;
}

void patScreen_SM::OpenReferralList() {
    if (!ShowReferralList)
        throw NotImplemented(QStringLiteral("The referral list of the patient screen"));
    const int chosen = ShowReferralList(this, LinkedId(Referral()));
    if (chosen != 0)
        ChooseReferral(chosen);
}

void patScreen_SM::OpenProviderList() {
    gic().PutPersonTypeField(QStringLiteral("pTypDoc"));
    component::session().ListCommand.clear();
    const QList<int> chosen = DocList::Run(gic(), this);
    if (chosen.size() == 1)
        ChooseProvider(chosen.front());
}

// Right-click on the referral or the provider: the person's own screen.
void patScreen_SM::EditLinkedPerson(const NameLink& link) {
    if (LinkedId(link) == 0 && prompts().Message(kNothingToEdit, Buttons::YesNo, Icon::Question,
                                                 kSuiteTitle, 1) != AnswerYes) {
        return;
    }
    throw NotImplemented(QStringLiteral("The provider and referral screen"));
}

// The patients of the same referral, in the list under the fields.
void patScreen_SM::ShowAlsoReferred() {
    Name_List->clear();
    const int referral = LinkedId(Referral());
    db::Recordset rs(gic().GetConnection(),
                     QStringLiteral("select pLasNam, pFirNam, pID from paTable where pREFIND = ") +
                         QString::number(referral) + QStringLiteral(" order by pLasNam, pFirNam"));
    for (; !rs.Eof(); rs.MoveNext()) {
        auto* item =
            new QListWidgetItem(rs.Text(0).trimmed() + QStringLiteral(", ") + rs.Text(1).trimmed());
        item->setData(Qt::UserRole, static_cast<int>(rs.Long(2)));
        Name_List->addItem(item);
    }
    ui_->lblReferral->setText(kAlsoReferredBy);
    Name_List->setVisible(true);
    Name_List->setFocus(Qt::OtherFocusReason);
}

// ---- Sex and title, medical alert, birth date ----

void patScreen_SM::OpenSexTitleList() {
    const QString present = Text1[kSex]->text() + QLatin1Char('/') + Text1[kTitle]->text();
    const std::optional<QString> choice =
        DatabaseList::Run(gic(), kSexTitleTitle, kSexTitleTable, kSexTitleColumn, present, this);
    if (choice)
        ChooseSexTitle(*choice);
}

void patScreen_SM::ChooseSexTitle(const QString& choice) {
    const bool filled =
        !Text1[kSex]->text().trimmed().isEmpty() || !Text1[kTitle]->text().trimmed().isEmpty();
    if (filled && !gic().AskYesNo(true, kSexTitleTitle,
                                  QStringLiteral("Change this patient's Sex/Title to [ ") + choice +
                                      QStringLiteral(" ] ?"))) {
        return;
    }
    const qsizetype slash = choice.indexOf(QLatin1Char('/'));
    if (slash < 0) {
        Text1[kTitle]->setText(choice.trimmed());
        return;
    }
    Text1[kSex]->setText(choice.left(slash).trimmed().toUpper().left(1));
    Text1[kTitle]->setText(choice.mid(slash + 1).trimmed());
}

void patScreen_SM::OpenMedicalAlertList() {
    const std::optional<QString> choice = DatabaseList::Run(gic(), kAlertTitle, kMedicalAlertTable,
                                                            kMedicalAlertColumn, QString(), this);
    if (choice)
        ChooseMedicalAlert(*choice);
}

void patScreen_SM::ChooseMedicalAlert(const QString& choice) {
    QLineEdit* alert = Text1[kAlert];
    const QString old = alert->text().trimmed();
    QString text = choice;
    if (!old.isEmpty()) {
        const int answer =
            prompts().Message(kAlertQuestion, Buttons::YesNoCancel, Icon::Question, kAlertTitle, 1);
        if (answer == AnswerYes)
            text = old + QStringLiteral(", ") + choice;
        else if (answer != AnswerNo)
            return;
    }
    alert->setText(text.left(alert->maxLength()));
    SetCarrier(kAlertDate, gic().GetToday().toString(QStringLiteral("MM-dd-yyyy")));
}

void patScreen_SM::OpenCalendar() {
    const QString chosen = tools::Calendar::Run(gic().GetToday(), QStringLiteral("NONE"),
                                                Text1[kBirth]->text(), QString(), QString(), this);
    if (chosen.trimmed().isEmpty())
        return;
    const QString date = gic().NormalizeDate(chosen, QStringLiteral("Short Date"));
    if (date.isEmpty())
        return;
    SetCarrier(kBirthDate, date);
    Modified = true;
}

void patScreen_SM::picSwapName_Click() {
    if (!Editable()) {
        RefuseReadOnly();
        return;
    }
    if (NameRightsRefuse(kLast))
        return;
    const QString last = Text1[kLast]->text();
    Text1[kLast]->setText(Text1[kFirst]->text());
    Text1[kFirst]->setText(last);
}

// ---- Contacts ----

void patScreen_SM::Contacts_Setup() {
    const struct {
        int block;
        QLabel* label;
    } blocks[] = {{Contacts::kHomeBlock, ui_->lblHomePhone},
                  {Contacts::kWorkBlock, ui_->lblWorkPhone}};
    for (const auto& each : blocks) {
        QString label;
        int length = 0;
        Contacts::ReadDisplayContact(gic(), RecordID, each.block, label, length);
        if (!label.isEmpty())
            each.label->setText(label + QStringLiteral(" :"));
    }
}

void patScreen_SM::Contacts_Save() {
    Contacts::SyncDisplayContact(gic(), RecordID, Contacts::kHomeBlock, Text1[kHomePhone]->text());
    Contacts::SyncDisplayContact(gic(), RecordID, Contacts::kWorkBlock, Text1[kWorkPhone]->text());
}

void patScreen_SM::OpenContacts() {
    if (IsNewRecord) {
        if (prompts().Message(kContactFirst, Buttons::YesNo, Icon::Question, kSaveTitle, 1) !=
            AnswerYes) {
            return;
        }
        if (!FinishLeaveSteps())
            return;
        Modified = true;
        if (Save(QString(), QString(), 0) != AnswerYes || IsNewRecord)
            return;
    }
    frmContact contact(gic(), this);
    contact.OwnerForm = this;
    contact.PatientID = RecordID;
    contact.Setup_Screen();
    contact.exec();
    const LoadingScope loading(*this);
    gic().ReadBoundRecord(RecordID, QStringLiteral("pID"), QStringLiteral("Patable"),
                          {Text1[kHomePhone], Text1[kWorkPhone]});
    Contacts_Setup();
}

// ---- Keys ----

void patScreen_SM::RefuseReadOnly() {
    prompts().Message(kReadOnly, Buttons::Ok, Icon::Information, windowTitle());
}

bool patScreen_SM::NameRightsRefuse(int index) {
    if (index != kLast && index != kFirst)
        return false;
    bool flag = false;
    if (IsProvider && !gic().CheckRight(QStringLiteral("CHANGE-PRO-NAME"),
                                        QStringLiteral("modify provider names"), flag)) {
        return true;
    }
    if (IsReferral && !gic().CheckRight(QStringLiteral("CHANGE-REF-NAME"),
                                        QStringLiteral("modify referral names"), flag)) {
        return true;
    }
    return false;
}

// True when the key was handled here and goes no further.
bool patScreen_SM::KeyInField(int index, const QKeyEvent& key) {
    const bool editing = IsEditingKey(key);
    if (editing && !Editable()) {
        RefuseReadOnly();
        return true;
    }
    if (editing && NameRightsRefuse(index))
        return true;
    if (IsSoleKey(key, Qt::Key_F9) && !Editable()) {
        RefuseReadOnly();
        return true;
    }
    if (IsSoleKey(key, Qt::Key_F9)) {
        switch (index) {
            case kReferral:
                OpenReferralList();
                return true;
            case kSex:
            case kTitle:
                OpenSexTitleList();
                return true;
            case kProvider:
                OpenProviderList();
                return true;
            case kAlert:
                OpenMedicalAlertList();
                return true;
            default:
                return false;  // the city and zip list take their own
        }
    }
    const bool erase = IsSoleKey(key, Qt::Key_Backspace) || IsSoleKey(key, Qt::Key_Delete);
    if (erase && !Text1[index]->text().isEmpty()) {
        switch (index) {
            case kReferral:
                ClearLink(Referral());
                return true;
            case kProvider:
                ClearLink(Provider());
                return true;
            case kSex:
            case kTitle:
                prompts().Message(kPressF9, Buttons::Ok, Icon::Information, windowTitle());
                return true;
            case kCity:
            case kState:
            case kZip:
                if (prompts().Message(kDeleteAddress, Buttons::YesNo, Icon::Question, windowTitle(),
                                      2) == AnswerYes) {
                    zip_->HidePanel();
                    for (const int field : {kCity, kState, kZip})
                        Text1[field]->clear();
                }
                return true;
            default:
                break;
        }
    }
    if (index == kBirth && editing && key.key() != Qt::Key_Backspace &&
        key.key() != Qt::Key_Delete && !key.text().isEmpty()) {
        const char16_t c = key.text().front().unicode();
        if (!((c >= u'0' && c <= u'9') || c == u'/' || c == u'-')) {
            prompts().Message(kDateKeys, Buttons::Ok, Icon::Information, windowTitle());
            return true;
        }
    }
    return false;
}

bool patScreen_SM::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        for (int i = 0; i < static_cast<int>(Text1.size()); ++i) {
            if (watched != Text1[i])
                continue;
            bool handled = false;
            RunAction([&] { handled = KeyInField(i, *key); });
            return handled || EditingDialog::eventFilter(watched, event);
        }
    }
    // Leaving the list of the same referral's patients puts the caption back.
    if (watched == Name_List && event->type() == QEvent::FocusOut)
        ui_->lblReferral->setText(kReferredBy);
    return EditingDialog::eventFilter(watched, event);
}

// ---- Save and close ----

// For a person who exists, blank names are filled before the question: the last name with
// "Zzzzz", and for a blank first name "Zzzzz" goes into the referral box, not into the first
// name, which stays empty. The front desk has long relied on that mark in the referral box to
// find persons saved without a first name; it is kept as it is.
void patScreen_SM::FillBlankNames() {
    const LoadingScope quiet(*this);
    if (Text1[kLast]->text().trimmed().isEmpty())
        Text1[kLast]->setText(kBlankName);
    if (Text1[kFirst]->text().trimmed().isEmpty())
        Text1[kReferral]->setText(kBlankName);
}

int patScreen_SM::CheckSave() {
    Exiting = true;
    // The base forgets where the close came from before the close goes on.
    closedByOk_ = ClosedByOk();
    int answer = AnswerCancel;
    try {
        // A new patient is always one to save (or to drop by answering No).
        if (IsNewRecord && Editable() && !Loading)
            Modified = true;
        if (!Editable() || Loading || !Modified) {
            answer = AnswerYes;
        } else {
            if (!IsNewRecord)
                FillBlankNames();
            answer = EditingDialog::CheckSave();
        }
    } catch (...) {
        Exiting = false;
        throw;
    }
    if (answer == AnswerCancel)
        Exiting = false;
    return answer;
}

int patScreen_SM::AskSave() {
    const QString first = Text1[kFirst]->text().trimmed();
    const QString last = Text1[kLast]->text().trimmed();
    const QString question =
        IsNewRecord ? QStringLiteral("New Patient, ") + first + QLatin1Char(' ') + last +
                          QStringLiteral(
                              "\r\n, has not been saved. This new entry will be "
                              "discarded if you answer No.\r\nDo you want to save now?")
                    : QStringLiteral("Current changes to ") + first + QLatin1Char(' ') + last +
                          QStringLiteral(" have not been saved. Save now?");
    const int answer =
        prompts().Message(question, Buttons::YesNoCancel, Icon::Question, kSaveTitle, 1);
    if (answer == AnswerCancel) {
        Exiting = false;
        Text1[kLast]->setFocus(Qt::OtherFocusReason);
    }
    return answer;
}

int patScreen_SM::Save(const QString& newText, const QString& changeText, int mode) {
    if (!Editable() || !Modified)
        return AnswerYes;
    if (!IsNewRecord)
        FillBlankNames();
    if (mode != 0) {
        const QString text = IsNewRecord ? (newText.isEmpty() ? kSaveNew : newText)
                                         : (changeText.isEmpty() ? kSaveChange : changeText);
        const int answer =
            prompts().Message(text, mode == 999 ? Buttons::YesNo : Buttons::YesNoCancel,
                              Icon::Question, kSaveTitle, 1);
        if (answer == AnswerCancel)
            return AnswerCancel;
        if (answer == AnswerNo) {
            Modified = false;
            return -1;
        }
    }
    Save_Record();
    Modified = false;
    return AnswerYes;
}

void patScreen_SM::Save_Record() {
    // A row that another station deleted is saved as a new one: it is no family of its own.
    if (RecordID == 0 && loadedId_ != 0 &&
        Label5[kFamilyHead]->text().trimmed().toInt() == loadedId_) {
        SetCarrier(kFamilyHead, QStringLiteral("0"));
    }
    Write_Record();
    // A saved patient is always in a family, of one if no other.
    if (Label5[kFamilyHead]->text().trimmed().toInt() == 0) {
        SetCarrier(kFamilyHead, QString::number(RecordID));
        Write_Record();
    }
    IsNewRecord = false;
    gic().PutPatientID(RecordID);
}

void patScreen_SM::Write_Record() {
    // What goes through this screen is a patient.
    SetCarrier(kTypPat, QStringLiteral("1"));
    FillNumberCarriers();
    const bool added = RecordID == 0;
    int id = RecordID;
    gic().WriteBoundRecord(id, QStringLiteral("pID"), QStringLiteral("PATable"), Holders());
    RecordID = id;
    if (added)
        SetDefaultNickName(gic(), RecordID, Text1[kFirst]->text(), kUseDefaultNickName);
    Contacts_Save();
}

void patScreen_SM::Closing() {
    Exiting = true;
    gic().PutPatientID(IsNewRecord ? 0 : RecordID);
    gic().SetActiveRecord(IsNewRecord ? 0 : RecordID, QStringLiteral("PAT"));
    if (closedByOk_)
        gic().SetBookAppointmentRequest(bookAppointment_);
    if (!IsNewRecord)
        gic().NotifyPersonChanged(RecordID);
}

}  // namespace orvo::people
