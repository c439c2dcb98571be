#pragma once

#include <QString>

// Statements of the tree editor's loading side: the selector of classification types, the node
// query the tree is bound to, the header line and the texts drawn in the tree's cells.
// Company, subject kind (0 customers, 1 suppliers), identifiers and codes are written bare.
namespace distintastatements {

// The classification types of one subject kind, for the selector tree, ordered by code.
QString typesQuery(int company, int subjectKind);

// The nodes of one classification type (CaricaDistinta). The type identifier is compared as
// quoted text; rows without a subject code are left out; no ORDER BY, rows come in server order.
QString nodesQuery(int company, int subjectKind, qint64 typeId);

// Division and workflow identity of a type, with the division's description
// (CaricaIntestazioneDistinta); a type without division yields no row.
QString headerQuery(qint64 typeId);

// The business name of a subject (AssegnaRagioneSociale), drawn as the billing name.
QString businessNameQuery(int company, int subjectKind, qint64 subjectCode);

// The description of a price-list priority header, drawn in the two priority columns.
QString priorityDescriptionQuery(qint64 priorityId);

// An empty node set with the record frame's columns.
QString emptyNodeFrameQuery();

} // namespace distintastatements
