#include "people/database_list.h"

#include <QListWidget>

#include "people/people_tables.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"
#include "platform/user_action.h"
#include "ui_database_list.h"

namespace orvo::people {
namespace {

const QString kDeleteQuestion = QStringLiteral("Delete [ %1 ] from this list?");
const QString kAlreadyThere = QStringLiteral("[ %1 ] is already in this list.");

}  // namespace

DatabaseList::DatabaseList(GIC& gic, const QString& title, const QString& table,
                           const QString& column, const QString& current, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::DatabaseList>()),
      gic_(gic),
      table_(table),
      column_(column) {
    ui_->setupUi(this);
    setWindowTitle(title);
    ui_->txtNew->setMaxLength(WidthOfColumn());
    connect(ui_->cmdAdd, &QPushButton::clicked, this,
            [this] { RunUserAction(windowTitle(), [this] { Add(); }); });
    connect(ui_->cmdDelete, &QPushButton::clicked, this,
            [this] { RunUserAction(windowTitle(), [this] { Delete(); }); });
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] { Choose(); });
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->lstItems, &QListWidget::itemDoubleClicked, this, [this] { Choose(); });
    // Enter in the entry adds what was typed; elsewhere it chooses.
    connect(ui_->txtNew, &QLineEdit::returnPressed, this,
            [this] { RunUserAction(windowTitle(), [this] { Add(); }); });
    RunUserAction(windowTitle(), [this, current] { Load(current); });
}

DatabaseList::~DatabaseList() = default;

int DatabaseList::count() const {
    return ui_->lstItems->count();
}

int DatabaseList::WidthOfColumn() const {
    schema::Catalog catalog;
    DeclarePeopleTables(catalog);
    const schema::Table* table = catalog.Find(table_);
    const schema::Column* column = table ? table->FindColumn(column_) : nullptr;
    return column && column->width > 0 ? column->width : 32767;
}

void DatabaseList::Load(const QString& current) {
    ui_->lstItems->clear();
    db::Recordset rs(gic_.GetConnection(),
                     QStringLiteral("SELECT %1 FROM %2 ORDER BY %1").arg(column_, table_));
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString text = rs.Text(0).trimmed();
        if (text.isEmpty())
            continue;
        ui_->lstItems->addItem(text);
        if (text.compare(current.trimmed(), Qt::CaseInsensitive) == 0)
            ui_->lstItems->setCurrentRow(ui_->lstItems->count() - 1);
    }
}

void DatabaseList::Add() {
    const QString text = ui_->txtNew->text().trimmed();
    if (text.isEmpty())
        return;
    // Texts compare without regard to letter case on both engines.
    const db::Recordset there(gic_.GetConnection(),
                              QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3")
                                  .arg(column_, table_, db::QuoteText(text)));
    if (!there.IsEmpty()) {
        prompts().Message(kAlreadyThere.arg(text), Buttons::Ok, Icon::Information, windowTitle());
        return;
    }
    gic_.GetConnection().Execute(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                     .arg(table_, column_, db::QuoteText(text)));
    ui_->txtNew->clear();
    Load(text);
}

void DatabaseList::Delete() {
    const QListWidgetItem* item = ui_->lstItems->currentItem();
    if (!item)
        return;
    const QString text = item->text();
    if (prompts().Message(kDeleteQuestion.arg(text), Buttons::YesNo, Icon::Question, windowTitle(),
                          2) != AnswerYes) {
        return;
    }
    // Another station may have deleted it first; either way it is gone.
    gic_.GetConnection().Execute(
        QStringLiteral("DELETE FROM %1 WHERE %2 = %3").arg(table_, column_, db::QuoteText(text)));
    Load(QString());
}

void DatabaseList::Choose() {
    const QListWidgetItem* item = ui_->lstItems->currentItem();
    if (!item)
        return;
    chosen_ = item->text();
    accept();
}

std::optional<QString> DatabaseList::Run(GIC& gic, const QString& title, const QString& table,
                                         const QString& column, const QString& current,
                                         QWidget* parent) {
    DatabaseList list(gic, title, table, column, current, parent);
    list.exec();
    return list.chosen();
}

}  // namespace orvo::people
