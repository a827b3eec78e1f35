#include "platform/shared_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QLoggingCategory>
#include <cerrno>
#include <cstdio>
#include <cstring>

Q_LOGGING_CATEGORY(lcFiles, "orvo.files")

namespace orvo::shared {
namespace {

constexpr mode_t kPermissionBits = 07777;

bool IsOurs(const struct stat& st) {
    return st.st_uid == ::geteuid();
}

bool WantsGroup(const struct stat& st, const Sharing& sharing) {
    return sharing.group != static_cast<gid_t>(-1) && st.st_gid != sharing.group;
}

// Brings a folder of ours to the rule. The group goes first: changing it may clear the setgid
// bit, which the mode then sets again.
void ShareFolder(const QByteArray& path, const struct stat& st, const Sharing& sharing) {
    if (!IsOurs(st))
        return;
    if (WantsGroup(st, sharing) && ::chown(path.constData(), -1, sharing.group) != 0) {
        qCWarning(lcFiles) << "Cannot give" << path
                           << "the practice's group:" << std::strerror(errno);
    }
    if ((st.st_mode & kPermissionBits) != sharing.folderMode || WantsGroup(st, sharing)) {
        if (::chmod(path.constData(), sharing.folderMode) != 0)
            qCWarning(lcFiles) << "Cannot share" << path << std::strerror(errno);
    }
}

}  // namespace

Sharing Sharing::Of(const QString& dataFolder, int* errorNumber) {
    struct stat st {};
    if (::stat(QFile::encodeName(dataFolder).constData(), &st) != 0) {
        if (errorNumber)
            *errorNumber = errno;
        return {0777, 0666};
    }
    if (st.st_mode & S_IWOTH)
        return {0777, 0666};
    const mode_t otherFolder = st.st_mode & (S_IROTH | S_IXOTH);
    const mode_t otherFile = st.st_mode & S_IROTH;
    return {static_cast<mode_t>(S_ISGID | 0770 | otherFolder),
            static_cast<mode_t>(0660 | otherFile), st.st_gid};
}

int MakeSharedFolder(const QString& path, const Sharing& sharing) {
    const QByteArray native =
        QFile::encodeName(path.endsWith(QLatin1Char('/')) ? path.chopped(1) : path);
    struct stat st {};
    if (::stat(native.constData(), &st) == 0) {
        if (!S_ISDIR(st.st_mode))
            return ENOTDIR;
        ShareFolder(native, st, sharing);
        return 0;
    }
    if (errno != ENOENT)
        return errno;

    const QByteArray aside = native + ".new" + QByteArray::number(::getpid());
    if (::mkdir(aside.constData(), 0700) != 0)
        return errno;
    if (::stat(aside.constData(), &st) == 0)
        ShareFolder(aside, st, sharing);
    if (::renameat2(AT_FDCWD, aside.constData(), AT_FDCWD, native.constData(), RENAME_NOREPLACE) ==
        0) {
        return 0;
    }
    const int error = errno;
    ::rmdir(aside.constData());
    if (error == EEXIST)
        return 0;  // another station made it meanwhile
    if (error != EINVAL && error != ENOSYS)
        return error;
    // A file system that cannot rename without replacing: made in place, shared a moment later.
    if (::mkdir(native.constData(), 0700) != 0 && errno != EEXIST)
        return errno;
    if (::stat(native.constData(), &st) != 0)
        return errno;
    ShareFolder(native, st, sharing);
    return 0;
}

void ShareFile(int fd, const Sharing& sharing) {
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !IsOurs(st))
        return;
    if (WantsGroup(st, sharing) && ::fchown(fd, -1, sharing.group) != 0)
        qCWarning(lcFiles) << "Cannot give a file the practice's group:" << std::strerror(errno);
    if ((st.st_mode & kPermissionBits) != sharing.fileMode && ::fchmod(fd, sharing.fileMode) != 0)
        qCWarning(lcFiles) << "Cannot share a file:" << std::strerror(errno);
}

int OpenShared(const QString& path, int flags, const Sharing& sharing) {
    const QByteArray native = QFile::encodeName(path);
    int fd = -1;
    do {
        fd = ::open(native.constData(), flags | O_CLOEXEC, 0600);
    } while (fd < 0 && errno == EINTR);
    if (fd >= 0)
        ShareFile(fd, sharing);
    return fd;
}

int WriteSharedFile(const QString& path, const QByteArray& bytes, const Sharing& sharing) {
    const QString aside = path + QLatin1Char('.') + QString::number(::getpid());
    const int fd = OpenShared(aside, O_WRONLY | O_CREAT | O_TRUNC, sharing);
    if (fd < 0)
        return errno;
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        written += n;
    }
    const int writeError = written == bytes.size() ? 0 : (errno ? errno : EIO);
    ::close(fd);
    const QByteArray nativeAside = QFile::encodeName(aside);
    if (writeError == 0 &&
        ::rename(nativeAside.constData(), QFile::encodeName(path).constData()) == 0) {
        return 0;
    }
    const int error = writeError ? writeError : errno;
    ::unlink(nativeAside.constData());
    return error;
}

}  // namespace orvo::shared
