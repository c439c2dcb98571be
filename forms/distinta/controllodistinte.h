#pragma once

#include "forms/distinta/finestraverifica.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QPushButton;

namespace distinta {

class Albero;
class RicercaAlbero;
class Selettore;

// CMD_VERIFICA "Verifica distinte": the health check of every classification of the company, in
// FRMGD_VERIFICA; a line with a node leads to it, in its classification.
class ControlloDistinte : public QObject
{
    Q_OBJECT

public:
    ControlloDistinte(FormFrame &form, Albero &albero, Selettore &selettore, RicercaAlbero &ricerca);

    QPushButton *pulsante() const { return CMD_VERIFICA; }
    FinestraVerifica *finestra() const { return m_finestra; }

    void CMD_VERIFICA_Click();
    // The node of the line, its classification shown first when another one is.
    void mostraNodo(const Anomalia &anomalia);

signals:
    // The classification of that selector key is to be shown, as a click on it shows it.
    void distintaRichiesta(const QString &chiave);

private:
    void focalizza(const Anomalia &anomalia);

    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    RicercaAlbero &m_ricerca;
    QPushButton *CMD_VERIFICA;
    QPointer<FinestraVerifica> m_finestra;
};

} // namespace distinta
