#include "host/practice.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

#include "host/component_loader.h"
#include "host/host_tables.h"
#include "host/login.h"

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
    QDir dir;
    for (const char* sub : {"", "/TEMP", "/STP", "/WP"}) {
        if (!dir.mkpath(dataDir + QLatin1String(sub))) {
            throw std::runtime_error(QStringLiteral("Cannot create the data folder %1")
                                         .arg(dataDir + QLatin1String(sub))
                                         .toStdString());
        }
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
