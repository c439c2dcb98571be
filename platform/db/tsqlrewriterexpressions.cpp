#include "tsqlrewriter.h"

#include "tsqlerror.h"

#include <QVarLengthArray>

namespace db {

using Kind = TsqlTokenKind;

// ---------------------------------------------------------------------------------------
// Expression lists: select lists, conditions, argument lists, SET lists.

TsqlRewriter::ExprInfo TsqlRewriter::emitExpressionList(int b, int e)
{
    ExprInfo single;
    int chains = 0;
    bool boundaries = false;
    bool branch = false;
    bool branchString = false;
    int i = b;
    while (i < e) {
        if (isExpressionBoundary(i)) {
            const TsqlToken &t = m_t[i];
            branch = t.is(TsqlWord::Then) || t.is(TsqlWord::Else);
            put(i++);
            boundaries = true;
            continue;
        }
        ExprInfo info;
        i = emitChain(i, e, info);
        if (branch && info.isString)
            branchString = true;
        branch = false;
        single = info;
        ++chains;
    }
    ExprInfo result;
    if (chains == 1 && !boundaries)
        result = single;
    result.branchString = branchString;
    return result;
}

bool TsqlRewriter::isExpressionBoundary(int i) const
{
    const TsqlToken &t = m_t[i];
    if (t.kind == Kind::Symbol) {
        const QStringView op = t.text;
        if (op.size() == 1)
            return op[0] == u',' || op[0] == u'=' || op[0] == u'<' || op[0] == u'>';
        if (op == u"!<" || op == u"!>")
            unsupported(i);
        return op == u"<=" || op == u">=" || op == u"<>" || op == u"!=" || op == u"==";
    }
    if (t.kind != Kind::Word)
        return false;
    switch (t.keyword) {
    case TsqlKeyword::Boundary: return true;
    case TsqlKeyword::Structure: unsupported(i);
    default: return false;
    }
}

// Operands joined by '+'. When one of them is known to be a string the whole chain is a
// concatenation, as on the server, and every '+' of it becomes '||'. An operand that is
// itself an expression is parenthesised, since '||' binds tighter than any other operator.
int TsqlRewriter::emitChain(int i, int e, ExprInfo &info)
{
    struct Piece
    {
        qsizetype start;
        qsizetype end;
        qsizetype plus; // output position of the '+' before it
        bool compound;
    };
    QVarLengthArray<Piece, 8> pieces;
    bool anyString = false;
    bool anyDate = false;
    bool anyNumber = false;
    ExprInfo first;

    qsizetype plus = -1;
    while (true) {
        const qsizetype before = m_out.size();
        ExprInfo operand;
        bool compound = false;
        i = emitOperand(i, e, operand, compound);
        qsizetype start = before;
        while (start < m_out.size() && m_out[start].isSpace())
            ++start;
        if (pieces.isEmpty())
            first = operand;
        pieces.append(Piece {start, m_out.size(), plus, compound});
        anyString = anyString || operand.isString;
        anyDate = anyDate || operand.isDate;
        anyNumber = anyNumber || operand.isNumber;
        if (!symbol(i, e, u'+'))
            break;
        putText(i++, QString());
        plus = m_out.size();
        m_out += u'+';
    }

    if (pieces.size() == 1) {
        info = first;
        return i;
    }
    if (anyDate)
        throwUnsupportedTsql(QStringLiteral("+ con date"));
    info = ExprInfo();
    if (!anyString) {
        info.isNumber = anyNumber;
        return i;
    }
    // The server adds a text and a number as numbers (or fails): no concatenation then.
    if (anyNumber)
        throwUnsupportedTsql(QStringLiteral("+ tra testo e numero"));
    info.isString = true;
    for (qsizetype k = pieces.size() - 1; k >= 0; --k) {
        const Piece &p = pieces[k];
        if (p.compound) {
            m_out.insert(p.end, u')');
            m_out.insert(p.start, u'(');
        }
        if (p.plus >= 0)
            m_out.replace(p.plus, 1, QLatin1StringView("||"));
    }
    return i;
}

// Primaries joined by operators other than '+', with their unary signs.
int TsqlRewriter::emitOperand(int i, int e, ExprInfo &info, bool &compound)
{
    compound = false;
    bool first = true;
    bool date = false;
    bool arithmetic = false;
    while (true) {
        while (i < e && (m_t[i].isSymbol(u'-') || m_t[i].isSymbol(u'+') || m_t[i].isSymbol(u'~'))) {
            put(i++);
            compound = arithmetic = true;
        }
        if (i >= e)
            throwUnsupportedTsql(QStringLiteral("espressione incompleta"));
        ExprInfo primary;
        i = emitPrimary(i, e, primary);
        date = date || primary.isDate;
        if (first)
            info = primary;
        first = false;
        if (i < e && m_t[i].kind == Kind::Symbol) {
            const QStringView op = m_t[i].text;
            const bool concatenation = op == u"||"; // SQLite's own, in text already translated
            bool isOperator = concatenation;
            if (op.size() == 1) {
                switch (op[0].unicode()) {
                case u'-':
                case u'*':
                case u'/':
                case u'%':
                case u'&':
                case u'|':
                case u'^': isOperator = true; break;
                default: break;
                }
            }
            if (isOperator) {
                put(i++);
                compound = true;
                arithmetic = arithmetic || !concatenation;
                continue;
            }
        }
        break;
    }
    if (arithmetic) {
        if (date)
            throwUnsupportedTsql(QStringLiteral("aritmetica sulle date"));
        info = ExprInfo();
        info.isNumber = true;
    } else if (compound) {
        info = ExprInfo();
        info.isString = true;
    }
    return i;
}

int TsqlRewriter::emitPrimary(int i, int e, ExprInfo &info)
{
    const TsqlToken &t = m_t[i];
    switch (t.kind) {
    case Kind::String:
        put(i);
        info.isString = true;
        return i + 1;
    case Kind::Number:
        put(i);
        info.isNumber = true;
        return i + 1;
    case Kind::Parameter: put(i); return i + 1;
    case Kind::Variable: unsupported(i);
    case Kind::QuotedName:
    case Kind::TempName: return emitName(i, e);
    case Kind::Symbol:
        if (t.isSymbol(u'(')) {
            const int close = t.match;
            put(i);
            if (word(i + 1, close, TsqlWord::Select)) {
                emitSelect(i + 1, close, SelectRole::Subquery, false);
            } else {
                const ExprInfo inner = emitExpressionList(i + 1, close);
                info.isString = inner.isString;
                info.isDate = inner.isDate;
                info.isNumber = inner.isNumber;
            }
            put(close);
            return close + 1;
        }
        if (t.isSymbol(u'*')) {
            put(i);
            return i + 1;
        }
        unsupported(i);
    case Kind::Word: break;
    }

    const TsqlKeyword keyword = t.keyword;
    if (t.is(TsqlWord::Null)) {
        put(i);
        return i + 1;
    }
    if (t.is(TsqlWord::Case))
        return emitCase(i, e, info);
    if (keyword != TsqlKeyword::None)
        unsupported(i);
    if (symbol(i + 1, e, u'('))
        return emitFunction(i, info);
    if (t.is(TsqlWord::CurrentTimestamp)) {
        putText(i, u"datetime('now','localtime')");
        info.isDate = true;
        return i + 1;
    }
    const int end = emitName(i, e);
    if (symbol(end, e, u'(')) { // schema.function(...)
        QString name;
        for (int k = i; k < end; ++k)
            name += m_t[k].text;
        throwUnsupportedTsql(name);
    }
    return end;
}

int TsqlRewriter::emitCase(int i, int e, ExprInfo &info)
{
    int depth = 0;
    int end = -1;
    for (int k = i; k < e; ++k) {
        const TsqlToken &t = m_t[k];
        if (t.isSymbol(u'(')) {
            k = t.match;
        } else if (t.is(TsqlWord::Case)) {
            ++depth;
        } else if (t.is(TsqlWord::End) && --depth == 0) {
            end = k;
            break;
        }
    }
    if (end < 0)
        throwUnsupportedTsql(QStringLiteral("CASE senza END"));
    put(i);
    const ExprInfo inner = emitExpressionList(i + 1, end);
    put(end);
    info.isString = inner.branchString;
    return end + 1;
}

// name, schema.name, alias.column, alias.*
int TsqlRewriter::emitName(int i, int e)
{
    put(i++);
    while (i + 1 < e && m_t[i].isSymbol(u'.') && (m_t[i + 1].isName() || m_t[i + 1].isSymbol(u'*'))) {
        put(i);
        put(i + 1);
        i += 2;
    }
    return i;
}

} // namespace db
