// The contact blocks and their one shown number per block, on both engines.
#include "people/contacts.h"

#include "tests/people/people_fixture.h"

namespace orvo::people::test {
namespace {

using namespace Contacts;

class ContactsTest : public PeopleTest {};

TEST(ContactLabelTest, NamesEachEntryInAnyCaseAndNothingElse) {
    EXPECT_EQ(ContactLabel("pHomPho1"), "Phone");
    EXPECT_EQ(ContactLabel("PBUSPHO2"), "Phone 2");
    EXPECT_EQ(ContactLabel("phomema"), "E-Mail");
    EXPECT_EQ(ContactLabel("pBusPag"), "Pager");
    EXPECT_EQ(ContactLabel("pHOMPHO"), "");  // the shown number is no entry of its own
    EXPECT_EQ(ContactLabel("pLASNAM"), "");
    EXPECT_EQ(ChosenColumn(kHomeBlock, " "), "pHomPho1");
    EXPECT_EQ(ChosenColumn(kWorkBlock, "pBusPHO"), "pBusPho1");
    EXPECT_EQ(ChosenColumn(kWorkBlock, "PBUSCELL"), "pBusCell");
    EXPECT_EQ(ChosenColumn(kHomeBlock, "pBusCell"), "pHomPho1");  // not of this block
    EXPECT_EQ(ChosenColumn(3, "pHomCell"), "");
}

TEST_P(ContactsTest, RowFromBeforeTheBlocksMovesItsPhoneOnFirstReading) {
    const int person = AddPerson({"pLASNAM", "pHOMPHO", "pBUSPHO", "pBusCon"},
                                 {"'Peña'", "'(614) 555-0101'", "''", "'pBusPHO'"});
    QString label;
    int length = -1;
    ReadDisplayContact(Host(), person, kHomeBlock, label, length);
    EXPECT_EQ(label, "Home Phone");
    EXPECT_EQ(length, 30);
    EXPECT_EQ(Column(person, "pHomCon"), "pHomPho1");
    EXPECT_EQ(Column(person, "pHomPho1"), "(614) 555-0101");
    EXPECT_EQ(Column(person, "pHOMPHO"), "(614) 555-0101");

    ReadDisplayContact(Host(), person, kWorkBlock, label, length);
    EXPECT_EQ(label, "Work Phone");
    EXPECT_EQ(Column(person, "pBusCon"), "pBusPho1");
    EXPECT_EQ(Column(person, "pBusPho1"), "");

    // A first phone already filled is not overwritten by the old one.
    const int other =
        AddPerson({"pLASNAM", "pHOMPHO", "pHomPho1"}, {"'Müller'", "'555-0001'", "'555-0002'"});
    ReadDisplayContact(Host(), other, kHomeBlock, label, length);
    EXPECT_EQ(Column(other, "pHomPho1"), "555-0002");
    EXPECT_EQ(Column(other, "pHOMPHO"), "555-0002");
}

TEST_P(ContactsTest, ChosenCellKeepsTheShownNumberInStep) {
    const int person =
        AddPerson({"pLASNAM", "pHomCon", "pHomPho1", "pHomCell", "pHOMPHO"},
                  {"'Müller'", "'PHOMCELL'", "'555-0101'", "'555-0199'", "'555-0101'"});
    QString label;
    int length = 0;
    ReadDisplayContact(Host(), person, kHomeBlock, label, length);
    EXPECT_EQ(label, "Home Cell");
    EXPECT_EQ(Column(person, "pHOMPHO"), "555-0199");

    SyncDisplayContact(Host(), person, kHomeBlock, "O'Neil 555-0222");
    EXPECT_EQ(Column(person, "pHomCell"), "O'Neil 555-0222");
    EXPECT_EQ(Column(person, "pHOMPHO"), "O'Neil 555-0222");
    EXPECT_EQ(Column(person, "pHomPho1"), "555-0101");

    SyncDisplayContact(Host(), person, kHomeBlock, "");
    EXPECT_EQ(Column(person, "pHomCell"), "");
    EXPECT_EQ(Column(person, "pHOMPHO"), "");
}

TEST_P(ContactsTest, WorkEmailLabelAndOtherBlocksOrPersonsDoNothing) {
    const int person = AddPerson({"pLASNAM", "pBusCon", "pBusEma", "pBUSPHO"},
                                 {"'Zoë'", "'pbusema'", "'zoe@example.org'", "'x'"});
    QString label = QStringLiteral("unchanged");
    int length = 0;
    ReadDisplayContact(Host(), person, 3, label, length);
    EXPECT_EQ(label, "unchanged");
    SyncDisplayContact(Host(), person, 0, "555");
    EXPECT_EQ(Column(person, "pBUSPHO"), "x");

    ReadDisplayContact(Host(), person, kWorkBlock, label, length);
    EXPECT_EQ(label, "Work E-Mail");
    EXPECT_EQ(length, 40);
    EXPECT_EQ(Column(person, "pBUSPHO"), "zoe@example.org");

    ReadDisplayContact(Host(), 424242, kWorkBlock, label, length);
    EXPECT_EQ(label, "");
    EXPECT_NO_THROW(SyncDisplayContact(Host(), 424242, kWorkBlock, "555"));
}

INSTANTIATE_TEST_SUITE_P(Engines, ContactsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
