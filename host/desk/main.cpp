// orvo-desk: the reference host. Opens a practice, logs in, and runs the editing component.
#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QFont>
#include <QFontDatabase>
#include <QInputDialog>
#include <QMessageBox>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "host/component_loader.h"
#include "host/demo_data.h"
#include "host/desk/login_dialog.h"
#include "host/desk/main_window.h"
#include "host/host_gic.h"
#include "host/lock_report.h"
#include "host/login.h"
#include "host/practice.h"
#include "platform/dialog_watcher.h"
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

bool WantsOffscreen(int argc, char** argv, const char* flag) {
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]) == flag)
            return true;
    }
    return false;
}

bool IsPrompt(const QDialog& dialog) {
    return qobject_cast<const QMessageBox*>(&dialog) || qobject_cast<const QInputDialog*>(&dialog);
}

// Watches the windows a start method brings up: the questions it asks on the way (a message box,
// a text entry) and the first screen. With a picture to take, each question is pictured and
// answered as if closed, and the screen is pictured with them drawn over it, as a person saw it
// loaded; without one, the questions wait for the person and the screen is announced once up.
class ScreenWatcher {
public:
    explicit ScreenWatcher(std::function<void(QDialog&)> onScreen, bool answerPrompts)
        : onScreen_(std::move(onScreen)),
          answerPrompts_(answerPrompts),
          watcher_([this](QDialog& dialog) { return Claim(dialog); },
                   [this](QDialog& dialog) { Act(dialog); }) {}
    bool screenSeen() const { return screenSeen_; }
    const QList<QPixmap>& prompts() const { return prompts_; }

private:
    bool Claim(QDialog& dialog) {
        if (IsPrompt(dialog))
            return answerPrompts_;
        if (screenSeen_)
            return false;
        screenSeen_ = true;
        return true;
    }

    void Act(QDialog& dialog) {
        if (!IsPrompt(dialog)) {
            onScreen_(dialog);
            return;
        }
        prompts_ << dialog.grab();
        std::printf("prompt: %s\n", qPrintable(PromptText(dialog).simplified()));
        std::fflush(stdout);
        dialog.reject();
    }

    static QString PromptText(QDialog& dialog) {
        if (auto* box = qobject_cast<QMessageBox*>(&dialog))
            return box->windowTitle() + QStringLiteral(": ") + box->text();
        if (auto* input = qobject_cast<QInputDialog*>(&dialog))
            return input->windowTitle() + QStringLiteral(": ") + input->labelText();
        return dialog.windowTitle();
    }

    std::function<void(QDialog&)> onScreen_;
    bool answerPrompts_;
    bool screenSeen_ = false;
    QList<QPixmap> prompts_;
    DialogWatcher watcher_;
};

// The screen as loaded, with the questions asked on the way drawn over its middle.
QPixmap ScreenPicture(QDialog& screen, const QList<QPixmap>& prompts) {
    QPixmap picture = screen.grab();
    QPainter painter(&picture);
    for (const QPixmap& prompt : prompts) {
        painter.drawPixmap(QPoint((picture.width() - prompt.width()) / 2,
                                  (picture.height() - prompt.height()) / 2),
                           prompt);
    }
    return picture;
}

// --open METHOD:TEXT runs one start method as the program's only window and prints the id it
// gives back; a line "shown: <caption>" tells a watching program (a second station in a test)
// that the screen is up and holds its lock. With --screenshot the screen is rendered as loaded
// instead, the questions asked on the way included, and closed without its own questions.
int OpenScreen(host::MainWindow& window, const QString& open, const QString& screenshot) {
    const qsizetype colon = open.indexOf(QLatin1Char(':'));
    if (colon < 0)
        throw std::runtime_error("--open takes METHOD:TEXT, as Ins_Company_Start:12");
    const bool picture = !screenshot.isEmpty();
    bool saved = false;
    ScreenWatcher* watching = nullptr;
    ScreenWatcher watcher(
        [&](QDialog& screen) {
            if (!picture) {
                std::printf("shown: %s\n", qPrintable(screen.windowTitle()));
                std::fflush(stdout);
                return;
            }
            saved = ScreenPicture(screen, watching->prompts()).save(screenshot);
            screen.hide();
        },
        picture);
    watching = &watcher;
    const QString id = window.RunStartMethod(open.left(colon), open.mid(colon + 1));
    if (picture && !watcher.screenSeen())
        throw std::runtime_error("no screen came up for " + open.toStdString());
    if (picture && !saved)
        throw std::runtime_error("could not write " + screenshot.toStdString());
    if (!picture)
        std::printf("%s\n", qPrintable(id));
    return 0;
}

int Run(QApplication& app, const QCommandLineParser& args) {
    if (args.isSet(QStringLiteral("locks"))) {
        const QString data = args.value(QStringLiteral("data"));
        const QByteArray report =
            host::LockReport(data.isEmpty() ? host::DefaultDataDir() : data).toUtf8();
        return std::fwrite(report.constData(), 1, report.size(), stdout) ==
                       static_cast<size_t>(report.size())
                   ? 0
                   : 1;
    }
    host::ComponentLoader component(host::DefaultComponentPath());
    host::PracticeOptions options;
    options.dataDir = args.value(QStringLiteral("data"));
    if (args.isSet(QStringLiteral("pg")))
        options.pgConnInfo = host::CheckedConnInfo(args.value(QStringLiteral("pg")));
    options.stationId = args.value(QStringLiteral("station"));
    options.pgSchema = args.value(QStringLiteral("pg-schema"));
    if (args.isSet(QStringLiteral("pg-schema")) && options.pgConnInfo.isEmpty())
        throw std::runtime_error("--pg-schema names a schema of the --pg database: give --pg too");
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
        if (!host::LoginExists(*session.connection, name))
            throw std::runtime_error(("there is no login " + name).toStdString());
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
    const QString open = args.value(QStringLiteral("open"));
    if (!open.isEmpty())
        return OpenScreen(window, open, screenshot);
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
    const bool screenshot =
        WantsOffscreen(argc, argv, "--screenshot") || WantsOffscreen(argc, argv, "--locks");
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
         QStringLiteral("Render the main window (or the --open screen) to a PNG file and exit."),
         QStringLiteral("FILE")},
        {QStringLiteral("locks"),
         QStringLiteral("List the locks held in the data folder, and by whom, then exit.")},
        {QStringLiteral("pg-schema"),
         QStringLiteral("With --pg: the schema that holds the practice (a test's own)."),
         QStringLiteral("SCHEMA")},
        {QStringLiteral("open"),
         QStringLiteral("Open one screen as the only window and print the id it gives back, as "
                        "Ins_Company_Start:12 or \"Pharmacy_Start:NEWMain Street Pharmacy\"."),
         QStringLiteral("METHOD:TEXT")},
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
