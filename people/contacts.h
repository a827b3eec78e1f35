#pragma once

#include <QString>
#include <QStringList>

#include "component/public/gic.h"

namespace orvo::people {

// A person has a home block and a work block of contact entries (two phones, fax, e-mail,
// cell, pager). The lists show one number per block, in pHOMPHO and pBUSPHO; pHomCon and
// pBusCon name the entry of the block that number is. Blocks are numbered 1 (home) and 2
// (work); any other number does nothing.
namespace Contacts {

constexpr int kHomeBlock = 1;
constexpr int kWorkBlock = 2;

// The label of an entry's column, in any letter case ("pHomCell" gives "Cell"); empty for a
// column that is no entry of a block.
QString ContactLabel(const QString& column);

// The column prefix of a block ("pHom", "pBus"), or empty for no block.
QString BlockPrefix(int block);

// The six entry columns of a block, in the order of the contact screen's fields ("pHomPho1",
// "pHomPho2", "pHomFax", "pHomEma", "pHomCell", "pHomPag"); empty for no block.
QStringList EntryColumns(int block);

// The label of a block's entry as the small screens show it: "Home Cell", "Work Phone".
QString DisplayLabel(int block, const QString& column);

// The chosen entry of a block as stored in its Con column: blank, the old one-phone names and
// anything that is no entry of the block mean the first phone. Answers the column's own
// spelling ("pHomCell").
QString ChosenColumn(int block, const QString& storedChoice);

// Settles the block's choice (a row from before the blocks gets its one phone moved into the
// first phone) and answers the label to show beside the small screen's phone field, such as
// "Home Phone", and the width of the chosen entry. Keeps the one-number field in step with the
// chosen entry. A person who is not there gives an empty label.
void ReadDisplayContact(GIC& gic, int pID, int block, QString& label, int& length);

// Writes value, typed on a small screen, into the block's chosen entry and its one-number field
// together.
void SyncDisplayContact(GIC& gic, int pID, int block, const QString& value);

}  // namespace Contacts
}  // namespace orvo::people
