#include "tsqltokenizer.h"

#include "tsqlerror.h"

#include <cstring>
#include <iterator>

namespace db {

namespace {

inline bool isAsciiLetter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

inline bool isNameStart(QChar c)
{
    const char16_t u = c.unicode();
    return isAsciiLetter(u) || u == u'_' || (u >= 0x80 && c.isLetter());
}

inline bool isNamePart(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x80)
        return isAsciiLetter(u) || (u >= u'0' && u <= u'9') || u == u'_' || u == u'$' || u == u'#' || u == u'@';
    return c.isLetterOrNumber();
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

struct WordEntry
{
    const char *text;
    TsqlWord word;
    TsqlKeyword keyword;
};

// Sorted by text.
constexpr WordEntry words[] = {
    {"ALL", TsqlWord::All, TsqlKeyword::Boundary},
    {"ALTER", TsqlWord::Alter, TsqlKeyword::None},
    {"ANALYZE", TsqlWord::Analyze, TsqlKeyword::None},
    {"AND", TsqlWord::And, TsqlKeyword::Boundary},
    {"APPLY", TsqlWord::Apply, TsqlKeyword::Structure},
    {"AS", TsqlWord::As, TsqlKeyword::Boundary},
    {"ASC", TsqlWord::Asc, TsqlKeyword::Boundary},
    {"ATTACH", TsqlWord::Attach, TsqlKeyword::None},
    {"BEGIN", TsqlWord::Begin, TsqlKeyword::None},
    {"BETWEEN", TsqlWord::Between, TsqlKeyword::Boundary},
    {"BY", TsqlWord::By, TsqlKeyword::Structure},
    {"CASE", TsqlWord::Case, TsqlKeyword::Value},
    {"COLLATE", TsqlWord::Collate, TsqlKeyword::Structure},
    {"COMMIT", TsqlWord::Commit, TsqlKeyword::None},
    {"CREATE", TsqlWord::Create, TsqlKeyword::None},
    {"CROSS", TsqlWord::Cross, TsqlKeyword::Structure},
    {"CURRENT_TIMESTAMP", TsqlWord::CurrentTimestamp, TsqlKeyword::None},
    {"DECLARE", TsqlWord::Declare, TsqlKeyword::Structure},
    {"DEFAULT", TsqlWord::Default, TsqlKeyword::Structure},
    {"DELETE", TsqlWord::Delete, TsqlKeyword::Structure},
    {"DESC", TsqlWord::Desc, TsqlKeyword::Boundary},
    {"DETACH", TsqlWord::Detach, TsqlKeyword::None},
    {"DISTINCT", TsqlWord::Distinct, TsqlKeyword::Boundary},
    {"DROP", TsqlWord::Drop, TsqlKeyword::None},
    {"ELSE", TsqlWord::Else, TsqlKeyword::Boundary},
    {"END", TsqlWord::End, TsqlKeyword::Structure},
    {"ESCAPE", TsqlWord::Escape, TsqlKeyword::Boundary},
    {"EXCEPT", TsqlWord::Except, TsqlKeyword::Structure},
    {"EXEC", TsqlWord::Exec, TsqlKeyword::Structure},
    {"EXECUTE", TsqlWord::Execute, TsqlKeyword::Structure},
    {"EXISTS", TsqlWord::Exists, TsqlKeyword::Boundary},
    {"FOR", TsqlWord::For, TsqlKeyword::Structure},
    {"FROM", TsqlWord::From, TsqlKeyword::Structure},
    {"FULL", TsqlWord::Full, TsqlKeyword::Structure},
    {"GROUP", TsqlWord::Group, TsqlKeyword::Structure},
    {"HAVING", TsqlWord::Having, TsqlKeyword::Structure},
    {"IF", TsqlWord::If, TsqlKeyword::None},
    {"IN", TsqlWord::In, TsqlKeyword::Boundary},
    {"INNER", TsqlWord::Inner, TsqlKeyword::Structure},
    {"INSERT", TsqlWord::Insert, TsqlKeyword::Structure},
    {"INTERSECT", TsqlWord::Intersect, TsqlKeyword::Structure},
    {"INTO", TsqlWord::Into, TsqlKeyword::Structure},
    {"IS", TsqlWord::Is, TsqlKeyword::Boundary},
    {"JOIN", TsqlWord::Join, TsqlKeyword::Structure},
    {"LEFT", TsqlWord::Left, TsqlKeyword::Structure},
    {"LIKE", TsqlWord::Like, TsqlKeyword::Boundary},
    {"LIMIT", TsqlWord::Limit, TsqlKeyword::Structure},
    {"MAX", TsqlWord::Max, TsqlKeyword::None},
    {"NOLOCK", TsqlWord::Nolock, TsqlKeyword::None},
    {"NOT", TsqlWord::Not, TsqlKeyword::Boundary},
    {"NULL", TsqlWord::Null, TsqlKeyword::Value},
    {"OBJECT_ID", TsqlWord::ObjectId, TsqlKeyword::None},
    {"OFFSET", TsqlWord::Offset, TsqlKeyword::Structure},
    {"ON", TsqlWord::On, TsqlKeyword::Structure},
    {"OPTION", TsqlWord::Option, TsqlKeyword::Structure},
    {"OR", TsqlWord::Or, TsqlKeyword::Boundary},
    {"ORDER", TsqlWord::Order, TsqlKeyword::Structure},
    {"OUTER", TsqlWord::Outer, TsqlKeyword::Structure},
    {"OUTPUT", TsqlWord::Output, TsqlKeyword::Structure},
    {"OVER", TsqlWord::Over, TsqlKeyword::Structure},
    {"PERCENT", TsqlWord::Percent, TsqlKeyword::Structure},
    {"PRAGMA", TsqlWord::Pragma, TsqlKeyword::None},
    {"READUNCOMMITTED", TsqlWord::Readuncommitted, TsqlKeyword::None},
    {"REINDEX", TsqlWord::Reindex, TsqlKeyword::None},
    {"RELEASE", TsqlWord::Release, TsqlKeyword::None},
    {"RETURNING", TsqlWord::Returning, TsqlKeyword::Structure},
    {"RIGHT", TsqlWord::Right, TsqlKeyword::Structure},
    {"ROLLBACK", TsqlWord::Rollback, TsqlKeyword::None},
    {"SAVEPOINT", TsqlWord::Savepoint, TsqlKeyword::None},
    {"SELECT", TsqlWord::Select, TsqlKeyword::Structure},
    {"SET", TsqlWord::Set, TsqlKeyword::Structure},
    {"TABLE", TsqlWord::Table, TsqlKeyword::None},
    {"THEN", TsqlWord::Then, TsqlKeyword::Boundary},
    {"TOP", TsqlWord::Top, TsqlKeyword::Structure},
    {"UNION", TsqlWord::Union, TsqlKeyword::Structure},
    {"UPDATE", TsqlWord::Update, TsqlKeyword::Structure},
    {"VACUUM", TsqlWord::Vacuum, TsqlKeyword::None},
    {"VALUES", TsqlWord::Values, TsqlKeyword::Structure},
    {"WHEN", TsqlWord::When, TsqlKeyword::Boundary},
    {"WHERE", TsqlWord::Where, TsqlKeyword::Structure},
    {"WITH", TsqlWord::With, TsqlKeyword::Structure},
};

constexpr qsizetype longestWord = 17; // CURRENT_TIMESTAMP

// For each initial letter, the range of the table that starts with it; and each word's length.
struct InitialIndex
{
    InitialIndex()
    {
        for (int k = 0; k < int(std::size(words)); ++k) {
            const int letter = words[k].text[0] - 'A';
            if (first[letter] < 0)
                first[letter] = k;
            last[letter] = k + 1;
            lengths[k] = qsizetype(std::strlen(words[k].text));
        }
    }
    int first[26] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                     -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    int last[26] = {};
    qsizetype lengths[std::size(words)] = {};
};

bool equalsUpper(QStringView word, const char *upper)
{
    for (qsizetype i = 0; i < word.size(); ++i) {
        char16_t c = word[i].unicode();
        if (c >= u'a' && c <= u'z')
            c = char16_t(c - u'a' + u'A');
        if (c != char16_t(upper[i]))
            return false;
    }
    return true;
}

// Runs for every word of every statement, so it rejects most names on length and initial.
void classifyWord(TsqlToken &token)
{
    const qsizetype length = token.text.size();
    if (length > longestWord)
        return;
    char16_t initial = token.text[0].unicode();
    if (initial >= u'a' && initial <= u'z')
        initial = char16_t(initial - u'a' + u'A');
    if (initial < u'A' || initial > u'Z')
        return;
    static const InitialIndex index;
    const int letter = initial - u'A';
    for (int k = index.first[letter]; k >= 0 && k < index.last[letter]; ++k) {
        if (index.lengths[k] == length && equalsUpper(token.text, words[k].text)) {
            token.word = words[k].word;
            token.keyword = words[k].keyword;
            return;
        }
    }
}

} // namespace

bool upperAsciiWord(QStringView word, char *buffer, size_t size)
{
    if (size_t(word.size()) >= size)
        return false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const char16_t c = word[i].unicode();
        if (c >= u'a' && c <= u'z')
            buffer[i] = char(c - u'a' + 'A');
        else if (c < 128)
            buffer[i] = char(c);
        else
            return false;
    }
    buffer[word.size()] = 0;
    return true;
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
            if (c == u' ' || (c.unicode() < 0x80 ? (c >= u'\t' && c <= u'\r') : c.isSpace())) {
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

        TsqlToken token {kind, QStringView(sql).mid(start, i - start),
                         QStringView(sql).mid(leadStart, start - leadStart), comment};
        if (kind == TsqlTokenKind::Word)
            classifyWord(token);
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
