#include "framework/import/importedtablebuilder.h"

#include "framework/import/importfileerror.h"

namespace fw {

ImportedTableBuilder::ImportedTableBuilder(const QString &sheet)
{
    m_table.sheet = sheet;
}

void ImportedTableBuilder::add(ImportedRow &&row)
{
    while (!row.cells.isEmpty() && row.cells.constLast().kind == ImportedCell::Kind::Empty)
        row.cells.removeLast();
    if (row.cells.isEmpty())
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
