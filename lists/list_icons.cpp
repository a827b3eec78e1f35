#include "lists/list_icons.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace orvo::lists {

QIcon ToolbarIcon(const QString& programPath, const QString& fileName, const QString& themeName) {
    if (!programPath.isEmpty()) {
        const QString path = programPath + QStringLiteral("ICO/Large/") + fileName;
        if (QFileInfo::exists(path)) {
            const QIcon own(path);
            if (!own.isNull())
                return own;
        }
    }
    // A desktop without a theme of its own (a bare session, the offscreen platform) still
    // finds the free theme the program installs with it.
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == QLatin1String("hicolor")) {
        QStringList paths = QIcon::themeSearchPaths();
        for (const QString& dir :
             QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                       QStandardPaths::LocateDirectory)) {
            if (!paths.contains(dir))
                paths << dir;
        }
        QIcon::setThemeSearchPaths(paths);
        QIcon::setThemeName(QStringLiteral("Adwaita"));
    }
    return QIcon::fromTheme(themeName);
}

}  // namespace orvo::lists
