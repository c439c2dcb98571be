#include "democompanies.h"

#include "democonditions.h"
#include "democontext.h"
#include "demoreference.h"
#include "demosubjects.h"
#include "demotrees.h"

namespace dbsetup {

namespace {

constexpr std::uint64_t kDemoSeed = 20240611;

} // namespace

CompanyProfile demoMainCompanyProfile()
{
    CompanyProfile profile;
    profile.company = 1;
    profile.agents = 8;
    profile.divisions = {{"ALI", "Divisione Alimentare"}, {"BEV", "Divisione Bevande"}};
    profile.priorities = {
        {"STD", "Priorità standard", 0, {1, 3, 5}},       {"GDO", "Priorità grande distribuzione", 0, {6, 8, 2, 4, 5}},
        {"HOR", "Priorità Ho.Re.Ca.", 0, {2, 3, 7}},      {"NEW", "Priorità in preparazione", 0, {}},
        {"LOCN", "Priorità localizzata Nord", 1, {2, 4}}, {"LOCS", "Priorità localizzata Sud", 1, {1, 3}},
    };
    profile.campaigns = {
        {"P23NAT", "Promo Natale 2023", QDate(2023, 11, 15), QDate(2023, 12, 31), false},
        {"P24PRI", "Primavera in tavola 2024", QDate(2024, 3, 1), QDate(2024, 5, 31), false},
        {"P24EST", "Estate fresca 2024", QDate(2024, 6, 1), QDate(2024, 8, 31), false},
        {"P25PAS", "Speciale Pasqua 2025", QDate(2025, 3, 15), QDate(2025, 4, 30), true},
        {"P25SCU", "Ritorno a scuola 2025", QDate(2025, 8, 25), QDate(2025, 9, 30), true},
        {"P25BF", "Black Friday 2025", QDate(2025, 11, 20), QDate(2025, 12, 1), true},
        {"P26CAR", "Carnevale 2026", QDate(2026, 1, 20), QDate(2026, 2, 20), true},
        {"FID25", "Programma fedeltà 2025", QDate(2025, 1, 1), QDate(2025, 12, 31), true},
        {"BIO", "Lancio linea biologica", QDate(2025, 1, 1), QDate(2099, 12, 31), true},
    };
    return profile;
}

namespace {

CompanyProfile smallCompany()
{
    CompanyProfile profile;
    profile.company = 2;
    profile.agents = 2;
    profile.divisions = {{"UNI", "Divisione unica"}};
    profile.priorities = {{"STD", "Priorità standard", 0, {1, 3}}};
    profile.campaigns = {
        {"P24NAT", "Natale 2024", QDate(2024, 12, 1), QDate(2024, 12, 31), false},
        {"P25EST", "Estate 2025", QDate(2025, 6, 1), QDate(2025, 8, 31), true},
    };
    return profile;
}

void shuffle(DemoRandom &random, std::vector<DemoSubject> &subjects)
{
    for (std::size_t i = subjects.size(); i > 1; --i)
        std::swap(subjects[i - 1], subjects[std::size_t(random.between(0, int(i) - 1))]);
}

std::span<const DemoSubject> slice(const std::vector<DemoSubject> &subjects, std::size_t from, std::size_t count)
{
    return std::span<const DemoSubject>(subjects).subspan(from, std::min(count, subjects.size() - from));
}

std::vector<DemoNode> firstNodesOfLevels(const std::vector<DemoNode> &nodes, int roots, int level1)
{
    std::vector<DemoNode> chosen;
    for (const DemoNode &node : nodes) {
        if (node.level == 0 && roots-- > 0)
            chosen.push_back(node);
        else if (node.level == 1 && level1-- > 0)
            chosen.push_back(node);
    }
    return chosen;
}

void writeMainCompany(DemoContext &context)
{
    DemoRandom &random = context.random;
    const CompanyReference reference = writeCompanyReference(context, demoMainCompanyProfile());
    const int divisionFood = reference.divisionIds.at(0);
    const int divisionDrinks = reference.divisionIds.at(1);
    auto priority = [&](const char *code) { return reference.priorityIds.at(QString::fromLatin1(code)); };

    SubjectWriter subjects(context, reference);
    std::vector<DemoSubject> customers = subjects.write({0, 1001, 300, 94});
    std::vector<DemoSubject> suppliers = subjects.write({1, 5001, 150, 90});
    shuffle(random, customers);
    shuffle(random, suppliers);

    TreeWriter trees(context, reference.company);
    ConditionWriter conditions(context, reference);

    TreeShape shape;
    shape.northPriorityId = priority("LOCN");
    shape.southPriorityId = priority("LOCS");

    // Customers, no division: 3 groups of the large retail trade, 4 levels.
    const int gdo = trees.writeType({"CLI-GDO", "Grande distribuzione organizzata", 0, {}, priority("GDO")});
    const QString gdoGuid = trees.lastTypeGuid();
    shape.roots = 3;
    shape.levels = 4;
    shape.minFanout = 2;
    shape.maxFanout = 4;
    shape.structuralPriorityId = priority("GDO");
    const std::vector<DemoNode> gdoNodes = trees.writeTree(gdo, 0, shape, slice(customers, 0, 90));

    // Customers of the food division, 3 levels.
    const int food = trees.writeType({"CLI-ALI", "Rete vendita alimentare", 0, divisionFood, priority("STD")});
    const QString foodGuid = trees.lastTypeGuid();
    shape.roots = 4;
    shape.levels = 3;
    shape.minFanout = 3;
    shape.maxFanout = 6;
    shape.structuralPriorityId = priority("STD");
    const std::vector<DemoNode> foodNodes = trees.writeTree(food, 0, shape, slice(customers, 90, 80));

    // Customers of the drinks division, 4 levels; ten of them also sit in the food division's
    // tree, which another division may do.
    const int horeca = trees.writeType({"CLI-HOR", "Canale Ho.Re.Ca.", 0, divisionDrinks, priority("HOR")});
    const QString horecaGuid = trees.lastTypeGuid();
    std::vector<DemoSubject> horecaSubjects(customers.begin() + 170, customers.begin() + 230);
    horecaSubjects.insert(horecaSubjects.end(), customers.begin() + 150, customers.begin() + 160);
    shape.roots = 3;
    shape.levels = 4;
    shape.minFanout = 2;
    shape.maxFanout = 3;
    shape.structuralPriorityId = priority("HOR");
    const std::vector<DemoNode> horecaNodes = trees.writeTree(horeca, 0, shape, horecaSubjects);

    // A customer type with no nodes yet.
    const int exportType = trees.writeType({"CLI-EXP", "Clienti esteri", 0, {}, {}});
    Q_UNUSED(exportType);
    const QString exportGuid = trees.lastTypeGuid();

    // Suppliers: raw materials (roots written with a NULL parent) and services of the food division.
    const int materials = trees.writeType({"FOR-MP", "Fornitori materie prime", 1, {}, {}});
    const QString materialsGuid = trees.lastTypeGuid();
    shape.roots = 3;
    shape.levels = 3;
    shape.minFanout = 3;
    shape.maxFanout = 5;
    shape.nullParentRoots = true;
    shape.structuralPriorityId.reset();
    shape.northPriorityId.reset();
    shape.southPriorityId.reset();
    const std::vector<DemoNode> materialNodes = trees.writeTree(materials, 1, shape, slice(suppliers, 0, 60));

    const int services = trees.writeType({"FOR-SRV", "Fornitori di servizi", 1, divisionFood, {}});
    const QString servicesGuid = trees.lastTypeGuid();
    shape.roots = 2;
    shape.levels = 3;
    shape.minFanout = 2;
    shape.maxFanout = 4;
    shape.nullParentRoots = false;
    const std::vector<DemoNode> serviceNodes = trees.writeTree(services, 1, shape, slice(suppliers, 60, 40));

    conditions.writeContracts(firstNodesOfLevels(gdoNodes, 3, 3), gdoNodes, {});
    conditions.writeContracts(firstNodesOfLevels(horecaNodes, 1, 1), horecaNodes, divisionDrinks);
    conditions.writeNodePromotions(gdoNodes);
    conditions.writeNodePromotions(foodNodes);
    conditions.writeNodePromotions(horecaNodes);

    conditions.writeDivisionOverrides(divisionFood, 0, slice(customers, 90, 56));
    conditions.writeDivisionOverrides(divisionFood, 0, slice(customers, 240, 20));
    conditions.writeDivisionOverrides(divisionFood, 1, slice(suppliers, 60, 20));
    conditions.writeDivisionOverrides(divisionDrinks, 0, slice(customers, 170, 36));

    conditions.writeStates(gdoGuid, 6, gdoNodes);
    conditions.writeStates(foodGuid, 6, foodNodes);
    conditions.writeStates(horecaGuid, 3, horecaNodes);
    conditions.writeStates(exportGuid, 0, {});
    conditions.writeStates(materialsGuid, 6, materialNodes);
    conditions.writeStates(servicesGuid, 1, serviceNodes);
    conditions.writeParameters();
}

void writeSmallCompany(DemoContext &context)
{
    const CompanyReference reference = writeCompanyReference(context, smallCompany());
    SubjectWriter subjects(context, reference);
    const std::vector<DemoSubject> customers = subjects.write({0, 1001, 8, 100});
    subjects.write({1, 5001, 4, 100});

    TreeWriter trees(context, reference.company);
    const int type = trees.writeType(
        {"CLI-TOS", "Clienti Toscana", 0, {}, reference.priorityIds.at(QStringLiteral("STD"))});
    TreeShape shape;
    shape.roots = 1;
    shape.levels = 3;
    shape.minFanout = 2;
    shape.maxFanout = 3;
    const std::vector<DemoNode> nodes = trees.writeTree(type, 0, shape, slice(customers, 0, 7));

    ConditionWriter conditions(context, reference);
    conditions.writeNodePromotions(nodes);
    conditions.writeStates(trees.lastTypeGuid(), 6, nodes);
}

} // namespace

void writeDemoCompanies(SqliteFile &file)
{
    DemoContext context(file, kDemoSeed);
    writeSharedReference(context);
    writeMainCompany(context);
    writeSmallCompany(context);
}

} // namespace dbsetup
