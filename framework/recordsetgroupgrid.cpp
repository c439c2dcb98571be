#include "framework/recordsetgroupgrid.h"

#include "framework/columnfit.h"
#include "framework/columnsizing.h"
#include "framework/recordsetgroupmodel.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>

namespace fw {

RecordsetGroupGrid::RecordsetGroupGrid(QWidget *parent)
    : QTreeView(parent)
    , m_model(new RecordsetGroupModel(this))
    , m_widths(new ColumnFit(this, header(), ColumnFit::designList(m_designTwips, [this](int column) {
                                 return minimumColumnWidth(column);
                             })))
{
    setModel(m_model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSortingEnabled(false);
    connect(m_model, &QAbstractItemModel::modelReset, this, &RecordsetGroupGrid::applyColumns);
    connect(this, &QAbstractItemView::doubleClicked, this, &RecordsetGroupGrid::choose);
}

RecordsetGroupGrid::~RecordsetGroupGrid() = default;

void RecordsetGroupGrid::setColumns(const QList<RecordsetGridColumn> &columns)
{
    m_designTwips.clear();
    for (const RecordsetGridColumn &column : columns)
        m_designTwips.append(column.width);
    m_model->setColumns(columns);
}

void RecordsetGroupGrid::setFillWidth(bool fill)
{
    m_widths->setFillWidth(fill);
}

int RecordsetGroupGrid::minimumColumnWidth(int column) const
{
    if (column < 0 || column >= m_model->columnCount())
        return 0;
    const RecordsetGridColumn &declared = m_model->columns().at(column);
    // The tree's lines and the group headings are drawn in the column the tree is drawn in.
    const int treeColumn = treePosition() < 0 ? header()->logicalIndex(0) : treePosition();
    const int indent = column == treeColumn ? indentation() : 0;
    int minimum = m_minimumWidths.width(font(), declaredWidthKey(declared, indent), [&] {
        return fw::minimumColumnWidth(declared, fontMetrics(), header()->fontMetrics(),
                                      style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this), indent);
    });
    if (declared.key.compare(m_model->groupField(), Qt::CaseInsensitive) == 0)
        minimum = std::max(minimum, m_widestGroup + CellTextPadding + indent);
    return minimum;
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
    // Headings are drawn bold.
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics headings(bold);
    m_widestGroup = 0;
    for (int group = 0; group < m_model->groupCount(); ++group)
        m_widestGroup = std::max(m_widestGroup, headings.horizontalAdvance(m_model->groupText(group)));
    for (int i = 0; i < m_model->columnCount(); ++i)
        m_widths->setColumnHidden(i, !m_model->columns().at(i).visible);
    m_widths->apply();
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
