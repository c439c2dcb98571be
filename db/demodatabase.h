#pragma once

#include "platform/db/connection.h"

#include <QString>

namespace dbsetup {

// Creates every table, view, index and trigger of the embedded database on an open SQLite
// connection (statements run untranslated, in SQLite's own dialect).
void createSchema(db::Connection &connection);

// Fills the demo companies (1: a believable Italian company; 2: a small one).
void insertDemoData(db::Connection &connection);

// Creates (schema + demo data) the SQLite file at path when it does not exist yet.
// Returns true when it was created now. Throws db::DatabaseError.
bool ensureDemoDatabase(const QString &path);

// "Provider=SQLite;Data Source=<path>", the path in braces when it holds a ';' (or anything else
// a connection string would read otherwise); read-only adds ";Mode=Read".
QString sqliteConnectionString(const QString &path, bool readOnly = false);

// The demo database's default place: the user's data folder.
QString defaultDemoDatabasePath();

} // namespace dbsetup
