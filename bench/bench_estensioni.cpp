// The editor's list as of a date, the move of a large branch and the export to a spreadsheet,
// on a large generated tree through the real form, each against a floor from the same run:
//   - the list as of a date against the plain load of the same type (CaricaDistinta);
//   - a move of a 10,000-node branch against its one UPDATE stepped bare plus one reload;
//   - the XLSX export against libxlsxwriter writing the same cells with no formatting, and the
//     memory the export adds to the process.
//
//   bench_estensioni [--db-dir DIR] [--sizes 100000,1000000] [--runs N]
//
// The move works on a copy of the generated database, so the kept file stays as generated.

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"

#include "data/spostamentostatements.h"
#include "db/sqlitefile.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "forms/distinta/strutturanodi.h"
#include "framework/treelist/treelist.h"
#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <malloc.h>
#include <vector>
#include <xlsxwriter.h>

namespace {

const QString asOf = QStringLiteral("01/01/2022");

// Subtree sizes of every node, deepest first so that each adds into its parent once.
std::vector<int> subtreeSizes(const StrutturaNodi &tree)
{
    const int count = tree.size();
    std::vector<int> depth(size_t(count), -1);
    for (int i = 0; i < count; ++i) {
        std::vector<int> path;
        int n = i;
        while (n >= 0 && depth[size_t(n)] < 0) {
            path.push_back(n);
            n = tree.padre(n);
        }
        int d = n >= 0 ? depth[size_t(n)] : -1;
        for (auto it = path.rbegin(); it != path.rend(); ++it)
            depth[size_t(*it)] = ++d;
    }
    std::vector<int> order(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        order[size_t(i)] = i;
    std::sort(order.begin(), order.end(), [&](int a, int b) { return depth[size_t(a)] > depth[size_t(b)]; });
    std::vector<int> sizes(size_t(count), 1);
    for (int n : order) {
        if (tree.padre(n) >= 0)
            sizes[size_t(tree.padre(n))] += sizes[size_t(n)];
    }
    return sizes;
}

// The cells the export writes, read from the tree once, for the library's own floor.
struct Cells
{
    std::vector<int> level;
    std::vector<std::vector<QVariant>> values;
};

Cells readCells(fw::TreeList *tree)
{
    const QStringList numbers {QStringLiteral("trGD02_CLIFOR_CG44"), QStringLiteral("trGD02_CLIFORFATT_CG44")};
    Cells cells;
    for (fw::TreeListNode node = tree->firstNode(); node.isValid(); node = node.next()) {
        std::vector<QVariant> row;
        for (int c = 0; c < tree->columnCount(); ++c) {
            const fw::TreeListColumn &column = tree->column(c);
            if (numbers.contains(column.name))
                row.push_back(node.value(column.name));
            else if (column.kind == fw::TreeListColumnKind::Date)
                row.push_back(node.value(column.name).toDate());
            else
                row.push_back(tree->displayText(node, column.name));
        }
        cells.level.push_back(node.level());
        cells.values.push_back(std::move(row));
    }
    return cells;
}

// libxlsxwriter in its constant-memory mode, the same cells, no formats, outline or widths.
void writeBare(const Cells &cells, const QString &path)
{
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    lxw_workbook *workbook = workbook_new_opt(QFile::encodeName(path).constData(), &options);
    lxw_worksheet *sheet = workbook_add_worksheet(workbook, nullptr);
    for (size_t r = 0; r < cells.values.size(); ++r) {
        const auto row = lxw_row_t(r + 1);
        worksheet_write_number(sheet, row, 0, cells.level[r] + 1, nullptr);
        const std::vector<QVariant> &values = cells.values[r];
        for (size_t c = 0; c < values.size(); ++c) {
            const QVariant &value = values[c];
            if (value.isNull())
                continue;
            const auto col = lxw_col_t(c + 1);
            if (value.metaType().id() == QMetaType::QDate) {
                const QDate d = value.toDate();
                lxw_datetime when {d.year(), d.month(), d.day(), 0, 0, 0};
                worksheet_write_datetime(sheet, row, col, &when, nullptr);
            } else if (value.metaType().id() == QMetaType::QString) {
                const QString text = value.toString();
                if (!text.isEmpty())
                    worksheet_write_string(sheet, row, col, text.toUtf8().constData(), nullptr);
            } else {
                worksheet_write_number(sheet, row, col, value.toDouble(), nullptr);
            }
        }
    }
    bench::check(workbook_close(workbook) == LXW_NO_ERROR,
                 QStringLiteral("libxlsxwriter could not write %1").arg(path));
}

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table)
{
    QTemporaryDir work;
    const QString path = work.filePath(QStringLiteral("estensioni.sqlite"));
    bench::copyDatabase(generated.path, path);
    dbsetup::SqliteFile bare(path);
    db::registerSqliteFunctions(bare.handle());
    bare.exec(QStringLiteral("PRAGMA synchronous=NORMAL; PRAGMA recursive_triggers=OFF"));

    bench::EditorHost host(path);
    FRMGD_DISTINTA *form = host.openEditor();
    bench::check(form && host.log().isQuiet(), QStringLiteral("the editor did not open cleanly"));
    auto *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));

    // ---- the list as of a date against the plain load
    const bench::Timing plain = bench::measure(runs, [&] { form->CaricaDistinta(); });
    bench::check(tree->count() == generated.nodes, QStringLiteral("the plain load shows %1 nodes").arg(tree->count()));
    bench::check(form->parti().albero.allaData().ImpostaDataValidita(asOf), QStringLiteral("the date was refused"));
    const bench::Timing dated = bench::measure(runs, [&] { form->CaricaDistinta(); });
    const int shown = tree->count();
    bench::addTiming(table, QStringLiteral("floor: CaricaDistinta, the whole list"), plain, plain.bestMs,
                     bench::Target::None, QStringLiteral("%1 nodes").arg(generated.nodes));
    bench::addTiming(table, QStringLiteral("CaricaDistinta as of %1").arg(asOf), dated, plain.bestMs,
                     bench::Target::TwiceFloor, QStringLiteral("%1 nodes shown").arg(shown));
    bench::check(form->parti().albero.allaData().ImpostaDataValidita(QString()),
                 QStringLiteral("the date could not be cleared"));

    // ---- the move of a branch of about 10,000 nodes under a node outside it, and back
    const StrutturaNodi shape(*form->nodi());
    const std::vector<int> sizes = subtreeSizes(shape);
    int branch = -1;
    for (int i = 0; i < shape.size(); ++i) {
        if (shape.padre(i) >= 0
            && (branch < 0 || std::abs(sizes[size_t(i)] - 10000) < std::abs(sizes[size_t(branch)] - 10000)))
            branch = i;
    }
    const QList<int> moved = shape.ramo(branch);
    // The first node outside the branch, other than its parent, that the tree's rules accept.
    const QSet<int> inBranch(moved.cbegin(), moved.cend());
    QSet<qint64> branchSubjects;
    for (int n : moved)
        branchSubjects.insert(shape.codice(n));
    int target = -1;
    for (int i = 0; i < shape.size() && target < 0; ++i) {
        if (inBranch.contains(i) || i == shape.padre(branch))
            continue;
        QList<int> up = shape.antenati(i);
        up.prepend(i);
        if (std::none_of(up.cbegin(), up.cend(), [&](int n) { return branchSubjects.contains(shape.codice(n)); }))
            target = i;
    }
    bench::check(target >= 0, QStringLiteral("no node outside the branch takes it"));
    const qint64 nodeId = shape.id(branch);
    const qint64 homeId = shape.id(shape.padre(branch));
    const qint64 targetId = shape.id(target);
    const auto putBack = [&] {
        bare.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = %1 WHERE GD02_ID = %2")
                      .arg(homeId)
                      .arg(nodeId));
        form->CaricaDistinta();
        host.log().clear();
    };
    spostamentostatements::Spostamento update {
        1, nodeId, homeId, targetId, QDateTime::currentDateTime(), QStringLiteral("ADMIN"), QStringLiteral("bench")};
    const QString statement = db::translateTsqlToSqlite(spostamentostatements::moveStatement(update));
    const bench::Timing moveFloor = bench::measure(runs, putBack, [&] {
        bare.exec(statement);
        form->CaricaDistinta();
    });
    int clashes = 0;
    const bench::Timing checks = bench::measure(runs, [&] {
        const StrutturaNodi inMemory(*form->nodi());
        const QList<int> nodes = inMemory.ramo(inMemory.indice(nodeId));
        QSet<qint64> subjects;
        for (int n : nodes)
            subjects.insert(inMemory.codice(n));
        QList<int> up = inMemory.antenati(inMemory.indice(targetId));
        up.prepend(inMemory.indice(targetId));
        clashes = 0;
        for (int n : up)
            clashes += subjects.contains(inMemory.codice(n)) ? 1 : 0;
    });
    bench::check(clashes == 0, QStringLiteral("the branch's subjects are above the target: pick another"));
    host.log().setDefaultAnswer(fw::Answer::Yes);
    const bench::Timing move = bench::measure(runs, putBack,
                                              [&] { form->parti().spostamento.SpostaNodo(nodeId, targetId); });
    bench::check(
        bare.scalar(QStringLiteral("SELECT GD02_IDPARENT_GD02 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(nodeId))
            == targetId,
        QStringLiteral("the branch did not move: ") + host.log().messageTexts().join(u'/'));
    bench::check(host.log().errorDialogs().isEmpty(), QStringLiteral("the move failed"));
    host.log().setDefaultAnswer(0);
    putBack();
    bench::addTiming(table, QStringLiteral("floor: the UPDATE bare + reload"), moveFloor, moveFloor.bestMs,
                     bench::Target::None, QStringLiteral("branch of %1 nodes").arg(moved.size()));
    bench::addTiming(table, QStringLiteral("checks in memory: the rows' shape, branch and subjects"), checks,
                     moveFloor.bestMs);
    bench::addTiming(table, QStringLiteral("move the branch: SpostaNodo"), move, moveFloor.bestMs,
                     bench::Target::TwiceFloor, QStringLiteral("questions answered, reload and focus included"));

    // ---- export of the whole list to XLSX against the library alone
    const Cells cells = readCells(tree);
    const QString bareFile = work.filePath(QStringLiteral("bare.xlsx"));
    const QString exported = work.filePath(QStringLiteral("export.xlsx"));
    const bench::Timing library = bench::measure(runs, [&] { writeBare(cells, bareFile); });
    auto *levels = form->findChild<QComboBox *>(QStringLiteral("CMB_LIVELLO"));
    const QString allLevels = levels->itemText(levels->count() - 1);
    malloc_trim(0);
    bench::resetPeakMemory();
    const bench::Memory before = bench::memoryUsage();
    const bench::Timing exportTiming = bench::measure(runs, [&] {
        bench::check(form->parti().esportazione.EsportaDistinta(exported, fw::ExportFile::Format::Xlsx, allLevels),
                     QStringLiteral("the export failed"));
    });
    const bench::Memory after = bench::memoryUsage();
    const bench::Timing csv = bench::measure(runs, [&] {
        bench::check(form->parti().esportazione.EsportaDistinta(work.filePath(QStringLiteral("export.csv")),
                                                                fw::ExportFile::Format::Csv, allLevels),
                     QStringLiteral("the CSV export failed"));
    });
    bench::addTiming(table, QStringLiteral("floor: libxlsxwriter, the same cells, no formatting"), library,
                     library.bestMs, bench::Target::None,
                     QStringLiteral("%1 rows, %2 MB")
                         .arg(cells.values.size())
                         .arg(QFileInfo(bareFile).size() / 1048576.0, 0, 'f', 1));
    bench::addTiming(table, QStringLiteral("export to XLSX: EsportaDistinta"), exportTiming, library.bestMs,
                     bench::Target::TwiceFloor,
                     QStringLiteral("%1 MB").arg(QFileInfo(exported).size() / 1048576.0, 0, 'f', 1));
    bench::addTiming(table, QStringLiteral("export to CSV: EsportaDistinta"), csv, library.bestMs);
    const double addedMb = double(after.peakKb - before.currentKb) / 1024.0;
    table.addRow(QStringLiteral("memory the XLSX export adds (peak beyond the loaded editor)"), addedMb,
                 QStringLiteral("MB"), std::nullopt,
                 QStringLiteral("target: below 300 MB: %1; process peak %2 MB")
                     .arg(addedMb < 300 ? QStringLiteral("met") : QStringLiteral("MISSED"))
                     .arg(after.peakKb / 1024.0, 0, 'f', 0));
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("List as of a date, move of a branch, export"), benchSize);
}
