#include "stampastatements.h"

#include "sqltext.h"

namespace stampastatements {

namespace {

QString dateOrNull(const std::optional<QDate> &date)
{
    return date && date->isValid() ? sqltext::convertDate101(*date) : QStringLiteral("NULL");
}

} // namespace

QString levelText(int level)
{
    return QString(level + 1, QLatin1Char('.')) + QString::number(level + 1);
}

QString deleteWorkRowsStatement(const QString &key, int company)
{
    return QStringLiteral("DELETE FROM GD04_STDISTINTA  WHERE GD04_KEY = '") + sqltext::doubleQuotes(key)
        + QStringLiteral("'   AND GD04_DITTA_CG18  = ") + QString::number(company);
}

QString insertWorkRowStatement(const RigaStampa &row)
{
    return QStringLiteral("INSERT INTO GD04_STDISTINTA ( GD04_KEY, GD04_DITTA_CG18, GD04_ID_GD01, GD04_LIVELLO,"
                          " GD04_TIPOCF_CG44, GD04_CLIFOR_CG44, GD04_DATAINIZIOVAL, GD04_DATAFINEVAL, GD04_ID_WF02"
                          " ) VALUES ( '")
        + sqltext::doubleQuotes(row.key) + QStringLiteral("',") + QString::number(row.company) + QLatin1Char(',')
        + QString::number(row.typeId) + QStringLiteral(", '") + levelText(row.level) + QStringLiteral("',")
        + QString::number(row.subjectKind) + QLatin1Char(',') + QString::number(row.subjectCode) + QLatin1Char(',')
        + dateOrNull(row.start) + QLatin1Char(',') + dateOrNull(row.end) + QStringLiteral(",6 )");
}

// The blanks inside are the statement's own, as it has always been sent.
QString reportDataQuery(const QString &key, int company)
{
    return QStringLiteral("SELECT *  FROM         CG44_CLIFOR INNER JOIN"
                          "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = "
                          "CG16_ANAGGEN.CG16_CODICE INNER JOIN"
                          "                       GD04_STDISTINTA ON CG44_CLIFOR.CG44_DITTA_CG18 = "
                          "GD04_STDISTINTA.GD04_DITTA_CG18 AND"
                          "                       CG44_CLIFOR.CG44_TIPOCF = GD04_STDISTINTA.GD04_TIPOCF_CG44 And "
                          "CG44_CLIFOR.CG44_CLIFOR = GD04_STDISTINTA.GD04_CLIFOR_CG44"
                          "                       INNER JOIN GD01_TIPODISTINTA ON GD04_STDISTINTA.GD04_ID_GD01 = "
                          "GD01_TIPODISTINTA.GD01_ID"
                          " WHERE GD04_KEY = '")
        + sqltext::doubleQuotes(key) + QStringLiteral("'   AND GD04_DITTA_CG18  = ") + QString::number(company)
        + QStringLiteral(" ORDER BY GD04_STDISTINTA.GD04_ID ");
}

QString typeByCodeQuery(int company, const QString &code)
{
    return QStringLiteral("SELECT GD01_ID, GD01_INDTIPOSOGG FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND GD01_CODICE = ") + sqltext::quoted(code);
}

} // namespace stampastatements
