// Runs every entry of statements.sql (its header describes the format) on one connection to a
// fresh demo database, through the T-SQL compatibility layer, and checks what each must give.

#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

struct Entry
{
    QString name;
    QString expect;        // "", "rows", "rows = N", "empty", "execute"
    QStringList filled;
    QString statement;
};

QList<Entry> readCorpus(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QList<Entry> entries;
    Entry current;
    QStringList lines;
    bool named = false;
    const auto finish = [&] {
        current.statement = lines.join(QLatin1Char('\n'));
        if (named && !current.statement.trimmed().isEmpty())
            entries << current;
        current = Entry();
        lines.clear();
        named = false;
    };
    const QStringList all = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : all) {
        if (line.trimmed() == QLatin1String("GO")) {
            finish();
        } else if (lines.isEmpty() && line.startsWith(QLatin1String("--"))) {
            const QString comment = line.mid(2).trimmed();
            if (comment.startsWith(QLatin1String("expect:"))) {
                current.expect = comment.mid(7).trimmed();
            } else if (comment.startsWith(QLatin1String("filled:"))) {
                for (const QString &column : comment.mid(7).split(QLatin1Char(','), Qt::SkipEmptyParts))
                    current.filled << column.trimmed();
            } else if (!named) {
                current.name = comment;
                named = true;
            }
        } else if (named && (!lines.isEmpty() || !line.trimmed().isEmpty())) {
            lines << line;
        }
    }
    return entries;
}

bool returnsRows(const Entry &entry)
{
    if (entry.expect == QLatin1String("execute"))
        return false;
    if (!entry.expect.isEmpty())
        return true;
    static const QRegularExpression selectInto(QStringLiteral("\\bINTO\\s+#"), QRegularExpression::CaseInsensitiveOption);
    return entry.statement.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive)
        && !selectInto.match(entry.statement).hasMatch();
}

} // namespace

class TestCorpus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void statement_data();
    void statement();

private:
    QList<Entry> m_entries;
    std::unique_ptr<TestDatabase> m_database;
};

void TestCorpus::initTestCase()
{
    const QString source = qEnvironmentVariable("DISTINTA_SOURCE_DIR");
    const QString path = source.isEmpty() ? QFINDTESTDATA("statements.sql")
                                          : source + QStringLiteral("/tests/corpus/statements.sql");
    m_entries = readCorpus(path);
    QVERIFY2(!m_entries.isEmpty(), qPrintable(QStringLiteral("no statements read from ") + path));
    m_database = std::make_unique<TestDatabase>(TestDatabase::DemoData);
}

void TestCorpus::statement_data()
{
    QTest::addColumn<int>("index");
    // Entries run in file order: temporary tables and writes carry over to the later ones.
    for (int i = 0; i < m_entries.size(); ++i)
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(i + 1, 3, 10, QLatin1Char('0')).arg(m_entries[i].name))) << i;
}

void TestCorpus::statement()
{
    QFETCH(int, index);
    const Entry &entry = m_entries.at(index);
    db::Connection &connection = *m_database->connection();
    try {
        if (!returnsRows(entry)) {
            connection.execute(entry.statement);
            return;
        }
        const db::RecordsetPtr rows = connection.openRecordset(entry.statement);
        const int count = rows->recordCount();
        static const QRegularExpression exact(QStringLiteral("^rows\\s*=\\s*(\\d+)$"));
        if (entry.expect == QLatin1String("rows"))
            QVERIFY2(count > 0, "the statement gave no row");
        else if (entry.expect == QLatin1String("empty"))
            QCOMPARE(count, 0);
        else if (const QRegularExpressionMatch match = exact.match(entry.expect); match.hasMatch())
            QCOMPARE(count, match.captured(1).toInt());
        else
            QVERIFY2(entry.expect.isEmpty(), qPrintable(QStringLiteral("unknown expectation: ") + entry.expect));

        for (const QString &column : entry.filled) {
            const int field = rows->fieldIndex(column);
            QVERIFY2(field >= 0, qPrintable(QStringLiteral("no column ") + column));
            for (int row = 0; row < count; ++row) {
                const QVariant value = rows->valueAt(row, field);
                QVERIFY2(!value.isNull() && !value.toString().trimmed().isEmpty(),
                         qPrintable(QStringLiteral("%1 empty in row %2").arg(column).arg(row + 1)));
            }
        }
    } catch (const db::DatabaseError &error) {
        QFAIL(qPrintable(error.message() + QStringLiteral("\n") + entry.statement.left(300)));
    }
}

QTEST_MAIN(TestCorpus)
#include "tst_corpus.moc"
