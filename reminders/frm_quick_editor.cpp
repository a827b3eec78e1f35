#include "reminders/frm_quick_editor.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "platform/prompts.h"
#include "reminders/default_messages.h"
#include "reminders/merge_variables.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminder_messages.h"
#include "ui_frm_quick_editor.h"

namespace orvo::reminders {
namespace {

const QString kTestTitle = QStringLiteral("eReminder Test");
const QString kSection = QStringLiteral("eReminders");

}  // namespace

const QString frmQuickEditor::kDiscardQuestion =
    QStringLiteral("Are you sure that you want to exit and discard the changes?");

std::shared_ptr<MessageSender> PracticeSender(GIC& gic) {
    const QString from = gic.ReadSetting(kSection, QStringLiteral("TestFrom"), 0,
                                         QStringLiteral("ereminders@localhost"))
                             .toString();
    const QString command =
        gic.ReadSetting(kSection, QStringLiteral("MailCommand"), 0, QString()).toString();
    return std::make_shared<OutboxSender>(gic.GetDataPath() + QStringLiteral("OUTBOX/"), from,
                                          command);
}

QString SampleCaption(int channel) {
    switch (channel) {
        case kEMail:
            return QStringLiteral("Sample E-mail");
        case kLetter:
            return QStringLiteral("Sample Letter");
        case kPostCard:
            return QStringLiteral("Sample Postcard");
        case kVoiceReminder:
            return QStringLiteral("Sample Voice Reminder");
        default:
            return QStringLiteral("Sample Text Message");
    }
}

QString SamplePicture(int channel) {
    switch (channel) {
        case kTextMessage:
        case kVoiceReminder:
            return QStringLiteral("CELL PHONE");
        case kPostCard:
            return QStringLiteral("POSTCARD");
        default:
            return QStringLiteral("PAGE");
    }
}

frmQuickEditor::frmQuickEditor(GIC& gic, QWidget* parent)
    : MessageEditorDialog(gic, parent), ui_(std::make_unique<Ui::frmQuickEditor>()) {
    ui_->setupUi(this);
    BindControls(ui_->qe, ui_->pop, ui_->chkAutoApply, ui_->cmdOK, ui_->cmdCancel, false);
    optPredefined = ui_->optPredefined;
    optCustom = ui_->optCustom;
    lstTemplates = ui_->lstTemplates;
    lblHelp = ui_->lblHelp;

    connect(qe, &QuickEditor::testRequested, this, [this] { Act([this] { TestSend(); }); });
    const auto choose = [this] {
        if (loading_)
            return;
        Modified = true;
        lstTemplates->setVisible(optPredefined->isChecked());
        qe->setVisible(!optPredefined->isChecked());
        Act([this] { DrawSample(); });
    };
    connect(optPredefined, &QRadioButton::toggled, this, choose);
    connect(lstTemplates, &QListWidget::currentRowChanged, this, choose);
    connect(cmdOK, &QPushButton::clicked, this, [this] { Accept(); });
}

frmQuickEditor::~frmQuickEditor() = default;

void frmQuickEditor::Load() {
    loading_ = true;
    pop->setTitle(QStringLiteral("Sample Merged Message"));
    chkAutoApply->setText(QStringLiteral("Automatically add instructions (Recommended)"));
    chkAutoApply->setVisible(AutoApplyReturnMessageVisible);
    chkAutoApply->setChecked(AutoApplyReturnMessageValue);
    lblHelp->setText(WpHelpText);
    lblHelp->setVisible(!WpHelpText.isEmpty());

    // The test command needs the online service to be set up.
    const auto service = [this](const char* key) {
        return gic_.ReadSetting(QStringLiteral("EMDEON"), QLatin1String(key), 0, QString())
            .toString()
            .trimmed();
    };
    qe->setShowCommands(ShowCommands && !service("OfficeID").isEmpty() &&
                        !service("Hash").isEmpty());
    qe->setVariables(EditorVariables.isEmpty() ? MergeVariables() : EditorVariables);
    qe->setSampleValues(SampleValues());
    qe->setPlainTextMode(PlainText);
    pop->setSampleValues(SampleValues());
    pop->setVisible(ShowPreview);
    pop->setCaption(SampleCaption(EditorType));
    pop->setPicture(SamplePicture(EditorType));

    templates_ = ListTemplates(gic_.GetDataPath(), emsRecordType);
    lstTemplates->clear();
    for (const TemplateEntry& entry : templates_)
        lstTemplates->addItem(entry.title);
    const bool predefined = IsTemplateReference(body_);
    if (predefined) {
        optPredefined->setChecked(true);
        lstTemplates->setCurrentRow(FindTemplate(templates_, TemplateFileName(body_)));
    } else {
        optCustom->setChecked(true);
        qe->setText(body_);
    }
    optPredefined->setEnabled(!templates_.isEmpty() || predefined);
    lstTemplates->setVisible(predefined);
    qe->setVisible(!predefined);

    cmdOK->setText(PreviewOnly ? QStringLiteral("&Edit") : QStringLiteral("&OK"));
    cmdCancel->setText(PreviewOnly ? QStringLiteral("&Close") : QStringLiteral("&Cancel"));
    SetEditing(!PreviewOnly);
    Modified = false;
    Canceled = true;
    loading_ = false;
    DrawSample();
}

void frmQuickEditor::SetEditing(bool editing) {
    qe->setReadOnly(!editing);
    lstTemplates->setEnabled(editing);
    optPredefined->setEnabled(editing && !templates_.isEmpty());
    optCustom->setEnabled(editing);
    chkAutoApply->setEnabled(editing);
}

const TemplateEntry* frmQuickEditor::SelectedTemplate() const {
    if (optCustom->isChecked())
        return nullptr;
    const int row = lstTemplates->currentRow();
    return row >= 0 && row < templates_.size() ? &templates_[row] : nullptr;
}

QString frmQuickEditor::TemplateName(const TemplateEntry& entry) const {
    return QDir(TemplateTypeFolder(gic_.GetDataPath(), emsRecordType)).relativeFilePath(entry.file);
}

QString frmQuickEditor::Text() const {
    if (const TemplateEntry* entry = SelectedTemplate())
        return TemplateTag(TemplateName(*entry));
    if (optPredefined->isChecked())
        return body_;  // a reference to a template that is not on this station
    return qe->text();
}

// The body of the sample: the template or the text, with the confirmation when it goes in.
QString frmQuickEditor::SampleBody(bool forSending) const {
    QString body;
    if (const TemplateEntry* entry = SelectedTemplate()) {
        body = ReadTemplateText(entry->file);
        body = forSending ? ResolveImagesForSending(
                                body, QDir(gic_.GetDataPath() + QStringLiteral("STP/Templates/"))
                                          .relativeFilePath(entry->folder))
                          : ResolveImagesForPreview(body, entry->folder);
    } else {
        body = qe->text();
    }
    const bool voiceConfirmation =
        emsRecordType == kAppointmentConfirmation && EditorType == kVoiceReminder;
    if (!voiceConfirmation && chkAutoApply->isChecked() && !chkAutoApply->isHidden()) {
        ReminderMessages messages(gic_);
        body = AddConfirmation(
            body, messages.GetConfirmText(TotalPeriod, AppointmentPeriod, EditorType, LanguageType),
            EditorType);
    }
    return body;
}

void frmQuickEditor::DrawSample() {
    if (!ShowPreview)
        return;
    const TemplateEntry* entry = SelectedTemplate();
    const bool html = entry || !qe->plainTextMode();
    pop->setScreenSize(entry ? TemplateSizeHint(ReadTemplateText(entry->file)) : QSize(-1, -1));
    pop->setText(SampleBody(false), html, entry ? entry->folder : QString());
}

bool frmQuickEditor::ConfirmDiscard() {
    if (!Modified || PreviewOnly)
        return true;
    return prompts().Message(kDiscardQuestion, Buttons::YesNo, Icon::Question, windowTitle(), 2) ==
           AnswerYes;
}

void frmQuickEditor::reject() {
    if (!ConfirmDiscard())
        return;
    Canceled = true;
    QDialog::reject();
}

void frmQuickEditor::Accept() {
    if (PreviewOnly) {
        // Edit: the same screen, now for changing the body.
        PreviewOnly = false;
        cmdOK->setText(QStringLiteral("&OK"));
        cmdCancel->setText(QStringLiteral("&Cancel"));
        SetEditing(true);
        return;
    }
    body_ = Text();
    AutoApplyReturnMessageValue = chkAutoApply->isChecked();
    Canceled = false;
    accept();
}

std::optional<QString> frmQuickEditor::AskTarget(bool text, const QString& stored) {
    const QString question =
        (text ? QStringLiteral("You are about to send a text message to the following cell "
                               "phone number.")
              : QStringLiteral("You are about to send an email to the following email address.")) +
        kLineBreak + kLineBreak + QStringLiteral("Do you want to continue?");
    QString value = stored;
    for (;;) {
        const std::optional<QString> typed = prompts().Input(question, kTestTitle, value);
        if (!typed)
            return std::nullopt;
        value = typed->trimmed();
        const bool valid = text ? PhoneDigits(value).size() == 10 : IsValidEMailAddress(value);
        if (valid)
            return value;
        const QString problem =
            text ? QStringLiteral("The cell phone number you've entered [ ") + value +
                       QStringLiteral(" ] cannot be processed.") + kLineBreak + kLineBreak +
                       QStringLiteral(
                           "To send a text message, you must enter a 10 digit cell "
                           "phone number. Would you like to re-enter the number?")
                 : QStringLiteral("The email address you've entered, [") + value +
                       QStringLiteral("], cannot be processed.") + kLineBreak + kLineBreak +
                       QStringLiteral(
                           "To send a test email, you must enter a valid email "
                           "address. Would you like to re-enter the number?");
        if (prompts().Message(problem, Buttons::YesNo, Icon::Warning, kTestTitle) != AnswerYes)
            return std::nullopt;
    }
}

void frmQuickEditor::TestSend() {
    if (EditorType != kTextMessage && EditorType != kEMail) {
        prompts().Message(QStringLiteral("Tests can only be sent for emails and text messages."),
                          Buttons::Ok, Icon::Information, kTestTitle);
        return;
    }
    const bool text = EditorType == kTextMessage;
    const QString key = text ? QStringLiteral("TestMobile") : QStringLiteral("TestEmail");
    const QString stored = gic_.ReadSetting(kSection, key, 0, QString()).toString();
    const std::optional<QString> target = AskTarget(text, stored);
    if (!target)
        return;
    if (*target != stored) {
        const QString offer = QStringLiteral("Would you like to save ") + *target +
                              (text ? QStringLiteral(" as your default test cell phone number?")
                                    : QStringLiteral(" as your default test email address?"));
        if (prompts().Message(offer, Buttons::YesNo, Icon::Question, kTestTitle) == AnswerYes)
            gic_.WriteSetting(kSection, key, 0, *target);
    }

    const QString body = qe->Merge(SampleBody(true));
    if (!sender_)
        sender_ = PracticeSender(gic_);
    QString problem;
    const bool sent = text ? sender_->SendTextMessage(*target, body, problem)
                           : sender_->SendEMail(*target, kTestTitle, body, problem);
    if (sent) {
        prompts().Message(
            text ? QStringLiteral("Your test eReminder has been sent as a text message. Please "
                                  "check your cell phone to view the message.") +
                       kLineBreak + kLineBreak +
                       QStringLiteral("Because this test message is not connected to a "
                                      "patient, replies will not be processed.")
                 : QStringLiteral("Your test eReminder has been sent via email. Please check "
                                  "your email to view the message.") +
                       kLineBreak + kLineBreak +
                       QStringLiteral("Because this test message is not connected to a "
                                      "patient, replies to this message will not be received."),
            Buttons::Ok, Icon::Information, kTestTitle);
        return;
    }
    const QString failure =
        text ? QStringLiteral(
                   "Your test eReminder text message could not be sent. Would you "
                   "like to check your eReminder Send & Receive options?")
             : QStringLiteral(
                   "Your test eReminder email could not be sent. Would you like to "
                   "check your eReminder Send & Receive options?");
    if (prompts().Message(failure, Buttons::YesNo, Icon::Warning, kTestTitle) == AnswerYes)
        gic_.RefreshHost(QStringLiteral("EREMINDER_OPTIONS"));
}

}  // namespace orvo::reminders
