#pragma once

// Folders and files that every user of a practice can open.
//
// The stations of one practice usually run as different operating-system users on one shared
// data folder. What one of them creates there, the others must be able to open: a lock file
// that only its maker may write locks the record against everyone else for good (they all open
// it read only), and a lock left by a crashed station of another user could never be taken over.
//
// The data folder itself says how its contents are shared:
//   - A data folder that anyone may write (o+w) is shared with everyone: the folders we make in
//     it are rwxrwxrwx and the files rw-rw-rw-. No sticky bit, since a station must be able to
//     delete the lock files that a station of another user left behind.
//   - Any other data folder is shared through its group, which is then the practice's group:
//     the folders we make get that group, group write and the setgid bit (so that whatever is
//     made in them, by anyone, keeps the group), and the files get that group and group write.
//     What other users may read or enter follows the data folder.
// Modes are set with chmod after each creation, never left to the mode given to mkdir or open:
// the process umask (022, often 077) would take the group's write away. Only the owner of a file
// can change its mode and group, so a file that another user made is left as its maker set it;
// one of our own made before these rules is brought to them when we open it again.

#include <sys/types.h>
#include <QByteArray>
#include <QLoggingCategory>
#include <QString>

// Files and folders that could not be shared with the practice's other users.
Q_DECLARE_LOGGING_CATEGORY(lcFiles)

namespace orvo::shared {

struct Sharing {
    mode_t folderMode = 0;
    mode_t fileMode = 0;
    gid_t group = static_cast<gid_t>(-1);  // -1: whatever group the file gets

    // How what is made in dataFolder is shared, from the folder's own mode and group. Sets
    // errorNumber (else left alone) and answers the shared-with-everyone rule when the folder
    // cannot be read.
    static Sharing Of(const QString& dataFolder, int* errorNumber = nullptr);
};

// Makes the folder path (one level, in a folder that exists) as sharing says, unless it exists.
// A new folder appears whole: it is made aside, given its group and mode, and renamed into
// place, so that a station never finds it half set up. An existing folder of ours is brought to
// the rule. Answers 0, or the errno of what failed (ENOTDIR when a file is in the way).
int MakeSharedFolder(const QString& path, const Sharing& sharing);

// Gives a file just opened the group and mode of the rule, when the file is ours.
void ShareFile(int fd, const Sharing& sharing);

// open(2) of path with flags (O_CLOEXEC added); a file it creates, or one of ours it opens, is
// shared as the rule says. -1 with errno set when it fails.
int OpenShared(const QString& path, int flags, const Sharing& sharing);

// Writes the whole file aside and renames it into place, shared, so that a reader finds either
// the old content or the new one, never a part. Answers 0 or the errno of what failed.
int WriteSharedFile(const QString& path, const QByteArray& bytes, const Sharing& sharing);

}  // namespace orvo::shared
