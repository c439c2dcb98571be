#include "selectshape.h"

#include "databaseerror.h"
#include "tsqltokenizer.h"

namespace db {

namespace {

using Tokens = std::vector<TsqlToken>;

// An alias may be written as a name or as a string.
QString aliasText(const TsqlToken &token)
{
    return token.kind == TsqlTokenKind::String ? token.stringValue() : token.nameText();
}

// A column reference: name ('.' name)*; returns its last name, or empty.
QString columnReference(const Tokens &tokens, int from, int to)
{
    if ((to - from) % 2 == 0)
        return {};
    for (int i = from; i < to; ++i) {
        const bool expectName = (i - from) % 2 == 0;
        if (expectName ? !tokens[i].isName() : !tokens[i].isSymbol(u'.'))
            return {};
    }
    const TsqlToken &last = tokens[to - 1];
    if (last.keyword == TsqlKeyword::Value) // NULL or CASE
        return {};
    return last.nameText();
}

// A token an expression can end with, so that a name written after it is an alias.
bool endsExpression(const TsqlToken &token)
{
    return token.isName() || token.isSymbol(u')') || token.kind == TsqlTokenKind::String
        || token.kind == TsqlTokenKind::Number || token.kind == TsqlTokenKind::Variable;
}

SelectShape::Item selectItem(const Tokens &tokens, int from, int to)
{
    SelectShape::Item item;
    const int count = to - from;
    const TsqlToken &last = tokens[to - 1];
    if ((count == 1 && last.isSymbol(u'*'))
        || (count == 3 && tokens[from].isName() && tokens[from + 1].isSymbol(u'.') && last.isSymbol(u'*'))) {
        item.allColumns = true;
        return item;
    }
    int expressionEnd = to;
    QString alias;
    if (count >= 3 && tokens[to - 2].is(TsqlWord::As)) {
        alias = aliasText(last);
        expressionEnd = to - 2;
    } else if (count >= 3 && tokens[from].isName() && tokens[from + 1].isSymbol(u'=')) {
        item.outputName = tokens[from].nameText(); // "alias = expression"
        return item;
    } else if (count >= 2 && (last.isName() || last.kind == TsqlTokenKind::String) && !last.is(TsqlWord::End)
               && endsExpression(tokens[to - 2])) {
        alias = aliasText(last);
        expressionEnd = to - 1;
    }
    item.sourceColumn = columnReference(tokens, from, expressionEnd);
    item.outputName = alias.isEmpty() ? item.sourceColumn : alias;
    return item;
}

// Grouping, set operations or a second statement: rows that are not the table's rows.
bool makesOtherRows(const TsqlToken &token)
{
    return token.is(TsqlWord::Group) || token.is(TsqlWord::Having) || token.is(TsqlWord::Union)
        || token.is(TsqlWord::Except) || token.is(TsqlWord::Intersect) || token.isSymbol(u';');
}

bool endsFromClause(const TsqlToken &token)
{
    return makesOtherRows(token) || token.is(TsqlWord::Where) || token.is(TsqlWord::Order) || token.is(TsqlWord::Option)
        || token.is(TsqlWord::For);
}

} // namespace

SelectShape SelectShape::analyse(const QString &sql)
{
    SelectShape shape;
    Tokens tokens;
    try {
        tokens = tokenizeTsql(sql);
    } catch (const DatabaseError &) {
        return shape; // not a statement that can be read apart, so nothing to write back
    }
    int n = int(tokens.size());
    if (n > 0 && tokens[n - 1].isSymbol(u';'))
        --n; // a closing ';' ends the statement; any other one starts a second statement
    if (n == 0 || !tokens[0].is(TsqlWord::Select))
        return shape;

    int i = 1;
    while (i < n && (tokens[i].is(TsqlWord::Distinct) || tokens[i].is(TsqlWord::All)))
        ++i;
    if (i < n && tokens[i].is(TsqlWord::Top)) {
        ++i;
        if (i < n && tokens[i].isSymbol(u'('))
            i = tokens[i].match;
        ++i;
        if (i < n && tokens[i].is(TsqlWord::Percent))
            ++i;
    }

    // The select list, split at top-level commas, up to the top-level FROM.
    for (int itemStart = i; i < n; ++i) {
        const TsqlToken &token = tokens[i];
        if (token.isSymbol(u'(')) {
            i = token.match;
        } else if (token.isSymbol(u',') || token.is(TsqlWord::From) || token.is(TsqlWord::Into)) {
            shape.items.append(selectItem(tokens, itemStart, i));
            itemStart = i + 1;
            if (token.is(TsqlWord::Into))
                return shape; // SELECT ... INTO creates a table; nothing to write back
            if (token.is(TsqlWord::From))
                break;
        }
    }
    if (i >= n)
        return shape;

    // FROM name [[AS] alias] [WITH (hints)], and nothing that brings in a second source.
    QString table;
    ++i;
    while (i < n && tokens[i].isName() && !endsFromClause(tokens[i])) {
        table = tokens[i].nameText(); // the last part: database and schema do not matter
        ++i;
        if (i < n && tokens[i].isSymbol(u'.'))
            ++i;
        else
            break;
    }
    if (table.isEmpty())
        return shape;
    for (bool inFrom = true; i < n; ++i) {
        const TsqlToken &token = tokens[i];
        if (token.isSymbol(u'('))
            i = token.match;
        else if (makesOtherRows(token))
            return shape;
        else if (endsFromClause(token))
            inFrom = false;
        else if (inFrom && (token.isSymbol(u',') || token.is(TsqlWord::Join) || token.is(TsqlWord::Apply)))
            return shape;
    }
    shape.table = table;
    shape.temporaryTable = table.startsWith(QLatin1Char('#'));
    shape.singleTable = true;
    return shape;
}

} // namespace db
