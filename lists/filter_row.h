#pragma once

#include <QList>
#include <QPointer>
#include <QStringList>
#include <QWidget>

class QLineEdit;
class QTableView;

namespace orvo::lists {

// The grid's filter row: one line of text over each column, kept in line with the column as it
// is resized, moved, hidden or scrolled. Each edit is named "txtFilter_" + the column's number.
class FilterRow : public QWidget {
    Q_OBJECT
public:
    FilterRow(QTableView* grid, QWidget* parent = nullptr);

    // One edit per column, empty.
    void Rebuild(const QStringList& captions);
    QLineEdit* Edit(int column) const;
    int count() const { return static_cast<int>(edits_.size()); }
    // Puts text into a column's edit as if typed.
    void SetText(int column, const QString& text);
    // Empties every edit; one FilterEdited per edit that held text.
    void ClearAll();

    QSize sizeHint() const override;

signals:
    void FilterEdited(int column, const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Relayout();

    QTableView* grid_;
    QList<QPointer<QLineEdit>> edits_;
};

}  // namespace orvo::lists
