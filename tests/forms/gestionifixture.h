#pragma once

#include "forms/anagdistinta/frmgd_anagdistinta.h"
#include "forms/distinta/parti.h"
#include "forms/listini/frmgd_listini.h"
#include "framework/gridnavigator.h"
#include "framework/lookupedit.h"
#include "framework/lookuppopup.h"
#include "framework/recordframe.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/recordsetgroupmodel.h"
#include "framework/treelist/treelistview.h"
#include "framework/workflowstatecontrol.h"
#include "tests/forms/distintafixture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QToolButton>
#include <functional>

// The editor's fixture with what the linked managements need: divisions, price-list priorities
// with their conditions, and the type maintenance and the priority picker opened as the editor
// opens them, driven through their controls' names.
class GestioniFixture : public DistintaFixture
{
public:
    using DistintaFixture::DistintaFixture;
    ~GestioniFixture() { delete anagrafica; }

    // A price-list priority of company 1 (unless told) ranking the given conditions.
    qint64 priorita(const QString &code, const QString &description, int kind = 0, const QStringList &conditions = {},
                    int company = 1)
    {
        exec(QStringLiteral("INSERT INTO LP09_TESTATAPRIORITA (LP09_DITTA_CG18, LP09_CODICE, LP09_DESCR, "
                            "LP09_INDTIPOTABPRIORITA) VALUES (%1, '%2', '%3', %4)")
                 .arg(company)
                 .arg(QString(code).replace(QLatin1Char('\''), QLatin1String("''")), description)
                 .arg(kind));
        const qint64 id = scalar(QStringLiteral("SELECT MAX(LP09_ID) FROM LP09_TESTATAPRIORITA")).toLongLong();
        for (const QString &condition : conditions) {
            qint64 provider = scalar(QStringLiteral("SELECT LP01_ID FROM LP01_PROVIDER WHERE LP01_DESCR = '%1'")
                                         .arg(condition))
                                  .toLongLong();
            if (provider == 0) {
                exec(QStringLiteral("INSERT INTO LP01_PROVIDER (LP01_CODICE, LP01_DESCR) VALUES ('%1', '%2')")
                         .arg(condition.left(10), condition));
                provider = scalar(QStringLiteral("SELECT MAX(LP01_ID) FROM LP01_PROVIDER")).toLongLong();
            }
            exec(QStringLiteral("INSERT INTO LP10_DETTAGLIOPRIORITA (LP10_ID_LP09, LP10_ID_LP01) VALUES (%1, %2)")
                     .arg(id)
                     .arg(provider));
        }
        return id;
    }

    qint64 divisioneDi(int company, const QString &code, const QString &description)
    {
        exec(QStringLiteral("INSERT INTO CO1A_ANAGDIVISIONI (CO1A_DITTA_CG18, CO1A_CODICE, CO1A_DESCR) "
                            "VALUES (%1, '%2', '%3')")
                 .arg(company)
                 .arg(code, description));
        return scalar(QStringLiteral("SELECT MAX(CO1A_IDDIV) FROM CO1A_ANAGDIVISIONI")).toLongLong();
    }

    // The type maintenance on its own, as the editor opens it; ready once this returns.
    FRMGD_ANAGDISTINTA *apriAnagrafica(std::optional<qint64> type = {})
    {
        auto *opened = new FRMGD_ANAGDISTINTA;
        opened->setActiveDll(entry.get());
        opened->setEntryClass(entry.get());
        opened->setIdDistinta(type);
        anagrafica = opened;
        opened->show();
        opened->Form_Activate();
        QCoreApplication::processEvents();
        return opened;
    }

    template<typename Control>
    static Control *in(QWidget *form, const QString &name)
    {
        Control *found = form->findChild<Control *>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }

    template<typename Control>
    Control *campo(const QString &name) const
    {
        return in<Control>(anagrafica, name);
    }

    QLineEdit *testo(const QString &name) const { return campo<QLineEdit>(name); }
    fw::RecordFrame *frame() const { return anagrafica->recordFrame(); }

    // What the user types in a field, confirmed with Enter.
    static void digita(QLineEdit *field, const QString &text)
    {
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        for (const QChar c : text) {
            if (c.unicode() < 128) {
                QTest::keyClick(field, c.toLatin1());
            } else { // accented letters, as a keyboard layout types them
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
                QApplication::sendEvent(field, &press);
            }
        }
        QTest::keyClick(field, Qt::Key_Return); // leaves the field as done, whichever window is active
    }

    void premi(const QString &button)
    {
        campo<fw::GridNavigator>(QStringLiteral("GRIDNAV"))->button(button)->click();
        QCoreApplication::processEvents();
    }

    void scegliTipo(int kind) { campo<QComboBox>(QStringLiteral("CMB_GD01_INDTIPOSOGG"))->setCurrentIndex(kind); }

    // A new type typed in and saved through the navigator.
    void nuovoTipo(const QString &code, const QString &description, int kind, const QString &division = {},
                   const QString &priority = {})
    {
        premi(QStringLiteral("Nuovo"));
        digita(testo(QStringLiteral("TXT_GD01_CODICE")), code);
        digita(testo(QStringLiteral("TXT_GD01_DESCR")), description);
        scegliTipo(kind);
        if (!division.isEmpty())
            digita(testo(QStringLiteral("TXT_GD01_IDDIV_CO1A")), division);
        if (!priority.isEmpty())
            digita(testo(QStringLiteral("TXT_GD01_ID_LP09")), priority);
        premi(QStringLiteral("Salva"));
    }

    int tipi() { return scalar(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA")).toInt(); }

    // Runs act, which opens the picker and waits for it, with the picker driven by drive
    // meanwhile; drive gets the picker once its rows are loaded.
    static void conPicker(const std::function<void()> &act, const std::function<void(FRMGD_LISTINI *)> &drive)
    {
        bool driven = false;
        QTimer::singleShot(0, [&] {
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (auto *picker = qobject_cast<FRMGD_LISTINI *>(window); picker && picker->isVisible()) {
                    QPointer<FRMGD_LISTINI> open = picker;
                    picker->Form_Activate();
                    driven = true;
                    drive(picker);
                    if (open) // never leave the caller waiting
                        open->unload();
                    return;
                }
            }
        });
        act();
        QVERIFY2(driven, "the picker did not open");
    }

    // A double click of the user on a cell of a view.
    static void doppioClic(QAbstractItemView *view, const QModelIndex &index)
    {
        const QPoint at = view->visualRect(index).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
    }

    QPointer<FRMGD_ANAGDISTINTA> anagrafica;
};
