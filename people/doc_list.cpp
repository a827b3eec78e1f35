#include "people/doc_list.h"

#include <QHeaderView>
#include <QStandardItemModel>

#include "component/grid_layout.h"
#include "component/session.h"
#include "platform/db/recordset.h"
#include "platform/lock_files.h"
#include "platform/user_action.h"
#include "ui_doc_list.h"

namespace orvo::people {

namespace {

struct PersonSet {
    const char* field;
    const char* title;
    const char* key;
};

// The sets by the person-type field the host holds; anything else lists providers.
constexpr PersonSet kSets[] = {{"pTypPhy", "Physician List", "DLPHY"},
                               {"pTypEmp", "Employee List", "DLEMP"},
                               {"pTypDoc", "Provider List", "DLDOC"}};

const QString kPositionKey = QStringLiteral("DOCLIST_LOC");
enum Column { kName, kInitials, kID };

}  // namespace

DocList::DocList(GIC& gic, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::DocList>()), gic_(gic) {
    ui_->setupUi(this);
    model_ = new QStandardItemModel(0, 3, this);
    model_->setHorizontalHeaderLabels(
        {QStringLiteral("Name"), QStringLiteral("Initials"), QStringLiteral("ID")});
    const QStringList fields = {QStringLiteral("pLasNam"), QStringLiteral("pDocIni"),
                                QStringLiteral("pID")};
    for (int c = 0; c < 3; ++c)
        model_->setHeaderData(c, Qt::Horizontal, fields[c], kGridFieldRole);
    ui_->grdList->setModel(model_);
    ui_->grdList->horizontalHeader()->setSectionsMovable(true);
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] { CmdOK(); });
    connect(ui_->cmdCancel, &QPushButton::clicked, this, [this] { CmdCancel(); });
    connect(ui_->cmdSelectAll, &QPushButton::clicked, ui_->grdList, &QTableView::selectAll);
    connect(ui_->cmdDeselectAll, &QPushButton::clicked, ui_->grdList, &QTableView::clearSelection);
    connect(ui_->grdList, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        ui_->grdList->selectionModel()->select(
            index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        CmdOK();
    });
    RunUserAction(windowTitle(), [this] { Load(); });
}

DocList::~DocList() = default;

int DocList::rowCount() const {
    return model_->rowCount();
}

void DocList::Load() {
    QString& command = component::session().ListCommand;
    const QString start = command.toUpper();
    multiSelect_ = start.contains(QLatin1String("MULTISELECT"));
    doNotLoad_ = start.contains(QLatin1String("DO_NOT_LOAD"));
    const bool cancelButton = start == QLatin1String("CANCEL_BUTTON");
    if (cancelButton)
        command.clear();
    ui_->cmdCancel->setVisible(cancelButton);
    ui_->cmdSelectAll->setVisible(multiSelect_);
    ui_->cmdDeselectAll->setVisible(multiSelect_);
    if (multiSelect_)
        ui_->grdList->setSelectionMode(QAbstractItemView::MultiSelection);

    const QString asked = gic_.GetPersonTypeField();
    const PersonSet* set = &kSets[2];
    for (const PersonSet& s : kSets)
        if (asked.compare(QLatin1String(s.field), Qt::CaseInsensitive) == 0)
            set = &s;
    field_ = QLatin1String(set->field);
    layoutKey_ = QLatin1String(set->key);
    setWindowTitle(QLatin1String(set->title) +
                   (multiSelect_ ? QStringLiteral(" (multi-select)") : QString()));
    // Employees go by name alone.
    ui_->grdList->setColumnHidden(kInitials, field_ == QLatin1String("pTypEmp"));

    if (!doNotLoad_) {
        db::Recordset rs(gic_.GetConnection(),
                         QStringLiteral("SELECT pLasNam, pFirNam, pProTTL, pDocIni, pID, ") +
                             field_ + QStringLiteral(" FROM PATABLE WHERE ((") + field_ +
                             QStringLiteral("='1') or (") + field_ +
                             QStringLiteral("='2')) ORDER BY pLasNam, pFirNam"));
        for (; !rs.Eof(); rs.MoveNext()) {
            // The title follows the first name with its own separator when it was stored with
            // one (", DDS"); screens store trimmed text, so a bare one gets a blank.
            QString title = rs.Text(2);
            while (title.endsWith(QLatin1Char(' ')))
                title.chop(1);
            if (!title.isEmpty() && title.front() != QLatin1Char(' ') &&
                title.front() != QLatin1Char(','))
                title.prepend(QLatin1Char(' '));
            AddPerson(rs.Text(0).trimmed() + QStringLiteral(", ") + rs.Text(1).trimmed() + title,
                      rs.Text(3).trimmed(), int(rs.Long(4)));
        }
    }
    LoadGridLayoutFrom({ui_->grdList}, LayoutPath(), false, true);
    const QStringList place =
        gic_.ReadStationSetting(kPositionKey, QString()).toString().split(',');
    if (place.size() == 4)
        setGeometry(place[0].toInt(), place[1].toInt(), std::max(200, place[2].toInt()),
                    std::max(150, place[3].toInt()));
}

void DocList::AddPerson(const QString& name, const QString& initials, int pID) {
    auto* id = new QStandardItem(QString::number(pID));
    id->setData(pID, Qt::UserRole);
    model_->appendRow({new QStandardItem(name), new QStandardItem(initials), id});
}

QString DocList::LayoutPath() const {
    return gic_.GetDataPath() + QStringLiteral("STP/") +
           lockfiles::SafeFileName(layoutKey_ + (multiSelect_ ? QStringLiteral("M") : QString())) +
           QStringLiteral(".STP");
}

void DocList::CmdOK() {
    gic_.PutEditResultID(0);
    component::session().ListCommand.clear();
    chosen_.clear();
    for (const QModelIndex& row : ui_->grdList->selectionModel()->selectedRows(kID))
        chosen_ << row.data(Qt::UserRole).toInt();
    std::sort(chosen_.begin(), chosen_.end());
    if (chosen_.size() == 1)
        gic_.PutEditResultID(chosen_.front());
    accept();
}

void DocList::CmdCancel() {
    component::session().ListCommand = QStringLiteral("CANCEL_BUTTON");
    gic_.PutEditResultID(0);
    chosen_.clear();
    reject();
}

// Whatever closes the list (OK, Cancel, Escape, the window's close) stores its layout and place;
// a close that is not OK is the Cancel.
void DocList::done(int result) {
    if (closing_)
        return;
    closing_ = true;
    if (result != Accepted && component::session().ListCommand != QLatin1String("CANCEL_BUTTON"))
        RunUserAction(windowTitle(), [this] { CmdCancel(); });
    RunUserAction(windowTitle(), [this] { SaveLayout(); });
    QDialog::done(result);
    closing_ = false;
}

void DocList::SaveLayout() {
    SaveGridLayoutTo({ui_->grdList}, LayoutPath(), false, false);
    const QRect place = geometry();
    gic_.WriteStationSetting(kPositionKey, QStringLiteral("%1,%2,%3,%4")
                                               .arg(place.x())
                                               .arg(place.y())
                                               .arg(place.width())
                                               .arg(place.height()));
}

QList<int> DocList::Run(GIC& gic, QWidget* parent) {
    DocList list(gic, parent);
    return list.exec() == Accepted ? list.chosen() : QList<int>();
}

}  // namespace orvo::people
