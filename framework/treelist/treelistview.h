#pragma once

#include <QColor>
#include <QTreeView>
#include <functional>

namespace fw {

class TreeListHeader;

// The tree list's view: a QTreeView with uniform rows, no sorting, row selection, a header
// that carries the band, and access to its deferred layout.
//
// Frozen columns stay at the left edge while the others scroll sideways. They are drawn over the
// start of the scrolled columns, and visualRect() and indexAt() say where they show, so that
// editors, tooltips, drops and callers find them there; the header keeps them likewise.
class TreeListView : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeListView(QWidget *parent = nullptr);

    TreeListHeader *bandHeader() const { return m_header; }
    void setHierarchyLineColor(const QColor &color);

    // QTreeView::expand() and collapse() on a laid-out view move every row below the node,
    // which makes a loop over many nodes quadratic. With the layout marked out of date they
    // only record the change, and the next layout places every row in one pass.
    void deferLayout() { scheduleDelayedItemsLayout(); }
    void layoutNow() { executeDelayedItemsLayout(); }

    // The first `count` columns are frozen (see TreeListHeader::frozenWidth() for when they are not).
    void setFrozenColumnCount(int count);

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    // A cell of the other columns comes out from under the frozen ones; a frozen cell scrolls
    // nothing sideways.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

signals:
    void mousePressed(const QModelIndex &index, Qt::MouseButton button, const QPoint &viewportPos);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent *event) override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;

private:
    bool overFrozenColumns(const QPoint &viewportPos) const;
    void handleUnscrolled(const QPoint &viewportPos, const std::function<void()> &handle);

    TreeListHeader *m_header;
    QColor m_lineColor;
};

} // namespace fw
