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

// The host's own tables and the component's, as one catalog.
schema::Catalog PracticeCatalog(ComponentLoader& component);

// Opens (and creates or upgrades) the practice: the data folder with TEMP/, STP/ and WP/, the
// database at the catalog's version. The login is left empty for the caller to set.
HostSession OpenPractice(const PracticeOptions& options, const schema::Catalog& catalog);

}  // namespace orvo::host
