#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <functional>
#include <memory>
#include <optional>

#include "platform/db/database_error.h"
#include "platform/db/engine.h"
#include "platform/db/procedure.h"
#include "platform/db/read_rows.h"
#include "platform/db/translation_cache.h"

namespace orvo::db {

class KeptStatements;

// A statement a connection ran: its query, active and positioned before its first row, and the
// statement's text as sent. A query that the connection keeps prepared goes back to it when this
// goes (or to nothing, when the connection went first).
class RanStatement {
public:
    RanStatement() = default;
    RanStatement(RanStatement&&) = default;
    RanStatement& operator=(RanStatement&&) = default;
    RanStatement(const RanStatement&) = delete;
    RanStatement& operator=(const RanStatement&) = delete;
    ~RanStatement();

    QSqlQuery& query() const { return *query_; }
    const QString& statement() const { return statement_; }

private:
    friend class Connection;
    std::shared_ptr<QSqlQuery> query_;
    QString statement_;
    QString shape_;  // of a kept query: the shape it runs
    std::weak_ptr<KeptStatements> keeper_;
};

struct ConnectionOptions {
    Engine engine = Engine::Sqlite;
    QString sqliteFile;  // the database file, for Sqlite
    QString pgConnInfo;  // libpq key=value conninfo, for Postgres ("host=/tmp/s dbname=orvo")
    QString pgSchema;    // when set, the schema searched first (tests use one per test)
};

// One session with the practice database. Every statement passes through TranslateSql on its
// way to the engine, and one statement goes to the driver per call: a statement that translates
// into several runs them in order on this same connection. Errors throw DatabaseError, with any
// password of the connection masked.
class Connection {
public:
    static std::shared_ptr<Connection> Open(const ConnectionOptions& options);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    Engine engine() const { return options_.engine; }
    const ConnectionOptions& options() const { return options_; }
    QSqlDatabase& database() { return db_; }

    // The statement as this connection sends it. Statements of one shape with other values are
    // translated once (TranslationCache).
    QString Translate(const QString& sql) const;
    // A statement of a shape run again and again with other values (a search as typed): the
    // shape, with a '?' for each value, is translated once on this connection; the values,
    // written as SQL literals (QuoteText), go in place of the marks. The translation never
    // looks into them, so a value it would rewrite (a LIKE pattern, a date) belongs in the
    // shape. A count of values other than the marks' throws DatabaseError.
    QString Compose(const QString& shape, const QStringList& literals) const;

    // Runs one statement that returns no rows; answers the number of rows it changed. A text of
    // several statements is refused (a DatabaseError, nothing run); the server's SET NOCOUNT ON
    // in front of the statement is let pass, as it has no counterpart here.
    int Execute(const QString& sql);

    // Runs an UPDATE or DELETE that must change a row; throws RowNotFoundError when it changed
    // none, so that an edit is never taken for saved when its row is gone.
    void ExecuteOneRow(const QString& sql);

    // Runs an INSERT and answers the key it made, on this connection, for this insert. Accepts
    // both forms the suite sends: the plain INSERT, and the server batch
    // "SET NOCOUNT ON; INSERT ...; SELECT @@IDENTITY".
    qint64 InsertWithIdentity(const QString& insertSql);

    // Translates one statement and runs it; a failure throws DatabaseError. On the embedded
    // engine, a statement whose shape ran before (CutLiterals) runs through a query kept
    // prepared for the shape with its values bound, so the engine does not read it again; what
    // the statement hook and the messages see is still the whole statement.
    RanStatement Run(const QString& sql);
    // Runs one statement already translated.
    RanStatement RunTranslated(QString statement);

    // Runs one SELECT and hands each of its rows to `row`, for a caller that keeps a whole
    // result in a store of its own (a list window). The rows come straight from the engine's
    // own interface: whole numbers as numbers, texts in UTF-8 as sent, with no QVariant or
    // QString per value. On the server, a result with columns of other kinds (dates, money)
    // goes through the driver as Run does; a read still open on the connection is ended
    // first, as the driver ends it before its next statement. Answers the names of the
    // columns. Throws DatabaseError as Run does; the statement hook sees the statement.
    QStringList ReadRows(const QString& sql, const RowReader& row);

    // Sends one statement, already translated, to the driver on this connection. Every
    // statement reaches the engine through here (a procedure call is checked the same way): a
    // text that the engine would read as several statements is refused before it is sent.
    // Throws DatabaseError when the driver fails.
    void Send(QSqlQuery& query, const QString& statement);

    // A statement kept prepared on this connection, for the few that run once per row in hot
    // paths (a person's read, a role change): `sql` is in the suite's dialect with `?` for each
    // value, translated and prepared on first use and reused after. Unlike Compose, the driver
    // keeps the statement parsed and the values are bound, never written into the text. Run it with
    // RunPrepared; a query that gives rows is read and then finish()ed by its caller, so that it
    // holds nothing between runs. Throws DatabaseError when the statement cannot be prepared.
    QSqlQuery& Prepared(const QString& sql);
    // Runs a statement of Prepared with these values bound in order; answers the rows changed.
    // A failure throws DatabaseError and drops the statement, so that the next use prepares it
    // anew (the table may have changed under it).
    int RunPrepared(QSqlQuery& query, const QVariantList& values);

    // A plain transaction, or an exclusive one: on the embedded engine it holds the write lock
    // from its start (waiting up to the busy timeout for it), on the server it holds the
    // practice's schema lock; stations that begin one take turns.
    void BeginTransaction(bool exclusive = false);
    void Commit();
    void Rollback();
    // True from BeginTransaction until its Commit or Rollback.
    bool InTransaction() const { return inTransaction_; }

    // Called with each statement just before it goes to the driver; a hook that throws keeps
    // the statement from being sent. Tests fail a chosen statement with it, benchmarks keep the
    // statements an operation sends. A kept statement (Prepared) is passed as prepared, with `?`
    // for its values. An empty hook removes it.
    using StatementHook = std::function<void(const QString& statement)>;
    void SetStatementHook(StatementHook hook) { hook_ = std::move(hook); }

    // Stored procedures (procedure.cpp). On the server engine a procedure is a function in the
    // database, made when it does not exist yet; the embedded engine has none, so there it is a
    // named statement that this connection keeps. Values go by bound parameters, never in the
    // statement's text.
    void EnsureProcedure(const QString& name, const QString& body, const QString& declaration);
    void CallProcedure(const QString& name, const QList<ProcedureArgument>& arguments);

private:
    explicit Connection(const ConnectionOptions& options);
    void Configure();
    // A statement shape translated on this connection, cut at its marks, and the statement
    // kept prepared from it once Prepared has asked for one.
    struct Shape {
        QStringList pieces;
        std::shared_ptr<QSqlQuery> prepared;
    };
    Shape& KeptShape(const QString& shape) const;
    int ExecuteTranslated(const QString& statement);
    RanStatement Run(const QString& sql, const std::optional<LiteralShape>& cut);
    bool RunKept(RanStatement& ran, const LiteralShape& cut,
                 const TranslationCache::Translated& shape);
    QList<QStringList> OwnStatements(const QString& sql) const;
    void RequireOneStatement(const QString& statement) const;
    // The engines' halves of ReadRows (read_rows.cpp); false when the engine's own interface
    // is not to be used for this statement, with nothing run.
    bool ReadSqliteRows(const QString& statement, const RowReader& row, QStringList& names);
    bool ReadServerRows(const QString& statement, const RowReader& row, QStringList& names);
    // Runs a statement on a query of the driver; throws DatabaseError when it fails.
    void Exec(QSqlQuery& query, const QString& statement);

    ConnectionOptions options_;
    QString name_;
    QSqlDatabase db_;
    QHash<QString, ProcedureDefinition> procedures_;  // by lower-case name, embedded engine
    bool inTransaction_ = false;
    StatementHook hook_;
    // The shapes of Compose and of Prepared, by their text before translation: a shape is
    // translated once whichever way it is run. A few dozen at the most in a session.
    mutable QHash<QString, Shape> shapes_;
    mutable TranslationCache translations_;
    std::shared_ptr<KeptStatements> kept_;  // queries kept prepared by shape, embedded engine
    QSet<const QSqlQuery*> stale_;  // failed on their last run: prepared anew on the next use
};

// Keeps a transaction open for its scope; rolls back unless Commit() was called. Opened while
// the connection is already in a transaction, it joins that one: its Commit leaves the outcome
// to the outer transaction, and a failure rolls back when the error reaches the outer one.
//
// Modes: Plain; Exclusive (the practice's schema lock, see BeginTransaction); Write, for work
// that reads numbers and writes by them: on the embedded engine it holds the write lock from
// its start, so nobody writes between its reads and its writes; on the server it is plain, and
// the work locks the rows it depends on (SELECT ... FOR UPDATE).
class Transaction {
public:
    enum Mode { Plain, Exclusive, Write };
    explicit Transaction(Connection& connection, Mode mode = Plain);
    ~Transaction();
    void Commit();

private:
    Connection& connection_;
    bool joined_ = false;
    bool done_ = false;
};

}  // namespace orvo::db
