#pragma once

#include "framework/columnsizing.h"
#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QTableView>
#include <functional>

namespace fw {

class ColumnFit;
class RecordsetGridFilterModel;
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

    int columnOf(const QString &key) const; // -1 when not shown

    // Fill width: the visible columns share the grid's width in proportion to their widths. No
    // column is narrower than its heading and a whole value of its kind, with or without.
    void setFillWidth(bool fill);
    int minimumColumnWidth(int column) const;
    RecordsetGridModel *gridModel() const { return m_model; }

    // Rows narrowed by a text over the columns filterKeys and ordered by a click on a heading
    // (a second click reverses the order), except the headings of unsortedKeys. The recordset
    // keeps its rows and order; the rows reported by the signals are still the recordset's.
    RecordsetGridFilterModel *enableRowFilter(const QStringList &filterKeys, const QStringList &unsortedKeys);
    RecordsetGridFilterModel *rowFilter() const { return m_filter; }
    int recordsetRow(const QModelIndex &viewIndex) const; // -1 for none
    QModelIndex viewIndex(int recordsetRow, int column) const;

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
    void applyColumns();
    void followSelection();
    void sortByHeading(int section);
    void onCurrentRowChanged(const QModelIndex &current);
    void onRecordsetRowChanged(int row);

    RecordsetGridModel *m_model;
    mutable WidthMemo m_minimumWidths; // of the declared columns
    QList<int> m_designTwips; // by column: the declared widths, then the user's; before m_widths, which reads it
    ColumnFit *m_widths;
    RecordsetGridFilterModel *m_filter = nullptr;
    QStringList m_unsortedKeys;
    QMetaObject::Connection m_selectionConnection;
    QMetaObject::Connection m_rowConnection;
    std::function<bool()> m_rowChangeGuard;
    bool m_following = false;
};

} // namespace fw
