#include "data/legamistatements.h"
#include "data/nodistatements.h"

#include <QTest>

// The statements that write nodes and check their links, against the texts the suite sends
// (the same text goes unchanged to SQL Server): pieces, blanks and quoting as they stand.
class TstScritturaStatements : public QObject
{
    Q_OBJECT

private slots:
    void linkChecks()
    {
        QCOMPARE(legamistatements::childCountQuery(1, 25),
                 QStringLiteral("SELECT COUNT(GD02_ID) AS NFIGLI  FROM GD02_DISTINTA  WHERE GD02_DITTA_CG18 = 1 "
                                "AND GD02_IDPARENT_GD02 = 25"));
        QCOMPARE(legamistatements::childrenQuery(1, 25),
                 QStringLiteral("SELECT *  FROM GD02_DISTINTA  WHERE GD02_DITTA_CG18 = 1 AND GD02_IDPARENT_GD02 = 25"));
        QCOMPARE(legamistatements::contractCountQuery(3, 1043),
                 QStringLiteral("   SELECT    COUNT(*)  FROM    GD10_CONTRATTI WHERE    GD10_DITTA_CG18 = 3 AND"
                                "    GD10_CLIFOR_CG44 = 1043"));
        QCOMPARE(legamistatements::deleteNodeStatement(25),
                 QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 25"));

        const QString head = QStringLiteral(
            "SELECT TOP 1 *   FROM  GD18_LIQUIDAZIONE INNER JOIN       GD13_PREMI ON GD18_LIQUIDAZIONE.GD18_ID_GD13 = "
            "GD13_PREMI.GD13_ID        INNER JOIN        GD14_SOGGCONTR ON GD13_PREMI.GD13_ID = "
            "GD14_SOGGCONTR.GD14_ID_GD13"
            " WHERE GD13_DITTA_CG18    = 1   AND GD14_ID_GD02       = 25");
        // Piece by piece, as the suite joins them.
        const QString tail = QStringLiteral(
            "   AND GD18_STATOSCADENZA >= 2 "
            "   AND GD14_ID_GD02 NOT IN ("
            "                            SELECT GD27_ID_GD02 "
            "                              FROM GD27_SOGGCONTRDISAB "
            "                             WHERE GD27_DITTA_CG18     = GD14_DITTA_CG18     "
            "                               AND GD27_CODCONTR_GD10  = GD14_CODCONTR_GD10  "
            "                               AND GD27_VERCONTR_GD10  = GD14_VERCONTR_GD10  "
            "                               AND GD27_PROGRCOND_GD13 = GD14_PROGRCOND_GD13 "
            "                            )   ");
        QCOMPARE(legamistatements::definitiveBonusQuery(1, 25, std::nullopt), head + tail);
        QCOMPARE(legamistatements::definitiveBonusQuery(1, 25, QDate(2024, 3, 5)),
                 head + QStringLiteral("   AND GD18_DATASCADENZA  > CONVERT(DateTime,'05/03/2024',103) ") + tail);
    }

    // The condition statement: the period test on both ends, the division only when there is one.
    void conditionsOfANode()
    {
        const legamistatements::NodoCondizioni node {25, 1, 5009, QDate(2024, 1, 1), QDate(2099, 12, 31)};
        const QString withoutDivision = legamistatements::conditionsQuery(1, node, QString());
        QCOMPARE(
            withoutDivision,
            QStringLiteral(
                "SELECT DISTINCT *  FROM GDVISTA03_SOGGETTICOND  WHERE ( ID = 25         OR (     CondizioneTipoCF    "
                "= 1"
                "              AND CondizioneCodIntest = 5009              AND ID                  = 0               "
                "AND ("
                "                    CondizioneIni BETWEEN CONVERT(DateTime,'01/01/2024',103) AND "
                "CONVERT(DateTime,'31/12/2099',103)                     OR                     CondizioneFin BETWEEN "
                "CONVERT(DateTime,'01/01/2024',103) AND CONVERT(DateTime,'31/12/2099',103)                     OR ("
                "                        CondizioneIni <= CONVERT(DateTime,'01/01/2024',103)                         "
                "AND "
                "                        CondizioneFin >= CONVERT(DateTime,'31/12/2099',103)                       )"
                "                    )             )        )    AND Ditta = 1 ORDER BY ContrattoCod ,           "
                "ContrattoVer ,           CondizioneCod,           CondizioneIni "));
        QCOMPARE(legamistatements::conditionsQuery(1, node, QStringLiteral("2")),
                 QString(withoutDivision)
                     .replace(QStringLiteral("                    )             )"),
                              QStringLiteral("                    )           AND Divisione = 2"
                                             "             )")));
    }

    void parentAndOverlap()
    {
        QCOMPARE(nodistatements::parentQuery(1, 0),
                 QStringLiteral(" SELECT * FROM GD02_DISTINTA  WHERE GD02_DITTA_CG18 = 1   AND GD02_ID  = 0"));

        nodistatements::Collegamento link {
            1, 1198, 0, std::nullopt, std::nullopt, QDate(2024, 1, 1), QDate(2024, 12, 31)};
        const QString head = QStringLiteral(
            " SELECT CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc,  GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AS "
            "DataI,"
            " GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL AS DataF,  GD01_TIPODISTINTA_FIGLIO.GD01_CODICE AS CodDistinta,"
            " GD01_TIPODISTINTA_FIGLIO.GD01_DESCR AS DescDistinta, GD01_TIPODISTINTA_PADRE.GD01_CODICE AS "
            "CodDistintaCapo,"
            " GD01_TIPODISTINTA_PADRE.GD01_DESCR AS DescDistintaCapo"
            " FROM GD01_TIPODISTINTA AS GD01_TIPODISTINTA_FIGLIO LEFT OUTER JOIN GD02_DISTINTA AS GD02_DISTINTA_FIGLIO"
            " ON GD01_TIPODISTINTA_FIGLIO.GD01_ID = GD02_DISTINTA_FIGLIO.GD02_ID_GD01"
            " LEFT OUTER JOIN (GD02_DISTINTA AS GD02_DISTINTA_PADRE LEFT OUTER JOIN GD01_TIPODISTINTA AS "
            "GD01_TIPODISTINTA_PADRE ON GD02_DISTINTA_PADRE.GD02_ID_GD01 = GD01_TIPODISTINTA_PADRE.GD01_ID)"
            " ON GD02_DISTINTA_FIGLIO.GD02_IDPARENT_GD02 = GD02_DISTINTA_PADRE.GD02_ID"
            " LEFT OUTER JOIN (CG44_CLIFOR LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = "
            "CG16_ANAGGEN.CG16_CODICE)"
            " ON GD02_DISTINTA_PADRE.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18"
            " AND GD02_DISTINTA_PADRE.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF"
            " AND GD02_DISTINTA_PADRE.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
            " WHERE GD02_DISTINTA_FIGLIO.GD02_DITTA_CG18 = 1   AND GD02_DISTINTA_FIGLIO.GD02_CLIFOR_CG44 = 1198"
            "   AND GD02_DISTINTA_FIGLIO.GD02_TIPOCF_CG44 = 0");
        const QString overlap = QStringLiteral(
            "   AND (CONVERT(DateTime,'01/01/2024',103) BETWEEN  GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND  "
            "GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL          OR CONVERT(DateTime,'31/12/2024',103) BETWEEN "
            "GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL         OR "
            "(CONVERT(DateTime,'01/01/2024',103) <= GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AND "
            "CONVERT(DateTime,'31/12/2024',103) >= GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL)        ) "
            "ORDER BY GD02_DISTINTA_FIGLIO.GD02_ID_GD01");
        QCOMPARE(nodistatements::overlapQuery(link), head + overlap);

        link.division = 2;
        link.excludedNodeId = 77;
        QCOMPARE(nodistatements::overlapQuery(link),
                 head
                     + QStringLiteral("   AND (GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A = 2        OR         "
                                      "GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A IS NULL       )"
                                      "   AND GD02_DISTINTA_FIGLIO.GD02_ID <> 77")
                     + overlap);
    }

    // Root or child, the pieces of the INSERT with their two leading blanks; host text quoted.
    void insertOfANode()
    {
        nodistatements::NuovoNodo node;
        node.typeId = 4;
        node.parentId = 31;
        node.company = 1;
        node.subjectKind = 1;
        node.subjectCode = 5009;
        node.start = QDate(2024, 5, 1);
        node.end = QDate(2099, 12, 31);
        node.today = QDate(2026, 11, 23);
        node.userGroup = QStringLiteral("ADMIN");
        node.user = QStringLiteral("o'neill");
        node.billingRule = 3;
        const QString columns = QStringLiteral(
            "INSERT INTO GD02_DISTINTA  (  GD02_ID_GD01,  GD02_IDPARENT_GD02,  GD02_DITTA_CG18,  GD02_TIPOCF_CG44,"
            "  GD02_CLIFOR_CG44,  GD02_INDREGPROV,  GD02_ID_WF02,  GD02_DATAINIZIOVAL,  GD02_DATAFINEVAL,  "
            "GD02_DATACRE,"
            "  GD02_GRUPPOCRE,  GD02_UTENTECRE,  GD02_DATAVAR,  GD02_GRUPPOVAR,  GD02_UTENTEVAR,  GD02_TIPOANAGFATT,"
            "  GD02_INDEREPROMO ) VALUES (");
        QCOMPARE(
            nodistatements::insertStatement(node),
            columns
                + QStringLiteral(
                    "  4,  31,  1,  1,  5009,  0,  0,  CONVERT(DateTime,'01/05/2024',103),  "
                    "CONVERT(DateTime,'31/12/2099',103),  CONVERT(DateTime,'23/11/2026',103),  'ADMIN',  'o''neill',"
                    "  CONVERT(DateTime,'23/11/2026',103),  'ADMIN',  'o''neill',  3,  0 )"));
        node.root = true;
        QVERIFY(nodistatements::insertStatement(node).startsWith(columns + QStringLiteral("  4,  0,  1,")));
        QVERIFY(nodistatements::insertStatement(node).endsWith(QStringLiteral("  3,  2 )")));
        // A name longer than its column is cut to the column's width before it is quoted.
        node.user = QStringLiteral("un.nome.utente.molto'lungo");
        QVERIFY(nodistatements::insertStatement(node).contains(QStringLiteral("  'un.nome.utente.molto',")));
    }

    void priorityTypedInANode()
    {
        QCOMPARE(nodistatements::priorityLookupQuery(QStringLiteral("7")),
                 QStringLiteral(" SELECT LP09_DESCR      FROM LP09_TESTATAPRIORITA     WHERE LP09_ID = '7'"));
        QVERIFY(nodistatements::priorityLookupQuery(QStringLiteral("7'")).endsWith(QStringLiteral("= '7'''")));
    }
};

QTEST_MAIN(TstScritturaStatements)
#include "tst_scritturastatements.moc"
