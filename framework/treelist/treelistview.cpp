#include "framework/treelist/treelistview.h"

#include "framework/treelist/treelistheader.h"

#include <QMouseEvent>
#include <QPainter>

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
    // Qt repaints from a resized column on, where it lies scrolled; the frozen ones are not there.
    connect(m_header, &QHeaderView::sectionResized, this, [this] {
        if (m_header->frozenSectionCount() > 0)
            viewport()->update();
    });
}

void TreeListView::mousePressEvent(QMouseEvent *event)
{
    const QPoint pos = event->position().toPoint();
    handleUnscrolled(pos, [&] { QTreeView::mousePressEvent(event); });
    emit mousePressed(indexAt(pos), event->button(), pos);
}

void TreeListView::setHierarchyLineColor(const QColor &color)
{
    m_lineColor = color;
    viewport()->update();
}

// Dotted lines join every node to its parent and its siblings; the style then draws the
// expand buttons over them.
void TreeListView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    painter->save();
    painter->setPen(QPen(m_lineColor.isValid() ? m_lineColor : palette().color(QPalette::Mid), 1, Qt::DotLine));
    const int indent = indentation();
    const int middleY = rect.center().y();
    int left = rect.right() + 1 - indent;
    bool ownColumn = true;
    for (QModelIndex node = index; node.isValid() && left >= rect.left(); node = node.parent(), left -= indent) {
        const QModelIndex parent = node.parent();
        const bool moreSiblings = node.row() + 1 < model()->rowCount(parent);
        const int middleX = left + indent / 2;
        if (ownColumn) {
            const bool firstRoot = !parent.isValid() && node.row() == 0;
            painter->drawLine(middleX, firstRoot ? middleY : rect.top(), middleX,
                              moreSiblings ? rect.bottom() : middleY);
            painter->drawLine(middleX, middleY, left + indent - 2, middleY);
            ownColumn = false;
        } else if (moreSiblings) {
            painter->drawLine(middleX, rect.top(), middleX, rect.bottom());
        }
    }
    painter->restore();
    QTreeView::drawBranches(painter, rect, index);
}

} // namespace fw
