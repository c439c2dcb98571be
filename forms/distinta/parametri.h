#pragma once

#include <QDate>

namespace distinta {

// The module parameters of the company as the editor last read them (GD03_PARAMETRI). The
// defaults are those of a company without a parameters row.
struct Parametri
{
    short tipoCaricaData = 0; // 0 dates from the parent node, 1 fixed dates
    QDate dataFissaInizio {2000, 1, 1};
    QDate dataFissaFine {2099, 12, 31};
    bool flgAnagrafica = true;
    bool flgCondVendita = true;
    bool flgClassificazioni = true;
    bool flgProvvigioni = true;
    short tipoCaricaFatt = 0; // GD02_TIPOANAGFATT of a new node
    short statoLegame = 0;    // GD02_ID_WF02 of a new node: always 0
};

} // namespace distinta
