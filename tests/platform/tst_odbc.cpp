#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace db;

// The ODBC back end, through unixODBC and the SQLite ODBC driver with T-SQL translation on.
class TestOdbc : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void readsWhatItWrote();
    void writesBackThroughTheDriver();
    void errorsReachTheErrorList();
    void aBracedFileNameOpensThatFile();

private:
    static QString driverPath() { return QStringLiteral("/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so"); }
    std::unique_ptr<QTemporaryDir> m_dir;
    ConnectionPtr m_connection;
};

void TestOdbc::initTestCase()
{
    if (!QFile::exists(driverPath()))
        QSKIP("SQLite ODBC driver not installed");
}

void TestOdbc::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    const QString connectionString = QStringLiteral("Driver=%1;Database=%2;TSQLCompat=SQLite;")
                                         .arg(driverPath(), m_dir->filePath(QStringLiteral("odbc.sqlite")));
    m_connection = Connection::open(connectionString);
    QVERIFY(m_connection->translatesTsql());
    QCOMPARE(m_connection->connectionString(), connectionString);
    m_connection->execute(QStringLiteral(
        "CREATE TABLE ART (ID INTEGER PRIMARY KEY, CODICE VARCHAR(10), PREZZO DECIMAL(12,3), DATAINS DATETIME)"));
    m_connection->execute(
        QStringLiteral("INSERT INTO ART (CODICE, PREZZO, DATAINS) VALUES ('A1', 2.5, '2024-02-29 08:00:00')"));
    m_connection->execute(QStringLiteral("INSERT INTO ART (CODICE, PREZZO, DATAINS) VALUES ('B2', NULL, NULL)"));
}

void TestOdbc::cleanup()
{
    m_connection.reset();
    m_dir.reset();
}

void TestOdbc::readsWhatItWrote()
{
    QCOMPARE(m_connection->execute(QStringLiteral("UPDATE ART SET CODICE = CODICE")), 2);
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT * FROM ART ORDER BY ID"));
    QCOMPARE(rs->recordCount(), 2);
    QCOMPARE(rs->value(QStringLiteral("CODICE")).toString(), QStringLiteral("A1"));
    QCOMPARE(rs->value(QStringLiteral("PREZZO")).toDouble(), 2.5);
    QCOMPARE(rs->field(rs->fieldIndex(QStringLiteral("ID"))).type, FieldType::Integer);
    QCOMPARE(rs->value(QStringLiteral("DATAINS")).toDateTime(), QDateTime(QDate(2024, 2, 29), QTime(8, 0)));
    rs->moveNext();
    QVERIFY(rs->value(QStringLiteral("PREZZO")).isNull());
    QVERIFY(rs->value(QStringLiteral("DATAINS")).isNull());
}

void TestOdbc::writesBackThroughTheDriver()
{
    RecordsetPtr rs = m_connection->openRecordset(QStringLiteral("SELECT ID, CODICE, DATAINS FROM ART ORDER BY ID"));
    QVERIFY(rs->isWritable());
    rs->setValue(QStringLiteral("CODICE"), QStringLiteral("A1-bis"));
    rs->update();
    rs->addNew();
    rs->setValue(QStringLiteral("CODICE"), QStringLiteral("C3"));
    rs->setValue(QStringLiteral("DATAINS"), QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5)));
    rs->update();
    QCOMPARE(rs->value(QStringLiteral("ID")).toInt(), 3);

    RecordsetPtr check = m_connection->openRecordset(QStringLiteral("SELECT CODICE, DATAINS FROM ART ORDER BY ID"));
    QCOMPARE(check->value(0).toString(), QStringLiteral("A1-bis"));
    check->moveLast();
    QCOMPARE(check->value(0).toString(), QStringLiteral("C3"));
    QCOMPARE(check->value(1).toDateTime(), QDateTime(QDate(2025, 1, 2), QTime(3, 4, 5)));
}

void TestOdbc::errorsReachTheErrorList()
{
    QVERIFY_THROWS_EXCEPTION(DatabaseError, m_connection->execute(QStringLiteral("INSERT INTO MANCA VALUES (1)")));
    QVERIFY(!m_connection->errors().isEmpty());
    const DbError &error = m_connection->errors().first();
    QCOMPARE(error.source, QStringLiteral("ODBC"));
    QVERIFY2(error.description.contains(QStringLiteral("MANCA")), qPrintable(error.description));
    QVERIFY(!error.sqlState.isEmpty());

    QVERIFY_THROWS_EXCEPTION(DatabaseError, Connection::open(QStringLiteral("Driver=/nessun/driver.so;Database=x;")));
}

// The SQLite driver knows no braces: a file whose name holds a ';' still opens as itself.
void TestOdbc::aBracedFileNameOpensThatFile()
{
    const QString path = m_dir->filePath(QStringLiteral("ditta;2 {prova}.sqlite"));
    ConnectionPtr braced = Connection::open(
        QStringLiteral("Driver=%1;Database={%2};TSQLCompat=SQLite;")
            .arg(driverPath(), QString(path).replace(QLatin1Char('}'), QStringLiteral("}}"))));
    braced->execute(QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY)"));
    braced.reset();
    QVERIFY(QFile::exists(path));
    QCOMPARE(QDir(m_dir->path()).entryList({QStringLiteral("ditta*")}, QDir::Files),
             QStringList {QStringLiteral("ditta;2 {prova}.sqlite")});
}

QTEST_MAIN(TestOdbc)
#include "tst_odbc.moc"
