#include "component/start_sequence.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPushButton>
#include <algorithm>

#include "component/component_log.h"
#include "component/session.h"
#include "platform/prompts.h"
#include "platform/user_action.h"

namespace orvo::component {
namespace {

// The title of an error that ends a start method before or after its screen.
const QString kStartTitle = QStringLiteral("ORVO Windows");

// Room above and below a button's caption.
constexpr int kButtonPadding = 10;

// The wait banner for one sequence; down again however the sequence ends.
class WaitBanner {
public:
    explicit WaitBanner(const std::optional<QString>& text) : up_(text.has_value()) {
        if (up_)
            prompts().ShowBanner(*text);
    }
    ~WaitBanner() { Hide(); }
    WaitBanner(const WaitBanner&) = delete;
    WaitBanner& operator=(const WaitBanner&) = delete;

    void Hide() {
        if (!up_)
            return;
        up_ = false;
        prompts().HideBanner();
    }

private:
    bool up_;
};

// Releases the screen when the sequence ends, unless its owner went during the show and took
// the screen along with its other children.
class ScreenObject {
public:
    explicit ScreenObject(std::unique_ptr<QDialog> screen)
        : alive_(screen.get()), screen_(std::move(screen)) {}
    ~ScreenObject() {
        if (!alive_)
            static_cast<void>(screen_.release());
    }
    ScreenObject(const ScreenObject&) = delete;
    ScreenObject& operator=(const ScreenObject&) = delete;

    bool alive() const { return !alive_.isNull(); }
    QDialog& operator*() const { return *screen_; }
    QDialog* operator->() const { return screen_.get(); }

private:
    QPointer<QDialog> alive_;
    std::unique_ptr<QDialog> screen_;
};

void ShowModal(QDialog& screen, QWidget* owner) {
    if (owner)
        screen.setParent(owner, screen.windowFlags());
    screen.exec();
}

}  // namespace

void ApplyTheme(QWidget& screen) {
    const QFont font = QApplication::font();
    screen.setFont(font);
    screen.setPalette(QApplication::palette());
    const int buttonHeight = QFontMetrics(font).height() + kButtonPadding;
    for (QPushButton* button : screen.findChildren<QPushButton*>()) {
        button->setMinimumHeight(std::max(button->minimumHeight(), buttonHeight));
    }
}

namespace detail {

bool RunStartSequence(const StartContext& context, const CreateStep& create,
                      const ScreenStep& handArguments, const ScreenStep& readResult) {
    bool done = false;
    RunUserAction(kStartTitle, [&] {
        BindMainWindow(context.startForm);
        WaitBanner banner(context.banner);
        ScreenObject screen(create());
        handArguments(*screen);
        ApplyTheme(*screen);
        banner.Hide();
        ShowModal(*screen, context.owner);
        if (!screen.alive()) {
            qCWarning(lcComponent).noquote()
                << context.method << ": the screen went with its owner before its result was read";
            return;
        }
        readResult(*screen);
        done = true;
    });
    if (!done)
        qCWarning(lcComponent).noquote() << context.method << ": the call failed";
    return done;
}

}  // namespace detail
}  // namespace orvo::component
