#pragma once

#include "forms/distinta/finestraconfronto.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QPushButton;

namespace distinta {

class Albero;
class RicercaAlbero;
class Selettore;

// The classification's history beside the editor: CMD_CONFRONTA "Confronta date" opens the
// differences between two days of the classification shown; a line leads back to its node.
class StoricoDistinta : public QObject
{
    Q_OBJECT

public:
    StoricoDistinta(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca);

    QPushButton *confronta() const { return CMD_CONFRONTA; }
    FinestraConfronto *finestraConfronto() const { return m_confronto; }

    void CMD_CONFRONTA_Click();
    // The buttons follow the classification shown.
    void aggiornaComandi();

private:
    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    RicercaAlbero &m_ricerca;
    QPushButton *CMD_CONFRONTA;
    QPointer<FinestraConfronto> m_confronto;
};

} // namespace distinta
