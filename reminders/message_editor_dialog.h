#pragma once

#include <QDialog>
#include <functional>

#include "component/public/gic.h"
#include "platform/preview_over_picture.h"
#include "platform/quick_editor.h"

class QCheckBox;
class QPushButton;

namespace orvo::reminders {

// What the message editors share: the body's editor with its merged sample beside it, the box
// that adds the instructions, OK and Cancel, and the Modified mark. Each change to the body
// marks the editor modified and draws the sample again; what an editor does runs through the
// user-action boundary, so an error is shown under the editor's title and the editor stays open.
class MessageEditorDialog : public QDialog {
    Q_OBJECT
public:
    bool Modified = false;

    QuickEditor* qe = nullptr;
    PreviewOverPicture* pop = nullptr;
    QCheckBox* chkAutoApply = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

    // Merges the body into the sample.
    virtual void DrawSample() = 0;

protected:
    MessageEditorDialog(GIC& gic, QWidget* parent);

    // The controls of the editor's layout, once it is set up. Cancel closes through reject();
    // a change to the body, or to the box where `autoApplyModifies`, marks the editor modified;
    // either draws the sample again. Nothing is marked while loading_ is set.
    void BindControls(QuickEditor* editor, PreviewOverPicture* preview, QCheckBox* autoApply,
                      QPushButton* ok, QPushButton* cancel, bool autoApplyModifies);
    // Runs what a control asked for through the boundary; false when it failed.
    bool Act(const std::function<void()>& action);

    GIC& gic_;
    bool loading_ = false;
};

}  // namespace orvo::reminders
