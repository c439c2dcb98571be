// The tree editor's write side on a large generated tree, through the real form: adding 1,000
// ticked subjects under one node, removing a node with a large subtree, pushing the billing
// values down a large branch. Each is set against a floor measured in the same run: the same
// statements stepped bare with sqlite3 (plus one tree reload where the editor's work ends with
// one), on a second connection to the same file.
//
//   bench_scrittura [--db-dir DIR] [--sizes 100000] [--runs N]
//
// The program works on a copy of the generated database, to which it adds 1,000 customers that
// no classification holds yet.

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"
#include "largetree.h"

#include "data/legamistatements.h"
#include "data/nodistatements.h"
#include "db/sqlitefile.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/treelist/treelist.h"
#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <malloc.h>
#include <sqlite3.h>
#include <vector>

namespace {

using bench::focusNode;
using bench::idList;
using bench::Shape;
using bench::stepBare;

constexpr int newSubjects = 1000;

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table, QTextStream &plans)
{
    // ---- a working copy with 1,000 customers that no classification holds
    QTemporaryDir work;
    const QString path = work.filePath(QStringLiteral("scrittura.sqlite"));
    bench::copyDatabase(generated.path, path);
    dbsetup::SqliteFile bare(path);
    db::registerSqliteFunctions(bare.handle());
    // As the editor's connection writes: WAL with normal sync, the removal trigger walks the subtree itself.
    bare.exec(QStringLiteral("PRAGMA synchronous=NORMAL; PRAGMA recursive_triggers=OFF"));
    const int firstNew = generated.nodes + 1;
    bench::addUnlinkedCustomers(bare, firstNew, newSubjects);
    const Shape shape(bare, generated.typeId);
    const qint64 parentNode = shape.nearest(10);
    const qint64 removedNode = shape.nearest(20000);
    const qint64 propagatedNode = shape.nearest(10000);

    bench::EditorHost host(path);
    FRMGD_DISTINTA *form = host.openEditor();
    bench::check(form && host.log().isQuiet(), QStringLiteral("the editor did not open cleanly"));
    fw::TreeList *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));

    // ---- the overlap check's plan: it must find the subject's links through an index
    nodistatements::Collegamento link {
        1, qint64(firstNew), 0, std::nullopt, std::nullopt, QDate(2024, 1, 1), QDate(2099, 12, 31)};
    {
        // Finalized at once: an open read would keep this connection on an old snapshot.
        dbsetup::SqliteStatement plan = bare.prepare(QStringLiteral("EXPLAIN QUERY PLAN ")
                                                     + db::translateTsqlToSqlite(nodistatements::overlapQuery(link)));
        plans << "Query plan of the overlap check (VerificaNodo), " << generated.nodes << " nodes:\n";
        while (plan.step())
            plans << "    " << plan.columnText(3) << '\n';
    }

    // ---- insertion of 1,000 subjects under one node
    const QString removeNew = QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(firstNew);
    const auto readyToInsert = [&] {
        bare.exec(removeNew);
        form->CaricaDistinta();
        form->CaricaAnagraficheDistinta();
        bench::tickSubjects(form, firstNew, newSubjects);
        focusNode(tree, form, parentNode);
    };
    const bench::Timing insertFloor = bench::measure(
        runs,
        [&] {
            bare.exec(removeNew);
            form->CaricaDistinta();
        },
        [&] {
            nodistatements::NuovoNodo node;
            node.typeId = generated.typeId;
            node.parentId = parentNode;
            node.company = 1;
            node.start = QDate(2024, 1, 1);
            node.end = QDate(2099, 12, 31);
            node.today = QDate::currentDate();
            node.userGroup = QStringLiteral("ADMIN");
            node.user = QStringLiteral("bench");
            for (int i = 0; i < newSubjects; ++i) {
                stepBare(bare, nodistatements::parentQuery(1, parentNode));
                link.subjectCode = firstNew + i;
                stepBare(bare, nodistatements::overlapQuery(link));
                node.subjectCode = firstNew + i;
                stepBare(bare, nodistatements::insertStatement(node));
            }
            form->CaricaDistinta();
        });
    const double insertFloorMs = insertFloor.bestMs;
    const bench::Timing insert = bench::measure(runs, readyToInsert,
                                                [&] { form->parti().inserimento.CMD_ADDANAGR_Click(); });
    bench::check(bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_IDPARENT_GD02 = %1 "
                                            "AND GD02_CLIFOR_CG44 >= %2")
                                 .arg(parentNode)
                                 .arg(firstNew))
                     == newSubjects,
                 QStringLiteral("the insertion did not write %1 nodes").arg(newSubjects));
    bench::check(host.log().isQuiet(),
                 QStringLiteral("the insertion reported: ") + host.log().messageTexts().join(u'/'));
    // What the batch leaves behind, against a plain reload of the same rows. SQLite's own memory
    // (the page caches of the connections, which grow with the pages the inserts touched, up to
    // their limit) is told apart from the editor's.
    const auto sqliteKb = [] {
        sqlite3_int64 used = 0;
        sqlite3_int64 highest = 0;
        sqlite3_status64(SQLITE_STATUS_MEMORY_USED, &used, &highest, 0);
        return qint64(used / 1024);
    };
    malloc_trim(0);
    const qint64 afterInsertKb = bench::memoryUsage().currentKb - sqliteKb();
    form->CaricaDistinta();
    malloc_trim(0);
    const qint64 afterReloadKb = bench::memoryUsage().currentKb - sqliteKb();

    bench::addTiming(table, QStringLiteral("floor: 1,000 x (parent read, overlap select, INSERT) bare + reload"),
                     insertFloor, insertFloorMs);
    bench::addTiming(table, QStringLiteral("insert 1,000 subjects under a node: InserisciNodo"), insert, insertFloorMs,
                     bench::Target::TwiceFloor,
                     QStringLiteral("parent at level %1").arg(shape.level.value(parentNode)));
    // Heap fragments of a thousand statements built and run stay in the resident set: what
    // counts is that nothing grows with the batch beyond that noise (1% of the resident set).
    const double noiseKb = afterReloadKb * 0.01;
    table.addRow(QStringLiteral("resident after the batch (without SQLite's caches), beyond a plain reload"),
                 double(afterInsertKb - afterReloadKb) / 1024.0, QStringLiteral("MB"), std::nullopt,
                 QStringLiteral("target: no higher, within 1% of the resident set (%1 MB): %2")
                     .arg(noiseKb / 1024.0, 0, 'f', 1)
                     .arg(afterInsertKb - afterReloadKb <= noiseKb ? QStringLiteral("met") : QStringLiteral("MISSED")));
    bare.exec(removeNew);

    // ---- removal of a node with a large subtree; the rows are put back between runs
    const QList<qint64> removed = QList<qint64> {removedNode} + shape.below(removedNode);
    bare.exec(QStringLiteral("CREATE TABLE BENCH_COPIA AS SELECT * FROM GD02_DISTINTA WHERE GD02_ID IN (%1)")
                  .arg(idList(removed)));
    const QString putBack = QStringLiteral("INSERT OR IGNORE INTO GD02_DISTINTA SELECT * FROM BENCH_COPIA");
    const QString countRemoved = QStringLiteral(
        "SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_ID IN (SELECT GD02_ID FROM BENCH_COPIA)");
    const bench::Timing removeFloor = bench::measure(
        runs,
        [&] {
            bare.exec(putBack);
            form->CaricaDistinta();
        },
        [&] {
            bare.exec(legamistatements::deleteNodeStatement(removedNode));
            form->CaricaDistinta();
        });
    host.log().setDefaultAnswer(fw::Answer::Yes);
    const bench::Timing remove = bench::measure(
        runs,
        [&] {
            bare.exec(putBack);
            form->CaricaDistinta();
            focusNode(tree, form, removedNode);
            host.log().clear();
        },
        [&] { form->parti().eliminazione.EliminaCliforDaStruttura(); });
    bench::check(bare.scalar(countRemoved) == 0, QStringLiteral("the removal left rows of the subtree"));
    bench::check(tree->count() == generated.nodes - removed.size(),
                 QStringLiteral("the tree still shows removed nodes"));
    bench::check(host.log().errorDialogs().isEmpty(), QStringLiteral("the removal failed"));
    host.log().setDefaultAnswer(0);
    host.log().clear();
    bare.exec(putBack);
    bench::addTiming(table, QStringLiteral("floor: the DELETE bare + reload"), removeFloor, removeFloor.bestMs,
                     bench::Target::None, QStringLiteral("%1 rows go").arg(removed.size()));
    bench::addTiming(
        table, QStringLiteral("remove a node and its subtree: EliminaCliforDaStruttura"), remove, removeFloor.bestMs,
        bench::Target::TwiceFloor,
        QStringLiteral("node at level %1, checks and questions included").arg(shape.level.value(removedNode)));

    // ---- the billing values pushed down a large branch
    const QList<qint64> branch = shape.below(propagatedNode);
    const QString reset = QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 0, GD02_CLIFORFATT_CG44 = NULL "
                                         "WHERE GD02_ID IN (%1); UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 4, "
                                         "GD02_CLIFORFATT_CG44 = 1 WHERE GD02_ID = %2")
                              .arg(idList(branch))
                              .arg(propagatedNode);
    // The statement the rows write, bound and stepped once per node, as the write-back sends it.
    const bench::Timing propagateFloor = bench::measure(
        runs, [&] { bare.exec(reset); },
        [&] {
            dbsetup::SqliteStatement update = bare.prepare(QStringLiteral(
                "UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = ?, GD02_CLIFORFATT_CG44 = ?, GD02_DATAVAR = ?, "
                "GD02_GRUPPOVAR = ?, GD02_UTENTEVAR = ? WHERE GD02_ID = ? AND GD02_TIPOANAGFATT = ? "
                "AND GD02_CLIFORFATT_CG44 IS NULL"));
            const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
            for (qint64 id : branch)
                update.insert(4, 1, now, QStringLiteral("ADMIN"), QStringLiteral("bench"), std::int64_t(id), 0);
        });
    const bench::Timing propagate = bench::measure(
        runs,
        [&] {
            bare.exec(reset);
            form->CaricaDistinta();
            focusNode(tree, form, propagatedNode);
            emit tree->mouseDown(tree->focusedNode(), QString(), Qt::RightButton, QPoint());
        },
        [&] { form->parti().menu.mnuPropagaFigli_Click(); });
    bench::check(bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_ID IN (%1) "
                                            "AND GD02_TIPOANAGFATT = 4 AND GD02_CLIFORFATT_CG44 = 1")
                                 .arg(idList(branch)))
                     == branch.size(),
                 QStringLiteral("the propagation missed nodes"));
    bench::check(host.log().isQuiet(),
                 QStringLiteral("the propagation reported: ") + host.log().messageTexts().join(u'/'));
    bench::addTiming(table, QStringLiteral("floor: the UPDATEs bound and stepped bare"), propagateFloor,
                     propagateFloor.bestMs, bench::Target::None, QStringLiteral("%1 nodes").arg(branch.size()));
    bench::addTiming(table, QStringLiteral("propagate billing values: mnuPropagaFigli_Click"), propagate,
                     propagateFloor.bestMs, bench::Target::TwiceFloor);
}

} // namespace

int main(int argc, char *argv[])
{
    QString plans;
    QTextStream planStream(&plans);
    const int status = bench::runPerSize(
        argc, argv, QStringLiteral("Tree editor, write side"),
        [&planStream](const bench::LargeDatabase &database, int runs, bench::BenchTable &table) {
            benchSize(database, runs, table, planStream);
        },
        {100000});
    QTextStream(stdout) << '\n' << plans;
    return status;
}
