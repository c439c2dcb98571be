#include "forms/distinta/propagazione.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/statolegame.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/windowupdatelock.h"
#include "framework/workflowstatecontrol.h"
#include "framework/workprogress.h"

namespace distinta {

namespace {

const QString procedurePropaga = QStringLiteral("mnuPropagaFigli_Click");
const QString procedureRilascia = QStringLiteral("mnuRilasciaFigli_Click");

// The positions of the nodes below a node, in display order: the walk ends at the first node
// that is not deeper than it.
QList<int> discendenti(const fw::TreeListNode &node)
{
    QList<int> positions;
    for (fw::TreeListNode next = node.next(); next.isValid() && next.level() > node.level(); next = next.next())
        positions << next.absoluteIndex();
    return positions;
}

} // namespace

Propagazione::Propagazione(FormFrame &form, Albero &albero, StatoLegame &stato)
    : m_form(form)
    , m_albero(albero)
    , m_stato(stato)
{ }

fw::TreeListNode Propagazione::nodo(const NodoCliccato &cliccato) const
{
    const fw::TreeListNode node = m_albero.widget()->nodeAt(cliccato.indice);
    if (!node.isValid() || m_albero.idDelNodo(node) != cliccato.idNodo)
        return {};
    return node;
}

// The rows are written through a clone of the tree's rows: the same rows and the same checked
// write-back, without moving the focus over every node of the branch on the way.
void Propagazione::PropagaFigli(const NodoCliccato &cliccato)
{
    const Albero::Lavoro propagazione(m_albero);
    const fw::TreeListNode partenza = nodo(cliccato);
    const db::RecordsetPtr tutte = m_albero.nodi();
    if (!tutte || tutte->isEmpty() || !partenza.isValid())
        return;
    fw::TreeList *albero = m_albero.widget();
    const QList<int> nodi = discendenti(partenza);
    const QVariant codice = cliccato.codiceFatt != 0 ? QVariant(qint64(cliccato.codiceFatt)) : QVariant();
    const db::RecordsetPtr righe = tutte->clone();
    const int campoRegola = righe->fieldIndex(QStringLiteral("GD02_TIPOANAGFATT"));
    const int campoCodice = righe->fieldIndex(QStringLiteral("GD02_CLIFORFATT_CG44"));
    QStringList modificatiAltrove;

    OperazioneStorico operazione(m_form, procedurePropaga, QStringLiteral("Propagazione"), m_albero.idTipo());
    if (!operazione.inizia())
        return;
    fw::WorkProgress avanzamento(&m_form, QStringLiteral("Impostazione dei valori di fatturazione sui figli"),
                                 int(nodi.size()), true);
    avanzamento.showCounts();
    avanzamento.setObjectName(QStringLiteral("dlgAvanzamento"));
    fw::WindowUpdateLock freeze(albero);
    int fatti = 0;
    for (int posizione : nodi) {
        bool altrove = false;
        const bool scritto = m_form.writeRow(
            procedurePropaga,
            [&] {
                righe->setCurrentRow(albero->nodeAt(posizione).row());
                try {
                    righe->setValue(campoRegola, cliccato.tipoAnagFatt);
                    righe->setValue(campoCodice, codice);
                    righe->update();
                } catch (const db::DatabaseError &) {
                    righe->cancelUpdate(); // a retry starts again from the stored row
                    throw;
                }
            },
            [&](const db::DatabaseError &) {
                // Another clerk's values stay; the row shows them.
                altrove = m_form.step(procedurePropaga, [&] {
                    righe->resync();
                    modificatiAltrove << MODGD_DISTINTA::NvlStringa(righe->value(QStringLiteral("GD02_CLIFOR_CG44")))
                            + QStringLiteral(" - ")
                            + MODGD_DISTINTA::NvlStringa(righe->value(QStringLiteral("RAGIONESOCIALE")));
                });
            });
        if (!(scritto || altrove) || !avanzamento.advance(++fatti))
            break;
    }
    operazione.fine();
    albero->setFocusedAbsoluteIndex(cliccato.indice);
    freeze.release();
    albero->refresh();
    if (!modificatiAltrove.isEmpty())
        m_form.avviso(QStringLiteral("Nodi non aggiornati perché modificati da un altro utente dopo la lettura "
                                     "(i loro dati sono stati riletti):\n")
                      + modificatiAltrove.join(QLatin1Char('\n')));
}

void Propagazione::RilasciaFigli(const NodoCliccato &cliccato)
{
    const Albero::Lavoro propagazione(m_albero);
    const fw::TreeListNode partenza = nodo(cliccato);
    const db::RecordsetPtr tutte = m_albero.nodi();
    if (!tutte || tutte->isEmpty() || !partenza.isValid())
        return;
    fw::WorkflowStateControl *stato = m_stato.controllo();
    QHash<qint64, QString> guids;
    if (!m_form.step(procedureRilascia, [&] { guids = guidNodiDistinta(); }))
        return;
    const QString guidCliccato = guids.value(cliccato.idNodo);
    OperazioneStorico operazione(m_form, procedureRilascia, QStringLiteral("Propagazione"), m_albero.idTipo());
    if (!operazione.iniziaPerStati())
        return;
    // A node without a state first takes the workflow's default one.
    if (!m_form.step(procedureRilascia, [&] {
            stato->setGuid(guidCliccato);
            if (stato->GetDescrizioneStatoFromGUID(guidCliccato).isEmpty()) {
                stato->GetDefaultFlussoStato();
                stato->ConfermaStato();
            }
        }))
        return;

    fw::TreeList *albero = m_albero.widget();
    const QList<int> nodi = discendenti(partenza);
    const int campoId = tutte->fieldIndex(QStringLiteral("GD02_ID"));
    fw::WorkProgress avanzamento(&m_form, QStringLiteral("Impostazione dello stato sui figli"), int(nodi.size()), true);
    avanzamento.showCounts();
    avanzamento.setObjectName(QStringLiteral("dlgAvanzamento"));
    int fatti = 0;
    for (int posizione : nodi) {
        const bool continua = m_form.step(procedureRilascia, [&] {
            const qint64 id = tutte->valueAt(albero->nodeAt(posizione).row(), campoId).toLongLong();
            stato->DuplicaStato(guidCliccato, guids.value(id));
        });
        if (!continua || !avanzamento.advance(++fatti))
            break;
    }
    operazione.fine();
    albero->setFocusedAbsoluteIndex(cliccato.indice);
    albero->refresh();
    m_form.step(procedureRilascia, [&] { stato->setGuid(guidCliccato); });
}

QHash<qint64, QString> Propagazione::guidNodiDistinta()
{
    const db::RecordsetPtr rows = m_form.connection()->openRecordset(
        nodistatements::typeGuidsQuery(m_form.companyCode(), m_albero.idTipo()));
    QHash<qint64, QString> guids;
    guids.reserve(rows->recordCount());
    for (int row = 0; row < rows->recordCount(); ++row)
        guids.insert(rows->valueAt(row, 0).toLongLong(), MODGD_DISTINTA::NvlStringa(rows->valueAt(row, 1)));
    return guids;
}

} // namespace distinta
