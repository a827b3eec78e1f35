// The host's part for persons: the office's defaults for a new patient, the family-head test
// and list, initials, patient statuses, names and fields for display, and what the suite does
// around a role change (the archive question, the add-role hook, the recall restoration). What
// the operations write:
//
//   SetPatientStatus      a row of PatStaTable (person, status, date, login); nothing on PATable
//   NotifyPersonChanged   nothing: it notes the person for the host's own display. FMIndTable
//                         is kept by the database itself (see FamilyHeadUpkeepStatements)
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

// The family-head rule said of a trigger's row (NEW or OLD): 1 for a head, else 0, never null.
QString HeadOf(const QString& row) {
    static const QRegularExpression kColumn(QStringLiteral("\\b(pFAMHEAIND|pID|pTypPat)\\b"));
    QString test = kFamilyHeadFilter;
    test.replace(kColumn, row + QStringLiteral(".\\1"));
    return QStringLiteral("(CASE WHEN %1 THEN 1 ELSE 0 END)").arg(test);
}

}  // namespace

QStringList FamilyHeadUpkeepStatements(db::Engine engine) {
    const QString newHead = HeadOf(QStringLiteral("NEW"));
    const QString oldHead = HeadOf(QStringLiteral("OLD"));
    const QString listColumns = QStringLiteral("FMIndLASNAM, FMIndFirNAM, FMIndPatTabID");
    const QString listValues = QStringLiteral("NEW.pLASNAM, NEW.pFIRNAM, NEW.pID");
    const QString insertRow =
        QStringLiteral("INSERT INTO FMIndTable (%1) VALUES (%2)").arg(listColumns, listValues);
    const QString deleteRow =
        QStringLiteral("DELETE FROM FMIndTable WHERE FMIndPatTabID = OLD.pID");
    const QString columns = QStringLiteral("pLASNAM, pFIRNAM, pFAMHEAIND, pTypPat");
    // Names are compared as stored, so that a change of letter case reaches the list too.
    const bool pg = engine == db::Engine::Postgres;
    const QString renamed = pg ? QStringLiteral(
                                     "OLD.pLASNAM::text IS DISTINCT FROM NEW.pLASNAM::text OR "
                                     "OLD.pFIRNAM::text IS DISTINCT FROM NEW.pFIRNAM::text")
                               : QStringLiteral(
                                     "OLD.pLASNAM IS NOT NEW.pLASNAM COLLATE BINARY OR "
                                     "OLD.pFIRNAM IS NOT NEW.pFIRNAM COLLATE BINARY");
    // An update fires only when the person joins or leaves the heads, or a head's name changes:
    // a role change of anyone else costs nothing.
    const QString updateWhen =
        QStringLiteral("%1 <> %2 OR (%2 = 1 AND (%3))").arg(oldHead, newHead, renamed);
    if (!pg) {
        return {QStringLiteral("CREATE TRIGGER IF NOT EXISTS FamilyHeadsOnInsert AFTER INSERT ON "
                               "PATable WHEN %1 = 1 BEGIN %2; END")
                    .arg(newHead, insertRow),
                QStringLiteral("CREATE TRIGGER IF NOT EXISTS FamilyHeadsOnDelete AFTER DELETE ON "
                               "PATable BEGIN %1; END")
                    .arg(deleteRow),
                QStringLiteral("CREATE TRIGGER IF NOT EXISTS FamilyHeadsOnUpdate AFTER UPDATE OF "
                               "%1 ON PATable WHEN %2 BEGIN %3; INSERT INTO FMIndTable (%4) "
                               "SELECT %5 WHERE %6 = 1; END")
                    .arg(columns, updateWhen, deleteRow, listColumns, listValues, newHead)};
    }
    // The function names its tables plainly: it runs under the search path of the practice's
    // schema, which it keeps from when it was made.
    QStringList statements{
        QStringLiteral("CREATE OR REPLACE FUNCTION orvo_family_heads() RETURNS trigger LANGUAGE "
                       "plpgsql SET search_path FROM CURRENT AS $heads$\n"
                       "BEGIN\n"
                       "    IF TG_OP <> 'INSERT' THEN\n"
                       "        %1;\n"
                       "    END IF;\n"
                       "    IF TG_OP <> 'DELETE' AND %2 = 1 THEN\n"
                       "        %3;\n"
                       "    END IF;\n"
                       "    RETURN NULL;\n"
                       "END\n"
                       "$heads$")
            .arg(deleteRow, newHead, insertRow)};
    const QStringList triggers{
        QStringLiteral(
            "orvo_family_heads_insert AFTER INSERT ON PATable FOR EACH ROW WHEN (%1 = 1)")
            .arg(newHead),
        QStringLiteral("orvo_family_heads_delete AFTER DELETE ON PATable FOR EACH ROW"),
        QStringLiteral("orvo_family_heads_update AFTER UPDATE OF %1 ON PATable FOR EACH ROW WHEN "
                       "(%2)")
            .arg(columns, updateWhen)};
    for (const QString& trigger : triggers) {
        statements << QStringLiteral("DROP TRIGGER IF EXISTS %1 ON PATable")
                          .arg(trigger.section(QLatin1Char(' '), 0, 0))
                   << QStringLiteral("CREATE TRIGGER %1 EXECUTE FUNCTION orvo_family_heads()")
                          .arg(trigger);
    }
    return statements;
}

void DeclarePersonHostTables(schema::Catalog& catalog) {
    schema::Table statuses{kPatientStatusTable, {}, {{QStringLiteral("psPID")}}};
    statuses.columns << schema::Column{QStringLiteral("psID"), schema::ColumnType::Long, 0, true,
                                       true}
                     << schema::Column{QStringLiteral("psPID"), schema::ColumnType::Long}
                     << schema::Column{QStringLiteral("psSta"), schema::ColumnType::Text, 5}
                     << schema::Column{QStringLiteral("psDat"), schema::ColumnType::Date}
                     << schema::Column{QStringLiteral("psUseNam"), schema::ColumnType::Text, 30};
    catalog.Add(statuses);

    // From here on the database keeps the family-head list in step with PATable, in the same
    // statement as each change, whoever writes it; a practice made before has the list built
    // afresh once. A database without persons (a host's tables alone) has nothing to keep.
    catalog.AddUpgrade({1, QStringLiteral("the family-head list kept by the database"),
                        [](db::Connection& connection) {
                            if (!schema::TableExists(connection, QStringLiteral("PATable")) ||
                                !schema::TableExists(connection, QStringLiteral("FMIndTable")))
                                return;
                            for (const QString& statement :
                                 FamilyHeadUpkeepStatements(connection.engine()))
                                connection.Execute(statement);
                            RebuildFamilyHeadIndex(connection);
                        }});
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
