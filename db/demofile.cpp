#include "demofile.h"

#include "democompanies.h"
#include "embeddedscripts.h"
#include "sqlitefile.h"

#include <QStringList>

namespace dbsetup {

QString sqliteFileOf(const QString &connectionString)
{
    bool sqlite = false;
    QString dataSource;
    QString database;
    const QStringList parts = connectionString.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const qsizetype equals = part.indexOf(QLatin1Char('='));
        if (equals < 0)
            continue;
        const QString key = part.left(equals).trimmed().toLower();
        const QString value = part.mid(equals + 1).trimmed();
        if (key == QLatin1String("provider") && value.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
            sqlite = true;
        else if (key == QLatin1String("tsqlcompat") && value.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
            sqlite = true;
        else if (key == QLatin1String("driver") && value.contains(QLatin1String("sqlite"), Qt::CaseInsensitive))
            sqlite = true;
        else if (key == QLatin1String("data source"))
            dataSource = value;
        else if (key == QLatin1String("database"))
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
    inTransaction(file, [&] { file.execScript(sqliteSchemaScript()); });
}

void insertDemoDataAt(const QString &path)
{
    SqliteFile file(path);
    inTransaction(file, [&] { writeDemoCompanies(file); });
}

} // namespace dbsetup
