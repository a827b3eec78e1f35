#pragma once

#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <array>
#include <functional>

#include "component/editing_dialog.h"
#include "component/public/gic.h"
#include "tools/zip_code.h"
#include "tools/zip_code_panel.h"

class QAbstractButton;

namespace orvo::tools {

// The city, state and zip fields of one address, tied to the city, state and zip list. A screen
// makes one per address and attaches its three fields:
//
//   zip_ = new CityStateZip(gic, *this);
//   zip_->Attach(cityEdit, stateEdit, zipEdit, cityButton, zipButton);
//   zip_->SetRecordHasAddress([this] { return !IsNewRecord; });
//
// Then typing in the city or the zip lists the rows from the typed text on (ZipCode_Panel under
// the field); Up and Down move in the list, Enter or a click chooses, Escape closes it. F9 in the
// city or zip field, or the field's button, opens the list on the field's text. Choosing writes
// the three fields with setText (so textChanged tells the screen); a part the row lacks leaves
// what the field holds. Leaving the city or zip field (or closing the screen) with text that no
// row holds offers to add it as typed; a whole line such as "Springfield, IL 62704", or a zip,
// that a row holds fills the three fields from it. These leave steps are the screen's (see
// EditingDialog::OnLeave) and work from the text as the person typed it, whatever the screen's
// own steps tidy.
//
// The city and zip fields take a whole line while it is typed; what stays in them is held to
// the width of its column when the screen saves.
class CityStateZip : public QObject {
    Q_OBJECT
public:
    CityStateZip(GIC& gic, component::EditingDialog& screen);
    ~CityStateZip() override;

    // Either button may be null. Up, Down, Enter and Escape reach the list first while it is
    // shown, and the screen otherwise.
    void Attach(QLineEdit* city, QLineEdit* state, QLineEdit* zip,
                QAbstractButton* cityButton = nullptr, QAbstractButton* zipButton = nullptr);

    // Whether the record on the screen holds an address that a chosen row would replace; when
    // it does and the row differs, "Update City, State, and Zipcode?" is asked first. By default
    // it does when the fields, as the screen last set them, hold any text.
    void SetRecordHasAddress(std::function<bool()> test);
    // Rows the list shows (and each search reads), when the window has room for them.
    void SetVisibleRows(int rows);

    // What F9 and the lookup buttons do: the list under the field, on its text.
    void Lookup(ZipMode mode);
    void HidePanel();
    // The panel, once it has been shown.
    ZipCode_Panel* panel() const { return panel_; }

    ZipParts Current() const;
    // The address on the record: the three fields as the screen last set them (with setText,
    // as a screen loads its record), not as the person typed or the list wrote them.
    const ZipParts& onRecord() const { return onRecord_; }

signals:
    // The three fields now hold a chosen row.
    void addressChosen(const orvo::tools::ZipParts& parts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* Field(ZipMode mode) const;
    static int Slot(ZipMode mode) { return mode == ZipMode::City ? 0 : 1; }
    bool& Edited(ZipMode mode) { return edited_[Slot(mode)]; }
    void OnTextChanged(const QLineEdit* field, QString ZipParts::*part);
    ZipCode_Panel& Panel();
    void ShowPanel(ZipMode mode);
    void Search(ZipMode mode, const QString& text);
    void OnTextEdited(ZipMode mode, const QString& text);
    bool OnKey(int key);
    void OnLeft(ZipMode mode);
    void LeaveStep(ZipMode mode);
    void Leave(ZipMode mode, const QString& entry);
    bool CheckWidths() const;
    void Apply(const ZipRow& row);
    void Write(const ZipParts& parts);

    GIC& gic_;
    component::EditingDialog& screen_;
    QPointer<QLineEdit> city_;
    QPointer<QLineEdit> state_;
    QPointer<QLineEdit> zip_;
    // The two watched fields as plain identities: an event can reach the filter while a field is
    // being destroyed, when it is no longer a QLineEdit to look at through the QPointer.
    const QObject* cityIdentity_ = nullptr;
    const QObject* zipIdentity_ = nullptr;
    QPointer<ZipCode_Panel> panel_;
    std::function<bool()> recordHasAddress_;
    ZipParts onRecord_;
    // The person has typed in the city (0) or zip (1) field since its text last matched a row,
    // and what was typed there last.
    std::array<bool, 2> edited_{};
    std::array<QString, 2> typed_;
    // The widths of the city and zip columns, as the fields held them before they took lines.
    std::array<int, 2> widths_{};
    bool writing_ = false;
    int wantedRows_ = 0;
};

}  // namespace orvo::tools
