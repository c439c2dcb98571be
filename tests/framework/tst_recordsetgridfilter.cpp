#include "framework/recordsetgrid.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/recordsetgridmodel.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QtTest>

#include <algorithm>
#include <numeric>

using Kind = fw::RecordsetGridColumn::Kind;

// The grid's rows narrowed by a typed text and ordered by a heading, over a real recordset:
// the recordset keeps its rows, order, current row and ticks; the grid reports the recordset's
// rows whatever is shown.
class TestRecordsetGridFilter : public QObject
{
    Q_OBJECT

    struct Fixture
    {
        TestDatabase database;
        fw::RecordsetGrid grid;
        db::RecordsetPtr rows;
        fw::RecordsetGridFilterModel *filter = nullptr;

        Fixture()
        {
            db::Connection &db = *database.connection();
            db.execute(QStringLiteral("CREATE TEMP TABLE LISTA (Seleziona INTEGER, Codice INTEGER, "
                                      "\"Ragione sociale\" TEXT, Citta TEXT, Provincia TEXT)"));
            db.execute(
                QStringLiteral("INSERT INTO LISTA VALUES (0, 10, 'Rossi Mario', 'Verona', 'VR'), (0, 20, 'Bianchi & "
                               "C.', 'Forlì', 'FC'), "
                               "(0, 30, 'D''Amico 50% Srl', NULL, 'BA'), (0, 40, 'Ωmega_Trade', 'Milano', NULL), "
                               "(0, 5, 'rossi luigi', 'Verona', 'VR'), (0, 100, NULL, 'Bari', 'BA')"));
            grid.setColumns({
                {.key = QStringLiteral("Seleziona"),
                 .caption = QStringLiteral("Sel."),
                 .kind = Kind::Check,
                 .readOnly = false},
                {.key = QStringLiteral("Codice")},
                {.key = QStringLiteral("Ragione sociale")},
                {.key = QStringLiteral("Citta")},
                {.key = QStringLiteral("Provincia")},
            });
            filter = grid.enableRowFilter(
                {QStringLiteral("Codice"), QStringLiteral("Ragione sociale"), QStringLiteral("Citta")},
                {QStringLiteral("Seleziona")});
            rows = db.openRecordset(QStringLiteral("SELECT * FROM LISTA"));
            grid.setRecordset(rows);
            grid.resize(700, 300);
            grid.show();
        }

        QStringList codes() const
        {
            QStringList shown;
            for (int row = 0; row < grid.model()->rowCount(); ++row)
                shown << grid.model()->index(row, 1).data().toString();
            return shown;
        }
        void tick(int code)
        {
            for (int row = 0; row < grid.model()->rowCount(); ++row) {
                if (grid.model()->index(row, 1).data().toInt() == code) {
                    QVERIFY(grid.model()->setData(grid.model()->index(row, 0), Qt::Checked, Qt::CheckStateRole));
                    return;
                }
            }
            QFAIL("not shown");
        }
        QList<int> tickedInRecordset() const
        {
            QList<int> ticked;
            for (int row = 0; row < rows->recordCount(); ++row) {
                if (rows->valueAt(row, rows->fieldIndex(QStringLiteral("Seleziona"))).toInt() == 1)
                    ticked << rows->valueAt(row, rows->fieldIndex(QStringLiteral("Codice"))).toInt();
            }
            return ticked;
        }
        void clickHeading(int column)
        {
            QHeaderView *header = grid.horizontalHeader();
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(column) + 5, header->height() / 2));
        }
    };

private slots:
    void filterMatchesLiterallyWithoutCase_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("codes");
        QTest::newRow("empty shows all") << QString() << QStringList {"10", "20", "30", "40", "5", "100"};
        QTest::newRow("name, any case") << "ROSSI" << QStringList {"10", "5"};
        QTest::newRow("city") << "verona" << QStringList {"10", "5"};
        QTest::newRow("accented city") << "FORLÌ" << QStringList {"20"};
        QTest::newRow("code digits") << "10" << QStringList {"10", "100"};
        QTest::newRow("quote is a character") << "D'Amico" << QStringList {"30"};
        QTest::newRow("percent is a character") << "50%" << QStringList {"30"};
        QTest::newRow("underscore is a character") << "a_t" << QStringList {"40"};
        QTest::newRow("outside Latin-1") << "ωMEGA" << QStringList {"40"};
        QTest::newRow("not in the filter columns") << "VR" << QStringList {};
        QTest::newRow("nothing") << "zzz" << QStringList {};
    }
    void filterMatchesLiterallyWithoutCase()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, codes);
        Fixture f;
        QAbstractItemModelTester tester(f.grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        f.filter->setFilterText(text);
        QCOMPARE(f.codes(), codes);
        QCOMPARE(f.rows->recordCount(), 6); // the recordset keeps every row
    }

    // Ticks belong to the recordset's rows: a hidden row stays ticked, and a tick given to a
    // row found by the filter or after a sort lands on that row.
    void ticksFollowTheirRows()
    {
        Fixture f;
        QAbstractItemModelTester tester(f.grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        f.filter->setFilterText(QStringLiteral("rossi"));
        f.tick(5);
        f.filter->setFilterText(QStringLiteral("bari"));
        f.tick(100);
        QCOMPARE(f.codes(), (QStringList {"100"}));
        QCOMPARE(f.tickedInRecordset(), (QList<int> {5, 100}));

        f.filter->setFilterText(QString());
        f.clickHeading(2); // by name: empty first, then without regard to case
        QCOMPARE(f.codes(), (QStringList {"100", "20", "30", "5", "10", "40"}));
        QCOMPARE(f.grid.model()->index(0, 0).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);
        QCOMPARE(f.grid.model()->index(3, 0).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);
        f.tick(40);
        QCOMPARE(f.tickedInRecordset(), (QList<int> {40, 5, 100}));
    }

    void headingSortsNumbersAsNumbersAndReverses()
    {
        Fixture f;
        f.clickHeading(1);
        QCOMPARE(f.codes(), (QStringList {"5", "10", "20", "30", "40", "100"}));
        QCOMPARE(f.grid.horizontalHeader()->sortIndicatorSection(), 1);
        f.clickHeading(1);
        QCOMPARE(f.codes(), (QStringList {"100", "40", "30", "20", "10", "5"}));
        QCOMPARE(f.grid.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
        f.clickHeading(3); // city: empty first, equal cities keep the recordset's order
        QCOMPARE(f.codes(), (QStringList {"30", "100", "20", "40", "10", "5"}));
        f.clickHeading(0); // the tick column is not an order
        QCOMPARE(f.codes(), (QStringList {"30", "100", "20", "40", "10", "5"}));
        QCOMPARE(f.rows->valueAt(0, f.rows->fieldIndex(QStringLiteral("Codice"))).toInt(), 10);
    }

    // The order of texts is that of their case-folded units: letter case aside, accented letters
    // after the plain alphabet, empty texts and nulls first and equal to each other, and equal
    // values in the recordset's order both ways; in a column of mixed values, numbers come
    // between the empty values and the texts.
    void orderFoldsCaseAndKeepsTiesInRecordsetOrder()
    {
        TestDatabase database;
        db::Connection &db = *database.connection();
        db.execute(QStringLiteral("CREATE TEMP TABLE NOMI (Codice INTEGER, Nome TEXT, Valore)"));
        db.execute(QStringLiteral(
            "INSERT INTO NOMI VALUES (1, 'rossi', 10), (2, 'Àlfa', 'b'), (3, NULL, NULL), (4, 'ROSSI', 2.5), "
            "(5, 'alfa', ''), (6, 'Zeta', 'B'), (7, '', -3), (8, 'éclair', 'a'), (9, 'Rossi', 10), "
            "(10, 'ÉCLAIR', 'Ω'), (11, 'alfa beta', 'ω'), (12, 'Alfa', NULL)"));
        fw::RecordsetGrid grid;
        grid.setColumns(
            {{.key = QStringLiteral("Codice")}, {.key = QStringLiteral("Nome")}, {.key = QStringLiteral("Valore")}});
        fw::RecordsetGridFilterModel *filter = grid.enableRowFilter({QStringLiteral("Nome")}, {});
        QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        grid.setRecordset(db.openRecordset(QStringLiteral("SELECT * FROM NOMI")));
        const auto codes = [&] {
            QList<int> shown;
            for (int row = 0; row < grid.model()->rowCount(); ++row)
                shown << grid.model()->index(row, 0).data().toInt();
            return shown;
        };

        filter->sort(1, Qt::AscendingOrder);
        QCOMPARE(codes(), (QList<int> {3, 7, 5, 12, 11, 1, 4, 9, 6, 2, 8, 10}));
        filter->sort(1, Qt::DescendingOrder);
        QCOMPARE(codes(), (QList<int> {8, 10, 2, 6, 1, 4, 9, 11, 5, 12, 3, 7}));
        filter->sort(2, Qt::AscendingOrder);
        QCOMPARE(codes(), (QList<int> {3, 5, 12, 7, 4, 1, 9, 8, 2, 6, 10, 11}));
        filter->sort(2, Qt::DescendingOrder);
        QCOMPARE(codes(), (QList<int> {10, 11, 2, 6, 8, 1, 9, 4, 7, 3, 5, 12}));

        // The filter narrows the order without changing it; a changed value is ordered anew.
        filter->setFilterText(QStringLiteral("ALFA"));
        filter->sort(1, Qt::AscendingOrder);
        QCOMPARE(codes(), (QList<int> {5, 12, 11}));
        filter->setFilterText(QString());
        grid.recordset()->setCurrentRow(0);
        grid.recordset()->setValue(QStringLiteral("Nome"), QStringLiteral("AAA"));
        filter->sort(1, Qt::AscendingOrder);
        QCOMPARE(codes().mid(0, 3), (QList<int> {3, 7, 1}));
    }

    // Many rows with many equal names, letter cases and accents: the order is the one of a stable
    // sort on the case-folded texts, both ways.
    void orderOfManyRowsIsTheStableFoldedOrder()
    {
        TestDatabase database;
        db::Connection &db = *database.connection();
        db.execute(QStringLiteral("CREATE TEMP TABLE NOMI (Codice INTEGER, Nome TEXT)"));
        const QStringList parts {QStringLiteral("rossi"),
                                 QStringLiteral("Rossi"),
                                 QStringLiteral("ROSSÌ"),
                                 QStringLiteral("Ànna"),
                                 QStringLiteral("anna"),
                                 QStringLiteral("Straße"),
                                 QStringLiteral("STRASSE"),
                                 QStringLiteral("Ωmega"),
                                 QStringLiteral("zeta"),
                                 QStringLiteral("a"),
                                 QString()};
        QStringList names;
        for (int i = 0; i < 3000; ++i) {
            const QString name = parts.at(i % parts.size()) + QLatin1Char(' ') + parts.at((i * 7) % parts.size());
            names << name.trimmed();
            db.execute(QStringLiteral("INSERT INTO NOMI VALUES (%1, '%2')").arg(i).arg(name.trimmed()));
        }
        fw::RecordsetGrid grid;
        grid.setColumns({{.key = QStringLiteral("Codice")}, {.key = QStringLiteral("Nome")}});
        fw::RecordsetGridFilterModel *filter = grid.enableRowFilter({}, {});
        grid.setRecordset(db.openRecordset(QStringLiteral("SELECT * FROM NOMI ORDER BY Codice")));
        QList<int> expected(names.size());
        std::iota(expected.begin(), expected.end(), 0);
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
                const int c = names.at(a).toCaseFolded().compare(names.at(b).toCaseFolded());
                return order == Qt::AscendingOrder ? c < 0 : c > 0;
            });
            filter->sort(1, order);
            for (int row = 0; row < expected.size(); ++row)
                QCOMPARE(grid.model()->index(row, 0).data().toInt(), expected.at(row));
            std::sort(expected.begin(), expected.end());
        }
    }

    // The grid's current row and the recordset's follow each other through the filter; the
    // rows the grid reports are the recordset's.
    void currentRowAndReportedRowsAreTheRecordsets()
    {
        Fixture f;
        f.clickHeading(1);
        f.clickHeading(1); // descending: 100 first
        QSignalSpy chosen(&f.grid, &fw::RecordsetGrid::rowChosen);
        f.grid.setCurrentIndex(f.grid.model()->index(0, 1));
        QCOMPARE(f.rows->currentRow(), 5);
        QTest::keyClick(&f.grid, Qt::Key_Return);
        QCOMPARE(chosen.takeFirst().at(0).toInt(), 5);

        f.rows->setCurrentRow(1); // code 20
        QCOMPARE(f.grid.currentIndex().row(), 3);
        f.filter->setFilterText(QStringLiteral("20"));
        QCOMPARE(f.grid.currentIndex().row(), 0);
        QCOMPARE(f.grid.recordsetRow(f.grid.currentIndex()), 1);
        f.filter->setFilterText(QStringLiteral("rossi"));
        QVERIFY(!f.grid.currentIndex().isValid()); // the current row is hidden
        QCOMPARE(f.rows->currentRow(), 1);
    }

    // A new set of rows (a rebuild of the list) keeps the filter text and the order.
    void newRowsKeepFilterAndOrder()
    {
        Fixture f;
        QAbstractItemModelTester tester(f.grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        f.filter->setFilterText(QStringLiteral("verona"));
        f.clickHeading(1);
        QCOMPARE(f.codes(), (QStringList {"5", "10"}));
        f.database.connection()->execute(QStringLiteral("INSERT INTO LISTA VALUES (0, 7, 'Verdi', 'Verona', 'VR')"));
        f.grid.setRecordset(f.database.connection()->openRecordset(QStringLiteral("SELECT * FROM LISTA")));
        QCOMPARE(f.codes(), (QStringList {"5", "7", "10"}));
        f.grid.setRecordset(nullptr);
        QCOMPARE(f.grid.model()->rowCount(), 0);
    }
};

QTEST_MAIN(TestRecordsetGridFilter)
#include "tst_recordsetgridfilter.moc"
