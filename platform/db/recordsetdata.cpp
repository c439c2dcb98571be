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
    Q_ASSERT(cells.columnCount() == fields.size());
    cells.appendNullRow();
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
    data.deleted.assign(size_t(m_cells.rowCount()), 0);
    data.cells = std::move(m_cells);
}

} // namespace db
