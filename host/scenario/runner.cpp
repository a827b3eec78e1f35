#include "host/scenario/runner.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUuid>

#include "component/public/editing_screen.h"
#include "host/component_loader.h"
#include "host/host_gic.h"
#include "host/login.h"
#include "host/practice.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"
#include "platform/scripted_prompts.h"

namespace orvo::scenario {
namespace {

// A step that does not hold.
struct StepFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Throw(const QString& message) {
    throw StepFailure(message.toStdString());
}

void NeedArgs(const Step& step, int count) {
    if (step.args.size() < count) {
        Throw(QStringLiteral("%1 needs %2 argument(s)").arg(step.verb).arg(count));
    }
}

bool ParseBool(const QString& text) {
    const QString t = text.toLower();
    if (t == QLatin1String("true") || t == QLatin1String("yes") || t == QLatin1String("1"))
        return true;
    if (t == QLatin1String("false") || t == QLatin1String("no") || t == QLatin1String("0"))
        return false;
    Throw(QStringLiteral("not a true or false: %1").arg(text));
}

int AnswerOf(const QString& word) {
    static const QMap<QString, int> answers{{"ok", AnswerOk},         {"cancel", AnswerCancel},
                                            {"abort", AnswerAbort},   {"retry", AnswerRetry},
                                            {"ignore", AnswerIgnore}, {"yes", AnswerYes},
                                            {"no", AnswerNo}};
    if (word.startsWith(QLatin1Char('#')))
        return word.mid(1).toInt();  // a caption's number
    const auto it = answers.find(word.toLower());
    if (it == answers.end())
        Throw(QStringLiteral("unknown answer %1").arg(word));
    return it.value();
}

Qt::Key KeyOf(const QString& name) {
    static const QMap<QString, Qt::Key> keys{
        {"escape", Qt::Key_Escape}, {"enter", Qt::Key_Return},  {"return", Qt::Key_Return},
        {"up", Qt::Key_Up},         {"down", Qt::Key_Down},     {"tab", Qt::Key_Tab},
        {"f9", Qt::Key_F9},         {"delete", Qt::Key_Delete}, {"backspace", Qt::Key_Backspace}};
    const auto it = keys.find(name.toLower());
    if (it == keys.end())
        Throw(QStringLiteral("unknown key %1").arg(name));
    return it.value();
}

// What a person reads off a control.
QString TextOf(QWidget* w) {
    if (auto* edit = qobject_cast<QLineEdit*>(w))
        return edit->text();
    for (const char* property : {"plainText", "text", "currentText"}) {
        const QVariant value = w->property(property);
        if (value.isValid())
            return value.toString();
    }
    const QMetaProperty user = w->metaObject()->userProperty();
    return user.isValid() ? user.read(w).toString() : QString();
}

}  // namespace

Runner::Runner(const RunOptions& options, host::ComponentLoader& component)
    : options_(options), component_(component) {
    qApp->installEventFilter(this);
}

Runner::~Runner() {
    qApp->removeEventFilter(this);
}

void Runner::Fail(const QString& message) {
    if (failure_.isEmpty())
        failure_ = message;
}

bool Runner::Run(const Scenario& scenario) {
    QTemporaryDir data;
    data.setAutoRemove(!options_.keepData);
    scenario_ = &scenario;
    pc_ = 0;
    failure_.clear();
    screens_.clear();

    host::PracticeOptions practice;
    practice.dataDir = data.path();
    practice.pgConnInfo = options_.pgConnInfo;
    practice.stationId = options_.stationId;
    if (!options_.pgConnInfo.isEmpty()) {
        pgSchema_ = QStringLiteral("scn_") + QUuid::createUuid().toString(QUuid::Id128).left(16);
        db::ConnectionOptions adminOptions{db::Engine::Postgres, {}, options_.pgConnInfo, {}};
        db::Connection::Open(adminOptions)->Execute(QStringLiteral("CREATE SCHEMA ") + pgSchema_);
        practice.pgSchema = pgSchema_;
    }
    try {
        session_ = std::make_unique<host::HostSession>(
            host::OpenPractice(practice, host::PracticeCatalog(component_)));
        session_->loginName = QStringLiteral("SUPERVISOR");
        gic_ = std::make_unique<host::HostGIC>(*session_);
        prompts_ =
            std::make_unique<ScriptedPrompts>([this](const QString& message) { Fail(message); });
        SetPrompts(prompts_.get());
        editing_ = component_.CreateEditingScreen();
        editing_->SetIGlobal_GIC(gic_.get());

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
    } catch (const std::exception& error) {
        Fail(QString::fromLocal8Bit(error.what()));
    }
    CloseOtherStations();
    editing_.reset();
    SetPrompts(nullptr);
    prompts_.reset();
    gic_.reset();
    session_.reset();
    if (!pgSchema_.isEmpty()) {
        db::ConnectionOptions adminOptions{db::Engine::Postgres, {}, options_.pgConnInfo, {}};
        db::Connection::Open(adminOptions)
            ->Execute(QStringLiteral("DROP SCHEMA %1 CASCADE").arg(pgSchema_));
        pgSchema_.clear();
    }
    if (options_.keepData && !failure_.isEmpty())
        failure_ += QStringLiteral(" (data: %1)").arg(data.path());
    return failure_.isEmpty();
}

bool Runner::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show || !scenario_)
        return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (!dialog || !dialog->isWindow() || dialog->windowModality() == Qt::NonModal)
        return false;
    for (const auto& open : screens_) {
        if (open == dialog)
            return false;
    }
    screens_.emplace_back(dialog);
    // Queued, so the steps run inside the screen's own modal loop.
    QTimer::singleShot(0, this, &Runner::RunSteps);
    return false;
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
    NeedArgs(step, argIndex + 1);
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
    Step step = raw;
    for (QString& a : step.args)
        a = Expand(a);
    step.rest = Expand(step.rest);
    const QString& verb = step.verb;
    db::Connection& db = *session_->connection;

    if (verb == QLatin1String("seed") || verb == QLatin1String("sql")) {
        db.Execute(step.rest);
    } else if (verb == QLatin1String("login")) {
        NeedArgs(step, 1);
        session_->loginName = step.args[0].toUpper();
    } else if (verb == QLatin1String("grant")) {
        NeedArgs(step, 2);
        host::GrantRight(db, step.args[0].toUpper(), session_->officeLocationId, step.args[1]);
    } else if (verb == QLatin1String("setting")) {
        NeedArgs(step, 3);
        gic_->WriteSetting(step.args[0], step.args[1], 0, step.args[2]);
    } else if (verb == QLatin1String("today")) {
        NeedArgs(step, 1);
        session_->today = QDate::fromString(step.args[0], QStringLiteral("MM/dd/yyyy"));
        if (!session_->today.isValid())
            Throw(QStringLiteral("not a MM/DD/YYYY date"));
    } else if (verb == QLatin1String("call")) {
        Call(step);
    } else if (verb == QLatin1String("station")) {
        OpenOnOtherStation(step);
    } else if (verb == QLatin1String("check-arg")) {
        NeedArgs(step, 2);
        const int index = step.args[0].toInt();
        if (index < 1 || index > lastArgs_.size())
            Throw(QStringLiteral("no argument %1").arg(step.args[0]));
        if (lastArgs_[index - 1] != step.args[1]) {
            Throw(QStringLiteral("argument %1 is \"%2\", not \"%3\"")
                      .arg(index)
                      .arg(lastArgs_[index - 1], step.args[1]));
        }
    } else if (verb == QLatin1String("expect-prompt") ||
               verb == QLatin1String("expect-prompt-containing")) {
        NeedArgs(step, 3);
        if (verb == QLatin1String("expect-prompt")) {
            prompts_->Expect(step.args[0], step.args[1], AnswerOf(step.args[2]));
        } else {
            prompts_->ExpectContaining(step.args[0], step.args[1], AnswerOf(step.args[2]));
        }
    } else if (verb == QLatin1String("expect-input")) {
        NeedArgs(step, 3);
        std::optional<QString> answer;
        if (step.args[2] != QLatin1String("cancel"))
            answer = step.args[2];
        if (step.args.size() > 3)
            answer = step.args[3];  // expect-input T P text "cancel"
        prompts_->ExpectInput(step.args[0], step.args[1], answer);
    } else if (verb == QLatin1String("type")) {
        NeedArgs(step, 2);
        QWidget* w = Control(step);
        QApplication::setActiveWindow(w->window());
        w->setFocus(Qt::OtherFocusReason);
        if (auto* edit = qobject_cast<QLineEdit*>(w)) {
            if (edit->isReadOnly() || !edit->isEnabled())
                Throw(step.args[0] + QStringLiteral(" takes no typing"));
            edit->selectAll();
            if (step.args[1].isEmpty()) {
                QTest::keyClick(edit, Qt::Key_Delete);
            } else {
                QTest::keyClicks(edit, step.args[1]);
            }
        } else {
            QTest::keyClicks(w, step.args[1]);
        }
    } else if (verb == QLatin1String("leave")) {
        QWidget* w = Control(step);
        QApplication::setActiveWindow(w->window());
        if (!w->hasFocus())
            w->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(w, Qt::Key_Tab);
    } else if (verb == QLatin1String("key")) {
        NeedArgs(step, 2);
        QWidget* w = Control(step);
        QApplication::setActiveWindow(w->window());
        w->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(w, KeyOf(step.args[1]));
    } else if (verb == QLatin1String("click")) {
        auto* button = qobject_cast<QAbstractButton*>(Control(step));
        if (!button)
            Throw(step.args[0] + QStringLiteral(" is not a button"));
        if (!button->isEnabled() || !button->isVisible())
            Throw(step.args[0] + QStringLiteral(" cannot be clicked: it is disabled or hidden"));
        QApplication::setActiveWindow(button->window());
        button->setFocus(Qt::MouseFocusReason);
        button->click();
    } else if (verb == QLatin1String("select-row")) {
        NeedArgs(step, 2);
        auto* view = qobject_cast<QAbstractItemView*>(Control(step));
        if (!view || !view->model())
            Throw(step.args[0] + QStringLiteral(" is not a list"));
        const int row = step.args[1].toInt();
        if (row < 0 || row >= view->model()->rowCount())
            Throw(QStringLiteral("no row %1").arg(row));
        view->setCurrentIndex(view->model()->index(row, 0));
    } else if (verb == QLatin1String("screenshot")) {
        NeedArgs(step, 1);
        if (!ActiveScreen()->grab().save(step.args[0]))
            Throw(QStringLiteral("cannot write ") + step.args[0]);
    } else if (verb == QLatin1String("check-text")) {
        NeedArgs(step, 2);
        const QString text = TextOf(Control(step));
        if (text != step.args[1])
            Throw(QStringLiteral("%1 reads \"%2\", not \"%3\"")
                      .arg(step.args[0], text, step.args[1]));
    } else if (verb == QLatin1String("check-enabled") || verb == QLatin1String("check-visible") ||
               verb == QLatin1String("check-readonly")) {
        NeedArgs(step, 2);
        QWidget* w = Control(step);
        const bool want = ParseBool(step.args[1]);
        const bool have = verb == QLatin1String("check-enabled") ? w->isEnabled()
                          : verb == QLatin1String("check-visible")
                              ? w->isVisible()
                              : w->property("readOnly").toBool();
        if (have != want)
            Throw(QStringLiteral("%1 is %2").arg(step.args[0], have ? "true" : "false"));
    } else if (verb == QLatin1String("check-caption")) {
        NeedArgs(step, 1);
        const QString caption = ActiveScreen()->windowTitle();
        if (caption != step.args[0])
            Throw(QStringLiteral("the caption is \"%1\"").arg(caption));
    } else if (verb == QLatin1String("check-rows")) {
        NeedArgs(step, 1);
        QStringList rows;
        for (db::Recordset rs(db, step.args[0]); !rs.Eof(); rs.MoveNext()) {
            QStringList row;
            for (int i = 0; i < rs.FieldCount(); ++i)
                row << rs.Text(i);
            rows << row.join(QLatin1Char('\t'));
        }
        const QStringList want = step.args.mid(1);
        if (rows != want) {
            Throw(
                QStringLiteral("rows are [%1], not [%2]").arg(rows.join(" | "), want.join(" | ")));
        }
    } else if (verb == QLatin1String("check-file") || verb == QLatin1String("check-no-file")) {
        NeedArgs(step, 1);
        const QString path = session_->dataPath + step.args[0];
        if (verb == QLatin1String("check-no-file")) {
            if (QFile::exists(path))
                Throw(step.args[0] + QStringLiteral(" exists"));
            return;
        }
        NeedArgs(step, 3);
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            Throw(QStringLiteral("cannot read ") + step.args[0]);
        const QString content = QString::fromUtf8(file.readAll());
        const QString& how = step.args[1];
        const bool holds = how == QLatin1String("contains") ? content.contains(step.args[2])
                           : how == QLatin1String("equals")
                               ? content == step.args[2]
                               : (Throw("check-file takes contains or equals"), false);
        if (!holds)
            Throw(QStringLiteral("%1 does not %2 \"%3\"; it holds:\n%4")
                      .arg(step.args[0], how, step.args[2], content));
    } else {
        Throw(QStringLiteral("unknown step"));
    }
}

// "station NAME opens METHOD TEXT [as LOGIN]" starts orvo-desk as station NAME on this
// practice with that one screen open, and goes on once the screen is up (and so holds its lock).
// "station NAME closes" ends it, as a station that is switched off: its locks go with it.
void Runner::OpenOnOtherStation(const Step& step) {
    NeedArgs(step, 2);
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
    if (!options_.pgConnInfo.isEmpty()) {
        arguments << QStringLiteral("--pg") << options_.pgConnInfo << QStringLiteral("--pg-schema")
                  << pgSchema_;
    }
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
    NeedArgs(step, 1);
    schema::SyncIdentities(*session_->connection, host::PracticeCatalog(component_));
    const QString method = step.args[0];
    const QStringList args = step.args.mid(1);
    auto intArg = [&](int i) {
        bool ok = false;
        const int value = args.value(i).toInt(&ok);
        if (!ok)
            Throw(QStringLiteral("argument %1 of %2 is not a number").arg(i + 1).arg(method));
        return value;
    };
    if (method == QLatin1String("Ins_Company_Start") || method == QLatin1String("Pharmacy_Start")) {
        if (args.size() != 2)
            Throw(method + QStringLiteral(" takes a text and an id"));
        QString text = args[0];
        int id = intArg(1);
        if (method == QLatin1String("Ins_Company_Start")) {
            editing_->Ins_Company_Start(text, id);
        } else {
            editing_->Pharmacy_Start(text, id);
        }
        lastArgs_ = {text, QString::number(id)};
    } else {
        Throw(QStringLiteral("unknown start method %1").arg(method));
    }
}

}  // namespace orvo::scenario
