#include "data/doveusatostatements.h"

#include <QTest>

// "Dove è usato": the one statement, as it goes unchanged to SQL Server.
class TstDoveUsatoStatements : public QObject
{
    Q_OBJECT

private slots:
    void subjectLinks()
    {
        QCOMPARE(
            doveusatostatements::subjectLinksQuery(1, 0, 1015, QDate(2026, 3, 9)),
            QStringLiteral(
                "SELECT GD02_DISTINTA.GD02_ID, GD01_ID, GD01_INDTIPOSOGG, GD01_CODICE, GD01_DESCR, "
                "ISNULL(RTRIM(CO1A_CODICE) + ' - ' + CO1A_DESCR, '') AS Divisione, PADRE.GD02_CLIFOR_CG44 AS "
                "CodicePadre, ISNULL(CG16_RAGSOANAG, '') AS NomePadre, GD02_DISTINTA.GD02_DATAINIZIOVAL, "
                "GD02_DISTINTA.GD02_DATAFINEVAL, CASE WHEN ISNULL(GD02_DISTINTA.GD02_DATAINIZIOVAL, "
                "CONVERT(DateTime,'09/03/2026',103)) <= CONVERT(DateTime,'09/03/2026',103) AND "
                "ISNULL(GD02_DISTINTA.GD02_DATAFINEVAL, CONVERT(DateTime,'09/03/2026',103)) >= "
                "CONVERT(DateTime,'09/03/2026',103) THEN 1 ELSE 0 END AS ValidaOggi FROM GD02_DISTINTA INNER JOIN "
                "GD01_TIPODISTINTA ON GD01_ID = GD02_DISTINTA.GD02_ID_GD01 AND GD01_DITTA_CG18 = "
                "GD02_DISTINTA.GD02_DITTA_CG18 LEFT OUTER JOIN CO1A_ANAGDIVISIONI ON CO1A_IDDIV = GD01_IDDIV_CO1A "
                "LEFT OUTER JOIN GD02_DISTINTA AS PADRE ON PADRE.GD02_ID = GD02_DISTINTA.GD02_IDPARENT_GD02 LEFT "
                "OUTER JOIN CG44_CLIFOR ON CG44_DITTA_CG18 = PADRE.GD02_DITTA_CG18 AND CG44_TIPOCF = "
                "PADRE.GD02_TIPOCF_CG44 AND CG44_CLIFOR = PADRE.GD02_CLIFOR_CG44 LEFT OUTER JOIN CG16_ANAGGEN ON "
                "CG16_CODICE = CG44_CODICE_CG16 WHERE GD02_DISTINTA.GD02_DITTA_CG18 = 1 AND "
                "GD02_DISTINTA.GD02_TIPOCF_CG44 = 0 AND GD02_DISTINTA.GD02_CLIFOR_CG44 = 1015 ORDER BY GD01_CODICE, "
                "GD02_DISTINTA.GD02_DATAINIZIOVAL"));
        // Company, kind and code are written bare, as numbers; a supplier's code of any size.
        QVERIFY(doveusatostatements::subjectLinksQuery(12, 1, 9876543210, QDate(2026, 3, 9))
                    .endsWith(QStringLiteral("WHERE GD02_DISTINTA.GD02_DITTA_CG18 = 12 AND "
                                             "GD02_DISTINTA.GD02_TIPOCF_CG44 = 1 AND GD02_DISTINTA.GD02_CLIFOR_CG44 = "
                                             "9876543210 ORDER BY GD01_CODICE, GD02_DISTINTA.GD02_DATAINIZIOVAL")));
    }
};

QTEST_MAIN(TstDoveUsatoStatements)
#include "tst_doveusatostatements.moc"
