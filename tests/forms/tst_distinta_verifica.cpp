#include "tests/forms/distintafixture.h"

#include "data/sqltext.h"
#include "forms/distinta/finestraverifica.h"
#include "forms/distinta/verificadistinte.h"

#include <QTableWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;

// "Verifica distinte": every kind of finding on a database seeded with it, none on a clean one,
// and a line leading to its node in its classification.
class TestDistintaVerifica : public QObject
{
    Q_OBJECT

    // Customers 1..5 and suppliers 1, 2; CLI01 (division NORD) and CLI02 (SUD) of customers,
    // FOR01 (no division) of suppliers; a fault of each kind written by hand.
    struct Guasta : DistintaFixture
    {
        Guasta()
        {
            const QStringList nomi {QStringLiteral("Uno"), QStringLiteral("Due"), QStringLiteral("Tre"),
                                    QStringLiteral("Quattro"), QStringLiteral("Cinque")};
            for (int code = 1; code <= 5; ++code)
                soggetto(0, code, QStringLiteral("Cliente ") + nomi.at(code - 1));
            soggetto(1, 1, QStringLiteral("Fornitore Uno"));
            soggetto(1, 2, QStringLiteral("Fornitore Due"));
            cli01 = tipo(0, QStringLiteral("CLI01"), QStringLiteral("Clienti Nord"), divisione(u"NORD"_s, u"Nord"_s));
            cli02 = tipo(0, QStringLiteral("CLI02"), QStringLiteral("Clienti Sud"), divisione(u"SUD"_s, u"Sud"_s));
            const qint64 for01 = tipo(1, QStringLiteral("FOR01"), QStringLiteral("Fornitori"));
            n1 = nodo(cli01, 0, 1);
            n2 = nodo(cli01, 0, 2, {.parent = n1, .start = u"2023-01-01"_s});
            n3 = nodo(cli01, 0, 3);
            n3b = nodo(cli01, 0, 3, {.start = u"2030-01-01"_s});
            nodo(cli02, 0, 1);
            n5 = nodo(cli02, 0, 99);
            n6 = nodo(cli02, 0, 4, {.parent = 9999});
            nodo(for01, 1, 1);
            n7 = nodo(777, 0, 5);
            exec(u"INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES (1, 8888, 7)"_s);
            exec(u"INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_TABELLA, WF02_ID_WF01) "
                 "VALUES ('ORFANO-1', 'GD02_DISTINTA', 3)"_s);
            contratto = condizione(DistintaFixture::contratto(1), 8888, 1);
        }
        qint64 cli01, cli02, n1, n2, n3, n3b, n5, n6, n7, contratto;
    };

    static QStringList righe(const QList<distinta::Anomalia> &anomalie)
    {
        QStringList lines;
        for (const distinta::Anomalia &anomalia : anomalie) {
            QStringList cells;
            for (const QVariant &value : distinta::VerificaDistinte::valori(anomalia))
                cells << value.toString();
            lines << cells.join(u'|');
        }
        return lines;
    }

    static QStringList righeGriglia(QTableWidget *grid)
    {
        QStringList lines;
        for (int row = 0; row < grid->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < grid->columnCount(); ++column)
                cells << grid->item(row, column)->text();
            lines << cells.join(u'|');
        }
        return lines;
    }

    static distinta::FinestraVerifica *verifica(DistintaFixture &f)
    {
        f.premi(QStringLiteral("CMD_VERIFICA"));
        return f.form->parti().controllo.finestra();
    }

private slots:
    void everyFindingHasItsLine()
    {
        Guasta f;
        f.apri();
        distinta::FinestraVerifica *finestra = verifica(f);
        QVERIFY(finestra);
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join(u'\n')));
        const QString oggi = sqltext::dayMonthYear(QDate::currentDate());
        const QString stato = f.scalar(u"SELECT WF01_DESCR FROM WF01_STATI WHERE WF01_ID = 3"_s).toString();
        const QStringList expected {
            u"Soggetto senza distinta|||4 Cliente Quattro|Non è in nessuna distinta dei clienti della divisione "
            "NORD Nord valida al "_s
                + oggi + u"."_s,
            u"Soggetto senza distinta|||5 Cliente Cinque|Non è in nessuna distinta dei clienti della divisione "
            "NORD Nord valida al "_s
                + oggi + u"."_s,
            u"Soggetto senza distinta|||2 Cliente Due|Non è in nessuna distinta dei clienti della divisione "
            "SUD Sud valida al "_s
                + oggi + u"."_s,
            u"Soggetto senza distinta|||3 Cliente Tre|Non è in nessuna distinta dei clienti della divisione "
            "SUD Sud valida al "_s
                + oggi + u"."_s,
            u"Soggetto senza distinta|||5 Cliente Cinque|Non è in nessuna distinta dei clienti della divisione "
            "SUD Sud valida al "_s
                + oggi + u"."_s,
            u"Soggetto senza distinta|||2 Fornitore Due|Non è in nessuna distinta dei fornitori senza divisione "
            "valida al "_s
                + oggi + u"."_s,
            QStringLiteral("Legami sovrapposti|CLI01 Clienti Nord|%1|3 Cliente Tre|dal 01/01/2024 al 31/12/2099 si "
                           "sovrappone al nodo %2 della distinta CLI01 (dal 01/01/2030 al 31/12/2099)")
                .arg(f.n3)
                .arg(f.n3b),
            QStringLiteral("Periodo fuori dal padre|CLI01 Clienti Nord|%1|2 Cliente Due|dal 01/01/2023 al "
                           "31/12/2099 esce dal periodo del nodo padre %2 (cliente 1), dal 01/01/2024 al 31/12/2099")
                .arg(f.n2)
                .arg(f.n1),
            QStringLiteral("Soggetto inesistente|CLI02 Clienti Sud|%1|99|Il cliente 99 non esiste nelle "
                           "anagrafiche della ditta.")
                .arg(f.n5),
            QStringLiteral("Padre inesistente|CLI02 Clienti Sud|%1|4 Cliente Quattro|Il nodo padre 9999 non esiste.")
                .arg(f.n6),
            QStringLiteral("Tipo distinta inesistente||%1|5 Cliente Cinque|Il tipo di distinta 777 del nodo non "
                           "esiste.")
                .arg(f.n7),
            u"Promozione senza nodo||8888||La campagna 7 è assegnata al nodo 8888, che non esiste."_s,
            QStringLiteral("Stato senza nodo||||Lo stato \"%1\" è registrato per la riga ORFANO-1, che non è un "
                           "nodo esistente.")
                .arg(stato),
            QStringLiteral("Contratto senza nodo||8888|1 Cliente Uno|La condizione %1 del contratto C1 versione 1 è "
                           "riferita al nodo 8888, che non esiste.")
                .arg(f.scalar(u"SELECT GD14_PROGRCOND_GD13 FROM GD14_SOGGCONTR"_s).toString()),
        };
        auto *grid = finestra->findChild<QTableWidget *>(QStringLiteral("GRD_VERIFICA"));
        QCOMPARE(righeGriglia(grid), expected);
        QCOMPARE(DistintaFixture::indicazione(grid), QString());

        // One type: its division's missing subjects and its own nodes; rows of nodes that are
        // gone belong to no type.
        QCOMPARE(righe(distinta::VerificaDistinte::verifica(f.form->connection(), 1, QDate::currentDate(), f.cli02)),
                 (QStringList {expected.at(2), expected.at(3), expected.at(4), expected.at(8), expected.at(9)}));
        // Another company sees none of it but the states, which carry no company.
        QCOMPARE(righe(distinta::VerificaDistinte::verifica(f.form->connection(), 2, QDate::currentDate())),
                 QStringList {expected.at(12)});
    }

    // A line leads to its node: in another classification, the selector follows as a click; in
    // the open one, the node is focused. A line without a node moves nothing.
    void aLineLeadsToItsNode()
    {
        Guasta f;
        f.apri();
        QCOMPARE(f.form->parti().albero.idTipo(), f.cli01);
        distinta::FinestraVerifica *finestra = verifica(f);
        auto *grid = finestra->findChild<QTableWidget *>(QStringLiteral("GRD_VERIFICA"));
        const auto riga = [&](const QString &controllo) {
            for (int row = 0; row < grid->rowCount(); ++row)
                if (grid->item(row, 0)->text() == controllo)
                    return row;
            return -1;
        };
        const auto nodoFocalizzato = [&] { return f.form->parti().albero.idDelNodo(f.albero()->focusedNode()); };

        grid->setCurrentCell(riga(u"Padre inesistente"_s), 0);
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(f.form->parti().albero.idTipo(), f.cli02);
        QCOMPARE(f.selettore()->currentItem()->data(0, Qt::UserRole).toString(), QStringLiteral("C%1").arg(f.cli02));
        QCOMPARE(nodoFocalizzato(), f.n6);

        const int fuori = riga(u"Periodo fuori dal padre"_s);
        const QPoint cella = grid->visualItemRect(grid->item(fuori, 0)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cella);
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cella);
        QCOMPARE(f.form->parti().albero.idTipo(), f.cli01);
        QCOMPARE(nodoFocalizzato(), f.n2);

        // The overlapping node of the open classification, by its own id though its subject has two.
        finestra->nodoRichiesto(finestra->anomalie().at(riga(u"Legami sovrapposti"_s)));
        QCOMPARE(nodoFocalizzato(), f.n3);

        finestra->nodoRichiesto(finestra->anomalie().at(riga(u"Promozione senza nodo"_s)));
        QCOMPARE(f.form->parti().albero.idTipo(), f.cli01);
        QCOMPARE(nodoFocalizzato(), f.n3);
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join(u'\n')));
    }

    // Every subject in a classification of its division, periods inside their parents', states of
    // living nodes: nothing to tell, and the grid says so.
    void aCleanDatabaseHasNoFindings()
    {
        DistintaFixture f;
        f.soggetto(0, 1, u"Cliente Uno"_s);
        f.soggetto(0, 2, u"Cliente Due"_s);
        f.soggetto(1, 1, u"Fornitore Uno"_s);
        const qint64 nord = f.tipo(0, u"CLI01"_s, u"Clienti Nord"_s, f.divisione(u"NORD"_s, u"Nord"_s));
        const qint64 fornitori = f.tipo(1, u"FOR00"_s, u"Tutti i fornitori"_s);
        const qint64 padre = f.nodo(nord, 0, 1);
        f.nodo(nord, 0, 2, {.parent = padre, .start = u"2024-06-01"_s, .end = u"2030-12-31"_s});
        // Ended the day before the other began: no overlap, and held today.
        f.nodo(fornitori, 1, 1, {.end = u"2024-05-31"_s});
        f.nodo(fornitori, 1, 1, {.start = u"2024-06-01"_s});
        f.exec(u"INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_TABELLA, WF02_ID_WF01) "
               "SELECT gd02_guid, 'GD02_DISTINTA', 3 FROM GD02_DISTINTA"_s);
        f.exec(u"INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01) SELECT GD01_GUID, 3 FROM GD01_TIPODISTINTA"_s);
        f.apri();
        distinta::FinestraVerifica *finestra = verifica(f);
        QVERIFY(finestra);
        QCOMPARE(righe(finestra->anomalie()).join(u"\n"_s), QString());
        auto *grid = finestra->findChild<QTableWidget *>(QStringLiteral("GRD_VERIFICA"));
        QCOMPARE(grid->rowCount(), 0);
        finestra->show();
        QCOMPARE(DistintaFixture::indicazione(grid), QStringLiteral("Nessun problema trovato."));
        QVERIFY(!finestra->findChild<QToolButton *>(QStringLiteral("CMD_SALVAVERIFICA"))->isEnabled());
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join(u'\n')));
    }
};

QTEST_MAIN(TestDistintaVerifica)
#include "tst_distinta_verifica.moc"
