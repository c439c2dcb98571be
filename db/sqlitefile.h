#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace dbsetup {

// One prepared statement of a SqliteFile, reused row after row: bind the values, run(), repeat.
// Parameters are 1-based as in SQLite; insert(a, b, c) binds 1..3 and runs.
class SqliteStatement
{
public:
    SqliteStatement(sqlite3 *handle, const QString &sql); // throws db::DatabaseError
    ~SqliteStatement();
    SqliteStatement(SqliteStatement &&other) noexcept;
    SqliteStatement &operator=(SqliteStatement &&other) noexcept;
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    void bind(int index, std::nullptr_t);
    void bind(int index, int value);
    void bind(int index, std::int64_t value);
    void bind(int index, double value);
    void bind(int index, const char *asciiText); // copied by SQLite
    void bind(int index, const QString &text);
    void bind(int index, const std::optional<int> &value);
    void bind(int index, const std::optional<QString> &value);

    // Executes the bound statement to its end, then resets it for the next row.
    void run();

    // Steps once; true while a row is available (read it with columnInt/columnText).
    bool step();
    int columnInt(int column) const;
    std::int64_t columnInt64(int column) const;
    QString columnText(int column) const;
    void reset();

    template<typename... Values>
    void insert(const Values &...values)
    {
        int index = 0;
        (bind(++index, values), ...);
        run();
    }

private:
    [[noreturn]] void fail(int code) const;

    sqlite3 *m_handle = nullptr;
    sqlite3_stmt *m_statement = nullptr;
};

// A SQLite database file opened with the C API, for what must not pass through the module's
// connection: schema DDL in SQLite's own dialect, and bulk writes of demo and benchmark data.
class SqliteFile
{
public:
    enum class Access { ReadWrite, ReadOnly };

    // ReadWrite opens or creates; ReadOnly writes nothing and leaves no -wal or -shm file behind
    // (db::sqliteFileUri). Throws db::DatabaseError.
    explicit SqliteFile(const QString &path, Access access = Access::ReadWrite);
    ~SqliteFile();
    SqliteFile(const SqliteFile &) = delete;
    SqliteFile &operator=(const SqliteFile &) = delete;

    // Runs one or more statements separated by semicolons.
    void exec(const QString &sql);

    enum class Statements { All, AllButIndexes };

    // Runs a script statement by statement. AllButIndexes returns the CREATE INDEX statements
    // instead of running them, so that a bulk load can create them afterwards.
    QStringList execScript(const QString &script, Statements statements = Statements::All);

    SqliteStatement prepare(const QString &sql);
    std::int64_t lastInsertId() const;
    std::int64_t scalar(const QString &sql); // first column of the first row, 0 when none

    sqlite3 *handle() const { return m_handle; }
    QString path() const { return m_path; }

private:
    QString m_path;
    sqlite3 *m_handle = nullptr;
};

// Runs the body inside BEGIN/COMMIT; rolls back and rethrows on failure.
template<typename Body>
void inTransaction(SqliteFile &file, Body &&body)
{
    file.exec(QStringLiteral("BEGIN"));
    try {
        body();
    } catch (...) {
        try {
            file.exec(QStringLiteral("ROLLBACK"));
        } catch (...) {
        }
        throw;
    }
    file.exec(QStringLiteral("COMMIT"));
}

} // namespace dbsetup
