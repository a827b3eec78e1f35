#pragma once

#include <QStandardPaths>
#include <QString>
#include <QtGlobal>

// Where a component writes its registration and a host looks it up: an INI file with one group
// per class id, "Classes/<class id>", holding the class's Name and the Library that makes it.
namespace orvo::registry {

// ORVO_REGISTRY when set; otherwise components.ini in the user's orvo configuration folder.
inline QString RegistryFile() {
    const QString named = qEnvironmentVariable("ORVO_REGISTRY");
    if (!named.isEmpty())
        return named;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/orvo/components.ini");
}

inline QString ClassGroup(const QString& classId) {
    return QStringLiteral("Classes/") + classId;
}
inline constexpr const char* kNameKey = "Name";
inline constexpr const char* kLibraryKey = "Library";

}  // namespace orvo::registry
