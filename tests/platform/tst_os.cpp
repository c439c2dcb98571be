#include "platform/os/systeminfo.h"
#include "platform/os/windowupdatelock.h"

#include <QSysInfo>
#include <QTest>
#include <QWidget>

#include <pwd.h>
#include <unistd.h>

// User and machine names, and the drawing freeze used around long fills.
class TestOs : public QObject
{
    Q_OBJECT

private slots:
    void namesComeFromTheSystem()
    {
        const passwd *entry = getpwuid(geteuid());
        QVERIFY(entry);
        QCOMPARE(os::userName(), QString::fromLocal8Bit(entry->pw_name));
        QVERIFY(!os::computerName().isEmpty());
        QCOMPARE(os::computerName(), QSysInfo::machineHostName());
    }

    void lockFreezesDrawingUntilItGoes()
    {
        QWidget widget;
        {
            os::WindowUpdateLock outer(&widget);
            QVERIFY(!widget.updatesEnabled());
            {
                os::WindowUpdateLock inner(&widget);
            }
            QVERIFY(!widget.updatesEnabled()); // the inner guard finds it frozen and leaves it so
        }
        QVERIFY(widget.updatesEnabled());

        auto *doomed = new QWidget;
        os::WindowUpdateLock lock(doomed);
        delete doomed; // the guard outlives its widget without harm
        lock.release();
    }
};

QTEST_MAIN(TestOs)
#include "tst_os.moc"
