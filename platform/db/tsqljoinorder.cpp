// RIGHT OUTER JOIN chains written in LEFT OUTER JOIN order, and parenthesised joins unnested.
//
// SQLite runs A RIGHT JOIN (B JOIN C ON ...) ON ... by copying the parenthesised join aside and
// scanning that copy once per row of A, and it cannot lead with a table it must keep whole.
// The same relation written as B JOIN C ON ... LEFT JOIN A ON ... is planned from B's indexes.
// A LEFT JOIN (P LEFT JOIN Q ON ...) ON ... is copied aside the same way, all of P, for every
// statement; written as one chain it reads P through its index for each row of A.
// Three equivalences do the rewriting, each used only where it provably holds:
//
//   A RIGHT JOIN B ON c                 =  B LEFT JOIN A ON c
//   (A op B ON c) op2 D ON d            =  A op B ON c op2 D ON d             (joins read left to right)
//   X op (P op2 Q ON d) ON c            =  X op P ON c op2 Q ON d
//
// The last one holds when c names only tables of X and P, and either op is INNER (and the
// inner joins are INNER or LEFT), or op and every inner join are LEFT and each inner condition
// is false whenever the tables before it are all null (a comparison of one of their columns).
// Anything else keeps its parentheses. Columns named by * would come out in another order,
// so a select list with * keeps the clause as written.
#include "tsqlrewriter.h"

namespace db {

using Kind = TsqlTokenKind;

struct TsqlRewriter::JoinNode
{
    enum class Op { Table, Inner, Left, Right };
    Op op = Op::Table;
    bool turned = false;           // a RIGHT JOIN written the other way round
    std::vector<FromSegment> segs; // of a table, view or subquery: its name, alias and hints
    QString name;                  // the name its columns are qualified with
    std::unique_ptr<JoinNode> left, right;
    int opB = 0, opE = 0;  // the join operator as written
    int on = 0, condE = 0; // ON and the end of its condition
};

struct TsqlRewriter::JoinChain
{
    struct Step
    {
        const JoinNode *join = nullptr;         // operator and condition
        const JoinNode *table = nullptr;        // a single table joined ...
        std::shared_ptr<const JoinChain> group; // ... or a join kept in parentheses
    };
    const JoinNode *first = nullptr;
    std::vector<Step> steps;
    bool unnested = false; // a parenthesised join was written into the chain

    void collectNames(QStringList &names) const
    {
        names.append(first->name);
        for (const Step &step : steps) {
            if (step.table)
                names.append(step.table->name);
            else
                step.group->collectNames(names);
        }
    }
};

namespace {

bool hasRightJoin(const TsqlRewriter::JoinNode *node);

void turnRightJoins(TsqlRewriter::JoinNode &node)
{
    using Op = TsqlRewriter::JoinNode::Op;
    if (node.op == Op::Table)
        return;
    turnRightJoins(*node.left);
    turnRightJoins(*node.right);
    if (node.op == Op::Right) {
        std::swap(node.left, node.right);
        node.op = Op::Left;
        node.turned = true;
    }
}

bool hasRightJoin(const TsqlRewriter::JoinNode *node)
{
    using Op = TsqlRewriter::JoinNode::Op;
    if (node->op == Op::Table)
        return false;
    return node->op == Op::Right || hasRightJoin(node->left.get()) || hasRightJoin(node->right.get());
}

bool isComparison(const TsqlToken &t)
{
    if (t.kind != Kind::Symbol)
        return false;
    const QStringView op = t.text;
    return op == u"=" || op == u"<" || op == u">" || op == u"<=" || op == u">=" || op == u"<>" || op == u"!=";
}

// Operands that cannot turn a null into something else: names, literals, arithmetic, calls
// and parenthesised groups (whose inside cannot escape to the comparison).
bool isPlainOperand(const std::vector<TsqlToken> &t, int b, int e)
{
    if (b >= e)
        return false;
    for (int k = b; k < e; ++k) {
        const TsqlToken &token = t[k];
        if (token.isSymbol(u'(')) {
            k = token.match;
            continue;
        }
        switch (token.kind) {
        case Kind::Word:
            if (token.keyword != TsqlKeyword::None)
                return false; // IS, NOT, LIKE, IN, CASE, NULL ...
            break;
        case Kind::QuotedName:
        case Kind::String:
        case Kind::Number: break;
        case Kind::Symbol:
            if (!(token.isSymbol(u'.') || token.isSymbol(u'+') || token.isSymbol(u'-') || token.isSymbol(u'*')
                  || token.isSymbol(u'/') || token.isSymbol(u'%')))
                return false;
            break;
        default: return false;
        }
    }
    return true;
}

} // namespace

bool TsqlRewriter::emitFromInJoinOrder(int b, int e)
{
    if (m_listHasStar)
        return false;
    int i = b;
    std::unique_ptr<JoinNode> tree = parseJoinTree(i, e);
    if (!tree || i != e)
        return false;
    const bool rightJoins = hasRightJoin(tree.get());
    if (rightJoins)
        turnRightJoins(*tree);
    const JoinChain chain = joinChain(*tree);
    if (!rightJoins && !chain.unnested)
        return false;
    emitJoinChain(chain);
    return true;
}

// One operand and the joins that follow it up to the first ON that is not theirs, as the
// clause nests without parentheses. Null for anything the clause may hold that is left as
// written (commas, CROSS and FULL joins, a parenthesised join with an alias).
std::unique_ptr<TsqlRewriter::JoinNode> TsqlRewriter::parseJoinTree(int &i, int e)
{
    std::unique_ptr<JoinNode> node = parseJoinOperand(i, e);
    while (node && i < e) {
        const int length = joinOperatorLength(i, e);
        if (length == 0)
            break;
        auto join = std::make_unique<JoinNode>();
        if (word(i, e, TsqlWord::Join) || word(i, e, TsqlWord::Inner))
            join->op = JoinNode::Op::Inner;
        else if (word(i, e, TsqlWord::Left))
            join->op = JoinNode::Op::Left;
        else if (word(i, e, TsqlWord::Right))
            join->op = JoinNode::Op::Right;
        else
            return nullptr;
        join->opB = i;
        join->opE = i + length;
        i += length;
        join->right = parseJoinTree(i, e);
        if (!join->right || !word(i, e, TsqlWord::On))
            return nullptr;
        join->on = i;
        join->condE = conditionEnd(i + 1, e);
        i = join->condE;
        join->left = std::move(node);
        node = std::move(join);
    }
    return node;
}

std::unique_ptr<TsqlRewriter::JoinNode> TsqlRewriter::parseJoinOperand(int &i, int e)
{
    if (i >= e)
        return nullptr;
    if (m_t[i].isSymbol(u'(') && !word(i + 1, m_t[i].match, TsqlWord::Select)) {
        const int close = m_t[i].match;
        int k = i + 1;
        std::unique_ptr<JoinNode> inner = parseJoinTree(k, close);
        if (!inner || k != close)
            return nullptr;
        i = close + 1;
        if (i < e && !word(i, e, TsqlWord::On) && joinOperatorLength(i, e) == 0)
            return nullptr;
        return inner;
    }
    auto table = std::make_unique<JoinNode>();
    i = parseTablePrimary(i, e, table->segs);
    for (const FromSegment &seg : table->segs) {
        if (seg.kind == FromSegment::Name)
            table->name = m_t[seg.e - 1].nameText();
        else if (seg.kind == FromSegment::Tokens)
            table->name = m_t[seg.e - 1].nameText(); // the alias, with or without AS
    }
    return table;
}

TsqlRewriter::JoinChain TsqlRewriter::joinChain(const JoinNode &node) const
{
    JoinChain chain;
    if (node.op == JoinNode::Op::Table) {
        chain.first = &node;
        return chain;
    }
    chain = joinChain(*node.left);
    JoinChain::Step step;
    step.join = &node;
    if (node.right->op == JoinNode::Op::Table) {
        step.table = node.right.get();
        chain.steps.push_back(step);
        return chain;
    }
    JoinChain inner = joinChain(*node.right);
    chain.unnested = chain.unnested || inner.unnested;
    if (joinsAsChain(node, chain, inner)) {
        step.table = inner.first;
        chain.steps.push_back(step);
        chain.steps.insert(chain.steps.end(), inner.steps.begin(), inner.steps.end());
        chain.unnested = true;
    } else {
        step.group = std::make_shared<const JoinChain>(std::move(inner));
        chain.steps.push_back(step);
    }
    return chain;
}

// Whether outer JOIN (inner) ON ... reads the same as outer JOIN inner.first ON ... and then
// inner's own joins.
bool TsqlRewriter::joinsAsChain(const JoinNode &join, const JoinChain &outer, const JoinChain &inner) const
{
    QStringList visible;
    outer.collectNames(visible);
    visible.append(inner.first->name);
    if (!namesOnly(join.on + 1, join.condE, visible))
        return false;

    QStringList before {inner.first->name};
    for (const JoinChain::Step &step : inner.steps) {
        const JoinNode::Op op = step.join->op;
        if (join.op == JoinNode::Op::Inner) {
            if (op != JoinNode::Op::Inner && op != JoinNode::Op::Left)
                return false;
            continue;
        }
        if (op != JoinNode::Op::Left || !rejectsNulls(step.join->on + 1, step.join->condE, before))
            return false;
        if (step.table)
            before.append(step.table->name);
        else
            step.group->collectNames(before);
    }
    return true;
}

// Every column of the condition is qualified by one of the names, and it reads no subquery.
bool TsqlRewriter::namesOnly(int b, int e, const QStringList &names) const
{
    for (int k = b; k < e; ++k) {
        const TsqlToken &t = m_t[k];
        if (t.isSymbol(u'(') && word(k + 1, e, TsqlWord::Select))
            return false;
        const bool name = t.kind == Kind::QuotedName || (t.kind == Kind::Word && t.keyword == TsqlKeyword::None);
        if (!name)
            continue;
        int last = k;
        while (last + 2 < e && m_t[last + 1].isSymbol(u'.') && m_t[last + 2].isName())
            last += 2;
        if (last == k) {
            if (symbol(k + 1, e, u'('))
                continue; // a function
            return false; // a column of no named table
        }
        if (!names.contains(m_t[last - 2].nameText(), Qt::CaseInsensitive))
            return false;
        k = last;
    }
    return true;
}

// The condition is not true when every column of the named tables is null: one of the terms
// joined by AND compares a column of theirs, as it stands, with a plain operand.
bool TsqlRewriter::rejectsNulls(int b, int e, const QStringList &names) const
{
    QVarLengthArray<std::pair<int, int>, 8> terms;
    int start = b;
    bool between = false;
    for (int k = b; k < e; ++k) {
        const TsqlToken &t = m_t[k];
        if (t.isSymbol(u'(')) {
            k = t.match;
            continue;
        }
        if (t.is(TsqlWord::Or))
            return false;
        if (t.is(TsqlWord::Between))
            between = true;
        if (t.is(TsqlWord::And)) {
            if (between) {
                between = false;
                continue;
            }
            terms.append({start, k});
            start = k + 1;
        }
    }
    terms.append({start, e});

    for (const auto &[tb, te] : terms) {
        int comparison = -1;
        int comparisons = 0;
        for (int k = tb; k < te; ++k) {
            if (m_t[k].isSymbol(u'(')) {
                k = m_t[k].match;
                continue;
            }
            if (isComparison(m_t[k])) {
                comparison = k;
                ++comparisons;
            }
        }
        if (comparisons != 1)
            continue;
        const bool leftSide = isQualifiedColumn(tb, comparison, names) && isPlainOperand(m_t, comparison + 1, te);
        const bool rightSide = isQualifiedColumn(comparison + 1, te, names) && isPlainOperand(m_t, tb, comparison);
        if (leftSide || rightSide)
            return true;
    }
    return false;
}

// Exactly table.column (or schema.table.column) with the table among the names.
bool TsqlRewriter::isQualifiedColumn(int b, int e, const QStringList &names) const
{
    const int length = e - b;
    if (length != 3 && length != 5)
        return false;
    for (int k = b; k < e; ++k) {
        const bool dot = (k - b) % 2 == 1;
        if (dot ? !m_t[k].isSymbol(u'.') : !m_t[k].isName())
            return false;
    }
    return names.contains(m_t[e - 3].nameText(), Qt::CaseInsensitive);
}

void TsqlRewriter::emitJoinChain(const JoinChain &chain)
{
    emitJoinTable(*chain.first);
    for (const JoinChain::Step &step : chain.steps) {
        const JoinNode &join = *step.join;
        if (join.turned) {
            m_out += QLatin1StringView(" LEFT OUTER JOIN");
        } else {
            m_out += u' ';
            m_suppressLead = true;
            putRange(join.opB, join.opE);
        }
        if (step.table) {
            emitJoinTable(*step.table);
        } else {
            m_out += QLatin1StringView(" (");
            m_suppressLead = true;
            const qsizetype start = m_out.size();
            emitJoinChain(*step.group);
            if (m_out.size() > start && m_out[start] == u' ')
                m_out.remove(start, 1);
            m_out += u')';
        }
        m_out += u' ';
        m_suppressLead = true;
        put(join.on);
        emitExpressionList(join.on + 1, join.condE);
    }
}

void TsqlRewriter::emitJoinTable(const JoinNode &table)
{
    m_out += u' ';
    m_suppressLead = true;
    for (const FromSegment &seg : table.segs)
        emitFromSegment(seg);
}

} // namespace db
