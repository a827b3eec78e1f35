#include "host/practice.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

#include "host/component_loader.h"
#include "host/host_tables.h"
#include "host/login.h"
#include "platform/file_error.h"
#include "platform/shared_files.h"

namespace orvo::host {

QString DefaultDataDir() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/orvo");
}

schema::Catalog PracticeCatalog(ComponentLoader& component) {
    schema::Catalog catalog;
    DeclareHostTables(catalog);
    component.DeclareTables(catalog);
    return catalog;
}

HostSession OpenPractice(const PracticeOptions& options, const schema::Catalog& catalog) {
    const QString dataDir =
        QDir(options.dataDir.isEmpty() ? DefaultDataDir() : options.dataDir).absolutePath();
    if (!QDir().mkpath(dataDir)) {
        throw std::runtime_error(
            QStringLiteral("Cannot create the data folder %1").arg(dataDir).toStdString());
    }
    // Every station, of whichever user, works in these: they are shared as the data folder says.
    const shared::Sharing sharing = shared::Sharing::Of(dataDir);
    for (const char* sub : {"/TEMP", "/STP", "/WP"}) {
        const QString folder = dataDir + QLatin1String(sub);
        if (const int error = shared::MakeSharedFolder(folder, sharing); error != 0)
            throw FileError(QStringLiteral("Cannot create the data folder"), folder, error);
    }

    db::ConnectionOptions connection;
    if (options.pgConnInfo.isEmpty()) {
        connection.engine = db::Engine::Sqlite;
        connection.sqliteFile = dataDir + QStringLiteral("/practice.db");
    } else {
        connection.engine = db::Engine::Postgres;
        connection.pgConnInfo = options.pgConnInfo;
        connection.pgSchema = options.pgSchema;
    }

    HostSession session;
    session.connection = db::Connection::Open(connection);
    schema::Apply(*session.connection, catalog);
    EnsureSupervisor(*session.connection);
    session.dataPath = dataDir + QLatin1Char('/');
    session.programPath = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    session.computerName = QSysInfo::machineHostName();
    session.stationId = options.stationId.isEmpty() ? session.computerName : options.stationId;
    return session;
}

}  // namespace orvo::host
