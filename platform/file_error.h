#pragma once

#include <QString>
#include <stdexcept>

namespace orvo {

// A file of the shared data folder that cannot be made, opened or written: what was being done,
// the path, and the operating system's reason. The boundary of a start method shows it as it
// shows a database error; it is never passed off as some other condition (a record locked by
// another station, say).
class FileError : public std::runtime_error {
public:
    // doing: "Cannot open the lock file"; errorNumber: the errno of the failed call.
    FileError(const QString& doing, const QString& path, int errorNumber);

    const QString& path() const { return path_; }
    int errorNumber() const { return errorNumber_; }
    // "Cannot open the lock file /srv/orvo/TEMP/1A2F.INS: Permission denied".
    QString describe() const;

private:
    QString path_;
    int errorNumber_;
};

}  // namespace orvo
