#include "platform/os/systeminfo.h"

#include <QSysInfo>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

// User and machine names.
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
};

QTEST_MAIN(TestOs)
#include "tst_os.moc"
