#pragma once

#include <QDate>
#include <QString>
#include <optional>

// Statements that write and check the nodes of a classification: the checks of a proposed link
// (its parent, the other links of the same subject), the INSERT of a new node and the lookup
// of a price-list priority typed into a node. Company, identifiers and codes are written bare;
// text from the host is quoted with its quotes doubled.
namespace nodistatements {

// VerificaNodo: the prospective parent row (0 when there is none).
QString parentQuery(int company, qint64 parentId);

// What VerificaNodo checks a link against.
struct Collegamento
{
    int company = 0;
    qint64 subjectCode = 0;
    int subjectKind = 0;
    std::optional<qint64> division;       // the types of this division and those without one
    std::optional<qint64> excludedNodeId; // when editing: the node's own row does not count
    QDate start;
    QDate end;
    bool withNodeId = false; // an import: the other link's own GD02_ID too, as IdNodo
};

// VerificaNodo: the other links of the same subject whose period overlaps (both ends closed),
// with the parent subject and the types involved, lowest type first.
QString overlapQuery(const Collegamento &link);

// A new node as InserisciNodo writes it.
struct NuovoNodo
{
    qint64 typeId = 0;
    qint64 parentId = 0; // 0 for a root
    int company = 0;
    int subjectKind = 0;
    qint64 subjectCode = 0;
    int linkState = 0;
    QDate start;
    QDate end;
    QDate today;
    QString userGroup;
    QString user;
    int billingRule = 0;
    bool root = false; // roots get their own promotions (2), children inherit (0)
    // What an import brings besides, written after the editor's columns; codes 0 and an empty
    // description are written as NULL. promotions replaces the rule above.
    std::optional<qint64> billingCode;
    std::optional<QString> description;
    std::optional<qint64> structurePriority;
    std::optional<qint64> localPriority;
    std::optional<int> promotions;
};

QString insertStatement(const NuovoNodo &node);

// The description of a price-list priority typed into a node's priority cell; the identifier
// is compared as quoted text. Empty result: no such priority.
QString priorityLookupQuery(const QString &priorityId);

// The workflow identity of one node, and of every node of a classification type, for the
// state control.
QString nodeGuidQuery(int company, qint64 nodeId);
QString typeGuidsQuery(int company, qint64 typeId);

} // namespace nodistatements
