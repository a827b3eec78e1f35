#include "host/log_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "host/host_tables.h"
#include "host/practice.h"
#include "platform/db/database_error.h"

namespace orvo::host {
namespace {

QString ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

TEST(LogFileTest, APracticeLogsItsDatabaseErrorsToItsDataFolder) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    schema::Catalog catalog;
    DeclareHostTables(catalog);
    PracticeOptions options;
    options.dataDir = dir.path();
    options.stationId = QStringLiteral("FRONT1");
    HostSession session = OpenPractice(options, catalog);

    EXPECT_THROW(session.connection->Execute(QStringLiteral("UPDATE NoSuchTable SET x=1")),
                 db::DatabaseError);
    qCInfo(lcHost) << "Zoë Müller logged in";

    const QString log = ReadAll(LogFilePath(session.dataPath));
    EXPECT_TRUE(log.contains(QStringLiteral(" FRONT1 orvo.db warning: ")));
    EXPECT_TRUE(log.contains(QStringLiteral("NoSuchTable")));
    // Continuation lines of a message are indented, so each entry starts with its stamp.
    EXPECT_TRUE(log.contains(QStringLiteral("\n    Statement:")));
    EXPECT_TRUE(log.contains(QStringLiteral("FRONT1 orvo.host info: Zoë Müller logged in")));
}

}  // namespace
}  // namespace orvo::host
