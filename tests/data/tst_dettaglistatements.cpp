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

void TstDettagliStatements::parametersRowAndLinkStates()
{
    QCOMPARE(dettaglistatements::parametersRowQuery(3),
             QStringLiteral("SELECT * FROM GD03_PARAMETRI  WHERE GD03_DITTA_CG18 = 3"));
    QCOMPARE(dettaglistatements::linkStateDecodeQuery(4),
             QStringLiteral("SELECT WF01_DESCR FROM WF01_STATI WHERE WF01_ID = 4"));
}

QTEST_APPLESS_MAIN(TstDettagliStatements)
#include "tst_dettaglistatements.moc"
