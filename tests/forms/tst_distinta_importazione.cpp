#include "tests/forms/distintafixture.h"

#include "forms/distinta/comandoimportazione.h"
#include "forms/distinta/finestraimportazione.h"

#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

// The import into the open classification: every row's fate in the dry run with the editor's
// own texts, the accepted rows written as one operation, nothing written when the database
// moved on since the dry run, and the round trip of an exported classification.
class TestDistintaImportazione : public QObject
{
    Q_OBJECT

    // Customers 1..8; CLI01 and CLI02 of division NORD. In CLI01: 1, with 2 under it; in
    // CLI02: 6, a root.
    struct Clienti : DistintaFixture
    {
        Clienti()
        {
            const QStringList nomi {u"Uno"_s,    u"Due"_s, u"Tre"_s,   u"Quattro"_s,
                                    u"Cinque"_s, u"Sei"_s, u"Sette"_s, u"Otto"_s};
            for (int code = 1; code <= nomi.size(); ++code)
                soggetto(0, code, QStringLiteral("Cliente ") + nomi.at(code - 1));
            const qint64 nord = divisione(u"NORD"_s, u"Nord"_s);
            cli01 = tipo(0, u"CLI01"_s, u"Clienti Nord"_s, nord);
            cli02 = tipo(0, u"CLI02"_s, u"Altri Nord"_s, nord);
            n1 = nodo(cli01, 0, 1);
            n2 = nodo(cli01, 0, 2, {.parent = n1});
            nodo(cli02, 0, 6);
            apri();
            clicca(QStringLiteral("C%1").arg(cli01));
        }
        distinta::ComandoImportazione &importazione() { return form->parti().importazione; }
        qint64 cli01, cli02, n1, n2;
    };

    QTemporaryDir m_cartella;

    QString scrivi(const QString &nome, const QStringList &righe)
    {
        const QString percorso = m_cartella.filePath(nome);
        QFile file(percorso);
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write((righe.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
        return percorso;
    }

    // "line|fate" for each row of the report.
    static QStringList esiti(distinta::FinestraImportazione *finestra)
    {
        QStringList lines;
        const auto *grid = finestra->findChild<QTableWidget *>(QStringLiteral("GRD_IMPORTA"));
        for (int row = 0; row < grid->rowCount(); ++row)
            lines << grid->item(row, 0)->text() + u'|' + grid->item(row, 4)->text();
        return lines;
    }

    // Subject, parent's subject, dates, rule, billing code, description and priorities of every
    // node of a type, in a stable order.
    static QStringList nodi(DistintaFixture &f, qint64 type)
    {
        const db::RecordsetPtr rows = f.host.database().connection()->openRecordset(
            QStringLiteral("SELECT F.GD02_CLIFOR_CG44, P.GD02_CLIFOR_CG44, F.GD02_DATAINIZIOVAL, F.GD02_DATAFINEVAL, "
                           "F.GD02_TIPOANAGFATT, F.GD02_CLIFORFATT_CG44, F.GD02_DESCR, F.GD02_IDSTRUTTURA_LP09, "
                           "F.GD02_IDLOCALIZZATA_LP09 FROM GD02_DISTINTA F LEFT OUTER JOIN GD02_DISTINTA P "
                           "ON F.GD02_IDPARENT_GD02 = P.GD02_ID WHERE F.GD02_ID_GD01 = %1 "
                           "ORDER BY F.GD02_CLIFOR_CG44, F.GD02_DATAINIZIOVAL")
                .arg(type));
        QStringList lines;
        for (int row = 0; row < rows->recordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < 9; ++column)
                cells << rows->valueAt(row, column).toString();
            lines << cells.join(u'|');
        }
        return lines;
    }

private slots:
    // A flat file with its rows in no particular order: children before their parents, a row
    // for each way of being refused, and two rows that overlap each other.
    void ogniRigaHaIlSuoEsito()
    {
        Clienti f;
        const QString file = scrivi(u"piatto.csv"_s,
                                    {u"Codice padre;Codice;Data inizio;Data fine;Descrizione"_s,
                                     u"3;4;01/01/2024;31/12/2099;"_s,      // 2: before its parent
                                     u";3;01/01/2024;31/12/2099;"_s,       // 3
                                     u"4;5;01/01/2024;31/12/2099;"_s,      // 4: third level
                                     u"5;3;01/01/2000;31/12/2000;"_s,      // 5: under its own descendant
                                     u"1;2;01/01/2000;31/12/2000;"_s,      // 6: already below that parent
                                     u"1;2;01/01/2024;31/12/2030;Nuova"_s, // 7: the node of 2, changed
                                     u"1;2;01/01/2024;31/12/2099;"_s,      // 8: the same link again
                                     u";1;01/01/2024;31/12/2099;"_s,       // 9: the node of 1 as it is
                                     u"1;6;01/01/2024;31/12/2099;"_s,      // 10: linked in CLI02
                                     u"6;7;01/01/2024;31/12/2099;"_s,      // 11: under 10
                                     u"1;1;01/01/2001;31/12/2001;"_s,      // 12: under itself
                                     u"3;8;01/01/2024;30/06/2024;"_s,      // 13
                                     u"4;8;01/06/2024;31/12/2099;"_s,      // 14: overlaps 13
                                     u"99;8;01/01/2024;31/12/2099;"_s,     // 15
                                     u";7;31/02/2024;31/12/2099;"_s,       // 16
                                     u";7;01/01/2025;01/01/2024;"_s});     // 17
        QVERIFY(f.importazione().provaFile(file));
        distinta::FinestraImportazione *finestra = f.importazione().finestra();
        QVERIFY(finestra);
        const QStringList attesi {
            u"2|Da inserire"_s,
            u"3|Da inserire"_s,
            u"4|Da inserire"_s,
            u"5|Rifiutato: Cliente 3 nodo è già un nodo padre nella struttura."_s,
            u"6|Rifiutato: Cliente 2 nodo è già un nodo figlio nella struttura."_s,
            u"7|Da aggiornare"_s,
            u"8|Riga 8, campo 2 (Codice): il soggetto 2 dal 01/01/2024 compare già alla riga 7"_s,
            u"9|Invariato"_s,
            u"10|Rifiutato: Cliente 6 già legato alla distinta : Nodo capostipite nel periodo dal 01/01/2024 al "
            "31/12/2099"_s,
            u"11|Rifiutato: padre rifiutato"_s,
            u"12|Rifiutato: Cliente 1 uguale al nodo padre, non è possibile salvare la struttura."_s,
            u"13|Da inserire"_s,
            u"14|Rifiutato: Cliente 8 già legato alla distinta CLI01 - Clienti Nord: Nodo padre 3 - Cliente Tre nel "
            "periodo dal 01/01/2024 al 30/06/2024"_s,
            u"15|Riga 15, campo 1 (Codice padre): il soggetto 99 non esiste"_s,
            u"16|Riga 16, campo 3 (Data inizio): \"31/02/2024\" non è una data (gg/mm/aaaa)"_s,
            u"17|Riga 17, campo 4 (Data fine): la data di fine 01/01/2024 è precedente alla data di inizio "
            "01/01/2025"_s,
        };
        QCOMPARE(esiti(finestra), attesi);
        QCOMPARE(finestra->findChild<QLabel *>(QStringLiteral("LBL_RIEPILOGO"))->text(),
                 u"Da inserire: 4; da aggiornare: 1; invariate: 1; rifiutate: 10."_s);
        const QStringList prima = nodi(f, f.cli01);

        // Nothing is written until "Applica"; then the accepted rows, as one operation.
        QCOMPARE(nodi(f, f.cli01), prima);
        const qint64 operazioni = f.scalar(u"SELECT COUNT(*) FROM GD90_OPERAZIONI"_s).toLongLong();
        finestra->applica()->click();
        QVERIFY(!finestra->applica()->isEnabled());
        QCOMPARE(f.scalar(u"SELECT COUNT(*) FROM GD90_OPERAZIONI"_s).toLongLong(), operazioni + 1);
        QCOMPARE(nodi(f, f.cli01),
                 QStringList({u"1||2024-01-01T00:00:00.000|2099-12-31T00:00:00.000|||||"_s,
                              u"2|1|2024-01-01T00:00:00.000|2030-12-31T00:00:00.000|||Nuova||"_s,
                              u"3||2024-01-01T00:00:00.000|2099-12-31T00:00:00.000|0||||"_s,
                              u"4|3|2024-01-01T00:00:00.000|2099-12-31T00:00:00.000|0||||"_s,
                              u"5|4|2024-01-01T00:00:00.000|2099-12-31T00:00:00.000|0||||"_s,
                              u"8|3|2024-01-01T00:00:00.000|2024-06-30T00:00:00.000|0||||"_s}));
        QCOMPARE(f.codiciAlbero().size(), 6);

        // One operation of the history: one undo takes all of it back.
        f.premi(QStringLiteral("CMD_ANNULLA"));
        QCOMPARE(nodi(f, f.cli01), prima);
    }

    // Someone else changed the classification between the dry run and "Applica": nothing is
    // written, the user is told, and the report shows the fates as they now are. Applied then,
    // the rows go into the classification tried, whichever the editor shows meanwhile.
    void nullaSeLaDistintaCambiaDopoLaProva()
    {
        Clienti f;
        const QString file = scrivi(u"cambiata.csv"_s,
                                    {u"Codice padre;Codice;Data inizio;Data fine"_s, u"1;3;01/01/2024;31/12/2099"_s,
                                     u"1;4;01/01/2024;31/12/2099"_s});
        QVERIFY(f.importazione().provaFile(file));
        distinta::FinestraImportazione *finestra = f.importazione().finestra();
        QCOMPARE(esiti(finestra), QStringList({u"2|Da inserire"_s, u"3|Da inserire"_s}));
        f.nodo(f.cli01, 0, 4, {.start = u"2020-01-01"_s});
        const QStringList prima = nodi(f, f.cli01);

        finestra->applica()->click();
        QCOMPARE(nodi(f, f.cli01), prima);
        QVERIFY(f.host.log().messages().last().text.startsWith(
            u"La distinta è cambiata dopo la prova e l'esito di alcune righe non è più lo stesso: nulla è stato "
            "scritto."_s));
        QCOMPARE(esiti(finestra).last(),
                 u"3|Rifiutato: Cliente 4 già legato alla distinta : Nodo capostipite nel periodo dal 01/01/2020 al "
                 "31/12/2099"_s);
        QVERIFY(finestra->applica()->isEnabled());

        const QStringList altra = nodi(f, f.cli02);
        f.clicca(QStringLiteral("C%1").arg(f.cli02));
        finestra->applica()->click();
        QCOMPARE(nodi(f, f.cli02), altra);
        QStringList attesi = prima;
        attesi.insert(2, u"3|1|2024-01-01T00:00:00.000|2099-12-31T00:00:00.000|0||||"_s);
        QCOMPARE(nodi(f, f.cli01), attesi);
    }

    // An end brought before the due date of a definitive bonus is refused with the editor's
    // text; a later end, or a bonus not yet definitive, is not.
    void premioDefinitivo()
    {
        Clienti f;
        f.scadenza(f.condizione(f.contratto(2), f.n2), u"2030-06-30"_s, 2);
        const QString file = scrivi(u"premio.csv"_s,
                                    {u"Codice padre;Codice;Data inizio;Data fine"_s, u"1;2;01/01/2024;31/12/2029"_s,
                                     u";1;01/01/2024;31/12/2040"_s});
        QVERIFY(f.importazione().provaFile(file));
        QCOMPARE(esiti(f.importazione().finestra()),
                 QStringList({u"2|Rifiutato: La data fine è inferiore alla data scadenza di un premio definitivo"_s,
                              u"3|Da aggiornare"_s}));
    }

    // A file whose headings do not say where each row goes is refused whole, and told why.
    void intestazioniSbagliate()
    {
        Clienti f;
        const QStringList casi {u"Codice;Data inizio;Data fine"_s,
                                u"Livello;Codice padre;Codice;Data inizio;Data fine"_s, u"Livello;Codice;Data inizio"_s,
                                u"Livello;Codice;codice;Data inizio;Data fine"_s};
        const QStringList motivi {
            u"Il file deve avere la colonna \"Livello\" (come la esporta la distinta) oppure la colonna \"Codice "
            "padre\", non entrambe."_s,
            u"Il file deve avere la colonna \"Livello\" (come la esporta la distinta) oppure la colonna \"Codice "
            "padre\", non entrambe."_s,
            u"Manca la colonna \"Data fine\"."_s,
            u"L'intestazione \"Codice\" compare due volte (colonne 2 e 3)."_s,
        };
        for (int i = 0; i < casi.size(); ++i) {
            const QString file = scrivi(QStringLiteral("intestazioni%1.csv").arg(i), {casi.at(i), u"1;1;1;1"_s});
            QVERIFY(!f.importazione().provaFile(file));
            QCOMPARE(f.host.log().messages().last().text, motivi.at(i));
        }
        QVERIFY(!f.importazione().finestra());
    }

    // The export's own workbook read back into the emptied classification gives back the same
    // nodes, structure and values.
    void andataERitorno()
    {
        DistintaFixture f(TestDatabase::DemoData);
        f.apri();
        const qint64 tipo = f.scalar(u"SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'CLI-GDO'"_s)
                                .toLongLong();
        const QStringList prima = nodi(f, tipo);
        QVERIFY(prima.size() > 50);
        const QString file = m_cartella.filePath(u"andata.xlsx"_s);
        QVERIFY(
            f.form->EsportaSenzaFinestra(u"CLI-GDO"_s, std::nullopt, std::nullopt, file, fw::ExportFile::Format::Xlsx));

        f.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID_GD01 = %1").arg(tipo));
        f.clicca(QStringLiteral("C%1").arg(tipo));
        QVERIFY(f.form->parti().importazione.provaFile(file));
        distinta::FinestraImportazione *finestra = f.form->parti().importazione.finestra();
        QCOMPARE(esiti(finestra).filter(u"|Da inserire"_s).size(), prima.size());
        QVERIFY(f.form->parti().importazione.CMD_APPLICA_Click());
        QCOMPARE(nodi(f, tipo), prima);
        QCOMPARE(f.codiciAlbero().size(), prima.size());
    }
};

QTEST_MAIN(TestDistintaImportazione)
#include "tst_distinta_importazione.moc"
