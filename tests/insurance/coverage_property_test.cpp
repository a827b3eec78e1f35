// The coverage chain under random work, and under a failure at each statement of each writer.
#include <QRandomGenerator>
#include <QSet>

#include "tests/insurance/coverage_fixture.h"
#include "tests/support/statement_fault.h"

namespace orvo::insurance::test {
namespace {

using orvo::test::EngineParamName;
using orvo::test::StatementFault;

// A small practice: families, employers with plans and each with its "No Insurance Coverage"
// link, for the random work to choose from.
class ChainWorld {
public:
    ChainWorld(ChainBuilder& chain, GIC& gic) {
        for (int f = 0; f < 4; ++f) {
            const int head =
                chain.Person(QStringLiteral("Núñez %1").arg(f), QStringLiteral("Head"));
            persons << head;
            for (int m = 0; m < 2; ++m)
                persons << chain.Person(QStringLiteral("Núñez %1").arg(f),
                                        QStringLiteral("Kid %1").arg(m), head);
        }
        for (int e = 0; e < 3; ++e) {
            const int employer = chain.Employer(QStringLiteral("Employer %1").arg(e));
            for (int p = 0; p < 2; ++p) {
                links << chain.PlanLink(employer, QStringLiteral("Carrier %1-%2").arg(e).arg(p),
                                        QStringLiteral("G%1-%2").arg(e).arg(p));
            }
            links << Get_No_Insurance_Link(gic, employer);
        }
    }
    QList<int> persons;
    QList<int> links;
};

// What the random work keeps between steps: every row ever seen, with the order of each row
// when it ended.
class History {
public:
    // Faults of the rows since the last look: a row gone, or an ended row that moved.
    QStringList Faults(ChainBuilder& chain, db::Connection& c) {
        QStringList faults;
        for (const auto& [table, prefix] :
             {std::pair{"CovTable", "Cov"}, std::pair{"PatEmpTable", "PatEmp"}}) {
            const QString key = QLatin1String(prefix) + QStringLiteral("ID");
            QSet<int> present;
            db::Recordset rs(c, QStringLiteral("SELECT %1ID, %1Ord, %1Fla FROM %2")
                                    .arg(QLatin1String(prefix), QLatin1String(table)));
            for (; !rs.Eof(); rs.MoveNext()) {
                const int id = static_cast<int>(rs.Long(0));
                present << id;
                const QString rowKey = key + QString::number(id);
                if (rs.Long(2) == 1) {
                    if (ended_.contains(rowKey) && ended_[rowKey] != rs.Long(1))
                        faults << QStringLiteral("ended %1 moved").arg(rowKey);
                    ended_[rowKey] = static_cast<int>(rs.Long(1));
                }
            }
            QSet<int>& seen = seen_[key];
            for (int id : seen) {
                if (!present.contains(id))
                    faults << QStringLiteral("%1 %2 deleted").arg(key).arg(id);
            }
            seen = present;
        }
        return faults + chain.InvariantFaults();
    }

private:
    QHash<QString, int> ended_;
    QHash<QString, QSet<int>> seen_;
};

class CoveragePropertyTest : public CoverageTest {
protected:
    // One random step of what the screens do: a subscriber link added, replaced or removed, a
    // coverage added on anyone's link, changed or removed. Describes the step.
    QString RandomStep(QRandomGenerator& random, const ChainWorld& world) {
        const int person = world.persons[random.bounded(world.persons.size())];
        const int link = world.links[random.bounded(world.links.size())];
        const QList<int> own = Load_Subscriber_Links(gic(), person);
        const QList<CoverageRow> covered = Load_Coverage_Rows(gic(), person, false);
        const int anyLink = chain().Long(
            QStringLiteral("SELECT PatEmpID FROM PatEmpTable WHERE PatEmpFla=0 ORDER BY PatEmpID"));
        const int activeLinks =
            chain().Long(QStringLiteral("SELECT count(*) FROM PatEmpTable WHERE PatEmpFla=0"));
        const auto randomSubscriberLink = [&] {
            return chain().Long(QStringLiteral("SELECT PatEmpID FROM PatEmpTable WHERE PatEmpFla=0 "
                                               "ORDER BY PatEmpID LIMIT 1 OFFSET %1")
                                    .arg(random.bounded(activeLinks)));
        };
        bool update = random.bounded(4) != 0;
        switch (random.bounded(6)) {
            case 0:
                Subscribe(person, 0, link);
                return QStringLiteral("link %1 to %2").arg(person).arg(link);
            case 1:
                if (own.isEmpty())
                    return QStringLiteral("-");
                {
                    const int old = own[random.bounded(own.size())];
                    Update_Subscriber_Link(gic(), person, old, link, true, update);
                    return QStringLiteral("relink %1 from %2 to %3").arg(person).arg(old).arg(link);
                }
            case 2:
                if (own.isEmpty())
                    return QStringLiteral("-");
                {
                    const int old = own[random.bounded(own.size())];
                    Subscribe(person, old, 0);
                    return QStringLiteral("unlink %1 from %2").arg(person).arg(old);
                }
            case 3:
                if (anyLink == 0)
                    return QStringLiteral("-");
                {
                    const int target = randomSubscriberLink();
                    Cover(person, target);
                    return QStringLiteral("cover %1 by %2").arg(person).arg(target);
                }
            case 4:
                if (covered.isEmpty() || anyLink == 0)
                    return QStringLiteral("-");
                {
                    const int cov = covered[random.bounded(covered.size())].detail.CovID;
                    const int target = randomSubscriberLink();
                    Change(person, cov, target, true, update);
                    return QStringLiteral("change %1 cov %2 to %3")
                        .arg(person)
                        .arg(cov)
                        .arg(target);
                }
            default:
                if (covered.isEmpty())
                    return QStringLiteral("-");
                {
                    const int cov = covered[random.bounded(covered.size())].detail.CovID;
                    Uncover(person, cov);
                    return QStringLiteral("uncover %1 cov %2").arg(person).arg(cov);
                }
        }
    }
};

TEST_P(CoveragePropertyTest, RandomWorkKeepsTheChainWhole) {
    const quint32 seed = qEnvironmentVariableIsSet("ORVO_COVERAGE_SEED")
                             ? qEnvironmentVariableIntValue("ORVO_COVERAGE_SEED")
                             : QRandomGenerator::global()->generate();
    const int steps = GetParam() == db::Engine::Sqlite ? 2000 : 1200;
    QRandomGenerator random(seed);
    ChainWorld world(chain(), gic());
    History history;
    QStringList recent;
    for (int step = 0; step < steps; ++step) {
        recent << RandomStep(random, world);
        if (recent.size() > 8)
            recent.removeFirst();
        const QStringList faults = history.Faults(chain(), connection());
        ASSERT_TRUE(faults.isEmpty())
            << "seed " << seed << " (ORVO_COVERAGE_SEED), step " << step << "\n"
            << faults.join(QLatin1Char('\n')).toStdString() << "\nlast steps:\n"
            << recent.join(QLatin1Char('\n')).toStdString();
    }
    // The work did something: rows were made and ended.
    EXPECT_GT(chain().Long(QStringLiteral("SELECT count(*) FROM CovTable WHERE CovFla=1")), 10)
        << "seed " << seed;
}

class CoverageFaultTest : public CoverageTest {
protected:
    // Runs the writer with a failure at its first statement, then at its second, and so on,
    // checking after each that nothing of it stayed; then lets it run to its end, which must
    // change something. Answers the number of statements it sends.
    int FailEachStatement(const std::function<void()>& writer) {
        const QStringList before = chain().Snapshot();
        for (int failAt = 1;; ++failAt) {
            bool failed = false;
            int sent = 0;
            {
                StatementFault fault(connection(), failAt);
                try {
                    writer();
                } catch (const db::DatabaseError&) {
                    failed = true;
                }
                sent = fault.sent();
            }
            if (!failed) {
                EXPECT_LT(sent, failAt);
                EXPECT_NE(chain().Snapshot(), before) << "the writer changed nothing";
                return failAt - 1;
            }
            EXPECT_FALSE(connection().InTransaction());
            EXPECT_EQ(chain().Snapshot(), before) << "after a failure at statement " << failAt;
            if (testing::Test::HasFailure())
                return failAt;
        }
    }
};

TEST_P(CoverageFaultTest, AFailureAtAnyStatementLeavesTheChainAsItWas) {
    const int head = chain().Person(QStringLiteral("Peña"), QStringLiteral("José"));
    const int spouse = chain().Person(QStringLiteral("Peña"), QStringLiteral("María"), head);
    const int stranger = chain().Person(QStringLiteral("Müller"), QStringLiteral("Zoë"));
    const int employer = chain().Employer(QStringLiteral("Ōsaka Trading"));
    const int l1 = chain().PlanLink(employer, QStringLiteral("Bluewater"), QStringLiteral("B1"));
    const int l2 = chain().PlanLink(employer, QStringLiteral("Keystone"), QStringLiteral("K2"));
    bool update = true;
    bool failedFlag = false;

    // The first link with a plan: the link, the coverage, the person's record, the note.
    EXPECT_GT(FailEachStatement([&] { Update_Subscriber_Link(gic(), head, 0, l1, true, update); }),
              8);
    const int pe1 = chain().PatEmp(head, l1);
    EXPECT_GT(FailEachStatement([&] { Update_Subscriber_Link(gic(), head, 0, l2, true, update); }),
              2);
    const int pe2 = chain().PatEmp(head, l2);
    // A coverage through another family: two notes.
    FailEachStatement([&] { Update_Coverage(gic(), stranger, 0, pe1, true, update, failedFlag); });
    FailEachStatement([&] { Update_Coverage(gic(), spouse, 0, pe1, true, update, failedFlag); });
    FailEachStatement([&] { Update_Coverage(gic(), head, 0, pe2, true, update, failedFlag); });
    FailEachStatement([&] {
        Update_Coverage(gic(), spouse, chain().Coverage(spouse, pe1), pe2, true, update,
                        failedFlag);
    });
    // The primary removed: the secondary moves up with its figures.
    connection().Execute(QStringLiteral("UPDATE PATable SET pSECYTD=12.5 WHERE pID=%1").arg(head));
    FailEachStatement([&] {
        Update_Coverage(gic(), head, chain().Coverage(head, pe1), 0, true, update, failedFlag);
    });
    // A plan replaced, and replaced by no insurance: the family's coverage moves or goes.
    const int l3 = chain().PlanLink(employer, QStringLiteral("Summit"), QStringLiteral("S3"));
    FailEachStatement([&] { Update_Subscriber_Link(gic(), head, l2, l3, true, update); });
    const int none = Get_No_Insurance_Link(gic(), employer);
    FailEachStatement([&] { Update_Subscriber_Link(gic(), head, l1, none, true, update); });
    FailEachStatement([&] { Update_Subscriber_Link(gic(), head, l3, 0, true, update); });
    const int other = chain().Employer(QStringLiteral("Čapek"));
    FailEachStatement([&] { Get_No_Insurance_Link(gic(), other); });
    EXPECT_TRUE(chain().InvariantFaults().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, CoveragePropertyTest, testing::ValuesIn(orvo::test::AllEngines()),
                         EngineParamName());
INSTANTIATE_TEST_SUITE_P(Engines, CoverageFaultTest, testing::ValuesIn(orvo::test::AllEngines()),
                         EngineParamName());

}  // namespace
}  // namespace orvo::insurance::test
