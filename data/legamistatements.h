#pragma once

#include <QDate>
#include <QString>
#include <optional>

// Statements of a node's links to the trade objects of the suite, asked before a node is
// removed or its dates change: its children, its contracts, its definitive bonuses and the
// conditions (bonuses and promotional activities) that reach it. Also the removal itself.
// Company, node identifiers and subject codes are written bare.
namespace legamistatements {

// ContaFigli: the number of direct children of a node, as NFIGLI.
QString childCountQuery(int company, qint64 nodeId);

// The direct children of a node, every column; grandchildren are not read.
QString childrenQuery(int company, qint64 nodeId);

// LegamiContratto: the contracts of a subject code, matched on company and code only.
QString contractCountQuery(int company, qint64 subjectCode);

// The end of every settled-bonus query: a settled due date, for a subject whose contract
// condition is not disabled for it.
QString settledNotDisabledCondition();

// PremioDefinitivo: a settled-for-good bonus deadline (state 2 or more) of a condition that
// applies to the node and from which the node is not excluded. With dueAfter, only deadlines
// after that date count (the end of a period may not move before them).
QString definitiveBonusQuery(int company, qint64 nodeId, const std::optional<QDate> &dueAfter);

// A node as LegamiPremiPromoAtt sees it: its id, subject and validity period.
struct NodoCondizioni
{
    qint64 nodeId = 0;
    int subjectKind = 0;
    qint64 subjectCode = 0;
    QDate start;
    QDate end;
};

// LegamiPremiPromoAtt: the conditions that reach a node, by its id or (id 0) by its subject
// with a condition period overlapping the node's; division empty for every division.
QString conditionsQuery(int company, const NodoCondizioni &node, const QString &division);

// EliminaCliforDaStruttura: the node's own row; the database removes the rows below it.
QString deleteNodeStatement(qint64 nodeId);

} // namespace legamistatements
