// The host's electronic payer list, driven as a person would through its modal window.
#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "host/payer_list_window.h"
#include "tests/host/host_test_fixture.h"
#include "tests/support/modal_driver.h"

namespace orvo::host::test {
namespace {

class PayerListTest : public HostDatabaseTest {
protected:
    void SetUp() override {
        HostDatabaseTest::SetUp();
        if (IsSkipped())
            return;
        for (const char* row : {"('KBP22', 'Keystone Benefit Plans', 'Real-time eligibility')",
                                "('SDT15', 'Summit Dental Trust', 'Claims by mail')",
                                "('BWD01', 'Bluewater Dental Mutual', '')"}) {
            connection().Execute(
                QStringLiteral("INSERT INTO ePayerTable (epPayID, epNam, epAddInf) VALUES ") + row);
        }
    }

    // Runs the list with a script for its window; answers what ChoosePayer gave back.
    std::optional<QString> Choose(const QString& current, orvo::test::ModalDriver::Script script) {
        orvo::test::ModalDriver driver;
        driver.On(QStringLiteral("frmPayerList"), std::move(script));
        QString chosen = QStringLiteral("unchanged");
        const bool taken =
            gic().GetPayerListWindow(gic().GetLoginName())->ChoosePayer(nullptr, current, chosen);
        EXPECT_EQ(driver.handled(QStringLiteral("frmPayerList")), 1);
        if (!taken) {
            EXPECT_EQ(chosen, QStringLiteral("unchanged"));
            return std::nullopt;
        }
        return chosen;
    }
};

TEST_P(PayerListTest, TypingFiltersAndOkTakesTheHighlightedPayer) {
    const auto chosen = Choose(QString(), [](QDialog& window) {
        auto* grid = window.findChild<QTableView*>(QStringLiteral("grdPayers"));
        ASSERT_EQ(grid->model()->rowCount(), 3);
        QTest::keyClicks(window.findChild<QLineEdit*>(QStringLiteral("txtFind")),
                         QStringLiteral("summit"));
        ASSERT_EQ(grid->model()->rowCount(), 1);
        window.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    EXPECT_EQ(chosen, QStringLiteral("SDT15"));
}

TEST_P(PayerListTest, OpensOnTheCurrentPayerInAnyCase) {
    const auto chosen = Choose(QStringLiteral("kbp22"), [](QDialog& window) {
        window.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    EXPECT_EQ(chosen, QStringLiteral("KBP22"));
}

TEST_P(PayerListTest, CancelOrNoRowChoosesNothing) {
    EXPECT_FALSE(Choose(QStringLiteral("KBP22"), [](QDialog& window) {
        window.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    }));
    EXPECT_FALSE(Choose(QString(), [](QDialog& window) {
        QTest::keyClicks(window.findChild<QLineEdit*>(QStringLiteral("txtFind")),
                         QStringLiteral("no such payer"));
        window.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    }));
}

INSTANTIATE_TEST_SUITE_P(Engines, PayerListTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::host::test
