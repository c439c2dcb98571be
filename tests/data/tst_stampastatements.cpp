#include "data/stampastatements.h"

#include <QTest>

// The statements of the print of a classification, against the texts the suite sends.
class TstStampaStatements : public QObject
{
    Q_OBJECT

private slots:
    void levelText()
    {
        QCOMPARE(stampastatements::levelText(0), QStringLiteral(".1"));
        QCOMPARE(stampastatements::levelText(2), QStringLiteral("...3"));
        QCOMPARE(stampastatements::levelText(9), QStringLiteral("..........10"));
    }

    void clearingAndReadingTheWorkRows()
    {
        QCOMPARE(stampastatements::deleteWorkRowsStatement(QStringLiteral("PC-UFFICIO3mrossi"), 1),
                 QStringLiteral(
                     "DELETE FROM GD04_STDISTINTA  WHERE GD04_KEY = 'PC-UFFICIO3mrossi'   AND GD04_DITTA_CG18  = 1"));
        QCOMPARE(stampastatements::reportDataQuery(QStringLiteral("PC-UFFICIO3mrossi"), 12),
                 QStringLiteral(
                     "SELECT *  FROM         CG44_CLIFOR INNER JOIN                       CG16_ANAGGEN ON "
                     "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE INNER JOIN                       "
                     "GD04_STDISTINTA "
                     "ON CG44_CLIFOR.CG44_DITTA_CG18 = GD04_STDISTINTA.GD04_DITTA_CG18 AND                       "
                     "CG44_CLIFOR.CG44_TIPOCF = GD04_STDISTINTA.GD04_TIPOCF_CG44 And CG44_CLIFOR.CG44_CLIFOR = "
                     "GD04_STDISTINTA.GD04_CLIFOR_CG44                       INNER JOIN GD01_TIPODISTINTA ON "
                     "GD04_STDISTINTA.GD04_ID_GD01 = GD01_TIPODISTINTA.GD01_ID WHERE GD04_KEY = 'PC-UFFICIO3mrossi'   "
                     "AND GD04_DITTA_CG18  = 12 ORDER BY GD04_STDISTINTA.GD04_ID "));
        // A name with a quote keeps the statement whole.
        QCOMPARE(
            stampastatements::deleteWorkRowsStatement(QStringLiteral("PCo'brien"), 2),
            QStringLiteral("DELETE FROM GD04_STDISTINTA  WHERE GD04_KEY = 'PCo''brien'   AND GD04_DITTA_CG18  = 2"));
    }

    // Dates month first with style 101; a node without a date writes NULL rather than a date
    // the node does not have.
    void oneRowPerNode()
    {
        stampastatements::RigaStampa row {
            QStringLiteral("PC-UFFICIO3mrossi"), 1, 5, 2, 0, 1017, QDate(2024, 1, 31), QDate(2099, 12, 31)};
        QCOMPARE(
            stampastatements::insertWorkRowStatement(row),
            QStringLiteral("INSERT INTO GD04_STDISTINTA ( GD04_KEY, GD04_DITTA_CG18, GD04_ID_GD01, GD04_LIVELLO, "
                           "GD04_TIPOCF_CG44, "
                           "GD04_CLIFOR_CG44, GD04_DATAINIZIOVAL, GD04_DATAFINEVAL, GD04_ID_WF02 ) VALUES ( "
                           "'PC-UFFICIO3mrossi',1,5, "
                           "'...3',0,1017,CONVERT(DateTime,'01/31/2024',101),CONVERT(DateTime,'12/31/2099',101),6 )"));
        row.key = QStringLiteral("PCo'brien");
        row.subjectKind = 1;
        row.level = 0;
        row.start.reset();
        QCOMPARE(
            stampastatements::insertWorkRowStatement(row),
            QStringLiteral(
                "INSERT INTO GD04_STDISTINTA ( GD04_KEY, GD04_DITTA_CG18, GD04_ID_GD01, GD04_LIVELLO, "
                "GD04_TIPOCF_CG44, "
                "GD04_CLIFOR_CG44, GD04_DATAINIZIOVAL, GD04_DATAFINEVAL, GD04_ID_WF02 ) VALUES ( 'PCo''brien',1,5, "
                "'.1',1,1017,NULL,CONVERT(DateTime,'12/31/2099',101),6 )"));
    }

    void typeByCode()
    {
        QCOMPARE(stampastatements::typeByCodeQuery(1, QStringLiteral("CLI-GDO")),
                 QStringLiteral("SELECT GD01_ID, GD01_INDTIPOSOGG FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1 "
                                "AND GD01_CODICE = 'CLI-GDO'"));
        QCOMPARE(stampastatements::typeByCodeQuery(2, QStringLiteral("L'ALTRO")),
                 QStringLiteral("SELECT GD01_ID, GD01_INDTIPOSOGG FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 2 "
                                "AND GD01_CODICE = 'L''ALTRO'"));
    }
};

QTEST_GUILESS_MAIN(TstStampaStatements)
#include "tst_stampastatements.moc"
