#include "reminders/message_editor_dialog.h"

#include <QCheckBox>
#include <QPushButton>

#include "platform/user_action.h"

namespace orvo::reminders {

MessageEditorDialog::MessageEditorDialog(GIC& gic, QWidget* parent) : QDialog(parent), gic_(gic) {}

void MessageEditorDialog::BindControls(QuickEditor* editor, PreviewOverPicture* preview,
                                       QCheckBox* autoApply, QPushButton* ok, QPushButton* cancel,
                                       bool autoApplyModifies) {
    qe = editor;
    pop = preview;
    chkAutoApply = autoApply;
    cmdOK = ok;
    cmdCancel = cancel;
    connect(qe, &QuickEditor::textChanged, this, [this] {
        if (loading_)
            return;
        Modified = true;
        Act([this] { DrawSample(); });
    });
    connect(chkAutoApply, &QCheckBox::toggled, this, [this, autoApplyModifies] {
        if (loading_)
            return;
        if (autoApplyModifies)
            Modified = true;
        Act([this] { DrawSample(); });
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

bool MessageEditorDialog::Act(const std::function<void()>& action) {
    return RunUserAction(windowTitle(), action);
}

}  // namespace orvo::reminders
