#include "db/demodatabase.h"
#include "db/sqlitefile.h"
#include "tests/support/shellrun.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

// The program a user starts, run as a separate process.
class TestShell : public QObject
{
    Q_OBJECT

    using Run = ShellRun;

    static QString program() { return ShellRun::program(); }

    static Run run(const QStringList &arguments, const QProcessEnvironment &environment, int timeoutMs = 60000,
                   const QString &programPath = {})
    {
        return ShellRun::runIn(environment, arguments, timeoutMs, programPath);
    }

    static QProcessEnvironment offscreen()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.remove(QStringLiteral("DISTINTA_PLUGIN_DIR"));
        return environment;
    }

    static QByteArray checksum(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256)
                                              : QByteArray();
    }

    static QStringList filesIn(const QString &folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    static QString odbcDriver() { return QStringLiteral("/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so"); }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(program()))
            QSKIP("the distinta program is not built");
    }

    // Without a user a missing file is an error and nothing is made in its place: a mistyped
    // path must not answer from a new demo database. The demo database then opens as it is.
    void aRunWithoutAUserRefusesAMissingDatabase()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        for (const QStringList &unattended :
             {QStringList {QStringLiteral("--exit-after-show")},
              QStringList {QStringLiteral("--screenshot"), folder.filePath(QStringLiteral("e.png"))},
              QStringList {QStringLiteral("--print"), QStringLiteral("cli-gdo"), QStringLiteral("--pdf"),
                           folder.filePath(QStringLiteral("e.pdf"))},
              QStringList {QStringLiteral("--export"), QStringLiteral("cli-gdo"), QStringLiteral("--csv"),
                           folder.filePath(QStringLiteral("e.csv"))}}) {
            const Run refused = run(QStringList {QStringLiteral("--database"), database} + unattended, offscreen());
            QCOMPARE(refused.exitCode, 1);
            QVERIFY2(refused.err.contains(QStringLiteral("Il database %1 non esiste").arg(database)),
                     qPrintable(refused.err));
            QCOMPARE(filesIn(folder.path()), QStringList());
        }

        QVERIFY(dbsetup::ensureDemoDatabase(database));
        const Run result = run({QStringLiteral("--database"), database, QStringLiteral("--exit-after-show"),
                                QStringLiteral("--company"), QStringLiteral("1")},
                               offscreen());
        QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
        QVERIFY2(result.out.contains(QStringLiteral("Database: ") + database), qPrintable(result.out));
        QVERIFY2(result.out.contains(
                     QStringLiteral("Finestra aperta: FRMGD_DISTINTA \"Distinta di classificazione\" (pronta)")),
                 qPrintable(result.out));
        QVERIFY2(!result.err.contains(QStringLiteral("errore")), qPrintable(result.err));
    }

    void namesAComponentThatIsNotInstalled()
    {
        QTemporaryDir folder;
        QProcessEnvironment environment = offscreen();
        environment.insert(QStringLiteral("DISTINTA_PLUGIN_DIR"), folder.path());
        const QString database = folder.filePath(QStringLiteral("d.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database));
        const Run result = run({QStringLiteral("--database"), database, QStringLiteral("--exit-after-show")},
                               environment);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(
            result.err.contains(QStringLiteral("Il componente \"VRAX_DISTINTA.CLSGD_DISTINTA\" non è installato.")),
            qPrintable(result.err));
    }

    void explainsAMissingDisplay()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QLatin1String(name));
        const Run result = run({}, environment);
        QCOMPARE(result.exitCode, 2);
        QVERIFY(result.err.contains(QStringLiteral("xvfb-run -a build/bin/distinta")));

        const Run help = run({QStringLiteral("--help")}, environment); // help needs no display
        QCOMPARE(help.exitCode, 0);
        for (const char *option :
             {"--company", "--user", "--group", "--database", "--odbc", "--exit-after-show", "--screenshot"})
            QVERIFY2(help.out.contains(QLatin1String(option)), option);
    }

    // Without a user an error is written once, with the procedure and the database's message, and
    // ends the run with status 3 (a Retry answered by nobody used to repeat it for ever); a file
    // that is not ours is refused before anything is written to it.
    void headlessRunsReportTheFirstErrorAndEnd()
    {
        QTemporaryDir folder;
        const QString damaged = folder.filePath(QStringLiteral("rovinato.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(damaged));
        qint64 nodePage = 0;
        qint64 pageSize = 0;
        {
            dbsetup::SqliteFile file(damaged);
            nodePage = file.scalar(QStringLiteral("SELECT rootpage FROM sqlite_master WHERE name = 'GD02_DISTINTA'"));
            pageSize = file.scalar(QStringLiteral("PRAGMA page_size"));
        }
        QFile pages(damaged);
        QVERIFY(pages.open(QIODevice::ReadWrite) && pages.seek((nodePage - 1) * pageSize));
        pages.write(QByteArray(int(pageSize), '\xff'));
        pages.close();

        const Run corrupt = run({QStringLiteral("--database"), damaged, QStringLiteral("--exit-after-show")},
                                offscreen(), 30000);
        QCOMPARE(corrupt.exitCode, 3);
        QCOMPARE(corrupt.err.count(QStringLiteral("Si è verificato un errore in ")), 1);
        QVERIFY2(corrupt.err.contains(QStringLiteral("database disk image is malformed")),
                 qPrintable(corrupt.err.left(2000)));
        QVERIFY(corrupt.err.contains(QStringLiteral("codice di uscita 3")));

        const QString foreign = folder.filePath(QStringLiteral("altro.sqlite"));
        {
            dbsetup::SqliteFile file(foreign);
            file.exec(QStringLiteral("CREATE TABLE ORDINI (ID INTEGER PRIMARY KEY); INSERT INTO ORDINI VALUES (7)"));
        }
        const QByteArray sum = checksum(foreign);
        const QStringList files = filesIn(folder.path());
        const Run refused = run({QStringLiteral("--database"), foreign, QStringLiteral("--screenshot"),
                                 folder.filePath(QStringLiteral("x.png"))},
                                offscreen(), 30000);
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(QStringLiteral("Il file %1 non è un database delle distinte di classificazione")
                                          .arg(QDir::toNativeSeparators(foreign))),
                 qPrintable(refused.err.left(2000)));
        QCOMPARE(checksum(foreign), sum);
        QCOMPARE(filesIn(folder.path()), files);

        // An ODBC string the compatibility layer is not told about: the T-SQL fails on SQLite.
        if (QFile::exists(odbcDriver())) {
            const QString demo = folder.filePath(QStringLiteral("demo.sqlite"));
            QVERIFY(dbsetup::ensureDemoDatabase(demo));
            const Run odbc = run({QStringLiteral("--odbc"),
                                  QStringLiteral("Driver=%1;Database=%2;").arg(odbcDriver(), demo),
                                  QStringLiteral("--exit-after-show")},
                                 offscreen(), 30000);
            QCOMPARE(odbc.exitCode, 3);
            QCOMPARE(odbc.err.count(QStringLiteral("Si è verificato un errore in ")), 1);
        }
    }

    // The whole path names the file: a ';' in it opens that file, not the part before it.
    void aPathWithASemicolonOpensThatFile()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("ditta;1.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(path));
        const Run opened = run({QStringLiteral("--database"), path, QStringLiteral("--exit-after-show")}, offscreen());
        QCOMPARE(opened.exitCode, 0);
        QCOMPARE(filesIn(folder.path()), QStringList {QStringLiteral("ditta;1.sqlite")});
        const Run again = run({QStringLiteral("--database"), path, QStringLiteral("--exit-after-show")}, offscreen());
        QCOMPARE(again.exitCode, 0);
        QVERIFY(again.out.contains(QStringLiteral("Database: ") + path));
    }

    // A database the user may not write opens read-only and says so, leaving nothing beside it;
    // a company with no row anywhere opens with a notice instead of a silently empty editor.
    void readOnlyAndEmptyThingsSaySo()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("condiviso.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(path));
        const QStringList files = filesIn(folder.path());
        const QByteArray sum = checksum(path);
        // Root may write anything: the program then runs as "nobody"; anyone else loses the
        // write permissions.
        const bool root = geteuid() == 0;
        const QByteArray folderName = QFile::encodeName(folder.path());
        const QByteArray fileName = QFile::encodeName(path);
        chmod(folderName.constData(), root ? 0755 : 0555);
        chmod(fileName.constData(), root ? 0644 : 0444);
        QStringList arguments {QStringLiteral("--database"), path, QStringLiteral("--exit-after-show")};
        QString programPath;
        if (root) {
            arguments = QStringList {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                     QStringLiteral("--clear-groups"), program()}
                + arguments;
            programPath = QStringLiteral("setpriv");
        }
        const Run readOnly = run(arguments, offscreen(), 60000, programPath);
        chmod(folderName.constData(), 0700);
        chmod(fileName.constData(), 0644);
        QVERIFY2(readOnly.exitCode == 0, qPrintable(readOnly.out + readOnly.err));
        QVERIFY(readOnly.out.contains(QStringLiteral("Database: %1 (sola lettura)").arg(path)));
        QVERIFY2(readOnly.err.contains(QStringLiteral("Il database %1 è aperto in sola lettura").arg(path)),
                 qPrintable(readOnly.err));
        QCOMPARE(filesIn(folder.path()), files);
        QCOMPARE(checksum(path), sum);

        const Run nobody = run({QStringLiteral("--database"), path, QStringLiteral("--company"), QStringLiteral("99"),
                                QStringLiteral("--exit-after-show")},
                               offscreen());
        QVERIFY2(nobody.exitCode == 0, qPrintable(nobody.out + nobody.err));
        QVERIFY2(nobody.err.contains(QStringLiteral("La ditta 99 non ha dati in questo database")),
                 qPrintable(nobody.err));
        const Run known = run({QStringLiteral("--database"), path, QStringLiteral("--company"), QStringLiteral("2"),
                               QStringLiteral("--exit-after-show")},
                              offscreen());
        QVERIFY(!known.err.contains(QStringLiteral("non ha dati")));
    }

    // The ODBC password can come from the environment or from a file only the user may read;
    // written into --odbc it still works, with a warning.
    void theOdbcPasswordStaysOffTheCommandLine()
    {
        const Run help = run({QStringLiteral("--help")}, offscreen());
        QVERIFY(help.out.contains(QStringLiteral("DISTINTA_ODBC_PASSWORD")));
        QVERIFY(help.out.contains(QStringLiteral("--odbc-password-file")));
        if (!QFile::exists(odbcDriver()))
            QSKIP("SQLite ODBC driver not installed");

        QTemporaryDir folder;
        const QString demo = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(demo));
        const QString odbc = QStringLiteral("Driver=%1;Database=%2;TSQLCompat=SQLite;").arg(odbcDriver(), demo);
        const QString warning = QStringLiteral("la password scritta in --odbc è visibile agli altri utenti");
        const QStringList headless {QStringLiteral("--exit-after-show")};

        const Run written = run(
            QStringList {QStringLiteral("--odbc"), odbc + QStringLiteral("PWD=segreta;")} + headless, offscreen());
        QCOMPARE(written.exitCode, 0);
        QVERIFY2(written.err.contains(warning), qPrintable(written.err));

        QProcessEnvironment environment = offscreen();
        environment.insert(QStringLiteral("DISTINTA_ODBC_PASSWORD"), QStringLiteral("se;gre}ta"));
        const Run fromEnvironment = run(QStringList {QStringLiteral("--odbc"), odbc} + headless, environment);
        QCOMPARE(fromEnvironment.exitCode, 0);
        QVERIFY(!fromEnvironment.err.contains(warning));
        const Run twice = run(QStringList {QStringLiteral("--odbc"), odbc + QStringLiteral("PWD=x;")} + headless,
                              environment);
        QCOMPARE(twice.exitCode, 1);

        const QString secret = folder.filePath(QStringLiteral("password"));
        QFile file(secret);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("segreta\n");
        file.close();
        const QStringList withFile {QStringLiteral("--odbc"), odbc, QStringLiteral("--odbc-password-file"), secret};
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther));
        const Run shared = run(withFile + headless, offscreen());
        QCOMPARE(shared.exitCode, 1);
        QVERIFY2(shared.err.contains(QStringLiteral("deve appartenere all'utente ed essere leggibile solo da lui")),
                 qPrintable(shared.err));
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
        const Run privateFile = run(withFile + headless, offscreen());
        QCOMPARE(privateFile.exitCode, 0);
        QVERIFY(!privateFile.err.contains(warning));
    }

    void refusesWrongArguments()
    {
        QCOMPARE(run({QStringLiteral("--company"), QStringLiteral("zero")}, offscreen()).exitCode, 1);
        QCOMPARE(run({QStringLiteral("--database"), QStringLiteral("a"), QStringLiteral("--odbc"), QStringLiteral("b")},
                     offscreen())
                     .exitCode,
                 1);
    }
};

QTEST_GUILESS_MAIN(TestShell)
#include "tst_shell.moc"
