#pragma once

#include "framework/columnsizing.h"
#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QTreeView>

namespace fw {

class ColumnFit;
class RecordsetGroupModel;

// The suite's grid wrapper with grouping: a recordset's rows under one heading per value of the
// grouping field, all groups open, in declared columns (widths in twips, hidden columns,
// captions). A double click or Enter on a row, or on a heading, chooses it.
class RecordsetGroupGrid : public QTreeView
{
    Q_OBJECT

public:
    explicit RecordsetGroupGrid(QWidget *parent = nullptr);
    ~RecordsetGroupGrid() override;

    void setColumns(const QList<RecordsetGridColumn> &columns);
    void setGroupField(const QString &field);
    // nullptr empties the grid.
    void setRecordset(db::RecordsetPtr recordset);
    db::RecordsetPtr recordset() const;
    RecordsetGroupModel *groupModel() const { return m_model; }

    // Fill width: the visible columns share the grid's width in proportion to their widths. No
    // column is narrower than its heading and a whole value of its kind (the grouping column:
    // the widest of its groups), with or without.
    void setFillWidth(bool fill);
    int minimumColumnWidth(int column) const;

    // The recordset row of the current line (a heading gives its group's first row); -1 for none.
    int currentRecordsetRow() const;

signals:
    void rowChosen(int recordsetRow);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void applyColumns();
    void choose(const QModelIndex &index);

    RecordsetGroupModel *m_model;
    mutable WidthMemo m_minimumWidths; // of the declared columns
    QList<int> m_designTwips; // by column: the declared widths, then the user's; before m_widths, which reads it
    ColumnFit *m_widths;
    int m_widestGroup = 0; // pixels, of the groups shown
};

} // namespace fw
