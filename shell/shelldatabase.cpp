#include "shell/shelldatabase.h"

#include "db/databasecheck.h"
#include "db/demodatabase.h"
#include "db/embeddedscripts.h"
#include "shell/odbcpassword.h"
#include "shell/shelloptions.h"

#include <QDir>
#include <QTextStream>

namespace {

ShellDatabase openOdbc(const ShellOptions &options)
{
    ShellDatabase database;
    const OdbcLogin login = odbcLogin(options.odbcConnectionString, options.odbcPasswordFile);
    database.warning = login.warning;
    if (!login.problem.isEmpty()) {
        database.problem = login.problem;
        return database;
    }
    database.description = QStringLiteral("Database ODBC");
    database.connection = db::Connection::open(login.connectionString);
    return database;
}

ShellDatabase openSqlite(const ShellOptions &options)
{
    ShellDatabase database;
    const QString path = options.databasePath.isEmpty() ? dbsetup::defaultDemoDatabasePath()
                                                        : QDir::current().absoluteFilePath(options.databasePath);
    const QString shown = QDir::toNativeSeparators(path);
    const dbsetup::DatabaseFileCheck check = dbsetup::checkDatabaseFile(path);
    QTextStream out(stdout);
    switch (check.kind) {
    case dbsetup::DatabaseFileCheck::Missing:
        // Without a user a missing file is most likely a mistyped path: answering from a new
        // demo database would be a wrong answer that looks right.
        if (options.unattended()) {
            database.problem = QStringLiteral("Il database %1 non esiste").arg(shown);
            return database;
        }
        dbsetup::ensureDemoDatabase(path);
        out << "Database dimostrativo creato: " << shown << Qt::endl;
        break;
    case dbsetup::DatabaseFileCheck::ModuleDatabase:
        database.readOnly = !check.writable;
        if (check.writable && (check.schemaVersion < dbsetup::kSchemaVersion || !check.walMode))
            dbsetup::prepareDatabaseAt(path);
        out << "Database: " << shown << (database.readOnly ? " (sola lettura)" : "") << Qt::endl;
        break;
    default: database.problem = check.problem; return database;
    }
    database.description = QStringLiteral("Database %1%2")
                               .arg(shown, database.readOnly ? QStringLiteral(" (sola lettura)") : QString());
    if (database.readOnly)
        database.notice = QStringLiteral("Il database %1 è aperto in sola lettura, perché l'utente non può scrivere "
                                         "nel file o nella sua cartella: le modifiche non potranno essere salvate.")
                              .arg(shown);
    database.connection = db::Connection::open(dbsetup::sqliteConnectionString(path, database.readOnly));
    return database;
}

} // namespace

ShellDatabase ShellDatabase::open(const ShellOptions &options)
{
    try {
        return options.odbcConnectionString.isEmpty() ? openSqlite(options) : openOdbc(options);
    } catch (const db::DatabaseError &error) {
        ShellDatabase failed;
        failed.problem = error.message();
        return failed;
    }
}
