#include "data/doveusatostatements.h"

#include "data/sqltext.h"

namespace doveusatostatements {

QString subjectLinksQuery(int company, int subjectKind, qint64 subjectCode, const QDate &today)
{
    const QString oggi = sqltext::convertDate103(today);
    return QStringLiteral("SELECT GD02_DISTINTA.GD02_ID, GD01_ID, GD01_INDTIPOSOGG, GD01_CODICE, GD01_DESCR, "
                          "ISNULL(RTRIM(CO1A_CODICE) + ' - ' + CO1A_DESCR, '') AS Divisione, "
                          "PADRE.GD02_CLIFOR_CG44 AS CodicePadre, ISNULL(CG16_RAGSOANAG, '') AS NomePadre, "
                          "GD02_DISTINTA.GD02_DATAINIZIOVAL, GD02_DISTINTA.GD02_DATAFINEVAL, "
                          "CASE WHEN ISNULL(GD02_DISTINTA.GD02_DATAINIZIOVAL, ")
        + oggi + QStringLiteral(") <= ") + oggi + QStringLiteral(" AND ISNULL(GD02_DISTINTA.GD02_DATAFINEVAL, ") + oggi
        + QStringLiteral(") >= ") + oggi
        + QStringLiteral(" THEN 1 ELSE 0 END AS ValidaOggi "
                         "FROM GD02_DISTINTA INNER JOIN GD01_TIPODISTINTA ON GD01_ID = GD02_DISTINTA.GD02_ID_GD01 "
                         "AND GD01_DITTA_CG18 = GD02_DISTINTA.GD02_DITTA_CG18 "
                         "LEFT OUTER JOIN CO1A_ANAGDIVISIONI ON CO1A_IDDIV = GD01_IDDIV_CO1A "
                         "LEFT OUTER JOIN GD02_DISTINTA AS PADRE ON PADRE.GD02_ID = GD02_DISTINTA.GD02_IDPARENT_GD02 "
                         "LEFT OUTER JOIN CG44_CLIFOR ON CG44_DITTA_CG18 = PADRE.GD02_DITTA_CG18 "
                         "AND CG44_TIPOCF = PADRE.GD02_TIPOCF_CG44 AND CG44_CLIFOR = PADRE.GD02_CLIFOR_CG44 "
                         "LEFT OUTER JOIN CG16_ANAGGEN ON CG16_CODICE = CG44_CODICE_CG16 "
                         "WHERE GD02_DISTINTA.GD02_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND GD02_DISTINTA.GD02_TIPOCF_CG44 = ")
        + sqltext::number(subjectKind) + QStringLiteral(" AND GD02_DISTINTA.GD02_CLIFOR_CG44 = ")
        + sqltext::number(subjectCode) + QStringLiteral(" ORDER BY GD01_CODICE, GD02_DISTINTA.GD02_DATAINIZIOVAL");
}

} // namespace doveusatostatements
