#include "people/contacts.h"

#include <array>

#include "platform/db/recordset.h"

namespace orvo::people::Contacts {
namespace {

struct Entry {
    const char* suffix;
    const char* label;
    int width;
};

// The entries of a block in the order of the contact screen's fields.
constexpr std::array<Entry, 6> kEntries = {{{"Pho1", "Phone", 30},
                                            {"Pho2", "Phone 2", 30},
                                            {"Fax", "Fax", 30},
                                            {"Ema", "E-Mail", 40},
                                            {"Cell", "Cell", 30},
                                            {"Pag", "Pager", 30}}};

const Entry* FindEntry(const QString& prefix, const QString& column) {
    if (!column.startsWith(prefix, Qt::CaseInsensitive))
        return nullptr;
    const QStringView suffix = QStringView(column).mid(prefix.size());
    for (const Entry& entry : kEntries) {
        if (suffix.compare(QLatin1String(entry.suffix), Qt::CaseInsensitive) == 0)
            return &entry;
    }
    return nullptr;
}

QString BlockWord(int block) {
    return block == kHomeBlock ? QStringLiteral("Home ") : QStringLiteral("Work ");
}

// The one-number column of a block: pHomPho is pHOMPHO, pBusPho is pBUSPHO.
QString ShownColumn(const QString& prefix) {
    return prefix + QStringLiteral("Pho");
}

bool IsFirstPhone(const QString& prefix, const QString& storedChoice) {
    const QString choice = storedChoice.trimmed();
    return choice.isEmpty() || choice.compare(ShownColumn(prefix), Qt::CaseInsensitive) == 0 ||
           !FindEntry(prefix, choice);
}

}  // namespace

QString BlockPrefix(int block) {
    if (block == kHomeBlock)
        return QStringLiteral("pHom");
    if (block == kWorkBlock)
        return QStringLiteral("pBus");
    return QString();
}

QStringList EntryColumns(int block) {
    const QString prefix = BlockPrefix(block);
    QStringList columns;
    if (prefix.isEmpty())
        return columns;
    for (const Entry& entry : kEntries)
        columns << prefix + QLatin1String(entry.suffix);
    return columns;
}

QString DisplayLabel(int block, const QString& column) {
    if (BlockPrefix(block).isEmpty())
        return QString();
    return BlockWord(block) + ContactLabel(column);
}

QString ContactLabel(const QString& column) {
    for (const char* prefix : {"pHom", "pBus"}) {
        if (const Entry* entry = FindEntry(QLatin1String(prefix), column.trimmed()))
            return QLatin1String(entry->label);
    }
    return QString();
}

QString ChosenColumn(int block, const QString& storedChoice) {
    const QString prefix = BlockPrefix(block);
    if (prefix.isEmpty())
        return QString();
    if (IsFirstPhone(prefix, storedChoice))
        return prefix + QLatin1String(kEntries[0].suffix);
    return prefix + QLatin1String(FindEntry(prefix, storedChoice.trimmed())->suffix);
}

void ReadDisplayContact(GIC& gic, int pID, int block, QString& label, int& length) {
    const QString prefix = BlockPrefix(block);
    if (prefix.isEmpty())
        return;
    label.clear();
    length = 0;
    db::Connection& connection = gic.GetConnection();
    const db::Recordset row(connection,
                            QStringLiteral("SELECT * FROM PATable WHERE pID=%1;").arg(pID));
    if (row.IsEmpty())
        return;
    const QString stored = row.Text(prefix + QStringLiteral("Con"));
    const QString chosen = ChosenColumn(block, stored);
    QString shown = row.Text(ShownColumn(prefix));
    QString entry = row.Text(chosen);
    if (IsFirstPhone(prefix, stored) && stored.trimmed() != chosen) {
        // A row from before the blocks: its one phone moves into the first phone.
        QString sql = QStringLiteral("UPDATE PATable SET %1Con='%2'").arg(prefix, chosen);
        if (!shown.trimmed().isEmpty() && entry.trimmed().isEmpty()) {
            sql += QStringLiteral(", %1=%2").arg(chosen, gic.SqlQuoteText(shown));
            entry = shown;
        }
        connection.ExecuteOneRow(sql + QStringLiteral(" WHERE pID=%1;").arg(pID));
    }
    label = DisplayLabel(block, chosen);
    length = FindEntry(prefix, chosen)->width;
    if (shown.trimmed() != entry.trimmed())
        SyncDisplayContact(gic, pID, block, entry);
}

void SyncDisplayContact(GIC& gic, int pID, int block, const QString& value) {
    const QString prefix = BlockPrefix(block);
    if (prefix.isEmpty())
        return;
    db::Connection& connection = gic.GetConnection();
    const db::Recordset row(
        connection, QStringLiteral("SELECT %1Con FROM PATABLE WHERE pID=%2;").arg(prefix).arg(pID));
    if (row.IsEmpty())
        return;
    const QString chosen = ChosenColumn(block, row.Text(0));
    const QString quoted = gic.SqlQuoteText(value);
    connection.ExecuteOneRow(
        QStringLiteral("UPDATE PATABLE SET %1Con='%2', %2=%3, %4=%3 WHERE pID=%5;")
            .arg(prefix, chosen, quoted, ShownColumn(prefix))
            .arg(pID));
}

}  // namespace orvo::people::Contacts
