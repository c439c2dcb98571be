#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QAbstractItemModelTester>
#include <QTemporaryDir>
#include <QTest>

using namespace db;

// What a recordset does for two clerks on one table: reading a row again after another
// connection changed or removed it, forgetting rows the database removed by itself, and the
// change stamp every update writes.
class TestRecordsetResync : public QObject
{
    Q_OBJECT

    struct Tabella
    {
        QTemporaryDir folder;
        ConnectionPtr mine;
        ConnectionPtr other;

        Tabella()
        {
            const QString connection = QStringLiteral("Provider=SQLite;Data Source=%1")
                                           .arg(folder.filePath(QStringLiteral("t.sqlite")));
            mine = Connection::open(connection);
            mine->execute(QStringLiteral("CREATE TABLE NODI (ID INTEGER PRIMARY KEY, NOME VARCHAR(40), "
                                         "FINE DATETIME, CHI VARCHAR(20), QUANDO DATETIME)"));
            for (int id = 1; id <= 5; ++id)
                mine->execute(
                    QStringLiteral("INSERT INTO NODI (ID, NOME, FINE) VALUES (%1, 'N%1', '2024-01-31 00:00:00')")
                        .arg(id));
            other = Connection::open(connection);
        }
        RecordsetPtr apri()
        {
            return mine->openRecordset(QStringLiteral("SELECT ID, NOME, FINE, UPPER(NOME) AS CALCOLATO FROM NODI"));
        }
        QVariant letto(const QString &sql) { return other->openRecordset(sql)->valueAt(0, 0); }
    };

private slots:
    void rowIsReadAgainAsTheDatabaseHoldsIt()
    {
        Tabella t;
        const RecordsetPtr rs = t.apri();
        rs->setCurrentRow(1);
        QCOMPARE(rs->resync(), Recordset::RowState::Unchanged);

        // A pending change of mine goes; the other clerk's values come in; computed columns stay.
        rs->setValue(QStringLiteral("NOME"), QStringLiteral("mio"));
        t.other->execute(QStringLiteral("UPDATE NODI SET NOME = 'suo', FINE = NULL WHERE ID = 2"));
        QCOMPARE(rs->resync(), Recordset::RowState::Changed);
        QVERIFY(!rs->isEditing());
        QCOMPARE(rs->value(QStringLiteral("NOME")).toString(), QStringLiteral("suo"));
        QVERIFY(rs->value(QStringLiteral("FINE")).isNull());
        QCOMPARE(rs->value(QStringLiteral("CALCOLATO")).toString(), QStringLiteral("N2"));
        // Read again, my next change is no conflict.
        rs->setValue(QStringLiteral("NOME"), QStringLiteral("mio"));
        rs->update();
        QCOMPARE(t.letto(QStringLiteral("SELECT NOME FROM NODI WHERE ID = 2")).toString(), QStringLiteral("mio"));

        t.other->execute(QStringLiteral("DELETE FROM NODI WHERE ID = 2"));
        QCOMPARE(rs->resync(), Recordset::RowState::Gone);
        QCOMPARE(rs->value(QStringLiteral("NOME")).toString(), QStringLiteral("mio"));

        // A refused update is recognised as another clerk's change, nothing else is.
        rs->setCurrentRow(2);
        t.other->execute(QStringLiteral("UPDATE NODI SET NOME = 'x' WHERE ID = 3"));
        rs->setValue(QStringLiteral("NOME"), QStringLiteral("y"));
        try {
            rs->update();
            QFAIL("a stale update went through");
        } catch (const DatabaseError &error) {
            QVERIFY(error.isStaleRow());
        }
        try {
            t.mine->execute(QStringLiteral("SELECT * FROM NESSUNA"));
        } catch (const DatabaseError &error) {
            QVERIFY(!error.isStaleRow());
        }
    }

    // Rows removed by the database leave every recordset sharing them, in one reset.
    void forgottenRowsLeaveTheOriginalAndItsClones()
    {
        Tabella t;
        const RecordsetPtr rs = t.apri();
        QAbstractItemModelTester tester(rs.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        const RecordsetPtr clone = rs->clone();
        rs->setCurrentRow(1);    // ID 2, to be forgotten
        clone->setCurrentRow(4); // ID 5, stays
        t.mine->execute(QStringLiteral("DELETE FROM NODI WHERE ID IN (2, 3)"));
        rs->forgetRows({1, 2});
        QCOMPARE(rs->recordCount(), 3);
        QCOMPARE(clone->recordCount(), 3);
        QCOMPARE(clone->value(QStringLiteral("ID")).toInt(), 5);
        // Where the forgotten row was: the next one follows.
        QCOMPARE(rs->currentRow(), -1);
        rs->moveNext();
        QCOMPARE(rs->value(QStringLiteral("ID")).toInt(), 4);
        rs->forgetRows({7, -1}); // out of range: nothing
        QCOMPARE(rs->recordCount(), 3);
    }

    // Every update also stamps who changed the row and when, without reading those columns.
    void updatesCarryTheChangeStamp()
    {
        Tabella t;
        const RecordsetPtr rs = t.apri();
        rs->setUpdateStamp([] {
            return QList<std::pair<QString, QVariant>> {
                {QStringLiteral("CHI"), QStringLiteral("tester")},
                {QStringLiteral("QUANDO"), QDateTime(QDate(2026, 11, 23), QTime(9, 30))},
                {QStringLiteral("NOME"), QStringLiteral("ignorato")}};
        });
        rs->setCurrentRow(0);
        rs->setValue(QStringLiteral("FINE"), QDate(2025, 12, 31));
        rs->update();
        QCOMPARE(
            t.letto(QStringLiteral("SELECT NOME || '|' || CHI || '|' || QUANDO FROM NODI WHERE ID = 1")).toString(),
            QStringLiteral("N1|tester|2026-11-23 09:30:00"));
        // Nothing changed, nothing stamped.
        rs->setCurrentRow(3);
        rs->update();
        QVERIFY(t.letto(QStringLiteral("SELECT CHI FROM NODI WHERE ID = 4")).isNull());
    }
};

QTEST_MAIN(TestRecordsetResync)
#include "tst_recordsetresync.moc"
