// The host's read of a person's coverage as it stood on a day, over chains the engine wrote.
#include "host/coverage_history.h"
#include "tests/insurance/coverage_fixture.h"

namespace orvo::insurance::test {
namespace {

using orvo::test::EngineParamName;

class CoverageHistoryTest : public CoverageTest {
protected:
    QStringList Rows(int person, const QDate& day) {
        QStringList out;
        for (const host::CoverageHistoryRow& row :
             host::ReadCoverageHistory(connection(), person, day).rows) {
            out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
                       .arg(row.order)
                       .arg(row.activeOnDate ? "active" : "ended")
                       .arg(row.subscriber, row.relation, row.groupNumber,
                            row.ended.toString(Qt::ISODate), row.endedBy);
        }
        return out;
    }
};

TEST_P(CoverageHistoryTest, ShowsTheChainAsItStoodOnEachDay) {
    const int head = chain().Person(QStringLiteral("Peña"), QStringLiteral("José"));
    const int child = chain().Person(QStringLiteral("Peña"), QStringLiteral("Lucía"), head);
    const int employer = chain().Employer(QStringLiteral("Müller Tool & Die"));
    const int l1 = chain().PlanLink(employer, QStringLiteral("Bluewater"), QStringLiteral("BW-1"));
    const int l2 = chain().PlanLink(employer, QStringLiteral("Keystone"), QStringLiteral("KS-2"));
    session_.today = QDate(2024, 3, 1);
    Subscribe(head, 0, l1);
    Subscribe(head, 0, l2);
    ASSERT_TRUE(Cover(child, chain().PatEmp(head, l1)));
    session_.today = QDate(2024, 3, 3);
    ASSERT_TRUE(Cover(child, chain().PatEmp(head, l2)));
    session_.loginName = QStringLiteral("MANAGER");
    session_.today = QDate(2024, 3, 10);
    ASSERT_TRUE(Uncover(child, chain().Coverage(child, chain().PatEmp(head, l1))));

    EXPECT_TRUE(Rows(child, QDate(2024, 2, 29)).isEmpty());
    EXPECT_EQ(Rows(child, QDate(2024, 3, 2)), QStringList{"1 active Peña, José Other BW-1  "});
    EXPECT_EQ(Rows(child, QDate(2024, 3, 3)), (QStringList{"1 active Peña, José Other BW-1  ",
                                                           "2 active Peña, José Other KS-2  "}));
    // The removal shows from its day on, with who did it; the secondary has moved up.
    EXPECT_EQ(Rows(child, QDate(2024, 3, 10)),
              (QStringList{"1 active Peña, José Other KS-2  ",
                           "1 ended Peña, José Other BW-1 2024-03-10 MANAGER"}));

    const host::CoverageHistory history =
        host::ReadCoverageHistory(connection(), child, QDate(2024, 3, 5));
    ASSERT_EQ(history.notes.size(), 2);
    EXPECT_TRUE(history.notes[0].startsWith(
        QStringLiteral("03-03-2024  JDOE\nThe following secondary insurance plan was added")));
    EXPECT_EQ(host::ReadCoverageHistory(connection(), child, QDate(2024, 3, 10)).notes.size(), 3);

    EXPECT_EQ(host::FindPersonsForHistory(connection(), QStringLiteral("peña")).size(), 2);
    EXPECT_EQ(host::FindPersonsForHistory(connection(), QString::number(child)),
              (QList<QPair<int, QString>>{{child, QStringLiteral("Peña, Lucía")}}));
    EXPECT_TRUE(host::FindPersonsForHistory(connection(), QStringLiteral("Zz")).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, CoverageHistoryTest, testing::ValuesIn(orvo::test::AllEngines()),
                         EngineParamName());

}  // namespace
}  // namespace orvo::insurance::test
