// The pages under the tree following the focus: the focus moved through 1,000 consecutive nodes
// of the large tree, once with each page showing, through the real form. Each walk is set
// against a floor measured in the same run: the statements that the walk sent (recorded by the
// statement trace in a first walk) translated once and stepped bare with sqlite3, every row
// read, on a second connection to the same file.
//
//   bench_dettagli [--db-dir DIR] [--sizes 100000] [--runs N]

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"

#include "db/sqlitefile.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/treelist/treelist.h"
#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QApplication>
#include <QFile>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <sqlite3.h>

namespace {

constexpr int walkLength = 1000;
constexpr int firstNode = 2000; // tree order: well inside the tree, away from its first root
constexpr double keyRepeatShareMs = 3.3;

const char *const pageNames[] = {"master data", "in-invoice campaigns", "off-invoice conditions"};

// One focus change after another, each with its page load and followed by a turn of the event
// loop, as between two keys.
void walk(fw::TreeList *tree, int from, int count)
{
    for (int i = 0; i < count; ++i) {
        tree->setFocusedAbsoluteIndex(from + i);
        QCoreApplication::processEvents();
    }
}

QStringList recordedStatements(const QString &tracePath)
{
    QFile trace(tracePath);
    bench::check(trace.open(QIODevice::ReadOnly), QStringLiteral("no statement trace"));
    QStringList statements = QString::fromUtf8(trace.readAll()).split(QStringLiteral("\nGO\n"), Qt::SkipEmptyParts);
    // Statements with bound values are written back rows; a focus walk must not write any.
    for (const QString &statement : std::as_const(statements))
        bench::check(!statement.contains(QStringLiteral("\n-- ")), QStringLiteral("the walk wrote: ") + statement);
    return statements;
}

// The floor's own form of a statement: translated once, outside the timing.
struct BareStatement
{
    QString sqlite;
    bool returnsRows = false;
};

QList<BareStatement> translate(const QStringList &statements)
{
    QList<BareStatement> bare;
    for (const QString &tsql : statements) {
        const QString trimmed = tsql.trimmed();
        const bool select = trimmed.startsWith(QStringLiteral("SELECT"), Qt::CaseInsensitive)
            && !trimmed.contains(QStringLiteral(" INTO #"), Qt::CaseInsensitive);
        bare.append({db::translateTsqlToSqlite(tsql), select});
    }
    return bare;
}

void stepAll(dbsetup::SqliteFile &file, const QList<BareStatement> &statements)
{
    for (const BareStatement &statement : statements) {
        if (!statement.returnsRows) {
            file.exec(statement.sqlite);
            continue;
        }
        const QByteArray text = statement.sqlite.toUtf8();
        sqlite3_stmt *rows = nullptr;
        if (sqlite3_prepare_v2(file.handle(), text.constData(), int(text.size()), &rows, nullptr) != SQLITE_OK)
            bench::fail(QStringLiteral("floor: ") + QString::fromUtf8(sqlite3_errmsg(file.handle())));
        const int columns = sqlite3_column_count(rows);
        while (sqlite3_step(rows) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column)
                sqlite3_column_text(rows, column);
        }
        sqlite3_finalize(rows);
    }
}

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table)
{
    QTemporaryDir work;
    const QString path = work.filePath(QStringLiteral("dettagli.sqlite"));
    bench::copyDatabase(generated.path, path);
    dbsetup::SqliteFile bare(path);
    db::registerSqliteFunctions(bare.handle());

    bench::EditorHost host(path);
    FRMGD_DISTINTA *form = host.openEditor();
    bench::check(form && host.log().isQuiet(), QStringLiteral("the editor did not open cleanly"));
    auto *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));
    auto *pages = form->findChild<QTabWidget *>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"));
    bench::check(tree->count() >= firstNode + walkLength, QStringLiteral("the tree is too small"));
    const QString tracePath = work.filePath(QStringLiteral("trace.sql"));

    for (int page = 0; page < 3; ++page) {
        pages->setCurrentIndex(page);
        const auto start = [&] {
            tree->setFocusedAbsoluteIndex(firstNode - 1);
            QCoreApplication::processEvents();
        };
        // The statements of one walk, as the editor sent them.
        start();
        QFile::remove(tracePath);
        qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
        walk(tree, firstNode, walkLength);
        qunsetenv("DISTINTA_SQL_TRACE");
        bench::check(host.log().isQuiet(), QStringLiteral("the walk showed a message"));
        const QList<BareStatement> statements = translate(recordedStatements(tracePath));

        const bench::Timing floor = bench::measure(runs, [&] { stepAll(bare, statements); });
        const bench::Timing editor = bench::measure(runs, start, [&] { walk(tree, firstNode, walkLength); });
        bench::check(host.log().isQuiet(), QStringLiteral("the walk showed a message"));
        const QString name = QLatin1String(pageNames[page]);
        bench::addTiming(table,
                         QStringLiteral("floor: the walk's %1 statements bare (%2)").arg(statements.size()).arg(name),
                         floor, floor.bestMs);
        bench::addTiming(table, QStringLiteral("focus through 1,000 nodes, %1 page").arg(name), editor, floor.bestMs);
        // Painted, a focus change must keep up with a held key: a tenth of the 33 ms between two
        // repeats at 30 a second.
        const double perChange = editor.bestMs / walkLength;
        table.addRow(QStringLiteral("per focus change, %1 page").arg(name), perChange, QStringLiteral("ms"),
                     floor.bestMs / walkLength,
                     perChange <= keyRepeatShareMs ? QStringLiteral("target <= 3.3 ms: met")
                                                   : QStringLiteral("target <= 3.3 ms: MISSED"));

        // The same walk with the window hidden: what is left once nothing is painted.
        QWidget *window = form->window();
        window->hide();
        const bench::Timing unpainted = bench::measure(runs, start, [&] { walk(tree, firstNode, walkLength); });
        window->show();
        QCoreApplication::processEvents();
        bench::addTiming(table, QStringLiteral("the same, window hidden (no painting), %1 page").arg(name), unpainted,
                         floor.bestMs, bench::Target::TwiceFloor);
    }

    // Keys faster than the loop: the focus crosses 1,000 nodes before the event loop turns; the
    // page is filled for the first and, once, for the node where the focus stopped.
    pages->setCurrentIndex(0);
    const bench::Timing held = bench::measure(
        runs,
        [&] {
            tree->setFocusedAbsoluteIndex(firstNode - 1);
            QCoreApplication::processEvents();
        },
        [&] {
            for (int i = 0; i < walkLength; ++i)
                tree->setFocusedAbsoluteIndex(firstNode + i);
            QCoreApplication::processEvents();
        });
    // The sheet shows the node where the focus stopped, not one it crossed.
    const qint64 lastSubject =
        tree->nodeAt(firstNode + walkLength - 1).value(QStringLiteral("trGD02_CLIFOR_CG44")).toLongLong();
    bench::check(form->parti().dettagli.datiAnagrafici().soggettoCaricato() == std::optional<qint64>(lastSubject),
                 QStringLiteral("the sheet did not catch up with the last node"));
    table.addRow(QStringLiteral("keys faster than the loop: 1,000 focus changes, two page loads (master data)"),
                 held.bestMs, QStringLiteral("ms"), std::nullopt,
                 QStringLiteral("%1 ms per focus change").arg(bench::ms(held.bestMs / walkLength)));
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("Pages under the tree"), benchSize, {100000});
}
