#include "demosubjects.h"

#include "demonames.h"

namespace dbsetup {

namespace {

using namespace demonames;

const char *const kCustomerPayments[] = {"RD", "BB30", "BB60", "RB30", "RB60", "RB36", "RB90", "SDD", "RID", "CON"};
const char *const kSupplierPayments[] = {"BB30", "BB60", "BB90", "RB60", "BBAN", "RD"};
const char *const kLegalForms[] = {"S.r.l.", "S.p.A.", "S.n.c.", "S.a.s.", "S.r.l.s.", "Soc. Coop."};

template<typename T, std::size_t N>
std::span<const T> all(const T (&items)[N])
{
    return std::span<const T>(items, N);
}

QString phoneNumber(DemoRandom &random, const City &city)
{
    const int digits = 10 - int(qstrlen(city.phonePrefix));
    int low = 1;
    for (int i = 1; i < digits; ++i)
        low *= 10;
    return QString::fromLatin1(city.phonePrefix) + QLatin1Char(' ')
        + QString::number(random.between(low * 2, low * 10 - 1));
}

} // namespace

SubjectWriter::SubjectWriter(DemoContext &context, const CompanyReference &reference)
    : m_context(context)
    , m_reference(reference)
    , m_anagrafica(context.file.prepare(
          QStringLiteral("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA,"
                         " CG16_PROV, CG16_TEL1NUM, CG16_FAXNUM, CG16_PARTIVA) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")))
    , m_subject(context.file.prepare(
          QStringLiteral("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16,"
                         " CG44_CODPAG_CG62, CG44_IDAGENTE_MG17, CG44_CODICE_CG08, CG44_CODICE_CG28, CG44_CODABI_CG12,"
                         " CG44_CODCAB_CG13, CG44_FIDO) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
    , m_salesData(context.file.prepare(QStringLiteral(
          "INSERT INTO MG19_CLIFORVA (MG19_DITTA_CG18, MG19_TIPOCF_CG44, MG19_CLIFOR_CG44, MG19_LISTMAG,"
          " MG19_MACROAREA, MG19_AREA, MG19_ZONA, MG19_MACROCAT, MG19_CATEG, MG19_SOTTOCAT,"
          " MG19_RAGGRCF1, MG19_RAGGRCF2, MG19_RAGGCRF3) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
{ }

QString SubjectWriter::businessName(int kind)
{
    DemoRandom &random = m_context.random;
    const QString surname = QString::fromUtf8(random.pick(surnames()));
    const QString activity = QString::fromUtf8(kind == 0 ? random.pick(customerActivities())
                                                         : random.pick(supplierActivities()));
    const QString form = QString::fromUtf8(random.pick(all(kLegalForms)));
    switch (random.between(0, 5)) {
    case 0: return activity + QStringLiteral(" ") + surname + QLatin1Char(' ') + form;
    case 1:
        return surname + QStringLiteral(" & ") + QString::fromUtf8(random.pick(surnames())) + QStringLiteral(" S.n.c.");
    case 2:
        return activity + QStringLiteral(" di ") + QString::fromUtf8(random.pick(firstNames())) + QLatin1Char(' ')
            + surname;
    case 3: return QStringLiteral("F.lli ") + surname + QLatin1Char(' ') + form;
    default: return surname + QLatin1Char(' ') + activity + QLatin1Char(' ') + form;
    }
}

std::vector<DemoSubject> SubjectWriter::write(const SubjectBatch &batch)
{
    DemoRandom &random = m_context.random;
    const int company = m_reference.company;
    const auto cats = categories(batch.kind);

    std::vector<DemoSubject> written;
    written.reserve(std::size_t(batch.count));
    for (int i = 0; i < batch.count; ++i) {
        const int code = batch.firstCode + i;
        const City &city = random.pick(cities());
        const Region &region = regionOf(city);

        const int anagrafica = m_context.nextAnagrafica++;
        const QString address =
            QStringLiteral("%1, %2").arg(QString::fromUtf8(random.pick(streets()))).arg(random.between(1, 180));
        const QString fax = random.chance(70) ? phoneNumber(random, city) : QString();
        m_anagrafica.insert(anagrafica, businessName(batch.kind), address, city.cap, city.name, city.province,
                            phoneNumber(random, city), fax,
                            QStringLiteral("%1").arg(random.between(1000000, 99999999), 11, 10, QLatin1Char('0')));

        const char *payment = batch.kind == 0 ? random.pick(all(kCustomerPayments))
                                              : random.pick(all(kSupplierPayments));
        std::optional<int> agent;
        if (batch.kind == 0 && !m_reference.agentIds.empty() && random.chance(85))
            agent = m_reference.agentIds[std::size_t(random.between(0, int(m_reference.agentIds.size()) - 1))];
        const BankBranch *branch = nullptr;
        if (!m_context.branches.empty() && random.chance(90))
            branch = &m_context.branches[std::size_t(random.between(0, int(m_context.branches.size()) - 1))];
        const char *vat = random.chance(85) ? "22" : (random.chance(50) ? "10" : "4");
        m_subject.insert(company, batch.kind, code, anagrafica, payment, agent, "EUR", vat,
                         branch ? branch->abi : QString(), branch ? branch->cab : QString(),
                         double(random.between(5, 200) * 1000));

        if (random.chance(batch.salesDataPercent)) {
            const Category *category = &random.pick(cats);
            m_salesData.insert(company, batch.kind, code, random.between(1, 5), region.macroArea, region.area,
                               region.code, category->macroCategory, category->code, random.pick(subCategories()).code,
                               random.pick(groupings(1)).code, random.pick(groupings(2)).code,
                               random.pick(groupings(3)).code);
        }
        written.push_back({code, region.macroArea[0]});
    }
    return written;
}

} // namespace dbsetup
