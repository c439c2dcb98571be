#include "anagdistintastatements.h"

#include "data/sqltext.h"

#include <QStringList>

namespace anagdistintastatements {

namespace {

const QString crlf = QStringLiteral("\r\n");

} // namespace

QString typesFrameQuery(int company)
{
    return QStringLiteral("SELECT * FROM GD01_TIPODISTINTA ") + QStringLiteral(" WHERE GD01_DITTA_CG18 = ")
        + QString::number(company);
}

QString divisionLookupQuery(int company)
{
    return QStringLiteral("SELECT CO1A_CODICE, CO1A_DESCR FROM CO1A_ANAGDIVISIONI ")
        + QStringLiteral(" WHERE CO1A_DITTA_CG18 = ") + QString::number(company);
}

QString divisionDecodeQuery(const QString &code)
{
    return QStringLiteral("SELECT CO1A_DESCR, CO1A_CODICE FROM CO1A_ANAGDIVISIONI ")
        + QStringLiteral(" WHERE CO1A_CODICE = '") + sqltext::doubleQuotes(code) + QStringLiteral("'");
}

QString divisionIdQuery(int company, const QString &code)
{
    return QStringList {QStringLiteral("SELECT CO1A_IDDIV"),
                        QStringLiteral("   FROM"),
                        QStringLiteral("    CO1A_ANAGDIVISIONI"),
                        QStringLiteral("WHERE"),
                        QStringLiteral("    CO1A_DITTA_CG18 = ") + QString::number(company) + QStringLiteral(" "),
                        QStringLiteral("    AND CO1A_CODICE = '") + sqltext::doubleQuotes(code) + QStringLiteral("'")}
        .join(crlf);
}

QString divisionCodeQuery(qint64 divisionId)
{
    return QStringList {QStringLiteral("SELECT CO1A_CODICE"), QStringLiteral("   FROM"),
                        QStringLiteral("    CO1A_ANAGDIVISIONI"), QStringLiteral("WHERE"),
                        QStringLiteral("    CO1A_IDDIV = ") + QString::number(divisionId)}
        .join(crlf);
}

QString priorityIdQuery(int company, const QString &code)
{
    return QStringLiteral("SELECT LP09_ID FROM LP09_TESTATAPRIORITA WHERE LP09_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND LP09_CODICE = '") + sqltext::doubleQuotes(code)
        + QStringLiteral("'");
}

QString priorityCodeQuery(qint64 priorityId)
{
    return QStringLiteral("SELECT LP09_CODICE FROM LP09_TESTATAPRIORITA WHERE LP09_ID = ")
        + QString::number(priorityId);
}

QString priorityLookupQuery(int company)
{
    return QStringLiteral("SELECT LP09_CODICE, LP09_DESCR FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                          "WHERE LP09_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" ORDER BY LP09_CODICE");
}

QString priorityDecodeQuery(int company, const QString &code)
{
    return QStringLiteral("SELECT LP09_DESCR, LP09_CODICE FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                          "WHERE LP09_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND LP09_CODICE = '") + sqltext::doubleQuotes(code)
        + QStringLiteral("'");
}

QString gridDivisionQuery(int company, qint64 divisionId)
{
    return QStringLiteral("SELECT RTRIM(CO1A_CODICE) + ' - ' + CO1A_DESCR AS DESCR ")
        + QStringLiteral(" FROM CO1A_ANAGDIVISIONI ") + QStringLiteral(" WHERE CO1A_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND CO1A_IDDIV = '") + QString::number(divisionId)
        + QStringLiteral("'");
}

QString gridPriorityQuery(qint64 priorityId)
{
    return QStringLiteral("SELECT LP09_CODICE + ' - ' + LP09_DESCR AS DESCR ")
        + QStringLiteral(" FROM LP09_TESTATAPRIORITA ") + QStringLiteral(" WHERE LP09_ID = ")
        + QString::number(priorityId);
}

QString typeNodesQuery(qint64 typeId)
{
    return QStringLiteral("SELECT * ") + QStringLiteral(" FROM  GD01_TIPODISTINTA INNER JOIN GD02_DISTINTA ")
        + QStringLiteral("                                 ON GD01_TIPODISTINTA.GD01_ID = GD02_DISTINTA.GD02_ID_GD01")
        + QStringLiteral(" WHERE GD01_ID = ") + QString::number(typeId);
}

QString sameCodeQuery(int company, const QString &code, qint64 typeId)
{
    return QStringLiteral("SELECT GD01_ID, GD01_CODICE, GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND GD01_CODICE = '") + sqltext::doubleQuotes(code)
        + QStringLiteral("' AND GD01_ID <> ") + QString::number(typeId);
}

QString typeNodeGuidsQuery(int company, qint64 typeId)
{
    return QStringLiteral("SELECT GD02_ID, gd02_guid FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND GD02_ID_GD01 = ") + QString::number(typeId);
}

QString printQuery()
{
    return QStringLiteral("SELECT * FROM MO09_TIPODIST ORDER BY MO09_CODDIST");
}

} // namespace anagdistintastatements
