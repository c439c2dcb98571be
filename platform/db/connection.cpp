#include "connection.h"

#include "connectionstring.h"
#include "odbcbackend.h"
#include "recordset.h"
#include "recordsetdata.h"
#include "selectshape.h"
#include "sqlitebackend.h"
#include "sqlitefilename.h"
#include "statementtrace.h"
#include "tsqltranslator.h"

namespace db {

namespace {

// An ODBC string to a SQLite driver (translation on) as the driver can take it. The driver reads
// its "Database=" up to the first ';' and knows no braces, so a file whose name needs them is
// handed over as a "file:" URI, which it opens as such: the file named, and no other.
QString forSqliteDriver(const QString &odbcString)
{
    const QStringList databaseKeys {QStringLiteral("Database")};
    const QString file = connectionstring::value(odbcString, databaseKeys);
    if (connectionstring::entry(QStringLiteral("Database"), file) == QStringLiteral("Database=") + file)
        return odbcString;
    return connectionstring::with(connectionstring::without(odbcString, databaseKeys), QStringLiteral("Database"),
                                  QString::fromUtf8(sqliteFileUri(file)));
}

// Ties each field to the base-table column it reads, walking the select list in order ("*"
// stands for every column of the table); falls back to names when the list cannot be matched.
QStringList sourceColumns(const SelectShape &shape, const TableSchema &schema, const QList<FieldInfo> &fields)
{
    QStringList positional;
    for (const SelectShape::Item &item : shape.items) {
        if (item.allColumns)
            positional << schema.columns;
        else
            positional << item.sourceColumn;
    }
    QStringList result;
    if (positional.size() == fields.size()) {
        result = positional;
    } else {
        for (const FieldInfo &field : fields) {
            QString source;
            bool listed = false;
            for (const SelectShape::Item &item : shape.items) {
                if (!item.allColumns && item.outputName.compare(field.name, Qt::CaseInsensitive) == 0) {
                    source = item.sourceColumn;
                    listed = true;
                    break;
                }
            }
            if (!listed)
                source = field.name;
            result << source;
        }
    }
    // Keep only real columns, spelled as the table spells them.
    for (QString &source : result) {
        QString spelled;
        for (const QString &column : schema.columns) {
            if (column.compare(source, Qt::CaseInsensitive) == 0) {
                spelled = column;
                break;
            }
        }
        source = spelled;
    }
    return result;
}

void markWritable(RecordsetData &data, const QString &tsql, Backend &backend)
{
    const SelectShape shape = SelectShape::analyse(tsql);
    if (!shape.singleTable || shape.temporaryTable)
        return;
    const std::optional<TableSchema> schema = backend.tableSchema(shape.table);
    if (!schema || schema->keyColumns.isEmpty())
        return;
    const QStringList sources = sourceColumns(shape, *schema, data.fields);
    QList<int> keyFields;
    for (const QString &key : schema->keyColumns) {
        const qsizetype field = sources.indexOf(key);
        if (field < 0)
            return; // without the key no row can be found again
        keyFields << int(field);
    }
    data.baseTable = shape.table;
    data.keyFields = keyFields;
    data.sourceColumns = sources;
    for (int i = 0; i < data.fields.size(); ++i) {
        data.fields[i].writable = !sources.at(i).isEmpty();
        data.fields[i].key = keyFields.contains(i);
    }
}

} // namespace

Connection::Connection(const QString &connectionString)
    : m_connectionString(connectionString)
{
    using namespace connectionstring;
    const QString provider = value(connectionString, {QStringLiteral("Provider")});
    if (provider.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0) {
        const QString file = value(connectionString, {QStringLiteral("Data Source"), QStringLiteral("DataSource")});
        if (file.isEmpty())
            throw makeError(QStringLiteral("Nella stringa di connessione manca il file del database (Data Source)."),
                            QStringLiteral("SQLite"));
        const bool readOnly = value(connectionString, {QStringLiteral("Mode")})
                                  .compare(QLatin1String("Read"), Qt::CaseInsensitive)
            == 0;
        m_backend = std::make_unique<SqliteBackend>(file, readOnly);
    } else {
        const QStringList compatKey {QStringLiteral("TSQLCompat")};
        const bool translates = value(connectionString, compatKey).compare(QLatin1String("SQLite"), Qt::CaseInsensitive)
            == 0;
        const QString odbcString = contains(connectionString, compatKey) ? without(connectionString, compatKey)
                                                                         : connectionString;
        m_backend = std::make_unique<OdbcBackend>(translates ? forSqliteDriver(odbcString) : odbcString, translates);
    }
}

Connection::~Connection() = default;

std::shared_ptr<Connection> Connection::open(const QString &connectionString)
{
    std::shared_ptr<Connection> connection(new Connection(connectionString));
    connection->m_self = connection;
    return connection;
}

QString Connection::connectionString() const
{
    return m_connectionString;
}

bool Connection::translatesTsql() const
{
    return m_backend->translatesTsql();
}

QString Connection::translated(const QString &sql) const
{
    if (!m_backend->translatesTsql())
        return sql;
    // The same statements come back all the time (a focus change reads the parameters, the
    // workflow states, the page's lists): their translation is kept for the next time.
    if (const QString *known = m_translations.object(sql))
        return *known;
    const QString translation = translateTsqlToSqlite(sql);
    m_translations.insert(sql, new QString(translation));
    return translation;
}

int Connection::execute(const QString &sql)
{
    StatementTrace::write(sql);
    try {
        return m_backend->execute(translated(sql));
    } catch (const DatabaseError &error) {
        fail(error);
    }
}

std::shared_ptr<Recordset> Connection::openRecordset(const QString &sql)
{
    return openRecordset(sql, {});
}

std::shared_ptr<Recordset> Connection::openRecordset(const QString &sql, const QStringList &onlyFields)
{
    StatementTrace::write(sql);
    try {
        std::shared_ptr<RecordsetData> data = m_backend->query(translated(sql), onlyFields);
        data->statement = sql;
        if (onlyFields.isEmpty())
            markWritable(*data, sql, *m_backend);
        return std::shared_ptr<Recordset>(new Recordset(std::move(data), m_self.lock()));
    } catch (const DatabaseError &error) {
        fail(error);
    }
}

void Connection::beginTransaction()
{
    try {
        m_backend->beginTransaction();
    } catch (const DatabaseError &error) {
        fail(error);
    }
}

void Connection::commitTransaction()
{
    try {
        m_backend->commitTransaction();
    } catch (const DatabaseError &error) {
        fail(error);
    }
}

void Connection::rollbackTransaction()
{
    m_backend->rollbackTransaction();
}

bool Connection::isReadOnly() const
{
    return m_backend->isReadOnly();
}

bool Connection::hasTable(const QString &table)
{
    try {
        return m_backend->tableSchema(table).has_value();
    } catch (const DatabaseError &) {
        return false;
    }
}

QVariant Connection::lastInsertedKey()
{
    try {
        return m_backend->lastInsertedKey();
    } catch (const DatabaseError &error) {
        fail(error);
    }
}

const QList<DbError> &Connection::errors() const
{
    return m_errors;
}

void Connection::clearErrors()
{
    m_errors.clear();
}

Backend &Connection::backend()
{
    return *m_backend;
}

void Connection::fail(const DatabaseError &error)
{
    StatementTrace::writeFailure(error.message());
    m_errors = error.errors();
    throw error;
}

} // namespace db
