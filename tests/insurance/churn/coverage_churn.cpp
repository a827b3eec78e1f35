// A station in a process of its own that changes one person's coverage again and again: adds a
// coverage on a random subscriber link, changes or removes a random one of the person's, all
// silent, as fast as it can. Prints "done N" with the number of changes that went through (each
// wrote one history note at least) and exits 0; any error is printed and exits 1, a chain found
// broken after a step exits 2.
//
// usage: coverage_churn (--sqlite FILE | --pg CONNINFO --schema NAME) --person ID --steps N
//                       --seed N --station NAME
#include <QCoreApplication>
#include <QRandomGenerator>
#include <QSet>
#include <QThread>
#include <cstdio>

#include "host/host_gic.h"
#include "insurance/coverage_engine.h"
#include "platform/db/recordset.h"

using namespace orvo;

namespace {

// A host that takes its time to hear of a change, inside the writer's transaction: the other
// station's reads then fall between this one's writes and its commit as often as can be.
class SlowHost : public host::HostGIC {
public:
    using HostGIC::HostGIC;
    void CoverageChanged(int personId) override {
        QThread::msleep(2);
        HostGIC::CoverageChanged(personId);
    }
};

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const auto value = [&](const QString& name) {
        const int at = args.indexOf(name);
        return at >= 0 && at + 1 < args.size() ? args[at + 1] : QString();
    };
    try {
        db::ConnectionOptions options;
        if (!value(QStringLiteral("--sqlite")).isEmpty()) {
            options.sqliteFile = value(QStringLiteral("--sqlite"));
        } else {
            options.engine = db::Engine::Postgres;
            options.pgConnInfo = value(QStringLiteral("--pg"));
            options.pgSchema = value(QStringLiteral("--schema"));
        }
        host::HostSession session;
        session.connection = db::Connection::Open(options);
        session.loginName = value(QStringLiteral("--station"));
        session.stationId = session.loginName;
        session.today = QDate(2024, 3, 15);
        SlowHost gic(session);
        const int person = value(QStringLiteral("--person")).toInt();
        const int steps = value(QStringLiteral("--steps")).toInt();
        QRandomGenerator random(value(QStringLiteral("--seed")).toUInt());

        QList<int> links;
        db::Recordset rs(*session.connection,
                         QStringLiteral("SELECT PatEmpID FROM PatEmpTable WHERE PatEmpFla=0"));
        for (; !rs.Eof(); rs.MoveNext())
            links << static_cast<int>(rs.Long(0));
        if (links.isEmpty())
            throw std::runtime_error("no subscriber links to cover the person by");

        int done = 0;
        for (int step = 0; step < steps; ++step) {
            // What the person has is read outside the writer, as a screen shows it: by the time
            // the writer runs, the other station may have changed it.
            const QList<insurance::CoverageRow> rows =
                insurance::Load_Coverage_Rows(gic, person, false);
            const int link = links[random.bounded(links.size())];
            const int pick = rows.isEmpty() ? 0 : rows[random.bounded(rows.size())].detail.CovID;
            const int action = rows.isEmpty() ? 0 : random.bounded(3);
            bool update = true;
            bool failed = true;
            insurance::Update_Coverage(gic, person, action == 0 ? 0 : pick, action == 2 ? 0 : link,
                                       true, update, failed);
            if (!failed)
                ++done;
            // Whatever the other station is doing, what is committed is whole: the orders of
            // the person's active coverage run 1..n, one coverage per subscriber link.
            QSet<int> seen;
            int order = 0;
            for (const insurance::CoverageRow& row :
                 insurance::Load_Coverage_Rows(gic, person, false)) {
                if (row.detail.CovOrd != ++order || seen.contains(row.PatEmpID)) {
                    std::printf("fault at step %d: coverage %d at order %d\n", step,
                                row.detail.CovID, row.detail.CovOrd);
                    return 2;
                }
                seen << row.PatEmpID;
            }
        }
        std::printf("done %d\n", done);
        return 0;
    } catch (const std::exception& error) {
        std::printf("error %s\n", error.what());
        return 1;
    }
}
