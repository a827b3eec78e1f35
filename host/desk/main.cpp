// orvo-desk: the reference host. Opens a practice, logs in, and runs the editing component.
#include <QApplication>
#include <QCommandLineParser>
#include <QFont>
#include <QFontDatabase>
#include <QTimer>
#include <cstdio>

#include "host/component_loader.h"
#include "host/demo_data.h"
#include "host/desk/login_dialog.h"
#include "host/desk/main_window.h"
#include "host/host_gic.h"
#include "host/login.h"
#include "host/practice.h"
#include "platform/prompts.h"

namespace {

using namespace orvo;

// Screenshots must look the same on every machine: one font, one pixel per point.
void UseFixedLook() {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    QApplication::setStyle(QStringLiteral("Fusion"));
}

bool WantsOffscreen(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]) == "--screenshot")
            return true;
    }
    return false;
}

int Run(QApplication& app, const QCommandLineParser& args) {
    host::ComponentLoader component(host::DefaultComponentPath());
    host::PracticeOptions options;
    options.dataDir = args.value(QStringLiteral("data"));
    options.pgConnInfo = args.value(QStringLiteral("pg"));
    options.stationId = args.value(QStringLiteral("station"));
    host::HostSession session = host::OpenPractice(options, host::PracticeCatalog(component));
    if (args.isSet(QStringLiteral("demo")))
        host::SeedDemoPractice(session);

    host::HostGIC gic(session);
    const QString screenshot = args.value(QStringLiteral("screenshot"));
    if (args.isSet(QStringLiteral("login")) || !screenshot.isEmpty()) {
        // Without the dialog only a login that has no password may be used.
        const QString name = args.value(QStringLiteral("login")).isEmpty()
                                 ? QStringLiteral("SUPERVISOR")
                                 : args.value(QStringLiteral("login")).toUpper();
        if (!host::VerifyLogin(*session.connection, gic, name, QString())) {
            throw std::runtime_error(
                ("the login " + name + " has a password: log in through the dialog").toStdString());
        }
        session.loginName = name;
    } else {
        host::LoginDialog login(gic);
        if (login.exec() != QDialog::Accepted)
            return 0;
        session.loginName = login.loginName();
    }

    host::MainWindow window(session, gic, component);
    if (!screenshot.isEmpty()) {
        window.show();
        QApplication::processEvents();
        if (!window.grab().save(screenshot)) {
            throw std::runtime_error(("cannot write " + screenshot).toStdString());
        }
        return 0;
    }
    window.show();
    return app.exec();
}

}  // namespace

int main(int argc, char** argv) {
    const bool screenshot = WantsOffscreen(argc, argv);
    if (screenshot) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_SCALE_FACTOR", "1");
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvo-desk"));
    QApplication::setOrganizationName(QStringLiteral("orvo"));
    if (screenshot)
        UseFixedLook();

    QCommandLineParser args;
    args.setApplicationDescription(QStringLiteral("ORVO Windows: the practice's editing screens."));
    args.addHelpOption();
    args.addOptions({
        {QStringLiteral("data"), QStringLiteral("The practice's data folder."),
         QStringLiteral("DIR")},
        {QStringLiteral("pg"), QStringLiteral("PostgreSQL connection (libpq conninfo)."),
         QStringLiteral("CONNINFO")},
        {QStringLiteral("demo"),
         QStringLiteral("Create and seed a demo practice when it is empty.")},
        {QStringLiteral("station"),
         QStringLiteral("This station's id (default: the computer's name)."),
         QStringLiteral("NAME")},
        {QStringLiteral("login"), QStringLiteral("Log in as NAME without the login dialog."),
         QStringLiteral("NAME")},
        {QStringLiteral("screenshot"),
         QStringLiteral("Render the main window to a PNG file and exit."), QStringLiteral("FILE")},
    });
    args.process(app);
    try {
        return Run(app, args);
    } catch (const orvo::db::DatabaseError& error) {
        std::fprintf(stderr, "orvo-desk: %s\n", qPrintable(error.describe()));
        if (!screenshot) {
            orvo::prompts().Message(error.describe(), orvo::Buttons::Ok, orvo::Icon::Critical,
                                    QStringLiteral("ORVO Windows"));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orvo-desk: %s\n", error.what());
        if (!screenshot) {
            orvo::prompts().Message(QString::fromLocal8Bit(error.what()), orvo::Buttons::Ok,
                                    orvo::Icon::Critical, QStringLiteral("ORVO Windows"));
        }
    }
    return 1;
}
