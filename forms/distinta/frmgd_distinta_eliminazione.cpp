// Removing a node from the classification, after the checks of what hangs on it elsewhere in the
// suite: a definitive bonus forbids it; contracts, bonuses and promotional activities of the node
// and of its direct children are questions the user may answer yes to. The database removes the
// rows below the node when the node's row goes.
#include "forms/distinta/frmgd_distinta.h"

#include "data/legamistatements.h"
#include "data/modgd_distinta.h"
#include "data/numerictext.h"
#include "framework/logservice.h"
#include "framework/treelist/treelist.h"

#include <QScopedValueRollback>
#include <QTabWidget>

namespace {

const QString procedureEliminazione = QStringLiteral("EliminaCliforDaStruttura");

// The current row of a node recordset as the condition statement reads it. An empty date
// fails the statement, as it does on the server.
legamistatements::NodoCondizioni nodoCondizioni(const db::Recordset &nodi)
{
    legamistatements::NodoCondizioni nodo;
    nodo.nodeId = nodi.value(QStringLiteral("GD02_ID")).toLongLong();
    nodo.subjectKind = nodi.value(QStringLiteral("GD02_TIPOCF_CG44")).toInt();
    nodo.subjectCode = nodi.value(QStringLiteral("GD02_CLIFOR_CG44")).toLongLong();
    nodo.start = nodi.value(QStringLiteral("GD02_DATAINIZIOVAL")).toDate();
    nodo.end = nodi.value(QStringLiteral("GD02_DATAFINEVAL")).toDate();
    return nodo;
}

} // namespace

// The remove button reports its failures under the search field's name, as the host's error log
// has always read them.
void FRMGD_DISTINTA::CMD_REMANAGR_Click()
{
    EliminaCliforDaStruttura();
    if (TAB_VISUALIZZAGESTIONE->currentIndex() == 1)
        CaricaAnagraficheDistinta();
    TVW_DISTINTA->setFocus();
}

void FRMGD_DISTINTA::EliminaCliforDaStruttura()
{
    const fw::TreeListNode focused = TVW_DISTINTA->focusedNode();
    if (!focused.isValid() || !m_nodi || (m_nodi->bof() && m_nodi->eof()) || focused.absoluteIndex() < 0)
        return;
    const int rigaFocalizzata = focused.absoluteIndex();

    qint64 idNodo = 0;
    QString codice;
    if (!step(procedureEliminazione, [&] {
            idNodo = m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            codice = MODGD_DISTINTA::NvlStringa(m_nodi->value(QStringLiteral("GD02_CLIFOR_CG44")));
        }))
        return;

    db::RecordsetPtr figli;
    if (ContaFigli(idNodo)) {
        if (domanda(QStringLiteral("L'anagrafica selezionata ha altre anagrafiche figlie che verranno cancellate.\n"
                                   "Si vuole proseguire?")) != fw::Answer::Yes)
            return;
        if (!step(procedureEliminazione, [&] {
                figli = connection()->openRecordset(legamistatements::childrenQuery(companyCode(), idNodo));
            }))
            return;
    }

    // The only hard refusal; it looks at the node itself, whatever the text says of the children.
    if (PremioDefinitivo(idNodo, std::nullopt)) {
        avviso(QStringLiteral("La cancellazione del nodo e dei figli non è permessa perchè usati in un premio definitivo."));
        return;
    }

    if (LegamiContratto(codice)
        && domanda(QStringLiteral("Il nodo risulta legato a un contratto.\n"
                                  "Si vuole proseguire con la cancellazione?")) != fw::Answer::Yes)
        return;

    if (figli) {
        bool figlioLegato = false;
        step(procedureEliminazione, [&] {
            for (figli->moveFirst(); !figli->eof(); figli->moveNext()) {
                if (LegamiContratto(MODGD_DISTINTA::NvlStringa(figli->value(QStringLiteral("GD02_CLIFOR_CG44"))))) {
                    figlioLegato = true;
                    break;
                }
            }
        });
        // Asked whether or not a child has a contract; only a linked child makes No stop.
        const int risposta = domanda(QStringLiteral("Uno o più figli del nodo risultano legati a un contratto.\n"
                                                    "Si vuole proseguire con la cancellazione?"));
        if (figlioLegato && risposta == fw::Answer::No)
            return;
    }

    if (LegamiPremiPromoAtt()
        && domanda(QStringLiteral("Il nodo o i figli risultano legati ad un'attività promozionale o a un premio.\n"
                                  "Si vuole proseguire con la cancellazione?")) != fw::Answer::Yes)
        return;

    if (figli && LegamiPremiPromoAttFigli(figli)
        && domanda(QStringLiteral("Uno o più figli del nodo risultano legati ad un'attività promozionale o a un premio.\n"
                                  "Si vuole proseguire con la cancellazione?")) != fw::Answer::Yes)
        return;

    // The editor holds no lock: what the user was asked about must still be what the database holds.
    if (rigaModificataAltrove(procedureEliminazione))
        return;

    QScopedValueRollback deleting(m_eliminazioneInCorso, true);
    bool eliminato = false;
    if (!step(procedureEliminazione, [&] {
            connection()->execute(legamistatements::deleteNodeStatement(idNodo));
            eliminato = true;
        })
        || !eliminato) {
        CaricaDistinta();   // the tree shows what the database holds, whatever went wrong
        return;
    }

    // The node and its subtree leave the tree as they left the database.
    QList<int> righe;
    for (fw::TreeListNode node = TVW_DISTINTA->nodeAt(rigaFocalizzata); node.isValid()
         && (node.absoluteIndex() == rigaFocalizzata || node.level() > focused.level());
         node = node.next())
        righe << node.row();
    step(procedureEliminazione, [&] { m_nodi->forgetRows(righe); });

    if (TAB_VISUALIZZAGESTIONE->currentIndex() == 1) {
        CaricaAnagraficheDistinta();
        CaricaDistinta();
    } else if (TVW_DISTINTA->count() == 0) {
        CaricaDistinta();   // the last node went: the empty classification's state
    }
    if (TVW_DISTINTA->count() > 0)
        TVW_DISTINTA->setFocusedAbsoluteIndex(qMin(rigaFocalizzata, TVW_DISTINTA->count() - 1));
}

// Under the definitive-bonus check's label, as it has always been reported.
bool FRMGD_DISTINTA::ContaFigli(qint64 idNodo)
{
    bool haFigli = false;
    step(QStringLiteral("PremioDefinitivo"), [&] {
        const db::RecordsetPtr conta = connection()->openRecordset(legamistatements::childCountQuery(companyCode(), idNodo));
        haFigli = !conta->isEmpty() && conta->value(QStringLiteral("NFIGLI")).toLongLong() > 0;
    });
    connection()->clearErrors();
    return haFigli;
}

bool FRMGD_DISTINTA::PremioDefinitivo(qint64 idNodo, const std::optional<QDate> &dataFine)
{
    bool trovato = false;
    step(QStringLiteral("PremioDefinitivo"), [&] {
        const db::RecordsetPtr premi = connection()->openRecordset(
            legamistatements::definitiveBonusQuery(companyCode(), idNodo, dataFine));
        trovato = !premi->isEmpty();
    });
    if (trovato)
        m_ultimoMessaggioControllo = dataFine
            ? QStringLiteral("La data fine è inferiore alla data scadenza di un premio definitivo")
            : QStringLiteral("La data inizio non può essere modificata perchè è presente un premio definitivo");
    return trovato;
}

// A code that is not a number (a node without subject) has no contract to look for.
bool FRMGD_DISTINTA::LegamiContratto(const QString &codice)
{
    if (!numerictext::isNumeric(codice))
        return false;
    bool legato = false;
    step(QStringLiteral("LegamiContratto:"), [&] {
        const db::RecordsetPtr contratti = connection()->openRecordset(
            legamistatements::contractCountQuery(companyCode(), qint64(codice.trimmed().toDouble())));
        legato = !contratti->isEmpty() && contratti->valueAt(0, 0).toLongLong() > 0;
    });
    return legato;
}

bool FRMGD_DISTINTA::LegamiPremiPromoAtt()
{
    bool legato = false;
    step(QStringLiteral("LegamiPremiPromoAtt:"), [&] {
        const QString divisione = m_divisione ? QString::number(*m_divisione) : QString();
        legato = connection()->openRecordset(legamistatements::conditionsQuery(companyCode(), nodoCondizioni(*m_nodi),
                                                                               divisione))
                     ->recordCount() >= 1;
    });
    return legato;
}

bool FRMGD_DISTINTA::LegamiPremiPromoAttFigli(const db::RecordsetPtr &figli)
{
    bool legato = false;
    step(QStringLiteral("LegamiPremiPromoAttFigli:"), [&] {
        const QString divisione = m_divisione ? QString::number(*m_divisione) : QString();
        for (figli->moveFirst(); !figli->eof(); figli->moveNext()) {
            if (connection()->openRecordset(legamistatements::conditionsQuery(companyCode(), nodoCondizioni(*figli),
                                                                              divisione))
                    ->recordCount() >= 1) {
                legato = true;
                return;
            }
        }
    });
    return legato;
}
