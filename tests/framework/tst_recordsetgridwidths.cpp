#include "framework/columnsizing.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/recordsetgroupmodel.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QtTest>

using Kind = fw::RecordsetGridColumn::Kind;

// The grids keep the tree's width rule: columns in the design's proportions with the room that
// is left used, none narrower than its heading and a whole value of its kind (a whole date, the
// widest group); when that does not fit they scroll sideways, and a user's drag stays.
class TestRecordsetGridWidths : public QObject
{
    Q_OBJECT

    static QString dayMonthYear(const QVariant &value)
    {
        return value.isNull() ? QString() : value.toDate().toString(QStringLiteral("dd/MM/yyyy"));
    }

    struct Fixture
    {
        TestDatabase database;
        db::RecordsetPtr rows;

        Fixture()
        {
            db::Connection &db = *database.connection();
            db.execute(QStringLiteral("CREATE TEMP TABLE CAMPAGNE (TIPO TEXT, CODICE TEXT, DESCRIZIONE TEXT, "
                                      "INIZIO DATETIME, ATTIVA INTEGER)"));
            db.execute(QStringLiteral(
                "INSERT INTO CAMPAGNE VALUES ('Premio', 'P23NAT', 'Promo Natale 2023', '2023-11-15 00:00:00', 1), "
                "('Attività promozionale', 'P24PRI', 'Primavera in tavola 2024', '2024-03-01 00:00:00', 0)"));
            rows = db.openRecordset(QStringLiteral("SELECT * FROM CAMPAGNE"));
        }

        static QList<fw::RecordsetGridColumn> columns()
        {
            return {
                {.key = QStringLiteral("TIPO"), .caption = QStringLiteral("Condizione"), .width = 1000},
                {.key = QStringLiteral("CODICE"), .caption = QStringLiteral("Codice"), .width = 1000},
                {.key = QStringLiteral("DESCRIZIONE"), .caption = QStringLiteral("Descrizione"), .width = 2500},
                {.key = QStringLiteral("INIZIO"),
                 .caption = QStringLiteral("Data inizio"),
                 .width = 300,
                 .widthSample = fw::wholeDateSample(),
                 .displayText = dayMonthYear},
                {.key = QStringLiteral("ATTIVA"),
                 .caption = QStringLiteral("Attiva in campagne promozionali"),
                 .width = 300,
                 .kind = Kind::Check},
            };
        }
    };

    static int totalWidth(const QHeaderView *header)
    {
        int total = 0;
        for (int i = 0; i < header->count(); ++i)
            total += header->isSectionHidden(i) ? 0 : header->sectionSize(i);
        return total;
    }

private slots:
    void gridFillsItsWidthWithoutCuttingHeadingsOrDates()
    {
        Fixture f;
        fw::RecordsetGrid grid;
        QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        grid.setColumns(Fixture::columns());
        grid.setFillWidth(true);
        grid.setRecordset(f.rows);
        grid.resize(1400, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QHeaderView *header = grid.horizontalHeader();

        // Wide: the whole width is used, the extra room goes in the design's proportions.
        QCOMPARE(totalWidth(header), grid.viewport()->width());
        QVERIFY(grid.columnWidth(2) > 2 * grid.columnWidth(1));
        QVERIFY(!grid.horizontalScrollBar()->isVisible());
        const QFontMetrics cells = grid.fontMetrics();
        QVERIFY(grid.columnWidth(3) >= cells.horizontalAdvance(QStringLiteral("31/12/2099")) + fw::CellTextPadding);
        QVERIFY(grid.columnWidth(4)
                >= header->fontMetrics().horizontalAdvance(QStringLiteral("Attiva in campagne promozionali")));

        // Narrow: every column keeps its minimum and the grid scrolls sideways.
        grid.resize(250, 200);
        QCoreApplication::processEvents();
        for (int i = 0; i < header->count(); ++i)
            QCOMPARE(grid.columnWidth(i), grid.minimumColumnWidth(i));
        QVERIFY(totalWidth(header) > grid.viewport()->width());
        QVERIFY(grid.horizontalScrollBar()->maximum() > 0);

        // A drag cannot cut a column; a drag the user makes outlives a new set of rows.
        grid.resize(1400, 200);
        QCoreApplication::processEvents();
        header->resizeSection(3, 5);
        QCOMPARE(grid.columnWidth(3), grid.minimumColumnWidth(3));
        header->resizeSection(1, grid.columnWidth(1) + 150);
        const int dragged = grid.columnWidth(1);
        QCOMPARE(totalWidth(header), grid.viewport()->width());
        grid.setRecordset(f.database.connection()->openRecordset(QStringLiteral("SELECT * FROM CAMPAGNE")));
        QVERIFY(qAbs(grid.columnWidth(1) - dragged) <= 2);
    }

    // Without fill width the declared widths stay, but no heading is cut.
    void declaredWidthsGrowToTheirHeadingsOnly()
    {
        Fixture f;
        fw::RecordsetGrid grid;
        grid.setColumns(Fixture::columns());
        grid.setRecordset(f.rows);
        const int dpi = grid.logicalDpiX();
        QCOMPARE(grid.columnWidth(2), fw::twipsToPixels(2500, dpi));
        QVERIFY(fw::twipsToPixels(300, dpi) < grid.minimumColumnWidth(4));
        QCOMPARE(grid.columnWidth(4), grid.minimumColumnWidth(4));

        // The minimums are measured once per font and heading, not kept past either.
        const int normal = grid.minimumColumnWidth(4);
        QFont larger = grid.font();
        larger.setPointSizeF(larger.pointSizeF() * 2);
        grid.setFont(larger);
        QVERIFY(grid.minimumColumnWidth(4) > normal);
        QList<fw::RecordsetGridColumn> renamed = Fixture::columns();
        renamed[4].caption = QStringLiteral("Attiva");
        grid.setColumns(renamed);
        QVERIFY(grid.minimumColumnWidth(4)
                < grid.fontMetrics().horizontalAdvance(QStringLiteral("Attiva in campagne")));
    }

    // The grouping column holds its widest heading, in the bold the headings are drawn in.
    void groupGridHoldsItsWidestGroup()
    {
        Fixture f;
        fw::RecordsetGroupGrid grid;
        QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QList<fw::RecordsetGridColumn> columns = Fixture::columns();
        columns.prepend({.key = QStringLiteral("rowid"), .visible = false});
        grid.setFillWidth(true);
        grid.setColumns(columns);
        grid.setGroupField(QStringLiteral("TIPO"));
        grid.setRecordset(f.rows);
        grid.resize(300, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(grid.groupModel()->groupCount(), 2);
        QFont bold = grid.font();
        bold.setBold(true);
        QVERIFY(grid.columnWidth(1)
                >= QFontMetrics(bold).horizontalAdvance(QStringLiteral("Attività promozionale")) + fw::CellTextPadding);
        for (int i = 1; i < grid.header()->count(); ++i)
            QVERIFY(grid.columnWidth(i) >= grid.minimumColumnWidth(i));

        grid.resize(1600, 200);
        QCoreApplication::processEvents();
        QCOMPARE(totalWidth(grid.header()), grid.viewport()->width());
    }
};

QTEST_MAIN(TestRecordsetGridWidths)
#include "tst_recordsetgridwidths.moc"
