#pragma once

#include <QString>
#include <span>

#include "host/scenario/scenario.h"

namespace orvo::scenario {

class Runner;

// One kind of scenario step. A new verb is one function and one entry in the table (verbs.cpp),
// and a line in the README's table of steps.
struct Verb {
    const char* name;
    const char* usage;  // how a line of it reads, for errors and --verbs
    int minArgs;        // the words it needs at the least
    // The rest of the line is one statement, taken as written (no quotes, no escapes).
    bool takesStatement;
    void (*run)(Runner& runner, const Step& step);
};

std::span<const Verb> Verbs();
// The verb of that name; nullptr for none.
const Verb* FindVerb(const QString& name);

}  // namespace orvo::scenario
