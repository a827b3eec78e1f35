// The demo office's eReminders, read back through the component's engines.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>

#include "host/reminder_demo_data.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminder_messages.h"
#include "reminders/reminder_store.h"
#include "reminders/template_files.h"
#include "tests/reminders/reminder_test_fixture.h"

namespace orvo::reminders::test {
namespace {

class ReminderDemoTest : public ReminderDatabaseTest {};

TEST_P(ReminderDemoTest, SchedulesSequencesAndOneTemplatePerType) {
    host::SeedDemoReminders(connection(), session_.dataPath, session_.officeLocationId);
    host::SeedDemoReminders(connection(), session_.dataPath,
                            session_.officeLocationId);  // once only
    EXPECT_EQ(Count(QStringLiteral("select count(*) from emmTable")), 5);

    ReminderStore store(gic());
    const int prophy = static_cast<int>(
        Count(QStringLiteral("select RCRecNum from RSTable where RCTtl='PROPHY AND EXAM'")));
    EXPECT_EQ(store.ReminderContactSequenceLoad(kRecallReminder, 0, prophy, 0),
              (QList<int>{1, 2, 8}));
    EXPECT_EQ(store.ReminderContactSequenceLoad(kAppointmentConfirmation, 0, 0, 0),
              (QList<int>{1, 2, 32}));

    ReminderMessages messages(gic());
    EXPECT_EQ(messages.LastStage(kAppointmentConfirmation), 2);
    EXPECT_TRUE(IsTemplateReference(
        messages.GetReminderMessage(kAppointmentReminder, kEMail, 0, 1, false, kEnglish)));

    for (int type = kRecallReminder; type <= kNewsLetter; ++type) {
        const QList<TemplateEntry> templates = ListTemplates(session_.dataPath, type);
        ASSERT_EQ(templates.size(), 1) << type;
        const QImage banner(templates[0].folder + QStringLiteral("images/banner.png"));
        EXPECT_EQ(banner.size(), QSize(480, 96));
        EXPECT_EQ(TemplateSizeHint(ReadTemplateText(templates[0].file)), QSize(480, 420));
    }
    // The demo's tag finds its template.
    EXPECT_EQ(FindTemplate(ListTemplates(session_.dataPath, kAppointmentReminder),
                           QStringLiteral("Garden\\index.html")),
              0);
}

INSTANTIATE_TEST_SUITE_P(Engines, ReminderDemoTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::reminders::test
