#include "tools/calendar.h"

#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QTextCharFormat>

#include "platform/leaving.h"
#include "platform/prompts.h"
#include "ui_calendar.h"

namespace orvo::tools {

namespace {

const QStringList& MonthNames() {
    static const QStringList names = {
        QStringLiteral("January"), QStringLiteral("February"), QStringLiteral("March"),
        QStringLiteral("April"),   QStringLiteral("May"),      QStringLiteral("June"),
        QStringLiteral("July"),    QStringLiteral("August"),   QStringLiteral("September"),
        QStringLiteral("October"), QStringLiteral("November"), QStringLiteral("December")};
    return names;
}

}  // namespace

Calendar::Calendar(const QDate& today, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::Calendar>()), today_(today) {
    ui_->setupUi(this);
    // Month and day names in the suite's own words, whatever the station's language.
    ui_->calMonth->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    ui_->calMonth->setSelectedDate(today_);
    ui_->txtYear->hide();
    // The calculator face shares the calendar's size: its keys take the height, the readout
    // keeps one line in a larger type.
    QFont readoutFont = ui_->lblReadout->font();
    readoutFont.setPointSizeF(readoutFont.pointSizeF() * 1.6);
    ui_->lblReadout->setFont(readoutFont);
    ui_->lblReadout->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    for (QPushButton* key : ui_->pageCalculator->findChildren<QPushButton*>())
        key->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    ui_->txtYear->installEventFilter(this);

    auto* months = new QMenu(ui_->cmdMonth);
    for (int m = 1; m <= 12; ++m)
        months->addAction(MonthNames().at(m - 1), this, [this, m] {
            const QDate d = selectedDate();
            Select(QDate(d.year(), m, std::min(d.day(), QDate(d.year(), m, 1).daysInMonth())));
        });
    ui_->cmdMonth->setMenu(months);

    connect(ui_->calMonth, &QCalendarWidget::selectionChanged, this, [this] { RefreshHeader(); });
    connect(ui_->calMonth, &QCalendarWidget::activated, this, [this] { CmdOK(); });
    connect(ui_->cmdPrevMonth, &QToolButton::clicked, this,
            [this] { Select(selectedDate().addMonths(-1)); });
    connect(ui_->cmdNextMonth, &QToolButton::clicked, this,
            [this] { Select(selectedDate().addMonths(1)); });
    connect(ui_->cmdYear, &QToolButton::clicked, this, [this] { BeginYearEntry(); });
    connect(ui_->cmdToday, &QPushButton::clicked, this, [this] { Select(today_); });
    connect(ui_->cmd3Months, &QPushButton::clicked, this,
            [this] { Select(MonthsAhead(CallerDate(callerValue_, today_).value_or(today_), 3)); });
    connect(ui_->cmd6Months, &QPushButton::clicked, this,
            [this] { Select(MonthsAhead(CallerDate(callerValue_, today_).value_or(today_), 6)); });
    connect(ui_->TX_Date_Combo, &QComboBox::activated, this,
            [this](int index) { Select(ui_->TX_Date_Combo->itemData(index).toDate()); });
    connect(ui_->Calendar_CMD, &QPushButton::clicked, this,
            [this] { ShowFace(!calculatorShown()); });
    connect(ui_->cmdOK, &QPushButton::clicked, this, [this] { CmdOK(); });
    connect(ui_->cmdCancel, &QPushButton::clicked, this, [this] { Finish(QString()); });
    connect(ui_->cmdDel, &QPushButton::clicked, this,
            [this] { Finish(deleteWord_.isEmpty() ? QStringLiteral("DEL") : deleteWord_); });

    const QList<QPushButton*> digits = {ui_->cmdKey_0, ui_->cmdKey_1, ui_->cmdKey_2, ui_->cmdKey_3,
                                        ui_->cmdKey_4, ui_->cmdKey_5, ui_->cmdKey_6, ui_->cmdKey_7,
                                        ui_->cmdKey_8, ui_->cmdKey_9};
    for (int d = 0; d < 10; ++d)
        connect(digits[d], &QPushButton::clicked, this, [this, d] { DigitKey(d); });
    connect(ui_->cmdKeyPoint, &QPushButton::clicked, this,
            [this] { RunCalculator([this] { calc_.DecimalPoint(); }); });
    connect(ui_->cmdKeyPercent, &QPushButton::clicked, this,
            [this] { RunCalculator([this] { calc_.Percent(); }); });
    connect(ui_->cmdKeyCancel, &QPushButton::clicked, this,
            [this] { RunCalculator([this] { calc_.Cancel(); }); });
    connect(ui_->cmdKeyCancelEntry, &QPushButton::clicked, this,
            [this] { RunCalculator([this] { calc_.CancelEntry(); }); });
    const QList<std::pair<QPushButton*, QString>> operators = {
        {ui_->cmdKeyPlus, QStringLiteral("+")},
        {ui_->cmdKeyMinus, QStringLiteral("-")},
        {ui_->cmdKeyTimes, QStringLiteral("X")},
        {ui_->cmdKeyDivide, QStringLiteral("/")},
        {ui_->cmdKeyEquals, QStringLiteral("=")}};
    for (const auto& [button, op] : operators)
        connect(button, &QPushButton::clicked, this, [this, op] { OperatorKey(op); });
}

Calendar::~Calendar() = default;

QDate Calendar::selectedDate() const {
    return ui_->calMonth->selectedDate();
}

bool Calendar::calculatorShown() const {
    return ui_->faces->currentWidget() == ui_->pageCalculator;
}

QString Calendar::Run(const QDate& today, const QString& tag, const QString& value,
                      const QString& title, const QString& deleteWord, QWidget* parent) {
    Calendar form(today, parent ? parent : PromptParent());
    form.SetTag(tag);
    form.SetCallerValue(value);
    form.SetCallerTitle(title);
    form.SetDeleteWord(deleteWord);
    form.exec();
    return form.Tag();
}

void Calendar::showEvent(QShowEvent* event) {
    if (!activated_) {
        activated_ = true;
        Activate();
    }
    QDialog::showEvent(event);
}

// Reads the Tag once, as the form comes up: which face, which panels, where the readout and the
// selection start.
void Calendar::Activate() {
    command_ = CalendarCommand::Parse(Tag_);
    const bool offered = command_.calculator != CalendarCommand::Calculator::None;
    const bool numberPad = command_.calculator == CalendarCommand::Calculator::NumberPad;
    ui_->Calendar_CMD->setVisible(offered && !numberPad);
    ui_->cmdDel->setVisible(command_.offerDelete);
    ui_->ExtensionPanel->setVisible(command_.extensionShown());
    ui_->TX_Date_Panel->setVisible(command_.transactionDate);
    for (QPushButton* op : {ui_->cmdKeyPlus, ui_->cmdKeyMinus, ui_->cmdKeyTimes, ui_->cmdKeyDivide,
                            ui_->cmdKeyEquals, ui_->cmdKeyPercent})
        op->setVisible(!numberPad);
    if (command_.transactionDate)
        FillTransactionDates();

    Select(CallerDate(callerValue_, today_).value_or(today_));
    if (command_.callerValue)
        calc_.SetValue(callerValue_, command_.digitsAdd);
    else if (command_.digitsAdd)
        calc_.SetValue(QString(), true);
    ui_->lblReadout->setText(calc_.readout());
    ShowFace(command_.calculator == CalendarCommand::Calculator::First || numberPad);
}

void Calendar::ShowFace(bool calculator) {
    ui_->faces->setCurrentWidget(calculator ? ui_->pageCalculator : ui_->pageCalendar);
    ui_->cmdToday->setVisible(!calculator);
    ui_->Calendar_CMD->setText(calculator ? QStringLiteral("Calendar")
                                          : QStringLiteral("Calculator"));
    setWindowTitle(command_.callerTitle && !callerTitle_.isEmpty() ? callerTitle_
                                                                   : command_.Title(calculator));
    if (calculator)
        setFocus();
    else
        ui_->calMonth->setFocus();
}

void Calendar::Select(const QDate& day) {
    if (!day.isValid())
        return;
    ui_->calMonth->setSelectedDate(day);
    ui_->calMonth->setCurrentPage(day.year(), day.month());
    RefreshHeader();
}

void Calendar::RefreshHeader() {
    const QDate day = selectedDate();
    ui_->calMonth->setCurrentPage(day.year(), day.month());
    ui_->cmdMonth->setText(MonthNames().value(day.month() - 1));
    ui_->cmdYear->setText(QString::number(day.year()));
    ui_->ExtensionLabel->setText(DistanceCaption(day, today_));
}

void Calendar::BeginYearEntry() {
    ui_->txtYear->setText(QString::number(selectedDate().year()));
    ui_->cmdYear->hide();
    ui_->txtYear->show();
    ui_->txtYear->selectAll();
    ui_->txtYear->setFocus();
}

void Calendar::EndYearEntry(bool apply) {
    if (!ui_->txtYear->isVisible())
        return;
    if (apply) {
        const std::optional<QDate> moved = MoveToYear(selectedDate(), ui_->txtYear->text());
        if (!moved) {
            prompts().Beep();
            ui_->txtYear->selectAll();
            return;
        }
        Select(*moved);
    }
    ui_->txtYear->hide();
    ui_->cmdYear->show();
    ui_->calMonth->setFocus();
}

bool Calendar::eventFilter(QObject* watched, QEvent* event) {
    // The year entry keeps its Enter and Escape: they must not reach the form's OK and Cancel.
    if (watched == ui_->txtYear && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            EndYearEntry(key != Qt::Key_Escape);
            return true;
        }
    }
    // Leaving the entry keeps a year typed there; what is not a year is dropped with a beep.
    if (watched == ui_->txtYear && event->type() == QEvent::FocusOut && ui_->txtYear->isVisible() &&
        IsLeaving(*static_cast<QFocusEvent*>(event))) {
        if (!MoveToYear(selectedDate(), ui_->txtYear->text()))
            prompts().Beep();
        EndYearEntry(MoveToYear(selectedDate(), ui_->txtYear->text()).has_value());
    }
    return QDialog::eventFilter(watched, event);
}

void Calendar::RunCalculator(const std::function<void()>& key) {
    key();
    ui_->lblReadout->setText(calc_.readout());
}

void Calendar::DigitKey(int digit) {
    RunCalculator([this, digit] {
        if (!calc_.Digit(digit))
            prompts().Beep();
    });
}

void Calendar::OperatorKey(const QString& op) {
    RunCalculator([this, &op] {
        if (!calc_.Operator(op))
            prompts().Message(Calculator::kDivideByZero, Buttons::Ok, Icon::Warning,
                              QStringLiteral("Calculator"));
    });
}

void Calendar::CmdOK() {
    // A year still being typed is part of the answer; one that is not a year stops the OK.
    if (ui_->txtYear->isVisible()) {
        EndYearEntry(true);
        if (ui_->txtYear->isVisible())
            return;
    }
    if (!calculatorShown()) {
        Finish(CalendarDateText(selectedDate()));
        return;
    }
    bool divided = true;
    const QString result = calc_.Result(&divided);
    ui_->lblReadout->setText(calc_.readout());
    if (!divided) {
        prompts().Message(Calculator::kDivideByZero, Buttons::Ok, Icon::Warning,
                          QStringLiteral("Calculator"));
        return;
    }
    Finish(result);
}

void Calendar::Finish(const QString& result) {
    Tag_ = result;
    result.isEmpty() ? reject() : accept();
}

// The days a transaction is usually dated: today and the week before it.
void Calendar::FillTransactionDates() {
    ui_->TX_Date_Combo->clear();
    for (int back = 0; back < 8; ++back) {
        const QDate day = today_.addDays(-back);
        ui_->TX_Date_Combo->addItem(
            CalendarDateText(day) + QStringLiteral("  ") +
                QLocale(QLocale::English).dayName(day.dayOfWeek(), QLocale::ShortFormat),
            day);
    }
}

void Calendar::keyPressEvent(QKeyEvent* event) {
    if (!calculatorShown()) {
        if (event->key() == Qt::Key_Escape) {
            Finish(QString());
            return;
        }
        QDialog::keyPressEvent(event);
        return;
    }
    const QString text = event->text();
    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        DigitKey(key - Qt::Key_0);
    } else if (text == QLatin1String(".") || text == QLatin1String(",")) {
        RunCalculator([this] { calc_.DecimalPoint(); });
    } else if (command_.calculator == CalendarCommand::Calculator::NumberPad) {
        if (key == Qt::Key_Escape)
            RunCalculator([this] { calc_.Cancel(); });
        else if (key == Qt::Key_Return || key == Qt::Key_Enter)
            CmdOK();
    } else if (text == QLatin1String("+") || text == QLatin1String("-") ||
               text == QLatin1String("/")) {
        OperatorKey(text);
    } else if (text == QLatin1String("*") ||
               text.compare(QLatin1String("x"), Qt::CaseInsensitive) == 0) {
        OperatorKey(QStringLiteral("X"));
    } else if (text == QLatin1String("%")) {
        RunCalculator([this] { calc_.Percent(); });
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter || text == QLatin1String("=")) {
        OperatorKey(QStringLiteral("="));
    } else if (key == Qt::Key_Escape) {
        RunCalculator([this] { calc_.Cancel(); });
    } else {
        QDialog::keyPressEvent(event);
    }
}

}  // namespace orvo::tools
