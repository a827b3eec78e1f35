#pragma once

#include <QDate>
#include <QDialog>
#include <QString>
#include <functional>
#include <memory>

#include "tools/calculator.h"
#include "tools/calendar_command.h"

class QAbstractButton;

namespace orvo::tools {

namespace Ui {
class Calendar;
}

// The small modal form that date, money and number fields open beside them. Two faces: a
// month calendar, and a pocket calculator (or a plain number pad). The caller puts its command
// words in Tag (calendar_command.h), with the field's value, the title and the word that clears
// a date, and reads the result back from Tag after exec(): "MM-DD-YYYY" from the calendar, the
// readout from the calculator, the clearing word from "&Del", empty on "&Cancel".
//
// Object names, for scenario files: the faces "faces" with "calMonth" and "lblReadout"; the
// buttons "cmdOK", "cmdCancel", "cmdDel", "cmdToday", "cmd3Months", "cmd6Months",
// "Calendar_CMD", "cmdMonth", "cmdYear" (with its entry "txtYear"), "cmdKey_0".."cmdKey_9",
// "cmdKeyPoint", "cmdKeyPlus", "cmdKeyMinus", "cmdKeyTimes", "cmdKeyDivide", "cmdKeyEquals",
// "cmdKeyPercent", "cmdKeyCancel", "cmdKeyCancelEntry"; "ExtensionLabel" shows how far the
// selected day is from today.
class Calendar : public QDialog {
    Q_OBJECT
public:
    // today is the host's today (GIC::GetToday), which "today" and "(Today)" mean.
    explicit Calendar(const QDate& today, QWidget* parent = nullptr);
    ~Calendar() override;

    QString Tag() const { return Tag_; }
    void SetTag(const QString& tag) { Tag_ = tag; }
    // The field the form was opened for: its text, the title GET_TITLE takes, and the text by
    // which that field marks a cleared date.
    void SetCallerValue(const QString& value) { callerValue_ = value; }
    void SetCallerTitle(const QString& title) { callerTitle_ = title; }
    void SetDeleteWord(const QString& word) { deleteWord_ = word; }

    QDate selectedDate() const;
    bool calculatorShown() const;
    const Calculator& calculator() const { return calc_; }

    // Opens the form for one field and answers what Tag holds when it closes.
    static QString Run(const QDate& today, const QString& tag, const QString& value,
                       const QString& title = QString(), const QString& deleteWord = QString(),
                       QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Activate();
    void ShowFace(bool calculator);
    void Select(const QDate& day);
    void RefreshHeader();
    void BeginYearEntry();
    void EndYearEntry(bool apply);
    void RunCalculator(const std::function<void()>& key);
    void DigitKey(int digit);
    void OperatorKey(const QString& op);
    void Finish(const QString& result);
    void CmdOK();
    void FillTransactionDates();

    std::unique_ptr<Ui::Calendar> ui_;
    const QDate today_;
    QString Tag_;
    QString callerValue_;
    QString callerTitle_;
    QString deleteWord_;
    CalendarCommand command_;
    Calculator calc_;
    bool activated_ = false;
};

}  // namespace orvo::tools
