#include "platform/db/backend.h"
#include "platform/db/connection.h"
#include "platform/db/connectionstring.h"
#include "platform/db/readsnapshot.h"
#include "platform/db/recordset.h"
#include "platform/db/recordsetdata.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace db;

// The SQLite connection: types read, errors kept, two connections on one file, the trace.
class TestConnection : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fieldTypesFollowDeclaredTypes();
    void twoConnectionsSeeEachOthersCommittedRows();
    void failuresAreKeptOnTheErrorList();
    void executeCountsRowsAndTriggersRecurse();
    void cachedStatementsFollowSchemaChanges();
    void temporaryTableBuiltAgainBySameSelect();
    void heldReadsShareASnapshotThatNoWriteWaitsOn();
    void largeCommitsLeaveNoLogBehind();
    void traceHoldsEveryStatementAsSent();
    void connectionStringsKeepEveryValueWhole();

private:
    QString connectionString() const
    {
        return QStringLiteral("Provider=SQLite;Data Source=%1").arg(m_dir->filePath(QStringLiteral("c.sqlite")));
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    ConnectionPtr m_connection;
};

void TestConnection::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_connection = Connection::open(connectionString());
    QVERIFY(m_connection->translatesTsql());
    QCOMPARE(m_connection->connectionString(), connectionString());
}

void TestConnection::cleanup()
{
    m_connection.reset();
    m_dir.reset();
}

void TestConnection::fieldTypesFollowDeclaredTypes()
{
    m_connection->execute(
        QStringLiteral("CREATE TABLE TIPI (ID INTEGER PRIMARY KEY, PICCOLO SMALLINT, PREZZO DECIMAL(18,5), "
                       "QUOTA NUMERIC(5,2), MISURA REAL, GIORNO DATETIME, ATTIVO BIT, DESCR VARCHAR(40))"));
    m_connection->execute(
        QStringLiteral("INSERT INTO TIPI VALUES (1, 7, 12.5, 3, 0.25, '2024-03-15 10:20:30', 1, 'uno')"));
    m_connection->execute(QStringLiteral("INSERT INTO TIPI VALUES (2, NULL, NULL, NULL, NULL, '2099-12-31', 0, NULL)"));
    m_connection->execute(QStringLiteral("INSERT INTO TIPI VALUES (3, 1, 1, 1, 1, 'non è una data', 0, 'tre')"));

    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral(
        "SELECT *, (SELECT COUNT(*) FROM TIPI) AS N, PREZZO * 2 AS DOPPIO, 'testo' AS COSTANTE, NULL AS NIENTE "
        "FROM TIPI ORDER BY ID"));
    const QList<QPair<QString, FieldType>> expected = {
        {QStringLiteral("ID"), FieldType::Integer},     {QStringLiteral("PICCOLO"), FieldType::Integer},
        {QStringLiteral("PREZZO"), FieldType::Decimal}, {QStringLiteral("QUOTA"), FieldType::Decimal},
        {QStringLiteral("MISURA"), FieldType::Double},  {QStringLiteral("GIORNO"), FieldType::DateTime},
        {QStringLiteral("ATTIVO"), FieldType::Boolean}, {QStringLiteral("DESCR"), FieldType::Text},
        {QStringLiteral("N"), FieldType::Integer},      {QStringLiteral("DOPPIO"), FieldType::Double},
        {QStringLiteral("COSTANTE"), FieldType::Text},
    };
    for (const auto &[name, type] : expected) {
        const int index = rs->fieldIndex(name);
        QVERIFY2(index >= 0, qPrintable(name));
        QVERIFY2(rs->field(index).type == type, qPrintable(name));
    }
    QCOMPARE(rs->field(rs->fieldIndex(QStringLiteral("PREZZO"))).numericScale, 5);
    QCOMPARE(rs->field(rs->fieldIndex(QStringLiteral("QUOTA"))).numericScale, 2);
    QCOMPARE(rs->field(rs->fieldIndex(QStringLiteral("MISURA"))).numericScale, 0);

    QCOMPARE(rs->value(QStringLiteral("PICCOLO")).metaType().id(), int(QMetaType::LongLong));
    QCOMPARE(rs->value(QStringLiteral("QUOTA")).metaType().id(), int(QMetaType::Double));
    QCOMPARE(rs->value(QStringLiteral("GIORNO")).toDateTime(), QDateTime(QDate(2024, 3, 15), QTime(10, 20, 30)));
    QCOMPARE(rs->value(QStringLiteral("ATTIVO")), QVariant(true));
    QCOMPARE(rs->value(QStringLiteral("DESCR")), QVariant(QStringLiteral("uno")));

    rs->moveNext();
    QCOMPARE(rs->value(QStringLiteral("GIORNO")).toDateTime(), QDateTime(QDate(2099, 12, 31), QTime(0, 0)));
    for (const char *name : {"PICCOLO", "PREZZO", "DESCR", "NIENTE"}) {
        const QVariant value = rs->value(QLatin1String(name));
        QVERIFY2(!value.isValid(), name); // a null is a null QVariant, whatever the type
    }
    rs->moveNext();
    QCOMPARE(rs->value(QStringLiteral("GIORNO")), QVariant(QStringLiteral("non è una data"))); // kept as read
}

void TestConnection::twoConnectionsSeeEachOthersCommittedRows()
{
    m_connection->execute(QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, V VARCHAR(10))"));
    ConnectionPtr second = Connection::open(m_connection->connectionString());
    m_connection->execute(QStringLiteral("INSERT INTO T (V) VALUES ('primo')"));
    QCOMPARE(second->openRecordset(QStringLiteral("SELECT V FROM T"))->value(0).toString(), QStringLiteral("primo"));

    RecordsetPtr open = m_connection->openRecordset(QStringLiteral("SELECT V FROM T")); // a reader stays open
    second->execute(QStringLiteral("INSERT INTO T (V) VALUES ('secondo')"));
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT V FROM T ORDER BY ID"))->recordCount(), 2);
    QCOMPARE(open->recordCount(), 1); // client-side: what was read stays
}

void TestConnection::failuresAreKeptOnTheErrorList()
{
    const QString wrong = QStringLiteral("SELECT * FROM TABELLA_CHE_NON_ESISTE");
    try {
        m_connection->openRecordset(wrong);
        QFAIL("no error raised");
    } catch (const DatabaseError &error) {
        QVERIFY(error.message().contains(QStringLiteral("TABELLA_CHE_NON_ESISTE")));
    }
    QCOMPARE(m_connection->errors().size(), 1);
    const DbError &error = m_connection->errors().first();
    QCOMPARE(error.source, QStringLiteral("SQLite"));
    QCOMPARE(error.nativeError, 1); // SQLITE_ERROR
    QVERIFY(error.description.contains(QStringLiteral("no such table")));

    m_connection->execute(QStringLiteral("CREATE TABLE U (ID INTEGER PRIMARY KEY)"));
    QCOMPARE(m_connection->errors().size(), 1); // success does not clear the list
    m_connection->execute(QStringLiteral("INSERT INTO U VALUES (1)"));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, m_connection->execute(QStringLiteral("INSERT INTO U VALUES (1)")));
    QCOMPARE(m_connection->errors().first().nativeError, 1555); // SQLITE_CONSTRAINT_PRIMARYKEY
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT COUNT(*) FROM U"))->value(0).toInt(), 1);
    m_connection->clearErrors();
    QVERIFY(m_connection->errors().isEmpty());

    QVERIFY_THROWS_EXCEPTION(DatabaseError, Connection::open(QStringLiteral("Provider=SQLite;")));
    QVERIFY_THROWS_EXCEPTION(
        DatabaseError,
        Connection::open(
            QStringLiteral("Provider=SQLite;Data Source=%1").arg(m_dir->filePath(QStringLiteral("manca/x.sqlite")))));
}

void TestConnection::executeCountsRowsAndTriggersRecurse()
{
    // A trigger that removes a whole branch by itself, as the schema's does: it is not fired
    // again for the rows it removes, and only the statement's own row counts.
    m_connection->execute(QStringLiteral(
        "CREATE TABLE NODI (ID INTEGER PRIMARY KEY, PADRE INTEGER);"
        "CREATE TABLE FIRED (N INTEGER);"
        "CREATE TRIGGER NODI_FIGLI AFTER DELETE ON NODI BEGIN INSERT INTO FIRED VALUES (OLD.ID);"
        " DELETE FROM NODI WHERE ID IN (WITH RECURSIVE S(ID) AS (SELECT ID FROM NODI WHERE PADRE = OLD.ID"
        " UNION SELECT N.ID FROM NODI N INNER JOIN S ON N.PADRE = S.ID) SELECT ID FROM S); END;"));
    QCOMPARE(
        m_connection->execute(QStringLiteral("INSERT INTO NODI VALUES (1, NULL), (2, 1), (3, 2), (4, 3), (5, NULL)")),
        5);
    QCOMPARE(m_connection->execute(QStringLiteral("CREATE INDEX NODI_PADRE ON NODI (PADRE)")), 0);
    QCOMPARE(m_connection->execute(QStringLiteral("DELETE FROM NODI WHERE ID = 1")), 1); // only the row itself counts
    RecordsetPtr left = m_connection->openRecordset(QStringLiteral("SELECT ID FROM NODI"));
    QCOMPARE(left->recordCount(), 1); // the whole branch went, not just the first level
    QCOMPARE(left->value(0).toInt(), 5);
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT COUNT(*) FROM FIRED"))->value(0).toInt(), 1);
}

void TestConnection::cachedStatementsFollowSchemaChanges()
{
    const QString select = QStringLiteral("SELECT * FROM S");
    m_connection->execute(QStringLiteral("CREATE TABLE S (A INTEGER)"));
    for (int i = 0; i < 3; ++i)
        m_connection->execute(QStringLiteral("INSERT INTO S VALUES (1)"));
    QCOMPARE(m_connection->openRecordset(select)->fieldCount(), 1);
    m_connection->execute(QStringLiteral("ALTER TABLE S ADD COLUMN B VARCHAR(5)"));
    RecordsetPtr rs = m_connection->openRecordset(select);
    QCOMPARE(rs->fieldCount(), 2);
    QCOMPARE(rs->recordCount(), 3);
    m_connection->execute(QStringLiteral("DROP TABLE S"));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, m_connection->openRecordset(select));
}

// A page drops and builds its temporary table again for every node. Built again by the same
// SELECT, the table holds exactly the new rows, the connection's schema does not change (nothing
// prepared expires), and between the drop and the build the table is gone for every statement.
// Another SELECT, or new columns in its source, build it anew with their columns.
void TestConnection::temporaryTableBuiltAgainBySameSelect()
{
    m_connection->execute(QStringLiteral("CREATE TABLE P (ID INTEGER PRIMARY KEY, NODO INTEGER, DESCR VARCHAR(20))"));
    m_connection->execute(QStringLiteral("INSERT INTO P VALUES (1, 10, 'uno'), (2, 20, 'due'), (3, 20, 'tre')"));
    const QString drop = QStringLiteral("IF OBJECT_ID('tempdb..#T') IS NOT NULL DROP TABLE #T");
    const auto build = [](const QString &columns, int node) {
        return QStringLiteral("SELECT %1, 1 AS SEL INTO #T FROM P WHERE NODO = %2").arg(columns).arg(node);
    };
    const auto rows = [&] {
        QStringList lines;
        const RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM #T"));
        for (int row = 0; row < rs->recordCount(); ++row) {
            QStringList cells;
            for (int field = 0; field < rs->fieldCount(); ++field)
                cells << rs->valueAt(row, field).toString();
            lines << cells.join(u'|');
        }
        return lines;
    };
    const auto tempSchemaVersion = [&] {
        const std::shared_ptr<RecordsetData> version = m_connection->backend().query(
            QStringLiteral("PRAGMA temp.schema_version"));
        return version->cell(0, 0).toLongLong();
    };

    m_connection->execute(drop);
    m_connection->execute(build(QStringLiteral("*"), 20));
    QCOMPARE(rows(), QStringList({"2|20|due|1", "3|20|tre|1"}));
    const qint64 schema = tempSchemaVersion();
    for (int node : {10, 99, 20}) {
        m_connection->execute(drop);
        QVERIFY_THROWS_EXCEPTION(DatabaseError, m_connection->openRecordset(QStringLiteral("SELECT * FROM #T")));
        m_connection->clearErrors();
        m_connection->execute(drop); // dropped already: nothing to do, as on the server
        m_connection->execute(build(QStringLiteral("*"), node));
    }
    QCOMPARE(rows(), QStringList({"2|20|due|1", "3|20|tre|1"}));
    m_connection->execute(drop);
    m_connection->execute(build(QStringLiteral("*"), 10));
    QCOMPARE(rows(), QStringList({"1|10|uno|1"}));
    QVERIFY2(tempSchemaVersion() > schema, "the failed read dropped the table for real");
    const qint64 kept = tempSchemaVersion();
    m_connection->execute(drop);
    m_connection->execute(build(QStringLiteral("*"), 20));
    QCOMPARE(tempSchemaVersion(), kept);

    m_connection->execute(drop);
    m_connection->execute(build(QStringLiteral("DESCR"), 10));
    QCOMPARE(rows(), QStringList({"uno|1"}));
    m_connection->execute(QStringLiteral("ALTER TABLE P ADD COLUMN NOTE VARCHAR(5)"));
    m_connection->execute(drop);
    m_connection->execute(build(QStringLiteral("*"), 10));
    QCOMPARE(rows(), QStringList({"1|10|uno||1"}));
}

void TestConnection::traceHoldsEveryStatementAsSent()
{
    const QString tracePath = m_dir->filePath(QStringLiteral("trace.sql"));
    qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
    ConnectionPtr traced = Connection::open(connectionString());
    traced->execute(QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, V VARCHAR(10))"));
    traced->execute(QStringLiteral("INSERT INTO T (V) VALUES ('a''b')"));
    RecordsetPtr rs = traced->openRecordset(QStringLiteral("SELECT ID, V FROM T WHERE 1 = 1 "));
    rs->setValue(QStringLiteral("V"), QStringLiteral("c"));
    rs->update();
    traced->execute(QStringLiteral("SELECT ID INTO #COPIA FROM T"));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, traced->execute(QStringLiteral("SELEC 1")));
    qunsetenv("DISTINTA_SQL_TRACE");
    traced->execute(QStringLiteral("DELETE FROM T"));

    QFile file(tracePath);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString trace = QString::fromUtf8(file.readAll());
    // A refused statement is followed by what the database said, on one comment line.
    const QString sent = QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, V VARCHAR(10))\nGO\n"
                                        "INSERT INTO T (V) VALUES ('a''b')\nGO\n"
                                        "SELECT ID, V FROM T WHERE 1 = 1 \nGO\n"
                                        "UPDATE T SET V = ? WHERE ID = ? AND V = ?\n-- 'c', 1, 'a''b'\nGO\n"
                                        "SELECT ID INTO #COPIA FROM T\nGO\n"
                                        "SELEC 1\nGO\n");
    QVERIFY2(trace.startsWith(sent), qPrintable(trace));
    const QString refusal = trace.mid(sent.size());
    QVERIFY2(refusal.startsWith(QStringLiteral("-- errore: ")) && refusal.endsWith(QLatin1Char('\n'))
                 && refusal.count(QLatin1Char('\n')) == 1 && refusal.contains(QStringLiteral("SELEC")),
             qPrintable(refusal));
    QVERIFY(!trace.contains(QStringLiteral("Provider")));
}

// Braces keep ';', '=' and outer blanks inside a value ("}}" is a '}'): a file name or a
// password comes back whole, and the other entries stay as they were written.
void TestConnection::connectionStringsKeepEveryValueWhole()
{
    const QString odbc = QStringLiteral(
        "Driver={ODBC Driver 18 for SQL Server}; Server = srv ;PWD={a;b}}=c };Database=ERP");
    QCOMPARE(connectionstring::value(odbc, {QStringLiteral("pwd")}), QStringLiteral("a;b}=c "));
    QCOMPARE(connectionstring::value(odbc, {QStringLiteral("Server")}), QStringLiteral("srv"));
    QCOMPARE(connectionstring::value(odbc, {QStringLiteral("Database")}), QStringLiteral("ERP"));
    QCOMPARE(connectionstring::without(odbc, {QStringLiteral("PWD")}),
             QStringLiteral("Driver={ODBC Driver 18 for SQL Server}; Server = srv ;Database=ERP;"));
    const QString withPassword = connectionstring::with(QStringLiteral("DSN=erp"), QStringLiteral("PWD"),
                                                        QStringLiteral("x;}y"));
    QCOMPARE(withPassword, QStringLiteral("DSN=erp;PWD={x;}}y};"));
    QCOMPARE(connectionstring::value(withPassword, {QStringLiteral("PWD")}), QStringLiteral("x;}y"));

    const QString path = m_dir->filePath(QStringLiteral("ditta;1.sqlite"));
    Connection::open(QStringLiteral("Provider=SQLite;") + connectionstring::entry(QStringLiteral("Data Source"), path))
        ->execute(QStringLiteral("CREATE TABLE T (ID INTEGER)"));
    QVERIFY(QFile::exists(path));
    QVERIFY(!QFile::exists(m_dir->filePath(QStringLiteral("ditta"))));
}

// A burst of reads sees the file as it was at its first read; a write, or a failure that may
// wait on the user, ends the shared read at once, so another user's work is never held up
// and never missed for longer than the burst.
void TestConnection::heldReadsShareASnapshotThatNoWriteWaitsOn()
{
    m_connection->execute(QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, V INTEGER)"));
    m_connection->execute(QStringLiteral("INSERT INTO T VALUES (1, 10)"));
    ConnectionPtr other = Connection::open(connectionString());
    const auto valueSeenBy = [](const ConnectionPtr &connection) {
        return connection->openRecordset(QStringLiteral("SELECT V FROM T WHERE ID = 1"))->valueAt(0, 0).toInt();
    };
    {
        const ReadSnapshot burst(m_connection);
        QCOMPARE(valueSeenBy(m_connection), 10);
        other->execute(QStringLiteral("UPDATE T SET V = 11 WHERE ID = 1"));
        QCOMPARE(valueSeenBy(m_connection), 10); // one snapshot for the burst

        m_connection->execute(QStringLiteral("UPDATE T SET V = V + 1 WHERE ID = 1"));
        QCOMPARE(valueSeenBy(other), 12); // written at once, on the file as it is now
        QCOMPARE(valueSeenBy(m_connection), 12);

        other->execute(QStringLiteral("UPDATE T SET V = 20 WHERE ID = 1"));
        QVERIFY_THROWS_EXCEPTION(DatabaseError, m_connection->openRecordset(QStringLiteral("SELECT NOPE FROM T")));
        QCOMPARE(valueSeenBy(m_connection), 20); // the failure ended the shared read
    }
    other->execute(QStringLiteral("UPDATE T SET V = 30 WHERE ID = 1"));
    QCOMPARE(valueSeenBy(m_connection), 30);
}

// Large commits are copied back into the file off the writer's thread; a reader on another
// connection meanwhile sees every commit whole, and closing leaves only the file.
void TestConnection::largeCommitsLeaveNoLogBehind()
{
    m_connection->execute(QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, V TEXT)"));
    ConnectionPtr reader = Connection::open(connectionString());
    m_connection->execute(QStringLiteral("INSERT INTO T (V) VALUES ('%1')").arg(QString(800, u'x')));
    for (int rows = 2; rows <= 8192; rows *= 2) { // the last commits write well over a thousand pages
        m_connection->execute(QStringLiteral("INSERT INTO T (V) SELECT V FROM T"));
        QCOMPARE(reader->openRecordset(QStringLiteral("SELECT COUNT(*) FROM T"))->valueAt(0, 0).toInt(), rows);
    }
    reader.reset();
    m_connection.reset();
    const QString file = m_dir->filePath(QStringLiteral("c.sqlite"));
    QVERIFY(!QFile::exists(file + QStringLiteral("-wal")));
    m_connection = Connection::open(connectionString());
    QCOMPARE(m_connection->openRecordset(QStringLiteral("SELECT COUNT(*) FROM T"))->valueAt(0, 0).toInt(), 8192);
}

QTEST_MAIN(TestConnection)
#include "tst_connection.moc"
