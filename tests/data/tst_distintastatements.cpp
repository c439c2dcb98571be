#include "data/anagrafichestatements.h"
#include "data/distintastatements.h"
#include "data/parametristatements.h"

#include <QTest>

// The statements of the editor's loading side and of the subject list, checked against the
// texts the suite has always sent (the same text goes unchanged to SQL Server).
class TstDistintaStatements : public QObject
{
    Q_OBJECT

private slots:
    void selectorAndNodeQueries();
    void headerAndDrawTimeTexts();
    void parameterSnapshot();
    void subjectListWithoutDivision();
    void subjectListWithDivision();
    void subjectListTemporaryTable();
};

void TstDistintaStatements::selectorAndNodeQueries()
{
    QCOMPARE(distintastatements::typesQuery(1, 0),
             QStringLiteral("SELECT * FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1 "
                            "AND GD01_INDTIPOSOGG = 0 ORDER BY GD01_CODICE"));
    QCOMPARE(distintastatements::typesQuery(12, 1),
             QStringLiteral("SELECT * FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 12 "
                            "AND GD01_INDTIPOSOGG = 1 ORDER BY GD01_CODICE"));

    // The type identifier is compared as quoted text, company and kind bare.
    QCOMPARE(distintastatements::nodesQuery(1, 0, 7),
             QStringLiteral(
                 "SELECT GD02_ID, GD02_IDPARENT_GD02, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, RTRIM((SELECT CG16_RAGSOANAG "
                 "FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE "
                 "AND GD02_DISTINTA.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND GD02_DISTINTA.GD02_TIPOCF_CG44 "
                 "= CG44_CLIFOR.CG44_TIPOCF AND GD02_DISTINTA.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR)) "
                 "AS RAGIONESOCIALE, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, GD02_TIPOANAGFATT, GD02_CLIFORFATT_CG44, "
                 "GD02_DESCR, GD02_IDSTRUTTURA_LP09, GD02_IDLOCALIZZATA_LP09, GD02_INDEREPROMO FROM GD02_DISTINTA "
                 "WHERE GD02_DITTA_CG18 = 1 AND GD02_TIPOCF_CG44 = 0 AND GD02_ID_GD01 = '7' AND GD02_CLIFOR_CG44 "
                 "IS NOT NULL"));
    QVERIFY(distintastatements::nodesQuery(2, 1, 123456789012)
                .endsWith(QStringLiteral("FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 2 AND "
                                         "GD02_TIPOCF_CG44 = 1 AND GD02_ID_GD01 = '123456789012' "
                                         "AND GD02_CLIFOR_CG44 IS NOT NULL")));

    QCOMPARE(distintastatements::emptyNodeFrameQuery(),
             QStringLiteral("SELECT *, '' AS RagioneSociale FROM GD02_DISTINTA WHERE 1=0 "));
}

void TstDistintaStatements::headerAndDrawTimeTexts()
{
    QCOMPARE(distintastatements::headerQuery(42),
             QStringLiteral("SELECT GD01_IDDIV_CO1A, GD01_GUID , CO1A_DESCR FROM GD01_TIPODISTINTA "
                            "INNER JOIN CO1A_ANAGDIVISIONI ON GD01_IDDIV_CO1A = CO1A_IDDIV "
                            "WHERE GD01_ID = 42"));
    QCOMPARE(distintastatements::businessNameQuery(1, 1, 30015),
             QStringLiteral("SELECT CG16_RAGSOANAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
                            "ON CG16_CODICE = CG44_CODICE_CG16 WHERE CG44_DITTA_CG18 = 1 "
                            "AND CG44_TIPOCF = 1 AND CG44_CLIFOR = 30015"));
    QCOMPARE(distintastatements::priorityDescriptionQuery(5),
             QStringLiteral("SELECT LP09_DESCR FROM LP09_TESTATAPRIORITA WHERE LP09_ID = '5'"));
}

void TstDistintaStatements::parameterSnapshot()
{
    // The pieces joined as they are, doubled blanks included, then the company.
    QCOMPARE(parametristatements::snapshotQuery(3),
             QStringLiteral(" SELECT   GD03_ID_WF02 AS StatoLegame,  ISNULL(GD03_TIPOCARICODATA,0) "
                            "AS TipoCaricaDATA,  ISNULL(GD03_DATAINIZIOVAL,'01/01/2000') AS "
                            "DataFissaINIZIO,  ISNULL(GD03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE,  "
                            "ISNULL(GD03_FLG_ANAG,0) AS flg_Anagrafica,  ISNULL(GD03_FLG_CONDVEND,0) "
                            "AS flg_CondVendita,  ISNULL(GD03_FLG_CLAS,0) AS flg_Classificazioni,  "
                            "ISNULL(GD03_FLG_PROV,0) AS flg_Provvigioni, ISNULL(GD03_TIPOANAGFATT,0) "
                            "AS TipoCaricaFatt FROM  GD03_PARAMETRI WHERE GD03_DITTA_CG18 = 3"));
}

void TstDistintaStatements::subjectListWithoutDivision()
{
    QCOMPARE(
        anagrafichestatements::buildSubjectListStatement(1, 1, std::nullopt),
        QStringLiteral(
            "SELECT DISTINCT 0 AS Seleziona, CG44_CLIFOR.CG44_CLIFOR AS Codice, CASE WHEN ISNULL((SELECT "
            "COUNT(GD02_CLIFOR_CG44) FROM GD02_DISTINTA WHERE GD02_DISTINTA.GD02_DITTA_CG18 = "
            "CG44_CLIFOR.CG44_DITTA_CG18 "
            "AND GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND GD02_DISTINTA.GD02_CLIFOR_CG44 "
            "= CG44_CLIFOR.CG44_CLIFOR),0) > 0 THEN 1 ELSE 0 END AS AssociatoInDistinta, CG16_ANAGGEN.CG16_RAGSOANAG "
            "AS 'Ragione sociale' ,CG44_CODPAG_CG62 AS CodPagamento, CG62_DESCPAG AS DescPagamento, "
            "MG17_AGENTE AS CodAgente, CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione sociale agente', "
            "CG16_ANAGGEN.CG16_CITTA "
            "AS Citta, CG16_ANAGGEN.CG16_PROV AS Provincia, MG19_MACROAREA AS Macroarea, MG19_AREA AS "
            "Area, MG19_ZONA AS Zona, MG19_MACROCAT AS MacroCategoria, MG19_CATEG AS Categoria, MG19_SOTTOCAT "
            "AS SottoCategoria, MG19_RAGGRCF1 AS RaggrCF1, MG19_RAGGRCF2 AS RaggrCF2, MG19_RAGGCRF3 AS "
            "RaggrCF3 INTO #GD02_CLIFORSTD FROM CG62_CONDPAGDES RIGHT OUTER JOIN CG44_CLIFOR INNER JOIN "
            "CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE LEFT OUTER JOIN "
            "MG19_CLIFORVA ON CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF "
            "= MG19_CLIFORVA.MG19_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 "
            "ON CG62_CONDPAGDES.CG62_CODPAG = CG44_CLIFOR.CG44_CODPAG_CG62 LEFT OUTER JOIN CG16_ANAGGEN "
            "CG16_ANAGGEN_AGE RIGHT OUTER JOIN MG17_AGENTI ON CG16_ANAGGEN_AGE.CG16_CODICE = "
            "MG17_AGENTI.MG17_ANAGEN_CG16 "
            "ON CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE AND CG44_CLIFOR.CG44_DITTA_CG18 "
            "= MG17_AGENTI.MG17_DITTA_CG18 WHERE CG44_DITTA_CG18 = 1 AND CG44_TIPOCF = 1 ORDER BY CG44_CLIFOR"));
}

void TstDistintaStatements::subjectListWithDivision()
{
    QCOMPARE(
        anagrafichestatements::buildSubjectListStatement(1, 1, 3),
        QStringLiteral(
            "SELECT DISTINCT 0 AS Seleziona, CG44_CLIFOR.CG44_CLIFOR AS Codice, CASE WHEN ISNULL((SELECT "
            "COUNT(GD02_CLIFOR_CG44) FROM GD02_DISTINTA WHERE GD02_DISTINTA.GD02_DITTA_CG18 = "
            "CG44_CLIFOR.CG44_DITTA_CG18 "
            "AND GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND GD02_DISTINTA.GD02_CLIFOR_CG44 "
            "= CG44_CLIFOR.CG44_CLIFOR),0) > 0 THEN 1 ELSE 0 END AS AssociatoInDistinta, CG16_ANAGGEN.CG16_RAGSOANAG "
            "AS 'Ragione sociale' ,ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62 ) AS CodPagamento, CG62_DESCPAG "
            "AS DescPagamento, MG17_AGENTE AS CodAgente, CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione "
            "sociale agente', CG16_ANAGGEN.CG16_CITTA AS Citta, CG16_ANAGGEN.CG16_PROV AS Provincia, "
            "ISNULL(CO1D_MACROAREA ,MG19_MACROAREA ) AS Macroarea, ISNULL(CO1D_AREA ,MG19_AREA ) AS Area, "
            "ISNULL(CO1D_ZONA ,MG19_ZONA ) AS Zona, ISNULL(CO1D_MACROCAT ,MG19_MACROCAT ) AS MacroCategoria, "
            "ISNULL(CO1D_CATEG ,MG19_CATEG ) AS Categoria, ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT ) AS SottoCategoria, "
            "ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1 ) AS RaggrCF1, ISNULL(CO1D_RAGGRCF2 ,MG19_RAGGRCF2 ) "
            "AS RaggrCF2, ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3 ) AS RaggrCF3 INTO #GD02_CLIFORSTD FROM "
            "CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE "
            "LEFT OUTER JOIN VCO1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18 "
            "AND CG44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR "
            "= VCO1C_CLIFOR.CO1C_CLIFOR_CG44 AND CO1C_IDDIV_CO1A = 3 LEFT OUTER JOIN MG19_CLIFORVA ON "
            "MG19_CLIFORVA.MG19_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 "
            "= CG44_CLIFOR.CG44_TIPOCF AND MG19_CLIFORVA.MG19_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR LEFT "
            "OUTER JOIN CG62_CONDPAGDES ON isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = "
            "CG62_CONDPAGDES.CG62_CODPAG "
            "LEFT OUTER JOIN MG17_AGENTI ON isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) "
            "= MG17_AGENTI.MG17_IDAGENTE AND isnull(CO1C_DITTA_CG18,CG44_CLIFOR.CG44_DITTA_CG18) = "
            "MG17_AGENTI.MG17_DITTA_CG18 "
            "LEFT OUTER JOIN CG16_ANAGGEN AS CG16_ANAGGEN_AGE ON CG16_ANAGGEN_AGE.CG16_CODICE = "
            "MG17_AGENTI.MG17_ANAGEN_CG16 "
            "WHERE CG44_DITTA_CG18 = 1 AND CG44_TIPOCF = 1 ORDER BY CG44_CLIFOR"));
}

void TstDistintaStatements::subjectListTemporaryTable()
{
    QCOMPARE(anagrafichestatements::subjectListTable(), QStringLiteral("#GD02_CLIFORSTD"));
    QCOMPARE(anagrafichestatements::dropSubjectListStatement(),
             QStringLiteral("IF OBJECT_ID('tempdb..#GD02_CLIFORSTD') IS NOT NULL "
                            "DROP TABLE #GD02_CLIFORSTD"));
    QCOMPARE(anagrafichestatements::readSubjectListStatement(), QStringLiteral("SELECT * FROM #GD02_CLIFORSTD"));
}

QTEST_MAIN(TstDistintaStatements)
#include "tst_distintastatements.moc"
