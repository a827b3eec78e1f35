// A box closed without a choice answers the same in the real dialogs as in the scripted ones
// that every test and scenario runs with, and the user-action boundary stops every error.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTimer>
#include <cerrno>

#include "platform/db/database_error.h"
#include "platform/file_error.h"
#include "platform/prompts.h"
#include "platform/scripted_prompts.h"
#include "platform/user_action.h"

namespace orvo {
namespace {

// Closes the next message box as a person does without choosing: with Escape, or with the
// window's close.
void CloseNextBox(bool escape) {
    QTimer::singleShot(0, [escape] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        if (escape) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QApplication::sendEvent(box, &key);
        } else {
            box->close();
        }
    });
}

TEST(PromptsTest, ABoxClosedWithoutAChoiceAnswersAlikeInTheDialogsAndTheScript) {
    ScriptedPrompts script([](const QString&) {});
    for (const Buttons buttons :
         {Buttons::Ok, Buttons::OkCancel, Buttons::YesNo, Buttons::YesNoCancel,
          Buttons::RetryCancel, Buttons::AbortRetryIgnore}) {
        for (const bool escape : {true, false}) {
            SetPrompts(nullptr);
            CloseNextBox(escape);
            const int real = prompts().Message("Text", buttons, Icon::Warning, "Title", 1);
            EXPECT_EQ(real, ClosedAnswer(buttons)) << int(buttons) << " escape " << escape;
            // Unexpected, the scripted box answers as one closed.
            EXPECT_EQ(script.Message("Text", buttons, Icon::Warning, "Title", 1), real);
        }
    }
    SetPrompts(nullptr);
    // Closing is the choice that does least: never Ignore, which goes on past the trouble.
    EXPECT_EQ(ClosedAnswer(Buttons::AbortRetryIgnore), AnswerAbort);
    EXPECT_EQ(ClosedAnswer(Buttons::YesNo), AnswerNo);
    EXPECT_EQ(ClosedAnswer(Buttons::YesNoCancel), AnswerCancel);
}

TEST(UserActionTest, EveryErrorIsShownUnderTheTitleAndGoesNoFurther) {
    std::vector<QString> failures;
    ScriptedPrompts script([&failures](const QString& message) { failures.push_back(message); });
    PromptsScope scope(script);
    const std::vector<std::function<void()>> actions{
        [] { throw db::DatabaseError("no such table: PhaTable", "SELECT * FROM PhaTable"); },
        [] { throw db::RowNotFoundError("UPDATE PhaTable SET PhaNam='X' WHERE PhaID=3"); },
        [] { throw std::logic_error("Host operation GetFamilyID is not implemented yet"); },
        [] { throw FileError("Cannot open the lock file", "/srv/practice/TEMP/63.INS", EACCES); },
        [] { throw 7; }};
    for (const auto& action : actions) {
        bool ran = true;
        EXPECT_NO_THROW(ran = RunUserAction("Pharmacy Information", action));
        EXPECT_FALSE(ran);
    }
    ASSERT_EQ(script.shown().size(), actions.size());
    for (const auto& shown : script.shown()) {
        EXPECT_EQ(shown.title, "Pharmacy Information");
        EXPECT_EQ(shown.icon, Icon::Critical);
    }
    EXPECT_TRUE(script.shown()[0].text.contains("SELECT * FROM PhaTable"));
    // A row gone is told in words; its statement goes to the log only.
    EXPECT_FALSE(script.shown()[1].text.contains("UPDATE"));
    EXPECT_TRUE(script.shown()[2].text.contains("GetFamilyID"));
    EXPECT_EQ(script.shown()[3].text,
              "Cannot open the lock file /srv/practice/TEMP/63.INS: Permission denied");
    EXPECT_FALSE(script.shown()[4].text.isEmpty());
    EXPECT_TRUE(RunUserAction("Pharmacy Information", [] {}));
}

}  // namespace
}  // namespace orvo
