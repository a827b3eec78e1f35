// orvo-sql: runs statements in the suite's dialect against a practice database, through the
// same translation as the component, and prints their rows as tab-separated text.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>
#include <cstdio>

#include "host/component_loader.h"
#include "host/practice.h"
#include "platform/db/recordset.h"
#include "platform/db/translate_sql.h"

namespace {

using namespace orvo;

bool ReturnsRows(const QString& translated) {
    const QString head = translated.trimmed().section(QLatin1Char(' '), 0, 0).toUpper();
    return head == QLatin1String("SELECT") || head == QLatin1String("WITH") ||
           head == QLatin1String("VALUES") || head == QLatin1String("PRAGMA") ||
           head == QLatin1String("SHOW") ||
           translated.contains(QLatin1String(" RETURNING "), Qt::CaseInsensitive);
}

void PrintRows(db::Recordset& rs, QTextStream& out) {
    QStringList header;
    for (int i = 0; i < rs.FieldCount(); ++i)
        header << rs.FieldName(i);
    out << header.join(QLatin1Char('\t')) << '\n';
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList row;
        for (int i = 0; i < rs.FieldCount(); ++i)
            row << rs.Text(i);
        out << row.join(QLatin1Char('\t')) << '\n';
    }
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
    options.pgConnInfo = args.value(QStringLiteral("pg"));
    host::HostSession session = host::OpenPractice(options, host::PracticeCatalog(component));

    db::Connection& connection = *session.connection;
    for (const QString& statement : statements) {
        for (const QString& piece : db::SplitSqlStatements(statement)) {
            const QString translated = connection.Translate(piece);
            if (translated.trimmed().isEmpty())
                continue;
            if (ReturnsRows(translated)) {
                db::Recordset rs(connection, piece);
                PrintRows(rs, out);
            } else {
                connection.Execute(piece);
            }
            out.flush();
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
