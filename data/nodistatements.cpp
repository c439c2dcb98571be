#include "nodistatements.h"

#include "data/columnwidths.h"
#include "data/schemanames.h"
#include "data/sqltext.h"

namespace nodistatements {

namespace {

// "  CONVERT(DateTime,'dd/mm/yyyy',103),"
QString dateValue(const QDate &date)
{
    return QStringLiteral("  ") + sqltext::convertDate103(date) + QLatin1Char(',');
}

// A code where 0 means none.
QString orNull(qint64 code)
{
    return code == 0 ? QStringLiteral("NULL") : sqltext::number(code);
}

} // namespace

QString parentQuery(int company, qint64 parentId)
{
    return QStringLiteral(" SELECT * FROM GD02_DISTINTA ") + QStringLiteral(" WHERE GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral("   AND GD02_ID  = ") + sqltext::number(parentId);
}

QString overlapQuery(const Collegamento &link)
{
    const QString start = sqltext::convertDate103(link.start);
    const QString end = sqltext::convertDate103(link.end);
    QString sql = QStringLiteral(" SELECT CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, ")
        + QStringLiteral(" GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AS DataI,")
        + QStringLiteral(" GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL AS DataF, ")
        + QStringLiteral(" GD01_TIPODISTINTA_FIGLIO.GD01_CODICE AS CodDistinta,")
        + QStringLiteral(" GD01_TIPODISTINTA_FIGLIO.GD01_DESCR AS DescDistinta,")
        + QStringLiteral(" GD01_TIPODISTINTA_PADRE.GD01_CODICE AS CodDistintaCapo,")
        + QStringLiteral(" GD01_TIPODISTINTA_PADRE.GD01_DESCR AS DescDistintaCapo")
        + (link.withNodeId ? QStringLiteral(", GD02_DISTINTA_FIGLIO.GD02_ID AS IdNodo") : QString())
        + QStringLiteral(" FROM GD01_TIPODISTINTA AS GD01_TIPODISTINTA_FIGLIO")
        + QStringLiteral(" LEFT OUTER JOIN GD02_DISTINTA AS GD02_DISTINTA_FIGLIO")
        + QStringLiteral(" ON GD01_TIPODISTINTA_FIGLIO.GD01_ID = GD02_DISTINTA_FIGLIO.GD02_ID_GD01")
        + QStringLiteral(" LEFT OUTER JOIN (GD02_DISTINTA AS GD02_DISTINTA_PADRE")
        + QStringLiteral(" LEFT OUTER JOIN GD01_TIPODISTINTA AS GD01_TIPODISTINTA_PADRE")
        + QStringLiteral(" ON GD02_DISTINTA_PADRE.GD02_ID_GD01 = GD01_TIPODISTINTA_PADRE.GD01_ID)")
        + QStringLiteral(" ON GD02_DISTINTA_FIGLIO.GD02_IDPARENT_GD02 = GD02_DISTINTA_PADRE.GD02_ID")
        + QStringLiteral(" LEFT OUTER JOIN (CG44_CLIFOR")
        + QStringLiteral(" LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE)")
        + QStringLiteral(" ON GD02_DISTINTA_PADRE.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18")
        + QStringLiteral(" AND GD02_DISTINTA_PADRE.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF")
        + QStringLiteral(" AND GD02_DISTINTA_PADRE.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR")
        + QStringLiteral(" WHERE GD02_DISTINTA_FIGLIO.GD02_DITTA_CG18 = ") + sqltext::number(link.company)
        + QStringLiteral("   AND GD02_DISTINTA_FIGLIO.GD02_CLIFOR_CG44 = ") + sqltext::number(link.subjectCode)
        + QStringLiteral("   AND GD02_DISTINTA_FIGLIO.GD02_TIPOCF_CG44 = ") + sqltext::number(link.subjectKind);
    if (link.division)
        sql += QStringLiteral("   AND (GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A = ") + sqltext::number(*link.division)
            + QStringLiteral("        OR ") + QStringLiteral("        GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A IS NULL")
            + QStringLiteral("       )");
    if (link.excludedNodeId)
        sql += QStringLiteral("   AND GD02_DISTINTA_FIGLIO.GD02_ID <> ") + sqltext::number(*link.excludedNodeId);
    sql += QStringLiteral("   AND (") + start
        + QStringLiteral(
               " BETWEEN  GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND  GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL  ")
        + QStringLiteral("        OR ") + end
        + QStringLiteral(" BETWEEN GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL ")
        + QStringLiteral("        OR (") + start + QStringLiteral(" <= GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AND ")
        + end + QStringLiteral(" >= GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL)") + QStringLiteral("        )")
        + QStringLiteral(" ORDER BY GD02_DISTINTA_FIGLIO.GD02_ID_GD01");
    return sql;
}

QString insertStatement(const NuovoNodo &node)
{
    static const char *const columns[] = {
        "GD02_ID_GD01",      "GD02_IDPARENT_GD02", "GD02_DITTA_CG18",    "GD02_TIPOCF_CG44", "GD02_CLIFOR_CG44",
        "GD02_INDREGPROV",   "GD02_ID_WF02",       "GD02_DATAINIZIOVAL", "GD02_DATAFINEVAL", "GD02_DATACRE",
        "GD02_GRUPPOCRE",    "GD02_UTENTECRE",     "GD02_DATAVAR",       "GD02_GRUPPOVAR",   "GD02_UTENTEVAR",
        "GD02_TIPOANAGFATT", "GD02_INDEREPROMO",
    };
    QString sql = QStringLiteral("INSERT INTO GD02_DISTINTA ") + QStringLiteral(" (");
    const int last = int(std::size(columns)) - 1;
    for (int i = 0; i <= last; ++i)
        sql += QStringLiteral("  ") + QLatin1String(columns[i]) + (i < last ? QStringLiteral(",") : QString());
    // The values an import brings besides the editor's own, after them.
    QStringList moreColumns;
    QStringList moreValues;
    if (node.billingCode) {
        moreColumns << QStringLiteral("GD02_CLIFORFATT_CG44");
        moreValues << orNull(*node.billingCode);
    }
    if (node.description) {
        moreColumns << QStringLiteral("GD02_DESCR");
        moreValues << (node.description->isEmpty()
                           ? QStringLiteral("NULL")
                           : sqltext::quoted(columnwidths::fitToColumn(schemanames::GD02_DESCR, *node.description)));
    }
    if (node.structurePriority) {
        moreColumns << QStringLiteral("GD02_IDSTRUTTURA_LP09");
        moreValues << orNull(*node.structurePriority);
    }
    if (node.localPriority) {
        moreColumns << QStringLiteral("GD02_IDLOCALIZZATA_LP09");
        moreValues << orNull(*node.localPriority);
    }
    for (const QString &column : std::as_const(moreColumns))
        sql += QStringLiteral(",  ") + column;

    // The creation and change columns have the same width: one fitted value serves both.
    const QString group = QStringLiteral("  ")
        + sqltext::quoted(columnwidths::fitToColumn(schemanames::GD02_GRUPPOCRE, node.userGroup)) + QLatin1Char(',');
    const QString user = QStringLiteral("  ")
        + sqltext::quoted(columnwidths::fitToColumn(schemanames::GD02_UTENTECRE, node.user)) + QLatin1Char(',');
    sql += QStringLiteral(" ) VALUES (") + QStringLiteral("  ") + sqltext::number(node.typeId) + QLatin1Char(',')
        + QStringLiteral("  ") + sqltext::number(node.root ? 0 : node.parentId) + QLatin1Char(',')
        + QStringLiteral("  ") + sqltext::number(node.company) + QLatin1Char(',') + QStringLiteral("  ")
        + sqltext::number(node.subjectKind) + QLatin1Char(',') + QStringLiteral("  ")
        + sqltext::number(node.subjectCode) + QLatin1Char(',') + QStringLiteral("  0,") + QStringLiteral("  ")
        + sqltext::number(node.linkState) + QLatin1Char(',') + dateValue(node.start) + dateValue(node.end)
        + dateValue(node.today) + group + user + dateValue(node.today) + group + user + QStringLiteral("  ")
        + sqltext::number(node.billingRule) + QLatin1Char(',') + QStringLiteral("  ")
        + sqltext::number(node.promotions.value_or(node.root ? 2 : 0));
    for (const QString &value : std::as_const(moreValues))
        sql += QStringLiteral(",  ") + value;
    sql += QStringLiteral(" )");
    return sql;
}

QString priorityLookupQuery(const QString &priorityId)
{
    return QStringLiteral(" SELECT LP09_DESCR ") + QStringLiteral("     FROM LP09_TESTATAPRIORITA")
        + QStringLiteral("     WHERE LP09_ID = '") + sqltext::doubleQuotes(priorityId) + QLatin1Char('\'');
}

QString nodeGuidQuery(int company, qint64 nodeId)
{
    return QStringLiteral("SELECT gd02_guid FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral(" AND GD02_ID = ") + sqltext::number(nodeId);
}

QString typeGuidsQuery(int company, qint64 typeId)
{
    return QStringLiteral("SELECT GD02_ID, gd02_guid FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_ID_GD01 = '") + sqltext::number(typeId)
        + QLatin1Char('\'');
}

} // namespace nodistatements
