#include "tsqlrewriter.h"

#include "tsqldates.h"
#include "tsqlerror.h"

#include <QVarLengthArray>

#include <cstring>

namespace db {

using Kind = TsqlTokenKind;

namespace {

enum class Result { Other, String, Date, FromArguments };

struct FunctionRule
{
    const char *name;
    int minArgs;
    int maxArgs;
    Result result;
};

// Functions that SQLite evaluates as the server does (and SQLite's own, which the back end
// and already translated text use). Anything else is refused by name.
constexpr FunctionRule functionRules[] = {
    {"ABS", 1, 1, Result::Other},
    {"CHANGES", 0, 0, Result::Other},
    {"COALESCE", 2, 64, Result::FromArguments},
    {"COUNT", 1, 1, Result::Other},
    {"DATETIME", 0, 16, Result::Date},
    {"IFNULL", 2, 2, Result::FromArguments},
    {"IIF", 3, 3, Result::FromArguments},
    {"INSTR", 2, 2, Result::Other},
    {"JULIANDAY", 0, 16, Result::Other},
    {"LAST_INSERT_ROWID", 0, 0, Result::Other},
    {"LENGTH", 1, 1, Result::Other},
    {"LOWER", 1, 1, Result::String},
    {"LTRIM", 1, 2, Result::String},
    {"MAX", 1, 1, Result::FromArguments},
    {"MIN", 1, 1, Result::FromArguments},
    {"NULLIF", 2, 2, Result::FromArguments},
    {"PRINTF", 1, 64, Result::String},
    {"REPLACE", 3, 3, Result::String},
    {"ROUND", 2, 2, Result::Other},
    {"RTRIM", 1, 2, Result::String},
    {"STRFTIME", 2, 16, Result::String},
    {"SUBSTR", 2, 3, Result::String},
    {"SUBSTRING", 3, 3, Result::String},
    {"SUM", 1, 1, Result::Other},
    {"TOTAL_CHANGES", 0, 0, Result::Other},
    {"TRIM", 1, 1, Result::String},
    {"TSQL_CONVERT_DATETIME", 2, 2, Result::Date},
    {"TSQL_FORMAT_DATETIME", 2, 2, Result::String},
    {"TYPEOF", 1, 1, Result::String},
    {"UPPER", 1, 1, Result::String},
};

// A function or type name in upper case, empty when it is not plain ASCII.
struct UpperName
{
    explicit UpperName(QStringView word)
    {
        if (!upperAsciiWord(word, text, sizeof text))
            text[0] = 0;
    }
    bool operator==(const char *other) const { return std::strcmp(text, other) == 0; }
    char text[32];
};

const FunctionRule *findRule(const UpperName &name)
{
    for (const FunctionRule &rule : functionRules)
        if (name == rule.name)
            return &rule;
    return nullptr;
}

// A target type of CAST or CONVERT: VARCHAR(20), Char, INT, DECIMAL(10,2), DateTime.
struct TypeSpec
{
    enum Family { Unknown, Text, Integer, Real, Decimal, Blob, DateTime } family = Unknown;
    int length = -1; // -1: none given, 0: MAX
    int scale = 0;
    int b = 0, e = 0; // where it is written
};

// The type as written, for messages.
QString writtenType(const std::vector<TsqlToken> &t, const TypeSpec &type)
{
    QString text;
    for (int k = type.b; k < type.e; ++k)
        text += (k > type.b ? t[k].lead.toString() : QString()) + t[k].text.toString();
    return text;
}

bool isUnsignedInteger(const TsqlToken &t)
{
    if (t.kind != Kind::Number)
        return false;
    for (QChar c : t.text)
        if (c < u'0' || c > u'9')
            return false;
    return true;
}

TypeSpec readType(const std::vector<TsqlToken> &t, int b, int e)
{
    TypeSpec type;
    type.b = b;
    type.e = e;
    const TypeSpec unknown = type;
    if (b >= e || t[b].kind != Kind::Word)
        return type;

    const UpperName name(t[b].text);
    if (name == "VARCHAR" || name == "NVARCHAR" || name == "CHAR" || name == "NCHAR" || name == "TEXT")
        type.family = TypeSpec::Text;
    else if (name == "INT" || name == "INTEGER" || name == "BIGINT" || name == "SMALLINT" || name == "TINYINT")
        type.family = TypeSpec::Integer;
    else if (name == "FLOAT" || name == "REAL")
        type.family = TypeSpec::Real;
    else if (name == "DECIMAL" || name == "NUMERIC")
        type.family = TypeSpec::Decimal;
    else if (name == "BLOB")
        type.family = TypeSpec::Blob;
    else if (name == "DATETIME")
        type.family = TypeSpec::DateTime;
    else
        return unknown;

    if (e == b + 1)
        return type;
    // ( n ) | ( MAX ) | ( p , s )
    const bool ok = t[b + 1].isSymbol(u'(') && t[b + 1].match == e - 1;
    const int inner = e - b - 3;
    if (!ok || (inner != 1 && inner != 3))
        return unknown;
    const TsqlToken &first = t[b + 2];
    if (first.is(TsqlWord::Max) && inner == 1 && type.family == TypeSpec::Text) {
        type.length = 0;
        return type;
    }
    if (!isUnsignedInteger(first) || (inner == 3 && (!t[b + 3].isSymbol(u',') || !isUnsignedInteger(t[b + 4]))))
        return unknown;
    if (type.family == TypeSpec::Text && inner == 1)
        type.length = first.text.toInt();
    else if (type.family == TypeSpec::Decimal)
        type.scale = inner == 3 ? t[b + 4].text.toInt() : 0;
    else if (type.family != TypeSpec::Real || inner != 1)
        return unknown;
    return type;
}

} // namespace

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

// ---------------------------------------------------------------------------------------
// Functions

TsqlRewriter::Arguments TsqlRewriter::splitArguments(int open) const
{
    Arguments args;
    const int close = m_t[open].match;
    if (close == open + 1)
        return args;
    int start = open + 1;
    for (int k = start; k < close; ++k) {
        if (m_t[k].isSymbol(u'(')) {
            k = m_t[k].match;
        } else if (m_t[k].isSymbol(u',')) {
            args.append({start, k});
            start = k + 1;
        }
    }
    args.append({start, close});
    return args;
}

int TsqlRewriter::emitFunction(int i, ExprInfo &info)
{
    const int open = i + 1;
    const int close = m_t[open].match;
    const auto args = splitArguments(open);
    const UpperName name(m_t[i].text);
    const auto named = [&] { return m_t[i].text.toString().toUpper(); };
    const auto arity = [&](qsizetype count) {
        if (args.size() != count)
            throwUnsupportedTsql(named() + QStringLiteral(" con ") + QString::number(args.size())
                                 + QStringLiteral(" argomenti"));
    };

    if (name == "ISNULL") {
        arity(2);
        QVarLengthArray<ExprInfo, 4> infos;
        emitCall(i, QStringLiteral("IFNULL"), args, &infos);
        info.isString = infos[0].isString || infos[1].isString;
        info.isDate = infos[0].isDate || infos[1].isDate;
    } else if (name == "CAST") {
        emitCast(i, args, info);
    } else if (name == "CONVERT") {
        emitConvert(i, args, info);
    } else if (name == "YEAR" || name == "MONTH" || name == "DAY") {
        arity(1);
        emitDatePart(i, args, name == "YEAR" ? "%Y" : name == "MONTH" ? "%m" : "%d");
        info.isNumber = true;
    } else if (name == "GETDATE") {
        arity(0);
        putText(i, u"datetime('now','localtime')");
        info.isDate = true;
    } else {
        const FunctionRule *rule = findRule(name);
        if (!rule)
            throwUnsupportedTsql(named());
        if (args.size() < rule->minArgs || args.size() > rule->maxArgs)
            arity(rule->minArgs);
        if (name == "ROUND") {
            // ROUND(x, n, 1) truncates and a negative n rounds to tens on the server.
            const auto [b, e] = args[1];
            if (e != b + 1 || !isUnsignedInteger(m_t[b]))
                throwUnsupportedTsql(QStringLiteral("ROUND con precisione negativa o non costante"));
        }
        QVarLengthArray<ExprInfo, 4> infos;
        emitCall(i, QString(), args, &infos);
        switch (rule->result) {
        case Result::String: info.isString = true; break;
        case Result::Date: info.isDate = true; break;
        case Result::FromArguments:
            for (const ExprInfo &arg : infos) {
                info.isString = info.isString || arg.isString;
                info.isDate = info.isDate || arg.isDate;
            }
            break;
        case Result::Other:
            info.isNumber = name == "COUNT" || name == "LENGTH" || name == "ABS" || name == "ROUND";
            break;
        }
    }
    return close + 1;
}

void TsqlRewriter::emitCall(int nameIndex, const QString &newName, const Arguments &args,
                            QVarLengthArray<ExprInfo, 4> *infos)
{
    if (newName.isEmpty())
        put(nameIndex);
    else
        putText(nameIndex, newName);
    const int open = nameIndex + 1;
    put(open);
    for (qsizetype k = 0; k < args.size(); ++k) {
        const ExprInfo arg = emitExpressionList(args[k].first, args[k].second);
        if (infos)
            infos->append(arg);
        if (k + 1 < args.size())
            put(args[k].second);
    }
    put(m_t[open].match);
}

namespace {

// How a conversion is written in SQLite: prefix, the expression, middle, suffix.
struct CastShape
{
    QString prefix;
    QString middle;
    QString suffix;
};

CastShape castShape(const TypeSpec &type)
{
    switch (type.family) {
    case TypeSpec::Text:
        if (type.length > 0)
            return {QStringLiteral("SUBSTR(CAST("), QStringLiteral("AS TEXT"),
                    QStringLiteral("), 1, ") + QString::number(type.length) + u')'};
        return {QStringLiteral("CAST("), QStringLiteral("AS TEXT"), QStringLiteral(")")};
    case TypeSpec::Integer: return {QStringLiteral("CAST("), QStringLiteral("AS INTEGER"), QStringLiteral(")")};
    case TypeSpec::Real: return {QStringLiteral("CAST("), QStringLiteral("AS REAL"), QStringLiteral(")")};
    case TypeSpec::Blob: return {QStringLiteral("CAST("), QStringLiteral("AS BLOB"), QStringLiteral(")")};
    case TypeSpec::Decimal:
        // DECIMAL rounds to its scale (half away from zero, like SQLite's ROUND).
        if (type.scale > 0)
            return {QStringLiteral("ROUND(CAST("), QStringLiteral("AS REAL"),
                    QStringLiteral("), ") + QString::number(type.scale) + u')'};
        return {QStringLiteral("CAST(ROUND(CAST("), QStringLiteral("AS REAL"), QStringLiteral(")) AS INTEGER)")};
    default: return {};
    }
}

} // namespace

void TsqlRewriter::emitCast(int nameIndex, const Arguments &args, ExprInfo &info)
{
    if (args.size() != 1)
        throwUnsupportedTsql(QStringLiteral("CAST"));
    const auto [b, e] = args[0];
    int as = -1;
    for (int k = b; k < e; ++k) {
        if (m_t[k].isSymbol(u'('))
            k = m_t[k].match;
        else if (m_t[k].is(TsqlWord::As))
            as = k;
    }
    if (as < 0)
        throwUnsupportedTsql(QStringLiteral("CAST senza AS"));
    const TypeSpec type = readType(m_t, as + 1, e);
    if (type.family == TypeSpec::Unknown || type.family == TypeSpec::DateTime)
        throwUnsupportedTsql(QStringLiteral("CAST AS ") + writtenType(m_t, type));

    const CastShape shape = castShape(type);
    putText(nameIndex, shape.prefix);
    m_suppressLead = true;
    emitExpressionList(b, as);
    m_suppressLead = false;
    putText(as, shape.middle);
    putText(e, shape.suffix);
    info.isString = type.family == TypeSpec::Text;
    info.isNumber = !info.isString;
}

void TsqlRewriter::emitConvert(int nameIndex, const Arguments &args, ExprInfo &info)
{
    if (args.size() < 2 || args.size() > 3)
        throwUnsupportedTsql(QStringLiteral("CONVERT"));
    const TypeSpec type = readType(m_t, args[0].first, args[0].second);
    const auto [b, e] = args[1];
    const int close = m_t[nameIndex + 1].match;

    int style = -1;
    if (args.size() == 3) {
        const auto [sb, se] = args[2];
        if (se != sb + 1 || !isUnsignedInteger(m_t[sb]))
            throwUnsupportedTsql(QStringLiteral("CONVERT con stile non costante"));
        style = m_t[sb].text.toInt();
    }
    const auto refuse = [&] {
        throwUnsupportedTsql(QStringLiteral("CONVERT(") + writtenType(m_t, type)
                             + (style >= 0 ? QStringLiteral(", ..., ") + QString::number(style) : QString()) + u')');
    };

    if (type.family == TypeSpec::DateTime) {
        if (!isKnownDateStyle(style))
            refuse();
        info.isDate = true;
        if (e == b + 1 && m_t[b].kind == Kind::String) {
            const auto stored = tsqlTextToStoredDate(m_t[b].stringValue(), style);
            if (!stored)
                throwInvalidTsql(QStringLiteral("data non valida ") + m_t[b].text.toString());
            putText(nameIndex, QString(u'\'' + *stored + u'\''));
            return;
        }
        putText(nameIndex, u"tsql_convert_datetime(");
        m_suppressLead = true;
        emitExpressionList(b, e);
        m_suppressLead = false;
        m_out += QLatin1StringView(", ") + QString::number(style);
        putText(close, u")");
        return;
    }

    if (type.family == TypeSpec::Unknown)
        refuse();
    if (style >= 0) {
        // Only a date written as text takes a style.
        if (type.family != TypeSpec::Text || !isKnownDateStyle(style))
            refuse();
        const bool cut = type.length > 0;
        putText(nameIndex, cut ? QStringView(u"SUBSTR(tsql_format_datetime(") : QStringView(u"tsql_format_datetime("));
        m_suppressLead = true;
        emitExpressionList(b, e);
        m_suppressLead = false;
        m_out += QLatin1StringView(", ") + QString::number(style);
        putText(close, cut ? QStringLiteral("), 1, ") + QString::number(type.length) + u')' : QStringLiteral(")"));
        info.isString = true;
        return;
    }

    const CastShape shape = castShape(type);
    putText(nameIndex, shape.prefix);
    m_suppressLead = true;
    emitExpressionList(b, e);
    m_suppressLead = false;
    m_out += u' ';
    m_out += shape.middle;
    putText(close, shape.suffix);
    info.isString = type.family == TypeSpec::Text;
    info.isNumber = !info.isString;
}

void TsqlRewriter::emitDatePart(int nameIndex, const Arguments &args, const char *format)
{
    putText(nameIndex, QStringLiteral("CAST(strftime('") + QLatin1StringView(format) + QStringLiteral("', "));
    m_suppressLead = true;
    emitExpressionList(args[0].first, args[0].second);
    m_suppressLead = false;
    putText(m_t[nameIndex + 1].match, u") AS INTEGER)");
}

} // namespace db
