#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "component/public/gic.h"
#include "component/public/print_events.h"
#include "platform/prompts.h"

class QAbstractButton;
class QLineEdit;

namespace orvo::component {

// The base of every editing screen. It owns what all of them do alike, so that a screen holds
// only its fields, its checks and its save:
//
// - the record lock, from LockRecordFor to the close (or the screen's end, whichever is first);
// - the user-action boundary: every button, key and leave step runs through RunAction, which
//   shows and logs any error and leaves the screen usable;
// - the fields: a change marks the screen Modified (not while Loading); the work a field does
//   when it is left (tidying, splitting a city line, a question) runs once the focus has moved
//   on, and any step still pending runs before the save, whatever closes the window: OK, Cancel,
//   Escape, the window's close, a shortcut. What is saved is trimmed;
// - Up and Down move between fields, Enter moves on; keys a field or a helper on it takes
//   first (an open list under the field) never reach this, whatever order they were set up in;
// - the close path: done() runs the pending leave steps, then CheckSave, and goes on only when
//   it answers other than Cancel: the record lock is released and Closing() runs.
//
// A screen derives from it like this:
//
//   class fooScreen : public component::EditingDialog {
//   public:
//       explicit fooScreen(GIC& gic, QWidget* parent = nullptr);
//       void Setup_Screen(const QString& Command, int RecordID);
//   protected:
//       void Save_Record() override;                 // writes the fields; a new row sets RecordID
//       bool CheckFields() override;                 // refusals before a save (tell the person)
//       int ConfirmSave() override;                  // questions about a save's effects
//       void Closing() override;                     // hand results back (PutSavedRecordID)
//   };
//
//   fooScreen::fooScreen(GIC& gic, QWidget* parent) : EditingDialog(gic, parent) {
//       ui_->setupUi(this);
//       AddFields({ui_->txtName, ui_->txtPhone});            // every field that is saved
//       OnLeave(ui_->txtPhone, [this] { FormatPhoneField(); });
//       zip_ = new tools::CityStateZip(gic, *this);          // helpers add their own steps
//       zip_->Attach(ui_->txtCity, ui_->txtState, ui_->txtZip);
//       SetOkButton(ui_->cmdOK);
//       SetCancelButton(ui_->cmdCancel);
//   }
//
//   void fooScreen::Setup_Screen(const QString& Command, int RecordID) {
//       const LoadingScope loading(*this);
//       if (RecordID != 0) {
//           RequireRecord("FooTable", "FooID", RecordID);    // refuses a row that is not there
//           this->RecordID = RecordID;
//           LockRecordFor("FOOTABLE");                       // 0 when refused: read only
//           Load_Data();
//       } else {
//           IsNewRecord = true;
//           RecordLock = kNewRecordLock;
//       }
//   }
//
// The screen never overrides done(), never installs an event filter for leaving a field or for
// navigation keys, and never catches errors of its own actions: the base does these once.
class EditingDialog : public QDialog {
    Q_OBJECT
public:
    ~EditingDialog() override;

    // Screen state, as every screen keeps it.
    int RecordID = 0;  // 0 for a new row
    // The record lock's number: 0 when another station holds the row (the screen is read only),
    // kNewRecordLock for a new row, which needs none.
    int RecordLock = 0;
    bool Modified = false;
    bool Loading = false;
    bool IsNewRecord = false;
    // The component instance that started the screen, through which it would print; cleared when
    // the screen closes.
    PrintEvents* ObjParent = nullptr;
    void SetObjParent(PrintEvents* parent) { ObjParent = parent; }

    // The close question, the checks and the save: 6 when the close may go on (saved, or nothing
    // to save), 7 when it goes on without saving, 2 when the screen stays. The usual order:
    // nothing to do when the row is read only, loading or unchanged; Yes without asking on OK,
    // else AskSave; then CheckFields, ConfirmSave, and the save. A save whose row another
    // station deleted offers to save it as a new record.
    virtual int CheckSave();

    // Runs the leave steps still pending, in the order the fields were added. False when one
    // failed (it has been shown).
    bool FinishLeaveSteps();

    // Where a close request ends up (accept, reject, Escape, the window's close).
    void done(int result) final;

    // ---- For the screen and the helpers on its fields ----

    // Every field whose text is saved: a change marks Modified (unless Loading), and its text is
    // trimmed before the save.
    void AddFields(const QList<QLineEdit*>& fields);
    // A step the field runs when the person leaves it after a change (and at the latest before a
    // save); the field counts as added. Several steps of one field run in the order given.
    void OnLeave(QLineEdit* field, std::function<void()> step);
    // A check run before a save, ahead of the screen's CheckFields: false refuses the save, and
    // the check has told the person why. Helpers on the screen's fields add theirs here.
    void AddCheck(std::function<bool()> check);
    // Runs a person's action through the boundary under the screen's caption; false when it
    // failed (it has been shown and logged).
    bool RunAction(const std::function<void()>& action);

    // The value in the OK button's "Tag" property that marks OK as the source of a close.
    static constexpr const char* kOkTag = "OK";

    // Sets Loading for a scope and puts it back after.
    class LoadingScope {
    public:
        explicit LoadingScope(EditingDialog& screen) : screen_(screen), was_(screen.Loading) {
            screen_.Loading = true;
        }
        ~LoadingScope() { screen_.Loading = was_; }
        LoadingScope(const LoadingScope&) = delete;
        LoadingScope& operator=(const LoadingScope&) = delete;

    private:
        EditingDialog& screen_;
        bool was_;
    };

protected:
    explicit EditingDialog(GIC& gic, QWidget* parent = nullptr);

    GIC& gic() const { return gic_; }

    // ---- What a screen supplies ----

    // Writes the fields to the row (a new row sets RecordID). Called with the fields trimmed.
    virtual void Save_Record() = 0;
    // False refuses the save: the person has been told why, and the screen stays.
    virtual bool CheckFields() { return true; }
    // Questions about the effects of a save: 6 to go on, else the answer (2 stays, 7 closes
    // without saving).
    virtual int ConfirmSave() { return AnswerYes; }
    // The question on a close that did not come from OK; by default "Save current changes?"
    // with Yes, No and Cancel under the caption.
    virtual int AskSave();
    // The close goes on: results go back to the caller here. The lock is still held.
    virtual void Closing() {}

    // ---- What the base does for it ----

    // OK: its click marks the close as coming from OK and accepts.
    void SetOkButton(QAbstractButton* ok);
    void SetCancelButton(QAbstractButton* cancel);
    bool ClosedByOk() const;

    // Throws db::RowNotFoundError when the table holds no row with that key: a screen refuses to
    // open on a row that is not there (never was, or another station deleted it) rather than
    // show it empty and take what is typed for an edit of it.
    void RequireRecord(const QString& table, const QString& keyColumn, int recordId);
    // Takes the record lock on tableKey for RecordID into RecordLock.
    void LockRecordFor(const QString& tableKey);
    // Where the lock is taken (its number, or 0 when refused) and given back; tests replace them.
    virtual int TakeRecordLock(const QString& tableKey, int recordId);
    virtual void ReleaseRecordLock();

    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Field {
        QPointer<QLineEdit> edit;
        std::vector<std::function<void()>> steps;
        bool pending = false;  // changed since it was last left
    };
    Field& FieldOf(QLineEdit* edit);
    Field* FindField(const QObject* edit);
    bool RunLeaveSteps(Field& field);
    void LeftField(QLineEdit* edit);
    void TrimFields();
    void SaveOrOfferNew();
    void ReleaseLock();

    GIC& gic_;
    std::deque<Field> fields_;
    std::vector<std::function<bool()>> checks_;  // references to its items stay valid as it grows
    QPointer<QAbstractButton> ok_;
    QString lockTableKey_;
    int lockedRecordId_ = 0;
    bool lockHeld_ = false;
    const Field* leaving_ = nullptr;  // the field whose leave steps are running
};

}  // namespace orvo::component
