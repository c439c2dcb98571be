#include "tests/forms/storicofixture.h"

#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/finestrastorico.h"
#include "forms/distinta/modellostorico.h"
#include "framework/hostglobalservices.h"

#include <QCheckBox>

// The journal read back: the page under the tree, the classification's window and its undo of
// any operation, the comparison of two days.
class TestDistintaConsultazione : public QObject
{
    Q_OBJECT

    using Albero = StoricoFixture;

private slots:
    // The page under the tree says the focused node's changes as sentences, newest first; the
    // switch widens it to the subject in every classification; the lines go to a file with the
    // columns a clerk's spreadsheet expects.
    void theHistoryPageSaysWhatChanged()
    {
        Albero f;
        const qint64 b01 = f.tipo(0, QStringLiteral("B01"), QStringLiteral("Storico"));
        const qint64 altro = f.nodo(b01, 0, 15);
        f.apri();
        f.paginaAnagrafiche();
        f.focalizza(16);
        f.spunta(17);
        f.attendi();
        f.premi(QStringLiteral("CMD_ADDANAGR"));
        f.scriviData(15, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Filiale', GD02_UTENTEVAR = 'script' "
                                        "WHERE GD02_ID = %1")
                             .arg(altro));

        auto *pagine = f.control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"));
        pagine->setCurrentIndex(3);
        f.focalizza(17);
        f.attendi();
        const distinta::ModelloStorico &modello = f.form->parti().dettagli.storico().modello();
        const auto righe = [&] {
            QStringList lines;
            for (int row = 0; row < modello.rowCount(); ++row)
                lines << modello.index(row, distinta::ModelloStorico::Operazione).data().toString() + QLatin1Char('|')
                        + modello.index(row, distinta::ModelloStorico::Distinta).data().toString() + QLatin1Char('|')
                        + modello.index(row, distinta::ModelloStorico::Modifica).data().toString();
            return lines;
        };
        QCOMPARE(righe(),
                 QStringList(QStringLiteral("Inserimento|A01 - Tutti i clienti|Inserito sotto 16 Cliente 16 dal "
                                            "01/01/2024 al 31/12/2099")));
        QCOMPARE(modello.index(0, distinta::ModelloStorico::Utente).data().toString(), f.host.globals().user());

        f.focalizza(15);
        f.attendi();
        QCOMPARE(righe(),
                 QStringList(QStringLiteral("Modifica|A01 - Tutti i clienti|Data fine: 31/12/2099 → 30/06/2025")));
        f.control<QCheckBox>(QStringLiteral("CHK_STORICOSOGGETTO"))->setChecked(true);
        // The other classification's node was written by the set-up, then changed by a script.
        QCOMPARE(righe(),
                 QStringList({QStringLiteral("Modifica esterna|B01 - Storico|Descrizione:  → Filiale"),
                              QStringLiteral("Modifica|A01 - Tutti i clienti|Data fine: 31/12/2099 → 30/06/2025"),
                              QStringLiteral("Modifica esterna|B01 - Storico|Inserito come capostipite dal "
                                             "01/01/2024 al 31/12/2099")}));
        QCOMPARE(modello.index(0, distinta::ModelloStorico::Utente).data().toString(), QStringLiteral("script"));

        QTemporaryDir folder;
        const QString csv = folder.filePath(QStringLiteral("storico.csv"));
        distinta::LetturaStorico::esporta(modello.voci(), csv, fw::ExportFile::Format::Csv, QStringLiteral("Storico"));
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
        const QStringList lines = QString::fromUtf8(bytes.mid(3)).split(QStringLiteral("\r\n"));
        QCOMPARE(lines.at(0),
                 QStringLiteral("Data e ora;Utente;Gruppo;Computer;Operazione;Distinta;Soggetto;Campo;"
                                "Prima;Dopo"));
        QVERIFY2(lines.at(2).endsWith(QStringLiteral(";Modifica;A01 - Tutti i clienti;15 Cliente 15;Data fine;"
                                                     "31/12/2099;30/06/2025")),
                 qPrintable(lines.at(2)));
    }

    // Two days of a classification compared: what the links' periods say at their very
    // boundaries, and what only the journal knows (a move, a description).
    void twoDaysCompared()
    {
        Albero f;
        f.nodo(f.a01, 0, 17, {.parent = f.n10, .start = QStringLiteral("2025-01-01")});
        f.nodo(f.a01, 0, 18, {.end = QStringLiteral("2024-12-31")});
        f.exec(QStringLiteral("DELETE FROM GD91_RIGHESTORICO"));
        f.apri();
        f.premi(QStringLiteral("CMD_CONFRONTA"));
        distinta::FinestraConfronto *finestra = f.form->parti().storico.finestraConfronto();
        QVERIFY(finestra);
        const auto confronta = [&](const QString &a, const QString &b) {
            finestra->findChild<QLineEdit *>(QStringLiteral("TXT_DATAA"))->setText(a);
            finestra->findChild<QLineEdit *>(QStringLiteral("TXT_DATAB"))->setText(b);
            finestra->findChild<QPushButton *>(QStringLiteral("CMD_ESEGUICONFRONTO"))->click();
            QStringList lines;
            for (const distinta::Differenza &d : finestra->differenze())
                lines << d.esito + QLatin1Char('|') + d.soggetto + QLatin1Char('|') + d.dettaglio;
            return lines;
        };
        QCOMPARE(
            confronta(QStringLiteral("31/12/2024"), QStringLiteral("01/01/2025")),
            QStringList({QStringLiteral("Aggiunto|17 Cliente 17|sotto 10 Cliente 10 dal 01/01/2025 al 31/12/2099"),
                         QStringLiteral("Terminato|18 Cliente 18|come capostipite dal 01/01/2024 al 31/12/2024")}));
        QCOMPARE(confronta(QStringLiteral("01/01/2025"), QStringLiteral("01/01/2025")), QStringList());
        QVERIFY(f.host.log().isQuiet());

        f.focalizza(15);
        QTest::keyClick(f.albero()->view(), Qt::Key_X, Qt::ControlModifier);
        f.focalizza(16);
        f.host.log().answerNext(fw::Answer::Yes);
        QTest::keyClick(f.albero()->view(), Qt::Key_V, Qt::ControlModifier);
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Sede' WHERE GD02_ID = %1").arg(f.n16));
        f.host.log().clear();
        const QString ieri = QDate::currentDate().addDays(-1).toString(QStringLiteral("dd/MM/yyyy"));
        const QString oggi = QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
        QCOMPARE(confronta(ieri, oggi),
                 QStringList({QStringLiteral("Spostato|15 Cliente 15|Padre: 10 Cliente 10 → 16 Cliente 16"),
                              QStringLiteral("Modificato|16 Cliente 16|Descrizione:  → Sede")}));

        // Backwards, or not a date: said, and the list stays as it was.
        QCOMPARE(confronta(oggi, ieri).size(), 2);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("La prima data (%1) è successiva alla seconda (%2): indicare prima la data "
                                            "più vecchia.")
                                 .arg(oggi, ieri)));
        f.host.log().clear();
        confronta(QStringLiteral("31/02/2025"), oggi);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Indicare le due date da confrontare nel formato gg/mm/aaaa.")));
    }

    // The classification's window lists the operations of the days asked; any of them is undone
    // after a question that says whose it is and what it changes, and only once.
    void theHistoryWindowUndoesAnyOperation()
    {
        Albero f;
        // Older than the editor's: another program's change of a node, and an operation of the
        // type maintenance, which names no classification (the type's row says which).
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Sede' WHERE GD02_ID = %1; BEGIN; "
                                        "INSERT INTO GD90_OPERAZIONI (GD90_DITTA_CG18, GD90_OPERAZIONE, GD90_DATAORA, "
                                        "GD90_INDAPERTA) VALUES (1, 'Modifica', datetime('now', 'localtime'), 1); "
                                        "UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Clienti' WHERE GD01_ID = %2; "
                                        "UPDATE GD90_OPERAZIONI SET GD90_INDAPERTA = 0; COMMIT")
                             .arg(f.n16)
                             .arg(f.a01));
        f.apri();
        f.rimuovi(15);
        f.scriviData(16, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        const QStringList afterBoth = f.righe();
        f.premi(QStringLiteral("CMD_STORICO"));
        distinta::FinestraStorico *finestra = f.form->parti().storico.finestraStorico();
        QVERIFY(finestra);
        const distinta::ModelloStorico &modello = finestra->modello();
        // Newest first: the edit, then the removal's rows, its workflow state (a state this
        // database has no name for is said by its code) and the node, then the two older ones.
        QCOMPARE(modello.rowCount(), 5);
        QCOMPARE(modello.index(3, distinta::ModelloStorico::Operazione).data().toString(), QStringLiteral("Modifica"));
        QCOMPARE(modello.index(4, distinta::ModelloStorico::Operazione).data().toString(),
                 QStringLiteral("Modifica esterna"));
        QCOMPARE(modello.index(1, distinta::ModelloStorico::Modifica).data().toString(), QStringLiteral("Stato: 3 → "));
        QCOMPARE(modello.index(2, distinta::ModelloStorico::Modifica).data().toString(),
                 QStringLiteral("Eliminato: era sotto 10 Cliente 10 dal 01/01/2024 al 31/12/2099"));

        // The older operation, the removal, undone from the window: the later edit stays.
        finestra->griglia()->setCurrentIndex(modello.index(1, 0));
        const QString quando = modello.voci().at(1).dataOra.toString(QStringLiteral("dd/MM/yyyy HH:mm"));
        f.host.log().clear();
        f.host.log().answerNext(fw::Answer::Yes);
        finestra->findChild<QPushButton *>(QStringLiteral("CMD_ANNULLAOPERAZIONE"))->click();
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Annullare l'operazione \"Eliminazione\" di %1 del %2?\nCambia:\n"
                                            "- Stato: 3 → \n- 15 Cliente 15: Eliminato: era sotto 10 Cliente 10 dal "
                                            "01/01/2024 al 31/12/2099")
                                 .arg(f.host.globals().user(), quando)));
        QVERIFY(f.righe() != afterBoth);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "..12", "...13", "....14", ".15", "16"}));
        QCOMPARE(f.testo(QStringLiteral("SELECT GD02_DATAFINEVAL FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n16)),
                 QStringLiteral("2025-06-30 00:00:00"));

        // The window reads again: the removal's line, chosen once more, is refused as undone.
        int removal = int(modello.rowCount()) - 1;
        while (removal > 0
               && modello.index(removal, distinta::ModelloStorico::Operazione).data().toString()
                   != QLatin1String("Eliminazione"))
            --removal;
        QCOMPARE(modello.index(removal, distinta::ModelloStorico::Operazione).data().toString(),
                 QStringLiteral("Eliminazione"));
        finestra->griglia()->setCurrentIndex(modello.index(removal, 0));
        f.host.log().clear();
        f.host.log().answerNext(fw::Answer::Yes);
        const QStringList restored = f.righe();
        finestra->findChild<QPushButton *>(QStringLiteral("CMD_ANNULLAOPERAZIONE"))->click();
        QCOMPARE(f.host.log().messageTexts().value(1),
                 QStringLiteral("Operazione non annullata: è già stata annullata."));
        QCOMPARE(f.righe(), restored);

        // Days backwards: said, and the list stays.
        f.host.log().clear();
        finestra->findChild<QLineEdit *>(QStringLiteral("TXT_DAL"))->setText(QStringLiteral("02/01/2025"));
        finestra->findChild<QLineEdit *>(QStringLiteral("TXT_AL"))->setText(QStringLiteral("01/01/2025"));
        QVERIFY(!finestra->CMD_CERCASTORICO_Click());
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList(QStringLiteral("La data iniziale (02/01/2025) è successiva alla data finale (01/01/2025).")));
    }
};

QTEST_MAIN(TestDistintaConsultazione)
#include "tst_distinta_consultazione.moc"
