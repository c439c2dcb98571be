#include "recordsetdata.h"

namespace db {

void RecordsetData::indexFields()
{
    fieldByName.clear();
    for (int i = int(fields.size()) - 1; i >= 0; --i)
        fieldByName.insert(fields.at(i).name.toLower(), i);
    while (sourceColumns.size() < fields.size())
        sourceColumns.append(QString());
}

int RecordsetData::appendRow()
{
    cells.resize(cells.size() + size_t(fields.size()));
    deleted.push_back(0);
    return storedRowCount() - 1;
}

void RowStoreBuilder::finish(RecordsetData &data)
{
    const size_t total = m_cells.count();
    m_cells.moveInto(data.cells);
    const size_t rows = m_columns > 0 ? total / size_t(m_columns) : 0;
    data.deleted.assign(rows, 0);
}

} // namespace db
