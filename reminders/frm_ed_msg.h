#pragma once

#include <memory>
#include <optional>

#include "component/public/gic.h"
#include "platform/preview_over_picture.h"
#include "platform/quick_editor.h"
#include "reminders/message_editor_dialog.h"

class QCheckBox;
class QPushButton;

namespace orvo::reminders {

namespace Ui {
class frmEDMsg;
}

// The template editor of an appointment message: the body of a confirmation or reminder for
// text messages or e-mail, with its sample.
class frmEDMsg : public MessageEditorDialog {
    Q_OBJECT
public:
    explicit frmEDMsg(GIC& gic, QWidget* parent = nullptr);
    ~frmEDMsg() override;

    bool Changed = false;  // the body was saved with changes
    int emsRecordType = 2;
    int txtType = 1;
    bool ShowPreview = true;
    bool AutoApplyCheckBoxVisible = true;

    // Reads the body of the type and channel, and sets the captions.
    void LoadData();
    // Starts from a given text instead of the stored body.
    void LoadText(const QString& text);
    QString Text() const { return qe->text(); }
    void DrawSample() override;

    static const QString kDiscardQuestion;

protected:
    void reject() override;

private:
    void SetCaptions();

    std::unique_ptr<Ui::frmEDMsg> ui_;
};

// The sample name of a channel in this editor: "Text Message", "E-mail", "Letter", "Postcard".
QString SampleName(int channel);

// Loads a text file whole into the editor as e-mail text and gives back the edited text; no
// value when the editor was closed without OK or the file cannot be read.
std::optional<QString> EditTextFile(GIC& gic, const QString& path, QWidget* parent = nullptr);

}  // namespace orvo::reminders
