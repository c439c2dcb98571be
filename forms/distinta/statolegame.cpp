#include "forms/distinta/statolegame.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "forms/distinta/albero.h"
#include "frame/formframe.h"
#include "frame/operazionestorico.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

namespace distinta {

StatoLegame::StatoLegame(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , TXT_GD02_STATO(new fw::WorkflowStateControl)
{
    TXT_GD02_STATO->setObjectName(QStringLiteral("TXT_GD02_STATO"));
    TXT_GD02_STATO->setMinimumWidth(140);
    TXT_GD02_STATO->setMaximumWidth(180);
    connect(TXT_GD02_STATO, &fw::WorkflowStateControl::AfterItem, this, &StatoLegame::TXT_GD02_STATO_AfterItem);
}

void StatoLegame::prepara()
{
    TXT_GD02_STATO->setWorkflow(m_form.statiDelFlusso(), QStringLiteral("DISTINTA"));
    // The tree was loaded before the control was ready: it shows the focused node's state now.
    const qint64 focalizzato = m_albero.idDelNodo(m_albero.widget()->focusedNode());
    if (focalizzato != 0)
        TXT_GD02_STATO->setGuid(guidNodo(focalizzato));
}

void StatoLegame::mostraNodo(qint64 idNodo)
{
    TXT_GD02_STATO->setGuid(idNodo != 0 ? guidNodo(idNodo) : QString());
}

// Only a choice of the user is stored; the control's own changes (a node shown) are not.
void StatoLegame::TXT_GD02_STATO_AfterItem(bool cambiatoDallUtente)
{
    if (!cambiatoDallUtente)
        return;
    const QString procedure = QStringLiteral("TXT_GD02_STATO_AfterItem");
    OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
    if (operazione.iniziaPerStati())
        m_form.step(procedure, [this] { TXT_GD02_STATO->ConfermaStato(); });
}

QString StatoLegame::guidNodo(qint64 idNodo)
{
    const db::RecordsetPtr guid = m_form.connection()->openRecordset(
        nodistatements::nodeGuidQuery(m_form.companyCode(), idNodo));
    return guid->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(guid->valueAt(0, 0));
}

} // namespace distinta
