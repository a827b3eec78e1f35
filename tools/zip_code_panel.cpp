#include "tools/zip_code_panel.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/user_action.h"

namespace orvo::tools {
namespace {

const QString kTitle = QStringLiteral("City State, Zip Code");
// Wide enough for "city, state zip" of the longest city the table holds.
constexpr int kLineCharacters = 36;

// Owned by the layout it is added to.
QPushButton* Command(const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    // The field keeps the focus while the panel is used, so that leaving it means leaving.
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

bool RunZipAction(const std::function<void()>& action) {
    return RunUserAction(kTitle, action);
}

ZipCode_Panel::ZipCode_Panel(GIC& gic, QWidget* parent) : QFrame(parent), gic_(gic) {
    setObjectName(QStringLiteral("ZipCode_Panel"));
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstZip"));
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setUniformItemSizes(true);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    add_ = Command(QStringLiteral("cmdZipAdd"), tr("Add"));
    edit_ = Command(QStringLiteral("cmdZipEdit"), tr("Edit"));
    delete_ = Command(QStringLiteral("cmdZipDelete"), tr("Delete"));

    commands_ = new QWidget(this);
    auto* row = new QHBoxLayout(commands_);
    row->setContentsMargins(2, 2, 2, 2);
    row->setSpacing(2);
    row->addWidget(add_);
    row->addWidget(edit_);
    row->addWidget(delete_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(list_);
    layout->addWidget(commands_);

    connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        Select(list_->row(item));
        Choose();
    });
    connect(list_, &QListWidget::currentRowChanged, this, [this] { UpdateCommands(); });
    connect(add_, &QPushButton::clicked, this, [this] {
        if (field_)
            RunZipAction([this] { AddEntry(field_->text()); });
    });
    connect(edit_, &QPushButton::clicked, this,
            [this] { RunZipAction([this] { EditCurrent(); }); });
    connect(delete_, &QPushButton::clicked, this,
            [this] { RunZipAction([this] { DeleteCurrent(); }); });
    hide();
}

void ZipCode_Panel::ShowZipPanel(QWidget* form, QLineEdit* field, ZipMode tag) {
    if (parentWidget() != form)
        setParent(form);
    field_ = field;
    tag_ = tag;
    Place(form, field);
    setVisible(true);
    raise();
    field->setFocus();
    UpdateCommands();
}

void ZipCode_Panel::HideZipPanel() {
    setVisible(false);
}

bool ZipCode_Panel::SearchZip(const QString& key) {
    searchKey_ = key;
    const ZipSearchResult result = tools::SearchZip(gic_, tag_, key, visibleRows_);
    if (result.stopped) {
        HideZipPanel();
        return false;
    }
    ShowRows(result);
    return true;
}

std::optional<ZipRow> ZipCode_Panel::currentRow() const {
    const int row = list_->currentRow();
    if (row < 0 || row >= rows_.size())
        return std::nullopt;
    return rows_[row];
}

void ZipCode_Panel::SetWantedRows(int rows) {
    wantedRows_ = std::max(1, rows);
    visibleRows_ = wantedRows_;
}

void ZipCode_Panel::MoveSelection(int step) {
    if (rows_.isEmpty())
        return;
    const int from = list_->currentRow();
    Select(from < 0 ? (step > 0 ? 0 : static_cast<int>(rows_.size()) - 1)
                    : std::clamp(from + step, 0, static_cast<int>(rows_.size()) - 1));
}

void ZipCode_Panel::Choose() {
    const std::optional<ZipRow> row = currentRow();
    if (!row)
        return;
    HideZipPanel();
    emit rowChosen(*row);
}

void ZipCode_Panel::AddEntry(const QString& entry) {
    const int id = AddZipCode(gic_, tag_, entry);
    if (id == 0)
        return;
    const std::optional<ZipRow> row = ReadZipRow(gic_, tag_, id);
    if (!row)
        return;
    HideZipPanel();
    emit rowChosen(*row);
}

void ZipCode_Panel::EditCurrent() {
    const std::optional<ZipRow> row = currentRow();
    if (!row || !EditZipCode(gic_, tag_, *row))
        return;
    SearchZip(searchKey_);
    for (int i = 0; i < rows_.size(); ++i) {
        if (rows_[i].id == row->id)
            Select(i);
    }
}

void ZipCode_Panel::DeleteCurrent() {
    const std::optional<ZipRow> row = currentRow();
    if (row && DeleteZipCode(gic_, *row))
        SearchZip(searchKey_);
}

int ZipCode_Panel::RowHeight() const {
    return list_->fontMetrics().height() + 4;
}

int ZipCode_Panel::Chrome() const {
    return 2 * frameWidth() + 2 * list_->frameWidth() + commands_->sizeHint().height();
}

void ZipCode_Panel::Place(QWidget* form, QLineEdit* field) {
    const QPoint below = field->mapTo(form, QPoint(0, field->height()));
    const QPoint above = field->mapTo(form, QPoint(0, 0));
    const int width = std::min(
        form->width(),
        std::max(field->width(), list_->fontMetrics().averageCharWidth() * kLineCharacters));
    const int x = std::clamp(below.x(), 0, std::max(0, form->width() - width));

    const int roomBelow = form->height() - below.y();
    const int roomAbove = above.y();
    const int wanted = Chrome() + wantedRows_ * RowHeight();
    const bool down = roomBelow >= wanted || roomBelow >= roomAbove;
    const int room = down ? roomBelow : roomAbove;
    visibleRows_ = std::clamp((room - Chrome()) / RowHeight(), 1, wantedRows_);

    const int height = Chrome() + visibleRows_ * RowHeight();
    list_->setFixedHeight(visibleRows_ * RowHeight() + 2 * list_->frameWidth());
    setGeometry(x, down ? below.y() : above.y() - height, width, height);
}

void ZipCode_Panel::ShowRows(const ZipSearchResult& result) {
    rows_ = result.rows;
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const ZipRow& row : rows_) {
        auto* item = new QListWidgetItem(row.line, list_);
        item->setData(Qt::UserRole, row.id);
        item->setSizeHint(QSize(-1, RowHeight()));
    }
    Select(result.selected);
}

void ZipCode_Panel::Select(int index) {
    if (index < 0 || index >= list_->count()) {
        list_->setCurrentRow(-1);
        list_->clearSelection();
    } else {
        list_->setCurrentRow(index);
    }
    UpdateCommands();
}

void ZipCode_Panel::UpdateCommands() {
    const bool hasRow = currentRow().has_value();
    add_->setEnabled(field_ && !field_->text().trimmed().isEmpty());
    edit_->setEnabled(hasRow);
    delete_->setEnabled(hasRow);
}

}  // namespace orvo::tools
