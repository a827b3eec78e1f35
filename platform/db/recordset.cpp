#include "platform/db/recordset.h"

#include <QSqlError>
#include <QSqlRecord>

namespace orvo::db {

Recordset::Recordset(Connection& connection, const QString& sql) : Recordset(connection.Run(sql)) {}

Recordset::Recordset(Connection& connection, const QString& shape, const QStringList& literals)
    : Recordset(connection.RunTranslated(connection.Compose(shape, literals))) {}

Recordset::Recordset(RanStatement ran) : ran_(std::move(ran)) {
    const QSqlRecord record = ran_.query().record();
    names_.reserve(record.count());
    for (int i = 0; i < record.count(); ++i)
        names_.push_back(record.fieldName(i));
    empty_ = !ran_.query().next();
    eof_ = empty_;
}

void Recordset::MoveNext() {
    if (!eof_)
        eof_ = !ran_.query().next();
}

int Recordset::IndexOf(const QString& name) const {
    // Most reads name one of a handful of columns: a scan without allocating beats hashing a
    // lower-cased copy. Wide results fall back to a hash, made at their first read by name.
    if (names_.size() <= 16) {
        for (size_t i = 0; i < names_.size(); ++i) {
            if (names_[i].compare(name, Qt::CaseInsensitive) == 0)
                return static_cast<int>(i);
        }
        return -1;
    }
    if (index_.isEmpty()) {
        index_.reserve(static_cast<qsizetype>(names_.size()));
        for (size_t i = 0; i < names_.size(); ++i)
            index_.insert(names_[i].toLower(), static_cast<int>(i));
    }
    return index_.value(name.toLower(), -1);
}
int Recordset::RequireIndex(const QString& name) const {
    const int index = IndexOf(name);
    if (index < 0) {
        throw DatabaseError(QStringLiteral("No column named %1 in the result.").arg(name),
                            statement());
    }
    return index;
}

QVariant Recordset::Value(int index) const {
    if (eof_)
        throw DatabaseError(QStringLiteral("No current row."), statement());
    return ran_.query().value(index);
}

QVariant Recordset::Value(const QString& name) const {
    return Value(RequireIndex(name));
}
bool Recordset::IsNull(int index) const {
    return Value(index).isNull();
}
bool Recordset::IsNull(const QString& name) const {
    return IsNull(RequireIndex(name));
}

QString Recordset::Text(int index) const {
    const QVariant value = Value(index);
    return value.isNull() ? QString() : value.toString();
}

QString Recordset::Text(const QString& name) const {
    return Text(RequireIndex(name));
}

qint64 Recordset::Long(int index) const {
    const QVariant value = Value(index);
    return value.isNull() ? 0 : value.toLongLong();
}

qint64 Recordset::Long(const QString& name) const {
    return Long(RequireIndex(name));
}

QVariant ReadScalar(Connection& connection, const QString& sql) {
    Recordset rs(connection, sql);
    if (rs.IsEmpty() || rs.FieldCount() == 0)
        return QVariant();
    return rs.Value(0);
}

}  // namespace orvo::db
