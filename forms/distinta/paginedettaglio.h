#pragma once

#include "forms/distinta/paginacondizioni.h"
#include "forms/distinta/paginadatianagrafici.h"
#include "forms/distinta/paginapromozioni.h"
#include "forms/distinta/paginastorico.h"

#include <QObject>

class FormFrame;
class QTabWidget;

namespace fw {
class TreeListNode;
}

namespace distinta {

class Albero;
class ControlliLegami;
class ParametriModulo;
class Priorita;
class Selettore;

// The pages under the tree, TAB_DETTAGLIOSOGGETTO, follow the focused node. Only the page that
// shows is filled: at once for a focus change, and once for many that come before the event
// loop turns again, so that the tree moves at the keys' pace and the page catches up with the
// node the focus stopped on, never with a node the focus has already left. What protects the
// node's own cells (its start date when a definitive bonus is settled) is applied at once.
class PagineDettaglio : public QObject
{
    Q_OBJECT

public:
    PagineDettaglio(FormFrame &form, Albero &albero, Selettore &selettore, ControlliLegami &legami,
                    const ParametriModulo &parametri, Priorita &priorita);

    QTabWidget *widget() const { return TAB_DETTAGLIOSOGGETTO; }
    PaginaDatiAnagrafici &datiAnagrafici() { return m_datiAnagrafici; }
    PaginaPromozioni &promozioni() { return m_promozioni; }
    PaginaCondizioni &condizioni() { return m_condizioni; }
    PaginaStorico &storico() { return m_storico; }

    // Page tabs, then every page's controls in order.
    QList<QWidget *> ordineTab() const;
    // The starting page, and the rules of the promotions page.
    void preparaPagine();
    // The focus-change handler's share: the sheet loses a subject that is no longer focused, the
    // page showing is filled, the promotion rule follows the node, and the node's start date is
    // locked while a definitive bonus is settled.
    void nodoFocalizzato(const fw::TreeListNode &current);
    // Once a propagation or a removal is over, the pages catch up with the node it left focused.
    void dopoIlLavoro();
    void TAB_DETTAGLIOSOGGETTO_Click();
    // New parameters change the groups of the master-data sheet.
    void parametriCambiati();

signals:
    // Another node (or none) is focused: an open parameters form shows its rule.
    void nodoMostrato();

private:
    void caricaPaginaPiuTardi();
    void caricaPaginaDettaglio();
    void bloccaDateNodo(const fw::TreeListNode &current);

    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    ControlliLegami &m_legami;
    QTabWidget *TAB_DETTAGLIOSOGGETTO;
    PaginaDatiAnagrafici m_datiAnagrafici;
    PaginaPromozioni m_promozioni;
    PaginaCondizioni m_condizioni;
    PaginaStorico m_storico;
    bool m_paginaInAttesa = false;        // a page load waits for the focus to settle
    bool m_paginaCaricataNelGiro = false; // a page was filled in this turn of the loop
};

} // namespace distinta
