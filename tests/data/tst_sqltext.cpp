#include "data/modgd_distinta.h"
#include "data/sqltext.h"

#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QtTest>

using namespace MODGD_DISTINTA;

class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void doubleQuotesDoublesEveryQuote_data();
    void doubleQuotesDoublesEveryQuote();
    void quotedTextReadsBackUnchangedFromTheDatabase();
    void datesInBothStyles();
    void userTypedDates_data();
    void userTypedDates();
    void temporaryTablePieces();
    void nvlStringa();
    void nvlNumero();
    void nvlNumeroRefusesWhatIsNotANumber_data();
    void nvlNumeroRefusesWhatIsNotANumber();
    void nvlTrim();
};

void TestSqlText::doubleQuotesDoublesEveryQuote_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QStringLiteral("Rossi Alimentari") << QStringLiteral("Rossi Alimentari");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("inside") << QStringLiteral("L'Aquila") << QStringLiteral("L''Aquila");
    QTest::newRow("consecutive") << QStringLiteral("a''b") << QStringLiteral("a''''b");
    QTest::newRow("leading and trailing") << QStringLiteral("'D'Amico'") << QStringLiteral("''D''Amico''");
    QTest::newRow("only quotes") << QStringLiteral("'''") << QStringLiteral("''''''");
}

void TestSqlText::doubleQuotesDoublesEveryQuote()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(sqltext::doubleQuotes(text), expected);
    QCOMPARE(sqltext::quoted(text), QLatin1Char('\'') + expected + QLatin1Char('\''));
}

// What matters is that the database reads the literal back as the user typed it.
void TestSqlText::quotedTextReadsBackUnchangedFromTheDatabase()
{
    TestDatabase database;
    const QStringList texts = {QStringLiteral("Bar dell'Angolo"), QStringLiteral("'"), QStringLiteral("''x''"),
                               QStringLiteral("' OR 1=1 --"), QStringLiteral("Caffè ''Roma''")};
    for (const QString &text : texts) {
        const db::RecordsetPtr rows = database.connection()->openRecordset(
            QStringLiteral("SELECT ") + sqltext::quoted(text) + QStringLiteral(" AS V"));
        QCOMPARE(rows->value(QStringLiteral("V")).toString(), text);
    }
}

void TestSqlText::datesInBothStyles()
{
    const QDate date(2024, 3, 5);
    QCOMPARE(sqltext::dayMonthYear(date), QStringLiteral("05/03/2024"));
    QCOMPARE(sqltext::monthDayYear(date), QStringLiteral("03/05/2024"));
    const QDateTime lateEvening(QDate(2099, 12, 31), QTime(23, 59, 59));
    QCOMPARE(sqltext::dayMonthYear(lateEvening), QStringLiteral("31/12/2099"));
    QCOMPARE(sqltext::monthDayYear(lateEvening), QStringLiteral("12/31/2099"));
    QCOMPARE(sqltext::convertDate103(date), QStringLiteral("CONVERT(DateTime,'05/03/2024',103)"));
    QCOMPARE(sqltext::convertDate101(date), QStringLiteral("CONVERT(DateTime,'03/05/2024',101)"));
}

void TestSqlText::userTypedDates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("expected");
    QTest::newRow("open end") << QStringLiteral("31/12/2099") << QDate(2099, 12, 31);
    QTest::newRow("single digits") << QStringLiteral("5/3/2024") << QDate(2024, 3, 5);
    QTest::newRow("blanks around") << QStringLiteral(" 01/01/2000 ") << QDate(2000, 1, 1);
    QTest::newRow("leap day") << QStringLiteral("29/02/2024") << QDate(2024, 2, 29);
    QTest::newRow("no leap day") << QStringLiteral("29/02/2023") << QDate();
    QTest::newRow("no such day") << QStringLiteral("31/04/2024") << QDate();
    QTest::newRow("day zero") << QStringLiteral("00/01/2024") << QDate();
    QTest::newRow("month 13") << QStringLiteral("01/13/2024") << QDate();
    QTest::newRow("two-digit year") << QStringLiteral("05/03/24") << QDate();
    QTest::newRow("iso") << QStringLiteral("2024-03-05") << QDate();
    QTest::newRow("letters") << QStringLiteral("aa/bb/cccc") << QDate();
    QTest::newRow("empty") << QString() << QDate();
}

void TestSqlText::userTypedDates()
{
    QFETCH(QString, text);
    QFETCH(QDate, expected);
    QCOMPARE(sqltext::parseDayMonthYear(text), expected);
    QCOMPARE(sqltext::isDayMonthYear(text), expected.isValid());
}

void TestSqlText::temporaryTablePieces()
{
    QCOMPARE(sqltext::dropTempTableStatement(QStringLiteral("#GD02_CLIFORSTD")),
             QStringLiteral("IF OBJECT_ID('tempdb..#GD02_CLIFORSTD') IS NOT NULL DROP TABLE #GD02_CLIFORSTD"));
    QCOMPARE(sqltext::intoTempTable(QStringLiteral("#GD12_TEMP")), QStringLiteral(" INTO #GD12_TEMP"));
    QCOMPARE(sqltext::selectAllFrom(QStringLiteral("#GD12_TEMP")), QStringLiteral("SELECT * FROM #GD12_TEMP"));
}

void TestSqlText::nvlStringa()
{
    QCOMPARE(NvlStringa(QVariant()), QString());
    QCOMPARE(NvlStringa(QVariant(QMetaType(QMetaType::QString))), QString());
    QCOMPARE(NvlStringa(QString()), QString());
    QCOMPARE(NvlStringa(QStringLiteral("   ")), QString());
    QCOMPARE(NvlStringa(QStringLiteral("  Rossi S.r.l.   ")), QStringLiteral("  Rossi S.r.l."));
    QCOMPARE(NvlStringa(1043), QStringLiteral("1043"));
    QCOMPARE(NvlStringa(2.5), QStringLiteral("2.5"));
    QCOMPARE(NvlStringa(QDateTime(QDate(2099, 12, 31), QTime(0, 0))), QStringLiteral("31/12/2099"));
}

void TestSqlText::nvlNumero()
{
    for (const QVariant &missing :
         {QVariant(), QVariant(QMetaType(QMetaType::Int)), QVariant(QString()), QVariant(QStringLiteral(""))}) {
        const QVariant zero = NvlNumero(missing);
        QCOMPARE(zero.typeId(), int(QMetaType::Short));
        QCOMPARE(zero.value<short>(), short(0));
    }
    const QVariant fromInt = NvlNumero(1043);
    QCOMPARE(fromInt.typeId(), int(QMetaType::Double));
    QCOMPARE(fromInt.toDouble(), 1043.0);
    QCOMPARE(NvlNumero(QStringLiteral(" -3.5 ")).toDouble(), -3.5);
    QCOMPARE(NvlNumero(QStringLiteral("4,25")).toDouble(), 4.25);
    QCOMPARE(NvlNumero(qlonglong(4000000000LL)).toDouble(), 4000000000.0);
    QCOMPARE(NvlNumero(QDate(1900, 1, 1)).toDouble(), 2.0);
}

void TestSqlText::nvlNumeroRefusesWhatIsNotANumber_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("letters") << QVariant(QStringLiteral("abc"));
    QTest::newRow("blanks") << QVariant(QStringLiteral("   "));
    QTest::newRow("two points") << QVariant(QStringLiteral("1.2.3"));
    QTest::newRow("thousands and decimals") << QVariant(QStringLiteral("1.234,5"));
    QTest::newRow("list") << QVariant(QVariantList {1, 2});
}

void TestSqlText::nvlNumeroRefusesWhatIsNotANumber()
{
    QFETCH(QVariant, value);
    QVERIFY_THROWS_EXCEPTION(ConversionError, NvlNumero(value));
}

void TestSqlText::nvlTrim()
{
    QCOMPARE(NvlTrim(QVariant(), QStringLiteral("x")), QVariant(QStringLiteral("x")));
    QCOMPARE(NvlTrim(QVariant(QMetaType(QMetaType::Double)), 0), QVariant(0));
    QCOMPARE(NvlTrim(QStringLiteral(" \t "), 5), QVariant(5));
    QCOMPARE(NvlTrim(QStringLiteral("  1043  "), QString()), QVariant(QStringLiteral("1043")));
    QCOMPARE(NvlTrim(1043, QString()), QVariant(QStringLiteral("1043")));
    // No text at all: swallowed, an empty value comes back.
    QVERIFY(!NvlTrim(QVariant::fromValue(QVariantMap {{QStringLiteral("a"), 1}}), QStringLiteral("d")).isValid());
}

QTEST_MAIN(TestSqlText)
#include "tst_sqltext.moc"
