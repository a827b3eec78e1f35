// The person record on both engines: the read with its silent repairs, the role change as one
// statement with its consequences, and the default nick name.
#include "people/person_record.h"

#include "tests/people/people_fixture.h"

namespace orvo::people::test {
namespace {

const QString kSeparateStatementQuestion = QStringLiteral(
    "This patient has been flagged to receive a separate statement. Would you like to remove "
    "that flag now?");

class PersonRecordTest : public PeopleTest {
protected:
    // A provider of the office whose patients get fee schedule `schedule`.
    int AddProvider(const QString& schedule) {
        return AddPerson({"pLASNAM", "pFIRNAM", "pTypDoc", "pTypEmp", "pDocIni", "pDOCFeeTyp"},
                         {"'Müller'", "'Zoë'", "'1'", "'1'", "'ZM'", schedule});
    }
};

TEST_P(PersonRecordTest, ReadHealsMissingProviderAndFeeScheduleAndWritesThemBack) {
    const int provider = AddProvider("3");
    Setting(host::kDefaultProviderKey, provider);
    const int patient = AddPerson(
        {"pLASNAM", "pFIRNAM", "pTypPat", "pPROIND", "pGPDenFeeTypPerm", "pGPDenFeeTyp", "pHOMPHO"},
        {"'Peña'", "'José'", "'1'", "0", "0", "0", "'555-0101'"});

    PersonRecord record;
    ReadPersonRecord(Host(), patient, record);
    EXPECT_EQ(record.pID, patient);
    EXPECT_EQ(record.pLASNAM, "Peña");
    EXPECT_EQ(record.pFIRNAM, "José");
    EXPECT_EQ(record.pHOMPHO, "555-0101");
    EXPECT_EQ(record.pPROIND, provider);
    EXPECT_EQ(record.pGPDenFeeTypPerm, 3);
    EXPECT_EQ(record.pGPDenFeeTyp, 3);
    EXPECT_EQ(Column(patient, "pPROIND").toInt(), provider);
    EXPECT_EQ(Column(patient, "pGPDenFeeTypPerm").toInt(), 3);
    EXPECT_EQ(Column(patient, "pGPDenFeeTyp").toInt(), 3);

    // A healed row reads the same the next time, with nothing left to repair.
    PersonRecord again;
    ReadPersonRecord(Host(), patient, again);
    EXPECT_EQ(again, record);
}

TEST_P(PersonRecordTest, ProviderWithoutUsableScheduleGivesScheduleOneAndKeepsAValidCurrentOne) {
    Setting(host::kFeeScheduleCountKey, 5);
    const int provider = AddProvider("9");  // past the office's five schedules
    const int patient =
        AddPerson({"pLASNAM", "pTypPat", "pPROIND", "pGPDenFeeTypPerm", "pGPDenFeeTyp"},
                  {"'Okafor'", "'1'", QString::number(provider), "0", "4"});
    PersonRecord record;
    ReadPersonRecord(Host(), patient, record);
    EXPECT_EQ(record.pGPDenFeeTypPerm, 1);
    EXPECT_EQ(record.pGPDenFeeTyp, 4);
    EXPECT_EQ(Column(patient, "pGPDenFeeTypPerm").toInt(), 1);
    EXPECT_EQ(Column(patient, "pGPDenFeeTyp").toInt(), 4);
}

TEST_P(PersonRecordTest, UnknownPersonReadsEmptyAndNoDefaultProviderLeavesTheRowAlone) {
    PersonRecord record;
    record.pLASNAM = QStringLiteral("left over");
    ReadPersonRecord(Host(), 4711, record);
    EXPECT_EQ(record, PersonRecord());

    // No default provider configured: pPROIND stays 0 and is not written.
    const int patient =
        AddPerson({"pLASNAM", "pGPDenFeeTypPerm", "pGPDenFeeTyp"}, {"'Nguyen'", "2", "2"});
    ReadPersonRecord(Host(), patient, record);
    EXPECT_EQ(record.pPROIND, 0);
    EXPECT_EQ(Column(patient, "pPROIND"), "");
}

TEST_P(PersonRecordTest, TextIsCutToTheColumnWidthAndNullsReadEmpty) {
    const int patient = AddPerson({"pLASNAM", "pSTA", "pGPDenFeeTypPerm", "pIntAppAmt"},
                                  {"'" + QString(35, QChar(0x00E9)) + "'", "'Ohio'", "2", "12.5"});
    PersonRecord record;
    ReadPersonRecord(Host(), patient, record);
    EXPECT_EQ(record.pLASNAM, QString(30, QChar(0x00E9)));
    EXPECT_EQ(record.pSTA, "Oh");
    EXPECT_EQ(record.pFIRNAM, "");
    EXPECT_EQ(record.pFAMHEAIND, 0);
    EXPECT_EQ(record.pIntAppAmt, Currency::FromCents(1250));
}

// A practice from before the contact blocks and most provider columns.
class OlderPracticeTest : public PersonRecordTest {
protected:
    void DeclareTables(schema::Catalog& catalog) override {
        catalog.Add({QStringLiteral("PATable"),
                     {{"pID", schema::ColumnType::Long, 0, true, true},
                      {"pLASNAM", schema::ColumnType::Text, 30},
                      {"pFIRNAM", schema::ColumnType::Text, 30},
                      {"pTypDoc", schema::ColumnType::Text, 1},
                      {"pPROIND", schema::ColumnType::Long},
                      {"pGPDenFeeTyp", schema::ColumnType::Short},
                      {"pGPDenFeeTypPerm", schema::ColumnType::Short}},
                     {}});
    }
};

TEST_P(OlderPracticeTest, ReadGoesOnPastMissingColumns) {
    const int patient =
        AddPerson({"pLASNAM", "pFIRNAM", "pPROIND", "pGPDenFeeTypPerm", "pGPDenFeeTyp"},
                  {"'Schröder'", "'Anneliese'", "0", "0", "0"});
    PersonRecord record;
    ReadPersonRecord(Host(), patient, record);
    EXPECT_EQ(record.pLASNAM, "Schröder");
    EXPECT_EQ(record.pHomCon, "");
    EXPECT_EQ(record.pDocIni, "");
    // The provider's schedule is read from a column the table lacks: no schedule, so 1.
    EXPECT_EQ(record.pGPDenFeeTypPerm, 1);
}

TEST_P(PersonRecordTest, NewProviderBecomesEmployeeUnlessAlreadyOneAndKeepsOrGetsInitials) {
    const int hidden = AddPerson({"pLASNAM", "pFIRNAM", "pTypEmp", "pDocIni", "pFAMHEAIND"},
                                 {"'Peña'", "'José'", "'2'", "'JXP'", "7"});
    SetPersonType(Host(), hidden, "ptypdoc", "1");
    EXPECT_EQ(Column(hidden, "pTypDoc"), "1");
    EXPECT_EQ(Column(hidden, "pTypEmp"), "2");
    EXPECT_EQ(Column(hidden, "pDocIni"), "JXP");
    EXPECT_EQ(Column(hidden, "pFAMHEAIND"), "7");

    // JP is taken by the first person, so the second gets the next proposal.
    RawExec(QStringLiteral("UPDATE PATable SET pDocIni='JP' WHERE pID=%1").arg(hidden));
    const int fresh = AddPerson({"pLASNAM", "pFIRNAM", "pTypEmp"}, {"'Peña'", "'Juana'", "''"});
    SetPersonType(Host(), fresh, "PTYPDOC", "1");
    EXPECT_EQ(Column(fresh, "pTypEmp"), "1");
    EXPECT_EQ(Column(fresh, "pDocIni"), "JPE");
    EXPECT_EQ(Column(fresh, "pFAMHEAIND").toInt(), fresh);
    EXPECT_EQ(Host().calls, QStringList({QStringLiteral("notify %1").arg(hidden),
                                         QStringLiteral("notify %1").arg(fresh)}));
}

TEST_P(PersonRecordTest, ProviderRemovedStaysOnStaffInTheSameStatement) {
    const int doctor = AddPerson({"pLASNAM", "pTypDoc", "pTypEmp", "pDocIni"},
                                 {"'Adeyemi'", "'1'", "'0'", "'TA'"});
    InstallUpdateTrigger("log");
    SetPersonType(Host(), doctor, "PTYPDOC", "Z");
    db::Recordset log(Db(), QStringLiteral("SELECT doc, emp FROM UpdLog"));
    ASSERT_FALSE(log.IsEmpty());
    EXPECT_EQ(log.Text(0), "Z");
    EXPECT_EQ(log.Text(1), "1");
    log.MoveNext();
    EXPECT_TRUE(log.Eof()) << "the role change took more than one UPDATE";
}

TEST_P(PersonRecordTest, ArchivedPatientReturnsWithMarksRemovedAndStatusActive) {
    const int head = AddPerson({"pLASNAM", "pTypPat"}, {"'Müller'", "'1'"});
    const int patient =
        AddPerson({"pLASNAM", "pFIRNAM", "pTypPat", "pTypX1", "pSrtFlg", "pACCTYP", "pFAMHEAIND"},
                  {"'Müller'", "'Zoë'", "'Z'", "'1'", "'A!B!'", "'NSN'", QString::number(head)});
    prompts_.Expect(host::kRestoreArchivedTitle, host::kRestoreArchivedText, 2);  // account only
    prompts_.Expect(QStringLiteral("Separate Statement"), kSeparateStatementQuestion, AnswerNo);

    SetPersonType(Host(), patient, "PTYPPAT", "1");
    EXPECT_EQ(Column(patient, "pTypPat"), "1");
    EXPECT_EQ(Column(patient, "pTypX1"), "0");
    EXPECT_EQ(Column(patient, "pSrtFlg"), "AB");
    EXPECT_EQ(Column(patient, "pACCTYP"), "S");
    EXPECT_EQ(Host().calls, QStringList({QStringLiteral("status %1 A").arg(patient),
                                         QStringLiteral("notify %1").arg(patient)}));
    EXPECT_EQ(db::ReadScalar(
                  Db(), QStringLiteral("SELECT psSta FROM PatStaTable WHERE psPID=%1").arg(patient))
                  .toString(),
              "A");
}

TEST_P(PersonRecordTest, ArchivedHeadRestoredWithRemindersAndAccountKeepsSeparateStatement) {
    const int head = AddPerson({"pLASNAM", "pTypPat", "pTypX1", "pSrtFlg", "pACCTYP"},
                               {"'Okonkwo'", "'Z'", "'1'", "'!'", "'SN'"});
    prompts_.Expect(host::kRestoreArchivedTitle, host::kRestoreArchivedText, 1);
    SetPersonType(Host(), head, "PTYPPAT", "1");  // a head is not asked about the flag
    EXPECT_EQ(Column(head, "pACCTYP"), "S");
    EXPECT_EQ(Column(head, "pSrtFlg"), "");
    EXPECT_EQ(Host().calls, QStringList({QStringLiteral("recalls %1").arg(head),
                                         QStringLiteral("status %1 A").arg(head),
                                         QStringLiteral("notify %1").arg(head)}));
    // The head is listed among the family heads now.
    EXPECT_EQ(db::ReadScalar(Db(), QStringLiteral("SELECT FMIndLASNAM FROM FMIndTable WHERE "
                                                  "FMIndPatTabID=%1")
                                       .arg(head))
                  .toString(),
              "Okonkwo");
}

TEST_P(PersonRecordTest, FailedUpdateLeavesTheRowAsItWasAndNotifiesNobody) {
    const int person = AddPerson({"pLASNAM", "pTypPat", "pTypX1", "pSrtFlg", "pACCTYP"},
                                 {"'Peña'", "'Z'", "'1'", "'!'", "'N'"});
    const QStringList before = Row(person);
    InstallUpdateTrigger("fail");
    prompts_.Expect(host::kRestoreArchivedTitle, host::kRestoreArchivedText, 1);
    EXPECT_THROW(SetPersonType(Host(), person, "PTYPPAT", "1", 12), db::DatabaseError);
    EXPECT_EQ(Row(person), before);
    EXPECT_TRUE(Host().calls.isEmpty()) << Host().calls.join(", ").toStdString();
}

TEST_P(PersonRecordTest, PatientAgainGetsNoNewStatusAndTheHookHearsOfTheOtherRecord) {
    const int login = static_cast<int>(Db().InsertWithIdentity(
        "INSERT INTO PWMTable (PWMUseNam, PWMPasWor, PWMPid) VALUES ('NEWHIRE', '', 0)"));
    const int person = AddPerson({"pLASNAM", "pFIRNAM", "pTypPat", "pFAMHEAIND"},
                                 {"'Kowalski'", "'Ana'", "'1'", "0"});
    SetPersonType(Host(), person, "PTYPPAT", "1");
    SetPersonType(Host(), person, "pTypEmp", "1", login);
    EXPECT_EQ(Host().calls, QStringList({QStringLiteral("notify %1").arg(person),
                                         QStringLiteral("role-added %1 %2").arg(person).arg(login),
                                         QStringLiteral("notify %1").arg(person)}));
    EXPECT_EQ(Column(person, "pDocIni"), "AK");
    EXPECT_EQ(db::ReadScalar(
                  Db(), QStringLiteral("SELECT PWMPid FROM PWMTable WHERE PWMID=%1").arg(login))
                  .toInt(),
              person);
}

TEST_P(PersonRecordTest, NothingHappensForBlankArgumentsOrAMissingPersonAndBadColumnsAreRefused) {
    const int person = AddPerson({"pLASNAM"}, {"'Ito'"});
    SetPersonType(Host(), person, " ", "1");
    SetPersonType(Host(), person, "PTYPPAT", "");
    SetPersonType(Host(), 0, "PTYPPAT", "1");
    SetPersonType(Host(), 99999, "PTYPPAT", "1");
    SetPersonType(Host(), 99999, "PTYPREF", "1");  // a role with no consequences of its own
    EXPECT_TRUE(Host().calls.isEmpty());
    EXPECT_THROW(SetPersonType(Host(), person, "pLASNAM", "1"), std::invalid_argument);
    EXPECT_EQ(Column(person, "pTypPat"), "");
}

// A role with no consequences of its own places the unplaced as head of a family of one and
// keeps the placed where they are, each change in one UPDATE of the person.
TEST_P(PersonRecordTest, RolesWithoutConsequencesPlaceTheUnplacedAndKeepThePlaced) {
    const int head = AddPerson({"pLASNAM", "pFAMHEAIND"}, {"'Peña'", "0"});
    const int member = AddPerson({"pLASNAM", "pFAMHEAIND"}, {"'Peña'", QString::number(head)});
    const int unplaced = AddPerson({"pLASNAM"}, {"'Müller'"});
    int updates = 0;
    Db().SetStatementHook([&updates](const QString& sql) {
        updates += sql.startsWith(QLatin1String("UPDATE PATABLE"), Qt::CaseInsensitive);
    });
    SetPersonType(Host(), head, "ptypref", "1");
    SetPersonType(Host(), member, "PTYPPHY", "1");
    SetPersonType(Host(), unplaced, "PTYPX2", "Z");
    SetPersonType(Host(), member, "PTYPEMP", "0");
    Db().SetStatementHook({});
    EXPECT_EQ(updates, 4);
    EXPECT_EQ(Column(head, "pFAMHEAIND"), QString::number(head));
    EXPECT_EQ(Column(head, "pTypRef"), "1");
    EXPECT_EQ(Column(member, "pFAMHEAIND"), QString::number(head));
    EXPECT_EQ(Column(member, "pTypPhy"), "1");
    EXPECT_EQ(Column(member, "pTypEmp"), "0");
    EXPECT_EQ(Column(unplaced, "pFAMHEAIND"), QString::number(unplaced));
    EXPECT_EQ(Column(unplaced, "pTypX2"), "Z");
    EXPECT_EQ(Host().calls.size(), 4);
}

TEST_P(PersonRecordTest, DefaultNickNameIsTheFirstWordOfTheFirstName) {
    const int person = AddPerson({"pLASNAM", "pNICNAM"}, {"'García'", "'x'"});
    const auto nick = [&](const QString& first, const QString& given) {
        SetDefaultNickName(Host(), person, first, given);
        return Column(person, "pNICNAM");
    };
    EXPECT_EQ(nick("María José", kUseDefaultNickName), "María");
    EXPECT_EQ(nick("Zoë", kUseDefaultNickName), "Zoë");
    EXPECT_EQ(nick("", kUseDefaultNickName), "");
    EXPECT_EQ(nick(" Bo", kUseDefaultNickName), "");
    EXPECT_EQ(nick("Robert", "Bob's"), "Bob's");
    EXPECT_NO_THROW(SetDefaultNickName(Host(), 0, "Anything", kUseDefaultNickName));
}

INSTANTIATE_TEST_SUITE_P(Engines, PersonRecordTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());
INSTANTIATE_TEST_SUITE_P(Engines, OlderPracticeTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
