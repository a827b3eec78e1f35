#pragma once

// An exclusive lock on a file: an open-file-description lock (fcntl F_OFD_SETLK, a write lock
// over the whole file) taken on an open of it. Such a lock is refused to every other open of the
// file, in another process and in this one alike, and the kernel drops it when the holding
// process dies or the open is closed. Stations of a practice use these on small files in the
// shared data folder to keep each other off a record or a table; no server takes part.
//
// A lock counts only on the file that still carries the name. A holder may delete the file
// before it lets go (it deletes nothing it does not hold); an open that raced such a release has
// locked a file that is gone, or no longer under the name, and opens the name again.

#include <QString>
#include <QStringList>

#include "platform/shared_files.h"

namespace orvo {

class FileLock {
public:
    enum class Outcome {
        Locked,        // held by this object
        Refused,       // another open holds it
        TooManyFiles,  // the process or the system will open no more files
        Failed,        // the file cannot be opened or locked: error() says why
    };

    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Opens path, creating it shared as the rule says when it is missing, and locks it.
    static FileLock Take(const QString& path, const shared::Sharing& sharing);
    // The same for a file that must exist already: a missing one is Failed with ENOENT.
    static FileLock TakeExisting(const QString& path);

    bool held() const { return fd_ >= 0; }
    Outcome outcome() const { return outcome_; }
    // The errno behind Failed or TooManyFiles.
    int error() const { return error_; }
    const QString& path() const { return path_; }

    // Deletes the locked file, and the companions named, while the lock is still held, so that
    // nobody can take the lock between the delete and the release. Nothing is deleted when the
    // name no longer leads to the file held.
    void DeleteWhileHeld(const QStringList& companions = {});
    // Closes the file, which lets the lock go. Nothing happens when nothing is held.
    void Release();

    // True when another open of the file (in any process, this one included) holds a lock on
    // it. A missing file is not locked.
    static bool IsHeldElsewhere(const QString& path);

private:
    static FileLock Open(const QString& path, bool create, const shared::Sharing& sharing);

    int fd_ = -1;
    Outcome outcome_ = Outcome::Failed;
    int error_ = 0;
    QString path_;
};

}  // namespace orvo
