#pragma once

#include "field.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <unordered_map>
#include <vector>

namespace db {

class Recordset;

// A row edited or added and not yet written: the values it had when reading started.
struct PendingRow
{
    std::vector<QVariant> original;
    bool isNew = false;
};

// The rows of a recordset, shared by the recordset and its clones. Cells are kept flat
// (row after row, one QVariant per cell) so that large reads cost no allocation per row.
// Internal to platform/db.
struct RecordsetData
{
    QList<FieldInfo> fields;
    QStringList sourceColumns;          // base-table column a field writes to; empty when computed
    QHash<QString, int> fieldByName;    // lower-case name -> index (first of equal names)
    std::vector<QVariant> cells;
    std::vector<quint8> deleted;        // one flag per stored row
    QString statement;
    QString baseTable;                  // empty when edits stay in memory
    QList<int> keyFields;
    std::unordered_map<int, PendingRow> pending; // by stored row
    std::vector<Recordset *> siblings;  // the original and its clones, for change notification

    int columnCount() const { return int(fields.size()); }
    int storedRowCount() const { return int(deleted.size()); }
    bool isWritable() const { return !baseTable.isEmpty(); }
    QVariant &cell(int row, int column) { return cells[size_t(row) * size_t(fields.size()) + size_t(column)]; }
    const QVariant &cell(int row, int column) const
    {
        return cells[size_t(row) * size_t(fields.size()) + size_t(column)];
    }

    void indexFields();
    int appendRow(); // a row of nulls; returns its stored index
};

// Gathers cells while a query is read and hands them over as one exact-size vector; reading in
// chunks avoids the doubling copies (and twice the memory) of a growing vector on large reads.
class RowStoreBuilder
{
public:
    explicit RowStoreBuilder(int columns) : m_columns(columns) {}

    void append(QVariant &&value)
    {
        if (m_chunks.empty() || m_chunks.back().size() == ChunkCells) {
            m_chunks.emplace_back();
            m_chunks.back().reserve(ChunkCells);
        }
        m_chunks.back().push_back(std::move(value));
    }
    QVariant &last() { return m_chunks.back().back(); }
    void finish(RecordsetData &data);

private:
    static constexpr size_t ChunkCells = 1 << 16;
    int m_columns;
    std::vector<std::vector<QVariant>> m_chunks;
};

} // namespace db
