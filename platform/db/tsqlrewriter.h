#pragma once

#include "tsqltokenizer.h"

#include <QString>
#include <QStringList>
#include <QVarLengthArray>
#include <memory>
#include <utility>
#include <vector>

namespace db {

// Rewrites one T-SQL statement into SQLite's dialect by walking its tokens once, emitting
// each token with the whitespace written before it, and replacing the constructs that
// SQLite reads differently. Ranges are half-open token index ranges [b, e) that never cut
// a pair of parentheses.
class TsqlRewriter
{
public:
    explicit TsqlRewriter(const QString &sql);
    QString rewrite();

private:
    // What an operand is known to be, from its tokens alone.
    struct ExprInfo
    {
        bool isString = false;
        bool isDate = false;
        bool isNumber = false;     // a number literal or a numeric conversion
        bool branchString = false; // a THEN or ELSE of this list is string-typed (for CASE)
    };

    enum class SelectRole { Statement, Subquery, InsertSource };

    using Arguments = QVarLengthArray<std::pair<int, int>, 4>; // token ranges of a call's arguments

    struct FromSegment
    {
        enum Kind { Name, Tokens, Skip, Subquery, ParenJoin, Condition } kind;
        int b, e;
        int opens = 0;
        int closes = 0;
    };

    // Statements (tsqlrewriter.cpp)
    void selectStatement(int e);
    void insertStatement(int e);
    void updateStatement(int e);
    void deleteStatement(int e);
    void ifStatement(int e);
    void dropStatement(int e);
    int statementHead(int e, bool orConflict);
    int impliedWord(int i, int e, TsqlWord w, QLatin1StringView text);
    int tableTarget(int i, int e, const char *statement);
    int whereClause(int i, int e);
    void statementEnd(int i, int e);

    // Queries (tsqlrewriter.cpp)
    void emitSelect(int b, int e, SelectRole role, bool inCompound);
    void emitSimpleSelect(int b, int e, SelectRole role, bool inCompound);
    void emitFrom(int b, int e);
    int parseTableExpression(int i, int e, bool nested, bool &isJoin, std::vector<FromSegment> &segs);
    int parseTablePrimary(int i, int e, std::vector<FromSegment> &segs);
    int parseAliasAndHints(int i, int e, std::vector<FromSegment> &segs);
    int joinOperatorLength(int i, int e) const;
    int conditionEnd(int i, int e) const;
    bool isNolockHint(int open) const;
    void emitFromSegment(const FromSegment &seg);

    // RIGHT JOIN chains written in LEFT JOIN order (tsqljoinorder.cpp)
public:
    struct JoinNode;
    struct JoinChain;

private:
    bool emitFromInJoinOrder(int b, int e);
    std::unique_ptr<JoinNode> parseJoinTree(int &i, int e);
    std::unique_ptr<JoinNode> parseJoinOperand(int &i, int e);
    JoinChain joinChain(const JoinNode &node) const;
    bool joinsAsChain(const JoinNode &join, const JoinChain &outer, const JoinChain &inner) const;
    bool namesOnly(int b, int e, const QStringList &names) const;
    bool rejectsNulls(int b, int e, const QStringList &names) const;
    bool isQualifiedColumn(int b, int e, const QStringList &names) const;
    void emitJoinChain(const JoinChain &chain);
    void emitJoinTable(const JoinNode &table);

    // Expressions (tsqlrewriterexpressions.cpp)
    ExprInfo emitExpressionList(int b, int e);
    int emitChain(int i, int e, ExprInfo &info);
    int emitOperand(int i, int e, ExprInfo &info, bool &compound);
    int emitPrimary(int i, int e, ExprInfo &info);
    int emitCase(int i, int e, ExprInfo &info);
    int emitName(int i, int e);
    bool isExpressionBoundary(int i) const;

    // Function calls, CAST and CONVERT (tsqlrewriterfunctions.cpp)
    int emitFunction(int i, ExprInfo &info);
    void emitCall(int nameIndex, const QString &newName, const Arguments &args, QVarLengthArray<ExprInfo, 4> *infos);
    void emitCast(int nameIndex, const Arguments &args, ExprInfo &info);
    void emitConvert(int nameIndex, const Arguments &args, ExprInfo &info);
    void emitDatePart(int nameIndex, const Arguments &args, const char *format);
    Arguments splitArguments(int open) const;

    // Tokens and output
    bool word(int i, int e, TsqlWord w) const;
    bool symbol(int i, int e, char16_t c) const;
    int findAtDepth(int b, int e, std::initializer_list<TsqlWord> words) const;
    void put(int i);
    void putText(int i, QStringView text);
    void putRange(int b, int e);
    QString tokenText(int i) const;
    [[noreturn]] void unsupported(int i) const;

    const QString &m_sql;
    std::vector<TsqlToken> m_t;
    QString m_out;
    int m_intoIndex = -1;        // INTO of a SELECT ... INTO statement, rewritten as CREATE TABLE
    bool m_suppressLead = false; // the next token goes out without its leading whitespace
    bool m_listHasStar = false;  // the select list being written names columns by *
};

} // namespace db
