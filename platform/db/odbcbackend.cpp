#include "odbcbackend.h"

#include "recordsetdata.h"
#include "storedvalues.h"

#include <QAtomicInt>
#include <QLibrary>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlResult>

namespace db {

namespace {

// ODBC type codes the driver reports for exact numerics.
constexpr int SqlNumeric = 2;
constexpr int SqlDecimal = 3;
constexpr int SqlBit = -7;
constexpr short SqlHandleDbc = 2;
constexpr short SqlHandleStmt = 3;

// QtSql folds the ODBC diagnostic records into one text and drops their SQL state, which the
// error list shows; the records are read again from the driver manager, already loaded by QODBC.
struct Diagnostic
{
    QString state;
    QString message;
    int nativeError = 0;
};

QList<Diagnostic> diagnostics(short handleType, void *handle)
{
    using GetDiagRec = short (*)(short, void *, short, unsigned char *, int *, unsigned char *, short, short *);
    static const auto getDiagRec = reinterpret_cast<GetDiagRec>(
        QLibrary::resolve(QStringLiteral("odbc"), 2, "SQLGetDiagRec"));
    QList<Diagnostic> result;
    if (!getDiagRec || !handle)
        return result;
    for (short record = 1; record < 20; ++record) {
        unsigned char state[6] = {};
        unsigned char message[1024] = {};
        int nativeError = 0;
        short length = 0;
        const short rc = getDiagRec(handleType, handle, record, state, &nativeError, message, sizeof message, &length);
        if (rc != 0 && rc != 1) // SQL_SUCCESS, SQL_SUCCESS_WITH_INFO
            break;
        result.append({QString::fromLatin1(reinterpret_cast<char *>(state), 5),
                       QString::fromUtf8(reinterpret_cast<char *>(message), qMin<int>(length, int(sizeof message) - 1)),
                       nativeError});
    }
    return result;
}

void *handleOf(const QVariant &handle)
{
    if (!handle.isValid() || handle.metaType().sizeOf() != int(sizeof(void *)))
        return nullptr;
    return *static_cast<void *const *>(handle.constData());
}

QVariant readValue(const QVariant &value, FieldType type)
{
    if (!value.isValid() || value.isNull())
        return QVariant();
    switch (type) {
    case FieldType::Integer: return QVariant(value.toLongLong());
    case FieldType::Double:
    case FieldType::Decimal: return QVariant(value.toDouble());
    case FieldType::Boolean: return QVariant(value.toBool());
    case FieldType::DateTime: {
        bool ok = false;
        const QVariant date = storedvalues::coerce(value, FieldType::DateTime, &ok);
        return ok ? date : value;
    }
    case FieldType::Text: return QVariant(value.toString());
    default: return value;
    }
}

FieldInfo fieldFrom(const QSqlField &sqlField)
{
    FieldInfo field;
    field.name = sqlField.name();
    if (sqlField.typeID() == SqlBit) {
        field.type = FieldType::Boolean;
        return field;
    }
    if (storedvalues::isWholeNumberType(sqlField.metaType().id())) {
        field.type = FieldType::Integer;
        return field;
    }
    switch (sqlField.metaType().id()) {
    case QMetaType::Double:
    case QMetaType::Float:
        if (sqlField.typeID() == SqlDecimal || sqlField.typeID() == SqlNumeric) {
            field.type = FieldType::Decimal;
            field.numericScale = qMax(0, sqlField.precision());
        } else {
            field.type = FieldType::Double;
        }
        break;
    case QMetaType::Bool: field.type = FieldType::Boolean; break;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
    case QMetaType::QTime: field.type = FieldType::DateTime; break;
    case QMetaType::QByteArray: field.type = FieldType::Blob; break;
    case QMetaType::QString: field.type = FieldType::Text; break;
    default: field.type = FieldType::Unknown;
    }
    return field;
}

QString removeBrackets(QString name)
{
    if (name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']')))
        name = name.mid(1, name.size() - 2);
    return name;
}

} // namespace

OdbcBackend::OdbcBackend(const QString &odbcConnectionString, bool translatesTsql)
    : m_translates(translatesTsql)
{
    static QAtomicInt counter;
    m_name = QStringLiteral("distinta-odbc-%1").arg(counter.fetchAndAddRelaxed(1));
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), m_name);
    if (!m_database.isValid()) {
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
        throw makeError(QStringLiteral("Driver QODBC non disponibile."), sourceName());
    }
    m_database.setDatabaseName(odbcConnectionString);
    if (!m_database.open()) {
        const QSqlError error = m_database.lastError();
        QList<DbError> errors;
        for (const Diagnostic &d : diagnostics(SqlHandleDbc, handleOf(m_database.driver()->handle())))
            errors.append({d.message, sourceName(), d.state, d.nativeError});
        if (errors.isEmpty())
            errors.append({error.databaseText().isEmpty() ? error.text() : error.databaseText(),
                           sourceName(),
                           {},
                           error.nativeErrorCode().toInt()});
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
        throw DatabaseError(errors);
    }
    if (m_translates) {
        try {
            execute(QStringLiteral("PRAGMA recursive_triggers=OFF")); // as SqliteBackend
        } catch (...) {
            m_database.close();
            m_database = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_name);
            throw;
        }
    }
}

OdbcBackend::~OdbcBackend()
{
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void OdbcBackend::fail(const QSqlError &error, const QVariant &handle, int handleType, const QString &statement)
{
    QList<DbError> errors;
    for (const Diagnostic &d : diagnostics(short(handleType), handleOf(handle)))
        errors.append({d.message, sourceName(), d.state, d.nativeError});
    if (errors.isEmpty()) {
        const QString text = error.databaseText().isEmpty() ? error.text() : error.databaseText();
        errors.append({text, sourceName(), {}, error.nativeErrorCode().toInt()});
    }
    throw DatabaseError(errors, statement);
}

void OdbcBackend::failQuery(const QSqlQuery &query, const QString &statement)
{
    fail(query.lastError(), query.result() ? query.result()->handle() : QVariant(), SqlHandleStmt, statement);
}

int OdbcBackend::execute(const QString &sql)
{
    static const QRegularExpression schemaChange(QStringLiteral("\\b(CREATE|ALTER|DROP)\\b"),
                                                 QRegularExpression::CaseInsensitiveOption);
    if (!m_schemas.isEmpty() && schemaChange.match(sql).hasMatch())
        m_schemas.clear();
    QSqlQuery query(m_database);
    if (!query.exec(sql))
        failQuery(query, sql);
    return qMax(0, query.numRowsAffected());
}

std::shared_ptr<RecordsetData> OdbcBackend::query(const QString &sql, const QStringList &onlyFields)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!query.exec(sql))
        failQuery(query, sql);

    auto data = std::make_shared<RecordsetData>();
    data->statement = sql;
    const QSqlRecord record = query.record();
    QStringList names;
    for (int i = 0; i < record.count(); ++i)
        names << record.fieldName(i);
    const QList<int> kept = keptColumns(names, onlyFields);
    for (int column : kept)
        data->fields.append(fieldFrom(record.field(column)));
    const int columns = int(kept.size());
    RowStoreBuilder rows(columns);
    while (query.next()) {
        for (int i = 0; i < columns; ++i)
            rows.cells().append(readValue(query.value(kept.at(i)), data->fields.at(i).type));
    }
    if (query.lastError().isValid())
        failQuery(query, sql);
    rows.finish(*data);
    data->indexFields();
    return data;
}

int OdbcBackend::executeBound(const QString &sql, const QVariantList &values)
{
    QSqlQuery query(m_database);
    if (!query.prepare(sql))
        failQuery(query, sql);
    for (const QVariant &value : values)
        query.addBindValue(value.isValid() ? value : QVariant(QMetaType::fromType<QString>()));
    if (!query.exec())
        failQuery(query, sql);
    return qMax(0, query.numRowsAffected());
}

QVariant OdbcBackend::lastInsertedKey()
{
    const QString sql = m_translates ? QStringLiteral("SELECT last_insert_rowid()")
                                     : QStringLiteral("SELECT @@IDENTITY");
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        failQuery(query, sql);
    return query.next() ? query.value(0) : QVariant();
}

void OdbcBackend::beginTransaction()
{
    if (!m_database.transaction())
        fail(m_database.lastError(), {}, 0, QStringLiteral("BEGIN TRANSACTION"));
}

void OdbcBackend::commitTransaction()
{
    if (!m_database.commit())
        fail(m_database.lastError(), {}, 0, QStringLiteral("COMMIT TRANSACTION"));
}

void OdbcBackend::rollbackTransaction()
{
    m_database.rollback();
}

std::optional<TableSchema> OdbcBackend::tableSchema(const QString &table)
{
    const QString name = removeBrackets(table);
    const auto cached = m_schemas.constFind(name.toLower());
    if (cached != m_schemas.constEnd())
        return cached.value();
    const QSqlRecord record = m_database.record(name);
    if (record.isEmpty()) {
        m_schemas.insert(name.toLower(), std::nullopt);
        return std::nullopt;
    }
    TableSchema schema;
    for (int i = 0; i < record.count(); ++i)
        schema.columns << record.fieldName(i);
    const QSqlIndex key = m_database.primaryIndex(name);
    for (int i = 0; i < key.count(); ++i)
        schema.keyColumns << key.fieldName(i);
    m_schemas.insert(name.toLower(), schema);
    return schema;
}

} // namespace db
