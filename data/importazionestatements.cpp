#include "data/importazionestatements.h"

#include "data/sqltext.h"

namespace importazionestatements {

QString subjectsQuery(int company, int subjectKind)
{
    return QStringLiteral("SELECT CG44_CLIFOR, CG16_RAGSOANAG FROM CG44_CLIFOR LEFT OUTER JOIN CG16_ANAGGEN "
                          "ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE CG44_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND CG44_TIPOCF = ") + sqltext::number(subjectKind);
}

QString prioritiesQuery()
{
    return QStringLiteral("SELECT LP09_ID, LP09_DESCR FROM LP09_TESTATAPRIORITA");
}

} // namespace importazionestatements
