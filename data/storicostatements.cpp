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

QString keyList(const QList<qint64> &keys)
{
    QStringList texts;
    texts.reserve(keys.size());
    for (qint64 key : keys)
        texts << sqltext::number(key);
    return texts.join(QStringLiteral(", "));
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

QString journalProbeQuery()
{
    return QStringLiteral("SELECT GD91_ID FROM GD91_RIGHESTORICO WHERE GD91_ID = 0");
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
    return QStringLiteral("SELECT GD91_ID, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, GD91_TIPOCF_CG44, GD91_CLIFOR_CG44, "
                          "GD91_PRIMA, GD91_DOPO FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = ")
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

namespace {

QString historySelect()
{
    return QStringLiteral(
        "SELECT GD91_ID, GD91_ID_GD90, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, GD91_ID_GD01, GD91_ID_GD02, "
        "GD91_TIPOCF_CG44, GD91_CLIFOR_CG44, GD91_DATAORA, GD91_UTENTE, GD91_GRUPPO, GD91_PRIMA, GD91_DOPO, "
        "GD90_OPERAZIONE, GD90_UTENTE, GD90_GRUPPO, GD90_COMPUTER, GD90_DATAORA, GD90_ID_GD01, GD01_CODICE, GD01_DESCR "
        "FROM GD91_RIGHESTORICO "
        "LEFT OUTER JOIN GD90_OPERAZIONI ON GD90_OPERAZIONI.GD90_ID = GD91_RIGHESTORICO.GD91_ID_GD90 "
        "LEFT OUTER JOIN GD01_TIPODISTINTA ON GD01_TIPODISTINTA.GD01_ID = "
        "ISNULL(GD91_RIGHESTORICO.GD91_ID_GD01, GD90_OPERAZIONI.GD90_ID_GD01) ");
}

QString subjectFilter(int company, int subjectKind, qint64 subjectCode)
{
    return QStringLiteral(" WHERE GD91_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral(" AND GD91_TIPOCF_CG44 = ") + sqltext::number(subjectKind)
        + QStringLiteral(" AND GD91_CLIFOR_CG44 = ") + sqltext::number(subjectCode);
}

} // namespace

QString nodeHistoryQuery(int company, qint64 nodeId, const QString &nodeGuid)
{
    return historySelect() + QStringLiteral("WHERE (GD91_ID_GD02 = ") + sqltext::number(nodeId)
        + QStringLiteral(" OR GD91_ID_GD02 IS NULL AND GD91_GUID = ") + sqltext::quoted(nodeGuid)
        + QStringLiteral(") AND ISNULL(GD91_DITTA_CG18, ") + sqltext::number(company) + QStringLiteral(") = ")
        + sqltext::number(company) + QStringLiteral(" ORDER BY GD91_ID DESC");
}

// A subject's nodes are those it has now and those the journal saw it inserted in or removed
// from (rows indexed by subject: IX_GD91_SOGGETTO leaves out updates, by far the most rows).
QString subjectHistoryQuery(int company, int subjectKind, qint64 subjectCode)
{
    const QString journal = subjectFilter(company, subjectKind, subjectCode)
        + QStringLiteral(" AND GD91_AZIONE <> 'U'");
    const QString current = QStringLiteral(" FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral(" AND GD02_TIPOCF_CG44 = ") + sqltext::number(subjectKind)
        + QStringLiteral(" AND GD02_CLIFOR_CG44 = ") + sqltext::number(subjectCode);
    return historySelect() + QStringLiteral("WHERE GD91_ID_GD02 IN (SELECT GD02_ID") + current
        + QStringLiteral(" UNION SELECT GD91_ID_GD02 FROM GD91_RIGHESTORICO") + journal
        + QStringLiteral(") OR GD91_ID_GD02 IS NULL AND GD91_GUID IN (SELECT gd02_guid") + current
        + QStringLiteral(" UNION SELECT GD91_GUID FROM GD91_RIGHESTORICO") + journal
        + QStringLiteral(") ORDER BY GD91_ID DESC");
}

// Another program's rows are found by their classification (IX_GD91_TIPO holds only those); the
// module's through their operations: the classification's, and those of the type maintenance and
// the parameters, which name none. An operation starts before its rows are written and lasts far
// less than a day, so its own date narrows the search to the days asked, and the rows' dates
// decide.
QString classificationHistoryQuery(const FiltroStorico &filter)
{
    QString days;
    QString operationDays;
    if (filter.from.isValid()) {
        days += QStringLiteral(" AND GD91_DATAORA >= ") + sqltext::convertDate103(filter.from);
        operationDays += QStringLiteral(" AND GD90_DATAORA >= ") + sqltext::convertDate103(filter.from.addDays(-1));
    }
    if (filter.to.isValid()) {
        days += QStringLiteral(" AND GD91_DATAORA < ") + sqltext::convertDate103(filter.to.addDays(1));
        operationDays += QStringLiteral(" AND GD90_DATAORA < ") + sqltext::convertDate103(filter.to.addDays(1));
    }
    const QString operations = QStringLiteral("SELECT GD90_ID FROM GD90_OPERAZIONI WHERE GD90_DITTA_CG18 = ")
        + sqltext::number(filter.company) + QStringLiteral(" AND GD90_ID_GD01");
    QString sql = historySelect() + QStringLiteral("WHERE (GD91_ID_GD90 IS NULL AND GD91_ID_GD01 = ")
        + sqltext::number(filter.typeId) + days + QStringLiteral(" OR GD91_ID_GD90 IN (") + operations
        + QStringLiteral(" = ") + sqltext::number(filter.typeId) + operationDays + QStringLiteral(" UNION ALL ")
        + operations + QStringLiteral(" IS NULL") + operationDays
        + QStringLiteral(") AND ISNULL(GD91_ID_GD01, GD90_OPERAZIONI.GD90_ID_GD01) = ") + sqltext::number(filter.typeId)
        + days + QStringLiteral(") AND ISNULL(GD91_DITTA_CG18, GD90_DITTA_CG18) = ") + sqltext::number(filter.company);
    if (!filter.user.isEmpty())
        sql += QStringLiteral(" AND ISNULL(GD90_UTENTE, GD91_UTENTE) = ") + sqltext::quoted(filter.user);
    if (!filter.operation.isEmpty())
        sql += QStringLiteral(" AND ISNULL(GD90_OPERAZIONE, 'Modifica esterna') = ")
            + sqltext::quoted(filter.operation);
    return sql + QStringLiteral(" ORDER BY GD91_ID DESC");
}

QString linksValidOnQuery(int company, qint64 typeId, const QDate &day)
{
    const QString giorno = sqltext::convertDate103(day);
    return QStringLiteral(
               "SELECT GD02_DISTINTA.GD02_ID, GD02_DISTINTA.GD02_CLIFOR_CG44, GD02_DISTINTA.GD02_DATAINIZIOVAL, "
               "GD02_DISTINTA.GD02_DATAFINEVAL, PADRE.GD02_CLIFOR_CG44 AS CodicePadre "
               "FROM GD02_DISTINTA LEFT OUTER JOIN GD02_DISTINTA AS PADRE "
               "ON PADRE.GD02_ID = GD02_DISTINTA.GD02_IDPARENT_GD02 WHERE GD02_DISTINTA.GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_DISTINTA.GD02_ID_GD01 = ") + sqltext::number(typeId)
        + QStringLiteral(" AND (GD02_DISTINTA.GD02_DATAINIZIOVAL IS NULL OR GD02_DISTINTA.GD02_DATAINIZIOVAL <= ")
        + giorno + QStringLiteral(") AND (GD02_DISTINTA.GD02_DATAFINEVAL IS NULL OR GD02_DISTINTA.GD02_DATAFINEVAL >= ")
        + giorno + QStringLiteral(")");
}

QString linksValidOnOneDayQuery(int company, qint64 typeId, const QDate &a, const QDate &b)
{
    const QString primo = sqltext::convertDate103(a);
    const QString secondo = sqltext::convertDate103(b);
    // Valid on a only: begun by a, ended between a and b; on b only: begun after a, open on b.
    const QString soloPrimo = QStringLiteral("(GD02_DISTINTA.GD02_DATAINIZIOVAL IS NULL OR "
                                             "GD02_DISTINTA.GD02_DATAINIZIOVAL <= ")
        + primo + QStringLiteral(") AND GD02_DISTINTA.GD02_DATAFINEVAL >= ") + primo
        + QStringLiteral(" AND GD02_DISTINTA.GD02_DATAFINEVAL < ") + secondo;
    const QString soloSecondo = QStringLiteral("GD02_DISTINTA.GD02_DATAINIZIOVAL > ") + primo
        + QStringLiteral(" AND GD02_DISTINTA.GD02_DATAINIZIOVAL <= ") + secondo
        + QStringLiteral(" AND (GD02_DISTINTA.GD02_DATAFINEVAL IS NULL OR GD02_DISTINTA.GD02_DATAFINEVAL >= ") + secondo
        + QStringLiteral(")");
    return QStringLiteral(
               "SELECT GD02_DISTINTA.GD02_ID, GD02_DISTINTA.GD02_CLIFOR_CG44, GD02_DISTINTA.GD02_DATAINIZIOVAL, "
               "GD02_DISTINTA.GD02_DATAFINEVAL, PADRE.GD02_CLIFOR_CG44 AS CodicePadre, CASE WHEN ")
        + soloPrimo
        + QStringLiteral(" THEN 1 ELSE 0 END AS SoloPrimo FROM GD02_DISTINTA LEFT OUTER JOIN GD02_DISTINTA AS PADRE "
                         "ON PADRE.GD02_ID = GD02_DISTINTA.GD02_IDPARENT_GD02 WHERE GD02_DISTINTA.GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_DISTINTA.GD02_ID_GD01 = ") + sqltext::number(typeId)
        + QStringLiteral(" AND (") + soloPrimo + QStringLiteral(" OR ") + soloSecondo + QStringLiteral(")");
}

QString subjectNameQuery(int company, int subjectKind, qint64 subjectCode)
{
    return QStringLiteral("SELECT CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
                          "ON CG16_ANAGGEN.CG16_CODICE = CG44_CLIFOR.CG44_CODICE_CG16 WHERE CG44_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND CG44_TIPOCF = ") + sqltext::number(subjectKind)
        + QStringLiteral(" AND CG44_CLIFOR = ") + sqltext::number(subjectCode);
}

QString nodeSubjectQuery(qint64 nodeId)
{
    return QStringLiteral("SELECT GD02_TIPOCF_CG44, GD02_CLIFOR_CG44 FROM GD02_DISTINTA WHERE GD02_ID = ")
        + sqltext::number(nodeId);
}

QString priorityNameQuery(qint64 priorityId)
{
    return QStringLiteral("SELECT LP09_CODICE, LP09_DESCR FROM LP09_TESTATAPRIORITA WHERE LP09_ID = ")
        + sqltext::number(priorityId);
}

QString campaignNameQuery(qint64 campaignId)
{
    return QStringLiteral("SELECT MG94_CODCAMP, MG94_DESCAMP FROM MG94_CAMPANAG WHERE MG94_ID = ")
        + sqltext::number(campaignId);
}

QString stateNameQuery(qint64 stateId)
{
    return QStringLiteral("SELECT WF01_DESCR FROM WF01_STATI WHERE WF01_ID = ") + sqltext::number(stateId);
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

QJsonObject wholeAfterImage(const QJsonObject &before, QJsonObject after)
{
    for (auto it = before.constBegin(); it != before.constEnd(); ++it) {
        const QString &column = it.key();
        const bool stamp = column.endsWith(QLatin1String("_DATAVAR"), Qt::CaseInsensitive)
            || column.endsWith(QLatin1String("_GRUPPOVAR"), Qt::CaseInsensitive)
            || column.endsWith(QLatin1String("_UTENTEVAR"), Qt::CaseInsensitive);
        if (!stamp && !after.contains(column))
            after.insert(column, it.value());
    }
    return after;
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

QString selectRowsQuery(const QString &table, const QList<qint64> &keys)
{
    return QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE ") + keyColumn(table)
        + QStringLiteral(" IN (") + keyList(keys) + QLatin1Char(')');
}

QString insertRowsStatement(const QList<Riga> &rows)
{
    if (rows.isEmpty())
        return {};
    QStringList columns;
    for (const auto &value : rows.constFirst().values)
        columns << value.first;
    QStringList tuples;
    for (const Riga &row : rows) {
        QStringList values;
        for (const auto &[column, value] : row.values)
            values << literal(column, value);
        tuples << QLatin1Char('(') + values.join(QStringLiteral(", ")) + QLatin1Char(')');
    }
    return QStringLiteral("INSERT INTO ") + rows.constFirst().table + QStringLiteral(" (")
        + columns.join(QStringLiteral(", ")) + QStringLiteral(") VALUES ") + tuples.join(QStringLiteral(", "));
}

QString deleteRowsStatement(const QString &table, const QList<qint64> &keys)
{
    return QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE ") + keyColumn(table)
        + QStringLiteral(" IN (") + keyList(keys) + QLatin1Char(')');
}

QString linkedSubjectsQuery(int company, int subjectKind, const QList<qint64> &subjectCodes)
{
    return QStringLiteral("SELECT DISTINCT GD02_CLIFOR_CG44 FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_TIPOCF_CG44 = ") + sqltext::number(subjectKind)
        + QStringLiteral(" AND GD02_CLIFOR_CG44 IN (") + keyList(subjectCodes) + QLatin1Char(')');
}

QString nodesWithConditionsQuery(const QList<qint64> &nodeIds)
{
    return QStringLiteral("SELECT DISTINCT GD14_ID_GD02 FROM GD14_SOGGCONTR WHERE GD14_ID_GD02 IN (") + keyList(nodeIds)
        + QLatin1Char(')');
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
