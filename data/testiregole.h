#pragma once

#include <QStringList>

// The texts of the module's coded rules, by code (the list's index): the combos show them, and
// the journal's lines speak them.
namespace testiregole {

// GD02_TIPOANAGFATT, GD03_TIPOANAGFATT: how a node's billing subject is found.
const QStringList &regoleFatturazione();
// GD03's rule for new nodes' in-invoice campaigns, as the parameters form names it.
const QStringList &regolePromozioni();
// GD02_INDEREPROMO: where a node's in-invoice campaigns come from, as the editor names it.
const QStringList &regolePromozioniNodo();
// GD03_TIPOCARICODATA: where a new node's dates come from.
const QStringList &caricamentoDate();
// The text of a code, or the code itself when it has none.
QString testo(const QStringList &regole, const QVariant &codice);

} // namespace testiregole
