#include "sqliteparameters.h"

#include <vector>

namespace db {

namespace {

enum class Kind { Word, Number, Text, Other, Open, Close, Comma, Semicolon, Parameter };

struct Token
{
    Kind kind;
    qsizetype start;
    qsizetype end;
    QStringView word; // for words not quoted
};

bool is(const Token &token, QLatin1StringView keyword)
{
    return token.word.size() == keyword.size() && token.word.compare(keyword, Qt::CaseInsensitive) == 0;
}

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

bool isComparison(QChar c)
{
    return c == u'=' || c == u'<' || c == u'>' || c == u'!';
}

// The end of a quoted run that starts at `from` (the opening quote), doubled closers included;
// -1 when it never closes.
qsizetype quotedEnd(const QString &text, qsizetype from, QChar closer)
{
    for (qsizetype i = from + 1; i < text.size(); ++i) {
        if (text.at(i) != closer)
            continue;
        if (i + 1 < text.size() && text.at(i + 1) == closer && closer != u']') {
            ++i;
            continue;
        }
        return i + 1;
    }
    return -1;
}

bool tokenize(const QString &sql, std::vector<Token> &tokens)
{
    for (qsizetype i = 0; i < sql.size();) {
        const QChar c = sql.at(i);
        const QChar next = i + 1 < sql.size() ? sql.at(i + 1) : QChar();
        if (c.isSpace()) {
            ++i;
        } else if (c == u'-' && next == u'-') {
            const qsizetype end = sql.indexOf(u'\n', i);
            i = end < 0 ? sql.size() : end + 1;
        } else if (c == u'/' && next == u'*') {
            const qsizetype end = sql.indexOf(QLatin1String("*/"), i + 2);
            if (end < 0)
                return false;
            i = end + 2;
        } else if (c == u'"' || c == u'`' || c == u'[' || c == u'\'') {
            const qsizetype end = quotedEnd(sql, i, c == u'[' ? QChar(u']') : c);
            if (end < 0)
                return false;
            tokens.push_back({c == u'\'' ? Kind::Text : Kind::Word, i, end, {}});
            i = end;
        } else if (c.isDigit() || (c == u'.' && next.isDigit())) {
            qsizetype end = i;
            while (end < sql.size()
                   && (isWordChar(sql.at(end)) || sql.at(end) == u'.'
                       || ((sql.at(end) == u'+' || sql.at(end) == u'-')
                           && (sql.at(end - 1) == u'e' || sql.at(end - 1) == u'E'))))
                ++end;
            tokens.push_back({Kind::Number, i, end, {}});
            i = end;
        } else if (c == u'?' || c == u':' || c == u'@' || c == u'$') {
            tokens.push_back({Kind::Parameter, i, i + 1, {}});
            ++i;
        } else if (isWordChar(c)) {
            qsizetype end = i;
            while (end < sql.size() && isWordChar(sql.at(end)))
                ++end;
            if ((c == u'x' || c == u'X') && end == i + 1 && end < sql.size() && sql.at(end) == u'\'') {
                const qsizetype blobEnd = quotedEnd(sql, end, u'\'');
                if (blobEnd < 0)
                    return false;
                tokens.push_back({Kind::Other, i, blobEnd, {}}); // a blob stays as written
                i = blobEnd;
                continue;
            }
            tokens.push_back({Kind::Word, i, end, QStringView(sql).mid(i, end - i)});
            i = end;
        } else {
            const Kind kind = c == u'(' ? Kind::Open
                : c == u')'             ? Kind::Close
                : c == u','             ? Kind::Comma
                : c == u';'             ? Kind::Semicolon
                                        : Kind::Other;
            tokens.push_back({kind, i, i + 1, {}});
            ++i;
        }
    }
    return true;
}

bool isLiteral(const Token &token)
{
    return token.kind == Kind::Number || token.kind == Kind::Text;
}

// A literal compared with another literal ("1=0") stays, so that the planner still sees a
// condition that is always false (or true) as such.
bool comparedWithLiteral(const std::vector<Token> &tokens, const QString &sql, size_t at)
{
    size_t before = at;
    while (before > 0 && tokens[before - 1].kind == Kind::Other && isComparison(sql.at(tokens[before - 1].start)))
        --before;
    if (before < at && before > 0 && isLiteral(tokens[before - 1]))
        return true;
    size_t after = at + 1;
    while (after < tokens.size() && tokens[after].kind == Kind::Other && isComparison(sql.at(tokens[after].start)))
        ++after;
    return after > at + 1 && after < tokens.size() && isLiteral(tokens[after]);
}

enum class Clause { None, SelectList, Conditions, Other };

struct Level
{
    Clause clause = Clause::None;
    bool underSelectList = false; // inside an expression of some select list
    bool typeName = false;        // after AS in a CAST: numbers here are lengths and scales
};

Clause clauseOf(const Token &word, Clause current)
{
    using namespace Qt::Literals::StringLiterals;
    if (is(word, "SELECT"_L1))
        return Clause::SelectList;
    if (is(word, "WHERE"_L1) || is(word, "ON"_L1) || is(word, "HAVING"_L1))
        return Clause::Conditions;
    for (QLatin1StringView other :
         {"FROM"_L1, "GROUP"_L1, "ORDER"_L1, "LIMIT"_L1, "OFFSET"_L1, "WINDOW"_L1, "VALUES"_L1}) {
        if (is(word, other))
            return Clause::Other;
    }
    if (is(word, "UNION"_L1) || is(word, "INTERSECT"_L1) || is(word, "EXCEPT"_L1))
        return Clause::None;
    return current;
}

// "SELECT ..." or "CREATE [TEMP] TABLE name AS SELECT ...": the statement must start so.
bool startsAsSelect(const std::vector<Token> &tokens)
{
    size_t i = 0;
    while (i < tokens.size() && tokens[i].kind == Kind::Open)
        ++i;
    using namespace Qt::Literals::StringLiterals;
    if (i < tokens.size() && is(tokens[i], "SELECT"_L1))
        return true;
    if (i >= tokens.size() || !is(tokens[i], "CREATE"_L1))
        return false;
    for (++i; i < tokens.size() && tokens[i].kind == Kind::Word; ++i) {
        if (is(tokens[i], "AS"_L1))
            return i + 1 < tokens.size() && is(tokens[i + 1], "SELECT"_L1);
    }
    return false;
}

// A literal's value as a parameter takes it; invalid for the numbers that stay as written.
QVariant literalValue(const QString &sqlite, const Token &token)
{
    if (token.kind == Kind::Text)
        return sqlite.mid(token.start + 1, token.end - token.start - 2)
            .replace(QLatin1String("''"), QLatin1String("'"));
    bool whole = token.end - token.start <= 18;
    for (qsizetype c = token.start; whole && c < token.end; ++c)
        whole = sqlite.at(c).isDigit();
    return whole ? QVariant(QStringView(sqlite).mid(token.start, token.end - token.start).toLongLong()) : QVariant();
}

} // namespace

ParameterizedSelect parameterizeConditions(const QString &sqlite)
{
    using namespace Qt::Literals::StringLiterals;
    std::vector<Token> tokens;
    tokens.reserve(size_t(sqlite.size() / 4));
    if (!tokenize(sqlite, tokens) || !startsAsSelect(tokens))
        return {};
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind == Kind::Parameter)
            return {}; // parameters of its own
        if (tokens[i].kind == Kind::Semicolon && i + 1 < tokens.size())
            return {}; // more than one statement
    }

    ParameterizedSelect result;
    QString out;
    out.reserve(sqlite.size());
    qsizetype copied = 0; // sqlite[0, copied) is already in out
    std::vector<Level> levels(1);
    for (size_t i = 0; i < tokens.size(); ++i) {
        const Token &token = tokens[i];
        Level &level = levels.back();
        switch (token.kind) {
        case Kind::Word:
            if (is(token, "AS"_L1) && level.clause == Clause::Conditions) // a CAST's type follows
                level.typeName = true;
            level.clause = clauseOf(token, level.clause);
            continue;
        case Kind::Open: {
            Level inner = level;
            inner.underSelectList = level.underSelectList || level.clause == Clause::SelectList;
            levels.push_back(inner);
            continue;
        }
        case Kind::Close:
            if (levels.size() > 1)
                levels.pop_back();
            continue;
        case Kind::Comma: level.typeName = false; continue;
        case Kind::Number:
        case Kind::Text: break;
        default: continue;
        }
        if (level.clause != Clause::Conditions || level.underSelectList || level.typeName)
            continue;
        const Token &previous = i > 0 ? tokens[i - 1] : tokens[i];
        if (is(previous, "LIKE"_L1) || is(previous, "GLOB"_L1) || is(previous, "ESCAPE"_L1)
            || comparedWithLiteral(tokens, sqlite, i))
            continue;
        const QVariant value = literalValue(sqlite, token);
        if (!value.isValid())
            continue; // decimals, exponents and hexadecimals stay as written
        out += QStringView(sqlite).mid(copied, token.start - copied);
        out += u'?';
        result.values << value;
        copied = token.end;
    }
    if (result.values.isEmpty())
        return {};
    out += QStringView(sqlite).mid(copied);
    result.text = out;
    return result;
}

ParameterizedSelect parameterizeValues(const QString &sqlite)
{
    using namespace Qt::Literals::StringLiterals;
    std::vector<Token> tokens;
    if (!tokenize(sqlite, tokens) || tokens.size() < 4 || !is(tokens[0], "INSERT"_L1))
        return {};
    size_t values = 0;
    int depth = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind == Kind::Parameter)
            return {}; // parameters of its own
        depth += tokens[i].kind == Kind::Open ? 1 : tokens[i].kind == Kind::Close ? -1 : 0;
        if (depth == 0 && values == 0 && is(tokens[i], "VALUES"_L1))
            values = i;
    }
    // One row: VALUES ( ... ) and nothing after it but a semicolon.
    if (values == 0 || values + 1 >= tokens.size() || tokens[values + 1].kind != Kind::Open)
        return {};
    size_t close = values + 1;
    for (depth = 0; close < tokens.size(); ++close) {
        depth += tokens[close].kind == Kind::Open ? 1 : tokens[close].kind == Kind::Close ? -1 : 0;
        if (depth == 0)
            break;
    }
    if (close >= tokens.size()
        || (close + 1 < tokens.size() && !(close + 2 == tokens.size() && tokens[close + 1].kind == Kind::Semicolon)))
        return {};

    ParameterizedSelect result;
    QString out;
    out.reserve(sqlite.size());
    qsizetype copied = 0;
    depth = 0;
    for (size_t i = values + 1; i < close; ++i) {
        depth += tokens[i].kind == Kind::Open ? 1 : tokens[i].kind == Kind::Close ? -1 : 0;
        if (depth != 1 || !isLiteral(tokens[i]))
            continue;
        const Kind before = tokens[i - 1].kind;
        const Kind after = tokens[i + 1].kind;
        if ((before != Kind::Open && before != Kind::Comma) || (after != Kind::Close && after != Kind::Comma))
            continue; // part of an expression
        const QVariant value = literalValue(sqlite, tokens[i]);
        if (!value.isValid())
            continue;
        out += QStringView(sqlite).mid(copied, tokens[i].start - copied);
        out += u'?';
        result.values << value;
        copied = tokens[i].end;
    }
    if (result.values.isEmpty())
        return {};
    out += QStringView(sqlite).mid(copied);
    result.text = out;
    return result;
}

} // namespace db
