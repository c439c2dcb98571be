#pragma once

#include <QList>
#include <QString>
#include <stdexcept>

namespace db {

// One entry of a connection's error list, as the error dialog shows it.
struct DbError
{
    QString description;
    QString source;   // "SQLite", "ODBC", "Recordset", "T-SQL"
    QString sqlState; // ODBC state, or empty
    int nativeError = 0;
};

// Raised by every failing database operation. The same errors stay readable on the
// connection (Connection::errors()) until its next failure or clearErrors().
class DatabaseError : public std::runtime_error
{
public:
    DatabaseError(const QList<DbError> &errors, const QString &statement = {});

    const QList<DbError> &errors() const { return m_errors; }
    const QString &statement() const { return m_statement; }
    QString message() const; // descriptions joined by new lines

    // The write-back refused the row because someone else changed it after it was read: the
    // caller tells the user and reads the row again instead of offering to retry.
    bool isStaleRow() const;

private:
    QList<DbError> m_errors;
    QString m_statement;
};

} // namespace db
