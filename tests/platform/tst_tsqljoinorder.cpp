// RIGHT OUTER JOIN chains are written for SQLite in LEFT OUTER JOIN order, and parenthesised
// outer joins as one chain where that means the same. Whatever order comes
// out, the rows must be those of the statement as the server reads it: each case runs the
// translation and SQLite's own reading of the same joins with their parentheses written out,
// on tables whose join keys are null, missing or repeated on every side.

#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"
#include "tests/support/queryplan.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

const char *const fixture = R"(
    CREATE TABLE A (id INTEGER, k INTEGER, v TEXT);
    INSERT INTO A VALUES (1, 10, 'a1'), (2, 20, 'a2'), (3, NULL, 'a3'), (4, 99, 'a4'), (5, 10, 'a5');
    CREATE TABLE B (id INTEGER, k INTEGER, m INTEGER, v TEXT, w INTEGER);
    INSERT INTO B VALUES (1, 10, 100, 'b1', 100), (2, 20, NULL, 'b2', NULL), (3, NULL, 300, 'b3', 300),
        (4, 40, 100, 'b4', 100), (5, 50, 500, 'b5', 500);
    CREATE TABLE C (id INTEGER, m INTEGER, v TEXT);
    INSERT INTO C VALUES (1, 100, 'c1'), (2, 300, 'c2'), (3, NULL, 'c3'), (4, 700, 'c4'), (5, 100, 'c5');
    CREATE TABLE D (id INTEGER, k INTEGER, v TEXT);
    INSERT INTO D VALUES (1, 10, 'd1'), (2, NULL, 'd2'), (3, 40, 'd3'), (4, 1, 'd4'), (100, 3, 'd5');
)";

class Database
{
public:
    Database()
    {
        sqlite3_open(":memory:", &m_handle);
        db::registerSqliteFunctions(m_handle);
        sqlite3_exec(m_handle, fixture, nullptr, nullptr, nullptr);
    }
    ~Database() { sqlite3_close(m_handle); }

    // The rows in a stable order (the comparison is of multisets), or the error.
    QStringList rows(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        const QByteArray utf8 = sql.toUtf8();
        if (sqlite3_prepare_v2(m_handle, utf8.constData(), int(utf8.size()), &statement, nullptr) != SQLITE_OK)
            return {QStringLiteral("ERROR: ") + QString::fromUtf8(sqlite3_errmsg(m_handle))};
        QStringList rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            QStringList row;
            for (int c = 0; c < sqlite3_column_count(statement); ++c) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, c));
                row << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
            }
            rows << row.join(u'|');
        }
        sqlite3_finalize(statement);
        rows.sort();
        return rows;
    }

    QString plan(const QString &sql) { return queryPlan(m_handle, sql); }

private:
    sqlite3 *m_handle = nullptr;
};

const QString allColumns = QStringLiteral("SELECT A.id, A.v, B.id, B.v, C.id, C.v, D.id, D.v ");

} // namespace

class TestTsqlJoinOrder : public QObject
{
    Q_OBJECT

private slots:
    void sameRowsAsTheServer_data();
    void sameRowsAsTheServer();
    void subjectListShape();
    void writtenAsLeftJoins_data();
    void writtenAsLeftJoins();
};

void TestTsqlJoinOrder::sameRowsAsTheServer_data()
{
    QTest::addColumn<QString>("tsql");
    QTest::addColumn<QString>("meaning"); // the same joins in SQLite with their parentheses
    QTest::addColumn<bool>("leftOnly");   // no RIGHT JOIN left in the translation

    QTest::newRow("right join of a chain")
        << allColumns
            + "FROM A RIGHT OUTER JOIN B INNER JOIN C ON B.m = C.m LEFT OUTER JOIN D ON B.k = D.k ON A.k = B.k"
        << allColumns + "FROM A RIGHT JOIN (B JOIN C ON B.m = C.m LEFT JOIN D ON B.k = D.k) ON A.k = B.k" << true;
    QTest::newRow("left join of a right join, flattened")
        << allColumns
            + "FROM B LEFT OUTER JOIN C RIGHT OUTER JOIN D ON C.id = D.k ON B.m = D.id LEFT JOIN A ON A.k = B.k"
        << allColumns + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = D.k) ON B.m = D.id LEFT JOIN A ON A.k = B.k"
        << true;
    QTest::newRow("inner condition true on nulls stays grouped")
        << allColumns + "FROM B LEFT JOIN C RIGHT JOIN D ON C.id = 1 ON B.m = D.id LEFT JOIN A ON A.k = B.k"
        << allColumns + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = 1) ON B.m = D.id LEFT JOIN A ON A.k = B.k" << true;
    QTest::newRow("inner condition with OR stays grouped") << allColumns
            + "FROM B LEFT JOIN C RIGHT JOIN D ON C.id = D.k OR C.id = 3 ON B.m = D.id LEFT JOIN A ON A.k = B.k"
                                                           << allColumns
            + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = D.k OR C.id = 3) ON B.m = D.id LEFT JOIN A ON A.k = B.k"
                                                           << true;
    QTest::newRow("inner condition with IS NULL stays grouped")
        << allColumns + "FROM B LEFT JOIN C RIGHT JOIN D ON C.id = D.k IS NULL ON B.m = D.id LEFT JOIN A ON A.k = B.k"
        << allColumns + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = D.k IS NULL) ON B.m = D.id LEFT JOIN A ON A.k = B.k"
        << true;
    QTest::newRow("outer condition on the inner join's second table stays grouped")
        << allColumns + "FROM B LEFT JOIN C RIGHT JOIN D ON C.id = D.k ON B.m = C.m LEFT JOIN A ON A.k = B.k"
        << allColumns + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = D.k) ON B.m = C.m LEFT JOIN A ON A.k = B.k" << true;
    QTest::newRow("inner join under a left join stays grouped")
        << allColumns + "FROM A RIGHT JOIN B LEFT JOIN C INNER JOIN D ON C.id = D.k ON B.m = C.m ON A.k = B.k"
        << allColumns + "FROM A RIGHT JOIN (B LEFT JOIN (C JOIN D ON C.id = D.k) ON B.m = C.m) ON A.k = B.k" << true;
    QTest::newRow("inner join of a right join on its first table")
        << allColumns + "FROM A INNER JOIN B RIGHT JOIN C ON B.m = C.m ON A.id = C.id LEFT JOIN D ON D.k = A.k"
        << allColumns + "FROM A JOIN (B RIGHT JOIN C ON B.m = C.m) ON A.id = C.id LEFT JOIN D ON D.k = A.k" << true;
    QTest::newRow("inner join of a right join on its second table")
        << allColumns + "FROM A INNER JOIN B RIGHT JOIN C ON B.m = C.m ON A.k = B.k LEFT JOIN D ON D.k = A.k"
        << allColumns + "FROM A JOIN (B RIGHT JOIN C ON B.m = C.m) ON A.k = B.k LEFT JOIN D ON D.k = A.k" << true;
    QTest::newRow("unqualified column in the outer condition")
        << allColumns + "FROM B LEFT JOIN C RIGHT JOIN D ON C.id = D.k ON w = D.id LEFT JOIN A ON A.k = B.k"
        << allColumns + "FROM B LEFT JOIN (C RIGHT JOIN D ON C.id = D.k) ON w = D.id LEFT JOIN A ON A.k = B.k" << true;
    QTest::newRow("two right joins in a row")
        << allColumns + "FROM A RIGHT JOIN B ON A.k = B.k RIGHT JOIN C ON B.m = C.m LEFT JOIN D ON D.id = C.m"
        << allColumns + "FROM ((A RIGHT JOIN B ON A.k = B.k) RIGHT JOIN C ON B.m = C.m) LEFT JOIN D ON D.id = C.m"
        << true;
    QTest::newRow("aliases and a WHERE on the kept side")
        << "SELECT x.id, y.id, z.id FROM A x RIGHT OUTER JOIN B AS y LEFT JOIN C z ON z.m = y.m ON x.k = y.k WHERE "
           "y.id < 5"
        << "SELECT x.id, y.id, z.id FROM A x RIGHT JOIN (B AS y LEFT JOIN C z ON z.m = y.m) ON x.k = y.k WHERE y.id < 5"
        << true;
    QTest::newRow("left join of parenthesised left joins, unnested") << allColumns
            + "FROM A LEFT OUTER JOIN (B LEFT OUTER JOIN C ON B.m = C.m) ON A.k = B.k"
              " LEFT OUTER JOIN (D LEFT OUTER JOIN C AS C2 ON D.id = C2.id) ON B.w = D.id"
                                                                     << allColumns
            + "FROM A LEFT JOIN (B LEFT JOIN C ON B.m = C.m) ON A.k = B.k"
              " LEFT JOIN (D LEFT JOIN C AS C2 ON D.id = C2.id) ON B.w = D.id"
                                                                     << true;
    QTest::newRow("left group whose condition holds on nulls stays grouped")
        << allColumns + "FROM A LEFT JOIN (B LEFT JOIN C ON C.m = 100) ON A.k = B.k LEFT JOIN D ON D.k = A.k"
        << allColumns + "FROM A LEFT JOIN (B LEFT JOIN C ON C.m = 100) ON A.k = B.k LEFT JOIN D ON D.k = A.k" << true;
    QTest::newRow("left group joined on its second table stays grouped")
        << allColumns + "FROM A LEFT JOIN (B LEFT JOIN C ON B.m = C.m) ON A.k = C.id LEFT JOIN D ON D.k = A.k"
        << allColumns + "FROM A LEFT JOIN (B LEFT JOIN C ON B.m = C.m) ON A.k = C.id LEFT JOIN D ON D.k = A.k" << true;
    QTest::newRow("columns by * keep the order written") << "SELECT * FROM A RIGHT JOIN B ON A.k = B.k"
                                                         << "SELECT * FROM A RIGHT JOIN B ON A.k = B.k" << false;
}

void TestTsqlJoinOrder::sameRowsAsTheServer()
{
    QFETCH(QString, tsql);
    QFETCH(QString, meaning);
    QFETCH(bool, leftOnly);
    Database database;
    const QStringList expected = database.rows(meaning);
    QVERIFY2(!expected.isEmpty() && !expected.first().startsWith(QLatin1String("ERROR")),
             qPrintable(expected.value(0)));

    const QString translated = db::translateTsqlToSqlite(tsql);
    QCOMPARE(database.rows(translated), expected);
    QCOMPARE(translated.contains(QLatin1String("RIGHT"), Qt::CaseInsensitive), !leftOnly);
    QCOMPARE(db::translateTsqlToSqlite(translated), translated); // stable
}

// The subject list's joins, with its tables and null keys on every side: the translation reads
// CG44_CLIFOR first, through its key, and the agents' pair is no longer copied aside.
void TestTsqlJoinOrder::subjectListShape()
{
    const QString tsql = QStringLiteral(
        "SELECT DISTINCT B.id, C.v, D.v, A.v FROM C RIGHT OUTER JOIN B INNER JOIN D ON B.k = D.k "
        "LEFT OUTER JOIN D D2 ON B.id = D2.id ON C.m = B.m LEFT OUTER JOIN A RIGHT OUTER JOIN D D3 "
        "ON A.id = D3.k ON B.id = D3.id AND B.k = D3.k WHERE B.id > 0 ORDER BY B.id");
    const QString translated = db::translateTsqlToSqlite(tsql);
    QCOMPARE(translated,
             QStringLiteral("SELECT DISTINCT B.id, C.v, D.v, A.v FROM B INNER JOIN D ON B.k = D.k "
                            "LEFT OUTER JOIN D D2 ON B.id = D2.id LEFT OUTER JOIN C ON C.m = B.m "
                            "LEFT OUTER JOIN D D3 ON B.id = D3.id AND B.k = D3.k LEFT OUTER JOIN A "
                            "ON A.id = D3.k WHERE B.id > 0 ORDER BY B.id"));
    Database database;
    QCOMPARE(
        database.rows(translated),
        database.rows(QStringLiteral("SELECT DISTINCT B.id, C.v, D.v, A.v FROM C RIGHT JOIN (B JOIN D ON B.k = D.k "
                                     "LEFT JOIN D D2 ON B.id = D2.id) ON C.m = B.m LEFT JOIN (A RIGHT JOIN D D3 "
                                     "ON A.id = D3.k) ON B.id = D3.id AND B.k = D3.k WHERE B.id > 0")));
    const QString plan = database.plan(translated);
    QVERIFY2(!plan.contains(QLatin1String("MATERIALIZE")) && !plan.contains(QLatin1String("RIGHT-JOIN")),
             qPrintable(plan));
}

void TestTsqlJoinOrder::writtenAsLeftJoins_data()
{
    QTest::addColumn<QString>("tsql");
    QTest::addColumn<QString>("sqlite");

    QTest::newRow("swapped operands") << "SELECT 1 FROM A RIGHT JOIN B ON A.k = B.k"
                                      << "SELECT 1 FROM B LEFT OUTER JOIN A ON A.k = B.k";
    QTest::newRow("a group that must stay keeps its parentheses")
        << "SELECT 1 FROM A RIGHT JOIN B LEFT JOIN C INNER JOIN D ON C.id = D.k ON B.m = C.m ON A.k = B.k"
        << "SELECT 1 FROM B LEFT JOIN (C INNER JOIN D ON C.id = D.k) ON B.m = C.m LEFT OUTER JOIN A ON A.k = B.k";
    QTest::newRow("names, hints and functions inside")
        << "SELECT ISNULL(A.v, '') FROM [A] WITH (NOLOCK) RIGHT JOIN #B b ON A.k = ISNULL(b.k, 0)"
        << "SELECT IFNULL(A.v, '') FROM \"#B\" b LEFT OUTER JOIN \"A\" ON A.k = IFNULL(b.k, 0)";
    QTest::newRow("subquery operand") << "SELECT 1 FROM (SELECT TOP 1 k FROM A) s RIGHT JOIN B ON s.k = B.k"
                                      << "SELECT 1 FROM B LEFT OUTER JOIN (SELECT k FROM A LIMIT 1) s ON s.k = B.k";
    QTest::newRow("nested left joins as one chain")
        << "SELECT 1 FROM A LEFT OUTER JOIN (B LEFT OUTER JOIN C ON B.m = C.m) ON A.k = B.k"
        << "SELECT 1 FROM A LEFT OUTER JOIN B ON A.k = B.k LEFT OUTER JOIN C ON B.m = C.m";
    QTest::newRow("no right join: as written") << "SELECT 1 FROM A LEFT JOIN (B JOIN C ON B.m = C.m) ON A.k = B.k"
                                               << "SELECT 1 FROM A LEFT JOIN (B JOIN C ON B.m = C.m) ON A.k = B.k";
    QTest::newRow("comma join: as written") << "SELECT 1 FROM A, B RIGHT JOIN C ON B.m = C.m"
                                            << "SELECT 1 FROM A, B RIGHT JOIN C ON B.m = C.m";
}

void TestTsqlJoinOrder::writtenAsLeftJoins()
{
    QFETCH(QString, tsql);
    QFETCH(QString, sqlite);
    QCOMPARE(db::translateTsqlToSqlite(tsql), sqlite);
}

QTEST_GUILESS_MAIN(TestTsqlJoinOrder)
#include "tst_tsqljoinorder.moc"
