#pragma once

#include "databaseerror.h"

#include <QCache>
#include <QString>
#include <QStringList>
#include <memory>

namespace db {

class Recordset;
class Backend;

// The module's database connection.
//
// Connection strings (read and written through db::connectionstring: a value in braces may
// hold ';', as in "Data Source={/dati/ditta;1.sqlite}"):
//   "Provider=SQLite;Data Source=<file>"          embedded database (T-SQL is translated)
//   ... with "Mode=Read"                          the same, read-only: nothing is written to the
//                                                 file, every write is refused with a message
//   any other string                              ODBC connection string, sent to the driver
//                                                 unchanged; statements go to the server unchanged
//   an ODBC string with "TSQLCompat=SQLite;"      ODBC to a SQLite driver, statements translated
//                                                 (the key is removed before the driver sees it,
//                                                 and a braced Database= becomes a file: URI)
//
// Opening never changes a file that already holds tables: only a new, empty database is put in
// WAL mode here (see dbsetup::prepareDatabaseAt for the module's own files).
// Connections are shared (std::shared_ptr) between the host and the forms, as the
// host's ADO connection object is.
class Connection
{
public:
    // Opens the connection; throws DatabaseError.
    static std::shared_ptr<Connection> open(const QString &connectionString);
    ~Connection();

    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    QString connectionString() const;
    bool translatesTsql() const; // true when statements go through the SQLite compatibility layer

    // Executes a statement that returns no rows; returns the rows affected. Throws DatabaseError.
    int execute(const QString &sql);

    // Runs a query and reads every row into a client-side recordset. Throws DatabaseError.
    std::shared_ptr<Recordset> openRecordset(const QString &sql);
    // The same, keeping only the fields named (in any case); the statement is sent as it is and
    // the other columns are never read. Such a recordset is read-only: it lacks the columns
    // that would find its rows again.
    std::shared_ptr<Recordset> openRecordset(const QString &sql, const QStringList &onlyFields);

    // The errors of the last failure (the ADO error collection); empty after success is not
    // guaranteed: the list is replaced only by the next failure or by clearErrors().
    const QList<DbError> &errors() const;
    void clearErrors();

    Backend &backend(); // used by Recordset for write-back

private:
    explicit Connection(const QString &connectionString);
    [[noreturn]] void fail(const DatabaseError &error); // records and rethrows
    QString translated(const QString &sql) const;
    friend class Recordset;

    std::weak_ptr<Connection> m_self;
    QString m_connectionString;
    std::unique_ptr<Backend> m_backend;
    QList<DbError> m_errors;
    mutable QCache<QString, QString> m_translations {256}; // T-SQL -> the back end's dialect
};

using ConnectionPtr = std::shared_ptr<Connection>;

} // namespace db
