#include "benchutil.h"

#include "benchtable.h"

#include "data/distintastatements.h"
#include "db/largedatabase.h"
#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sqlite3.h>
#include <time.h>
#include <vector>

namespace bench {

namespace {

double processCpuMs()
{
    timespec now {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

} // namespace

Timing measure(int runs, const std::function<void()> &work)
{
    return measure(
        runs, [] {}, work);
}

Timing measure(int runs, const std::function<void()> &prepare, const std::function<void()> &work)
{
    std::vector<double> times;
    double bestCpu = 0;
    for (int i = 0; i < std::max(runs, 1); ++i) {
        prepare();
        const double cpuStart = processCpuMs();
        times.push_back(timeMs(work));
        const double cpu = processCpuMs() - cpuStart;
        bestCpu = i == 0 ? cpu : std::min(bestCpu, cpu);
    }
    std::sort(times.begin(), times.end());
    const size_t n = times.size();
    const double median = n % 2 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2;
    return {times.front(), median, bestCpu, int(n)};
}

void fail(const QString &what)
{
    QTextStream(stderr) << QCoreApplication::applicationName() << ": " << what << '\n';
    std::exit(1);
}

void check(bool condition, const QString &what)
{
    if (!condition)
        fail(what);
}

double timeMs(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

QString ms(double value)
{
    return QString::number(value, 'f', value >= 100 ? 0 : value >= 1 ? 1 : 3);
}

void addTiming(BenchTable &table, const QString &figure, const Timing &timing, double floorMs, Target target,
               const QString &remark)
{
    QString note =
        QStringLiteral("median %1, CPU %2, %3 runs").arg(ms(timing.medianMs), ms(timing.bestCpuMs)).arg(timing.runs);
    if (target == Target::TwiceFloor)
        note += timing.bestMs <= 2 * floorMs ? QStringLiteral("; target <= 2x: met")
                                             : QStringLiteral("; target <= 2x: MISSED");
    if (!remark.isEmpty())
        note += QStringLiteral("; ") + remark;
    table.addRow(figure, timing.bestMs, QStringLiteral("ms"), floorMs, note);
}

Memory memoryUsage()
{
    Memory memory;
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly | QIODevice::Text))
        return memory;
    // Lines look like "VmHWM:\t  123456 kB".
    const auto kilobytes = [](const QByteArray &line) {
        return line.mid(line.indexOf(':') + 1).trimmed().split(' ').value(0).toLongLong();
    };
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            memory.peakKb = kilobytes(line);
        else if (line.startsWith("VmRSS:"))
            memory.currentKb = kilobytes(line);
    }
    return memory;
}

bool resetPeakMemory()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    return clearRefs.open(QIODevice::WriteOnly) && clearRefs.write("5") == 1;
}

Options parseOptions(const QStringList &arguments)
{
    Options options;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        const QString value = arguments.value(i + 1);
        if (argument == u"--db-dir" && !value.isEmpty()) {
            options.databaseDir = value;
            ++i;
        } else if (argument == u"--sizes" && !value.isEmpty()) {
            options.sizes.clear();
            for (const QString &size : value.split(u',', Qt::SkipEmptyParts))
                if (const int nodes = size.trimmed().toInt(); nodes > 0)
                    options.sizes.append(nodes);
            ++i;
        } else if (argument == u"--runs" && value.toInt() > 0) {
            options.runs = value.toInt();
            ++i;
        } else {
            QTextStream(stderr) << "ignored argument: " << argument << '\n';
        }
    }
    return options;
}

DatabaseFolder::DatabaseFolder(const QString &directory)
{
    if (directory.isEmpty()) {
        m_temporary = std::make_unique<QTemporaryDir>();
        m_directory = m_temporary->path();
    } else {
        QDir().mkpath(directory);
        m_directory = directory;
    }
}

DatabaseFolder::~DatabaseFolder() = default;

LargeDatabase DatabaseFolder::database(int nodes)
{
    LargeDatabase database;
    database.path = QDir(m_directory).filePath(QStringLiteral("bench_%1.sqlite").arg(nodes));
    database.nodes = nodes;
    database.company = dbsetup::kLargeDatabaseCompany;
    database.subjectKind = dbsetup::kLargeDatabaseKind;
    database.typeId = dbsetup::kLargeDatabaseTypeId;
    // A file left by an interrupted or older generator is not complete: it is made again.
    if (!dbsetup::isCompleteLargeDatabase(database.path, nodes)) {
        // As many subjects as nodes: every node classifies its own subject.
        database.generationMs = timeMs([&] { dbsetup::generateLargeDatabase(database.path, nodes, nodes); });
    }
    return database;
}

namespace {

void throwSqlite(sqlite3 *handle, const QString &statement)
{
    throw db::DatabaseError(
        {{QString::fromUtf8(sqlite3_errmsg(handle)), QStringLiteral("SQLite"), {}, sqlite3_extended_errcode(handle)}},
        statement);
}

} // namespace

Floor measureFloor(const LargeDatabase &database, int runs)
{
    return measureQueryFloor(database.path,
                             db::translateTsqlToSqlite(distintastatements::nodesQuery(
                                 database.company, database.subjectKind, database.typeId)),
                             runs);
}

namespace {

using SqliteHandle = std::unique_ptr<sqlite3, int (*)(sqlite3 *)>;

SqliteHandle openReadOnly(const QString &path)
{
    sqlite3 *handle = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &handle, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(handle));
        sqlite3_close_v2(handle);
        throw db::DatabaseError({{message, QStringLiteral("SQLite"), {}, 0}}, path);
    }
    db::registerSqliteFunctions(handle);
    return SqliteHandle(handle, sqlite3_close_v2);
}

} // namespace

Floor measureQueryFloor(const QString &databasePath, const QString &statement, int runs)
{
    const QByteArray sql = statement.toUtf8();
    const SqliteHandle connection = openReadOnly(databasePath);
    sqlite3 *handle = connection.get();

    Floor floor;
    volatile qint64 checksum = 0; // keeps the reads from being optimised away
    floor.timing = measure(runs, [&] {
        sqlite3_stmt *query = nullptr;
        if (sqlite3_prepare_v2(handle, sql.constData(), int(sql.size()), &query, nullptr) != SQLITE_OK)
            throwSqlite(handle, statement);
        const int columns = sqlite3_column_count(query);
        qint64 rows = 0;
        qint64 sum = 0;
        int code;
        while ((code = sqlite3_step(query)) == SQLITE_ROW) {
            ++rows;
            for (int c = 0; c < columns; ++c) {
                switch (sqlite3_column_type(query, c)) {
                case SQLITE_INTEGER: sum += sqlite3_column_int64(query, c); break;
                case SQLITE_FLOAT: sum += qint64(sqlite3_column_double(query, c)); break;
                case SQLITE_TEXT: sum += sqlite3_column_text(query, c)[0] + sqlite3_column_bytes(query, c); break;
                case SQLITE_BLOB: sum += sqlite3_column_bytes(query, c); break;
                default: break;
                }
            }
        }
        sqlite3_finalize(query);
        if (code != SQLITE_DONE)
            throwSqlite(handle, statement);
        floor.rows = rows;
        checksum = checksum + sum;
    });
    return floor;
}

QString queryPlan(const QString &databasePath, const QString &statement)
{
    const SqliteHandle connection = openReadOnly(databasePath);
    const QByteArray sql = (QStringLiteral("EXPLAIN QUERY PLAN ") + statement).toUtf8();
    sqlite3_stmt *query = nullptr;
    if (sqlite3_prepare_v2(connection.get(), sql.constData(), int(sql.size()), &query, nullptr) != SQLITE_OK)
        throwSqlite(connection.get(), statement);
    QHash<int, int> depthOf;
    QStringList lines;
    while (sqlite3_step(query) == SQLITE_ROW) {
        const int id = sqlite3_column_int(query, 0);
        const int parent = sqlite3_column_int(query, 1);
        const int depth = parent == 0 ? 0 : depthOf.value(parent) + 1;
        depthOf.insert(id, depth);
        lines << QString(depth * 2, u' ')
                + QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(query, 3)));
    }
    sqlite3_finalize(query);
    return lines.join(u'\n');
}

} // namespace bench
