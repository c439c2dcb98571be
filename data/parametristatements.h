#pragma once

#include <QString>

namespace parametristatements {

// The parameter snapshot of a company read by the tree editor, with the aliases StatoLegame,
// TipoCaricaDATA, DataFissaINIZIO, DataFissaFINE, flg_Anagrafica, flg_CondVendita,
// flg_Classificazioni, flg_Provvigioni, TipoCaricaFatt and the defaults for null columns.
QString snapshotQuery(int company);

} // namespace parametristatements
