#pragma once

#include "framework/treelist/treelistnode.h"

#include <QObject>
#include <QPoint>

class QMimeData;

namespace fw {

class TreeList;
class TreeListView;

// Moving nodes of a tree list as users expect to: dragging a node onto another node, or onto the
// empty area below the nodes; or Ctrl+X on a node and Ctrl+V on the target (Ctrl+Shift+V for the
// top level). The tree's owner is asked to move and decides whether it may. A node dragged from
// another tree list and dropped here is reported apart, since a node moves only within its tree.
// The keys are taken on the tree's view itself, before any window-wide shortcut; an open cell
// editor has the focus and its own keys, so Ctrl+X and Ctrl+V keep their meaning for text.
class TreeListNodeMover : public QObject
{
    Q_OBJECT

public:
    static constexpr auto MimeType = "application/x-vrax-treelist-node";

    explicit TreeListNodeMover(TreeList *tree);

    // What a drag of node carries: which tree (of which process) it comes from.
    QMimeData *mimeDataFor(const TreeListNode &node) const;
    // What a drop of data at that point of the view's viewport does; false when the data holds
    // no node. The drop event comes here; tests and automation may call it as well.
    bool dropAt(const QMimeData *data, const QPoint &viewportPos);

signals:
    // target is invalid for the empty area: the node is to become a root.
    void moveRequested(const fw::TreeListNode &node, const fw::TreeListNode &target);
    void foreignNodeDropped();
    void cutRequested();
    void pasteRequested(bool asRoot);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool keyEvent(QEvent *event);
    QByteArray identity() const;
    TreeListNode nodeAt(const QPoint &viewportPos) const;
    void startDrag();
    void stopWatching();

    TreeList *m_tree;
    TreeListView *m_view;
    QWidget *m_viewport;
    QPoint m_pressPos;
    TreeListNode m_pressed;
    TreeListNode m_dragged;
};

} // namespace fw
