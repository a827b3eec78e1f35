// Taking and giving back a record lock against the bare system calls under it. LockRecord plus
// UnlockRecord also keeps the station list and writes the holder file; the floor is one open,
// one OFD lock, one close and one delete of a single file in the same folder. The figure to read
// is the ratio of the two times. TEMP lives in a temporary folder on the local disk.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "bench/gen/bench_support.h"
#include "component/record_lock.h"
#include "host/host_gic.h"
#include "host/host_session.h"

namespace {

using namespace orvo;

struct Fixture {
    QTemporaryDir dir;
    host::HostSession session;
    std::unique_ptr<host::HostGIC> gic;
};

Fixture& TheFixture() {
    static Fixture f;
    if (!f.gic) {
        f.session.dataPath = f.dir.path() + QLatin1Char('/');
        f.session.loginName = QStringLiteral("ADMIN");
        f.session.stationId = QStringLiteral("FRONT1");
        f.session.computerName = QStringLiteral("FRONTDESK-PC");
        f.gic = std::make_unique<host::HostGIC>(f.session);
        QDir().mkpath(f.session.dataPath + QStringLiteral("TEMP"));
    }
    return f;
}

void BareOpenLockCloseUnlink(benchmark::State& state) {
    const QByteArray path = QFile::encodeName(TheFixture().session.dataPath + "TEMP/1A2F.INS");
    for (auto _ : state) {
        const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        if (fd < 0 || ::fcntl(fd, F_OFD_SETLK, &lock) != 0) {
            state.SkipWithError("open or lock failed");
            break;
        }
        ::unlink(path.constData());
        ::close(fd);
    }
    state.SetItemsProcessed(state.iterations());
}

// Held: how many other records this station holds meanwhile, which the station list searches.
void LockAndUnlockRecord(benchmark::State& state) {
    Fixture& f = TheFixture();
    std::vector<int> held;
    for (int i = 0; i < state.range(0); ++i) {
        held.push_back(component::LockRecord(*f.gic, QStringLiteral("PATABLE"), 100000 + i, false));
    }
    for (auto _ : state) {
        int number = component::LockRecord(*f.gic, QStringLiteral("INSCOTABLE"), 6703, false);
        if (number == 0) {
            state.SkipWithError("lock refused");
            break;
        }
        component::UnlockRecord(*f.gic, QStringLiteral("INSCOTABLE"), 6703, number);
    }
    for (int i = 0; i < static_cast<int>(held.size()); ++i) {
        component::UnlockRecord(*f.gic, QStringLiteral("PATABLE"), 100000 + i, held[i]);
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BareOpenLockCloseUnlink)->Unit(benchmark::kMicrosecond);
BENCHMARK(LockAndUnlockRecord)->Arg(0)->Arg(20)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    return orvo::bench::RunBenchmarks(argc, argv);
}
