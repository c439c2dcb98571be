#pragma once

#include "democontext.h"
#include "demoreference.h"
#include "demosubjects.h"
#include "demotrees.h"

#include <optional>
#include <span>

namespace dbsetup {

// Trade conditions and states hung on subjects and nodes of the demo trees.
class ConditionWriter
{
public:
    ConditionWriter(DemoContext &context, const CompanyReference &reference);

    // Contracts (GD10) of the given nodes' subjects with bonuses and promotional activities
    // (GD13) applied to the node, to some of its children and to subjects by code (GD14).
    // The first contract's bonus has settlements up to a definitive one (GD18 state >= 2); one
    // of its children is excluded from that condition (GD27). Other settlements stay open.
    void writeContracts(std::span<const DemoNode> contractNodes, std::span<const DemoNode> allNodes,
                        std::optional<int> divisionId);

    // Campaigns chosen for the nodes whose promotion rule is "Specifica per Cli/For Distinta".
    void writeNodePromotions(std::span<const DemoNode> nodes);

    // Per-division overrides of payment terms, agent and classifications; some columns stay NULL.
    void writeDivisionOverrides(int divisionId, int kind, std::span<const DemoSubject> subjects);

    // WF02 rows for the type and for every node whose state is not 0.
    void writeStates(const QString &typeGuid, int typeState, std::span<const DemoNode> nodes);

    void writeParameters();

private:
    DemoContext &m_context;
    const CompanyReference &m_reference;
    int m_contractNumber = 0;
};

} // namespace dbsetup
