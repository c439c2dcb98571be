#pragma once

#include "demoreference.h"
#include "sqlitefile.h"

namespace dbsetup {

// The demo companies: 1 "Emiliana Alimenti S.p.A." (a food distributor with ~300 customers,
// ~150 suppliers, agents, two divisions, classification trees 3 to 4 levels deep, priorities,
// campaigns, contracts and bonuses) and 2 "Bottega del Gusto S.r.l." (a dozen subjects, one small
// tree), so that company filters show. Fixed seed: the same rows every time.
void writeDemoCompanies(SqliteFile &file);

// Agents, divisions, priorities and campaigns of company 1, reused by the large-data generator.
CompanyProfile demoMainCompanyProfile();

} // namespace dbsetup
