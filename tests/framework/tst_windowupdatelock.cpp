#include "framework/treelist/treelist.h"
#include "framework/windowupdatelock.h"

#include <QTest>
#include <QWidget>

// The one drawing freeze used around long fills, on a plain widget and on the tree list.
class TestWindowUpdateLock : public QObject
{
    Q_OBJECT

private slots:
    void widgetDrawsAgainWhenTheOutermostGuardGoes()
    {
        QWidget widget;
        {
            fw::WindowUpdateLock outer(&widget);
            QVERIFY(!widget.updatesEnabled());
            {
                fw::WindowUpdateLock inner(&widget);
            }
            QVERIFY(!widget.updatesEnabled()); // the inner guard finds it frozen and leaves it so
        }
        QVERIFY(widget.updatesEnabled());

        auto *doomed = new QWidget;
        fw::WindowUpdateLock lock(doomed);
        delete doomed; // the guard outlives its widget without harm
        lock.release();
    }

    void treeListUpdatesUntilTheOutermostGuardGoes()
    {
        fw::TreeList tree;
        {
            fw::WindowUpdateLock outer(&tree);
            QVERIFY(tree.isUpdating());
            {
                fw::WindowUpdateLock inner(&tree);
                inner.release();
                inner.release(); // a second release does not end the outer freeze
            }
            QVERIFY(tree.isUpdating());
        }
        QVERIFY(!tree.isUpdating());
    }
};

QTEST_MAIN(TestWindowUpdateLock)
#include "tst_windowupdatelock.moc"
