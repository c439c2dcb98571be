#include "tests/forms/distintafixture.h"

#include "framework/messagestyle.h"

// Adding ticked subjects to a classification: where they go, the period and rules they take from
// the parameters, the subjects refused with their reasons, and what the list shows afterwards.
class TestDistintaInserimento : public QObject
{
    Q_OBJECT

    // Customers 10..19 and 50; type A01 with 10 > 11 > 12 (12 ends 30/06/2030) and root 13;
    // type B01 of the same (no) division, where 50 is a root from 2024 on.
    struct Distinte : DistintaFixture
    {
        Distinte()
        {
            for (int code = 10; code <= 19; ++code)
                soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            soggetto(0, 50, QStringLiteral("Cinquanta"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Altri"));
            n10 = nodo(a01, 0, 10, {.start = QStringLiteral("2020-01-01")});
            n11 = nodo(a01, 0, 11, {.parent = n10});
            n12 = nodo(a01, 0, 12,
                       {.parent = n11, .start = QStringLiteral("2025-03-01"), .end = QStringLiteral("2030-06-30")});
            nodo(a01, 0, 13);
            nodo(b01, 0, 50);
        }

        // The row written for a subject in type A01, as "parent|start|end|billing|promotions|state|user|group".
        QString riga(int code)
        {
            return scalar(QStringLiteral(
                              "SELECT COALESCE(GD02_IDPARENT_GD02, 'null') || '|' || substr(GD02_DATAINIZIOVAL, 1, 10) "
                              "|| '|' "
                              "|| substr(GD02_DATAFINEVAL, 1, 10) || '|' || GD02_TIPOANAGFATT || '|' || "
                              "GD02_INDEREPROMO || '|' "
                              "|| GD02_ID_WF02 || '|' || GD02_UTENTECRE || '|' || GD02_GRUPPOVAR FROM GD02_DISTINTA "
                              "WHERE GD02_ID_GD01 = %1 AND GD02_CLIFOR_CG44 = %2")
                              .arg(a01)
                              .arg(code))
                .toString();
        }
        int righe(int code)
        {
            return scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 = %1").arg(code))
                .toInt();
        }
        void aggiungi(const QList<int> &codes, const QString &button = QStringLiteral("CMD_ADDANAGR"))
        {
            for (int code : codes)
                spunta(code);
            attendi();
            QVERIFY(control<QPushButton>(button)->isEnabled());
            premi(button);
        }
        void parametri(const QString &values)
        {
            exec(QStringLiteral("INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_TIPOCARICODATA, GD03_DATAINIZIOVAL, "
                                "GD03_DATAFINEVAL, GD03_TIPOANAGFATT) VALUES (1, %1)")
                     .arg(values));
        }

        qint64 a01 = 0, b01 = 0, n10 = 0, n11 = 0, n12 = 0;
    };

private slots:
    // Under a node the children take the parent's period (a missing end is the open end); roots
    // take the parameters' dates. The focused node keeps the focus after the reload.
    void childrenTakeTheParentsPeriodRootsTheParameters()
    {
        Distinte f;
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = NULL WHERE GD02_ID = %1").arg(f.n11));
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(11);
        f.aggiungi({14, 15});
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.host.statusBar().currentMessage(), QStringLiteral("Anagrafiche aggiunte alla distinta: 2."));
        const QString today = QDate::currentDate().toString(Qt::ISODate);
        QCOMPARE(f.riga(14), QStringLiteral("%1|2024-01-01|2099-12-31|0|0|0|tester|ADMIN").arg(f.n11));
        QCOMPARE(f.scalar(QStringLiteral(
                              "SELECT substr(GD02_DATACRE, 1, 10) || substr(GD02_DATAVAR, 1, 10) FROM GD02_DISTINTA "
                              "WHERE GD02_CLIFOR_CG44 = 14"))
                     .toString(),
                 today + today);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "..12", "..14", "..15", "13"}));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("11"));
        // Every tick is gone; the subjects added show as linked.
        QCOMPARE(DistintaFixture::colonna(f.form->parti().anagrafiche.lista(), QStringLiteral("Seleziona"))
                     .count(QVariant(1)),
                 0);
        QCOMPARE(f.cellaLista(14, QStringLiteral("AssociatoInDistinta")).toInt(), 1);
        f.attendi();
        QVERIFY(!f.control<QPushButton>(QStringLiteral("CMD_ADDANAGR"))->isEnabled());

        // Roots: parent 0, their own promotions, the default period without a parameters row.
        f.aggiungi({16}, QStringLiteral("CMD_ADDANAGRCAPO"));
        QCOMPARE(f.riga(16), QStringLiteral("0|2000-01-01|2099-12-31|0|2|0|tester|ADMIN"));
        QCOMPARE(f.codiciAlbero().last(), QStringLiteral("16"));
    }

    // Fixed dates from the parameters for children too; an empty end in the row reads as 01/01/2099.
    void parametersDecideDatesAndBillingRule()
    {
        Distinte f;
        f.parametri(QStringLiteral("1, '2026-02-01 00:00:00', NULL, 3"));
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(12);
        f.aggiungi({14});
        f.aggiungi({15}, QStringLiteral("CMD_ADDANAGRCAPO"));
        QCOMPARE(f.riga(14), QStringLiteral("%1|2026-02-01|2099-01-01|3|0|0|tester|ADMIN").arg(f.n12));
        QCOMPARE(f.riga(15), QStringLiteral("0|2026-02-01|2099-01-01|3|2|0|tester|ADMIN"));
    }

    // With no node in focus (an empty classification) the add button makes roots too.
    void noFocusedNodeMeansRoots()
    {
        Distinte f;
        const qint64 vuota = f.tipo(0, QStringLiteral("C01"), QStringLiteral("Vuota"));
        f.apri();
        f.paginaAnagrafiche();
        f.clicca(QStringLiteral("C%1").arg(vuota));
        f.paginaAnagrafiche();
        QVERIFY(!f.albero()->focusedNode().isValid());
        f.aggiungi({17});
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD02_IDPARENT_GD02 || '|' || GD02_INDEREPROMO FROM GD02_DISTINTA "
                                         "WHERE GD02_ID_GD01 = %1")
                              .arg(vuota))
                     .toString(),
                 QStringLiteral("0|2"));
        QCOMPARE(f.codiciAlbero(), QStringList({"17"}));
    }

    // Each refused subject is one line, in the order of the list; the others are written.
    void refusedSubjectsAreListed()
    {
        Distinte f;
        f.nodo(f.b01, 0, 19, {.parent = f.nodo(f.b01, 0, 18)}); // 19 under 18 in B01, from 2024
        // Fixed dates after 12's own period, so that 12 under itself meets no link of its own.
        f.parametri(QStringLiteral("1, '2031-01-01 00:00:00', '2032-12-31 00:00:00', 0"));
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(12);
        // 12 itself; 10, the root of this tree, open-ended; 50 and 19 elsewhere in the
        // division; 16 goes in.
        f.aggiungi({12, 10, 50, 19, 16});
        QCOMPARE(f.host.log().messages().size(), 1);
        const auto message = f.host.log().messages().at(0);
        QCOMPARE(message.style, fw::MessageStyle::Notice);
        QCOMPARE(
            message.text,
            QStringLiteral(
                "Anagrafiche non importate:\n"
                "Cliente 10 già legato alla distinta : Nodo capostipite nel periodo dal 01/01/2020 al 31/12/2099\n"
                "Cliente 12 uguale al nodo padre, non è possibile salvare la struttura.\n"
                "Cliente 19 già legato alla distinta B01 - Altri: Nodo padre 18 - Cliente 18 nel periodo dal "
                "01/01/2024 al 31/12/2099\n"
                "Cliente 50 già legato alla distinta : Nodo capostipite nel periodo dal 01/01/2024 al 31/12/2099\n"));
        QCOMPARE(f.righe(16), 1);
        QCOMPARE(f.righe(10) + f.righe(12) + f.righe(19) + f.righe(50), 4);
        QCOMPARE(f.host.statusBar().currentMessage(),
                 QStringLiteral("Anagrafiche aggiunte alla distinta: 1; non importate: 4."));
        QCOMPARE(DistintaFixture::colonna(f.form->parti().anagrafiche.lista(), QStringLiteral("Seleziona"))
                     .count(QVariant(1)),
                 0);
        QCOMPARE(f.cellaLista(12, QStringLiteral("AssociatoInDistinta")).toInt(), 1); // as it was
    }

    // The branch rule works on the tree as shown: a subject already below the node, or above it
    // from the second level down; a node at level 1 is not compared with the root above it.
    void aSubjectOnceInABranch()
    {
        Distinte f;
        // 10's link ends before the new period, so only the branch rule can refuse it.
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = '2024-12-31 00:00:00' WHERE GD02_ID = %1")
                   .arg(f.n10));
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAINIZIOVAL = '2025-01-01 00:00:00' WHERE GD02_ID = %1")
                   .arg(f.n11));
        f.apri();
        f.paginaAnagrafiche();

        f.focalizza(12); // level 2: 10 sits above it
        f.aggiungi({10});
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral(
                     "Anagrafiche non importate:\nCliente 10 nodo è già un nodo padre nella struttura.\n")}));

        f.host.log().clear();
        f.focalizza(11); // level 1: the root above is not looked at
        f.aggiungi({10});
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.righe(10), 2);

        // Below the focused node: 12 ends in 2030, the new period starts in 2035.
        f.parametri(QStringLiteral("1, '2035-01-01 00:00:00', '2040-12-31 00:00:00', 0"));
        f.host.log().clear();
        f.focalizza(10);
        f.aggiungi({12});
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral(
                     "Anagrafiche non importate:\nCliente 12 nodo è già un nodo figlio nella struttura.\n")}));
    }

    // A parent another clerk removed meanwhile takes no children; a failing insert is reported
    // and the batch can go on.
    void goneParentAndFailingInsert()
    {
        Distinte f;
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(12);
        f.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n12));
        f.aggiungi({14});
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Il nodo è stato eliminato da un altro utente dopo la lettura: "
                                             "la distinta viene ricaricata.")}));
        QCOMPARE(f.righe(14), 0);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "13"}));

        f.host.log().clear();
        f.exec(QStringLiteral("CREATE TRIGGER NO_15 BEFORE INSERT ON GD02_DISTINTA WHEN NEW.GD02_CLIFOR_CG44 = 15 "
                              "BEGIN SELECT RAISE(ABORT, 'rifiutato'); END"));
        f.host.log().setDefaultAnswer(fw::Answer::Ignore);
        f.focalizza(11);
        f.aggiungi({14, 15, 16});
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().at(0).procedure, QStringLiteral("InserisciNodo"));
        QCOMPARE(f.righe(14) + f.righe(15) + f.righe(16), 2);
        QCOMPARE(f.cellaLista(15, QStringLiteral("AssociatoInDistinta")).toInt(), 0);
    }

    // A check whose statement fails refuses the subject without a line of its own and without a
    // dialog of its own; the count says it was not added, and the trace keeps the error.
    void aFailingCheckRefusesQuietly()
    {
        Distinte f;
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(11);
        QTemporaryDir folder;
        const QString trace = folder.filePath(QStringLiteral("trace.sql"));
        qputenv("DISTINTA_SQL_TRACE", QFile::encodeName(trace));
        f.exec(QStringLiteral("ALTER TABLE CG16_ANAGGEN RENAME TO CG16_ALTROVE"));
        f.host.log().setDefaultAnswer(fw::Answer::Ignore); // the reload that follows fails too
        f.aggiungi({14});
        qunsetenv("DISTINTA_SQL_TRACE");
        QCOMPARE(f.righe(14), 0);
        for (const QString &text : f.host.log().messageTexts())
            QVERIFY2(!text.startsWith(QStringLiteral("Anagrafiche non importate")), qPrintable(text));
        for (const auto &dialog : f.host.log().errorDialogs())
            QVERIFY2(dialog.procedure != QLatin1String("InserisciNodo"), qPrintable(dialog.procedure));
        QCOMPARE(f.host.statusBar().currentMessage(),
                 QStringLiteral("Anagrafiche aggiunte alla distinta: 0; non importate: 1."));
        QFile file(trace);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString written = QString::fromUtf8(file.readAll());
        const qsizetype overlap = written.indexOf(QStringLiteral(" SELECT CG44_CLIFOR AS Anagrafica"));
        QVERIFY(overlap >= 0);
        QVERIFY(written.indexOf(QStringLiteral("GO\n-- errore: "), overlap) > overlap);
    }
};

QTEST_MAIN(TestDistintaInserimento)
#include "tst_distinta_inserimento.moc"
