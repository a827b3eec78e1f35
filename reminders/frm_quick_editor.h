#pragma once

#include <QList>
#include <QStringList>
#include <memory>

#include "component/public/gic.h"
#include "platform/message_outbox.h"
#include "platform/preview_over_picture.h"
#include "platform/quick_editor.h"
#include "reminders/message_editor_dialog.h"
#include "reminders/template_files.h"

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace orvo::reminders {

namespace Ui {
class frmQuickEditor;
}

// The sending service of test messages the editors use: the practice's outbox in the data
// folder, or the mail transfer command that the "eReminders" settings name.
std::shared_ptr<MessageSender> PracticeSender(GIC& gic);

// The general editor of a message body of any channel: its text, or a pre-defined template of
// the reminder type, with a sample merged as it will look, and a test send.
class frmQuickEditor : public MessageEditorDialog {
    Q_OBJECT
public:
    explicit frmQuickEditor(GIC& gic, QWidget* parent = nullptr);
    ~frmQuickEditor() override;

    // Set before Load.
    int LanguageType = 1;
    int EditorType = 1;  // the channel
    QStringList EditorVariables;
    bool PlainText = true;
    bool ShowPreview = true;
    bool ShowCommands = true;
    bool AutoApplyReturnMessageVisible = false;
    bool AutoApplyReturnMessageValue = false;
    int emsRecordType = 2;
    int AppointmentPeriod = 1;
    int TotalPeriod = 1;
    QString WpHelpText;
    bool PreviewOnly = false;

    // After the dialog closes (and Modified).
    bool Canceled = true;

    void setText(const QString& body) { body_ = body; }
    // The body: the text, or the tag of the selected template.
    QString Text() const;

    void Load();
    void DrawSample() override;
    void TestSend();
    void setSender(std::shared_ptr<MessageSender> sender) { sender_ = std::move(sender); }

    QRadioButton* optPredefined = nullptr;
    QRadioButton* optCustom = nullptr;
    QListWidget* lstTemplates = nullptr;
    QLabel* lblHelp = nullptr;

    static const QString kDiscardQuestion;

protected:
    void reject() override;

private:
    void Accept();
    bool ConfirmDiscard();
    void SetEditing(bool editing);
    QString SampleBody(bool forSending) const;
    const TemplateEntry* SelectedTemplate() const;
    QString TemplateName(const TemplateEntry& entry) const;
    std::optional<QString> AskTarget(bool text, const QString& stored);

    std::unique_ptr<Ui::frmQuickEditor> ui_;
    QString body_;
    QList<TemplateEntry> templates_;
    std::shared_ptr<MessageSender> sender_;
};

// The caption of a sample for a channel: "Sample Text Message" ... "Sample Voice Reminder".
QString SampleCaption(int channel);
// The picture a channel's sample is drawn on.
QString SamplePicture(int channel);

}  // namespace orvo::reminders
