// The floor of the tree editor's benchmarks on its own: generates (or reuses) the large
// databases and times the bare node query at each size, so that the harness can be checked
// before the editor is measured against it.

#include "benchtable.h"
#include "benchutil.h"

#include "platform/db/databaseerror.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const bench::Options options = bench::parseOptions(app.arguments());
    bench::DatabaseFolder folder(options.databaseDir);

    bench::BenchTable table(QStringLiteral("Floor: bare node query stepped through with sqlite3"));
    try {
        for (const int nodes : options.sizes) {
            const QString size = QString::number(nodes);
            const bench::LargeDatabase database = folder.database(nodes);
            if (database.generationMs > 0)
                table.addRow(QStringLiteral("generation, %1 nodes").arg(size), database.generationMs,
                             QStringLiteral("ms"));

            bench::resetPeakMemory();
            const bench::Memory before = bench::memoryUsage();
            const bench::Floor floor = bench::measureFloor(database, options.runs);
            table.addRow(QStringLiteral("rows read, %1 nodes").arg(size), double(floor.rows), QStringLiteral("rows"));
            table.addRow(QStringLiteral("floor best, %1 nodes").arg(size), floor.timing.bestMs, QStringLiteral("ms"),
                         floor.timing.bestMs);
            table.addRow(QStringLiteral("floor median, %1 nodes").arg(size), floor.timing.medianMs,
                         QStringLiteral("ms"), floor.timing.bestMs, QStringLiteral("%1 runs").arg(floor.timing.runs));
            table.addRow(QStringLiteral("floor CPU best, %1 nodes").arg(size), floor.timing.bestCpuMs,
                         QStringLiteral("ms"), floor.timing.bestMs);
            table.addRow(QStringLiteral("floor per node, %1 nodes").arg(size),
                         floor.timing.bestMs * 1000.0 / std::max<qint64>(floor.rows, 1), QStringLiteral("us"));
            table.addRow(QStringLiteral("peak memory growth, %1 nodes").arg(size),
                         double(bench::memoryUsage().peakKb - before.currentKb), QStringLiteral("KB"));
        }
    } catch (const db::DatabaseError &error) {
        QTextStream(stderr) << "bench_floor: " << error.message() << '\n' << error.statement() << '\n';
        return 1;
    }
    table.print();
    return 0;
}
