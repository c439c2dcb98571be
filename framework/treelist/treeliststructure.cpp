#include "framework/treelist/treeliststructure.h"

#include <cstdint>

namespace fw {

void TreeListStructure::clear()
{
    m_nodes.clear();
    m_children.clear();
    m_order.clear();
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
    placeChildren(parents);
    orderNodes();
}

// Walks up from every node not seen yet; meeting a node of the walk in progress means a loop.
// Each node is walked once, so the whole pass is linear.
void TreeListStructure::cutLoops(std::vector<int> &parents)
{
    enum : std::uint8_t { Unseen, Walking, Done };
    std::vector<std::uint8_t> state(parents.size(), Unseen);
    std::vector<int> walk;
    for (int start = 0; start < int(parents.size()); ++start) {
        if (state[start] != Unseen)
            continue;
        walk.clear();
        int node = start;
        while (node >= 0 && state[node] == Unseen) {
            state[node] = Walking;
            walk.push_back(node);
            node = parents[node];
        }
        if (node >= 0 && state[node] == Walking)
            parents[node] = -1;
        for (int walked : walk)
            state[walked] = Done;
    }
}

// A counting sort of the rows by parent: children land contiguously and keep the row order.
void TreeListStructure::placeChildren(const std::vector<int> &parents)
{
    const int n = int(parents.size());
    m_nodes.assign(n, Node{-1, 0, 0, 0, 0, 0});
    for (int node = 0; node < n; ++node) {
        m_nodes[node].parent = parents[node];
        if (parents[node] < 0)
            ++m_rootCount;
        else
            ++m_nodes[parents[node]].childCount;
    }
    int offset = m_rootCount;
    for (Node &node : m_nodes) {
        node.firstChild = offset;
        offset += node.childCount;
    }
    m_children.resize(n);
    int roots = 0;
    std::vector<int> filled(n, 0);
    for (int node = 0; node < n; ++node) {
        const int parent = parents[node];
        if (parent < 0) {
            m_nodes[node].indexInParent = roots;
            m_children[roots++] = node;
        } else {
            const int index = filled[parent]++;
            m_nodes[node].indexInParent = index;
            m_children[m_nodes[parent].firstChild + index] = node;
        }
    }
}

// Depth first with an explicit stack, so deep trees cannot overflow the call stack.
void TreeListStructure::orderNodes()
{
    const int n = count();
    m_order.clear();
    m_order.reserve(n);
    std::vector<int> stack;
    for (int root = m_rootCount - 1; root >= 0; --root)
        stack.push_back(m_children[root]);
    while (!stack.empty()) {
        const int node = stack.back();
        stack.pop_back();
        Node &data = m_nodes[node];
        data.position = int(m_order.size());
        data.level = data.parent < 0 ? 0 : m_nodes[data.parent].level + 1;
        m_order.push_back(node);
        for (int i = data.childCount - 1; i >= 0; --i)
            stack.push_back(m_children[data.firstChild + i]);
    }
}

bool TreeListStructure::isAncestor(int ancestor, int node) const
{
    if (!contains(ancestor) || !contains(node))
        return false;
    for (int up = parent(node); up >= 0; up = parent(up)) {
        if (up == ancestor)
            return true;
    }
    return false;
}

} // namespace fw
