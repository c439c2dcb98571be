// The print of a classification on the large generated databases, through the real form and the
// default report engine: the work table written node by node (CMD_STAMPA's first part), then the
// PDF of the same rows ("VRAX_DISTINTA.rpt" unattended). Each against a floor of the same run:
//   - work table: the very INSERT statements the editor sends, translated for SQLite, each
//     prepared, stepped and finalised with the sqlite3 C API on a connection of its own;
//   - PDF: the texts of the report's detail cells, made beforehand, drawn with the same fonts at
//     the same places straight onto a QPdfWriter, page by page.
//
//   bench_stampa [--db-dir DIR] [--sizes 100000] [--runs N]

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"

#include "data/stampastatements.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/report/defaultreportengine.h"
#include "framework/report/reportlayoutreader.h"
#include "framework/report/reportrenderer.h"
#include "framework/treelist/treelist.h"
#include "platform/db/databaseerror.h"
#include "platform/db/recordset.h"
#include "platform/db/tsqltranslator.h"

#include <QApplication>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <malloc.h>
#include <sqlite3.h>

namespace {

using bench::check;
using bench::fail;

// A connection of the floor's own, set up as the module's connections are.
class BareSqlite
{
public:
    explicit BareSqlite(const QString &path)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_handle, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
            fail(QStringLiteral("cannot open ") + path);
        sqlite3_busy_timeout(m_handle, 5000);
        exec("PRAGMA journal_mode=WAL");
        exec("PRAGMA synchronous=NORMAL");
    }
    ~BareSqlite() { sqlite3_close_v2(m_handle); }

    void exec(const QByteArray &sql)
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_handle, sql.constData(), int(sql.size()), &statement, nullptr) != SQLITE_OK)
            fail(QString::fromUtf8(sqlite3_errmsg(m_handle)) + QStringLiteral(": ") + QString::fromUtf8(sql));
        int code;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        }
        sqlite3_finalize(statement);
        if (code != SQLITE_DONE)
            fail(QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }

private:
    sqlite3 *m_handle = nullptr;
};

// The editor's INSERT statements for every node, built as the editor builds them, in SQLite's
// dialect.
QList<QByteArray> workRowStatements(FRMGD_DISTINTA *form, const QString &key)
{
    auto *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));
    stampastatements::RigaStampa row;
    row.key = key;
    row.company = form->companyCode();
    row.typeId = form->parti().albero.idDistinta().toLongLong();
    row.subjectKind = form->parti().albero.tipoSoggetto();
    QList<QByteArray> statements;
    for (fw::TreeListNode node = tree->firstNode(); node.isValid(); node = node.next()) {
        row.level = node.level();
        row.subjectCode = node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toLongLong();
        row.start = node.value(QStringLiteral("trGD02_DATAINIZIOVAL")).toDate();
        row.end = node.value(QStringLiteral("trGD02_DATAFINEVAL")).toDate();
        statements << db::translateTsqlToSqlite(stampastatements::insertWorkRowStatement(row)).toUtf8();
    }
    return statements;
}

// The floor of the PDF: every detail cell's text of every row, made before the timing.
struct FloorText
{
    QList<QStringList> rows;
    QList<const fw::ReportCell *> cells;
};

FloorText floorTexts(const fw::ReportLayout &layout, const db::Recordset &rows)
{
    const fw::ReportRenderer renderer(layout, rows, {});
    FloorText texts;
    for (const fw::ReportCell &cell : layout.detail.rows.at(0).cells)
        texts.cells << &cell;
    for (int row = 0; row < rows.recordCount(); ++row) {
        QStringList line;
        for (const fw::ReportCell *cell : std::as_const(texts.cells))
            line << renderer.cellText(*cell, row, 1);
        texts.rows << line;
    }
    return texts;
}

void drawFloor(const QString &path, const fw::ReportLayout &layout, const FloorText &texts, int pages)
{
    QPdfWriter writer(path);
    writer.setResolution(600);
    fw::ReportRenderer::preparePage(writer, layout);
    QPainter painter(&writer);
    QFont font(layout.fontFamily);
    font.setPointSizeF(layout.fontSize);
    font.setStyleStrategy(QFont::PreferNoShaping);
    painter.setFont(font);
    const QFontMetricsF metrics(font, &writer);
    const double scale = writer.logicalDpiX() / 25.4;
    const double rowHeight = layout.detail.height() * scale;
    const int perPage = int(std::ceil(double(texts.rows.size()) / std::max(pages, 1)));
    double y = layout.margins.top() * scale;
    for (int row = 0; row < texts.rows.size(); ++row) {
        if (row > 0 && row % perPage == 0) {
            writer.newPage();
            y = layout.margins.top() * scale;
        }
        const QStringList &line = texts.rows.at(row);
        for (int c = 0; c < line.size(); ++c)
            painter.drawText(QPointF((layout.margins.left() + texts.cells.at(c)->x) * scale, y + metrics.ascent()),
                             line.at(c));
        y += rowHeight;
    }
}

// Best and median of single runs.
bench::Timing bestOf(const QList<bench::Timing> &single)
{
    QList<double> times;
    bench::Timing result = single.value(0);
    for (const bench::Timing &run : single) {
        times << run.bestMs;
        result.bestMs = std::min(result.bestMs, run.bestMs);
        result.bestCpuMs = std::min(result.bestCpuMs, run.bestCpuMs);
    }
    std::sort(times.begin(), times.end());
    const qsizetype n = times.size();
    result.medianMs = n % 2 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2;
    result.runs = int(n);
    return result;
}

void benchSize(const bench::LargeDatabase &database, int runs, bench::BenchTable &table)
{
    QTemporaryDir output;
    const QString pdf = output.filePath(QStringLiteral("distinta.pdf"));
    bench::EditorHost host(database.path);
    host.globals().setReportEngineFactory([&] {
        auto engine = std::make_unique<fw::DefaultReportEngine>(QStringLiteral("bench"));
        engine->setInteractive(false);
        engine->setRunMode(fw::ReportEngine::RunMode::Pdf);
        engine->setOutputFile(pdf);
        engine->setPrintValues(QStringLiteral("Bench"), QStringLiteral("Misure"), QStringLiteral("Tutti i livelli"));
        return engine;
    });
    FRMGD_DISTINTA *form = host.openEditor();
    check(form && form->nodi() && form->nodi()->recordCount() == database.nodes,
          QStringLiteral("the large tree did not load"));
    check(host.log().isQuiet(), QStringLiteral("the editor reported: ") + host.log().messageTexts().join(u'/'));

    // ---- the work table
    const QString key = distinta::Stampa::NomeComputer() + distinta::Stampa::NomeUtente();
    const QByteArray clear = db::translateTsqlToSqlite(stampastatements::deleteWorkRowsStatement(key, database.company))
                                 .toUtf8();
    QList<QByteArray> inserts = workRowStatements(form, key);
    BareSqlite bare(database.path);
    const bench::Timing floor = bench::measure(
        runs, [&] { bare.exec(clear); },
        [&] {
            for (const QByteArray &insert : inserts)
                bare.exec(insert);
        });
    table.addRow(QStringLiteral("floor: the INSERTs stepped with sqlite3"), floor.bestMs, QStringLiteral("ms"),
                 floor.bestMs,
                 QStringLiteral("median %1, CPU %2, %3 runs; %4 statements")
                     .arg(bench::ms(floor.medianMs), bench::ms(floor.bestCpuMs))
                     .arg(floor.runs)
                     .arg(inserts.size()));
    const bench::Timing work = bench::measure(
        runs, [&] { bare.exec(clear); }, [&] { form->parti().stampa.preparaStampa(QStringLiteral("99")); });
    const qint64 written =
        host.connection()
            ->openRecordset(QStringLiteral("SELECT COUNT(*) FROM GD04_STDISTINTA WHERE GD04_KEY = '%1'").arg(key))
            ->valueAt(0, 0)
            .toLongLong();
    check(written == database.nodes, QStringLiteral("%1 work rows written").arg(written));
    bench::addTiming(table, QStringLiteral("work table: PulisciStampa + a row per node"), work, floor.bestMs,
                     bench::Target::TwiceFloor, QStringLiteral("%1 rows").arg(written));

    // ---- the PDF of the same rows: one print for the memory, before anything else is held
    inserts.clear();
    malloc_trim(0);
    const bench::Memory beforePrint = bench::memoryUsage();
    const bool peakReset = bench::resetPeakMemory();
    check(form->parti().stampa.InvocaStampa(), QStringLiteral("InvocaStampa failed"));
    const bench::Memory afterPrint = bench::memoryUsage();
    malloc_trim(0);

    // What the query's rows alone take, read as the engine reads them: the fields the layout shows.
    const fw::ReportLayout layout = fw::ReportLayoutReader::readFile(fw::DefaultReportEngine::defaultReportFolder()
                                                                     + QStringLiteral("/VRAX_DISTINTA.layout"));
    QStringList shownFields;
    for (const fw::ReportFieldReference &reference : layout.fieldReferences())
        shownFields << reference.name;
    const bench::Memory beforeQuery = bench::memoryUsage();
    bench::resetPeakMemory();
    const db::RecordsetPtr rows = host.connection()->openRecordset(
        stampastatements::reportDataQuery(key, database.company), shownFields);
    const bench::Memory afterQuery = bench::memoryUsage();

    const FloorText texts = floorTexts(layout, *rows);
    const int pages = fw::ReportRenderer(layout, *rows, {}).pageCount();

    const QString floorPdf = output.filePath(QStringLiteral("floor.pdf"));
    // The floor and the print take turns, so that both meet the same state of the process.
    QList<bench::Timing> floorRuns, printRuns;
    for (int run = 0; run < std::max(runs, 1); ++run) {
        floorRuns << bench::measure(1, [&] { drawFloor(floorPdf, layout, texts, pages); });
        printRuns << bench::measure(1, [&] { form->parti().stampa.InvocaStampa(); });
    }
    const bench::Timing drawn = bestOf(floorRuns);
    const bench::Timing print = bestOf(printRuns);
    check(host.log().isQuiet(), QStringLiteral("the print reported: ") + host.log().messageTexts().join(u'/'));
    const qint64 pdfSize = QFileInfo(pdf).size();
    const bench::Timing query = bench::measure(runs, [&] {
        host.connection()->openRecordset(stampastatements::reportDataQuery(key, database.company), shownFields);
    });
    table.addRow(QStringLiteral("floor: detail texts drawn on a QPdfWriter"), drawn.bestMs, QStringLiteral("ms"),
                 drawn.bestMs,
                 QStringLiteral("median %1, CPU %2, %3 runs; %4 rows, %5 pages, texts made beforehand")
                     .arg(bench::ms(drawn.medianMs), bench::ms(drawn.bestCpuMs))
                     .arg(drawn.runs)
                     .arg(texts.rows.size())
                     .arg(pages));
    bench::addTiming(table, QStringLiteral("PDF: InvocaStampa (query, layout, pages)"), print, drawn.bestMs,
                     bench::Target::TwiceFloor,
                     QStringLiteral("%1 pages, %2 MB").arg(pages).arg(pdfSize / 1048576.0, 0, 'f', 1));
    bench::addTiming(table, QStringLiteral("of which the report query (rows read into a recordset)"), query,
                     drawn.bestMs, bench::Target::None, QStringLiteral("%1 fields a row").arg(rows->fieldCount()));
    const double printPeakMb = (afterPrint.peakKb - beforePrint.currentKb) / 1024.0;
    table.addRow(
        QStringLiteral("peak memory growth, PDF"), printPeakMb, QStringLiteral("MB"), std::nullopt,
        (peakReset ? QStringLiteral("high-water mark over the resident set before the print; ")
                   : QStringLiteral("high-water mark of the whole run (could not be reset); "))
            + (printPeakMb < 300 ? QStringLiteral("target < 300 MB: met") : QStringLiteral("target < 300 MB: MISSED")));
    table.addRow(QStringLiteral("of which the query's rows: peak while read / held"),
                 (afterQuery.peakKb - beforeQuery.currentKb) / 1024.0, QStringLiteral("MB"), std::nullopt,
                 QStringLiteral("%1 MB held; %2 fields a row")
                     .arg((afterQuery.currentKb - beforeQuery.currentKb) / 1024.0, 0, 'f', 1)
                     .arg(rows->fieldCount()));
    table.addRow(QStringLiteral("peak resident memory of the process, PDF"), afterPrint.peakKb / 1024.0,
                 QStringLiteral("MB"), std::nullopt, QStringLiteral("the editor with the large tree loaded included"));
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("Print"), benchSize, {100000}, 3);
}
