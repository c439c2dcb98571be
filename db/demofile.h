#pragma once

#include <QString>

namespace dbsetup {

// File-level set-up of the embedded database, through SQLite's C API: the module's connection
// translates T-SQL, while the schema and the bulk data are written in SQLite's own dialect.
// createSchema()/insertDemoData() of demodatabase.h find the file from the connection string
// and delegate here.

// The SQLite file a connection string names ("Data Source=" of the embedded form, or
// "Database="/"Data Source=" of an ODBC string to a SQLite driver); empty when it names none.
QString sqliteFileOf(const QString &connectionString);

// Creates every table, view, trigger and index in the file (created when missing), the journal's
// included, marks it with the schema version (kSchemaVersion) and leaves it in WAL mode. Throws
// db::DatabaseError.
void createSchemaAt(const QString &path);

// Writes the two demo companies into a file that holds the schema. Deterministic: the same
// rows every time. The demo starts with an empty history: what the triggers journaled while
// writing it is not kept. Throws db::DatabaseError.
void insertDemoDataAt(const QString &path);

} // namespace dbsetup
