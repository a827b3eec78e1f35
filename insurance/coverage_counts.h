#pragma once

#include "platform/db/connection.h"

namespace orvo::insurance {

// The active coverages on the carrier's active employer-plan links: how many patients a change
// to the shared carrier row reaches. True with `count` set when the count could be read; a
// failed read throws DatabaseError.
bool CountCarrierCoverages(db::Connection& connection, int carrierId, int& count);

}  // namespace orvo::insurance
