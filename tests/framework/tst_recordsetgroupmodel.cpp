#include "framework/recordsetgroupmodel.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QAbstractItemModelTester>
#include <QtTest>

// Rows of a recordset under one heading per value of a field.
class TestRecordsetGroupModel : public QObject
{
    Q_OBJECT

    struct Fixture
    {
        TestDatabase database;
        fw::RecordsetGroupModel model;
        QAbstractItemModelTester tester {&model, QAbstractItemModelTester::FailureReportingMode::QtTest};

        Fixture()
        {
            db::Connection &db = *database.connection();
            db.execute(
                QStringLiteral("INSERT INTO CO1A_ANAGDIVISIONI (CO1A_DITTA_CG18, CO1A_CODICE, CO1A_DESCR) VALUES "
                               "(1, 'A1', 'zeta'), (1, 'A2', 'Alfa'), (1, 'A3', 'zeta'), (2, 'B1', 'beta'), "
                               "(1, 'A4', 'Alfa')"));
            model.setColumns({{.key = QStringLiteral("CO1A_DESCR"), .caption = QStringLiteral("")},
                              {.key = QStringLiteral("CO1A_CODICE"), .caption = QStringLiteral("Codice")},
                              {.key = QStringLiteral("CO1A_IDDIV"), .visible = false}});
            model.setGroupField(QStringLiteral("CO1A_DESCR"));
            model.setRecordset(
                db.openRecordset(QStringLiteral("SELECT * FROM CO1A_ANAGDIVISIONI ORDER BY CO1A_IDDIV")));
        }
    };

private slots:
    // Headings in the order of their texts (letter case aside), rows in the recordset's order
    // below them; a heading shows its value in the grouping column only, rows everywhere else.
    void groupsInTextOrderWithRowsInRecordsetOrder()
    {
        Fixture f;
        QCOMPARE(f.model.rowCount(), 3);
        QCOMPARE(f.model.index(0, 0).data().toString(), QStringLiteral("Alfa"));
        QCOMPARE(f.model.index(1, 0).data().toString(), QStringLiteral("beta"));
        QCOMPARE(f.model.index(2, 0).data().toString(), QStringLiteral("zeta"));
        QVERIFY(f.model.index(0, 1).data().isNull());
        const QModelIndex zeta = f.model.index(2, 0);
        QCOMPARE(f.model.rowCount(zeta), 2);
        QCOMPARE(f.model.index(0, 1, zeta).data().toString(), QStringLiteral("A1"));
        QCOMPARE(f.model.index(1, 1, zeta).data().toString(), QStringLiteral("A3"));
        QVERIFY(f.model.index(0, 0, zeta).data().isNull());
        QCOMPARE(f.model.parent(f.model.index(1, 1, zeta)), zeta);
        QCOMPARE(f.model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Codice"));
        QVERIFY(f.model.headerData(0, Qt::Horizontal).toString().isEmpty());
    }

    // Each line stands for a recordset row, a heading for its group's first one, and back.
    void linesAndRecordsetRowsMapBothWays()
    {
        Fixture f;
        const QModelIndex alfa = f.model.index(0, 0);
        QCOMPARE(f.model.recordsetRow(alfa), 1);
        QCOMPARE(f.model.recordsetRow(f.model.index(1, 2, alfa)), 4);
        QVERIFY(f.model.isGroup(alfa));
        QVERIFY(!f.model.isGroup(f.model.index(1, 2, alfa)));
        for (int row = 0; row < 5; ++row)
            QCOMPARE(f.model.recordsetRow(f.model.indexOfRow(row, 1)), row);
        QCOMPARE(f.model.indexOfRow(2, 1), f.model.index(1, 1, f.model.index(2, 0)));
    }

    // A new recordset or none rebuilds the groups.
    void anotherRecordsetRebuildsTheGroups()
    {
        Fixture f;
        f.model.setRecordset(f.database.connection()->openRecordset(
            QStringLiteral("SELECT * FROM CO1A_ANAGDIVISIONI WHERE CO1A_DITTA_CG18 = 2")));
        QCOMPARE(f.model.rowCount(), 1);
        QCOMPARE(f.model.groupText(0), QStringLiteral("beta"));
        f.model.setRecordset(nullptr);
        QCOMPARE(f.model.rowCount(), 0);
        QCOMPARE(f.model.recordsetRow(QModelIndex()), -1);
    }
};

QTEST_MAIN(TestRecordsetGroupModel)
#include "tst_recordsetgroupmodel.moc"
