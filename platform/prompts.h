#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

namespace orvo {

// The suite's answer codes, as the screens compare them.
enum Answer {
    AnswerOk = 1,
    AnswerCancel = 2,
    AnswerAbort = 3,
    AnswerRetry = 4,
    AnswerIgnore = 5,
    AnswerYes = 6,
    AnswerNo = 7,
};

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Icon { None, Information, Warning, Critical, Question };

// Every question the program puts to a person goes through here, so that tests and scenario
// runs can answer them without a display.
class Prompts {
public:
    virtual ~Prompts() = default;

    // A message box. defaultButton counts the buttons from 1. Answers an Answer code; a box
    // closed without a choice (Escape, the window's close) answers ClosedAnswer(buttons).
    virtual int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                        int defaultButton = 1) = 0;

    // A box with buttons of the caller's own captions. Answers the chosen button counted from
    // 1, or 0 when the box was closed without a choice.
    virtual int Choose(const QString& text, const QString& title, const QStringList& captions,
                       int defaultButton = 1, Icon icon = Icon::Question) = 0;

    // A text entry. No value means the person cancelled.
    virtual std::optional<QString> Input(const QString& prompt, const QString& title,
                                         const QString& defaultText = QString(),
                                         bool password = false) = 0;

    // The wait banner: one modeless line of text during loading and long updates. A second
    // ShowBanner replaces the text.
    virtual void ShowBanner(const QString& text) = 0;
    virtual void HideBanner() = 0;

    virtual void Beep() = 0;
};

// What a message box answers when it is closed without a choice: the choice that does least,
// as Escape means "not this". Cancel where there is one; No on Yes/No; Abort on Abort/Retry/
// Ignore, since Ignore would go on past the trouble the box is about; OK on a box of OK alone.
int ClosedAnswer(Buttons buttons);

// The prompts in force. Until SetPrompts names another, the Qt dialogs.
Prompts& prompts();
// Installs a service (not owned); nullptr goes back to the Qt dialogs.
void SetPrompts(Prompts* service);

// The window a new prompt or screen belongs to: the active modal window, else the active one.
QWidget* PromptParent();

}  // namespace orvo
