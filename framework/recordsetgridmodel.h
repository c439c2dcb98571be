#pragma once

#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QList>
#include <QMetaObject>
#include <functional>

namespace fw {

// The rows of a recordset in the columns a grid declares: headings, read-only columns, flag
// columns as check boxes, painted backgrounds and unbound button columns. Values are read from
// and written to the recordset; nothing here runs a statement of its own.
class RecordsetGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit RecordsetGridModel(QObject *parent = nullptr);
    ~RecordsetGridModel() override;

    // With no columns declared, every field shows under its own name.
    void setColumns(const QList<RecordsetGridColumn> &columns);
    const QList<RecordsetGridColumn> &columns() const { return m_columns; }
    RecordsetGridColumn column(int index) const;

    void setRecordset(db::RecordsetPtr recordset);
    const db::RecordsetPtr &recordset() const { return m_recordset; }

    int columnOf(const QString &key) const; // case-insensitive; -1 when not shown
    // What each column holds, shown over its heading; by column key, kept across setColumns().
    void setHeadingToolTips(const QHash<QString, QString> &byKey);

    // Asked before a user's edit is written: the row, the column's key, the cell's value before
    // the edit and the value given. False cancels the grid's own write; the handler may have
    // changed the row itself.
    using EditGuard = std::function<bool(int row, const QString &key, const QVariant &before, const QVariant &after)>;
    void setEditGuard(EditGuard guard) { m_editGuard = std::move(guard); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void resolveFields();
    void watchRecordset();
    int fieldOf(int column) const { return m_fieldOfColumn.value(column, -1); }

    QList<RecordsetGridColumn> m_columns;
    db::RecordsetPtr m_recordset;
    QList<int> m_fieldOfColumn;
    QList<QMetaObject::Connection> m_connections;
    QHash<QString, QString> m_headingToolTips;
    EditGuard m_editGuard;
};

} // namespace fw
