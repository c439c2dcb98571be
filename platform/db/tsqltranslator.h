#pragma once

#include <QString>

namespace db {

// Rewrites a statement written in the suite's T-SQL into SQLite's dialect, on tokens.
// Throws DatabaseError (source "T-SQL") naming the construct when it meets one it does not know.
QString translateTsqlToSqlite(const QString &tsql);

} // namespace db
