#pragma once

#include "corpusentries.h"

#include <QString>

// tests/corpus/statements.sql as the entries write it: the header that describes the format, then
// each entry's name, expectations and statement, entries separated by GO lines. The statements
// stay readable for people and for tools other than the test (scripts/check-sql.sh parses them).
namespace corpus {

QString fileText(const QList<Entry> &entries);

// Why the file's format cannot hold the entry's statement; empty when it can.
QString unwritable(const Entry &entry);

} // namespace corpus
