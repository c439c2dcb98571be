#include "legamistatements.h"

#include "data/sqltext.h"

namespace legamistatements {

QString childCountQuery(int company, qint64 nodeId)
{
    return QStringLiteral("SELECT COUNT(GD02_ID) AS NFIGLI ") + QStringLiteral(" FROM GD02_DISTINTA ")
        + QStringLiteral(" WHERE GD02_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral(" AND GD02_IDPARENT_GD02 = ") + sqltext::number(nodeId);
}

QString childrenQuery(int company, qint64 nodeId)
{
    return QStringLiteral("SELECT * ") + QStringLiteral(" FROM GD02_DISTINTA ")
        + QStringLiteral(" WHERE GD02_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral(" AND GD02_IDPARENT_GD02 = ") + sqltext::number(nodeId);
}

QString contractCountQuery(int company, qint64 subjectCode)
{
    return QStringLiteral("   SELECT") + QStringLiteral("    COUNT(*) ") + QStringLiteral(" FROM")
        + QStringLiteral("    GD10_CONTRATTI") + QStringLiteral(" WHERE") + QStringLiteral("    GD10_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND") + QStringLiteral("    GD10_CLIFOR_CG44 = ")
        + sqltext::number(subjectCode);
}

QString settledNotDisabledCondition()
{
    return QStringLiteral("   AND GD18_STATOSCADENZA >= 2 ") + QStringLiteral("   AND GD14_ID_GD02 NOT IN (")
        + QStringLiteral("                            SELECT GD27_ID_GD02 ")
        + QStringLiteral("                              FROM GD27_SOGGCONTRDISAB ")
        + QStringLiteral("                             WHERE GD27_DITTA_CG18     = GD14_DITTA_CG18     ")
        + QStringLiteral("                               AND GD27_CODCONTR_GD10  = GD14_CODCONTR_GD10  ")
        + QStringLiteral("                               AND GD27_VERCONTR_GD10  = GD14_VERCONTR_GD10  ")
        + QStringLiteral("                               AND GD27_PROGRCOND_GD13 = GD14_PROGRCOND_GD13 ")
        + QStringLiteral("                            )   ");
}

QString definitiveBonusQuery(int company, qint64 nodeId, const std::optional<QDate> &dueAfter)
{
    QString sql = QStringLiteral("SELECT TOP 1 *  ") + QStringLiteral(" FROM  GD18_LIQUIDAZIONE INNER JOIN")
        + QStringLiteral("       GD13_PREMI ON GD18_LIQUIDAZIONE.GD18_ID_GD13 = GD13_PREMI.GD13_ID ")
        + QStringLiteral("       INNER JOIN ")
        + QStringLiteral("       GD14_SOGGCONTR ON GD13_PREMI.GD13_ID = GD14_SOGGCONTR.GD14_ID_GD13")
        + QStringLiteral(" WHERE GD13_DITTA_CG18    = ") + sqltext::number(company)
        + QStringLiteral("   AND GD14_ID_GD02       = ") + sqltext::number(nodeId);
    if (dueAfter)
        sql += QStringLiteral("   AND GD18_DATASCADENZA  > ") + sqltext::convertDate103(*dueAfter) + QLatin1Char(' ');
    sql += settledNotDisabledCondition();
    return sql;
}

QString conditionsQuery(int company, const NodoCondizioni &node, const QString &division)
{
    const QString start = sqltext::convertDate103(node.start);
    const QString end = sqltext::convertDate103(node.end);
    QString sql = QStringLiteral("SELECT DISTINCT * ") + QStringLiteral(" FROM GDVISTA03_SOGGETTICOND ")
        + QStringLiteral(" WHERE ( ID = ") + sqltext::number(node.nodeId)
        + QStringLiteral("         OR (     CondizioneTipoCF    = ") + sqltext::number(node.subjectKind)
        + QStringLiteral("              AND CondizioneCodIntest = ") + sqltext::number(node.subjectCode)
        + QStringLiteral("              AND ID                  = 0 ") + QStringLiteral("              AND (")
        + QStringLiteral("                    CondizioneIni BETWEEN ") + start + QStringLiteral(" AND ") + end
        + QStringLiteral(" ") + QStringLiteral("                    OR ")
        + QStringLiteral("                    CondizioneFin BETWEEN ") + start + QStringLiteral(" AND ") + end
        + QStringLiteral(" ") + QStringLiteral("                    OR (")
        + QStringLiteral("                        CondizioneIni <= ") + start + QStringLiteral(" ")
        + QStringLiteral("                        AND ") + QStringLiteral("                        CondizioneFin >= ")
        + end + QStringLiteral("                       )") + QStringLiteral("                    )");
    if (!division.isEmpty())
        sql += QStringLiteral("           AND Divisione = ") + division;
    sql += QStringLiteral("             )") + QStringLiteral("        ) ") + QStringLiteral("   AND Ditta = ")
        + sqltext::number(company) + QStringLiteral(" ORDER BY ContrattoCod , ")
        + QStringLiteral("          ContrattoVer , ") + QStringLiteral("          CondizioneCod, ")
        + QStringLiteral("          CondizioneIni ");
    return sql;
}

QString deleteNodeStatement(qint64 nodeId)
{
    return QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = ") + sqltext::number(nodeId);
}

} // namespace legamistatements
