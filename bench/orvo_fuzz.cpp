// Feeds random and mutated input to the text parsers and reports what breaks: a crash or an
// undefined operation (built with the sanitizers, they stop the run), or a broken promise.
//
//   orvo_fuzz sql [COUNT] [SEED]    statements seeded from the SQL corpus, translated for both
//                                    engines; translating the result again must change nothing,
//                                    and a statement of the same shape with other values must
//                                    translate through the shape as it does whole
//   orvo_fuzz text [COUNT] [SEED]   city, state and zip lines, new-record commands, labelled
//                                    command lines and start-method texts, each through the
//                                    parser that reads it
//   orvo_fuzz calc [COUNT] [SEED]   key sequences on the calculator, with its promises checked
//                                    after every key; the calendar's Tag words, caller dates
//                                    and typed years
//   orvo_fuzz names [COUNT] [SEED]  typed person names cut into last and first name, and the
//                                    search criteria made of them, which must stay one
//                                    statement on both engines and translate idempotently
//
// It prints the inputs tried and the findings; the exit status is 1 when there was a finding.
// Built with the benchmarks, not run by the tests: a million inputs take minutes.

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

#include "component/command_text.h"
#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "host/text_format.h"
#include "insurance/build_new_command.h"
#include "insurance/ins_command.h"
#include "people/find_person.h"
#include "platform/db/one_statement.h"
#include "platform/db/translate_sql.h"
#include "platform/db/translation_cache.h"
#include "platform/schema/schema.h"
#include "tests/support/sql_corpus.h"
#include "tools/calculator.h"
#include "tools/calendar_command.h"
#include "tools/tools_tables.h"
#include "tools/zip_code.h"

namespace {

using orvo::db::Engine;

// Pieces of the dialect that the translator rewrites, so that mutations keep hitting its rules.
const QStringList kSqlPieces = {
    "IsNull(",
    "ISNULL(",
    "Ucase(",
    "Lcase(",
    "Mid(",
    "Len(",
    "Trim(",
    "Now()",
    "Date()",
    "GetDate()",
    " = TRUE",
    " = FALSE",
    " <> TRUE",
    " TRUE ",
    "SELECT ",
    "SELECT TOP 3 ",
    " TOP (2) ",
    "DISTINCTROW ",
    "DELETE * FROM ",
    "UPDATE ",
    " SET ",
    " FROM ",
    " WHERE ",
    " LIKE 'a%'",
    " + ",
    " & ",
    "', '",
    "'",
    "\"",
    "[",
    "]",
    "[Last Name]",
    "#01/02/2024#",
    "#1/2/24 3:04 PM#",
    "#",
    "(",
    ")",
    ",",
    ";",
    " AND ",
    " OR ",
    " NOT ",
    "@@IDENTITY",
    "SCOPE_IDENTITY()",
    "ORVOWIN.dbo.",
    "dbo.",
    ".",
    "N'x'",
    "CAST(a AS varchar(10))",
    " INNER JOIN b ON a.x = b.y ",
    " LEFT JOIN ",
    " ORDER BY ",
    " LIMIT 5",
    "--",
    "/*",
    "*/",
    "\n",
    "$$",
    "$1",
    "::text",
    " IS NULL",
    " IN (SELECT ",
    "SET NOCOUNT ON;",
    "Peña",
    "Müller",
    "ß",
    "İ",
    "\t",
    "0",
    "1.5e3",
    "CASE WHEN a THEN b ELSE c END",
    " BEGIN ",
    " END ",
    "IF NOT EXISTS ",
};

class Mutator {
public:
    explicit Mutator(quint32 seed) : random_(seed) {}

    int Below(int n) { return n <= 0 ? 0 : static_cast<int>(random_.bounded(n)); }

    QString RandomText(int length) {
        QString text;
        for (int i = 0; i < length; ++i) {
            const int kind = Below(10);
            if (kind < 6) {
                text += QChar(0x20 + Below(0x5f));
            } else if (kind < 9) {
                text += kSqlPieces[Below(kSqlPieces.size())];
            } else {
                text += QChar(0xa0 + Below(0x2000));
            }
        }
        return text;
    }

    // One to four edits of a text: cut, repeat, insert a piece, splice in part of another text.
    QString Mutate(QString text, const QStringList& others) {
        const int edits = 1 + Below(4);
        for (int e = 0; e < edits; ++e) {
            const int at = Below(text.size() + 1);
            const int length = Below(std::min<int>(24, text.size() - at) + 1);
            switch (Below(5)) {
                case 0:
                    text.remove(at, length);
                    break;
                case 1:
                    text.insert(at, text.mid(at, length));
                    break;
                case 2:
                case 3:
                    text.insert(at, kSqlPieces[Below(kSqlPieces.size())]);
                    break;
                default: {
                    const QString& other = others[Below(others.size())];
                    const int from = Below(other.size());
                    text.insert(at, other.mid(from, 1 + Below(40)));
                    break;
                }
            }
        }
        return text;
    }

private:
    QRandomGenerator random_;
};

struct Findings {
    qint64 inputs = 0;
    qint64 count = 0;
    void Report(const QString& what, const QString& input, const QString& detail) {
        if (++count <= 20) {
            std::fprintf(stderr, "FINDING %s\n  input:  %s\n  %s\n", qPrintable(what),
                         qPrintable(input), qPrintable(detail));
        }
    }
};

// The statement's shape with other values of each kind in place of its own.
QString WithOtherValues(const orvo::db::LiteralShape& cut, Mutator& mutator) {
    static const QStringList strings = {"'Peña'",       "'O''Brien'", "''",    "'a;b -- c ?'",
                                        "'2024-01-02'", "'b\\s'",     "'#1#'", "'12'"};
    static const QStringList numbers = {"0", "12345678901234567890", "3.25", "1e3", "7"};
    QString text = cut.shape;
    for (qsizetype i = 0; i < cut.literals.size(); ++i) {
        if (cut.literals[i].startsWith(u'\''))
            text.replace(orvo::db::StringStandIn(i),
                         strings[mutator.Below(static_cast<int>(strings.size()))]);
        else
            text.replace(orvo::db::NumberStandIn(i),
                         numbers[mutator.Below(static_cast<int>(numbers.size()))]);
    }
    return text;
}

void FuzzSql(qint64 count, quint32 seed, Findings& findings) {
    const QStringList corpus = orvo::test::SqlCorpus();
    Mutator mutator(seed);
    for (qint64 n = 0; n < count; ++n) {
        QString input;
        if (n < corpus.size()) {
            input = corpus[n];
        } else if (mutator.Below(10) == 0) {
            input = mutator.RandomText(1 + mutator.Below(60));
        } else {
            input = mutator.Mutate(corpus[mutator.Below(corpus.size())], corpus);
        }
        for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
            const QString once = orvo::db::TranslateSql(input, engine);
            const QString twice = orvo::db::TranslateSql(once, engine);
            if (twice != once) {
                findings.Report(
                    engine == Engine::Sqlite ? "not idempotent (sqlite)" : "not idempotent (pg)",
                    input, "once:   " + once + "\n  twice:  " + twice);
            }
            if (const auto cut = orvo::db::CutLiterals(input)) {
                orvo::db::TranslationCache cache(engine, false);
                cache.Translate(input);
                const QString other = WithOtherValues(*cut, mutator);
                const QString shaped = cache.Translate(other);
                const QString whole = orvo::db::TranslateSql(other, engine);
                if (shaped != whole) {
                    findings.Report("shape translated otherwise", other,
                                    "shape:  " + shaped + "\n  whole:  " + whole);
                }
            }
        }
        orvo::db::SplitSqlStatements(input);
        ++findings.inputs;
        if (n % 100000 == 0 && n > 0)
            std::fprintf(stderr, "%lld inputs\n", static_cast<long long>(n));
    }
}

const QStringList kLines = {
    "Springfield IL 62704",
    "Springfield, IL 62704-1234",
    "Toronto ON M5V 3L9",
    "São Paulo SP",
    "62704 Springfield IL",
    "St. Louis, MO",
    "Peña Blanca NM 87041",
    "Zürich 8001",
    "  ",
    "NEWCorner Drug",
    "NEW",
    "NEW\x01",
    "NAME\x01"
    "Delta Dental\nCITY\x01"
    "Zürich\nZIP\x01 8001\n",
    "-1\nname\x01Müller\nphone\x01(555) 123\n",
    "0\nJosé\n",
};

// The text parsers with the two settings of the zip line. Their promises are only that they
// finish and stay within the text: the sanitizers find the rest.
void FuzzText(qint64 count, quint32 seed, Findings& findings) {
    QTemporaryDir folder;
    orvo::db::ConnectionOptions options;
    options.sqliteFile = folder.filePath("practice.db");
    orvo::host::HostSession session;
    session.connection = orvo::db::Connection::Open(options);
    orvo::schema::Catalog catalog;
    orvo::host::DeclareHostTables(catalog);
    orvo::tools::DeclareToolsTables(catalog);
    orvo::schema::Apply(*session.connection, catalog);
    session.dataPath = folder.path() + '/';
    orvo::host::HostGIC gic(session);
    Mutator mutator(seed);
    bool nonUs = false;
    for (qint64 n = 0; n < count; ++n) {
        if (n % 50000 == 0) {
            nonUs = !nonUs;
            gic.WriteSetting("DEFAULT_OFFICE_SETUP", "NON_US_ZIP_CODE", 0, nonUs);
        }
        const QString input = mutator.Below(4) == 0
                                  ? mutator.RandomText(1 + mutator.Below(30))
                                  : mutator.Mutate(kLines[mutator.Below(kLines.size())], kLines);
        QString city = "x", state, zip;
        orvo::tools::ParseCityStateZip(gic, input, city, state, zip);
        if (!input.contains(city.trimmed(), Qt::CaseInsensitive) && !city.isEmpty() &&
            city != "x") {
            // A city is cleaned, never made up: it may lose blanks and commas, and the zip taken
            // out of the line wherever it stood, but every letter and digit it keeps comes from
            // the line, in the line's order.
            static const QRegularExpression other("[^\\p{L}\\p{N}]");
            const QString letters = QString(city).remove(other).toCaseFolded();
            const QString source = QString(input).remove(other).toCaseFolded();
            qsizetype at = 0;
            for (const QChar c : letters) {
                at = source.indexOf(c, at);
                if (at < 0)
                    break;
                ++at;
            }
            if (at < 0)
                findings.Report("city not from the line", input, "city: " + city);
        }
        for (const auto mode : {orvo::tools::ZipMode::City, orvo::tools::ZipMode::Zip})
            orvo::tools::SplitZipEntry(gic, mode, input);
        const QString command = orvo::insurance::BuildNewCommand("NEW" + input);
        orvo::insurance::ParseCarrierCommand(command);
        orvo::insurance::ParseCarrierCommand(input);
        orvo::insurance::CarrierFieldForLabel(input);
        // The start methods read ids and names out of the text they are given.
        orvo::component::Val(input);
        const QString capitalized = orvo::component::CapitalizeWords(input);
        if (capitalized.size() > input.size())
            findings.Report("capitalized text grew", input, "result: " + capitalized);
        ++findings.inputs;
        if (n % 100000 == 0 && n > 0)
            std::fprintf(stderr, "%lld inputs\n", static_cast<long long>(n));
    }
}

// What the calculator promises after every key: a readout that is a number shown with its point
// (or exponent), one sign at most, a known state and a sane count of operands.
QString CalculatorBroken(const orvo::tools::Calculator& calc) {
    using orvo::tools::Calculator;
    const QString& readout = calc.readout();
    bool ok = false;
    readout.toDouble(&ok);
    if (!ok)
        return "readout is not a number";
    if (!readout.contains('.') && !readout.contains('e'))
        return "readout without its point";
    if (readout.startsWith("--"))
        return "two signs";
    const QString& last = calc.LastInput();
    if (!last.isEmpty() && last != Calculator::kNums && last != Calculator::kOps &&
        last != Calculator::kNeg && last != Calculator::kPercentOps)
        return "unknown state " + last;
    if (calc.operandCount() < 0)
        return "negative operand count";
    return QString();
}

void FuzzCalculator(qint64 count, quint32 seed, Findings& findings) {
    using orvo::tools::Calculator;
    static const QString kKeys = "0123456789.+-X/=%CEO";
    static const QStringList kTagWords = {
        "DEF_CALC_JD", "CALCULATOR",          "NOCALCULATOR", "NONE",         "SMALL",  "DEF_VAL",
        "GET_TITLE",   "SET_LAST_INPUT_NUMS", "TXDATE",       "ACTIVATE DEL", "EXTEND", "today"};
    Mutator mutator(seed);
    const QDate today(2026, 11, 22);
    for (qint64 n = 0; n < count; ++n) {
        Calculator calc;
        if (mutator.Below(4) == 0)
            calc.SetValue(mutator.RandomText(1 + mutator.Below(12)), mutator.Below(2) == 0);
        QString keys;
        const int length = 1 + mutator.Below(40);
        for (int k = 0; k < length; ++k) {
            const QChar key = kKeys[mutator.Below(kKeys.size())];
            keys += key;
            if (key.isDigit())
                calc.Digit(key.digitValue());
            else if (key == '.')
                calc.DecimalPoint();
            else if (key == '%')
                calc.Percent();
            else if (key == 'C')
                calc.Cancel();
            else if (key == 'E')
                calc.CancelEntry();
            else if (key == 'O')
                calc.Result();
            else
                calc.Operator(QString(key));
            const QString broken = CalculatorBroken(calc);
            if (!broken.isEmpty()) {
                findings.Report(broken, keys, "readout: " + calc.readout());
                break;
            }
        }
        const QString text =
            mutator.Below(2) == 0
                ? mutator.RandomText(1 + mutator.Below(24))
                : mutator.Mutate(kTagWords[mutator.Below(kTagWords.size())], kTagWords);
        orvo::tools::CalendarCommand::Parse(text);
        orvo::tools::CallerDate(text, today);
        if (const auto moved = orvo::tools::MoveToYear(today, text); moved && !moved->isValid())
            findings.Report("year moved to no day", text, QString());
        ++findings.inputs;
        if (n % 100000 == 0 && n > 0)
            std::fprintf(stderr, "%lld inputs\n", static_cast<long long>(n));
    }
}

void FuzzNames(qint64 count, quint32 seed, Findings& findings) {
    static const QStringList kNames = {"Smith, John",
                                       "John Smith",
                                       "Mary Ann O'Brien",
                                       "Peña, José",
                                       "Ó Súilleabháin, Siobhán",
                                       "3412",
                                       "  Müller ,  Jürgen  ",
                                       "de la Cruz, Ana",
                                       "Li",
                                       ","};
    QTemporaryDir folder;
    orvo::db::ConnectionOptions options;
    options.sqliteFile = folder.filePath("practice.db");
    orvo::host::HostSession session;
    session.connection = orvo::db::Connection::Open(options);
    orvo::host::HostGIC gic(session);
    Mutator mutator(seed);
    for (qint64 n = 0; n < count; ++n) {
        const QString input = mutator.Below(3) == 0
                                  ? mutator.RandomText(1 + mutator.Below(40))
                                  : mutator.Mutate(kNames[mutator.Below(kNames.size())], kNames);
        QString last, first;
        orvo::host::SplitPersonNameText(input, last, first);
        // The parts are cut from the text, never made up.
        for (const QString& part : {last, first}) {
            if (!input.contains(part.trimmed(), Qt::CaseInsensitive) &&
                !input.simplified().contains(part.trimmed(), Qt::CaseInsensitive))
                findings.Report("name part not from the text", input,
                                "last: " + last + " first: " + first);
        }
        // The searches made of the names go through the translator, the slow part of a run:
        // one input in eight is enough to keep its rules under fire.
        for (const bool allowID : {true, false}) {
            if (n % 8 != 0)
                break;
            const QString sql = "Select * from Patable where " +
                                orvo::people::PersonNameCriteria(gic, input, allowID) +
                                " order by pLasNam, pFirNam";
            for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
                const QString once = orvo::db::TranslateSql(sql, engine);
                if (!orvo::db::HoldsOneStatement(once, engine))
                    findings.Report("search is not one statement", input, once);
                if (orvo::db::TranslateSql(once, engine) != once)
                    findings.Report("search translation not idempotent", input, once);
            }
        }
        ++findings.inputs;
        if (n % 100000 == 0 && n > 0)
            std::fprintf(stderr, "%lld inputs\n", static_cast<long long>(n));
    }
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString mode = args.value(1);
    const qint64 count = args.size() > 2 ? args[2].toLongLong() : 1000000;
    const quint32 seed = args.size() > 3 ? args[3].toUInt() : 20261122;
    // The translator logs what it cannot read; that is expected of random text.
    QLoggingCategory::setFilterRules("orvo.sql.warning=false\norvo.db.warning=false");
    Findings findings;
    if (mode == "sql") {
        FuzzSql(count, seed, findings);
    } else if (mode == "text") {
        FuzzText(count, seed, findings);
    } else if (mode == "calc") {
        FuzzCalculator(count, seed, findings);
    } else if (mode == "names") {
        FuzzNames(count, seed, findings);
    } else {
        std::fprintf(stderr, "usage: orvo_fuzz sql|text|calc|names [COUNT] [SEED]\n");
        return 2;
    }
    std::printf("%s: %lld inputs, %lld findings\n", qPrintable(mode),
                static_cast<long long>(findings.inputs), static_cast<long long>(findings.count));
    return findings.count == 0 ? 0 : 1;
}
