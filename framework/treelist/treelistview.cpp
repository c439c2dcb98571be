#include "framework/treelist/treelistview.h"

#include "framework/treelist/treelistheader.h"

#include <QMouseEvent>

namespace fw {

TreeListView::TreeListView(QWidget *parent)
    : QTreeView(parent)
    , m_header(new TreeListHeader(this))
{
    setHeader(m_header);
    setUniformRowHeights(true);
    setSortingEnabled(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAllColumnsShowFocus(true);
    setExpandsOnDoubleClick(false);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                    | QAbstractItemView::SelectedClicked);
}

void TreeListView::mousePressEvent(QMouseEvent *event)
{
    QTreeView::mousePressEvent(event);
    const QPoint pos = event->position().toPoint();
    emit mousePressed(indexAt(pos), event->button(), pos);
}

void TreeListView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    emit resized();
}

} // namespace fw
