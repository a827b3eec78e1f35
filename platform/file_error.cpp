#include "platform/file_error.h"

#include <cstring>

namespace orvo {

FileError::FileError(const QString& doing, const QString& path, int errorNumber)
    : std::runtime_error((doing + QLatin1Char(' ') + path + QStringLiteral(": ") +
                          QString::fromLocal8Bit(std::strerror(errorNumber)))
                             .toStdString()),
      path_(path),
      errorNumber_(errorNumber) {}

QString FileError::describe() const {
    return QString::fromStdString(what());
}

}  // namespace orvo
