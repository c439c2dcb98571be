#pragma once

#include "democontext.h"
#include "demoreference.h"

#include <vector>

namespace dbsetup {

struct DemoSubject
{
    int code = 0;         // CG44_CLIFOR
    char macroArea = 'N'; // N, C or S: where the subject is
};

struct SubjectBatch
{
    int kind = 0;      // 0 customers, 1 suppliers
    int firstCode = 1; // codes firstCode, firstCode + 1, ...
    int count = 0;
    int salesDataPercent = 95; // share of subjects with an MG19_CLIFORVA row
};

// Writes customers or suppliers of a company: general master data (a believable Italian
// business name, address, phone and fax), the CG44 row (payment terms, agent, bank) and the
// sales data with market classifications. Prepared statements, reused row after row.
class SubjectWriter
{
public:
    SubjectWriter(DemoContext &context, const CompanyReference &reference);

    std::vector<DemoSubject> write(const SubjectBatch &batch);

private:
    QString businessName(int kind);

    DemoContext &m_context;
    const CompanyReference &m_reference;
    SqliteStatement m_anagrafica;
    SqliteStatement m_subject;
    SqliteStatement m_salesData;
};

} // namespace dbsetup
