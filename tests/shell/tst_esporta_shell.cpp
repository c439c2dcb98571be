#include "db/demodatabase.h"
#include "module/clsgd_distinta.h"
#include "tests/support/scriptedhost.h"
#include "tests/support/shellrun.h"
#include "tests/support/xlsxsheet.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The export without a window: `distinta --export <type> [--level N] [--date d] --xlsx|--csv f`,
// run as a scheduled job would run it, with no display at all.
class TestEsportaShell : public QObject
{
    Q_OBJECT

    using Run = ShellRun;
    static QString program() { return ShellRun::program(); }
    static Run run(const QStringList &arguments, bool offscreen = false) { return ShellRun::run(arguments, offscreen); }

    static QStringList righe(const XlsxSheet &sheet)
    {
        QStringList rows;
        for (const XlsxSheet::Row &row : sheet.rows()) {
            QStringList cells;
            for (const XlsxSheet::Cell &cell : row.cells)
                cells << cell.ref + QLatin1Char('=') + cell.value;
            rows << QString::number(row.outlineLevel) + QLatin1Char(' ') + cells.join(QLatin1Char(' '));
        }
        return rows;
    }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(program()))
            QSKIP("the distinta program is not built");
        if (!XlsxSheet::toolAvailable())
            QFAIL("unzip is missing: scripts/setup-debian.sh installs it");
    }

    // The same workbook as the editor's export of the same list, with no display.
    void exportsTheListAsTheEditorDoes()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database)); // a run without a user never makes one
        const QString xlsx = folder.filePath(QStringLiteral("gdo.xlsx"));
        const Run result = run({QStringLiteral("--database"), database, QStringLiteral("--export"),
                                QStringLiteral("cli-gdo"), QStringLiteral("--level"), QStringLiteral("1"),
                                QStringLiteral("--date"), QStringLiteral("01/06/2024"), QStringLiteral("--xlsx"),
                                xlsx});
        QVERIFY2(result.exitCode == 0, qPrintable(result.out + result.err));
        QVERIFY2(result.out.contains(QStringLiteral("File scritto: ") + xlsx), qPrintable(result.out));
        const XlsxSheet headless(xlsx);
        QVERIFY2(headless.isValid(), qPrintable(headless.error()));
        QVERIFY(headless.rows().size() > 2);
        for (const XlsxSheet::Row &row : headless.rows())
            QVERIFY(row.outlineLevel <= 1);

        ScriptedHost host(TestDatabase::DemoData);
        const std::unique_ptr<CLSGD_DISTINTA> entry = host.createEntryClass();
        const QString editor = folder.filePath(QStringLiteral("editor.xlsx"));
        QVERIFY(
            entry->exportList(QStringLiteral("CLI-GDO"), 1, QDate(2024, 6, 1), editor, fw::ExportFile::Format::Xlsx));
        QCOMPARE(righe(XlsxSheet(editor)), righe(headless));

        const QString csv = folder.filePath(QStringLiteral("gdo.csv"));
        const Run asCsv = run({QStringLiteral("--database"), database, QStringLiteral("--export"),
                               QStringLiteral("CLI-GDO"), QStringLiteral("--csv"), csv});
        QVERIFY2(asCsv.exitCode == 0, qPrintable(asCsv.err));
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readLine().startsWith("\xEF\xBB\xBFLivello;Codice;Ragione Sociale;Data inizio;Data fine;"));
    }

    void saysWhyNothingWasExported()
    {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("demo.sqlite"));
        QVERIFY(dbsetup::ensureDemoDatabase(database)); // a run without a user never makes one
        const QString out = folder.filePath(QStringLiteral("x.xlsx"));
        const Run unknown = run({QStringLiteral("--database"), database, QStringLiteral("--export"),
                                 QStringLiteral("CLI-NONE"), QStringLiteral("--xlsx"), out});
        QCOMPARE(unknown.exitCode, 1);
        QVERIFY2(unknown.err.contains(QStringLiteral("La distinta \"CLI-NONE\" non esiste nella ditta 1.")),
                 qPrintable(unknown.err));
        QVERIFY(!QFileInfo::exists(out));

        const QString nowhere = folder.filePath(QStringLiteral("manca/x.xlsx"));
        const Run unwritable = run({QStringLiteral("--database"), database, QStringLiteral("--export"),
                                    QStringLiteral("CLI-GDO"), QStringLiteral("--xlsx"), nowhere});
        QCOMPARE(unwritable.exitCode, 1);
        QVERIFY2(unwritable.err.contains(
                     QStringLiteral("Impossibile scrivere il file \"%1\": la cartella non esiste.").arg(nowhere)),
                 qPrintable(unwritable.err));

        const Run empty = run({QStringLiteral("--database"), database, QStringLiteral("--export"),
                               QStringLiteral("CLI-GDO"), QStringLiteral("--date"), QStringLiteral("01/01/1900"),
                               QStringLiteral("--csv"), out});
        QCOMPARE(empty.exitCode, 1);
        QVERIFY2(empty.err.contains(
                     QStringLiteral("La distinta \"CLI-GDO\" non ha nodi validi al 01/01/1900 da esportare.")),
                 qPrintable(empty.err));
        QVERIFY(!QFileInfo::exists(out));
    }

    void exportOptionsGoTogether()
    {
        const auto fails = [](const QStringList &arguments, const QString &message) {
            const Run result = run(arguments, true);
            QCOMPARE(result.exitCode, 1);
            QVERIFY2(result.err.contains(message), qPrintable(result.err));
        };
        fails({QStringLiteral("--export"), QStringLiteral("CLI-GDO")},
              QStringLiteral("Con --export indicare il file da scrivere con --xlsx oppure con --csv (uno solo)."));
        fails({QStringLiteral("--export"), QStringLiteral("CLI-GDO"), QStringLiteral("--xlsx"),
               QStringLiteral("a.xlsx"), QStringLiteral("--csv"), QStringLiteral("a.csv")},
              QStringLiteral("Con --export indicare il file da scrivere con --xlsx oppure con --csv (uno solo)."));
        fails({QStringLiteral("--csv"), QStringLiteral("a.csv")},
              QStringLiteral("L'opzione --csv vale solo con --export, --history o --compare."));
        fails({QStringLiteral("--export"), QStringLiteral("CLI-GDO"), QStringLiteral("--csv"), QStringLiteral("a.csv"),
               QStringLiteral("--date"), QStringLiteral("31/02/2024")},
              QStringLiteral("La data 31/02/2024 non esiste."));
        fails({QStringLiteral("--export"), QStringLiteral("CLI-GDO"), QStringLiteral("--csv"), QStringLiteral("a.csv"),
               QStringLiteral("--date"), QStringLiteral("2024-02-01")},
              QStringLiteral("Data non valida: 2024-02-01 (scrivere gg/mm/aaaa)."));
        for (const QString &alone : {QStringLiteral("--date"), QStringLiteral("--level")})
            fails({alone, QStringLiteral("1")},
                  QStringLiteral("L'opzione %1 vale solo con --print o con --export.").arg(alone));
        fails({QStringLiteral("--export"), QStringLiteral("CLI-GDO"), QStringLiteral("--csv"), QStringLiteral("a.csv"),
               QStringLiteral("--level"), QStringLiteral("due")},
              QStringLiteral("Livello non valido: due (un numero da 0 in su)."));
    }
};

QTEST_MAIN(TestEsportaShell)
#include "tst_esporta_shell.moc"
