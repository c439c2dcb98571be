#pragma once

#include <QString>

// Statements of the pages under the tree: the master-data sheet of the focused subject and the
// in-invoice campaigns of the focused node. The off-invoice conditions reuse the conditions
// statement of the removal checks (legamistatements::conditionsQuery). Company, identifiers
// and subject codes are written bare.
namespace dettaglistatements {

// Which groups of rows the master-data sheet shows (the parameters' display switches).
struct GruppiAnagrafica
{
    bool condVendita = false;     // payment terms, currency, VAT rate, bank
    bool provvigioni = false;     // agent and price list
    bool classificazioni = false; // market classifications and groupings
};

// CaricaCondizioniCliente: one row of display columns for a subject. division empty: the
// subject's general values; otherwise the division's own values where it has them, with
// divisionVisibility (the host's condition on CO1C_IDDIV_CO1A, may be empty) in the join.
QString masterDataQuery(int company, int subjectKind, qint64 subjectCode, const GruppiAnagrafica &groups,
                        const QString &division, const QString &divisionVisibility);

// The temporary table of the campaign list, on the form's connection.
QString campaignTable(); // "#GD12_TEMP"

// CaricaCondizioniInFattura: the node's two price-list priorities.
QString nodePrioritiesQuery(qint64 typeId, qint64 nodeId);
// Every campaign of the company with SELEZ 1 where the node has it; an inheriting node (rule
// 0 or 1) gets the table's columns and no row.
QString buildCampaignListStatement(int company, qint64 nodeId, int rule);
QString readCampaignListStatement();

// InsertCondizioniInFattura / EliminaCondizioniInFattura / SalvaCondizioniInFattura.
QString insertCampaignLinkStatement(int company, qint64 nodeId, qint64 campaignId);
QString deleteCampaignLinkStatement(qint64 linkId);
QString deleteNodeCampaignLinksStatement(int company, qint64 nodeId);

// FRMGD_PARAMETRI: the company's parameters row, every column.
QString parametersRowQuery(int company);
// The states of the classification lists' workflow, for the link state of new nodes, and the
// description of one of them.
QString linkStateLookupQuery();
QString linkStateDecodeQuery(qint64 stateId);

} // namespace dettaglistatements
