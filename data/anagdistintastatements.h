#pragma once

#include <QString>

// Statements of the classification type maintenance (FRMGD_ANAGDISTINTA): its record frame, the
// division and price-list priority lookups and decodes, the texts of its grid and the check that
// keeps a type in use from being deleted. Codes typed by the user have their quotes doubled here.
namespace anagdistintastatements {

// The company's types, the record frame's rows (ImpostaFME_DISTINTE).
QString typesFrameQuery(int company);

// The divisions of the company offered by the lookup "lkp_Divisioni".
QString divisionLookupQuery(int company);

// Description and code of a typed division code, for the label beside the field. This one
// reads the divisions of every company, as it always has.
QString divisionDecodeQuery(const QString &code);

// The identifier of a division code of the company (DecodeCodiceDivisione); lines joined by CR LF.
QString divisionIdQuery(int company, const QString &code);

// The code of a stored division identifier (Get_CodiceDivisione); lines joined by CR LF.
QString divisionCodeQuery(qint64 divisionId);

// The identifier of a price-list priority code of the company (Get_MG3G_ID_LP09).
QString priorityIdQuery(int company, const QString &code);

// The code of a stored price-list priority identifier (Get_LP09_CODICE).
QString priorityCodeQuery(qint64 priorityId);

// The price-list priorities of the company offered by the priority lookup, by code.
QString priorityLookupQuery(int company);

// Description and code of a typed priority code of the company, for the label beside the field.
QString priorityDecodeQuery(int company, const QString &code);

// "code - description" of a division, shown in the grid's division column.
QString gridDivisionQuery(int company, qint64 divisionId);

// "code - description" of a priority, shown in the grid's priority column.
QString gridPriorityQuery(qint64 priorityId);

// The nodes of a type joined to it: any row means the type is in use and cannot be deleted.
QString typeNodesQuery(qint64 typeId);

// Another type of the company with the same code; typeId is the row being saved (0 for a new one).
QString sameCodeQuery(int company, const QString &code, qint64 typeId);

// The nodes of a type with their workflow identity, for handing the type's state on to them.
QString typeNodeGuidsQuery(int company, qint64 typeId);

// The print of the classification types ("MO09_TIPODIST_01.rpt").
QString printQuery();

} // namespace anagdistintastatements
