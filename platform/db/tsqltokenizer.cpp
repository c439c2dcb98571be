#include "tsqltokenizer.h"

#include "tsqlerror.h"

#include <cstring>
#include <iterator>

namespace db {

namespace {

bool isNameStart(QChar c)
{
    return c.isLetter() || c == u'_';
}

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#' || c == u'@';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Operators made of two characters; everything else is one character.
bool isTwoCharOperator(QChar a, QChar b)
{
    switch (a.unicode()) {
    case u'<': return b == u'=' || b == u'>';
    case u'>': return b == u'=';
    case u'!': return b == u'=' || b == u'<' || b == u'>';
    case u'=': return b == u'=';
    case u'|': return b == u'|';
    default: return false;
    }
}

// Index just past a quoted section starting at 'from' (the opening quote), with the
// closing character doubled as its escape; -1 when it is not closed.
qsizetype skipQuoted(const QString &sql, qsizetype from, QChar close)
{
    const qsizetype n = sql.size();
    qsizetype i = from + 1;
    while (i < n) {
        if (sql[i] == close) {
            if (i + 1 < n && sql[i + 1] == close) {
                i += 2;
                continue;
            }
            return i + 1;
        }
        ++i;
    }
    return -1;
}

struct KeywordEntry
{
    const char *word;
    TsqlKeyword kind;
};

// Sorted by word.
constexpr KeywordEntry keywords[] = {
    {"ALL", TsqlKeyword::Boundary},        {"AND", TsqlKeyword::Boundary},
    {"APPLY", TsqlKeyword::Structure},     {"AS", TsqlKeyword::Boundary},
    {"ASC", TsqlKeyword::Boundary},        {"BETWEEN", TsqlKeyword::Boundary},
    {"BY", TsqlKeyword::Structure},        {"CASE", TsqlKeyword::Value},
    {"COLLATE", TsqlKeyword::Structure},   {"CROSS", TsqlKeyword::Structure},
    {"DECLARE", TsqlKeyword::Structure},   {"DEFAULT", TsqlKeyword::Structure},
    {"DELETE", TsqlKeyword::Structure},    {"DESC", TsqlKeyword::Boundary},
    {"DISTINCT", TsqlKeyword::Boundary},   {"ELSE", TsqlKeyword::Boundary},
    {"END", TsqlKeyword::Structure},       {"ESCAPE", TsqlKeyword::Boundary},
    {"EXCEPT", TsqlKeyword::Structure},    {"EXEC", TsqlKeyword::Structure},
    {"EXECUTE", TsqlKeyword::Structure},   {"EXISTS", TsqlKeyword::Boundary},
    {"FOR", TsqlKeyword::Structure},       {"FROM", TsqlKeyword::Structure},
    {"FULL", TsqlKeyword::Structure},      {"GROUP", TsqlKeyword::Structure},
    {"HAVING", TsqlKeyword::Structure},    {"IN", TsqlKeyword::Boundary},
    {"INNER", TsqlKeyword::Structure},     {"INSERT", TsqlKeyword::Structure},
    {"INTERSECT", TsqlKeyword::Structure}, {"INTO", TsqlKeyword::Structure},
    {"IS", TsqlKeyword::Boundary},         {"JOIN", TsqlKeyword::Structure},
    {"LEFT", TsqlKeyword::Structure},      {"LIKE", TsqlKeyword::Boundary},
    {"LIMIT", TsqlKeyword::Structure},     {"NOT", TsqlKeyword::Boundary},
    {"NULL", TsqlKeyword::Value},          {"OFFSET", TsqlKeyword::Structure},
    {"ON", TsqlKeyword::Structure},        {"OPTION", TsqlKeyword::Structure},
    {"OR", TsqlKeyword::Boundary},         {"ORDER", TsqlKeyword::Structure},
    {"OUTER", TsqlKeyword::Structure},     {"OUTPUT", TsqlKeyword::Structure},
    {"OVER", TsqlKeyword::Structure},      {"PERCENT", TsqlKeyword::Structure},
    {"RETURNING", TsqlKeyword::Structure}, {"RIGHT", TsqlKeyword::Structure},
    {"SELECT", TsqlKeyword::Structure},    {"SET", TsqlKeyword::Structure},
    {"THEN", TsqlKeyword::Boundary},       {"TOP", TsqlKeyword::Structure},
    {"UNION", TsqlKeyword::Structure},     {"UPDATE", TsqlKeyword::Structure},
    {"VALUES", TsqlKeyword::Structure},    {"WHEN", TsqlKeyword::Boundary},
    {"WHERE", TsqlKeyword::Structure},     {"WITH", TsqlKeyword::Structure},
};

} // namespace

TsqlKeyword tsqlKeyword(QStringView word)
{
    char upper[12];
    if (word.size() >= qsizetype(sizeof upper))
        return TsqlKeyword::None;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const char16_t c = word[i].unicode();
        if (c >= u'a' && c <= u'z')
            upper[i] = char(c - u'a' + 'A');
        else if (c < 128)
            upper[i] = char(c);
        else
            return TsqlKeyword::None;
    }
    upper[word.size()] = 0;
    auto first = std::begin(keywords);
    auto last = std::end(keywords);
    while (first < last) {
        const auto middle = first + (last - first) / 2;
        const int order = std::strcmp(upper, middle->word);
        if (order == 0)
            return middle->kind;
        if (order < 0)
            last = middle;
        else
            first = middle + 1;
    }
    return TsqlKeyword::None;
}

QString TsqlToken::nameText() const
{
    if (kind != TsqlTokenKind::QuotedName)
        return text.toString();
    const QChar close = text[0] == u'[' ? u']' : u'"';
    QString name = text.mid(1, text.size() - 2).toString();
    name.replace(QString(2, close), QString(close));
    return name;
}

QString TsqlToken::stringValue() const
{
    QStringView body = text;
    if (body.startsWith(u'N') || body.startsWith(u'n'))
        body = body.mid(1);
    QString value = body.mid(1, body.size() - 2).toString();
    value.replace(QLatin1StringView("''"), QLatin1StringView("'"));
    return value;
}

std::vector<TsqlToken> tokenizeTsql(const QString &sql)
{
    std::vector<TsqlToken> tokens;
    tokens.reserve(sql.size() / 4 + 4);
    std::vector<int> open;

    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (true) {
        // Leading whitespace and comments.
        const qsizetype leadStart = i;
        bool comment = false;
        while (i < n) {
            const QChar c = sql[i];
            if (c.isSpace()) {
                ++i;
            } else if (c == u'-' && i + 1 < n && sql[i + 1] == u'-') {
                comment = true;
                while (i < n && sql[i] != u'\n')
                    ++i;
            } else if (c == u'/' && i + 1 < n && sql[i + 1] == u'*') {
                comment = true;
                const qsizetype end = sql.indexOf(QLatin1StringView("*/"), i + 2);
                if (end < 0)
                    throwInvalidTsql(QStringLiteral("commento non chiuso"));
                i = end + 2;
            } else {
                break;
            }
        }
        if (i >= n)
            break;

        const qsizetype start = i;
        const QChar c = sql[i];
        TsqlTokenKind kind = TsqlTokenKind::Symbol;

        if ((c == u'N' || c == u'n') && i + 1 < n && sql[i + 1] == u'\'') {
            i = skipQuoted(sql, i + 1, u'\'');
            if (i < 0)
                throwInvalidTsql(QStringLiteral("stringa non chiusa"));
            kind = TsqlTokenKind::String;
        } else if (isNameStart(c)) {
            while (i < n && isNamePart(sql[i]))
                ++i;
            kind = TsqlTokenKind::Word;
        } else if (c == u'\'') {
            i = skipQuoted(sql, i, u'\'');
            if (i < 0)
                throwInvalidTsql(QStringLiteral("stringa non chiusa"));
            kind = TsqlTokenKind::String;
        } else if (c == u'[' || c == u'"') {
            i = skipQuoted(sql, i, c == u'[' ? QChar(u']') : QChar(u'"'));
            if (i < 0)
                throwInvalidTsql(QStringLiteral("nome non chiuso"));
            kind = TsqlTokenKind::QuotedName;
        } else if (c == u'#' && i + 1 < n && (isNamePart(sql[i + 1]))) {
            ++i;
            while (i < n && isNamePart(sql[i]))
                ++i;
            kind = TsqlTokenKind::TempName;
        } else if (c == u'@' && i + 1 < n && isNamePart(sql[i + 1])) {
            ++i;
            while (i < n && isNamePart(sql[i]))
                ++i;
            kind = TsqlTokenKind::Variable;
        } else if (isDigit(c) || (c == u'.' && i + 1 < n && isDigit(sql[i + 1]))) {
            if (c == u'0' && i + 1 < n && (sql[i + 1] == u'x' || sql[i + 1] == u'X')) {
                i += 2;
                while (i < n && sql[i].isLetterOrNumber())
                    ++i;
            } else {
                while (i < n && isDigit(sql[i]))
                    ++i;
                if (i < n && sql[i] == u'.') {
                    ++i;
                    while (i < n && isDigit(sql[i]))
                        ++i;
                }
                if (i < n && (sql[i] == u'e' || sql[i] == u'E')) {
                    qsizetype j = i + 1;
                    if (j < n && (sql[j] == u'+' || sql[j] == u'-'))
                        ++j;
                    if (j < n && isDigit(sql[j])) {
                        i = j;
                        while (i < n && isDigit(sql[i]))
                            ++i;
                    }
                }
            }
            kind = TsqlTokenKind::Number;
        } else if (c == u'?') {
            ++i;
            while (i < n && isDigit(sql[i]))
                ++i;
            kind = TsqlTokenKind::Parameter;
        } else if (i + 1 < n && isTwoCharOperator(c, sql[i + 1])) {
            i += 2;
        } else {
            ++i;
        }

        TsqlToken token{kind, QStringView(sql).mid(start, i - start),
                        QStringView(sql).mid(leadStart, start - leadStart), comment};
        const int index = int(tokens.size());
        if (token.isSymbol(u'(')) {
            open.push_back(index);
        } else if (token.isSymbol(u')')) {
            if (open.empty())
                throwInvalidTsql(QStringLiteral("parentesi chiusa in più"));
            token.match = open.back();
            tokens[open.back()].match = index;
            open.pop_back();
        }
        tokens.push_back(token);
    }
    if (!open.empty())
        throwInvalidTsql(QStringLiteral("parentesi non chiusa"));
    return tokens;
}

} // namespace db
