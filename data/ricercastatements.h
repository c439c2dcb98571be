#pragma once

#include <QString>
#include <optional>

// Statements and find criteria of the two searches of the tree editor.
namespace ricercastatements {

// Every node of the company, in any classification type, whose subject matches (CercaDistinte).
// Both texts empty: an empty result. A code that is not numeric adds no filter; the name is
// matched with LIKE, its quotes doubled. Columns ID, DITTA, TIPOCF, CLIFOR, ANAGRAFICA, DISTINTA.
QString crossListSearchQuery(int company, const QString &code, const QString &name);

// Find criterion of the in-tree search by business name, quotes doubled.
QString inTreeNameCriterion(const QString &text);

// Find criterion of the in-tree search by subject code; none when the text is not numeric.
std::optional<QString> inTreeCodeCriterion(const QString &text);

} // namespace ricercastatements
