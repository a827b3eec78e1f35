#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>
#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <type_traits>

#include "component/public/print_events.h"

// The sequence every EditingScreen start method runs: bind the main window, show the wait
// banner, create the screen and hand it its arguments, apply the theme, show it modal under
// the owner, read the result, release the screen. Any error on the way is shown and logged here
// (the user-action boundary), and the caller's arguments are put back as they came.

namespace orvo::component {

inline const QString kLoadingBanner = QStringLiteral("  Loading Editing Screen - Please Wait  ");

// What a start sequence needs of the instance that runs it.
struct StartContext {
    QString method;                    // "EditingScreen.Ins_Company_Start", for the log
    QWidget* owner = nullptr;          // frmOwner: the screen is shown modal under it when set
    QWidget* startForm = nullptr;      // StartForm, offered to GIC as main window
    PrintEvents* objParent = nullptr;  // the calling instance, through which the screen prints
    std::optional<QString> banner = kLoadingBanner;  // no value: the method shows none
};

// A screen a start method can show: a dialog that raises its print events through ObjParent.
template <class Screen>
concept StartableScreen = std::derived_from<Screen, QDialog> && requires(Screen& screen) {
    screen.SetObjParent(static_cast<PrintEvents*>(nullptr));
};

// The application's appearance on a screen: its font and palette, and one minimum height for
// every push button.
void ApplyTheme(QWidget& screen);

// Copies of by-reference arguments, put back into them unless the call succeeded.
template <class... T>
class ArgumentsGuard {
public:
    explicit ArgumentsGuard(T&... arguments) : targets_(arguments...), saved_(arguments...) {}
    ~ArgumentsGuard() {
        if (!kept_)
            targets_ = saved_;
    }
    ArgumentsGuard(const ArgumentsGuard&) = delete;
    ArgumentsGuard& operator=(const ArgumentsGuard&) = delete;

    void Keep() { kept_ = true; }

private:
    std::tuple<T&...> targets_;
    std::tuple<T...> saved_;
    bool kept_ = false;
};

namespace detail {

using CreateStep = std::function<std::unique_ptr<QDialog>()>;
using ScreenStep = std::function<void(QDialog&)>;

// The sequence with the screen's type left out. False when an error ended it.
bool RunStartSequence(const StartContext& context, const CreateStep& create,
                      const ScreenStep& handArguments, const ScreenStep& readResult);

}  // namespace detail

// Runs the sequence for a new Screen, made by create (or by its default constructor). handArguments
// gives the screen what the caller passed; readResult writes the result back. byReference names the
// caller's arguments that either step may change: when the call fails they are left as they came.
// Answers false when an error ended the call: a database error, a row that is not there, anything
// thrown has been shown and logged, and goes no further.
template <StartableScreen Screen, class... T>
bool StartScreen(const StartContext& context, std::function<std::unique_ptr<Screen>()> create,
                 std::function<void(Screen&)> handArguments,
                 std::function<void(Screen&)> readResult, T&... byReference) {
    ArgumentsGuard<T...> guard(byReference...);
    const bool done = detail::RunStartSequence(
        context,
        [&context, &create]() -> std::unique_ptr<QDialog> {
            std::unique_ptr<Screen> screen;
            if (create) {
                screen = create();
            } else if constexpr (std::is_default_constructible_v<Screen>) {
                screen = std::make_unique<Screen>();
            } else {
                throw std::logic_error("this screen needs a create step");
            }
            screen->SetObjParent(context.objParent);
            return screen;
        },
        [&handArguments](QDialog& screen) {
            if (handArguments)
                handArguments(static_cast<Screen&>(screen));
        },
        [&readResult](QDialog& screen) {
            if (readResult)
                readResult(static_cast<Screen&>(screen));
        });
    if (done)
        guard.Keep();
    return done;
}

}  // namespace orvo::component
