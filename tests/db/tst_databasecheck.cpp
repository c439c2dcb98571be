#include "db/databasecheck.h"
#include "db/demodatabase.h"
#include "db/embeddedscripts.h"
#include "db/sqlitefile.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QCryptographicHash>
#include <QDir>
#include <QScopeGuard>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray checksum(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256)
                                          : QByteArray();
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

// Runs work as a user who may not write the files of folder nor the folder itself: as root,
// whom no permission stops, as "nobody"; as anybody else, as themselves once the write
// permissions are taken away. Both are put back afterwards.
template<typename Work>
void withoutWriteAccess(const QString &folder, Work work)
{
    QList<QPair<QString, mode_t>> restore;
    const auto setMode = [&](const QString &path, mode_t mode) {
        struct stat info
        { };
        stat(QFile::encodeName(path).constData(), &info);
        restore.append({path, info.st_mode & 07777});
        chmod(QFile::encodeName(path).constData(), mode);
    };
    const bool root = geteuid() == 0;
    const auto putBack = qScopeGuard([&] {
        if (root && geteuid() != 0 && seteuid(0) != 0)
            qFatal("cannot become root again");
        for (const auto &[path, mode] : restore)
            chmod(QFile::encodeName(path).constData(), mode);
    });
    setMode(folder, root ? 0755 : 0555);
    for (const QString &name : filesIn(folder))
        setMode(folder + QLatin1Char('/') + name, root ? 0644 : 0444);
    QVERIFY(!root || seteuid(65534) == 0);
    work();
}

} // namespace

// A file is looked at before anything is written to it: what is not a database of this module
// is refused and left byte for byte as it was, with nothing beside it; a database the user may
// not write opens read-only, refuses every write with a message, and leaves nothing behind.
class TestDatabaseCheck : public QObject
{
    Q_OBJECT

private slots:
    void filesThatAreNotOursAreRefusedUntouched_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("problem"); // %1: the file
        const QString foreign = QStringLiteral(
            "Il file %1 non è un database delle distinte di classificazione (mancano le "
            "tabelle GD01_TIPODISTINTA, GD02_DISTINTA, GD03_PARAMETRI, GD04_STDISTINTA, "
            "GD12_PROMO): non viene aperto né modificato.");
        QTest::newRow("another program's database")
            << "altro.sqlite" << int(dbsetup::DatabaseFileCheck::ForeignDatabase) << foreign;
        QTest::newRow("another program's database in WAL mode")
            << "altro-wal.sqlite" << int(dbsetup::DatabaseFileCheck::ForeignDatabase) << foreign;
        QTest::newRow("a text") << "note.txt" << int(dbsetup::DatabaseFileCheck::NotADatabase)
                                << QStringLiteral(
                                       "Il file %1 non è un database SQLite: non viene aperto né modificato.");
        QTest::newRow("a damaged database") << "rovinato.sqlite" << int(dbsetup::DatabaseFileCheck::NotADatabase)
                                            << QStringLiteral("Il file %1 non è leggibile come database (");
        QTest::newRow("a folder") << "cartella" << int(dbsetup::DatabaseFileCheck::Unreadable)
                                  << QStringLiteral("Impossibile leggere il file %1: non viene aperto né modificato.");
    }

    void filesThatAreNotOursAreRefusedUntouched()
    {
        QFETCH(QString, name);
        QFETCH(int, kind);
        QFETCH(QString, problem);
        QTemporaryDir folder;
        const QString path = folder.filePath(name);
        if (name.startsWith(QLatin1String("altro"))) {
            dbsetup::SqliteFile file(path);
            if (name.contains(QLatin1String("wal")))
                file.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            file.exec(QStringLiteral(
                "CREATE TABLE CLIENTI (ID INTEGER PRIMARY KEY, NOME TEXT); INSERT INTO CLIENTI VALUES (1, 'x')"));
        } else if (name == QLatin1String("cartella")) {
            QDir(folder.path()).mkdir(name);
        } else {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(name.endsWith(QLatin1String(".txt"))
                           ? QByteArray("Appunti della riunione\n").repeated(20)
                           : QByteArray("SQLite format 3\0", 16) + QByteArray(4080, '\x5a'));
        }
        const QStringList before = filesIn(folder.path());
        const QByteArray sum = checksum(path);

        const dbsetup::DatabaseFileCheck check = dbsetup::checkDatabaseFile(path);
        QCOMPARE(int(check.kind), kind);
        QVERIFY2(check.problem.startsWith(problem.arg(QDir::toNativeSeparators(path))), qPrintable(check.problem));
        QCOMPARE(checksum(path), sum);
        QCOMPARE(filesIn(folder.path()), before);
    }

    void newAndOwnFilesAreKnown()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("demo.sqlite"));
        dbsetup::DatabaseFileCheck check = dbsetup::checkDatabaseFile(path);
        QCOMPARE(check.kind, dbsetup::DatabaseFileCheck::Missing);
        QVERIFY(check.writable);
        QFile empty(path);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        QCOMPARE(dbsetup::checkDatabaseFile(path).kind, dbsetup::DatabaseFileCheck::Missing);

        QVERIFY(dbsetup::ensureDemoDatabase(path));
        check = dbsetup::checkDatabaseFile(path);
        QCOMPARE(check.kind, dbsetup::DatabaseFileCheck::ModuleDatabase);
        QVERIFY(check.writable);
        QVERIFY(check.walMode);
        QCOMPARE(check.schemaVersion, dbsetup::kSchemaVersion);
        QVERIFY(check.problem.isEmpty());
    }

    // The user may read the database but not write the file (or its folder): it is still ours,
    // it opens read-only, every write is refused with a message, and nothing is left beside it.
    void aDatabaseTheUserCannotWriteOpensReadOnly()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("condiviso.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(path));
        const QByteArray sum = checksum(path);
        const QStringList before = filesIn(folder.path());

        withoutWriteAccess(folder.path(), [&] {
            const dbsetup::DatabaseFileCheck check = dbsetup::checkDatabaseFile(path);
            QCOMPARE(check.kind, dbsetup::DatabaseFileCheck::ModuleDatabase);
            QVERIFY(!check.writable);

            const db::ConnectionPtr connection = db::Connection::open(dbsetup::sqliteConnectionString(path, true));
            QVERIFY(
                connection->openRecordset(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA"))->value(0).toInt()
                > 0);
            // The editor's lists live in temporary tables, which a reader may make.
            connection->execute(QStringLiteral("SELECT GD01_ID INTO #TIPI FROM GD01_TIPODISTINTA"));
            const QString refused = QStringLiteral(
                "Il database è aperto in sola lettura: la modifica non è stata salvata.");
            try {
                connection->execute(QStringLiteral("DELETE FROM GD04_STDISTINTA WHERE GD04_KEY = 'x'"));
                QFAIL("a write went through");
            } catch (const db::DatabaseError &error) {
                QCOMPARE(error.errors().first().description, refused);
            }
            const db::RecordsetPtr types = connection->openRecordset(QStringLiteral("SELECT * FROM GD01_TIPODISTINTA"));
            types->setValue(QStringLiteral("GD01_DESCR"), QStringLiteral("Nuova"));
            QVERIFY_THROWS_EXCEPTION(db::DatabaseError, types->update());
            QCOMPARE(connection->errors().first().description, refused);
        });
        QCOMPARE(checksum(path), sum);
        QCOMPARE(filesIn(folder.path()), before);
    }
};

QTEST_GUILESS_MAIN(TestDatabaseCheck)
#include "tst_databasecheck.moc"
