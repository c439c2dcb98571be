#include "framework/treelist/treelistnode.h"

#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"

namespace fw {

bool TreeListNode::isValid() const
{
    return m_tree && m_tree->nodeId(*this) >= 0;
}

int TreeListNode::row() const
{
    return isValid() ? m_tree->model()->structure().row(m_id) : -1;
}

int TreeListNode::level() const
{
    return isValid() ? m_tree->model()->structure().level(m_id) : -1;
}

int TreeListNode::absoluteIndex() const
{
    return isValid() ? m_id : -1;
}

TreeListNode TreeListNode::next() const
{
    return isValid() ? m_tree->handle(m_tree->model()->structure().next(m_id)) : TreeListNode();
}

TreeListNode TreeListNode::parent() const
{
    return isValid() ? m_tree->handle(m_tree->model()->structure().parent(m_id)) : TreeListNode();
}

TreeListNode TreeListNode::firstChild() const
{
    if (childCount() == 0)
        return {};
    return m_tree->handle(m_tree->model()->structure().child(m_id, 0));
}

TreeListNode TreeListNode::nextSibling() const
{
    if (!isValid())
        return {};
    const TreeListStructure &structure = m_tree->model()->structure();
    const int parent = structure.parent(m_id);
    const int index = structure.indexInParent(m_id) + 1;
    return index < structure.childCount(parent) ? m_tree->handle(structure.child(parent, index)) : TreeListNode();
}

int TreeListNode::childCount() const
{
    return isValid() ? m_tree->model()->structure().childCount(m_id) : 0;
}

bool TreeListNode::isExpanded() const
{
    return isValid() && m_tree->isExpanded(*this);
}

void TreeListNode::expand() const
{
    if (isValid())
        m_tree->expand(*this);
}

void TreeListNode::collapse() const
{
    if (isValid())
        m_tree->collapse(*this);
}

void TreeListNode::setExpanded(bool expanded) const
{
    expanded ? expand() : collapse();
}

void TreeListNode::focus() const
{
    if (isValid())
        m_tree->setFocusedNode(*this);
}

QVariant TreeListNode::value(const QString &column) const
{
    return isValid() ? m_tree->value(*this, column) : QVariant();
}

QString TreeListNode::displayText(const QString &column) const
{
    return isValid() ? m_tree->displayText(*this, column) : QString();
}

} // namespace fw
