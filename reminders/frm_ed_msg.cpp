#include "reminders/frm_ed_msg.h"

#include <QCheckBox>
#include <QFile>
#include <QPushButton>

#include "platform/prompts.h"
#include "reminders/frm_quick_editor.h"
#include "reminders/merge_variables.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminder_messages.h"
#include "ui_frm_ed_msg.h"

namespace orvo::reminders {

const QString frmEDMsg::kDiscardQuestion =
    QStringLiteral("Are you sure that you want to exit without saving the changes?");

QString SampleName(int channel) {
    switch (channel) {
        case kEMail:
            return QStringLiteral("E-mail");
        case kLetter:
            return QStringLiteral("Letter");
        case kPostCard:
            return QStringLiteral("Postcard");
        default:
            return QStringLiteral("Text Message");
    }
}

frmEDMsg::frmEDMsg(GIC& gic, QWidget* parent)
    : MessageEditorDialog(gic, parent), ui_(std::make_unique<Ui::frmEDMsg>()) {
    ui_->setupUi(this);
    BindControls(ui_->qe, ui_->pop, ui_->chkAutoApply, ui_->cmdOK, ui_->cmdCancel, true);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        Changed = Modified;
        accept();
    });
}

frmEDMsg::~frmEDMsg() = default;

void frmEDMsg::SetCaptions() {
    setWindowTitle((emsRecordType == kAppointmentConfirmation ? QStringLiteral("Confirmation")
                                                              : QStringLiteral("Reminder")) +
                   (txtType == kEMail ? QStringLiteral(" E-Mail") : QStringLiteral(" SMS")) +
                   QStringLiteral(" Template Editor"));
    pop->setTitle(QStringLiteral("Sample Merged ") + SampleName(txtType));
    pop->setCaption(SampleCaption(txtType));
    pop->setPicture(SamplePicture(txtType));
    pop->setSampleValues(SampleValues());
    pop->setVisible(ShowPreview);
    chkAutoApply->setVisible(AutoApplyCheckBoxVisible);
    qe->setVariables(MergeVariables());
    qe->setSampleValues(SampleValues());
    qe->setPlainTextMode(txtType != kEMail);
    qe->setShowCommands(false);
}

void frmEDMsg::LoadData() {
    LoadText(
        ReminderMessages(gic_).GetReminderMessage(emsRecordType, txtType, 0, 1, false, kEnglish));
}

void frmEDMsg::LoadText(const QString& text) {
    loading_ = true;
    SetCaptions();
    qe->setText(text);
    Modified = false;
    Changed = false;
    loading_ = false;
    DrawSample();
}

void frmEDMsg::DrawSample() {
    if (!ShowPreview)
        return;
    pop->setText(qe->text(), txtType == kEMail);
}

void frmEDMsg::reject() {
    if (Modified && prompts().Message(kDiscardQuestion, Buttons::YesNo, Icon::Question,
                                      windowTitle(), 2) != AnswerYes) {
        return;
    }
    QDialog::reject();
}

std::optional<QString> EditTextFile(GIC& gic, const QString& path, QWidget* parent) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    frmEDMsg editor(gic, parent);
    editor.txtType = kEMail;
    editor.emsRecordType = kAppointmentReminder;
    editor.AutoApplyCheckBoxVisible = false;
    editor.LoadText(QString::fromUtf8(file.readAll()));
    if (editor.exec() != QDialog::Accepted)
        return std::nullopt;
    return editor.Text();
}

}  // namespace orvo::reminders
