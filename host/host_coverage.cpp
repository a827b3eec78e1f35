// The host's part for the coverage chain. The live coverage is the chain of links and
// coverages the component keeps; the person's row carries the older single-coverage layout,
// which the rest of the suite (claims, statements) reads, and these operations keep it in step.
// What the operations write on PATable:
//
//   SetPersonCoverageLink     the position's holder, reference and relation: pPRIINSHOL,
//                             pPRIINSID, pREL2PRI for the primary, pSECINSHOL, pSECINSID,
//                             pREL2SEC for the secondary. The reference is the employer-plan link
//                             (elID); the holder is the subscriber of the person's active
//                             coverage at that position on that link, and the relation its CovRel
//                             as one character. A link of 0 clears the three (0, 0, blank) and,
//                             after a removal, the position's figures pxxxDED, pxxxBAL, pxxxYTD
//                             as well: nothing covers the position any more.
//   SetPersonPrimaryEmployer  pEmpID1, the employer-plan link (elID) of the person's first
//                             subscriber link: one value names both the employer and the plan,
//                             and the person lists join pEmpID1 to ELTable.elID for the
//                             business address. Without an active first link, the active link
//                             of that employer and plan.
//   SetCoverageYearToDate     the position's pxxxYTD (used), pxxxDED (deductible met) and pxxxBAL
//                             (remaining); the annual maximum is the office's, not the person's.
//
//   GetCoverageYearToDate, GetFamilyID, GetEmployerName, GetCarrierName, GetGroupNumber read
//   only. CoverageAdded, CoverageChanged and SubscriberLinksChanged write nothing: the person
//   joins the persons the host shows anew once the component returns. FlushConnection writes
//   nothing: both engines read their own writes on a connection at once.

#include "host/host_coverage.h"

#include "host/host_persons.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

QString Position(bool isPrimary) {
    return isPrimary ? QStringLiteral("PRI") : QStringLiteral("SEC");
}

QString MoneyLiteral(const Currency& amount) {
    const qint64 units = amount.tenThousandths();
    const qint64 whole = units / 10000;
    const qint64 fraction = qAbs(units % 10000);
    return QStringLiteral("%1%2.%3")
        .arg(units < 0 && whole == 0 ? QStringLiteral("-") : QString())
        .arg(whole)
        .arg(fraction, 4, 10, QLatin1Char('0'));
}

Currency ReadMoney(const db::Recordset& rs, int index) {
    return rs.IsNull(index) ? Currency() : Currency::Parse(rs.Text(index));
}

QString ReadName(db::Connection& connection, const QString& sql) {
    const db::Recordset rs(connection, sql);
    return rs.IsEmpty() ? QString() : rs.Text(0).trimmed();
}

}  // namespace

void SetPersonCoverageLink(db::Connection& connection, int personId, int linkId, bool isPrimary,
                           bool afterRemoval) {
    const QString p = Position(isPrimary);
    int holder = 0;
    QString relation;
    if (linkId != 0) {
        const db::Recordset rs(
            connection,
            QStringLiteral("SELECT PatEmpTable.PatEmpPatID, CovTable.CovRel FROM CovTable INNER "
                           "JOIN PatEmpTable ON CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID "
                           "WHERE CovTable.CovPatID = %1 AND CovTable.CovOrd = %2 AND "
                           "CovTable.CovFla = 0 AND PatEmpTable.PatEmpElID = %3 ORDER BY "
                           "CovTable.CovID DESC")
                .arg(personId)
                .arg(isPrimary ? 1 : 2)
                .arg(linkId));
        if (!rs.IsEmpty()) {
            holder = static_cast<int>(rs.Long(0));
            relation = QString::number(rs.Long(1)).left(1);
        }
    }
    QString sql = QStringLiteral("UPDATE PATable SET p%1INSHOL = %2, p%1INSID = %3, pREL2%1 = %4")
                      .arg(p)
                      .arg(holder)
                      .arg(linkId)
                      .arg(db::TextOrNull(relation));
    if (linkId == 0 && afterRemoval) {
        sql += QStringLiteral(", p%1DED = 0, p%1BAL = 0, p%1YTD = 0").arg(p);
    }
    connection.ExecuteOneRow(sql + QStringLiteral(" WHERE pID = %1").arg(personId));
}

void SetPersonPrimaryEmployer(db::Connection& connection, int personId, int employerId,
                              int groupPlanId) {
    QVariant link = db::ReadScalar(
        connection, QStringLiteral("SELECT PatEmpElID FROM PatEmpTable WHERE PatEmpPatID = %1 AND "
                                   "PatEmpOrd = 1 AND PatEmpFla = 0")
                        .arg(personId));
    if (link.isNull() || link.toInt() == 0)
        link = db::ReadScalar(connection,
                              QStringLiteral("SELECT min(elID) FROM ELTable WHERE elEmpID = %1 AND "
                                             "elGroID = %2 AND elFla = 0")
                                  .arg(employerId)
                                  .arg(groupPlanId));
    connection.ExecuteOneRow(QStringLiteral("UPDATE PATable SET pEmpID1 = %1 WHERE pID = %2")
                                 .arg(link.toInt())
                                 .arg(personId));
}

CoverageYearToDate PersonCoverageYearToDate(GIC& gic, int personId, bool isPrimary) {
    CoverageYearToDate figures;
    figures.annualMaximum = Currency::Parse(
        gic.ReadSetting(kOfficeSection, kAnnualCoverageKey, 0, kAnnualCoverageDefault).toString());
    const db::Recordset rs(
        gic.GetConnection(),
        QStringLiteral("SELECT p%1YTD, p%1DED, p%1BAL FROM PATable WHERE pID = %2")
            .arg(Position(isPrimary))
            .arg(personId));
    if (rs.IsEmpty())
        return figures;
    figures.used = ReadMoney(rs, 0);
    figures.deductibleMet = ReadMoney(rs, 1);
    figures.remaining = ReadMoney(rs, 2);
    return figures;
}

void SetPersonCoverageYearToDate(db::Connection& connection, int personId, bool isPrimary,
                                 const CoverageYearToDate& figures) {
    connection.ExecuteOneRow(
        QStringLiteral("UPDATE PATable SET p%1YTD = %2, p%1DED = %3, p%1BAL = %4 WHERE pID = %5")
            .arg(Position(isPrimary), MoneyLiteral(figures.used),
                 MoneyLiteral(figures.deductibleMet), MoneyLiteral(figures.remaining))
            .arg(personId));
}

int PersonFamilyId(db::Connection& connection, int personId) {
    const db::Recordset rs(
        connection, QStringLiteral("SELECT pFAMHEAIND FROM PATable WHERE pID = %1").arg(personId));
    if (rs.IsEmpty())
        return 0;
    const int head = static_cast<int>(rs.Long(0));
    return head == 0 ? personId : head;
}

QString EmployerName(db::Connection& connection, int employerId) {
    return ReadName(
        connection,
        QStringLiteral("SELECT EmpNam FROM EmpTable WHERE EmpInd = %1").arg(employerId));
}

QString CarrierName(db::Connection& connection, int carrierId) {
    return ReadName(
        connection,
        QStringLiteral("SELECT InsCoNam FROM InsCoTable WHERE InsCoInd = %1").arg(carrierId));
}

QString GroupNumber(db::Connection& connection, int groupPlanId) {
    return ReadName(connection,
                    QStringLiteral("SELECT GroPlaGroNum FROM GroPlaTable WHERE GroPlaInd = %1")
                        .arg(groupPlanId));
}

}  // namespace orvo::host
