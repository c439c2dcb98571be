#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QTemporaryDir;

// Shared pieces of the benchmark programs: timing, memory, the generated databases and the
// floor every figure is compared with. Results go into a BenchTable (benchtable.h).
namespace bench {

// ---- timing: wall clock (QElapsedTimer), and the process's CPU time, which other programs
// running on the machine disturb less

struct Timing
{
    double bestMs = 0;    // wall clock
    double medianMs = 0;  // wall clock
    double bestCpuMs = 0; // CPU time of the process, best run
    int runs = 0;
};

// Runs work `runs` times (at least once) and returns the best and the median time.
Timing measure(int runs, const std::function<void()> &work);
// The same with prepare run before each run, outside the timing: to bring back the state the
// timed work starts from, or to drop what the previous run left.
Timing measure(int runs, const std::function<void()> &prepare, const std::function<void()> &work);

// One run of work, wall clock in milliseconds.
double timeMs(const std::function<void()> &work);

// ---- failures: the program's name and what went wrong on the standard error stream, exit 1

[[noreturn]] void fail(const QString &what);
void check(bool condition, const QString &what);

// ---- rows of a result table (benchtable.h)

class BenchTable;

// A time as the tables show it: no decimals from 100, one from 1, three below.
QString ms(double value);

// Figures that must stay within twice the floor say whether they did.
enum class Target { None, TwiceFloor };

// One row for a timed figure: best wall time and its ratio to the floor; median, CPU and runs
// in the note, with the verdict when the figure has the 2x target, then the remark.
void addTiming(BenchTable &table, const QString &figure, const Timing &timing, double floorMs,
               Target target = Target::None, const QString &remark = {});

// ---- memory of this process, from /proc/self/status

struct Memory
{
    qint64 peakKb = 0;    // VmHWM: high-water mark of the resident set
    qint64 currentKb = 0; // VmRSS
};

Memory memoryUsage();

// Restarts the high-water mark from the current resident set (writes "5" to
// /proc/self/clear_refs), so that the next memoryUsage().peakKb covers only what follows.
// False when the kernel does not allow it; the peak then covers the whole run.
bool resetPeakMemory();

// ---- command line shared by the programs
//   --db-dir <dir>    keep the generated databases in <dir> and reuse those already there
//                     (default: a temporary folder removed at exit)
//   --sizes <n,n,..>  node counts (default 100000,1000000)
//   --runs <n>        repetitions of each timed figure (default 5)

struct Options
{
    QString databaseDir;
    QList<int> sizes {100000, 1000000};
    int runs = 5;
};

Options parseOptions(const QStringList &arguments);

// ---- generated databases

// One generated database and the classification that holds its large tree.
struct LargeDatabase
{
    QString path;
    int nodes = 0; // node rows of the large tree
    int company = 0;
    int subjectKind = 0;
    qint64 typeId = 0;       // GD01_ID of the large tree
    double generationMs = 0; // 0 when an existing file was reused
};

// Hands out databases by size, generating each one once.
class DatabaseFolder
{
public:
    explicit DatabaseFolder(const QString &directory = {}); // empty: a temporary folder
    ~DatabaseFolder();

    // "<dir>/bench_<nodes>.sqlite", generated unless a complete one of today's schema is already
    // there (dbsetup::isCompleteLargeDatabase). Throws db::DatabaseError.
    LargeDatabase database(int nodes);

private:
    std::unique_ptr<QTemporaryDir> m_temporary;
    QString m_directory;
};

// ---- the floor

struct Floor
{
    Timing timing;
    qint64 rows = 0;
};

// The bare node query of the large tree (the tree editor's load statement, translated to
// SQLite), prepared and stepped through with the sqlite3 C API reading every column of every
// row, on its own connection opened once beforehand. Throws db::DatabaseError.
Floor measureFloor(const LargeDatabase &database, int runs);

// The same for any statement already in SQLite's dialect, on its own read-only connection.
Floor measureQueryFloor(const QString &databasePath, const QString &sqliteStatement, int runs);

// EXPLAIN QUERY PLAN of a statement in SQLite's dialect, one step per line, indented by depth.
QString queryPlan(const QString &databasePath, const QString &sqliteStatement);

} // namespace bench
