#include "benchmain.h"

#include "benchtable.h"

#include "db/sqlitefile.h"
#include "platform/db/databaseerror.h"

#include <QApplication>
#include <QFile>
#include <QThread>
#include <exception>
#include <malloc.h>

namespace bench {

int runPerSize(int argc, char *argv[], const QString &title, const SizeBenchmark &benchSize,
               const QList<int> &defaultSizes, int defaultRuns)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("DISTINTA_SQL_TRACE");

    QApplication app(argc, argv);
    Options options = parseOptions(app.arguments());
    if (!defaultSizes.isEmpty() && !app.arguments().contains(QStringLiteral("--sizes")))
        options.sizes = defaultSizes;
    if (defaultRuns > 0 && !app.arguments().contains(QStringLiteral("--runs")))
        options.runs = defaultRuns;
    DatabaseFolder folder(options.databaseDir);
    try {
        for (const int nodes : options.sizes) {
            BenchTable table(QStringLiteral("%1, %2 nodes (%3 cores, best of %4)")
                                 .arg(title)
                                 .arg(nodes)
                                 .arg(QThread::idealThreadCount())
                                 .arg(options.runs));
            benchSize(folder.database(nodes), options.runs, table);
            table.print();
            // The next size starts from a heap without the last one's free pages.
            malloc_trim(0);
        }
    } catch (const db::DatabaseError &error) {
        fail(error.message() + u'\n' + error.statement());
    } catch (const std::exception &error) {
        fail(QString::fromUtf8(error.what()));
    }
    return 0;
}

void copyDatabase(const QString &source, const QString &target)
{
    {
        dbsetup::SqliteFile file(source);
        file.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    }
    check(QFile::copy(source, target), QStringLiteral("cannot copy %1").arg(source));
}

} // namespace bench
