#pragma once

#include <QString>
#include <QVariant>

namespace fw {

class TreeList;

// A handle on one node of a TreeList: cheap to copy, valid until the tree's hierarchy is
// rebuilt (a new recordset, or rows added, removed or re-parented), after which isValid()
// is false and every query answers as for no node.
class TreeListNode
{
public:
    TreeListNode() = default;

    bool isValid() const;
    int id() const { return m_id; } // the node's number in its tree, -1 for no node
    int row() const;                // the recordset row it stands for, -1 for no node

    int level() const;         // roots are at level 0
    int absoluteIndex() const; // position in tree order (equals id()), -1 for no node
    TreeListNode next() const; // tree order: each node, then its descendants
    TreeListNode parent() const;
    TreeListNode firstChild() const;
    TreeListNode nextSibling() const;
    int childCount() const;
    bool hasChildren() const { return childCount() > 0; }

    bool isExpanded() const;
    void expand() const; // this node only; children keep their own state
    void collapse() const;
    void setExpanded(bool expanded) const;
    void focus() const; // makes it the focused node

    QVariant value(const QString &column) const;
    QString displayText(const QString &column) const;

    friend bool operator==(const TreeListNode &a, const TreeListNode &b)
    {
        return a.m_tree == b.m_tree && a.m_id == b.m_id && a.m_generation == b.m_generation;
    }
    friend bool operator!=(const TreeListNode &a, const TreeListNode &b) { return !(a == b); }

private:
    friend class TreeList;
    TreeListNode(TreeList *tree, int id, int generation)
        : m_tree(tree)
        , m_id(id)
        , m_generation(generation)
    { }

    TreeList *m_tree = nullptr;
    int m_id = -1;
    int m_generation = 0;
};

} // namespace fw
