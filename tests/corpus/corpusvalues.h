#pragma once

#include "corpusentries.h"

#include "data/nodistatements.h"
#include "data/storicostatements.h"

#include <QDate>
#include <optional>

// The demo database's values the corpus entries are made with, shared by the editor's entries
// and the journal's.
namespace corpus {

// The demo database (tests/support/testdatabase.h): company 1 has the types 1 CLI-GDO without
// division, 2 CLI-ALI of division 1 "ALI", 3 CLI-HOR of division 2 "BEV", 4 CLI-EXP with no
// nodes, 5 FOR-MP suppliers with NULL-parent roots and 6 FOR-SRV of division 1; company 2 has type 7.
inline constexpr int company = 1;
inline constexpr int smallCompany = 2;
inline constexpr int customers = 0;
inline constexpr int suppliers = 1;

inline constexpr Expectation anything {};
inline constexpr Expectation someRows {Expectation::SomeRows};
inline constexpr Expectation noRows {Expectation::NoRows};
inline constexpr Expectation executes {Expectation::Executes};

constexpr Expectation rows(int count)
{
    return {Expectation::RowCount, count};
}

inline const QDate today(2026, 11, 23);
inline const QDate farEnd(2099, 12, 31);

storicostatements::Operazione operation();
nodistatements::Collegamento linkOf1198(std::optional<qint64> division, std::optional<qint64> excludedNodeId);
nodistatements::NuovoNodo newNode(qint64 typeId, qint64 parentId, qint64 subjectCode, const QDate &start);
// What an import writes besides: the file's billing code, description and priorities.
nodistatements::NuovoNodo importedNode(qint64 typeId, qint64 parentId, qint64 subjectCode, const QDate &start);

} // namespace corpus
