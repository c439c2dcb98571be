#include "ricercastatements.h"

#include "data/numerictext.h"
#include "data/sqltext.h"

namespace ricercastatements {

QString crossListSearchQuery(int company, const QString &code, const QString &name)
{
    QString sql = QStringLiteral(" SELECT "
                                 " GD02_ID AS ID, "
                                 " GD02_DITTA_CG18 AS DITTA, "
                                 " GD02_TIPOCF_CG44 AS TIPOCF, "
                                 " GD02_CLIFOR_CG44 AS CLIFOR, "
                                 " CAST(GD02_CLIFOR_CG44 AS VARCHAR) + '-' + RTRIM(CG16_RAGSOANAG) AS ANAGRAFICA, "
                                 " GD01_CODICE + '-' + RTRIM(GD01_DESCR) AS DISTINTA "
                                 " FROM GD02_DISTINTA"
                                 " INNER JOIN GD01_TIPODISTINTA"
                                 "   ON GD02_ID_GD01 = GD01_ID"
                                 " INNER JOIN CG44_CLIFOR"
                                 "   ON CG44_DITTA_CG18 = GD02_DITTA_CG18"
                                 "   AND CG44_TIPOCF = GD02_TIPOCF_CG44"
                                 "   AND CG44_CLIFOR = GD02_CLIFOR_CG44"
                                 " INNER JOIN CG16_ANAGGEN"
                                 "   ON CG16_CODICE = CG44_CODICE_CG16"
                                 " WHERE "
                                 "   GD02_DITTA_CG18 = ")
        + QString::number(company);

    if (code.isEmpty() && name.isEmpty())
        return sql + QStringLiteral("   AND 0=1 ");

    if (!code.isEmpty() && numerictext::isNumeric(code))
        sql += QStringLiteral("   AND GD02_CLIFOR_CG44 = ") + sqltext::doubleQuotes(code);
    if (!name.isEmpty())
        sql += QStringLiteral("   AND CG16_RAGSOANAG LIKE '%") + sqltext::doubleQuotes(name) + QStringLiteral("%'");
    return sql;
}

QString inTreeNameCriterion(const QString &text)
{
    return QStringLiteral("RAGIONESOCIALE like '%") + sqltext::doubleQuotes(text) + QStringLiteral("%'");
}

std::optional<QString> inTreeCodeCriterion(const QString &text)
{
    if (!numerictext::isNumeric(text))
        return std::nullopt;
    return QStringLiteral("GD02_CLIFOR_CG44 = ") + sqltext::doubleQuotes(text);
}

} // namespace ricercastatements
