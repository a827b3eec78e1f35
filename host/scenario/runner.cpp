#include "host/scenario/runner.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTimer>

#include "host/component_loader.h"
#include "host/host_gic.h"
#include "host/practice.h"
#include "host/scenario/scenario_database.h"
#include "host/scenario/verbs.h"
#include "host/start_methods.h"
#include "platform/db/recordset.h"
#include "platform/dialog_watcher.h"
#include "platform/prompts.h"
#include "platform/scripted_prompts.h"

namespace orvo::scenario {

void Throw(const QString& message) {
    throw StepFailure(message.toStdString());
}

Runner::Runner(const RunOptions& options, host::ComponentLoader& component)
    : options_(options),
      component_(component),
      // Each modal screen that comes up is noted, and the steps go on inside its own loop.
      watcher_([this](QDialog& dialog) { return ClaimScreen(dialog); },
               [this](QDialog&) { RunSteps(); }) {}

Runner::~Runner() = default;

db::Connection& Runner::db() {
    return *session_->connection;
}

void Runner::Fail(const QString& message) {
    if (failure_.isEmpty())
        failure_ = message;
}

bool Runner::Run(const Scenario& scenario) {
    QTemporaryDir data;
    scenario_ = &scenario;
    pc_ = 0;
    failure_.clear();
    screens_.clear();
    lastArgs_.clear();
    std::unique_ptr<ScenarioDatabase> server;
    try {
        if (!data.isValid())
            throw std::runtime_error("cannot make a data folder: " +
                                     data.errorString().toStdString());
        if (!options_.pgConnInfo.isEmpty()) {
            server = std::make_unique<ScenarioDatabase>(options_.pgConnInfo);
            pgConnInfo_ = server->conninfo();
            pgSchema_ = server->schema();
        }
        RunScenario(data.path());
    } catch (const std::exception& error) {
        Fail(QString::fromLocal8Bit(error.what()));
    } catch (...) {
        Fail(QStringLiteral("an unknown error ended the scenario"));
    }
    CloseOtherStations();
    instances_.reset();
    SetPrompts(nullptr);
    prompts_.reset();
    gic_.reset();
    session_.reset();
    server.reset();
    scenario_ = nullptr;
    // Only a failed scenario's folder is kept, for a look at what it left.
    const bool keep = options_.keepData && !failure_.isEmpty();
    data.setAutoRemove(!keep);
    if (keep)
        failure_ += QStringLiteral(" (data kept in %1)").arg(data.path());
    return failure_.isEmpty();
}

void Runner::RunScenario(const QString& dataDir) {
    host::PracticeOptions practice;
    practice.dataDir = dataDir;
    practice.pgConnInfo = pgConnInfo_;
    practice.pgSchema = pgSchema_;
    practice.stationId = options_.stationId;
    session_ = std::make_unique<host::HostSession>(
        host::OpenPractice(practice, host::PracticeCatalog(component_)));
    session_->loginName = QStringLiteral("SUPERVISOR");
    gic_ = std::make_unique<host::HostGIC>(*session_);
    prompts_ = std::make_unique<ScriptedPrompts>([this](const QString& message) { Fail(message); });
    SetPrompts(prompts_.get());
    instances_ = std::make_unique<host::StartInstances>(component_, *gic_);
    listEvents_.Take();
    instances_->SetListEvents(&listEvents_);

    QTimer watchdog;
    watchdog.setSingleShot(true);
    connect(&watchdog, &QTimer::timeout, this, [this] {
        Fail(QStringLiteral("timed out"));
        CloseAllScreens();
    });
    watchdog.start(120000);
    RunSteps();
    if (failure_.isEmpty() && prompts_->pending() > 0) {
        Fail(QStringLiteral("%1 expected prompt(s) never came").arg(prompts_->pending()));
    }
}

bool Runner::ClaimScreen(QDialog& dialog) {
    if (!scenario_ || dialog.windowModality() == Qt::NonModal)
        return false;
    for (const auto& open : screens_) {
        if (open == &dialog)
            return false;
    }
    screens_.emplace_back(&dialog);
    return true;
}

void Runner::RunSteps() {
    QPointer<QDialog> mine = screens_.empty() ? nullptr : screens_.back();
    const bool onScreen = !screens_.empty();
    while (pc_ < scenario_->steps.size() && failure_.isEmpty()) {
        if (onScreen && (!mine || !mine->isVisible()))
            break;
        const Step& step = scenario_->steps[pc_++];
        try {
            Do(step);
            // A person waits for the screen to settle before the next thing: what the step set
            // going (a question asked once the focus has moved, a list filled) runs now.
            for (int i = 0; i < 3; ++i)
                QCoreApplication::processEvents();
        } catch (const std::exception& error) {
            Fail(QStringLiteral("line %1 (%2): %3")
                     .arg(step.line)
                     .arg(step.verb, QString::fromLocal8Bit(error.what())));
        }
    }
    if (onScreen && mine && mine->isVisible()) {
        if (failure_.isEmpty()) {
            Fail(QStringLiteral("the scenario ended with the screen \"%1\" still open")
                     .arg(mine->windowTitle()));
        }
        CloseAllScreens();
    }
    if (!failure_.isEmpty())
        CloseAllScreens();
    while (!screens_.empty() && (!screens_.back() || !screens_.back()->isVisible()))
        screens_.pop_back();
}

void Runner::CloseAllScreens() {
    // Hiding ends a modal loop without the screen's own close questions.
    for (auto it = screens_.rbegin(); it != screens_.rend(); ++it) {
        if (*it && (*it)->isVisible())
            (*it)->hide();
    }
}

QDialog* Runner::ActiveScreen() const {
    for (auto it = screens_.rbegin(); it != screens_.rend(); ++it) {
        if (*it && (*it)->isVisible())
            return *it;
    }
    Throw(QStringLiteral("no screen is open"));
}

QWidget* Runner::Control(const Step& step, int argIndex) const {
    if (step.args.size() <= argIndex)
        Throw(QStringLiteral("a control's name is missing"));
    QDialog* screen = ActiveScreen();
    const QString name = step.args[argIndex];
    QWidget* w = screen->objectName() == name ? screen : screen->findChild<QWidget*>(name);
    if (!w)
        Throw(
            QStringLiteral("the screen \"%1\" has no control %2").arg(screen->windowTitle(), name));
    return w;
}

QString Runner::Expand(const QString& text) const {
    QString out = text;
    for (int i = lastArgs_.size(); i >= 1; --i)
        out.replace(QStringLiteral("$arg%1").arg(i), lastArgs_[i - 1]);
    if (session_)
        out.replace(QStringLiteral("$DATA/"), session_->dataPath);
    return out;
}

void Runner::Do(const Step& raw) {
    const Verb* verb = FindVerb(raw.verb);
    if (!verb)
        Throw(QStringLiteral("unknown step"));
    Step step = raw;
    for (QString& a : step.args)
        a = Expand(a);
    step.rest = Expand(step.rest);
    if (!verb->takesStatement && step.args.size() < verb->minArgs)
        Throw(QStringLiteral("it takes: %1").arg(QLatin1String(verb->usage)));
    verb->run(*this, step);
}

// "station NAME opens METHOD TEXT [as LOGIN]" starts orvo-desk as station NAME on this
// practice with that one screen open, and goes on once the screen is up (and so holds its lock).
// "station NAME closes" ends it, as a station that is switched off: its locks go with it.
void Runner::Station(const Step& step) {
    const QString name = step.args[0];
    if (step.args[1] == QLatin1String("closes")) {
        auto it = stations_.find(name);
        if (it == stations_.end())
            Throw(QStringLiteral("no station %1 is running").arg(name));
        it->second->kill();
        it->second->waitForFinished(10000);
        stations_.erase(it);
        return;
    }
    if (step.args[1] != QLatin1String("opens") || step.args.size() < 4) {
        Throw(QStringLiteral("station NAME opens METHOD TEXT [as LOGIN], or station NAME closes"));
    }
    if (stations_.count(name))
        Throw(QStringLiteral("station %1 is running already").arg(name));
    const QString login = step.args.size() >= 6 && step.args[4] == QLatin1String("as")
                              ? step.args[5]
                              : QStringLiteral("SUPERVISOR");
    QStringList arguments{
        QStringLiteral("--data"),    session_->dataPath,
        QStringLiteral("--station"), name,
        QStringLiteral("--login"),   login,
        QStringLiteral("--open"),    step.args[2] + QLatin1Char(':') + step.args[3]};
    if (!pgConnInfo_.isEmpty())
        arguments << QStringLiteral("--pg") << pgConnInfo_;
    if (!pgSchema_.isEmpty())
        arguments << QStringLiteral("--pg-schema") << pgSchema_;
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->start(QCoreApplication::applicationDirPath() + QStringLiteral("/orvo-desk"),
                   arguments);
    if (!process->waitForStarted(10000))
        Throw(QStringLiteral("orvo-desk did not start: ") + process->errorString());
    QByteArray said;
    QDeadlineTimer deadline(30000);
    while (!said.contains("shown: ")) {
        if (deadline.hasExpired() || process->state() == QProcess::NotRunning) {
            Throw(QStringLiteral("station %1 did not show its screen: %2 %3")
                      .arg(name, QString::fromLocal8Bit(said),
                           QString::fromLocal8Bit(process->readAllStandardError())));
        }
        process->waitForReadyRead(200);
        said += process->readAllStandardOutput();
    }
    stations_[name] = std::move(process);
}

void Runner::CloseOtherStations() {
    for (auto& [name, process] : stations_) {
        process->kill();
        process->waitForFinished(10000);
    }
    stations_.clear();
}

void Runner::Call(const Step& step) {
    // Seeds may have written explicit keys, or dropped a table; the screen's inserts must not
    // collide with the keys of the tables that are there.
    schema::SyncIdentities(db(), host::PracticeCatalog(component_));
    lastArgs_ = host::RunStartMethod(*instances_, step.args[0], step.args.mid(1));
}

}  // namespace orvo::scenario
