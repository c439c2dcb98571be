#include "framework/import/importedtablebuilder.h"

#include "framework/import/importfileerror.h"

#include <algorithm>

namespace fw {

namespace {

// Blanks alone do not make a row: a line of spaces in a text file, a cell a space was typed in.
bool isBlank(const ImportedCell &cell)
{
    return cell.kind == ImportedCell::Kind::Empty
        || (cell.kind == ImportedCell::Kind::Text
            && std::all_of(cell.text.cbegin(), cell.text.cend(), [](QChar c) { return c.isSpace(); }));
}

} // namespace

ImportedTableBuilder::ImportedTableBuilder(const QString &sheet)
{
    m_table.sheet = sheet;
}

void ImportedTableBuilder::add(ImportedRow &&row)
{
    while (!row.cells.isEmpty() && row.cells.constLast().kind == ImportedCell::Kind::Empty)
        row.cells.removeLast();
    if (std::all_of(row.cells.cbegin(), row.cells.cend(), isBlank))
        return;
    if (m_hasHeadings) {
        m_table.rows.append(std::move(row));
        return;
    }
    m_hasHeadings = true;
    m_table.headingLine = row.line;
    for (const ImportedCell &cell : std::as_const(row.cells))
        m_table.headings << cell.text.trimmed();
}

ImportedTable ImportedTableBuilder::take(const QString &path)
{
    if (!m_hasHeadings)
        throw ImportFileError::noRows(path);
    return std::move(m_table);
}

} // namespace fw
