#pragma once

#include <gtest/gtest.h>

#include "platform/scripted_prompts.h"

namespace orvo::test {

// The scripted prompts of a test: a prompt the script did not expect fails the test.
class ScriptedPrompts : public orvo::ScriptedPrompts {
public:
    ScriptedPrompts()
        : orvo::ScriptedPrompts(
              [](const QString& message) { ADD_FAILURE() << message.toStdString(); }) {}
    using orvo::ScriptedPrompts::ScriptedPrompts;
};

using orvo::PromptsScope;

}  // namespace orvo::test
