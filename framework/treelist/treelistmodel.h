#pragma once

#include <QColor>
#include <functional>

#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelistparentlinks.h"
#include "framework/treelist/treeliststructure.h"
#include "platform/db/recordset.h"

#include <QAbstractItemModel>
#include <QList>
#include <QMetaObject>
#include <QSet>

namespace fw {

// The hierarchy of a recordset's rows as an item model: one item per row, placed under the row
// whose key its parent field names, one model column per tree-list column.
//
// Values are read from the recordset's rows in memory; nothing here runs a statement except
// the write-back of an edit. The hierarchy is rebuilt when the recordset's rows change (reset,
// insertions, removals, filter) or when a key or parent value changes.
class TreeListModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TreeListModel(QObject *parent = nullptr);
    ~TreeListModel() override;

    // --- columns
    int addColumn(const TreeListColumn &column);
    void setColumn(int index, const TreeListColumn &column);
    const TreeListColumn &column(int index) const { return m_columns.at(index); }
    const QList<TreeListColumn> &columns() const { return m_columns; }
    int columnIndex(const QString &name) const; // case-insensitive; -1 when absent

    // --- binding
    void setKeyField(const QString &name);
    QString keyField() const { return m_keyField; }
    void setParentField(const QString &name);
    QString parentField() const { return m_parentField; }
    void setRecordset(db::RecordsetPtr recordset);
    // The colour of a row's text, asked at paint time with the recordset row; an invalid colour
    // keeps the tree's own. For rows that stand in the tree only to carry others.
    void setRowForeground(std::function<QColor(int row)> foreground) { m_rowForeground = std::move(foreground); }
    const db::RecordsetPtr &recordset() const { return m_recordset; }

    // --- nodes (a node's id is its position in tree order; structure().row() gives its row)
    const TreeListStructure &structure() const { return m_structure; }
    int generation() const { return m_generation; } // changes with every rebuild
    QModelIndex indexOfNode(int node, int column = 0) const;
    int nodeOf(const QModelIndex &index) const; // -1 for an invalid index
    QVariant value(int node, int column) const; // the stored value; null when unbound
    QString text(int node, int column) const;   // the display text, before the draw-time hook
    quint64 keyCode(int node) const;            // identifies a node's key across rebuilds

    // Stores a value through the recordset (move to the row, set the field, update). On a
    // database error the row's pending change is cancelled, the cell shows the stored value
    // again and writeFailed() is emitted; returns false.
    bool writeValue(int node, int column, const QVariant &value);
    // What every write of a cell runs inside (the owner's transaction, say): it calls write once,
    // and lets its exceptions through. None: the write runs as it is.
    using WriteScope = std::function<void(const std::function<void()> &write)>;
    void setWriteScope(WriteScope scope) { m_writeScope = std::move(scope); }

    // Cells of one node that may not be edited now, kept by the node's key across rebuilds;
    // they show in italics and grey. Another call replaces them; no columns unlocks.
    void setLockedCells(int node, const QSet<int> &columns);
    bool isLocked(int node, int column) const;

    // --- QAbstractItemModel
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    // Around a rebuild caused by the recordset (not by setRecordset): the old nodes are still
    // readable when aboutToRebuild() is emitted, the new ones when rebuilt() is.
    void aboutToRebuild();
    void rebuilt();
    void writeFailed(const db::DatabaseError &error);

private:
    void resolveFields();
    int fieldOf(int column) const { return m_fieldOfColumn.value(column, -1); }
    QVariant toFieldValue(int field, const QVariant &value) const;
    void buildStructure();
    void connectRecordset();
    void startRebuild();
    void finishRebuild();
    void rebuildLater();
    void onRecordsetDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    bool linksChanged(int firstRow, int lastRow) const;

    db::RecordsetPtr m_recordset;
    QList<QMetaObject::Connection> m_connections;
    QList<TreeListColumn> m_columns;
    QList<int> m_fieldOfColumn;
    QString m_keyField;
    QString m_parentField;
    int m_keyFieldIndex = -1;
    int m_parentFieldIndex = -1;
    TreeListStructure m_structure;
    std::vector<quint64> m_keyCodes;
    std::vector<quint64> m_parentCodes;
    int m_generation = 0;
    bool m_rebuilding = false;
    bool m_writing = false;
    WriteScope m_writeScope;
    bool m_rebuildQueued = false;
    quint64 m_lockedKey = 0;
    int m_lockedNode = -1;
    int m_lockedGeneration = -1;
    QSet<int> m_lockedColumns;
    std::function<QColor(int row)> m_rowForeground;
};

} // namespace fw
