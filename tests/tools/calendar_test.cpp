#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolButton>

#include "tests/support/qt_print.h"
#include "tests/support/scripted_prompts.h"
#include "tools/calendar.h"

namespace orvo::tools {
namespace {

const QDate kToday(2026, 11, 22);

TEST(CalendarCommandTest, TagWords) {
    const CalendarCommand jd = CalendarCommand::Parse(QStringLiteral("DEF_CALC_JD"));
    EXPECT_EQ(jd.calculator, CalendarCommand::Calculator::First);
    EXPECT_TRUE(jd.callerValue);
    EXPECT_TRUE(jd.digitsAdd);
    EXPECT_TRUE(jd.callerTitle);

    // The number pad's word ends like the calculator's.
    EXPECT_EQ(CalendarCommand::Parse(QStringLiteral("NOCALCULATOR")).calculator,
              CalendarCommand::Calculator::NumberPad);
    EXPECT_EQ(CalendarCommand::Parse(QStringLiteral("SMALL_CALCULATOR")).calculator,
              CalendarCommand::Calculator::First);
    EXPECT_EQ(CalendarCommand::Parse(QStringLiteral("NONE")).calculator,
              CalendarCommand::Calculator::None);
    // Words are read where the form reads them: "NONE" only alone, "SMALL" only in front.
    EXPECT_EQ(CalendarCommand::Parse(QStringLiteral("NONE_TXDATE")).calculator,
              CalendarCommand::Calculator::Offered);
    EXPECT_FALSE(CalendarCommand::Parse(QStringLiteral("TXDATE_SMALL")).small);
    const CalendarCommand several =
        CalendarCommand::Parse(QStringLiteral("SMALL TXDATE ACTIVATE DEL"));
    EXPECT_TRUE(several.small);
    EXPECT_TRUE(several.transactionDate);
    EXPECT_TRUE(several.offerDelete);
    EXPECT_FALSE(several.extensionShown());
    EXPECT_FALSE(CalendarCommand::Parse(QStringLiteral("ACTIVATEDEL")).offerDelete);
    EXPECT_TRUE(CalendarCommand::Parse(QStringLiteral("SMALL EXTEND")).extensionShown());

    EXPECT_EQ(jd.Title(true), "Calculator");
    EXPECT_EQ(CalendarCommand::Parse(QStringLiteral("NOCALCULATOR")).Title(true), "Numeric Pad");
    EXPECT_EQ(jd.Title(false), "Calendar");
}

TEST(CalendarCommandTest, DistanceCaption) {
    EXPECT_EQ(DistanceCaption(kToday, kToday), "today");
    EXPECT_EQ(DistanceCaption(kToday.addDays(1), kToday), "1 day from today");
    EXPECT_EQ(DistanceCaption(kToday.addDays(-1), kToday), "1 day ago");
    EXPECT_EQ(DistanceCaption(kToday.addDays(40), kToday), "40 days from today");
    EXPECT_EQ(DistanceCaption(QDate(2025, 11, 22), kToday), "365 days ago");
    EXPECT_EQ(DistanceCaption(QDate(), kToday), "");
}

TEST(CalendarCommandTest, MonthsAndYears) {
    EXPECT_EQ(MonthsAhead(QDate(2026, 1, 15), 6), QDate(2026, 7, 16));
    // By calendar months: the 31st of August plus six months is the last of February.
    EXPECT_EQ(MonthsAhead(QDate(2026, 8, 31), 6), QDate(2027, 3, 1));
    EXPECT_EQ(MonthsAhead(QDate(2026, 11, 30), 3), QDate(2027, 3, 1));

    EXPECT_EQ(MoveToYear(QDate(2026, 5, 17), QStringLiteral("1984")), QDate(1984, 5, 17));
    EXPECT_EQ(MoveToYear(QDate(2024, 2, 29), QStringLiteral("2025")), QDate(2025, 2, 28));
    for (const char* bad : {"84", "19845", "abcd", "", "0000", "-984"})
        EXPECT_FALSE(MoveToYear(kToday, QString::fromLatin1(bad))) << bad;

    EXPECT_EQ(CallerDate(QStringLiteral("today"), kToday), kToday);
    EXPECT_EQ(CallerDate(QStringLiteral("03-04-1970"), kToday), QDate(1970, 3, 4));
    EXPECT_EQ(CallerDate(QStringLiteral("3/4/1970"), kToday), QDate(1970, 3, 4));
    EXPECT_FALSE(CallerDate(QStringLiteral("02-30-2026"), kToday));
    EXPECT_FALSE(CallerDate(QStringLiteral("soon"), kToday));
}

// The form, shown without a modal loop and driven through its buttons and keys.
class CalendarFormTest : public ::testing::Test {
protected:
    void Open(const QString& tag, const QString& value = QString(),
              const QString& title = QString()) {
        form = std::make_unique<Calendar>(kToday);
        form->SetTag(tag);
        form->SetCallerValue(value);
        form->SetCallerTitle(title);
        form->SetDeleteWord(QStringLiteral("CLEARED"));
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    }
    template <typename W = QPushButton>
    W* Child(const char* name) {
        W* widget = form->findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    void Click(const char* name) {
        QTest::mouseClick(Child<QAbstractButton>(name), Qt::LeftButton);
    }
    QString Readout() { return Child<QLabel>("lblReadout")->text(); }
    QString Distance() { return Child<QLabel>("ExtensionLabel")->text(); }

    test::ScriptedPrompts prompts;
    test::PromptsScope scope{prompts};
    std::unique_ptr<Calendar> form;
};

TEST_F(CalendarFormTest, CalendarFaceReturnsTheSelectedDay) {
    Open(QString(), QStringLiteral("03-04-1970"));
    EXPECT_FALSE(form->calculatorShown());
    EXPECT_EQ(form->windowTitle(), "Calendar");
    EXPECT_EQ(form->selectedDate(), QDate(1970, 3, 4));
    EXPECT_EQ(Child<QToolButton>("cmdMonth")->text(), "March");
    EXPECT_EQ(Child<QToolButton>("cmdMonth")->toolTip(), "Left click to change Month");
    EXPECT_EQ(Child<QToolButton>("cmdYear")->toolTip(), "Left click to change Year");
    EXPECT_FALSE(Child("cmdDel")->isVisible());

    Click("cmdToday");
    EXPECT_EQ(Distance(), "today");
    QTest::keyClick(Child<QCalendarWidget>("calMonth")->findChild<QAbstractItemView*>(),
                    Qt::Key_Left);
    EXPECT_EQ(Distance(), "1 day ago");
    Click("cmdOK");
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(form->Tag(), "11-21-2026");
}

TEST_F(CalendarFormTest, MonthsAheadStartFromTheFieldsDate) {
    Open(QString(), QStringLiteral("01-15-2026"));
    Click("cmd6Months");
    EXPECT_EQ(form->selectedDate(), QDate(2026, 7, 16));
    Click("cmd3Months");
    EXPECT_EQ(form->selectedDate(), QDate(2026, 4, 16));
    // A field with no date moves from today.
    Open(QString());
    Click("cmd3Months");
    EXPECT_EQ(form->selectedDate(), QDate(2027, 2, 23));
    EXPECT_EQ(Distance(), "93 days from today");
}

TEST_F(CalendarFormTest, YearTypedMovesTheSelection) {
    Open(QString(), QStringLiteral("05-17-2026"));
    Click("cmdYear");
    auto* year = Child<QLineEdit>("txtYear");
    ASSERT_TRUE(year->isVisible());
    QTest::keyClicks(year, QStringLiteral("19"));
    QTest::keyClick(year, Qt::Key_Return);
    // Two digits are not a year: the entry stays open.
    EXPECT_TRUE(year->isVisible());
    year->setText(QStringLiteral("1999"));
    QTest::keyClick(year, Qt::Key_Return);
    EXPECT_FALSE(year->isVisible());
    EXPECT_EQ(form->selectedDate(), QDate(1999, 5, 17));
    EXPECT_EQ(Child<QToolButton>("cmdYear")->text(), "1999");
    // The entry changes nothing else on the form.
    const QFont readout = Child<QLabel>("lblReadout")->font();
    Click("cmdYear");
    QTest::keyClick(year, Qt::Key_Escape);
    EXPECT_EQ(Child<QLabel>("lblReadout")->font(), readout);
    EXPECT_EQ(form->selectedDate(), QDate(1999, 5, 17));
    EXPECT_GE(prompts.beeps(), 1);
}

// The window losing its turn as the active one, or a pop-up coming up, is not the person
// leaving the entry: it stays open with what was typed. Leaving it for the month keeps the year.
TEST_F(CalendarFormTest, YearEntryStaysOpenWhileTheWindowIsNotActive) {
    Open(QString(), QStringLiteral("05-17-2026"));
    Click("cmdYear");
    auto* year = Child<QLineEdit>("txtYear");
    for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        QFocusEvent away(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(year, &away);
        EXPECT_TRUE(year->isVisible()) << reason;
    }
    year->setText(QStringLiteral("1990"));
    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(year, &left);
    EXPECT_FALSE(year->isVisible());
    EXPECT_EQ(form->selectedDate(), QDate(1990, 5, 17));
}

TEST_F(CalendarFormTest, CancelAndDeleteWords) {
    Open(QStringLiteral("ACTIVATE DEL"), QStringLiteral("03-04-1970"));
    ASSERT_TRUE(Child("cmdDel")->isVisible());
    Click("cmdDel");
    EXPECT_EQ(form->Tag(), "CLEARED");
    Open(QString(), QStringLiteral("03-04-1970"));
    Click("cmdCancel");
    EXPECT_EQ(form->result(), QDialog::Rejected);
    EXPECT_EQ(form->Tag(), "");
    Open(QString());
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_EQ(form->Tag(), "");
}

TEST_F(CalendarFormTest, CalculatorAddsToTheCallersValue) {
    Open(QStringLiteral("DEF_CALC_JD"), QStringLiteral("12"), QStringLiteral("Fee"));
    EXPECT_TRUE(form->calculatorShown());
    EXPECT_EQ(form->windowTitle(), "Fee");
    EXPECT_EQ(Readout(), "12.");
    QTest::keyClicks(form.get(), QStringLiteral("5+.5"));
    EXPECT_EQ(Readout(), "0.5");
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_EQ(Readout(), "125.5");
    EXPECT_TRUE(form->isVisible());
    Click("cmdOK");
    EXPECT_EQ(form->Tag(), "125.5");
}

TEST_F(CalendarFormTest, DivisionByZeroIsRefusedWithItsMessage) {
    Open(QStringLiteral("CALCULATOR"));
    EXPECT_EQ(form->windowTitle(), "Calculator");
    prompts.Expect(QStringLiteral("Calculator"), QStringLiteral("Can't divide by zero."), AnswerOk);
    for (const char* key : {"cmdKey_1", "cmdKey_0", "cmdKeyDivide", "cmdKey_0", "cmdKeyEquals"})
        Click(key);
    EXPECT_EQ(Readout(), "10.");
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_EQ(Readout(), "0.");
    EXPECT_TRUE(form->isVisible());
}

TEST_F(CalendarFormTest, FacesAndPanels) {
    Open(QStringLiteral("NOCALCULATOR"));
    EXPECT_EQ(form->windowTitle(), "Numeric Pad");
    EXPECT_FALSE(Child("cmdKeyPlus")->isVisible());
    EXPECT_FALSE(Child("Calendar_CMD")->isVisible());
    QTest::keyClicks(form.get(), QStringLiteral("4+2"));
    EXPECT_EQ(Readout(), "42.");

    Open(QStringLiteral("NONE"));
    EXPECT_FALSE(Child("Calendar_CMD")->isVisible());
    EXPECT_TRUE(Child<QWidget>("ExtensionPanel")->isVisible());

    Open(QStringLiteral("SMALL TXDATE"));
    EXPECT_FALSE(Child<QWidget>("ExtensionPanel")->isVisible());
    EXPECT_TRUE(Child<QWidget>("TX_Date_Panel")->isVisible());
    Click("Calendar_CMD");
    EXPECT_TRUE(form->calculatorShown());
    EXPECT_EQ(form->windowTitle(), "Calculator");
    Click("Calendar_CMD");
    EXPECT_FALSE(form->calculatorShown());
}

TEST_F(CalendarFormTest, Screenshots) {
    Open(QStringLiteral("EXTEND ACTIVATE DEL"), QStringLiteral("12-24-2026"));
    EXPECT_TRUE(form->grab().save(QDir::tempPath() + QStringLiteral("/orvo_calendar_month.png")));
    Open(QStringLiteral("DEF_CALC_JD"), QStringLiteral("1250.50"), QStringLiteral("Fee"));
    EXPECT_TRUE(
        form->grab().save(QDir::tempPath() + QStringLiteral("/orvo_calendar_calculator.png")));
}

}  // namespace
}  // namespace orvo::tools
