#include "host/bound_records.h"

#include <QDate>
#include <QMetaProperty>
#include <QWidget>

#include "host/host_gic.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

QString BoundColumn(const QWidget* holder) {
    return holder ? holder->property("DataField").toString().trimmed() : QString();
}

// The property that holds a widget's value: its user property, or the text of a widget that
// has none (a label).
QMetaProperty HolderProperty(const QWidget* holder) {
    const QMetaObject* meta = holder->metaObject();
    const QMetaProperty user = meta->userProperty();
    if (user.isValid())
        return user;
    const int text = meta->indexOfProperty("text");
    return text >= 0 ? meta->property(text) : QMetaProperty();
}

void SetHolderValue(QWidget* holder, const QVariant& stored) {
    const QMetaProperty property = HolderProperty(holder);
    if (!property.isValid() || !property.isWritable())
        return;
    const QMetaType type = property.metaType();
    QVariant value;
    if (type.id() == QMetaType::Bool) {
        value = !stored.isNull() && stored.toBool();
    } else if (type.id() == QMetaType::QString) {
        value = stored.isNull() ? QString() : stored.toString();
    } else {
        value = stored;
        if (stored.isNull() || !value.convert(type))
            value = QVariant(type);
    }
    property.write(holder, value);
}

// The holder's value as an SQL literal. Every value goes as a quoted literal, which both
// engines convert to the column's type; an empty text is a null.
QString HolderLiteral(const QWidget* holder) {
    const QMetaProperty property = HolderProperty(holder);
    if (!property.isValid())
        return QStringLiteral("NULL");
    const QVariant value = property.read(holder);
    if (value.typeId() == QMetaType::Bool) {
        return db::QuoteText(value.toBool() ? QStringLiteral("1") : QStringLiteral("0"));
    }
    const QString text = value.typeId() == QMetaType::QDate ? value.toDate().toString(Qt::ISODate)
                                                            : value.toString();
    return db::TextOrNull(text);
}

QString KeyLiteral(const QVariant& id) {
    if (id.typeId() == QMetaType::QString)
        return db::QuoteText(id.toString().trimmed());
    return QString::number(id.toLongLong());
}

// The row a field was read from, kept on the field itself.
const char* const kBoundTable = "orvoBoundTable";
const char* const kBoundKeyColumn = "orvoBoundKeyColumn";
const char* const kBoundKey = "orvoBoundKey";

// The columns of the table that the holders are bound to, each once, with their values as SQL
// literals. The key column is never written.
void BoundValues(db::Connection& connection, const QString& table, const QString& keyColumn,
                 const FieldHolders& holders, QStringList& columns, QStringList& values) {
    const db::Recordset shape(connection, QStringLiteral("SELECT * FROM %1 WHERE 1=0").arg(table));
    for (const QWidget* holder : holders) {
        const QString column = BoundColumn(holder);
        if (column.isEmpty() || column.compare(keyColumn, Qt::CaseInsensitive) == 0)
            continue;
        if (shape.IndexOf(column) < 0 || columns.contains(column, Qt::CaseInsensitive))
            continue;
        columns << column;
        values << HolderLiteral(holder);
    }
}

}  // namespace

void ReadBoundRecord(db::Connection& connection, const QVariant& recordId, const QString& keyColumn,
                     const QString& table, const FieldHolders& holders) {
    if (!recordId.isValid() || recordId.toString().trimmed().isEmpty())
        return;
    // Each field remembers its row, so that SaveBoundFields writes it back there.
    for (QWidget* holder : holders) {
        if (!holder)
            continue;
        holder->setProperty(kBoundTable, table);
        holder->setProperty(kBoundKeyColumn, keyColumn);
        holder->setProperty(kBoundKey, recordId);
    }
    const db::Recordset rs(
        connection,
        QStringLiteral("SELECT * FROM %1 WHERE %2=%3").arg(table, keyColumn, KeyLiteral(recordId)));
    if (rs.IsEmpty())
        return;
    for (QWidget* holder : holders) {
        const int index = rs.IndexOf(BoundColumn(holder));
        if (index < 0)
            continue;
        SetHolderValue(holder, rs.IsNull(index) ? QVariant() : rs.Value(index));
    }
}

void WriteBoundRecord(db::Connection& connection, int& recordId, const QString& keyColumn,
                      const QString& table, const FieldHolders& holders) {
    QStringList columns;
    QStringList values;
    BoundValues(connection, table, keyColumn, holders, columns, values);
    if (recordId == 0) {
        const QString sql = columns.isEmpty()
                                ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(table)
                                : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                      .arg(table, columns.join(QStringLiteral(", ")),
                                           values.join(QStringLiteral(", ")));
        recordId = static_cast<int>(connection.InsertWithIdentity(sql));
        return;
    }
    if (columns.isEmpty())
        return;
    QStringList assignments;
    for (qsizetype i = 0; i < columns.size(); ++i)
        assignments << columns[i] + QLatin1Char('=') + values[i];
    connection.ExecuteOneRow(QStringLiteral("UPDATE %1 SET %2 WHERE %3=%4")
                                 .arg(table, assignments.join(QStringLiteral(", ")), keyColumn,
                                      QString::number(recordId)));
}

void SaveBoundFields(db::Connection& connection, const FieldHolders& holders) {
    // The fields of one save may come from several rows: one UPDATE for each row.
    struct Row {
        QString table, keyColumn;
        QVariant key;
        FieldHolders holders;
    };
    QList<Row> rows;
    for (QWidget* holder : holders) {
        if (!holder)
            continue;
        const QString table = holder->property(kBoundTable).toString();
        if (table.isEmpty()) {
            throw ComponentError(
                QStringLiteral("The field %1 was never read from a row, so it cannot be saved")
                    .arg(holder->objectName()));
        }
        const QString keyColumn = holder->property(kBoundKeyColumn).toString();
        const QVariant key = holder->property(kBoundKey);
        auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& r) {
            return r.table == table && r.keyColumn == keyColumn && r.key == key;
        });
        if (row == rows.end()) {
            rows.append({table, keyColumn, key, {}});
            row = rows.end() - 1;
        }
        row->holders << holder;
    }
    for (const Row& row : rows) {
        QStringList columns;
        QStringList values;
        BoundValues(connection, row.table, row.keyColumn, row.holders, columns, values);
        if (columns.isEmpty())
            continue;
        QStringList assignments;
        for (qsizetype i = 0; i < columns.size(); ++i)
            assignments << columns[i] + QLatin1Char('=') + values[i];
        // The row was read when the screen loaded; another station may have deleted it since.
        connection.ExecuteOneRow(QStringLiteral("UPDATE %1 SET %2 WHERE %3=%4")
                                     .arg(row.table, assignments.join(QStringLiteral(", ")),
                                          row.keyColumn, KeyLiteral(row.key)));
    }
}

}  // namespace orvo::host
