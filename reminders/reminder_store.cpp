#include "reminders/reminder_store.h"

#include <QLoggingCategory>

#include "platform/db/recordset.h"
#include "reminders/reminder_codes.h"
#include "reminders/reminders_log.h"

namespace orvo::reminders {
namespace {

QString Num(qint64 value) {
    return QString::number(value);
}
QString Bit(bool flag) {
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

// The writes whose callers fold every result into one flag: a failure is logged and answered
// as false.
template <class Write>
bool Try(const char* what, Write write) {
    try {
        write();
        return true;
    } catch (const db::DatabaseError& error) {
        qCWarning(lcReminders).noquote() << what << "failed:" << error.describe();
        return false;
    }
}

}  // namespace

const QString ReminderStore::kUpdateMessagesProcedure =
    QStringLiteral("ReminderMessageTable_Update_Messages");

ReminderStore::ReminderStore(GIC& gic) : gic_(gic) {}

db::Connection& ReminderStore::Reminders() {
    return gic_.GetSecondConnection();
}

int ReminderStore::RecallLinkCode() {
    return gic_.GetReminderLinkType(kRecallReminder, false);
}

// The joins end with a blank, so that the clause after them may follow directly.
QString ReminderStore::ScheduleJoin(int type) {
    if (type < kAppointmentConfirmation || type > kNewsLetter)
        return {};
    return QStringLiteral("emmTable Left Join emsTable on emmID=emsLinID and emsLinTyp=") +
           Num(gic_.GetReminderLinkType(type, false)) + QLatin1Char(' ');
}

QString ReminderStore::MasterSequenceJoin(int type) {
    if (type < kRecallReminder || type > kNewsLetter)
        return {};
    return QStringLiteral(
               "emmTable Left Join eBusContactSequence on emmID=ebcLinID and "
               "ebcLinTyp=") +
           Num(gic_.GetReminderLinkType(type, type == kRecallReminder)) + QLatin1Char(' ');
}

QString ReminderStore::RecallSequenceJoin(int type) {
    if (type != kRecallReminder)
        return {};
    return QStringLiteral(
               "ORVOWIN.dbo.rsTable Left Join eBusContactSequence on "
               "ORVOWIN.dbo.rsTable.RCRecNum=ebcLinID and ebcLinTyp=") +
           Num(RecallLinkCode()) + QLatin1Char(' ');
}

int ReminderStore::GetReminderMaster(int type) {
    const QString sql = QStringLiteral(
                            "select emmID from emmTable where emmEna=1 and offLocID=-1 and "
                            "emmAppDefTyp=") +
                        Num(type);
    for (int attempt = 0; attempt < 2; ++attempt) {
        db::Recordset rs(Reminders(), sql);
        if (!rs.IsEmpty())
            return static_cast<int>(rs.Long(0));
        if (attempt == 0)
            CreateDefaultReminderMasters();
    }
    return 0;
}

void ReminderStore::CreateDefaultReminderMasters() {
    db::Connection& connection = Reminders();
    for (int type = kRecallReminder; type <= kNewsLetter; ++type) {
        const qint64 count =
            db::ReadScalar(
                connection,
                QStringLiteral("select count(emmID) from emmTable where emmAppDefTyp=") + Num(type))
                .toLongLong();
        if (count != 0)
            continue;
        connection.Execute(QStringLiteral("Insert into emmTable (emmDes,emmHasCutOff,emmEna,"
                                          "emmAppDefTyp,OffLocID) values (") +
                           gic_.SqlQuoteText(ReminderTypeText(type)) + QStringLiteral(", ") +
                           QStringLiteral("0, ") + QStringLiteral("1, ") + Num(type) +
                           QStringLiteral(", ") + QStringLiteral("-1") + QStringLiteral(")"));
    }
}

QString ReminderStore::GetRecallSchedule(int recallNumber, const QString& selectList) {
    const QString select = selectList.isEmpty()
                               ? QStringLiteral(
                                     "Select ORVOWIN.dbo.rstable.rcRecNum, emmTable.*, emsTable.*, "
                                     "ReminderMessageTable.* ")
                               : selectList;
    return select + QStringLiteral("from ") +
           QStringLiteral("ORVOWIN.dbo.rstable left join emmtable on emmAppDefTyp=") +
           Num(kRecallReminder) + QStringLiteral(" left join emsTable on emsLinTyp=") +
           Num(RecallLinkCode()) + QStringLiteral(" and emsLinID=ORVOWIN.dbo.rstable.rcRecNum ") +
           QStringLiteral("left join ReminderMessageTable on rmtemmid=emmid and rmtLinID=emsID ") +
           QStringLiteral("where ORVOWIN.dbo.rstable.rcRecNum=") + Num(recallNumber) +
           QStringLiteral(
               " and EMSPID=0 and emmTable.OffLocID=-1 and emmEna=1 and "
               "rsTable.OffLocID=") +
           Num(gic_.GetOfficeLocationID()) + QStringLiteral(" order by emsSeq");
}

QString ReminderStore::SequenceFromWhere(int type, int patient, int recallNumber, int stage) {
    if (type == kRecallReminder && recallNumber != 0) {
        return RecallSequenceJoin(type) + QStringLiteral(" where ORVOWIN.dbo.rsTable.RCRecNum=") +
               Num(recallNumber) + QStringLiteral(" and ORVOWIN.dbo.rsTable.OffLocID=") +
               Num(gic_.GetOfficeLocationID()) + QStringLiteral(" and ebcPer=") + Num(stage) +
               QStringLiteral(" and ebcpID=") + Num(patient);
    }
    if (type == kRecallReminder) {
        return MasterSequenceJoin(type) + QStringLiteral(" where emmEna=1 and OffLocID=-1 ") +
               QStringLiteral("and emmAppDefTyp=") + Num(kRecallReminder) +
               QStringLiteral(" and ebcpID=") + Num(patient);
    }
    return MasterSequenceJoin(type) +
           QStringLiteral(" where emmEna=1 and OffLocID=-1 and emmAppDefTyp=") + Num(type) +
           QStringLiteral(" and ebcpID=") + Num(patient);
}

QList<int> ReminderStore::ReminderContactSequenceLoad(int type, int patient, int recallNumber,
                                                      int stage) {
    if (type < kRecallReminder || type > kNewsLetter)
        return {};
    if (type == kRecallReminder && recallNumber == 0 && patient == 0)
        return {};
    const QString fromWhere = SequenceFromWhere(type, patient, recallNumber, stage);
    db::Connection& connection = Reminders();
    if (db::ReadScalar(connection, QStringLiteral("Select count(ebcID) from ") + fromWhere)
            .toLongLong() == 0) {
        return {};
    }
    QList<int> methods;
    for (db::Recordset rs(connection, QStringLiteral("Select ebcConMet from ") + fromWhere +
                                          QStringLiteral(" order by ebcSeq"));
         !rs.Eof(); rs.MoveNext()) {
        methods << static_cast<int>(rs.Long(0));
    }
    return methods;
}

void ReminderStore::ReminderContactSequenceSave(int type, int patient, const QList<int>& methods,
                                                int recallNumber, int stage) {
    if (type < kRecallReminder || type > kNewsLetter)
        return;
    if (type == kRecallReminder && patient == 0 && recallNumber == 0)
        return;

    db::Connection& connection = Reminders();
    db::Transaction transaction(connection);

    // The rows the sequence has now, oldest first: they are reused in that order, so a
    // method's row does not stay with the method.
    QString collect;
    if (type == kRecallReminder && recallNumber != 0) {
        collect = QStringLiteral("select ebcID from ") +
                  SequenceFromWhere(type, patient, recallNumber, stage) +
                  QStringLiteral(" order by ebcID");
    } else if (type == kRecallReminder) {
        collect = QStringLiteral("select ebcID from ") + MasterSequenceJoin(type) +
                  QStringLiteral(" where emmEna=1 and OffLocID=-1 and emmAppDefTyp=") +
                  Num(kRecallReminder) + QStringLiteral(" and ebcpID=") + Num(patient) +
                  QStringLiteral(" order by ebcID");
    } else {
        collect = QStringLiteral("select ebcID from ") + MasterSequenceJoin(type) +
                  QStringLiteral("where ebcpID=") + Num(patient) +
                  QStringLiteral(" and emmEna=1 and offLocID=-1 and emmAppDefTyp=") + Num(type) +
                  QStringLiteral(" order by ebcID");
    }
    QList<qint64> rows;
    for (db::Recordset rs(connection, collect); !rs.Eof(); rs.MoveNext()) {
        if (!rs.IsNull(0))  // a recall with no sequence joins as one empty row
            rows << rs.Long(0);
    }

    int position = 0;
    for (; position < methods.size() && position < rows.size(); ++position) {
        connection.ExecuteOneRow(QStringLiteral("update eBusContactSequence set ebcPer=") +
                                 Num(stage) + QStringLiteral(", ebcPid=") + Num(patient) +
                                 QStringLiteral(", ebcSeq=") + Num(position + 1) +
                                 QStringLiteral(", ebcConMet=") + Num(methods[position]) +
                                 QStringLiteral(" Where ebcID=") + Num(rows[position]));
    }
    if (position < methods.size()) {
        const bool recallOwned = type == kRecallReminder && recallNumber != 0 && patient == 0;
        const int owner = recallOwned ? recallNumber : GetReminderMaster(type);
        const int code = gic_.GetReminderLinkType(type, type == kRecallReminder && patient != 0);
        for (; position < methods.size(); ++position) {
            connection.Execute(QStringLiteral("insert into eBusContactSequence (ebcLinID,ebcLinTyp,"
                                              "ebcpID,ebcSeq,ebcPer,ebcConMet) values (") +
                               Num(owner) + u',' + Num(code) + u',' + Num(patient) + u',' +
                               Num(position + 1) + u',' + Num(stage) + u',' +
                               Num(methods[position]) + u')');
        }
    }
    for (qsizetype row = position; row < rows.size(); ++row) {
        connection.Execute(QStringLiteral("Delete from eBusContactSequence where ebcID=") +
                           Num(rows[row]));
    }
    transaction.Commit();
}

bool ReminderStore::ReminderMessageSave(int rmtId, bool textAutoReturn, bool eMailAutoReturn,
                                        int emmId, int emsId, const MessageBodies& bodies) {
    return Try("Saving a reminder message", [&] {
        // The bodies hold any character at any length, so they go by parameters and never in
        // the statement's text. A parameter of size 0 is refused: an empty body goes as one
        // blank, and readers trim before they test for an absent message.
        gic_.EnsureStoredProcedure(
            kUpdateMessagesProcedure,
            QStringLiteral("UPDATE ReminderMessageTable SET rmtTexMes = @TextMessage, rmtEMaMes = "
                           "@EMailMessage, rmtCarMes = @CardMessage, rmtLetFil = "
                           "@LetterFileName, rmtVoiMes = @VoiceMessage, rmtVoiMesSpanish = "
                           "@VoiceMessageSpanish WHERE rmtID = @RecordID"),
            QStringLiteral("(@RecordID int, @TextMessage nText, @EMailMessage nText, "
                           "@CardMessage nText, @LetterFileName nText, @VoiceMessage nText, "
                           "@VoiceMessageSpanish nText)"));
        const auto body = [](const char* name, const QString& text) {
            return db::ProcedureArgument::WideText(QLatin1String(name),
                                                   text.isEmpty() ? QStringLiteral(" ") : text);
        };
        db::Connection& connection = Reminders();
        db::Transaction transaction(connection);
        connection.ExecuteOneRow(
            QStringLiteral("Update ReminderMessageTable Set rmtTexAutRetMes = ") +
            Bit(textAutoReturn) + QStringLiteral(", rmtEmaAutRetMes = ") + Bit(eMailAutoReturn) +
            QStringLiteral(", rmtemmID = ") + Num(emmId) + QStringLiteral(", rmtLinID =") +
            Num(emsId) + QStringLiteral(" Where rmtID=") + Num(rmtId));
        connection.CallProcedure(
            kUpdateMessagesProcedure,
            {db::ProcedureArgument::Integer(QStringLiteral("@RecordID"), rmtId),
             body("@TextMessage", bodies.text), body("@EMailMessage", bodies.eMail),
             body("@CardMessage", bodies.card), body("@LetterFileName", bodies.letterFile),
             body("@VoiceMessage", bodies.voice),
             body("@VoiceMessageSpanish", bodies.voiceSpanish)});
        transaction.Commit();
    });
}

int ReminderStore::ReminderMessageAdd(bool textAutoReturn, bool eMailAutoReturn, int emmId,
                                      int emsId, const MessageBodies& bodies) {
    qint64 id = 0;
    const bool inserted = Try("Adding a reminder message", [&] {
        id = Reminders().InsertWithIdentity(
            QStringLiteral("SET NOCOUNT ON; ") +
            QStringLiteral("Insert into ReminderMessageTable (rmtTexAutRetMes, rmtEmaAutRetMes, "
                           "rmtemmID, rmtLinID) values (") +
            Bit(textAutoReturn) + QStringLiteral(", ") + Bit(eMailAutoReturn) +
            QStringLiteral(", ") + Num(emmId) + QStringLiteral(", ") + Num(emsId) +
            QStringLiteral(")") + QStringLiteral("; SELECT @@IDENTITY"));
    });
    if (!inserted || id <= 0)
        return 0;
    if (!ReminderMessageSave(static_cast<int>(id), textAutoReturn, eMailAutoReturn, emmId, emsId,
                             bodies)) {
        return 0;
    }
    return static_cast<int>(id);
}

bool ReminderStore::ReminderMessageDelete(int rmtId) {
    return Try("Deleting a reminder message", [&] {
        Reminders().ExecuteOneRow(QStringLiteral("Delete From ReminderMessageTable Where rmtID=") +
                                  Num(rmtId));
    });
}

bool ReminderStore::ReminderStageDelete(int emsId) {
    return Try("Deleting a reminder stage", [&] {
        Reminders().ExecuteOneRow(QStringLiteral("Delete From emsTable Where emsID=") + Num(emsId));
    });
}

bool ReminderStore::ReminderStageSave(int emsId, int recallNumber, int sequence, int period,
                                      const QString& periodUnit, int patient, int& newId) {
    return Try("Saving a reminder stage", [&] {
        const QString code = Num(RecallLinkCode());
        const QString unit = gic_.SqlQuoteText(periodUnit);
        if (emsId == 0) {
            const qint64 id = Reminders().InsertWithIdentity(
                QStringLiteral("SET NOCOUNT ON; ") +
                QStringLiteral("Insert into emsTable (emsLinTyp, emsLinID, emsSeq, emsPer, "
                               "emsPerTyp, emsPID) values (") +
                code + QStringLiteral(", ") + Num(recallNumber) + QStringLiteral(", ") +
                Num(sequence) + QStringLiteral(", ") + Num(period) + QStringLiteral(", ") + unit +
                QStringLiteral(", ") + Num(patient) + QStringLiteral(")") +
                QStringLiteral("; SELECT @@IDENTITY"));
            newId = static_cast<int>(id);
            return;
        }
        Reminders().ExecuteOneRow(
            QStringLiteral("UPdate emsTable Set emsLinTyp=") + code +
            QStringLiteral(", emsLinID=") + Num(recallNumber) + QStringLiteral(", emsSeq=") +
            Num(sequence) + QStringLiteral(", emsPer=") + Num(period) +
            QStringLiteral(", emsPerTyp=") + unit + QStringLiteral(", emsPID=") + Num(patient) +
            QStringLiteral(" Where emsID=") + Num(emsId));
    });
}

int ReminderStore::RecallNumberOfEntry(int recallEntryId) {
    return static_cast<int>(
        db::ReadScalar(
            gic_.GetConnection(),
            QStringLiteral("Select rRCRecNum from RecTable where rRecNum=") + Num(recallEntryId))
            .toLongLong());
}

}  // namespace orvo::reminders
