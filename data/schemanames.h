#pragma once

#include <QLatin1String>

// Columns that the code names on their own, outside the text of a statement: values are fitted
// to their width by name, and a misspelt name would find no width and fit nothing. Statements
// keep their names inline, as they are sent.
namespace schemanames {

// Audit stamps of the types and the nodes: who created and who last changed the row.
inline constexpr QLatin1String GD01_GRUPPOCRE("GD01_GRUPPOCRE");
inline constexpr QLatin1String GD01_UTENTECRE("GD01_UTENTECRE");
inline constexpr QLatin1String GD01_GRUPPOVAR("GD01_GRUPPOVAR");
inline constexpr QLatin1String GD01_UTENTEVAR("GD01_UTENTEVAR");
inline constexpr QLatin1String GD02_GRUPPOCRE("GD02_GRUPPOCRE");
inline constexpr QLatin1String GD02_UTENTECRE("GD02_UTENTECRE");
inline constexpr QLatin1String GD02_GRUPPOVAR("GD02_GRUPPOVAR");
inline constexpr QLatin1String GD02_UTENTEVAR("GD02_UTENTEVAR");

// A node's description, as an import writes it.
inline constexpr QLatin1String GD02_DESCR("GD02_DESCR");

// The print work table's key: computer name and user name.
inline constexpr QLatin1String GD04_KEY("GD04_KEY");

} // namespace schemanames
