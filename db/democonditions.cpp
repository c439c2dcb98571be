#include "democonditions.h"

#include "demonames.h"

namespace dbsetup {

namespace {

struct ConditionKind
{
    int type; // GD13_TIPOCOND: 0 bonus, 1 promotional activity
    const char *code;
    const char *description;
    const char *bonusType;
};

const ConditionKind kConditions[] = {
    {0, "PFA", "Premio fine anno", "FA"},        {0, "POB", "Premio obiettivo fatturato", "OBF"},
    {1, "VOL", "Volantino promozionale", "VOL"}, {1, "ESP", "Esposizione in testata di gondola", "ESP"},
    {0, "PQT", "Premio quantitativo", "QT"},
};

} // namespace

ConditionWriter::ConditionWriter(DemoContext &context, const CompanyReference &reference)
    : m_context(context)
    , m_reference(reference)
{ }

void ConditionWriter::writeContracts(std::span<const DemoNode> contractNodes, std::span<const DemoNode> allNodes,
                                     std::optional<int> divisionId)
{
    SqliteFile &file = m_context.file;
    DemoRandom &random = m_context.random;
    const int company = m_reference.company;
    SqliteStatement contract = file.prepare(
        QStringLiteral("INSERT INTO GD10_CONTRATTI (GD10_DITTA_CG18, GD10_CODCONTR, GD10_VERCONTR, GD10_DESCR,"
                       " GD10_TIPOCF_CG44, GD10_CLIFOR_CG44, GD10_IDDIV_CO1A, GD10_DATAINIZIO, GD10_DATAFINE)"
                       " VALUES (?, ?, ?, ?, 0, ?, ?, ?, ?)"));
    SqliteStatement condition = file.prepare(
        QStringLiteral("INSERT INTO GD13_PREMI (GD13_DITTA_CG18, GD13_ID_GD10, GD13_CODCONTR_GD10, GD13_VERCONTR_GD10,"
                       " GD13_PROGRCOND, GD13_CODCOND, GD13_DESCR, GD13_TIPOCOND, GD13_TIPOPREMIO, GD13_PERCENTUALE,"
                       " GD13_DATAINIZIO, GD13_DATAFINE) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    SqliteStatement subject = file.prepare(QStringLiteral(
        "INSERT INTO GD14_SOGGCONTR (GD14_DITTA_CG18, GD14_ID_GD13, GD14_CODCONTR_GD10, GD14_VERCONTR_GD10,"
        " GD14_PROGRCOND_GD13, GD14_ID_GD02, GD14_TIPOCF_CG44, GD14_CLIFOR_CG44) VALUES (?, ?, ?, ?, ?, ?, 0, ?)"));
    SqliteStatement settlement = file.prepare(QStringLiteral(
        "INSERT INTO GD18_LIQUIDAZIONE (GD18_DITTA_CG18, GD18_ID_GD13, GD18_DATASCADENZA, GD18_STATOSCADENZA,"
        " GD18_IMPORTO) VALUES (?, ?, ?, ?, ?)"));
    SqliteStatement disabled = file.prepare(
        QStringLiteral("INSERT INTO GD27_SOGGCONTRDISAB (GD27_DITTA_CG18, GD27_CODCONTR_GD10, GD27_VERCONTR_GD10,"
                       " GD27_PROGRCOND_GD13, GD27_ID_GD02) VALUES (?, ?, ?, ?, ?)"));

    for (const DemoNode &node : contractNodes) {
        const bool first = m_contractNumber == 0;
        ++m_contractNumber;
        const int year = first ? 2024 : random.between(2023, 2025);
        const QString code = QStringLiteral("CT%1-%2").arg(year % 100).arg(m_contractNumber, 3, 10, QLatin1Char('0'));
        const int version = random.chance(30) ? 2 : 1;
        const QDate start(year, 1, 1);
        const QDate end(year, 12, 31);
        contract.insert(company, code, version,
                        QStringLiteral("Accordo commerciale %1 - %2").arg(year).arg(node.subject), node.subject,
                        random.chance(50) ? divisionId : std::optional<int>(), sqlDate(start), sqlDate(end));
        const int contractId = int(file.lastInsertId());

        std::vector<const DemoNode *> children;
        for (const DemoNode &candidate : allNodes) {
            if (candidate.parentId == node.id)
                children.push_back(&candidate);
        }

        const int conditionCount = first ? 2 : random.between(1, 3);
        for (int progressive = 1; progressive <= conditionCount; ++progressive) {
            const ConditionKind &kind = first && progressive == 1
                ? kConditions[0]
                : random.pick(std::span<const ConditionKind>(kConditions));
            condition.insert(company, contractId, code, version, progressive, kind.code,
                             QString::fromUtf8(kind.description) + QStringLiteral(" %1").arg(year), kind.type,
                             kind.bonusType, double(random.between(5, 40)) / 10.0, sqlDate(start), sqlDate(end));
            const int conditionId = int(file.lastInsertId());

            subject.insert(company, conditionId, code, version, progressive, node.id, node.subject);
            for (std::size_t c = 0; c < children.size() && c < 3; ++c)
                subject.insert(company, conditionId, code, version, progressive, children[c]->id, children[c]->subject);
            // The same condition also reaches the subject by code, whatever its node (ID 0).
            if (random.chance(50))
                subject.insert(company, conditionId, code, version, progressive, 0, node.subject);

            if (kind.type != 0)
                continue;
            if (first && progressive == 1) {
                // Settled quarter by quarter: two paid, one definitive, one still open.
                const int states[] = {3, 3, 2, 1};
                const QDate deadlines[] = {QDate(year, 3, 31), QDate(year, 6, 30), QDate(year, 9, 30),
                                           QDate(year, 12, 31)};
                for (int q = 0; q < 4; ++q)
                    settlement.insert(company, conditionId, sqlDate(deadlines[q]), states[q],
                                      double(random.between(500, 9000)) + 0.5);
                if (!children.empty())
                    disabled.insert(company, code, version, progressive, children.front()->id);
            } else {
                settlement.insert(company, conditionId, sqlDate(QDate(year, 12, 31)), random.between(0, 1),
                                  double(random.between(500, 9000)));
            }
        }
    }
}

void ConditionWriter::writeNodePromotions(std::span<const DemoNode> nodes)
{
    if (m_reference.campaignIds.empty())
        return;
    SqliteStatement insert = m_context.file.prepare(
        QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES (?, ?, ?)"));
    DemoRandom &random = m_context.random;
    const int campaigns = int(m_reference.campaignIds.size());
    for (const DemoNode &node : nodes) {
        if (node.promoRule != 2 || random.chance(25))
            continue;
        const int count = random.between(1, std::min(3, campaigns));
        const int first = random.between(0, campaigns - 1);
        for (int i = 0; i < count; ++i)
            insert.insert(m_reference.company, node.id, m_reference.campaignIds[std::size_t((first + i) % campaigns)]);
    }
}

void ConditionWriter::writeDivisionOverrides(int divisionId, int kind, std::span<const DemoSubject> subjects)
{
    using namespace demonames;
    SqliteStatement insert = m_context.file.prepare(QStringLiteral(
        "INSERT INTO CO1D_CLIFORDIV (CO1D_DITTA_CG18, CO1D_TIPOCF_CG44, CO1D_CLIFOR_CG44, CO1D_IDDIV_CO1A,"
        " CO1D_CODPAG_CG62, CO1D_IDAGENTE_MG17, CO1D_MACROAREA, CO1D_AREA, CO1D_ZONA, CO1D_MACROCAT,"
        " CO1D_CATEG, CO1D_SOTTOCAT, CO1D_RAGGRCF1, CO1D_RAGGRCF2, CO1D_RAGGRCF3)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    DemoRandom &random = m_context.random;
    static const char *const payments[] = {"BB30", "BB60", "RB60", "RB90", "SDD"};
    for (const DemoSubject &subject : subjects) {
        std::optional<QString> payment, macroArea, area, zone, macroCategory, category, subCategory, g1, g2, g3;
        std::optional<int> agent;
        if (random.chance(60))
            payment = QString::fromLatin1(random.pick(std::span<const char *const>(payments)));
        if (kind == 0 && random.chance(40) && !m_reference.agentIds.empty())
            agent = m_reference.agentIds[std::size_t(random.between(0, int(m_reference.agentIds.size()) - 1))];
        if (random.chance(30)) { // the division sees the subject in another zone: the whole chain moves
            const Region &region = random.pick(regions());
            macroArea = QString::fromLatin1(region.macroArea);
            area = QString::fromLatin1(region.area);
            zone = QString::fromLatin1(region.code);
        }
        if (random.chance(40)) {
            const Category &item = random.pick(categories(kind));
            macroCategory = QString::fromLatin1(item.macroCategory);
            category = QString::fromLatin1(item.code);
            subCategory = QString::fromLatin1(random.pick(subCategories()).code);
        }
        if (random.chance(30))
            g1 = QString::fromLatin1(random.pick(groupings(1)).code);
        if (random.chance(30))
            g2 = QString::fromLatin1(random.pick(groupings(2)).code);
        if (random.chance(30))
            g3 = QString::fromLatin1(random.pick(groupings(3)).code);
        insert.insert(m_reference.company, kind, subject.code, divisionId, payment, agent, macroArea, area, zone,
                      macroCategory, category, subCategory, g1, g2, g3);
    }
}

void ConditionWriter::writeStates(const QString &typeGuid, int typeState, std::span<const DemoNode> nodes)
{
    SqliteStatement insert = m_context.file.prepare(QStringLiteral(
        "INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_TABELLA, WF02_ID_WF01, WF02_DATACRE, WF02_GRUPPOCRE,"
        " WF02_UTENTECRE, WF02_DATAVAR, WF02_GRUPPOVAR, WF02_UTENTEVAR) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    const QString stamp = QStringLiteral("2025-01-15 09:30:00");
    insert.insert(typeGuid, "GD01_TIPODISTINTA", typeState, stamp, "COMMERCIALE", "admin", stamp, "COMMERCIALE",
                  "admin");
    for (const DemoNode &node : nodes) {
        if (node.state != 0)
            insert.insert(node.guid, "GD02_DISTINTA", node.state, stamp, "COMMERCIALE", "admin", stamp, "COMMERCIALE",
                          "admin");
    }
}

void ConditionWriter::writeParameters()
{
    SqliteStatement insert = m_context.file.prepare(QStringLiteral(
        "INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_ID_WF02, GD03_TIPOCARICODATA, GD03_DATAINIZIOVAL,"
        " GD03_DATAFINEVAL, GD03_TIPOANAGFATT, GD03_FLG_ANAG, GD03_FLG_CONDVEND, GD03_FLG_CLAS, GD03_FLG_PROV)"
        " VALUES (?, 0, 0, ?, ?, 0, 1, 1, 1, 1)"));
    insert.insert(m_reference.company, sqlDate(2024, 1, 1), openEndDate());
}

} // namespace dbsetup
