#include "framework/recordsetgrid.h"
#include "framework/recordsetgridmodel.h"
#include "framework/columnsizing.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QtTest>

using Kind = fw::RecordsetGridColumn::Kind;

// The bound grid on real recordsets of the schema: what it shows, what it writes back, and the
// current row kept in step with the recordset's.
class TestRecordsetGrid : public QObject
{
    Q_OBJECT

    // Three classification types; the grid shows a "Vai" button, the subject kind as a check
    // box (1 = suppliers), the code painted yellow and an editable description.
    struct Fixture
    {
        TestDatabase database;
        fw::RecordsetGrid grid;
        db::RecordsetPtr types;

        Fixture()
        {
            db::Connection &db = *database.connection();
            db.execute(QStringLiteral(
                "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, GD01_INDTIPOSOGG)"
                " VALUES (1, 'A01', 'Bar', 0), (1, 'B01', 'Grossisti', 1), (1, 'C01', 'Export', 0)"));
            grid.setColumns({
                {.key = QStringLiteral("VAI"), .caption = QStringLiteral("Vai"), .width = 600, .kind = Kind::Button},
                {.key = QStringLiteral("GD01_INDTIPOSOGG"),
                 .caption = QStringLiteral("Forn."),
                 .width = 750,
                 .kind = Kind::Check,
                 .readOnly = false},
                {.key = QStringLiteral("GD01_CODICE"),
                 .caption = QStringLiteral("Codice"),
                 .width = 1500,
                 .background = QColor(255, 255, 153)},
                {.key = QStringLiteral("GD01_DESCR"), .width = 3000, .readOnly = false},
            });
            types = db.openRecordset(QStringLiteral("SELECT * FROM GD01_TIPODISTINTA ORDER BY GD01_CODICE"));
            grid.setRecordset(types);
            grid.resize(800, 300);
            grid.show();
        }

        QAbstractItemModel *model() const { return grid.model(); }
        QModelIndex cell(int row, int column) const { return grid.model()->index(row, column); }
        QVariant stored(const QString &sql) const { return database.scalar(sql); }
        void click(int row, int column)
        {
            QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell(row, column)).center());
        }
    };

private slots:
    void columnsShowTheirFieldsInTheDeclaredOrder()
    {
        Fixture f;
        QCOMPARE(f.model()->columnCount(), 4);
        QCOMPARE(f.model()->rowCount(), 3);
        const QStringList headings = {QStringLiteral("Vai"), QStringLiteral("Forn."), QStringLiteral("Codice"),
                                      QStringLiteral("GD01_DESCR")};
        for (int column = 0; column < headings.size(); ++column)
            QCOMPARE(f.model()->headerData(column, Qt::Horizontal).toString(), headings.at(column));
        QCOMPARE(f.grid.columnOf(QStringLiteral("gd01_codice")), 2);
        QCOMPARE(f.grid.columnOf(QStringLiteral("GD01_ID")), -1);

        QCOMPARE(f.cell(1, 2).data().toString(), QStringLiteral("B01"));
        QCOMPARE(f.cell(1, 0).data().toString(), QStringLiteral("Vai")); // a button shows its caption
        QCOMPARE(f.cell(0, 1).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Unchecked);
        QCOMPARE(f.cell(1, 1).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);
        QVERIFY(!f.cell(1, 1).data(Qt::DisplayRole).isValid()); // a flag is a box, not a number

        // Only the painted column has a background, on every row.
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(f.cell(row, 2).data(Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 255, 153));
            QVERIFY(!f.cell(row, 3).data(Qt::BackgroundRole).isValid());
        }

        const int dpi = f.grid.logicalDpiX();
        QCOMPARE(f.grid.columnWidth(0), fw::twipsToPixels(600, dpi));
        QCOMPARE(f.grid.columnWidth(3), fw::twipsToPixels(3000, dpi));

        // Read-only, button and unknown columns take no edit; the flag is a box, the text an editor.
        QVERIFY(!(f.model()->flags(f.cell(0, 2)) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)));
        QVERIFY(!(f.model()->flags(f.cell(0, 0)) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)));
        QCOMPARE(f.model()->flags(f.cell(0, 1)) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable),
                 Qt::ItemIsUserCheckable);
        QCOMPARE(f.model()->flags(f.cell(0, 3)) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable), Qt::ItemIsEditable);
        QVERIFY(!f.model()->setData(f.cell(0, 2), QStringLiteral("Z99")));
        QCOMPARE(f.types->valueAt(0, f.types->fieldIndex(QStringLiteral("GD01_CODICE"))).toString(),
                 QStringLiteral("A01"));
    }

    // A tick writes the integer 1 through the recordset, and the recordset writes it to its
    // table; clearing it writes 0. Other roles and the plain text editor do not touch a flag.
    void checkBoxesWriteOneAndZeroThroughTheRecordset()
    {
        Fixture f;
        const QString kindOfA01 = QStringLiteral(
            "SELECT GD01_INDTIPOSOGG FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'A01'");
        QVERIFY(f.model()->setData(f.cell(0, 1), Qt::Checked, Qt::CheckStateRole));
        const QVariant written = f.types->valueAt(0, f.types->fieldIndex(QStringLiteral("GD01_INDTIPOSOGG")));
        QCOMPARE(written.toInt(), 1);
        QVERIFY(written.typeId() == QMetaType::LongLong || written.typeId() == QMetaType::Int);
        QCOMPARE(f.stored(kindOfA01).toInt(), 1);
        QCOMPARE(
            f.stored(QStringLiteral("SELECT typeof(GD01_INDTIPOSOGG) FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'A01'"))
                .toString(),
            QStringLiteral("integer"));
        QCOMPARE(f.cell(0, 1).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);

        QVERIFY(f.model()->setData(f.cell(0, 1), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(f.stored(kindOfA01).toInt(), 0);
        QVERIFY(!f.model()->setData(f.cell(0, 1), 1, Qt::EditRole));
        QCOMPARE(f.stored(kindOfA01).toInt(), 0);

        // The text column writes what is typed.
        QVERIFY(f.model()->setData(f.cell(2, 3), QStringLiteral("Estero")));
        QCOMPARE(
            f.stored(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'C01'")).toString(),
            QStringLiteral("Estero"));

        // A click on the box by the user ticks it as well.
        const QRect box = f.grid.visualRect(f.cell(2, 1));
        QStyleOptionViewItem option;
        option.initFrom(&f.grid);
        option.rect = box;
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        const QRect indicator = f.grid.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &f.grid);
        QTest::mouseClick(f.grid.viewport(), Qt::LeftButton, {}, indicator.center());
        QCOMPARE(f.stored(QStringLiteral("SELECT GD01_INDTIPOSOGG FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'C01'"))
                     .toInt(),
                 1);
    }

    void currentRowFollowsTheRecordsetBothWays()
    {
        Fixture f;
        QCOMPARE(f.grid.currentIndex().row(), 0); // a new recordset sits on its first row

        f.types->moveLast();
        QCOMPARE(f.grid.currentIndex().row(), 2);
        QCOMPARE(f.grid.selectionModel()->selectedRows().size(), 1);
        f.types->moveNext(); // EOF: no current cell
        QVERIFY(!f.grid.currentIndex().isValid());

        f.click(1, 3);
        QCOMPARE(f.types->currentRow(), 1);
        QCOMPARE(f.types->value(QStringLiteral("GD01_CODICE")).toString(), QStringLiteral("B01"));
        QTest::keyClick(f.grid.viewport(), Qt::Key_Down);
        QCOMPARE(f.types->currentRow(), 2);

        // A filter of the recordset reaches the grid.
        f.types->setFilter(QStringLiteral("GD01_INDTIPOSOGG = 0"));
        QCOMPARE(f.model()->rowCount(), 2);
        QCOMPARE(f.cell(1, 2).data().toString(), QStringLiteral("C01"));
        QCOMPARE(f.grid.currentIndex().row(), 0);
    }

    // Leaving a row whose change someone else overwrote meanwhile fails; grid and recordset stay.
    void aRowThatCannotBeWrittenKeepsTheGridOnIt()
    {
        Fixture f;
        f.types->setValue(QStringLiteral("GD01_DESCR"), QStringLiteral("Nostra"));
        db::ConnectionPtr other = db::Connection::open(f.database.connectionString());
        other->execute(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Altrui' WHERE GD01_CODICE = 'A01'"));

        f.click(2, 3);
        QCOMPARE(f.types->currentRow(), 0);
        QCOMPARE(f.grid.currentIndex().row(), 0);
        QVERIFY(f.types->isEditing());
        QCOMPARE(
            f.stored(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'A01'")).toString(),
            QStringLiteral("Altrui"));
    }

    void buttonsAndHeadingsReportTheirColumnKey()
    {
        Fixture f;
        QSignalSpy buttons(&f.grid, &fw::RecordsetGrid::buttonClicked);
        QSignalSpy headings(&f.grid, &fw::RecordsetGrid::headerClicked);

        f.click(2, 0);
        QCOMPARE(buttons.size(), 1);
        QCOMPARE(buttons.first().at(0).toInt(), 2);
        QCOMPARE(buttons.first().at(1).toString(), QStringLiteral("VAI"));
        QCOMPARE(f.types->currentRow(), 2); // the pressed row became current first
        f.click(1, 2);                      // a text cell is no button
        QCOMPARE(buttons.size(), 1);

        QHeaderView *header = f.grid.horizontalHeader();
        for (int column : {1, 3}) {
            const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                                header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, centre);
        }
        QCOMPARE(headings.size(), 2);
        QCOMPARE(headings.at(0).at(0).toString(), QStringLiteral("GD01_INDTIPOSOGG"));
        QCOMPARE(headings.at(1).at(0).toString(), QStringLiteral("GD01_DESCR"));
        QCOMPARE(f.cell(0, 2).data().toString(), QStringLiteral("A01")); // a heading never sorts
    }

    // Rows added, changed or removed through a clone show at once; a new recordset replaces the
    // old one entirely, and the old one no longer moves the grid.
    void theGridFollowsItsRecordsetAndLetsGoOfTheOldOne()
    {
        Fixture f;
        db::RecordsetPtr clone = f.types->clone();
        clone->setAbsolutePosition(2);
        clone->setValue(QStringLiteral("GD01_DESCR"), QStringLiteral("Ingrosso"));
        clone->update();
        QCOMPARE(f.cell(1, 3).data().toString(), QStringLiteral("Ingrosso"));
        clone->deleteCurrent();
        QCOMPARE(f.model()->rowCount(), 2);
        QCOMPARE(f.cell(1, 2).data().toString(), QStringLiteral("C01"));

        db::RecordsetPtr other = f.database.connection()->openRecordset(
            QStringLiteral("SELECT GD01_CODICE, GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'C01'"));
        f.grid.setRecordset(other);
        QCOMPARE(f.model()->rowCount(), 1);
        QVERIFY(!f.cell(0, 1).data(Qt::CheckStateRole).isValid()); // no such field here
        QVERIFY(!(f.model()->flags(f.cell(0, 1)) & Qt::ItemIsUserCheckable));
        f.types->moveFirst();
        f.types->moveNext();
        QCOMPARE(f.grid.currentIndex().row(), 0);

        f.grid.setRecordset(nullptr);
        QCOMPARE(f.model()->rowCount(), 0);
        QVERIFY(!f.grid.recordset());
    }

    void withoutDeclaredColumnsEveryFieldShows()
    {
        TestDatabase database;
        fw::RecordsetGrid grid;
        grid.setRecordset(database.connection()->openRecordset(QStringLiteral("SELECT 0 AS Seleziona, 'x' AS Testo")));
        QCOMPARE(grid.model()->columnCount(), 2);
        QCOMPARE(grid.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Testo"));
        QCOMPARE(grid.model()->index(0, 1).data().toString(), QStringLiteral("x"));
        QCOMPARE(grid.columnOf(QStringLiteral("seleziona")), 0);
    }

    // A decoded column shows its text in place of the stored value, which stays the edit value;
    // a hidden column keeps its place.
    void decodedAndHiddenColumns()
    {
        Fixture f;
        QList<fw::RecordsetGridColumn> columns = {
            {.key = QStringLiteral("GD01_CODICE"), .caption = QStringLiteral("Codice")},
            {.key = QStringLiteral("GD01_INDTIPOSOGG"),
             .caption = QStringLiteral("Tipo"),
             .displayText =
                 [](const QVariant &value) {
                     return value.toInt() == 1 ? QStringLiteral("Fornitore") : QStringLiteral("Cliente");
                 }},
            {.key = QStringLiteral("GD01_ID"), .visible = false},
        };
        f.grid.setColumns(columns);
        QCOMPARE(f.cell(1, 1).data().toString(), QStringLiteral("Fornitore"));
        QCOMPARE(f.cell(1, 1).data(Qt::EditRole).toInt(), 1);
        QVERIFY(f.grid.isColumnHidden(2));
        QVERIFY(!f.grid.isColumnHidden(1));
    }

    // The user's choice of another row asks the guard first: refused, the grid and the
    // recordset stay; double click and Enter on a read-only row choose it.
    void rowChangesAskTheGuardAndRowsCanBeChosen()
    {
        Fixture f;
        bool allow = false;
        int asked = 0;
        f.grid.setRowChangeGuard([&] {
            ++asked;
            return allow;
        });
        f.click(2, 2);
        QCOMPARE(asked, 1);
        QCOMPARE(f.types->currentRow(), 0);
        QCOMPARE(f.grid.currentIndex().row(), 0);
        allow = true;
        f.click(2, 2);
        QCOMPARE(f.types->currentRow(), 2);

        QSignalSpy chosen(&f.grid, &fw::RecordsetGrid::rowChosen);
        QTest::mouseClick(f.grid.viewport(), Qt::LeftButton, {}, f.grid.visualRect(f.cell(1, 2)).center());
        QTest::mouseDClick(f.grid.viewport(), Qt::LeftButton, {}, f.grid.visualRect(f.cell(1, 2)).center());
        QTest::keyClick(&f.grid, Qt::Key_Return);
        QCOMPARE(chosen.size(), 2);
        QCOMPARE(chosen.at(0).at(0).toInt(), 1);
        QCOMPARE(chosen.at(1).at(0).toInt(), 1);
    }
};

QTEST_MAIN(TestRecordsetGrid)
#include "tst_recordsetgrid.moc"
