#pragma once

#include <QDialog>

#include "component/public/gic.h"

class QLineEdit;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTableView;

namespace orvo::host {

// The host's list of electronic payers (ePayerTable), from which a carrier is linked to the
// payer that takes its claims. Typing filters by id or name; a double click or OK chooses.
class PayerListDialog : public QDialog {
    Q_OBJECT
public:
    PayerListDialog(db::Connection& connection, const QString& currentPayerId,
                    QWidget* parent = nullptr);
    // The payer id of the chosen row; empty when none is selected.
    QString chosenPayerId() const;

private:
    void Load(db::Connection& connection);
    void SelectPayer(const QString& payerId);

    QLineEdit* find_;
    QStandardItemModel* model_;
    QSortFilterProxyModel* filter_;
    QTableView* grid_;
};

class HostPayerList : public PayerListWindow {
public:
    explicit HostPayerList(db::Connection& connection) : connection_(connection) {}
    bool ChoosePayer(QWidget* owner, const QString& currentPayerId, QString& payerId) override;

private:
    db::Connection& connection_;
};

}  // namespace orvo::host
