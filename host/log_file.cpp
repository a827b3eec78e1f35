#include "host/log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <cstdio>

#include "platform/shared_files.h"

Q_LOGGING_CATEGORY(lcHost, "orvo.host")

namespace orvo::host {
namespace {

struct LogTarget {
    QMutex mutex;
    QString path;
    QString station;
    QtMessageHandler previous = nullptr;
    bool installed = false;
};

LogTarget& Target() {
    static LogTarget target;
    return target;
}

const char* LevelWord(QtMsgType type) {
    switch (type) {
        case QtDebugMsg:
            return "debug";
        case QtInfoMsg:
            return "info";
        case QtWarningMsg:
            return "warning";
        case QtCriticalMsg:
            return "critical";
        case QtFatalMsg:
            return "fatal";
    }
    return "?";
}

// Stations of one practice often run as different users: the log is shared like every other
// file of the data folder, and each line goes in one write in append mode, so that lines of
// several stations never interleave.
void Append(const QString& path, const QString& line) {
    const int fd = shared::OpenShared(path, O_WRONLY | O_APPEND | O_CREAT,
                                      shared::Sharing::Of(QFileInfo(path).absolutePath()));
    if (fd < 0)
        return;
    const QByteArray bytes = line.toUtf8();
    [[maybe_unused]] const ssize_t written = ::write(fd, bytes.constData(), bytes.size());
    ::close(fd);
}

void Handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    LogTarget& target = Target();
    QtMessageHandler previous = nullptr;
    {
        QMutexLocker lock(&target.mutex);
        previous = target.previous;
        const QString category = QString::fromLatin1(context.category ? context.category : "");
        // Qt's own debug chatter stays out of the practice's log.
        const bool ours = category.startsWith(QLatin1String("orvo"));
        if (!target.path.isEmpty() && (ours || type != QtDebugMsg)) {
            QString text = message;
            text.replace(QLatin1Char('\n'), QStringLiteral("\n    "));
            Append(target.path,
                   QStringLiteral("%1 %2 %3 %4: %5\n")
                       .arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs),
                            target.station.isEmpty() ? QStringLiteral("-") : target.station,
                            category.isEmpty() ? QStringLiteral("default") : category,
                            QString::fromLatin1(LevelWord(type)), text));
        }
    }
    if (previous) {
        previous(type, context, message);
    } else {
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    }
}

}  // namespace

QString LogFilePath(const QString& dataPath) {
    return QDir(dataPath).filePath(QStringLiteral("STP/ORVO.LOG"));
}

void WriteLogToDataFolder(const QString& dataPath, const QString& stationId) {
    LogTarget& target = Target();
    QMutexLocker lock(&target.mutex);
    target.path = LogFilePath(dataPath);
    target.station = stationId;
    if (!target.installed) {
        target.installed = true;
        target.previous = qInstallMessageHandler(&Handle);
    }
}

}  // namespace orvo::host
