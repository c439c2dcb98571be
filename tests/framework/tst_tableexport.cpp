#include "framework/export/csvtablewriter.h"
#include "framework/export/exportfile.h"
#include "framework/export/xlsxtablewriter.h"
#include "tests/support/xlsxsheet.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

// The files an export writes, read back: CSV as Italian spreadsheets read it, XLSX through its
// XML (outline levels, dates, numbers, frozen header, widths); and nothing left behind, nor an
// older file changed, when a writer does not finish.
class TestTableExport : public QObject
{
    Q_OBJECT

    static QList<fw::ExportColumn> colonne()
    {
        return {{QStringLiteral("Codice"), fw::ExportCellKind::Number},
                {QStringLiteral("Ragione Sociale"), fw::ExportCellKind::Text},
                {QStringLiteral("Data inizio"), fw::ExportCellKind::Date}};
    }

    static void scrivi(fw::TableWriter &writer, const QString &path)
    {
        writer.open(path, QStringLiteral("CLI-A Rete: nord/sud"), colonne());
        writer.writeRow(0, {1001, QStringLiteral("Alfa; \"Beta\" S.p.A."), QDate(2024, 1, 1)});
        writer.writeRow(1, {1002, QStringLiteral("Zakład Łódź Ωmega"), QDate(2099, 12, 31)});
        writer.writeRow(2, {1003, QStringLiteral("Riga\nseconda"), QVariant()});
        writer.writeRow(9, {1004, QString(), QDate(2000, 2, 29)});
        writer.commit();
    }

    static QByteArray contenuto(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void csvIsWhatItalianSpreadsheetsOpen()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("distinta.csv"));
        fw::CsvTableWriter writer;
        scrivi(writer, path);
        const QByteArray expected = QByteArrayLiteral("\xEF\xBB\xBF")
            + QStringLiteral("Livello;Codice;Ragione Sociale;Data inizio\r\n"
                             "1;1001;\"Alfa; \"\"Beta\"\" S.p.A.\";01/01/2024\r\n"
                             "2;1002;Zakład Łódź Ωmega;31/12/2099\r\n"
                             "3;1003;\"Riga\nseconda\";\r\n"
                             "10;1004;;29/02/2000\r\n")
                  .toUtf8();
        QCOMPARE(contenuto(path), expected);
    }

    void xlsxRowsGroupLikeTheTree()
    {
        if (!XlsxSheet::toolAvailable())
            QFAIL("unzip is missing: scripts/setup-debian.sh installs it");
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("distinta.xlsx"));
        fw::XlsxTableWriter writer;
        scrivi(writer, path);
        const XlsxSheet sheet(path);
        QVERIFY2(sheet.isValid(), qPrintable(sheet.error()));
        QCOMPARE(sheet.rows().size(), 5);
        QVERIFY(QFileInfo(path).permissions() & QFileDevice::ReadOther); // not the temporary file's

        // Header: bold, frozen; outline summary above the details.
        const XlsxSheet::Row &header = sheet.rows().at(0);
        QCOMPARE(header.value(QStringLiteral("A")), QStringLiteral("Livello"));
        QCOMPARE(header.value(QStringLiteral("C")), QStringLiteral("Ragione Sociale"));
        QCOMPARE(header.outlineLevel, 0);
        QVERIFY(sheet.sheetXml().contains(QLatin1String("ySplit=\"1\"")));
        QVERIFY(sheet.sheetXml().contains(QLatin1String("state=\"frozen\"")));
        QVERIFY(sheet.sheetXml().contains(QLatin1String("summaryBelow=\"0\"")));
        QVERIFY(sheet.workbookXml().contains(QLatin1String("name=\"CLI-A Rete nordsud\"")));

        // Levels: Excel's outline stops at 7, the level column keeps the tree's own.
        QList<int> outline;
        QStringList levels;
        for (const XlsxSheet::Row &row : sheet.rows().mid(1)) {
            outline << row.outlineLevel;
            levels << row.value(QStringLiteral("A"));
        }
        QCOMPARE(outline, (QList<int> {0, 1, 2, 7}));
        QCOMPARE(levels, (QStringList {"1", "2", "3", "10"}));

        // Codes are numbers, texts keep every character, dates are serial days shown dd/mm/yyyy.
        const XlsxSheet::Row &first = sheet.rows().at(1);
        const XlsxSheet::Cell &code = first.cells.at(1);
        QCOMPARE(code.type, QStringLiteral("n"));
        QCOMPARE(code.value, QStringLiteral("1001"));
        QCOMPARE(first.value(QStringLiteral("C")), QStringLiteral("Alfa; \"Beta\" S.p.A."));
        QCOMPARE(sheet.rows().at(2).value(QStringLiteral("C")), QStringLiteral("Zakład Łódź Ωmega"));
        const XlsxSheet::Cell &date = first.cells.at(3);
        QCOMPARE(date.type, QStringLiteral("n"));
        QCOMPARE(date.value.toDouble(), 45292.0); // 1 January 2024
        QCOMPARE(sheet.numberFormat(date.style), QStringLiteral("dd/mm/yyyy"));
        QCOMPARE(sheet.rows().at(4).value(QStringLiteral("D")).toDouble(), 36585.0); // 29 February 2000
        QCOMPARE(sheet.rows().at(3).value(QStringLiteral("D")), QString());

        // Widths follow the longest text of each column, header included (Excel stores them
        // with a little padding of its own).
        QVERIFY(qAbs(sheet.columnWidth(2) - (QStringLiteral("Alfa; \"Beta\" S.p.A.").size() + 2)) < 1);
        QVERIFY(qAbs(sheet.columnWidth(1) - 8) < 1); // "Codice" is longer than the codes
    }

    // A writer dropped before commit() (a cancel, a failure) leaves the older file and no
    // temporary one; a path that cannot be written is told before any work.
    void anUnfinishedExportChangesNothing()
    {
        QTemporaryDir folder;
        for (const QString &name : {QStringLiteral("vecchio.xlsx"), QStringLiteral("vecchio.csv")}) {
            const QString path = folder.filePath(name);
            {
                QFile old(path);
                QVERIFY(old.open(QIODevice::WriteOnly));
                old.write("contenuto di prima");
            }
            {
                std::unique_ptr<fw::TableWriter> writer;
                if (name.endsWith(QLatin1String("xlsx")))
                    writer = std::make_unique<fw::XlsxTableWriter>();
                else
                    writer = std::make_unique<fw::CsvTableWriter>();
                writer->open(path, QStringLiteral("X"), colonne());
                writer->writeRow(0, {1, QStringLiteral("a"), QDate(2024, 1, 1)});
            }
            QCOMPARE(contenuto(path), QByteArray("contenuto di prima"));
        }
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);

        QCOMPARE(fw::ExportFile::problem(folder.filePath(QStringLiteral("manca/x.xlsx"))),
                 QStringLiteral("Impossibile scrivere il file \"%1\": la cartella non esiste.")
                     .arg(QDir::toNativeSeparators(folder.filePath(QStringLiteral("manca/x.xlsx")))));
        QCOMPARE(fw::ExportFile::problem(folder.path()),
                 QStringLiteral("Impossibile scrivere il file \"%1\": è una cartella.")
                     .arg(QDir::toNativeSeparators(folder.path())));
        QCOMPARE(fw::ExportFile::problem(QStringLiteral("  ")),
                 QStringLiteral("Non è stato indicato il file da scrivere."));
        QVERIFY(fw::ExportFile::problem(folder.filePath(QStringLiteral("nuovo.xlsx"))).isEmpty());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);

        fw::XlsxTableWriter writer;
        QVERIFY_THROWS_EXCEPTION(
            std::runtime_error,
            writer.open(folder.filePath(QStringLiteral("manca/x.xlsx")), QStringLiteral("X"), colonne()));
    }

    // The name proposed for a classification's file ends on a word before its extension.
    void fileNamesFromTitles()
    {
        QCOMPARE(fw::ExportFile::fileNameFor(QStringLiteral("CLI-HOR-Canale Ho.Re.Ca.")),
                 QStringLiteral("CLI-HOR-Canale Ho.Re.Ca"));
        QCOMPARE(fw::ExportFile::fileNameFor(QStringLiteral("A/B: \"x\" <y>|z?* . ")),
                 QStringLiteral("A_B_ _x_ _y__z__"));
        QCOMPARE(fw::ExportFile::fileNameFor(QStringLiteral("CLI-ALI-Rete al 2025-06-30")),
                 QStringLiteral("CLI-ALI-Rete al 2025-06-30"));
    }

    void sheetNamesExcelAccepts()
    {
        QCOMPARE(fw::XlsxTableWriter::sheetName(QStringLiteral("[CLI]: a/b\\c*d?")), QStringLiteral("CLI abcd"));
        QCOMPARE(fw::XlsxTableWriter::sheetName(QString(40, QLatin1Char('x'))).size(), 31);
        QCOMPARE(fw::XlsxTableWriter::sheetName(QStringLiteral("CLI-GDO-Grande distribuzione organizzata")),
                 QStringLiteral("CLI-GDO-Grande distribuzione"));
        QCOMPARE(fw::XlsxTableWriter::sheetName(QStringLiteral("CLI-GDO-Grande distribuzione orga")),
                 QStringLiteral("CLI-GDO-Grande distribuzione"));
        QCOMPARE(fw::XlsxTableWriter::sheetName(QStringLiteral("CLI-GDO-Grande distribuzione or")),
                 QStringLiteral("CLI-GDO-Grande distribuzione or")); // 31: whole
        QCOMPARE(fw::XlsxTableWriter::sheetName(QStringLiteral("  ")), QStringLiteral("Distinta"));
    }
};

QTEST_MAIN(TestTableExport)
#include "tst_tableexport.moc"
