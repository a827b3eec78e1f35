#include "component/session.h"
#include "component/command_text.h"

#include <gtest/gtest.h>

#include "tests/support/main_form_gic.h"

namespace orvo::component {
namespace {

struct CapitalizeCase {
    const char* text;
    const char* expected;
};

TEST(CapitalizeWordsTest, RaisesTheFirstLetterOfEachWordAndKeepsTheRest) {
    const CapitalizeCase cases[] = {
        {"", ""},
        {"   ", ""},
        {"john", "John"},
        {"  mary ann  ", "Mary Ann"},
        // Letters after the first keep their case, in either direction.
        {"mcDONALD o'neil", "McDONALD O'neil"},
        {"SMITH", "SMITH"},
        // Only a blank starts a word.
        {"smith-jones", "Smith-jones"},
        {"smith,john", "Smith,john"},
        {"van  der berg", "Van  Der Berg"},
        {"3rd street", "3rd Street"},
        {"élise ñuñez", "Élise Ñuñez"},
        // A tab is not a blank: it is neither trimmed nor a word break.
        {"\tann\tlee", "\tann\tlee"},
    };
    for (const CapitalizeCase& c : cases) {
        EXPECT_EQ(CapitalizeWords(QString::fromUtf8(c.text)), QString::fromUtf8(c.expected))
            << '"' << c.text << '"';
    }
}

class MainWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        session().gic = &gic_;
        session().MainForm = nullptr;
    }
    void TearDown() override {
        session().gic = nullptr;
        session().MainForm = nullptr;
    }

    test::MainFormGIC gic_;
};

TEST_F(MainWindowTest, TheMainWindowIsAskedOfGICOnceThenKept) {
    QWidget first, second;
    gic_.SetMainForm(&first);
    EXPECT_EQ(GetMainWindow(), &first);
    gic_.SetMainForm(&second);
    EXPECT_EQ(GetMainWindow(), &first);
}

TEST_F(MainWindowTest, WithoutAMainWindowGICIsAskedAgainNextTime) {
    EXPECT_EQ(GetMainWindow(), nullptr);
    QWidget window;
    gic_.SetMainForm(&window);
    EXPECT_EQ(GetMainWindow(), &window);
}

TEST_F(MainWindowTest, BindHandsTheStartFormOnlyToAHostWithoutMainWindow) {
    QWidget startForm, hostWindow;

    BindMainWindow(nullptr);
    EXPECT_EQ(gic_.setMainFormCalls(), 0);

    BindMainWindow(&startForm);
    EXPECT_EQ(gic_.GetMainForm(), &startForm);
    EXPECT_EQ(gic_.setMainFormCalls(), 1);

    session().MainForm = nullptr;
    gic_.SetMainForm(&hostWindow);
    BindMainWindow(&startForm);
    EXPECT_EQ(gic_.GetMainForm(), &hostWindow);
    EXPECT_EQ(gic_.setMainFormCalls(), 2);
}

TEST(MainWindowWithoutHostTest, NothingIsAskedBeforeAHostObjectIsSet) {
    ASSERT_EQ(session().gic, nullptr);
    QWidget startForm;
    EXPECT_EQ(GetMainWindow(), nullptr);
    BindMainWindow(&startForm);
    EXPECT_EQ(GetMainWindow(), nullptr);
}

}  // namespace
}  // namespace orvo::component
