#include "framework/layoutmemory.h"
#include "framework/treelist/treelist.h"
#include "framework/columnsizing.h"
#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelistview.h"
#include "tests/support/testdatabase.h"

#include <QFile>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QtTest>

using fw::TreeListColumnKind;

// Columns a reader can read: shares of the width in the design's proportions, but never below a
// heading and a whole value, measured with the fonts in use; the widths a user leaves come back.
class TestTreeListWidths : public QObject
{
    Q_OBJECT

    static QList<fw::TreeListColumn> columns()
    {
        return {
            {.name = QStringLiteral("trCODICE"),
             .caption = QStringLiteral("Codice"),
             .fieldName = QStringLiteral("CODICE"),
             .designWidth = 1200,
             .widthSample = QStringLiteral("9999999")},
            {.name = QStringLiteral("NOME"),
             .caption = QStringLiteral("Ragione Sociale"),
             .fieldName = QStringLiteral("NOME"),
             .designWidth = 300},
            {.name = QStringLiteral("trDATA"),
             .caption = QStringLiteral("Data"),
             .fieldName = QStringLiteral("DATA"),
             .kind = TreeListColumnKind::Date,
             .designWidth = 300},
            {.name = QStringLiteral("trTIPO"),
             .caption = QStringLiteral("Tipo"),
             .fieldName = QStringLiteral("TIPO"),
             .kind = TreeListColumnKind::ImageCombo,
             .designWidth = 300,
             .comboItems = {{0, QStringLiteral("Codice anagrafico"), {}},
                            {3, QStringLiteral("Cli per fatt. del nodo padre"), {}}}},
        };
    }

private slots:
    void sharesKeepProportionsAboveMinimums_data()
    {
        QTest::addColumn<QList<int>>("design");
        QTest::addColumn<QList<int>>("minimums");
        QTest::addColumn<int>("available");
        QTest::addColumn<QList<int>>("widths");
        QTest::newRow("minimums below every share")
            << QList<int> {100, 100, 200} << QList<int> {10, 10, 10} << 400 << QList<int> {100, 100, 200};
        QTest::newRow("one held, the rest in proportion")
            << QList<int> {1200, 300, 300} << QList<int> {50, 150, 50} << 600 << QList<int> {360, 150, 90};
        QTest::newRow("holding one pushes another under")
            << QList<int> {1000, 100, 100} << QList<int> {10, 120, 100} << 300 << QList<int> {80, 120, 100};
        QTest::newRow("minimums do not fit: minimums")
            << QList<int> {1, 1} << QList<int> {300, 200} << 400 << QList<int> {300, 200};
        QTest::newRow("rounding goes to the last free column")
            << QList<int> {1, 1, 1} << QList<int> {0, 0, 0} << 100 << QList<int> {33, 33, 34};
    }
    void sharesKeepProportionsAboveMinimums()
    {
        QFETCH(QList<int>, design);
        QFETCH(QList<int>, minimums);
        QFETCH(int, available);
        QFETCH(QList<int>, widths);
        const QList<int> result = fw::proportionalWidths(design, minimums, available);
        QCOMPARE(result, widths);
        for (qsizetype i = 0; i < result.size(); ++i)
            QVERIFY(result.at(i) >= minimums.at(i));
    }

    // The minimum is measured with the font of the cells and of the heading: a larger font makes
    // every minimum larger, and each holds its heading and a whole value of its kind.
    void minimumsHoldHeadingAndWholeValue()
    {
        QFont small(QStringLiteral("DejaVu Sans"), 8);
        QFont large(QStringLiteral("DejaVu Sans"), 14);
        const QFontMetrics cells(small);
        for (const fw::TreeListColumn &column : columns()) {
            const int minimum = fw::minimumColumnWidth(column, cells, cells);
            QVERIFY2(minimum >= cells.horizontalAdvance(column.caption) + fw::CellTextPadding, qPrintable(column.name));
            QVERIFY(fw::minimumColumnWidth(column, QFontMetrics(large), QFontMetrics(large)) > minimum);
        }
        const QList<fw::TreeListColumn> all = columns();
        QVERIFY(fw::minimumColumnWidth(all.at(2), cells, cells)
                >= cells.horizontalAdvance(QStringLiteral("31/12/2099")));
        QVERIFY(fw::minimumColumnWidth(all.at(3), cells, cells)
                >= cells.horizontalAdvance(QStringLiteral("Cli per fatt. del nodo padre")));
        QVERIFY(fw::minimumColumnWidth(all.at(0), cells, cells, 100)
                >= cells.horizontalAdvance(QStringLiteral("9999999")) + 100);
    }

    // In a narrow tree no column falls below its minimum (the tree scrolls sideways); a drag
    // cannot make one narrower; a wide tree gives the extra room in the design's proportions.
    void treeKeepsEveryColumnReadable()
    {
        fw::TreeList tree;
        for (const fw::TreeListColumn &column : columns())
            tree.addColumn(column);
        tree.setFillWidth(true);
        tree.resize(300, 200);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        for (int i = 0; i < tree.columnCount(); ++i)
            QVERIFY2(tree.view()->columnWidth(i) >= tree.minimumColumnWidth(i), qPrintable(tree.column(i).name));

        tree.resize(3000, 200);
        QCoreApplication::processEvents();
        QVERIFY(tree.view()->columnWidth(0) > 2 * tree.view()->columnWidth(1));

        tree.resize(300, 200);
        QCoreApplication::processEvents();
        tree.view()->header()->resizeSection(2, 5);
        QCOMPARE(tree.view()->columnWidth(2), tree.minimumColumnWidth(2));
    }

    // Widths by column name come back; widths kept for another set of columns, a missing or an
    // unreadable file give nothing, and the design stays. Users do not share their widths.
    void widthsRememberedPerUserAndLayout()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("finestre.ini"));
        const QStringList names {QStringLiteral("trCODICE"), QStringLiteral("NOME")};
        QVERIFY(fw::LayoutMemory(file, QStringLiteral("rossi"), QStringLiteral("F"))
                    .columnWidths(QStringLiteral("T"), names)
                    .isEmpty());

        fw::LayoutMemory rossi(file, QStringLiteral("rossi"), QStringLiteral("F"));
        rossi.rememberColumnWidths(QStringLiteral("T"),
                                   {{QStringLiteral("trCODICE"), 900}, {QStringLiteral("NOME"), 2400}});
        rossi.rememberSplitterShares({0.25, 0.6});
        rossi.rememberWindowSize(QSize(1500, 900));

        fw::LayoutMemory again(file, QStringLiteral("rossi"), QStringLiteral("F"));
        const QHash<QString, int> widths = again.columnWidths(QStringLiteral("T"), names);
        QCOMPARE(widths.value(QStringLiteral("trCODICE")), 900);
        QCOMPARE(widths.value(QStringLiteral("NOME")), 2400);
        QCOMPARE(again.splitterShares(), (QList<double> {0.25, 0.6}));
        QCOMPARE(again.windowSize(), QSize(1500, 900));
        QVERIFY(again
                    .columnWidths(QStringLiteral("T"),
                                  {QStringLiteral("trCODICE"), QStringLiteral("NOME"), QStringLiteral("NUOVA")})
                    .isEmpty());
        QVERIFY(
            again.columnWidths(QStringLiteral("T"), {QStringLiteral("NOME"), QStringLiteral("trCODICE")}).isEmpty());
        fw::LayoutMemory bianchi(file, QStringLiteral("bianchi [ufficio]"), QStringLiteral("F"));
        QVERIFY(bianchi.columnWidths(QStringLiteral("T"), names).isEmpty());
        QVERIFY(!bianchi.windowSize().isValid());

        QFile broken(file);
        QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
        broken.write("[utente_rossi\x01\xff\n=== \x00\x00 ]]\nlarghezze=abc\n", 40);
        broken.close();
        QVERIFY(again.columnWidths(QStringLiteral("T"), names).isEmpty());
        QVERIFY(again.splitterShares().isEmpty());

        fw::TreeList tree;
        for (const fw::TreeListColumn &column : columns())
            tree.addColumn(column);
        tree.setDesignWidths(again.columnWidths(QStringLiteral("T"), names));
        QCOMPARE(tree.designWidths().at(0).second, 1200);
        tree.setDesignWidths({{QStringLiteral("NOME"), 2000}, {QStringLiteral("ALTRA"), 50}});
        QCOMPARE(tree.designWidths().at(1), (std::pair<QString, int> {QStringLiteral("NOME"), 2000}));
    }
};

QTEST_MAIN(TestTreeListWidths)
#include "tst_treelistwidths.moc"
