#pragma once

#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QTableView>
#include <functional>

namespace fw {

class RecordsetGridModel;

// The suite's data-bound grid: a recordset's rows in declared columns (headings, widths in
// twips, read-only, check-box flags, painted cells, button columns). The grid's current row
// and the recordset's current row follow each other, as in a bound grid.
class RecordsetGrid : public QTableView
{
    Q_OBJECT

public:
    explicit RecordsetGrid(QWidget *parent = nullptr);
    ~RecordsetGrid() override;

    // The columns shown, in this order; with none declared every field shows by its name.
    void setColumns(const QList<RecordsetGridColumn> &columns);
    // nullptr empties the grid.
    void setRecordset(db::RecordsetPtr recordset);
    db::RecordsetPtr recordset() const;

    int columnOf(const QString &key) const;   // -1 when not shown
    RecordsetGridModel *gridModel() const { return m_model; }

    // Asked before the user's choice of another row moves the recordset; false keeps the
    // current row (a form whose row has pending changes saves them first).
    void setRowChangeGuard(std::function<bool()> guard) { m_rowChangeGuard = std::move(guard); }

signals:
    // A button cell was pressed; row among the recordset's rows, key of its column.
    void buttonClicked(int row, const QString &key);
    // A column heading was clicked.
    void headerClicked(const QString &key);
    // The user chose a row: double click or Enter.
    void rowChosen(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void applyWidths();
    void onCurrentRowChanged(const QModelIndex &current);
    void onRecordsetRowChanged(int row);

    RecordsetGridModel *m_model;
    QMetaObject::Connection m_rowConnection;
    std::function<bool()> m_rowChangeGuard;
    bool m_following = false;
};

} // namespace fw
