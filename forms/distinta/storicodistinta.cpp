#include "forms/distinta/storicodistinta.h"

#include "data/storicostatements.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/annullamento.h"
#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/ricercaalbero.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"

#include <QPushButton>

namespace distinta {

StoricoDistinta::StoricoDistinta(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca,
                                 Annullamento &annullamento)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , m_ricerca(ricerca)
    , m_annullamento(annullamento)
    , CMD_STORICO(new QPushButton(QStringLiteral("Sto&rico")))
    , CMD_CONFRONTA(new QPushButton(QStringLiteral("Con&fronta date")))
{
    CMD_STORICO->setObjectName(QStringLiteral("CMD_STORICO"));
    CMD_STORICO->setToolTip(QStringLiteral("Elenca le modifiche della distinta, chi le ha fatte e quando (Alt+R)"));
    CMD_STORICO->setEnabled(false);
    connect(CMD_STORICO, &QPushButton::clicked, this, &StoricoDistinta::CMD_STORICO_Click);
    CMD_CONFRONTA->setObjectName(QStringLiteral("CMD_CONFRONTA"));
    CMD_CONFRONTA->setToolTip(QStringLiteral("Elenca che cosa è cambiato nella distinta tra due date (Alt+F)"));
    CMD_CONFRONTA->setEnabled(false);
    connect(CMD_CONFRONTA, &QPushButton::clicked, this, &StoricoDistinta::CMD_CONFRONTA_Click);
}

void StoricoDistinta::aggiornaComandi()
{
    CMD_CONFRONTA->setEnabled(m_albero.idTipo() > 0);
    CMD_STORICO->setEnabled(m_albero.idTipo() > 0 && m_form.connection()
                            && m_form.connection()->hasTable(QString::fromLatin1(storicostatements::OperationsTable)));
}

void StoricoDistinta::CMD_STORICO_Click()
{
    if (m_albero.idTipo() <= 0)
        return;
    if (m_storico)
        m_storico->close();
    m_storico = new FinestraStorico(m_form, m_albero.idTipo(), m_selettore.testoSelezionato());
    connect(m_storico, &FinestraStorico::nodoRichiesto, this, [this](qint64 codice) {
        m_ricerca.cercaCodice(QStringLiteral("GRD_STORICO_DblClick"), QString::number(codice));
        m_form.activateWindow();
    });
    connect(m_storico, &FinestraStorico::annullamentoRichiesto, this, [this](qint64 idOperazione) {
        m_annullamento.inverti(idOperazione);
        m_annullamento.aggiornaComandi();
    });
    m_storico->show();
    m_storico->CMD_CERCASTORICO_Click();
}

void StoricoDistinta::CMD_CONFRONTA_Click()
{
    if (m_albero.idTipo() <= 0)
        return;
    if (m_confronto)
        m_confronto->close();
    m_confronto = new FinestraConfronto(m_form, m_albero.idTipo(), m_albero.tipoSoggetto(),
                                        m_selettore.testoSelezionato());
    connect(m_confronto, &FinestraConfronto::nodoRichiesto, this, [this](qint64 codice) {
        m_ricerca.cercaCodice(QStringLiteral("GRD_CONFRONTO_DblClick"), QString::number(codice));
        m_form.activateWindow();
    });
    m_confronto->show();
}

} // namespace distinta
