#pragma once

#include <QString>

// The fixed-width text columns the module writes and the width the schema gives each of them
// (VARCHAR(n) in db/schema_sqlserver.sql and db/schema_sqlite.sql; a test keeps the three in
// step). SQL Server refuses a value longer than its column ("String or binary data would be
// truncated") and the whole statement with it, so a value that comes from outside the module
// (a user or computer name, a print key) is fitted before it is written:
//
//     "  '" + sqltext::doubleQuotes(columnwidths::fitToColumn(schemanames::GD02_UTENTECRE, user)) + "',"
//
// Fit first, double the quotes after: the width counts characters as stored. Pure functions.
namespace columnwidths {

// The width of a listed column (names as the schema spells them, any case); 0 for any other.
int widthOf(const QString &column);

// value cut to the width of column; unchanged when it fits or the column is not listed.
QString fitToColumn(const QString &column, const QString &value);

} // namespace columnwidths
