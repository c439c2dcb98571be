#pragma once

#include <QHash>
#include <QString>
#include <optional>

class FormFrame;

namespace fw {
class TreeListNode;
}

namespace distinta {

class Albero;
class StatoLegame;

// A node as the tree's context menu was opened on it: what its commands act on.
struct NodoCliccato
{
    qint64 idNodo = 0;
    int livello = 0;
    int indice = -1; // absolute position in the tree
    short tipoAnagFatt = 0;
    double codiceFatt = 0;
    std::optional<qint64> soggetto; // none for a node without subject
};

// What the context menu pushes down a branch: the billing rule and code of the node the menu
// was opened on, or its link state, copied to every node below it in display order. Each node is
// saved on its own, through the rows the tree is bound to; a node another clerk changed since it
// was read is left as that clerk saved it, and named at the end.
class Propagazione
{
public:
    Propagazione(FormFrame &form, Albero &albero, StatoLegame &stato);

    void PropagaFigli(const NodoCliccato &cliccato);
    void RilasciaFigli(const NodoCliccato &cliccato);

private:
    // The node the menu was opened on, while the tree still shows it there.
    fw::TreeListNode nodo(const NodoCliccato &cliccato) const;
    QHash<qint64, QString> guidNodiDistinta();

    FormFrame &m_form;
    Albero &m_albero;
    StatoLegame &m_stato;
};

} // namespace distinta
