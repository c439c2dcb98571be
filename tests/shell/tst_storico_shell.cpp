#include "db/demodatabase.h"
#include "db/sqlitefile.h"
#include "tests/support/shellrun.h"
#include "tests/support/xlsxsheet.h"

#include <QTemporaryDir>
#include <QtTest>

// The history and the comparison of two days without a window:
// `distinta --history <type> [--from d] [--to d] [--user U] --csv|--xlsx f` and
// `distinta --compare <type> --from A --to B --csv|--xlsx f`, run as a scheduled job runs them.
class TestStoricoShell : public QObject
{
    Q_OBJECT

    // The demo database, with two changes of another program on CLI-GDO (type 1): a node's end
    // date by "rossi", a node's description by "bianchi".
    struct Demo
    {
        Demo()
        {
            dbsetup::ensureDemoDatabase(database);
            dbsetup::SqliteFile file(database);
            file.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = '2025-06-30 00:00:00', "
                                     "GD02_UTENTEVAR = 'rossi' WHERE GD02_ID = (SELECT MIN(GD02_ID) FROM GD02_DISTINTA "
                                     "WHERE GD02_ID_GD01 = 1 AND GD02_DATAFINEVAL > '2025-12-31')"));
            file.exec(
                QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Sede; \"nuova\"', GD02_UTENTEVAR = 'bianchi' "
                               "WHERE GD02_ID = (SELECT MAX(GD02_ID) FROM GD02_DISTINTA WHERE GD02_ID_GD01 = 1)"));
        }
        QStringList csv(const QStringList &arguments, int expectedExit = 0)
        {
            const QString path = folder.filePath(QStringLiteral("out.csv"));
            QFile::remove(path);
            const ShellRun result = ShellRun::run(QStringList {QStringLiteral("--database"), database} + arguments
                                                  + QStringList {QStringLiteral("--csv"), path});
            exitCode = result.exitCode;
            err = result.err;
            QFile file(path);
            if (expectedExit != result.exitCode || !file.open(QIODevice::ReadOnly))
                return {QStringLiteral("exit %1: %2").arg(result.exitCode).arg(result.err)};
            return QString::fromUtf8(file.readAll().mid(3)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        }

        QTemporaryDir folder;
        QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        int exitCode = -1;
        QString err;
    };

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(ShellRun::program()))
            QSKIP("the distinta program is not built");
    }

    // Every change of the classification in the days asked, one field a line, newest first;
    // --user keeps one user's; a field holding the separator is quoted.
    void historyOfAClassification()
    {
        Demo demo;
        const QString today = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        QStringList lines = demo.csv({QStringLiteral("--history"), QStringLiteral("cli-gdo")});
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0),
                 QStringLiteral("Data e ora;Utente;Gruppo;Computer;Operazione;Distinta;Soggetto;Campo;"
                                "Prima;Dopo"));
        QVERIFY2(lines.at(1).startsWith(today + QLatin1Char(' ')), qPrintable(lines.at(1)));
        QVERIFY2(lines.at(1).contains(QStringLiteral(";bianchi;")), qPrintable(lines.at(1)));
        QVERIFY2(lines.at(1).contains(QStringLiteral(";Modifica esterna;CLI-GDO - Grande distribuzione organizzata;")),
                 qPrintable(lines.at(1)));
        QVERIFY2(lines.at(1).endsWith(QStringLiteral(";Descrizione;;\"Sede; \"\"nuova\"\"\"")),
                 qPrintable(lines.at(1)));
        QVERIFY2(lines.at(2).endsWith(QStringLiteral(";Data fine;31/12/2099;30/06/2025")), qPrintable(lines.at(2)));

        lines = demo.csv({QStringLiteral("--history"), QStringLiteral("CLI-GDO"), QStringLiteral("--user"),
                          QStringLiteral("rossi"), QStringLiteral("--from"), today, QStringLiteral("--to"), today});
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines.at(1).contains(QStringLiteral(";rossi;")));
        // Days before the changes: the heading alone.
        QCOMPARE(demo.csv({QStringLiteral("--history"), QStringLiteral("CLI-GDO"), QStringLiteral("--to"),
                           QStringLiteral("01/01/2025")})
                     .size(),
                 1);
    }

    // The differences between two days in a file; each line says what and where.
    void comparisonOfTwoDays()
    {
        Demo demo;
        const QString tomorrow = QDate::currentDate().addDays(1).toString(QStringLiteral("dd/MM/yyyy"));
        const QStringList lines = demo.csv({QStringLiteral("--compare"), QStringLiteral("CLI-GDO"),
                                            QStringLiteral("--from"), QStringLiteral("01/06/2025"),
                                            QStringLiteral("--to"), QStringLiteral("01/07/2025")});
        QCOMPARE(lines.at(0), QStringLiteral("Differenza;Soggetto;Dettaglio"));
        QVERIFY(lines.size() > 1);
        QVERIFY2(lines.filter(QRegularExpression(QStringLiteral("^Terminato;\\d+ .*;.* al 30/06/2025$"))).size() == 1,
                 qPrintable(lines.join(u'\n')));

        // Bad input: said on the standard error, nothing written, exit 1.
        for (const QStringList &arguments :
             {QStringList {QStringLiteral("--compare"), QStringLiteral("CLI-GDO"), QStringLiteral("--from"), tomorrow,
                           QStringLiteral("--to"), QStringLiteral("01/01/2025")},
              QStringList {QStringLiteral("--compare"), QStringLiteral("CLI-GDO"), QStringLiteral("--from"),
                           QStringLiteral("29/02/2025"), QStringLiteral("--to"), tomorrow},
              QStringList {QStringLiteral("--compare"), QStringLiteral("CLI-GDO"), QStringLiteral("--from"),
                           QStringLiteral("01/01/2025")}}) {
            const QStringList output = demo.csv(arguments, 1);
            QCOMPARE(demo.exitCode, 1);
            QVERIFY2(!QFile::exists(demo.folder.filePath(QStringLiteral("out.csv"))), qPrintable(output.join(u'\n')));
            QVERIFY(!demo.err.trimmed().isEmpty());
        }
        // A classification that does not exist: said, no file.
        demo.csv({QStringLiteral("--history"), QStringLiteral("NESSUNA")}, 1);
        QCOMPARE(demo.exitCode, 1);
        QVERIFY2(demo.err.contains(QStringLiteral("La distinta \"NESSUNA\" non esiste nella ditta 1.")),
                 qPrintable(demo.err));
    }
};

QTEST_GUILESS_MAIN(TestStoricoShell)
#include "tst_storico_shell.moc"
