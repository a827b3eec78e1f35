#pragma once

#include <QDialog>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QMenuBar;
class QPlainTextEdit;
class QTableWidget;

namespace orvo::host {

struct HostSession;

// A person's coverage chain as it stood on a day, read only: the rows active on that day in
// their order, the rows ended by then with who ended them, and the coverage notes written by
// then. Support staff answer "who was covered by what on March 3rd" with it.
class CoverageHistoryDialog : public QDialog {
    Q_OBJECT
public:
    CoverageHistoryDialog(HostSession& session, QWidget* parent = nullptr);

    // Shows the person (an id, or the start of a last name) as of the day.
    void ShowPerson(const QString& text, const QDate& asOf);

private:
    void FindPersons();
    void ShowHistory();

    HostSession& session_;
    QLineEdit* search_ = nullptr;
    QComboBox* persons_ = nullptr;
    QDateEdit* date_ = nullptr;
    QTableWidget* rows_ = nullptr;
    QPlainTextEdit* notes_ = nullptr;
};

// The Patients menu's "Coverage History..." command.
void AddCoverageHistoryCommand(QMenuBar& menus, HostSession& session, QWidget& parent);

}  // namespace orvo::host
