#pragma once

#include "databaseerror.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

namespace db {

struct RecordsetData;

// Columns and primary key of a table, as the database describes them.
struct TableSchema
{
    QStringList columns;
    QStringList keyColumns;
};

// One database engine behind a Connection. Statements reaching a back end are already in the
// dialect it speaks (translated when the connection translates). Every failure throws
// DatabaseError. Internal to platform/db.
class Backend
{
public:
    virtual ~Backend() = default;

    virtual QString sourceName() const = 0;  // the source of its errors: "SQLite", "ODBC"
    virtual bool translatesTsql() const = 0; // statements (and bound dates) use SQLite's ways

    // Runs every statement of the text; returns the rows changed.
    virtual int execute(const QString &sql) = 0;

    // Runs a query and reads all of its rows. Field names and types are filled in; which fields
    // are writable is the caller's business. With onlyFields, only the columns so named (in any
    // case) are kept, in the query's order; the others are stepped over, never read.
    virtual std::shared_ptr<RecordsetData> query(const QString &sql, const QStringList &onlyFields = {}) = 0;

    // Runs one statement with positional parameters ("?"); returns the rows changed.
    virtual int executeBound(const QString &sql, const QVariantList &values) = 0;

    // The key the database generated for the last row inserted on this connection.
    virtual QVariant lastInsertedKey() = 0;

    // nullopt when the table is unknown.
    virtual std::optional<TableSchema> tableSchema(const QString &table) = 0;

    // One write transaction for a run of statements that stand or fall together. Begun, it
    // holds the database's write lock until it ends, so that nothing of another writer comes
    // between its statements.
    virtual void beginTransaction() = 0;
    virtual void commitTransaction() = 0;
    virtual void rollbackTransaction() = 0; // never throws; nothing to do outside a transaction
    virtual bool isReadOnly() const { return false; }

    // While held, the queries that read and write nothing may share one read transaction
    // instead of opening one each; writes still run in transactions of their own. Nested holds
    // count. A back end may ignore it.
    virtual void holdReadSnapshot() { }
    virtual void releaseReadSnapshot() { }
};

inline DatabaseError makeError(const QString &description, const QString &source, const QString &statement = {},
                               int nativeError = 0, const QString &sqlState = {})
{
    DbError error;
    error.description = description;
    error.source = source;
    error.sqlState = sqlState;
    error.nativeError = nativeError;
    return DatabaseError({error}, statement);
}

} // namespace db
