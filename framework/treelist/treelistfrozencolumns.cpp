// The tree list view's frozen columns: drawn at the left edge over the scrolled ones, and found
// there by every geometry question and every click.
#include "framework/treelist/treelistheader.h"
#include "framework/treelist/treelistview.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

namespace fw {

void TreeListView::setFrozenColumnCount(int count)
{
    if (count == m_header->frozenSectionCount())
        return;
    m_header->setFrozenSectionCount(count);
    updateEditorGeometries();
    viewport()->update();
}

bool TreeListView::overFrozenColumns(const QPoint &viewportPos) const
{
    return m_header->frozenShift() > 0 && viewportPos.x() >= 0 && viewportPos.x() < m_header->frozenWidth();
}

QRect TreeListView::visualRect(const QModelIndex &index) const
{
    const QRect rect = QTreeView::visualRect(index);
    return rect.isValid() && m_header->isFrozen(index.column()) ? rect.translated(m_header->frozenShift(), 0) : rect;
}

QModelIndex TreeListView::indexAt(const QPoint &point) const
{
    if (overFrozenColumns(point))
        return QTreeView::indexAt(point - QPoint(m_header->frozenShift(), 0));
    return QTreeView::indexAt(point);
}

void TreeListView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QScrollBar *sideways = horizontalScrollBar();
    const int before = sideways->value();
    QTreeView::scrollTo(index, hint);
    const int frozen = m_header->frozenWidth();
    if (frozen == 0 || !index.isValid())
        return;
    if (m_header->isFrozen(index.column())) {
        sideways->setValue(before);
        return;
    }
    if (const int left = columnViewportPosition(index.column()); left < frozen)
        sideways->setValue(sideways->value() - (frozen - left));
}

// Qt finds the cell, the expand button and the editor's place under the pointer from the header's
// offset, where the frozen columns would lie scrolled. While it handles a click over them the
// offset is taken away, so that it finds what the user sees; then it comes back from the scroll
// bar, which stays as it was.
void TreeListView::handleUnscrolled(const QPoint &viewportPos, const std::function<void()> &handle)
{
    if (!overFrozenColumns(viewportPos)) {
        handle();
        return;
    }
    m_header->setOffset(0);
    handle();
    m_header->setOffset(horizontalScrollBar()->value());
    viewport()->update();
}

void TreeListView::mouseMoveEvent(QMouseEvent *event)
{
    // Without a button the move only marks the row under the pointer, through indexAt().
    if (event->buttons() == Qt::NoButton) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    handleUnscrolled(event->position().toPoint(), [&] { QTreeView::mouseMoveEvent(event); });
}

void TreeListView::mouseReleaseEvent(QMouseEvent *event)
{
    handleUnscrolled(event->position().toPoint(), [&] { QTreeView::mouseReleaseEvent(event); });
}

void TreeListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    handleUnscrolled(event->position().toPoint(), [&] { QTreeView::mouseDoubleClickEvent(event); });
}

// The scroll moved every pixel, the frozen columns' and their editors' too.
void TreeListView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (dx == 0 || m_header->frozenWidth() == 0)
        return;
    viewport()->update();
    m_header->viewport()->update();
    updateEditorGeometries();
}

// drawTree() draws what lies in the region it is given: the frozen columns where the scroll put
// them, which the painter moves back to the left edge.
void TreeListView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    const int shift = m_header->frozenShift();
    if (shift == 0)
        return;
    const int frozen = m_header->frozenWidth();
    const QRect pane = QRect(0, 0, frozen, viewport()->height()).intersected(event->rect());
    if (pane.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setClipRect(pane);
    painter.fillRect(pane, viewport()->palette().brush(viewport()->backgroundRole()));
    painter.translate(shift, 0);
    drawTree(&painter, QRegion(pane.translated(-shift, 0)));
    painter.resetTransform();
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawLine(frozen - 1, pane.top(), frozen - 1, pane.bottom());
}

} // namespace fw
