#pragma once

#include <QString>

#include "component/public/gic.h"
#include "host/notes.h"
#include "platform/db/connection.h"
#include "platform/schema/schema.h"

namespace orvo::host {

// Where the host keeps what it knows of persons beyond their row.
inline const QString kPatientStatusTable = QStringLiteral("PatStaTable");

// Settings of the office that the person operations read, all in section DEFAULT_OFFICE_SETUP.
inline const QString kOfficeSection = QStringLiteral("DEFAULT_OFFICE_SETUP");
// The provider on the Office tab of Office Setup: the pID new patients get.
inline const QString kDefaultProviderKey = QStringLiteral("DEF_PRO_ID");
// How many fee schedules the practice uses; schedules are numbered from 1.
inline const QString kFeeScheduleCountKey = QStringLiteral("FEE_SCH_CNT");
inline constexpr int kDefaultFeeScheduleCount = 10;
// "True" (the default) when a person returning from the archive gets recall reminders back.
inline const QString kRestoreRecallsKey = QStringLiteral("ARC_RCL_RST");

// The words of the suite's question when an archived person returns.
inline const QString kRestoreArchivedTitle = QStringLiteral("Restore Archived Patient");
inline const QString kRestoreArchivedText = QStringLiteral(
    "This patient was archived. What would you like to restore along with the patient?");
inline const QStringList kRestoreArchivedChoices = {
    QStringLiteral("Reminders and Account"), QStringLiteral("Account Only"),
    QStringLiteral("Reminders Only"), QStringLiteral("Neither")};

// The history of patient statuses, one row per status given; and the upgrade that has the
// database keep the family-head list.
void DeclarePersonHostTables(schema::Catalog& catalog);

// The triggers, in the engine's own dialect, that keep FMIndTable in step with PATable: a
// family head in the patient file has one row with the current names, anyone else none. They
// write only when a person joins or leaves the heads or a head's name changes.
QStringList FamilyHeadUpkeepStatements(db::Engine engine);

// The operations of the host object on persons, over the contract's other operations (settings,
// notes) and the session's connection. HostGIC forwards to these.
int DefaultProviderId(GIC& gic);
bool FeeScheduleInUse(GIC& gic, short schedule);
// The fee schedule a provider's patients take: the provider's own (pDOCFeeTyp) when it is a
// schedule in use, else schedule 1, as the person record heals a missing one.
short ProviderFeeSchedule(GIC& gic, int providerId);
bool PersonIsFamilyHead(db::Connection& connection, int personId);
bool InitialsHolder(db::Connection& connection, const QString& initials, int& holderPersonId);
// The first and last initial, else with a further letter of the last or first name, else
// numbered: the first proposal nobody else holds.
QString ProposeInitials(db::Connection& connection, int personId, const QString& lastName,
                        const QString& firstName);
void RecordPatientStatus(db::Connection& connection, const NoteAuthor& author, int personId,
                         const QString& status);
// First and last name with the separator between; a courtesy title (pTTL) as extra field goes
// before the name, any other column after it with ", ".
QString PersonDisplayName(db::Connection& connection, int personId, const QString& separator,
                          const QString& extraField);
// Field numbers: 18 pHOMPHO, 20 pADD1, 21 pADD2, 22 pCIT, 23 pSTA, 24 pZIP.
QString PersonField(db::Connection& connection, int personId, int fieldNumber);
// The suite's question when an archived person returns, with four answers over the two flags.
void AskWhatToRestore(bool& restoreReminders, bool& restoreAccount, bool initial);
// The add-role hook: binds a new employee to the login named by extraId, and notes it.
void BindRoleToRecord(GIC& gic, int personId, int extraId);
// The recall restoration: the person's recall entries whose tracking stopped are due again,
// with a note line, when the office setting allows the restore.
void RestoreRecallsOnReturn(GIC& gic, int personId);

// Builds the family-head list anew from the persons, in one transaction. Answers the number of
// heads.
int RebuildFamilyHeadIndex(db::Connection& connection);

}  // namespace orvo::host
