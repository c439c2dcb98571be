// The tree editor on the large generated databases, through the real form and its public
// procedures: the phases of CaricaDistinta, the memory of a loaded tree, painting the tree's
// viewport (which must run no statement), the subject list and the search in the tree. Every
// time is set against the floor measured in the same run: the bare node query stepped through
// with sqlite3.
//
//   bench_editor [--db-dir DIR] [--sizes 100000,1000000] [--runs N]
//
// Without --runs each figure takes the best of 5 runs at 100,000 nodes and of 3 from 1,000,000.

#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"

#include "data/dittastatements.h"
#include "db/databasecheck.h"
#include "db/demodatabase.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"
#include "platform/db/backend.h"
#include "platform/db/databaseerror.h"
#include "platform/db/recordsetdata.h"
#include "platform/db/tsqltranslator.h"
#include "framework/windowupdatelock.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <sqlite3.h>
#include <vector>

namespace {

// ---- a witness of statements that does not go through the module: every connection this
// process opens gets a trace callback that counts each statement SQLite starts.

std::atomic<qint64> startedStatements {0};

int countStatement(unsigned, void *, void *, void *)
{
    ++startedStatements;
    return 0;
}

int installStatementCounter(sqlite3 *handle, char **, const sqlite3_api_routines *)
{
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, countStatement, nullptr);
    return SQLITE_OK;
}

// The tree's viewport brought to about width x height by sizing the form around it.
QSize sizeViewport(FRMGD_DISTINTA *form, QWidget *viewport, QSize wanted)
{
    form->resize(wanted);
    for (int attempt = 0; attempt < 3; ++attempt) {
        QCoreApplication::processEvents();
        const QSize now = viewport->size();
        if (now.width() >= wanted.width() && now.height() >= wanted.height())
            break;
        const QSize grow(std::max(0, wanted.width() - now.width()), std::max(0, wanted.height() - now.height()));
        form->resize(form->size() + grow + QSize(8, 8));
    }
    QCoreApplication::processEvents();
    return viewport->size();
}

// A row near the end of the recordset whose name no other row holds, so that the search by name
// has to read every row before it; -1 when every name is shared.
int uniqueNameNearEnd(const db::Recordset &nodes, int nameField)
{
    QHash<QString, int> counts;
    const int rows = nodes.recordCount();
    for (int row = 0; row < rows; ++row)
        ++counts[nodes.valueAt(row, nameField).toString().toLower()];
    for (int row = rows - 1; row >= 0; --row) {
        if (counts.value(nodes.valueAt(row, nameField).toString().toLower()) == 1)
            return row;
    }
    return -1;
}

// Every node that has children is expanded, and the view has laid out a row for the last node.
bool fullyExpanded(fw::TreeList *tree)
{
    fw::TreeListNode last;
    for (fw::TreeListNode node = tree->firstNode(); node.isValid(); node = node.next()) {
        if (node.hasChildren() && !node.isExpanded())
            return false;
        last = node;
    }
    return last.isValid() && tree->view()->visualRect(tree->model()->indexOfNode(last.id())).isValid();
}

// Statements in a DISTINTA_SQL_TRACE file: each ends with a line holding only "GO".
int tracedStatements(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return int(file.readAll().split('\n').count("GO"));
}

int runsFor(int nodes, const QStringList &arguments, int optionRuns)
{
    if (arguments.contains(QStringLiteral("--runs")))
        return optionRuns;
    return nodes >= 1000000 ? 3 : 5;
}

void benchSize(const bench::LargeDatabase &database, int runs, bench::BenchTable &table)
{
    const QString size = QString::number(database.nodes);
    if (database.generationMs > 0)
        table.addRow(QStringLiteral("database generation"), database.generationMs, QStringLiteral("ms"));

    // ---- the floor
    const bench::Floor floor = bench::measureFloor(database, runs);
    const double floorMs = floor.timing.bestMs;
    bench::addTiming(table, QStringLiteral("floor: node query stepped with sqlite3"), floor.timing, floorMs,
                     bench::Target::None, QStringLiteral("%1 rows").arg(floor.rows));

    // ---- opening the editor: start-up and the first load of the large tree, and its memory
    malloc_trim(0);
    bench::resetPeakMemory();
    const bench::Memory before = bench::memoryUsage();
    bench::EditorHost host(database.path);
    FRMGD_DISTINTA *form = nullptr;
    const qint64 statementsBeforeOpen = startedStatements;
    const double openMs = bench::timeMs([&] { form = host.openEditor(); });
    const qint64 openStatements = startedStatements - statementsBeforeOpen;
    const bench::Memory loaded = bench::memoryUsage();
    bench::check(form, QStringLiteral("the editor did not open"));
    bench::check(host.log().isQuiet(), QStringLiteral("the editor reported: ") + host.log().messageTexts().join(u'/'));
    fw::TreeList *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));
    bench::check(tree && form->nodi() && form->nodi()->recordCount() == floor.rows && tree->count() == floor.rows,
                 QStringLiteral("the tree does not hold the %1 rows of the floor").arg(floor.rows));

    table.addRow(QStringLiteral("open editor (start-up + first CaricaDistinta)"), openMs, QStringLiteral("ms"), floorMs,
                 QStringLiteral("1 run; %1 statements").arg(openStatements));
    const double peakKb = double(loaded.peakKb - before.currentKb);
    const double residentKb = double(loaded.currentKb - before.currentKb);
    table.addRow(QStringLiteral("peak memory growth, open + load"), peakKb / 1024.0, QStringLiteral("MB"));
    table.addRow(QStringLiteral("peak memory per node"), peakKb * 1024.0 / database.nodes, QStringLiteral("B"),
                 std::nullopt,
                 peakKb * 1024.0 / database.nodes < 1024 ? QStringLiteral("target < 1 KB: met")
                                                         : QStringLiteral("target < 1 KB: MISSED"));
    table.addRow(QStringLiteral("resident after load, per node"), residentKb * 1024.0 / database.nodes,
                 QStringLiteral("B"));

    // ---- what the shell checks before and after it opens a database file (the file read-only,
    // then whether the working company has rows), against the open it precedes
    const bench::Timing openChecks = bench::measure(runs, [&] {
        const dbsetup::DatabaseFileCheck file = dbsetup::checkDatabaseFile(database.path);
        bench::check(file.isModuleDatabase() && file.writable, QStringLiteral("the file check refused the database"));
        bench::check(
            host.connection()->openRecordset(dittastatements::companyHasDataQuery(database.company))->value(0).toInt()
                == 1,
            QStringLiteral("the company check found no data"));
    });
    bench::addTiming(table, QStringLiteral("checks at open: file read-only, company data"), openChecks, floorMs,
                     bench::Target::None,
                     QStringLiteral("%1 % of open editor; target <= 5 %: %2")
                         .arg(100 * openChecks.bestMs / openMs, 0, 'f', 2)
                         .arg(openChecks.bestMs <= 0.05 * openMs ? QStringLiteral("met") : QStringLiteral("MISSED")));

    // ---- CaricaDistinta phase by phase, in its order, under its freeze of the tree
    const QString sql = form->parti().albero.statementDistinta();
    bench::check(!sql.isEmpty(), QStringLiteral("no type is selected"));
    bench::addTiming(table, QStringLiteral("statementDistinta"),
                     bench::measure(runs, [&] { (void)form->parti().albero.statementDistinta(); }), floorMs);

    const db::ConnectionPtr connection = host.connection();
    std::shared_ptr<db::RecordsetData> rows;
    const bench::Timing query = bench::measure(
        runs, [&] { rows.reset(); }, [&] { rows = connection->backend().query(db::translateTsqlToSqlite(sql)); });
    rows.reset();
    bench::addTiming(table, QStringLiteral("query: back end runs it, rows into cells"), query, floorMs);

    db::RecordsetPtr nodes;
    malloc_trim(0);
    const qint64 withoutRowsKb = bench::memoryUsage().currentKb;
    const bench::Timing load = bench::measure(
        runs, [&] { nodes.reset(); }, [&] { nodes = form->parti().albero.apriNodi(sql); });
    const double rowsKb = double(bench::memoryUsage().currentKb - withoutRowsKb);
    // The recordset adds little to the query (its rows are the back end's cells): the two best
    // times differ by less than their noise, so no difference is shown.
    bench::addTiming(table, QStringLiteral("load: apriNodi (query + recordset)"), load, floorMs,
                     bench::Target::TwiceFloor);
    table.addRow(QStringLiteral("of the resident memory: node rows, per node"), rowsKb * 1024.0 / database.nodes,
                 QStringLiteral("B"), std::nullopt, QStringLiteral("one recordset more in memory"));

    bench::addTiming(table, QStringLiteral("caricaTestiDisegno (draw-time texts)"),
                     bench::measure(runs, [&] { form->parti().albero.caricaTestiDisegno(*nodes); }), floorMs);

    {
        fw::WindowUpdateLock freeze(tree);
        // Each build starts as in CaricaDistinta after a first load: no record frame, and a tree
        // that lets go of its rows (outside the timing; the reload below times the whole).
        const auto unbind = [&] {
            form->parti().albero.DistruggiFrameworkDistinta();
            tree->setRecordset(nullptr);
        };
        bench::addTiming(table, QStringLiteral("build: legaAlbero"),
                         bench::measure(runs, unbind, [&] { form->parti().albero.legaAlbero(nodes, sql); }), floorMs,
                         bench::Target::TwiceFloor);
        bench::addTiming(table, QStringLiteral("expand all: espandiTutto"),
                         bench::measure(
                             runs,
                             [&] {
                                 unbind();
                                 form->parti().albero.legaAlbero(nodes, sql);
                             },
                             [&] { form->parti().albero.espandiTutto(); }),
                         floorMs, bench::Target::TwiceFloor);
        bench::addTiming(table, QStringLiteral("levels: CaricaLivelli"),
                         bench::measure(runs, [&] { form->parti().albero.livelli().CaricaLivelli(); }), floorMs,
                         bench::Target::TwiceFloor,
                         QStringLiteral("%1 levels").arg(form->parti().albero.livelli().livelloMassimo() + 1));
    }
    bench::check(fullyExpanded(tree), QStringLiteral("espandiTutto left nodes collapsed"));
    bench::check(host.log().isQuiet(), QStringLiteral("a phase reported: ") + host.log().messageTexts().join(u'/'));

    nodes.reset(); // from here on only the form holds the rows, as after a user's load
    malloc_trim(0);
    bench::resetPeakMemory();
    const bench::Memory beforeReload = bench::memoryUsage();
    bench::addTiming(table, QStringLiteral("reload: CaricaDistinta whole"),
                     bench::measure(runs, [&] { form->CaricaDistinta(); }), floorMs, bench::Target::None,
                     QStringLiteral("lets go of the previous tree too"));
    table.addRow(QStringLiteral("peak memory growth, reload"),
                 double(bench::memoryUsage().peakKb - beforeReload.currentKb) / 1024.0, QStringLiteral("MB"),
                 std::nullopt, QStringLiteral("the previous rows let go before the new ones are read"));
    bench::check(tree->count() == floor.rows, QStringLiteral("the reload lost nodes"));

    // ---- painting a full viewport at positions spread over the whole tree
    form->show();
    QWidget *viewport = tree->view()->viewport();
    const QSize viewportSize = sizeViewport(form, viewport, QSize(1600, 1000));
    QScrollBar *scroll = tree->view()->verticalScrollBar();
    const int positions = 20;
    QImage image(viewport->size(), QImage::Format_ARGB32_Premultiplied);

    QTemporaryDir traceFolder;
    const QString tracePath = traceFolder.filePath(QStringLiteral("paint.sql"));
    qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
    const qint64 statementsBeforePaint = startedStatements;
    int position = 0;
    const bench::Timing paint = bench::measure(
        positions * runs,
        [&] {
            scroll->setValue(int(qint64(scroll->maximum()) * (position++ % positions) / (positions - 1)));
            QCoreApplication::processEvents();
        },
        [&] { viewport->render(&image); });
    // What was painted last, to look at: BENCH_SNAPSHOT=<file.png>.
    if (const QString snapshot = qEnvironmentVariable("BENCH_SNAPSHOT"); !snapshot.isEmpty())
        image.save(snapshot);
    const qint64 paintStatements = startedStatements - statementsBeforePaint;
    const int traced = tracedStatements(tracePath);
    // The trace must be live for its silence to mean something.
    (void)connection->openRecordset(QStringLiteral("SELECT 1"));
    const bool traceWorks = tracedStatements(tracePath) == traced + 1 && startedStatements > statementsBeforePaint;
    qunsetenv("DISTINTA_SQL_TRACE");
    bench::check(traceWorks, QStringLiteral("the statement witnesses do not work"));
    const int rowsPerViewport = viewport->height() / std::max(1, tree->view()->sizeHintForRow(0));

    bench::addTiming(table, QStringLiteral("paint: one full viewport"), paint, floorMs, bench::Target::None,
                     QStringLiteral("%1x%2 px, %3 rows, %4 scroll positions")
                         .arg(viewportSize.width())
                         .arg(viewportSize.height())
                         .arg(rowsPerViewport)
                         .arg(positions));
    table.addRow(QStringLiteral("statements while painting (sqlite3 counter)"), double(paintStatements),
                 QStringLiteral("stmts"), std::nullopt,
                 paintStatements == 0 ? QStringLiteral("target 0: met") : QStringLiteral("target 0: MISSED"));
    table.addRow(QStringLiteral("statements while painting (DISTINTA_SQL_TRACE)"), traced, QStringLiteral("stmts"),
                 std::nullopt, traced == 0 ? QStringLiteral("target 0: met") : QStringLiteral("target 0: MISSED"));

    // ---- the search in the tree, for a match near the end
    QLineEdit *search = form->findChild<QLineEdit *>(QStringLiteral("TXTCERCA"));
    bench::check(search, QStringLiteral("no TXTCERCA"));
    const db::RecordsetPtr bound = form->nodi();
    const int nameField = bound->fieldIndex(QStringLiteral("RagioneSociale"));
    const int codeField = bound->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"));
    const int byName = uniqueNameNearEnd(*bound, nameField);
    const int byCode = bound->recordCount() - 1;
    const auto searchFor = [&](distinta::RicercaAlbero::Campo field, int row, int valueField, const QString &figure) {
        if (row < 0) {
            table.addRow(figure, 0, QStringLiteral("ms"), std::nullopt, QStringLiteral("no unique name to look for"));
            return;
        }
        search->setText(bound->valueAt(row, valueField).toString());
        const bench::Timing timing = bench::measure(runs,
                                                    [&] { form->parti().ricercaAlbero.CercaNellaDistinta(field); });
        bench::check(bound->currentRow() == row && tree->focusedNode().isValid(),
                     QStringLiteral("%1 landed on row %2 instead of %3").arg(figure).arg(bound->currentRow()).arg(row));
        bench::addTiming(table, figure, timing, floorMs, bench::Target::None,
                         QStringLiteral("match at row %1 of %2").arg(row + 1).arg(bound->recordCount()));
    };
    searchFor(distinta::RicercaAlbero::Campo::RagioneSociale, byName, nameField,
              QStringLiteral("search by name: CercaNellaDistinta"));
    searchFor(distinta::RicercaAlbero::Campo::Codice, byCode, codeField,
              QStringLiteral("search by code: CercaNellaDistinta"));

    // ---- the subject list, every customer of the company
    int subjects = 0;
    const bench::Timing list = bench::measure(runs, [&] {
        form->CaricaAnagraficheDistinta();
        subjects = form->parti().anagrafiche.lista() ? form->parti().anagrafiche.lista()->recordCount() : 0;
    });
    bench::check(subjects >= database.nodes, QStringLiteral("the subject list holds %1 rows").arg(subjects));
    bench::addTiming(table, QStringLiteral("subject list: CaricaAnagraficheDistinta"), list, floorMs,
                     bench::Target::None, QStringLiteral("%1 subjects").arg(subjects));
    bench::check(host.log().isQuiet(), QStringLiteral("the editor reported: ") + host.log().messageTexts().join(u'/'));
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("DISTINTA_SQL_TRACE"); // tracing every statement would distort the load times
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(installStatementCounter));

    QApplication app(argc, argv);
    const bench::Options options = bench::parseOptions(app.arguments());
    bench::DatabaseFolder folder(options.databaseDir);

    try {
        for (const int nodes : options.sizes) {
            const int runs = runsFor(nodes, app.arguments(), options.runs);
            bench::BenchTable table(QStringLiteral("Tree editor, %1 nodes (%2 cores, best of %3)")
                                        .arg(nodes)
                                        .arg(QThread::idealThreadCount())
                                        .arg(runs));
            benchSize(folder.database(nodes), runs, table);
            table.print();
            malloc_trim(0);
        }
    } catch (const db::DatabaseError &error) {
        bench::fail(error.message() + u'\n' + error.statement());
    }
    return 0;
}
