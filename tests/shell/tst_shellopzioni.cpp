#include "db/demodatabase.h"

// The program's own words and the size of its window: the help entirely in Italian, pictures at
// the size asked for, a size that is not WxH refused with a message.

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestShellOpzioni : public QObject
{
    Q_OBJECT

    static QString program()
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

    static Run run(const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("DISTINTA_LAYOUT_FILE"), QString());
        environment.remove(QStringLiteral("DISTINTA_PLUGIN_DIR"));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program(), arguments);
        const bool finished = process.waitForFinished(60000);
        if (!finished)
            process.kill();
        return {finished ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(program()))
            QSKIP("the distinta program is not built");
    }

    void helpIsItalian()
    {
        const Run help = run({QStringLiteral("--help")});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.out.startsWith(QLatin1String("Utilizzo: ")));
        QVERIFY(help.out.contains(QLatin1String("[opzioni]")));
        QVERIFY(help.out.contains(QLatin1String("--size <LARGHEZZAxALTEZZA>")));
        for (const char *english : {"Usage", "Options", "options]", "Displays", "Arguments", "version information"})
            QVERIFY2(!help.out.contains(QLatin1String(english)), english);
    }

    void sizeOfThePicture()
    {
        QTemporaryDir folder;
        const QString picture = folder.filePath(QStringLiteral("editor.png"));
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database));
        const Run shot = run({QStringLiteral("--database"), database, QStringLiteral("--screenshot"), picture,
                              QStringLiteral("--size"), QStringLiteral("1024x700")});
        QCOMPARE(shot.exitCode, 0);
        QCOMPARE(QImage(picture).size(), QSize(1024, 700));
    }

    void sizeThatIsNotWidthByHeight_data()
    {
        QTest::addColumn<QString>("size");
        for (const char *wrong :
             {"1920", "1920x", "x1080", "1920*1080", "abcxdef", "19x10", "1920x1080x2", "99999x600"})
            QTest::newRow(wrong) << QString::fromLatin1(wrong);
    }
    void sizeThatIsNotWidthByHeight()
    {
        QFETCH(QString, size);
        const Run refused = run(
            {QStringLiteral("--screenshot"), QStringLiteral("x.png"), QStringLiteral("--size"), size});
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(QStringLiteral("Dimensioni non valide: %1").arg(size)), qPrintable(refused.err));
    }
};

QTEST_GUILESS_MAIN(TestShellOpzioni)
#include "tst_shellopzioni.moc"
