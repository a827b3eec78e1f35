#pragma once

#include <QRegularExpression>
#include <QStringList>

#include "insurance/coverage_engine.h"
#include "insurance/insurance_tables.h"
#include "people/people_tables.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "tests/support/practice_fixture.h"

namespace orvo::insurance::test {

// Builds practices for the coverage chain: persons in families, employers, carriers, plans and
// their links, and reads back what the chain and the person's record hold.
class ChainBuilder {
public:
    explicit ChainBuilder(db::Connection& connection) : c_(connection) {}

    // A person; head 0 makes the person head of a family of one.
    int Person(const QString& last, const QString& first, int head = 0) {
        const int id = static_cast<int>(c_.InsertWithIdentity(
            QStringLiteral("INSERT INTO PATable (pLASNAM, pFIRNAM, pTypPat) VALUES (%1, %2, '1')")
                .arg(db::QuoteText(last), db::QuoteText(first))));
        c_.Execute(QStringLiteral("UPDATE PATable SET pFAMHEAIND = %1 WHERE pID = %2")
                       .arg(head == 0 ? id : head)
                       .arg(id));
        return id;
    }
    int Employer(const QString& name) {
        return Insert(
            QStringLiteral("INSERT INTO EmpTable (EmpNam) VALUES (%1)").arg(db::QuoteText(name)));
    }
    int Carrier(const QString& name) {
        return Insert(QStringLiteral("INSERT INTO InsCoTable (InsCoNam) VALUES (%1)")
                          .arg(db::QuoteText(name)));
    }
    int Plan(const QString& groupNumber) {
        return Insert(QStringLiteral("INSERT INTO GroPlaTable (GroPlaGroNum) VALUES (%1)")
                          .arg(db::QuoteText(groupNumber)));
    }
    // An employer-plan link; carrier and plan 0 make it a "No Insurance Coverage" link.
    int Link(int employer, int carrier, int plan) {
        return Insert(QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, "
                                     "elFla) VALUES (%1, %2, %3, #01/02/2024#, 0)")
                          .arg(employer)
                          .arg(carrier)
                          .arg(plan));
    }
    // A link with a carrier and plan of its own.
    int PlanLink(int employer, const QString& carrierName, const QString& groupNumber) {
        return Link(employer, Carrier(carrierName), Plan(groupNumber));
    }

    int Long(const QString& sql) { return db::ReadScalar(c_, sql).toInt(); }
    QString Text(const QString& sql) { return db::ReadScalar(c_, sql).toString(); }
    // The subscriber link of a person on a link, active or not: the latest.
    int PatEmp(int person, int elID) {
        return Long(QStringLiteral("SELECT PatEmpID FROM PatEmpTable WHERE PatEmpPatID = %1 AND "
                                   "PatEmpElID = %2 ORDER BY PatEmpID DESC")
                        .arg(person)
                        .arg(elID));
    }
    // The person's active coverage on a subscriber link, 0 when none.
    int Coverage(int person, int PatEmpID) {
        return Long(QStringLiteral("SELECT CovID FROM CovTable WHERE CovPatID = %1 AND "
                                   "CovSubPatEmpID = %2 AND CovFla = 0")
                        .arg(person)
                        .arg(PatEmpID));
    }
    // One line per coverage row of the person: "subscriber-link order relation flag".
    QStringList Coverages(int person) {
        QStringList out;
        db::Recordset rs(c_, QStringLiteral("SELECT CovSubPatEmpID, CovOrd, CovRel, CovFla FROM "
                                            "CovTable WHERE CovPatID = %1 ORDER BY CovID")
                                 .arg(person));
        for (; !rs.Eof(); rs.MoveNext()) {
            out << QStringLiteral("%1 %2 %3 %4")
                       .arg(rs.Long(0))
                       .arg(rs.Long(1))
                       .arg(rs.Long(2))
                       .arg(rs.Long(3));
        }
        return out;
    }
    QString PersonColumn(int person, const QString& column) {
        db::Recordset rs(
            c_, QStringLiteral("SELECT %1 FROM PATable WHERE pID = %2").arg(column).arg(person));
        return rs.IsEmpty() ? QStringLiteral("<no row>") : rs.Text(0).trimmed();
    }
    // The notes of a person, oldest first.
    QStringList Notes(int person) {
        QStringList out;
        db::Recordset rs(c_, QStringLiteral("SELECT cmDoc FROM cmTable WHERE cmPID = %1 AND "
                                            "cmSouKey = 'LogInsCov' ORDER BY cmID")
                                 .arg(person));
        for (; !rs.Eof(); rs.MoveNext())
            out << rs.Text(0);
        return out;
    }
    // Every row of the chain's tables, the persons and the notes, for before-and-after checks.
    QStringList Snapshot() {
        QStringList out;
        for (const auto& [table, key] : {std::pair{"ELTable", "elID"},
                                         {"PatEmpTable", "PatEmpID"},
                                         {"CovTable", "CovID"},
                                         {"PATable", "pID"},
                                         {"cmTable", "cmID"}}) {
            db::Recordset rs(c_, QStringLiteral("SELECT * FROM %1 ORDER BY %2")
                                     .arg(QLatin1String(table), QLatin1String(key)));
            for (; !rs.Eof(); rs.MoveNext()) {
                QStringList row;
                for (int i = 0; i < rs.FieldCount(); ++i)
                    row << rs.Text(i);
                out << QLatin1String(table) + QLatin1Char(':') + row.join(QLatin1Char('|'));
            }
        }
        return out;
    }

    // What must hold whatever was done: among each person's active rows the order numbers run
    // 1..n without gaps, a person has at most one active coverage per subscriber link, and an
    // ended row has its end date, its login and its order. Answers the faults found.
    QStringList InvariantFaults() {
        QStringList faults;
        const auto orders = [&](const QString& what, const QString& sql) {
            db::Recordset rs(c_, sql);
            int person = -1;
            int expected = 1;
            for (; !rs.Eof(); rs.MoveNext()) {
                if (rs.Long(0) != person) {
                    person = static_cast<int>(rs.Long(0));
                    expected = 1;
                }
                if (rs.Long(1) != expected) {
                    faults << QStringLiteral("%1 of person %2: order %3 where %4 was due")
                                  .arg(what)
                                  .arg(person)
                                  .arg(rs.Long(1))
                                  .arg(expected);
                }
                ++expected;
            }
        };
        orders(QStringLiteral("coverage"),
               QStringLiteral("SELECT CovPatID, CovOrd FROM (CovTable INNER JOIN PatEmpTable ON "
                              "CovSubPatEmpID = PatEmpID) INNER JOIN ELTable ON PatEmpElID = "
                              "elID WHERE CovFla = 0 AND PatEmpFla = 0 AND elFla = 0 ORDER BY "
                              "CovPatID, CovOrd"));
        orders(QStringLiteral("subscriber link"),
               QStringLiteral("SELECT PatEmpPatID, PatEmpOrd FROM PatEmpTable INNER JOIN ELTable "
                              "ON PatEmpElID = elID WHERE PatEmpFla = 0 AND elFla = 0 ORDER BY "
                              "PatEmpPatID, PatEmpOrd"));
        db::Recordset twice(c_, QStringLiteral("SELECT CovPatID, CovSubPatEmpID FROM CovTable "
                                               "WHERE CovFla = 0 GROUP BY CovPatID, "
                                               "CovSubPatEmpID HAVING count(*) > 1"));
        for (; !twice.Eof(); twice.MoveNext()) {
            faults << QStringLiteral("person %1 covered twice by subscriber link %2")
                          .arg(twice.Long(0))
                          .arg(twice.Long(1));
        }
        for (const QString& prefix : {QStringLiteral("Cov"), QStringLiteral("PatEmp")}) {
            const int bad = Long(QStringLiteral("SELECT count(*) FROM %1Table WHERE %1Fla = 1 AND "
                                                "(%1EndDat IS NULL OR %1EndWho IS NULL OR %1Ord "
                                                "< 1)")
                                     .arg(prefix));
            if (bad > 0)
                faults << QStringLiteral("%1 rows ended without date, login or order: %2")
                              .arg(prefix)
                              .arg(bad);
        }
        return faults;
    }

private:
    int Insert(const QString& sql) { return static_cast<int>(c_.InsertWithIdentity(sql)); }
    db::Connection& c_;
};

// The head line of a history note, with its time left open.
inline QRegularExpression NoteHead(const QString& orderWord, const QString& action) {
    return QRegularExpression(
        QStringLiteral("^The following ") + orderWord + QStringLiteral(" insurance plan was ") +
        action + QStringLiteral(" by user JDOE on 3/15/2024 at \\d\\d:\\d\\d [AP]M\\.\r\n\r\n"));
}

// A practice with the persons and the insurance tables, on each engine.
class CoverageTest : public orvo::test::PracticeTest {
protected:
    void DeclareTables(schema::Catalog& catalog) override {
        people::DeclarePeopleTables(catalog);
        DeclareInsuranceTables(catalog);
    }
    void SetUp() override {
        PracticeTest::SetUp();
        if (database_)
            chain_ = std::make_unique<ChainBuilder>(connection());
    }
    ChainBuilder& chain() { return *chain_; }

    // The engine's writers as the screens call them, silent unless told.
    bool Cover(int person, int PatEmpID, bool silent = true) {
        bool update = true;
        bool failed = false;
        Update_Coverage(gic(), person, 0, PatEmpID, silent, update, failed);
        return !failed;
    }
    bool Change(int person, int CovID, int PatEmpID, bool silent = true, bool update = true) {
        bool failed = false;
        Update_Coverage(gic(), person, CovID, PatEmpID, silent, update, failed);
        return !failed;
    }
    bool Uncover(int person, int CovID, bool silent = true) {
        bool update = true;
        bool failed = false;
        Update_Coverage(gic(), person, CovID, 0, silent, update, failed);
        return !failed;
    }
    void Subscribe(int person, int oldElID, int newElID) {
        bool update = true;
        Update_Subscriber_Link(gic(), person, oldElID, newElID, true, update);
    }

    std::unique_ptr<ChainBuilder> chain_;
};

}  // namespace orvo::insurance::test
