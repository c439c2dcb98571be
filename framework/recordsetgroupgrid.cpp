#include "framework/recordsetgroupgrid.h"

#include "framework/recordsetgroupmodel.h"
#include "framework/treelist/treelistcolumn.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace fw {

RecordsetGroupGrid::RecordsetGroupGrid(QWidget *parent)
    : QTreeView(parent)
    , m_model(new RecordsetGroupModel(this))
{
    setModel(m_model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSortingEnabled(false);
    header()->setStretchLastSection(false);
    connect(m_model, &QAbstractItemModel::modelReset, this, &RecordsetGroupGrid::applyColumns);
    connect(this, &QAbstractItemView::doubleClicked, this, &RecordsetGroupGrid::choose);
}

RecordsetGroupGrid::~RecordsetGroupGrid() = default;

void RecordsetGroupGrid::setColumns(const QList<RecordsetGridColumn> &columns)
{
    m_model->setColumns(columns);
}

void RecordsetGroupGrid::setGroupField(const QString &field)
{
    m_model->setGroupField(field);
}

void RecordsetGroupGrid::setRecordset(db::RecordsetPtr recordset)
{
    m_model->setRecordset(std::move(recordset));
}

db::RecordsetPtr RecordsetGroupGrid::recordset() const
{
    return m_model->recordset();
}

int RecordsetGroupGrid::currentRecordsetRow() const
{
    return m_model->recordsetRow(currentIndex());
}

void RecordsetGroupGrid::applyColumns()
{
    const int dpi = logicalDpiX();
    for (int i = 0; i < m_model->columnCount(); ++i) {
        const RecordsetGridColumn &column = m_model->columns().at(i);
        setColumnHidden(i, !column.visible);
        setColumnWidth(i, twipsToPixels(column.width, dpi));
    }
    expandAll();
    if (m_model->rowCount() > 0)
        setCurrentIndex(m_model->index(0, 0));
}

void RecordsetGroupGrid::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid()) {
        choose(currentIndex());
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Escape) { // the form's to close
        event->ignore();
        return;
    }
    QTreeView::keyPressEvent(event);
}

void RecordsetGroupGrid::choose(const QModelIndex &index)
{
    const int row = m_model->recordsetRow(index);
    if (row >= 0)
        emit rowChosen(row);
}

} // namespace fw
