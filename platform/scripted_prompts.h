#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <functional>

#include "platform/prompts.h"

namespace orvo {

// Answers the program's questions from a script, in order, with no display: what scenario runs
// and tests put in place of the dialogs. Each expected
// prompt is matched by its title and text (exactly, or containing a piece); an unexpected prompt
// is reported through the failure handler with its full text and answered as if closed.
class ScriptedPrompts : public Prompts {
public:
    struct Shown {
        QString kind;  // "message", "choose", "input", "banner"
        QString title;
        QString text;
        QStringList buttons;  // captions, for a message its standard buttons
        int defaultButton = 0;
        Icon icon = Icon::None;
    };

    // onFailure hears of every prompt that the script did not expect, with its full text.
    explicit ScriptedPrompts(std::function<void(const QString&)> onFailure);
    ~ScriptedPrompts() override;

    // Expect a message box or a box of custom captions and answer it: with an Answer code for a
    // message box, with a caption's 1-based number for Choose.
    ScriptedPrompts& Expect(const QString& title, const QString& text, int answer);
    ScriptedPrompts& ExpectContaining(const QString& title, const QString& piece, int answer);
    // Expect a text entry and answer it; no value answers Cancel.
    ScriptedPrompts& ExpectInput(const QString& title, const QString& textPiece,
                                 std::optional<QString> answer);

    // Everything shown, in order (banners too), for checks after the fact.
    const std::vector<Shown>& shown() const { return shown_; }
    // The expectations not yet met.
    int pending() const { return static_cast<int>(expected_.size()); }
    QString bannerText() const { return banner_; }
    bool bannerVisible() const { return bannerVisible_; }
    int beeps() const { return beeps_; }

    int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                int defaultButton) override;
    int Choose(const QString& text, const QString& title, const QStringList& captions,
               int defaultButton, Icon icon) override;
    std::optional<QString> Input(const QString& prompt, const QString& title,
                                 const QString& defaultText, bool password) override;
    void ShowBanner(const QString& text) override;
    void HideBanner() override;
    void Beep() override { ++beeps_; }

private:
    struct Expected {
        QString kind;
        QString title;
        QString text;
        bool containing = false;
        int answer = 0;
        std::optional<QString> input;
    };
    const Expected* Match(const QString& kind, const QString& title, const QString& text);

    std::function<void(const QString&)> onFailure_;
    std::deque<Expected> expected_;
    Expected current_;
    std::vector<Shown> shown_;
    QString banner_;
    bool bannerVisible_ = false;
    int beeps_ = 0;
};

// Installs a prompts service for a scope and puts the Qt dialogs back after.
class PromptsScope {
public:
    explicit PromptsScope(Prompts& service) { SetPrompts(&service); }
    ~PromptsScope() { SetPrompts(nullptr); }
};

}  // namespace orvo
