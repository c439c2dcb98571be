#include "tests/forms/distintafixture.h"

#include "db/sqlitefile.h"
#include "framework/hostglobalservices.h"
#include "forms/distinta/finestraconfronto.h"
#include "forms/distinta/finestrastorico.h"
#include "forms/distinta/modellostorico.h"

#include <QCheckBox>
#include "framework/treelist/treelistdateeditor.h"
#include "framework/treelist/treelistview.h"

// The journal of the editor's writes, and undo and redo through it: each action is one
// operation with the rows it touched, another program's writes are recorded too, and an undo
// brings back exactly what was there, or refuses and changes nothing.
class TestDistintaStorico : public QObject
{
    Q_OBJECT

    // Customers 10..19. A01: 10 > 11 > 12 > 13 > 14, with 15 under 10, and a root 16; in-invoice
    // campaigns on 11 and 14, a workflow state on every node, a contract condition on 14.
    struct Albero : DistintaFixture
    {
        Albero()
        {
            for (int code = 10; code <= 19; ++code)
                soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            n10 = nodo(a01, 0, 10);
            n11 = nodo(a01, 0, 11, {.parent = n10});
            n12 = nodo(a01, 0, 12, {.parent = n11});
            n13 = nodo(a01, 0, 13, {.parent = n12});
            n14 = nodo(a01, 0, 14, {.parent = n13});
            n15 = nodo(a01, 0, 15, {.parent = n10});
            n16 = nodo(a01, 0, 16);
            for (qint64 node : {n11, n14})
                exec(QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) "
                                    "VALUES (1, %1, 7)")
                         .arg(node));
            exec(QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_TABELLA, WF02_ID_WF01, WF02_UTENTECRE) "
                                "SELECT gd02_guid, 'GD02_DISTINTA', 3, 'prima' FROM GD02_DISTINTA"));
            condizione(contratto(14), n14);
            // What the set-up wrote is no one's operation.
            exec(QStringLiteral("DELETE FROM GD91_RIGHESTORICO"));
        }

        // Every row of the three tables an undo restores, every column, in key order.
        QStringList righe()
        {
            QStringList rows;
            for (const QString &table :
                 {QStringLiteral("GD02_DISTINTA"), QStringLiteral("GD12_PROMO"), QStringLiteral("WF02_STATORIGA")}) {
                const db::RecordsetPtr all = host.database().connection()->openRecordset(
                    QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(table));
                for (int row = 0; row < all->recordCount(); ++row) {
                    QStringList values;
                    for (int field = 0; field < all->fieldCount(); ++field)
                        values << all->valueAt(row, field).toString();
                    rows << table + QLatin1Char(':') + values.join(QLatin1Char('|'));
                }
            }
            return rows;
        }
        // The operations, newest last, as "name/kind/reverses/reversed by".
        QStringList operazioni()
        {
            QStringList ops;
            const db::RecordsetPtr all = host.database().connection()->openRecordset(
                QStringLiteral("SELECT GD90_OPERAZIONE, GD90_INDTIPO, GD90_ID_GD90RIF, GD90_ID_GD90ANNULLA, "
                               "GD90_INDAPERTA FROM GD90_OPERAZIONI ORDER BY GD90_ID"));
            for (int row = 0; row < all->recordCount(); ++row)
                ops << QStringLiteral("%1/%2/%3/%4/%5")
                           .arg(all->valueAt(row, 0).toString(), all->valueAt(row, 1).toString(),
                                all->valueAt(row, 2).toString(), all->valueAt(row, 3).toString(),
                                all->valueAt(row, 4).toString());
            return ops;
        }
        // The journal's rows of the newest operation, as "table action key", in the order written.
        QStringList righeUltimaOperazione()
        {
            QStringList rows;
            const db::RecordsetPtr all = host.database().connection()->openRecordset(QStringLiteral(
                "SELECT GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE FROM GD91_RIGHESTORICO "
                "WHERE GD91_ID_GD90 = (SELECT MAX(GD90_ID) FROM GD90_OPERAZIONI) ORDER BY GD91_TABELLA, GD91_CHIAVE"));
            for (int row = 0; row < all->recordCount(); ++row)
                rows << QStringLiteral("%1 %2 %3")
                            .arg(all->valueAt(row, 0).toString(), all->valueAt(row, 1).toString(),
                                 all->valueAt(row, 2).toString());
            return rows;
        }
        bool abilitato(const QString &button) { return control<QPushButton>(button)->isEnabled(); }
        void rimuovi(int code, std::initializer_list<int> answers = {})
        {
            focalizza(code);
            host.log().answerNext(answers);
            premi(QStringLiteral("CMD_REMANAGR"));
        }
        void scriviData(int code, const QString &column, const QString &text)
        {
            focalizza(code);
            albero()->editCell(albero()->focusedNode(), column);
            auto *editor = albero()->view()->viewport()->findChild<fw::TreeListDateEditor *>();
            QVERIFY(editor);
            editor->setText(text);
            QTest::keyClick(editor, Qt::Key_Return);
            attendi();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        // A text read in SQLite's own dialect, untranslated (the journal's JSON functions).
        QString testo(const QString &sql)
        {
            dbsetup::SqliteFile file(host.database().path(), dbsetup::SqliteFile::Access::ReadOnly);
            dbsetup::SqliteStatement statement = file.prepare(sql);
            return statement.step() ? statement.columnText(0) : QString();
        }
        // Another program's write, on a connection of its own that knows nothing of the editor.
        void altroProgramma(const QString &sql)
        {
            dbsetup::SqliteFile other(host.database().path());
            other.exec(sql);
        }

        qint64 a01 = 0, n10 = 0, n11 = 0, n12 = 0, n13 = 0, n14 = 0, n15 = 0, n16 = 0;
    };

    static void foto(QWidget *widget, const QString &name)
    {
        const QString folder = qEnvironmentVariable("DISTINTA_SHOTS_DIR");
        if (folder.isEmpty())
            return;
        QCoreApplication::processEvents();
        QVERIFY(widget->grab().save(QDir(folder).filePath(name)));
    }

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

    // A row changed since the operation, or a subject brought back into an overlapping link:
    // the undo is refused with the rows named, and nothing changes.
    void undoRefusedWhenTheRowsMovedOn()
    {
        Albero f;
        f.apri();
        f.scriviData(15, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        f.altroProgramma(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'Altro' WHERE GD02_ID = %1").arg(f.n15));
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
        f.apri();
        f.rimuovi(15);
        f.scriviData(16, QStringLiteral("trGD02_DATAFINEVAL"), QStringLiteral("30/06/2025"));
        const QStringList afterBoth = f.righe();
        f.premi(QStringLiteral("CMD_STORICO"));
        distinta::FinestraStorico *finestra = f.form->parti().storico.finestraStorico();
        QVERIFY(finestra);
        const distinta::ModelloStorico &modello = finestra->modello();
        // Newest first: the edit, then the removal's rows, its workflow state (a state this
        // database has no name for is said by its code) and the node.
        QCOMPARE(modello.rowCount(), 3);
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
        const int removal = int(modello.rowCount()) - 1;
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
