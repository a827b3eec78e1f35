#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <memory>

#include "component/public/gic.h"

class QStandardItemModel;

namespace orvo::people {

namespace Ui {
class DocList;
}

// The small modal picker of providers, physicians or employees: the set is the person-type field
// the host holds (GetPersonTypeField), the start words are in the session's ListCommand
// ("MULTISELECT", "DO_NOT_LOAD", "CANCEL_BUTTON"). OK puts a single pick through
// PutEditResultID and answers every marked id; Cancel leaves "CANCEL_BUTTON" in ListCommand.
// The set's column layout is kept in STP/<key>.STP (a multi-select list has a file of its own),
// the window's place per station.
//
// Object names, for scenario files: the grid "grdList" (columns Name, Initials, ID) and the
// buttons "cmdOK", "cmdCancel", "cmdSelectAll", "cmdDeselectAll".
class DocList : public QDialog {
    Q_OBJECT
public:
    explicit DocList(GIC& gic, QWidget* parent = nullptr);
    ~DocList() override;

    // A row the caller gives a list started with "DO_NOT_LOAD".
    void AddPerson(const QString& name, const QString& initials, int pID);

    bool multiSelect() const { return multiSelect_; }
    QString layoutKey() const { return layoutKey_; }
    QString personField() const { return field_; }
    // The ids marked when the list closed with OK.
    const QList<int>& chosen() const { return chosen_; }
    int rowCount() const;

    // Shows the list modal and answers the ids marked (none on Cancel).
    static QList<int> Run(GIC& gic, QWidget* parent = nullptr);

    void done(int result) override;

private:
    void Load();
    void CmdOK();
    void CmdCancel();
    void SaveLayout();
    QString LayoutPath() const;

    std::unique_ptr<Ui::DocList> ui_;
    GIC& gic_;
    QStandardItemModel* model_ = nullptr;
    QString field_;
    QString layoutKey_;
    bool multiSelect_ = false;
    bool doNotLoad_ = false;
    bool closing_ = false;
    QList<int> chosen_;
};

}  // namespace orvo::people
