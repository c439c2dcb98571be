#pragma once

#include <QDateTime>
#include <QString>

// Statements of the move of a branch under another node of its classification: one question
// for all the nodes with a definitive bonus, and the one UPDATE that re-parents the branch's top
// node (its descendants follow it through their own parent links).
namespace spostamentostatements {

// The nodes of a classification type that a definitive bonus (a settlement deadline in state 2
// or more, not disabled for the node) hangs on, as PremioDefinitivo counts them one by one.
QString definitiveBonusNodesQuery(int company, qint64 typeId);

struct Spostamento
{
    int company = 0;
    qint64 nodeId = 0;
    qint64 oldParentId = 0; // 0: the node was a root
    qint64 newParentId = 0; // 0: the node becomes a root
    QDateTime changedAt;
    QString userGroup;
    QString user;
};

// Sets the new parent (0 for a root, as a new root is written; a new root takes its own
// promotions, 2, as a new root does) and the change stamp; changes no row when the node's
// parent is no longer the one read.
QString moveStatement(const Spostamento &move);

} // namespace spostamentostatements
