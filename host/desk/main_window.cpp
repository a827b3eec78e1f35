#include "host/desk/main_window.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "component/public/component_types.h"
#include "host/component_loader.h"
#include "host/desk/coverage_history_dialog.h"
#include "host/desk/person_commands.h"
#include "host/host_gic.h"
#include "host/host_persons.h"
#include "host/host_session.h"
#include "host/start_methods.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "platform/user_action.h"

namespace orvo::host {
namespace {

struct Figure {
    const char* label;
    const char* statement;
};

const Figure kFigures[] = {
    {"Insurance companies", "SELECT count(*) FROM InsCoTable"},
    {"Pharmacies", "SELECT count(*) FROM PhaTable"},
    {"Electronic payers", "SELECT count(*) FROM ePayerTable"},
    {"Active employer-plan links", "SELECT count(*) FROM ELTable WHERE elFla=0"},
    {"Active subscriber links", "SELECT count(*) FROM PatEmpTable WHERE PatEmpFla=0"},
    {"Active coverages", "SELECT count(*) FROM CovTable WHERE CovFla=0"},
    {"City, state and zip rows", "SELECT count(*) FROM ZipCodTable"},
    {"Logins", "SELECT count(*) FROM PWMTable"},
};

}  // namespace

MainWindow::MainWindow(HostSession& session, HostGIC& gic, ComponentLoader& component)
    : session_(session), gic_(gic), component_(component) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("ORVO Windows"));
    listEvents_.observer = [this](const QString& event) {
        statusBar()->showMessage(tr("List event: %1").arg(QString(event).replace(QChar(10), " ")));
    };

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    auto* heading = new QLabel(tr("Practice"));
    heading->setStyleSheet(QStringLiteral("font-size: 15pt; font-weight: bold;"));
    layout->addWidget(heading);
    auto* where =
        new QLabel(tr("Data folder: %1\nDatabase: %2")
                       .arg(session_.dataPath,
                            session_.connection->engine() == db::Engine::Sqlite
                                ? tr("embedded (%1)").arg(session_.connection->options().sqliteFile)
                                : tr("PostgreSQL server")));
    where->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(where);
    summary_ = new QTableWidget(0, 2);
    summary_->setObjectName(QStringLiteral("grdSummary"));
    summary_->setHorizontalHeaderLabels({tr("Records"), tr("Count")});
    summary_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    summary_->verticalHeader()->hide();
    summary_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    summary_->setSelectionMode(QAbstractItemView::NoSelection);
    summary_->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(summary_);
    setCentralWidget(central);

    BuildMenus();
    statusBar()->addPermanentWidget(new QLabel(tr("Login: %1").arg(session_.loginName)));
    statusBar()->addPermanentWidget(new QLabel(tr("Station: %1").arg(session_.stationId)));
    resize(720, 460);
    gic_.SetMainForm(this);
    Refresh();
}

MainWindow::~MainWindow() = default;

void MainWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Refresh"), QKeySequence::Refresh, this, &MainWindow::Refresh);
    file->addAction(tr("Rebuild Family &Head List"), this, &MainWindow::RebuildFamilyHeads);
    file->addSeparator();
    file->addAction(tr("E&xit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu* insurance = menuBar()->addMenu(tr("&Insurance"));
    insurance->addAction(tr("Open &Carrier..."), this, [this] {
        OpenFromMenu(QStringLiteral("Ins_Company_Start"), false, tr("carrier"));
    });
    insurance->addAction(tr("&New Carrier..."), this, [this] {
        OpenFromMenu(QStringLiteral("Ins_Company_Start"), true, tr("carrier"));
    });
    insurance->addSeparator();
    insurance->addAction(tr("Open &Pharmacy..."), this, [this] {
        OpenFromMenu(QStringLiteral("Pharmacy_Start"), false, tr("pharmacy"));
    });
    insurance->addAction(tr("New P&harmacy..."), this, [this] {
        OpenFromMenu(QStringLiteral("Pharmacy_Start"), true, tr("pharmacy"));
    });
    AddPersonCommands(*menuBar(), *this);
    AddCoverageHistoryCommand(*menuBar(), session_, *this);
    QMenu* lists = menuBar()->addMenu(tr("&Lists"));
    lists->setObjectName(QStringLiteral("mnuLists"));
    for (int type = lulProvider; type <= lulCapPlans; ++type) {
        const auto listType = static_cast<LookUpListTypes>(type);
        QString title = LookUpListTitle(listType);
        if (listType == lulPhysician2)
            title += tr(" (second physician)");
        lists->addAction(title + QStringLiteral("..."), this, [this, type] { OpenList(type); });
    }
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About"), this, [this] {
        prompts().Message(tr("ORVO Windows editing component, reference host."), Buttons::Ok,
                          Icon::Information, tr("About"));
    });
}

void MainWindow::Refresh() {
    summary_->setRowCount(0);
    RunUserAction(windowTitle(), [this] {
        for (const Figure& figure : kFigures) {
            const int row = summary_->rowCount();
            summary_->insertRow(row);
            summary_->setItem(row, 0, new QTableWidgetItem(tr(figure.label)));
            auto* count = new QTableWidgetItem(
                db::ReadScalar(*session_.connection, QLatin1String(figure.statement)).toString());
            count->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            summary_->setItem(row, 1, count);
        }
    });
}

void MainWindow::RebuildFamilyHeads() {
    RunUserAction(tr("Rebuild Family Head List"), [this] {
        // The banner goes before any error is shown.
        struct Banner {
            Banner() {
                prompts().ShowBanner(
                    MainWindow::tr("  Rebuilding the list of family heads - Please Wait  "));
            }
            ~Banner() { prompts().HideBanner(); }
        } banner;
        const int heads = RebuildFamilyHeadIndex(*session_.connection);
        statusBar()->showMessage(tr("%1 family heads listed").arg(heads));
    });
    Refresh();
}

QString MainWindow::RunStartMethod(const QString& method, const QString& text) {
    const QStringList results = RunStartMethodWith(method, {text});
    return results.value(FindStartMethod(method)->resultIndex);
}

QStringList MainWindow::RunStartMethodWith(const QString& method, const QStringList& args) {
    StartInstances on(component_, gic_, this);
    on.SetListEvents(&listEvents_);
    return host::RunStartMethod(on, method, args);
}

void MainWindow::OpenFromMenu(const QString& method, bool asNew, const QString& noun) {
    const QString title = asNew ? tr("New %1").arg(noun) : tr("Open %1").arg(noun);
    const auto answer = prompts().Input(
        asNew ? tr("Name of the new %1:").arg(noun) : tr("ID number of the %1:").arg(noun), title);
    if (!answer || answer->trimmed().isEmpty())
        return;
    const QString text = asNew ? QStringLiteral("NEW") + answer->trimmed() : answer->trimmed();
    RunUserAction(title, [&] {
        const QString id = RunStartMethod(method, text);
        statusBar()->showMessage(tr("%1 returned the id %2").arg(method, id));
    });
    Refresh();
}

void MainWindow::OpenList(int listType) {
    const QString title = LookUpListTitle(static_cast<LookUpListTypes>(listType));
    RunUserAction(title, [&] {
        const QString id = RunStartMethod(QStringLiteral("ShowList"), QString::number(listType));
        if (id != QLatin1String("0"))
            statusBar()->showMessage(tr("%1: record %2 chosen").arg(title, id));
    });
    Refresh();
}

}  // namespace orvo::host
