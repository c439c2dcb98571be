#pragma once

#include <vector>

namespace fw {

// The shape of a tree list: which node hangs under which, in plain arrays of ints.
//
// A node's id is the recordset row it was built from. Children are stored contiguously (roots
// first, then the children of each node in turn), so a node needs a handful of ints and the
// whole tree a few allocations, whatever its size. Tree order visits each node followed by all
// its descendants; it does not depend on what is expanded.
class TreeListStructure
{
public:
    // parents[row] is the parent row of each row, or -1 for a root. Every other value that
    // names no row also makes a root. Parent chains that loop back are cut so that every node
    // is reachable: the node where the loop was found becomes a root. Linear in the row count.
    void build(std::vector<int> parents);
    void clear();

    int count() const { return int(m_nodes.size()); }
    bool contains(int node) const { return node >= 0 && node < count(); }

    int parent(int node) const { return m_nodes[node].parent; }
    int level(int node) const { return m_nodes[node].level; }
    int indexInParent(int node) const { return m_nodes[node].indexInParent; }

    // Children of a node; node -1 stands for the invisible root, whose children are the roots.
    int childCount(int node) const { return node < 0 ? m_rootCount : m_nodes[node].childCount; }
    int child(int node, int index) const
    {
        return m_children[(node < 0 ? 0 : m_nodes[node].firstChild) + index];
    }

    // Tree order.
    int position(int node) const { return m_nodes[node].position; }
    int nodeAt(int position) const { return m_order[position]; }
    int next(int node) const
    {
        const int following = m_nodes[node].position + 1;
        return following < count() ? m_order[following] : -1;
    }

    bool isAncestor(int ancestor, int node) const; // strict: a node is not its own ancestor

private:
    struct Node
    {
        int parent;
        int level;
        int firstChild;    // offset into m_children
        int childCount;
        int indexInParent;
        int position;      // in tree order
    };

    static void cutLoops(std::vector<int> &parents);
    void placeChildren(const std::vector<int> &parents);
    void orderNodes();

    std::vector<Node> m_nodes;
    std::vector<int> m_children;
    std::vector<int> m_order;
    int m_rootCount = 0;
};

} // namespace fw
