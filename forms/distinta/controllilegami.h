#pragma once

#include "data/legamistatements.h"
#include "platform/db/recordset.h"

#include <QDate>
#include <optional>

class FormFrame;

namespace distinta {

class Albero;

// What hangs on a node elsewhere in the suite: children, contracts, bonuses and promotional
// activities. Each check reports a failing query to the error handler and then answers that
// there is no link.
class ControlliLegami
{
public:
    ControlliLegami(FormFrame &form, Albero &albero);

    bool ContaFigli(qint64 idNodo);
    // dataFine: only deadlines after it count; none for any definitive bonus.
    bool PremioDefinitivo(qint64 idNodo, const std::optional<QDate> &dataFine);
    // Why PremioDefinitivo refused: a shortened end, or (without dataFine) the start date.
    static QString messaggioPremioDefinitivo(bool conDataFine);
    bool LegamiContratto(const QString &codice);
    // The current row of the classification's rows.
    bool LegamiPremiPromoAtt();
    bool LegamiPremiPromoAttFigli(const db::RecordsetPtr &figli);
    // The current row of a node recordset as the condition statement reads it.
    static legamistatements::NodoCondizioni nodoCondizioni(const db::Recordset &nodi);

private:
    FormFrame &m_form;
    Albero &m_albero;
};

} // namespace distinta
