// Temporary tables that a page drops and builds again for every node it shows:
//
//   DROP TABLE IF EXISTS temp."#T"                 (IF OBJECT_ID('tempdb..#T') ... DROP TABLE #T)
//   CREATE TEMP TABLE "#T" AS SELECT ...           (SELECT ... INTO #T FROM ...)
//
// On SQLite each of the two changes the schema, and a change of the schema expires every prepared
// statement of the connection: each node would parse all of its statements again. So a table
// built by CREATE ... AS SELECT is kept when it is dropped, hidden. Built again by the same SELECT
// (the same text but for the values of its conditions) on the same schema of the database, it has
// the same columns: it is emptied and filled again, and nothing expires. Any other statement that
// names a hidden table drops it for real first, so every statement sees what it would have seen.
#include "sqlitebackend.h"

#include "databaseerror.h"
#include "sqliteparameters.h"

#include <QRegularExpression>
#include <sqlite3.h>

namespace db {

namespace {

QString quotedTemporary(const QString &name)
{
    return QStringLiteral("temp.\"") + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) + u'"';
}

} // namespace

// The drop and the build as the T-SQL layer writes them; nullopt for any other statement.
std::optional<int> SqliteBackend::executeOnTemporaryTable(const QString &sql)
{
    static const QRegularExpression drop(QStringLiteral(R"re(^\s*DROP TABLE IF EXISTS temp\."(#[^"]+)"\s*$)re"));
    static const QRegularExpression build(QStringLiteral(R"re(^\s*CREATE TEMP TABLE "(#[^"]+)" AS (SELECT\b.*)$)re"),
                                          QRegularExpression::DotMatchesEverythingOption);
    if (!sql.contains(QLatin1String("\"#")))
        return std::nullopt;

    if (const QRegularExpressionMatch dropped = drop.match(sql); dropped.hasMatch()) {
        const auto table = m_temporaryTables.find(dropped.captured(1).toLower());
        if (table == m_temporaryTables.end())
            return std::nullopt; // not built here: dropped as written
        table->hidden = true;
        return 0;
    }

    const QRegularExpressionMatch built = build.match(sql);
    if (!built.hasMatch())
        return std::nullopt;
    const QString name = built.captured(1);
    const QString key = name.toLower();
    const QString select = built.captured(2);
    // A SELECT that reads temporary tables depends on their columns too: built as written.
    const bool reusable = !select.contains(QLatin1String("\"#"));
    const ParameterizedSelect shape = parameterizeConditions(select);
    const QString builtBy = shape.values.isEmpty() ? select : shape.text;
    const qint64 version = reusable ? schemaVersion() : -1;

    const auto table = m_temporaryTables.find(key);
    if (table != m_temporaryTables.end() && table->hidden && reusable && table->builtBy == builtBy
        && table->schemaVersion == version && version >= 0) {
        leaveSnapshot();
        const QString target = quotedTemporary(name);
        run(QStringLiteral("DELETE FROM ") + target, sql);
        run(QStringLiteral("INSERT INTO ") + target + u' ' + builtBy, sql, shape.values);
        table->hidden = false;
        return 0; // as CREATE ... AS SELECT counts no changed rows
    }

    dropHiddenTablesNamedIn(name);
    m_temporaryTables.remove(key);
    leaveSnapshot();
    run(sql, sql);
    if (reusable)
        m_temporaryTables.insert(key, {builtBy, version, false});
    return 0;
}

void SqliteBackend::dropHiddenTablesNamedIn(const QString &sql)
{
    if (m_temporaryTables.isEmpty())
        return;
    for (auto table = m_temporaryTables.begin(); table != m_temporaryTables.end();) {
        if (!table->hidden || !sql.contains(table.key(), Qt::CaseInsensitive)) {
            ++table;
            continue;
        }
        const QString dropSql = QStringLiteral("DROP TABLE IF EXISTS ") + quotedTemporary(table.key());
        table = m_temporaryTables.erase(table);
        leaveSnapshot();
        run(dropSql, dropSql);
    }
}

// A statement of the schema that names a table built here may have changed its columns.
void SqliteBackend::forgetTemporaryTablesChangedBy(const QString &sql)
{
    if (m_temporaryTables.isEmpty())
        return;
    static const QRegularExpression schemaStatement(QStringLiteral(R"(^\s*(CREATE|ALTER|DROP)\b)"),
                                                    QRegularExpression::CaseInsensitiveOption);
    if (!schemaStatement.match(sql).hasMatch())
        return;
    for (auto table = m_temporaryTables.begin(); table != m_temporaryTables.end();) {
        if (sql.contains(table.key(), Qt::CaseInsensitive))
            table = m_temporaryTables.erase(table);
        else
            ++table;
    }
}

} // namespace db
