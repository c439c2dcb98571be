#include "data/dettaglistatements.h"

#include "data/sqltext.h"

#include <algorithm>
#include <array>

namespace dettaglistatements {

namespace {

// A classification: its code (the division's own when one is chosen) and its description.
struct Classificazione
{
    const char *table;
    const char *codeColumn;
    const char *descriptionColumn;
    const char *alias;
    const char *generalColumn;  // the subject's code in MG19_CLIFORVA
    const char *divisionColumn; // the division's override in VCO1C_CLIFOR
    // The table's columns holding the codes of the classifications it belongs to: those listed
    // just before it, outermost first.
    std::array<const char *, 2> parentColumns {};
};

constexpr Classificazione classificazioni[] = {
    {"MG07_MACROAREE", "MG07_MACROAREA", "MG07_DESCRMACROAR", "MacroArea", "MG19_MACROAREA", "CO1D_MACROAREA"},
    {"MG08_AREE", "MG08_AREA", "MG08_DESCRAREA", "Area", "MG19_AREA", "CO1D_AREA", {"MG08_MACROAREA_MG07"}},
    {"MG09_ZONE",
     "MG09_ZONA",
     "MG09_DESCRZONA",
     "Zona",
     "MG19_ZONA",
     "CO1D_ZONA",
     {"MG09_MACROAREA_MG07", "MG09_AREA_MG08"}},
    {"MG10_MACROCAT", "MG10_MACROCAT", "MG10_DESCRMACROCAT", "MacroCategoria", "MG19_MACROCAT", "CO1D_MACROCAT"},
    {"MG11_CATEG", "MG11_CATEG", "MG11_DESCRCAT", "Categoria", "MG19_CATEG", "CO1D_CATEG", {"MG11_MACROCAT_MG10"}},
    {"MG12_SOTTOCAT",
     "MG12_SOTTCAT",
     "MG12_DESCRSOTTOCAT",
     "SottoCategoria",
     "MG19_SOTTOCAT",
     "CO1D_SOTTOCAT",
     {"MG12_MACROCAT_MG10", "MG12_CATEG_MG11"}},
    {"MG31_RAGGRCF1", "MG31_CODRAGGRCF1", "MG31_DESCRAGGRCF1", "Raggruppamento1", "MG19_RAGGRCF1", "CO1D_RAGGRCF1"},
    {"MG32_RAGGRCF2", "MG32_CODRAGGRCF2", "MG32_DESCRAGGRCF2", "Raggruppamento2", "MG19_RAGGRCF2", "CO1D_RAGGRCF2"},
    {"MG33_RAGGRCF3", "MG33_CODRAGGRCF3", "MG33_DESCRAGGRCF3", "Raggruppamento3", "MG19_RAGGCRF3", "CO1D_RAGGRCF3"},
};

// The division's code before the general one, padded as the statement has always been written.
QString codiceDivisione(const char *divisionColumn, const char *generalColumn)
{
    return QStringLiteral("ISNULL(") + QLatin1String(divisionColumn) + QStringLiteral(" ,")
        + QString(QLatin1String(generalColumn)).leftJustified(17) + QLatin1Char(')');
}

QString conDivisione(const QString &generalCode, const char *divisionColumn, const char *generalColumn, bool division)
{
    return division ? codiceDivisione(divisionColumn, generalColumn) : generalCode;
}

QString voceSoggetto()
{
    return QStringLiteral(
               " SELECT  RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG)"
               " + ' - ' +  RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + "
               "RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,''))"
               " + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) + ")
        + QStringLiteral(" ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TEL1NUM,'')) + ' Fax ' + "
                         "RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,''))"
                         "  AS Soggetto ");
}

QString vociCondVendita(bool division)
{
    const QString payment = division ? QStringLiteral("ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62)")
                                     : QStringLiteral("CG62_CONDPAGDES.CG62_CODPAG");
    return QStringLiteral(", Rtrim(CAST(") + payment
        + QStringLiteral(" AS Char)) + ' ' + ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento ")
        + (division ? QStringLiteral(", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) as Valuta ")
                    : QStringLiteral(", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) AS Valuta "))
        + QStringLiteral(", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG28 AS Char)) As AliquotaIva ")
        + QStringLiteral(
               ", Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS Char)) + ' ' + ISNULL(CG12_BANCHE.CG12_DESCR,'') AS ABI ")
        + QStringLiteral(", Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + ' ' + "
                         "ISNULL(CG13_AGENZIE.CG13_DESCR,'') AS CAB ");
}

QString vociProvvigioni()
{
    return QStringLiteral(", Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' ' + "
                          "ISNULL(CG16_ANAGGEN_AGE.CG16_RAGSOANAG,'') AS Agente ")
        + QStringLiteral(", MG19_LISTMAG AS ListinoAnagrafico ");
}

QString vociClassificazioni(bool division)
{
    QString items;
    for (const Classificazione &c : classificazioni) {
        const QString code = QLatin1String(c.table) + QLatin1Char('.') + QLatin1String(c.codeColumn);
        items += QStringLiteral(", Rtrim(CAST(") + conDivisione(code, c.divisionColumn, c.generalColumn, division)
            + QStringLiteral(" AS Char)) + ' ' + ISNULL(") + QLatin1String(c.table) + QLatin1Char('.')
            + QLatin1String(c.descriptionColumn) + QStringLiteral(",'') AS ") + QLatin1String(c.alias)
            + QLatin1Char(' ');
    }
    return items;
}

// The subject's code of a classification, the division's own first when one is chosen.
QString codiceSoggetto(const Classificazione &c, bool division)
{
    return conDivisione(QLatin1String(c.generalColumn), c.divisionColumn, c.generalColumn, division);
}

// The classification tables on the subject's sales data, each by company, kind and its code
// chain; with a division every code is the division's own when it has one.
QString joinClassificazioni(bool division)
{
    QString joins;
    for (std::size_t i = 0; i < std::size(classificazioni); ++i) {
        const Classificazione &c = classificazioni[i];
        const QString prefix = QLatin1String(c.table).left(4);
        const auto parents = std::size_t(std::count_if(c.parentColumns.begin(), c.parentColumns.end(),
                                                       [](const char *column) { return column != nullptr; }));
        QString chain;
        for (std::size_t p = 0; p < parents; ++p)
            chain += QStringLiteral(" AND ") + codiceSoggetto(classificazioni[i - parents + p], division)
                + QStringLiteral(" = ") + QLatin1String(c.parentColumns[p]);
        chain += QStringLiteral(" AND ") + codiceSoggetto(c, division) + QStringLiteral(" = ")
            + QLatin1String(c.codeColumn);
        joins += QStringLiteral(" LEFT OUTER JOIN ") + QLatin1String(c.table)
            + QStringLiteral(" ON MG19_CLIFORVA.MG19_DITTA_CG18 = ") + prefix
            + QStringLiteral("_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = ") + prefix
            + QStringLiteral("_TIPOCF_CG44") + chain + QLatin1Char(' ');
    }
    return joins;
}

QString joinAnagrafica(bool division)
{
    const QString agent = division ? QStringLiteral("isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17)")
                                   : QStringLiteral("CG44_CLIFOR.CG44_IDAGENTE_MG17");
    const QString payment = division ? QStringLiteral("isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62)")
                                     : QStringLiteral("CG44_CLIFOR.CG44_CODPAG_CG62");
    return QStringLiteral(
               " LEFT OUTER JOIN MG17_AGENTI ON CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18 AND ")
        + agent + QStringLiteral(" = MG17_AGENTI.MG17_IDAGENTE ")
        + QStringLiteral(" LEFT OUTER JOIN CG16_ANAGGEN CG16_ANAGGEN_AGE ON MG17_AGENTI.MG17_ANAGEN_CG16 = "
                         "CG16_ANAGGEN_AGE.CG16_CODICE ")
        + QStringLiteral(" LEFT OUTER JOIN CG62_CONDPAGDES ON ") + payment
        + QStringLiteral(" = CG62_CONDPAGDES.CG62_CODPAG ")
        + QStringLiteral(" LEFT OUTER JOIN MG19_CLIFORVA ON CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18"
                         " AND CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44"
                         " AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 ")
        + joinClassificazioni(division)
        + QStringLiteral(" LEFT OUTER JOIN CG12_BANCHE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.CG12_BANCA ")
        + QStringLiteral(" LEFT OUTER JOIN CG13_AGENZIE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG12"
                         " AND CG44_CLIFOR.CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB ")
        + QStringLiteral(" LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ");
}

} // namespace

QString masterDataQuery(int company, int subjectKind, qint64 subjectCode, const GruppiAnagrafica &groups,
                        const QString &division, const QString &divisionVisibility)
{
    const bool conDivisioneScelta = !division.isEmpty();
    QString sql = voceSoggetto();
    if (groups.condVendita)
        sql += vociCondVendita(conDivisioneScelta);
    if (groups.provvigioni)
        sql += vociProvvigioni();
    if (groups.classificazioni)
        sql += vociClassificazioni(conDivisioneScelta);
    if (conDivisioneScelta) {
        sql += QStringLiteral(" FROM         ") + QStringLiteral(" CG44_CLIFOR ")
            + QStringLiteral("                    LEFT OUTER JOIN VCO1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = "
                             "VCO1C_CLIFOR.CO1C_DITTA_CG18 ")
            + QStringLiteral("                       AND CG44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44 ")
            + QStringLiteral("                       AND CG44_CLIFOR.CG44_CLIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44 ")
            + divisionVisibility + QStringLiteral("                       AND CO1C_IDDIV_CO1A = ") + division;
    } else {
        sql += QStringLiteral(" FROM CG44_CLIFOR ");
    }
    sql += joinAnagrafica(conDivisioneScelta);
    sql += QStringLiteral(" WHERE  CG44_DITTA_CG18 = ") + sqltext::number(company)
        + QStringLiteral("   AND  CG44_TIPOCF = ") + sqltext::number(subjectKind)
        + QStringLiteral("   AND  CG44_CLIFOR = ") + sqltext::number(subjectCode);
    return sql;
}

QString campaignTable()
{
    return QStringLiteral("#GD12_TEMP");
}

QString nodePrioritiesQuery(qint64 typeId, qint64 nodeId)
{
    return QStringLiteral(" SELECT GD02_IDSTRUTTURA_LP09, ") + QStringLiteral(" GD02_IDLOCALIZZATA_LP09 ")
        + QStringLiteral(" FROM GD02_DISTINTA") + QStringLiteral(" WHERE ") + QStringLiteral(" GD02_ID_GD01 = ")
        + sqltext::number(typeId) + QStringLiteral(" AND GD02_ID = ") + sqltext::number(nodeId);
}

QString buildCampaignListStatement(int company, qint64 nodeId, int rule)
{
    QString sql = QStringLiteral(" SELECT *, YEAR(MG94_DATAINIZIO) AS ANNO, ")
        + QStringLiteral("       (CASE WHEN ISNULL(GD12_ID,0) = 0 THEN 0 ELSE 1 END) AS SELEZ ")
        + sqltext::intoTempTable(campaignTable()) + QStringLiteral(" FROM MG94_CAMPANAG ")
        + QStringLiteral(" LEFT OUTER JOIN GD12_PROMO ") + QStringLiteral(" ON GD12_DITTA_CG18 = MG94_DITTA_CG18 AND ")
        + QStringLiteral("   GD12_ID_MG94    = MG94_ID AND ") + QStringLiteral("   GD12_ID_GD02    = ")
        + sqltext::number(nodeId) + QStringLiteral(" WHERE MG94_DITTA_CG18 = ") + sqltext::number(company);
    if (rule == 0 || rule == 1)
        sql += QStringLiteral(" AND 1=0 ");
    return sql;
}

QString readCampaignListStatement()
{
    return sqltext::selectAllFrom(campaignTable());
}

QString insertCampaignLinkStatement(int company, qint64 nodeId, qint64 campaignId)
{
    return QStringLiteral("INSERT INTO GD12_PROMO ")
        + QStringLiteral("(GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES ( ") + sqltext::number(company)
        + QStringLiteral(", ") + sqltext::number(nodeId) + QStringLiteral(", ") + sqltext::number(campaignId)
        + QStringLiteral(" )");
}

QString deleteCampaignLinkStatement(qint64 linkId)
{
    return QStringLiteral("DELETE FROM GD12_PROMO WHERE GD12_ID = ") + sqltext::number(linkId);
}

QString deleteNodeCampaignLinksStatement(int company, qint64 nodeId)
{
    return QStringLiteral("DELETE FROM GD12_PROMO ") + QStringLiteral("WHERE GD12_DITTA_CG18 = ")
        + sqltext::number(company) + QStringLiteral(" AND ") + QStringLiteral("      GD12_ID_GD02    = ")
        + sqltext::number(nodeId);
}

QString parametersRowQuery(int company)
{
    return QStringLiteral("SELECT * FROM GD03_PARAMETRI ") + QStringLiteral(" WHERE GD03_DITTA_CG18 = ")
        + sqltext::number(company);
}

QString linkStateLookupQuery()
{
    return QStringLiteral("SELECT WF01_ID, WF01_CODICE, WF01_DESCR FROM WF01_STATI WHERE WF01_FLUSSO = 'DISTINTA' "
                          "ORDER BY WF01_ORDINE");
}

QString linkStateDecodeQuery(qint64 stateId)
{
    return QStringLiteral("SELECT WF01_DESCR FROM WF01_STATI WHERE WF01_ID = ") + sqltext::number(stateId);
}

} // namespace dettaglistatements
