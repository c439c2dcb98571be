#pragma once

#include "platform/db/recordset.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <vector>

// The shape of a classification as its rows give it, in memory: each node's id, parent and
// subject. Built in one pass over the node rows, for the checks that must see every node of the
// type whatever the tree shows (a list as of a date hides some) and must not ask the database
// once per node.
class StrutturaNodi
{
public:
    // The rows of nodi in their order; a parent that is not among them makes its child a root.
    explicit StrutturaNodi(const db::Recordset &nodi);

    int size() const { return int(m_ids.size()); }
    int indice(qint64 id) const { return m_indici.value(id, -1); } // -1 when not loaded
    qint64 id(int i) const { return m_ids[size_t(i)]; }
    int padre(int i) const { return m_padri[size_t(i)]; } // -1 for a root
    qint64 codice(int i) const { return m_codici[size_t(i)]; }
    QDate inizio(int i) const { return m_inizi[size_t(i)]; }
    QDate fine(int i) const { return m_fini[size_t(i)]; }

    // The node and all its descendants, the node first.
    QList<int> ramo(int i) const;
    // Parent, grandparent and so on up to the root; a loop in the links ends the walk.
    QList<int> antenati(int i) const;

    // Valid on that day: start <= day <= end, closed at both ends.
    bool validoIl(int i, const QDate &giorno) const;

private:
    std::vector<qint64> m_ids;
    std::vector<int> m_padri;
    std::vector<qint64> m_codici;
    std::vector<QDate> m_inizi;
    std::vector<QDate> m_fini;
    QHash<qint64, int> m_indici;
    mutable std::vector<int> m_primoFiglio; // children lists, built at the first ramo()
    mutable std::vector<int> m_fratello;
};
