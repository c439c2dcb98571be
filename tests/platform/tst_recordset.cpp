#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace db;

// Recordset behaviour over a real SQLite file: navigation, filter, find, clones and write-back.
class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptySetIsBothBofAndEof();
    void navigationAndPositions();
    void cloneChangesShowInOriginal();
    void filterAndRecordCount();
    void findSearchesForwardFromCurrentRow();
    void inMemoryEditsNeverReachTheDatabase();
    void cleanUpdateInsertAndDelete();
    void decimalsAreKeptAtTheColumnScale();
    void movingOffAPendingRowWritesIt();
    void conflictingUpdateIsRefused();
    void staleDeleteIsRefused();
    void computedColumnsAreNotWritable();
    void writabilityFollowsSchemaChanges();
    void writabilityFollowsTheStatement_data();
    void writabilityFollowsTheStatement();
    void gridEditConflictIsSignalled();
    void valuesThatDoNotFitTheFieldAreRefused_data();
    void valuesThatDoNotFitTheFieldAreRefused();
    void largeReadsKeepEveryRow();
    void aReadOfSomeFieldsKeepsTheirValuesAndWritesNothing();

private:
    QString fileConnectionString() const;
    ConnectionPtr m_connection;
    std::unique_ptr<QTemporaryDir> m_dir;
};

QString TestRecordset::fileConnectionString() const
{
    return QStringLiteral("Provider=SQLite;Data Source=%1").arg(m_dir->filePath(QStringLiteral("test.sqlite")));
}

void TestRecordset::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_connection = Connection::open(fileConnectionString());
    m_connection->execute(QStringLiteral("CREATE TABLE SOGG (ID INTEGER PRIMARY KEY, CODICE INTEGER, NOME VARCHAR(60), "
                                         "DATAFINE DATETIME, IMPORTO DECIMAL(18,2))"));
    const char *rows[] = {
        "(1, 10, 'Rossi Mario', '2024-01-31 00:00:00', 1.5)",
        "(2, 20, 'Bianchi SpA', '2099-12-31', NULL)",
        "(3, 30, 'O''Brien Srl', NULL, 3)",
        "(4, 40, 'Rossini Ferramenta', '2024-06-30 12:30:00', 4.25)",
    };
    for (const char *row : rows)
        m_connection->execute(QStringLiteral("INSERT INTO SOGG (ID, CODICE, NOME, DATAFINE, IMPORTO) VALUES ")
                              + QLatin1String(row));
}

void TestRecordset::cleanup()
{
    m_connection.reset();
    m_dir.reset();
}

void TestRecordset::emptySetIsBothBofAndEof()
{
    RecordsetPtr rs = m_connection->openRecordset(
        QStringLiteral("SELECT *, '' AS RagioneSociale FROM SOGG WHERE 1=0 "));
    QVERIFY(rs->bof());
    QVERIFY(rs->eof());
    QVERIFY(rs->isEmpty());
    QCOMPARE(rs->fieldCount(), 6);
    QCOMPARE(rs->field(5).name, QStringLiteral("RagioneSociale"));
    QCOMPARE(rs->currentRow(), -1);
    QCOMPARE(rs->absolutePosition(), 0);
    rs->moveFirst();
    rs->moveNext();
    QVERIFY(rs->bof() && rs->eof());
    QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->value(QStringLiteral("NOME")));
    QVERIFY(!m_connection->errors().isEmpty());
}

void TestRecordset::navigationAndPositions()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG ORDER BY ID"));
    QSignalSpy moves(rs.get(), &Recordset::currentRowChanged);
    QCOMPARE(rs->recordCount(), 4);
    QVERIFY(!rs->bof() && !rs->eof());
    QCOMPARE(rs->absolutePosition(), 1);

    rs->movePrevious();
    QVERIFY(rs->bof() && !rs->eof());
    QCOMPARE(rs->currentRow(), -1);
    rs->moveNext(); // from BOF to the first row
    QCOMPARE(rs->value(QStringLiteral("id")).toInt(), 1);

    rs->moveLast();
    QCOMPARE(rs->absolutePosition(), 4);
    rs->moveNext();
    QVERIFY(rs->eof() && !rs->bof());
    rs->movePrevious(); // from EOF to the last row
    QCOMPARE(rs->currentRow(), 3);

    rs->setAbsolutePosition(2);
    QCOMPARE(rs->value(QStringLiteral("NOME")).toString(), QStringLiteral("Bianchi SpA"));
    QCOMPARE(moves.count(), 6);
    QCOMPARE(moves.last().first().toInt(), 1);

    QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->value(QStringLiteral("NONESISTE")));
    QCOMPARE(rs->fieldIndex(QStringLiteral("nonesiste")), -1);
}

void TestRecordset::cloneChangesShowInOriginal()
{
    m_connection->execute(
        QStringLiteral("SELECT 0 AS Seleziona, CODICE AS Codice, NOME INTO #LISTA FROM SOGG ORDER BY CODICE"));
    RecordsetPtr list = m_connection->openRecordset(QStringLiteral("SELECT * FROM #LISTA"));
    QVERIFY(!list->isWritable());

    RecordsetPtr clone = list->clone();
    clone->setFilter(QStringLiteral("Codice >= 30"));
    QCOMPARE(clone->recordCount(), 2);
    QCOMPARE(list->recordCount(), 4);

    QSignalSpy originalChanges(list.get(), &QAbstractItemModel::dataChanged);
    clone->moveLast(); // Codice 40: the original's fourth row
    clone->setValue(QStringLiteral("Seleziona"), 1);
    clone->update();

    QCOMPARE(list->valueAt(3, list->fieldIndex(QStringLiteral("Seleziona"))).toInt(), 1);
    QCOMPARE(originalChanges.count(), 1);
    const QModelIndex changed = originalChanges.first().first().toModelIndex();
    QCOMPARE(changed.row(), 3);
    QCOMPARE(changed.column(), list->fieldIndex(QStringLiteral("Seleziona")));

    // The other way round, through the model as a grid edits it.
    QSignalSpy cloneChanges(clone.get(), &QAbstractItemModel::dataChanged);
    QVERIFY(list->setData(list->index(2, 0), 1));
    QCOMPARE(clone->valueAt(0, 0).toInt(), 1);
    QCOMPARE(cloneChanges.count(), 1);
    QCOMPARE(cloneChanges.first().first().toModelIndex().row(), 0);

    // Rows deleted through a clone leave the original too; the clone sits on the removed row.
    clone->moveFirst();
    clone->deleteCurrent();
    QCOMPARE(list->recordCount(), 3);
    QCOMPARE(clone->currentRow(), -1);
    clone->moveNext();
    QCOMPARE(clone->value(QStringLiteral("Codice")).toInt(), 40);
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT COUNT(*) AS N FROM #LISTA"))->value(0).toInt(), 4);
}

void TestRecordset::filterAndRecordCount()
{
    m_connection->execute(
        QStringLiteral("SELECT CODICE % 20 / 10 AS Seleziona, CODICE AS Codice, NOME INTO #LISTA FROM SOGG"));
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM #LISTA"));
    rs->moveLast();
    QSignalSpy resets(rs.get(), &QAbstractItemModel::modelReset);

    rs->setFilter(QStringLiteral("Seleziona = 1 "));
    QCOMPARE(rs->recordCount(), 2);
    QCOMPARE(rs->rowCount(), 2);
    QCOMPARE(rs->currentRow(), 0);
    QCOMPARE(rs->value(QStringLiteral("Codice")).toInt(), 10);
    QCOMPARE(resets.count(), 1);

    rs->setFilter(QStringLiteral("NOME like '%ROSS%'"));
    QCOMPARE(rs->recordCount(), 2);
    rs->setFilter(QStringLiteral("NOME = 'o''brien srl' OR (Codice <> 10 AND NOME like 'ross*')"));
    QCOMPARE(rs->recordCount(), 2);
    QCOMPARE(rs->valueAt(1, 1).toInt(), 40);
    rs->setFilter(QStringLiteral("Codice = 99"));
    QVERIFY(rs->bof() && rs->eof());

    rs->setFilter(QString());
    QCOMPARE(rs->recordCount(), 4);
    QCOMPARE(rs->filter(), QString());
    QCOMPARE(rs->absolutePosition(), 1);

    QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->setFilter(QStringLiteral("Codice === 3")));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->setFilter(QStringLiteral("Manca = 3")));
    QCOMPARE(m_connection->errors().first().source, QStringLiteral("Recordset"));
    QCOMPARE(rs->recordCount(), 4);
}

void TestRecordset::findSearchesForwardFromCurrentRow()
{
    RecordsetPtr rs = m_connection->openRecordset(
        QStringLiteral("SELECT ID, CODICE AS GD02_CLIFOR_CG44, NOME AS RAGIONESOCIALE FROM SOGG ORDER BY ID"));
    QVERIFY(rs->find(QStringLiteral("RAGIONESOCIALE like '%ross%'")));
    QCOMPARE(rs->currentRow(), 0);
    QVERIFY(rs->find(QStringLiteral("RAGIONESOCIALE like '%ross%'"))); // the current row counts
    QCOMPARE(rs->currentRow(), 0);

    rs->moveNext();
    QVERIFY(rs->find(QStringLiteral("RAGIONESOCIALE like '%ross%'")));
    QCOMPARE(rs->value(QStringLiteral("ID")).toInt(), 4);

    rs->moveFirst();
    QVERIFY(rs->find(QStringLiteral("RAGIONESOCIALE like '%O''Brien%'")));
    QCOMPARE(rs->currentRow(), 2);
    QVERIFY(rs->find(QStringLiteral("GD02_CLIFOR_CG44 = 40")));
    QCOMPARE(rs->currentRow(), 3);

    QVERIFY(!rs->find(QStringLiteral("GD02_CLIFOR_CG44 = 10"))); // only behind the current row
    QVERIFY(rs->eof());
    QCOMPARE(rs->currentRow(), -1);
}

void TestRecordset::inMemoryEditsNeverReachTheDatabase()
{
    RecordsetPtr rs = m_connection->openRecordset(
        QStringLiteral("SELECT SOGG.ID, SOGG.NOME, B.NOME AS ALTRO FROM SOGG INNER JOIN SOGG B ON B.ID = SOGG.ID"));
    QVERIFY(!rs->isWritable());
    QVERIFY(rs->flags(rs->index(0, 2)) & Qt::ItemIsEditable);
    rs->setValue(QStringLiteral("NOME"), QStringLiteral("Cambiato"));
    QVERIFY(rs->isEditing());
    rs->update();
    QVERIFY(!rs->isEditing());

    rs->addNew();
    QCOMPARE(rs->recordCount(), 5);
    QVERIFY(rs->isEditing());
    rs->setValue(QStringLiteral("ID"), 99);
    rs->cancelUpdate();
    QCOMPARE(rs->recordCount(), 4);
    QCOMPARE(rs->currentRow(), 0); // back where it was before addNew

    RecordsetPtr stored = m_connection->openRecordset(QStringLiteral("SELECT NOME FROM SOGG WHERE ID = 1"));
    QCOMPARE(stored->value(0).toString(), QStringLiteral("Rossi Mario"));
    QCOMPARE(rs->value(QStringLiteral("NOME")).toString(), QStringLiteral("Cambiato"));
}

void TestRecordset::cleanUpdateInsertAndDelete()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG WHERE ID = 2"));
    QCOMPARE(rs->baseTable(), QStringLiteral("SOGG"));
    QVERIFY(rs->field(0).key);
    rs->setValue(QStringLiteral("IMPORTO"), 7.5);
    rs->setValue(QStringLiteral("DATAFINE"), QDateTime(QDate(2030, 5, 1), QTime(0, 0)));
    rs->update();
    QVERIFY(!rs->isEditing());
    RecordsetPtr check = m_connection->openRecordset(
        QStringLiteral("SELECT IMPORTO, DATAFINE, typeof(DATAFINE) AS T FROM SOGG WHERE ID = 2"));
    QCOMPARE(check->value(0).toDouble(), 7.5);
    QCOMPARE(check->value(1).toDateTime(), QDateTime(QDate(2030, 5, 1), QTime(0, 0)));
    QCOMPARE(check->value(2).toString(), QStringLiteral("text"));

    rs->addNew();
    rs->setValue(QStringLiteral("CODICE"), 50);
    rs->setValue(QStringLiteral("NOME"), QStringLiteral("Verdi"));
    rs->update();
    const int newId = rs->value(QStringLiteral("ID")).toInt();
    QCOMPARE(newId, 5);
    check = m_connection->openRecordset(QStringLiteral("SELECT NOME FROM SOGG WHERE ID = 5"));
    QCOMPARE(check->value(0).toString(), QStringLiteral("Verdi"));

    rs->moveFirst();
    rs->deleteCurrent();
    QCOMPARE(rs->recordCount(), 1);
    check = m_connection->openRecordset(QStringLiteral("SELECT ID FROM SOGG ORDER BY ID"));
    QCOMPARE(check->recordCount(), 4);
    QVERIFY(!check->find(QStringLiteral("ID = 2")));
}

// A DECIMAL(18,2) column stores two digits: the recordset keeps what the server will hold, or
// the next update's check of the original value would see a change by nobody.
void TestRecordset::decimalsAreKeptAtTheColumnScale()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG WHERE ID = 1"));
    QCOMPARE(rs->field(rs->fieldIndex(QStringLiteral("IMPORTO"))).numericScale, 2);
    rs->setValue(QStringLiteral("IMPORTO"), 7.125);
    QCOMPARE(rs->value(QStringLiteral("IMPORTO")).toDouble(), 7.13);
    rs->setValue(QStringLiteral("IMPORTO"), -0.005);
    QCOMPARE(rs->value(QStringLiteral("IMPORTO")).toDouble(), -0.01);
    rs->setValue(QStringLiteral("IMPORTO"), QVariant());
    QVERIFY(rs->value(QStringLiteral("IMPORTO")).isNull());
    rs->setValue(QStringLiteral("IMPORTO"), 2.344);
    rs->update();
    RecordsetPtr check = m_connection->openRecordset(QStringLiteral("SELECT IMPORTO FROM SOGG WHERE ID = 1"));
    QCOMPARE(check->value(0).toDouble(), 2.34);
}

void TestRecordset::movingOffAPendingRowWritesIt()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT ID, NOME FROM SOGG ORDER BY ID"));
    rs->setValue(QStringLiteral("NOME"), QStringLiteral("Rossi Maria"));
    rs->moveNext();
    QVERIFY(!rs->isEditing());
    RecordsetPtr check = m_connection->openRecordset(QStringLiteral("SELECT NOME FROM SOGG WHERE ID = 1"));
    QCOMPARE(check->value(0).toString(), QStringLiteral("Rossi Maria"));

    rs->setValue(QStringLiteral("NOME"), QStringLiteral("Bianchi"));
    rs->cancelUpdate();
    QCOMPARE(rs->value(QStringLiteral("NOME")).toString(), QStringLiteral("Bianchi SpA"));
}

void TestRecordset::conflictingUpdateIsRefused()
{
    RecordsetPtr ours = m_connection->openRecordset(
        QStringLiteral("SELECT * FROM SOGG WHERE ID IN (1, 3) ORDER BY ID"));
    ConnectionPtr other = Connection::open(m_connection->connectionString());
    QCOMPARE(other->execute(QStringLiteral("UPDATE SOGG SET NOME = 'Altro utente' WHERE ID = 1")), 1);

    ours->setValue(QStringLiteral("NOME"), QStringLiteral("Nostro"));
    try {
        ours->update();
        QFAIL("the update should have been refused");
    } catch (const DatabaseError &error) {
        QCOMPARE(error.message(),
                 QStringLiteral("La riga è stata modificata da un altro utente dopo la lettura: "
                                "le modifiche non sono state salvate."));
    }
    QCOMPARE(m_connection->errors().size(), 1);
    QVERIFY(ours->isEditing());
    QCOMPARE(ours->value(QStringLiteral("NOME")).toString(), QStringLiteral("Nostro"));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, ours->moveNext());
    QCOMPARE(ours->currentRow(), 0);
    RecordsetPtr check = other->openRecordset(QStringLiteral("SELECT NOME FROM SOGG WHERE ID = 1"));
    QCOMPARE(check->value(0).toString(), QStringLiteral("Altro utente"));

    // A change to a column the other user did not touch still goes through, and a null
    // original is matched as null.
    ours->cancelUpdate();
    ours->moveNext();
    QVERIFY(ours->value(QStringLiteral("DATAFINE")).isNull());
    ours->setValue(QStringLiteral("DATAFINE"), QStringLiteral("15/03/2024"));
    ours->update();
    check = other->openRecordset(QStringLiteral("SELECT DATAFINE FROM SOGG WHERE ID = 3"));
    QCOMPARE(check->value(0).toDateTime(), QDateTime(QDate(2024, 3, 15), QTime(0, 0)));
}

// A delete goes only for the row as it was read: one another user changed meanwhile, or already
// removed, stays as it is (in the database and in the recordset) with the message of a stale
// update; rows nobody touched go, whatever their dates, decimals and nulls.
void TestRecordset::staleDeleteIsRefused()
{
    RecordsetPtr ours = m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG ORDER BY ID"));
    ConnectionPtr other = Connection::open(m_connection->connectionString());
    QCOMPARE(other->execute(QStringLiteral("UPDATE SOGG SET IMPORTO = 1.75 WHERE ID = 1")), 1);
    QCOMPARE(other->execute(QStringLiteral("DELETE FROM SOGG WHERE ID = 2")), 1);
    const QString stale = QStringLiteral("La riga è stata modificata da un altro utente dopo la lettura: "
                                         "le modifiche non sono state salvate.");
    for (int row : {0, 1}) {
        ours->setCurrentRow(row);
        try {
            ours->deleteCurrent();
            QFAIL("the delete should have been refused");
        } catch (const DatabaseError &error) {
            QCOMPARE(error.message(), stale);
        }
        QCOMPARE(ours->currentRow(), row);
        QCOMPARE(ours->recordCount(), 4);
    }
    QCOMPARE(ours->value(QStringLiteral("ID")).toInt(), 2);
    QCOMPARE(m_connection->errors().first().description, stale);
    QCOMPARE(other->openRecordset(QStringLiteral("SELECT IMPORTO FROM SOGG WHERE ID = 1"))->value(0).toDouble(), 1.75);

    ours->setCurrentRow(2); // NULL date, integer in a decimal column
    ours->deleteCurrent();
    ours->setCurrentRow(2); // date with a time, decimal
    ours->deleteCurrent();
    RecordsetPtr left = other->openRecordset(QStringLiteral("SELECT ID FROM SOGG"));
    QCOMPARE(left->recordCount(), 1);
    QCOMPARE(left->value(0).toInt(), 1);
}

void TestRecordset::computedColumnsAreNotWritable()
{
    RecordsetPtr rs = m_connection->openRecordset(
        QStringLiteral("SELECT ID, CODICE AS GD02_CLIFOR_CG44, (SELECT COUNT(*) FROM SOGG S2) AS TOTALE, NOME, "
                       "'x' AS NOME2 FROM SOGG ORDER BY ID"));
    QVERIFY(rs->isWritable());
    QVERIFY(rs->field(1).writable);
    QVERIFY(!rs->field(2).writable);
    QVERIFY(!(rs->flags(rs->index(0, 2)) & Qt::ItemIsEditable));
    QVERIFY(rs->flags(rs->index(0, 3)) & Qt::ItemIsEditable);
    QCOMPARE(rs->headerData(3, Qt::Horizontal).toString(), QStringLiteral("NOME"));

    rs->setValue(QStringLiteral("NOME2"), QStringLiteral("solo in memoria"));
    QVERIFY(rs->setData(rs->index(1, 1), 21)); // written at once, through the alias
    rs->update();
    RecordsetPtr check = m_connection->openRecordset(QStringLiteral("SELECT CODICE FROM SOGG WHERE ID = 2"));
    QCOMPARE(check->value(0).toInt(), 21);

    RecordsetPtr noKey = m_connection->openRecordset(QStringLiteral("SELECT NOME FROM SOGG"));
    QVERIFY(!noKey->isWritable());
}

void TestRecordset::writabilityFollowsTheStatement_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("baseTable");
    QTest::newRow("star") << "SELECT * FROM SOGG"
                          << "SOGG";
    QTest::newRow("alias and hint") << "SELECT S.ID, S.NOME FROM SOGG S WITH (NOLOCK) WHERE S.ID > 0"
                                    << "SOGG";
    QTest::newRow("top") << "SELECT TOP 2 ID, NOME FROM SOGG ORDER BY ID"
                         << "SOGG";
    QTest::newRow("subquery with join in the list")
        << "SELECT ID, (SELECT MAX(B.NOME) FROM SOGG B INNER JOIN SOGG C ON C.ID = B.ID) AS M FROM SOGG"
        << "SOGG";
    QTest::newRow("key left out") << "SELECT CODICE, NOME FROM SOGG"
                                  << "";
    QTest::newRow("key only computed") << "SELECT ID + 0 AS ID, NOME FROM SOGG"
                                       << "";
    QTest::newRow("join") << "SELECT A.* FROM SOGG A LEFT OUTER JOIN SOGG B ON B.ID = A.ID"
                          << "";
    QTest::newRow("comma join") << "SELECT A.ID FROM SOGG A, SOGG B WHERE A.ID = B.ID"
                                << "";
    QTest::newRow("grouped") << "SELECT ID, COUNT(*) AS N FROM SOGG GROUP BY ID"
                             << "";
    QTest::newRow("union") << "SELECT ID FROM SOGG UNION SELECT ID FROM SOGG"
                           << "";
}

void TestRecordset::writabilityFollowsTheStatement()
{
    QFETCH(QString, statement);
    QFETCH(QString, baseTable);
    RecordsetPtr rs = m_connection->openRecordset(statement);
    QCOMPARE(rs->baseTable(), baseTable);
    for (int i = 0; i < rs->fieldCount(); ++i)
        QCOMPARE(rs->field(i).writable, !baseTable.isEmpty() && rs->field(i).name != QLatin1String("M"));
}

void TestRecordset::gridEditConflictIsSignalled()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT ID, NOME FROM SOGG ORDER BY ID"));
    QSignalSpy failures(rs.get(), &Recordset::writeBackFailed);
    ConnectionPtr other = Connection::open(m_connection->connectionString());
    other->execute(QStringLiteral("UPDATE SOGG SET NOME = 'Altro' WHERE ID = 2"));

    QVERIFY(!rs->setData(rs->index(1, 1), QStringLiteral("Nostro"))); // a view cannot take the exception
    QCOMPARE(failures.count(), 1);
    QCOMPARE(rs->data(rs->index(1, 1)).toString(), QStringLiteral("Nostro"));
    QCOMPARE(m_connection->errors().first().source, QStringLiteral("Recordset"));
    rs->setCurrentRow(1);
    QVERIFY(rs->isEditing());
    rs->cancelUpdate();
    QCOMPARE(rs->data(rs->index(1, 1)).toString(), QStringLiteral("Bianchi SpA"));

    // Editing another row while one is pending writes the pending one first.
    QVERIFY(rs->setData(rs->index(0, 1), QStringLiteral("Rossi M.")));
    QCOMPARE(other->openRecordset(QStringLiteral("SELECT NOME FROM SOGG WHERE ID = 1"))->value(0).toString(),
             QStringLiteral("Rossi M."));
}

void TestRecordset::valuesThatDoNotFitTheFieldAreRefused_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no 29 February in 2023") << "DATAFINE" << QVariant(QStringLiteral("29/02/2023"));
    QTest::newRow("no 31 April") << "DATAFINE" << QVariant(QStringLiteral("31/04/2024"));
    QTest::newRow("month 13") << "DATAFINE" << QVariant(QStringLiteral("2024-13-01"));
    QTest::newRow("not a date") << "DATAFINE" << QVariant(QStringLiteral("domani"));
    QTest::newRow("letters in a code") << "CODICE" << QVariant(QStringLiteral("12a"));
    QTest::newRow("not an amount") << "IMPORTO" << QVariant(QStringLiteral("dieci"));
}

// A value the field cannot hold is refused before anything is written: the row keeps its
// values, no change is pending and the database is untouched.
void TestRecordset::valuesThatDoNotFitTheFieldAreRefused()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG WHERE ID = 1"));
    const QVariant before = rs->value(field);
    m_connection->clearErrors();
    QVERIFY_THROWS_EXCEPTION(DatabaseError, rs->setValue(field, value));
    QCOMPARE(m_connection->errors().size(), 1);
    QCOMPARE(m_connection->errors().first().source, QStringLiteral("Recordset"));
    QVERIFY(m_connection->errors().first().description.contains(field));
    QVERIFY(!rs->isEditing());
    QCOMPARE(rs->value(field), before);
    QVERIFY(!rs->setData(rs->index(0, rs->fieldIndex(field)), value));
    QCOMPARE(rs->value(field), before);

    // The day that exists goes through, as the user typed it.
    rs->setValue(QStringLiteral("DATAFINE"), QStringLiteral("29/02/2024"));
    rs->update();
    RecordsetPtr check = m_connection->openRecordset(
        QStringLiteral("SELECT DATAFINE, CODICE, IMPORTO FROM SOGG WHERE ID = 1"));
    QCOMPARE(check->value(0).toDateTime(), QDateTime(QDate(2024, 2, 29), QTime(0, 0)));
    QCOMPARE(check->value(1).toInt(), 10);
    QCOMPARE(check->value(2).toDouble(), 1.5);
}

void TestRecordset::largeReadsKeepEveryRow()
{
    // Enough rows for the cells to outgrow the small-read path.
    m_connection->execute(
        QStringLiteral("CREATE TABLE GRANDE (ID INTEGER PRIMARY KEY, NOME VARCHAR(20), V DECIMAL(10,2))"));
    m_connection->execute(QStringLiteral("CREATE TABLE CIFRE (C INTEGER)"));
    for (int digit = 0; digit < 10; ++digit)
        m_connection->execute(QStringLiteral("INSERT INTO CIFRE VALUES (%1)").arg(digit));
    m_connection->execute(QStringLiteral("INSERT INTO GRANDE SELECT N, 'nome ' + CAST(N AS VARCHAR), N / 4.0 FROM "
                                         "(SELECT A.C * 10000 + B.C * 1000 + C.C * 100 + D.C * 10 + E.C + 1 AS N "
                                         "FROM CIFRE A, CIFRE B, CIFRE C, CIFRE D, CIFRE E) X WHERE N <= 20000"));
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM GRANDE ORDER BY ID"));
    QCOMPARE(rs->recordCount(), 20000);
    QCOMPARE(rs->valueAt(0, 1).toString(), QStringLiteral("nome 1"));
    QCOMPARE(rs->valueAt(19999, 2).toDouble(), 5000.0);

    RecordsetPtr clone = rs->clone();
    QSignalSpy inserted(clone.get(), &QAbstractItemModel::rowsInserted);
    rs->addNew(); // the shared cells grow past the block they were read into
    rs->setValue(QStringLiteral("NOME"), QStringLiteral("nuovo"));
    rs->update();
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(clone->recordCount(), 20001);
    QCOMPARE(clone->valueAt(20000, 0).toInt(), 20001);
    QCOMPARE(clone->valueAt(12345, 1).toString(), QStringLiteral("nome 12346"));

    rs->setFilter(QStringLiteral("NOME like '%99%'"));
    int expected = 0;
    for (int i = 1; i <= 20000; ++i)
        expected += QString::number(i).contains(QLatin1String("99"));
    QCOMPARE(rs->recordCount(), expected);
}

// What a table's columns and key are is remembered between reads, but not past a change of the
// schema, whether made on this connection or by another user's.
void TestRecordset::writabilityFollowsSchemaChanges()
{
    m_connection->execute(QStringLiteral("CREATE TABLE LIBERA (CODICE INTEGER, NOME VARCHAR(20))"));
    m_connection->execute(QStringLiteral("INSERT INTO LIBERA VALUES (1, 'uno')"));
    QVERIFY(!m_connection->openRecordset(QStringLiteral("SELECT * FROM LIBERA"))->isWritable());

    ConnectionPtr other = Connection::open(fileConnectionString());
    other->execute(QStringLiteral("DROP TABLE LIBERA"));
    other->execute(
        QStringLiteral("CREATE TABLE LIBERA (CODICE INTEGER PRIMARY KEY, NOME VARCHAR(20), NOTE VARCHAR(20))"));
    other->execute(QStringLiteral("INSERT INTO LIBERA VALUES (1, 'uno', NULL)"));
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM LIBERA"));
    QVERIFY(rs->isWritable());
    rs->setValue(QStringLiteral("NOTE"), QStringLiteral("scritta"));
    rs->update();
    QCOMPARE(other->openRecordset(QStringLiteral("SELECT NOTE FROM LIBERA"))->value(0).toString(),
             QStringLiteral("scritta"));

    m_connection->execute(QStringLiteral("ALTER TABLE LIBERA RENAME TO LIBERA2"));
    m_connection->execute(QStringLiteral("CREATE TABLE LIBERA (CODICE INTEGER, NOME VARCHAR(20))"));
    QVERIFY(!m_connection->openRecordset(QStringLiteral("SELECT * FROM LIBERA"))->isWritable());
}

QTEST_MAIN(TestRecordset)
#include "tst_recordset.moc"

// A report reads only the fields its layout shows: the kept columns must carry their own values
// and types (not the neighbours' after the skipped ones), and with the key missing no edit may
// reach the table.
void TestRecordset::aReadOfSomeFieldsKeepsTheirValuesAndWritesNothing()
{
    RecordsetPtr rs = m_connection->openRecordset(
        QStringLiteral("SELECT * FROM SOGG ORDER BY ID"),
        {QStringLiteral("importo"), QStringLiteral("NOME"), QStringLiteral("NON_ESISTE")});
    QCOMPARE(rs->fieldCount(), 2);
    QCOMPARE(rs->fieldIndex(QStringLiteral("NOME")), 0);
    QCOMPARE(rs->fieldIndex(QStringLiteral("IMPORTO")), 1);
    QCOMPARE(rs->fieldIndex(QStringLiteral("ID")), -1);
    QCOMPARE(rs->recordCount(), 4);
    QCOMPARE(rs->valueAt(2, 0).toString(), QStringLiteral("O'Brien Srl"));
    QCOMPARE(rs->valueAt(3, 1).toDouble(), 4.25);
    QVERIFY(rs->valueAt(1, 1).isNull());
    QVERIFY(!rs->isWritable());

    // Naming no field reads them all, as a plain read does.
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT * FROM SOGG"), {})->fieldCount(), 5);
}
