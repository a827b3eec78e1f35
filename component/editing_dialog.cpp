#include "component/editing_dialog.h"

#include <QAbstractButton>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

#include "component/record_lock.h"
#include "platform/db/recordset.h"
#include "platform/leaving.h"
#include "platform/prompts.h"
#include "platform/user_action.h"

namespace orvo::component {
namespace {

const QString kSaveQuestion = QStringLiteral("Save current changes?");
const QString kSaveAsNewQuestion = QStringLiteral(
    "\r\n\r\nThe changes can be kept by saving them as a new record. Save them as a "
    "new record?");

// Passes over the leave steps at a close: a step may change another field (a city line fills
// the state and zip), whose own steps then run too; steps that tidy settle within two passes.
constexpr int kLeavePasses = 3;

}  // namespace

EditingDialog::EditingDialog(GIC& gic, QWidget* parent) : QDialog(parent), gic_(gic) {}

EditingDialog::~EditingDialog() {
    ReleaseLock();
}

void EditingDialog::AddFields(const QList<QLineEdit*>& fields) {
    for (QLineEdit* edit : fields)
        FieldOf(edit);
}

void EditingDialog::OnLeave(QLineEdit* field, std::function<void()> step) {
    FieldOf(field).steps.push_back(std::move(step));
}

void EditingDialog::AddCheck(std::function<bool()> check) {
    checks_.push_back(std::move(check));
}

EditingDialog::Field& EditingDialog::FieldOf(QLineEdit* edit) {
    if (Field* known = FindField(edit))
        return *known;
    Field& field = fields_.emplace_back();
    field.edit = edit;
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::textChanged, this, [this, &field] {
        if (Loading)
            return;
        Modified = true;
        if (leaving_ != &field)
            field.pending = true;
    });
    return field;
}

EditingDialog::Field* EditingDialog::FindField(const QObject* edit) {
    for (Field& field : fields_) {
        if (field.edit == edit)
            return &field;
    }
    return nullptr;
}

bool EditingDialog::RunAction(const std::function<void()>& action) {
    return RunUserAction(windowTitle(), action);
}

void EditingDialog::SetOkButton(QAbstractButton* ok) {
    ok_ = ok;
    connect(ok, &QAbstractButton::clicked, this, [this] {
        ok_->setProperty("Tag", QString::fromLatin1(kOkTag));
        accept();
    });
}

void EditingDialog::SetCancelButton(QAbstractButton* cancel) {
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

bool EditingDialog::ClosedByOk() const {
    return ok_ && ok_->property("Tag").toString() == QLatin1String(kOkTag);
}

void EditingDialog::RequireRecord(const QString& table, const QString& keyColumn, int recordId) {
    const QString sql =
        QStringLiteral("SELECT %1 FROM %2 WHERE %1=%3").arg(keyColumn, table).arg(recordId);
    if (db::Recordset(gic_.GetConnection(), sql).IsEmpty())
        throw db::RowNotFoundError(sql);
}

void EditingDialog::LockRecordFor(const QString& tableKey) {
    ReleaseLock();
    RecordLock = TakeRecordLock(tableKey, RecordID);
    lockTableKey_ = tableKey;
    lockedRecordId_ = RecordID;
    lockHeld_ = RecordLock != 0;
}

int EditingDialog::TakeRecordLock(const QString& tableKey, int recordId) {
    return LockRecord(gic_, tableKey, recordId, true);
}

void EditingDialog::ReleaseRecordLock() {
    UnlockRecord(gic_, lockTableKey_, lockedRecordId_, RecordLock);
}

void EditingDialog::ReleaseLock() {
    if (!lockHeld_)
        return;
    lockHeld_ = false;
    ReleaseRecordLock();
}

bool EditingDialog::RunLeaveSteps(Field& field) {
    field.pending = false;
    const Field* outer = leaving_;
    leaving_ = &field;
    bool ran = true;
    for (const auto& step : field.steps) {
        ran = field.edit && RunAction(step);
        if (!ran)
            break;
    }
    leaving_ = outer;
    return ran;
}

void EditingDialog::LeftField(QLineEdit* edit) {
    // After the focus has settled: a lookup button gives it straight back to the field, and a
    // question a step may ask is better not asked from inside a focus change. If the screen
    // closes first, its close runs the steps, and this finds nothing pending.
    QTimer::singleShot(0, this, [this, edit = QPointer<QLineEdit>(edit)] {
        Field* field = edit ? FindField(edit) : nullptr;
        if (field && field->pending && !edit->hasFocus() && isVisible())
            RunLeaveSteps(*field);
    });
}

bool EditingDialog::FinishLeaveSteps() {
    for (int pass = 0; pass < kLeavePasses; ++pass) {
        bool ran = false;
        for (Field& field : fields_) {
            if (!field.pending || field.steps.empty())
                continue;
            if (!RunLeaveSteps(field))
                return false;
            ran = true;
        }
        if (!ran)
            break;
    }
    return true;
}

bool EditingDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && IsLeaving(*static_cast<QFocusEvent*>(event))) {
        Field* field = FindField(watched);
        if (field && field->pending && !field->steps.empty())
            LeftField(field->edit);
    }
    return QDialog::eventFilter(watched, event);
}

// Keys a field does not take itself come here: whatever watches the field (a list open under
// it) has had them first.
void EditingDialog::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && qobject_cast<QLineEdit*>(focusWidget())) {
        switch (event->key()) {
            case Qt::Key_Up:
                focusNextPrevChild(false);
                return;
            case Qt::Key_Down:
            case Qt::Key_Return:
            case Qt::Key_Enter:
                focusNextPrevChild(true);
                return;
            default:
                break;
        }
    }
    QDialog::keyPressEvent(event);
}

int EditingDialog::AskSave() {
    return prompts().Message(kSaveQuestion, Buttons::YesNoCancel, Icon::Question, windowTitle(), 1);
}

void EditingDialog::TrimFields() {
    for (Field& field : fields_) {
        if (field.edit && field.edit->text() != field.edit->text().trimmed())
            field.edit->setText(field.edit->text().trimmed());
    }
}

int EditingDialog::CheckSave() {
    if (RecordLock == 0 || Loading || !Modified)
        return AnswerYes;
    const int answer = ClosedByOk() ? AnswerYes : AskSave();
    if (answer != AnswerYes)
        return answer;
    TrimFields();
    for (const auto& check : checks_) {
        if (!check())
            return AnswerCancel;
    }
    if (!CheckFields())
        return AnswerCancel;
    const int confirmed = ConfirmSave();
    if (confirmed != AnswerYes)
        return confirmed;
    SaveOrOfferNew();
    return Modified ? AnswerCancel : AnswerYes;
}

// A row that another station deleted while the screen was open takes no update: the person is
// told, and may keep what is on the screen as a new row. From then on the screen holds a new
// record, whatever the answer, so that the id of the gone row is never handed back as saved.
void EditingDialog::SaveOrOfferNew() {
    try {
        Save_Record();
        Modified = false;
        return;
    } catch (const db::RowNotFoundError& gone) {
        ReleaseLock();
        RecordID = 0;
        IsNewRecord = true;
        RecordLock = kNewRecordLock;
        if (prompts().Message(gone.driverMessage() + kSaveAsNewQuestion, Buttons::YesNo,
                              Icon::Warning, windowTitle(), 1) != AnswerYes) {
            return;
        }
    }
    Save_Record();
    Modified = false;
}

void EditingDialog::done(int result) {
    // A leave step that failed has been shown; the screen stays, so that what is saved is never
    // what the step would have changed.
    if (!FinishLeaveSteps())
        return;
    int answer = AnswerCancel;
    const bool ran = RunAction([this, &answer] { answer = CheckSave(); });
    // The mark says where this close came from, not the next one.
    if (ok_)
        ok_->setProperty("Tag", QVariant());
    if (!ran || answer == AnswerCancel)
        return;
    RunAction([this] { Closing(); });
    ObjParent = nullptr;
    ReleaseLock();
    QDialog::done(result);
}

}  // namespace orvo::component
