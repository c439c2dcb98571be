#include "dittastatements.h"

namespace dittastatements {

QString companyHasDataQuery(int company)
{
    const QString code = QString::number(company);
    return QStringLiteral("SELECT CASE WHEN EXISTS (SELECT 1 FROM CG18_DITTE WHERE CG18_DITTA = %1)"
                          " OR EXISTS (SELECT 1 FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = %1)"
                          " OR EXISTS (SELECT 1 FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = %1)"
                          " THEN 1 ELSE 0 END AS DittaConDati")
        .arg(code);
}

} // namespace dittastatements
