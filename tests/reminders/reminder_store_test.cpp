// The reminder store on both engines over the reference host: masters made on first use,
// message bodies through the stored procedure, contact sequences rewritten in place, and the
// two numbers of the stop-tracking stage.
#include <gtest/gtest.h>

#include "platform/db/recordset.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminder_store.h"
#include "tests/reminders/reminder_test_fixture.h"

namespace orvo::reminders::test {
namespace {

using db::Engine;

class ReminderStoreTest : public ReminderDatabaseTest {
protected:
    ReminderStore& store() {
        if (!store_)
            store_ = std::make_unique<ReminderStore>(gic());
        return *store_;
    }
    QList<qint64> SequenceIds(const QString& where) {
        QList<qint64> ids;
        for (db::Recordset rs(connection(), QStringLiteral("select ebcID from eBusContactSequence "
                                                           "where ") +
                                                where + QStringLiteral(" order by ebcID"));
             !rs.Eof(); rs.MoveNext())
            ids << rs.Long(0);
        return ids;
    }
    std::unique_ptr<ReminderStore> store_;
};

TEST_P(ReminderStoreTest, FirstMasterReadCreatesAllFiveOnce) {
    const int confirmation = store().GetReminderMaster(kAppointmentConfirmation);
    EXPECT_GT(confirmation, 0);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from emmTable")), 5);
    db::Recordset rs(connection(),
                     QStringLiteral("select emmDes, emmHasCutOff, emmEna, OffLocID from "
                                    "emmTable order by emmAppDefTyp"));
    const QStringList names{QStringLiteral("Recall Reminder"),
                            QStringLiteral("Appointment Confirmation"),
                            QStringLiteral("Appointment Reminder"),
                            QStringLiteral("Birthday Reminder"), QStringLiteral("News Letter")};
    for (const QString& name : names) {
        ASSERT_FALSE(rs.Eof());
        EXPECT_EQ(rs.Text(0), name);
        EXPECT_EQ(rs.Long(1), 0);
        EXPECT_EQ(rs.Long(2), 1);
        EXPECT_EQ(rs.Long(3), -1);
        rs.MoveNext();
    }
    EXPECT_EQ(store().GetReminderMaster(kAppointmentConfirmation), confirmation);
    EXPECT_GT(store().GetReminderMaster(kNewsLetter), 0);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from emmTable")), 5);

    // A disabled master is not the type's master, and is not made again either: its row counts.
    connection().Execute(QStringLiteral("update emmTable set emmEna=0 where emmAppDefTyp=4"));
    EXPECT_EQ(store().GetReminderMaster(kBirthdayReminder), 0);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from emmTable")), 5);
    EXPECT_EQ(store().GetReminderMaster(9), 0);
}

TEST_P(ReminderStoreTest, BodiesGoByParameterWithEmptyOnesAsOneBlank) {
    const int master = store().GetReminderMaster(kAppointmentReminder);
    // 1 MB of what breaks SQL text: quotes of both kinds, backslashes, percent signs, text that
    // looks binary, and characters of every Unicode plane.
    QString big;
    const QString pieces[] = {QStringLiteral("O'Brien said \"hi\"; \\n \\\\ % _ ' -- /* "),
                              QString::fromUtf8("Pe\xc3\xb1"
                                                "a M\xc3\xbcller Jos\xc3\xa9 "),
                              QString(QChar(0x01)) + QChar(0x7f) + QChar(0xfffd) + QChar(0xfeff),
                              QString::fromUcs4(U"\U0001F600\U00020000\U00030000\U000E0001"
                                                U"\U000F0000\U0010FFFD"),
                              QStringLiteral("$orvo_procedure$ @TextMessage ?\t\r\n")};
    std::u32string planes;
    for (char32_t plane = 0; plane <= 16; ++plane)
        planes += plane * 0x10000 + 0x100;
    const QString allPlanes = QString::fromUcs4(planes.data(), planes.size());
    for (int i = 0; big.size() < 1024 * 1024; ++i)
        big += pieces[i % 5] + allPlanes;
    ASSERT_GE(big.toUtf8().size(), 1024 * 1024);
    MessageBodies bodies{big,       QStringLiteral("<p>e-mail</p>"),
                         QString(), QStringLiteral("x.rtf"),
                         QString(), QString::fromUtf8("Se\xc3\xb1or")};
    const int id = store().ReminderMessageAdd(true, false, master, 77, bodies);
    ASSERT_GT(id, 0);

    {  // read on the main connection, as another reader would
        db::Recordset rs(
            connection(),
            QStringLiteral("select * from ReminderMessageTable where rmtID=%1").arg(id));
        ASSERT_FALSE(rs.IsEmpty());
        EXPECT_TRUE(rs.Text(QStringLiteral("rmtTexMes")) == big) << "the 1 MB body changed";
        EXPECT_EQ(rs.Text(QStringLiteral("rmtTexMes")).size(), big.size());
        EXPECT_EQ(rs.Text(QStringLiteral("rmtEMaMes")), QStringLiteral("<p>e-mail</p>"));
        EXPECT_EQ(rs.Text(QStringLiteral("rmtCarMes")), QStringLiteral(" "));
        EXPECT_EQ(rs.Text(QStringLiteral("rmtVoiMes")), QStringLiteral(" "));
        EXPECT_EQ(rs.Text(QStringLiteral("rmtVoiMesSpanish")), QString::fromUtf8("Se\xc3\xb1or"));
        EXPECT_EQ(rs.Long(QStringLiteral("rmtTexAutRetMes")), 1);
        EXPECT_EQ(rs.Long(QStringLiteral("rmtEmaAutRetMes")), 0);
        EXPECT_EQ(rs.Long(QStringLiteral("rmtLinID")), 77);
    }

    // A second save rewrites every body, the flags and the owners.
    EXPECT_TRUE(store().ReminderMessageSave(id, false, true, master, 78,
                                            {QString(), QString(), QStringLiteral("card"),
                                             QString(), QStringLiteral("voice"), QString()}));
    db::Recordset again(connection(),
                        QStringLiteral("select rmtTexMes, rmtCarMes, rmtEmaAutRetMes, "
                                       "rmtLinID from ReminderMessageTable"));
    EXPECT_EQ(again.Text(0), QStringLiteral(" "));
    EXPECT_EQ(again.Text(1), QStringLiteral("card"));
    EXPECT_EQ(again.Long(2), 1);
    EXPECT_EQ(again.Long(3), 78);

    // A row another station deleted is a failure, not a silent success.
    EXPECT_TRUE(store().ReminderMessageDelete(id));
    EXPECT_FALSE(store().ReminderMessageDelete(id));
    EXPECT_FALSE(store().ReminderMessageSave(id, false, false, master, 78, bodies));
}

TEST_P(ReminderStoreTest, ProcedureCallsRefuseWhatTheyCannotRun) {
    db::Connection& second = gic().GetSecondConnection();
    if (GetParam() == Engine::Sqlite) {
        // The embedded engine keeps procedures per connection: none is there before it is made.
        EXPECT_THROW(second.CallProcedure(ReminderStore::kUpdateMessagesProcedure, {}),
                     db::DatabaseError);
    }
    EXPECT_THROW(gic().EnsureStoredProcedure(QStringLiteral("p; drop table x"),
                                             QStringLiteral("select 1"), QString()),
                 db::DatabaseError);
    EXPECT_THROW(gic().EnsureStoredProcedure(QStringLiteral("p1"),
                                             QStringLiteral("delete from emsTable where emsID = "
                                                            "@Missing"),
                                             QStringLiteral("(@ID int)")),
                 db::DatabaseError);
    gic().EnsureStoredProcedure(QStringLiteral("Stage_Period"),
                                QStringLiteral("UPDATE emsTable SET emsPerTyp = @Unit WHERE "
                                               "emsID = @ID or emsPerTyp = '@Unit'"),
                                QStringLiteral("(@ID int, @Unit nvarchar(1))"));
    // Made twice is made once.
    gic().EnsureStoredProcedure(QStringLiteral("Stage_Period"), QStringLiteral("select 1"),
                                QStringLiteral("(@ID int, @Unit nvarchar(1))"));
    int stage = 0;
    ASSERT_TRUE(store().ReminderStageSave(0, 3, 0, 6, QStringLiteral("M"), 0, stage));
    second.CallProcedure(
        QStringLiteral("stage_period"),
        {db::ProcedureArgument::Integer(QStringLiteral("@ID"), stage),
         db::ProcedureArgument::WideText(QStringLiteral("@Unit"), QStringLiteral("Y"))});
    EXPECT_EQ(Count(QStringLiteral("select count(*) from emsTable where emsPerTyp='Y'")), 1);
    EXPECT_THROW(
        second.CallProcedure(QStringLiteral("Stage_Period"),
                             {db::ProcedureArgument::Integer(QStringLiteral("@ID"), stage),
                              db::ProcedureArgument::WideText(QStringLiteral("@Unit"), QString())}),
        db::DatabaseError);
}

TEST_P(ReminderStoreTest, SequenceRowsAreReusedOldestFirst) {
    const int recall = AddRecall(QStringLiteral("Prophy"));
    const QString owner = QStringLiteral("ebcLinID=%1 and ebcPer=0").arg(recall);
    store().ReminderContactSequenceSave(kRecallReminder, 0, {1, 2, 8, 4, 32}, recall, 0);
    const QList<qint64> five = SequenceIds(owner);
    ASSERT_EQ(five.size(), 5);
    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 0, recall, 0),
              (QList<int>{1, 2, 8, 4, 32}));

    store().ReminderContactSequenceSave(kRecallReminder, 0, {32, 4, 1}, recall, 0);
    EXPECT_EQ(SequenceIds(owner), five.mid(0, 3));
    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 0, recall, 0),
              (QList<int>{32, 4, 1}));
    // The row that held text message now holds voice: ids do not follow methods.
    EXPECT_EQ(Count(QStringLiteral("select ebcConMet from eBusContactSequence where ebcID=%1")
                        .arg(five[0])),
              32);

    // Growing again adds rows after the reused ones.
    store().ReminderContactSequenceSave(kRecallReminder, 0, {2, 1, 8, 16}, recall, 0);
    const QList<qint64> four = SequenceIds(owner);
    ASSERT_EQ(four.size(), 4);
    EXPECT_EQ(four.mid(0, 3), five.mid(0, 3));
    EXPECT_GT(four[3], five[4]);
}

TEST_P(ReminderStoreTest, EmptySequenceDeletesOnlyThatOwnerAndStage) {
    const int recall = AddRecall(QStringLiteral("Prophy"));
    const int other = AddRecall(QStringLiteral("Perio"));
    const int elsewhere = AddRecall(QStringLiteral("Other office"), 2);
    store().ReminderContactSequenceSave(kRecallReminder, 0, {1, 2}, recall, 0);
    store().ReminderContactSequenceSave(kRecallReminder, 0, {8}, recall, 3);
    store().ReminderContactSequenceSave(kRecallReminder, 0, {4}, other, 0);
    store().ReminderContactSequenceSave(kAppointmentReminder, 0, {1, 32}, 0, 0);

    store().ReminderContactSequenceSave(kRecallReminder, 0, {}, recall, 0);
    EXPECT_TRUE(store().ReminderContactSequenceLoad(kRecallReminder, 0, recall, 0).isEmpty());
    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 0, recall, 3), QList<int>{8});
    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 0, other, 0), QList<int>{4});
    EXPECT_EQ(store().ReminderContactSequenceLoad(kAppointmentReminder, 0, 0, 0),
              (QList<int>{1, 32}));

    // A recall of another office is not this office's: it reads empty, and nothing is saved
    // for neither patient nor recall.
    EXPECT_TRUE(store().ReminderContactSequenceLoad(kRecallReminder, 0, elsewhere, 0).isEmpty());
    store().ReminderContactSequenceSave(kRecallReminder, 0, {1}, 0, 0);
    store().ReminderContactSequenceSave(6, 0, {1}, 0, 0);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from eBusContactSequence")), 4);

    // Appointment sequences are per master, apart for each patient.
    store().ReminderContactSequenceSave(kAppointmentReminder, 41, {2}, 0, 0);
    store().ReminderContactSequenceSave(kAppointmentReminder, 0, {}, 0, 0);
    EXPECT_TRUE(store().ReminderContactSequenceLoad(kAppointmentReminder, 0, 0, 0).isEmpty());
    EXPECT_EQ(store().ReminderContactSequenceLoad(kAppointmentReminder, 41, 0, 0), QList<int>{2});
    // A patient's own recall sequence hangs on the recall master.
    store().ReminderContactSequenceSave(kRecallReminder, 41, {16, 1}, 0, 0);
    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 41, 0, 0), (QList<int>{16, 1}));
    EXPECT_EQ(Count(QStringLiteral("select ebcLinTyp from eBusContactSequence where ebcpID=41 and "
                                   "ebcConMet=16")),
              host::ReminderHost::kLinkMaster);
}

TEST_P(ReminderStoreTest, StopTrackingIsSevenInSequencesAndTheLargestLongInStages) {
    const int recall = AddRecall(QStringLiteral("Prophy"));
    store().GetReminderMaster(kRecallReminder);
    int due = 0, stop = 0, late = 0;
    ASSERT_TRUE(store().ReminderStageSave(0, recall, kStopTrackingSequence, 2, QStringLiteral("Y"),
                                          0, stop));
    ASSERT_TRUE(store().ReminderStageSave(0, recall, 0, 6, QStringLiteral("M"), 0, due));
    ASSERT_TRUE(store().ReminderStageSave(0, recall, 1, 30, QStringLiteral("D"), 0, late));
    store().ReminderContactSequenceSave(kRecallReminder, 0, {4}, recall, kStopTrackingStage);

    EXPECT_EQ(store().ReminderContactSequenceLoad(kRecallReminder, 0, recall, kStopTrackingStage),
              QList<int>{4});
    EXPECT_TRUE(store()
                    .ReminderContactSequenceLoad(kRecallReminder, 0, recall, kStopTrackingSequence)
                    .isEmpty());

    // The schedule reads stage by stage, stop tracking last.
    QList<qint64> stages;
    for (db::Recordset rs(gic().GetSecondConnection(),
                          store().GetRecallSchedule(recall, QString()));
         !rs.Eof(); rs.MoveNext()) {
        EXPECT_EQ(rs.Long(QStringLiteral("rcRecNum")), recall);
        stages << rs.Long(QStringLiteral("emsSeq"));
    }
    EXPECT_EQ(stages, (QList<qint64>{0, 1, kStopTrackingSequence}));

    // Rewriting a stage keeps its row; a stage deleted by another station is reported.
    int unused = 0;
    EXPECT_TRUE(store().ReminderStageSave(late, recall, 2, 45, QStringLiteral("D"), 0, unused));
    EXPECT_EQ(Count(QStringLiteral("select emsSeq from emsTable where emsID=%1").arg(late)), 2);
    EXPECT_TRUE(store().ReminderStageDelete(late));
    EXPECT_FALSE(store().ReminderStageDelete(late));
    EXPECT_FALSE(store().ReminderStageSave(late, recall, 2, 45, QStringLiteral("D"), 0, unused));

    // Another office's schedule of the same recall number is not read here.
    session_.officeLocationId = 2;
    EXPECT_TRUE(db::Recordset(gic().GetSecondConnection(),
                              store().GetRecallSchedule(recall, QStringLiteral("Select emsSeq ")))
                    .IsEmpty());
}

TEST_P(ReminderStoreTest, RecallEntriesGiveTheirRecallMethodAndStage) {
    const int recall = AddRecall(QStringLiteral("Prophy"));
    const int entry = static_cast<int>(connection().InsertWithIdentity(
        QStringLiteral("Insert into RecTable (rRCRecNum, rPID, rConMet, rStage) values "
                       "(%1, 12, 8, 3)")
            .arg(recall)));
    EXPECT_EQ(store().RecallNumberOfEntry(entry), recall);
    EXPECT_EQ(gic().GetRecallContactMethod(entry), 8);
    EXPECT_EQ(gic().GetRecallStage(entry), 3);
    EXPECT_EQ(store().RecallNumberOfEntry(entry + 1), 0);
}

INSTANTIATE_TEST_SUITE_P(Engines, ReminderStoreTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::reminders::test
