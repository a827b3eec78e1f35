#include "host/coverage_demo_data.h"

#include <QDate>
#include <array>

#include "host/host_tables.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/schema/schema.h"

namespace orvo::host {
namespace {

// The demo's links name employers 100.. and plans 500.. (see demo_data.cpp).
constexpr int kFirstEmployer = 100;
constexpr int kFirstPlan = 500;
const char* const kEmployers[] = {"Müller Tool & Die", "Columbus City Schools", "Peña Landscaping",
                                  "Riverside Hospital", "Östberg Logistics"};
const char* const kGroupNumbers[] = {"BW-1001", "KBP-22-0417", "PSA-7730", "HH-0090", "SDT-1500"};

class Seeder {
public:
    explicit Seeder(db::Connection& c) : c_(c) {}

    int Insert(const QString& sql) { return static_cast<int>(c_.InsertWithIdentity(sql)); }
    int Link(int employer, int carrier, int plan, const QString& began) {
        return Insert(QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, "
                                     "elFla) VALUES (%1, %2, %3, #%4#, 0)")
                          .arg(employer)
                          .arg(carrier)
                          .arg(plan)
                          .arg(began));
    }
    // A subscriber link, ended when `ended` is given.
    int PatEmp(int person, int link, int order, const QString& began, const QString& ended = {},
               const QString& who = {}) {
        return Insert(QStringLiteral("INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, "
                                     "PatEmpStaDat, PatEmpEndDat, PatEmpEndWho, PatEmpFla) VALUES "
                                     "(%1, %2, %3, #%4#, %5, %6, %7)")
                          .arg(person)
                          .arg(link)
                          .arg(order)
                          .arg(began, ended.isEmpty() ? QStringLiteral("NULL") : '#' + ended + '#',
                               db::TextOrNull(who))
                          .arg(ended.isEmpty() ? 0 : 1));
    }
    int Coverage(int person, int relation, int patEmp, int order, const QString& began,
                 const QString& ended = {}, const QString& who = {}) {
        return Insert(QStringLiteral("INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, "
                                     "CovOrd, CovStaDat, CovEndDat, CovEndWho, CovFla) VALUES "
                                     "(%1, %2, %3, %4, #%5#, %6, %7, %8)")
                          .arg(person)
                          .arg(relation)
                          .arg(patEmp)
                          .arg(order)
                          .arg(began, ended.isEmpty() ? QStringLiteral("NULL") : '#' + ended + '#',
                               db::TextOrNull(who))
                          .arg(ended.isEmpty() ? 0 : 1));
    }
    void End(const QString& table, const QString& prefix, int id, const QString& ended,
             const QString& who) {
        c_.ExecuteOneRow(QStringLiteral("UPDATE %1 SET %2EndDat=#%3#, %2EndWho=%4, %2Fla=1 WHERE "
                                        "%2ID=%5")
                             .arg(table, prefix, ended, db::QuoteText(who))
                             .arg(id));
    }
    QString Text(const QString& sql) { return db::ReadScalar(c_, sql).toString().trimmed(); }

    // The four lines the engine writes of a coverage.
    QString CoverageText(int covId) {
        db::Recordset rs(
            c_, QStringLiteral(
                    "SELECT PatEmpTable.PatEmpPatID, PATable.pFIRNAM, PATable.pLASNAM, "
                    "ELTable.elEmpID, EmpTable.EmpNam, ELTable.elInsID, InsCoTable.InsCoNam, "
                    "ELTable.elGroID, GroPlaTable.GroPlaGroNum FROM (((((CovTable INNER JOIN "
                    "PatEmpTable ON CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID) INNER JOIN "
                    "ELTable ON PatEmpTable.PatEmpElID = ELTable.elID) LEFT JOIN PATable ON "
                    "PatEmpTable.PatEmpPatID = PATable.pID) LEFT JOIN EmpTable ON "
                    "ELTable.elEmpID = EmpTable.EmpInd) LEFT JOIN InsCoTable ON "
                    "ELTable.elInsID = InsCoTable.InsCoInd) LEFT JOIN GroPlaTable ON "
                    "ELTable.elGroID = GroPlaTable.GroPlaInd WHERE CovTable.CovID = %1")
                    .arg(covId));
        if (rs.IsEmpty())
            return {};
        const QString name = (rs.Text(1).trimmed() + ' ' + rs.Text(2).trimmed()).trimmed();
        return QStringLiteral(
                   "Subscriber : %1 - [%2]\r\nEmployer : %3 - [%4]\r\nInsurance "
                   "Company : %5 - [%6]\r\nGroup Number : %7 - [%8]")
            .arg(name, rs.Text(0), rs.Text(4).trimmed(), rs.Text(3), rs.Text(6).trimmed(),
                 rs.Text(5), rs.Text(8).trimmed(), rs.Text(7));
    }
    // A history note as the engine words it, dated the day of the change: what stands between
    // the order word and "by user" is the action.
    void Note(int person, const QString& orderWord, const QString& action, const QString& day,
              const QString& who, const QString& body) {
        const QDate date = QDate::fromString(day, QStringLiteral("MM/dd/yyyy"));
        c_.Execute(QStringLiteral("INSERT INTO %1 (cmPID, cmNotTyp, cmSouKey, cmFie, cmUseNam, "
                                  "cmDat, cmDoc) VALUES (%2, 'CM', 'LogInsCov', 'Comment', %3, "
                                  "%4, %5)")
                       .arg(kNotesTable, QString::number(person), db::QuoteText(who),
                            db::QuoteText(date.toString(Qt::ISODate)),
                            db::QuoteText(QStringLiteral("The following %1 insurance plan %2 by "
                                                         "user %3 on %4 at 09:30 AM.\r\n\r\n")
                                              .arg(orderWord, action, who,
                                                   date.toString(QStringLiteral("M/d/yyyy"))) +
                                          body)));
    }
    // The primary position of the person's record; a link of 0 clears it.
    void Positions(int person, int primaryLink, int primaryHolder, int primaryRelation) {
        c_.Execute(QStringLiteral("UPDATE PATable SET pPRIINSID=%1, pPRIINSHOL=%2, pREL2PRI=%3 "
                                  "WHERE pID=%4")
                       .arg(primaryLink)
                       .arg(primaryHolder)
                       .arg(primaryLink == 0 ? QStringLiteral("NULL")
                                             : db::QuoteText(QString::number(primaryRelation)))
                       .arg(person));
    }

private:
    db::Connection& c_;
};

}  // namespace

void SeedDemoCoverageChains(db::Connection& connection, const QList<int>& subscriberIds) {
    Seeder s(connection);
    for (int i = 0; i < int(std::size(kEmployers)); ++i) {
        connection.Execute(QStringLiteral("INSERT INTO EmpTable (EmpInd, EmpNam) VALUES (%1, %2)")
                               .arg(kFirstEmployer + i)
                               .arg(db::QuoteText(QString::fromUtf8(kEmployers[i]))));
        connection.Execute(
            QStringLiteral("INSERT INTO GroPlaTable (GroPlaInd, GroPlaGroNum) VALUES (%1, %2)")
                .arg(kFirstPlan + i)
                .arg(db::QuoteText(QString::fromLatin1(kGroupNumbers[i]))));
        s.Link(kFirstEmployer + i, 0, 0, QStringLiteral("01/04/2024"));
    }
    schema::Catalog keys;
    for (const auto& [table, key] :
         {std::pair{"EmpTable", "EmpInd"}, {"GroPlaTable", "GroPlaInd"}}) {
        keys.Add({QLatin1String(table),
                  {{QLatin1String(key), schema::ColumnType::Long, 0, true, true}},
                  {}});
    }
    schema::SyncIdentities(connection, keys);

    // Every demo coverage is the primary of its person.
    connection.Execute(QStringLiteral(
        "UPDATE PATable SET pEmpID1 = (SELECT min(PatEmpTable.PatEmpElID) FROM PatEmpTable WHERE "
        "PatEmpTable.PatEmpPatID = PATable.pID AND PatEmpTable.PatEmpFla = 0 AND "
        "PatEmpTable.PatEmpOrd = 1) WHERE pID IN (SELECT PatEmpPatID FROM PatEmpTable WHERE "
        "PatEmpFla = 0 AND PatEmpOrd = 1)"));
    {
        db::Recordset rs(connection,
                         QStringLiteral("SELECT CovTable.CovPatID, PatEmpTable.PatEmpElID, "
                                        "PatEmpTable.PatEmpPatID, CovTable.CovRel FROM CovTable "
                                        "INNER JOIN PatEmpTable ON CovTable.CovSubPatEmpID = "
                                        "PatEmpTable.PatEmpID WHERE CovTable.CovFla = 0 AND "
                                        "CovTable.CovOrd = 1"));
        QList<std::array<int, 4>> rows;
        for (; !rs.Eof(); rs.MoveNext()) {
            rows.append({int(rs.Long(0)), int(rs.Long(1)), int(rs.Long(2)), int(rs.Long(3))});
        }
        for (const auto& r : rows)
            s.Positions(r[0], r[1], r[2], r[3]);
    }
    if (subscriberIds.size() < 4)
        return;

    // The first family came from another plan of the same employer at the turn of the year:
    // the old link and both coverages on it ended on the day the new ones began.
    const int head = subscriberIds[0];
    const int member = head + 1;
    const int oldLink = s.Link(kFirstEmployer,
                               s.Text(QStringLiteral("SELECT min(InsCoInd) FROM "
                                                     "InsCoTable WHERE InsCoNam "
                                                     "LIKE 'Summit%'"))
                                   .toInt(),
                               kFirstPlan + 4, QStringLiteral("01/03/2023"));
    const int oldPatEmp = s.PatEmp(head, oldLink, 1, QStringLiteral("01/03/2023"),
                                   QStringLiteral("01/04/2024"), QStringLiteral("MANAGER"));
    for (int person : {head, member}) {
        const int ended =
            s.Coverage(person, person == head ? 1 : 4, oldPatEmp, 1, QStringLiteral("01/03/2023"),
                       QStringLiteral("01/04/2024"), QStringLiteral("MANAGER"));
        const int now = s.Text(QStringLiteral("SELECT CovID FROM CovTable WHERE CovPatID=%1 AND "
                                              "CovFla=0 AND CovOrd=1")
                                   .arg(person))
                            .toInt();
        s.Note(person, QStringLiteral("primary"), QStringLiteral("was added"),
               QStringLiteral("01/03/2023"), QStringLiteral("SUPERVISOR"), s.CoverageText(ended));
        s.Note(person, QStringLiteral("primary"), QStringLiteral("was changed"),
               QStringLiteral("01/04/2024"), QStringLiteral("MANAGER"),
               QStringLiteral("----- Original Coverage -----\r\n") + s.CoverageText(ended) +
                   QStringLiteral("\r\n\r\n----- New Coverage -----\r\n") + s.CoverageText(now));
    }

    // The member of the second family was covered a second time through the third family's
    // plan, from February until the coverage was removed in September.
    const int child = subscriberIds[1] + 1;
    const int otherPatEmp = s.Text(QStringLiteral("SELECT min(PatEmpID) FROM PatEmpTable WHERE "
                                                  "PatEmpPatID=%1")
                                       .arg(subscriberIds[2]))
                                .toInt();
    const int second = s.Coverage(child, 4, otherPatEmp, 2, QStringLiteral("02/01/2024"),
                                  QStringLiteral("09/16/2024"), QStringLiteral("FRONTDESK"));
    s.Note(child, QStringLiteral("secondary"), QStringLiteral("was added"),
           QStringLiteral("02/01/2024"), QStringLiteral("FRONTDESK"), s.CoverageText(second));
    s.Note(child, QStringLiteral("secondary"),
           QStringLiteral("has been connected to a non-family member"),
           QStringLiteral("02/01/2024"), QStringLiteral("FRONTDESK"), QString());
    s.Note(child, QStringLiteral("secondary"), QStringLiteral("was removed"),
           QStringLiteral("09/16/2024"), QStringLiteral("FRONTDESK"), s.CoverageText(second));

    // The fourth subscriber left the last employer: the link went to its "No Insurance
    // Coverage" link and the coverage on it ended.
    const int leaver = subscriberIds[3];
    const int leaverPatEmp = s.Text(QStringLiteral("SELECT min(PatEmpID) FROM PatEmpTable WHERE "
                                                   "PatEmpPatID=%1")
                                        .arg(leaver))
                                 .toInt();
    const int leaverLink = s.Text(QStringLiteral("SELECT PatEmpElID FROM PatEmpTable WHERE "
                                                 "PatEmpID=%1")
                                      .arg(leaverPatEmp))
                               .toInt();
    const int noInsurance =
        s.Text(QStringLiteral("SELECT min(elID) FROM ELTable WHERE elEmpID=(SELECT elEmpID FROM "
                              "ELTable WHERE elID=%1) AND elInsID=0 AND elGroID=0")
                   .arg(leaverLink))
            .toInt();
    s.End(QStringLiteral("PatEmpTable"), QStringLiteral("PatEmp"), leaverPatEmp,
          QStringLiteral("10/01/2024"), QStringLiteral("MANAGER"));
    s.PatEmp(leaver, noInsurance, 1, QStringLiteral("10/01/2024"));
    db::Recordset covered(connection, QStringLiteral("SELECT CovID, CovPatID FROM CovTable WHERE "
                                                     "CovSubPatEmpID=%1 AND CovFla=0")
                                          .arg(leaverPatEmp));
    QList<std::pair<int, int>> ends;
    for (; !covered.Eof(); covered.MoveNext())
        ends.append({int(covered.Long(0)), int(covered.Long(1))});
    for (const auto& [cov, person] : ends) {
        s.End(QStringLiteral("CovTable"), QStringLiteral("Cov"), cov, QStringLiteral("10/01/2024"),
              QStringLiteral("MANAGER"));
        s.Note(person, QStringLiteral("primary"), QStringLiteral("was removed"),
               QStringLiteral("10/01/2024"), QStringLiteral("MANAGER"), s.CoverageText(cov));
        s.Positions(person, 0, 0, 0);
    }
}

}  // namespace orvo::host
