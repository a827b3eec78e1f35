// The host's part for persons: the office's defaults for a new patient, the family-head test
// and list, initials, patient statuses, names and fields for display, and what the suite does
// around a role change (the archive question, the add-role hook, the recall restoration). What
// the operations write:
//
//   SetPatientStatus      a row of PatStaTable (person, status, date, login); nothing on PATable
//   NotifyPersonChanged   the person's row of FMIndTable, when the head list no longer matches
//   SaveBoundFields       the bound columns of the row the fields were read from (bound_records)
//   PersonRoleAdded       PWMTable.PWMPid of the login named, and a note line for the person
//   RestorePersonRecalls  RecTable.rStage back to 0 (due) for the person's entries whose
//                         tracking had stopped (7), and a note line; only when the office
//                         setting allows it
//
// The others read only. The role columns themselves, pACCTYP, pSrtFlg, pTypX1, pDocIni and
// pFAMHEAIND are written by the component's role change, never here.

#include "host/host_persons.h"

#include <QRegularExpression>
#include <QSqlQuery>

#include "component/public/person_roles.h"
#include "host/host_gic.h"
#include "host/host_tables.h"
#include "host/notes.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo::host {
namespace {

// A column name given by a caller goes into SQL text: only a plain name is taken.
bool IsColumnName(const QString& name) {
    static const QRegularExpression kName(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,63}$"));
    return kName.match(name).hasMatch();
}

// Initials to offer, best first: first and last initial, then with a further letter of the
// last or first name, then numbered.
QStringList CandidateInitials(const QString& lastName, const QString& firstName) {
    const QString last = lastName.simplified().remove(QLatin1Char(' ')).toUpper();
    const QString first = firstName.simplified().remove(QLatin1Char(' ')).toUpper();
    const QString f = first.left(1);
    const QString l = last.left(1);
    QStringList out;
    if (!(f + l).isEmpty())
        out << f + l;
    for (int i = 1; i < last.size(); ++i)
        out << f + l + last.at(i);
    for (int i = 1; i < first.size(); ++i)
        out << f + first.at(i) + l;
    for (int n = 2; n <= 9; ++n)
        out << (f + l).left(2) + QString::number(n);
    out.removeDuplicates();
    return out;
}

}  // namespace

void DeclarePersonHostTables(schema::Catalog& catalog) {
    schema::Table statuses{kPatientStatusTable, {}, {{QStringLiteral("psPID")}}};
    statuses.columns << schema::Column{QStringLiteral("psID"), schema::ColumnType::Long, 0, true,
                                       true}
                     << schema::Column{QStringLiteral("psPID"), schema::ColumnType::Long}
                     << schema::Column{QStringLiteral("psSta"), schema::ColumnType::Text, 5}
                     << schema::Column{QStringLiteral("psDat"), schema::ColumnType::Date}
                     << schema::Column{QStringLiteral("psUseNam"), schema::ColumnType::Text, 30};
    catalog.Add(statuses);
}

void RefreshFamilyHeadIndex(db::Connection& connection, int personId) {
    // One read tells both sides: whether the person is a head now, and what the list holds. It
    // runs on every change of a person, so it is kept prepared.
    static const QString kRead = QStringLiteral(
                                     "SELECT pLASNAM, pFIRNAM, CASE WHEN %1 THEN 1 ELSE 0 END, "
                                     "FMIndLASNAM, FMIndFirNAM, FMIndPatTabID FROM PATable LEFT "
                                     "JOIN FMIndTable ON FMIndPatTabID = pID WHERE pID = ?")
                                     .arg(kFamilyHeadFilter);
    QSqlQuery& rs = connection.Prepared(kRead);
    bool found = false;
    bool head = false;
    bool listed = false;
    bool same = false;
    bool single = true;
    QString last;
    QString first;
    {
        struct Finish {
            QSqlQuery& query;
            ~Finish() { query.finish(); }
        } finish{rs};
        connection.RunPrepared(rs, {personId});
        found = rs.next();
        if (found) {
            head = rs.value(2).toInt() != 0;
            listed = !rs.value(5).isNull();
            last = rs.value(0).toString();
            first = rs.value(1).toString();
            // Names are compared as stored, so that a change of letter case reaches the list too.
            same = listed && rs.value(3).toString() == last && rs.value(4).toString() == first;
            single = !rs.next();
        }
    }
    const QString deleteRows =
        QStringLiteral("DELETE FROM FMIndTable WHERE FMIndPatTabID = %1").arg(personId);
    if (!found) {  // the person is gone
        connection.Execute(deleteRows);
        return;
    }
    if (!head) {
        if (listed)
            connection.Execute(deleteRows);
        return;
    }
    if (same && single)
        return;
    // No transaction of its own: the caller may be inside one. A row lost between the two
    // statements is put back by the next change of the person or by a rebuild of the list.
    if (listed)
        connection.Execute(deleteRows);
    connection.Execute(QStringLiteral("INSERT INTO FMIndTable (FMIndLASNAM, FMIndFirNAM, "
                                      "FMIndPatTabID) VALUES (%1, %2, %3)")
                           .arg(db::QuoteText(last), db::QuoteText(first))
                           .arg(personId));
}

int RebuildFamilyHeadIndex(db::Connection& connection) {
    db::Transaction transaction(connection);
    connection.Execute(QStringLiteral("DELETE FROM FMIndTable"));
    const int heads = connection.Execute(
        QStringLiteral("INSERT INTO FMIndTable (FMIndLASNAM, FMIndFirNAM, FMIndPatTabID) "
                       "SELECT pLASNAM, pFIRNAM, pID FROM PATable WHERE ") +
        kFamilyHeadFilter);
    transaction.Commit();
    return heads;
}

int DefaultProviderId(GIC& gic) {
    const int provider = gic.ReadSetting(kOfficeSection, kDefaultProviderKey, 0, 0).toInt();
    if (provider == 0)
        return 0;
    // A provider who left the practice is no default for anyone.
    const db::Recordset rs(
        gic.GetConnection(),
        QStringLiteral("SELECT pID FROM PATable WHERE pID = %1 AND pTypDoc = '1'").arg(provider));
    return rs.IsEmpty() ? 0 : provider;
}

bool FeeScheduleInUse(GIC& gic, short schedule) {
    const int count =
        gic.ReadSetting(kOfficeSection, kFeeScheduleCountKey, 0, kDefaultFeeScheduleCount).toInt();
    return schedule >= 1 && schedule <= count;
}

short ProviderFeeSchedule(GIC& gic, int providerId) {
    const short own = static_cast<short>(
        db::ReadScalar(
            gic.GetConnection(),
            QStringLiteral("SELECT pDOCFeeTyp FROM PATable WHERE pID = %1").arg(providerId))
            .toInt());
    return gic.IsValidFeeSchedule(own) ? own : short(1);
}

bool PersonIsFamilyHead(db::Connection& connection, int personId) {
    const db::Recordset rs(connection,
                           QStringLiteral("SELECT pID FROM PATable WHERE pID = %1 AND %2")
                               .arg(personId)
                               .arg(kFamilyHeadFilter));
    return !rs.IsEmpty();
}

bool InitialsHolder(db::Connection& connection, const QString& initials, int& holderPersonId) {
    holderPersonId = 0;
    const QString wanted = initials.trimmed();
    if (wanted.isEmpty())
        return false;
    const db::Recordset rs(connection,
                           QStringLiteral("SELECT pID FROM PATable WHERE pDocIni = %1 ORDER BY pID")
                               .arg(db::QuoteText(wanted)));
    if (rs.IsEmpty())
        return false;
    holderPersonId = static_cast<int>(rs.Long(0));
    return true;
}

QString ProposeInitials(db::Connection& connection, int personId, const QString& lastName,
                        const QString& firstName) {
    const QStringList candidates = CandidateInitials(lastName, firstName);
    for (const QString& candidate : candidates) {
        int holder = 0;
        if (!InitialsHolder(connection, candidate, holder) || holder == personId)
            return candidate;
    }
    // Every proposal is taken: the person keeps the first and the office sorts it out.
    return candidates.isEmpty() ? QString() : candidates.first();
}

void RecordPatientStatus(db::Connection& connection, const NoteAuthor& author, int personId,
                         const QString& status) {
    connection.Execute(
        QStringLiteral("INSERT INTO %1 (psPID, psSta, psDat, psUseNam) VALUES (%2, %3, %4, %5)")
            .arg(kPatientStatusTable, QString::number(personId), db::QuoteText(status),
                 db::QuoteText(author.date.toString(Qt::ISODate)), db::QuoteText(author.login)));
}

QString PersonDisplayName(db::Connection& connection, int personId, const QString& separator,
                          const QString& extraField) {
    const QString extra = extraField.trimmed();
    if (!extra.isEmpty() && !IsColumnName(extra))
        throw ComponentError(QStringLiteral("%1 is no column of a person").arg(extraField));
    const db::Recordset rs(connection,
                           QStringLiteral("SELECT pFIRNAM, pLASNAM%1 FROM PATable WHERE pID = %2")
                               .arg(extra.isEmpty() ? QString() : QStringLiteral(", ") + extra)
                               .arg(personId));
    if (rs.IsEmpty())
        return QString();
    QString name = rs.Text(0).trimmed();
    const QString last = rs.Text(1).trimmed();
    if (!name.isEmpty() && !last.isEmpty())
        name += separator;
    name += last;
    const QString more = extra.isEmpty() ? QString() : rs.Text(2).trimmed();
    if (more.isEmpty())
        return name;
    // A courtesy title goes before the name ("Mrs. Zoë Müller"), anything else after it
    // ("José Peña, DDS").
    if (extra.compare(QLatin1String("pTTL"), Qt::CaseInsensitive) == 0)
        return more + QLatin1Char(' ') + name;
    return name + QStringLiteral(", ") + more;
}

QString PersonField(db::Connection& connection, int personId, int fieldNumber) {
    static const QHash<int, QString> kColumns = {
        {18, QStringLiteral("pHOMPHO")}, {20, QStringLiteral("pADD1")},
        {21, QStringLiteral("pADD2")},   {22, QStringLiteral("pCIT")},
        {23, QStringLiteral("pSTA")},    {24, QStringLiteral("pZIP")}};
    const QString column = kColumns.value(fieldNumber);
    if (column.isEmpty()) {
        throw ComponentError(
            QStringLiteral("Person field number %1 is not one the host serves").arg(fieldNumber));
    }
    const db::Recordset rs(
        connection,
        QStringLiteral("SELECT %1 FROM PATable WHERE pID = %2").arg(column).arg(personId));
    return rs.IsEmpty() ? QString() : rs.Text(0).trimmed();
}

void AskWhatToRestore(bool& restoreReminders, bool& restoreAccount, bool initial) {
    // Closing the question without a choice keeps the flags as they came.
    switch (prompts().Choose(kRestoreArchivedText, kRestoreArchivedTitle, kRestoreArchivedChoices,
                             initial ? 1 : 4)) {
        case 1:
            restoreReminders = restoreAccount = true;
            break;
        case 2:
            restoreAccount = true;
            restoreReminders = false;
            break;
        case 3:
            restoreReminders = true;
            restoreAccount = false;
            break;
        case 4:
            restoreReminders = restoreAccount = false;
            break;
        default:
            break;
    }
}

void BindRoleToRecord(GIC& gic, int personId, int extraId) {
    // For a new employee the other record is the login the employee was entered for.
    const db::Recordset login(
        gic.GetConnection(),
        QStringLiteral("SELECT PWMUseNam FROM PWMTable WHERE PWMID = %1").arg(extraId));
    if (login.IsEmpty()) {
        gic.WriteLogLine(personId, QStringLiteral("CM"), QStringLiteral("LogPerson"),
                         QStringLiteral("Role"),
                         QStringLiteral("Role added for record %1").arg(extraId));
        return;
    }
    gic.GetConnection().ExecuteOneRow(
        QStringLiteral("UPDATE PWMTable SET PWMPid = %1 WHERE PWMID = %2")
            .arg(personId)
            .arg(extraId));
    gic.WriteLogLine(personId, QStringLiteral("CM"), QStringLiteral("LogPerson"),
                     QStringLiteral("Role"),
                     QStringLiteral("Bound to the login %1").arg(login.Text(0).trimmed()));
}

void RestoreRecallsOnReturn(GIC& gic, int personId) {
    if (!gic.ReadSetting(kOfficeSection, kRestoreRecallsKey, 0, true).toBool())
        return;
    // Archiving stops the tracking of the person's recalls; coming back makes them due again.
    const int restored = gic.GetConnection().Execute(
        QStringLiteral("UPDATE RecTable SET rStage = 0 WHERE rPID = %1 AND rStage = 7")
            .arg(personId));
    gic.WriteLogLine(
        personId, QStringLiteral("CM"), QStringLiteral("LogPerson"), QStringLiteral("Recall"),
        QStringLiteral("%1 recall reminder(s) restored on return from the archive").arg(restored));
}

}  // namespace orvo::host
