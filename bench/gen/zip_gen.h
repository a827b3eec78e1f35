#pragma once

#include "platform/db/connection.h"

namespace orvo::bench {

// Inserts `rows` made-up but plausible rows into ZipCodTable (which must exist), in one
// transaction: place names built the way the country's are ("Springfield", "North Oakdale",
// "Fort Lincoln"), many of them shared by several states, each with a run of five-digit zips in
// its state's range. The same seed gives the same rows. Answers the rows inserted.
int GenerateZipCodes(db::Connection& connection, int rows = 42000, unsigned seed = 1);

}  // namespace orvo::bench
