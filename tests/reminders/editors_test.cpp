// The two message editors on the offscreen platform over the reference host: loading a body or
// a template, the sample's captions, the questions before changes are dropped, and the test
// send into the practice's outbox with its refusals of a bad number or address.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QToolButton>

#include "host/reminder_demo_data.h"
#include "reminders/default_messages.h"
#include "reminders/frm_ed_msg.h"
#include "reminders/frm_quick_editor.h"
#include "reminders/reminder_codes.h"
#include "tests/reminders/reminder_test_fixture.h"

namespace orvo::reminders::test {
namespace {

const QString kTestTitle = QStringLiteral("eReminder Test");

class RefusingSender : public MessageSender {
public:
    bool SendTextMessage(const QString&, const QString&, QString& problem) override {
        problem = QStringLiteral("no service");
        return false;
    }
    bool SendEMail(const QString&, const QString&, const QString&, QString& problem) override {
        problem = QStringLiteral("no service");
        return false;
    }
};

class EditorsTest : public ReminderDatabaseTest {
protected:
    void SetUp() override {
        ReminderDatabaseTest::SetUp();
        if (IsSkipped())
            return;
        gic().WriteSetting(QStringLiteral("EMDEON"), QStringLiteral("OfficeID"), 0,
                           QStringLiteral("1044"));
        gic().WriteSetting(QStringLiteral("EMDEON"), QStringLiteral("Hash"), 0,
                           QStringLiteral("9f2c"));
    }
    std::unique_ptr<frmQuickEditor> Editor(int channel, const QString& body) {
        auto editor = std::make_unique<frmQuickEditor>(gic());
        editor->EditorType = channel;
        editor->PlainText = channel != kEMail;
        editor->emsRecordType = kAppointmentConfirmation;
        editor->AutoApplyReturnMessageVisible = true;
        editor->AutoApplyReturnMessageValue = true;
        editor->AppointmentPeriod = 1;
        editor->TotalPeriod = 2;
        editor->setText(body);
        editor->Load();
        return editor;
    }
    void WriteTemplate(const QString& name, const QString& title, const QByteArray& html) {
        const QString folder =
            TemplateTypeFolder(session_.dataPath, kAppointmentConfirmation) + name + u'/';
        QDir().mkpath(folder);
        QFile ini(folder + QStringLiteral("Parameters.ini"));
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("[ORVO EMAIL TEMPLATE]\r\nFile=index.html\r\nTitle=" + title.toUtf8() + "\r\n");
        QFile page(folder + QStringLiteral("index.html"));
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
        page.write(html);
    }
    QStringList Outbox(const QString& pattern) {
        return QDir(session_.dataPath + QStringLiteral("OUTBOX")).entryList({pattern}, QDir::Files);
    }
};

TEST_P(EditorsTest, QuickEditorShowsTheBodyMergedWithItsCaptions) {
    auto editor = Editor(kTextMessage, QStringLiteral("Hi {Patient First Name}, see you soon."));
    EXPECT_EQ(editor->pop->title(), QStringLiteral("Sample Merged Message"));
    EXPECT_EQ(editor->pop->caption(), QStringLiteral("Sample Text Message"));
    EXPECT_EQ(editor->pop->picture(), QStringLiteral("CELL PHONE"));
    EXPECT_EQ(editor->chkAutoApply->text(),
              QStringLiteral("Automatically add instructions (Recommended)"));
    EXPECT_EQ(editor->cmdOK->text(), QStringLiteral("&OK"));
    EXPECT_EQ(editor->cmdCancel->text(), QStringLiteral("&Cancel"));
    EXPECT_TRUE(editor->qe->commandsShown());
    EXPECT_TRUE(editor->optCustom->isChecked());
    EXPECT_FALSE(editor->Modified);
    // The sample is merged, and carries the confirmation of a stage before the last.
    EXPECT_TRUE(editor->pop->shownText().startsWith(QString::fromUtf8("Hi Jos\xc3\xa9, see you")));
    EXPECT_TRUE(editor->pop->shownText().contains(QStringLiteral("Click to confirm")));
    editor->chkAutoApply->setChecked(false);
    EXPECT_FALSE(editor->pop->shownText().contains(QStringLiteral("Click to confirm")));

    editor->qe->textEdit()->setPlainText(QStringLiteral("Changed"));
    EXPECT_TRUE(editor->Modified);
    editor->cmdOK->click();
    EXPECT_FALSE(editor->Canceled);
    EXPECT_EQ(editor->Text(), QStringLiteral("Changed"));

    // Without the online service set up there is no test command; a preview only has Edit.
    gic().WriteSetting(QStringLiteral("EMDEON"), QStringLiteral("Hash"), 0, QString());
    auto preview = std::make_unique<frmQuickEditor>(gic());
    preview->EditorType = kPostCard;
    preview->PreviewOnly = true;
    preview->setText(QStringLiteral("Card"));
    preview->Load();
    EXPECT_FALSE(preview->qe->commandsShown());
    EXPECT_EQ(preview->pop->caption(), QStringLiteral("Sample Postcard"));
    EXPECT_EQ(preview->cmdOK->text(), QStringLiteral("&Edit"));
    EXPECT_EQ(preview->cmdCancel->text(), QStringLiteral("&Close"));
    EXPECT_TRUE(preview->qe->textEdit()->isReadOnly());
    preview->cmdOK->click();
    EXPECT_FALSE(preview->qe->textEdit()->isReadOnly());
    EXPECT_EQ(preview->cmdOK->text(), QStringLiteral("&OK"));
}

TEST_P(EditorsTest, QuickEditorPicksTheTemplateTheTagNames) {
    WriteTemplate(QStringLiteral("Autumn"), QStringLiteral("Autumn Leaves"), "<p>Autumn</p>");
    WriteTemplate(QStringLiteral("Spring"), QStringLiteral("Spring Smile"),
                  "<p>{Appointment Patient First Name}</p><img src=\"{ImagePath}logo.png\">"
                  "<!--{SIZE} Width=\"320\" Height=\"400\"-->");
    auto editor = Editor(kEMail, TemplateTag(QStringLiteral("SPRING\\index.html")));
    EXPECT_TRUE(editor->optPredefined->isChecked());
    ASSERT_EQ(editor->lstTemplates->count(), 2);
    EXPECT_EQ(editor->lstTemplates->currentRow(), 1);
    EXPECT_EQ(editor->pop->caption(), QStringLiteral("Sample E-mail"));
    // The file's old names are brought up to date and merged; its images come from its folder.
    EXPECT_TRUE(editor->pop->shownText().startsWith(QString::fromUtf8("<p>Jos\xc3\xa9</p>")));
    EXPECT_TRUE(editor->pop->shownText().contains(QStringLiteral("Spring/logo.png")));
    EXPECT_EQ(editor->Text(), TemplateTag(QStringLiteral("Spring/index.html")));

    editor->lstTemplates->setCurrentRow(0);
    EXPECT_TRUE(editor->Modified);
    EXPECT_EQ(editor->Text(), TemplateTag(QStringLiteral("Autumn/index.html")));
    editor->optCustom->setChecked(true);
    EXPECT_FALSE(IsTemplateReference(editor->Text()));
}

TEST_P(EditorsTest, ClosingChangedTextAsksFirst) {
    auto editor = Editor(kTextMessage, QStringLiteral("Body"));
    editor->show();
    editor->qe->textEdit()->setPlainText(QStringLiteral("Body changed"));
    prompts_.Expect(QStringLiteral("Message Editor"), frmQuickEditor::kDiscardQuestion, AnswerNo);
    editor->cmdCancel->click();
    EXPECT_TRUE(editor->isVisible());
    prompts_.Expect(QStringLiteral("Message Editor"), frmQuickEditor::kDiscardQuestion, AnswerYes);
    editor->cmdCancel->click();
    EXPECT_FALSE(editor->isVisible());
    EXPECT_TRUE(editor->Canceled);
    EXPECT_EQ(prompts_.pending(), 0);

    frmEDMsg messages(gic());
    messages.emsRecordType = kAppointmentConfirmation;
    messages.txtType = kTextMessage;
    messages.LoadData();
    EXPECT_EQ(messages.windowTitle(), QStringLiteral("Confirmation SMS Template Editor"));
    EXPECT_EQ(messages.pop->title(), QStringLiteral("Sample Merged Text Message"));
    EXPECT_EQ(messages.chkAutoApply->text(),
              QStringLiteral("Auto Apply Return Message Instruction"));
    EXPECT_EQ(messages.Text(),
              GetDefaultMessage(kAppointmentConfirmation, kTextMessage, false, kEnglish));
    messages.show();
    // Unchanged text closes without a question.
    messages.cmdCancel->click();
    EXPECT_FALSE(messages.isVisible());
    messages.emsRecordType = kAppointmentReminder;
    messages.txtType = kEMail;
    messages.LoadData();
    EXPECT_EQ(messages.windowTitle(), QStringLiteral("Reminder E-Mail Template Editor"));
    messages.show();
    messages.qe->textEdit()->setPlainText(QStringLiteral("new"));
    prompts_.Expect(QStringLiteral("Reminder E-Mail Template Editor"), frmEDMsg::kDiscardQuestion,
                    AnswerNo);
    messages.cmdCancel->click();
    EXPECT_TRUE(messages.isVisible());
    messages.cmdOK->click();
    EXPECT_TRUE(messages.Changed);
}

TEST_P(EditorsTest, TestTextMessageGoesToTheOutboxAfterANumberOfTenDigits) {
    auto editor = Editor(kTextMessage, QStringLiteral("Hello {Patient First Name}"));
    prompts_.ExpectInput(kTestTitle, QStringLiteral("following cell phone number"),
                         QStringLiteral("555-12"));
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("[ 555-12 ] cannot be processed"),
                              AnswerYes);
    prompts_.ExpectInput(kTestTitle, QStringLiteral("Do you want to continue?"),
                         QStringLiteral("(555) 201-9999"));
    prompts_.ExpectContaining(kTestTitle,
                              QStringLiteral("save (555) 201-9999 as your default test cell "
                                             "phone number?"),
                              AnswerYes);
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("has been sent as a text message"),
                              AnswerOk);
    editor->qe->testButton()->click();
    EXPECT_EQ(prompts_.pending(), 0);
    EXPECT_EQ(
        gic().ReadSetting(QStringLiteral("eReminders"), QStringLiteral("TestMobile"), 0, QString()),
        QStringLiteral("(555) 201-9999"));
    const QStringList sent = Outbox(QStringLiteral("5552019999-*.txt"));
    ASSERT_EQ(sent.size(), 1);
    QFile file(session_.dataPath + QStringLiteral("OUTBOX/") + sent[0]);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.startsWith(QString::fromUtf8("Hello Jos\xc3\xa9\r\nClick to confirm")));

    // The stored number is offered next time and not offered for saving again; a refused
    // number that is not re-entered sends nothing.
    prompts_.ExpectInput(kTestTitle, QStringLiteral("cell phone number"),
                         QStringLiteral("12345678901"));
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("10 digit cell phone number"), AnswerNo);
    editor->TestSend();
    EXPECT_EQ(Outbox(QStringLiteral("*.txt")).size(), 1);

    auto card = Editor(kPostCard, QStringLiteral("Card"));
    prompts_.Expect(kTestTitle,
                    QStringLiteral("Tests can only be sent for emails and text messages."),
                    AnswerOk);
    card->TestSend();
    EXPECT_EQ(prompts_.pending(), 0);
}

TEST_P(EditorsTest, TestEMailIsAMailMessageAndAFailureSaysSo) {
    auto editor = Editor(kEMail, QStringLiteral("<p>Dear {Patient Last Name}</p>"));
    prompts_.ExpectInput(kTestTitle, QStringLiteral("following email address"),
                         QStringLiteral("frontdesk@"));
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("[frontdesk@], cannot be processed"),
                              AnswerYes);
    prompts_.ExpectInput(kTestTitle, QStringLiteral("email address"),
                         QStringLiteral("frontdesk@lakeside.example"));
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("as your default test email address?"),
                              AnswerNo);
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("has been sent via email"), AnswerOk);
    editor->TestSend();
    EXPECT_EQ(prompts_.pending(), 0);
    const QStringList sent = Outbox(QStringLiteral("*.eml"));
    ASSERT_EQ(sent.size(), 1);
    QFile file(session_.dataPath + QStringLiteral("OUTBOX/") + sent[0]);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray message = file.readAll();
    EXPECT_TRUE(message.contains("To: frontdesk@lakeside.example\r\n"));
    EXPECT_TRUE(message.contains("Content-Type: text/html; charset=UTF-8\r\n"));
    const QByteArray body = QByteArray::fromBase64(message.mid(message.indexOf("\r\n\r\n") + 4));
    EXPECT_TRUE(
        QString::fromUtf8(body).contains(QString::fromUtf8("Pe\xc3\xb1"
                                                           "a")));
    EXPECT_TRUE(QString::fromUtf8(body).contains(QStringLiteral("Click Here")));
    // The address was not saved, so it is not offered next time.
    EXPECT_EQ(
        gic().ReadSetting(QStringLiteral("eReminders"), QStringLiteral("TestEmail"), 0, QString()),
        QString());

    editor->setSender(std::make_shared<RefusingSender>());
    prompts_.ExpectInput(kTestTitle, QStringLiteral("email address"),
                         QStringLiteral("frontdesk@lakeside.example"));
    prompts_.ExpectContaining(kTestTitle, QStringLiteral("as your default test email address?"),
                              AnswerNo);
    prompts_.Expect(kTestTitle,
                    QStringLiteral("Your test eReminder email could not be sent. Would you like to "
                                   "check your eReminder Send & Receive options?"),
                    AnswerNo);
    editor->TestSend();
    EXPECT_EQ(prompts_.pending(), 0);
    EXPECT_EQ(Outbox(QStringLiteral("*.eml")).size(), 1);
}

TEST(OutboxSenderTest, AMailCommandTakesTheMessageOrSaysWhyNot) {
    QTemporaryDir dir;
    const QString captured = dir.path() + QStringLiteral("/captured.eml");
    OutboxSender command(dir.path() + QStringLiteral("/OUTBOX"),
                         QStringLiteral("desk@office.example"),
                         QStringLiteral("sh -c \"cat > '%1'\"").arg(captured));
    QString problem;
    ASSERT_TRUE(command.SendEMail(QStringLiteral("p@patient.example"),
                                  QString::fromUtf8("Cita Pe\xc3\xb1"
                                                    "a"),
                                  QStringLiteral("<p>x</p>"), problem))
        << problem.toStdString();
    QFile file(captured);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray message = file.readAll();
    EXPECT_TRUE(message.startsWith("From: desk@office.example\r\nTo: p@patient.example\r\n"));
    EXPECT_TRUE(message.contains("Subject: =?UTF-8?B?"));
    EXPECT_FALSE(QDir(dir.path() + QStringLiteral("/OUTBOX")).exists());

    OutboxSender refusing(dir.path(), QStringLiteral("desk@office.example"),
                          QStringLiteral("sh -c \"echo relay refused >&2; exit 75\""));
    EXPECT_FALSE(refusing.SendEMail(QStringLiteral("p@patient.example"), QStringLiteral("s"),
                                    QStringLiteral("<p>x</p>"), problem));
    EXPECT_TRUE(problem.contains(QStringLiteral("relay refused")));
    EXPECT_FALSE(IsValidEMailAddress(QStringLiteral("a b@c.example")));
    EXPECT_FALSE(IsValidEMailAddress(QStringLiteral("a@c")));
    EXPECT_TRUE(
        IsValidEMailAddress(QString::fromUtf8("jos\xc3\xa9@pe\xc3\xb1"
                                              "a.example")));
}

TEST_P(EditorsTest, Screenshots) {
    // Once is enough: the pictures do not depend on the engine.
    if (GetParam() != db::Engine::Sqlite)
        GTEST_SKIP() << "taken on the embedded engine";
    const auto save = [](QWidget& widget, const char* name) {
        EXPECT_TRUE(widget.grab().save(QDir::tempPath() + QStringLiteral("/reminders_") +
                                       QLatin1String(name) + QStringLiteral(".png")));
    };
    auto text = Editor(kTextMessage,
                       GetDefaultMessage(kAppointmentConfirmation, kTextMessage, false, kEnglish));
    text->resize(900, 560);
    save(*text, "quick_editor_text");
    auto mail =
        Editor(kEMail, GetDefaultMessage(kAppointmentConfirmation, kEMail, false, kEnglish));
    mail->resize(1000, 640);
    save(*mail, "quick_editor_email");
    host::SeedDemoTemplates(session_.dataPath);
    auto predefined = Editor(kEMail, TemplateTag(QStringLiteral("BlueSky\\index.html")));
    predefined->resize(1100, 700);
    ASSERT_EQ(predefined->lstTemplates->currentRow(), 0);
    save(*predefined, "quick_editor_template");
}

INSTANTIATE_TEST_SUITE_P(Engines, EditorsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::reminders::test
