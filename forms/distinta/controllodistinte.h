#pragma once

#include "forms/distinta/finestraverifica.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QPushButton;

namespace distinta {

class Selettore;

// CMD_VERIFICA "Verifica distinte": the health check of every classification of the company, in
// FRMGD_VERIFICA; a line with a node leads to it, in its classification.
class ControlloDistinte : public QObject
{
    Q_OBJECT

public:
    // The error handler's name for the jump from a line to its node.
    static const QString procedureSalto;

    ControlloDistinte(FormFrame &form, Selettore &selettore);

    QPushButton *pulsante() const { return CMD_VERIFICA; }
    FinestraVerifica *finestra() const { return m_finestra; }

    void CMD_VERIFICA_Click();
    // The node of the line, its classification shown first when another one is.
    void mostraNodo(const Anomalia &anomalia);

signals:
    // The node of that selector key's classification is to be shown; codice finds it by subject
    // when the tree does not show the node itself.
    void nodoRichiesto(const QString &chiaveTipo, qint64 idNodo, qint64 codice);

private:
    FormFrame &m_form;
    Selettore &m_selettore;
    QPushButton *CMD_VERIFICA;
    QPointer<FinestraVerifica> m_finestra;
};

} // namespace distinta
