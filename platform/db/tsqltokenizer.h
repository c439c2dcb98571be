#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace db {

// Reserved words as the translator treats them: an expression boundary (AND, LIKE, AS, ...),
// the start of a value (NULL, CASE) or a word of a statement's structure (SELECT, JOIN, ...),
// which is never a name or an alias.
enum class TsqlKeyword : unsigned char { None, Boundary, Value, Structure };

// The words the translator looks for, recognised once per token in any letter case.
enum class TsqlWord : unsigned char {
    None,
    All,
    Alter,
    Analyze,
    And,
    Apply,
    As,
    Asc,
    Attach,
    Begin,
    Between,
    By,
    Case,
    Collate,
    Commit,
    Create,
    Cross,
    CurrentTimestamp,
    Declare,
    Default,
    Delete,
    Desc,
    Detach,
    Distinct,
    Drop,
    Else,
    End,
    Escape,
    Except,
    Exec,
    Execute,
    Exists,
    For,
    From,
    Full,
    Group,
    Having,
    If,
    In,
    Inner,
    Insert,
    Intersect,
    Into,
    Is,
    Join,
    Left,
    Like,
    Limit,
    Max,
    Nolock,
    Not,
    Null,
    ObjectId,
    Offset,
    On,
    Option,
    Or,
    Order,
    Outer,
    Output,
    Over,
    Percent,
    Pragma,
    Readuncommitted,
    Reindex,
    Release,
    Returning,
    Right,
    Rollback,
    Savepoint,
    Select,
    Set,
    Table,
    Then,
    Top,
    Union,
    Update,
    Vacuum,
    Values,
    When,
    Where,
    With,
};

// Upper-cases an ASCII word into buffer; false when it is longer or not ASCII.
bool upperAsciiWord(QStringView word, char *buffer, size_t size);

enum class TsqlTokenKind {
    Word,       // identifier or keyword
    QuotedName, // [name] or "name"
    TempName,   // #name or ##name
    String,     // 'text' or N'text'
    Number,     // 12, 1.5, 2e3, 0x1F
    Variable,   // @name or @@name
    Parameter,  // ? placeholder of a prepared statement
    Symbol      // operators and punctuation
};

struct TsqlToken
{
    TsqlTokenKind kind;
    QStringView text; // the token as written
    QStringView lead; // whitespace (and comments) written before it
    bool leadHasComment = false;
    int match = -1; // for ( and ): index of the matching parenthesis
    TsqlWord word = TsqlWord::None;
    TsqlKeyword keyword = TsqlKeyword::None;

    bool isSymbol(char16_t c) const { return kind == TsqlTokenKind::Symbol && text.size() == 1 && text[0] == c; }
    bool isSymbol(QLatin1StringView s) const { return kind == TsqlTokenKind::Symbol && text == s; }
    bool is(TsqlWord w) const { return word == w; }
    bool isName() const
    {
        return kind == TsqlTokenKind::Word || kind == TsqlTokenKind::QuotedName || kind == TsqlTokenKind::TempName;
    }
    // The name without brackets or quotes (escapes resolved); only for names.
    QString nameText() const;
    // The text of a string literal (quotes removed, '' resolved).
    QString stringValue() const;
};

// Splits a T-SQL statement into tokens and pairs its parentheses.
// Throws DatabaseError on an unterminated string, name or comment or unbalanced parentheses.
std::vector<TsqlToken> tokenizeTsql(const QString &sql);

} // namespace db
