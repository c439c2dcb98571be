#include "tests/framework/treelistfixture.h"

#include "framework/treelist/treelistnodemover.h"
#include "framework/treelist/treelistview.h"
#include "framework/windowupdatelock.h"

#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <numeric>

using fw::TreeListNode;

// The tree list's hierarchy, its node walk, expansion, its focus in step with the recordset, and
// the moving of its nodes.
class TestTreeList : public QObject
{
    Q_OBJECT

private slots:
    void buildsTheHierarchyFromFlatRows();
    void keysOfAnyKindLinkAlike();
    void nextNodeFollowsTreeOrderWhateverIsExpanded();
    void expandAndCollapseActOnOneNode();
    void focusAndCurrentRowFollowEachOther();
    void collapsingAnAncestorTakesTheFocus();
    void recordsetChangesRebuildTheHierarchy();
    void unbindingEmptiesTheTree();
    void designWidthsGiveColumnWidths();
    void aNodeMoverServesItsTreeUntilTheTreeGoes();

private:
    static QList<int> idsInTreeOrder(const TreeListFixture &f);
    static QList<int> childIds(const TreeListNode &node);
    static QList<int> rootIds(const TreeListFixture &f);
    static void insertThreeLevels(TreeListFixture &f);
};

QList<int> TestTreeList::idsInTreeOrder(const TreeListFixture &f)
{
    QList<int> ids;
    TreeListNode node = f.tree->firstNode();
    for (int step = 0; step < f.tree->count() && node.isValid(); ++step, node = node.next())
        ids.append(node.value(QStringLiteral("trID")).toInt());
    return ids;
}

QList<int> TestTreeList::childIds(const TreeListNode &node)
{
    QList<int> ids;
    for (TreeListNode child = node.firstChild(); child.isValid(); child = child.nextSibling())
        ids.append(child.value(QStringLiteral("trID")).toInt());
    return ids;
}

QList<int> TestTreeList::rootIds(const TreeListFixture &f)
{
    QList<int> ids;
    for (TreeListNode root = f.tree->firstNode(); root.isValid(); root = root.nextSibling())
        ids.append(root.value(QStringLiteral("trID")).toInt());
    return ids;
}

// 1 ─ 2 ─ 3 ─ 4, 1 ─ 5, 6 ─ 7
void TestTreeList::insertThreeLevels(TreeListFixture &f)
{
    f.insert({{1, {}, "Uno"},
              {2, 1, "Due"},
              {3, 2, "Tre"},
              {4, 3, "Quattro"},
              {5, 1, "Cinque"},
              {6, {}, "Sei"},
              {7, 6, "Sette"}});
    f.bind();
}

void TestTreeList::buildsTheHierarchyFromFlatRows()
{
    TreeListFixture f;
    f.insert({
        {15, 10, "Figlio letto prima"}, // its parent comes later in the rows
        {10, {}, "Radice"},
        {20, 0, "Padre zero"},
        {12, 10, "Figlio letto dopo"},
        {30, 99, "Orfano"}, // 99 does not exist
        {31, 30, "Figlio dell'orfano"},
        {50, {}, "Non caricato", false}, // exists, but not in the recordset
        {40, 50, "Figlio del non caricato"},
        {41, 40, "Nipote del non caricato"},
        {60, 61, "Anello A"},
        {61, 60, "Anello B"},
    });
    f.bind();

    QCOMPARE(f.tree->count(), 10);
    QCOMPARE(f.tree->model()->rowCount(), 5);
    QCOMPARE(rootIds(f), (QList<int> {10, 20, 30, 40, 60}));
    QCOMPARE(childIds(f.node(10)), (QList<int> {15, 12}));
    QCOMPARE(childIds(f.node(30)), QList<int> {31});
    QCOMPARE(childIds(f.node(40)), QList<int> {41});
    // A loop of parents is cut where it was found; none of its nodes gets lost.
    QCOMPARE(childIds(f.node(60)), QList<int> {61});

    QCOMPARE(f.node(12).parent(), f.node(10));
    QVERIFY(!f.node(10).parent().isValid());
    QCOMPARE(f.node(10).level(), 0);
    QCOMPARE(f.node(12).level(), 1);
    QCOMPARE(f.node(41).level(), 1);
    QCOMPARE(f.node(41).row(), 7);
    QCOMPARE(f.tree->nodeOfRow(7), f.node(41));
    QVERIFY(!f.node(20).hasChildren());
}

// Far apart integer keys and text keys are looked up another way than a counter's keys.
void TestTreeList::keysOfAnyKindLinkAlike()
{
    TreeListFixture f;
    f.insert({{9000000000000, qint64(3000000000), "Nipote"},
              {3000000000, 7, "Figlio"},
              {7, {}, "Radice"},
              {8, 5, "Orfano"},
              {4000000000, 7, "Secondo figlio"}});
    const auto parentsByName = [&] {
        QMap<QString, QString> parents;
        for (TreeListNode node = f.tree->firstNode(); node.isValid(); node = node.next())
            parents.insert(node.value(QStringLiteral("trNOME")).toString(),
                           node.parent().value(QStringLiteral("trNOME")).toString());
        return parents;
    };
    const QMap<QString, QString> expected {
        {"Radice", ""}, {"Figlio", "Radice"}, {"Nipote", "Figlio"}, {"Orfano", ""}, {"Secondo figlio", "Radice"}};
    f.bind();
    QCOMPARE(parentsByName(), expected);

    f.tree->setKeyField(QStringLiteral("CHIAVE"));
    f.tree->setParentField(QStringLiteral("PADRE_CHIAVE"));
    f.tree->setRecordset(f.connection->openRecordset(
        QStringLiteral("SELECT 'K' + CAST(ID AS VARCHAR) AS CHIAVE, 'K' + CAST(PADRE AS VARCHAR) AS PADRE_CHIAVE, NOME "
                       "FROM NODI ORDER BY SEQ")));
    QCOMPARE(parentsByName(), expected);
}

void TestTreeList::nextNodeFollowsTreeOrderWhateverIsExpanded()
{
    TreeListFixture f;
    insertThreeLevels(f);
    const QList<int> order {1, 2, 3, 4, 5, 6, 7};
    QCOMPARE(idsInTreeOrder(f), order);
    QVERIFY(!f.node(7).next().isValid());
    QCOMPARE(f.node(4).level(), 3);

    f.tree->expandAll();
    f.node(2).collapse();
    QCOMPARE(idsInTreeOrder(f), order);
    f.tree->collapseAll();
    QCOMPARE(idsInTreeOrder(f), order);

    for (int i = 0; i < f.tree->count(); ++i) {
        QCOMPARE(f.tree->nodeAt(i).absoluteIndex(), i);
        QCOMPARE(f.tree->nodeAt(i).value(QStringLiteral("trID")).toInt(), order.at(i));
    }
    QVERIFY(!f.tree->nodeAt(f.tree->count()).isValid());
}

void TestTreeList::expandAndCollapseActOnOneNode()
{
    TreeListFixture f;
    insertThreeLevels(f);
    f.tree->resize(600, 400);
    f.tree->show();
    QAbstractItemView *view = f.tree->view();
    const auto visible = [&](int id) {
        f.tree->view()->doItemsLayout();
        return view->visualRect(f.tree->model()->indexOfNode(f.node(id).id(), 1)).isValid();
    };

    f.tree->expandAll();
    QVERIFY(f.node(1).isExpanded() && f.node(2).isExpanded() && f.node(3).isExpanded());
    QVERIFY(visible(4));

    f.node(1).collapse();
    QVERIFY(!f.node(1).isExpanded());
    QVERIFY(f.node(2).isExpanded() && f.node(3).isExpanded());
    QVERIFY(!visible(2) && !visible(4) && visible(6));

    f.node(1).expand();
    QVERIFY(visible(2) && visible(4));

    // A level-by-level walk in one batch, as the level button does it: collapse level 1, then 0.
    for (int level : {1, 0}) {
        fw::WindowUpdateLock batch(f.tree.get());
        for (TreeListNode node = f.tree->firstNode(); node.isValid(); node = node.next()) {
            if (node.level() == level)
                node.collapse();
        }
    }
    QVERIFY(!f.node(1).isExpanded() && !f.node(2).isExpanded() && !f.node(6).isExpanded());
    QVERIFY(f.node(3).isExpanded());
    QVERIFY(!visible(2) && visible(6) && !visible(7));

    {
        fw::WindowUpdateLock batch(f.tree.get());
        f.node(1).expand();
    }
    QVERIFY(visible(2) && !visible(3) && !visible(7));
}

void TestTreeList::focusAndCurrentRowFollowEachOther()
{
    TreeListFixture f;
    insertThreeLevels(f);
    f.tree->resize(600, 400);
    f.tree->show();
    // Bound on the recordset's first row.
    QCOMPARE(f.tree->focusedNode(), f.node(1));

    QList<QPair<int, int>> changes;
    connect(f.tree.get(), &fw::TreeList::focusedNodeChanged, f.tree.get(),
            [&](const TreeListNode &previous, const TreeListNode &current) {
                changes.append(
                    {previous.value(QStringLiteral("trID")).toInt(), current.value(QStringLiteral("trID")).toInt()});
            });

    f.tree->setFocusedNode(f.node(5));
    QCOMPARE(f.recordset->value(QStringLiteral("ID")).toInt(), 5);
    f.tree->setFocusedAbsoluteIndex(5);
    QCOMPARE(f.recordset->value(QStringLiteral("ID")).toInt(), 6);

    // A move of the recordset, hidden node included: its ancestors open and it takes the focus.
    f.tree->collapseAll();
    f.recordset->moveFirst();
    QVERIFY(f.recordset->find(QStringLiteral("NOME = 'Quattro'")));
    QCOMPARE(f.tree->focusedNode(), f.node(4));
    QVERIFY(f.node(1).isExpanded() && f.node(2).isExpanded() && f.node(3).isExpanded());
    QCOMPARE(f.tree->view()->currentIndex(), f.tree->model()->indexOfNode(f.node(4).id()));
    QVERIFY(f.tree->view()->viewport()->rect().intersects(f.tree->cellRect(f.node(4), QStringLiteral("trNOME"))));
    QCOMPARE(changes, (QList<QPair<int, int>> {{1, 5}, {5, 6}, {6, 1}, {1, 4}}));

    // Past the last row there is no node: the focus stays where it was.
    QVERIFY(!f.recordset->find(QStringLiteral("NOME = 'Nessuno'")));
    QCOMPARE(f.tree->focusedNode(), f.node(4));

    // Clicking a row focuses its node and reports the press.
    TreeListNode pressed;
    QString pressedColumn;
    connect(f.tree.get(), &fw::TreeList::mouseDown, f.tree.get(),
            [&](const TreeListNode &node, const QString &column, Qt::MouseButton, const QPoint &) {
                pressed = node;
                pressedColumn = column;
            });
    const QRect cell = f.tree->view()->visualRect(f.tree->model()->indexOfNode(f.node(2).id(), 1));
    QTest::mouseClick(f.tree->view()->viewport(), Qt::RightButton, {}, cell.center());
    QCOMPARE(pressed, f.node(2));
    QCOMPARE(pressedColumn, QStringLiteral("trNOME"));
    QCOMPARE(f.recordset->value(QStringLiteral("ID")).toInt(), 2);
    QCOMPARE(f.tree->focusedColumn(), QStringLiteral("trNOME"));
}

void TestTreeList::collapsingAnAncestorTakesTheFocus()
{
    TreeListFixture f;
    insertThreeLevels(f);
    f.tree->expandAll();
    f.tree->setFocusedNode(f.node(4));

    f.node(5).collapse(); // not an ancestor: nothing moves
    QCOMPARE(f.tree->focusedNode(), f.node(4));
    {
        fw::WindowUpdateLock batch(f.tree.get());
        f.node(2).collapse();
    }
    QCOMPARE(f.tree->focusedNode(), f.node(2));
    QCOMPARE(f.recordset->value(QStringLiteral("ID")).toInt(), 2);
}

void TestTreeList::recordsetChangesRebuildTheHierarchy()
{
    TreeListFixture f;
    insertThreeLevels(f);
    f.tree->expandAll();
    f.node(6).collapse();

    // Re-parenting a row through the recordset moves its node and keeps what was expanded.
    f.recordset->setCurrentRow(f.node(7).row());
    f.recordset->setValue(QStringLiteral("PADRE"), 5);
    f.recordset->update();
    QCOMPARE(childIds(f.node(5)), QList<int> {7});
    QVERIFY(!f.node(6).hasChildren());
    QVERIFY(f.node(1).isExpanded() && f.node(3).isExpanded() && f.node(5).isExpanded());
    QCOMPARE(f.tree->focusedNode(), f.node(7));
    QCOMPARE(f.stored(QStringLiteral("PADRE"), 7).toInt(), 5);

    // A change of another field leaves the nodes as they are.
    const TreeListNode before = f.node(3);
    f.recordset->setCurrentRow(before.row());
    f.recordset->setValue(QStringLiteral("NOME"), QStringLiteral("Tre bis"));
    f.recordset->update();
    QVERIFY(before.isValid());
    QCOMPARE(before.displayText(QStringLiteral("trNOME")), QStringLiteral("Tre bis"));

    // A filter keeps only some rows: the others' children become roots.
    f.recordset->setFilter(QStringLiteral("ID <> 2"));
    QVERIFY(!before.isValid());
    QCOMPARE(f.tree->count(), 6);
    QCOMPARE(rootIds(f), (QList<int> {1, 3, 6}));
}

void TestTreeList::unbindingEmptiesTheTree()
{
    TreeListFixture f;
    insertThreeLevels(f);
    const TreeListNode old = f.node(2);
    bool focusCleared = false;
    connect(f.tree.get(), &fw::TreeList::focusedNodeChanged, f.tree.get(),
            [&](const TreeListNode &, const TreeListNode &current) { focusCleared = !current.isValid(); });

    f.tree->setRecordset(nullptr);
    QCOMPARE(f.tree->count(), 0);
    QCOMPARE(f.tree->model()->rowCount(), 0);
    QVERIFY(!f.tree->firstNode().isValid());
    QVERIFY(!f.tree->focusedNode().isValid());
    QVERIFY(focusCleared);
    QVERIFY(!old.isValid());
    QVERIFY(!old.value(QStringLiteral("trNOME")).isValid());

    // Moving the recordset it was bound to no longer reaches the tree.
    f.recordset->moveLast();
    QVERIFY(!f.tree->focusedNode().isValid());
}

// Design widths are twips; filling the width, they are proportions.
void TestTreeList::designWidthsGiveColumnWidths()
{
    TreeListFixture f;
    QTreeView *view = f.tree->view();
    f.tree->resize(800, 300);
    f.tree->show();
    const int dpi = f.tree->logicalDpiX();
    // Design widths, but never below a heading and a whole value.
    QCOMPARE(view->columnWidth(0), qMax(f.tree->minimumColumnWidth(0), fw::twipsToPixels(1200, dpi)));
    QCOMPARE(view->columnWidth(1), qMax(f.tree->minimumColumnWidth(1), fw::twipsToPixels(300, dpi)));
    QVERIFY(view->columnWidth(1) > fw::twipsToPixels(300, dpi));

    f.tree->setFillWidth(true);
    const auto widths = [&] {
        QList<int> result;
        for (int i = 0; i < f.tree->columnCount(); ++i)
            result.append(view->isColumnHidden(i) ? 0 : view->columnWidth(i));
        return result;
    };
    const int available = view->viewport()->width();
    QList<int> filled = widths();
    QCOMPARE(std::accumulate(filled.begin(), filled.end(), 0), available);
    QVERIFY(qAbs(filled.at(0) - 4 * filled.at(1)) <= 4); // 1200 against 300

    // A hidden column leaves its share to the others and gets it back when shown again.
    f.tree->setColumnVisible(QStringLiteral("trNOME"), false);
    const QList<int> withoutName = widths();
    QCOMPARE(withoutName.at(1), 0);
    QCOMPARE(std::accumulate(withoutName.begin(), withoutName.end(), 0), available);
    f.tree->setColumnVisible(QStringLiteral("trNOME"), true);
    QCOMPARE(widths(), filled);
}

// The mover takes its keys and drops on the tree's view, and asks the owner to move; the tree
// may go with its view focused and shown, the mover with it.
void TestTreeList::aNodeMoverServesItsTreeUntilTheTreeGoes()
{
    TreeListFixture f;
    insertThreeLevels(f);
    auto *mover = new fw::TreeListNodeMover(f.tree.get());
    QSignalSpy moves(mover, &fw::TreeListNodeMover::moveRequested);
    QSignalSpy cuts(mover, &fw::TreeListNodeMover::cutRequested);
    QSignalSpy pastes(mover, &fw::TreeListNodeMover::pasteRequested);
    f.tree->resize(400, 300);
    f.tree->show();
    f.tree->activateWindow();
    f.tree->view()->setFocus();
    f.tree->setFocusedNode(f.node(5));

    QTest::keyClick(f.tree->view(), Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(f.tree->view(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(f.tree->view(), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(cuts.size(), 1);
    QCOMPARE(pastes.size(), 2);
    QCOMPARE(pastes.at(0).at(0).toBool(), false);
    QCOMPARE(pastes.at(1).at(0).toBool(), true);

    // Onto a node, and onto the empty area below the nodes (a root to be).
    const std::unique_ptr<QMimeData> data(mover->mimeDataFor(f.node(5)));
    const QRect target = f.tree->view()->visualRect(f.tree->model()->indexOfNode(f.node(6).id(), 0));
    QVERIFY(mover->dropAt(data.get(), target.center()));
    QVERIFY(mover->dropAt(data.get(), QPoint(2, f.tree->view()->viewport()->height() - 2)));
    QCOMPARE(moves.size(), 2);
    QCOMPARE(moves.at(0).at(0).value<TreeListNode>().value(QStringLiteral("trID")).toInt(), 5);
    QCOMPARE(moves.at(0).at(1).value<TreeListNode>().value(QStringLiteral("trID")).toInt(), 6);
    QVERIFY(!moves.at(1).at(1).value<TreeListNode>().isValid());

    QPointer<fw::TreeListNodeMover> alive(mover);
    f.tester.reset();
    f.tree.reset();
    QVERIFY(!alive);
}

QTEST_MAIN(TestTreeList)
#include "tst_treelist.moc"
