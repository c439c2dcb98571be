#include "prioritastatements.h"

#include "data/sqltext.h"

namespace prioritastatements {

QString listiniQuery(int company)
{
    // Kept as the pieces it has always been joined from: the aligned blanks are part of the text.
    return QStringLiteral("SELECT LP01_DESCR  AS Condizione, "
                          "       LP09_DESCR  AS Priorità, "
                          "       LP10_ID     AS IDCondizione, "
                          "       LP09_ID     AS IDPriorità, "
                          "       LP09_CODICE AS CodicePriorità "
                          "FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                          "INNER JOIN LP10_DETTAGLIOPRIORITA WITH (NOLOCK) "
                          "ON LP09_ID = LP10_ID_LP09 "
                          "INNER JOIN LP01_PROVIDER WITH (NOLOCK) "
                          "ON LP10_ID_LP01 = LP01_ID "
                          "WHERE LP09_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND ") + QStringLiteral("      LP09_INDTIPOTABPRIORITA = 0");
}

QString priorityIdQuery(int company, const QString &code)
{
    return QStringLiteral("SELECT LP09_ID FROM LP09_TESTATAPRIORITA WITH (NOLOCK) WHERE LP09_DITTA_CG18 = ")
        + QString::number(company) + QStringLiteral(" AND LP09_CODICE = '") + sqltext::doubleQuotes(code)
        + QStringLiteral("'");
}

QString priorityCodeQuery(qint64 priorityId)
{
    return QStringLiteral("SELECT LP09_CODICE FROM LP09_TESTATAPRIORITA WITH (NOLOCK) WHERE LP09_ID = ")
        + QString::number(priorityId);
}

} // namespace prioritastatements
