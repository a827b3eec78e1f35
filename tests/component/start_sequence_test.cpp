#include "component/start_sequence.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTimer>
#include <functional>
#include <stdexcept>
#include <vector>

#include "component/public/component_error.h"
#include "component/session.h"
#include "platform/db/database_error.h"
#include "platform/prompts.h"
#include "tests/support/main_form_gic.h"

namespace orvo::component {
namespace {

// What happened, in order: banners, prompts, and the steps of the sequence.
std::vector<QString> journal;

class JournalPrompts : public Prompts {
public:
    struct Shown {
        QString text;
        Icon icon;
        QString title;
    };

    int Message(const QString& text, Buttons, Icon icon, const QString& title, int) override {
        journal.push_back(QStringLiteral("message"));
        messages.push_back({text, icon, title});
        return AnswerOk;
    }
    int Choose(const QString& text, const QString&, const QStringList&, int, Icon) override {
        ADD_FAILURE() << "unexpected choice: " << text.toStdString();
        return 0;
    }
    std::optional<QString> Input(const QString& prompt, const QString&, const QString&,
                                 bool) override {
        ADD_FAILURE() << "unexpected input: " << prompt.toStdString();
        return std::nullopt;
    }
    void ShowBanner(const QString& text) override {
        journal.push_back(QStringLiteral("banner ") + text);
        bannerUp = true;
    }
    void HideBanner() override {
        journal.push_back(QStringLiteral("banner down"));
        bannerUp = false;
    }
    void Beep() override {}

    std::vector<Shown> messages;
    bool bannerUp = false;
};

// A screen that notes how it was shown and closes itself once its event loop runs.
class SelfClosingScreen : public QDialog {
public:
    SelfClosingScreen() { new QPushButton(QStringLiteral("OK"), this); }
    void SetObjParent(PrintEvents* parent) { objParent = parent; }

    PrintEvents* objParent = nullptr;
    QString name;
    QWidget* ownerAtShow = nullptr;
    bool modalAtShow = false;

protected:
    void showEvent(QShowEvent* event) override {
        QDialog::showEvent(event);
        journal.push_back(QStringLiteral("shown"));
        ownerAtShow = parentWidget();
        modalAtShow = isModal();
        QTimer::singleShot(0, this, &QDialog::accept);
    }
};

// A screen whose load fails in the database.
class FailingScreen : public SelfClosingScreen {
public:
    FailingScreen() {
        throw db::DatabaseError(QStringLiteral("no such table: InsCoTable"),
                                QStringLiteral("SELECT * FROM InsCoTable WHERE InsCoInd=3"));
    }
};

class StartSequenceTest : public ::testing::Test {
protected:
    void SetUp() override {
        journal.clear();
        SetPrompts(&prompts_);
        session().gic = &gic_;
        session().MainForm = nullptr;
    }
    void TearDown() override {
        SetPrompts(nullptr);
        session().gic = nullptr;
        session().MainForm = nullptr;
    }

    static StartContext Context() {
        StartContext context;
        context.method = QStringLiteral("EditingScreen.Test_Start");
        return context;
    }

    JournalPrompts prompts_;
    test::MainFormGIC gic_;
};

TEST_F(StartSequenceTest, RunsTheStepsInOrderAndReleasesTheScreen) {
    QWidget owner;
    PrintEvents parent;
    StartContext context = Context();
    context.owner = &owner;
    context.objParent = &parent;
    QString name = QStringLiteral("Acme Dental Plan");
    int savedId = 0;
    QPointer<SelfClosingScreen> screenSeen;

    const bool done = StartScreen<SelfClosingScreen>(
        context, {},
        [&](SelfClosingScreen& screen) {
            journal.push_back(QStringLiteral("hand"));
            EXPECT_EQ(screen.objParent, &parent);
            screen.name = name;
        },
        [&](SelfClosingScreen& screen) {
            journal.push_back(QStringLiteral("read"));
            EXPECT_EQ(screen.ownerAtShow, &owner);
            EXPECT_TRUE(screen.modalAtShow);
            EXPECT_EQ(screen.name, name);
            savedId = 42;
            screenSeen = &screen;
        },
        name, savedId);

    EXPECT_TRUE(done);
    const std::vector<QString> expected = {
        QStringLiteral("banner   Loading Editing Screen - Please Wait  "), QStringLiteral("hand"),
        QStringLiteral("banner down"), QStringLiteral("shown"), QStringLiteral("read")};
    EXPECT_EQ(journal, expected);
    EXPECT_EQ(savedId, 42);
    EXPECT_TRUE(screenSeen.isNull()) << "the screen outlived its start method";
}

TEST_F(StartSequenceTest, AMethodWithoutBannerShowsNone) {
    StartContext context = Context();
    context.banner.reset();
    EXPECT_TRUE(StartScreen<SelfClosingScreen>(context, {}, {}, {}));
    EXPECT_EQ(journal, std::vector<QString>{QStringLiteral("shown")});
}

TEST_F(StartSequenceTest, TheStartFormBecomesMainWindowOnlyWhenTheHostHasNone) {
    QWidget startForm, hostWindow;
    StartContext context = Context();
    context.startForm = &startForm;

    StartScreen<SelfClosingScreen>(context, {}, {}, {});
    EXPECT_EQ(gic_.GetMainForm(), &startForm);

    session().MainForm = nullptr;
    gic_.SetMainForm(&hostWindow);
    const int calls = gic_.setMainFormCalls();
    StartScreen<SelfClosingScreen>(context, {}, {}, {});
    EXPECT_EQ(gic_.GetMainForm(), &hostWindow);
    EXPECT_EQ(gic_.setMainFormCalls(), calls);
}

// Catches what the component logs, for the length of a test.
class LogCapture {
public:
    LogCapture() {
        lines().clear();
        previous_ = qInstallMessageHandler(&LogCapture::Handle);
    }
    ~LogCapture() { qInstallMessageHandler(previous_); }
    static std::vector<QString>& lines() {
        static std::vector<QString> captured;
        return captured;
    }

private:
    static void Handle(QtMsgType, const QMessageLogContext& context, const QString& message) {
        lines().push_back(QString::fromLatin1(context.category) + u' ' + message);
    }
    QtMessageHandler previous_;
};

TEST_F(StartSequenceTest, ADatabaseErrorIsShownAndLoggedAndTheArgumentsStayAsTheyCame) {
    LogCapture log;
    QString tmp = QStringLiteral("NEW Acme");
    int id = 7;
    bool readRan = false;

    const bool done = StartScreen<SelfClosingScreen>(
        Context(), {},
        [&](SelfClosingScreen&) {
            // The arguments change on the way in, then the load fails.
            tmp = QStringLiteral("0\nAcme\n");
            id = 99;
            throw db::DatabaseError(QStringLiteral("no such table: InsCoTable"),
                                    QStringLiteral("SELECT * FROM InsCoTable WHERE InsCoInd=99"));
        },
        [&](SelfClosingScreen&) { readRan = true; }, tmp, id);

    EXPECT_FALSE(done);
    EXPECT_FALSE(readRan);
    EXPECT_EQ(tmp, QStringLiteral("NEW Acme"));
    EXPECT_EQ(id, 7);
    // The banner is down before the message, and no screen was shown.
    const std::vector<QString> expected = {
        QStringLiteral("banner   Loading Editing Screen - Please Wait  "),
        QStringLiteral("banner down"), QStringLiteral("message")};
    EXPECT_EQ(journal, expected);
    ASSERT_EQ(prompts_.messages.size(), 1u);
    EXPECT_EQ(prompts_.messages[0].icon, Icon::Critical);
    EXPECT_TRUE(prompts_.messages[0].text.contains(QStringLiteral("no such table: InsCoTable")));
    EXPECT_TRUE(prompts_.messages[0].text.contains(
        QStringLiteral("SELECT * FROM InsCoTable WHERE InsCoInd=99")));
    // The error, and which call it ended.
    ASSERT_EQ(log.lines().size(), 2u);
    EXPECT_TRUE(log.lines()[0].contains(QStringLiteral("no such table: InsCoTable")));
    EXPECT_TRUE(log.lines()[1].startsWith(QStringLiteral("orvo.component ")));
    EXPECT_TRUE(log.lines()[1].contains(QStringLiteral("EditingScreen.Test_Start")));
}

TEST_F(StartSequenceTest, AScreenThatFailsToLoadIsAFailedCall) {
    int id = 5;
    EXPECT_FALSE(StartScreen<FailingScreen>(
        Context(), {}, {}, [&](FailingScreen&) { id = 1; }, id));
    EXPECT_EQ(id, 5);
    EXPECT_FALSE(prompts_.bannerUp);
    ASSERT_EQ(prompts_.messages.size(), 1u);
    EXPECT_EQ(prompts_.messages[0].icon, Icon::Critical);
}

// Whatever the error, it stops at the start method: the host's event loop never sees it.
TEST_F(StartSequenceTest, AnyOtherErrorIsShownTooWithTheArgumentsPutBack) {
    QString tmp = QStringLiteral("1234");
    for (const auto& fail : std::vector<std::function<void()>>{
             [] { throw std::logic_error("not a database error"); },
             [] { throw NotImplemented(QStringLiteral("Host operation GetFamilyID")); },
             [] { throw db::RowNotFoundError(QStringLiteral("SELECT InsCoInd FROM InsCoTable")); },
             [] { throw 42; }}) {
        prompts_.messages.clear();
        bool done = true;
        EXPECT_NO_THROW(done = StartScreen<SelfClosingScreen>(
                            Context(), {},
                            [&](SelfClosingScreen&) {
                                tmp = QStringLiteral("changed");
                                fail();
                            },
                            {}, tmp));
        EXPECT_FALSE(done);
        EXPECT_EQ(tmp, QStringLiteral("1234"));
        EXPECT_FALSE(prompts_.bannerUp);
        ASSERT_EQ(prompts_.messages.size(), 1u);
        EXPECT_EQ(prompts_.messages[0].icon, Icon::Critical);
        EXPECT_FALSE(prompts_.messages[0].text.isEmpty());
        // A row that is gone is told in words a person can act on, without the statement.
        EXPECT_FALSE(prompts_.messages[0].text.contains(QStringLiteral("SELECT")));
    }
}

TEST_F(StartSequenceTest, AnOwnerThatGoesDuringTheShowTakesTheScreenWithIt) {
    auto* owner = new QWidget;
    StartContext context = Context();
    context.owner = owner;
    int id = 3;

    const bool done = StartScreen<SelfClosingScreen>(
        context, {},
        [owner](SelfClosingScreen&) { QTimer::singleShot(0, [owner] { delete owner; }); },
        [&](SelfClosingScreen&) { id = 1; }, id);

    EXPECT_FALSE(done);
    EXPECT_EQ(id, 3);
}

}  // namespace
}  // namespace orvo::component
