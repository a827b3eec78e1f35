#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include "component/public/gic.h"
#include "lists/engines/shared_record_engines.h"
#include "lists/list_owner.h"

namespace orvo::lists {

class frmTGList;

// The list window's delete commands for the shared records (group plans, carriers, employers,
// pharmacies): count what hangs on the row, offer a replacement chosen from a list of the same
// kind, show who will be moved, and run the engine in one transaction with the audit lines of
// the answers that led to it.
//
// An answer's audit line is written in the transaction of the work it started, so a replace or
// delete that fails or is cancelled later leaves no line behind. A person whose patient record
// is open for editing (here or at another station) is never moved from under that screen: the
// command refuses before anything is written and names who holds each record.
class SharedRecordCommands {
public:
    SharedRecordCommands(GIC& gic, frmTGList& window, ListOwner& owner);

    void Delete_GroupPlan();
    void Delete_Carrier();
    void Delete_Employer();
    void Delete_Pharmacy();

    // Choose a replacement from a list of the same kind, show who moves, move them. True when
    // done, with newId the replacement.
    bool Replace_GroupPlan(int oldId, QWidget* listOwner, int& newId);
    bool Replace_Carrier(int oldId, QWidget* listOwner, int& newId);
    bool Replace_Employer(int oldId, QWidget* listOwner, int& newId);
    bool Replace_Pharmacy(int oldId, QWidget* listOwner);

    // The texts of one kind of record.
    struct Texts {
        SharedRecord kind;
        QString title;        // "Delete Group Plan"
        QString noun;         // "Group Plan"
        QString countNoun;    // " employer"
        QString coveredLine;  // "patients covered under this group."; empty for a pharmacy
        QString before;       // what "Before deleting this ..., " goes on with
        QString notConnected;
        QString sameRecord;
        QString banner;
    };
    static const Texts& TextsOf(SharedRecord kind);
    // The three-button warning for n connected.
    static QString Warning(const Texts& texts, int n);
    // The audit line's text for an answer.
    static QString AuditText(GIC& gic, const QString& button, const QString& warning,
                             const QString& name, int id);

private:
    void DeleteShared(SharedRecord kind);
    bool ReplaceShared(SharedRecord kind, int oldId, const QString& name, QWidget* listOwner,
                       int& newId, const QString& auditText);
    bool PickReplacement(const Texts& texts, int oldId, const QString& name, QWidget* listOwner,
                         int& newId, QString& newName);
    // The lock check and the preview; false when the command is to stop.
    bool ReadyToMove(const Texts& texts, const QList<AffectedPerson>& persons,
                     const QString& action, bool writesPersons);

    GIC& gic_;
    frmTGList& window_;
    ListOwner& owner_;
};

}  // namespace orvo::lists
