#include "data/anagdistintastatements.h"
#include "data/prioritastatements.h"
#include "data/schedastatements.h"

#include <QTest>

// The statements of the type maintenance, of the priority picker and of the node's priority
// fields, checked against the texts the suite has always sent: pieces joined as they stand,
// company filters where they belong (and not where they never were), typed codes with their
// quotes doubled.
class TstGestioniStatements : public QObject
{
    Q_OBJECT

private slots:
    void typeFrameAndDivisionLookups();
    void divisionIdentifierLookupsJoinTheirLinesWithCrLf();
    void priorityLookupsOfTheTypeForm();
    void gridTextsAndTheDeleteCheck();
    void pickerAndNodePriorityLookups();
    void typedCodesHaveTheirQuotesDoubled();
    void subjectCard();
};

void TstGestioniStatements::typeFrameAndDivisionLookups()
{
    QCOMPARE(anagdistintastatements::typesFrameQuery(1),
             QStringLiteral("SELECT * FROM GD01_TIPODISTINTA  WHERE GD01_DITTA_CG18 = 1"));
    QCOMPARE(anagdistintastatements::divisionLookupQuery(2),
             QStringLiteral("SELECT CO1A_CODICE, CO1A_DESCR FROM CO1A_ANAGDIVISIONI  WHERE CO1A_DITTA_CG18 = 2"));
    // The decode of a typed division reads every company's divisions.
    QCOMPARE(anagdistintastatements::divisionDecodeQuery(QStringLiteral("ALI")),
             QStringLiteral("SELECT CO1A_DESCR, CO1A_CODICE FROM CO1A_ANAGDIVISIONI  WHERE CO1A_CODICE = 'ALI'"));
    QCOMPARE(anagdistintastatements::printQuery(), QStringLiteral("SELECT * FROM MO09_TIPODIST ORDER BY MO09_CODDIST"));
}

void TstGestioniStatements::divisionIdentifierLookupsJoinTheirLinesWithCrLf()
{
    QCOMPARE(anagdistintastatements::divisionIdQuery(1, QStringLiteral("BEV")),
             QStringLiteral("SELECT CO1A_IDDIV\r\n   FROM\r\n    CO1A_ANAGDIVISIONI\r\nWHERE\r\n"
                            "    CO1A_DITTA_CG18 = 1 \r\n    AND CO1A_CODICE = 'BEV'"));
    QCOMPARE(anagdistintastatements::divisionCodeQuery(12),
             QStringLiteral("SELECT CO1A_CODICE\r\n   FROM\r\n    CO1A_ANAGDIVISIONI\r\nWHERE\r\n    CO1A_IDDIV = 12"));
}

void TstGestioniStatements::priorityLookupsOfTheTypeForm()
{
    // The type form's own lookups carry no hint, unlike the editor's.
    QCOMPARE(
        anagdistintastatements::priorityIdQuery(1, QStringLiteral("GDO")),
        QStringLiteral("SELECT LP09_ID FROM LP09_TESTATAPRIORITA WHERE LP09_DITTA_CG18 = 1 AND LP09_CODICE = 'GDO'"));
    QCOMPARE(anagdistintastatements::priorityCodeQuery(5),
             QStringLiteral("SELECT LP09_CODICE FROM LP09_TESTATAPRIORITA WHERE LP09_ID = 5"));
    QCOMPARE(anagdistintastatements::priorityLookupQuery(1),
             QStringLiteral("SELECT LP09_CODICE, LP09_DESCR FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                            "WHERE LP09_DITTA_CG18 = 1 ORDER BY LP09_CODICE"));
    QCOMPARE(anagdistintastatements::priorityDecodeQuery(1, QStringLiteral("STD")),
             QStringLiteral("SELECT LP09_DESCR, LP09_CODICE FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                            "WHERE LP09_DITTA_CG18 = 1 AND LP09_CODICE = 'STD'"));
}

void TstGestioniStatements::gridTextsAndTheDeleteCheck()
{
    // The division identifier is compared as quoted text, the priority's bare.
    QCOMPARE(anagdistintastatements::gridDivisionQuery(1, 2),
             QStringLiteral("SELECT RTRIM(CO1A_CODICE) + ' - ' + CO1A_DESCR AS DESCR  FROM CO1A_ANAGDIVISIONI  "
                            "WHERE CO1A_DITTA_CG18 = 1 AND CO1A_IDDIV = '2'"));
    QCOMPARE(anagdistintastatements::gridPriorityQuery(3),
             QStringLiteral(
                 "SELECT LP09_CODICE + ' - ' + LP09_DESCR AS DESCR  FROM LP09_TESTATAPRIORITA  WHERE LP09_ID = 3"));
    QCOMPARE(anagdistintastatements::typeNodesQuery(4),
             QStringLiteral("SELECT *  FROM  GD01_TIPODISTINTA INNER JOIN GD02_DISTINTA "
                            "                                 ON GD01_TIPODISTINTA.GD01_ID = GD02_DISTINTA.GD02_ID_GD01"
                            " WHERE GD01_ID = 4"));
    QCOMPARE(anagdistintastatements::sameCodeQuery(1, QStringLiteral("CLI-GDO"), 0),
             QStringLiteral("SELECT GD01_ID, GD01_CODICE, GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1 "
                            "AND GD01_CODICE = 'CLI-GDO' AND GD01_ID <> 0"));
    QCOMPARE(
        anagdistintastatements::typeNodeGuidsQuery(1, 9),
        QStringLiteral("SELECT GD02_ID, gd02_guid FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 1 AND GD02_ID_GD01 = 9"));
}

void TstGestioniStatements::pickerAndNodePriorityLookups()
{
    QCOMPARE(prioritastatements::listiniQuery(1),
             QStringLiteral("SELECT LP01_DESCR  AS Condizione,        LP09_DESCR  AS Priorità,        "
                            "LP10_ID     AS IDCondizione,        LP09_ID     AS IDPriorità,        "
                            "LP09_CODICE AS CodicePriorità FROM LP09_TESTATAPRIORITA WITH (NOLOCK) "
                            "INNER JOIN LP10_DETTAGLIOPRIORITA WITH (NOLOCK) ON LP09_ID = LP10_ID_LP09 "
                            "INNER JOIN LP01_PROVIDER WITH (NOLOCK) ON LP10_ID_LP01 = LP01_ID "
                            "WHERE LP09_DITTA_CG18 = 1 AND       LP09_INDTIPOTABPRIORITA = 0"));
    QCOMPARE(prioritastatements::priorityIdQuery(1, QStringLiteral("HOR")),
             QStringLiteral("SELECT LP09_ID FROM LP09_TESTATAPRIORITA WITH (NOLOCK) WHERE LP09_DITTA_CG18 = 1 "
                            "AND LP09_CODICE = 'HOR'"));
    // The identifier unquoted, where the cells' description lookup quotes it.
    QCOMPARE(prioritastatements::priorityCodeQuery(3),
             QStringLiteral("SELECT LP09_CODICE FROM LP09_TESTATAPRIORITA WITH (NOLOCK) WHERE LP09_ID = 3"));
}

void TstGestioniStatements::typedCodesHaveTheirQuotesDoubled()
{
    const QString code = QStringLiteral("O'NE");
    QVERIFY(prioritastatements::priorityIdQuery(1, code).endsWith(QStringLiteral("LP09_CODICE = 'O''NE'")));
    QVERIFY(anagdistintastatements::priorityIdQuery(1, code).endsWith(QStringLiteral("LP09_CODICE = 'O''NE'")));
    QVERIFY(anagdistintastatements::priorityDecodeQuery(1, code).endsWith(QStringLiteral("LP09_CODICE = 'O''NE'")));
    QVERIFY(anagdistintastatements::divisionDecodeQuery(code).endsWith(QStringLiteral("CO1A_CODICE = 'O''NE'")));
    QVERIFY(anagdistintastatements::divisionIdQuery(1, code).endsWith(QStringLiteral("CO1A_CODICE = 'O''NE'")));
    QVERIFY(anagdistintastatements::sameCodeQuery(1, code, 3).contains(QStringLiteral("GD01_CODICE = 'O''NE' AND")));
}

void TstGestioniStatements::subjectCard()
{
    QCOMPARE(schedastatements::subjectQuery(1, 1, 5001),
             QStringLiteral("SELECT CG44_CLIFOR, CG16_RAGSOANAG, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, "
                            "CG16_TEL1NUM, CG44_CODPAG_CG62, CG62_DESCPAG FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
                            "ON CG16_CODICE = CG44_CODICE_CG16 LEFT OUTER JOIN CG62_CONDPAGDES ON CG62_CODPAG = "
                            "CG44_CODPAG_CG62 WHERE CG44_DITTA_CG18 = 1 AND CG44_TIPOCF = 1 AND CG44_CLIFOR = 5001"));
    // Company repeated in every join between the company's tables.
    const QString lists = schedastatements::listsQuery(2, 0, 1001);
    QVERIFY(lists.contains(QStringLiteral("AND GD01_DITTA_CG18 = GD02_DITTA_CG18")));
    QVERIFY(lists.contains(QStringLiteral("AND CO1A_DITTA_CG18 = GD01_DITTA_CG18")));
    QVERIFY(
        lists.endsWith(QStringLiteral("WHERE GD02_DITTA_CG18 = 2 AND GD02_TIPOCF_CG44 = 0 AND GD02_CLIFOR_CG44 = 1001 "
                                      "ORDER BY GD01_CODICE, GD02_DATAINIZIOVAL")));
}

QTEST_APPLESS_MAIN(TstGestioniStatements)
#include "tst_gestionistatements.moc"
