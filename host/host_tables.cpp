#include "host/host_tables.h"

#include "host/host_persons.h"

namespace orvo::host {
namespace {

using schema::Date;
using schema::DateTime;
using schema::Flag;
using schema::Identity;
using schema::Long;
using schema::Memo;
using schema::Table;
using schema::Text;

// One row per stored setting, by section, key and scope. The value is kept as text together
// with the name of the type it was written with, so a read without a typed default still
// answers the type that was stored.
Table SettingsTable() {
    return Table{kSettingsTable,
                 {Identity(QStringLiteral("SetID")), Text(QStringLiteral("SetSec"), 60),
                  Text(QStringLiteral("SetKey"), 120), Long(QStringLiteral("SetSco")),
                  Memo(QStringLiteral("SetVal")), Text(QStringLiteral("SetValTyp"), 20)},
                 {{QStringLiteral("SetSec"), QStringLiteral("SetKey")}}};
}

Table LoginTable() {
    return Table{QStringLiteral("PWMTable"),
                 {Identity(QStringLiteral("PWMID")), Text(QStringLiteral("PWMUseNam"), 30),
                  Text(QStringLiteral("PWMPasWor"), 100), Long(QStringLiteral("PWMPid")),
                  Long(QStringLiteral("OffLocID"))},
                 {{QStringLiteral("PWMUseNam")}}};
}

Table RightsTable() {
    return Table{QStringLiteral("PWATable"),
                 {Identity(QStringLiteral("PWAID")), Long(QStringLiteral("PWAPWMID")),
                  Text(QStringLiteral("PWAUseNam"), 30), Long(QStringLiteral("OffLocID")),
                  Text(QStringLiteral("PWAAreOfPro"), 50), Flag(QStringLiteral("PWAWriFla")),
                  Flag(QStringLiteral("PWAReaFla")), Flag(QStringLiteral("PWAFla1")),
                  Flag(QStringLiteral("PWAFla2"))},
                 {{QStringLiteral("PWAUseNam"), QStringLiteral("OffLocID")}}};
}

Table LoginLocationsTable() {
    return Table{QStringLiteral("ealTable"),
                 {Identity(QStringLiteral("ealID")), Long(QStringLiteral("ealPWMID")),
                  Long(QStringLiteral("ealOffLocID")), Flag(QStringLiteral("ealAccLoc"))},
                 {{QStringLiteral("ealPWMID")}}};
}

// The notes lines of a person or record. cmTyp sorts notes into kinds (32 the eReminder note,
// 0 a plain log line) and cmtralinid ties a note to a transaction line (0 for none); the three
// marker columns carry the note type ("CM"), the source that wrote it ("LogInsCo") and the
// field it is about ("Comment").
Table NotesTable() {
    return Table{kNotesTable,
                 {Identity(QStringLiteral("cmID")), Long(QStringLiteral("cmPID")),
                  Long(QStringLiteral("cmTyp")), Long(QStringLiteral("cmtralinid")),
                  Text(QStringLiteral("cmNotTyp"), 10), Text(QStringLiteral("cmSouKey"), 30),
                  Text(QStringLiteral("cmFie"), 30), Text(QStringLiteral("cmUseNam"), 30),
                  Date(QStringLiteral("cmDat")), Memo(QStringLiteral("cmDoc"))},
                 {{QStringLiteral("cmPID")}}};
}

Table AuditTable() {
    return Table{kAuditTable,
                 {Identity(QStringLiteral("AudID")), Text(QStringLiteral("AudKey"), 30),
                  Text(QStringLiteral("AudAct"), 30), Memo(QStringLiteral("AudTex")),
                  Text(QStringLiteral("AudUseNam"), 30), Text(QStringLiteral("AudStaID"), 60),
                  DateTime(QStringLiteral("AudDatTim"))},
                 {{QStringLiteral("AudKey")}}};
}

Table PayerTable() {
    return Table{QStringLiteral("ePayerTable"),
                 {Identity(QStringLiteral("epID")), Text(QStringLiteral("epPayID"), 20),
                  Text(QStringLiteral("epNam"), 100), Memo(QStringLiteral("epAddInf"))},
                 {{QStringLiteral("epPayID")}}};
}

// The recall list of the appointment and recall module: one entry per patient and recall, with
// the contact method and the schedule stage the entry has reached.
Table RecallListTable() {
    return Table{QStringLiteral("RecTable"),
                 {Identity(QStringLiteral("rRecNum")), Long(QStringLiteral("rRCRecNum")),
                  Long(QStringLiteral("rPID")), Text(QStringLiteral("rRecDoc"), 5),
                  Long(QStringLiteral("rRecDocID")), Date(QStringLiteral("rDueDat")),
                  Long(QStringLiteral("rConMet")), Long(QStringLiteral("rStage"))},
                 {{QStringLiteral("rRCRecNum")}, {QStringLiteral("rPID")}}};
}

// The appointment book: the template of a provider's week (ATTable), the day's template of the
// book with one fixed-width field of three characters per provider column holding the
// provider's id, three blanks for an empty column (ABKTable), and the appointments (ApTable).
Table AppointmentTemplateTable() {
    return Table{QStringLiteral("ATTable"),
                 {Identity(QStringLiteral("ATID")), Long(QStringLiteral("ATDr")),
                  Long(QStringLiteral("ATDay")), Text(QStringLiteral("ATSta"), 5),
                  Text(QStringLiteral("ATEnd"), 5)},
                 {{QStringLiteral("ATDr")}}};
}

Table AppointmentBookTable() {
    return Table{QStringLiteral("ABKTable"),
                 {Identity(QStringLiteral("ABKID")), Date(QStringLiteral("ABKDat")),
                  Memo(QStringLiteral("ABKTemPla"))},
                 {{QStringLiteral("ABKDat")}}};
}

Table AppointmentTable() {
    return Table{QStringLiteral("ApTable"),
                 {Identity(QStringLiteral("APID")), Long(QStringLiteral("APPatID")),
                  Long(QStringLiteral("APDrID")), Date(QStringLiteral("APDat")),
                  Text(QStringLiteral("APTim"), 5)},
                 {{QStringLiteral("APDrID"), QStringLiteral("APDat")}}};
}

}  // namespace

void DeclareHostTables(schema::Catalog& catalog) {
    catalog.Add(SettingsTable());
    catalog.Add(LoginTable());
    catalog.Add(RightsTable());
    catalog.Add(LoginLocationsTable());
    catalog.Add(NotesTable());
    catalog.Add(AuditTable());
    catalog.Add(PayerTable());
    catalog.Add(RecallListTable());
    catalog.Add(AppointmentTemplateTable());
    catalog.Add(AppointmentBookTable());
    catalog.Add(AppointmentTable());
    DeclarePersonHostTables(catalog);
}

}  // namespace orvo::host
