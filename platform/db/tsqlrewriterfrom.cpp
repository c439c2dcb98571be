// The FROM clause: its table expressions parsed into segments (names, nested joins, subqueries,
// conditions, hints) and written out again, in the join order SQLite can plan when that keeps
// the rows.
#include "tsqlrewriter.h"

#include "tsqlerror.h"

namespace db {

using Kind = TsqlTokenKind;

void TsqlRewriter::emitFrom(int b, int e)
{
    std::vector<FromSegment> segs;
    segs.reserve(16);
    bool isJoin = false;
    const int end = parseTableExpression(b, e, false, isJoin, segs);
    if (end < e)
        unsupported(end);

    // The join order is chosen only once the whole clause is known to be well formed.
    if (emitFromInJoinOrder(b, e))
        return;
    for (const FromSegment &seg : segs)
        emitFromSegment(seg);
}

void TsqlRewriter::emitFromSegment(const FromSegment &seg)
{
    if (seg.opens > 0) {
        putText(seg.b, QString(seg.opens, u'('));
        m_suppressLead = true;
    }
    switch (seg.kind) {
    case FromSegment::Name: emitName(seg.b, seg.e); break;
    case FromSegment::Tokens:
        for (int k = seg.b; k < seg.e; ++k)
            put(k);
        break;
    case FromSegment::Skip: m_suppressLead = false; break;
    case FromSegment::Subquery:
        put(seg.b);
        emitSelect(seg.b + 1, seg.e - 1, SelectRole::Subquery, false);
        put(seg.e - 1);
        break;
    case FromSegment::ParenJoin:
        put(seg.b);
        emitFrom(seg.b + 1, seg.e - 1);
        put(seg.e - 1);
        break;
    case FromSegment::Condition:
        put(seg.b);
        emitExpressionList(seg.b + 1, seg.e);
        break;
    }
    if (seg.closes > 0)
        m_out += QString(seg.closes, u')');
}

int TsqlRewriter::parseTableExpression(int i, int e, bool nested, bool &isJoin, std::vector<FromSegment> &segs)
{
    isJoin = false;
    i = parseTablePrimary(i, e, segs);
    while (i < e) {
        const int opLength = joinOperatorLength(i, e);
        if (opLength == 0) {
            if (!nested && m_t[i].isSymbol(u',')) {
                segs.push_back({FromSegment::Tokens, i, i + 1});
                i = parseTablePrimary(i + 1, e, segs);
                isJoin = true;
                continue;
            }
            break;
        }
        const bool cross = m_t[i].is(TsqlWord::Cross);
        segs.push_back({FromSegment::Tokens, i, i + opLength});
        i += opLength;
        isJoin = true;
        if (cross) {
            i = parseTablePrimary(i, e, segs);
            continue;
        }
        const size_t rightFirst = segs.size();
        bool rightIsJoin = false;
        i = parseTableExpression(i, e, true, rightIsJoin, segs);
        if (!word(i, e, TsqlWord::On))
            throwUnsupportedTsql(QStringLiteral("JOIN senza ON"));
        if (rightIsJoin) {
            segs[rightFirst].opens++;
            segs.back().closes++;
        }
        const int end = conditionEnd(i + 1, e);
        if (end == i + 1)
            unsupported(i);
        segs.push_back({FromSegment::Condition, i, end});
        i = end;
    }
    return i;
}

int TsqlRewriter::parseTablePrimary(int i, int e, std::vector<FromSegment> &segs)
{
    if (i >= e)
        throwUnsupportedTsql(QStringLiteral("FROM senza tabella"));
    const TsqlToken &t = m_t[i];
    if (t.isSymbol(u'(')) {
        const int close = t.match;
        if (close == i + 1)
            unsupported(i);
        segs.push_back(
            {word(i + 1, close, TsqlWord::Select) ? FromSegment::Subquery : FromSegment::ParenJoin, i, close + 1});
        return parseAliasAndHints(close + 1, e, segs);
    }
    if (!t.isName() || (t.kind == Kind::Word && t.keyword != TsqlKeyword::None))
        unsupported(i);
    int j = i + 1;
    while (j + 1 < e && m_t[j].isSymbol(u'.') && m_t[j + 1].isName())
        j += 2;
    if (symbol(j, e, u'(') && !isNolockHint(j))
        throwUnsupportedTsql(tokenText(i) + QStringLiteral("(...)"));
    segs.push_back({FromSegment::Name, i, j});
    return parseAliasAndHints(j, e, segs);
}

int TsqlRewriter::parseAliasAndHints(int i, int e, std::vector<FromSegment> &segs)
{
    bool alias = false;
    while (i < e) {
        if (word(i, e, TsqlWord::With) && symbol(i + 1, e, u'(')) {
            if (!isNolockHint(i + 1))
                throwUnsupportedTsql(QStringLiteral("WITH (") + tokenText(i + 2) + u')');
            segs.push_back({FromSegment::Skip, i, m_t[i + 1].match + 1});
            i = m_t[i + 1].match + 1;
        } else if (symbol(i, e, u'(') && isNolockHint(i)) {
            segs.push_back({FromSegment::Skip, i, m_t[i].match + 1});
            i = m_t[i].match + 1;
        } else if (!alias && word(i, e, TsqlWord::As) && i + 1 < e && m_t[i + 1].isName()) {
            segs.push_back({FromSegment::Tokens, i, i + 2});
            i += 2;
            alias = true;
        } else if (!alias
                   && (m_t[i].kind == Kind::QuotedName
                       || (m_t[i].kind == Kind::Word && m_t[i].keyword == TsqlKeyword::None))) {
            segs.push_back({FromSegment::Tokens, i, i + 1});
            ++i;
            alias = true;
        } else {
            break;
        }
    }
    return i;
}

// (NOLOCK) or (NOLOCK, READUNCOMMITTED): read hints that change nothing on SQLite.
bool TsqlRewriter::isNolockHint(int open) const
{
    const int close = m_t[open].match;
    if (close == open + 1)
        return false;
    for (int k = open + 1; k < close; ++k) {
        const bool hint = m_t[k].is(TsqlWord::Nolock) || m_t[k].is(TsqlWord::Readuncommitted);
        if ((k - open) % 2 == 1 ? !hint : !m_t[k].isSymbol(u','))
            return false;
    }
    return (close - open) % 2 == 0;
}

// Tokens of a join operator at i (JOIN, INNER JOIN, LEFT OUTER JOIN, CROSS JOIN ...), or 0.
int TsqlRewriter::joinOperatorLength(int i, int e) const
{
    if (word(i, e, TsqlWord::Join))
        return 1;
    if (word(i, e, TsqlWord::Inner)) {
        if (word(i + 1, e, TsqlWord::Join))
            return 2;
        unsupported(i + 1 < e ? i + 1 : i);
    }
    if (word(i, e, TsqlWord::Left) || word(i, e, TsqlWord::Right) || word(i, e, TsqlWord::Full)) {
        if (word(i + 1, e, TsqlWord::Join))
            return 2;
        if (word(i + 1, e, TsqlWord::Outer) && word(i + 2, e, TsqlWord::Join))
            return 3;
        return 0; // LEFT(...) as a function
    }
    if (word(i, e, TsqlWord::Cross)) {
        if (word(i + 1, e, TsqlWord::Join))
            return 2;
        throwUnsupportedTsql(QStringLiteral("CROSS ") + (i + 1 < e ? tokenText(i + 1).toUpper() : QString()));
    }
    if (word(i, e, TsqlWord::Outer))
        throwUnsupportedTsql(QStringLiteral("OUTER ") + (i + 1 < e ? tokenText(i + 1).toUpper() : QString()));
    return 0;
}

// End of an ON condition: the next join operator, ON, comma or clause at this depth.
int TsqlRewriter::conditionEnd(int i, int e) const
{
    for (; i < e; ++i) {
        const TsqlToken &t = m_t[i];
        if (t.isSymbol(u'(')) {
            i = t.match;
            continue;
        }
        if (t.isSymbol(u','))
            return i;
        if (t.kind != Kind::Word)
            continue;
        if (t.is(TsqlWord::On) || joinOperatorLength(i, e) > 0)
            return i;
    }
    return e;
}

// ---------------------------------------------------------------------------------------
// Tokens and output

} // namespace db
