#include "platform/quick_editor.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvo {

QString MergeVariables(QString text, const QHash<QString, QString>& values) {
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        text.replace(it.key(), it.value(), Qt::CaseInsensitive);
    return text;
}

QuickEditor::QuickEditor(QWidget* parent)
    : QWidget(parent),
      edit_(new QTextEdit(this)),
      list_(new QListWidget(this)),
      insert_(new QToolButton(this)),
      test_(new QToolButton(this)) {
    edit_->setObjectName(QStringLiteral("qeText"));
    edit_->setAcceptRichText(false);
    list_->setObjectName(QStringLiteral("qeVariables"));
    insert_->setText(tr("&Insert"));
    test_->setObjectName(QStringLiteral("qeSendTest"));
    test_->setText(tr("Send &Test..."));
    test_->setVisible(false);

    auto* side = new QVBoxLayout;
    side->addWidget(new QLabel(tr("Variables:"), this));
    side->addWidget(list_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(insert_);
    buttons->addWidget(test_);
    buttons->addStretch();
    side->addLayout(buttons);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit_, 3);
    layout->addLayout(side, 1);

    connect(edit_, &QTextEdit::textChanged, this, &QuickEditor::textChanged);
    connect(list_, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { InsertVariable(item->text()); });
    connect(insert_, &QToolButton::clicked, this, [this] {
        if (const QListWidgetItem* item = list_->currentItem())
            InsertVariable(item->text());
    });
    connect(test_, &QToolButton::clicked, this, &QuickEditor::testRequested);
}

void QuickEditor::setPlainTextMode(bool plain) {
    if (plain == plain_)
        return;
    const QString current = text();
    plain_ = plain;
    edit_->setAcceptRichText(!plain);
    setText(plain ? QTextDocumentFragment::fromHtml(current).toPlainText() : current);
}

void QuickEditor::setText(const QString& text) {
    if (plain_)
        edit_->setPlainText(text);
    else
        edit_->setHtml(text);
}

QString QuickEditor::text() const {
    return plain_ ? edit_->toPlainText() : edit_->toHtml();
}

void QuickEditor::setReadOnly(bool readOnly) {
    edit_->setReadOnly(readOnly);
    insert_->setEnabled(!readOnly);
    list_->setEnabled(!readOnly);
}

void QuickEditor::setVariables(const QStringList& variables) {
    list_->clear();
    list_->addItems(variables);
    // Wide enough for the names; long ones scroll.
    list_->setMinimumWidth(qMin(list_->sizeHintForColumn(0) + 28, 320));
}

QStringList QuickEditor::variables() const {
    QStringList names;
    for (int i = 0; i < list_->count(); ++i)
        names << list_->item(i)->text();
    return names;
}

void QuickEditor::InsertVariable(const QString& variable) {
    if (edit_->isReadOnly())
        return;
    edit_->textCursor().insertText(variable);
    edit_->setFocus();
}

void QuickEditor::setShowCommands(bool show) {
    test_->setVisible(show);
}

bool QuickEditor::commandsShown() const {
    return !test_->isHidden();
}

}  // namespace orvo
