#include "lists/filter_row.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

namespace orvo::lists {

FilterRow::FilterRow(QTableView* grid, QWidget* parent) : QWidget(parent), grid_(grid) {
    setObjectName(QStringLiteral("FilterRow"));
    QHeaderView* header = grid_->horizontalHeader();
    connect(header, &QHeaderView::sectionResized, this, &FilterRow::Relayout);
    connect(header, &QHeaderView::sectionMoved, this, &FilterRow::Relayout);
    connect(header, &QHeaderView::geometriesChanged, this, &FilterRow::Relayout);
    connect(header, &QHeaderView::sectionCountChanged, this, &FilterRow::Relayout);
    connect(grid_->horizontalScrollBar(), &QScrollBar::valueChanged, this, &FilterRow::Relayout);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void FilterRow::Rebuild(const QStringList& captions) {
    for (const auto& edit : edits_)
        delete edit;
    edits_.clear();
    for (qsizetype c = 0; c < captions.size(); ++c) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("txtFilter_%1").arg(c));
        edit->setPlaceholderText(captions[c]);
        edit->setToolTip(tr("Filter %1").arg(captions[c]));
        edit->setClearButtonEnabled(true);
        const int column = static_cast<int>(c);
        connect(edit, &QLineEdit::textChanged, this,
                [this, column](const QString& text) { emit FilterEdited(column, text); });
        edit->show();
        edits_ << edit;
    }
    Relayout();
}

QLineEdit* FilterRow::Edit(int column) const {
    return column >= 0 && column < edits_.size() ? edits_[column].data() : nullptr;
}

void FilterRow::SetText(int column, const QString& text) {
    if (QLineEdit* edit = Edit(column))
        edit->setText(text);
}

void FilterRow::ClearAll() {
    for (const auto& edit : edits_) {
        if (edit && !edit->text().isEmpty())
            edit->clear();
    }
}

QSize FilterRow::sizeHint() const {
    QLineEdit probe;
    return QSize(QWidget::sizeHint().width(), probe.sizeHint().height());
}

void FilterRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Relayout();
}

// Each edit stands under its column's header section, as the grid shows it now.
void FilterRow::Relayout() {
    QHeaderView* header = grid_->horizontalHeader();
    const int left =
        grid_->viewport()->mapToGlobal(QPoint(0, 0)).x() - mapToGlobal(QPoint(0, 0)).x();
    const int h = height();
    for (qsizetype c = 0; c < edits_.size(); ++c) {
        QLineEdit* edit = edits_[c];
        if (!edit)
            continue;
        const int column = static_cast<int>(c);
        if (column >= header->count() || header->isSectionHidden(column)) {
            edit->hide();
            continue;
        }
        const int x = left + header->sectionViewportPosition(column);
        const int w = header->sectionSize(column);
        edit->setGeometry(x, 0, std::max(w, 0), h);
        edit->show();
    }
}

}  // namespace orvo::lists
