#include "host/demo_data.h"

#include <QDate>

#include "host/coverage_demo_data.h"
#include "host/host_gic.h"
#include "host/host_persons.h"
#include "host/host_tables.h"
#include "host/insurance_demo_data.h"
#include "host/login.h"
#include "host/person_demo_data.h"
#include "host/reminder_demo_data.h"
#include "host/zip_demo_data.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

QString Values(const QStringList& values) {
    QStringList quoted;
    for (const QString& v : values)
        quoted << db::TextOrNull(v);
    return quoted.join(QStringLiteral(", "));
}

struct Carrier {
    const char* name;
    const char* add1;
    const char* city;
    const char* state;
    const char* zip;
    const char* phone;
    const char* payer;
};

// Invented companies at invented addresses.
const Carrier kCarriers[] = {
    {"Bluewater Dental Mutual", "PO Box 4410", "Columbus", "OH", "43216", "(614) 555-0140",
     "BWD01"},
    {"Keystone Benefit Plans", "1200 Market Street", "Harrisburg", "PA", "17101", "(717) 555-0112",
     "KBP22"},
    {"Prairie Smile Assurance", "88 Commerce Drive", "Omaha", "NE", "68102", "(402) 555-0187",
     "PSA07"},
    {"Harborline Health", "PO Box 907", "Portland", "ME", "04101", "(207) 555-0164", ""},
    {"Summit Dental Trust", "455 Alpine Way", "Denver", "CO", "80202", "(303) 555-0129", "SDT15"},
    {"Lakeshore Union Benefits", "31 Pier Road", "Milwaukee", "WI", "53202", "(414) 555-0198",
     "LUB03"},
    {"O'Brien Dental Plan", "17 Shannon Court", "Boston", "MA", "02108", "(617) 555-0101", ""},
    {"Red Rock Insurance Group", "2600 Canyon Blvd", "Phoenix", "AZ", "85004", "(602) 555-0177",
     "RRI44"},
    {"Magnolia Mutual", "PO Box 1322", "Jackson", "MS", "39201", "(601) 555-0150", ""},
    {"Evergreen Benefit Administrators", "900 Cedar Street", "Tacoma", "WA", "98402",
     "(253) 555-0133", "EBA09"},
};

struct Pharmacy {
    const char* name;
    const char* add1;
    const char* city;
    const char* state;
    const char* zip;
    const char* phone;
};

const Pharmacy kPharmacies[] = {
    {"Main Street Pharmacy", "214 Main Street", "Columbus", "OH", "43215", "(614) 555-0190"},
    {"Corner Drug & Health", "5 Elm Avenue", "Columbus", "OH", "43201", "(614) 555-0191"},
    {"Riverside Apothecary", "77 River Road", "Worthington", "OH", "43085", "(614) 555-0192"},
    {"Westgate Family Pharmacy", "3100 Broad Street", "Columbus", "OH", "43204", "(614) 555-0193"},
};

struct Payer {
    const char* id;
    const char* name;
    const char* info;
};

const Payer kPayers[] = {
    {"BWD01", "Bluewater Dental Mutual", "Claims: PO Box 4410, Columbus OH"},
    {"BWD02", "Bluewater Dental Mutual - West", "Claims: PO Box 880, Reno NV"},
    {"KBP22", "Keystone Benefit Plans", "Real-time eligibility available"},
    {"PSA07", "Prairie Smile Assurance", "Attachments by fax only"},
    {"SDT15", "Summit Dental Trust", ""},
    {"LUB03", "Lakeshore Union Benefits", "Union plans; group number required"},
    {"RRI44", "Red Rock Insurance Group", ""},
    {"EBA09", "Evergreen Benefit Administrators", "Third-party administrator"},
    {"HHN30", "Harborline Health Network", "Medical and dental"},
    {"MGM11", "Magnolia Mutual Claims Center", ""},
    {"GDX00", "General Dental Exchange", "Clearing payer for small plans"},
};

// The mark a seeded practice keeps, written in the seed's own transaction.
const QString kDemoSection = QStringLiteral("ORVO DEMO");
const QString kDemoKey = QStringLiteral("Seeded");

// The seed's transaction, holding the practice's write lock from its start, so that of several
// stations starting together on an empty practice one seeds and the others, waiting, then find
// its mark. The embedded engine takes its write lock at BEGIN IMMEDIATE (waiting as long as the
// connection's busy timeout allows); the server takes an advisory lock for the transaction.
class SeedLock {
public:
    explicit SeedLock(db::Connection& connection) : connection_(connection) {
        if (connection_.engine() == db::Engine::Sqlite) {
            connection_.Execute(QStringLiteral("BEGIN IMMEDIATE"));
            return;
        }
        connection_.BeginTransaction();
        connection_.Execute(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(kSeedLockKey));
    }
    ~SeedLock() {
        if (done_)
            return;
        try {
            connection_.Rollback();
        } catch (const db::DatabaseError&) {
            // The connection is gone; so is the transaction.
        }
    }
    SeedLock(const SeedLock&) = delete;
    SeedLock& operator=(const SeedLock&) = delete;
    void Commit() {
        connection_.Commit();
        done_ = true;
    }

private:
    static constexpr qint64 kSeedLockKey = 0x6f72766f64656d6f;  // "orvodemo"
    db::Connection& connection_;
    bool done_ = false;
};

}  // namespace

bool SeedDemoPractice(HostSession& session) {
    db::Connection& c = *session.connection;
    SeedLock lock(c);
    if (db::ReadScalar(
            c, QStringLiteral("SELECT count(*) FROM %1 WHERE SetSec=%2 AND SetKey=%3")
                   .arg(kSettingsTable, db::QuoteText(kDemoSection), db::QuoteText(kDemoKey)))
            .toInt() > 0) {
        return false;  // seeded once; what was deleted since stays deleted
    }
    // A practice with carriers of its own is never mixed with made-up ones.
    if (db::ReadScalar(c, QStringLiteral("SELECT count(*) FROM InsCoTable")).toInt() > 0)
        return false;

    for (const Payer& p : kPayers) {
        c.Execute(QStringLiteral("INSERT INTO ePayerTable (epPayID, epNam, epAddInf) VALUES (%1)")
                      .arg(Values({p.id, p.name, p.info})));
    }
    QList<qint64> carrierIds;
    for (const Carrier& k : kCarriers) {
        carrierIds << c.InsertWithIdentity(
            QStringLiteral(
                "INSERT INTO InsCoTable (InsCoNam, InsCoAdd1, InsCoCit, InsCoSta, InsCoZip, "
                "InsCoTel, InsCoAccID) VALUES (%1)")
                .arg(Values({k.name, k.add1, k.city, k.state, k.zip, k.phone, k.payer})));
    }
    for (const Pharmacy& p : kPharmacies) {
        c.Execute(
            QStringLiteral("INSERT INTO PhaTable (PhaNam, PhaAdd1, PhaCit, PhaSta, PhaZip, PhaTel) "
                           "VALUES (%1)")
                .arg(Values({p.name, p.add1, p.city, p.state, p.zip, p.phone})));
    }

    // Employer-plan links for the first carriers, each with a few subscribers and their
    // covered family members; the other carriers have no patients.
    qint64 person = 1000;
    QList<int> subscribers;
    for (int k = 0; k < 4; ++k) {
        const qint64 link = c.InsertWithIdentity(
            QStringLiteral("INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) "
                           "VALUES (%1, %2, %3, #01/04/2024#, 0)")
                .arg(100 + k)
                .arg(carrierIds[k])
                .arg(500 + k));
        for (int s = 0; s < 3 + k; ++s) {
            const qint64 subscriber = ++person;
            subscribers << static_cast<int>(subscriber);
            const qint64 patEmp = c.InsertWithIdentity(
                QStringLiteral("INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, "
                               "PatEmpStaDat, PatEmpFla) VALUES (%1, %2, 1, #01/04/2024#, 0)")
                    .arg(subscriber)
                    .arg(link));
            for (int member = 0; member < 2; ++member) {
                c.Execute(QStringLiteral(
                              "INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, CovOrd, "
                              "CovStaDat, CovFla) VALUES (%1, %2, %3, 1, #01/04/2024#, 0)")
                              .arg(member == 0 ? subscriber : ++person)
                              .arg(member == 0 ? 1 : 4)
                              .arg(patEmp));
            }
        }
    }

    // A manager who may edit carriers and a front desk login who may not.
    for (const char* login : {"MANAGER", "FRONTDESK"}) {
        c.Execute(QStringLiteral("INSERT INTO PWMTable (PWMUseNam, PWMPasWor, PWMPid, OffLocID) "
                                 "VALUES ('%1', '', 0, %2)")
                      .arg(QLatin1String(login))
                      .arg(session.officeLocationId));
    }
    GrantRight(c, QStringLiteral("MANAGER"), session.officeLocationId,
               QStringLiteral("EDIT-EMP-INS"));
    GrantRight(c, QStringLiteral("MANAGER"), session.officeLocationId,
               QStringLiteral("LINK-EMP-INS"));
    SeedDemoPersons(c, subscribers);
    SeedDemoCoverageChains(c, subscribers);
    SeedDemoEmployersAndPlans(c, carrierIds);
    LinkDemoPersonsToEmployers(c);
    if (db::ReadScalar(c, QStringLiteral("SELECT count(*) FROM ZipCodTable")).toInt() == 0)
        InsertDemoZipCodes(c);
    c.Execute(QStringLiteral("INSERT INTO %1 (SetSec, SetKey, SetSco, SetVal, SetValTyp) VALUES "
                             "(%2, %3, 0, %4, 'QString')")
                  .arg(kSettingsTable, db::QuoteText(kDemoSection), db::QuoteText(kDemoKey),
                       db::QuoteText(QDate::currentDate().toString(Qt::ISODate))));
    lock.Commit();
    RebuildFamilyHeadIndex(c);
    HostGIC(session).WriteSetting(kOfficeSection, kDefaultProviderKey, 0, 1);
    // The eReminders keep a transaction of their own; only the station that seeded gets here.
    SeedDemoReminders(c, session.dataPath, session.officeLocationId);
    return true;
}

}  // namespace orvo::host
