#pragma once

#include <QString>

namespace orvo::insurance {

// The command that the start methods of the group plan, carrier and pharmacy screens hand to
// Setup_Screen when the caller asks for a new record. `text` is the caller's text, starting with
// "NEW". A text with Chr(1) in it carries labelled lines (label + Chr(1) + value, one per LF):
// the command is "-1" + LF + the text from its fifth character + LF. Otherwise the rest after
// "NEW" is the name: "0" + LF + the text from its fourth character + LF.
QString BuildNewCommand(const QString& text);

}  // namespace orvo::insurance
