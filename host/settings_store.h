#pragma once

#include <QString>
#include <QVariant>
#include <functional>

#include "platform/db/connection.h"

namespace orvo::host {

// The practice's settings by section, key and scope, kept in the host's settings table. A value
// is stored as text with the name of its type, and read back as the type of the default the
// reader gives (or as the stored type when it gives none).
class SettingsStore {
public:
    // Section of the per-station settings; a station's key is its id followed by the key.
    static const QString kStationSection;

    using ConnectionSource = std::function<db::Connection&()>;
    explicit SettingsStore(ConnectionSource connection) : connection_(std::move(connection)) {}

    QVariant Read(const QString& section, const QString& key, int scope,
                  const QVariant& defaultValue) const;
    // Writing an invalid value clears the setting, so that its readers fall back on their
    // default.
    void Write(const QString& section, const QString& key, int scope, const QVariant& value) const;

private:
    ConnectionSource connection_;
};

}  // namespace orvo::host
