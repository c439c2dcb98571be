#include "tests/forms/distintafixture.h"

#include "framework/recordsetgridmodel.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/recordsetgroupmodel.h"
#include "framework/messagestyle.h"
#include "platform/db/connection.h"

#include <QStandardItemModel>
#include <QTableWidget>

// The pages under the tree: the focused subject's master data, the node's in-invoice campaigns
// and the off-invoice conditions that reach it, on real rows, driven by control names.
class TestDistintaDettagli : public QObject
{
    Q_OBJECT

    // Customers 10 (payment RB30, sales data in macro-area NORD, price list 1500; in division
    // "ALI" it pays BB60), 11 (no sales data) and 12. A01: 10 (2024) > 11 > 12, and 10 again as a
    // root from 2025. D01, of division ALI: 10.
    struct Dettagli : DistintaFixture
    {
        Dettagli()
        {
            exec(QStringLiteral("INSERT INTO CG62_CONDPAGDES VALUES ('RB30', 'Ricevuta bancaria 30 gg')"));
            exec(QStringLiteral("INSERT INTO CG62_CONDPAGDES VALUES ('BB60', 'Bonifico 60 gg')"));
            soggetto(0, 10, QStringLiteral("Bar Centrale"), QStringLiteral("RB30"));
            soggetto(0, 11, QStringLiteral("Pasticceria Al Duomo"));
            soggetto(0, 12, QStringLiteral("Hotel Arena"));
            exec(QStringLiteral("INSERT INTO MG07_MACROAREE VALUES (1, 0, 'NORD', 'Nord Italia')"));
            exec(QStringLiteral("INSERT INTO MG19_CLIFORVA (MG19_DITTA_CG18, MG19_TIPOCF_CG44, MG19_CLIFOR_CG44, "
                                "MG19_LISTMAG, MG19_MACROAREA) VALUES (1, 0, 10, 1500, 'NORD')"));
            ali = divisione(QStringLiteral("ALI"), QStringLiteral("Alimentari"));
            exec(QStringLiteral("INSERT INTO CO1D_CLIFORDIV (CO1D_DITTA_CG18, CO1D_TIPOCF_CG44, CO1D_CLIFOR_CG44, "
                                "CO1D_IDDIV_CO1A, CO1D_CODPAG_CG62) VALUES (1, 0, 10, %1, 'BB60')")
                     .arg(ali));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Canale bar"));
            d01 = tipo(0, QStringLiteral("D01"), QStringLiteral("Alimentari"), ali);
            n10 = nodo(a01, 0, 10, {.end = QStringLiteral("2024-12-31")});
            n11 = nodo(a01, 0, 11, {.parent = n10});
            n12 = nodo(a01, 0, 12, {.parent = n11});
            n10bis = nodo(a01, 0, 10, {.start = QStringLiteral("2025-01-01")});
            d10 = nodo(d01, 0, 10);
        }

        QTableWidget *scheda() const { return control<QTableWidget>(QStringLiteral("GRD_DATIANAGRAFICI")); }
        QTabWidget *pagine() const { return control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO")); }
        // The sheet as "name=value" lines.
        QStringList righe() const
        {
            QStringList lines;
            for (int row = 0; row < scheda()->rowCount(); ++row)
                lines << scheda()->item(row, 0)->text() + QLatin1Char('=') + scheda()->item(row, 1)->text();
            return lines;
        }
        QString valore(const QString &name) const
        {
            for (const QString &line : righe()) {
                if (line.startsWith(name + QLatin1Char('=')))
                    return line.mid(name.size() + 1);
            }
            return QStringLiteral("<assente>");
        }
        // Focuses a node by its id, as a click would, and lets the page load.
        void focalizzaNodo(qint64 id)
        {
            for (fw::TreeListNode node = albero()->firstNode(); node.isValid(); node = node.next()) {
                if (node.value(QStringLiteral("trGD02_CLIFOR_CG44")).isValid()
                    && form->nodi()
                            ->valueAt(node.row(), form->nodi()->fieldIndex(QStringLiteral("GD02_ID")))
                            .toLongLong()
                        == id) {
                    albero()->setFocusedNode(node);
                    attendi();
                    return;
                }
            }
            QFAIL(qPrintable(QStringLiteral("no node %1").arg(id)));
        }

        qint64 ali = 0, a01 = 0, d01 = 0, n10 = 0, n11 = 0, n12 = 0, n10bis = 0, d10 = 0;
    };

private slots:
    // Without a parameters row every group shows; a subject without sales data still has its
    // own lines, with blank classifications; the switches of a saved row are read at the next
    // focus change, and a node of the subject already shown does not read it again.
    void masterDataSheetShowsTheGroupsTheParametersAskFor()
    {
        Dettagli f;
        f.apri();
        f.attendi();
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QCOMPARE(f.scheda()->columnCount(), 2);
        QCOMPARE(f.scheda()->rowCount(), 17);
        QCOMPARE(f.scheda()->item(0, 0)->text(), QStringLiteral("Soggetto"));
        QCOMPARE(f.valore(QStringLiteral("Soggetto")), QStringLiteral("10 Bar Centrale -  Verona VR Tel.  Fax "));
        QCOMPARE(f.valore(QStringLiteral("CondizioniPagamento")), QStringLiteral("RB30 Ricevuta bancaria 30 gg"));
        QCOMPARE(f.valore(QStringLiteral("ListinoAnagrafico")), QStringLiteral("1.500"));
        QCOMPARE(f.valore(QStringLiteral("MacroArea")), QStringLiteral("NORD Nord Italia"));
        QCOMPARE(f.valore(QStringLiteral("Zona")), QString());
        QCOMPARE(f.righe().last(), QStringLiteral("Raggruppamento3="));

        f.focalizza(11);
        f.attendi();
        QCOMPARE(f.valore(QStringLiteral("Soggetto")),
                 QStringLiteral("11 Pasticceria Al Duomo -  Verona VR Tel.  Fax "));
        QCOMPARE(f.valore(QStringLiteral("CondizioniPagamento")), QString());
        QCOMPARE(f.valore(QStringLiteral("ListinoAnagrafico")), QString());
        QCOMPARE(f.valore(QStringLiteral("MacroArea")), QString());

        // Another node of subject 10 keeps the sheet as it was read, even when the name changed.
        f.focalizzaNodo(f.n10);
        f.exec(QStringLiteral(
            "UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = 'Bar Nuovo' WHERE CG16_RAGSOANAG = 'Bar Centrale'"));
        f.focalizzaNodo(f.n10bis);
        QCOMPARE(f.valore(QStringLiteral("Soggetto")), QStringLiteral("10 Bar Centrale -  Verona VR Tel.  Fax "));

        f.exec(QStringLiteral(
            "INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_FLG_PROV, GD03_FLG_CONDVEND, GD03_FLG_CLAS) "
            "VALUES (1, 0, 0, 0)"));
        f.focalizza(12);
        f.attendi();
        QCOMPARE(f.righe(), QStringList {QStringLiteral("Soggetto=12 Hotel Arena -  Verona VR Tel.  Fax ")});
        f.exec(QStringLiteral("UPDATE GD03_PARAMETRI SET GD03_FLG_PROV = 1"));
        f.focalizzaNodo(f.n10);
        QCOMPARE(f.righe(),
                 QStringList({QStringLiteral("Soggetto=10 Bar Nuovo -  Verona VR Tel.  Fax "),
                              QStringLiteral("Agente="), QStringLiteral("ListinoAnagrafico=1.500")}));
        QVERIFY(f.host.log().isQuiet());
    }

    // In a classification of a division the division's own payment terms replace the general
    // ones; a subject without an override there keeps its own.
    void aDivisionsOwnValuesReplaceTheGeneralOnes()
    {
        Dettagli f;
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.d01));
        f.attendi();
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QCOMPARE(f.valore(QStringLiteral("CondizioniPagamento")), QStringLiteral("BB60 Bonifico 60 gg"));
        QCOMPARE(f.valore(QStringLiteral("MacroArea")), QStringLiteral("NORD Nord Italia"));
        f.exec(QStringLiteral("UPDATE CO1D_CLIFORDIV SET CO1D_CODPAG_CG62 = NULL"));
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        f.clicca(QStringLiteral("C%1").arg(f.d01));
        f.attendi();
        QCOMPARE(f.valore(QStringLiteral("CondizioniPagamento")), QStringLiteral("RB30 Ricevuta bancaria 30 gg"));
        QVERIFY(f.host.log().isQuiet());
    }

    // Numbers by their scale, dates by day, text as it is; what has no text shows nothing.
    void valuesAreShownByTypeAndScale()
    {
        TestDatabase database;
        database.connection()->execute(QStringLiteral(
            "CREATE TABLE T (ID INTEGER PRIMARY KEY, INTERO INTEGER, SENZA DECIMAL(18,0), DUE DECIMAL(18,2), "
            "QUATTRO DECIMAL(18,4), QUANDO DATETIME, TESTO VARCHAR(10))"));
        database.connection()->execute(
            QStringLiteral("INSERT INTO T VALUES (1, 1234567, 1234.6, 1234.5, 0.125, '2024-03-05 10:30:00', 'Bar')"));
        database.connection()->execute(QStringLiteral("INSERT INTO T (ID) VALUES (2)"));
        const db::RecordsetPtr rows = database.connection()->openRecordset(
            QStringLiteral("SELECT * FROM T ORDER BY ID"));
        const auto text = [&](const QString &field) {
            return distinta::PaginaDatiAnagrafici::CaricaDatiAnagrafici(rows->field(rows->fieldIndex(field)),
                                                                        rows->value(field));
        };
        rows->moveFirst();
        QCOMPARE(text(QStringLiteral("INTERO")), QStringLiteral("1.234.567"));
        QCOMPARE(text(QStringLiteral("SENZA")), QStringLiteral("1.235"));
        QCOMPARE(text(QStringLiteral("DUE")), QStringLiteral("1.234,50"));
        QCOMPARE(text(QStringLiteral("QUATTRO")), QStringLiteral("0,13"));
        QCOMPARE(text(QStringLiteral("QUANDO")), QStringLiteral("05/03/2024"));
        QCOMPARE(text(QStringLiteral("TESTO")), QStringLiteral("Bar"));
        rows->moveNext();
        for (const char *field : {"INTERO", "DUE", "QUANDO", "TESTO"})
            QCOMPARE(text(QLatin1String(field)), QString());
    }

    // Conditions given to the node, and to its subject over a period that overlaps the node's
    // (only those of the classification's division), grouped by kind; a double click hands the
    // contract's values to the host.
    void offInvoiceConditionsOverlapTheNodeAndOpenTheirContract()
    {
        Dettagli f;
        const qint64 contratto = f.contratto(10);
        const qint64 delNodo = f.condizione(contratto, f.n10);
        const qint64 attivita = f.condizione(contratto, 0, 10, QStringLiteral("2024-06-01"),
                                             QStringLiteral("2025-06-30"));
        f.condizione(contratto, 0, 10, QStringLiteral("2023-01-01"), QStringLiteral("2023-12-31")); // before the node
        f.exec(QStringLiteral("UPDATE GD13_PREMI SET GD13_TIPOCOND = 1 WHERE GD13_ID = %1").arg(attivita));
        f.exec(QStringLiteral("UPDATE GD10_CONTRATTI SET GD10_IDDIV_CO1A = %1 WHERE GD10_ID = %2")
                   .arg(f.ali)
                   .arg(contratto));
        const qint64 altro = f.contratto(10, QStringLiteral("C2"));
        f.exec(QStringLiteral("UPDATE GD10_CONTRATTI SET GD10_IDDIV_CO1A = %1 + 1 WHERE GD10_ID = %2")
                   .arg(f.ali)
                   .arg(altro));
        f.condizione(altro, 0, 10, QStringLiteral("2024-01-01"), QStringLiteral("2099-12-31"));
        f.apri();
        f.pagine()->setCurrentIndex(2);
        f.attendi();

        auto *grid = f.control<fw::RecordsetGroupGrid>(QStringLiteral("GRD_PREMI"));
        const db::RecordsetPtr rows = f.form->parti().dettagli.condizioni().condizioniFuoriFattura();
        QVERIFY(rows);
        QCOMPARE(rows->recordCount(), 3); // the node's, the overlapping one, the other division's
        QCOMPARE(grid->groupModel()->groupCount(), 2);
        QStringList groups = {grid->groupModel()->groupText(0), grid->groupModel()->groupText(1)};
        groups.sort();
        QCOMPARE(groups, QStringList({QStringLiteral("Attività promozionale"), QStringLiteral("Premio")}));
        const QStringList captions = {"Condizione",    "Contratto",   "Descrizione", "Versione",     "Premio",
                                      "Descr. premio", "Data inizio", "Data fine",   "Intestatario", "Rag. Sociale"};
        for (int i = 0; i < captions.size(); ++i)
            QCOMPARE(grid->groupModel()->headerData(i + 1, Qt::Horizontal).toString(), captions.at(i));
        QVERIFY(grid->isColumnHidden(0));

        // In the division's classification only the subject's conditions of that division reach
        // its node.
        f.clicca(QStringLiteral("C%1").arg(f.d01));
        f.pagine()->setCurrentIndex(1);
        f.pagine()->setCurrentIndex(2);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.condizioni().condizioniFuoriFattura()->recordCount(), 1);
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        f.attendi();

        const db::RecordsetPtr shown = f.form->parti().dettagli.condizioni().condizioniFuoriFattura();
        int premio = -1;
        for (int row = 0; row < shown->recordCount(); ++row) {
            if (shown->valueAt(row, shown->fieldIndex(QStringLiteral("IDCondizione"))).toLongLong() == delNodo)
                premio = row;
        }
        QVERIFY(premio >= 0);
        grid->setCurrentIndex(grid->groupModel()->indexOfRow(premio, 1));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(f.host.modules().requests.size(), 1);
        const fw::ContractReference &asked = f.host.modules().requests.at(0).contract;
        QCOMPARE(asked.IDContratto.toLongLong(), contratto);
        QCOMPARE(asked.ContrattoCod.toString(), QStringLiteral("C1"));
        QCOMPARE(asked.ContrattoVer.toInt(), 1);
        QCOMPARE(asked.ContrattoDes.toString(), QStringLiteral("Contratto C1"));
        QCOMPARE(asked.IDCondizione.toLongLong(), delNodo);
        QVERIFY(asked.premio);
        QCOMPARE(asked.CondizioneCod.toString(), QStringLiteral("P%1").arg(contratto));
        QVERIFY(f.host.log().isQuiet());
    }

    // Only a node with campaigns of its own lists them; a tick links or unlinks at once, and a
    // link made since the list was read can be undone only after the list is read again.
    void campaignTicksWriteAtOnceAndNeedAReloadToUndoANewOne()
    {
        Dettagli f;
        for (const auto &[company, code] : {std::pair {1, "PRI24"}, {1, "EST24"}, {1, "NAT24"}, {2, "ALTRA"}})
            f.exec(QStringLiteral(
                       "INSERT INTO MG94_CAMPANAG (MG94_DITTA_CG18, MG94_CODCAMP, MG94_DESCAMP, MG94_DATAINIZIO, "
                       "MG94_FLGATTIVA) VALUES (%1, '%2', 'Campagna %2', '2024-03-01 00:00:00', 1)")
                       .arg(company)
                       .arg(QLatin1String(code)));
        const auto campagna = [&](const char *code) {
            return f
                .scalar(QStringLiteral("SELECT MG94_ID FROM MG94_CAMPANAG WHERE MG94_CODCAMP = '%1'")
                            .arg(QLatin1String(code)))
                .toLongLong();
        };
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_INDEREPROMO = 2 WHERE GD02_ID = %1").arg(f.n11));
        f.exec(QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) VALUES (1, %1, %2)")
                   .arg(f.n11)
                   .arg(campagna("PRI24")));
        f.exec(QStringLiteral("INSERT INTO LP09_TESTATAPRIORITA (LP09_DITTA_CG18, LP09_CODICE, LP09_DESCR) VALUES (1, "
                              "'GDO', 'Grande distribuzione')"));
        f.exec(QStringLiteral(
                   "UPDATE GD02_DISTINTA SET GD02_IDSTRUTTURA_LP09 = (SELECT MAX(LP09_ID) FROM LP09_TESTATAPRIORITA) "
                   "WHERE GD02_ID = %1")
                   .arg(f.n11));
        f.apri();
        f.pagine()->setCurrentIndex(1);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni()->recordCount(), 0); // node 10 inherits

        f.focalizza(11);
        f.attendi();
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_STRUTTURA"))->text(), QStringLiteral("GDO"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_LOCALIZZATA"))->text(), QString());
        auto *grid = f.control<fw::RecordsetGrid>(QStringLiteral("GRD_PROMO"));
        const auto riga = [&](const char *code) {
            const QVariantList codes = DistintaFixture::colonna(f.form->parti().dettagli.promozioni().promozioni(),
                                                                QStringLiteral("MG94_CODCAMP"));
            return int(codes.indexOf(QVariant(QString::fromLatin1(code))));
        };
        const auto spunta = [&](const char *code) {
            const QModelIndex cell = grid->model()->index(riga(code), grid->columnOf(QStringLiteral("SELEZ")));
            return grid->model()->data(cell, Qt::CheckStateRole).toInt() == Qt::Checked;
        };
        const auto clicca = [&](const char *code, Qt::CheckState state) {
            grid->model()->setData(grid->model()->index(riga(code), grid->columnOf(QStringLiteral("SELEZ"))), state,
                                   Qt::CheckStateRole);
        };
        const auto legami = [&] {
            return f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD12_PROMO WHERE GD12_ID_GD02 = %1").arg(f.n11))
                .toInt();
        };
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni()->recordCount(), 3); // not the other company's
        QVERIFY(spunta("PRI24"));
        QVERIFY(!spunta("EST24"));
        const QModelIndex active = grid->model()->index(0, grid->columnOf(QStringLiteral("MG94_FLGATTIVA")));
        QVERIFY(!(grid->model()->flags(active) & Qt::ItemIsUserCheckable));
        QVERIFY(grid->model()->flags(grid->model()->index(0, grid->columnOf(QStringLiteral("SELEZ"))))
                & Qt::ItemIsUserCheckable);

        clicca("EST24", Qt::Checked);
        QCOMPARE(legami(), 2);
        QVERIFY(spunta("EST24"));
        clicca("EST24", Qt::Unchecked); // the list holds no link for it yet
        QCOMPARE(legami(), 2);
        QVERIFY(spunta("EST24"));
        clicca("PRI24", Qt::Unchecked);
        QCOMPARE(legami(), 1);
        QVERIFY(!spunta("PRI24"));

        f.focalizza(10);
        f.focalizza(11);
        f.attendi();
        QVERIFY(spunta("EST24"));
        clicca("EST24", Qt::Unchecked);
        QCOMPARE(legami(), 0);
        QVERIFY(!spunta("EST24"));
        QVERIFY(f.host.log().isQuiet());

        // Choosing the node's own list stores the rule and shows every campaign; a double click
        // opens the campaign in the suite's promotions.
        f.focalizza(12);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni()->recordCount(), 0);
        auto *rule = f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"));
        rule->setCurrentIndex(2);
        emit rule->activated(2);
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD02_INDEREPROMO FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n12))
                     .toInt(),
                 2);
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni()->recordCount(), 3);
        grid->setCurrentIndex(grid->model()->index(riga("NAT24"), 1));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(f.host.modules().requests.last().filter, QStringLiteral(" MG94_CODCAMP IN ('NAT24')"));
        QVERIFY(f.host.log().isQuiet());
    }

    // Five thousand campaigns are one list, read at once.
    void aLongCampaignListIsShownWhole()
    {
        Dettagli f;
        for (int i = 1; i <= 5000; ++i)
            f.exec(QStringLiteral("INSERT INTO MG94_CAMPANAG (MG94_DITTA_CG18, MG94_CODCAMP, MG94_DESCAMP) "
                                  "VALUES (1, 'C%1', 'Campagna %1')")
                       .arg(i));
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_INDEREPROMO = 2"));
        f.apri();
        f.pagine()->setCurrentIndex(1);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni()->recordCount(), 5000);
        QCOMPARE(f.control<fw::RecordsetGrid>(QStringLiteral("GRD_PROMO"))->model()->rowCount(), 5000);
        QVERIFY(f.host.log().isQuiet());
    }

    // A rule chosen for a node that another clerk changed meanwhile is refused and the node read
    // again; chosen again, it is stored.
    void aRuleChosenOverAnotherClerksChangeIsRefused()
    {
        Dettagli f;
        f.apri();
        f.focalizza(12);
        f.attendi();
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_INDEREPROMO = 1 WHERE GD02_ID = %1").arg(f.n12));
        auto *rule = f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"));
        const auto scegli = [&](int value) {
            rule->setCurrentIndex(rule->findData(value));
            emit rule->activated(rule->currentIndex());
        };
        const auto stored = [&] {
            return f.scalar(QStringLiteral("SELECT GD02_INDEREPROMO FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n12))
                .toInt();
        };
        scegli(2);
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().size(), 0);
        QCOMPARE(stored(), 1);
        QCOMPARE(rule->currentData().toInt(), 1);
        f.host.log().clear();
        scegli(2);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(stored(), 2);
    }

    // The focused node decides: a root cannot choose to inherit from its parent, and a node with
    // a settled bonus keeps its start date.
    void theFocusedNodeSetsItsRuleAndLocksItsStartDate()
    {
        Dettagli f;
        f.scadenza(f.condizione(f.contratto(11), f.n11), QStringLiteral("2024-06-30"), 2);
        f.apri();
        f.attendi();
        auto *rules = qobject_cast<QStandardItemModel *>(f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"))->model());
        QVERIFY(!rules->item(1)->isEnabled());
        QVERIFY(!f.albero()->isLocked(f.albero()->focusedNode(), QStringLiteral("trGD02_DATAINIZIOVAL")));
        f.focalizza(11);
        QVERIFY(rules->item(1)->isEnabled());
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_GD02_ID"))->text(), QString::number(f.n11));
        const fw::TreeListNode node = f.albero()->focusedNode();
        QVERIFY(f.albero()->isLocked(node, QStringLiteral("trGD02_DATAINIZIOVAL")));
        QVERIFY(!f.albero()->isLocked(node, QStringLiteral("trGD02_DATAFINEVAL")));
        f.focalizza(12);
        QVERIFY(!f.albero()->isLocked(node, QStringLiteral("trGD02_DATAINIZIOVAL")));
    }

    // Only the page showing is filled, for the node where the focus stopped; with no
    // classification chosen a page change does nothing.
    void onlyThePageShowingFollowsTheFocus()
    {
        Dettagli f;
        f.apri();
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(), std::optional<qint64>(10));
        QVERIFY(!f.form->parti().dettagli.condizioni().condizioniFuoriFattura());
        f.focalizza(11);
        f.focalizza(12);
        f.focalizza(10);
        f.focalizza(11);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(), std::optional<qint64>(11));
        QCOMPARE(f.valore(QStringLiteral("Soggetto")).left(2), QStringLiteral("11"));
        QVERIFY(!f.form->parti().dettagli.promozioni().promozioni());

        f.pagine()->setCurrentIndex(2);
        QVERIFY(f.form->parti().dettagli.condizioni().condizioniFuoriFattura());
        f.focalizza(12);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(),
                 std::nullopt); // the sheet lost subject 11
        // Its page chosen again reads nothing: the empty sheet says how to fill it.
        f.pagine()->setCurrentIndex(0);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(), std::nullopt);
        QCOMPARE(f.indicazione(f.form->parti().dettagli.datiAnagrafici().griglia()),
                 QStringLiteral("I dati anagrafici compaiono spostandosi su un nodo dell'albero."));
        f.focalizza(11);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(), std::optional<qint64>(11));
        f.pagine()->setCurrentIndex(2);
        f.focalizza(12);
        f.attendi();

        f.clicca(QStringLiteral("P0"));
        f.attendi();
        const db::RecordsetPtr before = f.form->parti().dettagli.promozioni().promozioni();
        f.pagine()->setCurrentIndex(1);
        QCOMPARE(f.form->parti().dettagli.promozioni().promozioni(), before);
        QVERIFY(f.host.log().isQuiet());
    }

    // A removal moves the focus without a word; once it is over the sheet shows the subject of
    // the node focused then.
    void afterARemovalThePagesShowTheNodeLeftFocused()
    {
        Dettagli f;
        f.apri();
        f.focalizza(12);
        f.attendi();
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(), std::optional<qint64>(12));
        f.premi(QStringLiteral("CMD_REMANAGR"));
        f.attendi();
        QVERIFY(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n12)).toInt()
                == 0);
        QCOMPARE(f.form->parti().dettagli.datiAnagrafici().soggettoCaricato(),
                 std::optional<qint64>(f.codiceFocalizzato().toLongLong()));
        QVERIFY(f.host.log().isQuiet());
    }

    // A statement that fails reaches the error dialog under its procedure's name; the page
    // keeps what it showed.
    void aFailingLoadIsReportedAndKeepsThePage()
    {
        Dettagli f;
        f.host.log().setDefaultAnswer(fw::Answer::Abort);
        f.apri();
        f.pagine()->setCurrentIndex(2);
        f.attendi();
        const db::RecordsetPtr shown = f.form->parti().dettagli.condizioni().condizioniFuoriFattura();
        QVERIFY(shown);
        f.exec(QStringLiteral("DROP VIEW GDVISTA03_SOGGETTICOND"));
        f.focalizza(11);
        f.attendi();
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().at(0).procedure, QStringLiteral("CaricaCondizioniFuoriFattura:"));
        QCOMPARE(f.form->parti().dettagli.condizioni().condizioniFuoriFattura(), shown);
    }
};

QTEST_MAIN(TestDistintaDettagli)
#include "tst_distinta_dettagli.moc"
