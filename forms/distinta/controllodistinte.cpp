#include "forms/distinta/controllodistinte.h"

#include "forms/distinta/albero.h"
#include "forms/distinta/ricercaalbero.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/waitcursor.h"

#include <QPushButton>

namespace distinta {

ControlloDistinte::ControlloDistinte(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , m_ricerca(ricerca)
    , CMD_VERIFICA(new QPushButton(QStringLiteral("&Verifica distinte")))
{
    CMD_VERIFICA->setObjectName(QStringLiteral("CMD_VERIFICA"));
    CMD_VERIFICA->setToolTip(
        QStringLiteral("Cerca i problemi delle distinte della ditta: soggetti mancanti, legami sovrapposti, "
                       "periodi fuori dal padre, righe senza nodo (Alt+V)"));
    connect(CMD_VERIFICA, &QPushButton::clicked, this, &ControlloDistinte::CMD_VERIFICA_Click);
}

void ControlloDistinte::CMD_VERIFICA_Click()
{
    if (!m_form.connection())
        return;
    QList<Anomalia> anomalie;
    {
        fw::WaitCursor wait(&m_form);
        if (!m_form.step(QStringLiteral("CMD_VERIFICA_Click"), [&] {
                anomalie = VerificaDistinte::verifica(m_form.connection(), m_form.companyCode(), QDate::currentDate());
            }))
            return;
    }
    if (m_finestra)
        m_finestra->close();
    m_finestra = new FinestraVerifica(m_form, QStringLiteral("ditta %1").arg(m_form.companyCode()));
    connect(m_finestra, &FinestraVerifica::nodoRichiesto, this, &ControlloDistinte::mostraNodo);
    m_finestra->mostra(anomalie);
    m_finestra->show();
}

void ControlloDistinte::mostraNodo(const Anomalia &anomalia)
{
    if (anomalia.idNodo == 0 || anomalia.codiceTipo.isEmpty())
        return;
    QString chiave;
    if (!m_form.step(QStringLiteral("GRD_VERIFICA_DblClick"),
                     [&] { chiave = m_selettore.chiaveDelCodice(anomalia.codiceTipo); }))
        return;
    if (chiave.isEmpty())
        return;
    if (chiave != m_selettore.chiaveSelezionata())
        emit distintaRichiesta(chiave);
    focalizza(anomalia);
    m_form.activateWindow();
}

// By the node's own id: a subject may have more than one node in a classification. A node the
// tree does not show (of another day) is looked for by its subject, as the other windows do.
void ControlloDistinte::focalizza(const Anomalia &anomalia)
{
    const int riga = m_albero.rigaDelNodo(anomalia.idNodo);
    const fw::TreeListNode node = riga >= 0 ? m_albero.widget()->nodeOfRow(riga) : fw::TreeListNode();
    if (!node.isValid()) {
        const QString codice = anomalia.soggetto.section(QLatin1Char(' '), 0, 0);
        if (!codice.isEmpty())
            m_ricerca.cercaCodice(QStringLiteral("GRD_VERIFICA_DblClick"), codice);
        return;
    }
    for (fw::TreeListNode padre = node.parent(); padre.isValid(); padre = padre.parent())
        padre.expand();
    m_albero.widget()->setFocusedNode(node);
    m_albero.widget()->setFocus();
}

} // namespace distinta
