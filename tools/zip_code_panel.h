#pragma once

#include <QFrame>
#include <QLineEdit>
#include <QList>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

#include "component/public/gic.h"
#include "tools/zip_code.h"

class QListWidget;
class QPushButton;

namespace orvo::tools {

// Runs one person's action on the city, state and zip list (a keystroke, a click, a command)
// through the user-action boundary, under the list's title. False when it failed.
bool RunZipAction(const std::function<void()>& action);

// The floating list of ZipCodTable rows under a city or zip field. It lives on the field's
// window as a frameless child, never takes the focus (typing goes on in the field), and is
// driven by the field's owner: usually CityStateZip (city_state_zip.h).
//
// Object names, for scenario files: the panel "ZipCode_Panel", its list "lstZip", the commands
// "cmdZipAdd", "cmdZipEdit", "cmdZipDelete".
class ZipCode_Panel : public QFrame {
    Q_OBJECT
public:
    static constexpr int kDefaultRows = 8;

    explicit ZipCode_Panel(GIC& gic, QWidget* parent = nullptr);

    // Places the panel on form under field (over it when the form has no room below), in front
    // of the form's other widgets, and shows it; tag is the field's mode. The focus goes back to
    // the field.
    void ShowZipPanel(QWidget* form, QLineEdit* field, ZipMode tag);
    void HideZipPanel();

    // Lists the rows from key on (as many as the panel shows) and selects the first that begins
    // with key. False when the key ended the panel ("STOP"), which is then hidden.
    bool SearchZip(const QString& key);

    ZipMode tag() const { return tag_; }
    QLineEdit* field() const { return field_; }
    const QString& searchKey() const { return searchKey_; }
    const QList<ZipRow>& rows() const { return rows_; }
    std::optional<ZipRow> currentRow() const;
    // The rows the list shows at once: the number each search reads.
    int visibleRows() const { return visibleRows_; }
    // The rows wanted; fewer are shown when the form has no room for them.
    void SetWantedRows(int rows);

    // Moves the selection by step rows, staying within the list.
    void MoveSelection(int step);
    // Chooses the selected row (Enter in the field, a click on the list).
    void Choose();

    // The panel's commands, also behind its buttons. Add offers the entry (the field's text) to
    // the list and chooses the new row; Edit and Delete act on the selected row and search the
    // last key again.
    void AddEntry(const QString& entry);
    void EditCurrent();
    void DeleteCurrent();

signals:
    // A row was chosen; the panel is already hidden.
    void rowChosen(const orvo::tools::ZipRow& row);

private:
    void Place(QWidget* form, QLineEdit* field);
    int RowHeight() const;
    int Chrome() const;
    void ShowRows(const ZipSearchResult& result);
    void Select(int index);
    void UpdateCommands();

    GIC& gic_;
    QListWidget* list_ = nullptr;
    QWidget* commands_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* edit_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPointer<QLineEdit> field_;
    ZipMode tag_ = ZipMode::City;
    QString searchKey_;
    QList<ZipRow> rows_;
    int wantedRows_ = kDefaultRows;
    int visibleRows_ = kDefaultRows;
};

}  // namespace orvo::tools
