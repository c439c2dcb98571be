#include "distintastatements.h"

namespace distintastatements {

QString typesQuery(int company, int subjectKind)
{
    return QStringLiteral("SELECT * FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = ") + QString::number(company)
        + QStringLiteral(" AND GD01_INDTIPOSOGG = ") + QString::number(subjectKind)
        + QStringLiteral(" ORDER BY GD01_CODICE");
}

QString nodesQuery(int company, int subjectKind, qint64 typeId)
{
    return QStringLiteral("SELECT GD02_ID, GD02_IDPARENT_GD02, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, "
                          "RTRIM((SELECT CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
                          "ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE "
                          "AND GD02_DISTINTA.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
                          "AND GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
                          "AND GD02_DISTINTA.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR)) AS RAGIONESOCIALE, "
                          "GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, GD02_TIPOANAGFATT, GD02_CLIFORFATT_CG44, "
                          "GD02_DESCR, GD02_IDSTRUTTURA_LP09, GD02_IDLOCALIZZATA_LP09, GD02_INDEREPROMO "
                          "FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND GD02_TIPOCF_CG44 = ") + QString::number(subjectKind)
        + QStringLiteral(" AND GD02_ID_GD01 = '") + QString::number(typeId)
        + QStringLiteral("' AND GD02_CLIFOR_CG44 IS NOT NULL");
}

QString headerQuery(qint64 typeId)
{
    return QStringLiteral("SELECT GD01_IDDIV_CO1A, GD01_GUID , CO1A_DESCR FROM GD01_TIPODISTINTA "
                          "INNER JOIN CO1A_ANAGDIVISIONI ON GD01_IDDIV_CO1A = CO1A_IDDIV "
                          "WHERE GD01_ID = ")
        + QString::number(typeId);
}

QString businessNameQuery(int company, int subjectKind, qint64 subjectCode)
{
    return QStringLiteral("SELECT CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
                          "ON CG16_CODICE = CG44_CODICE_CG16 WHERE CG44_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND CG44_TIPOCF = ") + QString::number(subjectKind)
        + QStringLiteral(" AND CG44_CLIFOR = ") + QString::number(subjectCode);
}

QString priorityDescriptionQuery(qint64 priorityId)
{
    return QStringLiteral("SELECT LP09_DESCR FROM LP09_TESTATAPRIORITA WHERE LP09_ID = '") + QString::number(priorityId)
        + QStringLiteral("'");
}

QString emptyNodeFrameQuery()
{
    return QStringLiteral("SELECT *, '' AS RagioneSociale FROM GD02_DISTINTA WHERE 1=0 ");
}

} // namespace distintastatements
