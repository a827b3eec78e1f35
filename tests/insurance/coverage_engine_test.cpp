// The coverage chain's writers and readers over the reference host, on both engines.
#include "host/host_coverage.h"
#include "host/host_persons.h"
#include "tests/insurance/coverage_fixture.h"

namespace orvo::insurance::test {
namespace {

using orvo::test::EngineParamName;

// The Peña family (José the head and subscriber, María, Lucía), Zoë Okafor of a family of her
// own, and one employer with two plans.
class CoverageEngineTest : public CoverageTest {
protected:
    void SetUp() override {
        CoverageTest::SetUp();
        if (!database_)
            return;
        jose = chain().Person(QStringLiteral("Peña"), QStringLiteral("José"));
        maria = chain().Person(QStringLiteral("Peña"), QStringLiteral("María"), jose);
        lucia = chain().Person(QStringLiteral("Peña"), QStringLiteral("Lucía"), jose);
        zoe = chain().Person(QStringLiteral("Okafor"), QStringLiteral("Zoë"));
        employer = chain().Employer(QStringLiteral("Müller Tool & Die"));
        bluewater = chain().Carrier(QStringLiteral("Bluewater Dental Mutual"));
        bw100 = chain().Plan(QStringLiteral("BW-100"));
        l1 = chain().Link(employer, bluewater, bw100);
        l2 = chain().PlanLink(employer, QStringLiteral("Keystone Benefit Plans"),
                              QStringLiteral("KS-200"));
    }
    // José on the first plan: his link, covering himself.
    int JoseOnFirstPlan() {
        Subscribe(jose, 0, l1);
        return chain().PatEmp(jose, l1);
    }
    QString Ytd(int person, const QString& position) {
        return QStringLiteral("%1 %2 %3")
            .arg(chain().PersonColumn(person, QStringLiteral("p%1YTD").arg(position)).toDouble())
            .arg(chain().PersonColumn(person, QStringLiteral("p%1DED").arg(position)).toDouble())
            .arg(chain().PersonColumn(person, QStringLiteral("p%1BAL").arg(position)).toDouble());
    }
    QString Position(int person, const QString& position) {
        return QStringLiteral("%1 %2 %3")
            .arg(chain().PersonColumn(person, QStringLiteral("p%1INSID").arg(position)),
                 chain().PersonColumn(person, QStringLiteral("p%1INSHOL").arg(position)),
                 chain().PersonColumn(person, QStringLiteral("pREL2%1").arg(position)));
    }

    int jose = 0, maria = 0, lucia = 0, zoe = 0;
    int employer = 0, bluewater = 0, bw100 = 0, l1 = 0, l2 = 0;
};

TEST_P(CoverageEngineTest, FirstPlanLinkCoversTheSubscriberAndNotesIt) {
    const int pe1 = JoseOnFirstPlan();
    const int cov = chain().Coverage(jose, pe1);
    EXPECT_EQ(chain().Coverages(jose), QStringList{QStringLiteral("%1 1 1 0").arg(pe1)});
    // The first employer is kept as its employer-plan link, which the person lists join.
    EXPECT_EQ(chain().PersonColumn(jose, QStringLiteral("pEmpID1")), QString::number(l1));
    EXPECT_EQ(Position(jose, QStringLiteral("PRI")), QStringLiteral("%1 %2 1").arg(l1).arg(jose));

    const QStringList notes = chain().Notes(jose);
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(
        NoteHead(QStringLiteral("primary"), QStringLiteral("added")).match(notes[0]).hasMatch())
        << notes[0].toStdString();
    const QString text =
        QStringLiteral(
            "Subscriber : José Peña - [%1]\r\nEmployer : Müller Tool & Die - [%2]\r\n"
            "Insurance Company : Bluewater Dental Mutual - [%3]\r\nGroup Number : "
            "BW-100 - [%4]")
            .arg(jose)
            .arg(employer)
            .arg(bluewater)
            .arg(bw100);
    EXPECT_TRUE(notes[0].endsWith(QStringLiteral(".\r\n\r\n") + text)) << notes[0].toStdString();
    EXPECT_EQ(Get_Coverage_Text(gic(), Load_Coverage_Detail(gic(), cov)), text);

    // A second link, a "No Insurance Coverage" link and a first link of a person who is covered
    // already create no coverage; the first of them still names the employer.
    Subscribe(jose, 0, l2);
    EXPECT_EQ(chain().Coverages(jose).size(), 1);
    Subscribe(zoe, 0, Get_No_Insurance_Link(gic(), employer));
    EXPECT_TRUE(chain().Coverages(zoe).isEmpty());
    ASSERT_TRUE(Cover(lucia, pe1));
    const int other = chain().Employer(QStringLiteral("Städtische Werke"));
    const int harborline =
        chain().PlanLink(other, QStringLiteral("Harborline"), QStringLiteral("H1"));
    Subscribe(lucia, 0, harborline);
    EXPECT_EQ(chain().Coverages(lucia).size(), 1);
    EXPECT_EQ(chain().PersonColumn(lucia, QStringLiteral("pEmpID1")), QString::number(harborline));
    EXPECT_TRUE(chain().InvariantFaults().isEmpty())
        << chain().InvariantFaults().join("\n").toStdString();
}

TEST_P(CoverageEngineTest, AddTakesTheNextOrderAndRefusesASecondCoverageOnOneLink) {
    const int pe1 = JoseOnFirstPlan();
    Subscribe(jose, 0, l2);
    const int pe2 = chain().PatEmp(jose, l2);
    ASSERT_TRUE(Cover(maria, pe1));
    ASSERT_TRUE(Cover(jose, pe2));
    EXPECT_EQ(chain().Coverages(maria), QStringList{QStringLiteral("%1 1 4 0").arg(pe1)});
    EXPECT_EQ(chain().Coverages(jose).last(), QStringLiteral("%1 2 1 0").arg(pe2));
    EXPECT_EQ(Position(jose, QStringLiteral("SEC")), QStringLiteral("%1 %2 1").arg(l2).arg(jose));
    EXPECT_EQ(Position(maria, QStringLiteral("PRI")), QStringLiteral("%1 %2 4").arg(l1).arg(jose));

    const QStringList before = chain().Snapshot();
    prompts_.Expect(QString(),
                    QStringLiteral("José Peña is already covered by this insurance plan. Please "
                                   "select a different plan or edit the existing one."),
                    AnswerOk);
    EXPECT_FALSE(Cover(jose, pe1, false));
    EXPECT_FALSE(Cover(jose, pe1, true));  // silent: no word
    EXPECT_FALSE(Change(maria, chain().Coverage(maria, pe1), pe1));
    EXPECT_FALSE(Cover(0, pe1));
    EXPECT_EQ(chain().Snapshot(), before);
}

TEST_P(CoverageEngineTest, RemovingThePrimaryMovesTheSecondaryAndItsFiguresUp) {
    const int pe1 = JoseOnFirstPlan();
    Subscribe(jose, 0, l2);
    const int pe2 = chain().PatEmp(jose, l2);
    ASSERT_TRUE(Cover(jose, pe2));
    const int primary = chain().Coverage(jose, pe1);
    connection().Execute(QStringLiteral("UPDATE PATable SET pPRIYTD=999, pPRIDED=25, pPRIBAL=1, "
                                        "pSECYTD=150.25, pSECDED=50, pSECBAL=849.75 WHERE pID=%1")
                             .arg(jose));

    const QStringList before = chain().Snapshot();
    prompts_.Expect(kRemoveCoverageTitle, kRemoveCoverageText, AnswerNo);
    EXPECT_FALSE(Uncover(jose, primary, false));
    EXPECT_EQ(chain().Snapshot(), before);

    prompts_.Expect(kRemoveCoverageTitle, kRemoveCoverageText, AnswerYes);
    ASSERT_TRUE(Uncover(jose, primary, false));
    EXPECT_EQ(chain().Coverages(jose), (QStringList{QStringLiteral("%1 1 1 1").arg(pe1),
                                                    QStringLiteral("%1 1 1 0").arg(pe2)}));
    EXPECT_EQ(
        chain().Text(QStringLiteral("SELECT CovEndWho FROM CovTable WHERE CovID=%1").arg(primary)),
        "JDOE");
    EXPECT_EQ(
        chain()
            .Text(QStringLiteral("SELECT CovEndDat FROM CovTable WHERE CovID=%1").arg(primary))
            .left(10),
        "2024-03-15");
    EXPECT_EQ(Position(jose, QStringLiteral("PRI")), QStringLiteral("%1 %2 1").arg(l2).arg(jose));
    EXPECT_EQ(Ytd(jose, QStringLiteral("PRI")), "150.25 50 849.75");
    EXPECT_EQ(Position(jose, QStringLiteral("SEC")), "0 0 ");
    EXPECT_EQ(Ytd(jose, QStringLiteral("SEC")), "0 0 0");
    const QString note = chain().Notes(jose).last();
    EXPECT_TRUE(
        NoteHead(QStringLiteral("primary"), QStringLiteral("removed")).match(note).hasMatch());
    EXPECT_TRUE(note.endsWith(QStringLiteral("Group Number : BW-100 - [%1]").arg(bw100)));

    // The only coverage left goes, and both positions are empty.
    ASSERT_TRUE(Uncover(jose, chain().Coverage(jose, pe2)));
    EXPECT_EQ(Position(jose, QStringLiteral("PRI")), "0 0 ");
    EXPECT_EQ(Ytd(jose, QStringLiteral("PRI")), "0 0 0");
    EXPECT_FALSE(Uncover(jose, primary));  // ended already: quietly nothing
}

TEST_P(CoverageEngineTest, RemovingTheThirdOfFourLeavesThePersonsRecordAlone) {
    const int other = chain().Employer(QStringLiteral("Ōsaka Trading"));
    QList<int> links;
    for (int i = 0; i < 4; ++i) {
        const int link = chain().PlanLink(other, QStringLiteral("Carrier %1").arg(i),
                                          QStringLiteral("G%1").arg(i));
        Subscribe(zoe, 0, link);
        links << chain().PatEmp(zoe, link);
        if (i > 0) {
            ASSERT_TRUE(Cover(zoe, links.last()));
        }
    }
    const QString recordBefore =
        chain().Snapshot().filter(QStringLiteral("PATable:%1|").arg(zoe)).join("");
    ASSERT_TRUE(Uncover(zoe, chain().Coverage(zoe, links[2])));
    EXPECT_EQ(chain().Snapshot().filter(QStringLiteral("PATable:%1|").arg(zoe)).join(""),
              recordBefore);
    EXPECT_EQ(chain().Coverages(zoe), (QStringList{QStringLiteral("%1 1 1 0").arg(links[0]),
                                                   QStringLiteral("%1 2 1 0").arg(links[1]),
                                                   QStringLiteral("%1 3 1 1").arg(links[2]),
                                                   QStringLiteral("%1 3 1 0").arg(links[3])}));
    EXPECT_TRUE(NoteHead(QStringLiteral("third"), QStringLiteral("removed"))
                    .match(chain().Notes(zoe).last())
                    .hasMatch());
}

TEST_P(CoverageEngineTest, ChangeKeepsTheOrderAndSetsTheRelationByTheNewSubscriber) {
    const int pe1 = JoseOnFirstPlan();
    Subscribe(jose, 0, l2);
    const int pe2 = chain().PatEmp(jose, l2);
    ASSERT_TRUE(Cover(maria, pe1));
    connection().Execute(
        QStringLiteral("UPDATE CovTable SET CovRel=2 WHERE CovPatID=%1").arg(maria));
    const int mariaLink =
        chain().PlanLink(employer, QStringLiteral("Summit"), QStringLiteral("S-9"));
    Subscribe(maria, 0, mariaLink);  // covered already: no coverage of her own
    const int peMaria = chain().PatEmp(maria, mariaLink);

    // No to the question changes nothing.
    const QStringList before = chain().Snapshot();
    prompts_.Expect(kChangeCoverageTitle, kChangeCoverageText, AnswerNo);
    EXPECT_FALSE(Change(maria, chain().Coverage(maria, pe1), pe2, false));
    EXPECT_EQ(chain().Snapshot(), before);

    // A spouse moved to another plan of the same subscriber stays a spouse.
    prompts_.Expect(kChangeCoverageTitle, kChangeCoverageText, AnswerYes);
    ASSERT_TRUE(Change(maria, chain().Coverage(maria, pe1), pe2, false));
    EXPECT_EQ(chain().Coverages(maria).last(), QStringLiteral("%1 1 2 0").arg(pe2));
    EXPECT_EQ(Position(maria, QStringLiteral("PRI")), QStringLiteral("%1 %2 2").arg(l2).arg(jose));
    const QString note = chain().Notes(maria).last();
    EXPECT_TRUE(
        NoteHead(QStringLiteral("primary"), QStringLiteral("changed")).match(note).hasMatch());
    EXPECT_TRUE(note.contains(
        QStringLiteral(".\r\n\r\n----- Original Coverage -----\r\nSubscriber : José Peña")));
    EXPECT_TRUE(note.contains(QStringLiteral("BW-100 - [%1]\r\n\r\n----- New Coverage -----\r\n"
                                             "Subscriber : José Peña")
                                  .arg(bw100)));
    EXPECT_TRUE(note.endsWith(
        QStringLiteral("KS-200 - [%1]")
            .arg(chain().Long(
                QStringLiteral("SELECT elGroID FROM ELTable WHERE elID=%1").arg(l2)))));

    // Any relation becomes Self on the person's own link; Self becomes Other on another's.
    ASSERT_TRUE(Change(maria, chain().Coverage(maria, pe2), peMaria));
    EXPECT_EQ(chain().Coverages(maria).last(), QStringLiteral("%1 1 1 0").arg(peMaria));
    ASSERT_TRUE(Change(jose, chain().Coverage(jose, pe1), peMaria));
    EXPECT_EQ(chain().Coverages(jose).last(), QStringLiteral("%1 1 4 0").arg(peMaria));

    // Without update-person the record keeps what it had.
    const QString position = Position(jose, QStringLiteral("PRI"));
    ASSERT_TRUE(Change(jose, chain().Coverage(jose, peMaria), pe2, true, false));
    EXPECT_EQ(Position(jose, QStringLiteral("PRI")), position);
    EXPECT_TRUE(chain().InvariantFaults().isEmpty());
}

TEST_P(CoverageEngineTest, NoInsuranceInPlaceOfThePlanEndsTheWholeFamilysCoverage) {
    const int pe1 = JoseOnFirstPlan();
    ASSERT_TRUE(Cover(maria, pe1));
    ASSERT_TRUE(Cover(lucia, pe1));
    const int none = Get_No_Insurance_Link(gic(), employer);
    Subscribe(jose, l1, none);
    for (int person : {jose, maria, lucia}) {
        EXPECT_EQ(chain().Coverages(person),
                  QStringList{QStringLiteral("%1 1 %2 1").arg(pe1).arg(person == jose ? 1 : 4)});
        EXPECT_EQ(chain().Notes(person).filter(QStringLiteral(" was removed by")).size(), 1);
        EXPECT_EQ(Position(person, QStringLiteral("PRI")), "0 0 ");
    }
    // The subscriber stays the employer's, on the new link, in the old place.
    EXPECT_EQ(chain().Long(QStringLiteral("SELECT PatEmpOrd FROM PatEmpTable WHERE PatEmpID=%1 "
                                          "AND PatEmpFla=0")
                               .arg(chain().PatEmp(jose, none))),
              1);
    EXPECT_EQ(chain().Long(
                  QStringLiteral("SELECT PatEmpFla FROM PatEmpTable WHERE PatEmpID=%1").arg(pe1)),
              1);
    EXPECT_EQ(chain().PersonColumn(jose, QStringLiteral("pEmpID1")), QString::number(none));

    // The plan back moves nobody: coverage that ended stays ended.
    Subscribe(jose, none, l2);
    EXPECT_EQ(chain().Long(QStringLiteral("SELECT count(*) FROM CovTable WHERE CovFla=0")), 0);
    EXPECT_TRUE(chain().InvariantFaults().isEmpty());
}

TEST_P(CoverageEngineTest, ChangedPlanCarriesTheFamilysCoverageAlong) {
    const int pe1 = JoseOnFirstPlan();
    ASSERT_TRUE(Cover(maria, pe1));
    Subscribe(zoe, 0, l2);
    ASSERT_TRUE(Cover(lucia, chain().PatEmp(zoe, l2)));  // through someone else: untouched
    Subscribe(jose, l1, l2);
    const int pe2 = chain().PatEmp(jose, l2);
    EXPECT_EQ(chain().Coverages(jose).last(), QStringLiteral("%1 1 1 0").arg(pe2));
    EXPECT_EQ(chain().Coverages(maria).last(), QStringLiteral("%1 1 4 0").arg(pe2));
    EXPECT_EQ(chain().Coverages(lucia).size(), 1);
    EXPECT_EQ(Position(maria, QStringLiteral("PRI")), QStringLiteral("%1 %2 4").arg(l2).arg(jose));
    EXPECT_TRUE(chain().InvariantFaults().isEmpty());
}

TEST_P(CoverageEngineTest, OneRemovedLinkTakesTheCoverageOfBothLinksWithTheEmployer) {
    const int pe1 = JoseOnFirstPlan();
    Subscribe(jose, 0, l2);
    const int pe2 = chain().PatEmp(jose, l2);
    ASSERT_TRUE(Cover(lucia, pe1));
    ASSERT_TRUE(Cover(lucia, pe2));
    Subscribe(jose, l1, 0);
    EXPECT_EQ(chain().Long(QStringLiteral("SELECT count(*) FROM CovTable WHERE CovPatID=%1 AND "
                                          "CovFla=0")
                               .arg(lucia)),
              0);
    EXPECT_EQ(chain().Notes(lucia).filter(QStringLiteral(" was removed by")).size(), 2);
    // José's other link closes the gap.
    EXPECT_EQ(chain().Long(
                  QStringLiteral("SELECT PatEmpOrd FROM PatEmpTable WHERE PatEmpID=%1").arg(pe2)),
              1);
    EXPECT_TRUE(chain().InvariantFaults().isEmpty());
}

TEST_P(CoverageEngineTest, EighthCoverageHasNoOrderWord) {
    const int other = chain().Employer(QStringLiteral("Åland Shipping"));
    for (int i = 0; i < 8; ++i) {
        const int link = chain().PlanLink(other, QStringLiteral("Carrier %1").arg(i),
                                          QStringLiteral("G%1").arg(i));
        Subscribe(zoe, 0, link);
        if (i > 0) {
            ASSERT_TRUE(Cover(zoe, chain().PatEmp(zoe, link)));
        }
    }
    const QStringList notes = chain().Notes(zoe);
    ASSERT_EQ(notes.size(), 8);
    EXPECT_TRUE(
        NoteHead(QStringLiteral("seventh"), QStringLiteral("added")).match(notes[6]).hasMatch());
    EXPECT_TRUE(notes[7].startsWith(QStringLiteral("The following  insurance plan was added by")));
    EXPECT_EQ(Get_Order_Word(0), QString());
}

TEST_P(CoverageEngineTest, ASubscriberOfAnotherFamilyGetsASecondNote) {
    const int pe1 = JoseOnFirstPlan();
    ASSERT_TRUE(Cover(zoe, pe1));
    QStringList notes = chain().Notes(zoe);
    ASSERT_EQ(notes.size(), 2);
    // The note of an added plan ends after its head: it carries the old text, which is empty.
    EXPECT_TRUE(QRegularExpression(
                    QStringLiteral("^The following primary insurance plan has been connected to a "
                                   "non-family member by user JDOE on 3/15/2024 at \\d\\d:\\d\\d "
                                   "[AP]M\\.\r\n\r\n$"))
                    .match(notes[1])
                    .hasMatch())
        << notes[1].toStdString();

    // A change is compared with the former subscriber: from José to her own plan is still a
    // non-family change, with the new coverage's text.
    Subscribe(zoe, 0, l2);
    const int peZoe = chain().PatEmp(zoe, l2);
    ASSERT_TRUE(Change(zoe, chain().Coverage(zoe, pe1), peZoe));
    notes = chain().Notes(zoe);
    ASSERT_EQ(notes.size(), 4);
    EXPECT_TRUE(notes[3].contains(QStringLiteral("non-family member by user")));
    EXPECT_TRUE(
        notes[3].contains(QStringLiteral(".\r\n\r\nSubscriber : Zoë Okafor - [%1]").arg(zoe)));
    // And María, from her husband to Zoë's plan, gets one note only.
    ASSERT_TRUE(Cover(maria, pe1));
    ASSERT_TRUE(Change(maria, chain().Coverage(maria, pe1), peZoe));
    EXPECT_EQ(chain().Notes(maria).size(), 2);
}

TEST_P(CoverageEngineTest, NoInsuranceLinkIsFoundOrMadeOnceAndTheReadersTellItApart) {
    const int other = chain().Employer(QStringLiteral("Čapek & Syn"));
    const int none = Get_No_Insurance_Link(gic(), other);
    EXPECT_GT(none, 0);
    EXPECT_EQ(Get_No_Insurance_Link(gic(), other), none);
    connection().Execute(QStringLiteral("UPDATE ELTable SET elFla=1 WHERE elID=%1").arg(none));
    const int again = Get_No_Insurance_Link(gic(), other);
    EXPECT_NE(again, none);
    EXPECT_EQ(Get_El_Employer_ID(gic(), none), other);  // ended, and still answers

    EXPECT_TRUE(Is_No_Insurance_Link(gic(), 0));
    EXPECT_TRUE(Is_No_Insurance_Link(gic(), again));
    EXPECT_FALSE(Is_No_Insurance_Link(gic(), l1));
    EXPECT_EQ(Get_El_Carrier_ID(gic(), again), 0);
    EXPECT_EQ(Get_El_Group_ID(gic(), l1), bw100);
    EXPECT_EQ(Get_El_Carrier_Name(gic(), l1), "Bluewater Dental Mutual");
    EXPECT_EQ(Get_El_Employer_Name(gic(), l1), "Müller Tool & Die");
    EXPECT_EQ(Get_El_Group_Number(gic(), l1), "BW-100");
    EXPECT_FALSE(Employer_Lacks_Plan_Link(gic(), employer, bluewater, bw100));
    EXPECT_TRUE(Employer_Lacks_Plan_Link(gic(), other, bluewater, bw100));
    EXPECT_FALSE(Employer_Lacks_Plan_Link(gic(), other, 0, bw100));

    // A coverage whose link ended does not count, and shows only with the ended rows.
    const int pe1 = JoseOnFirstPlan();
    Subscribe(jose, 0, again);
    EXPECT_EQ(Count_Coverage(gic(), jose), 1);
    EXPECT_EQ(Count_Subscriber_Links(gic(), jose), 2);
    EXPECT_EQ(Load_Subscriber_Links(gic(), jose), (QList<int>{l1, again}));
    ASSERT_EQ(Load_Plan_Links(gic(), jose).size(), 1);
    EXPECT_EQ(Load_Plan_Links(gic(), jose)[0].PatEmpID, pe1);
    EXPECT_EQ(Get_El_For_Person_Employer(gic(), jose, employer), l1);
    connection().Execute(QStringLiteral("UPDATE ELTable SET elFla=1 WHERE elID=%1").arg(l1));
    EXPECT_EQ(Count_Coverage(gic(), jose), 0);
    EXPECT_TRUE(Load_Coverage_Rows(gic(), jose, false).isEmpty());
    ASSERT_EQ(Load_Coverage_Rows(gic(), jose, true).size(), 1);
    EXPECT_EQ(Load_Coverage_Rows(gic(), jose, true)[0].PatEmpID, pe1);
    EXPECT_TRUE(Coverage_Exists(gic(), jose, pe1));
}

TEST_P(CoverageEngineTest, HostKeepsFamiliesAndFigures) {
    EXPECT_EQ(gic().GetFamilyID(maria), jose);
    EXPECT_EQ(gic().GetFamilyID(jose), jose);
    connection().Execute(
        QStringLiteral("UPDATE PATable SET pFAMHEAIND=NULL WHERE pID=%1").arg(zoe));
    EXPECT_EQ(gic().GetFamilyID(zoe), zoe);
    EXPECT_EQ(gic().GetFamilyID(999999), 0);

    CoverageYearToDate figures;
    figures.used = Currency::FromCents(12345);
    figures.deductibleMet = Currency::FromCents(-5);
    figures.remaining = Currency::FromTenThousandths(8765432);
    gic().SetCoverageYearToDate(maria, false, figures);
    const CoverageYearToDate read = gic().GetCoverageYearToDate(maria, false);
    EXPECT_EQ(read.used, figures.used);
    EXPECT_EQ(read.deductibleMet, figures.deductibleMet);
    EXPECT_EQ(read.remaining, figures.remaining);
    EXPECT_EQ(read.annualMaximum, Currency::FromCents(100000));
    gic().WriteSetting(host::kOfficeSection, host::kAnnualCoverageKey, 0,
                       QStringLiteral("1500.00"));
    EXPECT_EQ(gic().GetCoverageYearToDate(maria, true).annualMaximum, Currency::FromCents(150000));
    EXPECT_THROW(gic().SetCoverageYearToDate(999999, true, figures), db::RowNotFoundError);

    bool changed = false;
    QWidget* owner = nullptr;
    QVariant fourth;
    EXPECT_THROW(Edit_Employer_For_Link(gic(), employer, owner, changed, fourth), NotImplemented);
}

// A writer inside the caller's transaction is part of it: the caller's rollback takes it back.
TEST_P(CoverageEngineTest, WriterJoinsTheCallersTransaction) {
    const QStringList before = chain().Snapshot();
    {
        db::Transaction outer(connection());
        JoseOnFirstPlan();
        EXPECT_EQ(chain().Coverages(jose).size(), 1);
    }
    EXPECT_EQ(chain().Snapshot(), before);
}

INSTANTIATE_TEST_SUITE_P(Engines, CoverageEngineTest, testing::ValuesIn(orvo::test::AllEngines()),
                         EngineParamName());

}  // namespace
}  // namespace orvo::insurance::test
