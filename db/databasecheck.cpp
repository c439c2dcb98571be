#include "databasecheck.h"

#include "embeddedscripts.h"
#include "sqlitefile.h"

#include "platform/db/databaseerror.h"
#include "platform/os/filesystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>

namespace dbsetup {

namespace {

// The tables that make a file a database of this module.
const QStringList &moduleTables()
{
    static const QStringList tables {QStringLiteral("GD01_TIPODISTINTA"), QStringLiteral("GD02_DISTINTA"),
                                     QStringLiteral("GD03_PARAMETRI"), QStringLiteral("GD04_STDISTINTA"),
                                     QStringLiteral("GD12_PROMO")};
    return tables;
}

constexpr qint64 HeaderSize = 100;

// The CREATE TRIGGER statements of a schema script; each one ends with "END;" on a line of its own.
QStringList triggerStatements(const QString &script)
{
    static const QRegularExpression trigger(QStringLiteral("^CREATE TRIGGER .*?^END;"),
                                            QRegularExpression::MultilineOption
                                                | QRegularExpression::DotMatchesEverythingOption);
    QStringList statements;
    for (auto it = trigger.globalMatch(script); it.hasNext();)
        statements << it.next().captured(0);
    return statements;
}

// The statement of the script that starts with the given text, up to its semicolon.
QString scriptStatement(const QString &script, const QString &start)
{
    const qsizetype from = script.indexOf(start);
    return from < 0 ? QString() : script.mid(from, script.indexOf(QLatin1Char(';'), from) + 1 - from);
}

// A name of the catalogue as an SQL identifier.
QString quotedName(QString name)
{
    return QLatin1Char('"') + name.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

// A journal of version 2 kept its rows with AUTOINCREMENT: its rows' table is rebuilt as today's
// script declares it, rows and ids unchanged (its indexes go with the old table).
void upgradeJournalRows(SqliteFile &file)
{
    file.exec(QStringLiteral("ALTER TABLE GD91_RIGHESTORICO RENAME TO GD91_RIGHESTORICO_V2"));
    file.exec(scriptStatement(journalScript(), QStringLiteral("CREATE TABLE GD91_RIGHESTORICO")));
    file.exec(QStringLiteral("INSERT INTO GD91_RIGHESTORICO SELECT * FROM GD91_RIGHESTORICO_V2"));
    file.exec(QStringLiteral("DROP TABLE GD91_RIGHESTORICO_V2"));
}

// The journal rows' indexes as today's script declares them (earlier versions indexed more rows).
void replaceJournalIndexes(SqliteFile &file)
{
    QStringList names;
    SqliteStatement indexes = file.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = 'GD91_RIGHESTORICO' AND sql IS NOT NULL"));
    while (indexes.step())
        names << indexes.columnText(0);
    indexes.reset();
    for (const QString &name : std::as_const(names))
        file.exec(QStringLiteral("DROP INDEX ") + quotedName(name));
    static const QRegularExpression index(QStringLiteral("^CREATE INDEX IX_GD91_[^;]*;"),
                                          QRegularExpression::MultilineOption);
    for (auto it = index.globalMatch(journalScript()); it.hasNext();)
        file.exec(it.next().captured(0));
}

DatabaseFileCheck refused(DatabaseFileCheck check, DatabaseFileCheck::Kind kind, const QString &problem)
{
    check.kind = kind;
    check.problem = problem;
    return check;
}

} // namespace

DatabaseFileCheck checkDatabaseFile(const QString &path)
{
    DatabaseFileCheck check;
    const QFileInfo info(path);
    const QString shown = QDir::toNativeSeparators(info.absoluteFilePath());
    const QString folder = info.absolutePath();
    if (!info.exists() || (info.isFile() && info.size() == 0)) {
        check.writable = QFileInfo::exists(folder) ? os::isWritable(folder) : true;
        return check;
    }
    check.writable = os::isWritable(path) && os::isWritable(folder);

    QFile file(path);
    if (info.isDir() || !file.open(QIODevice::ReadOnly))
        return refused(check, DatabaseFileCheck::Unreadable,
                       QStringLiteral("Impossibile leggere il file %1: non viene aperto né modificato.").arg(shown));
    const QByteArray header = file.read(HeaderSize);
    file.close();
    if (header.size() < HeaderSize || !header.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return refused(
            check, DatabaseFileCheck::NotADatabase,
            QStringLiteral("Il file %1 non è un database SQLite: non viene aperto né modificato.").arg(shown));
    // Bytes 18 and 19: the read and write versions, 2 for WAL.
    check.walMode = header.at(18) == 2 && header.at(19) == 2;

    QStringList missing = moduleTables();
    try {
        SqliteFile reader(path, SqliteFile::Access::ReadOnly);
        SqliteStatement tables = reader.prepare(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"));
        while (tables.step())
            missing.removeAll(tables.columnText(0).toUpper());
        check.schemaVersion = int(reader.scalar(QStringLiteral("PRAGMA user_version")));
    } catch (const db::DatabaseError &error) {
        return refused(check, DatabaseFileCheck::NotADatabase,
                       QStringLiteral("Il file %1 non è leggibile come database (%2): non viene aperto né modificato.")
                           .arg(shown, error.message()));
    }
    if (!missing.isEmpty())
        return refused(check, DatabaseFileCheck::ForeignDatabase,
                       QStringLiteral("Il file %1 non è un database delle distinte di classificazione (mancano le "
                                      "tabelle %2): non viene aperto né modificato.")
                           .arg(shown, missing.join(QStringLiteral(", "))));
    check.kind = DatabaseFileCheck::ModuleDatabase;
    return check;
}

void prepareDatabaseAt(const QString &path)
{
    SqliteFile file(path);
    if (file.scalar(QStringLiteral("PRAGMA user_version")) < kSchemaVersion) {
        inTransaction(file, [&] {
            QStringList triggers;
            SqliteStatement names = file.prepare(
                QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'trigger'"));
            while (names.step())
                triggers << names.columnText(0);
            names.reset();
            for (const QString &trigger : std::as_const(triggers))
                file.exec(QStringLiteral("DROP TRIGGER ") + quotedName(trigger));
            for (const QString &trigger : triggerStatements(sqliteSchemaScript()))
                file.exec(trigger);
            // The journal comes whole to a file made before it; a file that has its tables gets
            // today's triggers, like the schema's.
            if (file.scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' "
                                           "AND name = 'GD90_OPERAZIONI'"))
                == 0) {
                file.execScript(journalScript());
            } else {
                if (file.scalar(QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE name = "
                                               "'GD91_RIGHESTORICO' AND sql LIKE '%AUTOINCREMENT%'"))
                    > 0)
                    upgradeJournalRows(file);
                replaceJournalIndexes(file);
                for (const QString &trigger : triggerStatements(journalScript()))
                    file.exec(trigger);
            }
            file.exec(QStringLiteral("PRAGMA user_version = %1").arg(kSchemaVersion));
        });
    }
    SqliteStatement mode = file.prepare(QStringLiteral("PRAGMA journal_mode"));
    const bool wal = mode.step() && mode.columnText(0).compare(QLatin1String("wal"), Qt::CaseInsensitive) == 0;
    mode.reset();
    if (!wal)
        file.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
}

} // namespace dbsetup
