#include "host/desk/coverage_history_dialog.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

#include "host/coverage_history.h"
#include "host/desk/person_commands.h"
#include "host/host_session.h"
#include "platform/user_action.h"

namespace orvo::host {
namespace {

const QStringList kColumns = {QObject::tr("Order"),      QObject::tr("On the day"),
                              QObject::tr("Subscriber"), QObject::tr("Relation"),
                              QObject::tr("Employer"),   QObject::tr("Carrier"),
                              QObject::tr("Group"),      QObject::tr("Began"),
                              QObject::tr("Ended"),      QObject::tr("Ended by")};

QString DateText(const QDate& date) {
    return date.isValid() ? date.toString(QStringLiteral("MM-dd-yyyy")) : QString();
}

}  // namespace

CoverageHistoryDialog::CoverageHistoryDialog(HostSession& session, QWidget* parent)
    : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("frmCoverageHistory"));
    setWindowTitle(tr("Coverage History"));
    search_ = new QLineEdit;
    search_->setObjectName(QStringLiteral("txtPerson"));
    search_->setPlaceholderText(tr("ID number or start of the last name"));
    auto* find = new QPushButton(tr("&Find"));
    find->setObjectName(QStringLiteral("cmdFind"));
    find->setAutoDefault(false);
    persons_ = new QComboBox;
    persons_->setObjectName(QStringLiteral("cboPerson"));
    date_ = new QDateEdit(session.today.isValid() ? session.today : QDate::currentDate());
    date_->setObjectName(QStringLiteral("dtpAsOf"));
    date_->setDisplayFormat(QStringLiteral("MM-dd-yyyy"));
    date_->setCalendarPopup(true);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(search_, 1);
    searchRow->addWidget(find);
    auto* form = new QFormLayout;
    form->addRow(tr("Person:"), searchRow);
    form->addRow(QString(), persons_);
    form->addRow(tr("As of:"), date_);

    rows_ = new QTableWidget(0, static_cast<int>(kColumns.size()));
    rows_->setObjectName(QStringLiteral("grdCoverage"));
    rows_->setHorizontalHeaderLabels(kColumns);
    rows_->verticalHeader()->hide();
    rows_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rows_->setSelectionBehavior(QAbstractItemView::SelectRows);
    rows_->horizontalHeader()->setStretchLastSection(true);
    notes_ = new QPlainTextEdit;
    notes_->setObjectName(QStringLiteral("txtNotes"));
    notes_->setReadOnly(true);
    auto* split = new QSplitter(Qt::Vertical);
    split->addWidget(rows_);
    split->addWidget(notes_);

    auto* close = new QPushButton(tr("&Close"));
    close->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(split, 1);
    layout->addLayout(buttons);
    resize(900, 560);

    connect(find, &QPushButton::clicked, this, &CoverageHistoryDialog::FindPersons);
    connect(search_, &QLineEdit::returnPressed, this, &CoverageHistoryDialog::FindPersons);
    connect(persons_, &QComboBox::currentIndexChanged, this, &CoverageHistoryDialog::ShowHistory);
    connect(date_, &QDateEdit::dateChanged, this, &CoverageHistoryDialog::ShowHistory);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void CoverageHistoryDialog::ShowPerson(const QString& text, const QDate& asOf) {
    search_->setText(text);
    date_->setDate(asOf);
    FindPersons();
}

void CoverageHistoryDialog::FindPersons() {
    RunUserAction(windowTitle(), [this] {
        const QSignalBlocker quiet(persons_);
        persons_->clear();
        for (const auto& [id, name] :
             FindPersonsForHistory(*session_.connection, search_->text())) {
            persons_->addItem(QStringLiteral("%1 - %2").arg(name).arg(id), id);
        }
    });
    if (persons_->count() == 0)
        persons_->addItem(tr("(nobody found)"), 0);
    ShowHistory();
}

void CoverageHistoryDialog::ShowHistory() {
    rows_->setRowCount(0);
    notes_->clear();
    const int person = persons_->currentData().toInt();
    if (person == 0)
        return;
    RunUserAction(windowTitle(), [&] {
        const CoverageHistory history =
            ReadCoverageHistory(*session_.connection, person, date_->date());
        for (const CoverageHistoryRow& row : history.rows) {
            const int r = rows_->rowCount();
            rows_->insertRow(r);
            const QStringList cells = {
                QString::number(row.order),
                row.activeOnDate ? tr("Active") : tr("Ended"),
                row.subscriberId == 0
                    ? QString()
                    : QStringLiteral("%1 - [%2]").arg(row.subscriber).arg(row.subscriberId),
                row.relation,
                row.employer,
                row.carrier,
                row.groupNumber,
                DateText(row.began),
                DateText(row.ended),
                row.endedBy};
            for (int c = 0; c < cells.size(); ++c) {
                auto* item = new QTableWidgetItem(cells[c]);
                if (!row.activeOnDate)
                    item->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
                rows_->setItem(r, c, item);
            }
        }
        rows_->resizeColumnsToContents();
        notes_->setPlainText(history.notes.join(QStringLiteral("\n\n")));
    });
}

void AddCoverageHistoryCommand(QMenuBar& menus, HostSession& session, QWidget& parent) {
    PatientsMenu(menus).addAction(QObject::tr("Coverage &History..."), &parent,
                                  [&session, &parent] {
                                      CoverageHistoryDialog dialog(session, &parent);
                                      dialog.exec();
                                  });
}

}  // namespace orvo::host
