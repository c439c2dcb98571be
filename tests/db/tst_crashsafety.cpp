#include "db/demodatabase.h"
#include "db/largedatabase.h"
#include "db/sqlitefile.h"

#include "data/storicostatements.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "tests/support/treeinvariants.h"

#include <QFileSystemWatcher>
#include <QProcess>
#include <QtTest>

#include <cstdio>

// A writer killed with SIGKILL in the middle of its work: the next user must find a database
// that passes SQLite's integrity check and whose trees hold, and the benchmarks must never take
// a half-written generated database for a complete one.
//
// The writers are this program run again with DISTINTA_CRASH_WRITER set; they print one line per
// statement written, so that the test kills them at a known point of their work.

namespace {

const char *const writerVariable = "DISTINTA_CRASH_WRITER";
const char *const databaseVariable = "DISTINTA_CRASH_DATABASE";

void progress(const QByteArray &line)
{
    std::fputs(line.constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// Runs until killed: the writes of one of the editor's batches, over and over.
int runWriter(const QByteArray &writer, const QString &path)
{
    if (writer == "generate") {
        progress("start");
        dbsetup::generateLargeDatabase(path, 300000, 300000);
        progress("done");
        return 0;
    }
    const db::ConnectionPtr connection = db::Connection::open(dbsetup::sqliteConnectionString(path));
    if (writer == "insert") {
        // Nodes inserted one statement at a time, as a batch of the editor does: a root, then
        // children and grandchildren under it.
        for (int i = 0;; ++i) {
            const qint64 parent = i % 4 == 0
                ? 0
                : connection->openRecordset(QStringLiteral("SELECT MAX(GD02_ID) FROM GD02_DISTINTA"))
                      ->value(0)
                      .toLongLong();
            connection->execute(
                QStringLiteral(
                    "INSERT INTO GD02_DISTINTA  (  GD02_ID_GD01,  GD02_IDPARENT_GD02,  GD02_DITTA_CG18,  "
                    "GD02_TIPOCF_CG44,"
                    "  GD02_CLIFOR_CG44,  GD02_INDREGPROV,  GD02_ID_WF02,  GD02_DATAINIZIOVAL,  GD02_DATAFINEVAL,"
                    "  GD02_TIPOANAGFATT,  GD02_INDEREPROMO ) VALUES (  1,  %1,  1,  0,  %2,  0,  0,"
                    "  CONVERT(DateTime,'01/01/2024',103),  CONVERT(DateTime,'31/12/2099',103),  0,  %3 )")
                    .arg(parent)
                    .arg(1001 + i % 300)
                    .arg(parent == 0 ? 2 : 0));
            progress(QByteArray::number(i));
        }
    }
    if (writer == "operation") {
        // Operations of the journal as the editor runs them: one transaction each, its row
        // opened first and closed last, a thousand nodes inserted in between.
        for (int round = 0;; ++round) {
            storicostatements::Operazione operation;
            operation.company = 1;
            operation.typeId = 1;
            operation.name = QStringLiteral("Inserimento");
            operation.user = QStringLiteral("crash");
            connection->beginTransaction();
            connection->execute(storicostatements::insertOperationStatement(operation));
            const qint64 id = connection->lastInsertedKey().toLongLong();
            for (int i = 0; i < 1000; ++i) {
                connection->execute(QStringLiteral(
                    "INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44, "
                    "GD02_CLIFOR_CG44, GD02_DESCR) VALUES (1, 0, 1, 0, 1001, 'crash')"));
                progress(QByteArray::number(round * 1000 + i));
            }
            connection->execute(storicostatements::closeOperationStatement(id));
            connection->commitTransaction();
        }
    }
    // Propagation: every node of a tree updated through the bound recordset, one row at a time,
    // and a subtree removed and put back now and then.
    const db::RecordsetPtr tree = connection->openRecordset(QStringLiteral(
        "SELECT *, '' AS RagioneSociale FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 1 AND GD02_ID_GD01 = '1'"));
    for (int i = 0;; ++i) {
        for (tree->moveFirst(); !tree->eof(); tree->moveNext()) {
            tree->setValue(QStringLiteral("GD02_TIPOANAGFATT"), i % 5);
            tree->setValue(QStringLiteral("GD02_DATAFINEVAL"), QDateTime(QDate(2030 + i % 50, 12, 31), QTime(0, 0)));
            tree->update();
            progress(QByteArray::number(i));
        }
    }
}

} // namespace

class TestCrashSafety : public QObject
{
    Q_OBJECT

    // Starts a writer on path and kills it with SIGKILL once it has printed `lines` lines.
    static void killWriterAfter(const QByteArray &writer, const QString &path, int lines)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(writerVariable), QString::fromLatin1(writer));
        environment.insert(QString::fromLatin1(databaseVariable), path);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(process.waitForStarted());
        int seen = 0;
        while (seen < lines && process.waitForReadyRead(60000)) {
            while (process.canReadLine()) {
                process.readLine();
                ++seen;
            }
        }
        QVERIFY2(seen >= lines, process.readAllStandardError().constData());
        process.kill(); // SIGKILL: no destructor, no rollback, no checkpoint
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    }

private slots:
    void killedWriteLoopsLeaveASoundDatabase_data()
    {
        QTest::addColumn<QByteArray>("writer");
        QTest::addColumn<int>("lines");
        QTest::newRow("insertions of a batch") << QByteArray("insert") << 300;
        QTest::newRow("propagation through the recordset") << QByteArray("propagate") << 300;
    }

    void killedWriteLoopsLeaveASoundDatabase()
    {
        QFETCH(QByteArray, writer);
        QFETCH(int, lines);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(path));
        killWriterAfter(writer, path, lines);
        QVERIFY(QFile::exists(path + QStringLiteral("-wal"))); // killed before it could tidy up
        QCOMPARE(integrityCheck(path), QStringLiteral("ok"));
        QCOMPARE(treeViolations(path), QStringList());
    }

    // Killed in the middle of its second operation of a thousand rows, the writer leaves the data
    // and the journal in agreement: whole operations, each with its rows, none left open.
    void aKilledOperationLeavesDataAndJournalTogether()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(path));
        killWriterAfter("operation", path, 1500);
        dbsetup::SqliteFile file(path);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD90_OPERAZIONI WHERE GD90_INDAPERTA <> 0")), 0);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD90_OPERAZIONI WHERE GD90_UTENTE = 'crash'")), 1);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_DESCR = 'crash'")), 1000);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO INNER JOIN GD90_OPERAZIONI "
                                            "ON GD90_ID = GD91_ID_GD90 WHERE GD90_UTENTE = 'crash' "
                                            "AND json_extract(GD91_DOPO, '$.GD02_DESCR') = 'crash'")),
                 1000);
        QCOMPARE(file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 IS NULL")), 0);
    }

    // Killed half-way, the generator leaves nothing under the target's name, and what it left
    // beside it is no complete database even when moved there (as an older generator left it);
    // the next run makes a complete one.
    void aKilledGeneratorLeavesNothingTheBenchmarksAccept()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("bench_300000.sqlite"));
        const QString building = path + QStringLiteral(".generating");
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(writerVariable), QStringLiteral("generate"));
        environment.insert(QString::fromLatin1(databaseVariable), path);
        process.setProcessEnvironment(environment);

        // Killed as soon as the file being built has grown past a few megabytes.
        QFileSystemWatcher watcher({folder.path()});
        QEventLoop loop;
        const auto killWhenGrown = [&] {
            if (!watcher.files().contains(building) && QFile::exists(building))
                watcher.addPath(building);
            if (QFileInfo(building).size() > 4 * 1024 * 1024 && process.state() == QProcess::Running) {
                process.kill();
                loop.quit();
            }
        };
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &loop, killWhenGrown);
        QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &loop, killWhenGrown);
        QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(120000, &loop, &QEventLoop::quit); // a guard, not a wait
        process.start(QCoreApplication::applicationFilePath(), {});
        loop.exec();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);

        QVERIFY(!QFile::exists(path));
        QVERIFY(!dbsetup::isCompleteLargeDatabase(path, 300000));
        QVERIFY(QFile::exists(building));
        QVERIFY(QFile::rename(building, path));
        QVERIFY(!dbsetup::isCompleteLargeDatabase(path, 300000));

        dbsetup::generateLargeDatabase(path, 500, 500);
        QVERIFY(dbsetup::isCompleteLargeDatabase(path, 500));
        QVERIFY(!dbsetup::isCompleteLargeDatabase(path, 501));
        QVERIFY(!QFile::exists(building));
    }
};

int main(int argc, char **argv)
{
    const QByteArray writer = qgetenv(writerVariable);
    if (!writer.isEmpty()) {
        QCoreApplication app(argc, argv);
        try {
            return runWriter(writer, qEnvironmentVariable(databaseVariable));
        } catch (const db::DatabaseError &error) {
            std::fputs(error.message().toUtf8().constData(), stderr);
            return 1;
        }
    }
    QCoreApplication app(argc, argv);
    TestCrashSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crashsafety.moc"
