#pragma once

#include "framework/import/importedtable.h"

namespace fw {

// Gathers the rows a reader finds, in order, into a table: the first row with any value gives
// the headings, rows of empty or blank cells are dropped and so are the empty cells that end a row.
class ImportedTableBuilder
{
public:
    explicit ImportedTableBuilder(const QString &sheet = {});

    void add(ImportedRow &&row);
    // The table, once; throws ImportFileError naming path when no row had a value.
    ImportedTable take(const QString &path);

private:
    ImportedTable m_table;
    bool m_hasHeadings = false;
};

} // namespace fw
