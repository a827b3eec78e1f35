#include "host/person_demo_data.h"

#include "host/host_gic.h"
#include "host/host_persons.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/schema/schema.h"

namespace orvo::host {
namespace {

struct DemoPerson {
    int id;
    const char* last;
    const char* first;
    const char* sex;
    const char* birth;
    // Roles: patient, provider, referral, physician, employee, archived.
    const char* pat;
    const char* doc;
    const char* ref;
    const char* phy;
    const char* emp;
    const char* archived;
    int head;  // 0: heads a family of one's own
    const char* initials;
};

// The office's staff and outside doctors.
const DemoPerson kStaff[] = {
    {1, "Peña", "José", "M", "04-12-1971", "", "1", "", "", "1", "", 0, "JP"},
    {2, "Müller", "Zoë", "F", "09-30-1980", "", "1", "", "", "1", "", 0, "ZM"},
    {3, "Okafor", "Chidi", "M", "01-05-1986", "", "", "", "", "1", "", 0, "CO"},
    {4, "Lefèvre", "Renée", "F", "07-22-1990", "", "", "", "", "2", "", 0, "RL"},
    {5, "Andersson", "Björn", "M", "03-14-1962", "", "", "1", "", "", "", 0, ""},
    {6, "Ramírez", "Inés", "F", "11-02-1975", "", "", "", "1", "", "", 0, ""},
    {7, "O'Brien", "Siobhán", "F", "05-19-1968", "", "", "1", "1", "", "", 0, ""},
};

const char* const kFamilyNames[] = {"García", "Nguyen",   "Kowalski", "Schröder", "Smith",
                                    "Dubois", "Ito",      "Novák",    "Taylor",   "Rossi",
                                    "Jensen", "Park",     "Yılmaz",   "Costa",    "Weiß",
                                    "Brown",  "Häkkinen", "Fernández"};
const char* const kHeadNames[] = {"María José", "Minh",  "Anna",  "Jürgen", "Olivia", "Chloé",
                                  "Hana",       "Tomáš", "Grace", "Giulia", "Søren",  "Ji-woo",
                                  "Ayşe",       "João",  "Lukas", "Noah",   "Aino",   "Lucía"};
const char* const kMemberNames[] = {"Mateo", "Lan",   "Łucja", "Anneliese", "Liam",  "Élodie",
                                    "Yuki",  "Jakub", "Ethan", "Marco",     "Freja", "Seo-yeon",
                                    "Emre",  "Inês",  "Mia",   "Ava",       "Eino",  "Pablo"};
const char* const kCities[] = {"Columbus", "Dayton", "Toledo", "Akron", "Cincinnati"};

QString Literal(const QString& text) {
    return text.isEmpty() ? QStringLiteral("NULL") : db::QuoteText(text);
}

void Insert(db::Connection& c, const QStringList& columns, const QStringList& values) {
    c.Execute(QStringLiteral("INSERT INTO PATable (%1) VALUES (%2)")
                  .arg(columns.join(QStringLiteral(", ")), values.join(QStringLiteral(", "))));
}

}  // namespace

int SeedDemoPersons(db::Connection& c, const QList<int>& subscriberIds) {
    int count = 0;
    // The practice's Sex and Title and Medical Alert databases, as a new office starts them.
    for (const char* pair : {"F/Mrs.", "F/Ms.", "F/Miss", "M/Mr.", "F/Sra.", "M/Sr.", "F/Frau",
                             "M/Herr", "Dr.", "Rev."}) {
        c.Execute(QStringLiteral("INSERT INTO SexTtlTable (stTxt) VALUES (%1)")
                      .arg(Literal(QString::fromUtf8(pair))));
    }
    for (const char* alert :
         {"Penicillin allergy", "Latex allergy", "Premedicate (heart valve)", "Diabetes",
          "Anticoagulants", "Asthma", "Pregnant", "Allergie à la codéine"}) {
        c.Execute(QStringLiteral("INSERT INTO MedAleTable (maTxt) VALUES (%1)")
                      .arg(Literal(QString::fromUtf8(alert))));
    }
    const QStringList staffColumns = {"pID",      "pLASNAM", "pFIRNAM",    "pNICNAM",    "pSEX",
                                      "pBIRDAT",  "pTypPat", "pTypDoc",    "pTypRef",    "pTypPhy",
                                      "pTypEmp",  "pDocIni", "pDOCFeeTyp", "pFAMHEAIND", "pBUSPHO",
                                      "pBusPho1", "pBusCon", "pProTTL"};
    for (const DemoPerson& p : kStaff) {
        const QString first = QString::fromUtf8(p.first);
        Insert(c, staffColumns,
               {QString::number(p.id), Literal(QString::fromUtf8(p.last)), Literal(first),
                Literal(first.section(' ', 0, 0)), Literal(p.sex), Literal(p.birth), Literal(p.pat),
                Literal(p.doc), Literal(p.ref), Literal(p.phy), Literal(p.emp),
                Literal(QString::fromUtf8(p.initials)), QString::number(*p.doc ? p.id : 0),
                QString::number(p.id),
                Literal(QStringLiteral("(614) 555-01%1").arg(p.id, 2, 10, QLatin1Char('0'))),
                Literal(QStringLiteral("(614) 555-01%1").arg(p.id, 2, 10, QLatin1Char('0'))),
                Literal(QStringLiteral("pBusPho1")),
                Literal(*p.doc ? QStringLiteral("DDS") : QString())});
        ++count;
    }

    // Families: each subscriber heads one, with the members the coverages name. Every fourth
    // head is no patient; one member has been archived.
    const QStringList columns = {
        "pID",          "pLASNAM",          "pFIRNAM", "pNICNAM", "pSEX",       "pBIRDAT",
        "pTypPat",      "pTypX1",           "pSrtFlg", "pACCTYP", "pFAMHEAIND", "pPROIND",
        "pGPDenFeeTyp", "pGPDenFeeTypPerm", "pADD1",   "pCIT",    "pSTA",       "pZIP",
        "pHOMPHO",      "pHomPho1",         "pHomCon", "pHomEma", "pREFIND",    "pPHY1"};
    for (int f = 0; f < subscriberIds.size(); ++f) {
        const int head = subscriberIds[f];
        const QString family = QString::fromUtf8(kFamilyNames[f % std::size(kFamilyNames)]);
        const QString phone = QStringLiteral("(614) 555-%1").arg(2000 + f * 7);
        const QString address = QStringLiteral("%1 Maple Avenue").arg(100 + f * 12);
        const QString city = QString::fromLatin1(kCities[f % std::size(kCities)]);
        const int provider = 1 + f % 2;
        for (int m = 0; m < 2; ++m) {
            const int id = head + m;
            const QString first =
                QString::fromUtf8(m == 0 ? kHeadNames[f % std::size(kHeadNames)]
                                         : kMemberNames[f % std::size(kMemberNames)]);
            const bool archived = m == 1 && f == 5;
            const QString pat = archived               ? QStringLiteral("Z")
                                : m == 0 && f % 4 == 3 ? QStringLiteral("2")
                                                       : QStringLiteral("1");
            Insert(c, columns,
                   {QString::number(id),
                    Literal(family),
                    Literal(first),
                    Literal(first.section(' ', 0, 0)),
                    Literal(m == 0 ? "F" : "M"),
                    Literal(QStringLiteral("%1-%2-%3")
                                .arg(1 + f % 12, 2, 10, QLatin1Char('0'))
                                .arg(1 + (f * 3) % 28, 2, 10, QLatin1Char('0'))
                                .arg(m == 0 ? 1965 + f : 1995 + f)),
                    Literal(pat),
                    Literal(archived ? "1" : ""),
                    Literal(archived ? "!" : ""),
                    Literal(archived ? "N" : ""),
                    QString::number(head),
                    QString::number(provider),
                    QString::number(1 + f % 3),
                    QString::number(1 + f % 3),
                    Literal(address),
                    Literal(city),
                    Literal(QStringLiteral("OH")),
                    Literal(QStringLiteral("43%1").arg(200 + f)),
                    Literal(phone),
                    Literal(phone),
                    Literal(QStringLiteral("pHomPho1")),
                    Literal(m == 0 ? QStringLiteral("family%1@example.org").arg(f) : QString()),
                    QString::number(m == 1 && f % 3 == 0 ? 5 : 0),
                    QString::number(m == 1 && f % 3 == 1 ? 6 : 0)});
            ++count;
        }
    }
    c.Execute(QStringLiteral(
        "INSERT INTO FamTable (fMEMID, fRSPID) SELECT pID, pFAMHEAIND FROM PATable"));

    // Keys were given here, so the next person added must not collide with them.
    schema::Catalog keys;
    keys.Add({QStringLiteral("PATable"),
              {{QStringLiteral("pID"), schema::ColumnType::Long, 0, true, true}},
              {}});
    schema::SyncIdentities(c, keys);
    return count;
}

}  // namespace orvo::host
