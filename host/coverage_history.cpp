#include "host/coverage_history.h"

#include <algorithm>

#include "host/host_tables.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

QDate ReadDate(const db::Recordset& rs, int index) {
    if (rs.IsNull(index))
        return {};
    const QVariant value = rs.Value(index);
    return value.typeId() == QMetaType::QDate
               ? value.toDate()
               : QDate::fromString(value.toString().left(10), Qt::ISODate);
}

QString Name(const QString& last, const QString& first) {
    const QString l = last.trimmed();
    const QString f = first.trimmed();
    return f.isEmpty() ? l : l.isEmpty() ? f : l + QStringLiteral(", ") + f;
}

}  // namespace

QString RelationName(int code) {
    switch (code) {
        case 1:
            return QStringLiteral("Self");
        case 2:
            return QStringLiteral("Spouse");
        case 3:
            return QStringLiteral("Child");
        case 4:
            return QStringLiteral("Other");
        case 20:
            return QStringLiteral("Employee");
        case 21:
            return QStringLiteral("Unknown");
        default:
            return QString();
    }
}

CoverageHistory ReadCoverageHistory(db::Connection& connection, int personId, const QDate& asOf) {
    const QString day =
        QLatin1Char('#') + asOf.toString(QStringLiteral("MM/dd/yyyy")) + QLatin1Char('#');
    CoverageHistory history;
    db::Recordset rs(
        connection,
        QStringLiteral(
            "SELECT CovTable.CovID, CovTable.CovOrd, CovTable.CovRel, CovTable.CovStaDat, "
            "CovTable.CovEndDat, CovTable.CovEndWho, PatEmpTable.PatEmpPatID, PATable.pLASNAM, "
            "PATable.pFIRNAM, EmpTable.EmpNam, InsCoTable.InsCoNam, GroPlaTable.GroPlaGroNum "
            "FROM (((((CovTable LEFT JOIN PatEmpTable ON CovTable.CovSubPatEmpID = "
            "PatEmpTable.PatEmpID) LEFT JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID) "
            "LEFT JOIN PATable ON PatEmpTable.PatEmpPatID = PATable.pID) LEFT JOIN EmpTable ON "
            "ELTable.elEmpID = EmpTable.EmpInd) LEFT JOIN InsCoTable ON ELTable.elInsID = "
            "InsCoTable.InsCoInd) LEFT JOIN GroPlaTable ON ELTable.elGroID = "
            "GroPlaTable.GroPlaInd WHERE CovTable.CovPatID = %1 AND (CovTable.CovStaDat IS NULL "
            "OR CovTable.CovStaDat <= %2) ORDER BY CovTable.CovID")
            .arg(personId)
            .arg(day));
    for (; !rs.Eof(); rs.MoveNext()) {
        CoverageHistoryRow row;
        row.coverageId = static_cast<int>(rs.Long(0));
        row.order = static_cast<int>(rs.Long(1));
        row.relation = RelationName(static_cast<int>(rs.Long(2)));
        row.began = ReadDate(rs, 3);
        const QDate ended = ReadDate(rs, 4);
        // What happened after the day is not shown: a row ended later was active on it.
        if (ended.isValid() && ended <= asOf) {
            row.ended = ended;
            row.endedBy = rs.Text(5).trimmed();
        }
        row.activeOnDate = !row.ended.isValid();
        row.subscriberId = static_cast<int>(rs.Long(6));
        row.subscriber = Name(rs.Text(7), rs.Text(8));
        row.employer = rs.Text(9).trimmed();
        row.carrier = rs.Text(10).trimmed();
        row.groupNumber = rs.Text(11).trimmed();
        history.rows << row;
    }
    std::stable_sort(history.rows.begin(), history.rows.end(),
                     [](const CoverageHistoryRow& a, const CoverageHistoryRow& b) {
                         if (a.activeOnDate != b.activeOnDate)
                             return a.activeOnDate;
                         if (a.activeOnDate)
                             return a.order < b.order ||
                                    (a.order == b.order && a.coverageId < b.coverageId);
                         return a.coverageId > b.coverageId;
                     });
    // An active row's order is its place now and an ended row's its place when it ended; the
    // removal of a row moves those after it up. The rows active on a past day keep their
    // sequence, so their places on that day are counted from it.
    int place = 0;
    for (CoverageHistoryRow& row : history.rows) {
        if (row.activeOnDate)
            row.order = ++place;
    }

    db::Recordset notes(connection,
                        QStringLiteral("SELECT cmDat, cmUseNam, cmDoc FROM %1 WHERE cmPID = %2 "
                                       "AND cmSouKey = 'LogInsCov' AND (cmDat IS NULL OR cmDat "
                                       "<= %3) ORDER BY cmID DESC")
                            .arg(kNotesTable)
                            .arg(personId)
                            .arg(day));
    for (; !notes.Eof(); notes.MoveNext()) {
        history.notes << ReadDate(notes, 0).toString(QStringLiteral("MM-dd-yyyy")) +
                             QStringLiteral("  ") + notes.Text(1).trimmed() + QStringLiteral("\n") +
                             notes.Text(2);
    }
    return history;
}

QList<QPair<int, QString>> FindPersonsForHistory(db::Connection& connection, const QString& text) {
    const QString wanted = text.trimmed();
    QList<QPair<int, QString>> persons;
    if (wanted.isEmpty())
        return persons;
    bool isId = false;
    const int id = wanted.toInt(&isId);
    db::Recordset rs(
        connection,
        isId ? QStringLiteral("SELECT pID, pLASNAM, pFIRNAM FROM PATable WHERE pID = %1").arg(id)
             : QStringLiteral("SELECT pID, pLASNAM, pFIRNAM FROM PATable WHERE pLASNAM LIKE %1 "
                              "ORDER BY pLASNAM, pFIRNAM, pID")
                   .arg(db::QuoteText(wanted + QLatin1Char('%'))));
    for (; !rs.Eof() && persons.size() < 200; rs.MoveNext())
        persons << qMakePair(static_cast<int>(rs.Long(0)), Name(rs.Text(1), rs.Text(2)));
    return persons;
}

}  // namespace orvo::host
