#include "data/numerictext.h"
#include "data/ricercastatements.h"

#include <QTest>

// The two searches of the tree editor: the cross-list statement and the in-tree find criteria,
// with the numeric test that decides whether a typed code may be written bare.
class TstRicercaStatements : public QObject
{
    Q_OBJECT

private slots:
    void numericText_data();
    void numericText();
    void crossListSearch_data();
    void crossListSearch();
    void inTreeCriteria();
};

void TstRicercaStatements::numericText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("numeric");
    QTest::newRow("digits") << "1024" << true;
    QTest::newRow("blanks around") << "  17 " << true;
    QTest::newRow("signed") << "-5" << true;
    QTest::newRow("sign after blank") << " +5" << true;
    QTest::newRow("decimal point") << "3.25" << true;
    QTest::newRow("leading point") << ".5" << true;
    QTest::newRow("trailing point") << "5." << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("blanks only") << "   " << false;
    QTest::newRow("sign only") << "-" << false;
    QTest::newRow("point only") << "." << false;
    QTest::newRow("two points") << "1.2.3" << false;
    QTest::newRow("decimal comma") << "1,5" << false;
    QTest::newRow("letters") << "12a" << false;
    QTest::newRow("blank inside") << "1 2" << false;
    QTest::newRow("two signs") << "--1" << false;
    QTest::newRow("quote") << "1'" << false;
    QTest::newRow("statement") << "1 OR 1=1" << false;
    QTest::newRow("non-latin digits") << QString::fromUtf8("\u0661\u0662") << false;
}

void TstRicercaStatements::numericText()
{
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QCOMPARE(numerictext::isNumeric(text), numeric);
}

void TstRicercaStatements::crossListSearch_data()
{
    const QString base = QStringLiteral(
        " SELECT  GD02_ID AS ID,  GD02_DITTA_CG18 AS DITTA,  GD02_TIPOCF_CG44 AS TIPOCF, "
        " GD02_CLIFOR_CG44 AS CLIFOR,  CAST(GD02_CLIFOR_CG44 AS VARCHAR) + '-' + RTRIM(CG16_RAGSOANAG) "
        "AS ANAGRAFICA,  GD01_CODICE + '-' + RTRIM(GD01_DESCR) AS DISTINTA  FROM GD02_DISTINTA "
        "INNER JOIN GD01_TIPODISTINTA   ON GD02_ID_GD01 = GD01_ID INNER JOIN CG44_CLIFOR "
        "  ON CG44_DITTA_CG18 = GD02_DITTA_CG18   AND CG44_TIPOCF = GD02_TIPOCF_CG44   AND "
        "CG44_CLIFOR = GD02_CLIFOR_CG44 INNER JOIN CG16_ANAGGEN   ON CG16_CODICE = CG44_CODICE_CG16 "
        "WHERE    GD02_DITTA_CG18 = 1");

    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both empty") << ""
                                << "" << base + "   AND 0=1 ";
    QTest::newRow("code") << "1001"
                          << "" << base + "   AND GD02_CLIFOR_CG44 = 1001";
    QTest::newRow("name") << ""
                          << "ROSSI" << base + "   AND CG16_RAGSOANAG LIKE '%ROSSI%'";
    QTest::newRow("code and name") << "1001"
                                   << "ROSSI"
                                   << base + "   AND GD02_CLIFOR_CG44 = 1001   AND CG16_RAGSOANAG LIKE '%ROSSI%'";
    QTest::newRow("apostrophe in name") << ""
                                        << "L'ANGOLO D'ORO" << base + "   AND CG16_RAGSOANAG LIKE '%L''ANGOLO D''ORO%'";
    // A code that is not a number adds no filter: alone it lists every node of the company.
    QTest::newRow("non-numeric code") << "12A"
                                      << "" << base;
    QTest::newRow("non-numeric code with name") << "O'1"
                                                << "BIANCHI" << base + "   AND CG16_RAGSOANAG LIKE '%BIANCHI%'";
    QTest::newRow("blank code") << " "
                                << "" << base;
}

void TstRicercaStatements::crossListSearch()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(ricercastatements::crossListSearchQuery(1, code, name), expected);
}

void TstRicercaStatements::inTreeCriteria()
{
    QCOMPARE(ricercastatements::inTreeNameCriterion(QStringLiteral("Bar dell'Angolo")),
             QStringLiteral("RAGIONESOCIALE like '%Bar dell''Angolo%'"));
    // An empty text still searches: it matches the first row.
    QCOMPARE(ricercastatements::inTreeNameCriterion(QString()), QStringLiteral("RAGIONESOCIALE like '%%'"));

    QCOMPARE(ricercastatements::inTreeCodeCriterion(QStringLiteral("1001")),
             std::optional<QString>(QStringLiteral("GD02_CLIFOR_CG44 = 1001")));
    QCOMPARE(ricercastatements::inTreeCodeCriterion(QStringLiteral("10A1")), std::nullopt);
    QCOMPARE(ricercastatements::inTreeCodeCriterion(QString()), std::nullopt);
}

QTEST_MAIN(TstRicercaStatements)
#include "tst_ricercastatements.moc"
