#pragma once

#include <QString>

namespace dbsetup {

// The version of schema_sqlite.sql, kept in PRAGMA user_version of every file set up with it and
// written last, once the file is complete: 0 is a database made before the trees checked
// themselves (dbsetup::prepareDatabaseAt brings it up to date), 1 the schema of today.
inline constexpr int kSchemaVersion = 1;

// Scripts embedded through db.qrc (SQLite dialect).
QString sqliteSchemaScript();  // schema_sqlite.sql
QString demoReferenceScript(); // demo_reference.sql

} // namespace dbsetup
