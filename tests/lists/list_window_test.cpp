// The list window through LookUpList.ShowList on both engines: what each list selects, the
// kind-2 rule, the delayed request of a child screen, the filter options per station, the
// persistent window, printing and a read that fails.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPrinter>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "component/surface/lookup_list_instance.h"
#include "host/list_events.h"
#include "insurance/insurance_tables.h"
#include "lists/frm_tg_list.h"
#include "lists/list_table_model.h"
#include "people/people_tables.h"
#include "platform/db/recordset.h"
#include "reminders/reminder_tables.h"
#include "tests/support/modal_driver.h"
#include "tests/support/practice_fixture.h"

namespace orvo::lists {
namespace {

using db::Engine;

class ListWindowTest : public test::PracticeTest {
protected:
    void DeclareTables(schema::Catalog& catalog) override {
        insurance::DeclareInsuranceTables(catalog);
        people::DeclarePeopleTables(catalog);
        reminders::DeclareReminderTables(catalog);
    }
    void SetUp() override {
        PracticeTest::SetUp();
        if (IsSkipped())
            return;
        list_ = std::make_unique<component::LookUpListInstance>();
        list_->SetIGlobal_GIC(&gic());
        list_->SetEventSink(&events_);
        list_->SetShowMode(1);
    }
    void TearDown() override {
        list_.reset();
        PracticeTest::TearDown();
    }

    void Sql(const QString& statement) { connection().Execute(statement); }

    // Shows the list modal and runs script inside it; a window the script leaves open is
    // closed.
    void Show(LookUpListTypes type, const std::function<void(frmTGList&)>& script) {
        test::ModalDriver driver;
        driver.On(QStringLiteral("frmTGList"),
                  [&](QDialog& dialog) { script(static_cast<frmTGList&>(dialog)); });
        list_->SetListType(type);
        list_->ShowList(false);
        ASSERT_EQ(driver.handled(QStringLiteral("frmTGList")), 1);
    }

    static QStringList Column(const frmTGList& window, const QString& caption) {
        const ListTableModel& model = window.model();
        QStringList values;
        for (int row = 0; row < model.rowCount(); ++row)
            values << model.RecordText(model.RecordOfRow(row), model.ColumnOf(caption));
        return values;
    }

    void AddPerson(int id, const QString& last, const QString& first, const QString& roleColumn,
                   const QString& role) {
        Sql(QStringLiteral("INSERT INTO PATable (pID, pLASNAM, pFIRNAM, %1, pFAMHEAIND) VALUES "
                           "(%2, '%3', '%4', '%5', %2)")
                .arg(roleColumn)
                .arg(id)
                .arg(last, first, role));
    }

    std::unique_ptr<component::LookUpListInstance> list_;
    host::HostListEvents events_;
};

// The list reads each kind of value the engines give (whole numbers of both widths, reals,
// texts within and beyond Latin-1 and beyond 16 bits, empty texts, nulls, dates) into the same
// text Qt gives for it, and sorts whole numbers as numbers. A column turns wide part way down.
TEST_P(ListWindowTest, LoadShowsEveryKindOfValueAsTheEngineGivesIt) {
    Sql("CREATE TABLE LoadProbe (k INTEGER, n INTEGER, b BIGINT, r DOUBLE PRECISION, "
        "t VARCHAR(40), d DATE)");
    Sql("INSERT INTO LoadProbe VALUES (1, 10, 9007199254740993, 2.5, 'Peña', '2024-02-29')");
    Sql("INSERT INTO LoadProbe VALUES (2, -42, -1, -0.125, 'Łukasik', NULL)");
    Sql("INSERT INTO LoadProbe VALUES (3, NULL, NULL, NULL, NULL, NULL)");
    Sql("INSERT INTO LoadProbe VALUES (4, 7, 0, 1e20, '', '1999-12-31')");
    Sql("INSERT INTO LoadProbe VALUES (5, 0, 123456789012, 3, 'Zoë 😀 Ærø', '2030-01-01')");
    const QString select = QStringLiteral("SELECT k, n, b, r, t, d FROM LoadProbe ORDER BY k");
    const QString texts = QStringLiteral("SELECT k, n, b, t FROM LoadProbe ORDER BY k");
    for (const QString& sql : {select, texts}) {
        ListTableModel model;
        model.Load(connection(), sql, {"K", "N", "B", "R", "T", "D"});
        ASSERT_EQ(model.TotalRows(), 5);
        db::Recordset expected(connection(), sql);
        for (int r = 0; !expected.Eof(); expected.MoveNext(), ++r) {
            for (int c = 0; c < expected.FieldCount(); ++c) {
                const QVariant value = expected.Value(c);
                EXPECT_EQ(model.RecordText(r, c), value.isNull() ? QString() : value.toString())
                    << r << c;
                EXPECT_EQ(model.RecordIsNull(r, c), value.isNull()) << r << c;
            }
        }
        if (sql == texts) {
            // Captions beyond the statement's columns read as nulls.
            EXPECT_TRUE(model.RecordIsNull(0, 4));
            EXPECT_TRUE(model.RecordIsNull(0, 5));
            continue;
        }
        model.SortBy({{1, Qt::AscendingOrder}});
        QStringList keys;
        for (int row = 0; row < model.rowCount(); ++row)
            keys << model.RecordText(model.RecordOfRow(row), 0);
        EXPECT_EQ(keys, (QStringList{"3", "2", "5", "4", "1"}));
        EXPECT_EQ(model.data(model.index(0, 1), Qt::TextAlignmentRole).toInt(),
                  int(Qt::AlignRight | Qt::AlignVCenter));
        // The accented and wide texts are found by the filter as typed.
        model.SetFilter(4, QStringLiteral("zoË 😀"));
        EXPECT_EQ(model.ShownRows(), 1);
        model.SetFilter(4, QStringLiteral("łu"));
        EXPECT_EQ(model.ShownRows(), 1);
    }
}

// A read that fails leaves the list empty and usable, and says why.
TEST_P(ListWindowTest, AFailedLoadLeavesTheListEmpty) {
    ListTableModel model;
    model.Load(connection(), QStringLiteral("SELECT InsCoInd, InsCoNam FROM InsCoTable"),
               {"ID", "Name"});
    EXPECT_THROW(
        model.Load(connection(), QStringLiteral("SELECT nothing FROM InsCoTable"), {"ID", "Name"}),
        db::DatabaseError);
    EXPECT_EQ(model.TotalRows(), 0);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 2);
}

TEST_P(ListWindowTest, DistinctRowIsRewrittenOnTheServerBeforeTheListIsRead) {
    Sql("INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (3, 'Summit Dental Trust')");
    Sql("INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (4, 'Harborline Health')");
    Show(lulInsuranceCo, [&](frmTGList& window) {
        const bool server = GetParam() == Engine::Postgres;
        EXPECT_EQ(window.SQL().contains(QStringLiteral("DISTINCTROW")), !server);
        EXPECT_EQ(window.SQL().contains(QStringLiteral("SELECT DISTINCT ")), server);
        EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("SQLLabel"))->text(), window.SQL());
        EXPECT_EQ(Column(window, QStringLiteral("Insurance Company")),
                  (QStringList{"Harborline Health", "Summit Dental Trust"}));
    });
    EXPECT_EQ(list_->ListTitle(), QStringLiteral("Insurance Company List"));
}

TEST_P(ListWindowTest, EachPersonListTakesItsOwnRole) {
    AddPerson(1, "Peña", "José", "pTypEmp", "1");
    AddPerson(2, "Müller", "Zoë", "pTypEmp", "2");
    AddPerson(3, "Okafor", "Chidi", "pTypEmp", "Z");
    AddPerson(4, "Andersson", "Björn", "pTypRef", "1");
    AddPerson(5, "Ramírez", "Inés", "pTypPhy", "1");
    Sql("UPDATE PATable SET pDOCSPE='Orthodontics' WHERE pID=5");
    Show(lulEmployee, [&](frmTGList& window) {
        EXPECT_EQ(Column(window, QStringLiteral("ID Num")), (QStringList{"2", "1"}));
        EXPECT_EQ(window.model().ColumnOf(QStringLiteral("Specialty")), -1);
    });
    EXPECT_EQ(gic().GetPersonTypeField(), QStringLiteral("pTypEmp"));
    Show(lulReferral, [&](frmTGList& window) {
        EXPECT_EQ(Column(window, QStringLiteral("Name")), QStringList{"Andersson, Björn"});
    });
    list_->SetListTitle(QString());
    list_->SetInitField(QStringLiteral("Orthodontics"));
    Show(lulPhysician1, [&](frmTGList& window) {
        EXPECT_EQ(window.model().Caption(0), QStringLiteral("Specialty"));
        EXPECT_EQ(window.model().Filter(0), QStringLiteral("Orthodontics"));
        EXPECT_EQ(Column(window, QStringLiteral("Name")), QStringList{"Ramírez, Inés"});
    });
}

TEST_P(ListWindowTest, ManagedCareShowsCapitationPlansWithALiveLinkOnly) {
    Sql("INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (1, 'Bluewater')");
    Sql("INSERT INTO EmpTable (EmpInd, EmpNam) VALUES (100, 'Riverfront Hospital')");
    Sql("INSERT INTO GroPlaTable (GroPlaInd, GroPlaInsID, GroPlaGroNum, GroPlaCat) VALUES "
        "(500, 1, 'CAP-LIVE', 'CAPITATION')");
    Sql("INSERT INTO GroPlaTable (GroPlaInd, GroPlaInsID, GroPlaGroNum, GroPlaCat) VALUES "
        "(501, 1, 'CAP-ENDED', 'CAPITATION')");
    Sql("INSERT INTO GroPlaTable (GroPlaInd, GroPlaInsID, GroPlaGroNum, GroPlaCat) VALUES "
        "(502, 1, 'PPO-LIVE', 'PPO')");
    Sql("INSERT INTO ELTable (elID, elEmpID, elInsID, elGroID, elFla) VALUES (1, 100, 1, 500, 0)");
    Sql("INSERT INTO ELTable (elID, elEmpID, elInsID, elGroID, elFla) VALUES (2, 100, 1, 501, 1)");
    Sql("INSERT INTO ELTable (elID, elEmpID, elInsID, elGroID, elFla) VALUES (3, 100, 1, 502, 0)");
    Show(lulCapPlans, [&](frmTGList& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Select Managed Care Plan ..."));
        EXPECT_EQ(Column(window, QStringLiteral("Group Number")), QStringList{"CAP-LIVE"});
    });
    // The insurance group list takes every live link, and leaves its count out.
    Show(lulInsGroup, [&](frmTGList& window) {
        EXPECT_EQ(Column(window, QStringLiteral("Group Number")),
                  (QStringList{"CAP-LIVE", "PPO-LIVE"}));
        EXPECT_TRUE(window.findChild<QLabel*>(QStringLiteral("RowLabel"))->text().isEmpty());
    });
    // The group plan list takes every plan, linked or not, keyed by the plan's own key; a
    // carrier given narrows it to that carrier's plans.
    Sql("INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (2, 'Peña Mutual')");
    Sql("INSERT INTO GroPlaTable (GroPlaInd, GroPlaInsID, GroPlaGroNum) VALUES (503, 2, 'MÜ-1')");
    Show(lulGroupPlan, [&](frmTGList& window) {
        EXPECT_EQ(Column(window, QStringLiteral("Group Number")),
                  (QStringList{"CAP-ENDED", "CAP-LIVE", "MÜ-1", "PPO-LIVE"}));
        EXPECT_EQ(Column(window, QStringLiteral("Grp ID")),
                  (QStringList{"501", "500", "503", "502"}));
    });
    list_->SetGroupPlanCompanyID(2);
    Show(lulGroupPlan, [&](frmTGList& window) {
        EXPECT_EQ(Column(window, QStringLiteral("Insurance Company")), QStringList{"Peña Mutual"});
    });
}

TEST_P(ListWindowTest, ADelayedGotoRaisesItsRequestExactlyOnceAndCloses) {
    AddPerson(21, "García", "Lucía", "pTypPat", "1");
    Show(lulFamilyHead, [&](frmTGList& window) {
        window.SetTimerTag(QStringLiteral("GOTO,PATIENT,21"));
        QTest::qWait(450);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(events_.Take(), QStringList{"SwapModuleCalled PATIENT 21"});
}

TEST_P(ListWindowTest, FilterOptionsAreKeptPerStationUnderTheListsLayoutKey) {
    Sql("INSERT INTO InsCoTable (InsCoInd, InsCoNam) VALUES (3, 'Summit Dental Trust')");
    Show(lulInsuranceCo, [&](frmTGList& window) {
        EXPECT_FALSE(window.FilterSearchAny);
        window.findChild<QRadioButton*>(QStringLiteral("optFiltMid"))->click();
        EXPECT_TRUE(window.FilterSearchAny);
    });
    session_.stationId = QStringLiteral("BACK2");
    Show(lulInsuranceCo, [&](frmTGList& window) {
        EXPECT_FALSE(window.FilterSearchAny);
        window.findChild<QCheckBox*>(QStringLiteral("chkAutoClearFilter"))->click();
    });
    const auto stored = [&](const QString& key) {
        return gic().ReadSetting(QStringLiteral("frmTGList_INS"), key, 0, QVariant()).toString();
    };
    EXPECT_EQ(stored("FRONT1FILTER_SRCH_ANY"), QStringLiteral("true"));
    EXPECT_EQ(stored("FRONT1FILTER_AUTO_CLEAR"), QString());
    EXPECT_EQ(stored("BACK2FILTER_SRCH_ANY"), QString());
    EXPECT_EQ(stored("BACK2FILTER_AUTO_CLEAR"), QStringLiteral("true"));
    session_.stationId = QStringLiteral("FRONT1");
    Show(lulInsuranceCo, [&](frmTGList& window) {
        EXPECT_TRUE(window.FilterSearchAny);
        window.SetColumnFilter(QStringLiteral("Insurance Company"), QStringLiteral("DENTAL"));
        EXPECT_EQ(window.model().rowCount(), 1);
    });
}

// ShowMode 0 keeps one window for the instance: shown modeless, it hands its choice back when
// it closes, and comes back on the next ShowList with its filter cleared when asked to.
TEST_P(ListWindowTest, ThePersistentWindowStaysAndHandsItsChoiceBack) {
    Sql("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (31, 'Main Street Pharmacy')");
    Sql("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (32, 'Corner Drug')");
    list_->SetShowMode(0);
    list_->SetListType(lulPharmacy);
    list_->ShowList(false);
    frmTGList* window = list_->Window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    window->findChild<QCheckBox*>(QStringLiteral("chkAutoClearFilter"))->click();
    window->SetColumnFilter(QStringLiteral("Pharmacy"), QStringLiteral("main"));
    window->RunCommand(QStringLiteral("Okay"));
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(list_->SelectedID(), 31);
    EXPECT_EQ(list_->Select_String(), QStringLiteral("Main Street Pharmacy"));

    list_->SetSelectedID(0);
    list_->ShowList(false);
    EXPECT_EQ(list_->Window(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->model().rowCount(), 2);
    window->RunCommand(QStringLiteral("Close"));
    EXPECT_EQ(list_->SelectedID(), 0);
}

TEST_P(ListWindowTest, PrintRaisesItsEventsAroundThePrintOrItsCancel) {
    Sql("INSERT INTO PhaTable (PhaID, PhaNam) VALUES (31, 'Main Street Pharmacy')");
    const QString pdf = database_->folder() + QStringLiteral("/list.pdf");
    Show(lulPharmacy, [&](frmTGList& window) {
        window.ChoosePrinter = [&](QPrinter& printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(pdf);
            return true;
        };
        events_.cancelPrint = true;
        window.RunCommand(QStringLiteral("Print"));
        EXPECT_FALSE(QFile::exists(pdf));
        events_.cancelPrint = false;
        window.RunCommand(QStringLiteral("Print"));
        EXPECT_TRUE(QFile::exists(pdf));
    });
    EXPECT_EQ(events_.Take(),
              (QStringList{"BeforePrint", "AfterPrint", "BeforePrint", "AfterPrint"}));
}

TEST_P(ListWindowTest, FamilyHeadsAreChosenSeveralAtOnce) {
    AddPerson(21, "García", "Lucía", "pTypPat", "1");
    AddPerson(23, "Novák", "Tomáš", "pTypPat", "1");  // both listed as heads by the database
    test::ModalDriver driver;
    driver.On(QStringLiteral("frmTGList"), [&](QDialog& dialog) {
        auto& window = static_cast<frmTGList&>(dialog);
        auto* grid = window.findChild<QAbstractItemView*>(QStringLiteral("DotNetGrid"));
        grid->selectAll();
        EXPECT_EQ(window.SelectedIds(), (QList<int>{21, 23}));
        window.RunCommand(QStringLiteral("Okay"));
    });
    list_->SetListType(lulFamilyHead);
    list_->ShowList(true);
    EXPECT_EQ(list_->MultiSel(), 1);
    EXPECT_EQ(list_->Select_String(), QStringLiteral("21,23"));
}

TEST_P(ListWindowTest, AReadThatFailsIsToldAndLeavesTheListEmptyAndUsable) {
    Sql("DROP TABLE PhaTable");
    prompts_.ExpectContaining(QStringLiteral("Pharmacy List"), QStringLiteral("PhaTable"),
                              AnswerOk);
    Show(lulPharmacy, [&](frmTGList& window) {
        EXPECT_EQ(window.model().rowCount(), 0);
        EXPECT_TRUE(window.ListEmpty);
        EXPECT_FALSE(window.ToolItem(QStringLiteral("Edit"))->isEnabled());
        window.RunCommand(QStringLiteral("RemFilt"));
        window.RunCommand(QStringLiteral("Close"));
    });
}

INSTANTIATE_TEST_SUITE_P(Engines, ListWindowTest, testing::ValuesIn(test::AllEngines()),
                         test::EngineParamName());

}  // namespace
}  // namespace orvo::lists
