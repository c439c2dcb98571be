#include "platform/db/cellstore.h"

#include <QTest>

using namespace db;

// The recordsets' compact cells: whatever goes in must come back equal and of the same type,
// since the write side compares a row's values with those it read and binds them by type.
class TestCellStore : public QObject
{
    Q_OBJECT

private slots:
    void valuesComeBackExactly_data();
    void valuesComeBackExactly();
    void editsReplaceOnlyTheirCell();
};

void TestCellStore::valuesComeBackExactly_data()
{
    QTest::addColumn<QVariant>("value");
    const QDateTime local(QDate(2024, 1, 31), QTime(23, 59, 59, 120));
    QTest::newRow("null") << QVariant();
    QTest::newRow("typed null text") << QVariant(QMetaType::fromType<QString>());
    QTest::newRow("null text") << QVariant(QString());
    QTest::newRow("empty text") << QVariant(QString(u""_qs));
    QTest::newRow("accented text") << QVariant(u"Società Cooperativa «Là» – €"_qs);
    QTest::newRow("text with a nul") << QVariant(QString::fromUtf16(u"a\0b", 3));
    QTest::newRow("lone surrogate") << QVariant(QString(QChar(0xd800)) + u"x"_qs);
    QTest::newRow("int") << QVariant(int(-7));
    QTest::newRow("long long") << QVariant(qlonglong(-9007199254740993LL));
    QTest::newRow("double") << QVariant(-0.1);
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("local date") << QVariant(local);
    QTest::newRow("utc date") << QVariant(QDateTime(QDate(2024, 1, 31), QTime(10, 0), Qt::UTC));
    QTest::newRow("bytes") << QVariant(QByteArray("\x00\xff", 2));
    QTest::newRow("date only") << QVariant(QDate(2024, 2, 29));
}

void TestCellStore::valuesComeBackExactly()
{
    QFETCH(QVariant, value);
    CellStore appended(2);
    appended.append(value);
    appended.appendInteger(1);
    CellStore edited(2);
    edited.appendNullRow();
    edited.setValue(0, 1, value);
    for (const QVariant &back : {appended.value(0, 0), edited.value(0, 1)}) {
        QCOMPARE(back.metaType(), value.metaType());
        QCOMPARE(back.isNull(), value.isNull());
        QCOMPARE(back, value);
        if (value.metaType() == QMetaType::fromType<QString>())
            QCOMPARE(back.toString().isNull(), value.toString().isNull());
        if (value.metaType() == QMetaType::fromType<QDateTime>())
            QCOMPARE(back.toDateTime().timeSpec(), value.toDateTime().timeSpec());
    }
    QCOMPARE(appended.value(0, 1), QVariant(qlonglong(1)));
}

void TestCellStore::editsReplaceOnlyTheirCell()
{
    // Rows read as a result is read: texts straight from UTF-8, equal dates shared.
    CellStore cells(3);
    const QDateTime day(QDate(2025, 6, 30), QTime(0, 0));
    for (int row = 0; row < 1000; ++row) {
        const QByteArray name = "nome " + QByteArray::number(row);
        cells.appendText(name.constData(), name.size());
        cells.appendDateTime(day.addDays(row % 3));
        cells.appendDouble(row / 4.0);
    }
    QCOMPARE(cells.rowCount(), 1000);
    cells.setValue(500, 0, u"più lungo di prima"_qs);
    cells.setValue(500, 1, QVariant());
    cells.setValue(501, 1, day.addDays(10));
    QCOMPARE(cells.value(499, 0).toString(), u"nome 499"_qs);
    QCOMPARE(cells.value(500, 0).toString(), u"più lungo di prima"_qs);
    QCOMPARE(cells.value(501, 0).toString(), u"nome 501"_qs);
    QVERIFY(!cells.value(500, 1).isValid());
    QCOMPARE(cells.value(501, 1).toDateTime(), day.addDays(10));
    QCOMPARE(cells.value(502, 1).toDateTime(), day.addDays(502 % 3));
    QCOMPARE(cells.value(999, 2).toDouble(), 999 / 4.0);

    cells.appendNullRow();
    const std::vector<QVariant> added = cells.rowValues(1000);
    QCOMPARE(added.size(), size_t(3));
    QVERIFY(!added[0].isValid() && !added[1].isValid() && !added[2].isValid());
    QCOMPARE(cells.rowValues(499).at(2).toDouble(), 499 / 4.0);
}

QTEST_MAIN(TestCellStore)
#include "tst_cellstore.moc"
