#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include "host/host_gic.h"
#include "tests/host/host_test_fixture.h"

namespace orvo::host::test {
namespace {

// The helpers that need no database: a session without a connection.
class HostHelpersTest : public testing::Test {
protected:
    void SetUp() override { SetPrompts(&prompts_); }
    void TearDown() override { SetPrompts(nullptr); }

    HostSession session_;
    orvo::test::ScriptedPrompts prompts_;
    HostGIC gic_{session_};
};

TEST_F(HostHelpersTest, ProperCaseCapitalisesWordsTypedInOneCase) {
    const std::pair<QString, QString> cases[] = {
        {"JOHN SMITH", "John Smith"},
        {"mary-ann o'brien", "Mary-Ann O'Brien"},
        {"McDonald", "McDonald"},
        {"DE LA CRUZ, MaryLou", "De La Cruz, MaryLou"},
        {"123 MAIN ST, APT 3B", "123 Main St, Apt 3B"},
        {"3RD AVE", "3rd Ave"},
        {"TORONTO ON M5V 3L9", "Toronto On M5V 3L9"},
        {"JOHN'S PLACE", "John's Place"},
        {"  ÉCOLE  rue ", "  École  Rue "},
        {"", ""},
    };
    for (const auto& [typed, expected] : cases) {
        EXPECT_EQ(gic_.ProperCase(typed).toString(), expected) << typed.toStdString();
    }
    EXPECT_EQ(gic_.ProperCase(42), QVariant(42));
    EXPECT_FALSE(gic_.ProperCase(QVariant()).isValid());
}

TEST_F(HostHelpersTest, FormatPhoneFormatsUsNumbers) {
    const std::pair<QString, QString> cases[] = {
        {"5555551234", "(555) 555-1234"},
        {" 555.555.1234 ", "(555) 555-1234"},
        {"(555) 555-1234", "(555) 555-1234"},
        {"5551234", "555-1234"},
        {"1-555-555-1234", "(555) 555-1234"},
        {"555555123456", "(555) 555-1234 x56"},
        {"25555551234", "(255) 555-5123 x4"},
        {"555-CALL-NOW", "555-CALL-NOW"},
        {" 555-12 ", "555-12"},
        {"", ""},
    };
    for (const auto& [typed, expected] : cases) {
        EXPECT_EQ(gic_.FormatPhone(typed), expected) << typed.toStdString();
    }
}

TEST_F(HostHelpersTest, DelimitedFieldsAndNames) {
    EXPECT_EQ(gic_.GetDelimitedField("GOTO,PAT,17", ",", 1), "GOTO");
    EXPECT_EQ(gic_.GetDelimitedField("GOTO,PAT,17", ",", 3), "17");
    EXPECT_EQ(gic_.GetDelimitedField("a,,c", ",", 2), "");
    EXPECT_EQ(gic_.GetDelimitedField("a,b", ",", 3), "");
    EXPECT_EQ(gic_.GetDelimitedField("a,b", ",", 0), "");
    EXPECT_EQ(gic_.GetDelimitedField("NEW\nSmith\nJohn", "\n", 2), "Smith");

    const std::tuple<QString, QString, QString> names[] = {
        {"Smith, John", "Smith", "John"},
        {"John Smith", "Smith", "John"},
        {" Smith ,John ", "Smith", "John"},
        {"Mary Ann  Smith", "Smith", "Mary Ann"},
        {"Smith", "Smith", ""},
        {"", "", ""},
    };
    for (const auto& [text, last, first] : names) {
        QString lastName = "x", firstName = "x";
        gic_.SplitPersonName(text, lastName, firstName);
        EXPECT_EQ(lastName, last) << text.toStdString();
        EXPECT_EQ(firstName, first) << text.toStdString();
    }
    EXPECT_EQ(gic_.SqlQuoteText("O'Brien's"), "'O''Brien''s'");
}

TEST_F(HostHelpersTest, PasswordCipherRoundTrips) {
    EXPECT_EQ(gic_.ConvertPassword(""), "");
    const QString longText(70, QChar('k'));  // longer than one block of the keystream
    for (const QString& plain :
         {QString("secret"), QString("It's me"), QString("päss wörd"), longText}) {
        const QString stored = gic_.ConvertPassword(plain);
        EXPECT_NE(stored, plain);
        EXPECT_FALSE(stored.contains(plain));
        EXPECT_EQ(gic_.ConvertPassword(stored), plain);
    }
    // A fresh host arms the same default key; another key gives another stored form.
    HostGIC other(session_);
    EXPECT_EQ(other.ConvertPassword("secret"), gic_.ConvertPassword("secret"));
    other.SetPasswordKey("0123456789ABCDEF01234567");
    const QString storedUnderOther = other.ConvertPassword("secret");
    EXPECT_NE(storedUnderOther, gic_.ConvertPassword("secret"));
    EXPECT_NE(gic_.ConvertPassword(storedUnderOther), "secret");
    EXPECT_EQ(other.ConvertPassword(storedUnderOther), "secret");
}

TEST_F(HostHelpersTest, ShortDatesNormaliseAndTwoDigitYearsLieBehindToday) {
    session_.today = QDate(2026, 11, 21);
    const std::pair<QString, QString> cases[] = {
        {"3/9/1961", "03-09-1961"},
        {" 12-24-87 ", "12-24-1987"},
        {"02.29.2024", "02-29-2024"},
        {"11/21/26", "11-21-2026"},
        {"11/22/26", "11-22-1926"},
        {"04171988", "04-17-1988"},
        {"02/29/2023", ""},
        {"13/01/2000", ""},
        {"1/1", ""},
        {"", ""},
        {"Jan 5 2000", ""},
        {"1/1/123", ""},
    };
    for (const auto& [typed, expected] : cases)
        EXPECT_EQ(gic_.NormalizeDate(typed, "Short Date"), expected) << typed.toStdString();
    EXPECT_THROW(gic_.NormalizeDate("1/1/2000", "Long Date"), ComponentError);
}

TEST_F(HostHelpersTest, AgeCountsWholeMonthsUpToToday) {
    session_.today = QDate(2026, 11, 21);
    EXPECT_EQ(gic_.CalculateAge("04-17-1988"), "38 Years 7 Months");
    EXPECT_EQ(gic_.CalculateAge("11-21-2025"), "1 Year 0 Months");
    EXPECT_EQ(gic_.CalculateAge("11-22-2025"), "0 Years 11 Months");
    EXPECT_EQ(gic_.CalculateAge("10-21-2026"), "0 Years 1 Month");
    EXPECT_EQ(gic_.CalculateAge("11-21-2026"), "0 Years 0 Months");
    // Born on the 29th of February: a month is complete on the day of the month reached.
    EXPECT_EQ(gic_.CalculateAge("02-29-2024"), "2 Years 8 Months");
    EXPECT_EQ(gic_.CalculateAge("11-22-2026"), "");
    EXPECT_EQ(gic_.CalculateAge("not a date"), "");
}

TEST_F(HostHelpersTest, SsnTakesNineDigitsWithOrWithoutDashes) {
    EXPECT_EQ(gic_.FormatSsn("123456789"), "123-45-6789");
    EXPECT_EQ(gic_.FormatSsn(" 123 45 6789 "), "123-45-6789");
    EXPECT_EQ(gic_.FormatSsn("123-45-6789"), "123-45-6789");
    EXPECT_EQ(gic_.FormatSsn("12345678"), "12345678");
    EXPECT_EQ(gic_.FormatSsn("AB1234567"), "AB1234567");
    EXPECT_EQ(gic_.FormatSsn(""), "");
}

TEST_F(HostHelpersTest, DialogsGoThroughThePrompts) {
    prompts_.Expect("Title", "Go on?", AnswerYes).Expect("Title", "Really?", AnswerNo);
    EXPECT_TRUE(gic_.AskYesNo(true, "Title", "Go on?"));
    EXPECT_FALSE(gic_.AskYesNo(false, "Title", "Really?"));
    const auto& shown = prompts_.shown();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].defaultButton, 1);
    EXPECT_EQ(shown[1].defaultButton, 2);
    EXPECT_EQ(shown[1].icon, Icon::Question);
    EXPECT_EQ(shown[1].buttons, QStringList({"Yes", "No"}));

    prompts_.ExpectInput("Search Window", "Enter name below.", QString("Smith, John"))
        .ExpectInput("Search Window", "Enter name below.", std::nullopt);
    EXPECT_EQ(gic_.InputDialog("Enter name below.", "Search Window", "", 0), "Smith, John");
    EXPECT_FALSE(gic_.InputDialog("Enter name below.", "Search Window", "", 0).has_value());
}

TEST_F(HostHelpersTest, PauseKeepsHandlingEvents) {
    bool fired = false;
    QTimer::singleShot(5, [&fired] { fired = true; });
    QElapsedTimer clock;
    clock.start();
    gic_.PauseMilliseconds(40);
    EXPECT_TRUE(fired);
    EXPECT_GE(clock.elapsed(), 40);
}

TEST_F(HostHelpersTest, UnbuiltOperationThrowsWithItsName) {
    try {
        gic_.GetFamilyMemberCount(12);
        FAIL() << "GetFamilyMemberCount answered";
    } catch (const NotImplemented& error) {
        EXPECT_NE(std::string(error.what()).find("GetFamilyMemberCount"), std::string::npos);
    }
    EXPECT_THROW(gic_.GetTimeConnection(), NotImplemented);
}

}  // namespace
}  // namespace orvo::host::test
