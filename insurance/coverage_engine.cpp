#include "insurance/coverage_engine.h"

#include <QLocale>
#include <QSet>
#include <QTime>

#include "component/identity_insert.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo::insurance {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString Num(qint64 value) {
    return QString::number(value);
}

// The key of the server's transaction locks on a person's chain whose person row is missing,
// and on an employer's "No Insurance Coverage" link.
constexpr int kPersonChainLockKey = 0x434f5650;   // "COVP"
constexpr int kEmployerLinkLockKey = 0x434f5645;  // "COVE"

// One writer's transaction, with the persons whose chains it holds. On the embedded engine the
// transaction holds the database's write lock from its start; on the server each person's row
// is locked before anything of the person's chain is read.
class ChainWrite {
public:
    explicit ChainWrite(GIC& gic)
        : gic_(gic),
          connection_(gic.GetConnection()),
          transaction_(connection_, db::Transaction::Write) {}

    GIC& gic() { return gic_; }
    db::Connection& connection() { return connection_; }

    void LockPerson(int person) {
        if (connection_.engine() != db::Engine::Postgres || locked_.contains(person))
            return;
        locked_.insert(person);
        const db::Recordset row(
            connection_,
            QStringLiteral("SELECT pID FROM PATable WHERE pID = %1 FOR UPDATE").arg(person));
        // A chain whose person row is gone still has one writer at a time.
        if (row.IsEmpty())
            TransactionLock(kPersonChainLockKey, person);
    }
    void LockEmployerLink(int employer) {
        if (connection_.engine() == db::Engine::Postgres)
            TransactionLock(kEmployerLinkLockKey, employer);
    }
    void Commit() { transaction_.Commit(); }

    // The day every row of the transaction is ended or started on, read once.
    const QString& Today() {
        if (today_.isEmpty())
            today_ = gic_.GetToday().toString(QStringLiteral("MM/dd/yyyy"));
        return today_;
    }

    int InsertWithNewKey(const QString& insert) { return orvo::InsertWithNewKey(gic_, insert); }

private:
    void TransactionLock(int key, int id) {
        connection_.Execute(
            QStringLiteral("SELECT pg_advisory_xact_lock(%1, %2)").arg(key).arg(id));
    }

    GIC& gic_;
    db::Connection& connection_;
    db::Transaction transaction_;
    QSet<int> locked_;
    QString today_;
};

QString EndRowSet(const QString& table, const QString& prefix, ChainWrite& w) {
    return QStringLiteral("UPDATE %1 SET %1.%2EndDat=#%3#, %1.%2EndWho=%4, %1.%2Fla=1 WHERE ")
        .arg(table, prefix, w.Today(), db::QuoteText(w.gic().GetLoginName()));
}

void ShowAlreadyCovered(GIC& gic, int person) {
    prompts().Message(
        gic.GetPersonName(person, QStringLiteral(" "), QString()) + kAlreadyCoveredText,
        Buttons::Ok, Icon::Information, QString());
}

// --- coverage rows -----------------------------------------------------------------------------

int InsertCoverage(ChainWrite& w, int person, int relation, int PatEmpID, int order) {
    return w.InsertWithNewKey(
        QStringLiteral("INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, CovOrd, "
                       "CovStaDat, CovFla) VALUES (") +
        Num(person) + QStringLiteral(", ") + Num(relation) + QStringLiteral(", ") + Num(PatEmpID) +
        QStringLiteral(", ") + Num(order) + QStringLiteral(", #") + w.Today() +
        QStringLiteral("#, 0)"));
}

void EndCoverage(ChainWrite& w, int CovID) {
    w.connection().ExecuteOneRow(EndRowSet(QStringLiteral("CovTable"), QStringLiteral("Cov"), w) +
                                 QStringLiteral("((CovTable.CovID)=") + Num(CovID) +
                                 QStringLiteral(");"));
}

struct ActiveCoverage {
    int CovOrd = 0;
    int CovRel = 0;
    int CovSubPatEmpID = 0;
};

bool ReadActiveCoverage(ChainWrite& w, int CovID, ActiveCoverage& row) {
    const db::Recordset rs(w.connection(),
                           QStringLiteral("SELECT * FROM CovTable WHERE ((CovTable.CovID)=") +
                               Num(CovID) + QStringLiteral(") AND ((CovTable.CovFla)=0);"));
    if (rs.IsEmpty())
        return false;
    row.CovOrd = static_cast<int>(rs.Long(QStringLiteral("CovOrd")));
    row.CovRel = static_cast<int>(rs.Long(QStringLiteral("CovRel")));
    row.CovSubPatEmpID = static_cast<int>(rs.Long(QStringLiteral("CovSubPatEmpID")));
    return true;
}

// The first two positions of the person's record follow the coverage at CovOrd 1 and 2.
void KeepPositionInStep(GIC& gic, int person, int order, int elID) {
    if (order == 1 || order == 2)
        gic.SetPersonCoverageLink(person, elID, order == 1, false);
}

int Add_Coverage_Record(ChainWrite& w, int person, int PatEmpID) {
    GIC& gic = w.gic();
    if (Coverage_Exists(gic, person, PatEmpID))
        return 0;
    const int order = Count_Coverage(gic, person) + 1;
    const int relation =
        Get_Subscriber_Person(gic, PatEmpID) == person ? kRelationSelf : kRelationOther;
    const int CovID = InsertCoverage(w, person, relation, PatEmpID, order);
    gic.CoverageAdded(person);
    KeepPositionInStep(gic, person, order, Get_Coverage_El(gic, CovID));
    return CovID;
}

int Change_Coverage_Record(ChainWrite& w, int person, int oldCovID, int newPatEmpID,
                           bool updatePerson) {
    GIC& gic = w.gic();
    if (Coverage_Exists(gic, person, newPatEmpID))
        return 0;
    ActiveCoverage old;
    if (!ReadActiveCoverage(w, oldCovID, old))
        return 0;
    // A spouse moved to another plan of the same subscriber stays a spouse.
    int relation = old.CovRel;
    const int subscriber = Get_Subscriber_Person(gic, newPatEmpID);
    if (subscriber == person)
        relation = kRelationSelf;
    else if (relation == kRelationSelf)
        relation = kRelationOther;
    EndCoverage(w, oldCovID);
    const int CovID = InsertCoverage(w, person, relation, newPatEmpID, old.CovOrd);
    const int elID = Get_Coverage_El(gic, CovID);
    if (updatePerson)
        KeepPositionInStep(gic, person, old.CovOrd, elID);
    return CovID;
}

bool Remove_Coverage_Record(ChainWrite& w, int person, int CovID) {
    GIC& gic = w.gic();
    ActiveCoverage old;
    if (!ReadActiveCoverage(w, CovID, old))
        return false;
    EndCoverage(w, CovID);
    w.connection().Execute(
        QStringLiteral("UPDATE CovTable SET CovTable.CovOrd = [CovTable].[CovOrd]-1 WHERE "
                       "(((CovTable.CovFla)=0) AND ((CovTable.CovOrd)>") +
        Num(old.CovOrd) + QStringLiteral(") AND ((CovTable.CovPatID)=") + Num(person) +
        QStringLiteral("));"));
    gic.FlushConnection(w.connection(), 1);
    if (old.CovOrd != 1 && old.CovOrd != 2)
        return true;  // a third or later coverage leaves the person's record alone
    const QList<CoverageRow> rows = Load_Coverage_Rows(gic, person, false);
    gic.FlushConnection(w.connection(), 1);
    const int n = static_cast<int>(rows.size());
    for (int i = old.CovOrd; i <= 2 && i <= n; ++i) {
        gic.SetPersonCoverageLink(person, rows[i - 1].detail.elID, i == 1, true);
        if (i == 1) {
            // The former secondary is primary now, and its figures go with it.
            gic.SetCoverageYearToDate(person, true, gic.GetCoverageYearToDate(person, false));
        }
    }
    if (n < 1)
        gic.SetPersonCoverageLink(person, 0, true, true);
    if (n < 2)
        gic.SetPersonCoverageLink(person, 0, false, true);
    return true;
}

// --- history -----------------------------------------------------------------------------------

enum class Action { Added, Changed, Removed };

void WriteCoverageHistory(GIC& gic, int person, Action action, const CoverageDetail& reference,
                          const QString& oldText, const QString& newText) {
    const QString orderWord = Get_Order_Word(reference.CovOrd);
    const QString login = gic.GetLoginName();
    const QString dateText = gic.GetToday().toString(QStringLiteral("M/d/yyyy"));
    const QString timeText =
        QLocale::c().toString(QTime::currentTime(), QStringLiteral("hh:mm AP"));
    const QString byWhomWhen = QStringLiteral("by user ") + login + QStringLiteral(" on ") +
                               dateText + QStringLiteral(" ") + QStringLiteral("at ") + timeText +
                               QStringLiteral(".") + kCrLf + kCrLf;
    const QString actionWord = action == Action::Added     ? QStringLiteral("added ")
                               : action == Action::Changed ? QStringLiteral("changed ")
                                                           : QStringLiteral("removed ");
    QString text = QStringLiteral("The following ") + orderWord +
                   QStringLiteral(" insurance plan was ") + actionWord + byWhomWhen;
    switch (action) {
        case Action::Added:
            text += newText;
            break;
        case Action::Removed:
            text += oldText;
            break;
        case Action::Changed:
            text += QStringLiteral("----- Original Coverage -----") + kCrLf + oldText + kCrLf +
                    kCrLf + QStringLiteral("----- New Coverage -----") + kCrLf + newText;
            break;
    }
    gic.WriteLogLine(person, kCoverageNoteType, kCoverageNoteSource, kCoverageNoteField, text);
    if (action == Action::Removed)
        return;
    // The reference of a change is the old row, so a change is compared with the former
    // subscriber; and the note of an added plan carries the old text, which is empty.
    if (gic.GetFamilyID(person) == gic.GetFamilyID(reference.PatEmpPatID))
        return;
    gic.WriteLogLine(person, kCoverageNoteType, kCoverageNoteSource, kCoverageNoteField,
                     QStringLiteral("The following ") + orderWord +
                         QStringLiteral(" insurance plan has been connected to a non-family "
                                        "member ") +
                         byWhomWhen + (action == Action::Changed ? newText : oldText));
}

// Update_Coverage under the person's lock, with its questions already answered.
bool UpdateCoverageLocked(ChainWrite& w, int person, int oldCovID, int newPatEmpID,
                          bool updatePerson) {
    GIC& gic = w.gic();
    Action action = Action::Added;
    CoverageDetail reference;
    QString oldText;
    QString newText;
    if (oldCovID == 0) {
        const int CovID = Add_Coverage_Record(w, person, newPatEmpID);
        if (CovID == 0)
            return false;
        reference = Load_Coverage_Detail(gic, CovID);
        newText = Get_Coverage_Text(gic, reference);
    } else if (newPatEmpID != 0) {
        action = Action::Changed;
        const int CovID = Change_Coverage_Record(w, person, oldCovID, newPatEmpID, updatePerson);
        if (CovID == 0)
            return false;
        // The old row keeps what it had when it ended: read after the change, it reads the same.
        reference = Load_Coverage_Detail(gic, oldCovID);
        oldText = Get_Coverage_Text(gic, reference);
        newText = Get_Coverage_Text(gic, Load_Coverage_Detail(gic, CovID));
    } else {
        action = Action::Removed;
        if (!Remove_Coverage_Record(w, person, oldCovID))
            return false;
        reference = Load_Coverage_Detail(gic, oldCovID);
        oldText = Get_Coverage_Text(gic, reference);
    }
    gic.CoverageChanged(person);
    WriteCoverageHistory(gic, person, action, reference, oldText, newText);
    return true;
}

// --- subscriber links --------------------------------------------------------------------------

struct ActiveLink {
    int PatEmpID = 0;
    int PatEmpOrd = 0;
};

bool ReadActiveLink(ChainWrite& w, int person, int elID, ActiveLink& link) {
    const db::Recordset rs(w.connection(),
                           QStringLiteral("SELECT * FROM PatEmpTable WHERE "
                                          "(((PatEmpTable.PatEmpPatID)=") +
                               Num(person) + QStringLiteral(") AND ((PatEmpTable.PatEmpElID)=") +
                               Num(elID) + QStringLiteral(") AND ((PatEmpTable.PatEmpFla)=0));"));
    if (rs.IsEmpty())
        return false;
    link.PatEmpID = static_cast<int>(rs.Long(QStringLiteral("PatEmpID")));
    link.PatEmpOrd = static_cast<int>(rs.Long(QStringLiteral("PatEmpOrd")));
    return true;
}

int InsertLink(ChainWrite& w, int person, int elID, int order) {
    return w.InsertWithNewKey(
        QStringLiteral("INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, "
                       "PatEmpStaDat, PatEmpFla) VALUES (") +
        Num(person) + QStringLiteral(", ") + Num(elID) + QStringLiteral(", ") + Num(order) +
        QStringLiteral(", #") + w.Today() + QStringLiteral("#, 0)"));
}

void EndLink(ChainWrite& w, int PatEmpID) {
    w.connection().ExecuteOneRow(
        EndRowSet(QStringLiteral("PatEmpTable"), QStringLiteral("PatEmp"), w) +
        QStringLiteral("((PatEmpTable.PatEmpID)=") + Num(PatEmpID) + QStringLiteral(");"));
}

struct CoverageThroughEmployer {
    int CovID = 0;
    int CovPatID = 0;
};

// Every active coverage on any link the subscriber has or had with the employer. Those on an
// ended subscriber link come first: when one person is covered through two links of the
// subscriber with the employer and both are to move to one new link, the move of the second is
// refused (one coverage per link), and it is then the coverage on the link still active that
// stays where it is, never one on the ended link, which nobody could see or count any more.
QList<CoverageThroughEmployer> CoverageOfEmployer(ChainWrite& w, int subscriber, int employer) {
    db::Recordset rs(
        w.connection(),
        QStringLiteral(
            "SELECT CovTable.CovID, PatEmpTable.PatEmpID, ELTable.elID, CovTable.CovPatID, "
            "PatEmpTable.PatEmpPatID, ELTable.elEmpID FROM ((CovTable INNER JOIN PatEmpTable ON "
            "CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID) INNER JOIN ELTable ON "
            "PatEmpTable.PatEmpElID = ELTable.elID) WHERE (((PatEmpTable.PatEmpPatID)=") +
            Num(subscriber) + QStringLiteral(") AND ((ELTable.elEmpID)=") + Num(employer) +
            QStringLiteral(") AND ((CovTable.CovFla)=0)) ORDER BY PatEmpTable.PatEmpFla DESC, "
                           "CovTable.CovID; "));
    QList<CoverageThroughEmployer> rows;
    for (; !rs.Eof(); rs.MoveNext())
        rows << CoverageThroughEmployer{static_cast<int>(rs.Long(0)), static_cast<int>(rs.Long(3))};
    return rows;
}

// New subscriber link 0 removes; any other changes.
void UpdateCoverageThroughEmployer(ChainWrite& w, int subscriber, int employer, int newPatEmpID,
                                   int spare, bool updatePerson) {
    w.LockPerson(subscriber);
    for (const CoverageThroughEmployer& row : CoverageOfEmployer(w, subscriber, employer)) {
        if (row.CovPatID == spare)
            continue;
        w.LockPerson(row.CovPatID);
        UpdateCoverageLocked(w, row.CovPatID, row.CovID, newPatEmpID, updatePerson);
    }
}

int Add_Subscriber_Link(ChainWrite& w, int person, int elID, bool silent) {
    GIC& gic = w.gic();
    const int order = Count_Subscriber_Links(gic, person) + 1;
    const int PatEmpID = InsertLink(w, person, elID, order);
    gic.SubscriberLinksChanged(person);
    if (!Is_No_Insurance_Link(gic, elID) && order == 1) {
        // A person's first link with a plan covers the person, unless covered already.
        if (Count_Coverage(gic, person) == 0)
            UpdateCoverageLocked(w, person, 0, PatEmpID, true);
        gic.SetPersonPrimaryEmployer(person, Get_El_Employer_ID(gic, elID),
                                     Get_El_Group_ID(gic, elID), silent);
    }
    return PatEmpID;
}

int Change_Subscriber_Link(ChainWrite& w, int person, int oldElID, int newElID, bool flag,
                           bool updatePerson) {
    GIC& gic = w.gic();
    ActiveLink old;
    if (!ReadActiveLink(w, person, oldElID, old))
        return 0;
    EndLink(w, old.PatEmpID);
    const int PatEmpID = InsertLink(w, person, newElID, old.PatEmpOrd);
    gic.SubscriberLinksChanged(person);
    const int oldEmployer = Get_El_Employer_ID(gic, oldElID);
    if (Is_No_Insurance_Link(gic, newElID))
        UpdateCoverageThroughEmployer(w, person, oldEmployer, 0, 0, true);
    else
        UpdateCoverageThroughEmployer(w, person, oldEmployer, PatEmpID, 0, updatePerson);
    if (old.PatEmpOrd == 1) {
        gic.SetPersonPrimaryEmployer(person, Get_El_Employer_ID(gic, newElID),
                                     Get_El_Group_ID(gic, newElID), flag);
    }
    return PatEmpID;
}

bool Remove_Subscriber_Link(ChainWrite& w, int person, int elID) {
    GIC& gic = w.gic();
    ActiveLink old;
    if (!ReadActiveLink(w, person, elID, old))
        return false;
    EndLink(w, old.PatEmpID);
    w.connection().Execute(
        QStringLiteral("UPDATE PatEmpTable SET PatEmpTable.PatEmpOrd = [PatEmpTable].[PatEmpOrd]-1 "
                       "WHERE (((PatEmpTable.PatEmpFla)=0) AND ((PatEmpTable.PatEmpOrd)>") +
        Num(old.PatEmpOrd) + QStringLiteral(") AND ((PatEmpTable.PatEmpPatID)=") + Num(person) +
        QStringLiteral("));"));
    gic.SubscriberLinksChanged(person);
    // The person's record keeps its employer until something else changes it.
    UpdateCoverageThroughEmployer(w, person, Get_El_Employer_ID(gic, elID), 0, 0, true);
    return true;
}

}  // namespace

void Update_Coverage(GIC& gic, int person, int oldCovID, int newPatEmpID, bool silent,
                     bool& updatePerson, bool& failed) {
    failed = true;
    if (person == 0)
        return;
    if (!silent) {
        // Asked before the chain is locked, so that no station waits on a question.
        const bool adding = oldCovID == 0;
        const bool changing = !adding && newPatEmpID != 0;
        if ((adding || changing) && Coverage_Exists(gic, person, newPatEmpID)) {
            ShowAlreadyCovered(gic, person);
            return;
        }
        if (changing && !gic.AskYesNo(false, kChangeCoverageTitle, kChangeCoverageText))
            return;
        if (!adding && !changing &&
            !gic.AskYesNo(false, kRemoveCoverageTitle, kRemoveCoverageText)) {
            return;
        }
    }
    ChainWrite write(gic);
    write.LockPerson(person);
    if (!UpdateCoverageLocked(write, person, oldCovID, newPatEmpID, updatePerson))
        return;
    write.Commit();
    failed = false;
}

void Update_Subscriber_Link(GIC& gic, int person, int oldElID, int newElID, bool silent,
                            bool& updatePerson) {
    if (person == 0)
        return;
    ChainWrite write(gic);
    write.LockPerson(person);
    if (oldElID == 0)
        Add_Subscriber_Link(write, person, newElID, silent);
    else if (newElID != 0)
        Change_Subscriber_Link(write, person, oldElID, newElID, silent, updatePerson);
    else
        Remove_Subscriber_Link(write, person, oldElID);
    write.Commit();
}

void Remove_Coverage_Through_Employer(GIC& gic, int subscriber, int employer, int spare) {
    ChainWrite write(gic);
    UpdateCoverageThroughEmployer(write, subscriber, employer, 0, spare, true);
    write.Commit();
}

void Change_Coverage_Through_Employer(GIC& gic, int subscriber, int employer, int newPatEmpID,
                                      int spare, bool& updatePerson) {
    ChainWrite write(gic);
    UpdateCoverageThroughEmployer(write, subscriber, employer, newPatEmpID, spare, updatePerson);
    write.Commit();
}

int Get_No_Insurance_Link(GIC& gic, int employer) {
    ChainWrite write(gic);
    write.LockEmployerLink(employer);
    const db::Recordset rs(
        write.connection(),
        QStringLiteral("SELECT ELTable.elID FROM ELTable WHERE (((ELTable.elFla) = 0) AND "
                       "((ELTable.elInsID) =0) AND ((ELTable.elGroID) =0) AND "
                       "((ELTable.elEmpID) =") +
            Num(employer) + QStringLiteral(")) ORDER BY ELTable.elID;"));
    int elID = rs.IsEmpty() ? 0 : static_cast<int>(rs.Long(0));
    if (elID == 0) {
        elID = write.InsertWithNewKey(
            QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) "
                           "VALUES (") +
            Num(employer) + QStringLiteral(", 0, 0, #") + write.Today() + QStringLiteral("#, 0)"));
    }
    write.Commit();
    return elID;
}

int Edit_Employer_For_Link(GIC& gic, int employer, QWidget*& owner, bool& changed,
                           QVariant& fourth) {
    // The employer screen answers through Employer_Start; until it is built, nothing is opened
    // and no link is made up.
    throw NotImplemented(QStringLiteral("EditingScreen.Employer_Start"));
}

}  // namespace orvo::insurance
