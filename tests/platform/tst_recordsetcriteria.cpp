#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QTemporaryDir>
#include <QTest>

using namespace db;

// Filter and Find criteria on the values a recordset really holds: integers, decimals, dates,
// texts with quotes and nulls, comparisons joined by AND/OR with parentheses.
class TestRecordsetCriteria : public QObject
{
    Q_OBJECT

public:
    TestRecordsetCriteria()
    {
        m_connection = Connection::open(
            QStringLiteral("Provider=SQLite;Data Source=%1").arg(m_dir.filePath(QStringLiteral("criteri.sqlite"))));
        m_connection->execute(
            QStringLiteral("CREATE TABLE NODI (ID INTEGER PRIMARY KEY, CODICE INTEGER, NOME VARCHAR(60), FINE DATETIME,"
                           " IMPORTO DECIMAL(18,4), PADRE INTEGER, NOTA VARCHAR(20))"));
        m_connection->execute(QStringLiteral("INSERT INTO NODI VALUES"
                                             " (1, 10, 'Bar dell''Angolo', '2024-01-31 00:00:00', 1.5, NULL, '10'),"
                                             " (2, 20, 'Pasticceria Rossi', '2099-12-31 00:00:00', NULL, 1, 'a%b'),"
                                             " (3, 30, 'BAR SPORT', NULL, 12, 1, NULL),"
                                             " (4, 40, 'Rossini & Figli', '2024-06-30 12:30:00', -3.25, 3, '9'),"
                                             " (5, 100, 'Caffè CITTÀ', '2023-02-28 00:00:00', 0, NULL, '')"));
    }

private slots:
    void filterKeepsTheMatchingRows_data()
    {
        QTest::addColumn<QString>("criteria");
        QTest::addColumn<QList<int>>("codes");

        // Numbers
        QTest::newRow("equal") << "CODICE = 30" << QList<int> {30};
        QTest::newRow("not equal") << "CODICE <> 30" << QList<int> {10, 20, 40, 100};
        QTest::newRow("bang equal") << "CODICE != 30" << QList<int> {10, 20, 40, 100};
        QTest::newRow("range") << "CODICE >= 20 AND CODICE < 100" << QList<int> {20, 30, 40};
        QTest::newRow("numbers, not texts: 100 > 40") << "CODICE > 40" << QList<int> {100};
        QTest::newRow("decimal") << "IMPORTO = 1.5" << QList<int> {10};
        QTest::newRow("negative") << "IMPORTO < 0" << QList<int> {40};
        QTest::newRow("null is no amount") << "IMPORTO <= 0" << QList<int> {40, 100};
        QTest::newRow("number quoted") << "CODICE = '20'" << QList<int> {20};
        QTest::newRow("digits in a text column") << "NOTA > 5" << QList<int> {10, 40};

        // Texts
        QTest::newRow("like, any case") << "NOME like '%bar%'" << QList<int> {10, 30};
        QTest::newRow("like with star") << "NOME LIKE 'ross*'" << QList<int> {40};
        QTest::newRow("like anchored") << "NOME like 'Bar'" << QList<int> {};
        QTest::newRow("like accents, any case") << "NOME like '%città%'" << QList<int> {100};
        QTest::newRow("not like") << "NOME NOT LIKE '%ross%'" << QList<int> {10, 30, 100};
        QTest::newRow("doubled quote") << "NOME = 'bar dell''angolo'" << QList<int> {10};
        QTest::newRow("like with doubled quote") << "NOME like '%dell''Ang%'" << QList<int> {10};
        QTest::newRow("empty text is not null") << "NOTA = ''" << QList<int> {100};
        QTest::newRow("bracketed field") << "[NOME] like '%&%'" << QList<int> {40};

        // Dates
        QTest::newRow("date as typed") << "FINE = '31/01/2024'" << QList<int> {10};
        QTest::newRow("date with time") << "FINE > '30/06/2024'" << QList<int> {20, 40};
        QTest::newRow("open end") << "FINE >= '31/12/2099'" << QList<int> {20};
        QTest::newRow("date in hashes") << "FINE < #2024-01-01#" << QList<int> {100};
        QTest::newRow("stored form") << "FINE = '2024-06-30 12:30:00'" << QList<int> {40};

        // Nulls
        QTest::newRow("is null") << "PADRE IS NULL" << QList<int> {10, 100};
        QTest::newRow("is not null") << "PADRE is not null" << QList<int> {20, 30, 40};
        QTest::newRow("= NULL") << "FINE = NULL" << QList<int> {30};
        QTest::newRow("<> NULL") << "NOTA <> NULL" << QList<int> {10, 20, 40, 100};
        QTest::newRow("null never equals") << "PADRE <> 1" << QList<int> {40};

        // Combinations: AND binds tighter than OR; parentheses change it.
        QTest::newRow("and before or") << "CODICE = 10 OR CODICE = 30 AND PADRE = 3" << QList<int> {10};
        QTest::newRow("parentheses") << "(CODICE = 10 OR CODICE = 40) AND PADRE = 3" << QList<int> {40};
        QTest::newRow("nested") << "((PADRE = 1) OR (NOME like '%caff%')) AND ORDINE_DISPARI = 1" << QList<int> {30};
        QTest::newRow("field named like a keyword") << "PADRE = 1 OR ORDINE_DISPARI = 1" << QList<int> {10, 20, 30};
        QTest::newRow("keywords any case") << "padre = 1 and codice > 20 or codice = 100" << QList<int> {30, 100};
        QTest::newRow("blanks around") << "  Seleziona = 1 " << QList<int> {};
    }

    void filterKeepsTheMatchingRows()
    {
        QFETCH(QString, criteria);
        QFETCH(QList<int>, codes);
        RecordsetPtr rs = m_connection->openRecordset(QStringLiteral(
            "SELECT NODI.*, CODICE / 10 % 2 AS ORDINE_DISPARI, 0 AS Seleziona FROM NODI ORDER BY CODICE"));
        rs->setFilter(criteria);
        QList<int> kept;
        for (int row = 0; row < rs->recordCount(); ++row)
            kept << rs->valueAt(row, rs->fieldIndex(QStringLiteral("CODICE"))).toInt();
        QCOMPARE(kept, codes);
        QCOMPARE(rs->filter(), criteria);
        QCOMPARE(rs->currentRow(), codes.isEmpty() ? -1 : 0);
    }

    void unreadableCriteriaAreRefused_data()
    {
        QTest::addColumn<QString>("criteria");
        QTest::newRow("unknown field") << "MANCA = 1";
        QTest::newRow("no operator") << "CODICE 10";
        QTest::newRow("no value") << "CODICE = ";
        QTest::newRow("open quote") << "NOME = 'Bar";
        QTest::newRow("open parenthesis") << "(CODICE = 10";
        QTest::newRow("dangling AND") << "CODICE = 10 AND";
        QTest::newRow("bad date in hashes") << "FINE = #ieri#";
        QTest::newRow("null ordered") << "CODICE > NULL";
        QTest::newRow("trailing words") << "CODICE = 10 ORDER BY NOME";
    }

    // A criterion that cannot be read is an error on the connection and changes nothing.
    void unreadableCriteriaAreRefused()
    {
        QFETCH(QString, criteria);
        RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM NODI ORDER BY CODICE"));
        rs->setFilter(QStringLiteral("CODICE >= 30"));
        m_connection->clearErrors();
        QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->setFilter(criteria));
        QCOMPARE(m_connection->errors().size(), 1);
        QCOMPARE(m_connection->errors().first().source, QStringLiteral("Recordset"));
        QCOMPARE(rs->filter(), QStringLiteral("CODICE >= 30"));
        QCOMPARE(rs->recordCount(), 3);
        QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->find(criteria));
    }

    // Find starts at the current row, goes forward only, stays within the filter, and leaves
    // the recordset past its end when nothing matches.
    void findWalksForwardWithinTheFilter()
    {
        RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM NODI ORDER BY CODICE"));
        rs->setFilter(QStringLiteral("PADRE IS NOT NULL OR CODICE = 100"));
        QVERIFY(rs->find(QStringLiteral("NOME like '%ross%'")));
        QCOMPARE(rs->value(QStringLiteral("CODICE")).toInt(), 20);
        rs->moveNext();
        QVERIFY(rs->find(QStringLiteral("NOME like '%ross%'")));
        QCOMPARE(rs->value(QStringLiteral("CODICE")).toInt(), 40);
        QVERIFY(rs->find(QStringLiteral("FINE < '01/01/2024'")));
        QCOMPARE(rs->value(QStringLiteral("CODICE")).toInt(), 100);
        QVERIFY(!rs->find(QStringLiteral("CODICE = 10"))); // outside the filter
        QVERIFY(rs->eof());

        rs->moveFirst();
        QVERIFY(!rs->find(QStringLiteral("NOME like '%Angolo%'")));
        rs->setFilter(QString());
        QVERIFY(rs->find(QStringLiteral("NOME like '%Angolo%'")));
        QCOMPARE(rs->absolutePosition(), 1);
    }

    // A filter is evaluated on the values as they are now, including unsaved edits.
    void filterSeesEditedValues()
    {
        m_connection->execute(QStringLiteral("SELECT 0 AS Seleziona, CODICE AS Codice INTO #LISTA FROM NODI"));
        RecordsetPtr list = m_connection->openRecordset(QStringLiteral("SELECT * FROM #LISTA ORDER BY Codice"));
        list->setAbsolutePosition(2);
        list->setValue(QStringLiteral("Seleziona"), 1);
        list->update();
        QVERIFY(list->setData(list->index(4, 0), 1));
        RecordsetPtr ticked = list->clone();
        ticked->setFilter(QStringLiteral("Seleziona = 1 "));
        QCOMPARE(ticked->recordCount(), 2);
        QCOMPARE(ticked->value(QStringLiteral("Codice")).toInt(), 20);
        ticked->moveNext();
        QCOMPARE(ticked->value(QStringLiteral("Codice")).toInt(), 100);
    }

private:
    QTemporaryDir m_dir;
    ConnectionPtr m_connection;
};

QTEST_MAIN(TestRecordsetCriteria)
#include "tst_recordsetcriteria.moc"
