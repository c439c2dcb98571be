#include "framework/elidedlabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QtTest>

class TestElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    // Beside buttons in a narrow window the heading gives way: both ends stay readable, the whole
    // text is in the tooltip, and the buttons keep their room; widened again, it is whole.
    void givesWayToTheButtonsBesideIt()
    {
        const QString whole = QStringLiteral(
            "CLIENTI       DISTINTA CLI-HOR - Canale Ho.Re.Ca. alla data 01/01/2025      "
            "(Divisione: 12 - Rete vendita alimentare del nord)");
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *heading = new fw::ElidedLabel(whole);
        auto *button = new QPushButton(QStringLiteral("Stampa"));
        layout->addWidget(heading, 1);
        layout->addWidget(button);
        window.resize(300, 40);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        QCOMPARE(window.width(), 300);
        QVERIFY(button->width() >= button->sizeHint().width());
        QVERIFY(heading->text().contains(QStringLiteral("…")));
        QVERIFY(heading->text().startsWith(QStringLiteral("CLIENTI")));
        QVERIFY(heading->text().endsWith(QStringLiteral("nord)")));
        QCOMPARE(heading->toolTip(), whole);
        QCOMPARE(heading->fullText(), whole);

        window.resize(1600, 40);
        QTRY_COMPARE(heading->text(), whole);
        QVERIFY(heading->toolTip().isEmpty());

        heading->setFullText(QStringLiteral("Struttura distinta"));
        QCOMPARE(heading->text(), QStringLiteral("Struttura distinta"));
    }
};

QTEST_MAIN(TestElidedLabel)
#include "tst_elidedlabel.moc"
