#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "platform/scripted_prompts.h"

namespace orvo::test {

// The scripted prompts of a test: a prompt the script did not expect fails the test.
class ScriptedPrompts : public orvo::ScriptedPrompts {
public:
    ScriptedPrompts()
        : orvo::ScriptedPrompts(
              [](const QString& message) { ADD_FAILURE() << message.toStdString(); }) {}
    using orvo::ScriptedPrompts::ScriptedPrompts;

    // Runs as each message box comes up, before it is answered: for a look at the program's
    // state at that moment.
    std::function<void()> onMessage;

    int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                int defaultButton) override {
        if (onMessage)
            onMessage();
        return orvo::ScriptedPrompts::Message(text, buttons, icon, title, defaultButton);
    }

    // The icons of the message boxes shown, in order.
    std::vector<Icon> messageIcons() const {
        std::vector<Icon> icons;
        for (const auto& prompt : shown()) {
            if (prompt.kind == QLatin1String("message"))
                icons.push_back(prompt.icon);
        }
        return icons;
    }
};

using orvo::PromptsScope;

}  // namespace orvo::test
