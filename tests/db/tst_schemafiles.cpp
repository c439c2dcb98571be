#include "db/embeddedscripts.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

struct Column
{
    QString type;
    bool notNull = false;
    bool hasDefault = false;
    bool generated = false;
    bool rowidKey = false; // SQLite: an INTEGER PRIMARY KEY, given its value when none is written

    bool operator==(const Column &) const = default;
};

// What a schema script declares, read from its text.
struct Declared
{
    QMap<QString, QStringList> columnOrder;       // table -> column names in order
    QMap<QString, QMap<QString, Column>> columns; // table -> column -> declaration
    QMap<QString, QStringList> primaryKeys;       // table -> key columns
    QSet<QString> indexes;                        // "UNIQUE name ON table (a, b)"
    QMap<QString, QStringList> viewColumns;       // view -> output column names
    QSet<QString> triggers;                       // "name: DELETE ON table"
};

const QRegularExpression::PatternOption dotAll = QRegularExpression::DotMatchesEverythingOption;

// Both dialects written in one vocabulary: INT for the integers, VARCHAR(36) for the guids.
QString normalisedType(const QString &type)
{
    const QString upper = type.toUpper();
    if (upper == QLatin1String("INTEGER"))
        return QStringLiteral("INT");
    if (upper == QLatin1String("UNIQUEIDENTIFIER"))
        return QStringLiteral("VARCHAR(36)");
    if (upper == QLatin1String("NVARCHAR(MAX)"))
        return QStringLiteral("TEXT");
    return upper;
}

QStringList splitTopLevel(const QString &list)
{
    QStringList items;
    int depth = 0;
    QString current;
    for (const QChar c : list) {
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        if (c == QLatin1Char(',') && depth == 0) {
            items << current.trimmed();
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.trimmed().isEmpty())
        items << current.trimmed();
    return items;
}

// The name a select-list item gives its column: its alias, else the column it names.
QString outputName(const QString &item)
{
    static const QRegularExpression alias(QStringLiteral("\\bAS\\s+(\\w+)$"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = alias.match(item.simplified());
    if (match.hasMatch())
        return match.captured(1).toUpper();
    return item.section(QLatin1Char('.'), -1).trimmed().toUpper();
}

QString withoutComments(const QString &script)
{
    QStringList lines;
    for (const QString &line : script.split(QLatin1Char('\n'))) {
        const qsizetype comment = line.indexOf(QLatin1String("--"));
        lines << (comment < 0 ? line : line.left(comment));
    }
    return lines.join(QLatin1Char('\n'));
}

Declared parse(const QString &script)
{
    const QString text = withoutComments(script);
    Declared declared;

    static const QRegularExpression table(QStringLiteral("CREATE TABLE (\\w+) \\((.*?)\\n\\);"), dotAll);
    static const QRegularExpression keyList(QStringLiteral("^PRIMARY KEY \\((.*)\\)$"));
    for (auto it = table.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString name = match.captured(1).toUpper();
        for (const QString &item : splitTopLevel(match.captured(2))) {
            const QString line = item.simplified();
            if (const QRegularExpressionMatch key = keyList.match(line); key.hasMatch()) {
                for (const QString &column : key.captured(1).split(QLatin1Char(',')))
                    declared.primaryKeys[name] << column.trimmed().toUpper();
                continue;
            }
            const QString upper = line.toUpper();
            const QString column = line.section(QLatin1Char(' '), 0, 0).toUpper();
            const bool key = upper.contains(QLatin1String("PRIMARY KEY"));
            if (key)
                declared.primaryKeys[name] << column;
            declared.columnOrder[name] << column;
            declared.columns[name][column] = {
                normalisedType(line.section(QLatin1Char(' '), 1, 1)),
                key || upper.contains(QLatin1String("NOT NULL")),
                upper.contains(QLatin1String("DEFAULT")),
                upper.contains(QLatin1String("AUTOINCREMENT")) || upper.contains(QLatin1String("IDENTITY")),
                key
                    && upper.section(QLatin1Char(' '), 1, -1, QString::SectionSkipEmpty)
                           .startsWith(QLatin1String("INTEGER")),
            };
        }
    }

    static const QRegularExpression index(QStringLiteral("CREATE (UNIQUE )?INDEX (\\w+) ON (\\w+) \\(([^)]*)\\)"));
    for (auto it = index.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        QStringList columns;
        for (const QString &column : match.captured(4).split(QLatin1Char(',')))
            columns << column.trimmed().toUpper();
        declared.indexes << QStringLiteral("%1%2 ON %3 (%4)")
                                .arg(match.captured(1).toUpper(), match.captured(2).toUpper(),
                                     match.captured(3).toUpper(), columns.join(QStringLiteral(", ")));
    }

    static const QRegularExpression view(QStringLiteral("CREATE VIEW (\\w+) AS\\s+SELECT (.*?)\\sFROM\\s"), dotAll);
    for (auto it = view.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        QStringList names;
        for (const QString &item : splitTopLevel(match.captured(2)))
            names << outputName(item);
        declared.viewColumns[match.captured(1).toUpper()] = names;
    }

    // "CREATE TRIGGER name AFTER DELETE ON table" (or BEFORE: SQLite checks a row before writing
    // it, SQL Server after, inside the statement) and "CREATE TRIGGER name ON table AFTER DELETE"
    static const QRegularExpression triggerFirst(
        QStringLiteral("CREATE TRIGGER (\\w+)\\s+(?:AFTER|BEFORE) (\\w+)(?:\\s+OF\\s+[\\w\\s,]*?)?\\s+ON (\\w+)"));
    // A SQL Server trigger for several events stands for SQLite's one per event, named with it.
    static const QRegularExpression triggerSecond(
        QStringLiteral("CREATE TRIGGER (\\w+)\\s+ON (\\w+) AFTER (\\w+(?:, \\w+)*)"));
    for (auto it = triggerFirst.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        declared.triggers << QStringLiteral("%1: %2 ON %3").arg(m.captured(1), m.captured(2), m.captured(3)).toUpper();
    }
    for (auto it = triggerSecond.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QStringList events = m.captured(3).split(QStringLiteral(", "));
        for (const QString &event : events) {
            const QString name = events.size() > 1 ? m.captured(1) + QLatin1Char('_') + event : m.captured(1);
            declared.triggers << QStringLiteral("%1: %2 ON %3").arg(name, event, m.captured(2)).toUpper();
        }
    }
    return declared;
}

QString sourceFile(const QString &relative)
{
    const QString source = qEnvironmentVariable("DISTINTA_SOURCE_DIR");
    QFile file(source.isEmpty() ? QFINDTESTDATA(QStringLiteral("../../") + relative)
                                : source + QLatin1Char('/') + relative);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

// The two schema scripts describe one database: an installation on the server must get every
// table, column, key, index, view and trigger that the embedded database has, so that what
// passes the tests on SQLite also runs there.
class TestSchemaFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The schema and the journal, as a new database gets them.
        m_sqlite = parse(dbsetup::sqliteSchemaScript() + dbsetup::journalScript());
        const QString server = sourceFile(QStringLiteral("db/schema_sqlserver.sql"));
        const QString journal = sourceFile(QStringLiteral("db/journal_sqlserver.sql"));
        QVERIFY2(!server.isEmpty(), "db/schema_sqlserver.sql not found");
        QVERIFY2(!journal.isEmpty(), "db/journal_sqlserver.sql not found");
        m_server = parse(server + journal);
        // The reading itself must have found something in each script.
        QVERIFY(m_sqlite.columnOrder.size() > 30);
        QVERIFY(m_sqlite.viewColumns.size() >= 3);
        QVERIFY(!m_sqlite.indexes.isEmpty());
        QVERIFY(!m_sqlite.triggers.isEmpty());
    }

    void everyTableHasTheSameColumns()
    {
        QCOMPARE(QSet<QString>(m_server.columnOrder.keyBegin(), m_server.columnOrder.keyEnd()),
                 QSet<QString>(m_sqlite.columnOrder.keyBegin(), m_sqlite.columnOrder.keyEnd()));
        for (auto it = m_sqlite.columnOrder.cbegin(); it != m_sqlite.columnOrder.cend(); ++it) {
            const QString &table = it.key();
            QCOMPARE(m_server.columnOrder.value(table), it.value());
            for (const QString &column : it.value()) {
                const Column lite = m_sqlite.columns[table][column];
                const Column server = m_server.columns[table][column];
                const QString where = table + QLatin1Char('.') + column;
                QVERIFY2(lite.type == server.type,
                         qPrintable(where + QStringLiteral(": ") + lite.type + QStringLiteral(" / ") + server.type));
                QVERIFY2(lite.notNull == server.notNull, qPrintable(where + QStringLiteral(": NULL / NOT NULL")));
                QVERIFY2(lite.hasDefault == server.hasDefault, qPrintable(where + QStringLiteral(": default")));
                QVERIFY2(lite.generated == server.generated || (server.generated && lite.rowidKey),
                         qPrintable(where + QStringLiteral(": generated key")));
            }
            QVERIFY2(m_sqlite.primaryKeys.value(table) == m_server.primaryKeys.value(table), qPrintable(table));
        }
    }

    void indexesViewsAndTriggersMatch()
    {
        QCOMPARE(m_server.indexes, m_sqlite.indexes);
        QCOMPARE(m_server.triggers, m_sqlite.triggers);
        QCOMPARE(m_server.viewColumns, m_sqlite.viewColumns);
    }

    // Every table and view of the embedded schema answers a query through the connection, and
    // each view gives exactly the columns its script declares.
    void everyRelationIsSelectable()
    {
        TestDatabase database(TestDatabase::DemoData);
        QStringList relations = m_sqlite.columnOrder.keys();
        relations << m_sqlite.viewColumns.keys();
        for (const QString &relation : std::as_const(relations)) {
            db::RecordsetPtr rows;
            try {
                rows = database.connection()->openRecordset(QStringLiteral("SELECT TOP 5 * FROM ") + relation);
            } catch (const db::DatabaseError &error) {
                QFAIL(qPrintable(relation + QStringLiteral(": ") + error.message()));
            }
            QStringList names;
            for (int i = 0; i < rows->fieldCount(); ++i)
                names << rows->field(i).name.toUpper();
            const QStringList declared = m_sqlite.viewColumns.contains(relation) ? m_sqlite.viewColumns.value(relation)
                                                                                 : m_sqlite.columnOrder.value(relation);
            QCOMPARE(names, declared);
        }
        // The views the module reads have demo rows behind them.
        for (const QString &view : m_sqlite.viewColumns.keys())
            QVERIFY2(database.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + view).toInt() > 0, qPrintable(view));
    }

private:
    Declared m_sqlite;
    Declared m_server;
};

QTEST_MAIN(TestSchemaFiles)
#include "tst_schemafiles.moc"
