// Message bodies: the template tag and the old template names, template folders with their
// setup files, the built-in bodies in both languages, the confirmation instruction, and the
// body that applies to a stage with its fall-back to earlier stages and the defaults.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "reminders/default_messages.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminder_messages.h"
#include "reminders/reminder_store.h"
#include "reminders/template_files.h"
#include "tests/reminders/reminder_test_fixture.h"

namespace orvo::reminders::test {
namespace {

void WriteFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(TemplateTag, NamesTheFileBetweenItsQuotes) {
    EXPECT_TRUE(IsTemplateReference(QStringLiteral("  <PredefinedTemplate=\"a.htm\"/>  ")));
    EXPECT_TRUE(IsTemplateReference(QStringLiteral("Hello <PredefinedTemplate=\"a.htm\"/>")));
    EXPECT_FALSE(IsTemplateReference(QStringLiteral("<predefinedtemplate=\"a.htm\"/>")));
    EXPECT_EQ(TemplateFileName(TemplateTag(QStringLiteral("Spring\\index.html"))),
              QStringLiteral("Spring\\index.html"));
    EXPECT_EQ(TemplateFileName(QStringLiteral("<PredefinedTemplate=\"\"/>")), QString());
    EXPECT_EQ(TemplateFileName(QStringLiteral("<PredefinedTemplate=/>")), QString());
    // The name ends at the tag's first ">", even without its closing quote.
    EXPECT_EQ(TemplateFileName(QStringLiteral("<PredefinedTemplate=\"x/> \"y\"")),
              QStringLiteral("x/"));

    EXPECT_EQ(OldTemplateFileName(kRecallReminder, QStringLiteral("Template 7")),
              QStringLiteral("RCR7.TPL"));
    EXPECT_EQ(OldTemplateFileName(kBirthdayReminder, QStringLiteral("template A")),
              QStringLiteral("BDRA.TPL"));
    EXPECT_EQ(OldTemplateFileName(kAppointmentReminder, QStringLiteral("TEMPLATE 2")),
              QStringLiteral("APR2.TPL"));
    EXPECT_EQ(OldTemplateFileName(kNewsLetter, QStringLiteral("TEMPLATE 2")), QString());
    EXPECT_EQ(OldTemplateFileName(kRecallReminder, QStringLiteral("TEMPLATES 2")), QString());
    EXPECT_EQ(OldTemplateFileName(kRecallReminder, QStringLiteral("My TEMPLATE 2")), QString());
}

TEST(TemplateFiles, FoldersNamingAMissingFileOrNoTitleAreLeftOut) {
    QTemporaryDir data;
    const QString root = data.path() + QStringLiteral("/");
    const QString folder = TemplateTypeFolder(root, kAppointmentReminder);
    EXPECT_TRUE(folder.endsWith(QStringLiteral("STP/Templates/AppointmentReminder/")));
    WriteFile(folder + QStringLiteral("Spring/Parameters.ini"),
              "; made by hand\r\n[Other]\r\nFile=wrong.html\r\n"
              "[orvo email template]\r\nTitle = \"Spring, Pe\xc3\xb1"
              "a\"\r\nFile=html\\Spring.HTML\r\n");
    WriteFile(folder + QStringLiteral("Spring/html/Spring.HTML"), "<html></html>");
    WriteFile(folder + QStringLiteral("Gone/Parameters.ini"),
              "[ORVO EMAIL TEMPLATE]\nFile=gone.html\nTitle=Gone\n");
    WriteFile(folder + QStringLiteral("Untitled/Parameters.ini"),
              "[ORVO EMAIL TEMPLATE]\nFile=u.html\n");
    WriteFile(folder + QStringLiteral("Untitled/u.html"), "<html></html>");
    WriteFile(folder + QStringLiteral("loose.html"), "<html></html>");

    const QList<TemplateEntry> templates = ListTemplates(root, kAppointmentReminder);
    ASSERT_EQ(templates.size(), 1);
    EXPECT_EQ(templates[0].title, QString::fromUtf8("Spring, Pe\xc3\xb1"
                                                    "a"));
    EXPECT_TRUE(templates[0].file.endsWith(QStringLiteral("Spring/html/Spring.HTML")));
    EXPECT_EQ(FindTemplate(templates, QStringLiteral("SPRING\\HTML\\spring.html")), 0);
    EXPECT_EQ(FindTemplate(templates, QStringLiteral("Autumn.html")), -1);
    EXPECT_EQ(FindTemplate(templates, QString()), -1);
    EXPECT_TRUE(ListTemplates(root, kRecallReminder).isEmpty());
    EXPECT_TRUE(ListTemplates(root, 9).isEmpty());
}

TEST(TemplateFiles, OldNamesAreReplacedInFilesOnly) {
    QTemporaryDir data;
    const QString path = data.path() + QStringLiteral("/t.html");
    WriteFile(path,
              "<p>{Recall Patient First Name} {Appointment Provider Business Address,city,state,"
              "zip} {Appointment Provider Business Address} {Birthday Patient Patient Title} "
              "{Recall Patient First Name} M\xc3\xbcller <img src=\"{ImagePath}logo.png\"></p>"
              "<!--{SIZE} Width=\"420\" Height=\"0\"-->");
    const QString text = ReadTemplateText(path);
    EXPECT_EQ(text, QString::fromUtf8("<p>{Patient First Name} {Office City, State Zip} {Office "
                                      "Address for Map} {Patient Title} {Patient First Name} "
                                      "M\xc3\xbcller <img src=\"{ImagePath}logo.png\"></p>"
                                      "<!--{SIZE} Width=\"420\" Height=\"0\"-->"));
    EXPECT_EQ(TemplateSizeHint(text), QSize(420, -1));
    EXPECT_EQ(TemplateSizeHint(QStringLiteral("<!--{SIZE} Width=\"300\" Height=\"500\" -->")),
              QSize(300, 500));
    EXPECT_EQ(TemplateSizeHint(QStringLiteral("<!-- Width=\"300\" -->")), QSize(-1, -1));
    EXPECT_EQ(ReadTemplateText(data.path() + QStringLiteral("/missing.html")), QString());
    // A station on a Windows code page wrote this one.
    WriteFile(path,
              "Pe\xf1"
              "a");
    EXPECT_EQ(ReadTemplateText(path), QString::fromUtf8("Pe\xc3\xb1"
                                                        "a"));

    EXPECT_EQ(ResolveImagesForPreview(QStringLiteral("<img src=\"{ImagePath}img\\a.png\"> a\\b "
                                                     "{ImagePath}b.png"),
                                      QStringLiteral("/d/STP/Templates/X")),
              QStringLiteral("<img src=\"/d/STP/Templates/X/img/a.png\"> a\\b "
                             "/d/STP/Templates/X/b.png"));
    EXPECT_EQ(ResolveImagesForSending(QStringLiteral("<img src=\"{ImagePath}a.png\">"),
                                      QStringLiteral("AppointmentReminder\\Spring")),
              QStringLiteral("<img src=\"Templates/AppointmentReminder/Spring/a.png\">"));
}

TEST(DefaultMessages, WordsAsWrittenInBothLanguages) {
    EXPECT_EQ(GetDefaultMessage(kRecallReminder, kTextMessage, false, kSpanish),
              QStringLiteral("{Patient Full Name}, it's time for {Recall Title} with {Provider "
                             "Title} {Provider Last Name}. Please call our office at {Office "
                             "Phone} to schedule your appointment."));
    EXPECT_EQ(GetDefaultMessage(kAppointmentReminder, kVoiceReminder, false, kSpanish),
              QStringLiteral("{Patient Full Name} tiene una cita con el {Provider Title} "
                             "{Provider Last Name} el {Appointment Date} a las {Appointment "
                             "Time}. "));
    EXPECT_EQ(GetDefaultMessage(kBirthdayReminder, kVoiceReminder, false, kSpanish),
              QStringLiteral("Estimado {Patient First Name},\r\n\r\nEn nombre de todos en la "
                             "officina queremos deciarle un Feliz Cumpleanos!!! Y Que tenga un "
                             "maravilloso dia.\r\n\r\nDr. {Provider Full Name} y personal"));
    EXPECT_TRUE(GetDefaultMessage(kRecallReminder, kEMail, false, kEnglish)
                    .contains(QStringLiteral(" to schedule your appointment. </span></p>")));
    EXPECT_TRUE(GetDefaultMessage(kAppointmentConfirmation, kEMail, false, kEnglish)
                    .contains(QStringLiteral("{Appointment Time}. </span></p>")));
    EXPECT_TRUE(GetDefaultMessage(kBirthdayReminder, kEMail, false, kEnglish)
                    .contains(QStringLiteral(">Dr. {Provider Full Name} and staff "
                                             "&nbsp;&nbsp;</span></p></body>")));
    EXPECT_EQ(GetDefaultMessage(kRecallReminder, kLetter, false, kEnglish), QString());
    EXPECT_EQ(GetDefaultMessage(kBirthdayReminder, kLetter, false, kEnglish),
              QStringLiteral("Birthday.rtf"));
    EXPECT_EQ(GetDefaultMessage(kNewsLetter, kEMail, false, kEnglish),
              QStringLiteral("NewsLetter.RTF"));
    EXPECT_EQ(GetDefaultMessage(kNewsLetter, kTextMessage, false, kEnglish), QString());

    // Confirm-only is the dial line of a voice confirmation, and nothing anywhere else.
    EXPECT_EQ(GetDefaultMessage(kAppointmentConfirmation, kVoiceReminder, true, kEnglish),
              QStringLiteral("Please dial 1 to confirm."));
    EXPECT_EQ(GetDefaultMessage(kAppointmentConfirmation, kVoiceReminder, true, kSpanish),
              QStringLiteral("Marque el numero 1 para confirmar."));
    EXPECT_EQ(GetDefaultMessage(kAppointmentReminder, kVoiceReminder, true, kEnglish), QString());
    EXPECT_EQ(GetDefaultMessage(kAppointmentConfirmation, kTextMessage, true, kEnglish), QString());
}

TEST(DefaultMessages, ConfirmationByChannelAndStage) {
    const QString address = QStringLiteral("https://c.example/c.aspx?a=");
    EXPECT_EQ(GetConfirmText(0, 5, kVoiceReminder, kSpanish, address),
              QStringLiteral("Marque el numero 1 para confirmar."));
    EXPECT_EQ(GetConfirmText(0, 0, kTextMessage, kEnglish, address), QString());
    EXPECT_EQ(GetConfirmText(2, 3, kTextMessage, kEnglish, address), QString());
    EXPECT_EQ(GetConfirmText(2, 2, kTextMessage, kEnglish, address),
              QStringLiteral("Click to confirm\r\nhttps://c.example/c.aspx?a={Appointment ID}"));
    const QString link = GetConfirmText(2, 1, kEMail, kEnglish, address);
    EXPECT_EQ(link, QStringLiteral("Please call us at {Office Phone} or <a "
                                   "href=\"https://c.example/c.aspx?a={Appointment ID}\" "
                                   "style=\"color: blue\">Click Here</a> to confirm your "
                                   "appointment."));
    EXPECT_EQ(AddConfirmation(QStringLiteral("<html><body><p>x</p></BODY></html>"), link, kEMail),
              QStringLiteral("<html><body><p>x</p>") + link + QStringLiteral("<br></BODY></html>"));
    EXPECT_EQ(AddConfirmation(QStringLiteral("Hi"), QStringLiteral("Dial"), kVoiceReminder),
              QStringLiteral("Hi\r\nDial"));
    EXPECT_EQ(AddConfirmation(QStringLiteral("Card"), link, kPostCard), QStringLiteral("Card"));
}

// The body that applies, read from the reminder tables.
class ReminderMessagesTest : public ReminderDatabaseTest {
protected:
    // A stage of an appointment schedule with its message row.
    void AddStage(int type, int sequence, const MessageBodies& bodies, bool autoReturn = true) {
        ReminderStore store(gic());
        const int master = store.GetReminderMaster(type);
        const int stage = static_cast<int>(connection().InsertWithIdentity(
            QStringLiteral("insert into emsTable (emsLinTyp, emsLinID, emsSeq, emsPer, emsPerTyp, "
                           "emsPID) values (%1, %2, %3, 1, 'D', 0)")
                .arg(gic().GetReminderLinkType(type, false))
                .arg(master)
                .arg(sequence)));
        ASSERT_GT(store.ReminderMessageAdd(autoReturn, false, master, stage, bodies), 0);
    }
};

TEST_P(ReminderMessagesTest, StagesFallBackToEarlierOnesThenToTheDefaults) {
    ReminderMessages messages(gic());
    const QString english = GetDefaultMessage(kAppointmentReminder, kVoiceReminder, false, 1);
    const QString spanish = GetDefaultMessage(kAppointmentReminder, kVoiceReminder, false, 2);
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kVoiceReminder, 0, 2, false, 2),
              spanish);

    AddStage(kAppointmentReminder, 1,
             {QStringLiteral("Text one {Recall Patient First Name}"), QString(), QString(),
              QString(), QStringLiteral("Voice one"), QString()});
    AddStage(kAppointmentReminder, 3,
             {QString(), QString(), QString(), QString(), QString(), QStringLiteral("Voz tres")});
    // Stage 2 has no row: stage 1's body. A body in the table keeps its old names.
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kTextMessage, 0, 2, false, 1),
              QStringLiteral("Text one {Recall Patient First Name}"));
    // Stage 3's text is stored blank: back through 2 to 1.
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kTextMessage, 0, 3, false, 1),
              QStringLiteral("Text one {Recall Patient First Name}"));
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kVoiceReminder, 0, 3, false, 2),
              QStringLiteral("Voz tres"));
    // A Spanish body empty at stage 1 gets the Spanish default, not the English one.
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kVoiceReminder, 0, 1, false, 2),
              spanish);
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kVoiceReminder, 0, 1, false, 1),
              QStringLiteral("Voice one"));
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentReminder, kEMail, 0, 0, false, 1), QString());
    EXPECT_NE(english, spanish);
}

TEST_P(ReminderMessagesTest, AutoConfirmationFollowsTheLastStageAndTheRowsFlag) {
    gic().WriteSetting(ReminderMessages::kSettingsSection, ReminderMessages::kConfirmationSiteKey,
                       0, QStringLiteral("https://confirm.example/"));
    ReminderMessages messages(gic());
    AddStage(kAppointmentConfirmation, 1,
             {QStringLiteral("One"), QString(), QString(), QString(), QString(), QString()});
    AddStage(kAppointmentConfirmation, 2,
             {QStringLiteral("Two"), QString(), QString(), QString(), QString(), QString()}, false);
    AddStage(kAppointmentConfirmation, kStopTrackingSequence,
             {QStringLiteral("Stop"), QString(), QString(), QString(), QString(), QString()});
    EXPECT_EQ(messages.LastStage(kAppointmentConfirmation), 2);
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentConfirmation, kTextMessage, 0, 1, true, 1),
              QStringLiteral("One\r\nClick to confirm\r\nhttps://confirm.example/c.aspx?a="
                             "{Appointment ID}"));
    // The second stage's row says no return message.
    EXPECT_EQ(messages.GetReminderMessage(kAppointmentConfirmation, kTextMessage, 0, 2, true, 1),
              QStringLiteral("Two"));
    // The e-mail default of the first stage gets the link before the end of its body.
    const QString page =
        messages.GetReminderMessage(kAppointmentConfirmation, kEMail, 0, 1, true, 1);
    EXPECT_TRUE(page.contains(QStringLiteral("to confirm your appointment.<br></body>")))
        << page.toStdString();
}

TEST_P(ReminderMessagesTest, RecallAndBirthdayBodies) {
    ReminderStore store(gic());
    ReminderMessages messages(gic());
    const int recall = AddRecall(QStringLiteral("Prophy"));
    const int master = store.GetReminderMaster(kRecallReminder);
    int stage = 0;
    ASSERT_TRUE(store.ReminderStageSave(0, recall, 3, 30, QStringLiteral("D"), 0, stage));
    ASSERT_GT(store.ReminderMessageAdd(false, false, master, stage,
                                       {QStringLiteral("Text"), QString(), QStringLiteral("Card"),
                                        QString(), QString(), QString()}),
              0);
    const int entry = static_cast<int>(connection().InsertWithIdentity(
        QStringLiteral("Insert into RecTable (rRCRecNum, rPID, rConMet, rStage) values "
                       "(%1, 12, 8, 3)")
            .arg(recall)));
    // The entry's own method and stage choose the body.
    EXPECT_EQ(messages.GetReminderMessage(kRecallReminder, kTextMessage, entry, 0, false, 1),
              QStringLiteral("Card"));

    EXPECT_EQ(messages.GetReminderMessage(kBirthdayReminder, kTextMessage, 0, 0, false, 1),
              GetDefaultMessage(kBirthdayReminder, kTextMessage, false, 1));
}

INSTANTIATE_TEST_SUITE_P(Engines, ReminderMessagesTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::reminders::test
