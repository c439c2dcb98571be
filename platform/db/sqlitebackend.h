#pragma once

#include "backend.h"
#include "sqlitecheckpointer.h"

#include <QHash>
#include <list>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace db {

// The embedded back end: a SQLite file reached through the sqlite3 C API. Prepared statements
// are kept by text and reused, so per-row statements and write-back stay cheap.
class SqliteBackend : public Backend
{
public:
    // Read-only: opened so that nothing is written and no -wal or -shm file is left; every
    // write is refused with a message that says so. Throws DatabaseError.
    SqliteBackend(const QString &fileName, bool readOnly);
    ~SqliteBackend() override;

    QString sourceName() const override { return QStringLiteral("SQLite"); }
    bool translatesTsql() const override { return true; }
    int execute(const QString &sql) override;
    std::shared_ptr<RecordsetData> query(const QString &sql, const QStringList &onlyFields = {}) override;
    int executeBound(const QString &sql, const QVariantList &values) override;
    QVariant lastInsertedKey() override;
    std::optional<TableSchema> tableSchema(const QString &table) override;
    void holdReadSnapshot() override;
    void releaseReadSnapshot() override;
    void beginTransaction() override;
    void commitTransaction() override;
    void rollbackTransaction() override;
    bool isReadOnly() const override { return m_readOnly; }

private:
    class StatementCache
    {
    public:
        ~StatementCache();
        void clear();
        sqlite3_stmt *take(const QByteArray &text);
        void give(const QByteArray &text, sqlite3_stmt *statement);

    private:
        static constexpr int Capacity = 100;
        using Entry = std::pair<QByteArray, sqlite3_stmt *>;
        std::list<Entry> m_entries; // most recently used first
        QHash<QByteArray, std::list<Entry>::iterator> m_index;
    };

    // Runs each statement of the text in turn; onStatement gets every prepared statement and
    // steps it. Statements that make up the whole text are cached.
    template<typename Step>
    void forEachStatement(const QString &sql, Step onStatement);
    // The same for a text prepared in place of sql (its parameterised form); failures name sql.
    template<typename Step>
    void forEachStatement(const QString &text, const QString &sql, Step onStatement);
    bool isEmptyDatabase();
    void enterSnapshotFor(sqlite3_stmt *statement);
    void leaveSnapshot();
    qint64 schemaVersion();
    std::optional<TableSchema> readTableSchema(const QString &table);
    DatabaseError lastError(const QString &statement) const;
    [[noreturn]] void fail(const QString &statement, int code);
    void step(sqlite3_stmt *statement, const QString &sql);
    void bindAll(sqlite3_stmt *statement, const QVariantList &values, const QString &sql);
    void readRows(sqlite3_stmt *statement, const QString &sql, const QStringList &onlyFields, RecordsetData &data);

    // Temporary tables built again and again by the same SELECT ... INTO (sqlitetemporarytables.cpp).
    struct TemporaryTable
    {
        QString builtBy;      // the SELECT that built it, its conditions' values as parameters
        qint64 schemaVersion; // of the database when it was built
        bool hidden = false;  // dropped, as far as the statements can tell
    };
    std::optional<int> executeOnTemporaryTable(const QString &sql);
    // Runs text (prepared in place of sql, cached) with values bound, for a statement that returns no rows.
    void run(const QString &text, const QString &sql, const QVariantList &values = {});
    void dropHiddenTablesNamedIn(const QString &sql);
    void forgetTemporaryTablesChangedBy(const QString &sql);

    sqlite3 *m_handle = nullptr;
    bool m_readOnly = false;
    StatementCache m_cache;
    QHash<QString, std::optional<TableSchema>> m_schemas; // lower-case table name -> its schema
    qint64 m_schemaVersion = -1;
    int m_snapshotHolds = 0;
    bool m_inSnapshot = false;                          // a read transaction begun here is open
    std::optional<unsigned int> m_dataVersion;          // the file's version when the schema was last read
    QHash<QString, TemporaryTable> m_temporaryTables;   // by lower-case name, "#gd12_temp"
    std::unique_ptr<SqliteCheckpointer> m_checkpointer; // none when read-only
};

} // namespace db
