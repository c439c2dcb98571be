#include "framework/wheelguard.h"
#include "tests/support/wheel.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

// Combo boxes, spin boxes and date fields under a guarded widget take the wheel only with the
// keyboard focus; without it they leave the wheel to what holds them.
class TestWheelGuard : public QObject
{
    Q_OBJECT

    struct Form
    {
        Form()
        {
            auto *layout = new QVBoxLayout(&window);
            combo->addItems({QStringLiteral("Sospeso"), QStringLiteral("Annullato"), QStringLiteral("Approvato")});
            spin->setRange(0, 10);
            spin->setValue(5);
            date->setDate(QDate(2025, 6, 30));
            layout->addWidget(text); // where the focus starts
            layout->addWidget(combo);
            layout->addWidget(spin);
            layout->addWidget(date);
            fw::WheelGuard::protect(&window);
            window.show();
            window.activateWindow();
        }
        QWidget window;
        QLineEdit *text = new QLineEdit;
        QComboBox *combo = new QComboBox;
        QSpinBox *spin = new QSpinBox;
        QDateEdit *date = new QDateEdit;
    };

private slots:
    void withoutTheFocusTheWheelChangesNothing()
    {
        Form f;
        QVERIFY(QTest::qWaitForWindowActive(&f.window));
        QVERIFY(f.text->hasFocus());
        QSignalSpy chosen(f.combo, &QComboBox::activated);
        for (QWidget *control : std::initializer_list<QWidget *> {f.combo, f.spin, f.date}) {
            // Left unaccepted, the window system passes it on: the area around scrolls.
            QVERIFY(!turnWheel(control));
            // The wheel's own focus policy would hand the control the focus before any filter.
            QCOMPARE(control->focusPolicy(), Qt::StrongFocus);
        }
        QCOMPARE(f.combo->currentIndex(), 0);
        QCOMPARE(chosen.count(), 0);
        QCOMPARE(f.spin->value(), 5);
        QCOMPARE(f.date->date(), QDate(2025, 6, 30));
    }

    void withTheFocusTheWheelChangesTheValue()
    {
        Form f;
        QVERIFY(QTest::qWaitForWindowActive(&f.window));
        f.combo->setFocus();
        QVERIFY(f.combo->hasFocus());
        QSignalSpy chosen(f.combo, &QComboBox::activated);
        QVERIFY(turnWheel(f.combo));
        QCOMPARE(f.combo->currentIndex(), 1);
        QCOMPARE(chosen.count(), 1);
        f.spin->setFocus();
        turnWheel(f.spin, 1);
        QCOMPARE(f.spin->value(), 6);
    }

    // A control added after the first call is guarded by the next one, with one guard.
    void protectingAgainTakesInNewControls()
    {
        Form f;
        auto *late = new QComboBox(&f.window);
        late->addItems({QStringLiteral("a"), QStringLiteral("b")});
        fw::WheelGuard::protect(&f.window);
        fw::WheelGuard::protect(&f.window);
        QCOMPARE(f.window.findChildren<fw::WheelGuard *>().size(), 1);
        turnWheel(late);
        QCOMPARE(late->currentIndex(), 0);
    }
};

QTEST_MAIN(TestWheelGuard)
#include "tst_wheelguard.moc"
