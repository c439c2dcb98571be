#include "framework/treelist/treeliststructure.h"

#include <cstddef>
#include <cstdint>

namespace fw {

void TreeListStructure::clear()
{
    m_nodes.clear();
    m_nodeOfRow.clear();
    m_children.clear();
    m_rootCount = 0;
}

void TreeListStructure::build(std::vector<int> parents)
{
    clear();
    const int n = int(parents.size());
    for (int &parent : parents) {
        if (parent < 0 || parent >= n)
            parent = -1;
    }
    cutLoops(parents);
    numberInTreeOrder(parents);
    placeChildren();
}

// Walks up from every row not seen yet; meeting a row of the walk in progress means a loop.
// Each row is walked once, so the whole pass is linear.
void TreeListStructure::cutLoops(std::vector<int> &parents)
{
    enum : std::uint8_t { Unseen, Walking, Done };
    std::vector<std::uint8_t> state(parents.size(), Unseen);
    std::vector<int> walk;
    for (int start = 0; start < int(parents.size()); ++start) {
        if (state[start] != Unseen)
            continue;
        walk.clear();
        int row = start;
        while (row >= 0 && state[row] == Unseen) {
            state[row] = Walking;
            walk.push_back(row);
            row = parents[row];
        }
        if (row >= 0 && state[row] == Walking)
            parents[row] = -1;
        for (int walked : walk)
            state[walked] = Done;
    }
}

// Groups the rows by parent (a counting sort, so siblings keep the row order), then numbers
// them depth first with an explicit stack, so that deep trees cannot overflow the call stack.
void TreeListStructure::numberInTreeOrder(const std::vector<int> &parents)
{
    const int n = int(parents.size());
    std::vector<int> firstChildRow(std::size_t(n) + 1, 0);
    for (int row = 0; row < n; ++row) {
        if (parents[row] >= 0)
            ++firstChildRow[parents[row]];
        else
            ++m_rootCount;
    }
    int offset = m_rootCount;
    for (int row = 0; row < n; ++row) {
        const int children = firstChildRow[row];
        firstChildRow[row] = offset;
        offset += children;
    }
    std::vector<int> childRows(static_cast<std::size_t>(n));
    int roots = 0;
    for (int row = 0; row < n; ++row) {
        if (parents[row] < 0)
            childRows[roots++] = row;
        else
            childRows[firstChildRow[parents[row]]++] = row;
    }
    // firstChildRow[row] now points one past the row's children; they start where the
    // previous row's end.

    m_nodes.resize(std::size_t(n));
    m_nodeOfRow.resize(std::size_t(n));
    struct Pending
    {
        int row;
        int parent;
        int indexInParent;
    };
    std::vector<Pending> stack;
    for (int i = m_rootCount - 1; i >= 0; --i)
        stack.push_back({childRows[i], -1, i});
    int next = 0;
    while (!stack.empty()) {
        const Pending pending = stack.back();
        stack.pop_back();
        const int id = next++;
        const int begin = pending.row == 0 ? m_rootCount : firstChildRow[pending.row - 1];
        const int end = firstChildRow[pending.row];
        m_nodeOfRow[pending.row] = id;
        m_nodes[id] = Node {pending.row, pending.parent, pending.parent < 0 ? 0 : m_nodes[pending.parent].level + 1,
                            0,           end - begin,    pending.indexInParent};
        for (int i = end - 1; i >= begin; --i)
            stack.push_back({childRows[i], id, i - begin});
    }
}

// The children of every node, by node id, contiguously and in sibling order.
void TreeListStructure::placeChildren()
{
    int offset = m_rootCount;
    for (Node &node : m_nodes) {
        node.firstChild = offset;
        offset += node.childCount;
    }
    m_children.resize(m_nodes.size());
    for (int id = 0; id < count(); ++id) {
        const Node &node = m_nodes[id];
        m_children[(node.parent < 0 ? 0 : m_nodes[node.parent].firstChild) + node.indexInParent] = id;
    }
}

bool TreeListStructure::isAncestor(int ancestor, int node) const
{
    if (!contains(ancestor) || !contains(node) || node <= ancestor)
        return false;
    for (int up = parent(node); up >= ancestor; up = parent(up)) {
        if (up == ancestor)
            return true;
    }
    return false;
}

} // namespace fw
