#pragma once

#include <QString>

#include "component/public/gic.h"

namespace orvo {

// Inserts a row and answers the key the store made for it, in the form the suite sends on the
// session's engine: on the server (kind 2) the batch "SET NOCOUNT ON; INSERT ...; SELECT
// @@IDENTITY", elsewhere the INSERT followed by the query of its key. Either way the key is
// read on the session's connection right after this insert, never another station's.
int InsertWithNewKey(GIC& gic, const QString& insert);

}  // namespace orvo
