// A start method whose record lock file cannot be opened, on both engines: the reason is shown
// through the start method's error path and no screen opens, editable or not.
#include <QDir>

#include "component/session.h"
#include "component/surface/editing_screen_instance.h"
#include "host/host_gic.h"
#include "host/host_tables.h"
#include "insurance/insurance_tables.h"
#include "platform/file_lock.h"
#include "platform/schema/schema.h"
#include "tests/locks/lock_fixture.h"
#include "tests/support/modal_driver.h"
#include "tests/support/practice_fixture.h"

namespace orvo::locks::test {
namespace {

using db::Engine;

// A carrier in a practice with the insurance tables, logged in as SUPERVISOR, with the
// component's session bound to the host.
class StartLockTest : public orvo::test::PracticeTest {
protected:
    void SetUp() override {
        orvo::test::PracticeTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        session_.loginName = QStringLiteral("SUPERVISOR");
        component::session().gic = gic_.get();
        carrier_ = static_cast<int>(session_.connection->InsertWithIdentity(
            "INSERT INTO InsCoTable (InsCoNam) VALUES ('Peña Dental Mutual')"));
        modal_.On(QStringLiteral("insScreen"), [this](QDialog&) { ++shown_; });
    }
    void TearDown() override {
        component::session().gic = nullptr;
        component::session().MainForm = nullptr;
        orvo::test::PracticeTest::TearDown();
    }
    void DeclareTables(schema::Catalog& catalog) override {
        insurance::DeclareInsuranceTables(catalog);
    }

    orvo::test::ModalDriver modal_;
    int carrier_ = 0;
    int shown_ = 0;
};

TEST_P(StartLockTest, ALockFileThatCannotBeOpenedIsToldAndNoScreenOpens) {
    component::EditingScreenInstance screen;
    const QString lockPath = component::RecordLockPath(*gic_, "INSCOTABLE", carrier_);
    ASSERT_TRUE(QDir().mkpath(lockPath));

    QString text = QString::number(carrier_);
    int id = 0;
    prompts_.Expect("ORVO Windows", "Cannot open the lock file " + lockPath + ": Is a directory",
                    AnswerOk);
    screen.Ins_Company_Start(text, id);
    EXPECT_EQ(prompts_.pending(), 0);
    EXPECT_EQ(shown_, 0);
    EXPECT_EQ(text, QString::number(carrier_));

    // Once the way is clear the carrier opens editable.
    ASSERT_TRUE(QDir().rmdir(lockPath));
    modal_.On(QStringLiteral("insScreen"), [this](QDialog&) {
        ++shown_;
        EXPECT_TRUE(
            FileLock::IsHeldElsewhere(component::RecordLockPath(*gic_, "INSCOTABLE", carrier_)));
    });
    screen.Ins_Company_Start(text, id);
    EXPECT_EQ(shown_, 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, StartLockTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::locks::test
