#pragma once

#include <QString>

namespace orvo::insurance {

// Asks the user to confirm a change of a carrier's electronic payer link, from OldID to NewID
// (an empty id: no link). Both ids are trimmed and upper-cased in place, the form in which the
// link is stored. True when the user agrees; false, with nothing shown, when they are equal.
// Serves the carrier screen and the carrier list alike.
bool Confirm_Payer_Link_Change(QString& OldID, QString& NewID);

}  // namespace orvo::insurance
