#include "db/databasecheck.h"
#include "db/demodatabase.h"
#include "db/embeddedscripts.h"
#include "db/sqlitefile.h"

#include "data/storicostatements.h"
#include "framework/sqlworkflowstateservice.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"
#include "platform/db/recordset.h"
#include "tests/support/queryplan.h"
#include "tests/support/testdatabase.h"
#include "tests/support/treeinvariants.h"

#include <QtTest>
#include <memory>
#include <sqlite3.h>

namespace {

// A node as the tree editor inserts it: the statement's pieces, dates in day/month/year.
QString nodeInsert(qint64 type, qint64 parent, int company, int code, const QString &start, const QString &end)
{
    return QStringLiteral("INSERT INTO GD02_DISTINTA  (  GD02_ID_GD01,  GD02_IDPARENT_GD02,  GD02_DITTA_CG18,"
                          "  GD02_TIPOCF_CG44,  GD02_CLIFOR_CG44,  GD02_INDREGPROV,  GD02_ID_WF02,  GD02_DATAINIZIOVAL,"
                          "  GD02_DATAFINEVAL,  GD02_DATACRE,  GD02_GRUPPOCRE,  GD02_UTENTECRE,  GD02_DATAVAR,"
                          "  GD02_GRUPPOVAR,  GD02_UTENTEVAR,  GD02_TIPOANAGFATT,  GD02_INDEREPROMO ) VALUES ("
                          "  %1,  %2,  %3,  0,  %4,  0,  0,  %5,  %6,  CONVERT(DateTime,'15/03/2025',103),"
                          "  'ADMIN',  'rossi',  CONVERT(DateTime,'15/03/2025',103),  'ADMIN',  'rossi',  0,  %7 )")
        .arg(type)
        .arg(parent)
        .arg(company)
        .arg(code)
        .arg(start, end)
        .arg(parent == 0 ? 2 : 0);
}

QString date103(const char *dayMonthYear)
{
    return QStringLiteral("CONVERT(DateTime,'%1',103)").arg(QLatin1String(dayMonthYear));
}

} // namespace

// The trees keep themselves valid whoever writes to them: rows that would break a tree are
// refused with a message and leave everything as it was, while every statement of the editor
// still runs, and removing a node takes its subtree and what of ours hangs on it.
class TestTreeConstraints : public QObject
{
    Q_OBJECT

    // Ids of the demo's CLI-GDO tree (type 1, company 1): a root with grandchildren.
    struct Family
    {
        qint64 root = 0;
        qint64 child = 0;
        qint64 grandchild = 0;
        qint64 otherTypeNode = 0;    // a node of type 2
        qint64 otherCompanyType = 0; // company 2's type
    };

    static Family family(TestDatabase &database)
    {
        Family f;
        f.grandchild = database
                           .scalar(QStringLiteral("SELECT MIN(G.GD02_ID) FROM GD02_DISTINTA G INNER JOIN GD02_DISTINTA "
                                                  "C ON C.GD02_ID = G.GD02_IDPARENT_GD02"
                                                  " INNER JOIN GD02_DISTINTA R ON R.GD02_ID = C.GD02_IDPARENT_GD02"
                                                  " WHERE G.GD02_ID_GD01 = 1 AND ISNULL(R.GD02_IDPARENT_GD02, 0) = 0"))
                           .toLongLong();
        f.child = database
                      .scalar(QStringLiteral("SELECT GD02_IDPARENT_GD02 FROM GD02_DISTINTA WHERE GD02_ID = %1")
                                  .arg(f.grandchild))
                      .toLongLong();
        f.root = database
                     .scalar(
                         QStringLiteral("SELECT GD02_IDPARENT_GD02 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.child))
                     .toLongLong();
        f.otherTypeNode = database
                              .scalar(QStringLiteral("SELECT MIN(GD02_ID) FROM GD02_DISTINTA WHERE GD02_ID_GD01 = 2"))
                              .toLongLong();
        f.otherCompanyType = database
                                 .scalar(QStringLiteral(
                                     "SELECT MIN(GD01_ID) FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 2"))
                                 .toLongLong();
        return f;
    }

    // Everything a refused statement could have touched.
    static QString fingerprint(TestDatabase &database)
    {
        return database
                   .scalar(QStringLiteral("SELECT CAST(COUNT(*) AS VARCHAR) + '/' + CAST(SUM(GD02_ID * 7 + "
                                          "ISNULL(GD02_IDPARENT_GD02, 0) + GD02_ID_GD01) AS VARCHAR)"
                                          " + '/' + MAX(CONVERT(VARCHAR, GD02_DATAFINEVAL, 103)) FROM GD02_DISTINTA"))
                   .toString()
            + database.scalar(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA")).toString();
    }

private slots:
    void rowsThatBreakATreeAreRefused_data()
    {
        QTest::addColumn<QString>(
            "statement"); // %R root, %C child, %G grandchild, %O other type's node, %T company 2's type
        QTest::addColumn<QString>("message");
        const QString type = QStringLiteral("Nodo non salvato: il tipo distinta non esiste nella ditta del nodo.");
        const QString parent = QStringLiteral("Nodo non salvato: il nodo padre non esiste oppure è di un altro tipo "
                                              "distinta o di un'altra ditta.");
        const QString cycle = QStringLiteral(
            "Nodo non salvato: un nodo non può stare sotto sé stesso o sotto un suo discendente.");
        const QString notADate = QStringLiteral("Nodo non salvato: la data di inizio validità non è una data.");
        const QString order = QStringLiteral(
            "Nodo non salvato: la data di inizio validità è successiva alla data di fine.");
        const QString open = date103("31/12/2099");
        QTest::newRow("unknown type") << nodeInsert(999, 0, 1, 1015, date103("01/01/2024"), open) << type;
        QTest::newRow("type of another company") << nodeInsert(-1, 0, 1, 1015, date103("01/01/2024"), open)
                                                        .replace(QStringLiteral("(  -1,"), QStringLiteral("(  %T,"))
                                                 << type;
        QTest::newRow("missing parent") << nodeInsert(1, 999999, 1, 1015, date103("01/01/2024"), open) << parent;
        QTest::newRow("parent in another type") << nodeInsert(1, -1, 1, 1015, date103("01/01/2024"), open)
                                                       .replace(QStringLiteral("  -1,"), QStringLiteral("  %O,"))
                                                << parent;
        QTest::newRow("no such day") << nodeInsert(1, 0, 1, 1015, QStringLiteral("'2024-02-30 00:00:00'"), open)
                                     << notADate;
        QTest::newRow("no date at all") << nodeInsert(1, 0, 1, 1015, QStringLiteral("'presto'"), open) << notADate;
        QTest::newRow("start after end") << nodeInsert(1, 0, 1, 1015, date103("02/03/2024"), date103("01/03/2024"))
                                         << order;
        QTest::newRow("below its own grandchild")
            << QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = %G WHERE GD02_ID = %R") << cycle;
        QTest::newRow("below itself") << QStringLiteral(
            "UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = %C WHERE GD02_ID = %C")
                                      << cycle;
        QTest::newRow("moved under another type")
            << QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = %O WHERE GD02_ID = %G") << parent;
        QTest::newRow("type changed under its children")
            << QStringLiteral("UPDATE GD02_DISTINTA SET GD02_ID_GD01 = 2 WHERE GD02_ID = %C")
            << QStringLiteral("Nodo non salvato: il nodo ha dei figli, quindi identificativo, tipo distinta e ditta "
                              "non possono cambiare.");
        QTest::newRow("end moved before start") << QStringLiteral(
            "UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = CONVERT(DateTime,'01/01/1990',103) WHERE GD02_ID = %G")
                                                << order;
        QTest::newRow("type with nodes removed") << QStringLiteral("DELETE FROM GD01_TIPODISTINTA WHERE GD01_ID = 1")
                                                 << QStringLiteral("Tipo distinta non cancellato: ha dei nodi.");
        QTest::newRow("type with nodes moved to another company")
            << QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DITTA_CG18 = 2 WHERE GD01_ID = 1")
            << QStringLiteral(
                   "Tipo distinta non salvato: ha dei nodi, quindi identificativo e ditta non possono cambiare.");
    }

    void rowsThatBreakATreeAreRefused()
    {
        QFETCH(QString, statement);
        QFETCH(QString, message);
        TestDatabase database(TestDatabase::DemoData);
        const Family f = family(database);
        QVERIFY(f.root > 0 && f.otherTypeNode > 0 && f.otherCompanyType > 0);
        statement.replace(QStringLiteral("%R"), QString::number(f.root))
            .replace(QStringLiteral("%C"), QString::number(f.child))
            .replace(QStringLiteral("%G"), QString::number(f.grandchild))
            .replace(QStringLiteral("%O"), QString::number(f.otherTypeNode))
            .replace(QStringLiteral("%T"), QString::number(f.otherCompanyType));
        const QString before = fingerprint(database);
        try {
            database.connection()->execute(statement);
            QFAIL(qPrintable(QStringLiteral("accepted: ") + statement));
        } catch (const db::DatabaseError &error) {
            QCOMPARE(error.errors().first().description, message);
        }
        QCOMPARE(fingerprint(database), before);
        QCOMPARE(treeViolations(database.path()), QStringList());
    }

    // The writes of the editor and of the state control run as they always did.
    void theEditorsStatementsStillRun()
    {
        TestDatabase database(TestDatabase::DemoData);
        db::Connection &connection = *database.connection();
        const Family f = family(database);
        // New roots with parent 0, a child of a root, a grandchild of the new child: the same day
        // for start and end is a valid one-day period.
        connection.execute(nodeInsert(1, 0, 1, 1299, date103("01/01/2000"), date103("31/12/2099")));
        connection.execute(nodeInsert(1, f.root, 1, 1298, date103("15/03/2024"), date103("15/03/2024")));
        const qint64 child = database.scalar(QStringLiteral("SELECT MAX(GD02_ID) FROM GD02_DISTINTA")).toLongLong();
        connection.execute(nodeInsert(1, child, 1, 1297, date103("15/03/2024"), date103("15/03/2024")));

        // In-tree edits and propagation through the bound recordset.
        const db::RecordsetPtr tree = connection.openRecordset(QStringLiteral(
            "SELECT *, '' AS RagioneSociale FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 1 AND GD02_ID_GD01 = '1'"));
        QVERIFY(tree->find(QStringLiteral("GD02_ID = %1").arg(f.child)));
        tree->setValue(QStringLiteral("GD02_DATAINIZIOVAL"), QStringLiteral("01/02/2024"));
        tree->setValue(QStringLiteral("GD02_DATAFINEVAL"), QStringLiteral("31/12/2030"));
        tree->setValue(QStringLiteral("GD02_IDSTRUTTURA_LP09"), QVariant());
        tree->update();
        for (tree->moveFirst(); !tree->eof(); tree->moveNext()) {
            tree->setValue(QStringLiteral("GD02_TIPOANAGFATT"), 4);
            tree->setValue(QStringLiteral("GD02_CLIFORFATT_CG44"), 1001);
            tree->update();
        }

        // Campaigns of a node, the state of a node and of its children.
        connection.execute(
            QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES ( 1, %1, 1 )")
                .arg(child));
        fw::SqlWorkflowStateService states(database.connection(), QStringLiteral("rossi"), QStringLiteral("ADMIN"));
        const QString childGuid =
            database.scalar(QStringLiteral("SELECT gd02_guid FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(child))
                .toString();
        states.ConfermaStato(childGuid, 6);
        QCOMPARE(treeViolations(database.path()), QStringList());

        // A type without nodes goes; one with nodes stays (the editor asks before).
        connection.execute(QStringLiteral("DELETE FROM GD01_TIPODISTINTA WHERE GD01_ID = 4"));
        QCOMPARE(database.scalar(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA WHERE GD01_ID = 4")).toInt(),
                 0);
    }

    // Removing a node takes its subtree, its campaigns and its workflow states, down to the last
    // level, and leaves the contract subjects and their exclusions to their own management;
    // through a recordset too, where the row's own check must not trip on the trigger's work.
    void aRemovedNodeTakesWhatHangsOnItWithIt()
    {
        TestDatabase database(TestDatabase::DemoData);
        const qint64 root =
            database
                .scalar(QStringLiteral(
                    "SELECT MIN(GD14_ID_GD02) FROM GD14_SOGGCONTR INNER JOIN GD02_DISTINTA ON GD02_ID = GD14_ID_GD02"
                    " WHERE ISNULL(GD02_IDPARENT_GD02, 0) = 0"))
                .toLongLong();
        QVERIFY(root > 0);
        const QString subtree = QStringLiteral("WITH RECURSIVE S(ID) AS (SELECT %1 UNION SELECT D.GD02_ID FROM "
                                               "GD02_DISTINTA D INNER JOIN S ON D.GD02_IDPARENT_GD02 = S.ID)"
                                               " SELECT ID FROM S")
                                    .arg(root);
        dbsetup::SqliteFile file(database.path());
        file.exec(QStringLiteral(
                      "INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) SELECT 1, ID, 1 FROM (%1)")
                      .arg(subtree));
        file.exec(
            QStringLiteral(
                "INSERT OR IGNORE INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01) SELECT gd02_guid, 6 FROM GD02_DISTINTA"
                " WHERE GD02_ID IN (%1)")
                .arg(subtree));
        const qint64 nodes = file.scalar(QStringLiteral("SELECT COUNT(*) FROM (%1)").arg(subtree));
        QVERIFY(nodes > 3);
        const qint64 allNodes = file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA"));
        const qint64 others = file.scalar(
            QStringLiteral("SELECT COUNT(*) FROM GD12_PROMO WHERE GD12_ID_GD02 NOT IN (%1)").arg(subtree));
        const qint64 contractRows = file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD14_SOGGCONTR"))
            + file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD27_SOGGCONTRDISAB"));
        const qint64 otherStates = file.scalar(
            QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA WHERE WF02_GUID NOT IN (SELECT gd02_guid FROM "
                           "GD02_DISTINTA WHERE GD02_ID IN (%1))")
                .arg(subtree));

        const db::RecordsetPtr tree = database.connection()->openRecordset(QStringLiteral(
            "SELECT * FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 1 AND GD02_ID_GD01 = 1 ORDER BY GD02_ID"));
        QVERIFY(tree->find(QStringLiteral("GD02_ID = %1").arg(root)));
        tree->deleteCurrent();

        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")), allNodes - nodes);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD12_PROMO")), others);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA")), otherStates);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD14_SOGGCONTR"))
                     + file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD27_SOGGCONTRDISAB")),
                 contractRows);
    }

    // A database made before the trees checked themselves, and before the journal, gets the checks,
    // the journal (and WAL) when it is prepared for the editor, and says so in its schema version.
    void anOlderDatabaseGetsTheChecks()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("vecchio.sqlite"));
        dbsetup::ensureDemoDatabase(path);
        {
            dbsetup::SqliteFile file(path);
            for (const char *trigger : {"TR_GD02_DISTINTA_INSERT", "TR_GD02_DISTINTA_UPDATE",
                                        "TR_GD01_TIPODISTINTA_DELETE", "TR_GD01_TIPODISTINTA_UPDATE"})
                file.exec(QStringLiteral("DROP TRIGGER %1").arg(QLatin1String(trigger)));
            for (const char *kind : {"INSERT", "UPDATE", "DELETE"})
                for (const char *table : {"GD01", "GD02", "GD03", "GD12", "WF02"})
                    file.exec(
                        QStringLiteral("DROP TRIGGER TR_%1_STORICO_%2").arg(QLatin1String(table), QLatin1String(kind)));
            file.exec(
                QStringLiteral("DROP TABLE GD91_RIGHESTORICO; DROP TABLE GD90_OPERAZIONI; DROP INDEX IX_GD02_GUID"));
            file.exec(QStringLiteral("PRAGMA user_version = 0; PRAGMA journal_mode = DELETE"));
        }
        dbsetup::DatabaseFileCheck check = dbsetup::checkDatabaseFile(path);
        QVERIFY(check.isModuleDatabase());
        QCOMPARE(check.schemaVersion, 0);
        QVERIFY(!check.walMode);

        dbsetup::prepareDatabaseAt(path);
        check = dbsetup::checkDatabaseFile(path);
        QCOMPARE(check.schemaVersion, dbsetup::kSchemaVersion);
        QVERIFY(check.walMode);
        dbsetup::SqliteFile file(path);
        // The tree's seven, and the journal's three for each of its five tables.
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'trigger'")), 22);
        file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'x' WHERE GD02_ID = 1"));
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_CHIAVE = 1")), 1);
        QVERIFY_THROWS_EXCEPTION(db::DatabaseError,
                                 file.exec(QStringLiteral("DELETE FROM GD01_TIPODISTINTA WHERE GD01_ID = 1")));
    }

    // A journal of the previous version (rows under AUTOINCREMENT, every guid indexed, whole rows
    // for updates) keeps its rows and their ids, and records updates by their changed columns.
    void aJournalOfThePreviousVersionIsRebuilt()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("storico2.sqlite"));
        dbsetup::ensureDemoDatabase(path);
        const auto text = [](dbsetup::SqliteFile &file, const QString &sql) {
            dbsetup::SqliteStatement statement = file.prepare(sql);
            return statement.step() ? statement.columnText(0) : QString();
        };
        {
            dbsetup::SqliteFile file(path);
            file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'prima' WHERE GD02_ID = 1"));
            QString table = text(file,
                                 QStringLiteral("SELECT sql FROM sqlite_master WHERE name = 'GD91_RIGHESTORICO'"));
            table.replace(QStringLiteral("INTEGER      PRIMARY KEY,"),
                          QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT,"));
            file.exec(QStringLiteral("CREATE TABLE GD91_COPIA AS SELECT * FROM GD91_RIGHESTORICO; "
                                     "DROP TABLE GD91_RIGHESTORICO"));
            file.exec(table);
            file.exec(QStringLiteral("INSERT INTO GD91_RIGHESTORICO SELECT * FROM GD91_COPIA; DROP TABLE GD91_COPIA; "
                                     "UPDATE GD91_RIGHESTORICO SET GD91_ID = 41; "
                                     "CREATE INDEX IX_GD91_GUID ON GD91_RIGHESTORICO (GD91_GUID); "
                                     "PRAGMA user_version = 2"));
        }
        dbsetup::prepareDatabaseAt(path);
        dbsetup::SqliteFile file(path);
        QCOMPARE(file.scalar(QStringLiteral("PRAGMA user_version")), dbsetup::kSchemaVersion);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE sql LIKE '%AUTOINCREMENT%' "
                                            "AND name = 'GD91_RIGHESTORICO'")),
                 0);
        QVERIFY(text(file, QStringLiteral("SELECT sql FROM sqlite_master WHERE name = 'IX_GD91_GUID'"))
                    .endsWith(QLatin1String("WHERE GD91_ID_GD02 IS NULL")));
        QCOMPARE(text(file,
                      QStringLiteral("SELECT GD91_ID || '/' || json_extract(GD91_DOPO, '$.GD02_DESCR') "
                                     "FROM GD91_RIGHESTORICO")),
                 QStringLiteral("41/prima"));
        // Today's updates keep what they changed; a node's link comes whole when it changes, and the
        // stamp only as it was before; a new stamp alone records nothing.
        const auto images = [&] {
            return text(file,
                        QStringLiteral("SELECT GD91_PRIMA || ' ' || GD91_DOPO FROM GD91_RIGHESTORICO "
                                       "WHERE GD91_ID = (SELECT MAX(GD91_ID) FROM GD91_RIGHESTORICO)"));
        };
        file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAVAR = '2026-01-01 00:00:00', "
                                 "GD02_UTENTEVAR = 'bianchi' WHERE GD02_ID = 1"));
        QCOMPARE(file.scalar(QStringLiteral("SELECT MAX(GD91_ID) FROM GD91_RIGHESTORICO")), 41);
        file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'dopo' WHERE GD02_ID = 1"));
        QCOMPARE(images(), QStringLiteral(R"({"GD02_DESCR":"prima"} {"GD02_DESCR":"dopo"})"));
        file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = '2025-06-30 00:00:00', "
                                 "GD02_DATAVAR = '2026-01-02 03:04:05', GD02_UTENTEVAR = 'rossi' WHERE GD02_ID = 1"));
        QCOMPARE(
            images(),
            QStringLiteral(R"({"GD02_IDPARENT_GD02":0,"GD02_TIPOCF_CG44":0,"GD02_CLIFOR_CG44":1043,)"
                           R"("GD02_DATAINIZIOVAL":"2024-03-01 00:00:00","GD02_DATAFINEVAL":"2099-12-31 00:00:00",)"
                           R"("GD02_DATAVAR":"2026-01-01 00:00:00","GD02_UTENTEVAR":"bianchi"} )"
                           R"({"GD02_DATAFINEVAL":"2025-06-30 00:00:00"})"));
    }

    // A journal that indexed every row by subject and classification gets today's narrower
    // indexes, its rows untouched, and the queries of the history find their rows through them.
    void aJournalIndexedWholeGetsTodaysIndexes()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("storico3.sqlite"));
        dbsetup::ensureDemoDatabase(path);
        {
            dbsetup::SqliteFile file(path);
            file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'prima' WHERE GD02_ID = 1; "
                                     "DROP INDEX IX_GD91_SOGGETTO; DROP INDEX IX_GD91_TIPO; "
                                     "CREATE INDEX IX_GD91_SOGGETTO ON GD91_RIGHESTORICO "
                                     "(GD91_DITTA_CG18, GD91_TIPOCF_CG44, GD91_CLIFOR_CG44); "
                                     "CREATE INDEX IX_GD91_TIPO ON GD91_RIGHESTORICO (GD91_ID_GD01, GD91_DATAORA); "
                                     "PRAGMA user_version = 3"));
        }
        dbsetup::prepareDatabaseAt(path);
        dbsetup::SqliteFile file(path);
        QCOMPARE(file.scalar(QStringLiteral("PRAGMA user_version")), dbsetup::kSchemaVersion);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND "
                                            "tbl_name = 'GD91_RIGHESTORICO' AND sql LIKE '%WHERE%'")),
                 3);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD02 = 1")), 1);

        // The plans, in SQLite's words, of the subject's and the classification's history.
        sqlite3 *handle = nullptr;
        QCOMPARE(sqlite3_open_v2(path.toUtf8().constData(), &handle, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> closing(handle, &sqlite3_close);
        db::registerSqliteFunctions(handle);
        const auto plan = [handle](const QString &tsql) { return queryPlan(handle, db::translateTsqlToSqlite(tsql)); };
        const QString subject = plan(storicostatements::subjectHistoryQuery(1, 0, 1001));
        QVERIFY2(subject.contains(QLatin1String("USING INDEX IX_GD91_SOGGETTO")), qPrintable(subject));
        QVERIFY2(subject.contains(QLatin1String("USING INDEX IX_GD02_SOGGETTO")), qPrintable(subject));
        QVERIFY2(!subject.contains(QLatin1String("SCAN GD91_RIGHESTORICO")), qPrintable(subject));
        storicostatements::FiltroStorico filter;
        filter.company = 1;
        filter.typeId = 1;
        filter.from = QDate(2025, 1, 1);
        filter.to = QDate(2025, 1, 31);
        const QString classification = plan(storicostatements::classificationHistoryQuery(filter));
        QVERIFY2(classification.contains(QLatin1String("USING INDEX IX_GD91_TIPO")), qPrintable(classification));
        QVERIFY2(classification.contains(QLatin1String("USING INDEX IX_GD91_GD90")), qPrintable(classification));
        QVERIFY2(classification.contains(QLatin1String("INDEX IX_GD90_DITTA")), qPrintable(classification));
        QVERIFY2(!classification.contains(QLatin1String("SCAN GD91_RIGHESTORICO")), qPrintable(classification));
    }
};

QTEST_GUILESS_MAIN(TestTreeConstraints)
#include "tst_treeconstraints.moc"
