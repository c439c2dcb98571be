// Generation of the large benchmark databases: how long dbsetup::generateLargeDatabase takes for
// each size, against the floor of writing as many bare rows (four per node: master data,
// customer, sales data, node) into one table of an empty file with the same settings.

#include "benchtable.h"
#include "benchutil.h"

#include "db/largedatabase.h"
#include "db/sqlitefile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

double bareInsertsMs(const QString &path, int rows)
{
    return bench::timeMs([&] {
        QFile::remove(path);
        dbsetup::SqliteFile file(path);
        file.exec(QStringLiteral("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;"
                                 " CREATE TABLE T (A INTEGER, B VARCHAR(40), C INTEGER)"));
        dbsetup::inTransaction(file, [&] {
            dbsetup::SqliteStatement insert = file.prepare(QStringLiteral("INSERT INTO T VALUES (?, ?, ?)"));
            for (int i = 0; i < rows; ++i)
                insert.insert(i, "2024-01-01 00:00:00", i % 7);
        });
    });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const bench::Options options = bench::parseOptions(app.arguments());
    QTemporaryDir temporary;
    const QString directory = options.databaseDir.isEmpty() ? temporary.path() : options.databaseDir;

    bench::BenchTable table(QStringLiteral("Generazione database di prova"));
    for (int nodes : options.sizes) {
        const QString path = directory + QStringLiteral("/generate_%1.sqlite").arg(nodes);
        const double floorMs = bareInsertsMs(directory + QStringLiteral("/floor.sqlite"), nodes * 4);
        const double generationMs = bench::timeMs([&] { dbsetup::generateLargeDatabase(path, nodes, nodes); });
        table.addRow(QStringLiteral("floor: %1 bare rows").arg(nodes * 4), floorMs, QStringLiteral("ms"));
        table.addRow(QStringLiteral("generate %1 nodes").arg(nodes), generationMs, QStringLiteral("ms"), floorMs,
                     QStringLiteral("%1 MB").arg(QFileInfo(path).size() / (1024 * 1024)));
    }
    table.print();
    return 0;
}
