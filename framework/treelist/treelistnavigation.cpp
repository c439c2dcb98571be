#include "framework/treelist/treelist.h"

#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"

#include <QScopedValueRollback>
#include <QSet>

// Nodes of a tree list: the walk, expansion, and the focus in step with the recordset.

namespace fw {

// --- nodes

TreeListNode TreeList::handle(int node) const
{
    if (!m_model->structure().contains(node))
        return {};
    return TreeListNode(const_cast<TreeList *>(this), node, m_model->generation());
}

int TreeList::nodeId(const TreeListNode &node) const
{
    if (node.m_tree != this || node.m_generation != m_model->generation())
        return -1;
    return m_model->structure().contains(node.m_id) ? node.m_id : -1;
}

int TreeList::count() const
{
    return m_model->structure().count();
}

TreeListNode TreeList::firstNode() const
{
    return handle(0);
}

TreeListNode TreeList::nodeAt(int absoluteIndex) const
{
    return handle(absoluteIndex);
}

TreeListNode TreeList::nodeOfRow(int row) const
{
    return handle(m_model->structure().nodeOfRow(row));
}

TreeListNode TreeList::focusedNode() const
{
    return nodeId(m_focused) >= 0 ? m_focused : TreeListNode();
}

void TreeList::setFocusedNode(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id >= 0)
        focusNode(id);
}

void TreeList::setFocusedAbsoluteIndex(int absoluteIndex)
{
    setFocusedNode(nodeAt(absoluteIndex));
}

QString TreeList::focusedColumn() const
{
    const QModelIndex current = m_view->currentIndex();
    return current.isValid() ? column(current.column()).name : QString();
}

void TreeList::setFocusedColumn(const QString &name)
{
    const int columnIndex = this->columnIndex(name);
    const int node = nodeId(m_focused);
    if (columnIndex >= 0 && node >= 0)
        m_view->selectionModel()->setCurrentIndex(m_model->indexOfNode(node, columnIndex),
                                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TreeList::expand(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id < 0 || m_model->structure().childCount(id) == 0)
        return;
    m_view->deferLayout();
    m_view->expand(m_model->indexOfNode(id));
}

void TreeList::collapse(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id < 0 || m_model->structure().childCount(id) == 0)
        return;
    m_view->deferLayout();
    m_view->collapse(m_model->indexOfNode(id));
}

bool TreeList::isExpanded(const TreeListNode &node) const
{
    const int id = nodeId(node);
    return id >= 0 && m_view->isExpanded(m_model->indexOfNode(id));
}

void TreeList::expandAll()
{
    m_view->expandAll();
}

void TreeList::collapseAll()
{
    m_view->collapseAll();
    int root = nodeId(m_focused);
    if (root < 0)
        return;
    while (m_model->structure().parent(root) >= 0)
        root = m_model->structure().parent(root);
    focusNode(root);
}

void TreeList::beginUpdate()
{
    if (m_updateDepth++ == 0)
        m_view->setUpdatesEnabled(false);
    m_view->deferLayout();
}

void TreeList::endUpdate()
{
    if (m_updateDepth == 0 || --m_updateDepth > 0)
        return;
    m_view->layoutNow();
    if (m_focusPending)
        showFocusInView();
    m_view->setUpdatesEnabled(true);
}

// --- focus, in step with the recordset

void TreeList::focusNode(int node)
{
    revealNode(node);
    recordFocus(node);
    // Within an update the view catches up at endUpdate(), in one layout.
    if (m_updateDepth > 0)
        m_focusPending = true;
    else
        showFocusInView();
}

// Expands the collapsed ancestors, with the layout deferred so that it is redone once.
void TreeList::revealNode(int node)
{
    const TreeListStructure &structure = m_model->structure();
    for (int up = structure.parent(node); up >= 0; up = structure.parent(up)) {
        const QModelIndex index = m_model->indexOfNode(up);
        if (!m_view->isExpanded(index)) {
            m_view->deferLayout();
            m_view->expand(index);
        }
    }
}

void TreeList::showFocusInView()
{
    m_focusPending = false;
    const int node = nodeId(m_focused);
    if (node < 0)
        return;
    const int column = qMax(0, m_view->currentIndex().column());
    const QModelIndex index = m_model->indexOfNode(node, column);
    if (m_view->currentIndex() != index)
        m_view->selectionModel()->setCurrentIndex(index,
                                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->scrollTo(index);
}

// The one place where the focus changes: the recordset follows and the change is announced.
void TreeList::recordFocus(int node)
{
    if (node == nodeId(m_focused))
        return;
    if (!moveRecordsetTo(node)) {
        // The recordset could not write the row it stands on and stayed there; so does the
        // focus, once the view has finished its own change.
        QMetaObject::invokeMethod(this, &TreeList::showFocusInView, Qt::QueuedConnection);
        return;
    }
    const TreeListNode previous = m_focused;
    m_focused = handle(node);
    emit focusedNodeChanged(previous, m_focused);
}

bool TreeList::moveRecordsetTo(int node)
{
    const db::RecordsetPtr &recordset = m_model->recordset();
    const int row = m_model->structure().row(node);
    if (!recordset || recordset->currentRow() == row)
        return true;
    QScopedValueRollback guard(m_movingRecordset, true);
    try {
        recordset->setCurrentRow(row);
    } catch (const db::DatabaseError &error) {
        emit writeFailed(error);
        return false;
    }
    return true;
}

void TreeList::onCurrentChanged(const QModelIndex &current)
{
    const int node = m_model->nodeOf(current);
    if (node >= 0)
        recordFocus(node);
}

void TreeList::onRecordsetRowChanged(int row)
{
    const int node = m_model->structure().nodeOfRow(row);
    if (m_movingRecordset || node < 0)
        return;
    focusNode(node);
}

void TreeList::onCollapsed(const QModelIndex &index)
{
    const int node = m_model->nodeOf(index);
    if (node >= 0 && m_model->structure().isAncestor(node, nodeId(m_focused)))
        focusNode(node);
}

void TreeList::rememberExpandedNodes()
{
    m_expandedKeys.clear();
    const TreeListStructure &structure = m_model->structure();
    for (int node = 0; node < structure.count(); ++node) {
        if (structure.childCount(node) > 0 && m_view->isExpanded(m_model->indexOfNode(node)))
            m_expandedKeys.append(m_model->keyCode(node));
    }
}

// The recordset changed its rows: nodes that were expanded stay so, and the focus goes to
// the node of the recordset's current row.
void TreeList::restoreAfterRebuild()
{
    const TreeListStructure &structure = m_model->structure();
    if (!m_expandedKeys.isEmpty()) {
        const QSet<quint64> expanded(m_expandedKeys.cbegin(), m_expandedKeys.cend());
        m_expandedKeys.clear();
        m_view->deferLayout();
        for (int node = 0; node < structure.count(); ++node) {
            if (structure.childCount(node) > 0 && expanded.contains(m_model->keyCode(node)))
                m_view->expand(m_model->indexOfNode(node));
        }
    }
    focusCurrentRow();
}

} // namespace fw
