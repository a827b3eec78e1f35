#include <QDateTime>

#include "platform/db/recordset.h"
#include "tests/host/host_test_fixture.h"

namespace orvo::host::test {
namespace {

using LogLinesTest = HostDatabaseTest;

TEST_P(LogLinesTest, NoteLineCarriesLoginAndWorkingDate) {
    const QString text =
        "The following primary insurance plan was removed by user JDOE.\r\n"
        "O'Hare Mutual / 100% [17]";
    gic().WriteLogLine(17, "CM", "LogInsCo", "Comment", text);
    session_.loginName = QStringLiteral("MSMITH");
    gic().WriteLogLine(18, "CM", "LogEmp", "Comment", "second");
    db::Recordset rs(connection(),
                     "SELECT cmPID, cmNotTyp, cmSouKey, cmFie, cmUseNam, cmDat, cmDoc, cmTyp, "
                     "cmtralinid FROM cmTable ORDER BY cmID");
    ASSERT_FALSE(rs.IsEmpty());
    EXPECT_EQ(rs.Long("cmPID"), 17);
    EXPECT_EQ(rs.Text("cmNotTyp"), "CM");
    EXPECT_EQ(rs.Text("cmSouKey"), "LogInsCo");
    EXPECT_EQ(rs.Text("cmFie"), "Comment");
    EXPECT_EQ(rs.Text("cmUseNam"), "JDOE");
    EXPECT_EQ(rs.Value("cmDat").toDate(), QDate(2024, 3, 15));
    EXPECT_EQ(rs.Text("cmDoc"), text);
    EXPECT_EQ(rs.Long("cmTyp"), 0);
    EXPECT_EQ(rs.Long("cmtralinid"), 0);
    rs.MoveNext();
    ASSERT_FALSE(rs.Eof());
    EXPECT_EQ(rs.Text("cmUseNam"), "MSMITH");
}

TEST_P(LogLinesTest, AuditLineCarriesLoginStationAndTime) {
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    gic().WriteAuditLog("INS_LOG", "DELETE",
                        "JDOE selected [ Delete ] to the following Warning : 'x'");
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);
    db::Recordset rs(connection(),
                     "SELECT AudKey, AudAct, AudTex, AudUseNam, AudStaID, AudDatTim FROM AudTable");
    ASSERT_FALSE(rs.IsEmpty());
    EXPECT_EQ(rs.Text("AudKey"), "INS_LOG");
    EXPECT_EQ(rs.Text("AudAct"), "DELETE");
    EXPECT_EQ(rs.Text("AudTex"), "JDOE selected [ Delete ] to the following Warning : 'x'");
    EXPECT_EQ(rs.Text("AudUseNam"), "JDOE");
    EXPECT_EQ(rs.Text("AudStaID"), "FRONT1");
    const QDateTime when = rs.Value("AudDatTim").toDateTime();
    EXPECT_TRUE(when >= before && when <= after) << rs.Text("AudDatTim").toStdString();
}

TEST_P(LogLinesTest, DatabaseKindFollowsTheEngine) {
    EXPECT_EQ(gic().GetDatabaseKind(), GetParam() == db::Engine::Sqlite ? 1 : 2);
    EXPECT_EQ(&gic().GetConnection(), session_.connection.get());
}

INSTANTIATE_TEST_SUITE_P(Engines, LogLinesTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::host::test
