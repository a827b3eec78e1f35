#include "lists/engines/shared_record_engines.h"

#include <QLocale>
#include <QTime>

#include "component/identity_insert.h"
#include "insurance/coverage_engine.h"
#include "insurance/coverage_reads.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::lists {
namespace {

using insurance::Get_El_Employer_ID;
using insurance::Get_No_Insurance_Link;
using insurance::Is_No_Insurance_Link;

const QString kCrLf = QStringLiteral("\r\n");

QString Num(qint64 value) {
    return QString::number(value);
}

// The column of ELTable that names the record.
QString LinkColumn(SharedRecord kind) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return QStringLiteral("elGroID");
        case SharedRecord::Carrier:
            return QStringLiteral("elInsID");
        case SharedRecord::Employer:
            return QStringLiteral("elEmpID");
        case SharedRecord::Pharmacy:
            break;
    }
    return QString();
}

// One engine's transaction: the date and the login taken once, and the inserts that need their
// key in the form the session's engine takes.
class EngineRun {
public:
    explicit EngineRun(GIC& gic)
        : gic_(gic),
          connection_(gic.GetConnection()),
          transaction_(connection_, db::Transaction::Write),
          today_(gic.GetToday()),
          login_(gic.GetLoginName()) {}

    GIC& gic() { return gic_; }
    db::Connection& connection() { return connection_; }
    void Commit() { transaction_.Commit(); }

    // "#MM/DD/YYYY#" of the run's day.
    QString SqlToday() const {
        return QLatin1Char('#') + today_.toString(QStringLiteral("MM/dd/yyyy")) + QLatin1Char('#');
    }
    // "by user LOGIN on MM/DD/YYYY at hh:mm am", the words every note's head ends with.
    QString ByWhomWhen() const {
        return QStringLiteral("by user ") + login_ + QStringLiteral(" on ") +
               today_.toString(QStringLiteral("MM/dd/yyyy")) + QStringLiteral(" at ") +
               QLocale::c().toString(QTime::currentTime(), QStringLiteral("hh:mm ap"));
    }

    int InsertWithNewKey(const QString& insert) { return orvo::InsertWithNewKey(gic_, insert); }

    void Note(int person, const QString& source, const QString& text) {
        gic_.WriteLogLine(person, kEngineNoteType, source, kEngineNoteField, text);
    }

    // Moves the person from one link to another (0: off the link) through the coverage engine,
    // which carries the coverages hung on it along, and joins this transaction.
    void MoveSubscriber(int person, int oldElID, int newElID) {
        bool updatePerson = true;
        insurance::Update_Subscriber_Link(gic_, person, oldElID, newElID, true, updatePerson);
    }

    // Ends the live links of the record. A link ended before keeps its own end date and login.
    void EndLinks(const QString& column, int id) {
        connection_.Execute(QStringLiteral("UPDATE elTable SET elTable.elEndDat=") + SqlToday() +
                            QStringLiteral(", elTable.elEndWho=") + db::QuoteText(login_) +
                            QStringLiteral(", elTable.elFla=1 WHERE ((elTable.") + column +
                            QStringLiteral(")=") + Num(id) +
                            QStringLiteral(") AND ((elTable.elFla)=0);"));
    }

    void Progress(const EngineProgress& progress, int done, int total) {
        if (progress)
            progress(done, total);
    }

private:
    GIC& gic_;
    db::Connection& connection_;
    db::Transaction transaction_;
    QDate today_;
    QString login_;
};

bool ReadCount(GIC& gic, const QString& sql, int& count) {
    count = 0;
    const db::Recordset rs(gic.GetConnection(), sql);
    if (rs.IsEmpty())
        return false;
    count = static_cast<int>(rs.Long(0));
    return true;
}

bool CountSubscribersBy(GIC& gic, const QString& column, int id, int& count) {
    return ReadCount(
        gic,
        QStringLiteral("SELECT Count(PatEmpTable.PatEmpPatID) FROM PatEmpTable INNER JOIN ELTable "
                       "ON PatEmpTable.PatEmpElID = ELTable.elID WHERE (((ELTable.") +
            column + QStringLiteral(")=") + Num(id) +
            QStringLiteral(") AND ((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elFla)=0));"),
        count);
}

// A live link as the replace reads it.
struct LiveLink {
    int elID = 0;
    int elEmpID = 0;
    int elInsID = 0;
    int elGroID = 0;
};

QList<LiveLink> ReadLiveLinks(EngineRun& run, const QString& column, int id) {
    db::Recordset rs(run.connection(),
                     QStringLiteral("SELECT ELTable.elID, ELTable.elEmpID, ELTable.elInsID, "
                                    "ELTable.elGroID, ELTable.elStaDat FROM ELTable WHERE "
                                    "(((ELTable.") +
                         column + QStringLiteral(")=") + Num(id) +
                         QStringLiteral(") AND ((ELTable.elFla)=0));"));
    QList<LiveLink> links;
    for (; !rs.Eof(); rs.MoveNext()) {
        links << LiveLink{static_cast<int>(rs.Long(0)), static_cast<int>(rs.Long(1)),
                          static_cast<int>(rs.Long(2)), static_cast<int>(rs.Long(3))};
    }
    return links;
}

// A subscriber on a link, as the engines read them.
struct Subscriber {
    int PatEmpPatID = 0;
    int PatEmpElID = 0;
    int PatEmpID = 0;
    int other = 0;  // the carrier or plan the statement orders by
};

QList<Subscriber> ReadSubscribers(EngineRun& run, const QString& sql) {
    db::Recordset rs(run.connection(), sql);
    QList<Subscriber> rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        rows << Subscriber{static_cast<int>(rs.Long(0)), static_cast<int>(rs.Long(1)),
                           static_cast<int>(rs.Long(2)), static_cast<int>(rs.Long(3))};
    }
    return rows;
}

QList<Subscriber> SubscribersOfLink(EngineRun& run, int elID) {
    return ReadSubscribers(
        run, QStringLiteral("SELECT PatEmpTable.PatEmpPatID, PatEmpTable.PatEmpElID, "
                            "PatEmpTable.PatEmpID, elTable.elInsID FROM PatEmpTable INNER JOIN "
                            "ELTable ON PatEmpTable.PatEmpElID = ELTable.elID WHERE "
                            "(((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elFla)=0) AND "
                            "((ELTable.elID)=") +
                 Num(elID) + QStringLiteral("));"));
}

QString InsertLinkSql(EngineRun& run, int employer, int carrier, int plan) {
    return QStringLiteral(
               "INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) "
               "VALUES (") +
           Num(employer) + QStringLiteral(", ") + Num(carrier) + QStringLiteral(", ") + Num(plan) +
           QStringLiteral(", ") + run.SqlToday() + QStringLiteral(", 0)");
}

// The successor of a link on the new record.
int SuccessorLink(EngineRun& run, SharedRecord kind, const LiveLink& link, int newId) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return run.InsertWithNewKey(InsertLinkSql(run, link.elEmpID, link.elInsID, newId));
        case SharedRecord::Carrier:
            return run.InsertWithNewKey(InsertLinkSql(run, link.elEmpID, newId, link.elGroID));
        case SharedRecord::Employer: {
            if (link.elInsID == 0 && link.elGroID == 0)
                return Get_No_Insurance_Link(run.gic(), newId);
            // The new employer's own link to the same plan, when it has one.
            const db::Recordset same(
                run.connection(),
                QStringLiteral("SELECT ELTable.elID FROM ELTable WHERE (((ELTable.elEmpID)=") +
                    Num(newId) + QStringLiteral(") AND ((ELTable.elInsID)=") + Num(link.elInsID) +
                    QStringLiteral(") AND ((ELTable.elGroID)=") + Num(link.elGroID) +
                    QStringLiteral(") AND ((ELTable.elFla)=0)) ORDER BY ELTable.elID;"));
            if (!same.IsEmpty())
                return static_cast<int>(same.Long(0));
            return run.InsertWithNewKey(InsertLinkSql(run, newId, link.elInsID, link.elGroID));
        }
        case SharedRecord::Pharmacy:
            break;
    }
    return 0;
}

struct ReplaceTexts {
    QString source;
    QString head;
    QString original;
    QString replacement;
    QString label;
};

ReplaceTexts TextsOf(SharedRecord kind) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return {kGroupPlanNoteSource, QStringLiteral("The following group plan was replaced "),
                    QStringLiteral("---- Original Group Plan ----"),
                    QStringLiteral("---- New Group Plan ----"), QStringLiteral("Group Number : ")};
        case SharedRecord::Carrier:
            return {kCarrierNoteSource,
                    QStringLiteral("The following insurance company was replaced "),
                    QStringLiteral("---- Original Insurance Company ----"),
                    QStringLiteral("---- New Insurance Company ----"), QStringLiteral("Name : ")};
        case SharedRecord::Employer:
        case SharedRecord::Pharmacy:
            break;
    }
    return {kEmployerNoteSource, QStringLiteral("The following employer was replaced "),
            QStringLiteral("---- Original Employer ----"), QStringLiteral("---- New Employer ----"),
            QStringLiteral("Name : ")};
}

QString RecordText(GIC& gic, SharedRecord kind, int id) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return gic.GetGroupNumber(id);
        case SharedRecord::Carrier:
            return gic.GetCarrierName(id);
        default:
            return gic.GetEmployerName(id);
    }
}

// The model of the three replace engines; they differ in the column replaced, what a successor
// link is, and their texts.
void ReplaceLinks(GIC& gic, SharedRecord kind, int oldId, int newId,
                  const EngineProgress& progress) {
    const QString column = LinkColumn(kind);
    int total = 0;
    CountSubscribersBy(gic, column, oldId, total);
    EngineRun run(gic);
    const ReplaceTexts texts = TextsOf(kind);
    const QString note = texts.head + run.ByWhomWhen() + kCrLf + kCrLf + texts.original + kCrLf +
                         QStringLiteral("ID Number : ") + Num(oldId) + kCrLf + texts.label +
                         RecordText(gic, kind, oldId) + kCrLf + kCrLf + texts.replacement + kCrLf +
                         QStringLiteral("ID Number : ") + Num(newId) + kCrLf + texts.label +
                         RecordText(gic, kind, newId);
    int done = 0;
    run.Progress(progress, done, total);
    for (const LiveLink& link : ReadLiveLinks(run, column, oldId)) {
        const int successor = SuccessorLink(run, kind, link, newId);
        for (const Subscriber& s : SubscribersOfLink(run, link.elID)) {
            run.Note(s.PatEmpPatID, texts.source, note);
            run.MoveSubscriber(s.PatEmpPatID, link.elID, successor);
            run.Progress(progress, ++done, total);
        }
    }
    run.EndLinks(column, oldId);
    if (kind == SharedRecord::Carrier) {
        run.connection().Execute(QStringLiteral("UPDATE GroPlaTable SET GroPlaTable.GroPlaInsID=") +
                                 Num(newId) + QStringLiteral(" WHERE ((GroPlaTable.GroPlaInsID)=") +
                                 Num(oldId) + QStringLiteral(");"));
    }
    run.Commit();
}

// Subscribers of the record's live links, as the delete engines read them, with the carrier or
// plan they are ordered by.
QList<Subscriber> SubscribersForDelete(EngineRun& run, const QString& column, int id,
                                       const QString& orderColumn) {
    return ReadSubscribers(
        run, QStringLiteral("SELECT PatEmpTable.PatEmpPatID, PatEmpTable.PatEmpElID, "
                            "PatEmpTable.PatEmpID, elTable.") +
                 orderColumn +
                 QStringLiteral(" FROM PatEmpTable INNER JOIN ELTable ON PatEmpTable.PatEmpElID "
                                "= ELTable.elID WHERE (((PatEmpTable.PatEmpFla)=0) AND "
                                "((ELTable.elFla)=0) AND ((ELTable.") +
                 column + QStringLiteral(")=") + Num(id) + QStringLiteral(")) ORDER BY elTable.") +
                 orderColumn + QStringLiteral(";"));
}

// Each subscriber to the "No Insurance Coverage" link of the employer of the link, with a note.
void MoveToNoInsurance(EngineRun& run, const Subscriber& s, const QString& source,
                       const QString& note) {
    const int replacement =
        Get_No_Insurance_Link(run.gic(), Get_El_Employer_ID(run.gic(), s.PatEmpElID));
    run.Note(s.PatEmpPatID, source, note);
    run.MoveSubscriber(s.PatEmpPatID, s.PatEmpElID, replacement);
}

QString Bare(const QString& text) {
    return text.trimmed();
}

}  // namespace

// ---- Counts ----------------------------------------------------------------------------------

bool CountGroupPlanPatients(GIC& gic, int id, int& count) {
    return CountSubscribersBy(gic, QStringLiteral("elGroID"), id, count);
}
bool CountEmployerPatients(GIC& gic, int id, int& count) {
    return CountSubscribersBy(gic, QStringLiteral("elEmpID"), id, count);
}
bool CountCarrierPatients(GIC& gic, int id, int& count) {
    return CountSubscribersBy(gic, QStringLiteral("elInsID"), id, count);
}
bool CountLinkPatients(GIC& gic, int elID, int& count) {
    return CountSubscribersBy(gic, QStringLiteral("elID"), elID, count);
}
bool CountPharmacyPatients(GIC& gic, int id, int& count) {
    return ReadCount(gic,
                     QStringLiteral("SELECT DISTINCT Count(pID) FROM PATable WHERE (pPhaID=") +
                         Num(id) + QStringLiteral(");"),
                     count);
}
bool CountCarrierCoverages(GIC& gic, int id, int& count) {
    return ReadCount(
        gic,
        QStringLiteral("SELECT Count([CovTable].[CovID]) FROM ELTable INNER JOIN (PatEmpTable "
                       "INNER JOIN CovTable ON PatEmpTable.PatEmpID = CovTable.CovSubPatEmpID) ON "
                       "ELTable.elID = PatEmpTable.PatEmpElID WHERE ((CovTable.CovFla)=0) AND "
                       "((ELTable.elInsID)=") +
            Num(id) + QStringLiteral(") AND ((ELTable.elFla)=0);"),
        count);
}

bool CountRecordPatients(GIC& gic, SharedRecord kind, int id, int& count) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return CountGroupPlanPatients(gic, id, count);
        case SharedRecord::Carrier:
            return CountCarrierPatients(gic, id, count);
        case SharedRecord::Employer:
            return CountEmployerPatients(gic, id, count);
        case SharedRecord::Pharmacy:
            return CountPharmacyPatients(gic, id, count);
    }
    return false;
}

QList<AffectedPerson> AffectedPersons(GIC& gic, SharedRecord kind, int id) {
    QString who;
    if (kind == SharedRecord::Pharmacy) {
        who = QStringLiteral("SELECT pID FROM PATable WHERE pPhaID = ") + Num(id);
    } else {
        const QString column = LinkColumn(kind);
        who = QStringLiteral(
                  "SELECT PatEmpPatID FROM PatEmpTable INNER JOIN ELTable ON "
                  "PatEmpElID = elID WHERE PatEmpFla = 0 AND elFla = 0 AND ") +
              column + QStringLiteral(" = ") + Num(id) +
              QStringLiteral(
                  " UNION SELECT CovPatID FROM (CovTable INNER JOIN PatEmpTable ON "
                  "CovSubPatEmpID = PatEmpID) INNER JOIN ELTable ON PatEmpElID = elID "
                  "WHERE CovFla = 0 AND PatEmpFla = 0 AND elFla = 0 AND ") +
              column + QStringLiteral(" = ") + Num(id);
    }
    db::Recordset rs(gic.GetConnection(),
                     QStringLiteral("SELECT pID, pLASNAM, pFIRNAM FROM PATable WHERE pID IN (") +
                         who + QStringLiteral(") ORDER BY pLASNAM, pFIRNAM, pID"));
    QList<AffectedPerson> persons;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString last = Bare(rs.Text(1));
        const QString first = Bare(rs.Text(2));
        persons << AffectedPerson{static_cast<int>(rs.Long(0)),
                                  first.isEmpty() ? last : last + QStringLiteral(", ") + first};
    }
    return persons;
}

// ---- Replace engines -------------------------------------------------------------------------

void Replace_GroupPlan_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress) {
    ReplaceLinks(gic, SharedRecord::GroupPlan, oldId, newId, progress);
}
void Replace_Carrier_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress) {
    ReplaceLinks(gic, SharedRecord::Carrier, oldId, newId, progress);
}
void Replace_Employer_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress) {
    ReplaceLinks(gic, SharedRecord::Employer, oldId, newId, progress);
}

void Replace_Pharmacy_Patients(GIC& gic, int oldId, int newId) {
    EngineRun run(gic);
    run.connection().Execute(QStringLiteral("UPDATE PATable SET pPhaID=") + Num(newId) +
                             QStringLiteral(" WHERE (pPhaID=") + Num(oldId) + QStringLiteral(");"));
    run.Commit();
}

void ReplaceRecord(GIC& gic, SharedRecord kind, int oldId, int newId,
                   const EngineProgress& progress) {
    if (kind == SharedRecord::Pharmacy)
        Replace_Pharmacy_Patients(gic, oldId, newId);
    else
        ReplaceLinks(gic, kind, oldId, newId, progress);
}

void Replace_Employer_Plan_Links(GIC& gic, int oldElID, int newElID,
                                 const EngineProgress& progress) {
    int total = 0;
    CountLinkPatients(gic, oldElID, total);
    EngineRun run(gic);
    const auto plan = [&](int elID) {
        return QStringLiteral("Insurance Company : ") + insurance::Get_El_Carrier_Name(gic, elID) +
               kCrLf + QStringLiteral("Group Number : ") +
               insurance::Get_El_Group_Number(gic, elID);
    };
    const QString note =
        QStringLiteral("Insurance coverage for the following employer was replaced ") +
        run.ByWhomWhen() + kCrLf + kCrLf + QStringLiteral("Employer : ") +
        insurance::Get_El_Employer_Name(gic, oldElID) + kCrLf + kCrLf +
        QStringLiteral("---- Original Plan ----") + kCrLf + plan(oldElID) + kCrLf + kCrLf +
        QStringLiteral("---- New Plan ----") + kCrLf + plan(newElID);
    int done = 0;
    for (const Subscriber& s : SubscribersOfLink(run, oldElID)) {
        run.Note(s.PatEmpPatID, kEmployerNoteSource, note);
        run.MoveSubscriber(s.PatEmpPatID, oldElID, newElID);
        run.Progress(progress, ++done, total);
    }
    run.Commit();
}

// ---- Delete engines --------------------------------------------------------------------------

void Delete_Employer_Record(GIC& gic, int id, const EngineProgress& progress) {
    int total = 0;
    CountEmployerPatients(gic, id, total);
    EngineRun run(gic);
    const QString note = QStringLiteral("The following employer was deleted ") + run.ByWhomWhen() +
                         kCrLf + QStringLiteral("Employer ID Number : ") + Num(id) + kCrLf +
                         QStringLiteral("Employer Name : ") + gic.GetEmployerName(id);
    QList<Subscriber> rows;
    db::Recordset rs(
        run.connection(),
        QStringLiteral("SELECT PatEmpTable.PatEmpPatID, PatEmpTable.PatEmpID, ELTable.elID FROM "
                       "PatEmpTable INNER JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID "
                       "WHERE (((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elFla)=0) AND "
                       "((ELTable.elEmpID)=") +
            Num(id) + QStringLiteral("));"));
    for (; !rs.Eof(); rs.MoveNext()) {
        rows << Subscriber{static_cast<int>(rs.Long(0)), static_cast<int>(rs.Long(2)),
                           static_cast<int>(rs.Long(1)), 0};
    }
    int done = 0;
    run.Progress(progress, done, total);
    for (const Subscriber& s : rows) {
        run.Note(s.PatEmpPatID, kEmployerNoteSource, note);
        run.MoveSubscriber(s.PatEmpPatID, s.PatEmpElID, 0);
        run.Progress(progress, ++done, total);
    }
    run.EndLinks(QStringLiteral("elEmpID"), id);
    run.connection().ExecuteOneRow(QStringLiteral("DELETE * FROM EmpTable WHERE EmpInd=") +
                                   Num(id) + QStringLiteral(";"));
    run.Commit();
}

void Delete_GroupPlan_Record(GIC& gic, int id, const EngineProgress& progress) {
    int total = 0;
    CountGroupPlanPatients(gic, id, total);
    EngineRun run(gic);
    const QString number = gic.GetGroupNumber(id);
    const QString note = QStringLiteral("The following group plan was deleted ") +
                         run.ByWhomWhen() + kCrLf + QStringLiteral("ID Number : ") + Num(id) +
                         kCrLf + QStringLiteral("Group Number : ") + number;
    const QList<Subscriber> rows =
        SubscribersForDelete(run, QStringLiteral("elGroID"), id, QStringLiteral("elInsID"));
    int done = 0;
    run.Progress(progress, done, total);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (i == 0 || rows[i].other != rows[i - 1].other)
            Delete_Plan_Details(gic, number, rows[i].other);
        MoveToNoInsurance(run, rows[i], kGroupPlanNoteSource, note);
        run.Progress(progress, ++done, total);
    }
    run.EndLinks(QStringLiteral("elGroID"), id);
    run.connection().ExecuteOneRow(QStringLiteral("DELETE * FROM GroPlaTable WHERE GroPlaInd=") +
                                   Num(id) + QStringLiteral(";"));
    run.Commit();
}

void Delete_Carrier_Record(GIC& gic, int id, const EngineProgress& progress) {
    int total = 0;
    CountCarrierPatients(gic, id, total);
    EngineRun run(gic);
    const QString note = QStringLiteral("The following insurance company was deleted ") +
                         run.ByWhomWhen() + kCrLf + QStringLiteral("ID Number : ") + Num(id) +
                         kCrLf + QStringLiteral("Insurance Company : ") + gic.GetCarrierName(id);
    const QList<Subscriber> rows =
        SubscribersForDelete(run, QStringLiteral("elInsID"), id, QStringLiteral("elGroID"));
    int done = 0;
    run.Progress(progress, done, total);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (i == 0 || rows[i].other != rows[i - 1].other)
            Delete_Plan_Details(gic, gic.GetGroupNumber(rows[i].other), id);
        MoveToNoInsurance(run, rows[i], kCarrierNoteSource, note);
        run.Progress(progress, ++done, total);
    }
    run.EndLinks(QStringLiteral("elInsID"), id);
    run.connection().ExecuteOneRow(QStringLiteral("DELETE * FROM InsCoTable WHERE InsCoInd=") +
                                   Num(id) + QStringLiteral(";"));
    run.connection().Execute(
        QStringLiteral("DELETE * FROM GroPlaTable WHERE GroPlaTable.GroPlaInsID=") + Num(id) +
        QStringLiteral(";"));
    run.Commit();
}

void Delete_Pharmacy_Record(GIC& gic, int id) {
    EngineRun run(gic);
    run.connection().ExecuteOneRow(QStringLiteral("DELETE * FROM PhaTable WHERE PhaID=") + Num(id) +
                                   QStringLiteral(";"));
    run.Commit();
}

void DeleteRecord(GIC& gic, SharedRecord kind, int id, const EngineProgress& progress) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return Delete_GroupPlan_Record(gic, id, progress);
        case SharedRecord::Carrier:
            return Delete_Carrier_Record(gic, id, progress);
        case SharedRecord::Employer:
            return Delete_Employer_Record(gic, id, progress);
        case SharedRecord::Pharmacy:
            return Delete_Pharmacy_Record(gic, id);
    }
}

void Remove_Employer_Plan(GIC& gic, int elID, const EngineProgress& progress) {
    if (Is_No_Insurance_Link(gic, elID))
        return;
    int total = 0;
    CountLinkPatients(gic, elID, total);
    EngineRun run(gic);
    const QString note =
        QStringLiteral("Insurance coverage for the following employer was removed ") +
        run.ByWhomWhen() + kCrLf + QStringLiteral("Employer : ") +
        insurance::Get_El_Employer_Name(gic, elID) + kCrLf +
        QStringLiteral("Insurance Company : ") + insurance::Get_El_Carrier_Name(gic, elID) + kCrLf +
        QStringLiteral("Group Number : ") + insurance::Get_El_Group_Number(gic, elID);
    int done = 0;
    for (const Subscriber& s : SubscribersOfLink(run, elID)) {
        MoveToNoInsurance(run, s, kEmployerNoteSource, note);
        run.Progress(progress, ++done, total);
    }
    run.EndLinks(QStringLiteral("elID"), elID);
    run.Commit();
}

void Delete_Plan_Details(GIC& gic, const QString& groupNumber, int carrierId) {
    if (groupNumber.trimmed().isEmpty() || carrierId == 0)
        return;
    gic.GetConnection().Execute(
        QStringLiteral("DELETE * FROM IPTable WHERE (((IPTable.IPInsCoID)=") + Num(carrierId) +
        QStringLiteral(") AND ((IPTable.IPGroNum)=") + db::QuoteText(groupNumber) +
        QStringLiteral("));"));
}

}  // namespace orvo::lists
