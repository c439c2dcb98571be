#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/sqliteparameters.h"

#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

using namespace db;

// Statements that differ only in the values of their conditions share a prepared statement:
// the values taken out must be exactly those that cannot change the result's shape or plan,
// and the rows must be those of the statement as written.
class TestSqliteParameters : public QObject
{
    Q_OBJECT

private slots:
    void onlyConditionValuesBecomeParameters_data();
    void onlyConditionValuesBecomeParameters();
    void rowsAndColumnsAreThoseOfTheLiteralText();
    void aRowsValuesBecomeParametersAndAreStoredAsWritten();
};

void TestSqliteParameters::onlyConditionValuesBecomeParameters_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantList>("values");
    QTest::newRow("where and on")
        << u"SELECT A FROM T JOIN U ON U.K = T.K AND U.C = 7 WHERE T.N = 'O''Hara' AND T.M IN (1, -2)"_qs
        << u"SELECT A FROM T JOIN U ON U.K = T.K AND U.C = ? WHERE T.N = ? AND T.M IN (?, -?)"_qs
        << QVariantList {7LL, u"O'Hara"_qs, 1LL, 2LL};
    QTest::newRow("select list, order, limit stay")
        << u"SELECT 1, 'x' AS K, (SELECT COUNT(*) FROM U WHERE U.K = 5) FROM T WHERE A = 3 GROUP BY 1 ORDER BY 2 LIMIT 10"_qs
        << u"SELECT 1, 'x' AS K, (SELECT COUNT(*) FROM U WHERE U.K = 5) FROM T WHERE A = ? GROUP BY 1 ORDER BY 2 LIMIT 10"_qs
        << QVariantList {3LL};
    QTest::newRow("subqueries in conditions and in from")
        << u"SELECT A FROM (SELECT A, 2 AS B FROM T WHERE C = 4) X WHERE EXISTS (SELECT 1 FROM U WHERE U.K = 6)"_qs
        << u"SELECT A FROM (SELECT A, 2 AS B FROM T WHERE C = ?) X WHERE EXISTS (SELECT 1 FROM U WHERE U.K = ?)"_qs
        << QVariantList {4LL, 6LL};
    QTest::newRow("patterns, casts, decimals, constant conditions stay")
        << u"SELECT A FROM T WHERE N LIKE 'R%' AND CAST(A AS VARCHAR(20)) = '9' AND B > 1.5 AND 1=0 AND C = 0x1F"_qs
        << u"SELECT A FROM T WHERE N LIKE 'R%' AND CAST(A AS VARCHAR(20)) = ? AND B > 1.5 AND 1=0 AND C = 0x1F"_qs
        << QVariantList {u"9"_qs};
    QTest::newRow("a table made from a select")
        << u"CREATE TEMP TABLE \"X\" AS SELECT *, 0 AS S FROM T WHERE A = 12 -- note 13\n"_qs
        << u"CREATE TEMP TABLE \"X\" AS SELECT *, 0 AS S FROM T WHERE A = ? -- note 13\n"_qs << QVariantList {12LL};
    QTest::newRow("quoted names and comments are not values")
        << u"SELECT [A 1] FROM T /* 'x' = 2 */ WHERE \"B = 3\" = 4"_qs
        << u"SELECT [A 1] FROM T /* 'x' = 2 */ WHERE \"B = 3\" = ?"_qs << QVariantList {4LL};
    QTest::newRow("other statements untouched") << u"DELETE FROM T WHERE A = 1"_qs << QString() << QVariantList {};
    QTest::newRow("two statements untouched")
        << u"SELECT A FROM T WHERE A = 1; SELECT 2"_qs << QString() << QVariantList {};
    QTest::newRow("own parameters untouched")
        << u"SELECT A FROM T WHERE A = ? AND B = 2"_qs << QString() << QVariantList {};
    QTest::newRow("unclosed text untouched") << u"SELECT A FROM T WHERE A = 'x"_qs << QString() << QVariantList {};
}

void TestSqliteParameters::onlyConditionValuesBecomeParameters()
{
    QFETCH(QString, sql);
    QFETCH(QString, text);
    QFETCH(QVariantList, values);
    const ParameterizedSelect result = parameterizeConditions(sql);
    QCOMPARE(result.text, text);
    QCOMPARE(result.values, values);
}

void TestSqliteParameters::rowsAndColumnsAreThoseOfTheLiteralText()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("p.sqlite"));
    ConnectionPtr connection = Connection::open(QStringLiteral("Provider=SQLite;Data Source=") + file);
    connection->execute(
        QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, CODICE VARCHAR(10), N INTEGER, D DATETIME)"));
    connection->execute(QStringLiteral("CREATE TABLE U (ID INTEGER PRIMARY KEY, T_ID INTEGER, NOTE VARCHAR(10))"));
    connection->execute(
        QStringLiteral("INSERT INTO T VALUES (1, '10', 5, '2024-01-31 00:00:00'), (2, '2', NULL, NULL), "
                       "(3, 'b''c', 7, '2025-06-30 00:00:00')"));
    connection->execute(QStringLiteral("INSERT INTO U VALUES (1, 1, 'x'), (2, 1, NULL), (3, 3, 'y')"));
    const QStringList statements = {
        // a text column against a number, a number column against a text: affinities as written
        QStringLiteral("SELECT ID, N + 1 FROM T WHERE CODICE = 10 OR N = '7' ORDER BY ID"),
        QStringLiteral("SELECT T.ID, U.NOTE, (SELECT COUNT(*) FROM U U2 WHERE U2.T_ID = T.ID AND U2.ID > 1) "
                       "FROM T LEFT JOIN U ON U.T_ID = T.ID AND U.NOTE = 'x' WHERE T.D >= '2024-01-31' ORDER BY T.ID"),
        QStringLiteral("SELECT ID FROM T WHERE CODICE = 'b''c' AND 1=1"),
        QStringLiteral("SELECT ID FROM T WHERE 1=0"),
    };
    for (const QString &sql : statements) {
        QVERIFY2(!parameterizeConditions(sql).values.isEmpty() || sql.contains(u"1=0"_qs), qPrintable(sql));
        const RecordsetPtr shared = connection->openRecordset(sql);
        sqlite3 *bare = nullptr;
        QCOMPARE(sqlite3_open_v2(file.toUtf8().constData(), &bare, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        sqlite3_stmt *statement = nullptr;
        QCOMPARE(sqlite3_prepare_v2(bare, sql.toUtf8().constData(), -1, &statement, nullptr), SQLITE_OK);
        QCOMPARE(shared->fieldCount(), sqlite3_column_count(statement));
        for (int column = 0; column < shared->fieldCount(); ++column)
            QCOMPARE(shared->field(column).name, QString::fromUtf8(sqlite3_column_name(statement, column)));
        int row = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            QVERIFY2(row < shared->recordCount(), qPrintable(sql));
            for (int column = 0; column < shared->fieldCount(); ++column) {
                const QVariant value = shared->valueAt(row, column);
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
                QCOMPARE(value.isNull(), text == nullptr);
                if (text && value.metaType() != QMetaType::fromType<QDateTime>())
                    QCOMPARE(value.toString(), QString::fromUtf8(text));
            }
            ++row;
        }
        QCOMPARE(shared->recordCount(), row);
        sqlite3_finalize(statement);
        sqlite3_close(bare);
    }
}

// One row's INSERT: each value that stands alone becomes a parameter; what is an expression, a
// decimal or NULL stays; anything else is left alone. What is stored is what the text says.
void TestSqliteParameters::aRowsValuesBecomeParametersAndAreStoredAsWritten()
{
    ParameterizedSelect insert = parameterizeValues(
        u"INSERT INTO T (ID, CODICE, N, D, E) VALUES (4, 'd''e', -3, datetime('2024-01-31'), 1.5);"_qs);
    QCOMPARE(insert.text, u"INSERT INTO T (ID, CODICE, N, D, E) VALUES (?, ?, -3, datetime('2024-01-31'), 1.5);"_qs);
    QCOMPARE(insert.values, QVariantList({4LL, u"d'e"_qs}));
    for (const QString &untouched :
         {u"INSERT INTO T VALUES (1, 2), (3, 4)"_qs, u"INSERT INTO T SELECT 1, 2"_qs, u"INSERT INTO T VALUES (?, 2)"_qs,
          u"UPDATE T SET A = 1"_qs, u"INSERT INTO T VALUES (1, 2); DELETE FROM T"_qs})
        QVERIFY2(parameterizeValues(untouched).values.isEmpty(), qPrintable(untouched));

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("v.sqlite"));
    ConnectionPtr connection = Connection::open(QStringLiteral("Provider=SQLite;Data Source=") + file);
    connection->execute(
        QStringLiteral("CREATE TABLE T (ID INTEGER PRIMARY KEY, CODICE VARCHAR(10), N INTEGER, D TEXT)"));
    QCOMPARE(connection->execute(QStringLiteral("INSERT INTO T (ID, CODICE, N, D) VALUES (1, '007', '12', NULL)")), 1);
    QCOMPARE(connection->execute(QStringLiteral("INSERT INTO T (ID, CODICE, N, D) VALUES (2, 'O''Hara', 5, 'x')")), 1);
    const RecordsetPtr rows = connection->openRecordset(
        QStringLiteral("SELECT CODICE, typeof(N) AS TN, N, D FROM T ORDER BY ID"));
    QCOMPARE(rows->valueAt(0, 0).toString(), QStringLiteral("007"));     // a text column keeps its zeros
    QCOMPARE(rows->valueAt(0, 1).toString(), QStringLiteral("integer")); // and a number column takes the number
    QVERIFY(rows->valueAt(0, 3).isNull());
    QCOMPARE(rows->valueAt(1, 0).toString(), QStringLiteral("O'Hara"));
}

QTEST_MAIN(TestSqliteParameters)
#include "tst_sqliteparameters.moc"
