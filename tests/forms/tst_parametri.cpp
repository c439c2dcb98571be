#include "tests/forms/distintafixture.h"
#include "tests/support/altletters.h"

#include "forms/parametri/frmgd_parametri.h"
#include "framework/gridnavigator.h"
#include "framework/messagestyle.h"
#include "framework/recordframe.h"

#include <QCheckBox>
#include <QStandardItemModel>
#include <QToolButton>

// The parameters form opened from the editor's button, driven by its control names: the
// company's one row, the dates' rule and their order, and what the editor reads once it closes.
class TestParametri : public QObject
{
    Q_OBJECT

    // Customers 10 and 11: A01: 10 > 11.
    struct Parametri : DistintaFixture
    {
        Parametri()
        {
            soggetto(0, 10, QStringLiteral("Bar Centrale"));
            soggetto(0, 11, QStringLiteral("Hotel Arena"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Canale bar"));
            n10 = nodo(a01, 0, 10);
            n11 = nodo(a01, 0, 11, {.parent = n10});
        }

        FRMGD_PARAMETRI *parametri()
        {
            premi(QStringLiteral("CMD_PARAMETRI"));
            attendi();
            FRMGD_PARAMETRI *opened = form->parti().parametri.formParametri();
            if (opened && !opened->isVisible())
                opened->show();
            attendi();
            return opened;
        }
        template<typename Control>
        Control *di(FRMGD_PARAMETRI *p, const QString &name)
        {
            auto *found = p->findChild<Control *>(name);
            if (!found)
                qFatal("no control %s", qPrintable(name));
            return found;
        }
        void scegli(FRMGD_PARAMETRI *p, const QString &combo, int value)
        {
            auto *box = di<QComboBox>(p, combo);
            box->setCurrentIndex(box->findData(value));
            emit box->activated(box->currentIndex());
        }
        void scrivi(FRMGD_PARAMETRI *p, const QString &field, const QString &text)
        {
            auto *edit = di<QLineEdit>(p, field);
            edit->setText(text);
        }
        void salva(FRMGD_PARAMETRI *p)
        {
            di<fw::GridNavigator>(p, QStringLiteral("GRIDNAV_PARAMETRI"))->press(QStringLiteral("Salva"));
        }
        QString campo(const QString &column)
        {
            return scalar(QStringLiteral("SELECT %1 FROM GD03_PARAMETRI WHERE GD03_DITTA_CG18 = 1").arg(column))
                .toString();
        }

        qint64 a01 = 0, n10 = 0, n11 = 0;
    };

private slots:
    // A company without a row starts a new one; saving writes it for the company, and the
    // editor uses it for the next link once the form closes.
    void aCompanyWithoutARowStartsOneAndTheEditorReadsItOnClose()
    {
        Parametri f;
        f.apri();
        FRMGD_PARAMETRI *p = f.parametri();
        QVERIFY(p);
        QCOMPARE(p->recordFrame()->state(), int(fw::RecordFrame::Insert));
        QCOMPARE(f.di<QComboBox>(p, QStringLiteral("CMB_GD03_TIPOCARICODATA"))->count(), 2);
        QCOMPARE(f.di<QComboBox>(p, QStringLiteral("CMB_GD03_TIPOANAGFATT"))->itemText(3),
                 QStringLiteral("Cli per fatt. del nodo padre"));
        QCOMPARE(f.di<QComboBox>(p, QStringLiteral("CBO_EREPROMO"))->itemText(2),
                 QStringLiteral("Specifiche per anagrafica"));
        QVERIFY(f.di<QCheckBox>(p, QStringLiteral("CHK_GD03_FLG_ANAG"))->isHidden());

        f.scegli(p, QStringLiteral("CMB_GD03_TIPOCARICODATA"), 1);
        f.scrivi(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"), QStringLiteral("01/02/2025"));
        f.scrivi(p, QStringLiteral("TXT_GD03_DATAFINEVAL"), QStringLiteral("31/12/2030"));
        f.scegli(p, QStringLiteral("CMB_GD03_TIPOANAGFATT"), 2);
        f.di<QCheckBox>(p, QStringLiteral("CHK_GD03_FLG_CLAS"))->setChecked(true);
        f.salva(p);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(QStringLiteral("GD03_TIPOCARICODATA")), QStringLiteral("1"));
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAINIZIOVAL")).left(10), QStringLiteral("2025-02-01"));
        QCOMPARE(f.campo(QStringLiteral("GD03_TIPOANAGFATT")), QStringLiteral("2"));
        QCOMPARE(f.campo(QStringLiteral("GD03_FLG_CLAS")), QStringLiteral("1"));
        QCOMPARE(f.form->parametri().tipoCaricaFatt, short(0)); // read once the form has closed
        // The save is one operation of the journal, with the company's new row.
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD90_OPERAZIONE || '/' || GD91_TABELLA || '/' || GD91_AZIONE || '/' "
                                         "|| GD91_CHIAVE FROM GD91_RIGHESTORICO INNER JOIN GD90_OPERAZIONI "
                                         "ON GD90_ID = GD91_ID_GD90"))
                     .toString(),
                 QStringLiteral("Inserimento/GD03_PARAMETRI/I/1"));

        QVERIFY(p->unload());
        f.attendi();
        QVERIFY(!f.form->parti().parametri.formParametri());
        QCOMPARE(f.form->parametri().tipoCaricaData, short(1));
        QCOMPARE(f.form->parametri().dataFissaInizio, QDate(2025, 2, 1));
        QCOMPARE(f.form->parametri().dataFissaFine, QDate(2030, 12, 31));
        QCOMPARE(f.form->parametri().tipoCaricaFatt, short(2));
        QVERIFY(f.form->parametri().flgClassificazioni);
        QVERIFY(!f.form->parametri().flgCondVendita);
        QVERIFY(f.host.log().isQuiet());
    }

    // With no node shown the editor only opens and closes the form: what was saved is read at
    // the next start or the next close over a tree with nodes.
    void anEmptyTreeReadsNothingOnClose()
    {
        Parametri f;
        f.apri();
        f.clicca(QStringLiteral("P0"));
        f.attendi();
        FRMGD_PARAMETRI *p = f.parametri();
        f.scegli(p, QStringLiteral("CMB_GD03_TIPOANAGFATT"), 2);
        f.salva(p);
        QCOMPARE(f.campo(QStringLiteral("GD03_TIPOANAGFATT")), QStringLiteral("2"));
        QVERIFY(p->unload());
        f.attendi();
        QCOMPARE(f.form->parametri().tipoCaricaFatt, short(0));

        f.clicca(QStringLiteral("C%1").arg(f.a01));
        f.attendi();
        QVERIFY(f.parametri()->unload());
        f.attendi();
        QCOMPARE(f.form->parametri().tipoCaricaFatt, short(2));
    }

    // Nothing is written without "Salva": a company without a row keeps having none after the
    // form was opened and closed untouched, or closed with its changes discarded.
    void closingWithoutSavingWritesNoRow()
    {
        Parametri f;
        f.apri();
        const QString righe = QStringLiteral("SELECT COUNT(*) FROM GD03_PARAMETRI");
        FRMGD_PARAMETRI *p = f.parametri();
        QVERIFY(p->unload());
        f.attendi();
        QCOMPARE(f.scalar(righe).toInt(), 0);

        p = f.parametri();
        f.scegli(p, QStringLiteral("CMB_GD03_TIPOANAGFATT"), 2);
        f.host.log().answerNext(fw::Answer::No);
        QVERIFY(p->unload());
        f.attendi();
        QCOMPARE(f.scalar(righe).toInt(), 0);
        QCOMPARE(f.host.log().messageTexts().size(), 1); // the question whether to save
    }

    // The host's layout script finds the form's one structure; the editor offers none.
    void theLayoutScriptFindsTheFormsStructure()
    {
        Parametri f;
        f.apri();
        QCOMPARE(ScriptedNavigator::structuresOf(f.parametri()),
                 QStringList {QStringLiteral("Applicazioni per articolo")});
        QCOMPARE(ScriptedNavigator::structuresOf(f.form), QStringList());
    }

    void everyAltLetterOnce()
    {
        Parametri f;
        f.apri();
        QCOMPARE(altLetterClashes(f.parametri()), QStringList());
    }

    // Dates may not run backwards (the same day passes), must read as dates, and one alone is
    // enough; a refusal saves nothing.
    void datesAreCheckedBeforeSaving()
    {
        Parametri f;
        f.exec(QStringLiteral("INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_TIPOCARICODATA) VALUES (1, 1)"));
        f.apri();
        FRMGD_PARAMETRI *p = f.parametri();
        QCOMPARE(p->recordFrame()->state(), int(fw::RecordFrame::Browse));
        QVERIFY(f.di<QLineEdit>(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"))->isEnabled());

        f.scrivi(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"), QStringLiteral("02/01/2025"));
        f.scrivi(p, QStringLiteral("TXT_GD03_DATAFINEVAL"), QStringLiteral("01/01/2025"));
        f.salva(p);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral(
                     "Attenzione la data di inizio validità deve essere inferiore alla data di fine validità")});
        QCOMPARE(f.host.log().messages().at(0).title, QStringLiteral("Parametri"));
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAINIZIOVAL")), QString());

        f.host.log().clear();
        f.scrivi(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"), QStringLiteral("31/02/2025"));
        f.salva(p);
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().size(), 0);
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAINIZIOVAL")), QString());

        f.host.log().clear();
        f.scrivi(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"), QStringLiteral("01/01/2025"));
        f.salva(p);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAINIZIOVAL")).left(10), QStringLiteral("2025-01-01"));

        f.scrivi(p, QStringLiteral("TXT_GD03_DATAFINEVAL"), QString());
        f.salva(p);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAFINEVAL")), QString());
    }

    // Dates from the parent node leave no dates: both are emptied and cannot be typed; fixed
    // dates open them again, empty. A change left pending is asked about on closing.
    void theDateRuleEnablesAndEmptiesTheDates()
    {
        Parametri f;
        f.exec(QStringLiteral("INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_TIPOCARICODATA, GD03_DATAINIZIOVAL, "
                              "GD03_DATAFINEVAL) VALUES (1, 1, '2025-01-01 00:00:00', '2025-12-31 00:00:00')"));
        f.apri();
        FRMGD_PARAMETRI *p = f.parametri();
        auto *inizio = f.di<QLineEdit>(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"));
        auto *fine = f.di<QLineEdit>(p, QStringLiteral("TXT_GD03_DATAFINEVAL"));
        QCOMPARE(inizio->text(), QStringLiteral("01/01/2025"));
        f.scegli(p, QStringLiteral("CMB_GD03_TIPOCARICODATA"), 0);
        QVERIFY(!inizio->isEnabled() && !fine->isEnabled());
        QVERIFY(inizio->text().isEmpty() && fine->text().isEmpty());
        f.scegli(p, QStringLiteral("CMB_GD03_TIPOCARICODATA"), 1);
        QVERIFY(inizio->isEnabled() && fine->isEnabled());
        QVERIFY(inizio->text().isEmpty());

        f.host.log().answerNext(fw::Answer::Cancel);
        QVERIFY(!p->unload());
        QCOMPARE(f.host.log().messages().size(), 1);
        f.host.log().answerNext(fw::Answer::Yes);
        QVERIFY(p->unload());
        QCOMPARE(f.campo(QStringLiteral("GD03_TIPOCARICODATA")), QStringLiteral("1"));
        QCOMPARE(f.campo(QStringLiteral("GD03_DATAINIZIOVAL")), QString());
    }

    // A row with nothing in it shows as such, and the editor reads its defaults.
    void aRowOfNullsOpensQuietly()
    {
        Parametri f;
        f.exec(QStringLiteral("INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18) VALUES (1)"));
        f.apri();
        FRMGD_PARAMETRI *p = f.parametri();
        QCOMPARE(p->recordFrame()->state(), int(fw::RecordFrame::Browse));
        QVERIFY(!f.di<QLineEdit>(p, QStringLiteral("TXT_GD03_DATAINIZIOVAL"))->isEnabled());
        QVERIFY(p->unload());
        QCOMPARE(f.form->parametri().dataFissaInizio, QDate(2000, 1, 1));
        QCOMPARE(f.form->parametri().dataFissaFine, QDate(2099, 1, 1));
        QVERIFY(!f.form->parametri().flgProvvigioni);
        QVERIFY(f.host.log().isQuiet());
    }

    // The form's promotion rule acts on the editor's focused node, which stores it; a root
    // cannot be given its parent's.
    void thePromotionRuleGoesToTheEditorsNode()
    {
        Parametri f;
        f.apri();
        f.attendi();
        FRMGD_PARAMETRI *p = f.parametri();
        auto *rule = f.di<QComboBox>(p, QStringLiteral("CBO_EREPROMO"));
        QVERIFY(rule->isEnabled());
        QVERIFY(!qobject_cast<QStandardItemModel *>(rule->model())->item(1)->isEnabled());
        f.focalizza(11);
        f.attendi();
        QVERIFY(qobject_cast<QStandardItemModel *>(rule->model())->item(1)->isEnabled());
        f.scegli(p, QStringLiteral("CBO_EREPROMO"), 2);
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD02_INDEREPROMO FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n11))
                     .toInt(),
                 2);
        QCOMPARE(f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"))->currentData().toInt(), 2);
        QVERIFY(f.host.log().isQuiet());
    }

    // The editor owns the form: it is a window of its own, and goes with the editor.
    void theFormGoesWithItsEditor()
    {
        Parametri f;
        f.apri();
        QPointer<FRMGD_PARAMETRI> p = f.parametri();
        QVERIFY(p && p->isWindow());
        delete f.form;
        f.form = nullptr;
        QVERIFY(!p);
    }
};

QTEST_MAIN(TestParametri)
#include "tst_parametri.moc"
