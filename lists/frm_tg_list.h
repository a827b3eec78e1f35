#pragma once

#include <QDialog>
#include <QHash>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "component/public/component_types.h"
#include "component/public/gic.h"
#include "lists/list_owner.h"

class QAction;
class QMenu;
class QPrinter;
class QToolBar;

namespace orvo::lists {

namespace Ui {
class frmTGList;
}

class FilterRow;
class ListTableModel;

// The one list window behind every list type: a grid over the rows of its SQL with a filter
// row, a toolbar of commands, and a search. It knows the domain only through the definition it
// is given (list_definitions.h) and through the per-type branches of New, Edit and Delete.
//
// Commands run through the user-action boundary: an error is shown and logged, and the window
// stays usable. Events go to the host through the owner's handler.
class frmTGList : public QDialog {
    Q_OBJECT
public:
    frmTGList(GIC& gic, ListOwner& owner, QWidget* parent = nullptr);
    ~frmTGList() override;

    // ---- Window state ----
    LookUpListTypes ListType = lulProvider;
    short ShowMode = 0;
    bool AllowEdit = true;
    bool MultiSelect = false;
    bool ShowFacilityOptions = false;
    QPointer<QWidget> OwnerForm;
    int CurrentID = 0;
    bool SelectionDone = false;
    bool ListEmpty = true;
    bool IsSkipList = false;
    bool ToolbarLoading = false;
    bool FilterSearchAny = false;
    bool FilterAutoClear = false;
    // What the LookUpList hands on.
    bool SelectMode = false;
    bool No_Double_Click = false;
    bool AllowDelete = false;
    int EmployerPatientID = 0;
    int GroupPlanCompanyID = 0;
    int NewEmployeePasswordID = 0;
    QString ListKey;
    QString SearchFields;
    // The choice made: the record and its text, or for a multiple selection the ids.
    int SelectedID = 0;
    QString Select_String;

    // Form_Load: reads the list command of the session and clears it for the next window; the
    // ids and flags begin again. A persistent window runs it at each ShowList.
    void Form_Load();
    // The key and name columns.
    void SetIDField(const QString& alias);
    void SetNameField(const QString& alias);
    QString IDField() const;
    QString NameField() const;

    // Setting the SQL runs it: the kind-2 rule, the grid's columns and sort, the read.
    void SetSQL(const QString& sql);
    QString SQL() const { return sql_; }
    void SetSortBy(const QString& sortBy) { sortBy_ = sortBy; }
    QString SortBy() const { return sortBy_; }

    void Setup_ToolBar(bool ShowPatientButtons, bool ShowPrintOptions, bool bSelectMode,
                       bool ShowPayerLink);
    // Keeps the layout key (also the settings section of the filter options) and reads the
    // filter options.
    void SetGridLayout(const QString& layoutKey);
    void RestoreScreenPosition();
    void SaveScreenPosition();
    // Sets a column's filter as if typed into the filter row; false when there is no such
    // column.
    bool SetColumnFilter(const QString& columnName, const QString& text);
    // Offers these values for a column's filter as it is typed.
    void SetFilterChoices(const QString& columnName, const QStringList& values);
    // Makes the row of this record current; false when the list has no such row shown.
    bool PositionOn(int id);

    // The command dispatcher: a toolbar key or one of "Help", "Close", "Search", "Okay".
    void ToolStrip_ItemClicked(const QString& key);
    // Runs the key's command through the user-action boundary.
    void RunCommand(const QString& key);

    void RefreshRowCount();
    void RefreshToolbarState();
    // One column of one record, read from the database through the list's SQL.
    QString LookupColumn(int ID, const QString& ColumnName);
    // Reads one record again after it was edited or added, and puts the grid on it.
    void RefreshRecord(int id);

    void Command_New();
    void Command_NewPerson(const QString& searchName = QString());
    void Command_Edit();
    // label Chr(1) value LF, for each column that has a filter.
    QString BuildNewRecordText() const;
    // The person condition from the name filters, asking for a name when there is none; no
    // value when the command is to stop.
    std::optional<QString> BuildPersonCriteria();

    // The delayed request a child screen leaves: a tag "GOTO," + module + "," + text raises
    // SwapModuleCalled once the timer runs, and the window closes.
    QTimer Timer1;
    void SetTimerTag(const QString& tag);
    QString TimerTag() const { return timerTag_; }

    // Before the first show: the "NEW" list command, and the skip list that adds a new record
    // without showing an empty list. False when the window is done and is not to be shown.
    bool FirstActivation();

    ListTableModel& model() const { return *model_; }
    QAction* ToolItem(const QString& key) const { return items_.value(key); }
    QToolBar* toolbar() const { return toolbar_; }
    FilterRow* filterRow() const { return filterRow_; }
    // The ids of the selected rows, in the order shown; the current row's alone without a
    // multiple selection.
    QList<int> SelectedIds() const;

    // Chooses the printer for "Print"; by default Qt's print dialog. Tests put theirs.
    std::function<bool(QPrinter&)> ChoosePrinter;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override;

private:
    void BuildToolbar();
    void BuildMenu();
    void ConnectControls();
    void LoadRows();
    void CurrentRowChanged();
    void FilterEdited(int column, const QString& text);
    void StoreFilterOption(const QString& key, bool value);
    QString SettingsSection() const;
    QString RowText(const QString& column) const;
    int RowId(int row) const;
    void Unload(int result);

    // Commands.
    void Command_Delete();
    void Command_Print();
    void Command_Okay();
    void Command_Search();
    void Command_RemoveFilter();
    void Command_Label(const QString& key);
    void Command_QuickLetter();
    void LinkPayer(bool Remove);
    bool PatientCheck(const QString& key);
    void GotoTimer();
    void ReportNotAvailable(const QString& what);
    bool RunStart(const QString& what, const std::function<void(EditingScreen&)>& start);
    std::optional<bool> StartRecordScreen(QString& text, int& id);

    GIC& gic_;
    ListOwner& owner_;
    std::unique_ptr<Ui::frmTGList> ui_;
    ListTableModel* model_ = nullptr;
    FilterRow* filterRow_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    QMenu* MnuFile = nullptr;
    QHash<QString, QAction*> items_;
    QString sql_;
    QString sortBy_;
    QString listCommand_;
    QString timerTag_;
    QString personTypeField_;
    bool activated_ = false;
    bool shownBefore_ = false;
    std::optional<bool> canEditInsurance_;
};

}  // namespace orvo::lists
