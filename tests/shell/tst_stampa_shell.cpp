#include "db/demodatabase.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/hostglobalservices.h"
#include "framework/report/defaultreportengine.h"
#include "module/clsgd_distinta.h"
#include "platform/db/recordset.h"
#include "tests/support/pdftext.h"
#include "tests/support/scriptedhost.h"
#include "tests/support/shellrun.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

// The print without a window: `distinta --print <type> [--level N] --pdf out.pdf`, run as a
// scheduled job would run it, with no display at all.
class TestStampaShell : public QObject
{
    Q_OBJECT

    using Run = ShellRun;
    static QString program() { return ShellRun::program(); }
    static Run run(const QStringList &arguments, bool offscreen = false) { return ShellRun::run(arguments, offscreen); }

    // The work rows of this workstation and user: level text, subject, period.
    static QStringList workRows(const db::ConnectionPtr &connection)
    {
        const QString key = distinta::Stampa::NomeComputer() + distinta::Stampa::NomeUtente();
        const db::RecordsetPtr rows = connection->openRecordset(
            QStringLiteral("SELECT GD04_LIVELLO, GD04_CLIFOR_CG44, GD04_DATAINIZIOVAL, GD04_DATAFINEVAL "
                           "FROM GD04_STDISTINTA WHERE GD04_KEY = '%1' ORDER BY GD04_ID")
                .arg(key));
        QStringList result;
        for (int row = 0; row < rows->recordCount(); ++row) {
            QStringList values;
            for (int field = 0; field < rows->fieldCount(); ++field)
                values << rows->valueAt(row, field).toString();
            result << values.join(QLatin1Char(' '));
        }
        return result;
    }

    // The PDF's lines, the time of the print left out.
    static QStringList pdfLines(const QString &path)
    {
        const PdfText text(path);
        if (!text.isValid())
            return {text.error()};
        QStringList lines = text.allLines();
        static const QRegularExpression when(QStringLiteral("Stampato il \\S+ alle \\S+ "));
        for (QString &line : lines)
            line.remove(when);
        return lines;
    }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(program()))
            QSKIP("the distinta program is not built");
        if (!PdfText::toolAvailable())
            QFAIL("pdftotext is missing: scripts/setup-debian.sh installs poppler-utils");
    }

    // The same rows and the same pages as the editor's print button, with no display.
    void printsTheListAsTheEditorDoes()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database)); // a run without a user never makes one
        const QString pdf = folder.filePath(QStringLiteral("gdo.pdf"));
        const Run result = run(
            {QStringLiteral("--database"), database, QStringLiteral("--print"), QStringLiteral("cli-gdo"),
             QStringLiteral("--level"), QStringLiteral("1"), QStringLiteral("--pdf"), pdf,
             QStringLiteral("--printed-by"), QStringLiteral("Mario Rossi"), QStringLiteral("--printed-for"),
             QStringLiteral("Ufficio vendite"), QStringLiteral("--notes"), QStringLiteral("Controllo mensile")});
        QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
        QVERIFY2(result.out.contains(QStringLiteral("PDF scritto: ") + pdf), qPrintable(result.out));
        const QStringList headless = pdfLines(pdf);
        QVERIFY2(headless.contains(QStringLiteral("Eseguito da: Mario Rossi Destinato a: Ufficio vendite")),
                 qPrintable(headless.join('\n')));
        QVERIFY(headless.contains(QStringLiteral("Fino al livello: 1")));
        const QStringList headlessRows = workRows(db::Connection::open(dbsetup::sqliteConnectionString(database)));
        QVERIFY(!headlessRows.isEmpty());
        for (const QString &row : headlessRows)
            QVERIFY2(row.startsWith(QStringLiteral(".1 ")) || row.startsWith(QStringLiteral("..2 ")), qPrintable(row));

        // The editor, through its entry class, on the same demo data.
        ScriptedHost host(TestDatabase::DemoData);
        const QString editorPdf = folder.filePath(QStringLiteral("editor.pdf"));
        host.globals().setReportEngineFactory([&] {
            auto engine = std::make_unique<fw::DefaultReportEngine>(QStringLiteral("tester"));
            engine->setInteractive(false);
            engine->setRunMode(fw::ReportEngine::RunMode::Pdf);
            engine->setOutputFile(editorPdf);
            engine->setPrintValues(QStringLiteral("Mario Rossi"), QStringLiteral("Ufficio vendite"),
                                   QStringLiteral("Controllo mensile"));
            return engine;
        });
        const std::unique_ptr<CLSGD_DISTINTA> entry = host.createEntryClass();
        QVERIFY(entry->printList(QStringLiteral("CLI-GDO"), 1, std::nullopt));
        QCOMPARE(workRows(host.database().connection()), headlessRows);
        QCOMPARE(pdfLines(editorPdf), headless);
    }

    void saysWhyNothingWasPrinted()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database)); // a run without a user never makes one
        const Run unknown = run({QStringLiteral("--database"), database, QStringLiteral("--print"),
                                 QStringLiteral("CLI-NONE"), QStringLiteral("--pdf"),
                                 folder.filePath(QStringLiteral("x.pdf"))});
        QCOMPARE(unknown.exitCode, 1);
        QVERIFY2(unknown.err.contains(QStringLiteral("La distinta \"CLI-NONE\" non esiste nella ditta 1.")),
                 qPrintable(unknown.err));
        QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("x.pdf"))));

        const QString nowhere = folder.filePath(QStringLiteral("manca/x.pdf"));
        const Run unwritable = run({QStringLiteral("--database"), database, QStringLiteral("--print"),
                                    QStringLiteral("CLI-GDO"), QStringLiteral("--pdf"), nowhere});
        QCOMPARE(unwritable.exitCode, 1);
        QVERIFY2(unwritable.err.contains(QStringLiteral("Impossibile scrivere il file PDF \"%1\"").arg(nowhere)),
                 qPrintable(unwritable.err));
        QVERIFY(workRows(db::Connection::open(dbsetup::sqliteConnectionString(database))).isEmpty());

        const Run empty = run({QStringLiteral("--database"), database, QStringLiteral("--print"),
                               QStringLiteral("CLI-EXP"), QStringLiteral("--pdf"),
                               folder.filePath(QStringLiteral("x.pdf"))});
        QCOMPARE(empty.exitCode, 1);
        QVERIFY2(empty.err.contains(QStringLiteral("La distinta \"CLI-EXP\" non ha nodi da stampare.")),
                 qPrintable(empty.err));

        // As of a day, the list prints the nodes valid then: in 1900, none.
        const Run before = run({QStringLiteral("--database"), database, QStringLiteral("--print"),
                                QStringLiteral("CLI-GDO"), QStringLiteral("--date"), QStringLiteral("01/01/1900"),
                                QStringLiteral("--pdf"), folder.filePath(QStringLiteral("x.pdf"))});
        QCOMPARE(before.exitCode, 1);
        QVERIFY2(before.err.contains(
                     QStringLiteral("La distinta \"CLI-GDO\" non ha nodi validi al 01/01/1900 da stampare.")),
                 qPrintable(before.err));
        QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("x.pdf"))));
        const Run asOfADay = run({QStringLiteral("--database"), database, QStringLiteral("--print"),
                                  QStringLiteral("CLI-GDO"), QStringLiteral("--date"), QStringLiteral("01/06/2024"),
                                  QStringLiteral("--pdf"), folder.filePath(QStringLiteral("x.pdf"))});
        QVERIFY2(asOfADay.exitCode == 0, qPrintable(asOfADay.err));
        QVERIFY(QFileInfo::exists(folder.filePath(QStringLiteral("x.pdf"))));
    }

    void printOptionsGoTogether()
    {
        const QString pdf = QStringLiteral("x.pdf");
        const Run noPdf = run({QStringLiteral("--print"), QStringLiteral("CLI-GDO")}, true);
        QCOMPARE(noPdf.exitCode, 1);
        QVERIFY(noPdf.err.contains(QStringLiteral("Con --print indicare con --pdf il file PDF da scrivere.")));
        const Run noPrint = run({QStringLiteral("--pdf"), pdf}, true);
        QCOMPARE(noPrint.exitCode, 1);
        QVERIFY(noPrint.err.contains(QStringLiteral("L'opzione --pdf vale solo con --print.")));
        const Run badLevel = run({QStringLiteral("--print"), QStringLiteral("CLI-GDO"), QStringLiteral("--pdf"), pdf,
                                  QStringLiteral("--level"), QStringLiteral("due")},
                                 true);
        QCOMPARE(badLevel.exitCode, 1);
        QVERIFY(badLevel.err.contains(QStringLiteral("Livello non valido: due (un numero da 0 in su).")));
    }
};

QTEST_MAIN(TestStampaShell)
#include "tst_stampa_shell.moc"
