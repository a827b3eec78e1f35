#include "lists/frm_tg_list.h"

#include <QCloseEvent>
#include <QCompleter>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QTextDocument>
#include <QToolBar>
#include <QToolButton>

#include "component/command_text.h"
#include "component/public/component_error.h"
#include "component/session.h"
#include "insurance/payer_link.h"
#include "lists/filter_row.h"
#include "lists/grid_source.h"
#include "lists/list_definitions.h"
#include "lists/list_icons.h"
#include "lists/list_table_model.h"
#include "lists/lists_log.h"
#include "lists/person_delete_command.h"
#include "lists/shared_record_commands.h"
#include "people/person_record.h"
#include "platform/db/database_error.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "platform/user_action.h"
#include "ui_frm_tg_list.h"

namespace orvo::lists {
namespace {

const QChar kLf(10);
const QChar kCr(13);
const QString kProgramTitle = QStringLiteral("ORVO Windows");

struct ToolItemSpec {
    const char* key;
    const char* caption;  // empty for a separator
    const char* icon;
    const char* theme;
};

// The toolbar, in its order.
constexpr ToolItemSpec kToolItems[] = {
    {"New", "New", "New_32.png", "document-new"},
    {"Edit", "Edit", "Edit_32.png", "document-properties"},
    {"Delete", "Delete", "Delete_32.png", "edit-delete"},
    {"TopSep1", "", "", ""},
    {"RemFilt", "Remove Filter", "Rem_Filter_32.png", "edit-clear"},
    {"TopSep2", "", "", ""},
    {"Print", "Print List", "Print_32.png", "document-print"},
    {"TopSep3", "", "", ""},
    {"Patient", "Goto Patient", "Pat_Info_32.png", "avatar-default"},
    {"Trans", "Goto Transaction", "Trans_32.png", "x-office-spreadsheet"},
    {"TransHis", "Goto Transaction History", "Trans_Hist_32.png", "document-open-recent"},
    {"FamTab", "Goto Family Table", "Fam_Table_32.png", "system-users"},
    {"Aging", "Goto Aging Table", "Aging_32.png", "x-office-calendar"},
    {"Notes", "Goto Notes", "Notes_32.png", "accessories-text-editor"},
    {"PrintEnv", "Print Envelope", "PrintEnv_32.png", "mail-send"},
    {"Label", "Print Label", "Print_Labels_32.png", "printer"},
    {"LtrQ", "Quick Letter", "Q_Letter_32.png", "mail-message-new"},
    {"Image", "Goto Image", "Image_32.png", "image-x-generic"},
    {"TopSep4", "", "", ""},
    {"LinkG", "Link to Electronic Payer", "Link_32.png", "insert-link"},
    {"UnLinkG", "Un-link from Electronic Payer", "Unlink_32.png", "edit-cut"},
};

const QStringList kPatientItems{"Patient", "Trans",    "TransHis", "FamTab", "Aging",
                                "Notes",   "PrintEnv", "Label",    "LtrQ",   "Image"};
// The commands that act on the current row.
const QStringList kRowItems = kPatientItems + QStringList{"LinkG", "UnLinkG"};

bool ListsNeedRight(LookUpListTypes type) {
    return IsInsuranceList(type);
}

}  // namespace

frmTGList::frmTGList(GIC& gic, ListOwner& owner, QWidget* parent)
    : QDialog(parent), gic_(gic), owner_(owner), ui_(std::make_unique<Ui::frmTGList>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    model_ = new ListTableModel(this);
    ui_->DotNetGrid->setModel(model_);
    ui_->DotNetGrid->verticalHeader()->setDefaultSectionSize(
        ui_->DotNetGrid->fontMetrics().height() + 6);
    ui_->DotNetGrid->verticalHeader()->hide();
    ui_->DotNetGrid->horizontalHeader()->setSectionsMovable(true);
    ui_->DotNetGrid->horizontalHeader()->setSortIndicatorShown(true);
    ui_->DotNetGrid->horizontalHeader()->setSectionsClickable(true);
    ui_->DotNetGrid->setSelectionMode(QAbstractItemView::SingleSelection);
    filterRow_ = new FilterRow(ui_->DotNetGrid, ui_->filterHost);
    ui_->layFilterRow->addWidget(filterRow_);
    Timer1.setSingleShot(false);
    Timer1.setInterval(100);
    BuildToolbar();
    BuildMenu();
    ConnectControls();
    ChoosePrinter = [this](QPrinter& printer) {
        QPrintDialog dialog(&printer, this);
        return dialog.exec() == QDialog::Accepted;
    };
}

frmTGList::~frmTGList() = default;

// ---- Building ------------------------------------------------------------------------------

void frmTGList::BuildToolbar() {
    toolbar_ = new QToolBar(ui_->toolbarHost);
    toolbar_->setObjectName(QStringLiteral("ToolStrip1"));
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolbar_->setIconSize(QSize(32, 32));
    ui_->layToolbar->addWidget(toolbar_);
    const QString icons = gic_.GetProgramPath();
    for (const ToolItemSpec& spec : kToolItems) {
        const QString key = QLatin1String(spec.key);
        QAction* action = nullptr;
        if (*spec.caption == '\0') {
            action = toolbar_->addSeparator();
        } else {
            action = toolbar_->addAction(
                ToolbarIcon(icons, QLatin1String(spec.icon), QLatin1String(spec.theme)),
                QLatin1String(spec.caption));
            connect(action, &QAction::triggered, this, [this, key] {
                if (!ToolbarLoading)
                    RunCommand(key);
            });
            if (QWidget* button = toolbar_->widgetForAction(action))
                button->setObjectName(QStringLiteral("ToolStrip1_") + key);
        }
        action->setObjectName(key);
        items_.insert(key, action);
    }
}

void frmTGList::BuildMenu() {
    auto* bar = new QMenuBar(this);
    MnuFile = bar->addMenu(tr("&File"));
    MnuFile->setObjectName(QStringLiteral("MnuFile"));
    QAction* select = MnuFile->addAction(tr("&Select"), this, [this] { RunCommand("Okay"); });
    select->setObjectName(QStringLiteral("MnuFileSel"));
    QMenu* columns = MnuFile->addMenu(tr("Sort and &Columns"));
    columns->menuAction()->setObjectName(QStringLiteral("MnuFileSort"));
    // The column chooser: each column shown or hidden, and the sort by it.
    connect(columns, &QMenu::aboutToShow, this, [this, columns] {
        columns->clear();
        QHeaderView* header = ui_->DotNetGrid->horizontalHeader();
        for (int c = 0; c < model_->columnCount(); ++c) {
            QAction* shown = columns->addAction(model_->Caption(c));
            shown->setCheckable(true);
            shown->setChecked(!header->isSectionHidden(c));
            connect(shown, &QAction::toggled, this,
                    [header, c](bool on) { header->setSectionHidden(c, !on); });
        }
    });
    QAction* reset = MnuFile->addAction(tr("&Restore Default Layout"), this, [this] {
        QHeaderView* header = ui_->DotNetGrid->horizontalHeader();
        for (int c = 0; c < header->count(); ++c) {
            header->setSectionHidden(c, false);
            header->moveSection(header->visualIndex(c), c);
        }
        ui_->DotNetGrid->resizeColumnsToContents();
    });
    reset->setObjectName(QStringLiteral("MnuFileResDef"));
    MnuFile->addSeparator();
    QAction* exit = MnuFile->addAction(tr("E&xit"), this, [this] { RunCommand("Close"); });
    exit->setObjectName(QStringLiteral("MnuFileExit"));
    layout()->setMenuBar(bar);
}

void frmTGList::ConnectControls() {
    connect(ui_->cmdOkay, &QPushButton::clicked, this, [this] { RunCommand("Okay"); });
    connect(ui_->cmdClose, &QPushButton::clicked, this, [this] { RunCommand("Close"); });
    connect(ui_->cmdSearch, &QPushButton::clicked, this, [this] { RunCommand("Search"); });
    connect(ui_->cmdHelp, &QPushButton::clicked, this, [this] { RunCommand("Help"); });
    connect(filterRow_, &FilterRow::FilterEdited, this, &frmTGList::FilterEdited);
    connect(ui_->DotNetGrid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { CurrentRowChanged(); });
    connect(model_, &QAbstractItemModel::modelReset, this, [this] { CurrentRowChanged(); });
    connect(ui_->DotNetGrid, &QAbstractItemView::doubleClicked, this, [this] {
        if (No_Double_Click)
            return;
        RunCommand(SelectMode ? QStringLiteral("Okay") : QStringLiteral("Edit"));
    });
    connect(ui_->DotNetGrid->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder order) { model_->sort(column, order); });
    connect(ui_->optFiltMid, &QRadioButton::toggled, this, [this](bool anywhere) {
        FilterSearchAny = anywhere;
        model_->SetMatchAnywhere(anywhere);
        RefreshRowCount();
        StoreFilterOption(QStringLiteral("FILTER_SRCH_ANY"), anywhere);
    });
    connect(ui_->chkAutoClearFilter, &QCheckBox::toggled, this, [this](bool on) {
        FilterAutoClear = on;
        StoreFilterOption(QStringLiteral("FILTER_AUTO_CLEAR"), on);
    });
    connect(&Timer1, &QTimer::timeout, this, [this] { GotoTimer(); });
}

// ---- Loading -------------------------------------------------------------------------------

void frmTGList::Form_Load() {
    component::Session& state = component::session();
    listCommand_ = state.ListCommand.toUpper();
    IsSkipList = listCommand_.contains(QStringLiteral("SKIP LIST IF NEW"));
    state.ListCommand.clear();
    CurrentID = 0;
    SelectedID = 0;
    Select_String.clear();
    SelectionDone = false;
    AllowEdit = true;
    activated_ = false;
    canEditInsurance_.reset();
    personTypeField_ = gic_.GetPersonTypeField();
}

void frmTGList::SetIDField(const QString& alias) {
    ui_->IDFld->setText(alias);
}

void frmTGList::SetNameField(const QString& alias) {
    ui_->NamFld->setText(alias);
}

QString frmTGList::IDField() const {
    return ui_->IDFld->text();
}

QString frmTGList::NameField() const {
    return ui_->NamFld->text();
}

void frmTGList::SetSQL(const QString& sql) {
    sql_ = ListSqlForKind(sql, gic_.GetDatabaseKind());
    ui_->SQLLabel->setText(sql_);
    LoadRows();
    ListEmpty = model_->TotalRows() == 0;
    RefreshToolbarState();
    RefreshRowCount();
}

// The read: the grid's columns from the aliases, the rows of the statement, the sort. A failed
// read is reported through the boundary and leaves the grid empty.
void frmTGList::LoadRows() {
    const GridSource source = BuildGridSource(sql_, sortBy_);
    const bool read = RunUserAction(
        windowTitle(), [&] { model_->Load(gic_.GetConnection(), sql_, source.captions); });
    if (!read)
        model_->LoadRows(source.captions, {});
    filterRow_->Rebuild(model_->Captions());
    QList<SortKey> keys;
    for (QString column : source.sort) {
        SortKey key;
        if (column.endsWith(QLatin1String(" DESC"), Qt::CaseInsensitive)) {
            key.order = Qt::DescendingOrder;
            column.chop(5);
        } else if (column.endsWith(QLatin1String(" ASC"), Qt::CaseInsensitive)) {
            column.chop(4);
        }
        key.column = model_->ColumnOf(StripBrackets(column));
        if (key.column < 0)
            key.column = model_->ColumnOf(StripBrackets(column.section(QLatin1Char('.'), -1)));
        if (key.column >= 0)
            keys << key;
    }
    // A statement that orders its rows itself keeps the order the engine gave them, unless the
    // sort names the grid's own columns.
    if (!keys.isEmpty()) {
        model_->SortBy(keys);
        const QSignalBlocker quiet(ui_->DotNetGrid->horizontalHeader());
        ui_->DotNetGrid->horizontalHeader()->setSortIndicator(keys.first().column,
                                                              keys.first().order);
    }
    ui_->DotNetGrid->resizeColumnsToContents();
    QHeaderView* header = ui_->DotNetGrid->horizontalHeader();
    for (int c = 0; c < header->count(); ++c)
        header->resizeSection(c, std::clamp(header->sectionSize(c), 60, 260));
    if (model_->rowCount() > 0)
        ui_->DotNetGrid->setCurrentIndex(model_->index(0, 0));
}

void frmTGList::SetGridLayout(const QString& layoutKey) {
    ui_->lblStpFile->setText(layoutKey);
    const QString section = SettingsSection();
    const QString station = gic_.GetStationID();
    const bool any =
        gic_.ReadSetting(section, station + QStringLiteral("FILTER_SRCH_ANY"), 0, false).toBool();
    const bool autoClear =
        gic_.ReadSetting(section, station + QStringLiteral("FILTER_AUTO_CLEAR"), 0, false).toBool();
    const bool wasLoading = ToolbarLoading;
    ToolbarLoading = true;
    ui_->optFiltMid->setChecked(any);
    ui_->optFiltLeft->setChecked(!any);
    ui_->chkAutoClearFilter->setChecked(autoClear);
    FilterSearchAny = any;
    FilterAutoClear = autoClear;
    model_->SetMatchAnywhere(any);
    ToolbarLoading = wasLoading;
}

QString frmTGList::SettingsSection() const {
    const QString key = ui_->lblStpFile->text();
    return key.isEmpty() ? QStringLiteral("SESC_LUL") : key;
}

void frmTGList::StoreFilterOption(const QString& key, bool value) {
    if (ToolbarLoading)
        return;
    RunUserAction(windowTitle(), [&] {
        gic_.WriteSetting(SettingsSection(), gic_.GetStationID() + key, 0, value);
    });
}

void frmTGList::RestoreScreenPosition() {
    const QString key = SettingsSection() + QStringLiteral("_POSITION");
    QVariant stored;
    RunUserAction(windowTitle(), [&] { stored = gic_.ReadStationSetting(key, QString()); });
    const QStringList parts = stored.toString().split(QLatin1Char(','));
    if (parts.size() != 4)
        return;
    const QRect rect(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
    if (rect.width() < 200 || rect.height() < 150)
        return;
    // A position saved on a screen that is no longer there is not used.
    const QScreen* screen = QGuiApplication::screenAt(rect.center());
    if (!screen)
        return;
    setGeometry(rect.intersected(screen->availableGeometry()));
}

void frmTGList::SaveScreenPosition() {
    const QRect rect = geometry();
    const QString value = QStringLiteral("%1,%2,%3,%4")
                              .arg(rect.x())
                              .arg(rect.y())
                              .arg(rect.width())
                              .arg(rect.height());
    RunUserAction(windowTitle(), [&] {
        gic_.WriteStationSetting(SettingsSection() + QStringLiteral("_POSITION"), value);
    });
}

void frmTGList::Setup_ToolBar(bool ShowPatientButtons, bool ShowPrintOptions, bool bSelectMode,
                              bool ShowPayerLink) {
    ToolbarLoading = true;
    SelectMode = bSelectMode;
    const bool carriers = ListType == lulInsuranceCo;
    for (const QString& key : kPatientItems)
        items_[key]->setVisible(ShowPatientButtons);
    items_["Label"]->setVisible(ShowPatientButtons || carriers);
    items_["TopSep3"]->setVisible(ShowPatientButtons || carriers);
    items_["Print"]->setVisible(true);
    items_["TopSep4"]->setVisible(carriers);
    items_["LinkG"]->setVisible(carriers && ShowPayerLink);
    items_["UnLinkG"]->setVisible(carriers && ShowPayerLink);
    Q_UNUSED(ShowPrintOptions);
    ui_->DotNetGrid->setSelectionMode(MultiSelect ? QAbstractItemView::ExtendedSelection
                                                  : QAbstractItemView::SingleSelection);
    ToolbarLoading = false;
    RefreshToolbarState();
}

// ---- State ---------------------------------------------------------------------------------

void frmTGList::CurrentRowChanged() {
    const QModelIndex current = ui_->DotNetGrid->currentIndex();
    CurrentID = current.isValid() ? RowId(current.row()) : 0;
    RefreshToolbarState();
}

int frmTGList::RowId(int row) const {
    const int record = model_->RecordOfRow(row);
    return component::Val(model_->RecordText(record, model_->ColumnOf(IDField())));
}

QString frmTGList::RowText(const QString& column) const {
    const QModelIndex current = ui_->DotNetGrid->currentIndex();
    if (!current.isValid())
        return QString();
    return model_->RecordText(model_->RecordOfRow(current.row()), model_->ColumnOf(column));
}

void frmTGList::RefreshRowCount() {
    if (ListType == lulInsGroup) {
        ui_->RowLabel->clear();
        return;
    }
    QString text = QStringLiteral("Total = ") + QString::number(model_->TotalRows());
    if (model_->HasFilter())
        text += QStringLiteral(" [ ") + QString::number(model_->ShownRows()) + QStringLiteral(" ]");
    ui_->RowLabel->setText(text);
}

void frmTGList::RefreshToolbarState() {
    if (SelectionDone || items_.isEmpty())
        return;
    AllowEdit = true;
    if (ListsNeedRight(ListType) || ListType == lulInsuranceCo) {
        if (!canEditInsurance_) {
            bool flag = false;
            bool right = false;
            RunUserAction(windowTitle(), [&] {
                right = gic_.CheckRight(QStringLiteral("EDIT-EMP-INS"), QString(), flag);
            });
            canEditInsurance_ = right;
        }
        if (ListsNeedRight(ListType))
            AllowEdit = *canEditInsurance_;
    }
    const bool rows = model_->rowCount() > 0;
    const bool current = rows && ui_->DotNetGrid->currentIndex().isValid();
    items_["Edit"]->setEnabled(current);
    items_["Print"]->setEnabled(rows);
    for (const QString& key : kRowItems)
        items_[key]->setEnabled(current);
    bool canDelete = current && AllowEdit;
    if (IsPersonList(ListType))
        canDelete = canDelete && AllowDelete;
    items_["Delete"]->setEnabled(canDelete);
    if (ListType == lulInsuranceCo) {
        const bool right = canEditInsurance_.value_or(false);
        const bool linked = !RowText(QStringLiteral("Payer ID")).trimmed().isEmpty();
        items_["LinkG"]->setEnabled(current && right && !linked);
        items_["UnLinkG"]->setEnabled(current && right && linked);
    }
}

void frmTGList::FilterEdited(int column, const QString& text) {
    const int keep = CurrentID;
    model_->SetFilter(column, text);
    if (keep == 0 || !PositionOn(keep)) {
        if (model_->rowCount() > 0)
            ui_->DotNetGrid->setCurrentIndex(model_->index(0, 0));
    }
    CurrentRowChanged();
    RefreshRowCount();
}

bool frmTGList::SetColumnFilter(const QString& columnName, const QString& text) {
    const int column = model_->ColumnOf(StripBrackets(columnName));
    if (column < 0)
        return false;
    filterRow_->SetText(column, text);
    return true;
}

void frmTGList::SetFilterChoices(const QString& columnName, const QStringList& values) {
    QLineEdit* edit = filterRow_->Edit(model_->ColumnOf(columnName));
    if (!edit)
        return;
    auto* completer = new QCompleter(values, edit);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    edit->setCompleter(completer);
}

bool frmTGList::PositionOn(int id) {
    const int record = model_->FindRecord(model_->ColumnOf(IDField()), id);
    const int row = model_->RowOfRecord(record);
    if (row < 0)
        return false;
    const QModelIndex index = model_->index(row, 0);
    ui_->DotNetGrid->setCurrentIndex(index);
    ui_->DotNetGrid->scrollTo(index, QAbstractItemView::PositionAtCenter);
    CurrentRowChanged();
    return true;
}

QList<int> frmTGList::SelectedIds() const {
    QList<int> ids;
    if (MultiSelect) {
        QModelIndexList rows = ui_->DotNetGrid->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end(),
                  [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
        for (const QModelIndex& index : rows)
            ids << RowId(index.row());
    }
    if (ids.isEmpty() && CurrentID != 0)
        ids << CurrentID;
    return ids;
}

QString frmTGList::LookupColumn(int ID, const QString& ColumnName) {
    db::Recordset rs(gic_.GetConnection(), gic_.TranslateSql(LookupSql(sql_, IDField(), ID)));
    if (rs.IsEmpty())
        return QString();
    const QStringList captions = BuildGridSource(sql_, QString()).captions;
    for (qsizetype c = 0; c < captions.size() && c < rs.FieldCount(); ++c) {
        if (captions[c].compare(StripBrackets(ColumnName), Qt::CaseInsensitive) == 0)
            return rs.Text(static_cast<int>(c));
    }
    return QString();
}

// After an edit the one row is read again and put in place; a record that is new to the list
// joins it at the end. The rest of the list is not read again.
void frmTGList::RefreshRecord(int id) {
    if (id == 0)
        return;
    db::Recordset rs(gic_.GetConnection(), gic_.TranslateSql(LookupSql(sql_, IDField(), id)));
    if (rs.IsEmpty())
        return;
    QVariantList values;
    for (int c = 0; c < rs.FieldCount(); ++c)
        values << rs.Value(c);
    const int record = model_->FindRecord(model_->ColumnOf(IDField()), id);
    if (record >= 0) {
        model_->UpdateRecord(record, values);
    } else {
        model_->AppendRecord(values);
    }
    ListEmpty = model_->TotalRows() == 0;
    if (!PositionOn(id)) {
        // A filter hides it: the person asked for this record, so the filter goes.
        filterRow_->ClearAll();
        PositionOn(id);
    }
    RefreshRowCount();
}

// ---- Activation and closing ----------------------------------------------------------------

bool frmTGList::FirstActivation() {
    if (activated_)
        return true;
    activated_ = true;
    RefreshRowCount();
    if (OwnerForm && listCommand_.startsWith(QStringLiteral("NEW"))) {
        const QString name = listCommand_.mid(3).section(QChar(1), 0, 0);
        if (IsPersonList(ListType)) {
            RunUserAction(windowTitle(), [&] { Command_NewPerson(name); });
        } else {
            RunUserAction(windowTitle(), [&] { Command_New(); });
        }
    }
    static const QList<LookUpListTypes> kSkipTypes{lulInsuranceCo, lulEmployer, lulGroupPlan,
                                                   lulRecallMaster, lulPharmacy};
    if (ListEmpty && IsSkipList && kSkipTypes.contains(ListType)) {
        RunUserAction(windowTitle(), [&] { Command_New(); });
        return false;
    }
    return !SelectionDone;
}

void frmTGList::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (shownBefore_ && FilterAutoClear)
        Command_RemoveFilter();
    shownBefore_ = true;
    ui_->DotNetGrid->setFocus();
}

void frmTGList::closeEvent(QCloseEvent* event) {
    SaveScreenPosition();
    QDialog::closeEvent(event);
}

void frmTGList::done(int result) {
    Timer1.stop();
    SaveScreenPosition();
    QDialog::done(result);
}

void frmTGList::Unload(int result) {
    done(result);
}

// ---- Commands ------------------------------------------------------------------------------

void frmTGList::RunCommand(const QString& key) {
    RunUserAction(windowTitle(), [&] { ToolStrip_ItemClicked(key); });
}

void frmTGList::ToolStrip_ItemClicked(const QString& key) {
    if (ToolbarLoading)
        return;
    static const QStringList kNeedRow{"Edit",     "Delete",   "Okay",  "Patient", "Trans",
                                      "TransHis", "FamTab",   "Aging", "Notes",   "Image",
                                      "LtrQ",     "PrintEnv", "Label", "LinkG",   "UnLinkG"};
    if (kNeedRow.contains(key) && CurrentID == 0)
        return;
    const QString id = QString::number(CurrentID);
    LookUpListEvents& events = owner_.Events();
    if (key == QLatin1String("New")) {
        if (IsPersonList(ListType)) {
            Command_NewPerson();
        } else if (ListType == lulInsuranceCo || ListType == lulEmployer ||
                   ListType == lulGroupPlan || ListType == lulRecallMaster ||
                   ListType == lulPharmacy) {
            Command_New();
        }
    } else if (key == QLatin1String("Edit")) {
        Command_Edit();
    } else if (key == QLatin1String("Delete")) {
        Command_Delete();
    } else if (key == QLatin1String("Print")) {
        Command_Print();
    } else if (key == QLatin1String("Help")) {
        ReportNotAvailable(tr("Help for this list"));
    } else if (key == QLatin1String("Close")) {
        SelectedID = 0;
        Select_String.clear();
        Unload(QDialog::Rejected);
    } else if (key == QLatin1String("Search")) {
        Command_Search();
    } else if (key == QLatin1String("RemFilt")) {
        Command_RemoveFilter();
    } else if (key == QLatin1String("Okay")) {
        Command_Okay();
    } else if (key == QLatin1String("Patient") || key == QLatin1String("Trans")) {
        if (!PatientCheck(key))
            return;
        QString whereto = key == QLatin1String("Patient") ? QStringLiteral("PATIENT")
                                                          : QStringLiteral("TRANSACTION");
        QString designation = id + kLf;
        events.SwapModuleCalled(whereto, designation);
        Unload(QDialog::Rejected);
    } else if (key == QLatin1String("TransHis") || key == QLatin1String("FamTab") ||
               key == QLatin1String("Aging")) {
        if (!PatientCheck(key))
            return;
        QString button = key;
        int current = CurrentID;
        events.ButtonClicked(button, current);
    } else if (key == QLatin1String("Notes")) {
        QString whereto = QStringLiteral("ORVODPEDIT");
        QString designation = id + kLf;
        events.SwapModuleCalled(whereto, designation);
    } else if (key == QLatin1String("Image")) {
        if (ShowMode != 1)
            return;
        int current = CurrentID;
        Unload(QDialog::Rejected);
        QString button = QStringLiteral("Image");
        events.ButtonClicked(button, current);
    } else if (key == QLatin1String("LtrQ")) {
        Command_QuickLetter();
    } else if (key == QLatin1String("PrintEnv") || key == QLatin1String("Label")) {
        Command_Label(key);
    } else if (key == QLatin1String("LinkG")) {
        LinkPayer(false);
    } else if (key == QLatin1String("UnLinkG")) {
        LinkPayer(true);
    }
}

void frmTGList::ReportNotAvailable(const QString& what) {
    qCInfo(lcLists).noquote() << what << "is not available yet";
    prompts().Message(tr("%1 is not available yet.").arg(what), Buttons::Ok, Icon::Information,
                      windowTitle());
}

// Calls a start method through an EditingScreen made for the call. A screen that is not built
// yet is said so in plain words. False when no screen ran.
bool frmTGList::RunStart(const QString& what, const std::function<void(EditingScreen&)>& start) {
    std::unique_ptr<EditingScreen> screen = owner_.NewEditingScreen(this);
    try {
        start(*screen);
    } catch (const NotImplemented&) {
        ReportNotAvailable(what);
        return false;
    }
    return true;
}

bool frmTGList::PatientCheck(const QString& key) {
    const QString type = db::ReadScalar(gic_.GetConnection(),
                                        QStringLiteral("SELECT pTypPat FROM PATABLE WHERE pID=") +
                                            QString::number(CurrentID))
                             .toString()
                             .trimmed();
    if (type == QLatin1String("1"))
        return true;
    const QString name = RowText(NameField()).trimmed();
    const QString screen = key == QLatin1String("Trans")
                               ? QStringLiteral(
                                     " is not a patient and has no Patient Transaction "
                                     "Screen. Do ")
                               : QStringLiteral(
                                     " is not a patient and has no Patient Information "
                                     "Screen. Do ");
    const QString text = name + screen + QStringLiteral("you want to make ") + name +
                         QStringLiteral(" a patient now?");
    if (prompts().Message(text, Buttons::YesNo, Icon::Question, kProgramTitle) != AnswerYes)
        return false;
    people::SetPersonType(gic_, CurrentID, QStringLiteral("pTypPat"), QStringLiteral("1"));
    return true;
}

void frmTGList::Command_Delete() {
    SharedRecordCommands shared(gic_, *this, owner_);
    if (IsPersonList(ListType)) {
        try {
            PersonDeleteCommand(gic_, *this).Delete_Person();
        } catch (const NotImplemented& missing) {
            qCInfo(lcLists).noquote() << missing.what();
            ReportNotAvailable(tr("Deleting a family head"));
        }
    } else if (ListType == lulInsuranceCo) {
        shared.Delete_Carrier();
    } else if (ListType == lulEmployer) {
        shared.Delete_Employer();
    } else if (ListType == lulGroupPlan) {
        shared.Delete_GroupPlan();
    } else if (ListType == lulPharmacy) {
        shared.Delete_Pharmacy();
    } else if (ListType == lulRecallMaster) {
        ReportNotAvailable(tr("Deleting a recall master"));
    }
    RefreshRowCount();
    ui_->DotNetGrid->setFocus();
}

// The grid as shown (its visible columns, in their order; the rows the filter leaves), as a
// table on the chosen printer.
void frmTGList::Command_Print() {
    bool cancel = false;
    LookUpListEvents& events = owner_.Events();
    events.BeforePrint(cancel);
    if (!cancel) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setDocName(windowTitle());
        if (ChoosePrinter && ChoosePrinter(printer)) {
            QHeaderView* header = ui_->DotNetGrid->horizontalHeader();
            QList<int> columns;
            for (int visual = 0; visual < header->count(); ++visual) {
                const int c = header->logicalIndex(visual);
                if (!header->isSectionHidden(c))
                    columns << c;
            }
            QString html =
                QStringLiteral(
                    "<h3>%1</h3><p>%2</p><table border=1 cellspacing=0 "
                    "cellpadding=2><tr>")
                    .arg(windowTitle().toHtmlEscaped(), ui_->RowLabel->text().toHtmlEscaped());
            for (const int c : columns)
                html += QStringLiteral("<th>%1</th>").arg(model_->Caption(c).toHtmlEscaped());
            html += QStringLiteral("</tr>");
            for (int row = 0; row < model_->rowCount(); ++row) {
                html += QStringLiteral("<tr>");
                const int record = model_->RecordOfRow(row);
                for (const int c : columns) {
                    html += QStringLiteral("<td>%1</td>")
                                .arg(model_->RecordText(record, c).toHtmlEscaped());
                }
                html += QStringLiteral("</tr>");
            }
            html += QStringLiteral("</table>");
            QTextDocument document;
            document.setHtml(html);
            document.print(&printer);
        }
    }
    events.AfterPrint();
}

void frmTGList::Command_Okay() {
    const QList<int> ids = SelectedIds();
    SelectedID = CurrentID;
    if (MultiSelect && ids.size() > 1) {
        QStringList texts;
        for (const int id : ids)
            texts << QString::number(id);
        Select_String = texts.join(QLatin1Char(','));
    } else {
        Select_String = RowText(NameField());
    }
    SelectionDone = true;
    Unload(QDialog::Accepted);
}

void frmTGList::Command_Search() {
    const QStringList fields = SplitSearchFields(SearchFields);
    int column = fields.isEmpty() ? -1 : model_->ColumnOf(StripBrackets(fields.first()));
    if (column < 0)
        column = model_->ColumnOf(NameField());
    if (QLineEdit* edit = filterRow_->Edit(std::max(column, 0))) {
        ui_->DotNetGrid->scrollTo(model_->index(0, std::max(column, 0)));
        edit->setFocus();
        edit->selectAll();
    }
}

void frmTGList::Command_RemoveFilter() {
    filterRow_->ClearAll();
    model_->ClearFilters();
    if (CurrentID == 0 || !PositionOn(CurrentID)) {
        if (model_->rowCount() > 0)
            ui_->DotNetGrid->setCurrentIndex(model_->index(0, 0));
    }
    RefreshRowCount();
}

void frmTGList::Command_QuickLetter() {
    LookUpListEvents& events = owner_.Events();
    const QList<int> ids = SelectedIds();
    for (const int id : ids) {
        QString whereto = QStringLiteral("Q-LETTER");
        QString designation = QString::number(id) + kLf;
        events.SwapModuleCalled(whereto, designation);
        bool handled = false;
        events.CheckEvent(handled);
    }
    if (ids.size() > 1) {
        QString whereto = QStringLiteral("Remove_HE_Printer_Vars");
        QString designation;
        events.SwapModuleCalled(whereto, designation);
    }
}

void frmTGList::Command_Label(const QString& key) {
    LookUpListEvents& events = owner_.Events();
    QStringList ids;
    for (const int id : SelectedIds())
        ids << QString::number(id);
    const QString idList = ids.join(QLatin1Char(','));
    if (ListType == lulInsuranceCo && key == QLatin1String("Label")) {
        const auto answer =
            gic_.InputDialog(QStringLiteral("How many labels would you like to print?"),
                             QStringLiteral("Label Quantity Selection"), QStringLiteral("1"), 0);
        if (!answer)
            return;
        bool numeric = false;
        const int count = answer->trimmed().toInt(&numeric);
        if (!numeric)
            return;
        for (int i = 0; i < count; ++i) {
            QString whereto = QStringLiteral("INSLABEL");
            QString designation = idList;
            events.SwapModuleCalled(whereto, designation);
            bool handled = false;
            events.CheckEvent(handled);
        }
        return;
    }
    QString whereto = key;
    QString designation = idList;
    events.SwapModuleCalled(whereto, designation);
}

void frmTGList::LinkPayer(bool Remove) {
    if (ListType != lulInsuranceCo)
        return;
    const int carrier = CurrentID;
    QString oldId = RowText(QStringLiteral("Payer ID"));
    QString newId;
    if (!Remove) {
        const std::shared_ptr<PayerListWindow> payers =
            gic_.GetPayerListWindow(gic_.GetLoginName());
        if (!payers || !payers->ChoosePayer(this, oldId.trimmed().toUpper(), newId))
            return;
    }
    if (!insurance::Confirm_Payer_Link_Change(oldId, newId))
        return;
    gic_.GetConnection().ExecuteOneRow(
        QStringLiteral("update insCoTable set InsCoAccID=") + gic_.SqlQuoteText(newId) +
        QStringLiteral(" where insCoInd =") + QString::number(carrier));
    RefreshRecord(carrier);
}

QString frmTGList::BuildNewRecordText() const {
    QString text;
    for (int c = 0; c < model_->columnCount(); ++c) {
        const QString value = model_->Filter(c);
        if (!value.isEmpty())
            text += model_->Caption(c) + QChar(1) + value + kLf;
    }
    return text;
}

// Opens the editing screen of the list's own kind of record: a new one, or the one text names.
// Nothing when the list has no record screen; else whether the screen ran.
std::optional<bool> frmTGList::StartRecordScreen(QString& text, int& id) {
    switch (ListType) {
        case lulInsuranceCo:
            return RunStart(tr("The insurance company screen"),
                            [&](EditingScreen& s) { s.Ins_Company_Start(text, id); });
        case lulPharmacy:
            return RunStart(tr("The pharmacy screen"),
                            [&](EditingScreen& s) { s.Pharmacy_Start(text, id); });
        case lulEmployer:
            return RunStart(tr("The employer screen"), [&](EditingScreen& s) {
                QString formTag;
                int patient = EmployerPatientID;
                int subscriber = 0;
                int link = 0;
                s.Employer_Start(text, id, patient, formTag, subscriber, link, estEmployer,
                                 ShowFacilityOptions);
            });
        case lulGroupPlan:
            return RunStart(tr("The group plan screen"), [&](EditingScreen& s) {
                int carrier = GroupPlanCompanyID;
                s.Grp_Plan_Start(text, id, carrier);
            });
        case lulRecallMaster:
            return RunStart(tr("The recall master screen"),
                            [&](EditingScreen& s) { s.Recall_Master_Start(text, id); });
        default:
            return std::nullopt;
    }
}

void frmTGList::Command_New() {
    ui_->DotNetGrid->setCurrentIndex(QModelIndex());
    QString start = QStringLiteral("NEW") + QChar(1) + BuildNewRecordText();
    int id = 0;
    // The recall master screen starts a new recall from the word alone.
    if (ListType == lulRecallMaster)
        start = QStringLiteral("NEW");
    const std::optional<bool> ran = StartRecordScreen(start, id);
    if (!ran)
        return;
    if (!*ran || id == 0) {
        CurrentRowChanged();
        return;
    }
    CurrentID = id;
    RefreshRecord(id);
    if (IsSkipList || SelectMode)
        Command_Okay();
}

std::optional<QString> frmTGList::BuildPersonCriteria() {
    const auto filterOf = [this](const char* caption) {
        return model_->Filter(model_->ColumnOf(QLatin1String(caption))).trimmed();
    };
    const QString name = filterOf("Name");
    QString last = filterOf("Last Name");
    QString first = filterOf("First Name");
    if (!name.isEmpty() && (!last.isEmpty() || !first.isEmpty())) {
        prompts().Message(
            QStringLiteral("You have filtered this list by different types of names. ") +
                QStringLiteral(
                    "Please enter the Name column's filter in 'Last Name, First Name' ") +
                QStringLiteral(
                    "format or type the first few characters of the first and last name ") +
                QStringLiteral("in the First Name and Last Name columns."),
            Buttons::Ok, Icon::Information, windowTitle());
        return std::nullopt;
    }
    if (!name.isEmpty()) {
        gic_.SplitPersonName(name, last, first);
    } else if (last.isEmpty() && first.isEmpty()) {
        const QString prompt = QStringLiteral("Enter name below.") + kCr + kCr +
                               QStringLiteral("Example:      John Smith") + kCr +
                               QString(20, QLatin1Char(' ')) + QStringLiteral("or Smith, John");
        const auto answer = gic_.InputDialog(prompt, QStringLiteral("Search Window"), QString(), 0);
        if (!answer)
            return std::nullopt;
        gic_.SplitPersonName(*answer, last, first);
    }
    return QStringLiteral("(((PATABLE.pLASNAM) like ") +
           gic_.SqlQuoteText(QStringLiteral("%") + last) + QStringLiteral(") AND ") +
           QStringLiteral("((PATABLE.pFIRNAM) like ") +
           gic_.SqlQuoteText(QStringLiteral("%") + first) + QStringLiteral("))");
}

void frmTGList::Command_NewPerson(const QString& searchName) {
    if (!searchName.isEmpty())
        SetColumnFilter(QStringLiteral("Name"), searchName);
    const bool filtered = model_->HasFilter();
    const std::optional<QString> criteria = BuildPersonCriteria();
    if (!criteria)
        return;
    if (filtered && !criteria->isEmpty() && model_->rowCount() > 0) {
        prompts().Message(QStringLiteral("Your search returned the following matches from this "
                                         "list. Please select one of the names below or click "
                                         "the 'New' button to add a new person."),
                          Buttons::Ok, Icon::Information, QStringLiteral("Filter/Search List"));
        return;
    }
    // The search of the whole database for a person, and the person screens, come next.
    ReportNotAvailable(tr("Adding a person from this list"));
}

void frmTGList::Command_Edit() {
    const int id = CurrentID;
    if (ListKey == QLatin1String("FamScreen") && !gic_.IsFamilyHead(id)) {
        prompts().Message(
            QStringLiteral("The selected person is not a family head. Please re-index this list "
                           "by selecting 'Re-Index Family Head List' from the 'Help' menu on the "
                           "Patient Look-Up-List."),
            Buttons::Ok, Icon::Information, windowTitle());
        return;
    }
    QString text = QString::number(id);
    int editId = id;
    bool ran = false;
    if (IsPersonList(ListType)) {
        QString field =
            personTypeField_.isEmpty() ? LookUpListPersonTypeField(ListType) : personTypeField_;
        ran = RunStart(tr("The person screen"),
                       [&](EditingScreen& s) { s.PaTable_Edit_Start(field, text); });
    } else {
        const std::optional<bool> started = StartRecordScreen(text, editId);
        if (!started)
            return;
        ran = *started;
    }
    if (ran)
        RefreshRecord(id);
}

void frmTGList::SetTimerTag(const QString& tag) {
    timerTag_ = tag;
    Timer1.start();
}

void frmTGList::GotoTimer() {
    if (!timerTag_.startsWith(QStringLiteral("GOTO,")))
        return;
    Timer1.stop();
    const QString text = timerTag_.mid(5);
    timerTag_.clear();
    QString whereto = gic_.GetDelimitedField(text, QStringLiteral(","), 1);
    QString designation = gic_.GetDelimitedField(text, QStringLiteral(","), 2);
    RunUserAction(windowTitle(), [&] { owner_.Events().SwapModuleCalled(whereto, designation); });
    Unload(QDialog::Rejected);
}

}  // namespace orvo::lists
