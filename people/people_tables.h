#pragma once

#include "platform/schema/schema.h"

namespace orvo::people {

// The one table of persons, the family table, and the list table of family heads.
void DeclarePeopleTables(schema::Catalog& catalog);

}  // namespace orvo::people
