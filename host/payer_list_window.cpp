#include "host/payer_list_window.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/db/recordset.h"

namespace orvo::host {

PayerListDialog::PayerListDialog(db::Connection& connection, const QString& currentPayerId,
                                 QWidget* parent)
    : QDialog(parent),
      find_(new QLineEdit),
      model_(new QStandardItemModel(0, 3, this)),
      filter_(new QSortFilterProxyModel(this)),
      grid_(new QTableView) {
    setObjectName(QStringLiteral("frmPayerList"));
    setWindowTitle(tr("Electronic Payer List"));
    find_->setObjectName(QStringLiteral("txtFind"));
    find_->setPlaceholderText(tr("Type a payer id or name"));
    grid_->setObjectName(QStringLiteral("grdPayers"));
    model_->setHorizontalHeaderLabels({tr("Payer ID"), tr("Name"), tr("Additional Information")});
    filter_->setSourceModel(model_);
    filter_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    filter_->setFilterKeyColumn(-1);
    grid_->setModel(filter_);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->setSortingEnabled(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(grid_, &QTableView::doubleClicked, this, &QDialog::accept);
    connect(find_, &QLineEdit::textChanged, this, [this](const QString& text) {
        filter_->setFilterFixedString(text.trimmed());
        if (!grid_->currentIndex().isValid() && filter_->rowCount() > 0)
            grid_->selectRow(0);
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(find_);
    layout->addWidget(grid_);
    layout->addWidget(buttons);
    resize(640, 420);

    Load(connection);
    SelectPayer(currentPayerId);
}

void PayerListDialog::Load(db::Connection& connection) {
    for (db::Recordset rs(
             connection,
             QStringLiteral(
                 "SELECT epPayID, epNam, epAddInf FROM ePayerTable ORDER BY epNam, epPayID"));
         !rs.Eof(); rs.MoveNext()) {
        model_->appendRow({new QStandardItem(rs.Text(0)), new QStandardItem(rs.Text(1)),
                           new QStandardItem(rs.Text(2))});
    }
    grid_->resizeColumnToContents(0);
    grid_->setColumnWidth(1, 260);
}

void PayerListDialog::SelectPayer(const QString& payerId) {
    const QString wanted = payerId.trimmed();
    for (int row = 0; row < filter_->rowCount(); ++row) {
        if (filter_->index(row, 0).data().toString().compare(wanted, Qt::CaseInsensitive) == 0) {
            grid_->selectRow(row);
            grid_->scrollTo(filter_->index(row, 0));
            return;
        }
    }
}

QString PayerListDialog::chosenPayerId() const {
    const QModelIndex current = grid_->selectionModel()->currentIndex();
    if (!current.isValid())
        return QString();
    return filter_->index(current.row(), 0).data().toString();
}

bool HostPayerList::ChoosePayer(QWidget* owner, const QString& currentPayerId, QString& payerId) {
    PayerListDialog dialog(connection_, currentPayerId, owner);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QString chosen = dialog.chosenPayerId();
    if (chosen.isEmpty())
        return false;
    payerId = chosen;
    return true;
}

}  // namespace orvo::host
