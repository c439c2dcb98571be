#pragma once

#include <QString>

// Statements of the price-list priorities as the tree editor and the picker read them: the
// structural priorities with the conditions they rank (FRMGD_LISTINI) and the two lookups
// between a priority's code and its identifier (Get_MG3G_ID_LP09, Get_LP09_CODICE).
namespace prioritastatements {

// One row per condition of every structural priority of the company (CaricaListini); columns
// Condizione, Priorità, IDCondizione, IDPriorità, CodicePriorità. No ORDER BY: the grid groups.
QString listiniQuery(int company);

// The identifier of a priority code of the company; the code's quotes are doubled.
QString priorityIdQuery(int company, const QString &code);

// The code of a priority identifier, written unquoted.
QString priorityCodeQuery(qint64 priorityId);

} // namespace prioritastatements
