#pragma once

#include "democontext.h"

#include <QString>

#include <map>
#include <vector>

namespace dbsetup {

struct DivisionSpec
{
    const char *code;
    const char *description;
};

struct PrioritySpec
{
    const char *code;
    const char *description;
    int kind;                   // LP09_INDTIPOTABPRIORITA: 0 structural, 1 localised
    std::vector<int> providers; // LP01_ID in priority order; empty: a header without details
};

struct CampaignSpec
{
    const char *code;
    const char *description;
    QDate start;
    QDate end;
    bool active;
};

struct CompanyProfile
{
    int company = 1;
    int agents = 0;
    std::vector<DivisionSpec> divisions;
    std::vector<PrioritySpec> priorities;
    std::vector<CampaignSpec> campaigns;
};

// What the later writers of a company refer to.
struct CompanyReference
{
    int company = 0;
    std::vector<int> agentIds;          // MG17_IDAGENTE
    std::vector<int> divisionIds;       // CO1A_IDDIV, in the profile's order
    std::map<QString, int> priorityIds; // LP09_CODICE -> LP09_ID
    std::vector<int> campaignIds;       // MG94_ID
    std::vector<QDate> campaignStarts;
};

// Companies, workflow states, payment terms, banks and condition providers (the embedded
// demo_reference.sql), then a few branches per bank.
void writeSharedReference(DemoContext &context);

// Agents with their own master data, divisions, market classifications for customers and
// suppliers, price-list priorities with their details, promotional campaigns.
CompanyReference writeCompanyReference(DemoContext &context, const CompanyProfile &profile);

} // namespace dbsetup
