#include "demodatabase.h"

#include "demofile.h"

#include "platform/db/connectionstring.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace dbsetup {

namespace {

QString requireSqliteFile(db::Connection &connection)
{
    const QString path = sqliteFileOf(connection.connectionString());
    if (path.isEmpty()) {
        db::DbError error {QStringLiteral("Lo schema e i dati dimostrativi si creano solo su un database SQLite;"
                                          " per SQL Server usare db/schema_sqlserver.sql."),
                           QStringLiteral("SQLite"),
                           {},
                           0};
        throw db::DatabaseError({error});
    }
    return path;
}

void removeDatabaseFiles(const QString &path)
{
    for (const QString &suffix :
         {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")})
        QFile::remove(path + suffix);
}

} // namespace

void createSchema(db::Connection &connection)
{
    createSchemaAt(requireSqliteFile(connection));
}

void insertDemoData(db::Connection &connection)
{
    insertDemoDataAt(requireSqliteFile(connection));
}

bool ensureDemoDatabase(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && info.size() > 0)
        return false;
    if (!QDir().mkpath(info.absolutePath())) {
        db::DbError error {
            QStringLiteral("Impossibile creare la cartella ") + info.absolutePath(), QStringLiteral("SQLite"), {}, 0};
        throw db::DatabaseError({error});
    }
    // Built aside and renamed at the end, so that an interrupted creation never leaves a
    // half-filled database where the shell looks for it.
    const QString building = path + QStringLiteral(".creating");
    removeDatabaseFiles(building);
    try {
        createSchemaAt(building);
        insertDemoDataAt(building);
    } catch (...) {
        removeDatabaseFiles(building);
        throw;
    }
    QFile::remove(path);
    if (!QFile::rename(building, path)) {
        removeDatabaseFiles(building);
        db::DbError error {QStringLiteral("Impossibile creare il database ") + path, QStringLiteral("SQLite"), {}, 0};
        throw db::DatabaseError({error});
    }
    return true;
}

QString sqliteConnectionString(const QString &path, bool readOnly)
{
    const QString connection = QStringLiteral("Provider=SQLite;")
        + db::connectionstring::entry(QStringLiteral("Data Source"), path);
    return readOnly ? connection + QStringLiteral(";Mode=Read") : connection;
}

QString defaultDemoDatabasePath()
{
    // The generic data folder (~/.local/share on Linux) is the same whatever the application's
    // names, which the module's callers may or may not have set.
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.local/share");
    return base + QStringLiteral("/VRAX_DISTINTA/demo.sqlite");
}

} // namespace dbsetup
