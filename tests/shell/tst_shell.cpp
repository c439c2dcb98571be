#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The program a user starts, run as a separate process.
class TestShell : public QObject
{
    Q_OBJECT

    QString program() const
    {
        return qEnvironmentVariable("DISTINTA_BIN_DIR", QCoreApplication::applicationDirPath())
               + QStringLiteral("/distinta");
    }

    struct Run
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    Run run(const QStringList &arguments, const QProcessEnvironment &environment)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program(), arguments);
        const bool finished = process.waitForFinished(300000);
        if (!finished)
            process.kill();
        return {finished ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    static QProcessEnvironment offscreen()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.remove(QStringLiteral("DISTINTA_PLUGIN_DIR"));
        return environment;
    }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(program()))
            QSKIP("the distinta program is not built");
    }

    void opensTheEditorOnANewDemoDatabase()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        const Run result = run({QStringLiteral("--database"), database, QStringLiteral("--exit-after-show"),
                                QStringLiteral("--company"), QStringLiteral("1")},
                               offscreen());
        QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
        QVERIFY2(result.out.contains(QStringLiteral("Database dimostrativo creato: ") + database), qPrintable(result.out));
        QVERIFY2(result.out.contains(QStringLiteral("Finestra aperta: FRMGD_DISTINTA \"Distinta di classificazione\" (pronta)")),
                 qPrintable(result.out));
        QVERIFY2(!result.err.contains(QStringLiteral("errore")), qPrintable(result.err));

        const Run again = run({QStringLiteral("--database"), database, QStringLiteral("--exit-after-show")}, offscreen());
        QCOMPARE(again.exitCode, 0);
        QVERIFY(again.out.contains(QStringLiteral("Database: ") + database));   // kept, not created again
    }

    void namesAComponentThatIsNotInstalled()
    {
        QTemporaryDir folder;
        QProcessEnvironment environment = offscreen();
        environment.insert(QStringLiteral("DISTINTA_PLUGIN_DIR"), folder.path());
        const Run result = run({QStringLiteral("--database"), folder.filePath(QStringLiteral("d.sqlite")),
                                QStringLiteral("--exit-after-show")},
                               environment);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("Il componente \"VRAX_DISTINTA.CLSGD_DISTINTA\" non è installato.")),
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

        const Run help = run({QStringLiteral("--help")}, environment);   // help needs no display
        QCOMPARE(help.exitCode, 0);
        for (const char *option : {"--company", "--user", "--group", "--database", "--odbc", "--exit-after-show",
                                   "--screenshot"})
            QVERIFY2(help.out.contains(QLatin1String(option)), option);
    }

    void refusesWrongArguments()
    {
        QCOMPARE(run({QStringLiteral("--company"), QStringLiteral("zero")}, offscreen()).exitCode, 1);
        QCOMPARE(run({QStringLiteral("--database"), QStringLiteral("a"), QStringLiteral("--odbc"), QStringLiteral("b")},
                     offscreen()).exitCode, 1);
    }
};

QTEST_GUILESS_MAIN(TestShell)
#include "tst_shell.moc"
