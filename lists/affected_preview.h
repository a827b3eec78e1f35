#pragma once

#include <QDialog>
#include <QList>
#include <QString>

#include "component/public/gic.h"
#include "lists/engines/shared_record_engines.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace orvo::lists {

// Before a replace or a delete moves anybody, who will be moved: the count and the first names,
// with "Show All" for the whole list; "Continue" goes on, "Back" (or Escape) changes nothing.
//
// Object names, for scenario files: "lblSummary", "txtAll" (the whole list, one a line, shown by
// "cmdShowAll"), "cmdContinue", "cmdBack".
class frmAffectedPreview : public QDialog {
    Q_OBJECT
public:
    // action: what will happen to them, as "moved to Keystone Mutual".
    frmAffectedPreview(const QList<AffectedPerson>& persons, const QString& action,
                       QWidget* parent = nullptr);

    // How many names the summary shows before "and N more".
    static constexpr int kFirstNames = 5;

    // The summary line: "3 persons will be moved to X: A; B; C."
    static QString Summary(const QList<AffectedPerson>& persons, const QString& action);

    // Shows the preview modal; true when the person chose to go on. Nobody affected: true at
    // once, with nothing shown.
    static bool Confirm(const QList<AffectedPerson>& persons, const QString& action,
                        QWidget* parent);

private:
    QLabel* summary_ = nullptr;
    QPlainTextEdit* all_ = nullptr;
    QPushButton* showAll_ = nullptr;
};

// Before persons are moved: refuses, naming each holder, when a patient record of one of them is
// open for editing (writesPersons), else shows the preview. True when the work may go on.
bool ConfirmAffected(GIC& gic, QWidget* parent, const QString& title,
                     const QList<AffectedPerson>& persons, const QString& action,
                     bool writesPersons);

}  // namespace orvo::lists
