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
// notes lines, the audit log, the electronic payer list, the recall list and the patient
// statuses.
void DeclareHostTables(schema::Catalog& catalog);

}  // namespace orvo::host
