#pragma once

// A station in a process of its own: tests/locks/holder/lock_holder.cpp, optionally run as
// another operating-system user.
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QProcess>
#include <optional>
#include <vector>

namespace orvo::locks::test {

inline QString HolderProgram() {
    const QString built = qEnvironmentVariable("ORVO_BUILD_DIR");
    if (!built.isEmpty())
        return built + QStringLiteral("/bin/lock_holder");
    return QCoreApplication::applicationDirPath() + QStringLiteral("/lock_holder");
}

// Who a station process runs as: uid and gid, its further groups, and a umask that takes away
// all that it can.
struct OsUser {
    uid_t uid = 0;
    gid_t gid = 0;
    std::vector<gid_t> groups;
    mode_t umask = 077;
};

// One lock_holder process, as station "station" of user "user" on computer "computer".
class Station {
public:
    Station(const QString& dataPath, const QString& station, const QString& user,
            const QString& computer, const QStringList& command,
            std::optional<OsUser> osUser = std::nullopt) {
        process_.setProgram(HolderProgram());
        process_.setArguments(QStringList{"--data", dataPath, "--station", station, "--user", user,
                                          "--computer", computer} +
                              command);
        if (osUser) {
            // Runs in the child between fork and exec: system calls only.
            process_.setChildProcessModifier([user = *osUser] {
                if (::setgroups(user.groups.size(), user.groups.data()) != 0 ||
                    ::setresgid(user.gid, user.gid, user.gid) != 0 ||
                    ::setresuid(user.uid, user.uid, user.uid) != 0) {
                    ::_exit(125);
                }
                ::umask(user.umask);
            });
        }
        process_.start();
    }
    ~Station() {
        if (process_.state() == QProcess::NotRunning)
            return;
        process_.kill();
        process_.waitForFinished();
    }
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    // The next line the station prints, or "<none>" when it printed nothing in time.
    QString ReadLine() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60000))
                return QStringLiteral("<none>");
        }
        return QString::fromLocal8Bit(process_.readLine()).trimmed();
    }
    // Closes its stdin: a holder then releases its lock and ends.
    bool Release() {
        process_.closeWriteChannel();
        return process_.waitForFinished(60000) && process_.exitCode() == 0;
    }
    bool Kill() {
        process_.kill();
        return process_.waitForFinished(60000);
    }
    QProcess& process() { return process_; }

private:
    QProcess process_;
};

}  // namespace orvo::locks::test
