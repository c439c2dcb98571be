#include "schedastatements.h"

namespace schedastatements {

QString subjectQuery(int company, int subjectKind, qint64 subjectCode)
{
    return QStringLiteral("SELECT CG44_CLIFOR, CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, "
                          "CG16_TEL1NUM, CG44_CODPAG_CG62, CG62_DESCPAG "
                          "FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON CG16_CODICE = CG44_CODICE_CG16 "
                          "LEFT OUTER JOIN CG62_CONDPAGDES ON CG62_CODPAG = CG44_CODPAG_CG62 "
                          "WHERE CG44_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND CG44_TIPOCF = ") + QString::number(subjectKind)
        + QStringLiteral(" AND CG44_CLIFOR = ") + QString::number(subjectCode);
}

QString listsQuery(int company, int subjectKind, qint64 subjectCode)
{
    return QStringLiteral("SELECT GD02_ID, GD01_CODICE, GD01_DESCR, CO1A_CODICE, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL "
                          "FROM GD02_DISTINTA INNER JOIN GD01_TIPODISTINTA ON GD01_ID = GD02_ID_GD01 "
                          "AND GD01_DITTA_CG18 = GD02_DITTA_CG18 "
                          "LEFT OUTER JOIN CO1A_ANAGDIVISIONI ON CO1A_IDDIV = GD01_IDDIV_CO1A "
                          "AND CO1A_DITTA_CG18 = GD01_DITTA_CG18 "
                          "WHERE GD02_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND GD02_TIPOCF_CG44 = ") + QString::number(subjectKind)
        + QStringLiteral(" AND GD02_CLIFOR_CG44 = ") + QString::number(subjectCode)
        + QStringLiteral(" ORDER BY GD01_CODICE, GD02_DATAINIZIOVAL");
}

} // namespace schedastatements
