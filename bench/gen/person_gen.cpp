#include "bench/gen/person_gen.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <cstdio>
#include <random>

#include "host/host_gic.h"
#include "host/host_persons.h"
#include "host/host_tables.h"
#include "people/people_tables.h"
#include "platform/db/recordset.h"
#include "platform/schema/schema.h"

namespace orvo::bench {
namespace {

const char* const kLastNames[] = {
    "Smith",    "Johnson",        "Peña",     "Müller",   "García",    "Nguyen",  "Okafor",
    "Kowalski", "O'Brien",        "Schröder", "Martínez", "Brown",     "Rossi",   "Dubois",
    "Ito",      "Andersson",      "Novák",    "Jensen",   "Fernández", "Łukasik", "Williams",
    "Adeyemi",  "Park",           "Häkkinen", "Ramírez",  "Taylor",    "Weiß",    "Costa",
    "Moreau",   "Ó Súilleabháin", "Davis",    "Lefèvre",  "Jones",     "Kim",     "Yılmaz"};
const char* const kFirstNames[] = {
    "José",    "Zoë",   "Mary Ann", "John",  "Chloé",  "Ana",   "Jürgen", "Li",
    "Amelia",  "Noah",  "Inés",     "Björn", "Oliver", "Emma",  "Renée",  "Mateo",
    "Siobhán", "Ava",   "Łucja",    "Liam",  "Sofía",  "Ethan", "Marta",  "Kwame",
    "Hana",    "Lucas", "Élodie",   "Isaac", "Nadia",  "Tomás", "Grace",  "François"};
const char* const kStreets[] = {"Oak Street",   "Main Street",  "Calle del Sol", "Maple Avenue",
                                "Lindenstraße", "Cedar Lane",   "Rue Lafayette", "Pine Road",
                                "Elm Court",    "Harbor Drive", "Sunset Blvd",   "Mill Way"};
const char* const kCities[] = {"Columbus", "Springfield", "San José",  "Portland",   "Madison",
                               "Fairview", "Española",    "Riverside", "Georgetown", "Salem"};
const char* const kStates[] = {"OH", "IL", "CA", "OR", "WI", "TX", "NM", "CA", "KY", "MA"};

// The columns every generated row fills, in the order of the bound values.
const QStringList kColumns = {"pID",
                              "pTypPat",
                              "pTypDoc",
                              "pTypRef",
                              "pTypPhy",
                              "pTypEmp",
                              "pTypX1",
                              "pLASNAM",
                              "pFIRNAM",
                              "pSeaNam",
                              "pNICNAM",
                              "pSEX",
                              "pBIRDAT",
                              "pADD1",
                              "pCIT",
                              "pSTA",
                              "pZIP",
                              "pHOMPHO",
                              "pHomPho1",
                              "pHomCon",
                              "pHomEma",
                              "pFAMHEAIND",
                              "pACCTYP",
                              "pSrtFlg",
                              "pPROIND",
                              "pDocIni",
                              "pDOCFeeTyp",
                              "pGPDenFeeTyp",
                              "pGPDenFeeTypPerm",
                              "OffLocID"};
constexpr int kRowsPerStatement = 200;

template <class T, size_t N>
const char* Pick(std::mt19937& rng, const T (&items)[N]) {
    return items[rng() % N];
}

struct Person {
    int id = 0;
    QString typPat, typDoc, typRef, typPhy, typEmp, typX1;
    QString last, first, sex, birth, add1, city, state, zip, phone, email;
    int head = 0;
    QString accTyp, srtFlg, initials;
    int provider = 0;
    int docFee = 0, feeTyp = 0;
};

class Inserter {
public:
    Inserter(db::Connection& connection) : connection_(connection) {}

    void Add(const Person& p) {
        pending_ << p;
        if (pending_.size() == kRowsPerStatement)
            Flush();
    }
    void Flush() {
        if (pending_.isEmpty())
            return;
        QSqlQuery& query = pending_.size() == kRowsPerStatement ? Full() : Prepare(pending_.size());
        for (const Person& p : pending_) {
            const auto text = [&](const QString& v) {
                query.addBindValue(v.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : v);
            };
            query.addBindValue(p.id);
            for (const QString* v : {&p.typPat, &p.typDoc, &p.typRef, &p.typPhy, &p.typEmp,
                                     &p.typX1, &p.last, &p.first})
                text(*v);
            text(p.last.toUpper());
            text(p.first.section(QLatin1Char(' '), 0, 0));
            for (const QString* v :
                 {&p.sex, &p.birth, &p.add1, &p.city, &p.state, &p.zip, &p.phone, &p.phone})
                text(*v);
            text(QStringLiteral("pHomPho1"));
            text(p.email);
            query.addBindValue(p.head);
            text(p.accTyp);
            text(p.srtFlg);
            query.addBindValue(p.provider);
            text(p.initials);
            query.addBindValue(p.docFee);
            query.addBindValue(p.feeTyp);
            query.addBindValue(p.feeTyp);
            query.addBindValue(1);
        }
        if (!query.exec())
            throw db::DatabaseError(query.lastError().text(), query.lastQuery());
        pending_.clear();
    }

private:
    QSqlQuery& Full() {
        if (!full_)
            full_ = std::make_unique<QSqlQuery>(Prepare(kRowsPerStatement));
        return *full_;
    }
    QSqlQuery& Prepare(qsizetype rows) {
        QStringList marks;
        for (int i = 0; i < kColumns.size(); ++i)
            marks << QStringLiteral("?");
        const QString row = QLatin1Char('(') + marks.join(QLatin1Char(',')) + QLatin1Char(')');
        QStringList values;
        for (qsizetype i = 0; i < rows; ++i)
            values << row;
        const QString sql = connection_.Translate(
            QStringLiteral("INSERT INTO PATable (%1) VALUES %2")
                .arg(kColumns.join(QStringLiteral(", ")), values.join(QStringLiteral(", "))));
        tail_ = std::make_unique<QSqlQuery>(connection_.database());
        if (!tail_->prepare(sql))
            throw db::DatabaseError(tail_->lastError().text(), sql);
        return *tail_;
    }

    db::Connection& connection_;
    QList<Person> pending_;
    std::unique_ptr<QSqlQuery> full_;
    std::unique_ptr<QSqlQuery> tail_;
};

QString Phone(std::mt19937& rng) {
    return QStringLiteral("(%1) 555-%2")
        .arg(200 + rng() % 800)
        .arg(rng() % 10000, 4, 10, QLatin1Char('0'));
}

}  // namespace

GeneratedPersons GeneratePersons(db::Connection& connection, int persons, unsigned seed) {
    std::mt19937 rng(seed);
    GeneratedPersons out;
    db::Transaction transaction(connection);
    Inserter inserter(connection);
    int id = 0;
    const auto base = [&](Person& p) {
        p.id = ++id;
        p.last = QString::fromUtf8(Pick(rng, kLastNames));
        p.first = QString::fromUtf8(Pick(rng, kFirstNames));
        p.sex = rng() % 2 ? QStringLiteral("F") : QStringLiteral("M");
        p.birth = QStringLiteral("%1-%2-%3")
                      .arg(1 + rng() % 12, 2, 10, QLatin1Char('0'))
                      .arg(1 + rng() % 28, 2, 10, QLatin1Char('0'))
                      .arg(1930 + rng() % 94);
        const int place = static_cast<int>(rng() % std::size(kCities));
        p.add1 = QStringLiteral("%1 %2")
                     .arg(1 + rng() % 9999)
                     .arg(QString::fromUtf8(Pick(rng, kStreets)));
        p.city = QString::fromUtf8(kCities[place]);
        p.state = QString::fromLatin1(kStates[place]);
        p.zip = QStringLiteral("%1").arg(10000 + rng() % 89999);
        p.phone = Phone(rng);
    };

    // The staff and the outside doctors come first; they head families of their own.
    const int providers = std::max(5, persons / 20000);
    const int staff = std::max(5, persons / 10000);
    const int outside = std::max(5, persons / 2000);
    QList<int> providerIds;
    const auto addOwnFamily = [&](Person& p) {
        p.head = p.id;
        inserter.Add(p);
    };
    for (int i = 0; i < providers && id < persons; ++i) {
        Person p;
        base(p);
        p.typDoc = p.typEmp = QStringLiteral("1");
        p.initials = QStringLiteral("%1%2").arg(p.first.left(1)).arg(i + 1);
        p.docFee = 1 + i % 5;
        providerIds << p.id;
        addOwnFamily(p);
    }
    out.providers = providerIds.size();
    for (int i = 0; i < staff && id < persons; ++i) {
        Person p;
        base(p);
        p.typEmp = i % 4 == 0 ? QStringLiteral("2") : QStringLiteral("1");
        p.initials = QStringLiteral("E%1").arg(i + 1).left(3);
        addOwnFamily(p);
    }
    for (int i = 0; i < outside * 2 && id < persons; ++i) {
        Person p;
        base(p);
        (i % 2 ? p.typRef : p.typPhy) = QStringLiteral("1");
        addOwnFamily(p);
    }

    // Families of one to six.
    out.firstPatient = id + 1;
    while (id < persons) {
        const int size = std::min<int>(1 + rng() % 6, persons - id);
        const int head = id + 1;
        const QString family = QString::fromUtf8(Pick(rng, kLastNames));
        const int provider = providerIds.isEmpty() ? 0 : providerIds[rng() % providerIds.size()];
        const int schedule = 1 + static_cast<int>(rng() % 5);
        for (int m = 0; m < size; ++m) {
            Person p;
            base(p);
            p.last = family;
            p.head = head;
            p.provider = provider;
            p.feeTyp = schedule;
            p.typPat = QStringLiteral("1");
            if (m == 0 && rng() % 10 == 0)
                p.typPat = QStringLiteral("2");  // a head who is no patient
            else if (m > 0 && rng() % 25 == 0)
                p.typPat = QStringLiteral("3");
            if (m > 0 && rng() % 50 == 0) {  // archived
                p.typPat = QStringLiteral("Z");
                p.typX1 = QStringLiteral("1");
                p.srtFlg = QStringLiteral("!");
                p.accTyp = QStringLiteral("N");
            }
            if (m == 0)
                p.email = QStringLiteral("%1.%2@example.org").arg(p.first.left(1)).arg(p.id);
            inserter.Add(p);
        }
        ++out.families;
    }
    inserter.Flush();
    connection.Execute(QStringLiteral(
        "INSERT INTO FamTable (fMEMID, fRSPID) SELECT pID, pFAMHEAIND FROM PATable"));
    transaction.Commit();
    out.persons = id;
    return out;
}

int KeptPracticePersons() {
    const int n = qEnvironmentVariableIntValue("ORVO_BENCH_PERSONS");
    return n > 0 ? n : 500000;
}

db::ConnectionOptions KeptPersonPractice(db::Engine engine, int persons) {
    db::ConnectionOptions options;
    options.engine = engine;
    const QString name = QStringLiteral("persons_%1").arg(persons);
    if (engine == db::Engine::Sqlite) {
        const QString dir =
            qEnvironmentVariable("ORVO_BENCH_DATA", QStringLiteral("/tmp/orvo-bench"));
        QDir().mkpath(dir);
        options.sqliteFile = dir + QLatin1Char('/') + name + QStringLiteral(".db");
    } else {
        options.pgConnInfo = qEnvironmentVariable("ORVO_TEST_PG");
        options.pgSchema = QStringLiteral("bench_") + name;
    }
    // A practice made to the end has its family-head list filled: that is done last.
    const auto complete = [&] {
        try {
            auto c = db::Connection::Open(options);
            return db::ReadScalar(*c, QStringLiteral("SELECT count(*) FROM PATable")).toInt() ==
                       persons &&
                   db::ReadScalar(*c, QStringLiteral("SELECT count(*) FROM FMIndTable")).toInt() >
                       0;
        } catch (const db::DatabaseError&) {
            return false;
        }
    };
    schema::Catalog catalog;
    host::DeclareHostTables(catalog);
    people::DeclarePeopleTables(catalog);
    if (complete()) {
        // A practice kept from an earlier build takes this build's upgrades.
        schema::Apply(*db::Connection::Open(options), catalog);
        return options;
    }

    QElapsedTimer timer;
    timer.start();
    if (engine == db::Engine::Sqlite) {
        QFile::remove(options.sqliteFile);
    } else {
        db::ConnectionOptions admin = options;
        admin.pgSchema.clear();
        auto c = db::Connection::Open(admin);
        c->Execute(QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext"));
        c->Execute(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(options.pgSchema));
        c->Execute(QStringLiteral("CREATE SCHEMA %1").arg(options.pgSchema));
    }
    auto connection = db::Connection::Open(options);
    schema::Apply(*connection, catalog);
    GeneratePersons(*connection, persons);
    schema::SyncIdentities(*connection, catalog);
    {
        host::HostSession session;
        session.connection = connection;
        host::HostGIC(session).WriteSetting(host::kOfficeSection, host::kDefaultProviderKey, 0, 1);
    }
    host::RebuildFamilyHeadIndex(*connection);
    connection->Execute(QStringLiteral("ANALYZE"));
    std::fprintf(stderr, "made a practice of %d persons on %s in %.1f s\n", persons,
                 engine == db::Engine::Sqlite ? "SQLite" : "PostgreSQL", timer.elapsed() / 1000.0);
    return options;
}

}  // namespace orvo::bench
