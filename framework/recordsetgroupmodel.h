#pragma once

#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QAbstractItemModel>
#include <QList>

namespace fw {

// The rows of a recordset grouped by the value of one field: one heading row per value, in the
// order of the values' texts, with the rows holding it below it in the recordset's order. The
// grouping column shows the value on the heading rows only; the other columns show the rows'
// fields. The groups are built once per recordset; nothing here runs a statement.
class RecordsetGroupModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit RecordsetGroupModel(QObject *parent = nullptr);
    ~RecordsetGroupModel() override;

    void setColumns(const QList<RecordsetGridColumn> &columns);
    const QList<RecordsetGridColumn> &columns() const { return m_columns; }
    void setGroupField(const QString &field);
    QString groupField() const { return m_groupField; }
    // nullptr empties the model.
    void setRecordset(db::RecordsetPtr recordset);
    const db::RecordsetPtr &recordset() const { return m_recordset; }

    int groupCount() const { return int(m_groups.size()); }
    QString groupText(int group) const;
    bool isGroup(const QModelIndex &index) const;
    // The recordset row an index stands for; a heading stands for its group's first row.
    int recordsetRow(const QModelIndex &index) const;
    QModelIndex indexOfRow(int recordsetRow, int column = 0) const;
    int columnOf(const QString &key) const; // case-insensitive; -1 when not declared

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Group
    {
        QString text;
        QList<int> rows; // recordset rows, in order
    };

    void rebuild();

    QList<RecordsetGridColumn> m_columns;
    QList<int> m_fieldOfColumn;
    QString m_groupField;
    db::RecordsetPtr m_recordset;
    QList<Group> m_groups;
    QList<int> m_groupOfRow;    // by recordset row
    QList<int> m_positionOfRow; // position of the row within its group
};

} // namespace fw
