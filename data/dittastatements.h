#pragma once

#include <QString>

// Statements about a working company as a whole.
namespace dittastatements {

// One row with DittaConDati = 1 when the company has a row in the companies, the classification
// types or the subjects, 0 when it has none anywhere. Each part stops at the first row found.
QString companyHasDataQuery(int company);

} // namespace dittastatements
