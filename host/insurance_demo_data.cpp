#include "host/insurance_demo_data.h"

#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

// Past the employers and plans of the demo's coverage chains.
constexpr int kFirstEmployer = 110;
constexpr int kFirstPlan = 510;

struct Employer {
    const char* name;
    const char* add1;
    const char* city;
    const char* state;
    const char* zip;
    const char* phone;
};

// Invented employers at invented addresses.
const Employer kEmployers[] = {
    {"Buckeye Tool & Die", "400 Industrial Parkway", "Columbus", "OH", "43207", "(614) 555-0300"},
    {"Städtler Engineering", "12 Ravine Street", "Dayton", "OH", "45402", "(937) 555-0301"},
    {"Lakeview School District", "88 Schoolhouse Lane", "Toledo", "OH", "43604", "(419) 555-0302"},
    {"Peña & Sons Landscaping", "7 Garden Row", "Akron", "OH", "44308", "(330) 555-0303"},
    {"Riverfront Hospital", "1 Medical Plaza", "Cincinnati", "OH", "45202", "(513) 555-0304"},
    {"Côté Bakery", "215 Rue Street", "Columbus", "OH", "43215", "(614) 555-0305"},
    {"Ohio Valley Freight", "5000 Logistics Drive", "Columbus", "OH", "43219", "(614) 555-0306"},
};

struct Plan {
    const char* group;
    const char* name;
    const char* category;
    const char* effective;
    int deductible;
    int maximum;
};

const Plan kPlans[] = {
    {"BTD-100", "Buckeye Standard Dental", "", "01-01", 50, 1500},
    {"SE-2024", "Städtler Premier", "", "07-01", 25, 2000},
    {"LSD-77", "Teachers' Dental", "", "09-01", 50, 1000},
    {"PS-10", "Small Business Basic", "", "01-01", 100, 1000},
    {"RH-CAP1", "Riverfront Managed Care", "CAPITATION", "01-01", 0, 0},
    {"CB-CAP2", "Bakery Managed Care (ended)", "CAPITATION", "01-01", 0, 0},
    {"OVF-PPO", "Freight PPO", "", "04-01", 75, 1250},
};

QString Values(const QStringList& values) {
    QStringList quoted;
    for (const QString& v : values)
        quoted << db::TextOrNull(v);
    return quoted.join(QStringLiteral(", "));
}

}  // namespace

void SeedDemoEmployersAndPlans(db::Connection& c, const QList<qint64>& carrierIds) {
    for (int i = 0; i < static_cast<int>(std::size(kEmployers)); ++i) {
        const Employer& e = kEmployers[i];
        c.Execute(
            QStringLiteral("INSERT INTO EmpTable (EmpInd, EmpNam, EmpAdd1, EmpCIT, EmpSTA, "
                           "EmpZIP, EmpTEL) VALUES (%1, %2)")
                .arg(kFirstEmployer + i)
                .arg(Values({QString::fromUtf8(e.name), e.add1, e.city, e.state, e.zip, e.phone})));
    }
    for (int i = 0; i < static_cast<int>(std::size(kPlans)); ++i) {
        const Plan& p = kPlans[i];
        c.Execute(QStringLiteral("INSERT INTO GroPlaTable (GroPlaInd, GroPlaInsID, GroPlaGroNum, "
                                 "GroPlaNam, GroPlaCat, GroPlaEffDat, GroPlaDed1, GroPlaMax1, "
                                 "GroPlaPayTyp, GroPlaForTyp) VALUES (%1, %2, %3, %4, %5, 1, 1)")
                      .arg(kFirstPlan + i)
                      .arg(carrierIds.value(i % carrierIds.size()))
                      .arg(Values({p.group, QString::fromUtf8(p.name), p.category, p.effective}))
                      .arg(p.deductible)
                      .arg(p.maximum));
    }
    // The managed care plans' links: the hospital's is live, the bakery's has ended.
    for (int i : {4, 5}) {
        c.Execute(QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, "
                                 "elEndDat, elEndWho, elFla) VALUES (%1, %2, %3, #01/04/2024#, "
                                 "%4, %5, %6)")
                      .arg(kFirstEmployer + i)
                      .arg(carrierIds.value(i % carrierIds.size()))
                      .arg(kFirstPlan + i)
                      .arg(i == 5 ? QStringLiteral("#06/30/2024#") : QStringLiteral("NULL"))
                      .arg(i == 5 ? QStringLiteral("'SUPERVISOR'") : QStringLiteral("NULL"))
                      .arg(i == 5 ? 1 : 0));
    }
}

void LinkDemoPersonsToEmployers(db::Connection& c) {
    c.Execute(QStringLiteral("UPDATE PATable SET pDOCSPE='Orthodontics' WHERE pID=6"));
    c.Execute(QStringLiteral("UPDATE PATable SET pDOCSPE='Oral Surgery' WHERE pID=7"));
    c.Execute(QStringLiteral("UPDATE PATable SET pDOCSPE='General Dentistry' WHERE pID IN (1, 2)"));
}

}  // namespace orvo::host
