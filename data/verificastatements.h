#pragma once

#include <QDate>
#include <QString>
#include <optional>

// Statements of the health check of a company's classifications: what is missing, what overlaps,
// what points at rows that are gone. Each reads one kind of finding; with a type, only the
// findings about that type's nodes (and the subjects missing from its division).
namespace verificastatements {

// Subjects of the kinds that have types, valid on no node of a type of a division on the day:
// a division-less type counts for every division, and the division-less types are a group of
// their own. CG44_TIPOCF, CG44_CLIFOR, CG16_RAGSOANAG, IdDivisione, CO1A_CODICE, CO1A_DESCR.
QString missingSubjectsQuery(int company, const QDate &day, std::optional<qint64> typeId);

// Two links of one subject in types of one division (or one of them division-less) whose periods
// meet, once per pair (with a type: every pair with a node of it, that node first); an empty end
// is open. GD02_ID, GD02_ID_GD01, GD01_CODICE, GD01_DESCR, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44,
// CG16_RAGSOANAG, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, IdAltro, CodiceAltro, InizioAltro, FineAltro.
QString overlappingLinksQuery(int company, std::optional<qint64> typeId);

// Children that begin before their parent or end after it. GD02_ID, GD02_ID_GD01, GD01_CODICE,
// GD01_DESCR, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, CG16_RAGSOANAG, GD02_DATAINIZIOVAL,
// GD02_DATAFINEVAL, IdPadre, CodicePadre, InizioPadre, FinePadre.
QString childrenOutsideParentQuery(int company, std::optional<qint64> typeId);

// Nodes whose subject, type or parent is gone (0 or NULL as parent is a root). GD02_ID,
// GD02_ID_GD01, GD01_CODICE, GD01_DESCR, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, CG16_RAGSOANAG,
// GD02_IDPARENT_GD02, SenzaSoggetto, SenzaTipo, SenzaPadre (1 or 0).
QString orphanNodesQuery(int company, std::optional<qint64> typeId);

// In-invoice campaigns of nodes that are gone. GD12_ID, GD12_ID_GD02, GD12_ID_MG94, MG94_CODCAMP,
// MG94_DESCAMP.
QString orphanPromotionsQuery(int company);

// Contract conditions of nodes that are gone (0 is a condition on a subject, not on a node).
// GD14_ID, GD14_ID_GD02, GD14_CODCONTR_GD10, GD14_VERCONTR_GD10, GD14_PROGRCOND_GD13,
// GD14_TIPOCF_CG44, GD14_CLIFOR_CG44, CG16_RAGSOANAG.
QString orphanContractConditionsQuery(int company);

// Workflow states of rows of the module that are gone: the host's states carry no company, so
// these are every company's. A state written without its table is ours unless it is a type's.
// WF02_ID, WF02_GUID, WF01_DESCR.
QString orphanStatesQuery();

} // namespace verificastatements
