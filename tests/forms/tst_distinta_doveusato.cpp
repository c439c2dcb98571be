#include "tests/forms/distintafixture.h"

#include "forms/distinta/finestradoveusato.h"

#include <QTableWidget>

// "Dove è usato": a subject's links in every classification of the company, from the tree's
// menu or the subject list's, and the way back from a line to its node.
class TestDistintaDoveUsato : public QObject
{
    Q_OBJECT

    struct Fixture : DistintaFixture
    {
        // Customer 20 in A01 twice (an expired root period, then under 10) and in B01 under 30
        // with no end; the same code as a supplier, and in another company, is someone else.
        Fixture()
        {
            soggetto(0, 10, QStringLiteral("Bar Centrale"));
            soggetto(0, 20, QStringLiteral("Drogheria Caputo S.r.l."));
            soggetto(0, 30, QStringLiteral("Gruppo Nord"));
            soggetto(0, 40, QStringLiteral("Cliente nuovo"));
            soggetto(1, 20, QStringLiteral("Fornitore 20"));
            const qint64 ali = divisione(QStringLiteral("ALI"), QStringLiteral("Alimentari"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Zone"), ali);
            const qint64 f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori"));
            const qint64 n10 = nodo(a01, 0, 10);
            scaduto = nodo(a01, 0, 20, {.start = QStringLiteral("2023-01-01"), .end = QStringLiteral("2023-12-31")});
            nodo(a01, 0, 20, {.parent = n10});
            const qint64 n30 = nodo(b01, 0, 30);
            inB01 = nodo(b01, 0, 20, {.parent = n30});
            exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = NULL WHERE GD02_ID = %1").arg(inB01));
            nodo(f01, 1, 20);
            nodo(a01, 0, 20, {.company = 2});
        }

        distinta::FinestraDoveUsato *finestra() const { return form->parti().doveUsato.finestra(); }
        QTableWidget *griglia() const { return finestra()->findChild<QTableWidget *>(QStringLiteral("GRD_DOVEUSATO")); }
        QStringList righe() const
        {
            QStringList lines;
            QTableWidget *grid = griglia();
            for (int row = 0; row < grid->rowCount(); ++row) {
                QStringList cells;
                for (int column = 0; column < grid->columnCount(); ++column)
                    cells << grid->item(row, column)->text();
                lines << cells.join(QLatin1Char('|'));
            }
            return lines;
        }
        void doppioClic(int row)
        {
            QTableWidget *grid = griglia();
            const QPoint at = grid->visualItemRect(grid->item(row, 1)).center();
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
        }
        qint64 idFocalizzato() const { return form->parti().albero.idDelNodo(albero()->focusedNode()); }

        qint64 a01 = 0;
        qint64 b01 = 0;
        qint64 scaduto = 0;
        qint64 inB01 = 0;
    };

private slots:
    // From a node: every period of the subject with its parent, its type's division and whether it
    // holds today; a line of the other classification switches the editor to it on that node,
    // and a line of the first one comes back, to the very period chosen.
    void theLinesOfASubjectLeadToTheirNodes()
    {
        Fixture f;
        f.apri();
        QVERIFY(f.attiva());
        f.focalizza(20);
        emit f.albero()->contextMenuRequested(f.albero()->focusedNode(), QPoint());
        auto *menu = f.form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"));
        menu->hide();
        auto *comando = f.form->findChild<QAction *>(QStringLiteral("mnuDoveUsato"));
        QCOMPARE(comando->text(), QStringLiteral("Dove è usato"));
        QCOMPARE(menu->actions().last(), comando);
        QVERIFY(menu->actions().at(menu->actions().size() - 2)->isSeparator());
        QVERIFY(comando->isEnabled());
        comando->trigger();

        QVERIFY(f.finestra());
        QCOMPARE(f.finestra()->objectName(), QStringLiteral("FRMGD_DOVEUSATO"));
        QCOMPARE(f.finestra()->windowTitle(), QStringLiteral("Dove è usato: 20 Drogheria Caputo S.r.l."));
        QCOMPARE(f.righe(),
                 QStringList({QStringLiteral("A01|Tutti i clienti||||01/01/2023|31/12/2023|No"),
                              QStringLiteral("A01|Tutti i clienti||10|Bar Centrale|01/01/2024|31/12/2099|Sì"),
                              QStringLiteral("B01|Zone|ALI - Alimentari|30|Gruppo Nord|01/01/2024||Sì")}));
        QCOMPARE(DistintaFixture::indicazione(f.griglia()), QString());

        f.doppioClic(2);
        QCOMPARE(f.selettore()->currentItem(), f.voce(QStringLiteral("C%1").arg(f.b01)));
        QCOMPARE(f.form->parti().albero.idTipo(), f.b01);
        QCOMPARE(f.idFocalizzato(), f.inB01);

        f.doppioClic(0);
        QCOMPARE(f.selettore()->currentItem(), f.voce(QStringLiteral("C%1").arg(f.a01)));
        QCOMPARE(f.idFocalizzato(), f.scaduto);
        QVERIFY(f.host.log().isQuiet());
    }

    // From the subject list, on the row under the mouse: a subject in no classification gets the
    // window all the same, empty, saying so.
    void aSubjectInNoClassificationIsSaidSo()
    {
        Fixture f;
        f.apri();
        QVERIFY(f.attiva());
        f.paginaAnagrafiche();
        auto *grid = f.control<fw::RecordsetGrid>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
        const QVariantList codes = DistintaFixture::colonna(f.form->parti().anagrafiche.lista(),
                                                            QStringLiteral("Codice"));
        const int row = int(codes.indexOf(QVariant(40)));
        QVERIFY(row >= 0);
        emit grid->customContextMenuRequested(grid->visualRect(grid->viewIndex(row, 2)).center());
        f.form->findChild<QMenu *>(QStringLiteral("mnuAnagrafiche"))->hide();
        auto *comando = f.form->findChild<QAction *>(QStringLiteral("mnuDoveUsatoAnagrafica"));
        QCOMPARE(comando->text(), QStringLiteral("Dove è usato"));
        QVERIFY(comando->isEnabled());
        comando->trigger();

        QVERIFY(f.finestra());
        QCOMPARE(f.finestra()->windowTitle(), QStringLiteral("Dove è usato: 40 Cliente nuovo"));
        QCOMPARE(f.griglia()->rowCount(), 0);
        QCOMPARE(DistintaFixture::indicazione(f.griglia()), QStringLiteral("Il soggetto non è in nessuna distinta."));

        // Another subject of the list replaces the window.
        const int other = int(codes.indexOf(QVariant(20)));
        emit grid->customContextMenuRequested(grid->visualRect(grid->viewIndex(other, 2)).center());
        f.form->findChild<QMenu *>(QStringLiteral("mnuAnagrafiche"))->hide();
        comando->trigger();
        QCOMPARE(f.finestra()->windowTitle(), QStringLiteral("Dove è usato: 20 Drogheria Caputo S.r.l."));
        QCOMPARE(f.righe().size(), 3);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(f.form->findChildren<distinta::FinestraDoveUsato *>().size(), 1);
        QVERIFY(f.host.log().isQuiet());
    }
};

QTEST_MAIN(TestDistintaDoveUsato)
#include "tst_distinta_doveusato.moc"
