#pragma once

#include <QDialog>
#include <QString>
#include <memory>
#include <optional>

#include "component/public/gic.h"

namespace orvo::people {

namespace Ui {
class DatabaseList;
}

// One of the practice's small databases of texts (the Sex and Title database, the Medical
// Alert database): a modal list to choose a text from, which the practice also keeps, adding
// a text typed under the list and deleting the one chosen. Each row is one text of one column;
// a text is not added twice.
//
// Object names, for scenario files: the list "lstItems", the entry "txtNew", the buttons
// "cmdAdd", "cmdDelete", "cmdOK", "cmdCancel".
class DatabaseList : public QDialog {
    Q_OBJECT
public:
    // table and column hold the texts; current is put first in view when the list holds it.
    DatabaseList(GIC& gic, const QString& title, const QString& table, const QString& column,
                 const QString& current, QWidget* parent = nullptr);
    ~DatabaseList() override;

    // The text chosen with OK; no value on Cancel.
    std::optional<QString> chosen() const { return chosen_; }
    int count() const;

    // Shows the list and answers the text chosen.
    static std::optional<QString> Run(GIC& gic, const QString& title, const QString& table,
                                      const QString& column, const QString& current,
                                      QWidget* parent = nullptr);

private:
    void Load(const QString& current);
    void Add();
    void Delete();
    void Choose();
    int WidthOfColumn() const;

    std::unique_ptr<Ui::DatabaseList> ui_;
    GIC& gic_;
    QString table_;
    QString column_;
    std::optional<QString> chosen_;
};

}  // namespace orvo::people
