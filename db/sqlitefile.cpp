#include "sqlitefile.h"

#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefilename.h"

#include <QByteArray>

#include <sqlite3.h>

namespace dbsetup {

namespace {

[[noreturn]] void throwSqliteError(sqlite3 *handle, int code, const QString &statement)
{
    db::DbError error;
    error.description = handle ? QString::fromUtf8(sqlite3_errmsg(handle)) : QString::fromUtf8(sqlite3_errstr(code));
    error.source = QStringLiteral("SQLite");
    error.nativeError = code;
    throw db::DatabaseError({error}, statement);
}

bool isCreateIndex(const QString &sql)
{
    // The statement's text may begin with the comment lines written above it.
    QStringList lines = sql.split(QLatin1Char('\n'));
    while (!lines.isEmpty()
           && (lines.first().trimmed().startsWith(QLatin1String("--")) || lines.first().trimmed().isEmpty()))
        lines.removeFirst();
    const QString text = lines.join(QLatin1Char(' ')).simplified().toUpper();
    return text.startsWith(QLatin1String("CREATE INDEX")) || text.startsWith(QLatin1String("CREATE UNIQUE INDEX"));
}

} // namespace

// ---- SqliteStatement

SqliteStatement::SqliteStatement(sqlite3 *handle, const QString &sql)
    : m_handle(handle)
{
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v2(handle, utf8.constData(), int(utf8.size()), &m_statement, nullptr);
    if (rc != SQLITE_OK)
        throwSqliteError(handle, rc, sql);
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

SqliteStatement::SqliteStatement(SqliteStatement &&other) noexcept
    : m_handle(other.m_handle)
    , m_statement(other.m_statement)
{
    other.m_statement = nullptr;
}

SqliteStatement &SqliteStatement::operator=(SqliteStatement &&other) noexcept
{
    if (this != &other) {
        sqlite3_finalize(m_statement);
        m_handle = other.m_handle;
        m_statement = other.m_statement;
        other.m_statement = nullptr;
    }
    return *this;
}

void SqliteStatement::fail(int code) const
{
    throwSqliteError(m_handle, code, QString::fromUtf8(sqlite3_sql(m_statement)));
}

void SqliteStatement::bind(int index, std::nullptr_t)
{
    if (const int rc = sqlite3_bind_null(m_statement, index); rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, int value)
{
    if (const int rc = sqlite3_bind_int(m_statement, index, value); rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, std::int64_t value)
{
    if (const int rc = sqlite3_bind_int64(m_statement, index, value); rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, double value)
{
    if (const int rc = sqlite3_bind_double(m_statement, index, value); rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, const char *asciiText)
{
    if (!asciiText)
        return bind(index, nullptr);
    if (const int rc = sqlite3_bind_text(m_statement, index, asciiText, -1, SQLITE_TRANSIENT); rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, const QString &text)
{
    if (text.isNull())
        return bind(index, nullptr);
    const QByteArray utf8 = text.toUtf8();
    if (const int rc = sqlite3_bind_text(m_statement, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        rc != SQLITE_OK)
        fail(rc);
}

void SqliteStatement::bind(int index, const std::optional<int> &value)
{
    if (value)
        bind(index, *value);
    else
        bind(index, nullptr);
}

void SqliteStatement::bind(int index, const std::optional<QString> &value)
{
    if (value)
        bind(index, *value);
    else
        bind(index, nullptr);
}

void SqliteStatement::run()
{
    int rc = sqlite3_step(m_statement);
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(m_statement);
    if (rc != SQLITE_DONE) {
        sqlite3_reset(m_statement);
        fail(rc);
    }
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

bool SqliteStatement::step()
{
    const int rc = sqlite3_step(m_statement);
    if (rc == SQLITE_ROW)
        return true;
    if (rc != SQLITE_DONE)
        fail(rc);
    return false;
}

int SqliteStatement::columnInt(int column) const
{
    return sqlite3_column_int(m_statement, column);
}

std::int64_t SqliteStatement::columnInt64(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

QString SqliteStatement::columnText(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return text ? QString::fromUtf8(text) : QString();
}

void SqliteStatement::reset()
{
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

// ---- SqliteFile

SqliteFile::SqliteFile(const QString &path, Access access)
    : m_path(path)
{
    const int flags = access == Access::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int rc = sqlite3_open_v2(db::sqliteFileUri(path, access == Access::ReadOnly).constData(), &m_handle,
                                   flags | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = m_handle ? QString::fromUtf8(sqlite3_errmsg(m_handle))
                                         : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(m_handle);
        m_handle = nullptr;
        db::DbError error {message + QStringLiteral(" (") + path + QLatin1Char(')'), QStringLiteral("SQLite"), {}, rc};
        throw db::DatabaseError({error});
    }
    sqlite3_busy_timeout(m_handle, 10000);
    sqlite3_extended_result_codes(m_handle, 1);
}

SqliteFile::~SqliteFile()
{
    sqlite3_close_v2(m_handle);
}

void SqliteFile::exec(const QString &sql)
{
    char *message = nullptr;
    const int rc = sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, &message);
    if (rc != SQLITE_OK) {
        sqlite3_free(message);
        throwSqliteError(m_handle, rc, sql);
    }
}

QStringList SqliteFile::execScript(const QString &script, Statements statements)
{
    QStringList skipped;
    const QByteArray utf8 = script.toUtf8();
    const char *next = utf8.constData();
    while (next && *next) {
        sqlite3_stmt *statement = nullptr;
        const char *tail = nullptr;
        const int rc = sqlite3_prepare_v2(m_handle, next, -1, &statement, &tail);
        if (rc != SQLITE_OK)
            throwSqliteError(m_handle, rc, QString::fromUtf8(next).left(400));
        next = tail;
        if (!statement) // only blanks or comments were left
            continue;
        const QString text = QString::fromUtf8(sqlite3_sql(statement));
        if (statements == Statements::AllButIndexes && isCreateIndex(text)) {
            skipped << text;
            sqlite3_finalize(statement);
            continue;
        }
        int step = sqlite3_step(statement);
        while (step == SQLITE_ROW)
            step = sqlite3_step(statement);
        sqlite3_finalize(statement);
        if (step != SQLITE_DONE)
            throwSqliteError(m_handle, step, text);
    }
    return skipped;
}

SqliteStatement SqliteFile::prepare(const QString &sql)
{
    return SqliteStatement(m_handle, sql);
}

std::int64_t SqliteFile::lastInsertId() const
{
    return sqlite3_last_insert_rowid(m_handle);
}

std::int64_t SqliteFile::scalar(const QString &sql)
{
    SqliteStatement statement(m_handle, sql);
    if (!statement.step())
        return 0;
    return statement.columnInt64(0);
}

} // namespace dbsetup
