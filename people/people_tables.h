#pragma once

#include <QString>

#include "platform/schema/schema.h"

namespace orvo::people {

// The Sex and Title database and the Medical Alert database: one text per row, kept by the
// practice through the database list (database_list.h).
inline const QString kSexTitleTable = QStringLiteral("SexTtlTable");
inline const QString kSexTitleColumn = QStringLiteral("stTxt");
inline const QString kMedicalAlertTable = QStringLiteral("MedAleTable");
inline const QString kMedicalAlertColumn = QStringLiteral("maTxt");

// The one table of persons, the family table, the list table of family heads, and the lists
// the person screens fill fields from.
void DeclarePeopleTables(schema::Catalog& catalog);

}  // namespace orvo::people
