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
    cells.resize(cells.size() + fields.size());
    deleted.push_back(0);
    return storedRowCount() - 1;
}

QList<int> keptColumns(const QStringList &columnNames, const QStringList &onlyFields)
{
    QList<int> kept;
    for (int i = 0; i < columnNames.size(); ++i) {
        if (onlyFields.isEmpty() || onlyFields.contains(columnNames.at(i), Qt::CaseInsensitive))
            kept << i;
    }
    return kept;
}

void RowStoreBuilder::finish(RecordsetData &data)
{
    const qsizetype rows = m_columns > 0 ? m_cells.size() / m_columns : 0;
    data.cells = std::move(m_cells);
    data.deleted.assign(size_t(rows), 0);
}

} // namespace db
