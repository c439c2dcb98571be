#include "db/demodatabase.h"
#include "db/demofile.h"
#include "db/sqlitefile.h"

#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void deletingANodeRemovesExactlyItsSubtree();
    void subtreeRemovalNeedsNoRecursiveTriggers();
    void twoConnectionsSeeEachOthersCommittedRows();
    void generatedKeysGuidsAndDefaults();
    void declaredTypesDriveFieldTypes();
    void connectionStringsNameTheirFile();
    void demoDatabaseIsCreatedOnceWithBothCompanies();
    void demoTreesAreConsistent();
    void demoHasTheCasesTheEditorShows();
    void demoDataIsDeterministic();

private:
    static qlonglong scalar(db::Connection &connection, const QString &sql);
    static void insertNode(db::Connection &connection, int id, const QString &parent, int type = 1);
};

qlonglong TestSchema::scalar(db::Connection &connection, const QString &sql)
{
    const db::RecordsetPtr rows = connection.openRecordset(sql);
    return rows->value(0).toLongLong();
}

void TestSchema::insertNode(db::Connection &connection, int id, const QString &parent, int type)
{
    connection.execute(
        QStringLiteral(
            "INSERT INTO GD02_DISTINTA (GD02_ID, GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44,"
            " GD02_CLIFOR_CG44) VALUES (%1, %2, %3, 1, 0, %1)")
            .arg(id)
            .arg(type)
            .arg(parent));
}

void TestSchema::deletingANodeRemovesExactlyItsSubtree()
{
    TestDatabase database;
    db::Connection &connection = *database.connection();
    connection.execute(
        QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_ID, GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR)"
                       " VALUES (1, 1, 'A', 'Uno'), (2, 1, 'B', 'Due')"));
    // Tree A: 1 > (2 > (4 > 7, 5), 3 > 6). Tree B: 10 (NULL parent) > 11 > 12. Other type: 20 > 21.
    insertNode(connection, 1, QStringLiteral("0"));
    insertNode(connection, 2, QStringLiteral("1"));
    insertNode(connection, 3, QStringLiteral("1"));
    insertNode(connection, 4, QStringLiteral("2"));
    insertNode(connection, 5, QStringLiteral("2"));
    insertNode(connection, 6, QStringLiteral("3"));
    insertNode(connection, 7, QStringLiteral("4"));
    insertNode(connection, 10, QStringLiteral("NULL"));
    insertNode(connection, 11, QStringLiteral("10"));
    insertNode(connection, 12, QStringLiteral("11"));
    insertNode(connection, 20, QStringLiteral("0"), 2);
    insertNode(connection, 21, QStringLiteral("20"), 2);

    const auto remaining = [&] {
        QList<int> ids;
        const db::RecordsetPtr rows = connection.openRecordset(
            QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA ORDER BY GD02_ID"));
        for (rows->moveFirst(); !rows->eof(); rows->moveNext())
            ids << rows->value(0).toInt();
        return ids;
    };

    QCOMPARE(connection.execute(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 2")), 1);
    QCOMPARE(remaining(), (QList<int> {1, 3, 6, 10, 11, 12, 20, 21}));
    connection.execute(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 10"));
    QCOMPARE(remaining(), (QList<int> {1, 3, 6, 20, 21}));
    connection.execute(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 6"));
    QCOMPARE(remaining(), (QList<int> {1, 3, 20, 21}));
    connection.execute(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 1"));
    QCOMPARE(remaining(), (QList<int> {20, 21}));
}

void TestSchema::subtreeRemovalNeedsNoRecursiveTriggers()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("plain.sqlite"));
    dbsetup::createSchemaAt(path);
    dbsetup::SqliteFile file(path);
    file.exec(QStringLiteral("PRAGMA recursive_triggers=OFF"));
    file.exec(QStringLiteral(
        "INSERT INTO GD01_TIPODISTINTA (GD01_ID, GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (1, 1, 'A', 'Uno')"));
    // A chain five levels deep under root 1, and a second root; campaigns and states on the chain.
    file.exec(QStringLiteral(
        "INSERT INTO GD02_DISTINTA (GD02_ID, GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44)"
        " VALUES (1, 1, 0, 1, 0), (2, 1, 1, 1, 0), (3, 1, 2, 1, 0), (4, 1, 3, 1, 0), (5, 1, 4, 1, 0), (9, 1, 0, 1, "
        "0)"));
    file.exec(QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94)"
                             " SELECT 1, GD02_ID, 7 FROM GD02_DISTINTA"));
    file.exec(
        QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01) SELECT gd02_guid, 6 FROM GD02_DISTINTA"));
    file.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 2"));
    QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")), 2);
    QCOMPARE(file.scalar(QStringLiteral("SELECT SUM(GD02_ID) FROM GD02_DISTINTA")), 10);
    // What hung on the removed nodes went with them, down to the last level.
    QCOMPARE(file.scalar(QStringLiteral("SELECT SUM(GD12_ID_GD02) FROM GD12_PROMO")), 10);
    QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA WHERE WF02_GUID NOT IN"
                                        " (SELECT gd02_guid FROM GD02_DISTINTA)")),
             0);

    // Parent links written in a cycle (30 <-> 31) by a database made before the checks must not
    // make a delete run forever.
    const qint64 checks = file.scalar(
        QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = 'TR_GD02_DISTINTA_INSERT'"));
    QCOMPARE(checks, 1);
    file.exec(QStringLiteral("DROP TRIGGER TR_GD02_DISTINTA_INSERT"));
    file.exec(QStringLiteral(
        "INSERT INTO GD02_DISTINTA (GD02_ID, GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44)"
        " VALUES (30, 1, 31, 1, 0), (31, 1, 30, 1, 0), (32, 1, 31, 1, 0)"));
    file.exec(QStringLiteral("PRAGMA recursive_triggers=ON"));
    file.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = 30"));
    QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")), 2);
}

void TestSchema::twoConnectionsSeeEachOthersCommittedRows()
{
    TestDatabase database;
    const db::ConnectionPtr first = database.connection();
    const db::ConnectionPtr second = db::Connection::open(database.connectionString());
    const QString count = QStringLiteral("SELECT COUNT(*) FROM GD12_PROMO");
    QCOMPARE(scalar(*second, count), 0);
    first->execute(
        QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES (1, 5, 7)"));
    QCOMPARE(scalar(*second, count), 1);
    second->execute(QStringLiteral("UPDATE GD12_PROMO SET GD12_ID_MG94 = 8"));
    QCOMPARE(scalar(*first, QStringLiteral("SELECT GD12_ID_MG94 FROM GD12_PROMO")), 8);
    second->execute(QStringLiteral("DELETE FROM GD12_PROMO"));
    QCOMPARE(scalar(*first, count), 0);
}

void TestSchema::generatedKeysGuidsAndDefaults()
{
    TestDatabase database;
    db::Connection &connection = *database.connection();
    const QRegularExpression guid(
        QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"));

    connection.execute(QStringLiteral(
        "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (1, 'A', 'Prima')"));
    connection.execute(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, "
                                      "GD01_GUID) VALUES (1, 'B', 'Seconda', NULL)"));
    db::RecordsetPtr types = connection.openRecordset(
        QStringLiteral("SELECT GD01_ID, GD01_GUID FROM GD01_TIPODISTINTA ORDER BY GD01_ID"));
    QCOMPARE(types->recordCount(), 2);
    const QString firstGuid = types->value(QStringLiteral("GD01_GUID")).toString();
    QVERIFY2(guid.match(firstGuid).hasMatch(), qPrintable(firstGuid));
    types->moveNext();
    const QString secondGuid = types->value(QStringLiteral("GD01_GUID")).toString();
    QVERIFY2(guid.match(secondGuid).hasMatch(), qPrintable(secondGuid)); // an explicit NULL is filled too
    QVERIFY(firstGuid != secondGuid);

    // Node keys grow and are never reused after a delete; omitted columns take their defaults.
    const QString insert = QStringLiteral("INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, "
                                          "GD02_DITTA_CG18, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44)"
                                          " VALUES (1, 0, 1, 0, 1001)");
    connection.execute(insert);
    connection.execute(insert);
    const qlonglong last = scalar(connection, QStringLiteral("SELECT MAX(GD02_ID) FROM GD02_DISTINTA"));
    connection.execute(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(last));
    connection.execute(insert);
    QCOMPARE(scalar(connection, QStringLiteral("SELECT MAX(GD02_ID) FROM GD02_DISTINTA")), last + 1);
    const db::RecordsetPtr node = connection.openRecordset(
        QStringLiteral(
            "SELECT gd02_guid, GD02_INDREGPROV, GD02_ID_WF02, GD02_TIPOANAGFATT, GD02_INDEREPROMO, GD02_CLIFORFATT_CG44"
            " FROM GD02_DISTINTA WHERE GD02_ID = %1")
            .arg(last + 1));
    QVERIFY(guid.match(node->value(QStringLiteral("gd02_guid")).toString()).hasMatch());
    for (const char *column : {"GD02_INDREGPROV", "GD02_ID_WF02", "GD02_TIPOANAGFATT", "GD02_INDEREPROMO"})
        QCOMPARE(node->value(QString::fromLatin1(column)).toInt(), 0);
    QVERIFY(node->value(QStringLiteral("GD02_CLIFORFATT_CG44")).isNull());

    // The state table stamps its rows as the embedded database stores dates.
    connection.execute(
        QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01) VALUES ('%1', 6)").arg(firstGuid));
    const db::RecordsetPtr state = connection.openRecordset(QStringLiteral("SELECT WF02_DATACRE FROM WF02_STATORIGA"));
    QVERIFY(state->value(0).toDateTime().isValid());
}

void TestSchema::declaredTypesDriveFieldTypes()
{
    TestDatabase database(TestDatabase::DemoData);
    const db::RecordsetPtr rows = database.connection()->openRecordset(
        QStringLiteral("SELECT GD18_ID, GD18_DATASCADENZA, GD18_IMPORTO, GD13_DESCR FROM GD18_LIQUIDAZIONE"
                       " INNER JOIN GD13_PREMI ON GD13_ID = GD18_ID_GD13"));
    QVERIFY(rows->recordCount() > 0);
    QCOMPARE(rows->field(0).type, db::FieldType::Integer);
    QCOMPARE(rows->field(1).type, db::FieldType::DateTime);
    QCOMPARE(rows->field(2).type, db::FieldType::Decimal);
    QCOMPARE(rows->field(2).numericScale, 4);
    QCOMPARE(rows->field(3).type, db::FieldType::Text);
    QCOMPARE(rows->value(1).toDateTime().date().year(), 2024);
}

void TestSchema::connectionStringsNameTheirFile()
{
    // Every legal file name comes back as it was given: ';', braces, '=' and outer blanks included.
    for (const char *name : {"/tmp/a b/demo.sqlite", "/tmp/my;db.sqlite", "/tmp/{x}};y=z.sqlite", "/tmp/ spazi "}) {
        const QString path = QString::fromUtf8(name);
        QCOMPARE(dbsetup::sqliteFileOf(dbsetup::sqliteConnectionString(path)), path);
        QCOMPARE(dbsetup::sqliteFileOf(dbsetup::sqliteConnectionString(path, true)), path);
    }
    QCOMPARE(dbsetup::sqliteConnectionString(QStringLiteral("/tmp/my;db.sqlite"), true),
             QStringLiteral("Provider=SQLite;Data Source={/tmp/my;db.sqlite};Mode=Read"));
    QCOMPARE(dbsetup::sqliteFileOf(QStringLiteral("Driver=SQLite3;Database={/data/a;b.db};TSQLCompat=SQLite;")),
             QStringLiteral("/data/a;b.db"));
    QCOMPARE(dbsetup::sqliteFileOf(QStringLiteral("Driver=SQLite3;Database=/data/x.db;TSQLCompat=SQLite;")),
             QStringLiteral("/data/x.db"));
    QVERIFY(dbsetup::sqliteFileOf(QStringLiteral("Driver={ODBC Driver 18 for SQL Server};Server=srv;Database=ERP;"))
                .isEmpty());
    QVERIFY(dbsetup::defaultDemoDatabasePath().endsWith(QStringLiteral("/VRAX_DISTINTA/demo.sqlite")));
}

void TestSchema::demoDatabaseIsCreatedOnceWithBothCompanies()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("nested/folder/demo.sqlite"));
    QVERIFY(dbsetup::ensureDemoDatabase(path));
    QVERIFY(!dbsetup::ensureDemoDatabase(path));
    QVERIFY(!QFile::exists(path + QStringLiteral(".creating")));

    dbsetup::SqliteFile file(path);
    const auto count = [&](const QString &sql) { return file.scalar(sql); };
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = 1 AND CG44_TIPOCF = 0")),
             300);
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = 1 AND CG44_TIPOCF = 1")),
             150);
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = 2")), 12);
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 2")), 1);
    // Every subject has its general master data, with a city and a two-letter province.
    QCOMPARE(
        count(QStringLiteral("SELECT COUNT(*) FROM CG44_CLIFOR LEFT JOIN CG16_ANAGGEN ON CG16_CODICE = CG44_CODICE_CG16"
                             " WHERE CG16_CODICE IS NULL OR CG16_CITTA IS NULL OR LENGTH(CG16_PROV) <> 2")),
        0);
}

void TestSchema::demoTreesAreConsistent()
{
    // Checked in SQLite's own dialect, on the file itself.
    TestDatabase database(TestDatabase::DemoData);
    dbsetup::SqliteFile file(database.path());
    const auto count = [&](const QString &sql) { return file.scalar(sql); };

    // Each parent is a node of the same type, company and kind; roots have 0 or NULL.
    QCOMPARE(
        count(QStringLiteral(
            "SELECT COUNT(*) FROM GD02_DISTINTA C WHERE IFNULL(C.GD02_IDPARENT_GD02, 0) <> 0 AND NOT EXISTS ("
            " SELECT 1 FROM GD02_DISTINTA P WHERE P.GD02_ID = C.GD02_IDPARENT_GD02 AND P.GD02_ID_GD01 = C.GD02_ID_GD01"
            " AND P.GD02_DITTA_CG18 = C.GD02_DITTA_CG18 AND P.GD02_TIPOCF_CG44 = C.GD02_TIPOCF_CG44)")),
        0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_IDPARENT_GD02 IS NULL")) > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_IDPARENT_GD02 = 0")) > 0);

    // Each node's subject exists, of the type's kind, and its period is in order.
    QCOMPARE(
        count(QStringLiteral(
            "SELECT COUNT(*) FROM GD02_DISTINTA INNER JOIN GD01_TIPODISTINTA ON GD01_ID = GD02_ID_GD01"
            " LEFT JOIN CG44_CLIFOR ON CG44_DITTA_CG18 = GD02_DITTA_CG18 AND CG44_TIPOCF = GD02_TIPOCF_CG44"
            " AND CG44_CLIFOR = GD02_CLIFOR_CG44"
            " WHERE CG44_CLIFOR IS NULL OR GD02_TIPOCF_CG44 <> GD01_INDTIPOSOGG OR GD02_DITTA_CG18 <> GD01_DITTA_CG18"
            " OR GD02_DATAINIZIOVAL > GD02_DATAFINEVAL")),
        0);

    // One link of a subject at a time in what a division sees (its own types and the division-less ones).
    QCOMPARE(count(QStringLiteral(
                 "SELECT COUNT(*) FROM GD02_DISTINTA A INNER JOIN GD01_TIPODISTINTA TA ON TA.GD01_ID = A.GD02_ID_GD01"
                 " INNER JOIN GD02_DISTINTA B ON B.GD02_DITTA_CG18 = A.GD02_DITTA_CG18 AND B.GD02_TIPOCF_CG44 = "
                 "A.GD02_TIPOCF_CG44"
                 " AND B.GD02_CLIFOR_CG44 = A.GD02_CLIFOR_CG44 AND B.GD02_ID > A.GD02_ID"
                 " INNER JOIN GD01_TIPODISTINTA TB ON TB.GD01_ID = B.GD02_ID_GD01"
                 " WHERE (TA.GD01_IDDIV_CO1A IS NULL OR TB.GD01_IDDIV_CO1A IS NULL OR TA.GD01_IDDIV_CO1A = "
                 "TB.GD01_IDDIV_CO1A)"
                 " AND A.GD02_DATAINIZIOVAL <= B.GD02_DATAFINEVAL AND B.GD02_DATAINIZIOVAL <= A.GD02_DATAFINEVAL")),
             0);

    // Dates are stored as 'YYYY-MM-DD HH:MM:SS' text, so that they compare in order.
    QCOMPARE(count(QStringLiteral(
                 "SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_DATAINIZIOVAL NOT LIKE '____-__-__ __:__:__'"
                 " OR GD02_DATAFINEVAL NOT LIKE '____-__-__ __:__:__' OR GD02_DATACRE NOT LIKE '____-__-__ __:__:__'")),
             0);

    // Every type of company 1 with nodes is 3 or 4 levels deep.
    dbsetup::SqliteStatement depths = file.prepare(
        QStringLiteral("WITH RECURSIVE T(ID, TIPO, LIVELLO) AS ("
                       " SELECT GD02_ID, GD02_ID_GD01, 1 FROM GD02_DISTINTA WHERE IFNULL(GD02_IDPARENT_GD02, 0) = 0"
                       " UNION ALL SELECT D.GD02_ID, D.GD02_ID_GD01, T.LIVELLO + 1 FROM GD02_DISTINTA D INNER JOIN T "
                       "ON D.GD02_IDPARENT_GD02 = T.ID)"
                       " SELECT TIPO, MAX(LIVELLO) AS PROFONDITA FROM T INNER JOIN GD01_TIPODISTINTA ON GD01_ID = TIPO"
                       " WHERE GD01_DITTA_CG18 = 1 GROUP BY TIPO"));
    QSet<int> seen;
    int types = 0;
    while (depths.step()) {
        ++types;
        const int depth = depths.columnInt(1);
        QVERIFY2(depth == 3 || depth == 4, qPrintable(QString::number(depth)));
        seen.insert(depth);
    }
    QCOMPARE(types, 5);
    QCOMPARE(seen, (QSet<int> {3, 4}));
}

void TestSchema::demoHasTheCasesTheEditorShows()
{
    // Checked in SQLite's own dialect, on the file itself.
    TestDatabase database(TestDatabase::DemoData);
    dbsetup::SqliteFile file(database.path());
    const auto count = [&](const QString &sql) { return file.scalar(sql); };

    // A type bound to a division of its own company, and a type with no nodes.
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA INNER JOIN CO1A_ANAGDIVISIONI"
                                 " ON CO1A_IDDIV = GD01_IDDIV_CO1A AND CO1A_DITTA_CG18 = GD01_DITTA_CG18"
                                 " WHERE EXISTS (SELECT 1 FROM GD02_DISTINTA WHERE GD02_ID_GD01 = GD01_ID)"))
            > 0);
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1 AND NOT EXISTS"
                                  " (SELECT 1 FROM GD02_DISTINTA WHERE GD02_ID_GD01 = GD01_ID)")),
             1);

    // A definitive settlement blocks its node; the node excluded from the condition is not blocked.
    const QString definitive = QStringLiteral(
        "SELECT COUNT(*) FROM GD18_LIQUIDAZIONE INNER JOIN GD13_PREMI ON GD18_ID_GD13 = GD13_ID"
        " INNER JOIN GD14_SOGGCONTR ON GD14_ID_GD13 = GD13_ID WHERE GD13_DITTA_CG18 = 1 AND GD18_STATOSCADENZA >= 2"
        " AND GD14_ID_GD02 > 0 AND GD14_ID_GD02 %1 IN (SELECT GD27_ID_GD02 FROM GD27_SOGGCONTRDISAB"
        " WHERE GD27_DITTA_CG18 = GD14_DITTA_CG18 AND GD27_CODCONTR_GD10 = GD14_CODCONTR_GD10"
        " AND GD27_VERCONTR_GD10 = GD14_VERCONTR_GD10 AND GD27_PROGRCOND_GD13 = GD14_PROGRCOND_GD13)");
    QVERIFY(count(definitive.arg(QStringLiteral("NOT"))) > 0);
    QVERIFY(count(definitive.arg(QString())) > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD18_LIQUIDAZIONE WHERE GD18_STATOSCADENZA < 2")) > 0);

    // Conditions reach nodes and subjects (ID 0); per-division data leaves some overrides empty.
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GDVISTA03_SOGGETTICOND WHERE Ditta = 1 AND ID > 0")) > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GDVISTA03_SOGGETTICOND WHERE Ditta = 1 AND ID = 0")) > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM VCO1C_CLIFOR WHERE CO1D_CODPAG_CG62 IS NULL")) > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM VCO1C_CLIFOR WHERE CO1D_ZONA IS NOT NULL")) > 0);

    // Structural priority headers with details, one without, and localised ones.
    QVERIFY(
        count(QStringLiteral("SELECT COUNT(*) FROM LP09_TESTATAPRIORITA INNER JOIN LP10_DETTAGLIOPRIORITA"
                             " ON LP10_ID_LP09 = LP09_ID WHERE LP09_DITTA_CG18 = 1 AND LP09_INDTIPOTABPRIORITA = 0"))
        > 0);
    QCOMPARE(
        count(QStringLiteral("SELECT COUNT(*) FROM LP09_TESTATAPRIORITA WHERE LP09_INDTIPOTABPRIORITA = 0"
                             " AND NOT EXISTS (SELECT 1 FROM LP10_DETTAGLIOPRIORITA WHERE LP10_ID_LP09 = LP09_ID)")),
        1);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM LP09_TESTATAPRIORITA WHERE LP09_INDTIPOTABPRIORITA = 1")) > 0);

    // Campaigns active and not, node promotions, parameters of company 1 only, node states.
    QVERIFY(count(QStringLiteral("SELECT COUNT(DISTINCT MG94_FLGATTIVA) FROM MG94_CAMPANAG WHERE MG94_DITTA_CG18 = 1"))
            == 2);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD12_PROMO INNER JOIN GD02_DISTINTA ON GD02_ID = GD12_ID_GD02"
                                 " WHERE GD02_INDEREPROMO = 2"))
            > 0);
    QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM GD03_PARAMETRI")), 1);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA INNER JOIN GD02_DISTINTA ON gd02_guid = WF02_GUID"
                                 " WHERE WF02_ID_WF01 = GD02_ID_WF02"))
            > 0);
    QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_TIPOANAGFATT = 4"
                                 " AND GD02_CLIFORFATT_CG44 IS NOT NULL"))
            > 0);
}

void TestSchema::demoDataIsDeterministic()
{
    QTemporaryDir folder;
    const auto fingerprint = [&](const QString &name) {
        const QString path = folder.filePath(name);
        dbsetup::ensureDemoDatabase(path);
        dbsetup::SqliteFile file(path);
        dbsetup::SqliteStatement rows = file.prepare(
            QStringLiteral("SELECT CG16_CODICE || CG16_RAGSOANAG || IFNULL(CG16_FAXNUM, '') FROM CG16_ANAGGEN UNION ALL"
                           " SELECT GD02_ID || '|' || IFNULL(GD02_IDPARENT_GD02, 'N') || GD02_CLIFOR_CG44 || gd02_guid"
                           " || GD02_DATAINIZIOVAL FROM GD02_DISTINTA"));
        QCryptographicHash hash(QCryptographicHash::Sha1);
        while (rows.step())
            hash.addData(rows.columnText(0).toUtf8());
        return hash.result();
    };
    QCOMPARE(fingerprint(QStringLiteral("one.sqlite")), fingerprint(QStringLiteral("two.sqlite")));
}

QTEST_MAIN(TestSchema)
#include "tst_schema.moc"
