#include "tsqlrewriter.h"

#include "tsqlerror.h"

#include <QVarLengthArray>

#include <cstring>

namespace db {

using Kind = TsqlTokenKind;

TsqlRewriter::TsqlRewriter(const QString &sql)
    : m_sql(sql)
    , m_t(tokenizeTsql(sql))
{
    m_out.reserve(sql.size() + sql.size() / 8 + 32);
}

QString TsqlRewriter::rewrite()
{
    const int n = int(m_t.size());
    if (n == 0)
        return m_out;

    // One statement, optionally closed by a semicolon.
    int e = n;
    if (m_t[n - 1].isSymbol(u';'))
        e = n - 1;

    const TsqlToken &first = m_t[0];
    if (first.kind != Kind::Word)
        unsupported(0);

    if (first.is(TsqlWord::Select)) {
        selectStatement(e);
    } else if (first.is(TsqlWord::Insert)) {
        insertStatement(e);
    } else if (first.is(TsqlWord::Update)) {
        updateStatement(e);
    } else if (first.is(TsqlWord::Delete)) {
        deleteStatement(e);
    } else if (first.is(TsqlWord::If)) {
        ifStatement(e);
    } else if (first.is(TsqlWord::Drop)) {
        dropStatement(e);
    } else {
        // Statements of SQLite's own that the back end issues itself (schema, pragmas,
        // transactions) pass untouched; any other T-SQL statement is refused.
        static const TsqlWord native[] = {TsqlWord::Create,  TsqlWord::Alter,    TsqlWord::Pragma,  TsqlWord::Begin,
                                          TsqlWord::Commit,  TsqlWord::Rollback, TsqlWord::End,     TsqlWord::Savepoint,
                                          TsqlWord::Release, TsqlWord::Vacuum,   TsqlWord::Analyze, TsqlWord::Reindex,
                                          TsqlWord::Attach,  TsqlWord::Detach};
        for (TsqlWord w : native) {
            if (first.is(w)) {
                return m_sql;
            }
        }
        unsupported(0);
    }
    if (e < n)
        put(e);
    return m_out;
}

// ---------------------------------------------------------------------------------------
// Statements

void TsqlRewriter::selectStatement(int e)
{
    // SELECT ... INTO name FROM ...: the INTO belongs to the first SELECT of the statement.
    const int stop = findAtDepth(0, e, {TsqlWord::Union, TsqlWord::Except, TsqlWord::Intersect});
    const int into = findAtDepth(0, stop, {TsqlWord::Into});
    if (into < stop) {
        if (into + 1 >= stop || !m_t[into + 1].isName() || (into + 2 < stop && m_t[into + 2].isSymbol(u'.')))
            unsupported(into);
        const TsqlToken &target = m_t[into + 1];
        if (target.kind == Kind::TempName && target.text.startsWith(QLatin1StringView("##")))
            unsupported(into + 1);
        m_out += m_t[0].lead;
        m_out += target.kind == Kind::TempName ? QLatin1StringView("CREATE TEMP TABLE ")
                                               : QLatin1StringView("CREATE TABLE ");
        m_suppressLead = true;
        put(into + 1);
        m_out += QLatin1StringView(" AS ");
        m_suppressLead = true;
        m_intoIndex = into;
    }
    emitSelect(0, e, SelectRole::Statement, false);
}

void TsqlRewriter::insertStatement(int e)
{
    int i = statementHead(e, true);
    i = impliedWord(i, e, TsqlWord::Into, QLatin1StringView(" INTO"));
    i = tableTarget(i, e, "INSERT");

    if (symbol(i, e, u'(')) {
        const int close = m_t[i].match;
        for (int k = i; k <= close; ++k) {
            if (!m_t[k].isName() && !m_t[k].isSymbol(u',') && k != i && k != close)
                unsupported(k);
            put(k);
        }
        i = close + 1;
    }

    if (word(i, e, TsqlWord::Values)) {
        put(i++);
        while (true) {
            if (!symbol(i, e, u'('))
                unsupported(i < e ? i : e - 1);
            const int close = m_t[i].match;
            put(i);
            emitExpressionList(i + 1, close);
            put(close);
            i = close + 1;
            if (!symbol(i, e, u','))
                break;
            put(i++);
        }
    } else if (word(i, e, TsqlWord::Select)) {
        const int end = findAtDepth(i, e, {TsqlWord::Returning});
        emitSelect(i, end, SelectRole::InsertSource, false);
        i = end;
    } else if (word(i, e, TsqlWord::Default) && word(i + 1, e, TsqlWord::Values)) {
        put(i++);
        put(i++);
    } else {
        unsupported(i < e ? i : e - 1);
    }
    statementEnd(i, e);
}

void TsqlRewriter::updateStatement(int e)
{
    int i = statementHead(e, true);
    i = tableTarget(i, e, "UPDATE");
    if (!word(i, e, TsqlWord::Set))
        unsupported(i < e ? i : e - 1);
    put(i++);

    const int from = findAtDepth(i, e, {TsqlWord::From});
    if (from < e)
        throwUnsupportedTsql(QStringLiteral("UPDATE ... FROM"));
    const int where = findAtDepth(i, e, {TsqlWord::Where, TsqlWord::Returning});
    emitExpressionList(i, where);
    statementEnd(whereClause(where, e), e);
}

void TsqlRewriter::deleteStatement(int e)
{
    int i = statementHead(e, false);
    i = impliedWord(i, e, TsqlWord::From, QLatin1StringView(" FROM"));
    i = tableTarget(i, e, "DELETE");
    if (word(i, e, TsqlWord::From))
        throwUnsupportedTsql(QStringLiteral("DELETE ... FROM"));
    statementEnd(whereClause(i, e), e);
}

// The keyword of an INSERT, UPDATE or DELETE, with SQLite's OR REPLACE (OR IGNORE, ...) after
// it where the statement takes one; TOP has no place in SQLite's forms.
int TsqlRewriter::statementHead(int e, bool orConflict)
{
    int i = 0;
    put(i++);
    if (orConflict && word(i, e, TsqlWord::Or) && i + 1 < e) {
        put(i++);
        put(i++);
    }
    if (word(i, e, TsqlWord::Top))
        unsupported(i);
    return i;
}

// A keyword that T-SQL lets a statement leave out (INSERT [INTO], DELETE [FROM]) and SQLite needs.
int TsqlRewriter::impliedWord(int i, int e, TsqlWord w, QLatin1StringView text)
{
    if (!word(i, e, w)) {
        m_out += text;
        return i;
    }
    put(i);
    return i + 1;
}

// The WHERE of an UPDATE or a DELETE, where present.
int TsqlRewriter::whereClause(int i, int e)
{
    if (!word(i, e, TsqlWord::Where))
        return i;
    const int end = findAtDepth(i + 1, e, {TsqlWord::Returning});
    put(i);
    emitExpressionList(i + 1, end);
    return end;
}

// The table written by INSERT, UPDATE or DELETE: a name, never with hints or an alias.
int TsqlRewriter::tableTarget(int i, int e, const char *statement)
{
    if (i >= e || !m_t[i].isName() || m_t[i].keyword != TsqlKeyword::None)
        throwUnsupportedTsql(QLatin1StringView(statement) + QStringLiteral(" senza tabella"));
    i = emitName(i, e);
    if (word(i, e, TsqlWord::With) || (symbol(i, e, u'(') && isNolockHint(i)))
        unsupported(i);
    return i;
}

// RETURNING, where present, ends the statement: nothing else may follow.
void TsqlRewriter::statementEnd(int i, int e)
{
    if (word(i, e, TsqlWord::Returning)) {
        put(i);
        emitExpressionList(i + 1, e);
    } else if (i < e) {
        unsupported(i);
    }
}

// IF OBJECT_ID('tempdb..#t') IS NOT NULL DROP TABLE #t, the only IF the module sends.
void TsqlRewriter::ifStatement(int e)
{
    const auto fail = [] { throwUnsupportedTsql(QStringLiteral("IF")); };
    int i = 1;
    if (!word(i, e, TsqlWord::ObjectId) || !symbol(i + 1, e, u'('))
        fail();
    const int close = m_t[i + 1].match;
    const int literal = i + 2;
    if (m_t[literal].kind != Kind::String)
        fail();
    if (literal + 1 != close
        && !(literal + 3 == close && m_t[literal + 1].isSymbol(u',') && m_t[literal + 2].kind == Kind::String
             && m_t[literal + 2].stringValue().compare(QLatin1StringView("U"), Qt::CaseInsensitive) == 0))
        fail();
    i = close + 1;
    if (!word(i, e, TsqlWord::Is) || !word(i + 1, e, TsqlWord::Not) || !word(i + 2, e, TsqlWord::Null)
        || !word(i + 3, e, TsqlWord::Drop) || !word(i + 4, e, TsqlWord::Table) || i + 6 != e
        || m_t[i + 5].kind != Kind::TempName)
        fail();

    const QString objectName = m_t[literal].stringValue();
    const QStringView table = m_t[i + 5].text;
    QStringView inTempdb;
    for (const char *prefix : {"tempdb..", "tempdb.dbo."}) {
        if (objectName.startsWith(QLatin1StringView(prefix), Qt::CaseInsensitive))
            inTempdb = QStringView(objectName).mid(qsizetype(strlen(prefix)));
    }
    if (inTempdb.compare(table, Qt::CaseInsensitive) != 0 || table.startsWith(QLatin1StringView("##")))
        fail();

    m_out += m_t[0].lead;
    m_out += QLatin1StringView("DROP TABLE IF EXISTS temp.\"");
    m_out += table;
    m_out += u'"';
}

void TsqlRewriter::dropStatement(int e)
{
    int i = 0;
    put(i++);
    if (!word(i, e, TsqlWord::Table)) {
        // DROP INDEX, VIEW, TRIGGER: schema statements, as written.
        putRange(i, e);
        return;
    }
    put(i++);
    if (word(i, e, TsqlWord::If) && word(i + 1, e, TsqlWord::Exists)) {
        put(i++);
        put(i++);
    }
    if (i < e && m_t[i].kind == Kind::TempName && i + 1 == e) {
        putText(i, QString());
        m_out += QLatin1StringView("temp.");
        m_suppressLead = true;
        put(i);
        return;
    }
    if (i >= e || !m_t[i].isName())
        unsupported(i < e ? i : e - 1);
    i = emitName(i, e);
    if (i < e)
        unsupported(i);
}

// ---------------------------------------------------------------------------------------
// Queries

void TsqlRewriter::emitSelect(int b, int e, SelectRole role, bool inCompound)
{
    const int compound = findAtDepth(b, e, {TsqlWord::Union, TsqlWord::Except, TsqlWord::Intersect});
    if (compound >= e) {
        emitSimpleSelect(b, e, role, inCompound);
        return;
    }
    emitSimpleSelect(b, compound, role, true);
    int i = compound;
    put(i++);
    if (word(i, e, TsqlWord::All))
        put(i++);
    if (!word(i, e, TsqlWord::Select))
        unsupported(i < e ? i : compound);
    emitSelect(i, e, role == SelectRole::Statement ? SelectRole::InsertSource : role, true);
}

void TsqlRewriter::emitSimpleSelect(int b, int e, SelectRole role, bool inCompound)
{
    int i = b;
    put(i++);
    if (word(i, e, TsqlWord::Distinct) || word(i, e, TsqlWord::All))
        put(i++);

    QString limit;
    if (word(i, e, TsqlWord::Top)) {
        ++i;
        if (inCompound)
            throwUnsupportedTsql(QStringLiteral("TOP con UNION"));
        int count = i;
        if (symbol(i, e, u'(')) {
            count = i + 1;
            if (m_t[i].match != i + 2)
                unsupported(count);
            i = m_t[i].match + 1;
        } else {
            ++i;
        }
        if (count >= e || m_t[count].kind != Kind::Number || m_t[count].text.startsWith(QLatin1StringView("0x"))
            || m_t[count].text.contains(u'.') || m_t[count].text.contains(u'e') || m_t[count].text.contains(u'E'))
            throwUnsupportedTsql(QStringLiteral("TOP ") + (count < e ? tokenText(count) : QString()));
        if (word(i, e, TsqlWord::Percent))
            throwUnsupportedTsql(QStringLiteral("TOP PERCENT"));
        if (word(i, e, TsqlWord::With))
            throwUnsupportedTsql(QStringLiteral("TOP WITH TIES"));
        limit = m_t[count].text.toString();
    }

    // Clause starts at this query's depth, in the order written.
    struct Clause
    {
        int at;
        TsqlWord name;
    };
    QVarLengthArray<Clause, 6> clauses;
    static const TsqlWord clauseWords[] = {TsqlWord::Into,   TsqlWord::From,  TsqlWord::Where, TsqlWord::Group,
                                           TsqlWord::Having, TsqlWord::Order, TsqlWord::Limit, TsqlWord::Option,
                                           TsqlWord::For,    TsqlWord::Offset};
    for (int k = i; k < e; ++k) {
        const TsqlToken &t = m_t[k];
        if (t.isSymbol(u'(')) {
            k = t.match;
            continue;
        }
        if (t.kind != Kind::Word)
            continue;
        for (TsqlWord w : clauseWords) {
            if (t.is(w)) {
                clauses.append(Clause {k, w});
                break;
            }
        }
    }

    const int listEnd = clauses.size() > 0 ? clauses[0].at : e;
    if (listEnd == i)
        unsupported(i < e ? i : b);
    emitExpressionList(i, listEnd);
    // Columns named by * come in the order of the FROM clause, which must then stay as written.
    bool listHasStar = false;
    for (int k = i; k < listEnd && !listHasStar; ++k) {
        if (m_t[k].isSymbol(u'('))
            k = m_t[k].match;
        else
            listHasStar = m_t[k].isSymbol(u'*');
    }

    for (int c = 0; c < clauses.size(); ++c) {
        const int at = clauses[c].at;
        const int end = c + 1 < clauses.size() ? clauses[c + 1].at : e;
        const TsqlWord name = clauses[c].name;
        if (name == TsqlWord::Into) {
            if (at != m_intoIndex || role != SelectRole::Statement || c != 0 || end != at + 2)
                throwUnsupportedTsql(QStringLiteral("SELECT ... INTO"));
        } else if (name == TsqlWord::From) {
            put(at);
            const bool outerHasStar = m_listHasStar;
            m_listHasStar = listHasStar;
            emitFrom(at + 1, end);
            m_listHasStar = outerHasStar;
        } else if (name == TsqlWord::Where || name == TsqlWord::Having) {
            put(at);
            emitExpressionList(at + 1, end);
        } else if (name == TsqlWord::Group || name == TsqlWord::Order) {
            if (!word(at + 1, end, TsqlWord::By))
                unsupported(at);
            put(at);
            put(at + 1);
            emitExpressionList(at + 2, end);
        } else if (name == TsqlWord::Limit
                   || (name == TsqlWord::Offset && c > 0 && clauses[c - 1].name == TsqlWord::Limit)) {
            // SQLite's own LIMIT [OFFSET]; the server's OFFSET ... FETCH is refused below.
            if (!limit.isEmpty())
                throwUnsupportedTsql(QStringLiteral("TOP con LIMIT"));
            put(at);
            emitExpressionList(at + 1, end);
        } else {
            unsupported(at); // OPTION (...), FOR XML/BROWSE/UPDATE
        }
    }

    if (!limit.isEmpty()) {
        m_out += QLatin1StringView(" LIMIT ");
        m_out += limit;
    }
}

// FROM clause. Joins written without parentheses nest the way their ON clauses pair up:
// A RIGHT JOIN B JOIN C ON c1 ON c2 is A RIGHT JOIN (B JOIN C ON c1) ON c2. The tree is
// parsed first, then written in the same token order with parentheses around every right
// operand that is itself a join.
bool TsqlRewriter::word(int i, int e, TsqlWord w) const
{
    return i < e && m_t[i].word == w;
}

bool TsqlRewriter::symbol(int i, int e, char16_t c) const
{
    return i < e && m_t[i].isSymbol(c);
}

// First of the words at the depth of b, or e.
int TsqlRewriter::findAtDepth(int b, int e, std::initializer_list<TsqlWord> words) const
{
    for (int k = b; k < e; ++k) {
        const TsqlToken &t = m_t[k];
        if (t.isSymbol(u'(')) {
            k = t.match;
            continue;
        }
        if (t.word == TsqlWord::None)
            continue;
        for (TsqlWord w : words)
            if (t.word == w)
                return k;
    }
    return e;
}

void TsqlRewriter::putText(int i, QStringView text)
{
    if (m_suppressLead)
        m_suppressLead = false;
    else if (m_t[i].leadHasComment)
        m_out += u' ';
    else
        m_out += m_t[i].lead;
    m_out += text;
}

void TsqlRewriter::put(int i)
{
    const TsqlToken &t = m_t[i];
    switch (t.kind) {
    case Kind::QuotedName:
        if (t.text[0] == u'[') {
            QString name = t.nameText();
            name.replace(u'"', QLatin1StringView("\"\""));
            putText(i, QString(u'"' + name + u'"'));
            return;
        }
        break;
    case Kind::TempName:
        if (t.text.startsWith(QLatin1StringView("##")))
            unsupported(i);
        putText(i, QString(u'"' + t.text.toString() + u'"'));
        return;
    case Kind::String:
        if (t.text[0] != u'\'') {
            putText(i, t.text.mid(1));
            return;
        }
        break;
    case Kind::Number:
        if (t.text.size() > 1 && (t.text[1] == u'x' || t.text[1] == u'X'))
            unsupported(i);
        break;
    case Kind::Variable: unsupported(i);
    default: break;
    }
    if (m_suppressLead || t.leadHasComment) {
        putText(i, t.text);
        return;
    }
    m_out += QStringView(t.lead.data(), t.lead.size() + t.text.size()); // adjacent in the statement
}

void TsqlRewriter::putRange(int b, int e)
{
    for (int k = b; k < e; ++k)
        put(k);
}

QString TsqlRewriter::tokenText(int i) const
{
    if (i < 0 || i >= int(m_t.size()))
        return QString();
    return m_t[i].text.toString();
}

void TsqlRewriter::unsupported(int i) const
{
    const TsqlToken &t = m_t[i];
    QString construct = t.text.toString();
    if (t.kind == Kind::Word)
        construct = construct.toUpper();
    throwUnsupportedTsql(construct);
}

} // namespace db
