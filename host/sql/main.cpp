// orvo-sql: runs statements in the suite's dialect against a practice database, through the
// same translation as the component, and prints their rows as tab-separated text.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTextStream>
#include <cstdio>

#include "host/component_loader.h"
#include "host/practice.h"
#include "platform/db/translate_sql.h"

namespace {

using namespace orvo;

// A value on one line of the table: tabs, line ends and backslashes are escaped, so that no
// value can add a column or a row.
QString Escaped(const QString& value) {
    QString out;
    out.reserve(value.size());
    for (const QChar c : value) {
        switch (c.unicode()) {
            case '\\':
                out += QStringLiteral("\\\\");
                break;
            case '\t':
                out += QStringLiteral("\\t");
                break;
            case '\n':
                out += QStringLiteral("\\n");
                break;
            case '\r':
                out += QStringLiteral("\\r");
                break;
            default:
                out += c;
        }
    }
    return out;
}

void PrintRows(QSqlQuery& query, QTextStream& out) {
    const QSqlRecord record = query.record();
    QStringList header;
    for (int i = 0; i < record.count(); ++i)
        header << Escaped(record.fieldName(i));
    out << header.join(QLatin1Char('\t')) << '\n';
    while (query.next()) {
        QStringList row;
        for (int i = 0; i < record.count(); ++i) {
            const QVariant value = query.value(i);
            row << (value.isNull() ? QString() : Escaped(value.toString()));
        }
        out << row.join(QLatin1Char('\t')) << '\n';
    }
}

// Runs one statement as the engine takes it. Whether rows are printed is decided by what the
// statement gave back, not by how it reads: a SELECT after a comment or a line break, a
// RETURNING, a PRAGMA all print theirs.
void RunStatement(db::Connection& connection, const QString& translated, QTextStream& out) {
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(translated)) {
        QString message = query.lastError().databaseText().trimmed();
        if (message.isEmpty())
            message = query.lastError().text();
        throw db::DatabaseError(message, translated);
    }
    if (query.isSelect())
        PrintRows(query, out);
}

int Run(const QCommandLineParser& args) {
    QTextStream out(stdout);
    const QStringList statements = args.values(QStringLiteral("c"));

    if (args.isSet(QStringLiteral("translate-only"))) {
        const QString engine = args.value(QStringLiteral("engine"));
        if (engine != QLatin1String("sqlite") && engine != QLatin1String("pg")) {
            throw std::runtime_error("--translate-only needs --engine sqlite or --engine pg");
        }
        const db::Engine kind =
            engine == QLatin1String("pg") ? db::Engine::Postgres : db::Engine::Sqlite;
        for (const QString& statement : statements)
            out << db::TranslateSql(statement, kind) << '\n';
        return 0;
    }

    if (!args.isSet(QStringLiteral("data")))
        throw std::runtime_error("--data DIR is required");
    if (!args.isSet(QStringLiteral("create")) && statements.isEmpty()) {
        throw std::runtime_error("nothing to do: give --create or -c STATEMENT");
    }
    host::ComponentLoader component(host::DefaultComponentPath());
    host::PracticeOptions options;
    options.dataDir = args.value(QStringLiteral("data"));
    if (args.isSet(QStringLiteral("pg")))
        options.pgConnInfo = host::CheckedConnInfo(args.value(QStringLiteral("pg")));
    options.pgSchema = args.value(QStringLiteral("pg-schema"));
    if (args.isSet(QStringLiteral("pg-schema")) && options.pgConnInfo.isEmpty())
        throw std::runtime_error("--pg-schema names a schema of the --pg database: give --pg too");
    host::HostSession session = host::OpenPractice(options, host::PracticeCatalog(component));

    db::Connection& connection = *session.connection;
    for (const QString& statement : statements) {
        // A statement may translate into several; each goes to the driver on its own.
        for (const QString& piece : db::SplitSqlStatements(statement)) {
            for (const QString& translated : db::SplitSqlStatements(connection.Translate(piece))) {
                if (translated.trimmed().isEmpty())
                    continue;
                RunStatement(connection, translated, out);
                out.flush();
            }
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvo-sql"));
    QCommandLineParser args;
    args.setApplicationDescription(
        QStringLiteral("Runs statements in the suite's SQL dialect against a practice database."));
    args.addHelpOption();
    args.addOptions({
        {QStringLiteral("data"), QStringLiteral("The practice's data folder."),
         QStringLiteral("DIR")},
        {QStringLiteral("pg"), QStringLiteral("PostgreSQL connection (libpq conninfo)."),
         QStringLiteral("CONNINFO")},
        {QStringLiteral("pg-schema"),
         QStringLiteral("With --pg: the schema that holds the practice, when not the default."),
         QStringLiteral("SCHEMA")},
        {QStringLiteral("create"), QStringLiteral("Create the practice database (schema only).")},
        {QStringLiteral("c"), QStringLiteral("A statement to run; may be given many times."),
         QStringLiteral("STATEMENT")},
        {QStringLiteral("engine"), QStringLiteral("With --translate-only: sqlite or pg."),
         QStringLiteral("ENGINE")},
        {QStringLiteral("translate-only"),
         QStringLiteral("Print each statement as the engine is sent it.")},
    });
    args.process(app);
    try {
        return Run(args);
    } catch (const orvo::db::DatabaseError& error) {
        std::fprintf(stderr, "orvo-sql: %s\n", qPrintable(error.describe()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvo-sql: %s\n", error.what());
    }
    return 1;
}
