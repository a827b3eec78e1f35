#pragma once

#include <QString>

#include "platform/schema/schema.h"

namespace orvo::host {

// Names of the host's own tables that the host code reads and writes. The login tables keep
// the names the screens use in their SQL.
inline const QString kSettingsTable = QStringLiteral("SetTable");
inline const QString kNotesTable = QStringLiteral("cmTable");
inline const QString kAuditTable = QStringLiteral("AudTable");

// Declares the tables the host owns: settings, logins with their rights and locations, the
<<<<<<< HEAD
// notes lines, the audit log, the electronic payer list and the recall list.
=======
// notes lines, the audit log, the electronic payer list and the patient statuses.
>>>>>>> 64ddd9c (One table of persons: the record read that heals a missing provider and fee schedule, the role change as one UPDATE with its consequences, the contact blocks kept in step with the shown numbers, and the host's person operations with the family-head list it keeps)
void DeclareHostTables(schema::Catalog& catalog);

}  // namespace orvo::host
