#include "db/demodatabase.h"
#include "db/sqlitefile.h"
#include "tests/support/shellrun.h"

#include <QTemporaryDir>
#include <QtTest>

// The check of the classifications without a window: `distinta --check [--type <code>] --csv|--xlsx f`,
// run as a scheduled job runs it.
class TestVerificaShell : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_database = m_folder.filePath(QStringLiteral("demo.sqlite"));

    QStringList csv(const QStringList &arguments, ShellRun &result)
    {
        const QString path = m_folder.filePath(QStringLiteral("verifica.csv"));
        QFile::remove(path);
        result = ShellRun::run(QStringList {QStringLiteral("--database"), m_database} + arguments
                               + QStringList {QStringLiteral("--csv"), path});
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll().mid(3)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    }

private slots:
    // The demo database with a campaign and a contract condition of node 999999, which is gone.
    void initTestCase()
    {
        if (!QFileInfo::exists(ShellRun::program()))
            QSKIP("the distinta program is not built");
        dbsetup::ensureDemoDatabase(m_database);
        dbsetup::SqliteFile file(m_database);
        file.exec(QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) "
                                 "SELECT 1, 999999, MIN(MG94_ID) FROM MG94_CAMPANAG WHERE MG94_DITTA_CG18 = 1"));
    }

    // Every finding of the company, one a line under the columns' captions; with --type only the
    // type's, and the rows of nodes that are gone belong to none.
    void theReportIsWritten()
    {
        ShellRun result;
        const QStringList all = csv({QStringLiteral("--check")}, result);
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(!result.err.contains(QStringLiteral("distinta:")), qPrintable(result.err));
        QVERIFY(!all.isEmpty());
        QCOMPARE(all.first(), QStringLiteral("Controllo;Distinta;Nodo;Soggetto;Dettaglio"));
        const QStringList promozioni = all.filter(QStringLiteral("Promozione senza nodo;;999999;;La campagna "));
        QCOMPARE(promozioni.size(), 1);
        QVERIFY(promozioni.first().endsWith(QStringLiteral(" è assegnata al nodo 999999, che non esiste.")));

        const QStringList one = csv({QStringLiteral("--check"), QStringLiteral("--type"), QStringLiteral("cli-gdo")},
                                    result);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(one.first(), all.first());
        QVERIFY(one.filter(QStringLiteral("Promozione senza nodo")).isEmpty());
        for (const QString &line : one.mid(1))
            QVERIFY2(line.contains(QStringLiteral(";CLI-GDO ")) || line.startsWith(QStringLiteral("Soggetto senza")),
                     qPrintable(line));
    }

    // What cannot be done is told once on the standard error stream, and nothing is written.
    void refusals()
    {
        ShellRun result;
        QCOMPARE(csv({QStringLiteral("--check"), QStringLiteral("--type"), QStringLiteral("NESSUNA")}, result),
                 QStringList());
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.err.count(QStringLiteral("La distinta \"NESSUNA\" non esiste nella ditta 1.")), 1);

        QCOMPARE(csv({QStringLiteral("--check"), QStringLiteral("--export"), QStringLiteral("CLI-GDO")}, result),
                 QStringList());
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.endsWith(
                     QStringLiteral("Indicare una sola tra --print, --export, --history, --compare e --check.\n")),
                 qPrintable(result.err));
    }
};

QTEST_MAIN(TestVerificaShell)
#include "tst_verifica_shell.moc"
