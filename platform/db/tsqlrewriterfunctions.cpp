#include "tsqlrewriter.h"

#include "tsqldates.h"
#include "tsqlerror.h"

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
