#pragma once

#include <vector>

namespace fw {

// The shape of a tree list: which node hangs under which, in plain arrays of ints.
//
// Nodes are numbered in tree order (each node followed by all its descendants, whatever is
// expanded), so a node's id is also its absolute position and walking the tree reads memory
// in sequence. Each node knows the recordset row it stands for. Children are stored
// contiguously (roots first, then the children of each node in turn), so the whole tree costs
// a handful of ints per node and a few allocations, whatever its size.
class TreeListStructure
{
public:
    // parents[row] is the parent row of each row, or -1 for a root. Every other value that
    // names no row also makes a root. Parent chains that loop back are cut so that every row
    // gets a node: the row where the loop was found becomes a root. Siblings keep the row
    // order. Linear in the row count.
    void build(std::vector<int> parents);
    void clear();

    int count() const { return int(m_nodes.size()); }
    bool contains(int node) const { return node >= 0 && node < count(); }

    int row(int node) const { return m_nodes[node].row; }
    int nodeOfRow(int row) const { return row >= 0 && row < int(m_nodeOfRow.size()) ? m_nodeOfRow[row] : -1; }

    int parent(int node) const { return m_nodes[node].parent; }
    int level(int node) const { return m_nodes[node].level; }
    int indexInParent(int node) const { return m_nodes[node].indexInParent; }

    // Children of a node; node -1 stands for the invisible root, whose children are the roots.
    int childCount(int node) const { return node < 0 ? m_rootCount : m_nodes[node].childCount; }
    int child(int node, int index) const { return m_children[(node < 0 ? 0 : m_nodes[node].firstChild) + index]; }

    int next(int node) const { return node + 1 < count() ? node + 1 : -1; } // in tree order
    bool isAncestor(int ancestor, int node) const;                          // strict: a node is not its own ancestor

private:
    struct Node
    {
        int row;
        int parent;
        int level;
        int firstChild; // offset into m_children
        int childCount;
        int indexInParent;
    };

    static void cutLoops(std::vector<int> &parents);
    void numberInTreeOrder(const std::vector<int> &parents);
    void placeChildren();

    std::vector<Node> m_nodes;
    std::vector<int> m_nodeOfRow;
    std::vector<int> m_children;
    int m_rootCount = 0;
};

} // namespace fw
