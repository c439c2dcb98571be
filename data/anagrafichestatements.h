#pragma once

#include <QString>
#include <optional>

// Statements of the subject selection list: every customer or supplier of the company,
// materialised in a temporary table of the connection's session and read back from it.
namespace anagrafichestatements {

// "#GD02_CLIFORSTD"
QString subjectListTable();

// Drops the list's temporary table when it exists.
QString dropSubjectListStatement();

// Builds the temporary table: one row per subject of the kind, ordered by code, with the
// selection flag at 0 and the flag telling whether any tree of the kind already holds the subject.
// With a division, the division's overrides win over the subject's own data where not null;
// subjects without overrides are kept.
QString buildSubjectListStatement(int company, int subjectKind, std::optional<qint64> division);

// "SELECT * FROM #GD02_CLIFORSTD"
QString readSubjectListStatement();

} // namespace anagrafichestatements
