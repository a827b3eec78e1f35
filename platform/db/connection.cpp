#include "platform/db/connection.h"

#include <algorithm>

#include <QAtomicInteger>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

#include "platform/db/db_log.h"
#include "platform/db/one_statement.h"
#include "platform/db/pg_search_path.h"
#include "platform/db/recordset.h"
#include "platform/db/translate_sql.h"
#include "platform/db/unicode_text.h"

namespace orvo::db {
namespace {

QAtomicInteger<quint64> connectionCounter;

// libpq's key=value conninfo, split into the parts QPSQL takes one by one; values may be
// single-quoted. Keys QPSQL has no setter for go through as connect options.
void ApplyConnInfo(QSqlDatabase& db, const QString& conninfo) {
    static const QRegularExpression pair(QStringLiteral(R"((\w+)\s*=\s*('(?:[^'\\]|\\.)*'|\S+))"));
    QStringList options;
    for (auto it = pair.globalMatch(conninfo); it.hasNext();) {
        const auto match = it.next();
        const QString key = match.captured(1).toLower();
        QString value = match.captured(2);
        if (value.startsWith(QLatin1Char('\''))) {
            value =
                value.mid(1, value.size() - 2).replace(QStringLiteral("\\'"), QStringLiteral("'"));
        }
        if (key == QLatin1String("host")) {
            db.setHostName(value);
        } else if (key == QLatin1String("port")) {
            db.setPort(value.toInt());
        } else if (key == QLatin1String("dbname")) {
            db.setDatabaseName(value);
        } else if (key == QLatin1String("user")) {
            db.setUserName(value);
        } else if (key == QLatin1String("password")) {
            db.setPassword(value);
        } else {
            options << key + QLatin1Char('=') + value;
        }
    }
    db.setConnectOptions(options.join(QLatin1Char(';')));
}

// The value a literal cut out of a statement stands for, as bound in its place: a string's text,
// a whole number as an integer and any other as a double, as the engine reads them written. An
// invalid value when it cannot be read so (a number too long for 64 bits).
QVariant BoundValue(const QString& literal) {
    if (literal.startsWith(QLatin1Char('\''))) {
        return QString(literal.mid(1, literal.size() - 2))
            .replace(QStringLiteral("''"), QStringLiteral("'"));
    }
    bool ok = false;
    const bool whole = std::all_of(literal.begin(), literal.end(),
                                   [](QChar c) { return c.isDigit() && c.unicode() < 128; });
    if (whole) {
        const qint64 value = literal.toLongLong(&ok);
        return ok ? QVariant(value) : QVariant();
    }
    const double value = literal.toDouble(&ok);
    return ok ? QVariant(value) : QVariant();
}

bool IsIdentityQuery(const QString& statement) {
    return statement.simplified().compare(QLatin1String("SELECT @@IDENTITY"),
                                          Qt::CaseInsensitive) == 0;
}

}  // namespace

// The queries a connection keeps prepared for the shapes of its statements, with values bound.
// A shape the engine would not prepare so (a value where a name must stand) is refused once and
// runs as text from then on.
class KeptStatements {
public:
    struct Kept {
        QString text;  // the shape's translation with a '?' for each value
        bool refused = false;
        std::vector<std::shared_ptr<QSqlQuery>> idle;
    };
    Kept& For(const QString& shape) {
        auto it = byShape_.find(shape);
        if (it == byShape_.end()) {
            if (byShape_.size() >= kMostShapes)
                byShape_.clear();  // queries in use are not held here; they go when returned
            it = byShape_.insert(shape, Kept{});
        }
        return *it;
    }
    void Give(const QString& shape, std::shared_ptr<QSqlQuery> query) {
        query->finish();
        auto it = byShape_.find(shape);
        if (it != byShape_.end() && it->idle.size() < kMostIdle)
            it->idle.push_back(std::move(query));
    }

private:
    static constexpr qsizetype kMostShapes = 512;
    static constexpr size_t kMostIdle = 4;  // more of one shape in use at once run as new ones
    QHash<QString, Kept> byShape_;
};

RanStatement::~RanStatement() {
    if (!query_ || shape_.isEmpty())
        return;
    if (const auto keeper = keeper_.lock())
        keeper->Give(shape_, std::move(query_));
}

std::shared_ptr<Connection> Connection::Open(const ConnectionOptions& options) {
    std::shared_ptr<Connection> connection(new Connection(options));
    connection->Configure();
    return connection;
}

Connection::Connection(const ConnectionOptions& options)
    : options_(options),
      name_(QStringLiteral("orvo-%1").arg(connectionCounter.fetchAndAddRelaxed(1))),
      translations_(options.engine),
      kept_(options.engine == Engine::Sqlite ? std::make_shared<KeptStatements>() : nullptr) {}

Connection::~Connection() {
    stale_.clear();
    shapes_.clear();  // statements go before their connection
    kept_.reset();
    db_.close();
    db_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

void Connection::Configure() {
    if (options_.engine == Engine::Sqlite) {
        db_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db_.setDatabaseName(options_.sqliteFile);
        db_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
    } else {
        db_ = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name_);
        ApplyConnInfo(db_, options_.pgConnInfo);
    }
    if (!db_.isValid()) {
        throw DatabaseError(QStringLiteral("The database driver is not installed."), QString());
    }
    if (!db_.open()) {
        throw DatabaseError(DriverMessage(db_.lastError()), options_.engine == Engine::Sqlite
                                                                ? options_.sqliteFile
                                                                : options_.pgConnInfo);
    }
    if (options_.engine == Engine::Sqlite) {
        InstallUnicodeText(db_);
        // In force before anything else: a station that opens a practice while another
        // creates it waits for the lock instead of failing at once.
        ExecuteTranslated(QStringLiteral("PRAGMA busy_timeout=10000"));
        ExecuteTranslated(QStringLiteral("PRAGMA journal_mode=WAL"));
        ExecuteTranslated(QStringLiteral("PRAGMA synchronous=NORMAL"));
    } else {
        ExecuteTranslated(QStringLiteral("SET client_min_messages TO WARNING"));
        ExecuteTranslated(QStringLiteral("SET DateStyle TO ISO, MDY"));
        SetSearchPath(*this, options_.pgSchema);
    }
}

QString Connection::Translate(const QString& sql) const {
    return translations_.Translate(sql);
}

Connection::Shape& Connection::KeptShape(const QString& shape) const {
    auto it = shapes_.find(shape);
    if (it != shapes_.end())
        return *it;
    // Shapes are written in the code, so the cache stays small; a caller that made shapes of
    // values would only fill it, and it starts again. Statements kept prepared stay: their
    // callers may hold them while the cache fills.
    if (shapes_.size() >= 256) {
        for (auto drop = shapes_.begin(); drop != shapes_.end();)
            drop = drop->prepared ? std::next(drop) : shapes_.erase(drop);
    }
    return *shapes_.insert(shape, Shape{SplitAtPlaceholders(Translate(shape)), nullptr});
}

QString Connection::Compose(const QString& shape, const QStringList& literals) const {
    const QStringList& pieces = KeptShape(shape).pieces;
    if (pieces.size() != literals.size() + 1) {
        throw DatabaseError(QStringLiteral("The statement has %1 places for values, not %2.")
                                .arg(pieces.size() - 1)
                                .arg(literals.size()),
                            shape);
    }
    QString statement = pieces.front();
    for (qsizetype i = 0; i < literals.size(); ++i) {
        // A backslash in a string is written in the form every session setting reads alike,
        // as the translation writes it.
        const QString& literal = literals[i];
        statement +=
            (literal.contains(QLatin1Char('\\')) ? Translate(literal) : literal) + pieces[i + 1];
    }
    return statement;
}

void Connection::RequireOneStatement(const QString& statement) const {
    if (HoldsOneStatement(statement, engine()))
        return;
    const DatabaseError error(QStringLiteral("Only one statement may be sent at a time."),
                              statement);
    qCWarning(lcDb).noquote() << error.describe();
    throw error;
}

void Connection::Send(QSqlQuery& query, const QString& statement) {
    RequireOneStatement(statement);
    if (hook_)
        hook_(statement);
    Exec(query, statement);
}

void Connection::Exec(QSqlQuery& query, const QString& statement) {
    if (!query.exec(statement)) {
        const DatabaseError error(DriverMessage(query.lastError()), statement);
        qCWarning(lcDb).noquote() << error.describe();
        throw error;
    }
}

RanStatement Connection::Run(const QString& sql) {
    return Run(sql, CutLiterals(sql));
}

RanStatement Connection::Run(const QString& sql, const std::optional<LiteralShape>& cut) {
    const TranslationCache::Translated* shape = nullptr;
    RanStatement ran;
    ran.statement_ = translations_.Translate(sql, cut, &shape);
    if (kept_ && shape && RunKept(ran, *cut, *shape))
        return ran;
    return RunTranslated(std::move(ran.statement_));
}

RanStatement Connection::RunTranslated(QString statement) {
    RanStatement ran;
    ran.statement_ = std::move(statement);
    ran.query_ = std::make_shared<QSqlQuery>(db_);
    ran.query_->setForwardOnly(true);
    Send(*ran.query_, ran.statement_);
    return ran;
}

// Runs the statement through the query kept for its shape; false, with nothing run, when the
// shape is not kept so or a value cannot be bound as it reads.
bool Connection::RunKept(RanStatement& ran, const LiteralShape& cut,
                         const TranslationCache::Translated& shape) {
    const QList<qsizetype> places = shape.places;  // the cache may change under the hook
    QVariantList values;
    values.reserve(places.size());
    for (const qsizetype place : places) {
        values << BoundValue(cut.literals[place]);
        if (!values.back().isValid())
            return false;
    }
    KeptStatements::Kept& kept = kept_->For(cut.shape);
    if (kept.refused)
        return false;
    std::shared_ptr<QSqlQuery> query;
    if (!kept.idle.empty()) {
        query = std::move(kept.idle.back());
        kept.idle.pop_back();
    } else {
        if (kept.text.isEmpty())
            kept.text = shape.pieces.join(QLatin1Char('?'));
        query = std::make_shared<QSqlQuery>(db_);
        query->setForwardOnly(true);
        if (!HoldsOneStatement(kept.text, engine()) || !query->prepare(kept.text)) {
            qCDebug(lcDb).noquote() << "runs as text:" << kept.text;
            kept.refused = true;
            return false;
        }
    }
    for (qsizetype i = 0; i < values.size(); ++i)
        query->bindValue(static_cast<int>(i), values[i]);
    if (hook_)
        hook_(ran.statement_);
    if (!query->exec()) {
        // Dropped, not given back: the next run prepares anew (the table may have changed).
        const DatabaseError error(DriverMessage(query->lastError()), ran.statement_);
        qCWarning(lcDb).noquote() << error.describe();
        throw error;
    }
    ran.query_ = std::move(query);
    ran.shape_ = cut.shape;
    ran.keeper_ = kept_;
    return true;
}

int Connection::ExecuteTranslated(const QString& statement) {
    QSqlQuery query(db_);
    Send(query, statement);
    return std::max(query.numRowsAffected(), 0);
}

// The statements of a text as they go to the driver, each translated once, grouped by the
// statement of the text they came from. A statement with no counterpart here (SET NOCOUNT ON)
// gives no group; one that translates into several (a server block becomes a create and an
// insert) gives them all, in order.
QList<QStringList> Connection::OwnStatements(const QString& sql) const {
    // Most texts are one statement: only a ';' somewhere can make them more.
    const QStringList statements =
        sql.contains(QLatin1Char(';')) ? SplitSqlStatements(sql) : QStringList{sql};
    QList<QStringList> own;
    for (const QString& statement : statements) {
        const QString translated = Translate(statement).trimmed();
        if (translated.isEmpty())
            continue;
        own << (translated.contains(QLatin1Char(';')) ? SplitSqlStatements(translated)
                                                      : QStringList{translated});
    }
    return own;
}

int Connection::Execute(const QString& sql) {
    if (std::optional<LiteralShape> cut = CutLiterals(sql)) {
        const RanStatement ran = Run(sql, cut);
        return std::max(ran.query().numRowsAffected(), 0);
    }
    const QList<QStringList> statements = OwnStatements(sql);
    if (statements.size() > 1) {
        const DatabaseError error(QStringLiteral("Only one statement may be sent at a time."), sql);
        qCWarning(lcDb).noquote() << error.describe();
        throw error;
    }
    int affected = 0;
    for (const QStringList& pieces : statements) {
        for (const QString& piece : pieces)
            affected += ExecuteTranslated(piece);
    }
    return affected;
}

void Connection::ExecuteOneRow(const QString& sql) {
    if (Execute(sql) == 0) {
        const RowNotFoundError error(Translate(sql));
        qCWarning(lcDb).noquote() << error.describe();
        throw error;
    }
}

QSqlQuery& Connection::Prepared(const QString& sql) {
    Shape& shape = KeptShape(sql);
    if (shape.prepared && !stale_.contains(shape.prepared.get()))
        return *shape.prepared;
    if (shape.prepared)
        stale_.remove(shape.prepared.get());
    const QString statement = shape.pieces.join(QLatin1Char('?'));
    RequireOneStatement(statement);
    auto query = std::make_shared<QSqlQuery>(db_);
    query->setForwardOnly(true);
    if (!query->prepare(statement)) {
        const DatabaseError error(DriverMessage(query->lastError()), statement);
        qCWarning(lcDb).noquote() << error.describe();
        throw error;
    }
    shape.prepared = query;
    return *query;
}

int Connection::RunPrepared(QSqlQuery& query, const QVariantList& values) {
    if (hook_)
        hook_(query.lastQuery());
    for (qsizetype i = 0; i < values.size(); ++i)
        query.bindValue(static_cast<int>(i), values[i]);
    if (query.exec())
        return std::max(query.numRowsAffected(), 0);
    const DatabaseError error(DriverMessage(query.lastError()), query.lastQuery());
    qCWarning(lcDb).noquote() << error.describe();
    query.finish();
    // Prepared anew on its next use; the caller may still hold this one while the error goes by.
    stale_.insert(&query);
    throw error;
}

qint64 Connection::InsertWithIdentity(const QString& insertSql) {
    // Both forms come down to one INSERT, run here, and the key read on this connection right
    // after it, so another station's insert cannot be seen. The server form arrives as one
    // batch, "SET NOCOUNT ON; INSERT ...; SELECT @@IDENTITY"; anything else in it is refused.
    QString insert;
    int others = 0;
    const QStringList statements = insertSql.contains(QLatin1Char(';'))
                                       ? SplitSqlStatements(insertSql)
                                       : QStringList{insertSql.trimmed()};
    for (const QString& statement : statements) {
        if (statement.startsWith(QLatin1String("INSERT"), Qt::CaseInsensitive) &&
            insert.isEmpty()) {
            insert = statement;
        } else if (!IsIdentityQuery(statement) && !Translate(statement).trimmed().isEmpty()) {
            ++others;  // SET NOCOUNT ON translates to nothing
        }
    }
    if (insert.isEmpty() || others > 0) {
        throw DatabaseError(
            QStringLiteral("Expected one INSERT, and at most the query of its key."), insertSql);
    }
    Run(insert);
    const Recordset key(*this, QStringLiteral("SELECT @@IDENTITY"));
    return key.IsEmpty() || key.FieldCount() == 0 ? 0 : key.Long(0);
}

// The advisory lock that creating or upgrading a practice holds on the server: this key with
// the practice's schema, so practices that share a server do not wait for each other.
constexpr int kSchemaLockKey = 0x4f52564f;

void Connection::BeginTransaction(bool exclusive) {
    if (exclusive && engine() == Engine::Sqlite) {
        // Deferred, the transaction would take the write lock at its first write, and two
        // stations that both read first could never both get it.
        ExecuteTranslated(QStringLiteral("BEGIN IMMEDIATE"));
        inTransaction_ = true;
        return;
    }
    if (!db_.transaction())
        throw DatabaseError(DriverMessage(db_.lastError()), QStringLiteral("BEGIN"));
    inTransaction_ = true;
    if (exclusive) {
        ExecuteTranslated(
            QStringLiteral("SELECT pg_advisory_xact_lock(%1, hashtext(current_schema()))")
                .arg(kSchemaLockKey));
    }
}

void Connection::Commit() {
    // A failed COMMIT ends the transaction too: the engine has rolled it back.
    inTransaction_ = false;
    if (!db_.commit())
        throw DatabaseError(DriverMessage(db_.lastError()), QStringLiteral("COMMIT"));
}

void Connection::Rollback() {
    inTransaction_ = false;
    if (!db_.rollback()) {
        throw DatabaseError(DriverMessage(db_.lastError()), QStringLiteral("ROLLBACK"));
    }
}

Transaction::Transaction(Connection& connection, Mode mode)
    : connection_(connection), joined_(connection.InTransaction()) {
    if (joined_)
        return;
    const bool writeLockFirst = mode == Write && connection_.engine() == Engine::Sqlite;
    connection_.BeginTransaction(mode == Exclusive || writeLockFirst);
}

Transaction::~Transaction() {
    if (done_ || joined_)
        return;
    try {
        connection_.Rollback();
    } catch (const DatabaseError& error) {
        qCWarning(lcDb).noquote() << error.describe();
    }
}

void Transaction::Commit() {
    if (!joined_)
        connection_.Commit();
    done_ = true;
}

}  // namespace orvo::db
