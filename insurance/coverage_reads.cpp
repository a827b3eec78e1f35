#include "insurance/coverage_reads.h"

#include "platform/db/recordset.h"

namespace orvo::insurance {
namespace {

QString Num(qint64 value) {
    return QString::number(value);
}

// The first column of the first row as a number; 0 when there is no row or it is null.
int ReadLong(GIC& gic, const QString& sql) {
    const db::Recordset rs(gic.GetConnection(), sql);
    return rs.IsEmpty() ? 0 : static_cast<int>(rs.Long(0));
}

QString ReadText(GIC& gic, const QString& sql) {
    const db::Recordset rs(gic.GetConnection(), sql);
    return rs.IsEmpty() ? QString() : rs.Text(0).trimmed();
}

const QString kCrLf = QStringLiteral("\r\n");

}  // namespace

QString Get_El_Employer_Name(GIC& gic, int elID) {
    return ReadText(gic, QStringLiteral("SELECT EmpTable.EmpNam FROM ELTable INNER JOIN EmpTable "
                                        "ON ELTable.elEmpID = EmpTable.EmpInd WHERE "
                                        "((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

QString Get_El_Group_Number(GIC& gic, int elID) {
    return ReadText(gic, QStringLiteral("SELECT GroPlaTable.GroPlaGroNum FROM ELTable INNER JOIN "
                                        "GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd "
                                        "WHERE ((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

QString Get_El_Carrier_Name(GIC& gic, int elID) {
    return ReadText(gic, QStringLiteral("SELECT InsCoTable.InsCoNam FROM ELTable INNER JOIN "
                                        "InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd "
                                        "WHERE ((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

int Get_El_Carrier_ID(GIC& gic, int elID) {
    return ReadLong(gic, QStringLiteral("SELECT InsCoTable.InsCoInd FROM ELTable INNER JOIN "
                                        "InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd "
                                        "WHERE ((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

int Get_El_Group_ID(GIC& gic, int elID) {
    return ReadLong(gic, QStringLiteral("SELECT GroPlaTable.GroPlaInd FROM ELTable INNER JOIN "
                                        "GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd "
                                        "WHERE ((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

int Get_El_Employer_ID(GIC& gic, int elID) {
    return ReadLong(gic, QStringLiteral("SELECT ELTable.elEmpID FROM ELTable WHERE "
                                        "((ELTable.elID)=") +
                             Num(elID) + QStringLiteral(");"));
}

int Get_El_For_Person_Employer(GIC& gic, int person, int employer) {
    return ReadLong(gic,
                    QStringLiteral("SELECT ELTable.elID FROM PatEmpTable INNER JOIN ELTable ON "
                                   "PatEmpTable.PatEmpElID = ELTable.elID WHERE "
                                   "(((PatEmpTable.PatEmpPatID)=") +
                        Num(person) + QStringLiteral(") AND ((ELTable.elEmpID)=") + Num(employer) +
                        QStringLiteral(") AND ((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elFla)=0)) "
                                       "ORDER BY PatEmpTable.PatEmpOrd;"));
}

int Get_Coverage_El(GIC& gic, int CovID) {
    return ReadLong(gic, QStringLiteral("SELECT PatEmpTable.PatEmpElID FROM CovTable INNER JOIN "
                                        "PatEmpTable ON CovTable.CovSubPatEmpID = "
                                        "PatEmpTable.PatEmpID WHERE ((CovTable.CovID)=") +
                             Num(CovID) + QStringLiteral(");"));
}

int Get_Subscriber_Person(GIC& gic, int PatEmpID) {
    return ReadLong(gic, QStringLiteral("SELECT PatEmpTable.PatEmpPatID FROM PatEmpTable WHERE "
                                        "((PatEmpTable.PatEmpID)=") +
                             Num(PatEmpID) + QStringLiteral(");"));
}

int Count_Coverage(GIC& gic, int person) {
    return ReadLong(
        gic, QStringLiteral("SELECT Count(CovTable.CovID) FROM (CovTable INNER JOIN PatEmpTable "
                            "ON CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID) INNER JOIN "
                            "ELTable ON PatEmpTable.PatEmpElID = ELTable.elID WHERE "
                            "(((CovTable.CovPatID)=") +
                 Num(person) +
                 QStringLiteral(") AND ((CovTable.CovFla)=0) AND ((PatEmpTable.PatEmpFla)=0) AND "
                                "((ELTable.elFla)=0));"));
}

int Count_Subscriber_Links(GIC& gic, int person) {
    return ReadLong(gic, QStringLiteral("SELECT Count(PatEmpTable.PatEmpID) FROM PatEmpTable "
                                        "INNER JOIN ELTable ON PatEmpTable.PatEmpElID = "
                                        "ELTable.elID WHERE (((PatEmpTable.PatEmpPatID)=") +
                             Num(person) +
                             QStringLiteral(") AND ((ELTable.elFla)=0) AND "
                                            "((PatEmpTable.PatEmpFla)=0));"));
}

bool Coverage_Exists(GIC& gic, int person, int PatEmpID) {
    const db::Recordset rs(gic.GetConnection(),
                           QStringLiteral("SELECT CovTable.CovID FROM CovTable WHERE "
                                          "(((CovTable.CovPatID)=") +
                               Num(person) + QStringLiteral(") AND ((CovTable.CovSubPatEmpID)=") +
                               Num(PatEmpID) + QStringLiteral(") AND ((CovTable.CovFla)=0));"));
    return !rs.IsEmpty();
}

bool Employer_Lacks_Plan_Link(GIC& gic, int employer, int carrier, int groupPlan) {
    if (employer == 0 || carrier == 0 || groupPlan == 0)
        return false;
    return ReadLong(gic, QStringLiteral("SELECT Count(ELTable.elID) FROM ELTable WHERE "
                                        "((ELTable.elEmpID)=") +
                             Num(employer) + QStringLiteral(") AND ((ELTable.elInsID)=") +
                             Num(carrier) +
                             QStringLiteral(") AND ((ELTable.elFla)=0) AND ((ELTable.elGroID)=") +
                             Num(groupPlan) + QStringLiteral(");")) == 0;
}

bool Is_No_Insurance_Link(GIC& gic, int elID) {
    const db::Recordset rs(gic.GetConnection(),
                           QStringLiteral("SELECT ELTable.elID FROM ELTable WHERE "
                                          "(((ELTable.elID)=") +
                               Num(elID) +
                               QStringLiteral(") AND ((ELTable.elFla)=0) AND "
                                              "(((ELTable.elInsID)<>0) AND "
                                              "((ELTable.elGroID)<>0)));"));
    return rs.IsEmpty();
}

QList<PlanLink> Load_Plan_Links(GIC& gic, int person) {
    db::Recordset rs(gic.GetConnection(),
                     QStringLiteral("SELECT ELTable.elID, ELTable.elEmpID, ELTable.elInsID, "
                                    "ELTable.elGroID, PatEmpTable.PatEmpID FROM PatEmpTable "
                                    "INNER JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID "
                                    "WHERE (((PatEmpTable.PatEmpPatID)=") +
                         Num(person) +
                         QStringLiteral(") AND ((PatEmpTable.PatEmpFla)=0) AND "
                                        "((ELTable.elFla)=0) AND ((ELTable.elInsID)<>0)) "
                                        "ORDER BY PatEmpTable.PatEmpOrd;"));
    QList<PlanLink> links;
    for (; !rs.Eof(); rs.MoveNext()) {
        links << PlanLink{static_cast<int>(rs.Long(0)), static_cast<int>(rs.Long(1)),
                          static_cast<int>(rs.Long(2)), static_cast<int>(rs.Long(3)),
                          static_cast<int>(rs.Long(4))};
    }
    return links;
}

QList<int> Load_Subscriber_Links(GIC& gic, int person) {
    db::Recordset rs(gic.GetConnection(),
                     QStringLiteral("SELECT ELTable.elID FROM PatEmpTable INNER JOIN ELTable ON "
                                    "PatEmpTable.PatEmpElID = ELTable.elID WHERE "
                                    "(((PatEmpTable.PatEmpPatID)=") +
                         Num(person) +
                         QStringLiteral(") AND ((PatEmpTable.PatEmpFla)=0) AND "
                                        "((ELTable.elFla)=0)) ORDER BY PatEmpTable.PatEmpOrd;"));
    QList<int> links;
    for (; !rs.Eof(); rs.MoveNext())
        links << static_cast<int>(rs.Long(0));
    return links;
}

QList<CoverageRow> Load_Coverage_Rows(GIC& gic, int person, bool includeEnded) {
    QString sql = QStringLiteral(
        "SELECT ELTable.elID, ELTable.elEmpID, ELTable.elInsID, ELTable.elGroID, "
        "PatEmpTable.PatEmpPatID, PatEmpTable.PatEmpID, CovTable.CovRel, CovTable.CovID, "
        "CovTable.CovOrd FROM (CovTable LEFT JOIN PatEmpTable ON CovTable.CovSubPatEmpID = "
        "PatEmpTable.PatEmpID) LEFT JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID WHERE ");
    if (!includeEnded) {
        sql += QStringLiteral(
            "(CovTable.CovFla=0) AND (PatEmpTable.PatEmpFla=0) AND (ELTable.elFla=0) AND ");
    }
    sql += QStringLiteral("(CovTable.CovPatID=") + Num(person) +
           QStringLiteral(") ORDER BY CovTable.CovOrd;");
    db::Recordset rs(gic.GetConnection(), sql);
    QList<CoverageRow> rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        CoverageRow row;
        row.detail.elID = static_cast<int>(rs.Long(0));
        row.detail.elEmpID = static_cast<int>(rs.Long(1));
        row.detail.elInsID = static_cast<int>(rs.Long(2));
        row.detail.elGroID = static_cast<int>(rs.Long(3));
        row.detail.PatEmpPatID = static_cast<int>(rs.Long(4));
        row.PatEmpID = static_cast<int>(rs.Long(5));
        row.detail.CovRel = static_cast<int>(rs.Long(6));
        row.detail.CovID = static_cast<int>(rs.Long(7));
        row.detail.CovOrd = static_cast<int>(rs.Long(8));
        rows << row;
    }
    return rows;
}

CoverageDetail Load_Coverage_Detail(GIC& gic, int CovID) {
    const db::Recordset rs(
        gic.GetConnection(),
        QStringLiteral("SELECT ELTable.elID, ELTable.elEmpID, ELTable.elInsID, ELTable.elGroID, "
                       "PatEmpTable.PatEmpPatID, CovTable.CovRel, CovTable.CovID, "
                       "CovTable.CovOrd FROM (CovTable INNER JOIN PatEmpTable ON "
                       "CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID) INNER JOIN ELTable ON "
                       "PatEmpTable.PatEmpElID = ELTable.elID WHERE ((CovTable.CovID)=") +
            Num(CovID) + QStringLiteral(");"));
    CoverageDetail detail;
    if (rs.IsEmpty())
        return detail;
    detail.elID = static_cast<int>(rs.Long(0));
    detail.elEmpID = static_cast<int>(rs.Long(1));
    detail.elInsID = static_cast<int>(rs.Long(2));
    detail.elGroID = static_cast<int>(rs.Long(3));
    detail.PatEmpPatID = static_cast<int>(rs.Long(4));
    detail.CovRel = static_cast<int>(rs.Long(5));
    detail.CovID = static_cast<int>(rs.Long(6));
    detail.CovOrd = static_cast<int>(rs.Long(7));
    return detail;
}

bool Can_Change_Plan_Detail(GIC& gic) {
    bool flag = false;
    return gic.CheckRight(QStringLiteral("Change-Ins-Plan-Detail"), QString(), flag);
}

QString Get_Order_Word(int order) {
    static const char* const kWords[] = {"primary", "secondary", "third",  "fourth",
                                         "fifth",   "sixth",     "seventh"};
    if (order < 1 || order > 7)
        return QString();
    return QLatin1String(kWords[order - 1]);
}

QString Get_Coverage_Text(GIC& gic, const CoverageDetail& detail) {
    const auto line = [](const QString& label, const QString& name, int id) {
        return label + name + QStringLiteral(" - [") + Num(id) + QStringLiteral("]");
    };
    return line(QStringLiteral("Subscriber : "),
                gic.GetPersonName(detail.PatEmpPatID, QStringLiteral(" "), QString()),
                detail.PatEmpPatID) +
           kCrLf +
           line(QStringLiteral("Employer : "), gic.GetEmployerName(detail.elEmpID),
                detail.elEmpID) +
           kCrLf +
           line(QStringLiteral("Insurance Company : "), gic.GetCarrierName(detail.elInsID),
                detail.elInsID) +
           kCrLf +
           line(QStringLiteral("Group Number : "), gic.GetGroupNumber(detail.elGroID),
                detail.elGroID);
}

}  // namespace orvo::insurance
