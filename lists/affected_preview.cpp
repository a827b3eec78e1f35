#include "lists/affected_preview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "lists/engines/held_records.h"
#include "platform/prompts.h"

namespace orvo::lists {

frmAffectedPreview::frmAffectedPreview(const QList<AffectedPerson>& persons, const QString& action,
                                       QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmAffectedPreview"));
    setWindowTitle(tr("Persons Affected"));
    auto* layout = new QVBoxLayout(this);
    summary_ = new QLabel(Summary(persons, action), this);
    summary_->setObjectName(QStringLiteral("lblSummary"));
    summary_->setWordWrap(true);
    layout->addWidget(summary_);

    QStringList names;
    for (const AffectedPerson& p : persons)
        names << p.name;
    all_ = new QPlainTextEdit(names.join(QLatin1Char('\n')), this);
    all_->setObjectName(QStringLiteral("txtAll"));
    all_->setReadOnly(true);
    all_->setVisible(false);
    layout->addWidget(all_);

    auto* buttons = new QHBoxLayout;
    showAll_ = new QPushButton(tr("Show All"), this);
    showAll_->setObjectName(QStringLiteral("cmdShowAll"));
    showAll_->setAutoDefault(false);
    showAll_->setVisible(persons.size() > kFirstNames);
    auto* go = new QPushButton(tr("Continue"), this);
    go->setObjectName(QStringLiteral("cmdContinue"));
    auto* back = new QPushButton(tr("Back"), this);
    back->setObjectName(QStringLiteral("cmdBack"));
    back->setDefault(true);
    buttons->addWidget(showAll_);
    buttons->addStretch();
    buttons->addWidget(go);
    buttons->addWidget(back);
    layout->addLayout(buttons);

    connect(showAll_, &QPushButton::clicked, this, [this] {
        all_->setVisible(true);
        showAll_->setEnabled(false);
        adjustSize();
    });
    connect(go, &QPushButton::clicked, this, &QDialog::accept);
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
}

QString frmAffectedPreview::Summary(const QList<AffectedPerson>& persons, const QString& action) {
    const qsizetype n = persons.size();
    QStringList first;
    for (qsizetype i = 0; i < n && i < kFirstNames; ++i)
        first << persons[i].name;
    QString text = (n == 1 ? tr("1 person will be %1: ").arg(action)
                           : tr("%1 persons will be %2: ").arg(n).arg(action)) +
                   first.join(QStringLiteral("; "));
    if (n > kFirstNames)
        text += tr("; and %1 more").arg(n - kFirstNames);
    return text + QLatin1Char('.');
}

bool frmAffectedPreview::Confirm(const QList<AffectedPerson>& persons, const QString& action,
                                 QWidget* parent) {
    if (persons.isEmpty())
        return true;
    frmAffectedPreview preview(persons, action, parent);
    return preview.exec() == QDialog::Accepted;
}

bool ConfirmAffected(GIC& gic, QWidget* parent, const QString& title,
                     const QList<AffectedPerson>& persons, const QString& action,
                     bool writesPersons) {
    if (writesPersons) {
        const QList<HeldPerson> held = HeldPatientRecords(gic, persons);
        if (!held.isEmpty()) {
            prompts().Message(HeldRecordsText(held), Buttons::Ok, Icon::Warning, title);
            return false;
        }
    }
    return frmAffectedPreview::Confirm(persons, action, parent);
}

}  // namespace orvo::lists
