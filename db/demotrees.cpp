#include "demotrees.h"

#include <algorithm>

namespace dbsetup {

namespace {

const char *const kRootDescriptions[] = {"Centrale acquisti", "Capogruppo", "Sede legale", "Gruppo"};
const char *const kMiddleDescriptions[] = {"Sede regionale", "Deposito", "Filiale", "Ce.Di. regionale"};
const char *const kLeafDescriptions[] = {"Punto vendita", "Negozio", "Locale", "Magazzino"};
const char *const kUsers[] = {"mrossi", "lbianchi", "gverdi", "admin"};

template<typename T, std::size_t N>
std::span<const T> all(const T (&items)[N])
{
    return std::span<const T>(items, N);
}

QString stamp(const QDate &date, int minutes)
{
    return date.toString(QStringLiteral("yyyy-MM-dd"))
        + QStringLiteral(" %1:%2:00")
              .arg(8 + minutes / 60 % 10, 2, 10, QLatin1Char('0'))
              .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

TreeWriter::TreeWriter(DemoContext &context, int company)
    : m_context(context)
    , m_company(company)
    , m_type(context.file.prepare(QStringLiteral(
          "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, GD01_INDTIPOSOGG,"
          " GD01_IDDIV_CO1A, GD01_ID_LP09, GD01_GUID, GD01_DATACRE, GD01_GRUPPOCRE, GD01_UTENTECRE,"
          " GD01_DATAVAR, GD01_GRUPPOVAR, GD01_UTENTEVAR) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
    , m_node(context.file.prepare(QStringLiteral(
          "INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44,"
          " GD02_CLIFOR_CG44, GD02_INDREGPROV, GD02_ID_WF02, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL,"
          " GD02_TIPOANAGFATT, GD02_CLIFORFATT_CG44, GD02_DESCR, GD02_IDSTRUTTURA_LP09,"
          " GD02_IDLOCALIZZATA_LP09, GD02_INDEREPROMO, gd02_guid, GD02_DATACRE, GD02_GRUPPOCRE,"
          " GD02_UTENTECRE, GD02_DATAVAR, GD02_GRUPPOVAR, GD02_UTENTEVAR)"
          " VALUES (?, ?, ?, ?, ?, 0, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
{ }

int TreeWriter::writeType(const TypeSpec &type)
{
    DemoRandom &random = m_context.random;
    m_lastTypeGuid = m_context.guid();
    const QDate created(2020, random.between(1, 12), random.between(1, 28));
    const QString user = QString::fromLatin1(random.pick(all(kUsers)));
    m_type.insert(m_company, type.code, QString::fromUtf8(type.description), type.kind, type.divisionId,
                  type.priorityId, m_lastTypeGuid, stamp(created, random.between(0, 599)), "COMMERCIALE", user,
                  stamp(created.addDays(random.between(0, 900)), random.between(0, 599)), "COMMERCIALE", user);
    return int(m_context.file.lastInsertId());
}

DemoNode TreeWriter::writeNode(int typeId, int kind, const TreeShape &shape, const DemoNode *parent,
                               const DemoSubject &subject)
{
    DemoRandom &random = m_context.random;
    DemoNode node;
    node.parentId = parent ? parent->id : 0;
    node.level = parent ? parent->level + 1 : 0;
    node.subject = subject.code;
    node.macroArea = subject.macroArea;

    const QDate openEnd(2099, 12, 31);
    if (!parent) {
        node.start = QDate(2020 + random.between(0, 4), random.between(1, 12), 1);
    } else if (random.chance(70)) {
        node.start = parent->start;
    } else {
        node.start = std::min(parent->start.addMonths(random.between(1, 18)), QDate(2025, 6, 1));
    }
    if (parent && random.chance(80))
        node.end = parent->end;
    else
        node.end = random.chance(88) ? openEnd : QDate(node.start.year() + random.between(1, 3), 12, 31);
    if (node.end < node.start)
        node.end = openEnd;

    // Billing counterpart: only "Manuale" (4) keeps a stored code.
    int billingRule = 0;
    std::optional<int> billingSubject;
    if (parent) {
        const int draw = random.between(1, 100);
        billingRule = draw <= 60 ? 0 : draw <= 75 ? 1 : draw <= 90 ? 2 : draw <= 95 ? 3 : 4;
        if (billingRule == 4)
            billingSubject = parent->subject;
    } else if (random.chance(20)) {
        billingRule = 1;
    }

    QString description;
    if (node.level == 0)
        description = QString::fromUtf8(random.pick(all(kRootDescriptions)));
    else if (node.level + 1 < shape.levels && random.chance(70))
        description = QString::fromUtf8(random.pick(all(kMiddleDescriptions)));
    else if (random.chance(40))
        description = QString::fromUtf8(random.pick(all(kLeafDescriptions)));

    std::optional<int> structural;
    if (shape.structuralPriorityId && (node.level == 0 || random.chance(15)))
        structural = shape.structuralPriorityId;
    std::optional<int> localised;
    if (random.chance(25))
        localised = subject.macroArea == 'N' ? shape.northPriorityId : shape.southPriorityId;

    if (!parent) {
        node.promoRule = 2;
    } else {
        const int draw = random.between(1, 100);
        node.promoRule = draw <= 70 ? 0 : draw <= 90 ? 1 : 2;
    }
    if (!parent) {
        node.state = 6;
    } else {
        const int draw = random.between(1, 100);
        node.state = draw <= 60 ? 0 : draw <= 90 ? 6 : 1;
    }
    node.guid = m_context.guid();

    const QDate created = std::min(node.start, QDate(2025, 1, 15));
    const QString user = QString::fromLatin1(random.pick(all(kUsers)));
    std::optional<int> parentValue;
    if (parent || !shape.nullParentRoots)
        parentValue = node.parentId;
    m_node.insert(typeId, parentValue, m_company, kind, subject.code, node.state, sqlDate(node.start),
                  sqlDate(node.end), billingRule, billingSubject, description.isEmpty() ? QString() : description,
                  structural, localised, node.promoRule, node.guid, stamp(created, random.between(0, 599)),
                  "COMMERCIALE", user, stamp(created.addDays(random.between(0, 300)), random.between(0, 599)),
                  "COMMERCIALE", user);
    node.id = int(m_context.file.lastInsertId());
    return node;
}

void TreeWriter::grow(int typeId, int kind, const TreeShape &shape, const DemoNode &parent, int budget,
                      std::span<const DemoSubject> subjects, std::size_t &next, std::vector<DemoNode> &nodes)
{
    if (budget <= 0 || parent.level + 1 >= shape.levels)
        return;
    const bool leaves = parent.level + 2 >= shape.levels;
    int children = m_context.random.between(shape.minFanout, shape.maxFanout);
    if (leaves)
        children = std::max(children, std::min(budget, shape.maxFanout * 2));
    children = std::min(children, budget);
    const int remaining = budget - children;
    for (int i = 0; i < children && next < subjects.size(); ++i) {
        const DemoNode child = writeNode(typeId, kind, shape, &parent, subjects[next++]);
        nodes.push_back(child);
        const int share = remaining / children + (i < remaining % children ? 1 : 0);
        grow(typeId, kind, shape, child, share, subjects, next, nodes);
    }
}

std::vector<DemoNode> TreeWriter::writeTree(int typeId, int kind, const TreeShape &shape,
                                            std::span<const DemoSubject> subjects)
{
    std::vector<DemoNode> nodes;
    const int roots = std::min<int>(shape.roots, int(subjects.size()));
    if (roots <= 0)
        return nodes;
    const int perRoot = (int(subjects.size()) - roots) / roots;
    std::size_t next = 0;
    for (int r = 0; r < roots && next < subjects.size(); ++r) {
        const DemoNode root = writeNode(typeId, kind, shape, nullptr, subjects[next++]);
        nodes.push_back(root);
        grow(typeId, kind, shape, root, perRoot, subjects, next, nodes);
    }
    return nodes;
}

} // namespace dbsetup
