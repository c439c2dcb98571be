#include "data/storicostatements.h"

#include "data/sqltext.h"

#include <QStringList>

namespace storicostatements {

namespace {

QString optionalNumber(const std::optional<qint64> &value)
{
    return value ? sqltext::number(*value) : QStringLiteral("NULL");
}

// A value as a literal of the statement's text.
QString literal(const QString &column, const QVariant &value)
{
    if (value.isNull() || !value.isValid())
        return QStringLiteral("NULL");
    if (isDateColumn(column) && value.metaType().id() == QMetaType::QDateTime)
        return sqltext::convertDateTime103(value.toDateTime());
    switch (value.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Bool: return sqltext::number(value.toLongLong());
    case QMetaType::Double: return QString::number(value.toDouble(), 'g', 17);
    default: return sqltext::quoted(value.toString());
    }
}

QString operationFilter(const QString &user, int company, qint64 typeId)
{
    return QStringLiteral(" WHERE GD90_UTENTE = ") + sqltext::quoted(user) + QStringLiteral(" AND GD90_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD90_ID_GD01 = ") + sqltext::number(typeId);
}

} // namespace

QString insertOperationStatement(const Operazione &operation)
{
    return QStringLiteral("INSERT INTO GD90_OPERAZIONI (GD90_DITTA_CG18, GD90_ID_GD01, GD90_OPERAZIONE, GD90_DESCR, "
                          "GD90_UTENTE, GD90_GRUPPO, GD90_COMPUTER, GD90_DATAORA, GD90_INDTIPO, GD90_ID_GD90RIF, "
                          "GD90_INDAPERTA) VALUES (")
        + sqltext::number(operation.company) + QStringLiteral(", ") + optionalNumber(operation.typeId)
        + QStringLiteral(", ") + sqltext::quoted(operation.name.left(40)) + QStringLiteral(", ")
        + sqltext::quoted(operation.description.left(200)) + QStringLiteral(", ")
        + sqltext::quoted(operation.user.left(20)) + QStringLiteral(", ")
        + sqltext::quoted(operation.userGroup.left(20)) + QStringLiteral(", ")
        + sqltext::quoted(operation.computer.left(60)) + QStringLiteral(", GETDATE(), ")
        + sqltext::number(int(operation.kind)) + QStringLiteral(", ") + optionalNumber(operation.reverses)
        + QStringLiteral(", ") + QString::number(operation.open ? 1 : 0) + QLatin1Char(')');
}

QString sessionOperationStatement(std::optional<qint64> operationId)
{
    return QStringLiteral("EXEC sp_set_session_context N'GD90_ID', ") + optionalNumber(operationId);
}

QString closeOperationStatement(qint64 operationId)
{
    return QStringLiteral("UPDATE GD90_OPERAZIONI SET GD90_INDAPERTA = 0 WHERE GD90_ID = ")
        + sqltext::number(operationId);
}

QString dropEmptyOperationStatement(qint64 operationId)
{
    return QStringLiteral("DELETE FROM GD90_OPERAZIONI WHERE GD90_ID = ") + sqltext::number(operationId)
        + QStringLiteral(" AND NOT EXISTS (SELECT 1 FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = ")
        + sqltext::number(operationId) + QLatin1Char(')');
}

QString markReversedStatement(qint64 operationId, qint64 reversedBy)
{
    return QStringLiteral("UPDATE GD90_OPERAZIONI SET GD90_ID_GD90ANNULLA = ") + sqltext::number(reversedBy)
        + QStringLiteral(" WHERE GD90_ID = ") + sqltext::number(operationId)
        + QStringLiteral(" AND GD90_ID_GD90ANNULLA IS NULL");
}

QString operationRowsQuery(qint64 operationId)
{
    return QStringLiteral("SELECT GD91_ID, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, GD91_PRIMA, GD91_DOPO "
                          "FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = ")
        + sqltext::number(operationId) + QStringLiteral(" ORDER BY GD91_ID");
}

QString operationQuery(qint64 operationId)
{
    return QStringLiteral("SELECT GD90_ID, GD90_OPERAZIONE, GD90_DESCR, GD90_INDTIPO, GD90_ID_GD90RIF, "
                          "GD90_ID_GD90ANNULLA, GD90_UTENTE, GD90_DATAORA FROM GD90_OPERAZIONI WHERE GD90_ID = ")
        + sqltext::number(operationId);
}

QString lastUndoableQuery(const QString &user, int company, qint64 typeId)
{
    return QStringLiteral("SELECT TOP 1 GD90_ID FROM GD90_OPERAZIONI") + operationFilter(user, company, typeId)
        + QStringLiteral(" AND GD90_INDTIPO IN (0, 2) AND GD90_ID_GD90ANNULLA IS NULL ORDER BY GD90_ID DESC");
}

QString lastRedoCandidateQuery(const QString &user, int company, qint64 typeId)
{
    return QStringLiteral("SELECT TOP 1 GD90_ID, GD90_INDTIPO FROM GD90_OPERAZIONI")
        + operationFilter(user, company, typeId)
        + QStringLiteral(" AND (GD90_INDTIPO = 0 OR (GD90_INDTIPO = 1 AND GD90_ID_GD90ANNULLA IS NULL))"
                         " ORDER BY GD90_ID DESC");
}

QString recordedKeysQuery(qint64 operationId)
{
    return QStringLiteral("SELECT GD91_TABELLA, GD91_CHIAVE FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = ")
        + sqltext::number(operationId);
}

QString keyColumn(const QString &table)
{
    if (table == QLatin1String("GD01_TIPODISTINTA"))
        return QStringLiteral("GD01_ID");
    if (table == QLatin1String("GD02_DISTINTA"))
        return QStringLiteral("GD02_ID");
    if (table == QLatin1String("GD03_PARAMETRI"))
        return QStringLiteral("GD03_DITTA_CG18");
    if (table == QLatin1String("GD12_PROMO"))
        return QStringLiteral("GD12_ID");
    if (table == QLatin1String("WF02_STATORIGA"))
        return QStringLiteral("WF02_ID");
    return {};
}

bool hasGeneratedKey(const QString &table)
{
    return table != QLatin1String("GD03_PARAMETRI") && !keyColumn(table).isEmpty();
}

bool isDateColumn(const QString &column)
{
    static const QStringList dateColumns {QStringLiteral("GD01_DATACRE"),       QStringLiteral("GD01_DATAVAR"),
                                          QStringLiteral("GD02_DATAINIZIOVAL"), QStringLiteral("GD02_DATAFINEVAL"),
                                          QStringLiteral("GD02_DATACRE"),       QStringLiteral("GD02_DATAVAR"),
                                          QStringLiteral("GD03_DATAINIZIOVAL"), QStringLiteral("GD03_DATAFINEVAL"),
                                          QStringLiteral("WF02_DATACRE"),       QStringLiteral("WF02_DATAVAR")};
    return dateColumns.contains(column, Qt::CaseInsensitive);
}

QString selectRowQuery(const QString &table, qint64 key)
{
    return QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE ") + keyColumn(table)
        + QStringLiteral(" = ") + sqltext::number(key);
}

QString insertRowStatement(const Riga &row)
{
    QStringList columns;
    QStringList values;
    for (const auto &[column, value] : row.values) {
        columns << column;
        values << literal(column, value);
    }
    return QStringLiteral("INSERT INTO ") + row.table + QStringLiteral(" (") + columns.join(QStringLiteral(", "))
        + QStringLiteral(") VALUES (") + values.join(QStringLiteral(", ")) + QLatin1Char(')');
}

QString updateRowStatement(const Riga &row, qint64 key)
{
    const QString keyName = keyColumn(row.table);
    QStringList assignments;
    for (const auto &[column, value] : row.values) {
        if (column.compare(keyName, Qt::CaseInsensitive) != 0)
            assignments << column + QStringLiteral(" = ") + literal(column, value);
    }
    return QStringLiteral("UPDATE ") + row.table + QStringLiteral(" SET ") + assignments.join(QStringLiteral(", "))
        + QStringLiteral(" WHERE ") + keyName + QStringLiteral(" = ") + sqltext::number(key);
}

QString deleteRowStatement(const QString &table, qint64 key)
{
    return QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE ") + keyColumn(table) + QStringLiteral(" = ")
        + sqltext::number(key);
}

QString identityInsertStatement(const QString &table, bool on)
{
    return QStringLiteral("SET IDENTITY_INSERT ") + table + (on ? QStringLiteral(" ON") : QStringLiteral(" OFF"));
}

QString identityInsertPermissionQuery(const QString &table)
{
    return QStringLiteral("SELECT HAS_PERMS_BY_NAME(") + sqltext::quoted(table)
        + QStringLiteral(", 'OBJECT', 'ALTER') AS Permesso");
}

} // namespace storicostatements
