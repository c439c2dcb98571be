#include "forms/distinta/eliminazione.h"

#include "data/legamistatements.h"
#include "data/modgd_distinta.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/paginaanagrafiche.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/messagestyle.h"
#include "framework/treelist/treelist.h"

#include <QPushButton>

namespace distinta {

namespace {

const QString procedureEliminazione = QStringLiteral("EliminaCliforDaStruttura");

} // namespace

Eliminazione::Eliminazione(FormFrame &form, Albero &albero, ControlliLegami &legami, PaginaAnagrafiche &anagrafiche)
    : m_form(form)
    , m_albero(albero)
    , m_legami(legami)
    , m_anagrafiche(anagrafiche)
{
    connect(anagrafiche.rimuovi(), &QPushButton::clicked, this, &Eliminazione::CMD_REMANAGR_Click);
}

void Eliminazione::CMD_REMANAGR_Click()
{
    EliminaCliforDaStruttura();
    if (m_anagrafiche.mostrata())
        m_anagrafiche.CaricaAnagraficheDistinta();
    m_albero.widget()->setFocus();
}

void Eliminazione::EliminaCliforDaStruttura()
{
    fw::TreeList *albero = m_albero.widget();
    db::RecordsetPtr nodi = m_albero.nodi();
    const fw::TreeListNode focused = albero->focusedNode();
    if (!focused.isValid() || !nodi || (nodi->bof() && nodi->eof()) || focused.absoluteIndex() < 0)
        return;
    const int rigaFocalizzata = focused.absoluteIndex();

    qint64 idNodo = 0;
    QString codice;
    if (!m_form.step(procedureEliminazione, [&] {
            idNodo = nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            codice = MODGD_DISTINTA::NvlStringa(nodi->value(QStringLiteral("GD02_CLIFOR_CG44")));
        }))
        return;

    db::RecordsetPtr figli;
    if (m_legami.ContaFigli(idNodo)) {
        if (m_form.domanda(
                QStringLiteral("L'anagrafica selezionata ha altre anagrafiche figlie che verranno cancellate.\n"
                               "Si vuole proseguire?"))
            != fw::Answer::Yes)
            return;
        if (!m_form.step(procedureEliminazione, [&] {
                figli = m_form.connection()->openRecordset(
                    legamistatements::childrenQuery(m_form.companyCode(), idNodo));
            }))
            return;
    }

    // The only hard refusal; it looks at the node itself, whatever the text says of the children.
    if (m_legami.PremioDefinitivo(idNodo, std::nullopt)) {
        m_form.avviso(QStringLiteral(
            "La cancellazione del nodo e dei figli non è permessa perchè usati in un premio definitivo."));
        return;
    }

    if (m_legami.LegamiContratto(codice)
        && m_form.domanda(QStringLiteral("Il nodo risulta legato a un contratto.\n"
                                         "Si vuole proseguire con la cancellazione?"))
            != fw::Answer::Yes)
        return;

    if (figli) {
        bool figlioLegato = false;
        m_form.step(procedureEliminazione, [&] {
            for (figli->moveFirst(); !figli->eof(); figli->moveNext()) {
                if (m_legami.LegamiContratto(
                        MODGD_DISTINTA::NvlStringa(figli->value(QStringLiteral("GD02_CLIFOR_CG44"))))) {
                    figlioLegato = true;
                    break;
                }
            }
        });
        // Asked whether or not a child has a contract; only a linked child makes No stop.
        const int risposta = m_form.domanda(QStringLiteral("Uno o più figli del nodo risultano legati a un contratto.\n"
                                                           "Si vuole proseguire con la cancellazione?"));
        if (figlioLegato && risposta == fw::Answer::No)
            return;
    }

    if (m_legami.LegamiPremiPromoAtt()
        && m_form.domanda(
               QStringLiteral("Il nodo o i figli risultano legati ad un'attività promozionale o a un premio.\n"
                              "Si vuole proseguire con la cancellazione?"))
            != fw::Answer::Yes)
        return;

    if (figli && m_legami.LegamiPremiPromoAttFigli(figli)
        && m_form.domanda(
               QStringLiteral("Uno o più figli del nodo risultano legati ad un'attività promozionale o a un premio.\n"
                              "Si vuole proseguire con la cancellazione?"))
            != fw::Answer::Yes)
        return;

    // The editor holds no lock: what the user was asked about must still be what the database holds.
    if (m_albero.rigaModificataAltrove(procedureEliminazione))
        return;

    const Albero::Lavoro eliminazione(m_albero);
    bool eliminato = false;
    {
        OperazioneStorico operazione(m_form, procedureEliminazione, QStringLiteral("Eliminazione"), m_albero.idTipo());
        if (operazione.inizia())
            m_form.step(procedureEliminazione, [&] {
                m_form.connection()->execute(legamistatements::deleteNodeStatement(idNodo));
                eliminato = true;
            });
        eliminato = operazione.fine() && eliminato;
    }
    if (!eliminato) {
        m_albero.CaricaDistinta(); // the tree shows what the database holds, whatever went wrong
        return;
    }

    // The node and its subtree leave the tree as they left the database.
    QList<int> righe;
    for (fw::TreeListNode node = albero->nodeAt(rigaFocalizzata);
         node.isValid() && (node.absoluteIndex() == rigaFocalizzata || node.level() > focused.level());
         node = node.next())
        righe << node.row();
    m_form.step(procedureEliminazione, [&] { nodi->forgetRows(righe); });
    nodi.reset(); // a reload below lets go of the rows read before

    if (m_anagrafiche.mostrata()) {
        m_anagrafiche.CaricaAnagraficheDistinta();
        m_albero.CaricaDistinta();
    } else if (albero->count() == 0) {
        m_albero.CaricaDistinta(); // the last node went: the empty classification's state
    }
    if (albero->count() > 0)
        albero->setFocusedAbsoluteIndex(qMin(rigaFocalizzata, albero->count() - 1));
}

} // namespace distinta
