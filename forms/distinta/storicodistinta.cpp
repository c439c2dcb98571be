#include "forms/distinta/storicodistinta.h"

#include "forms/distinta/albero.h"
#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/ricercaalbero.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"

#include <QPushButton>

namespace distinta {

StoricoDistinta::StoricoDistinta(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , m_ricerca(ricerca)
    , CMD_CONFRONTA(new QPushButton(QStringLiteral("Con&fronta date")))
{
    CMD_CONFRONTA->setObjectName(QStringLiteral("CMD_CONFRONTA"));
    CMD_CONFRONTA->setToolTip(QStringLiteral("Elenca che cosa è cambiato nella distinta tra due date (Alt+F)"));
    CMD_CONFRONTA->setEnabled(false);
    connect(CMD_CONFRONTA, &QPushButton::clicked, this, &StoricoDistinta::CMD_CONFRONTA_Click);
}

void StoricoDistinta::aggiornaComandi()
{
    CMD_CONFRONTA->setEnabled(m_albero.idTipo() > 0);
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
