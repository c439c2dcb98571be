// The statement corpus: statements.sql must be exactly what the entries write (each entry calls
// the statement's real builder), and every entry runs on one connection to a fresh demo database,
// through the T-SQL compatibility layer, giving what it must.
//
//     tst_corpus --write tests/corpus/statements.sql     writes the file from the entries

#include "corpusentries.h"
#include "corpusfile.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

QString corpusPath()
{
    const QString source = qEnvironmentVariable("DISTINTA_SOURCE_DIR");
    return source.isEmpty() ? QFINDTESTDATA("statements.sql") : source + QStringLiteral("/tests/corpus/statements.sql");
}

int writeCorpus(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write(corpus::fileText(corpus::entries()).toUtf8()) < 0 || !file.flush()) {
        qCritical("cannot write %s: %s", qPrintable(path), qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}

// The line where two texts part, with both versions of it.
QString firstDifference(const QString &committed, const QString &written)
{
    const QStringList was = committed.split(QLatin1Char('\n'));
    const QStringList is = written.split(QLatin1Char('\n'));
    int line = 0;
    while (line < was.size() && line < is.size() && was.at(line) == is.at(line))
        ++line;
    const auto at = [line](const QStringList &lines) {
        return line < lines.size() ? lines.at(line).left(200) : QStringLiteral("(end of text)");
    };
    return QStringLiteral("line %1\n  in the file:    %2\n  from entries:   %3").arg(line + 1).arg(at(was), at(is));
}

bool returnsRows(const corpus::Entry &entry)
{
    switch (entry.expect.kind) {
    case corpus::Expectation::Executes: return false;
    case corpus::Expectation::Anything: break;
    default: return true;
    }
    static const QRegularExpression selectInto(QStringLiteral("\\bINTO\\s+#"),
                                               QRegularExpression::CaseInsensitiveOption);
    return entry.statement.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive)
        && !selectInto.match(entry.statement).hasMatch();
}

} // namespace

class TestCorpus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fileIsWrittenFromTheEntries();
    void statement_data();
    void statement();

private:
    QList<corpus::Entry> m_entries;
    std::unique_ptr<TestDatabase> m_database;
};

void TestCorpus::initTestCase()
{
    m_entries = corpus::entries();
    m_database = std::make_unique<TestDatabase>(TestDatabase::DemoData);
}

void TestCorpus::fileIsWrittenFromTheEntries()
{
    for (const corpus::Entry &entry : std::as_const(m_entries)) {
        const QString problem = corpus::unwritable(entry);
        QVERIFY2(problem.isEmpty(), qPrintable(entry.name + QStringLiteral(": ") + problem));
    }

    const QString path = corpusPath();
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(QStringLiteral("cannot read ") + path));
    const QByteArray committed = file.readAll();
    const QByteArray written = corpus::fileText(m_entries).toUtf8();
    if (committed != written) {
        QFAIL(
            qPrintable(QStringLiteral("%1 is not what the entries write, at %2\nWrite it again with:\n  %3 --write %1")
                           .arg(path, firstDifference(QString::fromUtf8(committed), QString::fromUtf8(written)),
                                QCoreApplication::applicationFilePath())));
    }
}

void TestCorpus::statement_data()
{
    QTest::addColumn<int>("index");
    // Entries run in order: temporary tables and writes carry over to the later ones.
    for (int i = 0; i < m_entries.size(); ++i)
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(i + 1, 3, 10, QLatin1Char('0')).arg(m_entries[i].name)))
            << i;
}

void TestCorpus::statement()
{
    QFETCH(int, index);
    const corpus::Entry &entry = m_entries.at(index);
    db::Connection &connection = *m_database->connection();
    try {
        if (!returnsRows(entry)) {
            connection.execute(entry.statement);
            return;
        }
        const db::RecordsetPtr rows = connection.openRecordset(entry.statement);
        const int count = rows->recordCount();
        switch (entry.expect.kind) {
        case corpus::Expectation::SomeRows: QVERIFY2(count > 0, "the statement gave no row"); break;
        case corpus::Expectation::RowCount: QCOMPARE(count, entry.expect.rows); break;
        case corpus::Expectation::NoRows: QCOMPARE(count, 0); break;
        default: break;
        }

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

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--write") == 0)
        return writeCorpus(QString::fromLocal8Bit(argv[2]));
    QCoreApplication app(argc, argv);
    TestCorpus test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_corpus.moc"
