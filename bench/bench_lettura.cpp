// The reading of a spreadsheet for an import: a workbook of 100,000 rows of 10 columns written
// by our own export (XlsxTableWriter), read into a table by readImportFile. Against a floor of
// the same run: minizip inflating the sheet's entry into memory and QXmlStreamReader walking
// all its tokens, building nothing. Peak memory against the 200 MB target.
//
//   bench_lettura [--rows N] [--runs N]

#include "benchtable.h"
#include "benchutil.h"

#include "framework/export/xlsxtablewriter.h"
#include "framework/import/importfile.h"

#include <QCoreApplication>
#include <QDate>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <QXmlStreamReader>

#include <malloc.h>
#include <minizip/unzip.h>

namespace {

using bench::check;

constexpr int Columns = 10;

QString writeWorkbook(const QString &path, int rows)
{
    QList<fw::ExportColumn> columns {{QStringLiteral("Codice"), fw::ExportCellKind::Text},
                                     {QStringLiteral("Ragione sociale"), fw::ExportCellKind::Text},
                                     {QStringLiteral("Dal"), fw::ExportCellKind::Date},
                                     {QStringLiteral("Al"), fw::ExportCellKind::Date},
                                     {QStringLiteral("Priorità 1"), fw::ExportCellKind::Number},
                                     {QStringLiteral("Priorità 2"), fw::ExportCellKind::Number},
                                     {QStringLiteral("Quota"), fw::ExportCellKind::Number},
                                     {QStringLiteral("Città"), fw::ExportCellKind::Text},
                                     {QStringLiteral("Descrizione"), fw::ExportCellKind::Text}};
    fw::XlsxTableWriter writer; // a tree's level is the first column: ten in all
    writer.open(path, QStringLiteral("Distinta"), columns);
    const QStringList cities {QStringLiteral("Milano"), QStringLiteral("Forlì"), QStringLiteral("Bolzano"),
                              QStringLiteral("Cefalù")};
    for (int row = 0; row < rows; ++row) {
        writer.writeRow(row % 6,
                        {QStringLiteral("%1").arg(row, 6, 10, QLatin1Char('0')),
                         QStringLiteral("Cliente %1 S.r.l.").arg(row), QDate(2020, 1, 1).addDays(row % 1500),
                         QDate(2099, 12, 31), row % 97, row % 13, row * 0.25, cities.at(row % cities.size()),
                         QStringLiteral("Nodo numero %1 della distinta").arg(row)});
    }
    writer.commit();
    return path;
}

// The floor: the sheet's entry inflated whole, then every token walked.
qint64 floorRead(const QString &path)
{
    unzFile zip = unzOpen64(QFile::encodeName(path).constData());
    check(zip && unzLocateFile(zip, "xl/worksheets/sheet1.xml", 0) == UNZ_OK && unzOpenCurrentFile(zip) == UNZ_OK,
          QStringLiteral("the sheet's entry cannot be opened"));
    QByteArray xml;
    char buffer[1 << 16];
    int read;
    while ((read = unzReadCurrentFile(zip, buffer, sizeof buffer)) > 0)
        xml.append(buffer, read);
    unzCloseCurrentFile(zip);
    unzClose(zip);
    QXmlStreamReader reader(xml);
    qint64 tokens = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        ++tokens;
    }
    check(!reader.hasError(), reader.errorString());
    return tokens;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const qsizetype rowsAt = arguments.indexOf(QStringLiteral("--rows"));
    const int rows = rowsAt > 0 ? arguments.value(rowsAt + 1).toInt() : 100000;
    const qsizetype runsAt = arguments.indexOf(QStringLiteral("--runs"));
    const int runs = runsAt > 0 ? arguments.value(runsAt + 1).toInt() : 5;

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("distinta.xlsx"));
    const double writeMs = bench::timeMs([&] { writeWorkbook(path, rows); });

    bench::BenchTable table(
        QStringLiteral("Import reading, %1 rows x %2 columns (best of %3)").arg(rows).arg(Columns).arg(runs));
    table.addRow(QStringLiteral("workbook written by XlsxTableWriter"), writeMs, QStringLiteral("ms"), std::nullopt,
                 QStringLiteral("%1 MB").arg(QFileInfo(path).size() / 1048576.0, 0, 'f', 1));

    try {
        // Memory first, on one read with nothing else held.
        malloc_trim(0);
        const bench::Memory before = bench::memoryUsage();
        const bool peakReset = bench::resetPeakMemory();
        qsizetype cells = 0;
        bench::Memory after;
        {
            const fw::ImportedTable read = fw::readImportFile(path);
            after = bench::memoryUsage();
            check(read.rows.size() == rows, QStringLiteral("%1 rows read").arg(read.rows.size()));
            for (const fw::ImportedRow &row : read.rows)
                cells += row.cells.size();
        }
        malloc_trim(0);

        qint64 tokens = 0;
        const bench::Timing floor = bench::measure(runs, [&] { tokens = floorRead(path); });
        table.addRow(QStringLiteral("floor: sheet inflated, XML tokens walked"), floor.bestMs, QStringLiteral("ms"),
                     floor.bestMs,
                     QStringLiteral("median %1, CPU %2; %3 tokens")
                         .arg(bench::ms(floor.medianMs), bench::ms(floor.bestCpuMs))
                         .arg(tokens));
        const bench::Timing reading = bench::measure(runs, [&] { fw::readImportFile(path); });
        bench::addTiming(table, QStringLiteral("readImportFile"), reading, floor.bestMs, bench::Target::None,
                         QStringLiteral("%1 cells; target < 2 s: %2")
                             .arg(cells)
                             .arg(reading.bestMs < 2000 ? QStringLiteral("met") : QStringLiteral("MISSED")));
        const double peakMb = after.peakKb / 1024.0;
        table.addRow(QStringLiteral("peak resident memory of the process"), peakMb, QStringLiteral("MB"), std::nullopt,
                     QStringLiteral("VmHWM%1; target < 200 MB: %2")
                         .arg(peakReset ? QStringLiteral(" since just before the read") : QString(),
                              peakMb < 200 ? QStringLiteral("met") : QStringLiteral("MISSED")));
        table.addRow(
            QStringLiteral("of which the read's growth over the resident set before it"),
            (after.peakKb - before.currentKb) / 1024.0, QStringLiteral("MB"), std::nullopt,
            QStringLiteral("%1 MB held by the table").arg((after.currentKb - before.currentKb) / 1024.0, 0, 'f', 1));
    } catch (const fw::ImportFileError &error) {
        bench::fail(error.message());
    }
    table.print();
    return 0;
}
