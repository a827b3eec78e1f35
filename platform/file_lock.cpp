#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <utility>

namespace orvo {
namespace {

// A name that keeps being released and taken again between our open and our lock is, for all
// practical purposes, held.
constexpr int kMaxOpenRounds = 100;

bool IsSameFile(int fd, const QByteArray& path) {
    struct stat held {};
    struct stat named {};
    return ::fstat(fd, &held) == 0 && ::stat(path.constData(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

struct flock WholeFile(short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 0;
    return lock;
}

}  // namespace

FileLock::FileLock(FileLock&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)),
      outcome_(other.outcome_),
      error_(other.error_),
      path_(std::move(other.path_)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        fd_ = std::exchange(other.fd_, -1);
        outcome_ = other.outcome_;
        error_ = other.error_;
        path_ = std::move(other.path_);
    }
    return *this;
}

FileLock FileLock::Take(const QString& path, const shared::Sharing& sharing) {
    return Open(path, true, sharing);
}

FileLock FileLock::TakeExisting(const QString& path) {
    return Open(path, false, {});
}

FileLock FileLock::Open(const QString& path, bool create, const shared::Sharing& sharing) {
    FileLock lock;
    lock.path_ = path;
    const QByteArray native = QFile::encodeName(path);
    for (int round = 0; round < kMaxOpenRounds; ++round) {
        int fd = -1;
        if (create) {
            fd = shared::OpenShared(path, O_RDWR | O_CREAT, sharing);
        } else {
            do {
                fd = ::open(native.constData(), O_RDWR | O_CLOEXEC);
            } while (fd < 0 && errno == EINTR);
        }
        if (fd < 0) {
            lock.error_ = errno;
            lock.outcome_ = lock.error_ == EMFILE || lock.error_ == ENFILE ? Outcome::TooManyFiles
                                                                           : Outcome::Failed;
            return lock;
        }
        struct flock whole = WholeFile(F_WRLCK);
        if (::fcntl(fd, F_OFD_SETLK, &whole) != 0) {
            lock.error_ = errno;
            ::close(fd);
            lock.outcome_ =
                lock.error_ == EAGAIN || lock.error_ == EACCES ? Outcome::Refused : Outcome::Failed;
            return lock;
        }
        if (IsSameFile(fd, native)) {
            lock.fd_ = fd;
            lock.error_ = 0;
            lock.outcome_ = Outcome::Locked;
            return lock;
        }
        ::close(fd);
    }
    lock.outcome_ = Outcome::Refused;
    return lock;
}

void FileLock::DeleteWhileHeld(const QStringList& companions) {
    if (fd_ < 0)
        return;
    const QByteArray native = QFile::encodeName(path_);
    if (!IsSameFile(fd_, native))
        return;
    for (const QString& companion : companions)
        ::unlink(QFile::encodeName(companion).constData());
    ::unlink(native.constData());
}

void FileLock::Release() {
    if (fd_ < 0)
        return;
    ::close(std::exchange(fd_, -1));
}

bool FileLock::IsHeldElsewhere(const QString& path) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct flock probe = WholeFile(F_WRLCK);
    const bool locked = ::fcntl(fd, F_OFD_GETLK, &probe) == 0 && probe.l_type != F_UNLCK;
    ::close(fd);
    return locked;
}

}  // namespace orvo
