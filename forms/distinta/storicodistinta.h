#pragma once

#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/finestrastorico.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QPushButton;

namespace distinta {

class Albero;
class Annullamento;
class RicercaAlbero;
class Selettore;

// The classification's history beside the editor: CMD_STORICO "Storico" opens its changes
// (FRMGD_STORICO), from which an operation can be undone; CMD_CONFRONTA "Confronta date" opens
// its differences between two days. A line of either leads back to its node.
class StoricoDistinta : public QObject
{
    Q_OBJECT

public:
    StoricoDistinta(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca,
                    Annullamento &annullamento);

    QPushButton *storico() const { return CMD_STORICO; }
    QPushButton *confronta() const { return CMD_CONFRONTA; }
    FinestraStorico *finestraStorico() const { return m_storico; }
    FinestraConfronto *finestraConfronto() const { return m_confronto; }

    void CMD_STORICO_Click();
    void CMD_CONFRONTA_Click();
    // The buttons follow the classification shown.
    void aggiornaComandi();

private:
    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    RicercaAlbero &m_ricerca;
    Annullamento &m_annullamento;
    QPushButton *CMD_STORICO;
    QPushButton *CMD_CONFRONTA;
    QPointer<FinestraStorico> m_storico;
    QPointer<FinestraConfronto> m_confronto;
};

} // namespace distinta
