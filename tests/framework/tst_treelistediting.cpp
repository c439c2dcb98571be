#include "tests/framework/treelistfixture.h"

#include "framework/treelist/treelistbuttondelegate.h"
#include "framework/treelist/treelistcalendarpopup.h"
#include "framework/treelist/treelistdateeditor.h"
#include "framework/treelist/treelistview.h"

#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using fw::TreeListNode;

// Editing in the cells of a tree list: the editing signals, the write into the recordset and
// the database, failures, and the texts supplied while cells are painted.
class TestTreeListEditing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textEditReachesRecordsetAndDatabase();
    void validationCanRefuseOrChangeTheValue();
    void editingStartedDecidesWhetherAnEditorOpens();
    void dateEditorTypesPicksAndClears();
    void comboChoiceClosesUpAndStores();
    void failedUpdateIsReportedAndTheStoredValueShown();
    void drawTimeTextFillsUnboundAndButtonCells();
    void buttonClickIsReported();

private:
    template<typename Editor>
    Editor *openEditor(int id, const QString &column);
    static void commit(QWidget *editor, Qt::Key key = Qt::Key_Return);

    std::unique_ptr<TreeListFixture> f;
};

void TestTreeListEditing::init()
{
    f = std::make_unique<TreeListFixture>();
    f->insert({{1, {}, "Uno"}, {2, 1, "Due"}, {3, {}, "Tre"}});
    f->bind();
    f->tree->resize(900, 300);
    f->tree->setFillWidth(true);
    f->tree->show();
    f->tree->expandAll();
}

void TestTreeListEditing::cleanup()
{
    f.reset();
}

template<typename Editor>
Editor *TestTreeListEditing::openEditor(int id, const QString &column)
{
    f->tree->editCell(f->node(id), column);
    return f->tree->view()->viewport()->findChild<Editor *>();
}

// The view commits and closes its editor on the next pass of the event loop.
void TestTreeListEditing::commit(QWidget *editor, Qt::Key key)
{
    QTest::keyClick(editor, key);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestTreeListEditing::textEditReachesRecordsetAndDatabase()
{
    QStringList edited;
    connect(f->tree.get(), &fw::TreeList::edited, f->tree.get(),
            [&](const TreeListNode &node, const QString &column) { edited.append(node.displayText(column)); });
    auto *editor = openEditor<QLineEdit>(2, QStringLiteral("trNOME"));
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("Due"));
    editor->setText(QStringLiteral("Due modificato"));
    commit(editor);

    QCOMPARE(edited, QStringList {QStringLiteral("Due modificato")});
    QCOMPARE(f->recordset->valueAt(f->node(2).row(), f->recordset->fieldIndex(QStringLiteral("NOME"))).toString(),
             QStringLiteral("Due modificato"));
    QCOMPARE(f->stored(QStringLiteral("NOME"), 2).toString(), QStringLiteral("Due modificato"));
    QVERIFY(!f->recordset->isEditing());

    // Committing the value the cell already holds is no edit.
    editor = openEditor<QLineEdit>(2, QStringLiteral("trNOME"));
    commit(editor);
    QCOMPARE(edited.size(), 1);
}

void TestTreeListEditing::validationCanRefuseOrChangeTheValue()
{
    connect(f->tree.get(), &fw::TreeList::validateEdit, f->tree.get(),
            [](const TreeListNode &, const QString &column, QVariant &value, bool &accept, QString &error) {
                QCOMPARE(column, QStringLiteral("trNOME"));
                if (value.toString().startsWith(QLatin1Char('x'))) {
                    accept = false;
                    error = QStringLiteral("Nome non valido");
                } else {
                    value = value.toString().toUpper();
                }
            });
    int editedCount = 0;
    connect(f->tree.get(), &fw::TreeList::edited, f->tree.get(), [&] { ++editedCount; });

    auto *editor = openEditor<QLineEdit>(3, QStringLiteral("trNOME"));
    editor->setText(QStringLiteral("xyz"));
    commit(editor);
    QCOMPARE(editedCount, 0);
    QCOMPARE(f->stored(QStringLiteral("NOME"), 3).toString(), QStringLiteral("Tre"));
    QCOMPARE(f->node(3).displayText(QStringLiteral("trNOME")), QStringLiteral("Tre"));

    editor = openEditor<QLineEdit>(3, QStringLiteral("trNOME"));
    editor->setText(QStringLiteral("tre"));
    commit(editor);
    QCOMPARE(editedCount, 1);
    QCOMPARE(f->stored(QStringLiteral("NOME"), 3).toString(), QStringLiteral("TRE"));
}

void TestTreeListEditing::editingStartedDecidesWhetherAnEditorOpens()
{
    QStringList started;
    bool allow = false;
    connect(f->tree.get(), &fw::TreeList::editingStarted, f->tree.get(),
            [&](const TreeListNode &node, const QString &column, bool &allowed) {
                started.append(column + QLatin1Char('@') + node.value(QStringLiteral("trID")).toString());
                allowed = allow;
            });
    QVERIFY(!openEditor<QLineEdit>(1, QStringLiteral("trNOME")));
    allow = true;
    QVERIFY(openEditor<QLineEdit>(1, QStringLiteral("trNOME")));
    commit(f->tree->view()->viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
    QVERIFY(!openEditor<QLineEdit>(1, QStringLiteral("trID")));
    f->tree->setColumnReadOnly(QStringLiteral("trID"), false);
    QVERIFY(!openEditor<QLineEdit>(1, QStringLiteral("trID"))); // no in-place editor, yet announced
    QCOMPARE(started, (QStringList {QStringLiteral("trNOME@1"), QStringLiteral("trNOME@1"), QStringLiteral("trID@1")}));
}

void TestTreeListEditing::dateEditorTypesPicksAndClears()
{
    QList<QVariant> closeUps;
    connect(f->tree.get(), &fw::TreeList::editCloseUp, f->tree.get(),
            [&](const TreeListNode &, const QString &, const QVariant &value) { closeUps.append(value); });
    bool refusedAsInvalid = false;
    connect(f->tree.get(), &fw::TreeList::validateEdit, f->tree.get(),
            [&](const TreeListNode &, const QString &, QVariant &, bool &accept, QString &) {
                refusedAsInvalid = !accept;
            });

    auto *editor = openEditor<fw::TreeListDateEditor>(1, QStringLiteral("trINIZIO"));
    QVERIFY(editor);
    QVERIFY(!editor->value().isValid());
    QTest::keyClicks(editor, QStringLiteral("15032024"));
    commit(editor);
    QCOMPARE(f->stored(QStringLiteral("INIZIO"), 1).toDateTime().date(), QDate(2024, 3, 15));
    QCOMPARE(f->node(1).displayText(QStringLiteral("trINIZIO")), QStringLiteral("15/03/2024"));

    editor = openEditor<fw::TreeListDateEditor>(1, QStringLiteral("trINIZIO"));
    QCOMPARE(editor->text(), QStringLiteral("15/03/2024"));
    editor->setText(QStringLiteral("31/02/2024"));
    commit(editor);
    QVERIFY(refusedAsInvalid);
    QCOMPARE(f->stored(QStringLiteral("INIZIO"), 1).toDateTime().date(), QDate(2024, 3, 15));

    // The drop-down's buttons close it up and store at once.
    editor = openEditor<fw::TreeListDateEditor>(1, QStringLiteral("trINIZIO"));
    editor->showCalendar();
    editor->calendarPopup()->todayButton()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(f->stored(QStringLiteral("INIZIO"), 1).toDateTime().date(), QDate::currentDate());
    editor = openEditor<fw::TreeListDateEditor>(1, QStringLiteral("trINIZIO"));
    editor->showCalendar();
    editor->calendarPopup()->clearButton()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(f->stored(QStringLiteral("INIZIO"), 1).isNull());
    QCOMPARE(closeUps, (QList<QVariant> {QDate::currentDate(), QVariant()}));
}

void TestTreeListEditing::comboChoiceClosesUpAndStores()
{
    QCOMPARE(f->node(2).displayText(QStringLiteral("trTIPO")), QStringLiteral("Nessuno"));
    QVariant closeUp;
    QVariant storedAtCloseUp;
    connect(f->tree.get(), &fw::TreeList::editCloseUp, f->tree.get(),
            [&](const TreeListNode &node, const QString &, const QVariant &value) {
                closeUp = value;
                storedAtCloseUp = node.value(QStringLiteral("trTIPO"));
            });
    auto *combo = openEditor<QComboBox>(2, QStringLiteral("trTIPO"));
    QVERIFY(combo);
    QCOMPARE(combo->currentText(), QStringLiteral("Nessuno"));
    combo->setCurrentIndex(2);
    emit combo->activated(2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QCOMPARE(closeUp.toInt(), 4);
    QCOMPARE(storedAtCloseUp.toInt(), 0); // the close-up comes before the value is stored
    QCOMPARE(f->stored(QStringLiteral("TIPO"), 2).toInt(), 4);
    QCOMPARE(f->node(2).displayText(QStringLiteral("trTIPO")), QStringLiteral("Manuale"));
    QVERIFY(!f->tree->view()->viewport()->findChild<QComboBox *>());
}

void TestTreeListEditing::failedUpdateIsReportedAndTheStoredValueShown()
{
    QStringList failures;
    connect(f->tree.get(), &fw::TreeList::writeFailed, f->tree.get(),
            [&](const db::DatabaseError &error) { failures.append(error.message()); });
    bool edited = false;
    connect(f->tree.get(), &fw::TreeList::edited, f->tree.get(), [&] { edited = true; });

    // Someone else renames the node meanwhile: the update is refused, not overwritten.
    auto other = db::Connection::open(f->connection->connectionString());
    other->execute(QStringLiteral("UPDATE NODI SET NOME = 'Due altrove' WHERE ID = 2"));
    auto *editor = openEditor<QLineEdit>(2, QStringLiteral("trNOME"));
    editor->setText(QStringLiteral("Due qui"));
    commit(editor);
    QCOMPARE(failures.size(), 1);
    QVERIFY(!edited);
    QVERIFY(!f->recordset->isEditing());
    QCOMPARE(f->node(2).displayText(QStringLiteral("trNOME")), QStringLiteral("Due"));
    QCOMPARE(f->stored(QStringLiteral("NOME"), 2).toString(), QStringLiteral("Due altrove"));

    // NOME is NOT NULL.
    QVERIFY(!f->tree->setValue(f->node(3), QStringLiteral("trNOME"), QVariant()));
    QCOMPARE(failures.size(), 2);
    QCOMPARE(f->node(3).value(QStringLiteral("trNOME")).toString(), QStringLiteral("Tre"));
    QVERIFY(f->tree->setValue(f->node(3), QStringLiteral("trNOME"), QStringLiteral("Tre nuovo")));
    QCOMPARE(f->stored(QStringLiteral("NOME"), 3).toString(), QStringLiteral("Tre nuovo"));

    // A row left pending that cannot be written keeps the recordset, and so the focus, on it.
    f->tree->setFocusedNode(f->node(1));
    f->recordset->setValue(QStringLiteral("NOME"), QVariant());
    f->tree->setFocusedNode(f->node(3));
    QCoreApplication::processEvents();
    QCOMPARE(failures.size(), 3);
    QCOMPARE(f->tree->focusedNode(), f->node(1));
    QCOMPARE(f->tree->model()->nodeOf(f->tree->view()->currentIndex()), f->node(1).id());
    QCOMPARE(f->recordset->value(QStringLiteral("ID")).toInt(), 1);
}

void TestTreeListEditing::drawTimeTextFillsUnboundAndButtonCells()
{
    f->recordset->setCurrentRow(f->node(2).row());
    f->recordset->setValue(QStringLiteral("PRIO"), 7);
    f->recordset->update();

    QSet<QString> painted;
    const QHash<int, QString> priorities {{7, QStringLiteral("Priorità sette")}};
    connect(f->tree.get(), &fw::TreeList::customDrawCell, f->tree.get(),
            [&](const TreeListNode &node, const QString &column, QString &text) {
                painted.insert(column + QLatin1Char('@') + node.value(QStringLiteral("trID")).toString());
                if (column == QLatin1String("trPRIO"))
                    text = priorities.value(node.value(column).toInt());
                else if (column == QLatin1String("Nota"))
                    text = QStringLiteral("Nota ") + node.value(QStringLiteral("trNOME")).toString();
            });
    f->tree->grab();
    for (const char *cell : {"Nota@1", "Nota@2", "Nota@3", "trPRIO@2", "trNOME@3"})
        QVERIFY2(painted.contains(QLatin1String(cell)), cell);

    QCOMPARE(f->node(2).displayText(QStringLiteral("trPRIO")), QStringLiteral("Priorità sette"));
    QCOMPARE(f->node(1).displayText(QStringLiteral("trPRIO")), QString());
    QCOMPARE(f->node(3).displayText(QStringLiteral("Nota")), QStringLiteral("Nota Tre"));
    // The model itself has no text for them: it is made only while painting.
    QCOMPARE(f->tree->model()->indexOfNode(f->node(3).id(), 5).data().toString(), QString());
    QCOMPARE(f->tree->model()->indexOfNode(f->node(2).id(), 4).data().toString(), QStringLiteral("7"));
}

void TestTreeListEditing::buttonClickIsReported()
{
    QList<QPair<int, QString>> clicks;
    connect(f->tree.get(), &fw::TreeList::editButtonClicked, f->tree.get(),
            [&](const TreeListNode &node, const QString &column) {
                clicks.append({node.value(QStringLiteral("trID")).toInt(), column});
            });
    QAbstractItemView *view = f->tree->view();
    const QRect cell = view->visualRect(f->tree->model()->indexOfNode(f->node(3).id(), 4));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center() - QPoint(cell.width() / 4, 0));
    QVERIFY(clicks.isEmpty());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, fw::TreeListButtonDelegate::buttonRect(cell).center());
    QCOMPARE(clicks, (QList<QPair<int, QString>> {{3, QStringLiteral("trPRIO")}}));
    QCOMPARE(f->recordset->value(QStringLiteral("ID")).toInt(), 3);
}

QTEST_MAIN(TestTreeListEditing)
#include "tst_treelistediting.moc"
