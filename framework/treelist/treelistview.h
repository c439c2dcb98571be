#pragma once

#include <QColor>
#include <QTreeView>

namespace fw {

class TreeListHeader;

// The tree list's view: a QTreeView with uniform rows, no sorting, row selection, a header
// that carries the band, and access to its deferred layout.
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

signals:
    void mousePressed(const QModelIndex &index, Qt::MouseButton button, const QPoint &viewportPos);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;

private:
    TreeListHeader *m_header;
    QColor m_lineColor;
};

} // namespace fw
