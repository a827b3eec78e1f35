#pragma once

#include <QString>
#include <QVariant>

#include "component/public/gic.h"

namespace orvo::host {

// Screens bind their fields to columns by the "DataField" property of each field; these read a
// row into such fields and write the fields back. A field's value is its widget's user property
// (the text of a label).

// Fills the fields from the row whose key column holds the id; a missing row leaves them as
// they are.
void ReadBoundRecord(db::Connection& connection, const QVariant& recordId, const QString& keyColumn,
                     const QString& table, const FieldHolders& holders);

// Inserts a row when the id is 0 (and gives back its new key), else updates the row with that
// key; an update that finds no row throws db::RowNotFoundError.
void WriteBoundRecord(db::Connection& connection, int& recordId, const QString& keyColumn,
                      const QString& table, const FieldHolders& holders);

// Writes the fields back to the rows ReadBoundRecord filled them from, one UPDATE per row. A
// field never read from a row throws ComponentError; a row gone since throws
// db::RowNotFoundError.
void SaveBoundFields(db::Connection& connection, const FieldHolders& holders);

}  // namespace orvo::host
