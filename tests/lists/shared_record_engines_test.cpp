// The delete and replace engines of employers, carriers, group plans and pharmacies on both
// engines: who moves where, the notes, what is deleted, and a failure at every statement of
// every engine leaving the practice as it was.
#include <QRegularExpression>

#include "component/record_lock.h"
#include "lists/engines/held_records.h"
#include "lists/engines/provider_delete.h"
#include "lists/engines/shared_record_engines.h"
#include "tests/insurance/coverage_fixture.h"
#include "tests/support/statement_fault.h"

namespace orvo::lists {
namespace {

using insurance::test::ChainBuilder;
using insurance::test::CoverageTest;
using test::StatementFault;

class SharedRecordEngineTest : public CoverageTest {
protected:
    void SetUp() override {
        CoverageTest::SetUp();
        if (IsSkipped())
            return;
        // Two families at one employer on a Bluewater plan; the spouse is covered through the
        // head. A second employer has the same carrier on another plan.
        jose = chain().Person(QStringLiteral("Peña"), QStringLiteral("José"));
        maria = chain().Person(QStringLiteral("Peña"), QStringLiteral("María"), jose);
        zoe = chain().Person(QStringLiteral("Müller"), QStringLiteral("Zoë"));
        acme = chain().Employer(QStringLiteral("Ōsaka Trading"));
        other = chain().Employer(QStringLiteral("Keystone Mills"));
        bluewater = chain().Carrier(QStringLiteral("Bluewater Dental"));
        keystone = chain().Carrier(QStringLiteral("Keystone Mutual"));
        planB1 = Plan(QStringLiteral("B1"), bluewater);
        planB2 = Plan(QStringLiteral("B2"), bluewater);
        acmeB1 = chain().Link(acme, bluewater, planB1);
        otherB2 = chain().Link(other, bluewater, planB2);
        Subscribe(jose, 0, acmeB1);
        Cover(maria, chain().PatEmp(jose, acmeB1));
        Subscribe(zoe, 0, otherB2);
    }

    int Plan(const QString& number, int carrier) {
        return static_cast<int>(connection().InsertWithIdentity(
            QStringLiteral("INSERT INTO GroPlaTable (GroPlaGroNum, GroPlaInsID) VALUES ('%1', %2)")
                .arg(number)
                .arg(carrier)));
    }
    void Detail(int carrier, const QString& number, const QString& code) {
        connection().Execute(QStringLiteral("INSERT INTO IPTable (IPInsCoID, IPGroNum, IPCod) "
                                            "VALUES (%1, '%2', '%3')")
                                 .arg(carrier)
                                 .arg(number, code));
    }
    // The live link the person subscribes through, 0 when none.
    int LiveLinkOf(int person) {
        return chain().Long(QStringLiteral("SELECT PatEmpElID FROM PatEmpTable INNER JOIN ELTable "
                                           "ON PatEmpElID = elID WHERE PatEmpPatID = %1 AND "
                                           "PatEmpFla = 0 AND elFla = 0")
                                .arg(person));
    }
    // "employer carrier plan" of a link.
    QString LinkOf(int elID) {
        db::Recordset rs(connection(),
                         QStringLiteral("SELECT elEmpID, elInsID, elGroID FROM ELTable WHERE "
                                        "elID = %1")
                             .arg(elID));
        if (rs.IsEmpty())
            return QStringLiteral("<no link>");
        return QStringLiteral("%1 %2 %3").arg(rs.Long(0)).arg(rs.Long(1)).arg(rs.Long(2));
    }
    QStringList Notes(int person, const QString& source) {
        QStringList out;
        db::Recordset rs(connection(),
                         QStringLiteral("SELECT cmDoc FROM cmTable WHERE cmPID = %1 AND "
                                        "cmSouKey = '%2' ORDER BY cmID")
                             .arg(person)
                             .arg(source));
        for (; !rs.Eof(); rs.MoveNext())
            out << rs.Text(0);
        return out;
    }
    int Rows(const QString& sql) { return chain().Long(sql); }
    // Every table an engine may write, for before-and-after checks.
    QStringList Snapshot() {
        QStringList out = chain().Snapshot();
        for (const auto& [table, key] : {std::pair{"GroPlaTable", "GroPlaInd"},
                                         {"InsCoTable", "InsCoInd"},
                                         {"EmpTable", "EmpInd"},
                                         {"PhaTable", "PhaID"},
                                         {"IPTable", "IPRecNum"},
                                         {"AudTable", "AudID"},
                                         {"RecTable", "rRecNum"},
                                         {"ATTable", "ATID"},
                                         {"ABKTable", "ABKID"},
                                         {"ApTable", "APID"}}) {
            db::Recordset rs(connection(), QStringLiteral("SELECT * FROM %1 ORDER BY %2")
                                               .arg(QLatin1String(table), QLatin1String(key)));
            for (; !rs.Eof(); rs.MoveNext()) {
                QStringList row;
                for (int i = 0; i < rs.FieldCount(); ++i)
                    row << rs.Text(i);
                out << QLatin1String(table) + QLatin1Char(':') + row.join(QLatin1Char('|'));
            }
        }
        return out;
    }

    int jose = 0, maria = 0, zoe = 0;
    int acme = 0, other = 0, bluewater = 0, keystone = 0;
    int planB1 = 0, planB2 = 0, acmeB1 = 0, otherB2 = 0;
};

const QString kHeadTail = QStringLiteral("by user JDOE on 03/15/2024 at \\d\\d:\\d\\d [ap]m");

TEST_P(SharedRecordEngineTest, CountsReadSubscribersCoveragesAndPharmacyPatients) {
    int n = -1;
    ASSERT_TRUE(CountCarrierPatients(gic(), bluewater, n));
    EXPECT_EQ(n, 2);  // subscribers, not the spouse covered through one
    ASSERT_TRUE(CountCarrierCoverages(gic(), bluewater, n));
    EXPECT_EQ(n, 3);
    ASSERT_TRUE(CountGroupPlanPatients(gic(), planB1, n));
    EXPECT_EQ(n, 1);
    ASSERT_TRUE(CountEmployerPatients(gic(), other, n));
    EXPECT_EQ(n, 1);
    ASSERT_TRUE(CountLinkPatients(gic(), acmeB1, n));
    EXPECT_EQ(n, 1);
    ASSERT_TRUE(CountCarrierPatients(gic(), keystone, n));
    EXPECT_EQ(n, 0);
    connection().Execute(QStringLiteral("UPDATE PATable SET pPhaID = 9 WHERE pID <> %1").arg(zoe));
    ASSERT_TRUE(CountPharmacyPatients(gic(), 9, n));
    EXPECT_EQ(n, 2);
    // Who a carrier engine touches: subscribers and those covered through them, by name.
    QStringList names;
    for (const AffectedPerson& p : AffectedPersons(gic(), SharedRecord::Carrier, bluewater))
        names << p.name;
    EXPECT_EQ(names, (QStringList{"Müller, Zoë", "Peña, José", "Peña, María"}));
}

TEST_P(SharedRecordEngineTest, CarrierReplaceMovesEverySubscriberAndItsCoverageWithANote) {
    // A link ended long ago keeps its own end.
    const int oldLink = chain().Link(acme, bluewater, planB1);
    connection().Execute(QStringLiteral("UPDATE ELTable SET elFla = 1, elEndDat = #01/05/2024#, "
                                        "elEndWho = 'OLDUSER' WHERE elID = %1")
                             .arg(oldLink));
    int steps = 0;
    Replace_Carrier_Links(gic(), bluewater, keystone, [&](int done, int total) {
        EXPECT_EQ(total, 2);
        steps = done;
    });
    EXPECT_EQ(steps, 2);
    const int joseLink = LiveLinkOf(jose);
    EXPECT_EQ(LinkOf(joseLink), QStringLiteral("%1 %2 %3").arg(acme).arg(keystone).arg(planB1));
    EXPECT_EQ(LinkOf(LiveLinkOf(zoe)),
              QStringLiteral("%1 %2 %3").arg(other).arg(keystone).arg(planB2));
    // The spouse's coverage went along to the head's new subscriber link.
    EXPECT_NE(chain().Coverage(maria, chain().PatEmp(jose, joseLink)), 0);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM ELTable WHERE elInsID = %1 AND elFla = 0")
                       .arg(bluewater)),
              0);
    EXPECT_EQ(
        chain().Text(QStringLiteral("SELECT elEndWho FROM ELTable WHERE elID = %1").arg(acmeB1)),
        QStringLiteral("JDOE"));
    EXPECT_EQ(
        chain().Text(QStringLiteral("SELECT elEndWho FROM ELTable WHERE elID = %1").arg(oldLink)),
        QStringLiteral("OLDUSER"));
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM GroPlaTable WHERE GroPlaInsID = %1")
                       .arg(keystone)),
              2);
    const QStringList notes = Notes(jose, QStringLiteral("LogInsCo"));
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(QRegularExpression(
                    QStringLiteral("^The following insurance company was replaced ") + kHeadTail +
                    QStringLiteral("\r\n\r\n---- Original Insurance Company ----\r\nID Number : "
                                   "%1\r\nName : Bluewater Dental\r\n\r\n---- New Insurance "
                                   "Company ----\r\nID Number : %2\r\nName : Keystone Mutual$")
                        .arg(bluewater)
                        .arg(keystone))
                    .match(notes[0])
                    .hasMatch())
        << notes[0].toStdString();
    EXPECT_TRUE(Notes(maria, QStringLiteral("LogInsCo")).isEmpty()) << "notes go to subscribers";
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
}

TEST_P(SharedRecordEngineTest, CarrierDeleteSendsSubscribersToNoInsuranceAndTakesItsPlans) {
    Detail(bluewater, QStringLiteral("B1"), QStringLiteral("D1110"));
    Detail(bluewater, QStringLiteral("B2"), QStringLiteral("D2150"));
    Detail(keystone, QStringLiteral("B1"), QStringLiteral("D1110"));  // another carrier's B1
    Delete_Carrier_Record(gic(), bluewater);
    const int joseLink = LiveLinkOf(jose);
    EXPECT_EQ(LinkOf(joseLink), QStringLiteral("%1 0 0").arg(acme));
    EXPECT_EQ(LinkOf(LiveLinkOf(zoe)), QStringLiteral("%1 0 0").arg(other));
    EXPECT_EQ(Rows("SELECT count(*) FROM CovTable WHERE CovFla = 0"), 0);
    EXPECT_EQ(
        Rows(QStringLiteral("SELECT count(*) FROM InsCoTable WHERE InsCoInd = %1").arg(bluewater)),
        0);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM GroPlaTable")), 0);
    EXPECT_EQ(
        Rows(QStringLiteral("SELECT count(*) FROM IPTable WHERE IPInsCoID = %1").arg(bluewater)),
        0);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM IPTable")), 1);
    const QStringList notes = Notes(zoe, QStringLiteral("LogInsCo"));
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^The following insurance company was deleted ") +
                                   kHeadTail +
                                   QStringLiteral("\r\nID Number : %1\r\nInsurance Company : "
                                                  "Bluewater Dental$")
                                       .arg(bluewater))
                    .match(notes[0])
                    .hasMatch())
        << notes[0].toStdString();
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
    // Deleted by another station meanwhile: refused, and nothing stays.
    const QStringList before = Snapshot();
    EXPECT_THROW(Delete_Carrier_Record(gic(), bluewater), db::RowNotFoundError);
    EXPECT_EQ(Snapshot(), before);
}

TEST_P(SharedRecordEngineTest, GroupPlanDeleteWithTwoCarriersDeletesTheDetailsOfBoth) {
    // Plan B1 is offered by Keystone too, at the other employer.
    const int otherK1 = chain().Link(other, keystone, planB1);
    const int ana = chain().Person(QStringLiteral("Nuñez"), QStringLiteral("Ana"));
    Subscribe(ana, 0, otherK1);
    Detail(bluewater, QStringLiteral("B1"), QStringLiteral("D1110"));
    Detail(keystone, QStringLiteral("B1"), QStringLiteral("D1110"));
    Detail(bluewater, QStringLiteral("B2"), QStringLiteral("D1110"));
    Delete_GroupPlan_Record(gic(), planB1);
    EXPECT_EQ(Rows("SELECT count(*) FROM IPTable WHERE IPGroNum = 'B1'"), 0);
    EXPECT_EQ(Rows("SELECT count(*) FROM IPTable WHERE IPGroNum = 'B2'"), 1);
    EXPECT_EQ(LinkOf(LiveLinkOf(ana)), QStringLiteral("%1 0 0").arg(other));
    EXPECT_EQ(LinkOf(LiveLinkOf(jose)), QStringLiteral("%1 0 0").arg(acme));
    EXPECT_EQ(LiveLinkOf(zoe), otherB2) << "a subscriber of another plan stays";
    EXPECT_EQ(
        Rows(QStringLiteral("SELECT count(*) FROM GroPlaTable WHERE GroPlaInd = %1").arg(planB1)),
        0);
    EXPECT_EQ(Notes(ana, QStringLiteral("LogIP")).size(), 1);
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
}

TEST_P(SharedRecordEngineTest, EmployerReplaceTakesTheNewEmployersOwnLinks) {
    // The other employer already offers B1, and has its No Insurance link.
    const int otherB1 = chain().Link(other, bluewater, planB1);
    const int otherNone = chain().Link(other, 0, 0);
    const int acmeNone = chain().Link(acme, 0, 0);
    const int ana = chain().Person(QStringLiteral("Nuñez"), QStringLiteral("Ana"));
    Subscribe(ana, 0, acmeNone);
    const int links = Rows("SELECT count(*) FROM ELTable");
    Replace_Employer_Links(gic(), acme, other);
    EXPECT_EQ(LiveLinkOf(jose), otherB1);
    EXPECT_EQ(LiveLinkOf(ana), otherNone);
    EXPECT_EQ(Rows("SELECT count(*) FROM ELTable"), links) << "no new link was needed";
    EXPECT_EQ(Notes(ana, QStringLiteral("LogEmp")).size(), 1);
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
}

TEST_P(SharedRecordEngineTest, EmployerDeleteTakesItsSubscribersOffAndLeavesOthers) {
    Delete_Employer_Record(gic(), acme);
    EXPECT_EQ(LiveLinkOf(jose), 0);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM CovTable WHERE CovFla = 0 AND CovPatID = "
                                  "%1")
                       .arg(maria)),
              0);
    EXPECT_EQ(LiveLinkOf(zoe), otherB2);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM EmpTable WHERE EmpInd = %1").arg(acme)), 0);
    const QStringList notes = Notes(jose, QStringLiteral("LogEmp"));
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(notes[0].endsWith(
        QStringLiteral("\r\nEmployer ID Number : %1\r\nEmployer Name : Ōsaka Trading").arg(acme)));
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
}

TEST_P(SharedRecordEngineTest, PharmacyReplaceWritesNoNotesAndDeleteLeavesTheIdBehind) {
    connection().Execute("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (7, 'Corner Drug')");
    connection().Execute("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (8, 'Apotheke Köln')");
    connection().Execute(
        QStringLiteral("UPDATE PATable SET pPhaID = 7 WHERE pID IN (%1, %2)").arg(jose).arg(zoe));
    const int notes = Rows("SELECT count(*) FROM cmTable");
    Replace_Pharmacy_Patients(gic(), 7, 8);
    EXPECT_EQ(Rows("SELECT count(*) FROM PATable WHERE pPhaID = 8"), 2);
    EXPECT_EQ(Rows("SELECT count(*) FROM cmTable"), notes);
    Delete_Pharmacy_Record(gic(), 8);
    EXPECT_EQ(Rows("SELECT count(*) FROM PhaTable"), 1);
    EXPECT_EQ(Rows("SELECT count(*) FROM PATable WHERE pPhaID = 8"), 2);
}

TEST_P(SharedRecordEngineTest, EmployerPlanRemovedAndReplacedOneLinkAtATime) {
    const int acmeK = chain().Link(acme, keystone, planB2);
    Replace_Employer_Plan_Links(gic(), acmeB1, acmeK);
    EXPECT_EQ(LiveLinkOf(jose), acmeK);
    EXPECT_EQ(Rows(QStringLiteral("SELECT elFla FROM ELTable WHERE elID = %1").arg(acmeB1)), 0)
        << "replacing a plan of an employer leaves the link for others to join";
    Remove_Employer_Plan(gic(), acmeK);
    EXPECT_EQ(LinkOf(LiveLinkOf(jose)), QStringLiteral("%1 0 0").arg(acme));
    EXPECT_EQ(Rows(QStringLiteral("SELECT elFla FROM ELTable WHERE elID = %1").arg(acmeK)), 1);
    const QStringList notes = Notes(jose, QStringLiteral("LogEmp"));
    ASSERT_EQ(notes.size(), 2);
    EXPECT_TRUE(
        notes[1].endsWith(QStringLiteral("\r\nEmployer : Ōsaka Trading\r\nInsurance Company : "
                                         "Keystone Mutual\r\nGroup Number : B2")))
        << notes[1].toStdString();
    // A No Insurance link is left alone.
    const QStringList before = Snapshot();
    Remove_Employer_Plan(gic(), LiveLinkOf(jose));
    EXPECT_EQ(Snapshot(), before);
}

TEST_P(SharedRecordEngineTest, ARecordOpenForEditingIsNamedWithItsHolder) {
    const QList<AffectedPerson> persons = AffectedPersons(gic(), SharedRecord::Carrier, bluewater);
    EXPECT_TRUE(HeldPatientRecords(gic(), persons).isEmpty());
    int file = component::LockRecord(gic(), QStringLiteral("PATABLE"), maria, false);
    ASSERT_GT(file, 0);
    const QList<HeldPerson> held = HeldPatientRecords(gic(), persons);
    ASSERT_EQ(held.size(), 1);
    EXPECT_EQ(held[0].person.pID, maria);
    EXPECT_EQ(held[0].user, QStringLiteral("JDOE"));
    EXPECT_TRUE(HeldRecordsText(held).endsWith(
        QStringLiteral("\r\n\r\nPeña, María (user JDOE on computer FRONT1)")));
    component::UnlockRecord(gic(), QStringLiteral("PATABLE"), maria, file);
    EXPECT_TRUE(HeldPatientRecords(gic(), persons).isEmpty()) << "a released lock is free";
}

class SharedRecordFaultTest : public SharedRecordEngineTest {
protected:
    // Runs the work with a failure at its first statement, then its second, and so on, checking
    // after each that nothing of it stayed (no link, no note, no audit line); then lets it run
    // to its end, which must change something. Answers the number of statements it sends.
    int FailEachStatement(const std::function<void()>& work) {
        const QStringList before = Snapshot();
        for (int failAt = 1;; ++failAt) {
            bool failed = false;
            int sent = 0;
            {
                StatementFault fault(connection(), failAt);
                try {
                    work();
                } catch (const db::DatabaseError&) {
                    failed = true;
                }
                sent = fault.sent();
            }
            if (!failed) {
                EXPECT_LT(sent, failAt);
                EXPECT_NE(Snapshot(), before) << "the work changed nothing";
                return failAt - 1;
            }
            EXPECT_FALSE(connection().InTransaction());
            EXPECT_EQ(Snapshot(), before) << "after a failure at statement " << failAt;
            if (testing::Test::HasFailure())
                return failAt;
        }
    }
    // The work as the list command runs it: the answer's audit line in the same transaction.
    std::function<void()> Audited(const std::function<void()>& engine) {
        return [this, engine] {
            db::Transaction transaction(connection(), db::Transaction::Write);
            gic().WriteAuditLog(QStringLiteral("INS_LOG"), QStringLiteral("DELETE"),
                                QStringLiteral("answer"));
            engine();
            transaction.Commit();
        };
    }
};

TEST_P(SharedRecordFaultTest, AFailureAtAnyStatementOfAnyEngineLeavesNothing) {
    const int acmeK = chain().Link(acme, keystone, planB2);
    const int otherNone = chain().Link(other, 0, 0);
    Detail(bluewater, QStringLiteral("B1"), QStringLiteral("D1110"));
    connection().Execute("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (7, 'Corner Drug')");
    connection().Execute("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (8, 'Apotheke Köln')");
    connection().Execute(QStringLiteral("UPDATE PATable SET pPhaID = 7 WHERE pID = %1").arg(jose));
    (void)otherNone;

    EXPECT_GT(
        FailEachStatement(Audited([&] { Replace_Employer_Plan_Links(gic(), acmeB1, acmeK); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Remove_Employer_Plan(gic(), acmeK); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Replace_Employer_Links(gic(), other, acme); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Replace_GroupPlan_Links(gic(), planB2, planB1); })),
              5);
    EXPECT_GT(
        FailEachStatement(Audited([&] { Replace_Carrier_Links(gic(), bluewater, keystone); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Delete_GroupPlan_Record(gic(), planB1); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Delete_Carrier_Record(gic(), keystone); })), 5);
    EXPECT_GT(FailEachStatement(Audited([&] { Delete_Employer_Record(gic(), acme); })), 5);
    EXPECT_GE(FailEachStatement(Audited([&] { Replace_Pharmacy_Patients(gic(), 7, 8); })), 2);
    EXPECT_GE(FailEachStatement(Audited([&] { Delete_Pharmacy_Record(gic(), 7); })), 2);
    EXPECT_EQ(chain().InvariantFaults(), QStringList());
}

TEST_P(SharedRecordFaultTest, AProviderDeleteFailingAnywhereLeavesTheBookAndPatients) {
    connection().Execute("UPDATE PATable SET pTypDoc = '1', pDocIni = 'ZM' WHERE pID = " +
                         QString::number(zoe));
    connection().Execute("UPDATE PATable SET pTypDoc = '1', pDocIni = 'JP' WHERE pID = " +
                         QString::number(jose));
    connection().Execute("UPDATE PATable SET pPROIND = " + QString::number(zoe));
    connection().Execute("INSERT INTO RecTable (rPID, rRecDoc, rRecDocID) VALUES (1, 'ZM', " +
                         QString::number(zoe) + ")");
    connection().Execute("INSERT INTO ATTable (ATDr, ATDay) VALUES (" + QString::number(zoe) +
                         ", 2)");
    const QString row = QStringLiteral("%1%2").arg(jose, 3).arg(zoe, 3);
    for (const char* day : {"#03/15/2024#", "#03/22/2024#", "#03/01/2024#"}) {
        connection().Execute(QStringLiteral("INSERT INTO ABKTable (ABKDat, ABKTemPla) VALUES (%1, "
                                            "'%2')")
                                 .arg(QLatin1String(day), row));
        connection().Execute(QStringLiteral("INSERT INTO ApTable (APPatID, APDrID, APDat) VALUES "
                                            "(%1, %2, %3)")
                                 .arg(maria)
                                 .arg(zoe)
                                 .arg(QLatin1String(day)));
    }
    const auto book = [&](const QString& sql) {
        QStringList out;
        db::Recordset rs(connection(), sql);
        for (; !rs.Eof(); rs.MoveNext())
            out << rs.Text(0) + QLatin1Char('|') + rs.Text(1);
        return out;
    };
    const QString bookSql = QStringLiteral("SELECT ABKTemPla, ABKDat FROM ABKTable ORDER BY ABKID");
    const QString appointmentsSql =
        QStringLiteral("SELECT APDrID, APDat FROM ApTable ORDER BY APID");
    const QStringList bookBefore = book(bookSql);
    const QStringList appointmentsBefore = book(appointmentsSql);
    const int statements = FailEachStatement([&] {
        EXPECT_EQ(book(bookSql), bookBefore);
        EXPECT_EQ(book(appointmentsSql), appointmentsBefore);
        Delete_Provider(gic(), zoe, jose);
    });
    EXPECT_GT(statements, 8);
    const QString emptied = QStringLiteral("%1   ").arg(jose, 3);
    EXPECT_EQ(chain().Text(QStringLiteral("SELECT ABKTemPla FROM ABKTable WHERE ABKDat = "
                                          "#03/22/2024#")),
              emptied);
    EXPECT_EQ(chain().Text(QStringLiteral("SELECT ABKTemPla FROM ABKTable WHERE ABKDat = "
                                          "#03/01/2024#")),
              row)
        << "a day gone by keeps its template";
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM ApTable WHERE APDrID = %1").arg(zoe)), 1);
    EXPECT_EQ(Rows(QStringLiteral("SELECT count(*) FROM PATable WHERE pPROIND = %1").arg(jose)),
              Rows("SELECT count(*) FROM PATable"));
    EXPECT_EQ(chain().Text("SELECT rRecDoc FROM RecTable"), QStringLiteral("JP"));
    EXPECT_EQ(chain().PersonColumn(zoe, QStringLiteral("pTypDoc")), QStringLiteral("Z"));
    EXPECT_EQ(Rows("SELECT count(*) FROM ATTable"), 0);
}

TEST(ProviderTemplate, OnlyTheProvidersOwnFieldEmpties) {
    EXPECT_EQ(RemoveProviderFromTemplate(QStringLiteral(" 12 1 12"), 12),
              QStringLiteral("    1    "));
    EXPECT_EQ(RemoveProviderFromTemplate(QStringLiteral("112 12"), 12), QStringLiteral("112   "))
        << "112 is another provider";
    EXPECT_EQ(RemoveProviderFromTemplate(QStringLiteral("      "), 12), QStringLiteral("      "));
    EXPECT_EQ(RemoveProviderFromTemplate(QStringLiteral("  7 1"), 1), QStringLiteral("  7   "))
        << "a last field shorter than the width";
}

INSTANTIATE_TEST_SUITE_P(Engines, SharedRecordEngineTest,
                         testing::ValuesIn(orvo::test::AllEngines()), test::EngineParamName());
INSTANTIATE_TEST_SUITE_P(Engines, SharedRecordFaultTest,
                         testing::ValuesIn(orvo::test::AllEngines()), test::EngineParamName());

}  // namespace
}  // namespace orvo::lists
