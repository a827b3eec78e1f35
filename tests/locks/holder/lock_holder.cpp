// Takes record locks from a process of its own, so that the lock tests can set stations against
// each other.
//
//   lock_holder --data DIR --station S [--user U] [--computer C] lock TABLEKEY ID
//       Prints "LOCKED n" or "REFUSED". A lock is held until stdin closes, then released; or
//       until the process is killed.
//
//   lock_holder --data DIR --station S [--user U] [--computer C] table TABLENAME
//       The same for a table lock, taken without retries.
//
//   A lock file that cannot be opened prints "ERROR " and the reason, with exit code 1.
//
//   lock_holder --data DIR --station S [--user U] [--computer C]
//               contend TABLEKEY ID ROUNDS WITNESS
//       ROUNDS times: takes the lock, trying again until it has it; appends its pid to the
//       witness file, which must be empty; waits a moment; checks that its own pid is all the
//       witness holds; empties it; releases the lock. Every breach prints an "ERROR" line and
//       makes the exit code 1. Prints "DONE n" with the rounds done.
#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QStringList>
#include <QSysInfo>
#include <cstdio>
#include <iostream>
#include <string>

#include "component/record_lock.h"
#include "host/host_gic.h"
#include "host/host_session.h"
#include "platform/file_error.h"

namespace {

using orvo::component::LockRecord;
using orvo::component::LockTable;
using orvo::component::UnlockRecord;
using orvo::component::UnlockTable;

int Usage() {
    std::fprintf(stderr,
                 "usage: lock_holder --data DIR --station S [--user U] [--computer C] "
                 "(lock TABLEKEY ID | table TABLENAME | contend TABLEKEY ID ROUNDS WITNESS)\n");
    return 2;
}

void Say(const QString& line) {
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

QByteArray ReadAll(int fd) {
    QByteArray content;
    char buffer[256];
    for (off_t at = 0;;) {
        const ssize_t n = ::pread(fd, buffer, sizeof buffer, at);
        if (n <= 0)
            break;
        content.append(buffer, n);
        at += n;
    }
    return content;
}

// Says whether the lock was taken; when it was, waits for stdin to close.
bool Hold(int number) {
    if (number == 0) {
        Say(QStringLiteral("REFUSED"));
        return false;
    }
    Say(QStringLiteral("LOCKED %1").arg(number));
    std::string ignored;
    while (std::getline(std::cin, ignored)) {
    }
    return true;
}

int HoldLock(orvo::GIC& gic, const QString& tableKey, int recordId) {
    int number = LockRecord(gic, tableKey, recordId, false);
    if (Hold(number))
        UnlockRecord(gic, tableKey, recordId, number);
    return 0;
}

int HoldTable(orvo::GIC& gic, const QString& tableName) {
    int number = LockTable(gic, tableName, QString(), false, 0);
    if (Hold(number))
        UnlockTable(number);
    return 0;
}

int Contend(orvo::GIC& gic, const QString& tableKey, int recordId, int rounds,
            const QString& witnessPath) {
    const int witness = ::open(QFile::encodeName(witnessPath).constData(),
                               O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (witness < 0) {
        Say(QStringLiteral("ERROR cannot open the witness file"));
        return 1;
    }
    const QByteArray mine = QByteArray::number(QCoreApplication::applicationPid()) + '\n';
    int breaches = 0;
    int done = 0;
    for (; done < rounds; ++done) {
        int number = 0;
        while ((number = LockRecord(gic, tableKey, recordId, false)) == 0) {
            ::usleep(QRandomGenerator::global()->bounded(50, 500));
        }
        const QByteArray before = ReadAll(witness);
        if (!before.isEmpty()) {
            ++breaches;
            Say(QStringLiteral("ERROR round %1: found %2")
                    .arg(done)
                    .arg(QString::fromLatin1(before.simplified())));
        }
        if (::write(witness, mine.constData(), mine.size()) != mine.size()) {
            Say(QStringLiteral("ERROR round %1: cannot write the witness").arg(done));
        }
        ::usleep(200);
        const QByteArray after = ReadAll(witness);
        if (after != mine) {
            ++breaches;
            Say(QStringLiteral("ERROR round %1: witness holds %2")
                    .arg(done)
                    .arg(QString::fromLatin1(after.simplified())));
        }
        if (::ftruncate(witness, 0) != 0)
            Say(QStringLiteral("ERROR cannot empty the witness"));
        UnlockRecord(gic, tableKey, recordId, number);
    }
    ::close(witness);
    Say(QStringLiteral("DONE %1").arg(done));
    return breaches == 0 ? 0 : 1;
}

int Run(orvo::GIC& gic, const QString& mode, const QStringList& args) {
    const QString tableKey = args[1];
    const int recordId = args[2].toInt();
    if (mode == QLatin1String("lock") && args.size() == 3)
        return HoldLock(gic, tableKey, recordId);
    if (mode == QLatin1String("contend") && args.size() == 5) {
        return Contend(gic, tableKey, recordId, args[3].toInt(), args[4]);
    }
    return Usage();
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);

    orvo::host::HostSession session;
    session.loginName = QStringLiteral("HOLDER");
    session.computerName = QSysInfo::machineHostName();
    while (args.size() >= 2 && args.first().startsWith(QLatin1String("--"))) {
        const QString option = args.takeFirst();
        const QString value = args.takeFirst();
        if (option == QLatin1String("--data")) {
            session.dataPath = value.endsWith(QLatin1Char('/')) ? value : value + QLatin1Char('/');
        } else if (option == QLatin1String("--station")) {
            session.stationId = value;
        } else if (option == QLatin1String("--user")) {
            session.loginName = value;
        } else if (option == QLatin1String("--computer")) {
            session.computerName = value;
        } else {
            return Usage();
        }
    }
    if (session.dataPath.isEmpty() || session.stationId.isEmpty() || args.size() < 2) {
        return Usage();
    }
    orvo::host::HostGIC gic(session);
    const QString mode = args[0];
    try {
        if (mode == QLatin1String("table") && args.size() == 2)
            return HoldTable(gic, args[1]);
        if (args.size() < 3)
            return Usage();
        return Run(gic, mode, args);
    } catch (const orvo::FileError& error) {
        Say(QStringLiteral("ERROR ") + error.describe());
        return 1;
    }
}
