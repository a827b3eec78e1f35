// Stations of one practice that run as different operating-system users on one data folder. The
// users are made up for the test (unused uids and gids, set in the station's process before it
// starts), so the test needs root; elsewhere it is skipped and says why.
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <memory>

#include "host/host_tables.h"
#include "host/practice.h"
#include "platform/lock_files.h"
#include "tests/locks/lock_fixture.h"
#include "tests/locks/station.h"

namespace orvo::locks::test {
namespace {

using namespace orvo::component;

// An id above the usual ranges that names no user and no group on this machine.
id_t UnusedId(id_t from) {
    for (id_t id = from;; ++id) {
        if (::getpwuid(id) == nullptr && ::getgrgid(id) == nullptr)
            return id;
    }
}

struct FileMode {
    mode_t mode = 0;
    gid_t group = 0;
    bool operator==(const FileMode&) const = default;
};

std::ostream& operator<<(std::ostream& out, const FileMode& file) {
    return out << std::oct << file.mode << std::dec << " group " << file.group;
}

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

FileMode ModeOf(const QString& path) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return {};
    return {static_cast<mode_t>(st.st_mode & 07777), st.st_gid};
}

class PracticeUsersTest : public LockTest {
protected:
    void SetUp() override {
        LockTest::SetUp();
        if (::geteuid() != 0)
            GTEST_SKIP() << "needs root to run stations as two other operating-system users";
        practiceGroup = UnusedId(61000);
        alice = {UnusedId(practiceGroup + 1), 0, {}};
        alice.gid = alice.uid;
        bob = {UnusedId(alice.uid + 1), 0, {}};
        bob.gid = bob.uid;
        // The test's own folder is private; the practice's folder lies in it.
        ASSERT_EQ(::chmod(QFile::encodeName(folder_->path()).constData(), 0755), 0);
        data = folder_->filePath("practice");
        ASSERT_TRUE(QDir().mkdir(data));
        Station probe(data, "PROBE", "PROBE", "PC", {}, alice);
        if (!probe.process().waitForFinished(60000) || probe.process().exitCode() != 2) {
            GTEST_SKIP() << "lock_holder cannot run as another user here: "
                         << qPrintable(HolderProgram()) << " "
                         << qPrintable(probe.process().readAllStandardError());
        }
    }

    // The data folder of a practice whose users share its group.
    void ShareThroughGroup() {
        ASSERT_EQ(::chown(QFile::encodeName(data).constData(), 0, practiceGroup), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(data).constData(), 0770), 0);
        alice.groups = {practiceGroup};
        bob.groups = {practiceGroup};
    }

    std::unique_ptr<Station> Start(const OsUser& user, const QString& login,
                                   const QStringList& command) {
        return std::make_unique<Station>(data, login + "-PC", login, login + "-PC", command, user);
    }
    QString Temp(const QString& name = {}) const { return data + "/TEMP/" + name; }

    // Alice's locks, live, released and left by a killed station, are Bob's to take.
    void BobTakesOverAlicesLocks() {
        auto alices = Start(alice, "ALICE", {"lock", "INSCOTABLE", "6703"});
        ASSERT_EQ(alices->ReadLine(), "LOCKED 1");
        EXPECT_EQ(Start(bob, "BOB", {"lock", "INSCOTABLE", "6703"})->ReadLine(), "REFUSED");
        ASSERT_TRUE(alices->Release());
        auto bobs = Start(bob, "BOB", {"lock", "INSCOTABLE", "6703"});
        EXPECT_EQ(bobs->ReadLine(), "LOCKED 1");
        ASSERT_TRUE(bobs->Release());

        // A station of Alice's switched off: its files stay behind, Bob opens and then
        // deletes them.
        auto crashed = Start(alice, "ALICE", {"lock", "PATABLE", "12"});
        ASSERT_EQ(crashed->ReadLine(), "LOCKED 1");
        ASSERT_TRUE(crashed->Kill());
        ASSERT_TRUE(QFile::exists(Temp("C.PAT.UserData")));
        bobs = Start(bob, "BOB", {"lock", "PATABLE", "12"});
        EXPECT_EQ(bobs->ReadLine(), "LOCKED 1");
        EXPECT_EQ(lockfiles::ReadRecordHolder(Temp("C.PAT.UserData")).user, "BOB");
        ASSERT_TRUE(bobs->Release());
        EXPECT_FALSE(QFile::exists(Temp("C.PAT")));
        EXPECT_FALSE(QFile::exists(Temp("C.PAT.UserData")));

        // A table lock's files stay on disk after each use, and pass from user to user.
        alices = Start(alice, "ALICE", {"table", "IPTable"});
        ASSERT_EQ(alices->ReadLine(), "LOCKED 1");
        EXPECT_EQ(Start(bob, "BOB", {"table", "IPTable"})->ReadLine(), "REFUSED");
        ASSERT_TRUE(alices->Release());
        bobs = Start(bob, "BOB", {"table", "IPTable"});
        EXPECT_EQ(bobs->ReadLine(), "LOCKED 1");
        EXPECT_EQ(Read(Temp("IPTable.Who")), "BOB                      ");
        ASSERT_TRUE(bobs->Release());
    }

    QString data;
    gid_t practiceGroup = 0;
    OsUser alice;
    OsUser bob;
};

TEST_F(PracticeUsersTest, UsersWhoShareTheDataFoldersGroupTakeEachOthersLocks) {
    ShareThroughGroup();
    BobTakesOverAlicesLocks();

    // The folder keeps the practice's group for whatever is made in it, and neither user's
    // umask of 077 took the group's write away.
    EXPECT_EQ(ModeOf(Temp()), (FileMode{S_ISGID | 0770, practiceGroup}));
    for (const char* name : {"IPTable.LCK", "IPTable.Who", "ALICE-PC.LCK", "BOB-PC.LCK"})
        EXPECT_EQ(ModeOf(Temp(name)), (FileMode{0660, practiceGroup})) << name;

    // Others may read what they may read of the data folder, no more.
    ASSERT_EQ(::chmod(QFile::encodeName(data).constData(), 0775), 0);
    ASSERT_TRUE(QDir(Temp()).removeRecursively());
    session_.dataPath = data + "/";
    HeldRecord mine(host(), "EMPTABLE", 1);
    ASSERT_GT(mine.number, 0);
    EXPECT_EQ(ModeOf(Temp()), (FileMode{S_ISGID | 0775, practiceGroup}));
    EXPECT_EQ(ModeOf(Temp("1.EMP")), (FileMode{0664, practiceGroup}));
    EXPECT_EQ(ModeOf(Temp("1.EMP.UserData")), (FileMode{0664, practiceGroup}));
}

TEST_F(PracticeUsersTest, AWorldWritableDataFolderSharesWithEveryone) {
    // Alice and Bob have no group in common.
    ASSERT_EQ(::chmod(QFile::encodeName(data).constData(), 0777), 0);
    BobTakesOverAlicesLocks();
    EXPECT_EQ(ModeOf(Temp()), (FileMode{0777, alice.gid}));
    EXPECT_EQ(ModeOf(Temp("IPTable.LCK")).mode, 0666u);
    EXPECT_EQ(ModeOf(Temp("BOB-PC.LCK")).mode, 0666u);
}

TEST_F(PracticeUsersTest, APracticeOpenedByOneUserIsOpenToTheOthers) {
    ShareThroughGroup();
    schema::Catalog catalog;
    host::DeclareHostTables(catalog);
    host::PracticeOptions options;
    options.dataDir = data;
    host::OpenPractice(options, catalog);
    for (const char* folder : {"TEMP", "STP", "WP"}) {
        EXPECT_EQ(ModeOf(data + "/" + folder), (FileMode{S_ISGID | 0770, practiceGroup})) << folder;
    }
    auto bobs = Start(bob, "BOB", {"lock", "PATABLE", "12"});
    EXPECT_EQ(bobs->ReadLine(), "LOCKED 1");
}

TEST_F(PracticeUsersTest, ALockFolderOfOursMadeBeforeIsBroughtToTheRule) {
    ShareThroughGroup();
    // A folder and a lock file of ours left as the umask made them.
    ASSERT_EQ(::mkdir(QFile::encodeName(Temp()).constData(), 0700), 0);
    const int stale = ::open(QFile::encodeName(Temp("C.PAT")).constData(), O_CREAT | O_RDWR, 0600);
    ASSERT_GE(stale, 0);
    ::close(stale);
    session_.dataPath = data + "/";
    {
        HeldRecord mine(host(), "PATABLE", 12);
        ASSERT_GT(mine.number, 0);
        EXPECT_EQ(ModeOf(Temp()), (FileMode{S_ISGID | 0770, practiceGroup}));
        EXPECT_EQ(ModeOf(Temp("C.PAT")), (FileMode{0660, practiceGroup}));
    }
    // The same kind of folder of another user stays as it is, and then nobody else can lock: the
    // system's reason is told, not a lock held by someone.
    ASSERT_TRUE(QDir(Temp()).removeRecursively());
    ASSERT_EQ(::mkdir(QFile::encodeName(Temp()).constData(), 0700), 0);
    ASSERT_EQ(::chown(QFile::encodeName(Temp()).constData(), alice.uid, alice.gid), 0);
    auto bobs = Start(bob, "BOB", {"lock", "PATABLE", "12"});
    EXPECT_EQ(bobs->ReadLine(),
              "ERROR Cannot open the lock file " + Temp("C.PAT") + ": Permission denied");
    EXPECT_EQ(ModeOf(Temp()), (FileMode{0700, alice.gid}));
}

}  // namespace
}  // namespace orvo::locks::test
