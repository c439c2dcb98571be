#pragma once

#include "democontext.h"
#include "demoreference.h"
#include "demosubjects.h"

#include <optional>
#include <span>
#include <vector>

namespace dbsetup {

struct TypeSpec
{
    const char *code;
    const char *description;
    int kind = 0;                  // GD01_INDTIPOSOGG
    std::optional<int> divisionId; // GD01_IDDIV_CO1A
    std::optional<int> priorityId; // GD01_ID_LP09
};

struct TreeShape
{
    int roots = 1;
    int levels = 3; // 3 means roots, children and grandchildren
    int minFanout = 2;
    int maxFanout = 4;
    bool nullParentRoots = false;            // roots written with a NULL parent instead of 0
    std::optional<int> structuralPriorityId; // set on roots and on some nodes
    std::optional<int> northPriorityId;      // localised priorities by the subject's place
    std::optional<int> southPriorityId;
};

struct DemoNode
{
    int id = 0;
    int parentId = 0;
    int level = 0;
    int subject = 0;
    char macroArea = 'N';
    QDate start;
    QDate end;
    int promoRule = 0; // GD02_INDEREPROMO
    QString guid;
    int state = 0; // GD02_ID_WF02
};

// Writes classification types and their trees of nodes, with the node fields a real company
// would have: periods from 2020 to the open end 31/12/2099, billing rules, descriptions,
// price-list priorities, promotion inheritance and workflow states.
class TreeWriter
{
public:
    TreeWriter(DemoContext &context, int company);

    int writeType(const TypeSpec &type); // returns GD01_ID
    QString lastTypeGuid() const { return m_lastTypeGuid; }

    // Places the subjects in a tree of the given shape, depth first; subjects left over when the
    // shape is full stay out of the tree. Returns the nodes in insertion order.
    std::vector<DemoNode> writeTree(int typeId, int kind, const TreeShape &shape,
                                    std::span<const DemoSubject> subjects);

private:
    DemoNode writeNode(int typeId, int kind, const TreeShape &shape, const DemoNode *parent,
                       const DemoSubject &subject);
    void grow(int typeId, int kind, const TreeShape &shape, const DemoNode &parent, int budget,
              std::span<const DemoSubject> subjects, std::size_t &next, std::vector<DemoNode> &nodes);

    DemoContext &m_context;
    int m_company;
    SqliteStatement m_type;
    SqliteStatement m_node;
    QString m_lastTypeGuid;
};

} // namespace dbsetup
