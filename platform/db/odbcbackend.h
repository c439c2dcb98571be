#pragma once

#include "backend.h"

#include <QHash>
#include <QSqlDatabase>

class QSqlQuery;
class QSqlError;

namespace db {

// The ODBC back end, through QtSql's QODBC driver: statements go to the server as they are.
// With translation on (an ODBC driver for SQLite), T-SQL is translated by the connection and
// the write-back follows SQLite's ways.
class OdbcBackend : public Backend
{
public:
    // odbcConnectionString is handed to the driver; throws DatabaseError.
    OdbcBackend(const QString &odbcConnectionString, bool translatesTsql);
    ~OdbcBackend() override;

    QString sourceName() const override { return QStringLiteral("ODBC"); }
    bool translatesTsql() const override { return m_translates; }
    int execute(const QString &sql) override;
    std::shared_ptr<RecordsetData> query(const QString &sql, const QStringList &onlyFields = {}) override;
    int executeBound(const QString &sql, const QVariantList &values) override;
    QVariant lastInsertedKey() override;
    std::optional<TableSchema> tableSchema(const QString &table) override;
    void beginTransaction() override;
    void commitTransaction() override;
    void rollbackTransaction() override;

private:
    [[noreturn]] void fail(const QSqlError &error, const QVariant &handle, int handleType, const QString &statement);
    [[noreturn]] void failQuery(const QSqlQuery &query, const QString &statement);

    QString m_name;
    QSqlDatabase m_database;
    // Catalog lookups are round trips to the server: kept until a statement changes the schema.
    QHash<QString, std::optional<TableSchema>> m_schemas;
    bool m_translates;
};

} // namespace db
