#include "writeback.h"

#include "backend.h"
#include "connection.h"
#include "recordsetdata.h"
#include "sqlliterals.h"
#include "statementtrace.h"
#include "storedvalues.h"

#include <QRegularExpression>
#include <QStringList>

namespace db {

namespace {

QString identifier(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return plain.match(name).hasMatch() ? name : QLatin1Char('[') + name + QLatin1Char(']');
}

// Values go to the database as it stores them: on SQLite dates are "YYYY-MM-DD HH:MM:SS" text.
QVariant bindable(const QVariant &value, FieldType type, bool sqliteDialect)
{
    if (!value.isValid() || value.isNull())
        return QVariant();
    const int id = value.metaType().id();
    if (id == QMetaType::Bool)
        return QVariant(qlonglong(value.toBool() ? 1 : 0));
    if ((id == QMetaType::QDateTime || id == QMetaType::QDate) && (sqliteDialect || type == FieldType::Text))
        return QVariant(storedvalues::formatDateTime(value.toDateTime()));
    return value;
}

bool isNull(const QVariant &value)
{
    return !value.isValid() || value.isNull();
}

int run(Connection &connection, const QString &sql, const QVariantList &values)
{
    StatementTrace::write(sql, values);
    return connection.backend().executeBound(sql, values);
}

QString keyCondition(const RecordsetData &data, const std::vector<QVariant> &keySource, int row, bool sqliteDialect,
                     QVariantList *values)
{
    QStringList conditions;
    for (int field : data.keyFields) {
        const QVariant &key = keySource.empty() ? data.cell(row, field) : keySource[size_t(field)];
        conditions << identifier(data.sourceColumns.at(field)) + QStringLiteral(" = ?");
        values->append(bindable(key, data.fields.at(field).type, sqliteDialect));
    }
    return conditions.join(QStringLiteral(" AND "));
}

// " AND <column> = <original>" for each field: the row as it was read, so that a row someone
// changed since is not found. Null originals are matched with IS NULL; on SQLite dates compare
// as dates ("2024-01-31" and "2024-01-31 00:00:00" are the same stored day).
QString originalValuesCondition(const RecordsetData &data, const std::vector<QVariant> &original,
                                const QList<int> &fields, bool sqliteDialect, QVariantList *values)
{
    QString where;
    for (int field : fields) {
        const QVariant &value = original[size_t(field)];
        const QString column = identifier(data.sourceColumns.at(field));
        if (isNull(value)) {
            where += QStringLiteral(" AND %1 IS NULL").arg(column);
        } else if (sqliteDialect && data.fields.at(field).type == FieldType::DateTime) {
            where += QStringLiteral(" AND datetime(%1) = datetime(?)").arg(column);
            values->append(bindable(value, FieldType::DateTime, sqliteDialect));
        } else {
            where += QStringLiteral(" AND %1 = ?").arg(column);
            values->append(bindable(value, data.fields.at(field).type, sqliteDialect));
        }
    }
    return where;
}

} // namespace

const char *WriteBack::conflictMessage()
{
    return "La riga è stata modificata da un altro utente dopo la lettura: le modifiche non sono state salvate.";
}

bool WriteBack::insertRow(Connection &connection, RecordsetData &data, int row)
{
    const bool sqlite = connection.backend().translatesTsql();
    QStringList columns;
    QStringList marks;
    QVariantList values;
    for (int field = 0; field < data.columnCount(); ++field) {
        const QVariant &value = data.cell(row, field);
        if (!data.fields.at(field).writable || isNull(value))
            continue; // a null key is left to the database to generate
        columns << identifier(data.sourceColumns.at(field));
        marks << QStringLiteral("?");
        values << bindable(value, data.fields.at(field).type, sqlite);
    }
    const QString sql = columns.isEmpty()
        ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(identifier(data.baseTable))
        : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
              .arg(identifier(data.baseTable), columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
    run(connection, sql, values);

    if (data.keyFields.size() != 1 || !isNull(data.cell(row, data.keyFields.first())))
        return false;
    const int keyField = data.keyFields.first();
    bool ok = false;
    const QVariant key = storedvalues::coerce(connection.backend().lastInsertedKey(), data.fields.at(keyField).type,
                                              &ok);
    if (!ok || isNull(key))
        return false;
    data.setCell(row, keyField, key);
    return true;
}

void WriteBack::updateRow(Connection &connection, const RecordsetData &data, int row, const PendingRow &pending)
{
    const bool sqlite = connection.backend().translatesTsql();
    QStringList assignments;
    QVariantList values;
    QList<int> changed;
    for (int field = 0; field < data.columnCount(); ++field) {
        if (!data.fields.at(field).writable)
            continue;
        if (storedvalues::sameValue(data.cell(row, field), pending.original[size_t(field)]))
            continue;
        changed << field;
        assignments << identifier(data.sourceColumns.at(field)) + QStringLiteral(" = ?");
        values << bindable(data.cell(row, field), data.fields.at(field).type, sqlite);
    }
    if (changed.isEmpty())
        return;
    if (data.updateStamp) {
        for (const auto &[column, value] : data.updateStamp()) {
            if (data.sourceColumns.contains(column, Qt::CaseInsensitive))
                continue; // a column the recordset reads is written as any other field
            const FieldType type = value.metaType().id() == QMetaType::QDateTime ? FieldType::DateTime
                                                                                 : FieldType::Text;
            assignments << identifier(column) + QStringLiteral(" = ?");
            values << bindable(value, type, sqlite);
        }
    }

    QString where = keyCondition(data, pending.original, row, sqlite, &values);
    where += originalValuesCondition(data, pending.original, changed, sqlite, &values);
    const QString sql = QStringLiteral("UPDATE %1 SET %2 WHERE %3")
                            .arg(identifier(data.baseTable), assignments.join(QStringLiteral(", ")), where);
    if (run(connection, sql, values) == 0)
        throw makeError(QString::fromUtf8(conflictMessage()), QStringLiteral("Recordset"), sql);
}

void WriteBack::deleteRow(Connection &connection, const RecordsetData &data, int row)
{
    const bool sqlite = connection.backend().translatesTsql();
    // The row goes only as it was read: every column that can be compared must still hold its
    // value, or someone changed the row meanwhile and deleting it (with the subtree the database
    // removes along with a node) would destroy their work.
    std::vector<QVariant> original;
    QList<int> compared;
    original.reserve(size_t(data.columnCount()));
    for (int field = 0; field < data.columnCount(); ++field) {
        original.push_back(data.cell(row, field));
        const FieldInfo &info = data.fields.at(field);
        if (info.writable && !info.key && info.type != FieldType::Blob && info.type != FieldType::Unknown)
            compared << field;
    }
    QVariantList values;
    QString where = keyCondition(data, {}, row, sqlite, &values);
    where += originalValuesCondition(data, original, compared, sqlite, &values);
    const QString sql = QStringLiteral("DELETE FROM %1 WHERE %2").arg(identifier(data.baseTable), where);
    if (run(connection, sql, values) == 0)
        throw makeError(QString::fromUtf8(conflictMessage()), QStringLiteral("Recordset"), sql);
}

bool WriteBack::rereadRow(Connection &connection, RecordsetData &data, int row)
{
    QStringList columns;
    QList<int> fields;
    for (int field = 0; field < data.columnCount(); ++field) {
        if (!data.fields.at(field).writable)
            continue;
        columns << identifier(data.sourceColumns.at(field));
        fields << field;
    }
    // Keys are numbers or codes: written as literals, a code with its quotes doubled.
    QStringList conditions;
    for (int field : data.keyFields) {
        const QVariant &key = data.cell(row, field);
        const int id = key.metaType().id();
        const bool number = id == QMetaType::Int || id == QMetaType::LongLong || id == QMetaType::Double;
        const QString literal = number ? key.toString() : quoted(key.toString());
        conditions << identifier(data.sourceColumns.at(field)) + QStringLiteral(" = ") + literal;
    }
    const QString sql = QStringLiteral("SELECT %1 FROM %2 WHERE %3")
                            .arg(columns.join(QStringLiteral(", ")), identifier(data.baseTable),
                                 conditions.join(QStringLiteral(" AND ")));
    StatementTrace::write(sql);
    const std::shared_ptr<RecordsetData> read = connection.backend().query(sql);
    if (read->storedRowCount() == 0)
        return false;
    for (int i = 0; i < fields.size(); ++i) {
        bool ok = false;
        const QVariant value = storedvalues::coerce(read->cell(0, i), data.fields.at(fields.at(i)).type, &ok);
        data.setCell(row, fields.at(i), ok ? value : read->cell(0, i));
    }
    return true;
}

} // namespace db
