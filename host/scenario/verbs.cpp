#include "host/scenario/verbs.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMap>
#include <QMetaProperty>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <array>

#include "host/host_gic.h"
#include "host/login.h"
#include "host/scenario/runner.h"
#include "platform/db/recordset.h"
#include "platform/scripted_prompts.h"

namespace orvo::scenario {
namespace {

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

// Gives the control the keyboard, as a person does by moving into it.
QWidget* Focus(QWidget* w) {
    QApplication::setActiveWindow(w->window());
    w->setFocus(Qt::OtherFocusReason);
    return w;
}

// Types text as a keyboard and an input method would: plain ASCII as the keys that make it (so
// a field that looks at the key sees the key), any other character as a key event that carries
// it, and what one key event cannot carry (a character beyond the first plane) as text
// committed by an input method.
void TypeText(QWidget* w, const QString& text) {
    for (const char32_t c : text.toUcs4()) {
        if (!QChar::isPrint(c)) {
            Throw(QStringLiteral("U+%1 cannot be typed").arg(quint32(c), 4, 16, QLatin1Char('0')));
        }
        if (c < 0x7f) {
            QTest::keyClick(w, char(c));
            continue;
        }
        const QString one = QString::fromUcs4(&c, 1);
        if (one.size() == 1) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, one);
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, one);
            QApplication::sendEvent(w, &press);
            QApplication::sendEvent(w, &release);
            continue;
        }
        if (!w->testAttribute(Qt::WA_InputMethodEnabled))
            Throw(QStringLiteral("%1 takes no text from an input method").arg(w->objectName()));
        QInputMethodEvent commit;
        commit.setCommitString(one);
        QApplication::sendEvent(w, &commit);
    }
}

void Sql(Runner& r, const Step& step) {
    r.db().Execute(step.rest);
}

void Login(Runner& r, const Step& step) {
    r.session().loginName = step.args[0].toUpper();
}

void Grant(Runner& r, const Step& step) {
    host::GrantRight(r.db(), step.args[0].toUpper(), r.session().officeLocationId, step.args[1]);
}

void Setting(Runner& r, const Step& step) {
    r.gic().WriteSetting(step.args[0], step.args[1], 0, step.args[2]);
}

void Today(Runner& r, const Step& step) {
    const QDate date = QDate::fromString(step.args[0], QStringLiteral("MM/dd/yyyy"));
    if (!date.isValid())
        Throw(QStringLiteral("not a MM/DD/YYYY date"));
    r.session().today = date;
}

void Call(Runner& r, const Step& step) {
    r.Call(step);
}

void Station(Runner& r, const Step& step) {
    r.Station(step);
}

void CheckArg(Runner& r, const Step& step) {
    const QStringList& args = r.lastArgs();
    const int index = step.args[0].toInt();
    if (index < 1 || index > args.size())
        Throw(QStringLiteral("no argument %1").arg(step.args[0]));
    if (args[index - 1] != step.args[1]) {
        Throw(QStringLiteral("argument %1 is \"%2\", not \"%3\"")
                  .arg(index)
                  .arg(args[index - 1], step.args[1]));
    }
}

void ExpectPrompt(Runner& r, const Step& step) {
    r.prompts().Expect(step.args[0], step.args[1], AnswerOf(step.args[2]));
}

void ExpectPromptContaining(Runner& r, const Step& step) {
    r.prompts().ExpectContaining(step.args[0], step.args[1], AnswerOf(step.args[2]));
}

void ExpectInput(Runner& r, const Step& step) {
    std::optional<QString> answer;
    if (step.args[2] != QLatin1String("cancel"))
        answer = step.args[2];
    if (step.args.size() > 3)
        answer = step.args[3];  // expect-input T P text "cancel"
    r.prompts().ExpectInput(step.args[0], step.args[1], answer);
}

void Type(Runner& r, const Step& step) {
    QWidget* w = Focus(r.Control(step));
    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
        if (edit->isReadOnly() || !edit->isEnabled())
            Throw(step.args[0] + QStringLiteral(" takes no typing"));
        edit->selectAll();
        if (step.args[1].isEmpty()) {
            QTest::keyClick(edit, Qt::Key_Delete);
            return;
        }
    }
    TypeText(w, step.args[1]);
}

void Leave(Runner& r, const Step& step) {
    QWidget* w = r.Control(step);
    QApplication::setActiveWindow(w->window());
    if (!w->hasFocus())
        w->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(w, Qt::Key_Tab);
}

void Key(Runner& r, const Step& step) {
    QTest::keyClick(Focus(r.Control(step)), KeyOf(step.args[1]));
}

// As the mouse does it: the press moves the focus only to a button that takes focus on a
// click, so a field keeps it while a panel's buttons are used.
void Click(Runner& r, const Step& step) {
    auto* button = qobject_cast<QAbstractButton*>(r.Control(step));
    if (!button)
        Throw(step.args[0] + QStringLiteral(" is not a button"));
    if (!button->isEnabled() || !button->isVisible())
        Throw(step.args[0] + QStringLiteral(" cannot be clicked: it is disabled or hidden"));
    QApplication::setActiveWindow(button->window());
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
}

void SelectRow(Runner& r, const Step& step) {
    auto* view = qobject_cast<QAbstractItemView*>(r.Control(step));
    if (!view || !view->model())
        Throw(step.args[0] + QStringLiteral(" is not a list"));
    const int row = step.args[1].toInt();
    if (row < 0 || row >= view->model()->rowCount())
        Throw(QStringLiteral("no row %1").arg(row));
    view->setCurrentIndex(view->model()->index(row, 0));
}

// As a click on the tab's title does.
void SelectTab(Runner& r, const Step& step) {
    auto* tabs = qobject_cast<QTabWidget*>(r.Control(step));
    if (!tabs)
        Throw(step.args[0] + QStringLiteral(" is not a tab control"));
    bool ok = false;
    const int tab = step.args[1].toInt(&ok);
    if (!ok || tab < 0 || tab >= tabs->count() || !tabs->isTabEnabled(tab))
        Throw(QStringLiteral("no tab %1 to choose").arg(step.args[1]));
    tabs->setCurrentIndex(tab);
}

// As the window's close button in its title bar: the screen is asked to close.
void CloseWindow(Runner& r, const Step&) {
    r.ActiveScreen()->close();
}

void Screenshot(Runner& r, const Step& step) {
    if (!r.ActiveScreen()->grab().save(step.args[0]))
        Throw(QStringLiteral("cannot write ") + step.args[0]);
}

void CheckText(Runner& r, const Step& step) {
    const QString text = TextOf(r.Control(step));
    if (text != step.args[1])
        Throw(QStringLiteral("%1 reads \"%2\", not \"%3\"").arg(step.args[0], text, step.args[1]));
}

void CheckState(const Step& step, bool have) {
    if (have != ParseBool(step.args[1]))
        Throw(QStringLiteral("%1 is %2").arg(step.args[0], have ? "true" : "false"));
}

void CheckEnabled(Runner& r, const Step& step) {
    CheckState(step, r.Control(step)->isEnabled());
}

void CheckVisible(Runner& r, const Step& step) {
    CheckState(step, r.Control(step)->isVisible());
}

void CheckChecked(Runner& r, const Step& step) {
    auto* button = qobject_cast<QAbstractButton*>(r.Control(step));
    if (!button)
        Throw(step.args[0] + QStringLiteral(" is not a box or button"));
    CheckState(step, button->isChecked());
}

void CheckReadonly(Runner& r, const Step& step) {
    CheckState(step, r.Control(step)->property("readOnly").toBool());
}

void CheckFocus(Runner& r, const Step& step) {
    QWidget* w = r.Control(step);
    QWidget* focus = QApplication::focusWidget();
    if (focus != w) {
        Throw(QStringLiteral("the focus is on %1")
                  .arg(focus ? focus->objectName() : QStringLiteral("nothing")));
    }
}

void CheckCaption(Runner& r, const Step& step) {
    const QString caption = r.ActiveScreen()->windowTitle();
    if (caption != step.args[0])
        Throw(QStringLiteral("the caption is \"%1\"").arg(caption));
}

void CheckRows(Runner& r, const Step& step) {
    QStringList rows;
    for (db::Recordset rs(r.db(), step.args[0]); !rs.Eof(); rs.MoveNext()) {
        QStringList row;
        for (int i = 0; i < rs.FieldCount(); ++i)
            row << rs.Text(i);
        rows << row.join(QLatin1Char('\t'));
    }
    const QStringList want = step.args.mid(1);
    if (rows != want)
        Throw(QStringLiteral("rows are [%1], not [%2]").arg(rows.join(" | "), want.join(" | ")));
}

void CheckFile(Runner& r, const Step& step) {
    QFile file(r.session().dataPath + step.args[0]);
    if (!file.open(QIODevice::ReadOnly))
        Throw(QStringLiteral("cannot read ") + step.args[0]);
    const QString content = QString::fromUtf8(file.readAll());
    const QString& how = step.args[1];
    bool holds = false;
    if (how == QLatin1String("contains")) {
        holds = content.contains(step.args[2]);
    } else if (how == QLatin1String("equals")) {
        holds = content == step.args[2];
    } else {
        Throw(QStringLiteral("check-file takes contains or equals"));
    }
    if (!holds) {
        Throw(QStringLiteral("%1 does not %2 \"%3\"; it holds:\n%4")
                  .arg(step.args[0], how, step.args[2], content));
    }
}

void CheckNoFile(Runner& r, const Step& step) {
    if (QFile::exists(r.session().dataPath + step.args[0]))
        Throw(step.args[0] + QStringLiteral(" exists"));
}

// The list window's parts, as a person finds them on the screen: its grid, the filter line over
// a column, a toolbar button.
QAbstractItemView* ListGrid(Runner& r) {
    auto* grid = r.ActiveScreen()->findChild<QAbstractItemView*>(QStringLiteral("DotNetGrid"));
    if (!grid || !grid->model())
        Throw(QStringLiteral("the open screen is no list"));
    return grid;
}

void ShowList(Runner& r, const Step& step) {
    Step call = step;
    call.args.prepend(QStringLiteral("ShowList"));
    r.Call(call);
}

void Filter(Runner& r, const Step& step) {
    QAbstractItemModel* model = ListGrid(r)->model();
    for (int c = 0; c < model->columnCount(); ++c) {
        if (model->headerData(c, Qt::Horizontal).toString() != step.args[0])
            continue;
        auto* edit = r.ActiveScreen()->findChild<QLineEdit*>(QStringLiteral("txtFilter_%1").arg(c));
        if (!edit)
            Throw(QStringLiteral("the column %1 has no filter").arg(step.args[0]));
        Focus(edit);
        edit->selectAll();
        if (step.args[1].isEmpty()) {
            QTest::keyClick(edit, Qt::Key_Delete);
        } else {
            TypeText(edit, step.args[1]);
        }
        return;
    }
    Throw(QStringLiteral("the list has no column %1").arg(step.args[0]));
}

// Rows as shown, from 0; the first is made current, the others join the selection as a
// Ctrl+click would.
void PickRows(Runner& r, const Step& step) {
    QAbstractItemView* grid = ListGrid(r);
    QItemSelectionModel* selection = grid->selectionModel();
    for (qsizetype i = 0; i < step.args.size(); ++i) {
        bool ok = false;
        const int row = step.args[i].toInt(&ok);
        if (!ok || row < 0 || row >= grid->model()->rowCount())
            Throw(QStringLiteral("no row %1").arg(step.args[i]));
        const QModelIndex index = grid->model()->index(row, 0);
        if (i == 0) {
            grid->setCurrentIndex(index);
        } else {
            selection->setCurrentIndex(index,
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
}

// A toolbar command as a person reaches it: its button, or on a narrow window the same item in
// the toolbar's overflow menu. A hidden or disabled item cannot be pressed.
void Press(Runner& r, const Step& step) {
    auto* toolbar = r.ActiveScreen()->findChild<QToolBar*>(QStringLiteral("ToolStrip1"));
    if (!toolbar)
        Throw(QStringLiteral("the open screen has no toolbar"));
    for (QAction* action : toolbar->actions()) {
        if (action->objectName() != step.args[0])
            continue;
        if (!action->isVisible() || !action->isEnabled())
            Throw(step.args[0] + QStringLiteral(" cannot be pressed: it is disabled or hidden"));
        QApplication::setActiveWindow(toolbar->window());
        action->trigger();
        return;
    }
    Throw(QStringLiteral("the toolbar has no item %1").arg(step.args[0]));
}

void CheckRowCount(Runner& r, const Step& step) {
    const int rows = ListGrid(r)->model()->rowCount();
    if (rows != step.args[0].toInt())
        Throw(QStringLiteral("the list shows %1 rows").arg(rows));
}

void CheckCell(Runner& r, const Step& step) {
    QAbstractItemModel* model = ListGrid(r)->model();
    const int row = step.args[0].toInt();
    for (int c = 0; c < model->columnCount(); ++c) {
        if (model->headerData(c, Qt::Horizontal).toString() != step.args[1])
            continue;
        const QString text = model->index(row, c).data().toString();
        if (text != step.args[2])
            Throw(
                QStringLiteral("row %1 of %2 reads \"%3\"").arg(step.args[0], step.args[1], text));
        return;
    }
    Throw(QStringLiteral("the list has no column %1").arg(step.args[1]));
}

void CheckEvents(Runner& r, const Step& step) {
    const QStringList received = r.listEvents().Take();
    if (received != step.args) {
        QStringList shown = received;
        for (QString& line : shown)
            line.replace(QChar(10), QStringLiteral("\\n"));
        Throw(QStringLiteral("the host received [%1]").arg(shown.join(QStringLiteral(" | "))));
    }
}

constexpr std::array kVerbs{
    Verb{"seed", "seed STATEMENT", 0, true, Sql},
    Verb{"sql", "sql STATEMENT", 0, true, Sql},
    Verb{"login", "login NAME", 1, false, Login},
    Verb{"grant", "grant LOGIN RIGHT", 2, false, Grant},
    Verb{"setting", "setting SECTION KEY VALUE", 3, false, Setting},
    Verb{"today", "today MM/DD/YYYY", 1, false, Today},
    Verb{"call", "call METHOD ARG...", 1, false, Call},
    Verb{"station", "station NAME opens METHOD TEXT [as LOGIN] | station NAME closes", 2, false,
         Station},
    Verb{"check-arg", "check-arg N VALUE", 2, false, CheckArg},
    Verb{"expect-prompt", "expect-prompt TITLE TEXT ANSWER", 3, false, ExpectPrompt},
    Verb{"expect-prompt-containing", "expect-prompt-containing TITLE PIECE ANSWER", 3, false,
         ExpectPromptContaining},
    Verb{"expect-input", "expect-input TITLE PIECE TEXT|cancel", 3, false, ExpectInput},
    Verb{"type", "type CONTROL TEXT", 2, false, Type},
    Verb{"leave", "leave CONTROL", 1, false, Leave},
    Verb{"key", "key CONTROL KEY", 2, false, Key},
    Verb{"click", "click CONTROL", 1, false, Click},
    Verb{"select-row", "select-row CONTROL N", 2, false, SelectRow},
    Verb{"select-tab", "select-tab CONTROL N", 2, false, SelectTab},
    Verb{"close-window", "close-window", 0, false, CloseWindow},
    Verb{"screenshot", "screenshot FILE", 1, false, Screenshot},
    Verb{"check-text", "check-text CONTROL TEXT", 2, false, CheckText},
    Verb{"check-enabled", "check-enabled CONTROL true|false", 2, false, CheckEnabled},
    Verb{"check-visible", "check-visible CONTROL true|false", 2, false, CheckVisible},
    Verb{"check-readonly", "check-readonly CONTROL true|false", 2, false, CheckReadonly},
    Verb{"check-checked", "check-checked CONTROL true|false", 2, false, CheckChecked},
    Verb{"check-focus", "check-focus CONTROL", 1, false, CheckFocus},
    Verb{"check-caption", "check-caption TEXT", 1, false, CheckCaption},
    Verb{"check-rows", "check-rows STATEMENT [ROW...]", 1, false, CheckRows},
    Verb{"check-file", "check-file PATH contains|equals TEXT", 3, false, CheckFile},
    Verb{"check-no-file", "check-no-file PATH", 1, false, CheckNoFile},
    Verb{"show-list", "show-list TYPE [PROPERTY=VALUE...]", 1, false, ShowList},
    Verb{"filter", "filter COLUMN TEXT", 2, false, Filter},
    Verb{"pick-rows", "pick-rows N...", 1, false, PickRows},
    Verb{"press", "press KEY", 1, false, Press},
    Verb{"check-row-count", "check-row-count N", 1, false, CheckRowCount},
    Verb{"check-cell", "check-cell ROW COLUMN TEXT", 3, false, CheckCell},
    Verb{"check-events", "check-events [EVENT...]", 0, false, CheckEvents},
};

}  // namespace

std::span<const Verb> Verbs() {
    return kVerbs;
}

const Verb* FindVerb(const QString& name) {
    for (const Verb& verb : kVerbs) {
        if (name == QLatin1String(verb.name))
            return &verb;
    }
    return nullptr;
}

}  // namespace orvo::scenario
