#pragma once

struct sqlite3;

namespace db {

// Registers on a SQLite handle the functions that translated T-SQL relies on.
void registerSqliteFunctions(sqlite3 *handle);

} // namespace db
