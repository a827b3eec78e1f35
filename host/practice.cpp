#include "host/practice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTemporaryFile>

#include "host/component_loader.h"
#include "host/host_tables.h"
#include "host/log_file.h"
#include "host/login.h"
#include "platform/db/recordset.h"
#include "platform/file_error.h"
#include "platform/shared_files.h"

namespace orvo::host {

QString DefaultDataDir() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/orvo");
}

QString CheckedConnInfo(const QString& conninfo) {
    const QString text = conninfo.trimmed();
    auto fail = [](const QString& why) {
        throw std::runtime_error(
            (QStringLiteral("--pg: ") + why +
             QStringLiteral(" (give key=value pairs, as \"host=/run/postgresql dbname=orvo\")"))
                .toStdString());
    };
    if (text.isEmpty())
        fail(QStringLiteral("the connection is empty"));
    if (text.startsWith(QLatin1String("postgres://")) ||
        text.startsWith(QLatin1String("postgresql://"))) {
        fail(QStringLiteral("a URI is not taken"));
    }
    qsizetype i = 0;
    auto skipBlanks = [&] {
        while (i < text.size() && text[i].isSpace())
            ++i;
    };
    while (true) {
        skipBlanks();
        if (i >= text.size())
            break;
        const qsizetype keyStart = i;
        while (i < text.size() && (text[i].isLetterOrNumber() || text[i] == QLatin1Char('_')))
            ++i;
        const QString key = text.mid(keyStart, i - keyStart);
        if (key.isEmpty())
            fail(QStringLiteral("a key is missing where the text has \"%1\"").arg(text[i]));
        skipBlanks();
        if (i >= text.size() || text[i] != QLatin1Char('='))
            fail(QStringLiteral("the key %1 has no value").arg(key));
        ++i;
        skipBlanks();
        if (i < text.size() && text[i] == QLatin1Char('\'')) {
            ++i;
            while (i < text.size() && text[i] != QLatin1Char('\''))
                i += text[i] == QLatin1Char('\\') ? 2 : 1;
            if (i >= text.size())
                fail(QStringLiteral("the quoted value of %1 is not closed").arg(key));
            ++i;
        } else {
            const qsizetype valueStart = i;
            while (i < text.size() && !text[i].isSpace())
                ++i;
            if (i == valueStart)
                fail(QStringLiteral("the key %1 has no value").arg(key));
        }
    }
    return text;
}

schema::Catalog PracticeCatalog(ComponentLoader& component) {
    schema::Catalog catalog;
    DeclareHostTables(catalog);
    component.DeclareTables(catalog);
    return catalog;
}

namespace {

[[noreturn]] void NotAPractice(const QString& file, const QString& why) {
    throw std::runtime_error(
        QStringLiteral("%1 is not a practice database: %2").arg(file, why).toStdString());
}

// Every station writes its locks and logs in the data folder, so one that cannot be written
// is said plainly before anything else fails in a stranger way.
void CheckWritable(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("/.orvo-write-XXXXXX"));
    if (!probe.open()) {
        throw std::runtime_error(
            QStringLiteral("The data folder %1 is read-only to this user: every station writes "
                           "its locks and logs there.")
                .arg(folder)
                .toStdString());
    }
}

// A file that is there must look like an embedded database whole: its header, a page size the
// engine uses, and all the pages the header counts (a copy cut short fails here, not halfway
// through an upgrade).
void CheckDatabaseFile(const QString& path) {
    QFile file(path);
    if (!file.exists() || file.size() == 0)
        return;  // a new practice
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(("cannot read " + path).toStdString());
    const QByteArray header = file.read(100);
    if (header.size() < 100 || !header.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        NotAPractice(path, QStringLiteral("it is not a database file"));
    auto number = [&](int at, int bytes) {
        quint32 value = 0;
        for (int i = 0; i < bytes; ++i)
            value = (value << 8) | quint8(header[at + i]);
        return value;
    };
    const quint32 pageSize = number(16, 2) == 1 ? 65536 : number(16, 2);
    if (pageSize < 512 || (pageSize & (pageSize - 1)) != 0)
        NotAPractice(path, QStringLiteral("its header is damaged"));
    const bool countValid = number(92, 4) == number(24, 4);
    const qint64 pages = number(28, 4);
    if (file.size() % pageSize != 0 || (countValid && file.size() < pages * pageSize))
        NotAPractice(path, QStringLiteral("the file is cut short or damaged"));
}

}  // namespace

HostSession OpenPractice(const PracticeOptions& options, const schema::Catalog& catalog) {
    const QString dataDir =
        QDir(options.dataDir.isEmpty() ? DefaultDataDir() : options.dataDir).absolutePath();
    if (!QDir().mkpath(dataDir)) {
        throw std::runtime_error(
            QStringLiteral("Cannot create the data folder %1").arg(dataDir).toStdString());
    }
    CheckWritable(dataDir);
    // Every station, of whichever user, works in these: they are shared as the data folder says.
    const shared::Sharing sharing = shared::Sharing::Of(dataDir);
    for (const char* sub : {"/TEMP", "/STP", "/WP"}) {
        const QString folder = dataDir + QLatin1String(sub);
        if (const int error = shared::MakeSharedFolder(folder, sharing); error != 0)
            throw FileError(QStringLiteral("Cannot create the data folder"), folder, error);
        CheckWritable(folder);
    }

    const QString stationId =
        options.stationId.isEmpty() ? QSysInfo::machineHostName() : options.stationId;
    WriteLogToDataFolder(dataDir, stationId);

    db::ConnectionOptions connection;
    if (options.pgConnInfo.isEmpty()) {
        connection.engine = db::Engine::Sqlite;
        connection.sqliteFile = dataDir + QStringLiteral("/practice.db");
        CheckDatabaseFile(connection.sqliteFile);
    } else {
        connection.engine = db::Engine::Postgres;
        connection.pgConnInfo = CheckedConnInfo(options.pgConnInfo);
        connection.pgSchema = options.pgSchema;
    }

    HostSession session;
    session.connection = db::Connection::Open(connection);
    if (connection.engine == db::Engine::Sqlite &&
        schema::StoredVersion(*session.connection) == 0 &&
        db::ReadScalar(*session.connection,
                       QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type='table'"))
                .toInt() > 0) {
        NotAPractice(connection.sqliteFile, QStringLiteral("it holds another program's tables"));
    }
    schema::Apply(*session.connection, catalog, EnsureSupervisor);
    session.dataPath = dataDir + QLatin1Char('/');
    session.programPath = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    session.computerName = QSysInfo::machineHostName();
    session.stationId = stationId;
    return session;
}

}  // namespace orvo::host
