#pragma once

#include <QIcon>
#include <QString>

namespace orvo::lists {

// A toolbar picture: the file of that name in the program's ICO/Large/ folder when the practice
// supplies one, otherwise the desktop's icon theme under themeName.
QIcon ToolbarIcon(const QString& programPath, const QString& fileName, const QString& themeName);

}  // namespace orvo::lists
