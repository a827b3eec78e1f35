#pragma once

#include <QStringList>

namespace orvo::test {

// Statements as the component and the reminder code send them (sql_corpus.sql beside this file):
// the translation tests run each one on both engines, and the benchmark translates them.
QStringList SqlCorpus();

// The tables those statements read and write (sql_corpus_tables.txt), each as
// "Name: column type, ...". Types: id (the identity key), int, flag (SMALLINT 0/1), text, date,
// money.
QStringList SqlCorpusTables();

}  // namespace orvo::test
