// The reference host's operations on persons, on both engines.
#include <QLineEdit>

#include "tests/people/people_fixture.h"

namespace orvo::people::test {
namespace {

class HostPersonsTest : public PeopleTest {
protected:
    int HeadCount() {
        return db::ReadScalar(Db(), QStringLiteral("SELECT count(*) FROM FMIndTable")).toInt();
    }
};

TEST_P(HostPersonsTest, FamilyHeadIsSelfOrUnplacedAndInThePatientFile) {
    const int head = AddPerson({"pLASNAM", "pTypPat"}, {"'Peña'", "'2'"});
    const int member =
        AddPerson({"pLASNAM", "pTypPat", "pFAMHEAIND"}, {"'Peña'", "'1'", QString::number(head)});
    const int self = AddPerson({"pLASNAM", "pTypPat", "pFAMHEAIND"}, {"'Ito'", "'Z'", "0"});
    const int provider = AddPerson({"pLASNAM", "pTypDoc"}, {"'Okafor'", "'1'"});
    RawExec(QStringLiteral("UPDATE PATable SET pFAMHEAIND=pID WHERE pID=%1").arg(self));
    EXPECT_TRUE(Host().IsFamilyHead(head));
    EXPECT_FALSE(Host().IsFamilyHead(member));
    EXPECT_TRUE(Host().IsFamilyHead(self));
    EXPECT_FALSE(Host().IsFamilyHead(provider));
    EXPECT_FALSE(Host().IsFamilyHead(0));

    // The list of heads is built from the same rule, and the database keeps it in the same
    // statement as every change of a person, whoever writes it.
    EXPECT_EQ(host::RebuildFamilyHeadIndex(Db()), 2);
    const auto listed = [&](int person) {
        return db::ReadScalar(Db(), QStringLiteral("SELECT FMIndLASNAM FROM FMIndTable WHERE "
                                                   "FMIndPatTabID=%1")
                                        .arg(person))
            .toString();
    };
    RawExec(QStringLiteral("UPDATE PATable SET pLASNAM='Peña-Ruiz' WHERE pID=%1").arg(head));
    RawExec(QStringLiteral("UPDATE PATable SET pTypPat='0' WHERE pID=%1").arg(self));
    EXPECT_EQ(HeadCount(), 1);
    EXPECT_EQ(listed(head), "Peña-Ruiz");
    RawExec(QStringLiteral("UPDATE PATable SET pLASNAM='PEÑA-RUIZ' WHERE pID=%1").arg(head));
    EXPECT_EQ(listed(head), "PEÑA-RUIZ");  // letter case reaches the list too

    // Taken out of a family, a patient heads one of their own; a new head is listed at once and
    // a deleted one leaves.
    RawExec(QStringLiteral("UPDATE PATable SET pFAMHEAIND=0 WHERE pID=%1").arg(member));
    const int added = AddPerson({"pLASNAM", "pFIRNAM", "pTypPat"}, {"'Nguyễn'", "'Thảo'", "'1'"});
    EXPECT_EQ(HeadCount(), 3);
    EXPECT_EQ(listed(added), "Nguyễn");
    RawExec(QStringLiteral("DELETE FROM PATable WHERE pID=%1").arg(added));
    RawExec(QStringLiteral("UPDATE PATable SET pFAMHEAIND=%1 WHERE pID=%2").arg(head).arg(member));
    EXPECT_EQ(HeadCount(), 1);

    // Changes that leave a head's names and place alone do not touch the list: a row marked by
    // hand stays as it is.
    RawExec(QStringLiteral("UPDATE FMIndTable SET FMIndFirNAM='marked'"));
    RawExec(QStringLiteral("UPDATE PATable SET pTypRef='1', pLASNAM=pLASNAM, pTypPat='1' WHERE "
                           "pID=%1")
                .arg(head));
    EXPECT_EQ(db::ReadScalar(Db(), QStringLiteral("SELECT FMIndFirNAM FROM FMIndTable")).toString(),
              "marked");

    // What the host shows anew afterwards: each person named, once, in order.
    Host().NotifyPersonChanged(head);
    Host().NotifyPersonChanged(self);
    Host().NotifyPersonChanged(head);
    Host().NotifyPersonChanged(provider);
    EXPECT_EQ(Host().TakeChangedPersons(), QList<int>({head, self, provider}));
    EXPECT_TRUE(Host().TakeChangedPersons().isEmpty());
    Host().NotifyPersonChanged(head);
    EXPECT_EQ(Host().TakeChangedPersons(), QList<int>({head}));
}

TEST_P(HostPersonsTest, AnOlderPracticeHasItsListBuiltOnceAndKeptForEveryStation) {
    // A practice from before the database kept the list: no triggers, no version, a list out
    // of date.
    const int head = AddPerson({"pLASNAM", "pFIRNAM", "pTypPat"}, {"'Ødegård'", "'Åse'", "'1'"});
    const bool pg = GetParam() == db::Engine::Postgres;
    for (const char* trigger : {"Insert", "Delete", "Update"}) {
        RawExec(pg ? QStringLiteral("DROP TRIGGER orvo_family_heads_%1 ON PATable")
                         .arg(QString::fromLatin1(trigger).toLower())
                   : QStringLiteral("DROP TRIGGER FamilyHeadsOn%1").arg(QLatin1String(trigger)));
    }
    RawExec(QStringLiteral("DELETE FROM FMIndTable"));
    RawExec(QStringLiteral("DELETE FROM OrvoSchemaVersion"));
    const int unlisted = AddPerson({"pLASNAM", "pTypPat"}, {"'Ito'", "'1'"});
    EXPECT_EQ(HeadCount(), 0);

    // The next start brings it up to date: the list whole, then kept from there on.
    schema::Catalog catalog;
    host::DeclareHostTables(catalog);
    DeclarePeopleTables(catalog);
    schema::Apply(Db(), catalog);
    EXPECT_EQ(HeadCount(), 2);
    schema::Apply(Db(), catalog);  // once only
    EXPECT_EQ(HeadCount(), 2);

    // Another station's writes, on a connection of its own, keep it too.
    const std::shared_ptr<db::Connection> other = database_->Connect();
    other->Execute(QStringLiteral("UPDATE PATable SET pFIRNAM='Åsa' WHERE pID=%1").arg(head));
    other->Execute(QStringLiteral("DELETE FROM PATable WHERE pID=%1").arg(unlisted));
    EXPECT_EQ(db::ReadScalar(Db(), QStringLiteral("SELECT FMIndFirNAM FROM FMIndTable")).toString(),
              "Åsa");
    EXPECT_EQ(HeadCount(), 1);
}

TEST_P(HostPersonsTest, DefaultProviderMustStillBeAProviderAndSchedulesCountFromOne) {
    const int provider = AddPerson({"pLASNAM", "pTypDoc"}, {"'Adeyemi'", "'1'"});
    EXPECT_EQ(Host().GetDefaultProviderID(), 0);
    Setting(host::kDefaultProviderKey, provider);
    EXPECT_EQ(Host().GetDefaultProviderID(), provider);
    RawExec(QStringLiteral("UPDATE PATable SET pTypDoc='Z' WHERE pID=%1").arg(provider));
    EXPECT_EQ(Host().GetDefaultProviderID(), 0);

    EXPECT_FALSE(Host().IsValidFeeSchedule(0));
    EXPECT_TRUE(Host().IsValidFeeSchedule(10));
    EXPECT_FALSE(Host().IsValidFeeSchedule(11));
    Setting(host::kFeeScheduleCountKey, 3);
    EXPECT_FALSE(Host().IsValidFeeSchedule(4));
}

TEST_P(HostPersonsTest, InitialsAvoidThoseTakenAndKeepAccents) {
    EXPECT_EQ(Host().MakeDefaultInitials(0, "Zoë", "Émile"), "ÉZ");
    const int taken = AddPerson({"pLASNAM", "pDocIni"}, {"'Peña'", "'jp'"});
    EXPECT_EQ(Host().MakeDefaultInitials(0, "Peña", "José"), "JPE");
    EXPECT_EQ(Host().MakeDefaultInitials(taken, "Peña", "José"), "JP");  // its own
    AddPerson({"pLASNAM", "pDocIni"}, {"'Peña'", "'JPE'"});
    EXPECT_EQ(Host().MakeDefaultInitials(0, "Peña", "José"), "JPÑ");
}

TEST_P(HostPersonsTest, NamesAndFieldsForDisplay) {
    const int person = AddPerson({"pLASNAM", "pFIRNAM", "pTTL", "pProTTL", "pCIT", "pHOMPHO"},
                                 {"'Müller'", "'Zoë'", "'Dr.'", "'DDS'", "'Köln'", "'555'"});
    EXPECT_EQ(Host().GetPersonName(person, " ", ""), "Zoë Müller");
    EXPECT_EQ(Host().GetPersonName(person, " ", "pTTL"), "Dr. Zoë Müller");
    EXPECT_EQ(Host().GetPersonName(person, " ", "pProTTL"), "Zoë Müller, DDS");
    EXPECT_EQ(Host().GetPersonName(person, " ", "pADD1"), "Zoë Müller");
    EXPECT_EQ(Host().GetPersonName(9999, " ", ""), "");
    EXPECT_THROW(Host().GetPersonName(person, " ", "pTTL FROM SetTable --"), ComponentError);
    EXPECT_EQ(Host().GetPersonField(person, 22), "Köln");
    EXPECT_EQ(Host().GetPersonField(person, 18), "555");
    EXPECT_THROW(Host().GetPersonField(person, 5), ComponentError);

    QString flags = QStringLiteral("NsN!");
    Host().ReplaceInText(flags, "N", "");
    EXPECT_EQ(flags, "s!");
}

TEST_P(HostPersonsTest, BoundFieldsAreSavedToTheRowTheyWereReadFrom) {
    const int person = AddPerson({"pLASNAM", "pHomEma"}, {"'Peña'", "'old@example.org'"});
    QLineEdit email, fax, stray;
    email.setProperty("DataField", "pHomEma");
    fax.setProperty("DataField", "pHomFax");
    stray.setProperty("DataField", "pHomCell");
    Host().ReadBoundRecord(person, "pID", "PATable", {&email, &fax});
    EXPECT_EQ(email.text(), "old@example.org");
    email.setText("josé@example.org");
    fax.setText("555-0150");
    Host().SaveBoundFields({&email, &fax});
    EXPECT_EQ(Column(person, "pHomEma"), "josé@example.org");
    EXPECT_EQ(Column(person, "pHomFax"), "555-0150");
    EXPECT_EQ(Column(person, "pLASNAM"), "Peña");

    EXPECT_THROW(Host().SaveBoundFields({&stray}), ComponentError);
    RawExec(QStringLiteral("DELETE FROM PATable WHERE pID=%1").arg(person));
    EXPECT_THROW(Host().SaveBoundFields({&email}), db::RowNotFoundError);
}

TEST_P(HostPersonsTest, ArchiveQuestionClosedKeepsTheFlagsAndRecallRestoreFollowsTheSetting) {
    bool reminders = false;
    bool account = false;
    prompts_.Expect(host::kRestoreArchivedTitle, host::kRestoreArchivedText, 0);
    Host().AskRestoreArchived(reminders, account, false, 2);
    EXPECT_FALSE(reminders);
    EXPECT_FALSE(account);
    prompts_.Expect(host::kRestoreArchivedTitle, host::kRestoreArchivedText, 3);
    Host().AskRestoreArchived(reminders, account, false, 2);
    EXPECT_TRUE(reminders);
    EXPECT_FALSE(account);

    // Recalls of person 5: one whose tracking stopped, one past due; person 6 is left alone.
    for (const char* row : {"5, 7", "5, 3", "6, 7"})
        Db().Execute(QStringLiteral("INSERT INTO RecTable (rPID, rStage) VALUES (%1)").arg(row));
    const auto stages = [&] {
        db::Recordset rs(Db(), "SELECT rStage FROM RecTable ORDER BY rRecNum");
        QStringList out;
        for (; !rs.Eof(); rs.MoveNext())
            out << rs.Text(0);
        return out.join(' ');
    };
    const auto notes = [&] {
        return db::ReadScalar(Db(), "SELECT count(*) FROM cmTable WHERE cmPID=5").toInt();
    };
    Setting(host::kRestoreRecallsKey, false);
    Host().RestorePersonRecalls(5);
    EXPECT_EQ(stages(), "7 3 7");
    EXPECT_EQ(notes(), 0);
    Setting(host::kRestoreRecallsKey, true);
    Host().RestorePersonRecalls(5);
    EXPECT_EQ(stages(), "0 3 7");
    EXPECT_EQ(notes(), 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, HostPersonsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
