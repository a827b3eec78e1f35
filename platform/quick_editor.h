#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QWidget>

class QListWidget;
class QTextEdit;
class QToolButton;

namespace orvo {

// Replaces each variable of a text ("{Office Phone}") by its value; variables without a value
// stay as they are.
QString MergeVariables(QString text, const QHash<QString, QString>& values);

// The message editor: a plain or rich text and the list of merge variables that a double
// click (or Insert) puts at the cursor. Its commands (the test send) are offered on request.
class QuickEditor : public QWidget {
    Q_OBJECT
public:
    explicit QuickEditor(QWidget* parent = nullptr);

    // Plain text edits the text as typed; otherwise the text is HTML.
    void setPlainTextMode(bool plain);
    bool plainTextMode() const { return plain_; }
    void setText(const QString& text);
    // The text as plain text, or as HTML in rich mode.
    QString text() const;
    void setReadOnly(bool readOnly);

    void setVariables(const QStringList& variables);
    QStringList variables() const;
    void InsertVariable(const QString& variable);

    void setSampleValues(const QHash<QString, QString>& values) { samples_ = values; }
    // A text with the sample values merged in.
    QString Merge(const QString& text) const { return MergeVariables(text, samples_); }

    void setShowCommands(bool show);
    bool commandsShown() const;

    QTextEdit* textEdit() const { return edit_; }
    QListWidget* variableList() const { return list_; }
    QToolButton* testButton() const { return test_; }

signals:
    void textChanged();
    void testRequested();

private:
    bool plain_ = true;
    QTextEdit* edit_;
    QListWidget* list_;
    QToolButton* insert_;
    QToolButton* test_;
    QHash<QString, QString> samples_;
};

}  // namespace orvo
