// What the schema's tree checks and the removal of what hangs on a node cost the writes: each
// figure runs on a fresh copy of the generated database, once as the schema and the connection
// are and once as the floor has them, in the same run:
//   * inserts and updates: the checks (TR_GD02_DISTINTA_INSERT/UPDATE) dropped;
//   * removing a subtree: the delete trigger as it was before, which removed the subtree alone,
//     on a connection with recursive triggers on, as connections were opened before.
//
//   bench_constraints [--db-dir DIR] [--sizes 100000] [--runs N]

#include "benchtable.h"
#include "benchutil.h"

#include "db/demodatabase.h"
#include "db/sqlitefile.h"
#include "platform/db/backend.h"
#include "platform/db/databaseerror.h"
#include "platform/db/recordset.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

constexpr int Writes = 2000;

const char *const subtreeOnlyDelete =
    "CREATE TRIGGER TR_GD02_DISTINTA_DELETE AFTER DELETE ON GD02_DISTINTA\n"
    "BEGIN\n"
    "    DELETE FROM GD02_DISTINTA\n"
    "     WHERE GD02_ID IN (WITH RECURSIVE SUBTREE(ID) AS (\n"
    "                           SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_IDPARENT_GD02 = OLD.GD02_ID\n"
    "                           UNION\n"
    "                           SELECT D.GD02_ID FROM GD02_DISTINTA D INNER JOIN SUBTREE S ON D.GD02_IDPARENT_GD02 = "
    "S.ID)\n"
    "                       SELECT ID FROM SUBTREE);\n"
    "END;";

enum class Triggers { Schema, Floor };

// A figure against its floor: best wall time, and in the note the medians and the best CPU
// times of both, the figure to trust when other programs share the machine.
void addPair(bench::BenchTable &table, const QString &figure, const QString &floorFigure, const bench::Timing &timing,
             const bench::Timing &floor, const QString &remark = {})
{
    table.addRow(floorFigure, floor.bestMs, QStringLiteral("ms"), std::nullopt,
                 QStringLiteral("median %1, CPU %2").arg(floor.medianMs, 0, 'f', 1).arg(floor.bestCpuMs, 0, 'f', 1));
    QString note = QStringLiteral("median %1, CPU %2 (%3x the floor's)")
                       .arg(timing.medianMs, 0, 'f', 1)
                       .arg(timing.bestCpuMs, 0, 'f', 1)
                       .arg(timing.bestCpuMs / std::max(floor.bestCpuMs, 0.001), 0, 'f', 2);
    if (!remark.isEmpty())
        note += QStringLiteral("; ") + remark;
    table.addRow(figure, timing.bestMs, QStringLiteral("ms"), floor.bestMs, note);
}

// A copy of the generated database to write on, with the schema's triggers or the floor's.
QString freshCopy(const QString &source, const QString &folder, Triggers triggers)
{
    const QString copy = folder + QStringLiteral("/copia.sqlite");
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(copy + QLatin1String(suffix));
    if (!QFile::copy(source, copy))
        throw db::DatabaseError({{QStringLiteral("cannot copy ") + source, QStringLiteral("bench"), {}, 0}});
    if (triggers == Triggers::Floor) {
        dbsetup::SqliteFile file(copy);
        file.exec(QStringLiteral("DROP TRIGGER TR_GD02_DISTINTA_INSERT; DROP TRIGGER TR_GD02_DISTINTA_UPDATE;"
                                 " DROP TRIGGER TR_GD02_DISTINTA_DELETE;"));
        file.exec(QString::fromLatin1(subtreeOnlyDelete));
    }
    return copy;
}

QString nodeInsert(qint64 parent, int code)
{
    return QStringLiteral("INSERT INTO GD02_DISTINTA  (  GD02_ID_GD01,  GD02_IDPARENT_GD02,  GD02_DITTA_CG18,"
                          "  GD02_TIPOCF_CG44,  GD02_CLIFOR_CG44,  GD02_INDREGPROV,  GD02_ID_WF02,  GD02_DATAINIZIOVAL,"
                          "  GD02_DATAFINEVAL,  GD02_DATACRE,  GD02_GRUPPOCRE,  GD02_UTENTECRE,  GD02_DATAVAR,"
                          "  GD02_GRUPPOVAR,  GD02_UTENTEVAR,  GD02_TIPOANAGFATT,  GD02_INDEREPROMO ) VALUES ("
                          "  1,  %1,  1,  0,  %2,  0,  0,  CONVERT(DateTime,'01/01/2024',103),"
                          "  CONVERT(DateTime,'31/12/2099',103),  CONVERT(DateTime,'15/03/2025',103),  'ADMIN',"
                          "  'bench',  CONVERT(DateTime,'15/03/2025',103),  'ADMIN',  'bench',  0,  0 )")
        .arg(parent)
        .arg(code);
}

// The node whose subtree comes closest to `wanted` nodes, and that size.
std::pair<qint64, qint64> subtreeNear(dbsetup::SqliteFile &file, qint64 wanted)
{
    std::pair<qint64, qint64> best {0, 0};
    dbsetup::SqliteStatement candidates = file.prepare(QStringLiteral(
        "SELECT C.GD02_ID FROM GD02_DISTINTA C INNER JOIN GD02_DISTINTA P ON P.GD02_ID = C.GD02_IDPARENT_GD02"
        " WHERE IFNULL(P.GD02_IDPARENT_GD02, 0) = 0 OR P.GD02_IDPARENT_GD02 IN"
        " (SELECT GD02_ID FROM GD02_DISTINTA WHERE IFNULL(GD02_IDPARENT_GD02, 0) = 0) LIMIT 200"));
    QList<qint64> ids;
    while (candidates.step())
        ids << candidates.columnInt64(0);
    for (qint64 id : ids) {
        const qint64 size = file.scalar(
            QStringLiteral(
                "WITH RECURSIVE S(ID) AS (SELECT %1 UNION ALL SELECT D.GD02_ID FROM GD02_DISTINTA D INNER JOIN S"
                " ON D.GD02_IDPARENT_GD02 = S.ID) SELECT COUNT(*) FROM S")
                .arg(id));
        if (best.first == 0 || std::abs(size - wanted) < std::abs(best.second - wanted))
            best = {id, size};
    }
    return best;
}

void benchSize(const bench::LargeDatabase &database, int runs, bench::BenchTable &table)
{
    QTemporaryDir folder;
    const QString dir = folder.path();
    db::ConnectionPtr connection;
    const auto openCopy = [&](Triggers triggers) {
        connection.reset();
        connection = db::Connection::open(dbsetup::sqliteConnectionString(freshCopy(database.path, dir, triggers)));
        if (triggers == Triggers::Floor)
            connection->backend().execute(QStringLiteral("PRAGMA recursive_triggers=ON"));
    };
    qint64 parent = 0;
    {
        dbsetup::SqliteFile file(database.path);
        parent = file.scalar(
            QStringLiteral("SELECT MIN(GD02_ID) FROM GD02_DISTINTA WHERE IFNULL(GD02_IDPARENT_GD02, 0) = 0"));
    }

    // The editor's INSERT, one statement per node, as a batch of InserisciNodo sends it.
    const auto inserts = [&] {
        for (int i = 0; i < Writes; ++i)
            connection->execute(nodeInsert(i % 2 ? parent : 0, 1 + i));
    };
    const bench::Timing insertFloor = bench::measure(
        runs, [&] { openCopy(Triggers::Floor); }, inserts);
    const bench::Timing insertChecked = bench::measure(
        runs, [&] { openCopy(Triggers::Schema); }, inserts);
    addPair(table, QStringLiteral("%1 node INSERTs, checked").arg(Writes),
            QStringLiteral("floor: %1 node INSERTs, no checks").arg(Writes), insertChecked, insertFloor,
            QStringLiteral("one statement each, as InserisciNodo sends them"));

    // Propagation: one recordset update per node, the billing rule and the end of validity.
    const auto updates = [&] {
        const db::RecordsetPtr tree = connection->openRecordset(
            QStringLiteral("SELECT * FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 1 AND GD02_ID <= %1").arg(Writes));
        for (tree->moveFirst(); !tree->eof(); tree->moveNext()) {
            tree->setValue(QStringLiteral("GD02_TIPOANAGFATT"), 3);
            tree->setValue(QStringLiteral("GD02_DATAFINEVAL"), QDateTime(QDate(2098, 12, 31), QTime(0, 0)));
            tree->update();
        }
    };
    const bench::Timing updateFloor = bench::measure(
        runs, [&] { openCopy(Triggers::Floor); }, updates);
    const bench::Timing updateChecked = bench::measure(
        runs, [&] { openCopy(Triggers::Schema); }, updates);
    addPair(table, QStringLiteral("%1 recordset updates, checked").arg(Writes),
            QStringLiteral("floor: %1 recordset updates, no checks").arg(Writes), updateChecked, updateFloor,
            QStringLiteral("billing rule and end of validity"));

    // Removing a subtree of about 20,000 nodes with the editor's DELETE.
    std::pair<qint64, qint64> subtree;
    {
        dbsetup::SqliteFile file(database.path);
        subtree = subtreeNear(file, 20000);
    }
    const QString remove = QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(subtree.first);
    const bench::Timing deleteFloor = bench::measure(
        runs, [&] { openCopy(Triggers::Floor); }, [&] { connection->execute(remove); });
    const bench::Timing deleteSchema = bench::measure(
        runs, [&] { openCopy(Triggers::Schema); }, [&] { connection->execute(remove); });
    const qint64 left =
        connection->openRecordset(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA"))->value(0).toLongLong();
    if (left != database.nodes - subtree.second)
        throw db::DatabaseError(
            {{QStringLiteral("the subtree was not removed whole"), QStringLiteral("bench"), {}, 0}});
    addPair(table, QStringLiteral("remove a subtree with its campaigns and states"),
            QStringLiteral("floor: remove a subtree as before (nodes only, recursive triggers)"), deleteSchema,
            deleteFloor, QStringLiteral("%1 nodes").arg(subtree.second));

    // The generator's own node inserts: prepared, in one transaction, checked or not.
    const auto bulk = [&] {
        connection.reset();
        dbsetup::SqliteFile file(dir + QStringLiteral("/copia.sqlite"));
        file.exec(QStringLiteral("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE;"
                                 " PRAGMA cache_size=-262144;"));
        dbsetup::inTransaction(file, [&] {
            dbsetup::SqliteStatement insert = file.prepare(QStringLiteral(
                "INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44,"
                " GD02_CLIFOR_CG44, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL) VALUES (1, ?, 1, 0, ?, '2024-01-01 00:00:00',"
                " '2099-12-31 00:00:00')"));
            for (int i = 0; i < database.nodes; ++i)
                insert.insert(std::int64_t(i % 2 ? parent : 0), i + 1);
        });
    };
    const bench::Timing bulkFloor = bench::measure(
        runs, [&] { openCopy(Triggers::Floor); }, bulk);
    const bench::Timing bulkChecked = bench::measure(
        runs, [&] { openCopy(Triggers::Schema); }, bulk);
    addPair(table, QStringLiteral("%1 bulk node inserts, checked").arg(database.nodes),
            QStringLiteral("floor: %1 bulk node inserts, no checks").arg(database.nodes), bulkChecked, bulkFloor,
            QStringLiteral("as the generator writes them"));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    bench::Options options = bench::parseOptions(app.arguments());
    if (!app.arguments().contains(QStringLiteral("--sizes")))
        options.sizes = {100000};
    bench::DatabaseFolder folder(options.databaseDir);
    try {
        for (const int nodes : options.sizes) {
            bench::BenchTable table(
                QStringLiteral("Tree checks and node removal, %1 nodes (best of %2)").arg(nodes).arg(options.runs));
            benchSize(folder.database(nodes), options.runs, table);
            table.print();
        }
    } catch (const db::DatabaseError &error) {
        QTextStream(stderr) << "bench_constraints: " << error.message() << '\n';
        return 1;
    }
    return 0;
}
