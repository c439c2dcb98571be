#pragma once

#include <QString>

namespace db {

// The two ways the T-SQL compatibility layer refuses a statement. Both throw DatabaseError
// with one entry whose source is "T-SQL".

// A construct that SQLite cannot run with the same meaning, named as written.
[[noreturn]] void throwUnsupportedTsql(const QString &construct);

// A statement that is not valid T-SQL (an unterminated string, a date that does not exist).
[[noreturn]] void throwInvalidTsql(const QString &description);

} // namespace db
