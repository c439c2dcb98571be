#include "data/dettaglistatements.h"

#include <QTest>

// The statements of the pages under the tree and of the parameters form, checked against the
// texts the suite has always sent: pieces joined as they stand, the company filter where it
// belongs, an inheriting node's list cut by "1=0".
class TstDettagliStatements : public QObject
{
    Q_OBJECT

private slots:
    void campaignListOfANodeAndItsLinks();
    void masterDataWithoutGroupsIsTheSubjectLineOnly();
    void masterDataGroupsFollowTheSwitches();
    void masterDataOfADivisionPrefersTheDivisionsValues();
    void masterDataWholeTexts();
    void parametersRowAndLinkStates();
};

void TstDettagliStatements::campaignListOfANodeAndItsLinks()
{
    QCOMPARE(dettaglistatements::nodePrioritiesQuery(3, 15),
             QStringLiteral(" SELECT GD02_IDSTRUTTURA_LP09,  GD02_IDLOCALIZZATA_LP09  FROM GD02_DISTINTA WHERE "
                            " GD02_ID_GD01 = 3 AND GD02_ID = 15"));
    const QString own = QStringLiteral(
        " SELECT *, YEAR(MG94_DATAINIZIO) AS ANNO,        (CASE WHEN ISNULL(GD12_ID,0) = 0 THEN 0 ELSE 1 END) AS SELEZ "
        " INTO #GD12_TEMP FROM MG94_CAMPANAG  LEFT OUTER JOIN GD12_PROMO  ON GD12_DITTA_CG18 = MG94_DITTA_CG18 AND "
        "   GD12_ID_MG94    = MG94_ID AND    GD12_ID_GD02    = 15 WHERE MG94_DITTA_CG18 = 1");
    QCOMPARE(dettaglistatements::buildCampaignListStatement(1, 15, 2), own);
    QCOMPARE(dettaglistatements::buildCampaignListStatement(1, 15, 0), own + QStringLiteral(" AND 1=0 "));
    QCOMPARE(dettaglistatements::buildCampaignListStatement(1, 15, 1), own + QStringLiteral(" AND 1=0 "));
    QCOMPARE(dettaglistatements::readCampaignListStatement(), QStringLiteral("SELECT * FROM #GD12_TEMP"));
    QCOMPARE(
        dettaglistatements::insertCampaignLinkStatement(1, 15, 7),
        QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES ( 1, 15, 7 )"));
    QCOMPARE(dettaglistatements::deleteCampaignLinkStatement(42),
             QStringLiteral("DELETE FROM GD12_PROMO WHERE GD12_ID = 42"));
    QCOMPARE(dettaglistatements::deleteNodeCampaignLinksStatement(1, 15),
             QStringLiteral("DELETE FROM GD12_PROMO WHERE GD12_DITTA_CG18 = 1 AND       GD12_ID_GD02    = 15"));
}

void TstDettagliStatements::masterDataWithoutGroupsIsTheSubjectLineOnly()
{
    const QString sql = dettaglistatements::masterDataQuery(1, 0, 1043, {}, {}, {});
    QVERIFY(sql.startsWith(QStringLiteral(
        " SELECT  RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) + ' - ' +  "
        "RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,'')) + ' ' + "
        "RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) +  ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TEL1NUM,'')) + ' Fax ' "
        "+ "
        "RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,''))  AS Soggetto  FROM CG44_CLIFOR  LEFT OUTER JOIN MG17_AGENTI")));
    QVERIFY(
        sql.endsWith(QStringLiteral(" WHERE  CG44_DITTA_CG18 = 1   AND  CG44_TIPOCF = 0   AND  CG44_CLIFOR = 1043")));
    QCOMPARE(sql.count(QStringLiteral(" AS ")), 2); // the subject line and its CAST only
    QVERIFY(!sql.contains(QStringLiteral("VCO1C_CLIFOR")));
}

void TstDettagliStatements::masterDataGroupsFollowTheSwitches()
{
    const QString sales = dettaglistatements::masterDataQuery(1, 0, 5, {.condVendita = true}, {}, {});
    QVERIFY(sales.contains(QStringLiteral(
        "AS Soggetto , Rtrim(CAST(CG62_CONDPAGDES.CG62_CODPAG AS Char)) + ' ' + "
        "ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') "
        "AS CondizioniPagamento , Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) AS Valuta , "
        "Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG28 AS Char)) As AliquotaIva , Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS "
        "Char)) "
        "+ ' ' + ISNULL(CG12_BANCHE.CG12_DESCR,'') AS ABI , Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + ' ' + "
        "ISNULL(CG13_AGENZIE.CG13_DESCR,'') AS CAB  FROM CG44_CLIFOR ")));
    QVERIFY(!sales.contains(QStringLiteral("AS Agente")));

    const QString agents = dettaglistatements::masterDataQuery(1, 1, 5, {.provvigioni = true}, {}, {});
    QVERIFY(agents.contains(QStringLiteral("AS Soggetto , Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' ' + "
                                           "ISNULL(CG16_ANAGGEN_AGE.CG16_RAGSOANAG,'') AS "
                                           "Agente , MG19_LISTMAG AS ListinoAnagrafico  FROM CG44_CLIFOR ")));
    QVERIFY(agents.contains(QStringLiteral("AND  CG44_TIPOCF = 1 ")));

    const QString classes = dettaglistatements::masterDataQuery(1, 0, 5, {.classificazioni = true}, {}, {});
    QVERIFY(classes.contains(QStringLiteral(", Rtrim(CAST(MG07_MACROAREE.MG07_MACROAREA AS Char)) + ' ' + "
                                            "ISNULL(MG07_MACROAREE.MG07_DESCRMACROAR,'') AS MacroArea ")));
    QVERIFY(classes.contains(QStringLiteral(
        ", Rtrim(CAST(MG33_RAGGRCF3.MG33_CODRAGGRCF3 AS Char)) + ' ' + ISNULL(MG33_RAGGRCF3.MG33_DESCRAGGRCF3,'') AS "
        "Raggruppamento3  FROM")));
    QVERIFY(classes.contains(QStringLiteral("MG19_RAGGCRF3 = MG33_CODRAGGRCF3")));
    const QStringList order = {"AS MacroArea",
                               "AS Area",
                               "AS Zona",
                               "AS MacroCategoria",
                               "AS Categoria",
                               "AS SottoCategoria",
                               "AS Raggruppamento1",
                               "AS Raggruppamento2",
                               "AS Raggruppamento3"};
    qsizetype last = -1;
    for (const QString &alias : order) {
        const qsizetype at = classes.indexOf(alias + QLatin1Char(' '));
        QVERIFY2(at > last, qPrintable(alias));
        last = at;
    }
}

void TstDettagliStatements::masterDataOfADivisionPrefersTheDivisionsValues()
{
    const QString visibility = QStringLiteral(" AND (CO1C_IDDIV_CO1A IS NULL OR CO1C_IDDIV_CO1A IN (1,2))");
    const QString sql = dettaglistatements::masterDataQuery(1, 0, 5, {true, true, true}, QStringLiteral("2"),
                                                            visibility);
    QVERIFY(sql.contains(QStringLiteral(", Rtrim(CAST(ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62) AS Char)) + ' ' + "
                                        "ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento ")));
    QVERIFY(sql.contains(QStringLiteral(", Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) as Valuta ")));
    QVERIFY(sql.contains(QStringLiteral("Rtrim(CAST(ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) AS Char))")));
    QVERIFY(sql.contains(QStringLiteral(
        " FROM          CG44_CLIFOR                     LEFT OUTER JOIN VCO1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = "
        "VCO1C_CLIFOR.CO1C_DITTA_CG18 ")));
    QVERIFY(sql.contains(
        visibility + QStringLiteral("                       AND CO1C_IDDIV_CO1A = 2 LEFT OUTER JOIN MG17_AGENTI")));
    QVERIFY(sql.contains(
        QStringLiteral("isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17_AGENTI.MG17_IDAGENTE")));
    QVERIFY(sql.contains(
        QStringLiteral("isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG")));
    QVERIFY(sql.contains(QStringLiteral("ISNULL(CO1D_ZONA ,MG19_ZONA        ) = MG09_ZONA")));
    // Without a division nothing of the division's is read.
    QVERIFY(!dettaglistatements::masterDataQuery(1, 0, 5, {true, true, true}, {}, visibility)
                 .contains(QStringLiteral("CO1D")));
}

// The two shapes, whole: every group without a division, and a division with the host's
// visibility text, as the sheet sends them.
void TstDettagliStatements::masterDataWholeTexts()
{
    QCOMPARE(dettaglistatements::masterDataQuery(1, 0, 1043, {true, true, true}, QString(), QString()),
             QStringLiteral(
                 " SELECT  RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) + '"
                 " - ' +  RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,'"
                 "')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) +  ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TE"
                 "L1NUM,'')) + ' Fax ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,''))  AS Soggetto , Rtrim(CAST(CG62_CON"
                 "DPAGDES.CG62_CODPAG AS Char)) + ' ' + ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS CondizioniPagamento"
                 " , Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) AS Valuta , Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_"
                 "CG28 AS Char)) As AliquotaIva , Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS Char)) + ' ' + ISNULL(CG1"
                 "2_BANCHE.CG12_DESCR,'') AS ABI , Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + ' ' + ISNULL(CG"
                 "13_AGENZIE.CG13_DESCR,'') AS CAB , Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' ' + ISNULL(CG16_"
                 "ANAGGEN_AGE.CG16_RAGSOANAG,'') AS Agente , MG19_LISTMAG AS ListinoAnagrafico , Rtrim(CAST(MG07_MACRO"
                 "AREE.MG07_MACROAREA AS Char)) + ' ' + ISNULL(MG07_MACROAREE.MG07_DESCRMACROAR,'') AS MacroArea , Rtr"
                 "im(CAST(MG08_AREE.MG08_AREA AS Char)) + ' ' + ISNULL(MG08_AREE.MG08_DESCRAREA,'') AS Area , Rtrim(CA"
                 "ST(MG09_ZONE.MG09_ZONA AS Char)) + ' ' + ISNULL(MG09_ZONE.MG09_DESCRZONA,'') AS Zona , Rtrim(CAST(MG"
                 "10_MACROCAT.MG10_MACROCAT AS Char)) + ' ' + ISNULL(MG10_MACROCAT.MG10_DESCRMACROCAT,'') AS MacroCate"
                 "goria , Rtrim(CAST(MG11_CATEG.MG11_CATEG AS Char)) + ' ' + ISNULL(MG11_CATEG.MG11_DESCRCAT,'') AS Ca"
                 "tegoria , Rtrim(CAST(MG12_SOTTOCAT.MG12_SOTTCAT AS Char)) + ' ' + ISNULL(MG12_SOTTOCAT.MG12_DESCRSOT"
                 "TOCAT,'') AS SottoCategoria , Rtrim(CAST(MG31_RAGGRCF1.MG31_CODRAGGRCF1 AS Char)) + ' ' + ISNULL(MG3"
                 "1_RAGGRCF1.MG31_DESCRAGGRCF1,'') AS Raggruppamento1 , Rtrim(CAST(MG32_RAGGRCF2.MG32_CODRAGGRCF2 AS C"
                 "har)) + ' ' + ISNULL(MG32_RAGGRCF2.MG32_DESCRAGGRCF2,'') AS Raggruppamento2 , Rtrim(CAST(MG33_RAGGRC"
                 "F3.MG33_CODRAGGRCF3 AS Char)) + ' ' + ISNULL(MG33_RAGGRCF3.MG33_DESCRAGGRCF3,'') AS Raggruppamento3 "
                 " FROM CG44_CLIFOR  LEFT OUTER JOIN MG17_AGENTI ON CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DIT"
                 "TA_CG18 AND CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE  LEFT OUTER JOIN CG16_ANAGGEN"
                 " CG16_ANAGGEN_AGE ON MG17_AGENTI.MG17_ANAGEN_CG16 = CG16_ANAGGEN_AGE.CG16_CODICE  LEFT OUTER JOIN CG"
                 "62_CONDPAGDES ON CG44_CLIFOR.CG44_CODPAG_CG62 = CG62_CONDPAGDES.CG62_CODPAG  LEFT OUTER JOIN MG19_CL"
                 "IFORVA ON CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF = "
                 "MG19_CLIFORVA.MG19_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44  LEFT OU"
                 "TER JOIN MG07_MACROAREE ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG07_DITTA_CG18 AND MG19_CLIFORVA.MG19_TI"
                 "POCF_CG44 = MG07_TIPOCF_CG44 AND MG19_MACROAREA = MG07_MACROAREA  LEFT OUTER JOIN MG08_AREE ON MG19_"
                 "CLIFORVA.MG19_DITTA_CG18 = MG08_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG08_TIPOCF_CG44 AND"
                 " MG19_MACROAREA = MG08_MACROAREA_MG07 AND MG19_AREA = MG08_AREA  LEFT OUTER JOIN MG09_ZONE ON MG19_C"
                 "LIFORVA.MG19_DITTA_CG18 = MG09_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG09_TIPOCF_CG44 AND "
                 "MG19_MACROAREA = MG09_MACROAREA_MG07 AND MG19_AREA = MG09_AREA_MG08 AND MG19_ZONA = MG09_ZONA  LEFT "
                 "OUTER JOIN MG10_MACROCAT ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG10_DITTA_CG18 AND MG19_CLIFORVA.MG19_T"
                 "IPOCF_CG44 = MG10_TIPOCF_CG44 AND MG19_MACROCAT = MG10_MACROCAT  LEFT OUTER JOIN MG11_CATEG ON MG19_"
                 "CLIFORVA.MG19_DITTA_CG18 = MG11_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG11_TIPOCF_CG44 AND"
                 " MG19_MACROCAT = MG11_MACROCAT_MG10 AND MG19_CATEG = MG11_CATEG  LEFT OUTER JOIN MG12_SOTTOCAT ON MG"
                 "19_CLIFORVA.MG19_DITTA_CG18 = MG12_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG12_TIPOCF_CG44 "
                 "AND MG19_MACROCAT = MG12_MACROCAT_MG10 AND MG19_CATEG = MG12_CATEG_MG11 AND MG19_SOTTOCAT = MG12_SOT"
                 "TCAT  LEFT OUTER JOIN MG31_RAGGRCF1 ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG31_DITTA_CG18 AND MG19_CLIF"
                 "ORVA.MG19_TIPOCF_CG44 = MG31_TIPOCF_CG44 AND MG19_RAGGRCF1 = MG31_CODRAGGRCF1  LEFT OUTER JOIN MG32_"
                 "RAGGRCF2 ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG32_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG3"
                 "2_TIPOCF_CG44 AND MG19_RAGGRCF2 = MG32_CODRAGGRCF2  LEFT OUTER JOIN MG33_RAGGRCF3 ON MG19_CLIFORVA.M"
                 "G19_DITTA_CG18 = MG33_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG33_TIPOCF_CG44 AND MG19_RAGG"
                 "CRF3 = MG33_CODRAGGRCF3  LEFT OUTER JOIN CG12_BANCHE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.C"
                 "G12_BANCA  LEFT OUTER JOIN CG13_AGENZIE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG"
                 "12 AND CG44_CLIFOR.CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB  LEFT OUTER JOIN CG16_ANAGGEN ON CG44"
                 "_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE  WHERE  CG44_DITTA_CG18 = 1   AND  CG44_TIPOCF ="
                 " 0   AND  CG44_CLIFOR = 1043"));
    QCOMPARE(dettaglistatements::masterDataQuery(
                 1, 0, 1043, {true, true, true}, QStringLiteral("1"),
                 QStringLiteral(" AND (CO1C_IDDIV_CO1A IS NULL OR CO1C_IDDIV_CO1A IN (1,2))")),
             QStringLiteral(
                 " SELECT  RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) + '"
                 " - ' +  RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_CITTA,'"
                 "')) + ' ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_PROV,'')) +  ' Tel. ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_TE"
                 "L1NUM,'')) + ' Fax ' + RTrim(ISNULL(CG16_ANAGGEN.CG16_FAXNUM,''))  AS Soggetto , Rtrim(CAST(ISNULL(C"
                 "O1D_CODPAG_CG62 ,CG44_CODPAG_CG62) AS Char)) + ' ' + ISNULL(CG62_CONDPAGDES.CG62_DESCPAG,'') AS Cond"
                 "izioniPagamento , Rtrim(CAST(CG44_CLIFOR.CG44_CODICE_CG08 AS Char)) as Valuta , Rtrim(CAST(CG44_CLIF"
                 "OR.CG44_CODICE_CG28 AS Char)) As AliquotaIva , Rtrim(CAST(CG44_CLIFOR.CG44_CODABI_CG12 AS Char)) + '"
                 " ' + ISNULL(CG12_BANCHE.CG12_DESCR,'') AS ABI , Rtrim(CAST(CG44_CLIFOR.CG44_CODCAB_CG13 AS Char)) + "
                 "' ' + ISNULL(CG13_AGENZIE.CG13_DESCR,'') AS CAB , Rtrim(CAST(MG17_AGENTI.MG17_AGENTE AS Char)) + ' '"
                 " + ISNULL(CG16_ANAGGEN_AGE.CG16_RAGSOANAG,'') AS Agente , MG19_LISTMAG AS ListinoAnagrafico , Rtrim("
                 "CAST(ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) AS Char)) + ' ' + ISNULL(MG07_MACROAREE.MG07_DESCRMAC"
                 "ROAR,'') AS MacroArea , Rtrim(CAST(ISNULL(CO1D_AREA ,MG19_AREA        ) AS Char)) + ' ' + ISNULL(MG0"
                 "8_AREE.MG08_DESCRAREA,'') AS Area , Rtrim(CAST(ISNULL(CO1D_ZONA ,MG19_ZONA        ) AS Char)) + ' ' "
                 "+ ISNULL(MG09_ZONE.MG09_DESCRZONA,'') AS Zona , Rtrim(CAST(ISNULL(CO1D_MACROCAT ,MG19_MACROCAT    ) "
                 "AS Char)) + ' ' + ISNULL(MG10_MACROCAT.MG10_DESCRMACROCAT,'') AS MacroCategoria , Rtrim(CAST(ISNULL("
                 "CO1D_CATEG ,MG19_CATEG       ) AS Char)) + ' ' + ISNULL(MG11_CATEG.MG11_DESCRCAT,'') AS Categoria , "
                 "Rtrim(CAST(ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT    ) AS Char)) + ' ' + ISNULL(MG12_SOTTOCAT.MG12_DESC"
                 "RSOTTOCAT,'') AS SottoCategoria , Rtrim(CAST(ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1    ) AS Char)) + ' "
                 "' + ISNULL(MG31_RAGGRCF1.MG31_DESCRAGGRCF1,'') AS Raggruppamento1 , Rtrim(CAST(ISNULL(CO1D_RAGGRCF2 "
                 ",MG19_RAGGRCF2    ) AS Char)) + ' ' + ISNULL(MG32_RAGGRCF2.MG32_DESCRAGGRCF2,'') AS Raggruppamento2 "
                 ", Rtrim(CAST(ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3    ) AS Char)) + ' ' + ISNULL(MG33_RAGGRCF3.MG33_DE"
                 "SCRAGGRCF3,'') AS Raggruppamento3  FROM          CG44_CLIFOR                     LEFT OUTER JOIN VCO"
                 "1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18                        AND C"
                 "G44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44                        AND CG44_CLIFOR.CG44_C"
                 "LIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44  AND (CO1C_IDDIV_CO1A IS NULL OR CO1C_IDDIV_CO1A IN (1,2))    "
                 "                   AND CO1C_IDDIV_CO1A = 1 LEFT OUTER JOIN MG17_AGENTI ON CG44_CLIFOR.CG44_DITTA_CG1"
                 "8 = MG17_AGENTI.MG17_DITTA_CG18 AND isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17"
                 "_AGENTI.MG17_IDAGENTE  LEFT OUTER JOIN CG16_ANAGGEN CG16_ANAGGEN_AGE ON MG17_AGENTI.MG17_ANAGEN_CG16"
                 " = CG16_ANAGGEN_AGE.CG16_CODICE  LEFT OUTER JOIN CG62_CONDPAGDES ON isnull(CO1D_CODPAG_CG62,CG44_CLI"
                 "FOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG  LEFT OUTER JOIN MG19_CLIFORVA ON CG44_CLIFOR.CG"
                 "44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOC"
                 "F_CG44 AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44  LEFT OUTER JOIN MG07_MACROAREE "
                 "ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG07_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG07_TIPOCF_"
                 "CG44 AND ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) = MG07_MACROAREA  LEFT OUTER JOIN MG08_AREE ON MG"
                 "19_CLIFORVA.MG19_DITTA_CG18 = MG08_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG08_TIPOCF_CG44 "
                 "AND ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) = MG08_MACROAREA_MG07 AND ISNULL(CO1D_AREA ,MG19_AREA "
                 "       ) = MG08_AREA  LEFT OUTER JOIN MG09_ZONE ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG09_DITTA_CG18 A"
                 "ND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG09_TIPOCF_CG44 AND ISNULL(CO1D_MACROAREA ,MG19_MACROAREA   ) ="
                 " MG09_MACROAREA_MG07 AND ISNULL(CO1D_AREA ,MG19_AREA        ) = MG09_AREA_MG08 AND ISNULL(CO1D_ZONA "
                 ",MG19_ZONA        ) = MG09_ZONA  LEFT OUTER JOIN MG10_MACROCAT ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG"
                 "10_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG10_TIPOCF_CG44 AND ISNULL(CO1D_MACROCAT ,MG19_M"
                 "ACROCAT    ) = MG10_MACROCAT  LEFT OUTER JOIN MG11_CATEG ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG11_DIT"
                 "TA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = MG11_TIPOCF_CG44 AND ISNULL(CO1D_MACROCAT ,MG19_MACROCA"
                 "T    ) = MG11_MACROCAT_MG10 AND ISNULL(CO1D_CATEG ,MG19_CATEG       ) = MG11_CATEG  LEFT OUTER JOIN "
                 "MG12_SOTTOCAT ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG12_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 "
                 "= MG12_TIPOCF_CG44 AND ISNULL(CO1D_MACROCAT ,MG19_MACROCAT    ) = MG12_MACROCAT_MG10 AND ISNULL(CO1D"
                 "_CATEG ,MG19_CATEG       ) = MG12_CATEG_MG11 AND ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT    ) = MG12_SOT"
                 "TCAT  LEFT OUTER JOIN MG31_RAGGRCF1 ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG31_DITTA_CG18 AND MG19_CLIF"
                 "ORVA.MG19_TIPOCF_CG44 = MG31_TIPOCF_CG44 AND ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1    ) = MG31_CODRAGG"
                 "RCF1  LEFT OUTER JOIN MG32_RAGGRCF2 ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG32_DITTA_CG18 AND MG19_CLIF"
                 "ORVA.MG19_TIPOCF_CG44 = MG32_TIPOCF_CG44 AND ISNULL(CO1D_RAGGRCF2 ,MG19_RAGGRCF2    ) = MG32_CODRAGG"
                 "RCF2  LEFT OUTER JOIN MG33_RAGGRCF3 ON MG19_CLIFORVA.MG19_DITTA_CG18 = MG33_DITTA_CG18 AND MG19_CLIF"
                 "ORVA.MG19_TIPOCF_CG44 = MG33_TIPOCF_CG44 AND ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3    ) = MG33_CODRAGG"
                 "RCF3  LEFT OUTER JOIN CG12_BANCHE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG12_BANCHE.CG12_BANCA  LEFT OUT"
                 "ER JOIN CG13_AGENZIE ON CG44_CLIFOR.CG44_CODABI_CG12 = CG13_AGENZIE.CG13_BANCA_CG12 AND CG44_CLIFOR."
                 "CG44_CODCAB_CG13 = CG13_AGENZIE.CG13_CODCAB  LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE"
                 "_CG16 = CG16_ANAGGEN.CG16_CODICE  WHERE  CG44_DITTA_CG18 = 1   AND  CG44_TIPOCF = 0   AND  CG44_CLIF"
                 "OR = 1043"));
}

void TstDettagliStatements::parametersRowAndLinkStates()
{
    QCOMPARE(dettaglistatements::parametersRowQuery(3),
             QStringLiteral("SELECT * FROM GD03_PARAMETRI  WHERE GD03_DITTA_CG18 = 3"));
    QCOMPARE(dettaglistatements::linkStateDecodeQuery(4),
             QStringLiteral("SELECT WF01_DESCR FROM WF01_STATI WHERE WF01_ID = 4"));
}

QTEST_APPLESS_MAIN(TstDettagliStatements)
#include "tst_dettaglistatements.moc"
