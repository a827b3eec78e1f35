#include <gtest/gtest.h>

#include "component/find_record.h"
#include "people/find_person.h"
#include "people_fixture.h"
#include "platform/db/sql_text.h"
#include "tests/support/qt_print.h"

namespace orvo::people::test {
namespace {

const QString kTitle = QStringLiteral("Database Search");
const QString kWindow = QStringLiteral("Search Window");

class FindPersonTest : public PeopleTest {
protected:
    int Person(const QString& first, const QString& last, const QStringList& columns = {},
               const QStringList& literals = {}) {
        return AddPerson(QStringList{"pFIRNAM", "pLASNAM"} + columns,
                         QStringList{db::QuoteText(first), db::QuoteText(last)} + literals);
    }
    // The search window, answered with typed: the first prompt of every search.
    void Typed(const QString& typed) {
        prompts_.ExpectInput(kWindow, QStringLiteral("Enter name or ID number below."), typed);
    }
    FoundPerson Find(const QString& field, bool forList = false) {
        return Find_Person(Host(), field, QString(), false, forList);
    }
};

TEST_P(FindPersonTest, IdAndBothNameFormsFindTheSameHead) {
    Person("Ann", "Smithers", {"pTypPat"}, {"'1'"});
    const int john = Person("John", "Smith", {"pTypPat"}, {"'1'"});
    for (const QString& typed :
         {QStringLiteral("Smith, John"), QStringLiteral("John Smith"), QString::number(john)}) {
        Typed(typed);
        prompts_.ExpectContaining(
            kTitle,
            QStringLiteral(" ...was found in the database. Add as this patient's Family Head?"),
            AnswerYes);
        const FoundPerson found = Find(QStringLiteral("PTYPPAT"));
        EXPECT_EQ(found.answer, QString::number(john)) << typed.toStdString();
        EXPECT_EQ(found.pID, john);
    }
    // Accents fold on both engines: "peña" finds Peña, and No to the only match adds nobody.
    const int pena = Person("José", "Peña", {"pTypDoc"}, {"'1'"});
    Typed(QStringLiteral("jos peña"));
    prompts_.ExpectContaining(kTitle, QStringLiteral("Name: José Peña [ %1 ]").arg(pena), AnswerNo);
    prompts_.Expect(kTitle,
                    QStringLiteral("[ jos peña ]  was not found in the database. Add as new?"),
                    AnswerNo);
    EXPECT_EQ(Find(QStringLiteral("PTYPDOC")).answer, kFindCancel);
}

TEST_P(FindPersonTest, NothingFoundOffersANewPerson) {
    Typed(QStringLiteral("Jane Doe"));
    prompts_.Expect(kTitle,
                    QStringLiteral("[ Jane Doe ]  was not found in the database. Add as new?"),
                    AnswerYes);
    const FoundPerson found = Find(QStringLiteral("PTYPREF"));
    EXPECT_EQ(found.answer, "NEW");
    EXPECT_EQ(found.lastName, "Doe");
    EXPECT_EQ(found.firstName, "Jane");
    // A cancelled or empty search window is a cancel, with no search.
    Typed(QStringLiteral("   "));
    EXPECT_EQ(Find(QStringLiteral("PTYPREF")).answer, kFindCancel);
    prompts_.ExpectInput(kWindow, QStringLiteral("Enter name"), std::nullopt);
    EXPECT_EQ(Find_Person(Host(), QStringLiteral("PTYPREF"), QString(), false).answer, kFindCancel);
    prompts_.Expect(kTitle, QStringLiteral("Read only, cannot modify."), AnswerOk);
    EXPECT_EQ(Find_Person(Host(), QStringLiteral("PTYPREF"), QString(), true).answer, kFindCancel);
}

TEST_P(FindPersonTest, AFamilyMemberCannotBecomeAHead) {
    const int head = Person("Maria", "Lopez", {"pTypPat"}, {"'1'"});
    const int child =
        Person("Lucia", "Lopez", {"pTypPat", "pFAMHEAIND"}, {"'1'", QString::number(head)});
    Db().Execute(QStringLiteral("UPDATE PATable SET pFAMHEAIND=%1 WHERE pID=%1").arg(head));
    Typed(QStringLiteral("Lopez, Lucia"));
    prompts_.ExpectContaining(
        kTitle,
        QStringLiteral("Lucia Lopez [ %1 ] was found in the database  but cannot be added as a "
                       "Family Head, because this patient is a family member.")
            .arg(child),
        AnswerOk);
    prompts_.ExpectContaining(kTitle, QStringLiteral("was not found in the database."), AnswerNo);
    EXPECT_EQ(Find(QStringLiteral("PTYPPAT")).answer, kFindCancel);
}

TEST_P(FindPersonTest, APersonKnownInAnotherRoleIsGivenTheRole) {
    const int ref = Person("Omar", "Haddad", {"pTypRef", "pTypDoc"}, {"'1'", "'0'"});
    // The provider search finds nobody in the role, then the referral among everyone.
    Typed(QStringLiteral("Omar Haddad"));
    prompts_.ExpectContaining(
        kTitle, QStringLiteral(" ...was found in the database  Add as this patient's Provider?"),
        AnswerYes);
    const FoundPerson found = Find(QStringLiteral("PTYPDOC"));
    EXPECT_EQ(found.answer, QString::number(ref));
    EXPECT_EQ(Column(ref, QStringLiteral("pTypDoc")), "1");
    EXPECT_EQ(Column(ref, QStringLiteral("pTypRef")), "1");
    EXPECT_TRUE(Host().calls.contains(QStringLiteral("notify %1").arg(ref)));
}

TEST_P(FindPersonTest, AMatchInAnotherLocationOffersTheLocationEdit) {
    session_.officeLocationId = 1;
    for (const char* name : {"Main Street", "Harbor"})
        Db().Execute(QStringLiteral("INSERT INTO OffLocTable (OffLocNam) VALUES ('%1')").arg(name));
    Person("Ann", "Other", {"OffLocID"}, {"1"});
    const int away = Person("Kai", "Berg", {"OffLocID", "pTypRef"}, {"2", "'0'"});
    EXPECT_EQ(Host().GetOfficeLocationCount(), 2);
    const QString editTitle = QStringLiteral("Edit Patient Display Locations");
    // The edit is not built yet: it says so, and the person can go on without it.
    Typed(QStringLiteral("Berg, Kai"));
    prompts_.Expect(editTitle,
                    QStringLiteral("Do you want to edit the location information for Kai Berg, "),
                    1);
    prompts_.ExpectContaining(editTitle, QStringLiteral("not available"), AnswerOk);
    prompts_.ExpectContaining(
        kTitle, QStringLiteral("You did not set Kai Berg to display in your Main Street."),
        AnswerYes);
    prompts_.Expect(editTitle,
                    QStringLiteral("Do you want to edit the location information for Kai Berg, "),
                    3);
    prompts_.ExpectContaining(
        kTitle, QStringLiteral(" ...was found in your Harbor Add as this patient's Referral?"),
        AnswerYes);
    EXPECT_EQ(Find(QStringLiteral("PTYPREF")).answer, QString::number(away));
    // "No" to the edit moves on to the next match: here there is none, so a new one is offered.
    Typed(QStringLiteral("Berg, Kai"));
    prompts_.Expect(editTitle,
                    QStringLiteral("Do you want to edit the location information for Kai Berg, "),
                    2);
    prompts_.ExpectContaining(kTitle, QStringLiteral("was not found"), AnswerNo);
    EXPECT_EQ(Find(QStringLiteral("PTYPDOC")).answer, kFindCancel);
    // Shown here through a display row, the person is offered without the question.
    Db().Execute(
        QStringLiteral("INSERT INTO pdlTable (pdlPID, pdlOffLocID, pdlShoInLoc) VALUES (%1, 1, 1)")
            .arg(away));
    Typed(QStringLiteral("Berg, Kai"));
    prompts_.ExpectContaining(
        kTitle, QStringLiteral(" ...was found in your Harbor Add as this patient's Provider?"),
        AnswerNo);
    prompts_.ExpectContaining(kTitle, QStringLiteral("was not found"), AnswerNo);
    EXPECT_EQ(Find(QStringLiteral("PTYPDOC")).answer, kFindCancel);
}

TEST_P(FindPersonTest, GoToAPersonWithTheRoleAndItsCommands) {
    Person("Rita", "Kovacs", {"pTypPhy"}, {"'1'"});
    const int rita = Person("Rita", "Kovacs", {"pTypPhy"}, {"'1'"});
    int pID = 0;
    prompts_.ExpectContaining(kTitle, QStringLiteral(" Go to this person?"), 2);
    prompts_.ExpectContaining(kTitle, QStringLiteral(" Go to this person?"), 5);
    const PersonRole role = PersonRole::Of(QStringLiteral("ptypphy1"));
    EXPECT_EQ(role.word, "Physician");
    EXPECT_EQ(Match_Person(Host(), PersonNameCriteria(Host(), QStringLiteral("Kovacs, Rita")), role,
                           false, pID),
              kMatchTaken + 2);
    EXPECT_EQ(pID, rita);
    prompts_.ExpectContaining(kTitle, QStringLiteral(" Go to this person?"), 3);
    EXPECT_LT(Match_Person(Host(), QStringLiteral("pLASNAM Like 'Kov%'"), role, false, pID), 0);
    EXPECT_EQ(Match_Person(Host(), QStringLiteral("pLASNAM Like 'Nobody%'"), role, false, pID), 0);
}

TEST_P(FindPersonTest, FindRecordAnswers) {
    for (const char* name : {"Müller Dental Lab", "Müller Ortho", "Acme"})
        Db().Execute(QStringLiteral(
                         "INSERT INTO OffLocTable (OffLocNam, OffLocCit) VALUES ('%1', 'Columbus')")
                         .arg(name));
    QString result;
    QString text = QStringLiteral("müller");
    const DisplayFields fields{{QStringLiteral("City"), QStringLiteral("OffLocCit")}};
    prompts_.ExpectInput(kWindow, QStringLiteral("ORVO Inc."), QStringLiteral("  müller "));
    prompts_.Expect(kTitle,
                    QStringLiteral("Müller Dental Lab\rCity: Columbus\r\r ...was found in the "
                                   "database. Is this the correct entry?"),
                    AnswerNo);
    prompts_.ExpectContaining(kTitle, QStringLiteral("Müller Ortho"), AnswerYes);
    Find_Record(Host(), result, QStringLiteral("OffLocTable"), QStringLiteral("OffLocNam"),
                QStringLiteral("OffLocID"), fields, text, QString());
    EXPECT_EQ(result, "2");

    // The list offer: more than one row answers the list at once, without a question.
    text = kFindMark + QStringLiteral("MÜLLER");
    Find_Record(Host(), result, QStringLiteral("OffLocTable"), QStringLiteral("OffLocNam"),
                kFindMark + QStringLiteral("OffLocID"), fields, text, QString());
    EXPECT_EQ(result, "LIST1");
    EXPECT_EQ(result.mid(4).toInt(), 1);

    text = kFindMark + QStringLiteral("Zenith");
    prompts_.Expect(kTitle,
                    QStringLiteral("[ Zenith ] was not found in the database. Add as new ?"),
                    AnswerYes);
    Find_Record(Host(), result, QStringLiteral("OffLocTable"), QStringLiteral("OffLocNam"),
                QStringLiteral("OffLocID"), fields, text, QString());
    EXPECT_EQ(result, "-9997NEW");
    EXPECT_EQ(text, "Zenith");

    text = kFindMark + QStringLiteral("Acme");
    prompts_.ExpectContaining(kTitle, QStringLiteral("Enter as Acme for Kai?"), AnswerCancel);
    Find_Record(Host(), result, QStringLiteral("OffLocTable"), QStringLiteral("OffLocNam"),
                QStringLiteral("OffLocID"), fields, text, QStringLiteral("Enter as Acme for Kai?"));
    EXPECT_EQ(result, "-9999CANCEL");
    // A quote in the name is searched for, not run.
    text = kFindMark + QStringLiteral("O'Brien");
    prompts_.ExpectContaining(kTitle, QStringLiteral("[ O'Brien ]"), AnswerNo);
    Find_Record(Host(), result, QStringLiteral("OffLocTable"), QStringLiteral("OffLocNam"),
                QStringLiteral("OffLocID"), fields, text, QString());
    EXPECT_EQ(result, kFindCancel);
}

TEST(NamePromptTest, Texts) {
    EXPECT_EQ(NamePrompt(true),
              "Enter name or ID number below.\r\rExample:\r      John Smith  (First-Name "
              "Last-Name)\ror Smith, John  (Last-Name, First-Name)\ror 3412  (ID for existing "
              "patient)");
    EXPECT_EQ(NamePrompt(false),
              "Enter name below.\r\rExample:\r      John Smith  (First-Name Last-Name)\ror "
              "Smith, John  (Last-Name, First-Name)");
}

INSTANTIATE_TEST_SUITE_P(Engines, FindPersonTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
