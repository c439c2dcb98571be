#include "sqlitebackend.h"

#include "recordsetdata.h"
#include "sqlitefilename.h"
#include "sqlitefunctions.h"
#include "sqliteparameters.h"
#include "storedvalues.h"

#include <sqlite3.h>

namespace db {

namespace {

constexpr int BusyTimeoutMs = 5000;

QString sqliteText(const unsigned char *text, int bytes)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(text), bytes);
}

QString columnText(sqlite3_stmt *statement, int column)
{
    const unsigned char *text = sqlite3_column_text(statement, column);
    return sqliteText(text, sqlite3_column_bytes(statement, column));
}

bool onlyBlanks(const char *from, const char *to)
{
    for (const char *p = from; p < to; ++p) {
        if (!(*p == ' ' || *p == '\t' || *p == '\r' || *p == '\n' || *p == ';'))
            return false;
    }
    return true;
}

// Reads one cell as the field's type; a value the type cannot hold keeps its own form.
void readCell(sqlite3_stmt *statement, int column, FieldInfo &field, CellStore &cells)
{
    const int storage = sqlite3_column_type(statement, column);
    if (storage == SQLITE_NULL) {
        cells.appendNull();
        return;
    }
    if (field.type == FieldType::Unknown) {
        switch (storage) {
        case SQLITE_INTEGER: field.type = FieldType::Integer; break;
        case SQLITE_FLOAT: field.type = FieldType::Double; break;
        case SQLITE_BLOB: field.type = FieldType::Blob; break;
        default: {
            const char *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            const bool isDate = storedvalues::parseDateTime(text, sqlite3_column_bytes(statement, column)).isValid();
            field.type = isDate ? FieldType::DateTime : FieldType::Text;
        }
        }
    }
    switch (field.type) {
    case FieldType::Integer:
        if (storage == SQLITE_INTEGER)
            return cells.appendInteger(sqlite3_column_int64(statement, column));
        if (storage == SQLITE_FLOAT)
            return cells.appendDouble(sqlite3_column_double(statement, column));
        break;
    case FieldType::Double:
    case FieldType::Decimal:
        if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT)
            return cells.appendDouble(sqlite3_column_double(statement, column));
        break;
    case FieldType::Boolean:
        if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT)
            return cells.appendBoolean(sqlite3_column_int64(statement, column) != 0);
        break;
    case FieldType::DateTime:
        if (storage == SQLITE_TEXT) {
            const char *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            const QDateTime value = storedvalues::parseDateTime(text, sqlite3_column_bytes(statement, column));
            if (value.isValid())
                return cells.appendDateTime(value);
        }
        break;
    case FieldType::Blob: {
        const char *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        return cells.append(QByteArray(bytes, sqlite3_column_bytes(statement, column)));
    }
    case FieldType::Text:
    case FieldType::Unknown: break;
    }
    const char *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    cells.appendText(text, sqlite3_column_bytes(statement, column));
}

int bindValue(sqlite3_stmt *statement, int index, const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return sqlite3_bind_null(statement, index);
    const int type = value.metaType().id();
    if (type == QMetaType::Bool || storedvalues::isWholeNumberType(type))
        return sqlite3_bind_int64(statement, index, value.toLongLong());
    switch (type) {
    case QMetaType::Double:
    case QMetaType::Float: return sqlite3_bind_double(statement, index, value.toDouble());
    case QMetaType::QDateTime:
    case QMetaType::QDate: {
        const QByteArray text = storedvalues::formatDateTime(value.toDateTime()).toUtf8();
        return sqlite3_bind_text(statement, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    }
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return sqlite3_bind_blob(statement, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
    }
    default: {
        const QByteArray text = value.toString().toUtf8();
        return sqlite3_bind_text(statement, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    }
    }
}

} // namespace

SqliteBackend::StatementCache::~StatementCache()
{
    clear();
}

void SqliteBackend::StatementCache::clear()
{
    for (const Entry &entry : m_entries)
        sqlite3_finalize(entry.second);
    m_entries.clear();
    m_index.clear();
}

sqlite3_stmt *SqliteBackend::StatementCache::take(const QByteArray &text)
{
    const auto found = m_index.find(text);
    if (found == m_index.end())
        return nullptr;
    sqlite3_stmt *statement = found.value()->second;
    m_entries.erase(found.value());
    m_index.erase(found);
    return statement;
}

void SqliteBackend::StatementCache::give(const QByteArray &text, sqlite3_stmt *statement)
{
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    if (m_index.contains(text)) { // the same text was prepared twice meanwhile
        sqlite3_finalize(statement);
        return;
    }
    m_entries.emplace_front(text, statement);
    m_index.insert(text, m_entries.begin());
    if (int(m_entries.size()) > Capacity) {
        sqlite3_finalize(m_entries.back().second);
        m_index.remove(m_entries.back().first);
        m_entries.pop_back();
    }
}

SqliteBackend::SqliteBackend(const QString &fileName, bool readOnly)
    : m_readOnly(readOnly)
{
    const int access = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int code = sqlite3_open_v2(sqliteFileUri(fileName, readOnly).constData(), &m_handle,
                                     access | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        const QString message = m_handle ? QString::fromUtf8(sqlite3_errmsg(m_handle))
                                         : QString::fromUtf8(sqlite3_errstr(code));
        sqlite3_close_v2(m_handle);
        m_handle = nullptr;
        throw makeError(message, sourceName(), {}, code);
    }
    sqlite3_extended_result_codes(m_handle, 1);
    sqlite3_busy_timeout(m_handle, BusyTimeoutMs);
    // These settings belong to the connection and write nothing into the file. The schema's
    // trigger removes a node's whole subtree by itself; fired again for every node it removes
    // (recursive triggers, which this SQLite turns on by default) it would walk each remaining
    // subtree once more, several times slower on a large branch for nothing.
    QList<const char *> pragmas {"PRAGMA synchronous=NORMAL", "PRAGMA foreign_keys=OFF",
                                 "PRAGMA recursive_triggers=OFF", "PRAGMA temp_store=MEMORY"};
    // WAL lets a second connection read while this one writes. Only a database with nothing in
    // it yet is switched here: a file that holds tables keeps the journal it was given until it
    // is known to be the module's (dbsetup::prepareDatabaseAt).
    if (!readOnly && isEmptyDatabase())
        pragmas.prepend("PRAGMA journal_mode=WAL");
    for (const char *pragma : std::as_const(pragmas)) {
        const int result = sqlite3_exec(m_handle, pragma, nullptr, nullptr, nullptr);
        if (result != SQLITE_OK) {
            const DatabaseError error = lastError(QString::fromLatin1(pragma));
            sqlite3_close_v2(m_handle);
            m_handle = nullptr;
            throw error;
        }
    }
    registerSqliteFunctions(m_handle);
    if (!readOnly && *sqlite3_db_filename(m_handle, "main") != '\0')
        m_checkpointer = std::make_unique<SqliteCheckpointer>(m_handle);
}

bool SqliteBackend::isEmptyDatabase()
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_handle, "SELECT COUNT(*) FROM sqlite_master", -1, &statement, nullptr) != SQLITE_OK)
        return false;
    const bool empty = sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_int(statement, 0) == 0;
    sqlite3_finalize(statement);
    return empty;
}

SqliteBackend::~SqliteBackend()
{
    leaveSnapshot();
    m_checkpointer.reset();
    m_cache.clear();
    sqlite3_close_v2(m_handle);
}

DatabaseError SqliteBackend::lastError(const QString &statement) const
{
    const int extended = sqlite3_extended_errcode(m_handle);
    QString message = QString::fromUtf8(sqlite3_errmsg(m_handle));
    if (m_readOnly && (extended & 0xFF) == SQLITE_READONLY)
        message = QStringLiteral("Il database è aperto in sola lettura: la modifica non è stata salvata.");
    return makeError(message, sourceName(), statement, extended);
}

void SqliteBackend::fail(const QString &statement, int code)
{
    const DatabaseError error = code == SQLITE_OK
        ? makeError(QString::fromUtf8(sqlite3_errmsg(m_handle)), sourceName(), statement, code)
        : lastError(statement);
    // The error may well wait on a user's answer: no read transaction is kept open meanwhile.
    leaveSnapshot();
    throw error;
}

template<typename Step>
void SqliteBackend::forEachStatement(const QString &sql, Step onStatement)
{
    forEachStatement(sql, sql, onStatement);
}

template<typename Step>
void SqliteBackend::forEachStatement(const QString &text16, const QString &sql, Step onStatement)
{
    const QByteArray text = text16.toUtf8();
    const char *from = text.constData();
    const char *end = from + text.size();
    bool wholeText = true;
    while (from < end && !onlyBlanks(from, end)) {
        sqlite3_stmt *statement = wholeText ? m_cache.take(text) : nullptr;
        const char *tail = end;
        bool cacheable = statement != nullptr;
        if (!statement) {
            const int code = sqlite3_prepare_v3(m_handle, from, int(end - from), SQLITE_PREPARE_PERSISTENT, &statement,
                                                &tail);
            if (code != SQLITE_OK)
                fail(sql, code);
            if (!statement) // only comments left
                break;
            cacheable = wholeText && onlyBlanks(tail, end);
        }
        try {
            onStatement(statement);
        } catch (...) {
            if (cacheable)
                m_cache.give(text, statement);
            else
                sqlite3_finalize(statement);
            throw;
        }
        if (cacheable)
            m_cache.give(text, statement);
        else
            sqlite3_finalize(statement);
        from = tail;
        wholeText = false;
    }
}

void SqliteBackend::step(sqlite3_stmt *statement, const QString &sql)
{
    int code;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    }
    if (code != SQLITE_DONE) {
        const DatabaseError error = lastError(sql);
        sqlite3_reset(statement);
        leaveSnapshot();
        throw error;
    }
}

int SqliteBackend::execute(const QString &sql)
{
    // Not parameterised, but for the INSERT of one row: what is executed is mostly DDL and
    // writes, and DDL expires every prepared statement of the connection anyway.
    if (const std::optional<int> changed = executeOnTemporaryTable(sql))
        return *changed;
    dropHiddenTablesNamedIn(sql);
    forgetTemporaryTablesChangedBy(sql);
    leaveSnapshot();
    // A row inserted among many of a batch reuses the batch's prepared statement.
    if (const ParameterizedSelect insert = parameterizeValues(sql); !insert.values.isEmpty()) {
        run(insert.text, sql, insert.values);
        return int(sqlite3_changes64(m_handle));
    }
    int changed = 0;
    forEachStatement(sql, [&](sqlite3_stmt *statement) {
        const sqlite3_int64 totalBefore = sqlite3_total_changes64(m_handle);
        step(statement, sql);
        // Only statements that changed rows count; sqlite3_changes() alone would repeat the
        // count of an earlier statement after DDL or a SELECT.
        if (sqlite3_total_changes64(m_handle) != totalBefore)
            changed += int(sqlite3_changes64(m_handle));
    });
    return changed;
}

void SqliteBackend::run(const QString &text, const QString &sql, const QVariantList &values)
{
    forEachStatement(text, sql, [&](sqlite3_stmt *statement) {
        bindAll(statement, values, sql);
        step(statement, sql);
    });
}

void SqliteBackend::bindAll(sqlite3_stmt *statement, const QVariantList &values, const QString &sql)
{
    for (int i = 0; i < values.size(); ++i) {
        const int code = bindValue(statement, i + 1, values.at(i));
        if (code != SQLITE_OK)
            fail(sql, code);
    }
}

void SqliteBackend::readRows(sqlite3_stmt *statement, const QString &sql, const QStringList &onlyFields,
                             RecordsetData &data)
{
    // Step first: a cached statement is prepared again on its first step after a schema change,
    // and only then do its columns describe the table as it is now.
    int code = sqlite3_step(statement);
    QStringList names;
    for (int i = 0; i < sqlite3_column_count(statement); ++i)
        names << QString::fromUtf8(sqlite3_column_name(statement, i));
    const QList<int> kept = keptColumns(names, onlyFields);
    const int columns = int(kept.size());
    data.fields.clear();
    data.fields.reserve(columns);
    for (int column : kept) {
        FieldInfo field;
        field.name = names.at(column);
        const char *declared = sqlite3_column_decltype(statement, column);
        const storedvalues::ColumnType type = storedvalues::columnTypeFromDeclaration(
            declared ? QString::fromUtf8(declared) : QString());
        field.type = type.type;
        field.numericScale = type.numericScale;
        data.fields.append(field);
    }
    FieldInfo *fields = data.fields.data();
    const int *source = kept.constData();
    RowStoreBuilder rows(columns);
    CellStore &cells = rows.cells();
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (int i = 0; i < columns; ++i)
            readCell(statement, source[i], fields[i], cells);
    }
    if (code != SQLITE_DONE) {
        const DatabaseError error = lastError(sql);
        sqlite3_reset(statement);
        leaveSnapshot();
        throw error;
    }
    rows.finish(data);
}

std::shared_ptr<RecordsetData> SqliteBackend::query(const QString &sql, const QStringList &onlyFields)
{
    dropHiddenTablesNamedIn(sql);
    auto data = std::make_shared<RecordsetData>();
    const ParameterizedSelect shared = parameterizeConditions(sql);
    forEachStatement(shared.values.isEmpty() ? sql : shared.text, sql, [&](sqlite3_stmt *statement) {
        enterSnapshotFor(statement);
        bindAll(statement, shared.values, sql);
        if (sqlite3_column_count(statement) > 0)
            readRows(statement, sql, onlyFields, *data);
        else
            step(statement, sql);
    });
    data->statement = sql;
    data->indexFields();
    return data;
}

int SqliteBackend::executeBound(const QString &sql, const QVariantList &values)
{
    dropHiddenTablesNamedIn(sql);
    forgetTemporaryTablesChangedBy(sql);
    leaveSnapshot();
    int changed = 0;
    bool bound = false;
    forEachStatement(sql, [&](sqlite3_stmt *statement) {
        if (bound)
            throw makeError(QStringLiteral("Una sola istruzione con parametri alla volta."), sourceName(), sql);
        bound = true;
        bindAll(statement, values, sql);
        step(statement, sql);
        changed = int(sqlite3_changes64(m_handle));
    });
    return changed;
}

QVariant SqliteBackend::lastInsertedKey()
{
    return QVariant(qlonglong(sqlite3_last_insert_rowid(m_handle)));
}

std::optional<TableSchema> SqliteBackend::tableSchema(const QString &table)
{
    dropHiddenTablesNamedIn(table);
    // Asked for every recordset read from one table, to know whether it can be written back:
    // kept until the database's schema changes (by this connection or another). The schema is
    // looked at again only once the file has changed since it was last looked at: the pager's
    // data version costs no statement, while each statement is a read transaction of its own.
    unsigned int dataVersion = 0;
    const bool knowsVersion = sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_DATA_VERSION, &dataVersion)
        == SQLITE_OK;
    if (!knowsVersion || !m_dataVersion || *m_dataVersion != dataVersion) {
        const qint64 version = schemaVersion();
        if (version < 0)
            return readTableSchema(table);
        if (version != m_schemaVersion) {
            m_schemas.clear();
            m_schemaVersion = version;
        }
        if (knowsVersion)
            m_dataVersion = dataVersion;
    }
    const QString key = table.toLower();
    const auto known = m_schemas.constFind(key);
    if (known != m_schemas.constEnd())
        return *known;
    const std::optional<TableSchema> schema = readTableSchema(table);
    m_schemas.insert(key, schema);
    return schema;
}

qint64 SqliteBackend::schemaVersion()
{
    qint64 version = -1;
    forEachStatement(QStringLiteral("PRAGMA main.schema_version"), [&](sqlite3_stmt *statement) {
        if (sqlite3_step(statement) == SQLITE_ROW)
            version = sqlite3_column_int64(statement, 0);
    });
    return version;
}

std::optional<TableSchema> SqliteBackend::readTableSchema(const QString &table)
{
    QString quoted = table;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    const QString sql = QStringLiteral("PRAGMA table_info(\"%1\")").arg(quoted);
    TableSchema schema;
    QList<QPair<int, QString>> keys;
    forEachStatement(sql, [&](sqlite3_stmt *statement) {
        int code;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
            const QString name = columnText(statement, 1);
            schema.columns << name;
            const int keyOrder = sqlite3_column_int(statement, 5);
            if (keyOrder > 0)
                keys.append({keyOrder, name});
        }
        if (code != SQLITE_DONE)
            fail(sql, code);
    });
    if (schema.columns.isEmpty())
        return std::nullopt;
    std::sort(keys.begin(), keys.end());
    for (const auto &key : keys)
        schema.keyColumns << key.second;
    return schema;
}

void SqliteBackend::holdReadSnapshot()
{
    ++m_snapshotHolds;
}

void SqliteBackend::releaseReadSnapshot()
{
    if (m_snapshotHolds > 0 && --m_snapshotHolds == 0)
        leaveSnapshot();
}

// Each statement run on its own opens and closes a read transaction (locks taken and given
// back through the file system); a run of queries for one purpose shares one instead. Only a
// statement that writes nothing joins it, so that no write ever waits on a snapshot.
void SqliteBackend::enterSnapshotFor(sqlite3_stmt *statement)
{
    if (!sqlite3_stmt_readonly(statement)) {
        leaveSnapshot();
        return;
    }
    if (m_snapshotHolds == 0 || m_inSnapshot || !sqlite3_get_autocommit(m_handle))
        return;
    m_inSnapshot = sqlite3_exec(m_handle, "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
}

// IMMEDIATE takes the write lock at once: a transaction that began by reading could find, at its
// first write, that another connection wrote meanwhile, and would have to start over.
void SqliteBackend::beginTransaction()
{
    leaveSnapshot();
    if (sqlite3_exec(m_handle, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
        throw lastError(QStringLiteral("BEGIN IMMEDIATE"));
}

void SqliteBackend::commitTransaction()
{
    if (sqlite3_exec(m_handle, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        throw lastError(QStringLiteral("COMMIT"));
}

void SqliteBackend::rollbackTransaction()
{
    if (!sqlite3_get_autocommit(m_handle))
        sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteBackend::leaveSnapshot()
{
    if (!m_inSnapshot)
        return;
    m_inSnapshot = false;
    if (sqlite3_exec(m_handle, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        sqlite3_exec(m_handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

} // namespace db
