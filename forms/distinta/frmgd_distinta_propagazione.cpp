// What the tree's context menu pushes down a branch: the billing rule and code of the node the
// menu was opened on, or its link state, copied to every node below it in display order. Each node is saved on its own, through the rows the tree is bound to; a node another
// clerk changed since it was read is left as that clerk saved it, and named at the end.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "framework/globalservices.h"
#include "framework/progressfeedback.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

#include <QScopedValueRollback>

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

// The rows are written through a clone of the tree's rows: the same rows and the same checked
// write-back, without moving the focus over every node of the branch on the way.
void FRMGD_DISTINTA::mnuPropagaFigli_Click()
{
    QScopedValueRollback propagating(m_propagazioneInCorso, true);
    const fw::TreeListNode cliccato = nodoCliccato();
    if (!m_nodi || m_nodi->isEmpty() || !cliccato.isValid())
        return;
    const QList<int> nodi = discendenti(cliccato);
    const QVariant codice = m_cliccato.codiceFatt != 0 ? QVariant(qint64(m_cliccato.codiceFatt)) : QVariant();
    const db::RecordsetPtr righe = m_nodi->clone();
    const int campoRegola = righe->fieldIndex(QStringLiteral("GD02_TIPOANAGFATT"));
    const int campoCodice = righe->fieldIndex(QStringLiteral("GD02_CLIFORFATT_CG44"));
    QStringList modificatiAltrove;

    fw::ProgressFeedback avanzamento(this, QStringLiteral("Impostazione dei valori di fatturazione sui figli"),
                                     int(nodi.size()), true);
    TVW_DISTINTA->beginUpdate();
    int fatti = 0;
    for (int posizione : nodi) {
        const bool continua = step(procedurePropaga, [&] {
            righe->setCurrentRow(TVW_DISTINTA->nodeAt(posizione).row());
            try {
                righe->setValue(campoRegola, m_cliccato.tipoAnagFatt);
                righe->setValue(campoCodice, codice);
                righe->update();
            } catch (const db::DatabaseError &error) {
                righe->cancelUpdate();   // a retry starts again from the stored row
                if (!error.isStaleRow())
                    throw;
                // Another clerk's values stay; the row shows them.
                connection()->clearErrors();
                righe->resync();
                modificatiAltrove << MODGD_DISTINTA::NvlStringa(righe->value(QStringLiteral("GD02_CLIFOR_CG44")))
                                         + QStringLiteral(" - ")
                                         + MODGD_DISTINTA::NvlStringa(righe->value(QStringLiteral("RAGIONESOCIALE")));
            }
        });
        if (!continua || !avanzamento.advance(++fatti))
            break;
    }
    TVW_DISTINTA->setFocusedAbsoluteIndex(m_cliccato.indice);
    TVW_DISTINTA->endUpdate();
    TVW_DISTINTA->refresh();
    if (!modificatiAltrove.isEmpty())
        avviso(QStringLiteral("Nodi non aggiornati perché modificati da un altro utente dopo la lettura "
                              "(i loro dati sono stati riletti):\n")
               + modificatiAltrove.join(QLatin1Char('\n')));
}

void FRMGD_DISTINTA::mnuRilasciaFigli_Click()
{
    QScopedValueRollback propagating(m_propagazioneInCorso, true);
    const fw::TreeListNode cliccato = nodoCliccato();
    if (!m_nodi || m_nodi->isEmpty() || !cliccato.isValid())
        return;
    QHash<qint64, QString> guids;
    if (!step(procedureRilascia, [&] { guids = guidNodiDistinta(); }))
        return;
    const QString guidCliccato = guids.value(m_cliccato.idNodo);
    // A node without a state first takes the workflow's default one.
    if (!step(procedureRilascia, [&] {
            TXT_GD02_STATO->setGuid(guidCliccato);
            if (TXT_GD02_STATO->GetDescrizioneStatoFromGUID(guidCliccato).isEmpty()) {
                TXT_GD02_STATO->GetDefaultFlussoStato();
                TXT_GD02_STATO->ConfermaStato();
            }
        }))
        return;

    const QList<int> nodi = discendenti(cliccato);
    const int campoId = m_nodi->fieldIndex(QStringLiteral("GD02_ID"));
    fw::ProgressFeedback avanzamento(this, QStringLiteral("Impostazione dello stato sui figli"), int(nodi.size()), true);
    int fatti = 0;
    for (int posizione : nodi) {
        const bool continua = step(procedureRilascia, [&] {
            const qint64 id = m_nodi->valueAt(TVW_DISTINTA->nodeAt(posizione).row(), campoId).toLongLong();
            TXT_GD02_STATO->DuplicaStato(guidCliccato, guids.value(id));
        });
        if (!continua || !avanzamento.advance(++fatti))
            break;
    }
    TVW_DISTINTA->setFocusedAbsoluteIndex(m_cliccato.indice);
    TVW_DISTINTA->refresh();
    step(procedureRilascia, [&] { TXT_GD02_STATO->setGuid(guidCliccato); });
}

// Only a choice of the user is stored; the control's own changes (a node shown) are not.
void FRMGD_DISTINTA::TXT_GD02_STATO_AfterItem(bool cambiatoDallUtente)
{
    if (cambiatoDallUtente)
        step(QStringLiteral("TXT_GD02_STATO_AfterItem"), [this] { TXT_GD02_STATO->ConfermaStato(); });
}

QString FRMGD_DISTINTA::guidNodo(qint64 idNodo)
{
    const db::RecordsetPtr guid = connection()->openRecordset(nodistatements::nodeGuidQuery(companyCode(), idNodo));
    return guid->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(guid->valueAt(0, 0));
}

QHash<qint64, QString> FRMGD_DISTINTA::guidNodiDistinta()
{
    const db::RecordsetPtr rows = connection()->openRecordset(
        nodistatements::typeGuidsQuery(companyCode(), m_idDistinta.toLongLong()));
    QHash<qint64, QString> guids;
    guids.reserve(rows->recordCount());
    for (int row = 0; row < rows->recordCount(); ++row)
        guids.insert(rows->valueAt(row, 0).toLongLong(), MODGD_DISTINTA::NvlStringa(rows->valueAt(row, 1)));
    return guids;
}
