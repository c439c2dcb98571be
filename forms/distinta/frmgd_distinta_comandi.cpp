// What follows the focused node and the ticks of the subject list: the buttons that can act
// now, the parameters and the link state of the node in focus.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"
#include "platform/db/readsnapshot.h"

#include <QLineEdit>
#include <QPushButton>

// Adding needs a classification and ticked subjects; removing needs a node in focus.
void FRMGD_DISTINTA::aggiornaComandi()
{
    const bool distintaScelta = !chiaveSelezionata().isEmpty() && !chiaveSelezionata().startsWith(QLatin1Char('P'));
    CMD_ADDANAGR->setEnabled(distintaScelta && m_selezionati > 0);
    CMD_ADDANAGRCAPO->setEnabled(distintaScelta && m_selezionati > 0);
    CMD_REMANAGR->setEnabled(TVW_DISTINTA->focusedNode().isValid());
    aggiornaComandiUsabilita();
}

// Ticks change one by one or all at once: they are counted once the change is over.
void FRMGD_DISTINTA::contaSelezionatiPiuTardi()
{
    if (m_conteggioInAttesa)
        return;
    m_conteggioInAttesa = true;
    QMetaObject::invokeMethod(this, [this] {
        m_conteggioInAttesa = false;
        m_selezionati = 0;
        if (m_anagrafiche) {
            const int field = m_anagrafiche->fieldIndex(QStringLiteral("Seleziona"));
            for (int row = 0; field >= 0 && row < m_anagrafiche->recordCount(); ++row)
                m_selezionati += m_anagrafiche->valueAt(row, field).toInt() == 1 ? 1 : 0;
        }
        aggiornaComandi();
    }, Qt::QueuedConnection);
}

// Nothing happens while a propagation walks the branch or a deletion takes the node away.
void FRMGD_DISTINTA::TVW_DISTINTA_OnChangeNode(const fw::TreeListNode &, const fw::TreeListNode &current)
{
    if (m_propagazioneInCorso || m_eliminazioneInCorso) {
        dettagliDopoIlLavoro();
        return;
    }
    aggiornaComandi();
    if (TXT_ALFA->isVisible())
        TXT_ALFA->hide();
    if (!current.isValid() || !m_nodi) {
        TXT_GD02_STATO->setGuid(QString());
        dettagliNodoFocalizzato(current);
        return;
    }
    const db::ReadSnapshot burst(connection()); // a focus change reads a dozen small things
    CaricaParametri();
    dettagliNodoFocalizzato(current);
    step(QStringLiteral("TVW_DISTINTA_OnChangeNode"), [&] {
        const qint64 id = m_nodi->valueAt(current.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        TXT_GD02_STATO->setGuid(guidNodo(id));
    });
}
