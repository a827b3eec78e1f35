#pragma once

#include "platform/db/connection.h"

namespace orvo::host {

// Fills an empty city, state and zip list (ZipCodTable) with some three thousand places of the
// United States, every state and the capital district, in one transaction, so that the address
// fields of the demo practice have something to offer. Answers the rows inserted: 0 when the
// list already had rows.
int SeedDemoZipCodes(db::Connection& connection);

// The same rows, inserted within the caller's transaction whatever the list holds.
int InsertDemoZipCodes(db::Connection& connection);

}  // namespace orvo::host
