#include "tests/framework/treelistfixture.h"

#include "framework/treelist/treelistheader.h"
#include "framework/treelist/treelistnodemover.h"
#include "framework/treelist/treelistview.h"

#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using fw::TreeListNode;

// A tree wider than its room: the sideways scroll bar shows, and the frozen columns (the code and
// the name) stay at the left edge, where clicks, keys, editors, drops and the header's edges find
// them, while the others scroll under them.
class TestTreeListFrozen : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sidewaysBarOnlyWhenColumnsDoNotFit();
    void frozenColumnsStayAtTheLeftEdge();
    void clicksKeysAndEditorsFindTheFrozenColumns();
    void frozenHeadingEdgesStillResize();

private:
    QTreeView *view() const { return f->tree->view(); }
    fw::TreeListHeader *header() const { return f->tree->view()->bandHeader(); }
    QScrollBar *sideways() const { return f->tree->view()->horizontalScrollBar(); }
    QModelIndex cell(int id, int column) const { return f->tree->model()->indexOfNode(f->node(id).id(), column); }
    int minimumsTotal() const;
    int frozenMinimums() const { return f->tree->minimumColumnWidth(0) + f->tree->minimumColumnWidth(1); }
    // Narrow enough for the columns to scroll, wide enough for the frozen ones to stay; scrolled
    // to the far right.
    void narrowAndScrolled();
    static void settle();
    static bool looksAlike(const QImage &a, const QImage &b);

    std::unique_ptr<TreeListFixture> f;
};

void TestTreeListFrozen::init()
{
    f = std::make_unique<TreeListFixture>();
    f->insert({{1, {}, "Uno"}, {2, 1, "Due"}, {3, 2, "Tre"}, {4, {}, "Quattro"}, {5, 4, "Cinque"}});
    f->bind();
    f->tree->setColumnWidthSample(QStringLiteral("trNOME"), QStringLiteral("Salumeria Rossi & Bianchi"));
    f->tree->setColumnWidthSample(QStringLiteral("Nota"), QStringLiteral("Una nota lunga quanto basta"));
    f->tree->setFillWidth(true);
    f->tree->setFrozenColumnCount(2);
    f->tree->expandAll();
}

void TestTreeListFrozen::cleanup()
{
    f.reset();
}

int TestTreeListFrozen::minimumsTotal() const
{
    int total = 0;
    for (int i = 0; i < f->tree->columnCount(); ++i)
        total += f->tree->minimumColumnWidth(i);
    return total;
}

// The scroll bars come and go on a queued call, the rows are laid out at the next event.
void TestTreeListFrozen::settle()
{
    for (int pass = 0; pass < 3; ++pass)
        QCoreApplication::processEvents();
}

// The style's shading may round a pixel another way where the painter was moved.
bool TestTreeListFrozen::looksAlike(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            if (qAbs(qRed(p) - qRed(q)) > 8 || qAbs(qGreen(p) - qGreen(q)) > 8 || qAbs(qBlue(p) - qBlue(q)) > 8)
                return false;
        }
    }
    return true;
}

void TestTreeListFrozen::narrowAndScrolled()
{
    f->tree->resize(2 * frozenMinimums(), 300);
    f->tree->show();
    QVERIFY(QTest::qWaitForWindowExposed(f->tree.get()));
    settle();
    QVERIFY2(header()->frozenWidth() > 0, "the frozen columns take more than two thirds of the width");
    QVERIFY2(sideways()->maximum() > 0, "every column fits");
    sideways()->setValue(sideways()->maximum());
    settle();
}

void TestTreeListFrozen::sidewaysBarOnlyWhenColumnsDoNotFit()
{
    f->tree->resize(minimumsTotal() + 200, 300);
    f->tree->show();
    QVERIFY(QTest::qWaitForWindowExposed(f->tree.get()));
    settle();
    QVERIFY(!sideways()->isVisible());
    QCOMPARE(header()->length(), view()->viewport()->width());

    f->tree->resize(2 * frozenMinimums(), 300);
    settle();
    QVERIFY(sideways()->isVisible());
    QCOMPARE(sideways()->maximum(), header()->length() - view()->viewport()->width());
    QVERIFY(sideways()->maximum() > 0);

    f->tree->resize(minimumsTotal() + 200, 300);
    settle();
    QVERIFY(!sideways()->isVisible());
}

void TestTreeListFrozen::frozenColumnsStayAtTheLeftEdge()
{
    f->tree->resize(2 * frozenMinimums(), 300);
    f->tree->show();
    QVERIFY(QTest::qWaitForWindowExposed(f->tree.get()));
    settle();
    const int frozen = header()->frozenWidth();
    QCOMPARE(frozen, view()->columnWidth(0) + view()->columnWidth(1));
    const QRect code = view()->visualRect(cell(3, 0));
    const QRect name = view()->visualRect(cell(3, 1));
    const QRect date = view()->visualRect(cell(3, 2));
    // What the frozen columns show, short of the edge line drawn once the others scroll.
    const QRect pane(0, 0, frozen - 1, view()->viewport()->height());
    const QRect captions(0, header()->height() / 2 + 1, frozen - 1, header()->height() / 2 - 1);
    const QImage paneBefore = view()->viewport()->grab(pane).toImage();
    const QImage captionsBefore = header()->viewport()->grab(captions).toImage();

    sideways()->setValue(sideways()->maximum());
    settle();
    const int shift = sideways()->value();
    QVERIFY(shift > 0);
    QCOMPARE(view()->visualRect(cell(3, 0)), code);
    QCOMPARE(view()->visualRect(cell(3, 1)), name);
    QCOMPARE(view()->visualRect(cell(3, 2)), date.translated(-shift, 0));
    QCOMPARE(f->tree->cellRect(f->node(3), QStringLiteral("trNOME")),
             name.translated(view()->viewport()->mapTo(f->tree.get(), QPoint(0, 0))));
    QCOMPARE(view()->indexAt(name.center()), cell(3, 1));
    QCOMPARE(view()->indexAt(code.center()), cell(3, 0));
    const int scrolledThere = header()->logicalIndexAt(frozen + 2);
    QVERIFY(scrolledThere >= 2);
    QCOMPARE(view()->indexAt(QPoint(frozen + 2, name.center().y())), cell(3, scrolledThere));
    QVERIFY(looksAlike(view()->viewport()->grab(pane).toImage(), paneBefore));
    QVERIFY(looksAlike(header()->viewport()->grab(captions).toImage(), captionsBefore));

    // Without frozen columns, and with frozen columns that would leave the others too little
    // room, everything scrolls.
    f->tree->setFrozenColumnCount(0);
    QCOMPARE(view()->visualRect(cell(3, 1)), name.translated(-shift, 0));
    f->tree->setFrozenColumnCount(2);
    QCOMPARE(view()->visualRect(cell(3, 1)), name);
    f->tree->resize(frozenMinimums() + 20, 300);
    settle();
    QCOMPARE(header()->frozenWidth(), 0);
    QCOMPARE(view()->visualRect(cell(3, 0)).left(), code.left() - sideways()->value());
}

void TestTreeListFrozen::clicksKeysAndEditorsFindTheFrozenColumns()
{
    auto *mover = new fw::TreeListNodeMover(f->tree.get());
    QSignalSpy moves(mover, &fw::TreeListNodeMover::moveRequested);
    narrowAndScrolled();
    f->tree->activateWindow();
    view()->setFocus();
    const int shift = sideways()->value();
    const int frozen = header()->frozenWidth();

    // A click on a name focuses its node and column; the columns do not scroll back.
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->visualRect(cell(2, 1)).center());
    QCOMPARE(f->tree->focusedNode(), f->node(2));
    QCOMPARE(f->tree->focusedColumn(), QStringLiteral("trNOME"));
    QCOMPARE(sideways()->value(), shift);
    TreeListNode pressed;
    QString pressedColumn;
    connect(f->tree.get(), &fw::TreeList::mouseDown, f->tree.get(),
            [&](const TreeListNode &node, const QString &column) {
                pressed = node;
                pressedColumn = column;
            });
    QTest::mouseClick(view()->viewport(), Qt::RightButton, {}, view()->visualRect(cell(5, 0)).center());
    QCOMPARE(pressed, f->node(5));
    QCOMPARE(pressedColumn, QStringLiteral("trID"));

    // The keys move along the rows where they are; a cell of a scrolled column comes out from
    // under the frozen ones.
    QTest::keyClick(view(), Qt::Key_Up);
    QCOMPARE(f->tree->focusedNode(), f->node(4));
    QCOMPARE(sideways()->value(), shift);
    f->tree->setFocusedColumn(QStringLiteral("trINIZIO"));
    QVERIFY(view()->visualRect(cell(4, 2)).left() >= frozen);
    const int revealed = sideways()->value();
    QVERIFY(revealed < shift);
    f->tree->setFocusedColumn(QStringLiteral("trNOME"));
    QCOMPARE(sideways()->value(), revealed);
    sideways()->setValue(shift);
    settle();

    // The expand button of the code column, where it shows.
    const QRect code = view()->visualRect(cell(1, 0));
    const QPoint button(code.left() - view()->indentation() / 2, code.center().y());
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, button);
    QVERIFY(!f->node(1).isExpanded());
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, button);
    QVERIFY(f->node(1).isExpanded());
    QCOMPARE(sideways()->value(), shift);

    // A double click edits the name where it shows; the editor stays there while the others
    // scroll, and the value reaches the database.
    const QPoint name = view()->visualRect(cell(2, 1)).center();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, name);
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, name);
    auto *editor = view()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    const QRect editorPlace = editor->geometry();
    QVERIFY(editorPlace.left() >= view()->columnWidth(0) && editorPlace.right() < frozen);
    sideways()->setValue(0);
    settle();
    QCOMPARE(editor->geometry(), editorPlace);
    sideways()->setValue(shift);
    settle();
    QCOMPARE(editor->geometry(), editorPlace);
    editor->setText(QStringLiteral("Due bis"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(f->stored(QStringLiteral("NOME"), 2).toString(), QStringLiteral("Due bis"));

    // A branch dropped on a code goes under that node.
    const std::unique_ptr<QMimeData> data(mover->mimeDataFor(f->node(5)));
    QVERIFY(mover->dropAt(data.get(), view()->visualRect(cell(2, 0)).center()));
    QCOMPARE(moves.size(), 1);
    QCOMPARE(moves.at(0).at(1).value<TreeListNode>(), f->node(2));
}

// Over the frozen columns the heading's edges are theirs, not those of the columns scrolled
// under them: a double click fits the column, a drag widens it.
void TestTreeListFrozen::frozenHeadingEdgesStillResize()
{
    f->tree->setFillWidth(false); // with the tree's width shared out, a dragged edge comes back
    narrowAndScrolled();
    QWidget *headings = header()->viewport();
    const int y = headings->height() * 3 / 4;
    QSignalSpy fits(header(), &QHeaderView::sectionHandleDoubleClicked);
    QTest::mouseDClick(headings, Qt::LeftButton, {}, QPoint(view()->columnWidth(0), y));
    QCOMPARE(fits.size(), 1);
    QCOMPARE(fits.at(0).at(0).toInt(), 0);
    QVERIFY(header()->frozenShift() > 0);

    const int name = view()->columnWidth(1);
    const int under = header()->logicalIndexAt(header()->frozenWidth());
    const int underWidth = view()->columnWidth(under);
    const QPoint edge(header()->frozenWidth(), y);
    QTest::mousePress(headings, Qt::LeftButton, {}, edge);
    QTest::mouseMove(headings, edge + QPoint(30, 0));
    QTest::mouseRelease(headings, Qt::LeftButton, {}, edge + QPoint(30, 0));
    QCOMPARE(view()->columnWidth(1), name + 30);
    QCOMPARE(view()->columnWidth(under), underWidth);
    QVERIFY(f->tree->designWidths().at(1).second > 300);
}

QTEST_MAIN(TestTreeListFrozen)
#include "tst_treelistfrozen.moc"
