#include "data/spostamentostatements.h"

#include "data/columnwidths.h"
#include "data/legamistatements.h"
#include "data/schemanames.h"
#include "data/sqltext.h"

namespace spostamentostatements {

QString definitiveBonusNodesQuery(int company, qint64 typeId)
{
    return QStringLiteral("SELECT DISTINCT GD14_ID_GD02 ") + QStringLiteral(" FROM  GD18_LIQUIDAZIONE INNER JOIN")
        + QStringLiteral("       GD13_PREMI ON GD18_LIQUIDAZIONE.GD18_ID_GD13 = GD13_PREMI.GD13_ID ")
        + QStringLiteral("       INNER JOIN ")
        + QStringLiteral("       GD14_SOGGCONTR ON GD13_PREMI.GD13_ID = GD14_SOGGCONTR.GD14_ID_GD13")
        + QStringLiteral(" WHERE GD13_DITTA_CG18    = ") + sqltext::number(company)
        + QStringLiteral("   AND GD14_ID_GD02 IN (SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_ID_GD01 = ") + sqltext::number(typeId)
        + QStringLiteral(") ") + legamistatements::settledNotDisabledCondition();
}

QString moveStatement(const Spostamento &move)
{
    QString sql = QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = ") + sqltext::number(move.newParentId);
    if (move.newParentId == 0)
        sql += QStringLiteral(", GD02_INDEREPROMO = 2");
    sql += QStringLiteral(", GD02_DATAVAR = ") + sqltext::convertDate103(move.changedAt.date())
        + QStringLiteral(", GD02_GRUPPOVAR = ")
        + sqltext::quoted(columnwidths::fitToColumn(schemanames::GD02_GRUPPOVAR, move.userGroup))
        + QStringLiteral(", GD02_UTENTEVAR = ")
        + sqltext::quoted(columnwidths::fitToColumn(schemanames::GD02_UTENTEVAR, move.user))
        + QStringLiteral(" WHERE GD02_DITTA_CG18 = ") + sqltext::number(move.company)
        + QStringLiteral(" AND GD02_ID = ") + sqltext::number(move.nodeId);
    if (move.oldParentId == 0)
        sql += QStringLiteral(" AND ISNULL(GD02_IDPARENT_GD02, 0) = 0");
    else
        sql += QStringLiteral(" AND GD02_IDPARENT_GD02 = ") + sqltext::number(move.oldParentId);
    return sql;
}

} // namespace spostamentostatements
