#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace orvo::scenario {

// One line of a scenario file: its verb and its words, with quotes and escapes resolved.
struct Step {
    QString verb;
    QStringList args;
    QString rest;  // the raw text after the verb, for the verbs that take a statement
    int line = 0;
};

struct Scenario {
    QString file;
    QString name;
    std::vector<Step> steps;  // the file's prelude first, then the scenario's own
};

// Reads a scenario file. Lines before the first "scenario" line are a prelude that every
// scenario of the file runs first. Throws std::runtime_error with the line on a syntax error.
std::vector<Scenario> ParseScenarioFile(const QString& path);

// Splits one line into words: blanks separate, "double quotes" group, and inside quotes
// \n \r \t \\ \" and \xHH stand for their characters.
QStringList SplitWords(const QString& line, int lineNumber);

}  // namespace orvo::scenario
