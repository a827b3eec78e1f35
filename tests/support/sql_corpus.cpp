#include "tests/support/sql_corpus.h"

#include <QFile>
#include <stdexcept>

namespace orvo::test {
namespace {

QString ReadCorpusFile(const char* name) {
    QFile file(QStringLiteral(ORVO_SOURCE_DIR "/tests/support/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        throw std::runtime_error(
            ("cannot read the SQL corpus file " + file.fileName()).toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

}  // namespace

QStringList SqlCorpus() {
    // One statement a paragraph; lines that start with "--" are headings.
    QStringList statements;
    QStringList lines;
    const auto flush = [&] {
        if (!lines.isEmpty())
            statements << lines.join(QLatin1Char('\n'));
        lines.clear();
    };
    for (const QString& line : ReadCorpusFile("sql_corpus.sql").split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty()) {
            flush();
        } else if (!line.startsWith(QLatin1String("--"))) {
            lines << line;
        }
    }
    flush();
    return statements;
}

QStringList SqlCorpusTables() {
    QStringList tables;
    for (const QString& line : ReadCorpusFile("sql_corpus_tables.txt").split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1Char('#')))
            tables << line;
    }
    return tables;
}

}  // namespace orvo::test
