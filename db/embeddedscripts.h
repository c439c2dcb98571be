#pragma once

#include <QString>

namespace dbsetup {

// The version of schema_sqlite.sql and journal_sqlite.sql, kept in PRAGMA user_version of every
// file set up with them and written last, once the file is complete: 0 is a database made before
// the trees checked themselves, 1 one made before the journal, 2 one whose journal wrote whole
// rows for updates, 3 one whose journal indexed every row by subject and classification
// (dbsetup::prepareDatabaseAt brings them all up to date), 4 the schema of today.
inline constexpr int kSchemaVersion = 5;

// Scripts embedded through db.qrc (SQLite dialect).
QString sqliteSchemaScript();  // schema_sqlite.sql
QString journalScript();       // journal_sqlite.sql
QString demoReferenceScript(); // demo_reference.sql

} // namespace dbsetup
