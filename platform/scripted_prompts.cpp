#include "platform/scripted_prompts.h"

namespace orvo {
namespace {

QStringList ButtonNames(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return {"OK"};
        case Buttons::OkCancel:
            return {"OK", "Cancel"};
        case Buttons::YesNo:
            return {"Yes", "No"};
        case Buttons::YesNoCancel:
            return {"Yes", "No", "Cancel"};
        case Buttons::RetryCancel:
            return {"Retry", "Cancel"};
        case Buttons::AbortRetryIgnore:
            return {"Abort", "Retry", "Ignore"};
    }
    return {};
}

}  // namespace

ScriptedPrompts::ScriptedPrompts(std::function<void(const QString&)> onFailure)
    : onFailure_(std::move(onFailure)) {}

ScriptedPrompts::~ScriptedPrompts() = default;

ScriptedPrompts& ScriptedPrompts::Expect(const QString& title, const QString& text, int answer) {
    expected_.push_back({"box", title, text, false, answer, std::nullopt});
    return *this;
}

ScriptedPrompts& ScriptedPrompts::ExpectContaining(const QString& title, const QString& piece,
                                                   int answer) {
    expected_.push_back({"box", title, piece, true, answer, std::nullopt});
    return *this;
}

ScriptedPrompts& ScriptedPrompts::ExpectInput(const QString& title, const QString& textPiece,
                                              std::optional<QString> answer) {
    expected_.push_back({"input", title, textPiece, true, 0, std::move(answer)});
    return *this;
}

const ScriptedPrompts::Expected* ScriptedPrompts::Match(const QString& kind, const QString& title,
                                                        const QString& text) {
    const QString seen = QStringLiteral("[%1] title \"%2\"\n%3").arg(kind, title, text);
    if (expected_.empty()) {
        onFailure_(QStringLiteral("Unexpected prompt: ") + seen);
        return nullptr;
    }
    const Expected& next = expected_.front();
    const bool kindOk = (next.kind == QLatin1String("input")) == (kind == QLatin1String("input"));
    const bool textOk = next.containing ? text.contains(next.text) : text == next.text;
    if (!kindOk || title != next.title || !textOk) {
        onFailure_(
            QStringLiteral(
                "Prompt does not match the script.\nExpected: [%1] title \"%2\"%3\n%4\nShown: %5")
                .arg(next.kind, next.title, next.containing ? " containing" : "", next.text, seen));
        return nullptr;
    }
    current_ = next;
    expected_.pop_front();
    return &current_;
}

int ScriptedPrompts::Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                             int defaultButton) {
    shown_.push_back({"message", title, text, ButtonNames(buttons), defaultButton, icon});
    const Expected* e = Match("message", title, text);
    return e ? e->answer : ClosedAnswer(buttons);
}

int ScriptedPrompts::Choose(const QString& text, const QString& title, const QStringList& captions,
                            int defaultButton, Icon icon) {
    shown_.push_back({"choose", title, text, captions, defaultButton, icon});
    const Expected* e = Match("choose", title, text);
    return e ? e->answer : 0;
}

std::optional<QString> ScriptedPrompts::Input(const QString& prompt, const QString& title,
                                              const QString& defaultText, bool) {
    shown_.push_back({"input", title, prompt, {}, 0});
    const Expected* e = Match("input", title, prompt);
    return e ? e->input : std::nullopt;
}

void ScriptedPrompts::ShowBanner(const QString& text) {
    shown_.push_back({"banner", {}, text, {}, 0});
    banner_ = text;
    bannerVisible_ = true;
}

void ScriptedPrompts::HideBanner() {
    bannerVisible_ = false;
}

}  // namespace orvo
