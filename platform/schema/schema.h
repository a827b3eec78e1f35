#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "platform/db/connection.h"

namespace orvo::schema {

enum class ColumnType {
    Long,      // 32-bit integer
    Short,     // 16-bit integer; flags are Short columns holding 0 or 1
    Text,      // compares case-insensitively on both engines
    Memo,      // long text, case-insensitive as Text
    Date,      // DATE on the server, ISO text on the embedded engine
    DateTime,  // TIMESTAMP on the server, ISO text on the embedded engine
    Currency,  // fixed point, four decimals
    Double,
};

struct Column {
    QString name;
    ColumnType type = ColumnType::Text;
    int width = 0;          // Text: the stored width; 0 for none
    bool identity = false;  // the key the engine makes on insert
    bool key = false;       // primary key (an identity column is always the key)
    QString defaultValue;   // SQL literal, empty for none
};

struct Table {
    QString name;
    QList<Column> columns;
    QList<QStringList> indexes;  // plain indexes, each a list of columns

    const Column* FindColumn(const QString& column) const;  // any letter case
};

// A data change that cannot be said by declarations (a column filled from others, a row that
// must exist). Run once, in version order, after the tables are created or widened.
struct Upgrade {
    int version = 0;
    QString description;
    std::function<void(db::Connection&)> apply;
};

// Columns as every subsystem declares them.
Column Identity(const QString& name);  // the key the engine makes on insert
// A number: 0, not null, when an insert leaves it out, as the suite's numbers always read.
Column Long(const QString& name);
// A flag: a small integer that the statements compare with 0 and 1 (or TRUE and FALSE), cleared
// when an insert leaves it out.
Column Flag(const QString& name);
Column Text(const QString& name, int width);
Column Memo(const QString& name);
Column Date(const QString& name);
Column DateTime(const QString& name);
Column Currency(const QString& name);

// The tables a subsystem owns. Each subsystem fills one in its own folder; the host gathers
// them and applies the whole.
class Catalog {
public:
    void Add(Table table);
    void AddUpgrade(Upgrade upgrade);
    void Merge(const Catalog& other);

    const QList<Table>& tables() const { return tables_; }
    const QList<Upgrade>& upgrades() const { return upgrades_; }
    const Table* Find(const QString& table) const;  // any letter case
    // The highest upgrade version, which a database at the current schema records.
    int version() const;

private:
    QList<Table> tables_;
    QList<Upgrade> upgrades_;
};

// CREATE TABLE and CREATE INDEX statements, in the engine's own dialect.
QStringList CreateTableStatements(const Table& table, db::Engine engine);
QString AddColumnStatement(const Table& table, const Column& column, db::Engine engine);

// Brings a database up to the catalog: creates missing tables, adds missing columns, runs the
// upgrades newer than the recorded version, and records the new version; then `ensure`, when
// given, adds rows that must exist (the first login). All in one transaction that holds the
// practice's schema lock, so stations that start together take turns: the first creates, the
// others find it done. Safe on an up-to-date database.
void Apply(db::Connection& connection, const Catalog& catalog,
           const std::function<void(db::Connection&)>& ensure = {});

// Whether the database has the table (any letter case).
bool TableExists(db::Connection& connection, const QString& table);

// The version recorded in the database; 0 for a database that has none.
int StoredVersion(db::Connection& connection);

// Moves each identity on past the highest key, so that the next insert does not collide (the
// server keeps its counters apart from the rows). Apply already gives each identity a trigger
// that follows explicit keys; this is for rows written around it (a table dropped and made again
// by hand, a bulk load with triggers off). Tables of the catalog that do not exist are passed by.
void SyncIdentities(db::Connection& connection, const Catalog& catalog);

}  // namespace orvo::schema
