// Connection::ReadRows: whole results read through each engine's own interface, on the
// connection the driver opened (QSqlDriver::handle), for stores that keep every row.
#include <libpq-fe.h>
#include <sqlite3.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <charconv>
#include <vector>

#include "platform/db/connection.h"
#include "platform/db/db_log.h"

namespace orvo::db {

Cell Cell::Of(const QVariant& value) {
    Cell cell;
    if (value.isNull())
        return cell;
    switch (value.metaType().id()) {
        case QMetaType::LongLong:
            cell.kind = Kind::Integer;
            cell.integer = *static_cast<const qint64*>(value.constData());
            break;
        case QMetaType::Int:
            cell.kind = Kind::Integer;
            cell.integer = *static_cast<const int*>(value.constData());
            break;
        case QMetaType::QString:
            cell.kind = Kind::Text;
            cell.text = static_cast<const QString*>(value.constData());
            break;
        default:
            cell.kind = Kind::Other;
            cell.other = &value;
            break;
    }
    return cell;
}

namespace {

// The driver's own handle of its connection, when it is of the type named (the server's
// client library declares its connection under two names).
template <class Handle>
Handle* DriverHandle(const QSqlDatabase& database, std::initializer_list<const char*> types) {
    const QVariant handle = database.driver()->handle();
    if (!handle.isValid())
        return nullptr;
    for (const char* type : types) {
        if (qstrcmp(handle.typeName(), type) == 0)
            return *static_cast<Handle* const*>(handle.constData());
    }
    return nullptr;
}

DatabaseError Failed(const QString& message, const QString& statement) {
    const DatabaseError error(message.trimmed(), statement);
    qCWarning(lcDb).noquote() << error.describe();
    return error;
}

// The server's types by number (pg_type): the whole numbers, and those the driver reads as
// something other than text. Every other type, the extension's case-blind text among them,
// reads as text.
enum : Oid {
    kBool = 16,
    kBytea = 17,
    kInt8 = 20,
    kInt2 = 21,
    kInt4 = 23,
    kRegproc = 24,
    kOid = 26,
    kXid = 28,
    kCid = 29,
    kFloat4 = 700,
    kFloat8 = 701,
    kAbstime = 702,
    kReltime = 703,
    kDate = 1082,
    kTime = 1083,
    kTimestamp = 1114,
    kTimestamptz = 1184,
    kTimetz = 1266,
    kNumeric = 1700,
};

void DiscardPending(PGconn* connection) {
    while (PGresult* rest = PQgetResult(connection))
        PQclear(rest);
}

bool IsWholeNumber(Oid type) {
    return type == kInt2 || type == kInt4 || type == kInt8;
}

bool ReadsAsText(Oid type) {
    switch (type) {
        case kBool:
        case kBytea:
        case kRegproc:
        case kOid:
        case kXid:
        case kCid:
        case kFloat4:
        case kFloat8:
        case kAbstime:
        case kReltime:
        case kDate:
        case kTime:
        case kTimestamp:
        case kTimestamptz:
        case kTimetz:
        case kNumeric:
            return false;
        default:
            return !IsWholeNumber(type);
    }
}

}  // namespace

QStringList Connection::ReadRows(const QString& sql, const RowReader& row) {
    const QString statement = Translate(sql);
    RequireOneStatement(statement);
    if (hook_)
        hook_(statement);
    QStringList names;
    if (engine() == Engine::Sqlite ? ReadSqliteRows(statement, row, names)
                                   : ReadServerRows(statement, row, names)) {
        return names;
    }
    // Through the driver: a QVariant per value, handed on as cells.
    QSqlQuery query(db_);
    query.setForwardOnly(true);
    Exec(query, statement);
    const QSqlRecord record = query.record();
    const int count = record.count();
    for (int c = 0; c < count; ++c)
        names << record.fieldName(c);
    std::vector<QVariant> values(count);
    std::vector<Cell> cells(count);
    while (query.next()) {
        for (int c = 0; c < count; ++c) {
            values[c] = query.value(c);
            cells[c] = Cell::Of(values[c]);
        }
        row(cells.data(), count);
    }
    if (query.lastError().isValid())
        throw Failed(DriverMessage(query.lastError()), statement);
    return names;
}

bool Connection::ReadSqliteRows(const QString& statement, const RowReader& row,
                                QStringList& names) {
    sqlite3* const database = DriverHandle<sqlite3>(db_, {"sqlite3*"});
    if (database == nullptr)
        return false;
    const QByteArray text = statement.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(database, text.constData(), static_cast<int>(text.size()), &stmt,
                           nullptr) != SQLITE_OK) {
        throw Failed(QString::fromUtf8(sqlite3_errmsg(database)), statement);
    }
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> finalize(stmt, sqlite3_finalize);
    const int count = sqlite3_column_count(stmt);
    for (int c = 0; c < count; ++c)
        names << QString::fromUtf8(sqlite3_column_name(stmt, c));
    std::vector<Cell> cells(count);
    std::vector<QVariant> values(count);
    for (;;) {
        const int rc = sqlite3_step(stmt);
        if (rc == SQLITE_DONE)
            return true;
        if (rc != SQLITE_ROW)
            throw Failed(QString::fromUtf8(sqlite3_errmsg(database)), statement);
        for (int c = 0; c < count; ++c) {
            Cell& cell = cells[c];
            switch (sqlite3_column_type(stmt, c)) {
                case SQLITE_NULL:
                    cell = Cell();
                    break;
                case SQLITE_INTEGER:
                    cell =
                        Cell{.kind = Cell::Kind::Integer, .integer = sqlite3_column_int64(stmt, c)};
                    break;
                case SQLITE_TEXT: {
                    // The text first, then its length, as the engine asks.
                    const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
                    cell = Cell{.kind = Cell::Kind::Utf8,
                                .utf8 = utf8,
                                .bytes = sqlite3_column_bytes(stmt, c)};
                    break;
                }
                case SQLITE_FLOAT:
                    values[c] = sqlite3_column_double(stmt, c);
                    cell = Cell{.kind = Cell::Kind::Other, .other = &values[c]};
                    break;
                default: {
                    const auto* blob = static_cast<const char*>(sqlite3_column_blob(stmt, c));
                    values[c] = QByteArray(blob, sqlite3_column_bytes(stmt, c));
                    cell = Cell{.kind = Cell::Kind::Other, .other = &values[c]};
                    break;
                }
            }
        }
        row(cells.data(), count);
    }
}

// The statement is described first, as the unnamed statement of the session, so that a result
// of other kinds goes through the driver untouched; then it runs with its rows sent one at a
// time, read as they come while the server makes the next.
bool Connection::ReadServerRows(const QString& statement, const RowReader& row,
                                QStringList& names) {
    PGconn* const connection = DriverHandle<PGconn>(db_, {"PGconn*", "pg_conn*"});
    if (connection == nullptr)
        return false;
    // The driver leaves the end of its last read to be taken before its next statement, and
    // ends a read still open then; so does this.
    DiscardPending(connection);
    const QByteArray text = statement.toUtf8();
    const auto result = [&](PGresult* made) {
        return std::unique_ptr<PGresult, void (*)(PGresult*)>(made, PQclear);
    };
    const auto check = [&](const PGresult* made) {
        const ExecStatusType status = PQresultStatus(made);
        if (made == nullptr || (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)) {
            throw Failed(
                QString::fromUtf8(made ? PQresultErrorMessage(made) : PQerrorMessage(connection)),
                statement);
        }
    };
    check(result(PQprepare(connection, "", text.constData(), 0, nullptr)).get());
    const auto described = result(PQdescribePrepared(connection, ""));
    check(described.get());
    const int count = PQnfields(described.get());
    std::vector<bool> whole(count);
    for (int c = 0; c < count; ++c) {
        const Oid type = PQftype(described.get(), c);
        if (!IsWholeNumber(type) && !ReadsAsText(type))
            return false;
        whole[c] = IsWholeNumber(type);
    }
    for (int c = 0; c < count; ++c)
        names << QString::fromUtf8(PQfname(described.get(), c));
    if (!PQsendQueryPrepared(connection, "", 0, nullptr, nullptr, nullptr, 0))
        throw Failed(QString::fromUtf8(PQerrorMessage(connection)), statement);
    PQsetSingleRowMode(connection);
    // Whatever happens to a row, the connection is left with nothing pending.
    struct Drain {
        PGconn* connection;
        ~Drain() { DiscardPending(connection); }
    } drain{connection};
    std::vector<Cell> cells(count);
    QString failure;
    while (PGresult* next = PQgetResult(connection)) {
        const auto got = result(next);
        const ExecStatusType status = PQresultStatus(next);
        if (status != PGRES_SINGLE_TUPLE && status != PGRES_TUPLES_OK) {
            failure = QString::fromUtf8(PQresultErrorMessage(next));
            continue;
        }
        for (int r = 0, rows = PQntuples(next); r < rows; ++r) {
            for (int c = 0; c < count; ++c) {
                Cell& cell = cells[c];
                if (PQgetisnull(next, r, c)) {
                    cell = Cell();
                    continue;
                }
                const char* value = PQgetvalue(next, r, c);
                const int length = PQgetlength(next, r, c);
                if (whole[c]) {
                    cell = Cell{.kind = Cell::Kind::Integer};
                    std::from_chars(value, value + length, cell.integer);
                } else {
                    cell = Cell{.kind = Cell::Kind::Utf8, .utf8 = value, .bytes = length};
                }
            }
            row(cells.data(), count);
        }
    }
    if (!failure.isNull())
        throw Failed(failure, statement);
    return true;
}

}  // namespace orvo::db
