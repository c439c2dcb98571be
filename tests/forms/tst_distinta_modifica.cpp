#include "tests/forms/distintafixture.h"

#include "framework/messagestyle.h"
#include "framework/treelist/treelistdateeditor.h"
#include "framework/treelist/treelistview.h"
#include "platform/db/recordset.h"

// Editing a node in the tree: each commit checks the node as it would be saved and writes
// nothing it refuses; the billing rule decides what becomes of the billing code.
class TestDistintaModifica : public QObject
{
    Q_OBJECT

    // Customers 10..14. A01: 10 (a definitive bonus due 30/06/2030) > 11 (billing rule 1, code
    // 13), root 12 from 2024; B01: 12 from 2020 to 2023.
    struct Nodi : DistintaFixture
    {
        Nodi()
        {
            for (int code = 10; code <= 14; ++code)
                soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Storico"));
            n10 = nodo(a01, 0, 10, {.billingRule = 0});
            n11 = nodo(a01, 0, 11, {.parent = n10, .billingCode = 13, .billingRule = 1});
            n12 = nodo(a01, 0, 12, {.billingRule = 0});
            nodo(b01, 0, 12, {.start = QStringLiteral("2020-01-01"), .end = QStringLiteral("2023-12-31")});
            scadenza(condizione(contratto(10), n10), QStringLiteral("2030-06-30"), 2);
        }

        template<typename Editor>
        Editor *apriEditor(int code, const QString &column)
        {
            focalizza(code);
            albero()->editCell(albero()->focusedNode(), column);
            return albero()->view()->viewport()->findChild<Editor *>();
        }
        // Types a date (or nothing) into a date cell and confirms it.
        void scriviData(int code, const QString &column, const QString &text)
        {
            auto *editor = apriEditor<fw::TreeListDateEditor>(code, column);
            QVERIFY(editor);
            editor->setText(text);
            QTest::keyClick(editor, Qt::Key_Return);
            attendi();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        void scegliRegola(int code, int rule)
        {
            auto *combo = apriEditor<QComboBox>(code, QStringLiteral("trGD02_TIPOANAGFATT"));
            QVERIFY(combo);
            combo->setCurrentIndex(combo->findData(rule));
            emit combo->activated(combo->currentIndex());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            attendi();
        }
        QString campo(qint64 node, const QString &column)
        {
            // Read as text, so that a date comes back as the database stores it.
            return scalar(QStringLiteral("SELECT '=' || COALESCE(%1, 'null') FROM GD02_DISTINTA WHERE GD02_ID = %2")
                              .arg(column)
                              .arg(node))
                .toString()
                .mid(1);
        }
        QLineEdit *txtAlfa() const { return control<QLineEdit>(QStringLiteral("TXT_ALFA")); }
        void digitaCodice(const QString &text, Qt::Key key = Qt::Key_Return)
        {
            txtAlfa()->setText(text);
            QTest::keyClick(txtAlfa(), key);
            attendi();
        }

        qint64 a01 = 0, b01 = 0, n10 = 0, n11 = 0, n12 = 0;
    };

private slots:
    // Empty, impossible and reversed dates are refused with their message and nothing is written;
    // a one-day period is a period, and the change is stamped.
    void datesAreCheckedBeforeAnythingIsWritten()
    {
        Nodi f;
        f.apri();
        const QString inizio = QStringLiteral("Attenzione data validità inizio errata o non caricata");
        const QString fine = QStringLiteral("Attenzione data validità fine errata o non caricata");
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QString());
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("31/02/2024"));
        f.scriviData(12, QStringLiteral("trGD02_DATAFINEVAL"), QString());
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("01/01/2100"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(
                     {inizio, inizio, fine,
                      QStringLiteral("Attenzione data validità inizio deve essere inferiore di data validità fine")}));
        for (const auto &message : f.host.log().messages())
            QCOMPARE(message.style, fw::MessageStyle::Warning);
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DATAINIZIOVAL")), QStringLiteral("2024-01-01 00:00:00"));
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DATAFINEVAL")), QStringLiteral("2099-12-31 00:00:00"));
        QCOMPARE(f.albero()->focusedNode().displayText(QStringLiteral("trGD02_DATAINIZIOVAL")),
                 QStringLiteral("01/01/2024"));

        f.host.log().clear();
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("15/03/2024"));
        f.scriviData(12, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("15/03/2024"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(f.n12,
                         QStringLiteral("substr(GD02_DATAINIZIOVAL, 1, 10) || substr(GD02_DATAFINEVAL, 1, 10) "
                                        "|| GD02_UTENTEVAR || GD02_GRUPPOVAR")),
                 QStringLiteral("2024-03-152024-03-15testerADMIN"));
    }

    // The period is checked against the subject's other links (not against the node itself)
    // and against the node's definitive bonuses.
    void otherLinksAndBonusesRefuseAPeriod()
    {
        Nodi f;
        f.apri();
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("31/12/2023"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Anagrafica non modificata:\nCliente 12 già legato alla distinta : Nodo "
                                             "capostipite nel periodo dal 01/01/2020 al 31/12/2023\n")}));
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DATAINIZIOVAL")), QStringLiteral("2024-01-01 00:00:00"));

        f.host.log().clear();
        f.scriviData(10, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("31/12/2029"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("La data fine è inferiore alla data scadenza di un premio definitivo")}));
        QCOMPARE(f.campo(f.n10, QStringLiteral("GD02_DATAFINEVAL")), QStringLiteral("2099-12-31 00:00:00"));

        f.host.log().clear();
        f.scriviData(10, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("31/12/2031"));
        f.scriviData(12, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("31/12/2050"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(f.n10, QStringLiteral("GD02_DATAFINEVAL")), QStringLiteral("2031-12-31 00:00:00"));
    }

    // Any commit re-checks the node: a priority that does not exist refuses even a description.
    void everyCommitChecksThePriorities()
    {
        Nodi f;
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDLOCALIZZATA_LP09 = 999 WHERE GD02_ID = %1").arg(f.n12));
        f.apri();
        auto *editor = f.apriEditor<QLineEdit>(12, QStringLiteral("trGD02_DESCR"));
        QVERIFY(editor);
        editor->setText(QStringLiteral("Nuova descrizione"));
        QTest::keyClick(editor, Qt::Key_Return);
        f.attendi();
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Attenzione il codice della priorità listini localizzata non è valido")}));
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DESCR")), QStringLiteral("null"));
    }

    // Only "Manuale" keeps a billing code, typed over the cell and checked against the subjects.
    void billingRuleDecidesTheBillingCode()
    {
        Nodi f;
        f.apri();
        f.scegliRegola(11, 2);
        QCOMPARE(f.campo(f.n11, QStringLiteral("GD02_TIPOANAGFATT || '/' || COALESCE(GD02_CLIFORFATT_CG44, 'null')")),
                 QStringLiteral("2/null"));

        f.scegliRegola(11, 4);
        QVERIFY(f.txtAlfa()->isVisible());
        QVERIFY(f.albero()
                    ->cellRect(f.albero()->focusedNode(), QStringLiteral("trGD02_CLIFORFATT_CG44"))
                    .contains(f.txtAlfa()->geometry().center()));
        f.digitaCodice(QStringLiteral("abc"));
        f.digitaCodice(QStringLiteral("999"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Il codice anagrafica deve essere un numero intero positivo."),
                              QStringLiteral("Cliente 999 non trovato tra le anagrafiche della ditta.")}));
        QVERIFY(f.txtAlfa()->isVisible());
        f.digitaCodice(QStringLiteral("14"));
        QVERIFY(!f.txtAlfa()->isVisible());
        QCOMPARE(f.campo(f.n11, QStringLiteral("GD02_TIPOANAGFATT || '/' || GD02_CLIFORFATT_CG44")),
                 QStringLiteral("4/14"));
        QCOMPARE(f.albero()->focusedNode().displayText(QStringLiteral("RagioneSocialeFatt")),
                 QStringLiteral("Cliente 14"));

        // Editing the filled code of a "Manuale" node opens the editor; Escape keeps the code.
        f.albero()->editCell(f.albero()->focusedNode(), QStringLiteral("trGD02_CLIFORFATT_CG44"));
        f.attendi();
        QVERIFY(f.txtAlfa()->isVisible());
        QCOMPARE(f.txtAlfa()->text(), QStringLiteral("14"));
        f.digitaCodice(QStringLiteral("13"), Qt::Key_Escape);
        QVERIFY(!f.txtAlfa()->isVisible());
        QCOMPARE(f.campo(f.n11, QStringLiteral("GD02_CLIFORFATT_CG44")), QStringLiteral("14"));

        // Under any other rule, starting to edit a filled code wipes it.
        f.exec(QStringLiteral(
                   "UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 1, GD02_CLIFORFATT_CG44 = 13 WHERE GD02_ID = %1")
                   .arg(f.n12));
        f.form->CaricaDistinta();
        f.focalizza(12);
        f.albero()->editCell(f.albero()->focusedNode(), QStringLiteral("trGD02_CLIFORFATT_CG44"));
        f.attendi();
        QVERIFY(!f.txtAlfa()->isVisible());
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_CLIFORFATT_CG44")), QStringLiteral("null"));
    }

    // A node with neither billing rule nor code is saved without the checks.
    void nodeWithoutBillingSkipsTheChecks()
    {
        Nodi f;
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = NULL, GD02_DATAINIZIOVAL = NULL "
                              "WHERE GD02_ID = %1")
                   .arg(f.n12));
        f.apri();
        auto *editor = f.apriEditor<QLineEdit>(12, QStringLiteral("trGD02_DESCR"));
        editor->setText(QStringLiteral("Senza controlli"));
        QTest::keyClick(editor, Qt::Key_Return);
        f.attendi();
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DESCR")), QStringLiteral("Senza controlli"));
    }

    // Two clerks: the second save over a changed node is refused, and the node read again.
    void secondClerksChangeIsNotOverwritten()
    {
        Nodi f;
        f.apri();
        const db::ConnectionPtr other = db::Connection::open(f.host.database().connectionString());
        other->execute(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAINIZIOVAL = '2024-02-01 00:00:00', "
                                      "GD02_DESCR = 'altrove' WHERE GD02_ID = %1")
                           .arg(f.n12));
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("01/03/2024"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("La riga è stata modificata da un altro utente dopo la lettura: "
                                             "le modifiche non sono state salvate.")}));
        QVERIFY(f.host.log().errorDialogs().isEmpty());
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DATAINIZIOVAL")), QStringLiteral("2024-02-01 00:00:00"));
        const fw::TreeListNode node = f.albero()->focusedNode();
        QCOMPARE(node.displayText(QStringLiteral("trGD02_DATAINIZIOVAL")), QStringLiteral("01/02/2024"));
        QCOMPARE(node.displayText(QStringLiteral("trGD02_DESCR")), QStringLiteral("altrove"));

        // Read again, the user's next change goes through.
        f.host.log().clear();
        f.scriviData(12, QStringLiteral("trGD02_DATAINIZIOVAL"), QStringLiteral("01/03/2024"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.campo(f.n12, QStringLiteral("GD02_DATAINIZIOVAL")), QStringLiteral("2024-03-01 00:00:00"));
    }
};

QTEST_MAIN(TestDistintaModifica)
#include "tst_distinta_modifica.moc"
