#include "parametristatements.h"

namespace parametristatements {

QString snapshotQuery(int company)
{
    // Kept as the pieces it has always been joined from: the doubled blanks are part of the text.
    return QStringLiteral(" SELECT   GD03_ID_WF02 AS StatoLegame, "
                          " ISNULL(GD03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
                          " ISNULL(GD03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO, "
                          " ISNULL(GD03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE, "
                          " ISNULL(GD03_FLG_ANAG,0) AS flg_Anagrafica, "
                          " ISNULL(GD03_FLG_CONDVEND,0) AS flg_CondVendita, "
                          " ISNULL(GD03_FLG_CLAS,0) AS flg_Classificazioni, "
                          " ISNULL(GD03_FLG_PROV,0) AS flg_Provvigioni,"
                          " ISNULL(GD03_TIPOANAGFATT,0) AS TipoCaricaFatt"
                          " FROM  GD03_PARAMETRI"
                          " WHERE GD03_DITTA_CG18 = ")
        + QString::number(company);
}

} // namespace parametristatements
