#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "component/record_lock.h"
#include "host/host_gic.h"
#include "host/host_session.h"
#include "tests/support/practice_fixture.h"
#include "tests/support/qt_print.h"

namespace orvo::locks::test {

// The host over a session with no database: the locks need only the identity and the folder.
// Waits are counted instead of waited.
class LockGIC : public host::HostGIC {
public:
    using host::HostGIC::HostGIC;
    void PauseMilliseconds(int milliseconds) override {
        ++pauses;
        lastPause = milliseconds;
        if (onPause)
            onPause(pauses);
    }
    int pauses = 0;
    int lastPause = -1;
    std::function<void(int pauses)> onPause;
};

// A practice of files only, logged in as ADMIN on station FRONT1 of the computer FRONTDESK-PC,
// whose host counts its waits instead of waiting.
class LockTest : public orvo::test::FolderPracticeTest {
protected:
    void SetUp() override {
        orvo::test::FolderPracticeTest::SetUp();
        session_.loginName = QStringLiteral("ADMIN");
        session_.computerName = QStringLiteral("FRONTDESK-PC");
    }
    std::unique_ptr<host::HostGIC> MakeHost(host::HostSession& session) override {
        return std::make_unique<LockGIC>(session);
    }
    LockGIC& host() { return static_cast<LockGIC&>(*gic_); }

    QString TempPath(const QString& name) const {
        return dataPath() + QStringLiteral("TEMP/") + name;
    }
    QByteArray ReadTemp(const QString& name) const {
        QFile file(TempPath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    bool TempExists(const QString& name) const { return QFile::exists(TempPath(name)); }
    void WriteTemp(const QString& name, const QByteArray& content) const {
        WriteFile(TempPath(name), content);
    }
    static void WriteFile(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    }
};

// A record lock given back at the end of the scope, so that a failing test leaves no file
// number taken for the next.
class HeldRecord {
public:
    HeldRecord(GIC& gic, QString tableKey, int recordId, bool showMessage = false)
        : gic_(gic), tableKey_(std::move(tableKey)), recordId_(recordId) {
        number = component::LockRecord(gic_, tableKey_, recordId_, showMessage);
    }
    ~HeldRecord() { Release(); }
    HeldRecord(const HeldRecord&) = delete;
    HeldRecord& operator=(const HeldRecord&) = delete;
    void Release() { component::UnlockRecord(gic_, tableKey_, recordId_, number); }

    int number = 0;

private:
    GIC& gic_;
    QString tableKey_;
    int recordId_;
};

inline const QString kLockedOffer =
    QStringLiteral("\r\n\r\nClick [OK] to open a read-only copy of this patient's record.");

inline QString LockedBy(const QString& user, const QString& computer) {
    return QStringLiteral("This entry is locked for editing by user [") + user +
           QStringLiteral("] on computer [") + computer + QStringLiteral("].") + kLockedOffer;
}

}  // namespace orvo::locks::test
