#pragma once

#include <QMap>
#include <QString>

namespace orvo::insurance {

// What a new-record command (see BuildNewCommand) puts into the carrier and pharmacy screen:
// the text of each field by its Text1 index, and whether that text is to be saved as it stands.
struct CarrierCommandFields {
    QMap<int, QString> text;  // Text1 index (1 the name .. 12 the e-mail) -> text
    bool modified = false;
};

// Reads a command cut at LF. A first line that is true ("-1") is followed by labelled lines,
// label + Chr(1) + value, each label naming a field in any letter case; unknown labels are
// skipped, and the text counts as a change to be saved. A false first line ("0") is followed by
// the name alone, which is no change yet.
CarrierCommandFields ParseCarrierCommand(const QString& command);

// The Text1 index that a label of a labelled line chooses; 0 for a label the screen does not
// know. The label is compared in upper case.
int CarrierFieldForLabel(const QString& label);

}  // namespace orvo::insurance
