#pragma once

#include <QString>

#include "host/host_session.h"
#include "platform/schema/schema.h"

namespace orvo::host {

class ComponentLoader;

// Where a practice lives: its data folder, shared by every station, and its database (the
// embedded file in the data folder, or a server when pgConnInfo is set).
struct PracticeOptions {
    QString dataDir;     // empty: the user's data folder
    QString pgConnInfo;  // libpq conninfo; empty for the embedded engine
    QString stationId;   // empty: the computer's name
    QString pgSchema;    // a schema searched first (a scenario's own database); usually empty
};

QString DefaultDataDir();

// A --pg value checked before any connection is tried: libpq's key=value form, with values
// plain or in single quotes. An empty or malformed one throws, naming the fault but never a
// value (one may be a password), so that a typo never falls back to another database.
QString CheckedConnInfo(const QString& conninfo);

// The host's own tables and the component's, as one catalog.
schema::Catalog PracticeCatalog(ComponentLoader& component);

// Opens (and creates or upgrades) the practice: the data folder with TEMP/, STP/ and WP/, the
// database at the catalog's version. The login is left empty for the caller to set.
HostSession OpenPractice(const PracticeOptions& options, const schema::Catalog& catalog);

}  // namespace orvo::host
