#pragma once

#include "benchutil.h"

#include <QList>
#include <QString>
#include <functional>

namespace bench {

class BenchTable;

// One size's figures, added to the table of that size.
using SizeBenchmark = std::function<void(const LargeDatabase &database, int runs, BenchTable &table)>;

// The main of a benchmark that opens the editor: offscreen unless a platform is chosen, no
// statement trace, the options of parseOptions (with this program's own defaults when the
// command line gives none), then one table per size titled "<title>, N nodes (C cores, best of
// R)". A failure ends the run with its message (and the statement, for a database error).
int runPerSize(int argc, char *argv[], const QString &title, const SizeBenchmark &benchSize,
               const QList<int> &defaultSizes = {}, int defaultRuns = 0);

// A copy of a generated database to write on, so that the kept file stays as generated; the
// source's log is folded into it first, so that the copy holds every row.
void copyDatabase(const QString &source, const QString &target);

} // namespace bench
