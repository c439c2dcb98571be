#pragma once

#include <QString>

namespace dbsetup {

// What a SQLite file is, found out without changing it.
struct DatabaseFileCheck
{
    enum Kind {
        Missing,         // nothing there yet (or an empty file): the demo database may be made
        ModuleDatabase,  // a SQLite database with the module's tables
        ForeignDatabase, // a SQLite database without them
        NotADatabase,    // not a SQLite database, or one SQLite cannot read
        Unreadable,      // a folder, or a file the user may not read
    };
    Kind kind = Missing;
    bool writable = false; // the user may write the file and its folder (for Missing: the folder)
    bool walMode = false;  // the file says it is in WAL mode
    int schemaVersion = 0; // PRAGMA user_version (dbsetup::kSchemaVersion when up to date)
    QString problem;       // why it is not opened, in Italian, naming the file; empty otherwise

    bool isModuleDatabase() const { return kind == ModuleDatabase; }
};

// Reads the file's header, then its catalogue through a read-only connection that changes
// nothing and leaves no -wal, -shm or journal behind, so that a file of another program is
// byte for byte what it was. Never throws.
DatabaseFileCheck checkDatabaseFile(const QString &path);

// Makes a module database the user may write ready for the editor: WAL mode, so that the
// editor's two connections work side by side, and the triggers of today's schema and the journal
// when the file was made by an earlier version. Call it only for a file checkDatabaseFile() found to be a
// writable module database. Throws db::DatabaseError.
void prepareDatabaseAt(const QString &path);

} // namespace dbsetup
