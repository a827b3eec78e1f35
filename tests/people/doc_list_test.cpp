#include <gtest/gtest.h>

#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "component/session.h"
#include "people/doc_list.h"
#include "people_fixture.h"
#include "tests/support/qt_print.h"

namespace orvo::people::test {
namespace {

class DocListTest : public PeopleTest {
protected:
    void SetUp() override {
        PeopleTest::SetUp();
        component::session().ListCommand.clear();
    }
    void TearDown() override {
        component::session().ListCommand.clear();
        PeopleTest::TearDown();
    }
    std::unique_ptr<DocList> Open(const QString& field, const QString& command) {
        Host().PutPersonTypeField(field);
        component::session().ListCommand = command;
        auto list = std::make_unique<DocList>(Host());
        list->show();
        return list;
    }
    QTableView& Grid(DocList& list) { return *list.findChild<QTableView*>("grdList"); }
    QPushButton& Button(DocList& list, const char* name) {
        return *list.findChild<QPushButton*>(name);
    }
    QStringList Names(DocList& list) {
        QStringList names;
        for (int r = 0; r < list.rowCount(); ++r)
            names << Grid(list).model()->index(r, 0).data().toString();
        return names;
    }
};

TEST_P(DocListTest, ProvidersInBothStatesAreListedAndOnePickIsTheResult) {
    AddPerson({"pLasNam", "pFirNam", "pProTTL", "pDocIni", "pTypDoc"},
              {"'Ortiz'", "'Ana'", "' DDS'", "'AO'", "'1'"});
    const int hyg = AddPerson({"pLasNam", "pFirNam", "pDocIni", "pTypDoc"},
                              {"'Báez'", "'Lena'", "'LB'", "'2'"});
    AddPerson({"pLasNam", "pFirNam", "pTypDoc"}, {"'Gone'", "'Tom'", "'Z'"});
    AddPerson({"pLasNam", "pFirNam", "pTypDoc"}, {"'Patient'", "'Pat'", "'0'"});
    auto list = Open(QStringLiteral("PTYPDOC"), QString());
    EXPECT_EQ(list->windowTitle(), "Provider List");
    EXPECT_EQ(Names(*list), QStringList({"Báez, Lena", "Ortiz, Ana DDS"}));
    EXPECT_FALSE(Button(*list, "cmdCancel").isVisible());
    EXPECT_FALSE(Button(*list, "cmdSelectAll").isVisible());
    Grid(*list).selectRow(0);
    Host().PutEditResultID(99);
    QTest::mouseClick(&Button(*list, "cmdOK"), Qt::LeftButton);
    EXPECT_EQ(list->result(), QDialog::Accepted);
    EXPECT_EQ(list->chosen(), QList<int>{hyg});
    EXPECT_EQ(Host().GetEditResultID(), hyg);
    EXPECT_EQ(component::session().ListCommand, "");
}

TEST_P(DocListTest, MultiSelectMarksSeveral) {
    QList<int> ids;
    for (const char* name : {"'Reyes'", "'Novak'", "'Chen'"})
        ids << AddPerson({"pLasNam", "pFirNam", "pTypPhy"}, {name, "'Dr'", "'1'"});
    std::sort(ids.begin(), ids.end());
    auto list = Open(QStringLiteral("pTypPhy"), QStringLiteral("multiselect"));
    EXPECT_EQ(list->windowTitle(), "Physician List (multi-select)");
    EXPECT_EQ(list->layoutKey(), "DLPHY");
    QTest::mouseClick(&Button(*list, "cmdSelectAll"), Qt::LeftButton);
    QTest::mouseClick(&Button(*list, "cmdOK"), Qt::LeftButton);
    EXPECT_EQ(list->chosen(), ids);
    // Several picks leave the single-result slot empty.
    EXPECT_EQ(Host().GetEditResultID(), 0);
    EXPECT_TRUE(QFile::exists(session_.dataPath + "STP/DLPHYM.STP"));
    EXPECT_FALSE(QFile::exists(session_.dataPath + "STP/DLPHY.STP"));
}

TEST_P(DocListTest, CancelAndTheCallersOwnRows) {
    auto list = Open(QStringLiteral("PTYPEMP"), QStringLiteral("CANCEL_BUTTON"));
    EXPECT_EQ(list->windowTitle(), "Employee List");
    EXPECT_TRUE(Button(*list, "cmdCancel").isVisible());
    EXPECT_EQ(component::session().ListCommand, "");
    EXPECT_TRUE(Grid(*list).isColumnHidden(1));
    QTest::mouseClick(&Button(*list, "cmdCancel"), Qt::LeftButton);
    EXPECT_EQ(list->result(), QDialog::Rejected);
    EXPECT_EQ(component::session().ListCommand, "CANCEL_BUTTON");

    AddPerson({"pLasNam", "pFirNam", "pTypDoc"}, {"'Ortiz'", "'Ana'", "'1'"});
    auto own = Open(QStringLiteral("PTYPDOC"), QStringLiteral("DO_NOT_LOAD"));
    EXPECT_EQ(own->rowCount(), 0);
    own->AddPerson(QStringLiteral("Müller, Jörg"), QStringLiteral("JM"), 77);
    Grid(*own).selectRow(0);
    // Escape is a cancel too.
    QTest::keyClick(own.get(), Qt::Key_Escape);
    EXPECT_EQ(component::session().ListCommand, "CANCEL_BUTTON");
    EXPECT_TRUE(own->chosen().isEmpty());
}

TEST_P(DocListTest, LayoutAndPlaceAreKept) {
    AddPerson({"pLasNam", "pFirNam", "pTypDoc"}, {"'Ortiz'", "'Ana'", "'1'"});
    auto list = Open(QStringLiteral("PTYPDOC"), QString());
    QHeaderView& header = *Grid(*list).horizontalHeader();
    header.moveSection(2, 0);
    header.resizeSection(0, 222);
    list->setGeometry(40, 50, 500, 300);
    list->reject();
    EXPECT_TRUE(QFile::exists(session_.dataPath + "STP/DLDOC.STP"));

    auto again = Open(QStringLiteral("PTYPDOC"), QString());
    EXPECT_EQ(Grid(*again).horizontalHeader()->logicalIndex(0), 2);
    EXPECT_EQ(Grid(*again).horizontalHeader()->sectionSize(0), 222);
    EXPECT_EQ(again->geometry().size(), QSize(500, 300));
}

INSTANTIATE_TEST_SUITE_P(Engines, DocListTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
