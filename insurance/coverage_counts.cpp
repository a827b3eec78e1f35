#include "insurance/coverage_counts.h"

#include "platform/db/recordset.h"

namespace orvo::insurance {

bool CountCarrierCoverages(db::Connection& connection, int carrierId, int& count) {
    const QString sql =
        QStringLiteral(
            "SELECT Count([CovTable].[CovID]) FROM ELTable INNER JOIN (PatEmpTable INNER JOIN "
            "CovTable ON PatEmpTable.PatEmpID = CovTable.CovSubPatEmpID) ON ELTable.elID = "
            "PatEmpTable.PatEmpElID WHERE ((CovTable.CovFla)=0) AND ((ELTable.elInsID)=") +
        QString::number(carrierId) + QStringLiteral(") AND ((ELTable.elFla)=0);");
    const db::Recordset rs(connection, sql);
    if (rs.IsEmpty())
        return false;
    count = static_cast<int>(rs.Long(0));
    return true;
}

}  // namespace orvo::insurance
