#include "tests/forms/storicofixture.h"

#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/finestrastorico.h"
#include "framework/hostglobalservices.h"
#include "framework/workflowstatecontrol.h"

#include <QCheckBox>

// The journal of the editor's writes, and undo and redo through it: each action is one
// operation with the rows it touched, another program's writes are recorded too, and an undo
// brings back exactly what was there, or refuses and changes nothing.
class TestDistintaStorico : public QObject
{
    Q_OBJECT

    using Albero = StoricoFixture;

private slots:
    // On the demo company: a branch removed, seen in "Storico", undone with Ctrl+Z and found
    // back whole; the classification's window and the comparison answer. With DISTINTA_SHOTS_DIR
    // set, pictures of each step are saved there.
    void theDemoCompanysBranchComesBack()
    {
        DistintaFixture f(TestDatabase::DemoData);
        f.apri();
        QVERIFY(f.attiva());
        const auto righe = [&] {
            QStringList rows;
            for (const QString &table :
                 {QStringLiteral("GD02_DISTINTA"), QStringLiteral("GD12_PROMO"), QStringLiteral("WF02_STATORIGA")}) {
                const db::RecordsetPtr all = f.host.database().connection()->openRecordset(
                    QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(table));
                for (int row = 0; row < all->recordCount(); ++row) {
                    QStringList values;
                    for (int field = 0; field < all->fieldCount(); ++field)
                        values << all->valueAt(row, field).toString();
                    rows << values.join(QLatin1Char('|'));
                }
            }
            return rows;
        };
        const QStringList before = righe();
        // The first root with children.
        fw::TreeListNode branch = f.albero()->firstNode();
        while (branch.isValid() && !(branch.level() == 0 && branch.next().isValid() && branch.next().level() == 1))
            branch = branch.next();
        QVERIFY(branch.isValid());
        const int shown = f.albero()->count();
        f.albero()->setFocusedNode(branch);
        f.host.log().setDefaultAnswer(fw::Answer::Yes);
        f.premi(QStringLiteral("CMD_REMANAGR"));
        f.host.log().setDefaultAnswer(0);
        QVERIFY(f.albero()->count() < shown);
        QVERIFY(righe() != before);

        auto *pagine = f.control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"));
        pagine->setCurrentIndex(3);
        f.control<QCheckBox>(QStringLiteral("CHK_STORICOSOGGETTO"))->setChecked(true);
        f.attendi();
        f.premi(QStringLiteral("CMD_STORICO"));
        distinta::FinestraStorico *finestra = f.form->parti().storico.finestraStorico();
        QVERIFY(finestra);
        QVERIFY(finestra->modello().rowCount() > 0);
        QCOMPARE(finestra->modello().voci().last().operazione, QStringLiteral("Eliminazione"));
        foto(finestra, QStringLiteral("storico_finestra.png"));
        finestra->close();

        QVERIFY(f.attiva());
        f.host.log().clear();
        QTest::keyClick(f.albero()->view(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join(u'\n')));
        QCOMPARE(righe(), before);
        QCOMPARE(f.albero()->count(), shown);
        f.attendi();
        foto(f.form->window(), QStringLiteral("storico_dopo_annulla.png"));

        f.premi(QStringLiteral("CMD_CONFRONTA"));
        distinta::FinestraConfronto *confronto = f.form->parti().storico.finestraConfronto();
        QVERIFY(confronto);
        confronto->findChild<QLineEdit *>(QStringLiteral("TXT_DATAA"))->setText(QStringLiteral("01/01/2024"));
        confronto->findChild<QLineEdit *>(QStringLiteral("TXT_DATAB"))->setText(QStringLiteral("01/07/2025"));
        QVERIFY(confronto->CMD_ESEGUICONFRONTO_Click());
        QVERIFY(!confronto->differenze().isEmpty());
        foto(confronto, QStringLiteral("confronto_date.png"));
    }

    // A branch removed with everything that hangs on it is one operation; Ctrl+Z brings back the
    // very rows (ids, guids, dates, campaigns, workflow states), Ctrl+Y takes them away again, and
    // the journal says which operation reversed which.
    void removedBranchComesBackWhole()
    {
        Albero f;
        const QStringList before = f.righe();
        f.apri();
        QVERIFY(f.attiva());
        QVERIFY(!f.abilitato(QStringLiteral("CMD_ANNULLA")));
        QVERIFY(!f.abilitato(QStringLiteral("CMD_RIPETI")));

        f.rimuovi(11, {fw::Answer::Yes, fw::Answer::Yes, fw::Answer::Yes, fw::Answer::Yes});
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".15", "16"}));
        const QStringList removed = f.righe();
        QCOMPARE(f.operazioni(), QStringList({"Eliminazione/0///0"}));
        const auto key = [](qint64 id) { return QString::number(id); };
        QStringList expected {QStringLiteral("GD02_DISTINTA D ") + key(f.n11),
                              QStringLiteral("GD02_DISTINTA D ") + key(f.n12),
                              QStringLiteral("GD02_DISTINTA D ") + key(f.n13),
                              QStringLiteral("GD02_DISTINTA D ") + key(f.n14),
                              QStringLiteral("GD12_PROMO D 1"),
                              QStringLiteral("GD12_PROMO D 2")};
        QStringList journal = f.righeUltimaOperazione();
        QCOMPARE(journal.mid(0, 6), expected);
        QCOMPARE(journal.size(), 10); // and the four workflow states
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 IS NULL")).toInt(),
                 0);
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD90_UTENTE || '/' || GD90_DITTA_CG18 || '/' || GD90_ID_GD01 "
                                         "FROM GD90_OPERAZIONI"))
                     .toString(),
                 QStringLiteral("%1/1/%2").arg(f.host.globals().user()).arg(f.a01));
        QVERIFY(f.abilitato(QStringLiteral("CMD_ANNULLA")));

        f.host.log().clear();
        QTest::keyClick(f.albero()->view(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.host.log().messageTexts(), QStringList());
        QCOMPARE(f.righe(), before);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "..12", "...13", "....14", ".15", "16"}));
        QCOMPARE(f.operazioni(), QStringList({"Eliminazione/0//2/0", "Annullamento/1/1//0"}));
        QVERIFY(!f.abilitato(QStringLiteral("CMD_ANNULLA")));
        QVERIFY(f.abilitato(QStringLiteral("CMD_RIPETI")));

        QTest::keyClick(f.albero()->view(), Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(f.righe(), removed);
        QCOMPARE(f.operazioni().last(), QStringLiteral("Ripristino/2/2//0"));
        QVERIFY(!f.abilitato(QStringLiteral("CMD_RIPETI")));

        // The redo is an operation like any other: undone, the branch is back once more.
        QTest::keyClick(f.albero()->view(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.righe(), before);
        QVERIFY(f.host.log().isQuiet());
    }

    // An insertion of ticked subjects, a move and a date typed in the tree: each is one
    // operation, and each undo leaves the rows as they were.
    void everyActionIsOneOperationAndUndoes()
    {
        Albero f;
        f.apri();
        QStringList before = f.righe();
        f.paginaAnagrafiche();
        f.focalizza(16);
        for (int code : {17, 18, 19})
            f.spunta(code);
        f.attendi();
        f.premi(QStringLiteral("CMD_ADDANAGR"));
        QCOMPARE(f.operazioni(), QStringList({"Inserimento/0///0"}));
        QCOMPARE(f.righeUltimaOperazione().size(), 3);
        for (const QString &row : f.righeUltimaOperazione())
            QVERIFY2(row.startsWith(QStringLiteral("GD02_DISTINTA I ")), qPrintable(row));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.righe(), before);

        before = f.righe();
        f.scriviData(15, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        QCOMPARE(f.testo(QStringLiteral("SELECT GD02_DATAFINEVAL FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n15)),
                 QStringLiteral("2025-06-30 00:00:00"));
        QCOMPARE(f.operazioni().last(), QStringLiteral("Modifica/0///0"));
        QCOMPARE(f.righeUltimaOperazione(), QStringList(QStringLiteral("GD02_DISTINTA U %1").arg(f.n15)));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.righe(), before);

        f.focalizza(15);
        QTest::keyClick(f.albero()->view(), Qt::Key_X, Qt::ControlModifier);
        f.focalizza(16);
        f.host.log().answerNext(fw::Answer::Yes);
        QTest::keyClick(f.albero()->view(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.operazioni().last(), QStringLiteral("Spostamento/0///0"));
        QCOMPARE(f.codiciAlbero().last(), QStringLiteral(".15"));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.righe(), before);
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD90_OPERAZIONI WHERE GD90_INDAPERTA <> 0")).toInt(), 0);
    }

    // A state chosen for a node, and a node's state handed on to its branch, are the user's own
    // operations like any other: they name their rows, and undo and redo.
    void statesChosenInTheEditorAreItsOperations()
    {
        Albero f;
        f.exec(QStringLiteral("INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, "
                              "WF01_FLGDEFAULT, WF01_ORDINE) VALUES (3, 'DISTINTA', 'APPROV', 'Approvato', 1, 3), "
                              "(5, 'DISTINTA', 'BLOCC', 'Bloccato', 0, 5)"));
        f.apri();
        const QStringList before = f.righe();
        const auto statoDi = [&f](qint64 node) {
            return f
                .scalar(QStringLiteral("SELECT WF02_ID || '/' || WF02_ID_WF01 FROM WF02_STATORIGA "
                                       "INNER JOIN GD02_DISTINTA ON WF02_GUID = gd02_guid WHERE GD02_ID = %1")
                            .arg(node))
                .toString();
        };
        const QString key11 = statoDi(f.n11).section(u'/', 0, 0);

        f.focalizza(11);
        auto *combo = f.control<fw::WorkflowStateControl>(QStringLiteral("TXT_GD02_STATO"))->findChild<QComboBox *>();
        combo->setCurrentIndex(combo->findData(5));
        emit combo->activated(combo->currentIndex());
        QCOMPARE(statoDi(f.n11), key11 + QStringLiteral("/5"));
        QCOMPARE(f.operazioni(), QStringList({"Modifica/0///0"}));
        QCOMPARE(f.righeUltimaOperazione(), QStringList(QStringLiteral("WF02_STATORIGA U ") + key11));

        f.comando(11, QStringLiteral("mnuRilasciaFigli"));
        QCOMPARE(f.operazioni().last(), QStringLiteral("Propagazione/0///0"));
        QCOMPARE(f.righeUltimaOperazione().size(), 3);
        for (qint64 node : {f.n12, f.n13, f.n14})
            QVERIFY(statoDi(node).endsWith(QStringLiteral("/5")));
        const QStringList released = f.righe();

        f.premi(QStringLiteral("CMD_ANNULLA"));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.righe(), before);
        f.premi(QStringLiteral("CMD_RIPETI"));
        f.premi(QStringLiteral("CMD_RIPETI"));
        QCOMPARE(f.righe(), released);
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 IS NULL")).toInt(),
                 0);
    }

    // A write by another program is journaled without an operation, with the row's own stamp;
    // it is nobody's action in the editor, so it gives nothing to undo.
    void anotherProgramsWriteIsRecorded()
    {
        Albero f;
        f.apri();
        f.altroProgramma(
            QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Da listino', GD02_UTENTEVAR = 'script', "
                           "GD02_GRUPPOVAR = 'batch' WHERE GD02_ID = %1")
                .arg(f.n16));
        QCOMPARE(f.testo(QStringLiteral("SELECT COALESCE(GD91_ID_GD90, 'esterna') || '/' || GD91_AZIONE || '/' || "
                                        "GD91_CHIAVE || '/' || GD91_UTENTE || '/' || GD91_GRUPPO || '/' || "
                                        "(json_extract(GD91_PRIMA, '$.GD02_DESCR') IS NULL) || '/' || "
                                        "json_extract(GD91_DOPO, '$.GD02_DESCR') FROM GD91_RIGHESTORICO")),
                 QStringLiteral("esterna/U/%1/script/batch/1/Da listino").arg(f.n16));
        f.form->parti().annullamento.aggiornaComandi();
        QVERIFY(!f.abilitato(QStringLiteral("CMD_ANNULLA")));
        // Writing a row as it is records nothing.
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = GD02_DESCR"));
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO")).toInt(), 1);
    }

    // What another program changed in columns the operation left alone stays: the undo sets back
    // only what the operation wrote.
    void undoKeepsOtherColumnsChangedSince()
    {
        Albero f;
        f.apri();
        f.scriviData(15, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Altro' WHERE GD02_ID = %1").arg(f.n15));
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.testo(QStringLiteral("SELECT GD02_DESCR || '/' || GD02_DATAFINEVAL FROM GD02_DISTINTA "
                                        "WHERE GD02_ID = %1")
                             .arg(f.n15)),
                 QStringLiteral("Altro/2099-12-31 00:00:00"));
    }

    // A row changed since the operation, or a subject brought back into an overlapping link:
    // the undo is refused with the rows named, and nothing changes.
    void undoRefusedWhenTheRowsMovedOn()
    {
        Albero f;
        f.apri();
        f.scriviData(15, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DATAFINEVAL = '2025-03-31 00:00:00' "
                                        "WHERE GD02_ID = %1")
                             .arg(f.n15));
        const QStringList before = f.righe();
        const QStringList operations = f.operazioni();
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Operazione non annullata: dopo di essa sono cambiate queste righe:\n"
                                            "Nodo %1 (Cliente 15)\n")
                                 .arg(f.n15)));
        QCOMPARE(f.righe(), before);
        QCOMPARE(f.operazioni(), operations);

        // The removed leaf's subject is linked again meanwhile, over the same period.
        f.rimuovi(16);
        f.altroProgramma(QStringLiteral("INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, "
                                        "GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL) "
                                        "VALUES (%1, %2, 1, 0, 16, '2024-06-01 00:00:00', '2024-12-31 00:00:00')")
                             .arg(f.a01)
                             .arg(f.n15));
        const QStringList linked = f.righe();
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Operazione non annullata:\nCliente 16 già legato alla distinta A01 - "
                                            "Tutti i clienti: Nodo padre 15 - Cliente 15 nel periodo dal 01/06/2024 "
                                            "al 31/12/2024\n")));
        QCOMPARE(f.righe(), linked);

        // A node inserted, then given a child by another program: its undo would take the child
        // with it, and is refused.
        f.paginaAnagrafiche();
        f.focalizza(15);
        f.spunta(17);
        f.attendi();
        f.premi(QStringLiteral("CMD_ADDANAGR"));
        const qint64 n17 = f.scalar(QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 = 17"))
                               .toLongLong();
        f.altroProgramma(QStringLiteral("INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, "
                                        "GD02_TIPOCF_CG44, GD02_CLIFOR_CG44) VALUES (%1, %2, 1, 0, 18)")
                             .arg(f.a01)
                             .arg(n17));
        const qint64 n18 = f.scalar(QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 = 18"))
                               .toLongLong();
        const QStringList grown = f.righe();
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Operazione non annullata: toccherebbe anche righe aggiunte dopo di essa:\n"
                                            "Nodo %1\n")
                                 .arg(n18)));
        QCOMPARE(f.righe(), grown);
    }

    // A propagation journals only the billing it changed and the stamp it replaced: undone, the
    // rows are as they were, stamps too; once another program has changed one of them since, the
    // undo names that node by its subject and changes nothing.
    void aPropagationIsUndoneFromWhatItChanged()
    {
        Albero f;
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 4, GD02_CLIFORFATT_CG44 = 19, "
                              "GD02_DATAVAR = '2024-01-01 00:00:00', GD02_UTENTEVAR = 'bianchi'"));
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 0, GD02_CLIFORFATT_CG44 = NULL "
                              "WHERE GD02_ID IN (%1, %2, %3)")
                   .arg(f.n12)
                   .arg(f.n13)
                   .arg(f.n14));
        f.exec(QStringLiteral("DELETE FROM GD91_RIGHESTORICO"));
        f.apri();
        const QStringList before = f.righe();
        f.comando(11, QStringLiteral("mnuPropagaFigli"));
        QCOMPARE(f.operazioni().last(), QStringLiteral("Propagazione/0///0"));
        QCOMPARE(
            f.testo(QStringLiteral("SELECT GD91_PRIMA || ' ' || GD91_DOPO FROM GD91_RIGHESTORICO "
                                   "WHERE GD91_CHIAVE = %1")
                        .arg(f.n13)),
            QStringLiteral(R"({"GD02_TIPOANAGFATT":0,"GD02_CLIFORFATT_CG44":null,)"
                           R"("GD02_DATAVAR":"2024-01-01 00:00:00","GD02_GRUPPOVAR":null,"GD02_UTENTEVAR":"bianchi"} )"
                           R"({"GD02_TIPOANAGFATT":4,"GD02_CLIFORFATT_CG44":19})"));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.righe(), before);

        f.premi(QStringLiteral("CMD_RIPETI"));
        f.altroProgramma(
            QStringLiteral("UPDATE GD02_DISTINTA SET GD02_CLIFORFATT_CG44 = 18 WHERE GD02_ID = %1").arg(f.n13));
        const QStringList changed = f.righe();
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Operazione non annullata: dopo di essa sono cambiate queste righe:\n"
                                            "Nodo %1 (Cliente 13)\n")
                                 .arg(f.n13)));
        QCOMPARE(f.righe(), changed);
    }

    // Undo is the user's own last standing operation; a new action ends what could be redone.
    void aNewActionEndsTheRedo()
    {
        Albero f;
        f.apri();
        f.rimuovi(15);
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QVERIFY(f.abilitato(QStringLiteral("CMD_RIPETI")));
        f.rimuovi(16);
        QVERIFY(!f.abilitato(QStringLiteral("CMD_RIPETI")));
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(f.codiciAlbero().last(), QStringLiteral("16"));
        // 15's removal was undone already: the next Ctrl+Z has nothing left of the user's.
        QVERIFY(!f.abilitato(QStringLiteral("CMD_ANNULLA")));
    }

    // A journal table dropped by hand: every write fails with the database's own words in the
    // error dialog, and nothing is written without its journal.
    void aJournalTableDroppedByHandStopsTheWrites()
    {
        Albero f;
        f.apri();
        f.altroProgramma(QStringLiteral("DROP TABLE GD91_RIGHESTORICO"));
        const QStringList before = f.righe();
        f.rimuovi(15, {fw::Answer::Abort});
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        const QString said = f.host.log().errorDialogs().constFirst().errors.join(u'\n');
        QVERIFY2(said.contains(QStringLiteral("Lo storico delle modifiche è incompleto (manca la tabella "
                                              "GD91_RIGHESTORICO): la modifica non è stata salvata.")),
                 qPrintable(said));
        QCOMPARE(f.righe(), before);
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD90_OPERAZIONI")).toInt(), 0);
    }

    // A database whose journal was never installed: the editor writes as before and says once
    // that there is no history.
    void withoutTheJournalTheEditorSaysSoOnce()
    {
        Albero f;
        {
            dbsetup::SqliteFile file(f.host.database().path());
            for (const char *trigger : {"GD01", "GD02", "GD03", "GD12", "WF02"})
                for (const char *kind : {"INSERT", "UPDATE", "DELETE"})
                    file.exec(QStringLiteral("DROP TRIGGER TR_%1_STORICO_%2")
                                  .arg(QLatin1String(trigger), QLatin1String(kind)));
            file.exec(QStringLiteral("DROP TABLE GD91_RIGHESTORICO; DROP TABLE GD90_OPERAZIONI"));
        }
        f.apri();
        f.rimuovi(15);
        f.rimuovi(16);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Lo storico delle modifiche non è installato in questo database: le "
                                            "modifiche vengono salvate senza storico e non si possono annullare.")));
        QCOMPARE(f.codiciAlbero().size(), 5);
        QVERIFY(!f.abilitato(QStringLiteral("CMD_ANNULLA")));
    }
};

QTEST_MAIN(TestDistintaStorico)
#include "tst_distinta_storico.moc"