#pragma once

#include "cellstore.h"
#include "field.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace db {

class Recordset;

// A row edited or added and not yet written: the values it had when reading started.
struct PendingRow
{
    std::vector<QVariant> original;
    bool isNew = false;
};

// The rows of a recordset, shared by the recordset and its clones. Internal to platform/db.
struct RecordsetData
{
    QList<FieldInfo> fields;
    QStringList sourceColumns;       // base-table column a field writes to; empty when computed
    QHash<QString, int> fieldByName; // lower-case name -> index (first of equal names)
    CellStore cells;
    std::vector<quint8> deleted; // one flag per stored row
    QString statement;
    QString baseTable; // empty when edits stay in memory
    QList<int> keyFields;
    std::unordered_map<int, PendingRow> pending; // by stored row
    std::vector<Recordset *> siblings;           // the original and its clones, for change notification
    // Columns every UPDATE also sets (who changed the row and when), evaluated at each update.
    std::function<QList<std::pair<QString, QVariant>>()> updateStamp;

    int columnCount() const { return int(fields.size()); }
    int storedRowCount() const { return int(deleted.size()); }
    bool isWritable() const { return !baseTable.isEmpty(); }
    QVariant cell(int row, int column) const { return cells.value(row, column); }
    void setCell(int row, int column, const QVariant &value) { cells.setValue(row, column, value); }

    void indexFields();
    int appendRow(); // a row of nulls; returns its stored index
};

// The columns of a result that a read keeps: those named in onlyFields (in any case), in the
// result's order; every column when onlyFields is empty.
QList<int> keptColumns(const QStringList &columnNames, const QStringList &onlyFields);

// Gathers the cells of a query's rows as they are read; the recordset's rows change only once
// the whole query has been read.
class RowStoreBuilder
{
public:
    explicit RowStoreBuilder(int columns)
        : m_cells(columns)
    { }

    CellStore &cells() { return m_cells; }
    void finish(RecordsetData &data);

private:
    CellStore m_cells;
};

} // namespace db
