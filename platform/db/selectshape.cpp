#include "selectshape.h"

#include <QStringList>

namespace db {

namespace {

struct Token
{
    enum Kind { Word, Quoted, String, Number, Symbol } kind;
    QString text;
    bool is(const char *keyword) const
    {
        return kind == Word && text.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QChar c) const { return kind == Symbol && text.size() == 1 && text.at(0) == c; }
    bool isName() const { return kind == Word || kind == Quoted; }
};

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('#') || c == QLatin1Char('@')
        || c == QLatin1Char('$');
}

QList<Token> tokenize(const QString &sql)
{
    QList<Token> tokens;
    const int n = int(sql.size());
    int i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        if (c.isSpace()) {
            ++i;
        } else if (c == QLatin1Char('-') && i + 1 < n && sql.at(i + 1) == QLatin1Char('-')) {
            while (i < n && sql.at(i) != QLatin1Char('\n'))
                ++i;
        } else if (c == QLatin1Char('/') && i + 1 < n && sql.at(i + 1) == QLatin1Char('*')) {
            const int end = sql.indexOf(QLatin1String("*/"), i + 2);
            i = end < 0 ? n : end + 2;
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('[')) {
            const QChar close = c == QLatin1Char('[') ? QLatin1Char(']') : c;
            QString text;
            ++i;
            while (i < n) {
                if (sql.at(i) == close) {
                    if (close != QLatin1Char(']') && i + 1 < n && sql.at(i + 1) == close) {
                        text += close;
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                text += sql.at(i++);
            }
            tokens.append({c == QLatin1Char('\'') ? Token::String : Token::Quoted, text});
        } else if (c.isDigit()) {
            const int start = i;
            while (i < n && (sql.at(i).isDigit() || sql.at(i) == QLatin1Char('.')))
                ++i;
            tokens.append({Token::Number, sql.mid(start, i - start)});
        } else if (isWordChar(c)) {
            const int start = i;
            while (i < n && isWordChar(sql.at(i)))
                ++i;
            tokens.append({Token::Word, sql.mid(start, i - start)});
        } else {
            tokens.append({Token::Symbol, QString(c)});
            ++i;
        }
    }
    return tokens;
}

// A column reference: name ('.' name)*; returns its last name, or empty.
QString columnReference(const QList<Token> &tokens, int from, int to)
{
    if (to - from < 1 || (to - from) % 2 == 0)
        return {};
    for (int i = from; i < to; ++i) {
        const bool expectName = (i - from) % 2 == 0;
        if (expectName ? !tokens.at(i).isName() : !tokens.at(i).isSymbol(QLatin1Char('.')))
            return {};
    }
    const Token &last = tokens.at(to - 1);
    if (last.kind == Token::Word && (last.is("NULL") || last.is("CASE")))
        return {};
    return last.text;
}

SelectShape::Item selectItem(const QList<Token> &tokens, int from, int to)
{
    SelectShape::Item item;
    const int count = to - from;
    if (count == 1 && tokens.at(from).isSymbol(QLatin1Char('*'))) {
        item.allColumns = true;
        return item;
    }
    if (count == 3 && tokens.at(from).isName() && tokens.at(from + 1).isSymbol(QLatin1Char('.'))
        && tokens.at(to - 1).isSymbol(QLatin1Char('*'))) {
        item.allColumns = true;
        return item;
    }
    int expressionEnd = to;
    QString alias;
    if (count >= 3 && tokens.at(to - 2).is("AS")) {
        alias = tokens.at(to - 1).text;
        expressionEnd = to - 2;
    } else if (count >= 3 && tokens.at(from).isName() && tokens.at(from + 1).isSymbol(QLatin1Char('='))) {
        item.outputName = tokens.at(from).text; // "alias = expression"
        return item;
    } else if (count >= 2 && (tokens.at(to - 1).isName() || tokens.at(to - 1).kind == Token::String)
               && !tokens.at(to - 2).isSymbol(QLatin1Char('.'))) {
        const Token &previous = tokens.at(to - 2);
        if (previous.isName() || previous.isSymbol(QLatin1Char(')')) || previous.kind == Token::String
            || previous.kind == Token::Number) {
            if (!tokens.at(to - 1).is("END")) {
                alias = tokens.at(to - 1).text;
                expressionEnd = to - 1;
            }
        }
    }
    item.sourceColumn = columnReference(tokens, from, expressionEnd);
    item.outputName = alias.isEmpty() ? item.sourceColumn : alias;
    return item;
}

bool endsFromClause(const Token &token)
{
    return token.is("WHERE") || token.is("GROUP") || token.is("ORDER") || token.is("HAVING")
        || token.is("UNION") || token.is("EXCEPT") || token.is("INTERSECT") || token.is("OPTION")
        || token.is("FOR") || token.isSymbol(QLatin1Char(';'));
}

} // namespace

SelectShape SelectShape::analyse(const QString &sql)
{
    SelectShape shape;
    const QList<Token> tokens = tokenize(sql);
    const int n = int(tokens.size());
    if (n == 0 || !tokens.first().is("SELECT"))
        return shape;

    int i = 1;
    while (i < n && (tokens.at(i).is("DISTINCT") || tokens.at(i).is("ALL")))
        ++i;
    if (i < n && tokens.at(i).is("TOP")) {
        ++i;
        if (i < n && tokens.at(i).isSymbol(QLatin1Char('('))) {
            while (i < n && !tokens.at(i).isSymbol(QLatin1Char(')')))
                ++i;
        }
        ++i;
        if (i < n && tokens.at(i).is("PERCENT"))
            ++i;
    }

    // The select list, split at top-level commas, up to the top-level FROM.
    int depth = 0;
    int itemStart = i;
    int fromAt = -1;
    for (; i < n; ++i) {
        const Token &token = tokens.at(i);
        if (token.isSymbol(QLatin1Char('(')))
            ++depth;
        else if (token.isSymbol(QLatin1Char(')')))
            --depth;
        else if (depth == 0 && (token.isSymbol(QLatin1Char(',')) || token.is("FROM") || token.is("INTO"))) {
            shape.items.append(selectItem(tokens, itemStart, i));
            itemStart = i + 1;
            if (token.is("INTO"))
                return shape; // SELECT ... INTO creates a table; nothing to write back
            if (token.is("FROM")) {
                fromAt = i;
                break;
            }
        }
    }
    if (fromAt < 0)
        return shape;

    // FROM name [[AS] alias] [WITH (hints)], and nothing that brings in a second source.
    i = fromAt + 1;
    QStringList nameParts;
    while (i < n && tokens.at(i).isName() && !endsFromClause(tokens.at(i))) {
        nameParts << tokens.at(i).text;
        ++i;
        if (i < n && tokens.at(i).isSymbol(QLatin1Char('.')))
            ++i;
        else
            break;
    }
    if (nameParts.isEmpty())
        return shape;
    depth = 0;
    for (; i < n; ++i) {
        const Token &token = tokens.at(i);
        if (token.isSymbol(QLatin1Char('(')))
            ++depth;
        else if (token.isSymbol(QLatin1Char(')')))
            --depth;
        if (depth > 0)
            continue;
        if (endsFromClause(token))
            break;
        if (token.isSymbol(QLatin1Char(',')) || token.is("JOIN") || token.is("APPLY"))
            return shape;
    }
    // Grouping or set operations anywhere at the top level make rows that are not table rows.
    depth = 0;
    for (; i < n; ++i) {
        const Token &token = tokens.at(i);
        if (token.isSymbol(QLatin1Char('(')))
            ++depth;
        else if (token.isSymbol(QLatin1Char(')')))
            --depth;
        else if (depth == 0
                 && (token.is("GROUP") || token.is("HAVING") || token.is("UNION") || token.is("EXCEPT")
                     || token.is("INTERSECT") || (token.isSymbol(QLatin1Char(';')) && i != n - 1)))
            return shape;
    }
    shape.table = nameParts.last();
    shape.temporaryTable = shape.table.startsWith(QLatin1Char('#'));
    shape.singleTable = true;
    return shape;
}

} // namespace db
