#include "recordsetcriteria.h"

#include "backend.h"
#include "dayformat.h"
#include "recordsetdata.h"
#include "storedvalues.h"

#include <QDateTime>
#include <vector>

namespace db {

struct RecordsetCriteria::Node
{
    enum Kind { And, Or, Compare } kind = Compare;
    enum Operator { Equal, NotEqual, Less, Greater, LessOrEqual, GreaterOrEqual, Like, NotLike, IsNull, IsNotNull };
    std::vector<std::unique_ptr<Node>> children;

    int field = -1;
    Operator op = Equal;
    bool numericLiteral = false;
    double number = 0;
    QString text;    // the literal as written
    QString pattern; // the literal case-folded, for LIKE
    QDateTime date;  // the literal read as a date, when it is one

    bool matches(const RecordsetData &data, int row) const;
    bool compare(const QVariant &value) const;
};

namespace {

char16_t folded(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 128)
        return (u >= 'A' && u <= 'Z') ? char16_t(u + ('a' - 'A')) : u;
    // The simple case folding of a character of the basic plane stays in that plane.
    return static_cast<char16_t>(QChar::toCaseFolded(char32_t(u)));
}

bool isWildcard(QChar c)
{
    return c == QLatin1Char('%') || c == QLatin1Char('*');
}

// LIKE with % or * for any run of characters; the pattern is already case-folded. Works on the
// cell's own text, without copies: a Find walks every row.
bool likeMatch(QStringView value, QStringView pattern)
{
    const qsizetype vn = value.size(), pn = pattern.size();
    qsizetype vi = 0, pi = 0, starP = -1, starV = 0;
    while (vi < vn) {
        if (pi < pn && isWildcard(pattern[pi])) {
            starP = pi++;
            starV = vi;
        } else if (pi < pn && pattern[pi].unicode() == folded(value[vi])) {
            ++pi;
            ++vi;
        } else if (starP >= 0) {
            pi = starP + 1;
            vi = ++starV;
        } else {
            return false;
        }
    }
    while (pi < pn && isWildcard(pattern[pi]))
        ++pi;
    return pi == pn;
}

int ordering(double a, double b)
{
    return a < b ? -1 : (a > b ? 1 : 0);
}

bool holds(RecordsetCriteria::Node::Operator op, int order)
{
    using N = RecordsetCriteria::Node;
    switch (op) {
    case N::Equal: return order == 0;
    case N::NotEqual: return order != 0;
    case N::Less: return order < 0;
    case N::Greater: return order > 0;
    case N::LessOrEqual: return order <= 0;
    case N::GreaterOrEqual: return order >= 0;
    default: return false;
    }
}

QString displayText(const QVariant &value)
{
    if (value.metaType().id() == QMetaType::QDateTime)
        return value.toDateTime().toString(dayFormat);
    return value.toString();
}

class Parser
{
public:
    Parser(const QString &text, const RecordsetData &data)
        : m_text(text)
        , m_data(data)
    { }

    std::unique_ptr<RecordsetCriteria::Node> parseAll()
    {
        auto node = parseOr();
        skipSpaces();
        if (m_pos < m_text.size())
            fail();
        return node;
    }

private:
    using Node = RecordsetCriteria::Node;

    [[noreturn]] void fail() const
    {
        throw makeError(QStringLiteral("Criterio non valido: %1").arg(m_text), QStringLiteral("Recordset"));
    }

    void skipSpaces()
    {
        while (m_pos < m_text.size() && m_text.at(m_pos).isSpace())
            ++m_pos;
    }

    bool keyword(const char *word)
    {
        skipSpaces();
        const QLatin1String w(word);
        if (m_text.mid(m_pos, w.size()).compare(w, Qt::CaseInsensitive) != 0)
            return false;
        const qsizetype after = m_pos + w.size();
        if (after < m_text.size() && (m_text.at(after).isLetterOrNumber() || m_text.at(after) == QLatin1Char('_')))
            return false;
        m_pos = after;
        return true;
    }

    bool symbol(const char *text)
    {
        skipSpaces();
        const QLatin1String s(text);
        if (!m_text.mid(m_pos).startsWith(s))
            return false;
        m_pos += s.size();
        return true;
    }

    std::unique_ptr<Node> combine(Node::Kind kind, std::unique_ptr<Node> first, std::unique_ptr<Node> second)
    {
        if (first->kind == kind) {
            first->children.push_back(std::move(second));
            return first;
        }
        auto node = std::make_unique<Node>();
        node->kind = kind;
        node->children.push_back(std::move(first));
        node->children.push_back(std::move(second));
        return node;
    }

    std::unique_ptr<Node> parseOr()
    {
        auto node = parseAnd();
        while (keyword("OR"))
            node = combine(Node::Or, std::move(node), parseAnd());
        return node;
    }

    std::unique_ptr<Node> parseAnd()
    {
        auto node = parseFactor();
        while (keyword("AND"))
            node = combine(Node::And, std::move(node), parseFactor());
        return node;
    }

    std::unique_ptr<Node> parseFactor()
    {
        if (symbol("(")) {
            auto node = parseOr();
            if (!symbol(")"))
                fail();
            return node;
        }
        return parseComparison();
    }

    QString fieldName()
    {
        skipSpaces();
        if (m_pos >= m_text.size())
            fail();
        const QChar first = m_text.at(m_pos);
        if (first == QLatin1Char('[') || first == QLatin1Char('"')) {
            const QChar close = first == QLatin1Char('[') ? QLatin1Char(']') : QLatin1Char('"');
            const qsizetype end = m_text.indexOf(close, m_pos + 1);
            if (end < 0)
                fail();
            const QString name = m_text.mid(m_pos + 1, end - m_pos - 1);
            m_pos = end + 1;
            return name;
        }
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && (m_text.at(m_pos).isLetterOrNumber() || m_text.at(m_pos) == QLatin1Char('_')))
            ++m_pos;
        if (m_pos == start)
            fail();
        return m_text.mid(start, m_pos - start);
    }

    std::unique_ptr<Node> parseComparison()
    {
        auto node = std::make_unique<Node>();
        const QString name = fieldName();
        node->field = m_data.fieldByName.value(name.toLower(), -1);
        if (node->field < 0)
            throw makeError(QStringLiteral("Campo sconosciuto nel criterio: %1").arg(name),
                            QStringLiteral("Recordset"));

        if (keyword("IS")) {
            node->op = keyword("NOT") ? Node::IsNotNull : Node::IsNull;
            if (!keyword("NULL"))
                fail();
            return node;
        }
        if (keyword("NOT")) {
            if (!keyword("LIKE"))
                fail();
            node->op = Node::NotLike;
        } else if (keyword("LIKE")) {
            node->op = Node::Like;
        } else if (symbol("<>") || symbol("!=")) {
            node->op = Node::NotEqual;
        } else if (symbol("<=")) {
            node->op = Node::LessOrEqual;
        } else if (symbol(">=")) {
            node->op = Node::GreaterOrEqual;
        } else if (symbol("=")) {
            node->op = Node::Equal;
        } else if (symbol("<")) {
            node->op = Node::Less;
        } else if (symbol(">")) {
            node->op = Node::Greater;
        } else {
            fail();
        }
        parseLiteral(*node);
        return node;
    }

    void parseLiteral(Node &node)
    {
        skipSpaces();
        if (m_pos >= m_text.size())
            fail();
        const QChar first = m_text.at(m_pos);
        if (first == QLatin1Char('\'')) {
            QString literal;
            ++m_pos;
            for (;;) {
                if (m_pos >= m_text.size())
                    fail();
                if (m_text.at(m_pos) == QLatin1Char('\'')) {
                    if (m_pos + 1 < m_text.size() && m_text.at(m_pos + 1) == QLatin1Char('\'')) {
                        literal += QLatin1Char('\'');
                        m_pos += 2;
                        continue;
                    }
                    ++m_pos;
                    break;
                }
                literal += m_text.at(m_pos++);
            }
            setText(node, literal);
        } else if (first == QLatin1Char('#')) {
            const qsizetype end = m_text.indexOf(QLatin1Char('#'), m_pos + 1);
            if (end < 0)
                fail();
            setText(node, m_text.mid(m_pos + 1, end - m_pos - 1));
            if (!node.date.isValid())
                fail();
            m_pos = end + 1;
        } else if (keyword("NULL")) {
            if (node.op == Node::Equal)
                node.op = Node::IsNull;
            else if (node.op == Node::NotEqual)
                node.op = Node::IsNotNull;
            else
                fail();
        } else {
            const qsizetype start = m_pos;
            if (first == QLatin1Char('-') || first == QLatin1Char('+'))
                ++m_pos;
            while (m_pos < m_text.size() && (m_text.at(m_pos).isDigit() || m_text.at(m_pos) == QLatin1Char('.')))
                ++m_pos;
            bool ok = false;
            node.number = m_text.mid(start, m_pos - start).toDouble(&ok);
            if (!ok)
                fail();
            node.numericLiteral = true;
            node.text = m_text.mid(start, m_pos - start);
        }
    }

    static void setText(Node &node, const QString &literal)
    {
        node.text = literal;
        node.pattern = literal.toCaseFolded();
        node.date = storedvalues::parseDateTime(literal);
        if (!node.date.isValid()) {
            for (const QStringView format : {dayFormat, QStringView(u"d/M/yyyy"), dayTimeFormat}) {
                node.date = QDateTime::fromString(literal.trimmed(), format);
                if (node.date.isValid())
                    break;
            }
        }
        bool ok = false;
        node.number = literal.trimmed().toDouble(&ok);
        node.numericLiteral = false;
        if (!ok)
            node.number = qQNaN();
    }

    const QString &m_text;
    const RecordsetData &m_data;
    qsizetype m_pos = 0;
};

} // namespace

bool RecordsetCriteria::Node::matches(const RecordsetData &data, int row) const
{
    switch (kind) {
    case And:
        for (const auto &child : children) {
            if (!child->matches(data, row))
                return false;
        }
        return true;
    case Or:
        for (const auto &child : children) {
            if (child->matches(data, row))
                return true;
        }
        return false;
    case Compare: break;
    }
    return compare(data.cell(row, field));
}

bool RecordsetCriteria::Node::compare(const QVariant &value) const
{
    const bool isNull = !value.isValid() || value.isNull();
    if (op == IsNull)
        return isNull;
    if (op == IsNotNull)
        return !isNull;
    if (isNull)
        return false;
    if (op == Like || op == NotLike) {
        const bool found = value.metaType().id() == QMetaType::QString
            ? likeMatch(*static_cast<const QString *>(value.constData()), pattern)
            : likeMatch(displayText(value), pattern);
        return op == Like ? found : !found;
    }

    switch (value.metaType().id()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
    case QMetaType::Double:
    case QMetaType::Bool:
        if (qIsNaN(number))
            break; // a text literal against a number: compare as texts
        return holds(op, ordering(value.toDouble(), number));
    case QMetaType::QDateTime:
        if (date.isValid())
            return holds(op,
                         ordering(double(value.toDateTime().toMSecsSinceEpoch()), double(date.toMSecsSinceEpoch())));
        return false;
    default:
        if (numericLiteral) {
            bool ok = false;
            const double cellNumber = value.toString().trimmed().toDouble(&ok);
            return ok && holds(op, ordering(cellNumber, number));
        }
        break;
    }
    if (value.metaType().id() == QMetaType::QString)
        return holds(op, static_cast<const QString *>(value.constData())->compare(text, Qt::CaseInsensitive));
    return holds(op, displayText(value).compare(text, Qt::CaseInsensitive));
}

RecordsetCriteria::RecordsetCriteria() = default;
RecordsetCriteria::~RecordsetCriteria() = default;

std::unique_ptr<RecordsetCriteria> RecordsetCriteria::parse(const QString &text, const RecordsetData &data)
{
    std::unique_ptr<RecordsetCriteria> criteria(new RecordsetCriteria);
    criteria->m_root = Parser(text, data).parseAll();
    return criteria;
}

bool RecordsetCriteria::matches(const RecordsetData &data, int storedRow) const
{
    return m_root->matches(data, storedRow);
}

} // namespace db
