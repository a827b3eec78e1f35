#pragma once

#include <QHash>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <vector>

#include "platform/db/connection.h"

namespace orvo::db {

// A forward-only, read-only read of one statement. Opened on construction; positioned on the
// first row. Values by column name in any letter case (names are resolved once), or by index in
// hot loops. A null reads as "" through Text() and as 0 through Long().
class Recordset {
public:
    Recordset(Connection& connection, const QString& sql);
    // A read of a statement shape with its values as SQL literals (Connection::Compose).
    Recordset(Connection& connection, const QString& shape, const QStringList& literals);

    // True when there is no row at all (the suite's "both BOF and EOF").
    bool IsEmpty() const { return empty_; }
    // True once the last row has been passed.
    bool Eof() const { return eof_; }
    void MoveNext();

    int FieldCount() const { return static_cast<int>(names_.size()); }
    const QString& FieldName(int index) const { return names_[index]; }
    // Column index of a name in any letter case; -1 when the statement has no such column.
    int IndexOf(const QString& name) const;

    QVariant Value(int index) const;
    QVariant Value(const QString& name) const;
    bool IsNull(int index) const;
    bool IsNull(const QString& name) const;
    QString Text(int index) const;
    QString Text(const QString& name) const;
    qint64 Long(int index) const;
    qint64 Long(const QString& name) const;

private:
    explicit Recordset(RanStatement ran);
    int RequireIndex(const QString& name) const;
    const QString& statement() const { return ran_.statement(); }

    RanStatement ran_;
    std::vector<QString> names_;
    mutable QHash<QString, int> index_;  // lower-case name to index, for wide results
    bool empty_ = true;
    bool eof_ = true;
};

// The first column of the first row, or an invalid QVariant when there is no row.
QVariant ReadScalar(Connection& connection, const QString& sql);

}  // namespace orvo::db
