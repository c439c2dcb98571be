#include "framework/subwindowclosing.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

// Quitting closes the shell's forms as their own close buttons would, the most recent first,
// and stops at one that stays open.
class TestSubWindowClosing : public QObject
{
    Q_OBJECT

    // A form that may refuse to close, as one with pending changes kept by the user does.
    struct Form : QWidget
    {
        Form(QString name, QStringList &closed)
            : m_name(std::move(name))
            , m_closed(closed)
        { }
        void closeEvent(QCloseEvent *event) override
        {
            if (refuses) {
                event->ignore();
                return;
            }
            m_closed << m_name;
            event->accept();
        }
        bool refuses = false;
        QString m_name;
        QStringList &m_closed;
    };

private slots:
    void aFormThatStaysOpenStopsTheRest()
    {
        QStringList closed;
        QMdiArea area;
        QList<Form *> forms;
        for (const char *name : {"editor", "parametri", "tipi"}) {
            forms << new Form(QString::fromLatin1(name), closed);
            area.addSubWindow(forms.last())->show();
        }
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        // The parameters form was the last one worked in, after the types.
        for (Form *form : {forms[0], forms[2], forms[1]})
            area.setActiveSubWindow(qobject_cast<QMdiSubWindow *>(form->parentWidget()));
        forms[2]->refuses = true;

        QVERIFY(!fw::closeSubWindows(&area));
        QCOMPARE(closed, QStringList {QStringLiteral("parametri")});
        QVERIFY(forms[0]->isVisible()); // the editor was not asked: quitting stopped before it

        forms[2]->refuses = false;
        QVERIFY(fw::closeSubWindows(&area));
        QCOMPARE(closed, (QStringList {QStringLiteral("parametri"), QStringLiteral("tipi"), QStringLiteral("editor")}));
        QVERIFY(fw::closeSubWindows(&area)); // nothing left to close
    }
};

QTEST_MAIN(TestSubWindowClosing)
#include "tst_subwindowclosing.moc"
