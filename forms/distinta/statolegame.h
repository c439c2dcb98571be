#pragma once

#include <QObject>

class FormFrame;

namespace fw {
class WorkflowStateControl;
}

namespace distinta {

class Albero;

// The link state of the focused node, TXT_GD02_STATO: shown for every node focused, stored only
// when the user chooses another state.
class StatoLegame : public QObject
{
    Q_OBJECT

public:
    StatoLegame(FormFrame &form, Albero &albero);

    fw::WorkflowStateControl *controllo() const { return TXT_GD02_STATO; }

    // The host's workflow service, and the state of the node focused before it was there.
    void prepara();
    // The state of a node, or none (idNodo 0).
    void mostraNodo(qint64 idNodo);
    QString guidNodo(qint64 idNodo);

private:
    void TXT_GD02_STATO_AfterItem(bool cambiatoDallUtente);

    FormFrame &m_form;
    Albero &m_albero;
    fw::WorkflowStateControl *TXT_GD02_STATO;
};

} // namespace distinta
