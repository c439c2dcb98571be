#pragma once

#include <QString>

struct sqlite3;

// SQLite's plan of a statement in its own dialect, as EXPLAIN QUERY PLAN words it (one step a
// line), or SQLite's message when the statement does not compile.
QString queryPlan(sqlite3 *handle, const QString &sqlite);
