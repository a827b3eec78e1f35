#include "platform/db/pg_search_path.h"

#include <QSqlError>
#include <QSqlQuery>

#include "platform/db/connection.h"

namespace orvo::db {
namespace {

// Serialises the install among this system's programs; any other installer racing us shows up
// as a duplicate, which is caught below.
constexpr qint64 kCitextInstallLock = 0x6f72766f65787431;  // "orvoext1"

// Statements in the server's own form, sent as they stand.
QSqlQuery Run(Connection& connection, const QString& statement, const QVariantList& values = {}) {
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    const bool ok = values.isEmpty() ? query.exec(statement) : [&] {
        query.prepare(statement);
        for (const QVariant& value : values)
            query.addBindValue(value);
        return query.exec();
    }();
    if (!ok) {
        QString message = query.lastError().databaseText().trimmed();
        if (message.isEmpty())
            message = query.lastError().text();
        throw DatabaseError(message, statement);
    }
    return query;
}

QVariant Scalar(Connection& connection, const QString& statement, const QVariantList& values) {
    QSqlQuery query = Run(connection, statement, values);
    return query.next() ? query.value(0) : QVariant();
}

bool SchemaExists(Connection& connection, const QString& schema) {
    return Scalar(connection, QStringLiteral("SELECT count(*) FROM pg_namespace WHERE nspname = ?"),
                  {schema})
               .toInt() > 0;
}

QString InstallCitext(Connection& connection) {
    Run(connection, QStringLiteral("SELECT pg_advisory_lock(%1)").arg(kCitextInstallLock));
    QString schema;
    QString failure;
    try {
        schema = CitextSchema(connection);
        if (schema.isEmpty()) {
            const QString ext = QuoteIdentifier(QLatin1String(kExtensionSchema));
            Run(connection, QStringLiteral("CREATE SCHEMA IF NOT EXISTS ") + ext);
            Run(connection, QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext SCHEMA ") + ext);
        }
    } catch (const DatabaseError& error) {
        // Someone outside the lock may have installed it meanwhile; whatever they made is used.
        failure = error.driverMessage();
    }
    Run(connection, QStringLiteral("SELECT pg_advisory_unlock(%1)").arg(kCitextInstallLock));
    schema = CitextSchema(connection);
    if (schema.isEmpty()) {
        throw DatabaseError(
            QStringLiteral("The database has no citext extension, and it could not be installed "
                           "in the schema %1: %2")
                .arg(QLatin1String(kExtensionSchema), failure),
            QStringLiteral("CREATE EXTENSION citext"));
    }
    return schema;
}

}  // namespace

QString QuoteIdentifier(const QString& name) {
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

QString CitextSchema(Connection& connection) {
    return Scalar(connection,
                  QStringLiteral("SELECT n.nspname FROM pg_extension e JOIN pg_namespace n ON "
                                 "n.oid = e.extnamespace WHERE e.extname = ?"),
                  {QStringLiteral("citext")})
        .toString();
}

bool SchemaHoldsTables(Connection& connection, const QString& schema) {
    return Scalar(connection,
                  QStringLiteral("SELECT count(*) FROM pg_class c JOIN pg_namespace n ON n.oid = "
                                 "c.relnamespace WHERE n.nspname = ? AND c.relkind IN "
                                 "('r', 'p', 'v', 'm', 'S', 'f')"),
                  {schema})
               .toInt() > 0;
}

void SetSearchPath(Connection& connection, const QString& practiceSchema) {
    QString ext = CitextSchema(connection);
    if (ext.isEmpty())
        ext = InstallCitext(connection);
    if (practiceSchema.isEmpty()) {
        const bool seen =
            Scalar(connection, QStringLiteral("SELECT ? = ANY (current_schemas(false))"), {ext})
                .toBool();
        if (!seen) {
            Run(connection,
                QStringLiteral("SELECT set_config('search_path', current_setting('search_path') "
                               "|| ', ' || quote_ident(?), false)"),
                {ext});
        }
        return;
    }
    if (!SchemaExists(connection, practiceSchema)) {
        throw DatabaseError(
            QStringLiteral("The database has no schema %1.").arg(QuoteIdentifier(practiceSchema)),
            QStringLiteral("SET search_path"));
    }
    if (ext != practiceSchema && SchemaHoldsTables(connection, ext)) {
        throw DatabaseError(
            QStringLiteral("citext is installed in the schema %1, which holds tables: a practice "
                           "in the schema %2 would see them. Move citext to a schema of its own.")
                .arg(QuoteIdentifier(ext), QuoteIdentifier(practiceSchema)),
            QStringLiteral("SET search_path"));
    }
    QString path = QuoteIdentifier(practiceSchema);
    if (ext != practiceSchema)
        path += QStringLiteral(", ") + QuoteIdentifier(ext);
    Run(connection, QStringLiteral("SET search_path TO ") + path);
}

}  // namespace orvo::db
