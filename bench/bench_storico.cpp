// The journal's cost and its readings, on a large generated tree, through the real form:
//   - the editor's writes (1,000 ticked subjects inserted, a 20,000-node subtree removed, the
//     billing values pushed down 10,000 nodes) on the database with its journal, against the same
//     writes on a copy without the journal's triggers;
//   - the undo of the insertion and of the removal, against the bare DELETEs or INSERTs of the
//     same rows plus one reload;
//   - one node's history among 1,000,000 journal rows, with the journal's size per row;
//   - the comparison of two days, against the two as-of-date queries stepped bare.
//
//   bench_storico [--db-dir DIR] [--sizes 100000] [--runs N]

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"
#include "largetree.h"

#include "data/storicostatements.h"
#include "db/sqlitefile.h"
#include "forms/distinta/confronto.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/letturastorico.h"
#include "forms/distinta/parti.h"
#include "framework/treelist/treelist.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QDate>
#include <QTemporaryDir>
#include <QTextStream>

#include <memory>

namespace {

using bench::focusNode;
using bench::idList;
using bench::Shape;

constexpr int newSubjects = 1000;
constexpr int journalRows = 1000000;

QString verdict(double ratio, double target)
{
    return QStringLiteral("target <= %1x: %2")
        .arg(target)
        .arg(ratio <= target ? QStringLiteral("met") : QStringLiteral("MISSED"));
}

// One working copy of the generated database with 1,000 customers no classification holds, and
// the editor open on it; without the journal, its triggers are gone.
struct Copia
{
    Copia(const bench::LargeDatabase &generated, const QString &path, bool journal)
        : bare(copied(generated.path, path))
    {
        db::registerSqliteFunctions(bare.handle());
        bare.exec(QStringLiteral("PRAGMA synchronous=NORMAL; PRAGMA recursive_triggers=OFF"));
        if (!journal) {
            for (const char *table : {"GD01", "GD02", "GD03", "GD12", "WF02"})
                for (const char *kind : {"INSERT", "UPDATE", "DELETE"})
                    bare.exec(
                        QStringLiteral("DROP TRIGGER TR_%1_STORICO_%2").arg(QLatin1String(table), QLatin1String(kind)));
        }
        firstNew = generated.nodes + 1;
        bench::addUnlinkedCustomers(bare, firstNew, newSubjects);
        host = std::make_unique<bench::EditorHost>(path);
        form = host->openEditor();
        bench::check(form && host->log().isQuiet(), QStringLiteral("the editor did not open cleanly"));
        tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));
    }

    static const QString &copied(const QString &from, const QString &to)
    {
        bench::copyDatabase(from, to);
        return to;
    }

    QString removeNew() const
    {
        return QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(firstNew);
    }

    // The new subjects ticked, the parent focused: ready for CMD_ADDANAGR.
    void prontaAInserire(qint64 parentNode)
    {
        bare.exec(removeNew());
        form->CaricaDistinta();
        form->CaricaAnagraficheDistinta();
        const db::RecordsetPtr ticks = form->parti().anagrafiche.lista()->clone();
        const int code = ticks->fieldIndex(QStringLiteral("Codice"));
        for (ticks->moveFirst(); !ticks->eof(); ticks->moveNext()) {
            if (ticks->value(code).toInt() >= firstNew)
                ticks->setValue(QStringLiteral("Seleziona"), 1);
        }
        focusNode(tree, form, parentNode);
    }

    dbsetup::SqliteFile bare;
    int firstNew = 0;
    std::unique_ptr<bench::EditorHost> host;
    FRMGD_DISTINTA *form = nullptr;
    fw::TreeList *tree = nullptr;
};

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table)
{
    QTemporaryDir work;
    Copia with(generated, work.filePath(QStringLiteral("con.sqlite")), true);
    Copia without(generated, work.filePath(QStringLiteral("senza.sqlite")), false);
    const Shape shape(with.bare, generated.typeId);
    const qint64 parentNode = shape.nearest(10);
    const qint64 removedNode = shape.nearest(20000);
    const qint64 propagatedNode = shape.nearest(10000);

    // ---- insertion of 1,000 subjects, with and without the journal
    const auto insertion = [&](Copia &copy) {
        return bench::measure(
            runs, [&] { copy.prontaAInserire(parentNode); },
            [&] { copy.form->parti().inserimento.CMD_ADDANAGR_Click(); });
    };
    const bench::Timing insertBare = insertion(without);
    const bench::Timing insertJournal = insertion(with);
    bench::check(with.bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = "
                                                 "(SELECT MAX(GD90_ID) FROM GD90_OPERAZIONI)"))
                     == newSubjects,
                 QStringLiteral("the insertion is not one operation of %1 rows").arg(newSubjects));
    bench::addTiming(table, QStringLiteral("floor: insert 1,000 subjects without the journal"), insertBare,
                     insertBare.bestMs);
    bench::addTiming(table, QStringLiteral("insert 1,000 subjects with the journal"), insertJournal, insertBare.bestMs,
                     bench::Target::None, verdict(insertJournal.bestMs / insertBare.bestMs, 1.25));

    // ---- their undo, against the DELETEs of the same rows stepped bare and one reload
    QList<qint64> inserted;
    {
        dbsetup::SqliteStatement ids = with.bare.prepare(
            QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(with.firstNew));
        while (ids.step())
            inserted << ids.columnInt64(0);
    }
    const bench::Timing undoInsertFloor = bench::measure(runs, [&] {
        dbsetup::inTransaction(with.bare, [&] {
            dbsetup::SqliteStatement remove = with.bare.prepare(
                QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = ?"));
            for (qint64 id : std::as_const(inserted))
                remove.insert(std::int64_t(id));
            with.bare.exec(QStringLiteral("ROLLBACK; BEGIN"));
        });
        with.form->CaricaDistinta();
    });
    const bench::Timing undoInsert = bench::measure(
        runs,
        [&] {
            with.prontaAInserire(parentNode);
            with.form->parti().inserimento.CMD_ADDANAGR_Click();
        },
        [&] { with.form->parti().annullamento.CMD_ANNULLA_Click(); });
    bench::check(
        with.bare.scalar(
            QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(with.firstNew))
            == 0,
        QStringLiteral("the undo left inserted nodes: ") + with.host->log().messageTexts().join(u'/'));
    bench::addTiming(table, QStringLiteral("floor: the 1,000 DELETEs stepped bare + reload"), undoInsertFloor,
                     undoInsertFloor.bestMs);
    bench::addTiming(table, QStringLiteral("undo of the insertion: CMD_ANNULLA"), undoInsert, undoInsertFloor.bestMs,
                     bench::Target::TwiceFloor);

    // ---- removal of a 20,000-node subtree, with and without the journal
    const QList<qint64> removed = QList<qint64> {removedNode} + shape.below(removedNode);
    for (Copia *copy : {&with, &without}) {
        copy->bare.exec(copy->removeNew()); // the insertion's last run left them in the copy without the journal
        copy->bare.exec(
            QStringLiteral("CREATE TABLE BENCH_NODI AS SELECT * FROM GD02_DISTINTA WHERE GD02_ID IN (%1); "
                           "CREATE TABLE BENCH_PROMO AS SELECT * FROM GD12_PROMO WHERE GD12_ID_GD02 IN (%1); "
                           "CREATE TABLE BENCH_STATI AS SELECT * FROM WF02_STATORIGA WHERE WF02_GUID IN "
                           "(SELECT gd02_guid FROM BENCH_NODI)")
                .arg(idList(removed)));
    }
    const auto putBack = [](Copia &copy) {
        copy.bare.exec(QStringLiteral("INSERT OR IGNORE INTO GD02_DISTINTA SELECT * FROM BENCH_NODI; "
                                      "INSERT OR IGNORE INTO GD12_PROMO SELECT * FROM BENCH_PROMO; "
                                      "INSERT OR IGNORE INTO WF02_STATORIGA SELECT * FROM BENCH_STATI"));
    };
    const auto removal = [&](Copia &copy) {
        copy.host->log().setDefaultAnswer(fw::Answer::Yes);
        const bench::Timing timing = bench::measure(
            runs,
            [&] {
                putBack(copy);
                copy.form->CaricaDistinta();
                focusNode(copy.tree, copy.form, removedNode);
                copy.host->log().clear();
            },
            [&] { copy.form->parti().eliminazione.EliminaCliforDaStruttura(); });
        bench::check(copy.tree->count() == generated.nodes - removed.size(),
                     QStringLiteral("the removal left %1 nodes instead of %2: ")
                             .arg(copy.tree->count())
                             .arg(generated.nodes - removed.size())
                         + copy.host->log().messageTexts().join(u'/'));
        return timing;
    };
    const bench::Timing removeBare = removal(without);
    const bench::Timing removeJournal = removal(with);
    bench::addTiming(table, QStringLiteral("floor: remove the subtree without the journal"), removeBare,
                     removeBare.bestMs, bench::Target::None, QStringLiteral("%1 nodes").arg(removed.size()));
    bench::addTiming(table, QStringLiteral("remove the subtree with the journal"), removeJournal, removeBare.bestMs,
                     bench::Target::TwiceFloor);
    const qint64 removalRows = with.bare.scalar(
        QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 = "
                       "(SELECT MAX(GD90_ID) FROM GD90_OPERAZIONI)"));

    // ---- its undo, against the rows' INSERTs stepped bare and one reload
    const bench::Timing undoRemoveFloor = bench::measure(runs, [&] {
        dbsetup::inTransaction(with.bare, [&] {
            for (const char *copy : {"BENCH_NODI", "BENCH_PROMO", "BENCH_STATI"}) {
                const QString target = QLatin1String(copy) == QLatin1String("BENCH_NODI")
                    ? QStringLiteral("GD02_DISTINTA")
                    : QLatin1String(copy) == QLatin1String("BENCH_PROMO") ? QStringLiteral("GD12_PROMO")
                                                                          : QStringLiteral("WF02_STATORIGA");
                const int columns = int(
                    with.bare.scalar(QStringLiteral("SELECT COUNT(*) FROM pragma_table_info('%1')").arg(target)));
                QStringList marks;
                for (int i = 0; i < columns; ++i)
                    marks << QStringLiteral("?");
                dbsetup::SqliteStatement rows = with.bare.prepare(
                    QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(QLatin1String(copy)));
                dbsetup::SqliteStatement insert = with.bare.prepare(
                    QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(target, marks.join(u',')));
                while (rows.step()) {
                    for (int i = 0; i < columns; ++i)
                        insert.bind(i + 1, rows.columnText(i));
                    insert.run();
                }
            }
            with.bare.exec(QStringLiteral("ROLLBACK; BEGIN"));
        });
        with.form->CaricaDistinta();
    });
    const bench::Timing undoRemove = bench::measure(
        runs,
        [&] {
            putBack(with);
            with.form->CaricaDistinta();
            focusNode(with.tree, with.form, removedNode);
            with.form->parti().eliminazione.EliminaCliforDaStruttura();
        },
        [&] { with.form->parti().annullamento.CMD_ANNULLA_Click(); });
    bench::check(with.tree->count() == generated.nodes,
                 QStringLiteral("the undo did not bring the subtree back: ")
                     + with.host->log().messageTexts().join(u'/'));
    with.host->log().setDefaultAnswer(0);
    bench::addTiming(table, QStringLiteral("floor: the subtree's INSERTs stepped bare + reload"), undoRemoveFloor,
                     undoRemoveFloor.bestMs, bench::Target::None,
                     QStringLiteral("%1 rows of nodes, campaigns and states").arg(removalRows));
    bench::addTiming(table, QStringLiteral("undo of the removal: CMD_ANNULLA"), undoRemove, undoRemoveFloor.bestMs,
                     bench::Target::TwiceFloor);

    // ---- the billing values pushed down 10,000 nodes, with and without the journal
    const QList<qint64> branch = shape.below(propagatedNode);
    const QString reset = QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 0, GD02_CLIFORFATT_CG44 = NULL "
                                         "WHERE GD02_ID IN (%1); UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 4, "
                                         "GD02_CLIFORFATT_CG44 = 1 WHERE GD02_ID = %2")
                              .arg(idList(branch))
                              .arg(propagatedNode);
    const auto propagation = [&](Copia &copy) {
        return bench::measure(
            runs,
            [&] {
                copy.bare.exec(reset);
                copy.form->CaricaDistinta();
                focusNode(copy.tree, copy.form, propagatedNode);
                emit copy.tree->mouseDown(copy.tree->focusedNode(), QString(), Qt::RightButton, QPoint());
            },
            [&] { copy.form->parti().menu.mnuPropagaFigli_Click(); });
    };
    const bench::Timing propagateBare = propagation(without);
    const bench::Timing propagateJournal = propagation(with);
    bench::addTiming(table, QStringLiteral("floor: propagate without the journal"), propagateBare, propagateBare.bestMs,
                     bench::Target::None, QStringLiteral("%1 nodes").arg(branch.size()));
    bench::addTiming(table, QStringLiteral("propagate with the journal"), propagateJournal, propagateBare.bestMs,
                     bench::Target::TwiceFloor);

    // ---- a node's history among 1,000,000 journal rows, and the journal's size per row
    const auto fileBytes = [&] {
        return with.bare.scalar(QStringLiteral("PRAGMA page_count"))
            * with.bare.scalar(QStringLiteral("PRAGMA page_size"));
    };
    const qint64 before = fileBytes();
    const qint64 existing = with.bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO"));
    // Rows like the real ones (the removal's, the propagation's), for nodes of no tree.
    dbsetup::inTransaction(with.bare, [&] {
        for (qint64 added = 0; existing + added < journalRows;) {
            const qint64 batch = std::min<qint64>(existing, journalRows - existing - added);
            with.bare.exec(
                QStringLiteral(
                    "INSERT INTO GD91_RIGHESTORICO (GD91_ID_GD90, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, "
                    "GD91_DITTA_CG18, GD91_ID_GD01, GD91_ID_GD02, GD91_TIPOCF_CG44, GD91_CLIFOR_CG44, GD91_GUID, "
                    "GD91_DATAORA, GD91_UTENTE, GD91_GRUPPO, GD91_PRIMA, GD91_DOPO) "
                    "SELECT GD91_ID_GD90, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE + %1, GD91_DITTA_CG18, "
                    "GD91_ID_GD01, GD91_ID_GD02 + %1, GD91_TIPOCF_CG44, GD91_CLIFOR_CG44 + %1, "
                    "GD91_GUID || '-%1', GD91_DATAORA, GD91_UTENTE, GD91_GRUPPO, GD91_PRIMA, GD91_DOPO "
                    "FROM GD91_RIGHESTORICO WHERE GD91_ID <= (SELECT MIN(GD91_ID) FROM GD91_RIGHESTORICO) + %2")
                    .arg(10000000 + added * 10)
                    .arg(batch - 1));
            added += batch;
        }
    });
    const qint64 total = with.bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO"));
    const double bytesPerRow = double(fileBytes() - before) / double(total - existing);
    QString guid;
    {
        dbsetup::SqliteStatement read = with.bare.prepare(
            QStringLiteral("SELECT gd02_guid FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(removedNode));
        if (read.step())
            guid = read.columnText(0);
    }
    int lines = 0;
    const bench::Timing history = bench::measure(runs, [&] {
        lines = int(distinta::LetturaStorico(with.form->connection(), 1)
                        .leggi(storicostatements::nodeHistoryQuery(1, removedNode, guid))
                        .size());
    });
    bench::check(lines > 0, QStringLiteral("the node has no history"));
    table.addRow(QStringLiteral("one node's history among %1 journal rows").arg(total), history.bestMs,
                 QStringLiteral("ms"), std::nullopt,
                 QStringLiteral("%1 lines, median %2; target < 20 ms: %3")
                     .arg(lines)
                     .arg(bench::ms(history.medianMs))
                     .arg(history.bestMs < 20 ? QStringLiteral("met") : QStringLiteral("MISSED")));
    table.addRow(QStringLiteral("journal size per changed row (row and its indexes)"), bytesPerRow,
                 QStringLiteral("bytes"), std::nullopt,
                 QStringLiteral("%1 rows added, the file grew by %2 MB")
                     .arg(total - existing)
                     .arg(double(fileBytes() - before) / 1048576.0, 0, 'f', 1));

    // ---- the comparison of two days, against the two as-of-date queries stepped bare
    const QDate a(2024, 6, 1);
    const QDate b(2025, 6, 1);
    const bench::Timing compareFloor = bench::measure(runs, [&] {
        for (const QDate &day : {a, b})
            bench::stepBare(with.bare, storicostatements::linksValidOnQuery(1, generated.typeId, day));
    });
    int differences = 0;
    const bench::Timing compare = bench::measure(runs, [&] {
        differences = int(distinta::Confronto::confronta(with.form->connection(), 1, generated.typeId, 0, a, b).size());
    });
    bench::addTiming(table, QStringLiteral("floor: the two as-of-date queries stepped bare"), compareFloor,
                     compareFloor.bestMs);
    bench::addTiming(table, QStringLiteral("compare two days: Confronto"), compare, compareFloor.bestMs,
                     bench::Target::TwiceFloor, QStringLiteral("%1 differences").arg(differences));
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("History: the journal's cost, undo, readings"),
                             [](const bench::LargeDatabase &database, int runs, bench::BenchTable &table) {
                                 benchSize(database, runs, table);
                             },
                             {100000});
}
