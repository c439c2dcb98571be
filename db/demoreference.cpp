#include "demoreference.h"

#include "demonames.h"
#include "embeddedscripts.h"

#include <set>

namespace dbsetup {

namespace {

using namespace demonames;

void writeBankBranches(DemoContext &context)
{
    SqliteStatement banks = context.file.prepare(
        QStringLiteral("SELECT CG12_BANCA FROM CG12_BANCHE ORDER BY CG12_BANCA"));
    std::vector<QString> abiCodes;
    while (banks.step())
        abiCodes.push_back(banks.columnText(0));

    SqliteStatement insert = context.file.prepare(
        QStringLiteral("INSERT INTO CG13_AGENZIE (CG13_BANCA_CG12, CG13_CODCAB, CG13_DESCR) VALUES (?, ?, ?)"));
    const auto allCities = cities();
    for (const QString &abi : abiCodes) {
        std::set<int> used;
        for (int branch = 0; branch < 6; ++branch) {
            int cityIndex = context.random.between(0, int(allCities.size()) - 1);
            while (used.count(cityIndex))
                cityIndex = (cityIndex + 1) % int(allCities.size());
            used.insert(cityIndex);
            const City &city = allCities[std::size_t(cityIndex)];
            const QString cab = QStringLiteral("%1").arg(10000 + cityIndex * 100 + branch * 7, 5, 10, QLatin1Char('0'));
            const QString description = branch % 2 == 0
                ? QStringLiteral("Filiale di %1").arg(QString::fromUtf8(city.name))
                : QStringLiteral("%1 Ag. %2").arg(QString::fromUtf8(city.name)).arg(branch + 1);
            insert.insert(abi, cab, description);
            context.branches.push_back({abi, cab});
        }
    }
}

QString personName(DemoRandom &random)
{
    return QString::fromUtf8(random.pick(surnames())) + QLatin1Char(' ') + QString::fromUtf8(random.pick(firstNames()));
}

void writeAgents(DemoContext &context, const CompanyProfile &profile, CompanyReference &reference)
{
    SqliteStatement anagrafica = context.file.prepare(
        QStringLiteral("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA,"
                       " CG16_PROV, CG16_TEL1NUM, CG16_FAXNUM, CG16_PARTIVA) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    SqliteStatement agent = context.file.prepare(
        QStringLiteral("INSERT INTO MG17_AGENTI (MG17_DITTA_CG18, MG17_AGENTE, MG17_ANAGEN_CG16, MG17_PERCPROVV)"
                       " VALUES (?, ?, ?, ?)"));
    DemoRandom &random = context.random;
    for (int i = 1; i <= profile.agents; ++i) {
        const City &city = random.pick(cities());
        const int code = context.nextAnagrafica++;
        anagrafica.insert(
            code, personName(random),
            QStringLiteral("%1, %2").arg(QString::fromUtf8(random.pick(streets()))).arg(random.between(1, 120)),
            city.cap, city.name, city.province,
            QStringLiteral("3%1 %2").arg(random.between(20, 49)).arg(random.between(1000000, 9999999)), nullptr,
            QStringLiteral("%1").arg(random.between(1000000, 9999999), 11, 10, QLatin1Char('0')));
        agent.insert(profile.company, QStringLiteral("A%1").arg(i, 2, 10, QLatin1Char('0')), code,
                     double(random.between(20, 80)) / 10.0);
        reference.agentIds.push_back(int(context.file.lastInsertId()));
    }
}

void writeDivisions(DemoContext &context, const CompanyProfile &profile, CompanyReference &reference)
{
    SqliteStatement insert = context.file.prepare(
        QStringLiteral("INSERT INTO CO1A_ANAGDIVISIONI (CO1A_DITTA_CG18, CO1A_CODICE, CO1A_DESCR) VALUES (?, ?, ?)"));
    for (const DivisionSpec &division : profile.divisions) {
        insert.insert(profile.company, division.code, QString::fromUtf8(division.description));
        reference.divisionIds.push_back(int(context.file.lastInsertId()));
    }
}

void writeClassifications(DemoContext &context, int company)
{
    SqliteFile &file = context.file;
    SqliteStatement macroArea = file.prepare(QStringLiteral("INSERT INTO MG07_MACROAREE VALUES (?, ?, ?, ?)"));
    SqliteStatement area = file.prepare(QStringLiteral("INSERT INTO MG08_AREE VALUES (?, ?, ?, ?, ?)"));
    SqliteStatement zone = file.prepare(QStringLiteral("INSERT INTO MG09_ZONE VALUES (?, ?, ?, ?, ?, ?)"));
    SqliteStatement macroCategory = file.prepare(QStringLiteral("INSERT INTO MG10_MACROCAT VALUES (?, ?, ?, ?)"));
    SqliteStatement category = file.prepare(QStringLiteral("INSERT INTO MG11_CATEG VALUES (?, ?, ?, ?, ?)"));
    SqliteStatement subCategory = file.prepare(QStringLiteral("INSERT INTO MG12_SOTTOCAT VALUES (?, ?, ?, ?, ?, ?)"));
    SqliteStatement grouping[3] = {
        file.prepare(QStringLiteral("INSERT INTO MG31_RAGGRCF1 VALUES (?, ?, ?, ?)")),
        file.prepare(QStringLiteral("INSERT INTO MG32_RAGGRCF2 VALUES (?, ?, ?, ?)")),
        file.prepare(QStringLiteral("INSERT INTO MG33_RAGGRCF3 VALUES (?, ?, ?, ?)")),
    };

    for (int kind = 0; kind <= 1; ++kind) {
        for (const CodeText &item : macroAreas())
            macroArea.insert(company, kind, item.code, QString::fromUtf8(item.text));
        for (const CodeText &item : areas()) {
            const char *macro = "N";
            for (const Region &region : regions()) {
                if (QByteArray(region.area) == item.code) {
                    macro = region.macroArea;
                    break;
                }
            }
            area.insert(company, kind, macro, item.code, QString::fromUtf8(item.text));
        }
        for (const Region &region : regions())
            zone.insert(company, kind, region.macroArea, region.area, region.code, QString::fromUtf8(region.name));
        for (const CodeText &item : macroCategories(kind))
            macroCategory.insert(company, kind, item.code, QString::fromUtf8(item.text));
        for (const Category &item : categories(kind)) {
            category.insert(company, kind, item.macroCategory, item.code, QString::fromUtf8(item.text));
            for (const CodeText &band : subCategories())
                subCategory.insert(company, kind, item.macroCategory, item.code, band.code,
                                   QString::fromUtf8(band.text));
        }
        for (int which = 1; which <= 3; ++which) {
            for (const CodeText &item : groupings(which))
                grouping[which - 1].insert(company, kind, item.code, QString::fromUtf8(item.text));
        }
    }
}

void writePriorities(DemoContext &context, const CompanyProfile &profile, CompanyReference &reference)
{
    SqliteStatement header = context.file.prepare(QStringLiteral(
        "INSERT INTO LP09_TESTATAPRIORITA (LP09_DITTA_CG18, LP09_CODICE, LP09_DESCR, LP09_INDTIPOTABPRIORITA)"
        " VALUES (?, ?, ?, ?)"));
    SqliteStatement detail = context.file.prepare(QStringLiteral(
        "INSERT INTO LP10_DETTAGLIOPRIORITA (LP10_ID_LP09, LP10_ID_LP01, LP10_ORDINE) VALUES (?, ?, ?)"));
    for (const PrioritySpec &priority : profile.priorities) {
        header.insert(profile.company, priority.code, QString::fromUtf8(priority.description), priority.kind);
        const int id = int(context.file.lastInsertId());
        reference.priorityIds[QString::fromUtf8(priority.code)] = id;
        int order = 0;
        for (int provider : priority.providers)
            detail.insert(id, provider, ++order);
    }
}

void writeCampaigns(DemoContext &context, const CompanyProfile &profile, CompanyReference &reference)
{
    SqliteStatement insert = context.file.prepare(
        QStringLiteral("INSERT INTO MG94_CAMPANAG (MG94_DITTA_CG18, MG94_CODCAMP, MG94_DESCAMP, MG94_DATAINIZIO,"
                       " MG94_DATAFINE, MG94_FLGATTIVA) VALUES (?, ?, ?, ?, ?, ?)"));
    for (const CampaignSpec &campaign : profile.campaigns) {
        insert.insert(profile.company, campaign.code, QString::fromUtf8(campaign.description), sqlDate(campaign.start),
                      sqlDate(campaign.end), campaign.active ? 1 : 0);
        reference.campaignIds.push_back(int(context.file.lastInsertId()));
        reference.campaignStarts.push_back(campaign.start);
    }
}

} // namespace

void writeSharedReference(DemoContext &context)
{
    context.file.execScript(demoReferenceScript());
    writeBankBranches(context);
}

CompanyReference writeCompanyReference(DemoContext &context, const CompanyProfile &profile)
{
    CompanyReference reference;
    reference.company = profile.company;
    writeAgents(context, profile, reference);
    writeDivisions(context, profile, reference);
    writeClassifications(context, profile.company);
    writePriorities(context, profile, reference);
    writeCampaigns(context, profile, reference);
    return reference;
}

} // namespace dbsetup
