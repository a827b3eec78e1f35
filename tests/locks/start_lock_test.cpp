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
#include "tests/support/test_database.h"

namespace orvo::locks::test {
namespace {

using db::Engine;

class StartLockTest : public testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        schema::Catalog catalog;
        insurance::DeclareInsuranceTables(catalog);
        host::DeclareHostTables(catalog);
        schema::Apply(database_->connection(), catalog);
        session_.connection = database_->Connect();
        session_.dataPath = database_->folder() + QLatin1Char('/');
        session_.loginName = QStringLiteral("SUPERVISOR");
        session_.stationId = QStringLiteral("FRONT1");
        host_ = std::make_unique<host::HostGIC>(session_);
        component::session().gic = host_.get();
        carrier_ = static_cast<int>(session_.connection->InsertWithIdentity(
            "INSERT INTO InsCoTable (InsCoNam) VALUES ('Peña Dental Mutual')"));
        modal_.On(QStringLiteral("insScreen"), [this](QDialog&) { ++shown_; });
    }
    void TearDown() override {
        component::session().gic = nullptr;
        component::session().MainForm = nullptr;
    }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    host::HostSession session_;
    std::unique_ptr<host::HostGIC> host_;
    orvo::test::ScriptedPrompts prompts_;
    orvo::test::PromptsScope scope_{prompts_};
    orvo::test::ModalDriver modal_;
    int carrier_ = 0;
    int shown_ = 0;
};

TEST_P(StartLockTest, ALockFileThatCannotBeOpenedIsToldAndNoScreenOpens) {
    component::EditingScreenInstance screen;
    const QString lockPath = component::RecordLockPath(*host_, "INSCOTABLE", carrier_);
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
            FileLock::IsHeldElsewhere(component::RecordLockPath(*host_, "INSCOTABLE", carrier_)));
    });
    screen.Ins_Company_Start(text, id);
    EXPECT_EQ(shown_, 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, StartLockTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::locks::test
