#include "demofile.h"

#include "democompanies.h"
#include "embeddedscripts.h"
#include "sqlitefile.h"

#include "platform/db/connectionstring.h"

namespace dbsetup {

QString sqliteFileOf(const QString &connectionString)
{
    bool sqlite = false;
    QString dataSource;
    QString database;
    for (const db::connectionstring::Entry &entry : db::connectionstring::parse(connectionString)) {
        const QString key = entry.key.toLower();
        const QString &value = entry.value;
        if (key == QLatin1String("provider") && value.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
            sqlite = true;
        else if (key == QLatin1String("tsqlcompat") && value.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
            sqlite = true;
        else if (key == QLatin1String("driver") && value.contains(QLatin1String("sqlite"), Qt::CaseInsensitive))
            sqlite = true;
        else if (key == QLatin1String("data source") && dataSource.isEmpty())
            dataSource = value;
        else if (key == QLatin1String("database") && database.isEmpty())
            database = value;
    }
    if (!sqlite)
        return {};
    return dataSource.isEmpty() ? database : dataSource;
}

void createSchemaAt(const QString &path)
{
    SqliteFile file(path);
    file.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    inTransaction(file, [&] {
        file.execScript(sqliteSchemaScript());
        file.execScript(journalScript());
        file.exec(QStringLiteral("PRAGMA user_version = %1").arg(kSchemaVersion));
    });
}

void insertDemoDataAt(const QString &path)
{
    SqliteFile file(path);
    inTransaction(file, [&] {
        writeDemoCompanies(file);
        file.exec(QStringLiteral("DELETE FROM GD91_RIGHESTORICO; DELETE FROM GD90_OPERAZIONI"));
    });
}

} // namespace dbsetup
