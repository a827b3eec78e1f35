#pragma once

#include <QList>
#include <QString>

#include "component/public/gic.h"

namespace orvo::reminders {

// The six bodies of one stage's message.
struct MessageBodies {
    QString text;
    QString eMail;
    QString card;
    QString letterFile;
    QString voice;
    QString voiceSpanish;
};

// Which contacts go out per reminder type, when, over which channel, with which words: the
// reminder masters, schedule stages, message rows and contact sequences, read and written on
// the host's second connection. Every statement passes through the host's translation on the
// way (the connection does it).
class ReminderStore {
public:
    explicit ReminderStore(GIC& gic);

    // The enabled all-office master of a type; creates the five masters when it is missing.
    // 0 when there is still none.
    int GetReminderMaster(int type);
    // Inserts the master of each type that has none.
    void CreateDefaultReminderMasters();

    // The statement that reads a recall's schedule with its messages, stage by stage. An empty
    // select list reads the recall number and every column of the three tables.
    QString GetRecallSchedule(int recallNumber, const QString& selectList);

    QList<int> ReminderContactSequenceLoad(int type, int patient, int recallNumber, int stage);
    // Rewrites a sequence in place: existing rows are reused in id order, extra rows deleted,
    // missing ones inserted.
    void ReminderContactSequenceSave(int type, int patient, const QList<int>& methods,
                                     int recallNumber, int stage);

    // Writes the flags, owners and bodies of an existing message row. False when it failed.
    bool ReminderMessageSave(int rmtId, bool textAutoReturn, bool eMailAutoReturn, int emmId,
                             int emsId, const MessageBodies& bodies);
    // Inserts a message row and writes its bodies; the new rmtID, or 0 when it failed.
    int ReminderMessageAdd(bool textAutoReturn, bool eMailAutoReturn, int emmId, int emsId,
                           const MessageBodies& bodies);
    bool ReminderMessageDelete(int rmtId);
    bool ReminderStageDelete(int emsId);
    // Inserts a stage when emsId is 0 (newId takes its key) or rewrites it. False when it
    // failed.
    bool ReminderStageSave(int emsId, int recallNumber, int sequence, int period,
                           const QString& periodUnit, int patient, int& newId);

    // The recall number of an entry of the host's recall list; 0 when there is none.
    int RecallNumberOfEntry(int recallEntryId);

    // The joins, each ending with its link code and a blank; empty for a type outside range.
    QString ScheduleJoin(int type);
    QString MasterSequenceJoin(int type);
    QString RecallSequenceJoin(int type);

    // The name of the procedure that writes the six bodies of a message row.
    static const QString kUpdateMessagesProcedure;

private:
    db::Connection& Reminders();
    int RecallLinkCode();
    // The statement, after "select ..." and before any order, that finds the sequence rows of
    // an owner; empty when the arguments name none.
    QString SequenceFromWhere(int type, int patient, int recallNumber, int stage);

    GIC& gic_;
};

}  // namespace orvo::reminders
