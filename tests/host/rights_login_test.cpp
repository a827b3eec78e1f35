#include "host/login.h"
#include "platform/db/recordset.h"
#include "tests/host/host_test_fixture.h"

namespace orvo::host::test {
namespace {

class RightsTest : public HostDatabaseTest {
protected:
    void SetUp() override {
        HostDatabaseTest::SetUp();
        if (IsSkipped())
            return;
        GrantRight(connection(), "jdoe", 1, "EDIT-EMP-INS");
        GrantRight(connection(), "JDoe", 1, "Change-Ins-Plan-Detail");
        GrantRight(connection(), "JDOE", 2, "LINK-EMP-INS");
        GrantRight(connection(), "OTHER", 1, "POST-TRA");
        GrantRight(connection(), "ONEIL", 1, "POST-TRA");  // saved without the apostrophe
        // A row that holds only the read flag grants nothing.
        connection().Execute(
            "INSERT INTO PWATable (PWAUseNam, OffLocID, PWAAreOfPro, PWAReaFla) VALUES "
            "('JDOE', 1, 'DELETE-PATIENT', 1)");
    }
    bool Check(const QString& key, const QString& message = QString()) {
        bool flag = false;
        return gic().CheckRight(key, message, flag);
    }
};

TEST_P(RightsTest, RightHoldsForTheLoginAtTheSessionLocation) {
    session_.loginName = QStringLiteral("jdoe");
    EXPECT_TRUE(Check("EDIT-EMP-INS"));
    EXPECT_TRUE(Check("edit-emp-ins"));
    EXPECT_TRUE(Check("CHANGE-INS-PLAN-DETAIL"));
    EXPECT_FALSE(Check("DELETE-PATIENT"));  // write flag clear
    EXPECT_FALSE(Check("LINK-EMP-INS"));    // another location
    EXPECT_FALSE(Check("POST-TRA"));        // another login
    session_.officeLocationId = 2;
    EXPECT_TRUE(Check("LINK-EMP-INS"));
    EXPECT_FALSE(Check("EDIT-EMP-INS"));
    session_.loginName.clear();
    EXPECT_FALSE(Check("LINK-EMP-INS"));
    session_.loginName = QStringLiteral("o'neil");
    session_.officeLocationId = 1;
    EXPECT_TRUE(Check("POST-TRA"));
}

TEST_P(RightsTest, SupervisorHoldsEveryRight) {
    session_.loginName = QStringLiteral("Supervisor");
    EXPECT_TRUE(Check("DELETE-PATIENT", "You have no right to delete patients."));
    EXPECT_TRUE(Check("ANY-KEY-AT-ALL"));
    EXPECT_TRUE(prompts_.shown().empty());
}

TEST_P(RightsTest, RefusalWithAMessageWarnsInWords) {
    prompts_.Expect("Access Denied", "You have no right to delete patients.", AnswerOk)
        .Expect("Access Denied", "You have no right to modify provider names.", AnswerOk);
    EXPECT_FALSE(Check("DELETE-PATIENT", "You have no right to delete patients."));
    EXPECT_FALSE(Check("CHANGE-PRO-NAME", "modify provider names"));
    EXPECT_TRUE(Check("EDIT-EMP-INS", "edit employers"));  // granted: nothing shown
    EXPECT_FALSE(Check("POST-TRA", ""));                   // no message: nothing shown
    ASSERT_EQ(prompts_.shown().size(), 2u);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(prompts_.shown()[0].buttons, QStringList{"OK"});
}

using LoginTest = HostDatabaseTest;

TEST_P(LoginTest, SupervisorIsCreatedOnceWithTheEmptyPassword) {
    EnsureSupervisor(connection());
    EnsureSupervisor(connection());
    db::Recordset rs(connection(), "SELECT PWMUseNam, PWMPasWor, PWMPid FROM PWMTable");
    ASSERT_FALSE(rs.IsEmpty());
    EXPECT_EQ(rs.Text(0), "SUPERVISOR");
    EXPECT_EQ(rs.Text(1), "");
    EXPECT_EQ(rs.Long(2), 0);
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(VerifyLogin(connection(), gic(), "supervisor", ""));
    EXPECT_FALSE(VerifyLogin(connection(), gic(), "SUPERVISOR", "guess"));
}

TEST_P(LoginTest, PasswordIsCheckedThroughItsStoredForm) {
    const QString stored = gic().ConvertPassword("s3cr'et");
    connection().Execute(
        QStringLiteral("INSERT INTO PWMTable (PWMUseNam, PWMPasWor) VALUES ('O''Neil', %1)")
            .arg(gic().SqlQuoteText(stored)));
    connection().Execute("UPDATE PWMTable SET PWMPasWor='changed' WHERE PWMUseNam='SUPERVISOR'");
    EnsureSupervisor(connection());  // an existing supervisor keeps its password
    EXPECT_EQ(db::ReadScalar(connection(), "SELECT Count(*) FROM PWMTable").toInt(), 2);
    // The component arms a key of its own on its screens; a login check is not thrown off by it.
    gic().SetPasswordKey("0123456789ABCDEF01234567");
    EXPECT_TRUE(VerifyLogin(connection(), gic(), "o'neil", "s3cr'et"));
    EXPECT_FALSE(VerifyLogin(connection(), gic(), "O'NEIL", "S3CR'ET"));
    EXPECT_FALSE(VerifyLogin(connection(), gic(), "O'NEIL", ""));
    EXPECT_FALSE(VerifyLogin(connection(), gic(), "NOBODY", "s3cr'et"));
}

INSTANTIATE_TEST_SUITE_P(Engines, RightsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());
INSTANTIATE_TEST_SUITE_P(Engines, LoginTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::host::test
