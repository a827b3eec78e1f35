#include "host/scenario/scenario.h"

#include <QFile>
#include <QTextStream>
#include <stdexcept>

#include "host/scenario/verbs.h"

namespace orvo::scenario {
namespace {

[[noreturn]] void Fail(int line, const QString& message) {
    throw std::runtime_error(QStringLiteral("line %1: %2").arg(line).arg(message).toStdString());
}

QChar Escape(const QString& text, qsizetype& i, int line) {
    const QChar c = text[i];
    switch (c.unicode()) {
        case 'n':
            return QLatin1Char('\n');
        case 'r':
            return QLatin1Char('\r');
        case 't':
            return QLatin1Char('\t');
        case '\\':
            return QLatin1Char('\\');
        case '"':
            return QLatin1Char('"');
        case 'x': {
            bool ok = false;
            const int code = text.mid(i + 1, 2).toInt(&ok, 16);
            if (!ok || i + 2 >= text.size())
                Fail(line, QStringLiteral("\\x needs two hex digits"));
            i += 2;
            return QChar(code);
        }
        default:
            Fail(line, QStringLiteral("unknown escape \\%1").arg(c));
    }
}

}  // namespace

QStringList SplitWords(const QString& line, int lineNumber) {
    QStringList words;
    qsizetype i = 0;
    while (i < line.size()) {
        if (line[i].isSpace()) {
            ++i;
            continue;
        }
        QString word;
        if (line[i] == QLatin1Char('"')) {
            ++i;
            bool closed = false;
            while (i < line.size()) {
                if (line[i] == QLatin1Char('"')) {
                    closed = true;
                    ++i;
                    break;
                }
                if (line[i] == QLatin1Char('\\') && i + 1 < line.size()) {
                    ++i;
                    word += Escape(line, i, lineNumber);
                } else {
                    word += line[i];
                }
                ++i;
            }
            if (!closed)
                Fail(lineNumber, QStringLiteral("a quote is not closed"));
        } else {
            while (i < line.size() && !line[i].isSpace())
                word += line[i++];
        }
        words << word;
    }
    return words;
}

std::vector<Scenario> ParseScenarioFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        throw std::runtime_error(("cannot read " + path).toStdString());
    }
    QTextStream in(&file);
    std::vector<Step> prelude;
    std::vector<Scenario> scenarios;
    int number = 0;
    while (!in.atEnd()) {
        const QString raw = in.readLine();
        ++number;
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        Step step;
        step.line = number;
        const qsizetype blank = line.indexOf(QLatin1Char(' '));
        step.verb = blank < 0 ? line : line.left(blank);
        step.rest = blank < 0 ? QString() : line.mid(blank + 1).trimmed();
        const Verb* verb = FindVerb(step.verb);
        // Statements are taken as written; every other verb's words are split.
        if (!verb || !verb->takesStatement)
            step.args = SplitWords(step.rest, number);
        if (step.verb == QLatin1String("scenario")) {
            if (step.args.size() != 1)
                Fail(number, QStringLiteral("scenario takes one name"));
            scenarios.push_back({path, step.args[0], prelude});
            continue;
        }
        if (!verb)
            Fail(number, QStringLiteral("unknown step %1").arg(step.verb));
        if (scenarios.empty()) {
            prelude.push_back(step);
        } else {
            scenarios.back().steps.push_back(step);
        }
    }
    if (scenarios.empty())
        throw std::runtime_error((path + ": no scenario in the file").toStdString());
    return scenarios;
}

}  // namespace orvo::scenario
