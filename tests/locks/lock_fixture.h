#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "component/record_lock.h"
#include "host/host_gic.h"
#include "host/host_session.h"
#include "tests/support/scripted_prompts.h"

// gtest shows a QString that differs as text.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

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

// The scripted prompts, keeping the icon of each message as well.
class LockPrompts : public orvo::test::ScriptedPrompts {
public:
    int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                int defaultButton) override {
        icons.push_back(icon);
        if (onMessage)
            onMessage();
        return ScriptedPrompts::Message(text, buttons, icon, title, defaultButton);
    }
    std::vector<Icon> icons;
    std::function<void()> onMessage;
};

class LockTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        session.dataPath = dir.path() + QLatin1Char('/');
        session.loginName = QStringLiteral("ADMIN");
        session.stationId = QStringLiteral("FRONT1");
        session.computerName = QStringLiteral("FRONTDESK-PC");
        gic = std::make_unique<LockGIC>(session);
    }

    QString TempPath(const QString& name) const {
        return dir.path() + QStringLiteral("/TEMP/") + name;
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

    QTemporaryDir dir;
    host::HostSession session;
    std::unique_ptr<LockGIC> gic;
    LockPrompts prompts;
    orvo::test::PromptsScope scope{prompts};
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
