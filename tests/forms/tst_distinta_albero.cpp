#include "data/distintastatements.h"
#include "data/prioritastatements.h"
#include "framework/dictionarytranslationservice.h"
#include "tests/forms/distintafixture.h"

#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>

class TestDistintaAlbero : public QObject
{
    Q_OBJECT

    // Customers 10..50 and three types: A01 and B01 for customers, F01 for suppliers; A01 is
    // the first customer type, so the editor opens on it.
    struct Clienti : DistintaFixture
    {
        Clienti()
        {
            for (auto [code, name] :
                 {std::pair {10, "Alfa"}, {20, "Beta"}, {30, "Gamma"}, {40, "Delta"}, {50, "Epsilon"}})
                soggetto(0, code, QString::fromLatin1(name));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Grande distribuzione"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Dettaglio"));
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori merci"));
        }
        qint64 a01 = 0, b01 = 0, f01 = 0;
    };

private slots:
    void startUpOpensTheFirstCustomerTypeAndBuildsItsTreeFromFlatRows()
    {
        Clienti f;
        const qint64 n1 = f.nodo(f.a01, 0, 10);
        const qint64 n2 = f.nodo(f.a01, 0, 20, {.parent = n1});
        f.nodo(f.a01, 0, 30, {.parent = 0});                  // parent 0: a root
        f.nodo(f.a01, 0, 40, {.parent = 999});                // parent not in the set: a root
        const qint64 noCode = f.nodo(f.a01, 0, std::nullopt); // never loaded...
        f.nodo(f.a01, 0, 50, {.parent = noCode});             // ...so its child becomes a root
        f.nodo(f.a01, 0, 30, {.parent = n2});
        f.nodo(f.a01, 0, 40, {.company = 2}); // another company
        f.nodo(f.b01, 0, 20);                 // another type
        f.apri();

        QTreeWidget *selector = f.selettore();
        QCOMPARE(selector->topLevelItemCount(), 2);
        QCOMPARE(selector->topLevelItem(0)->text(0), QStringLiteral("Clienti"));
        QCOMPARE(selector->topLevelItem(1)->text(0), QStringLiteral("Fornitori"));
        QCOMPARE(f.voce(QStringLiteral("C%1").arg(f.b01))->text(0), QStringLiteral("B01-Dettaglio"));
        QCOMPARE(f.voce(QStringLiteral("F%1").arg(f.f01))->parent(), selector->topLevelItem(1));
        QCOMPARE(selector->currentItem(), f.voce(QStringLiteral("C%1").arg(f.a01)));

        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".20", "..30", "30", "40", "50"}));
        QCOMPARE(f.form->parti().albero.idDistinta(), QString::number(f.a01));
        QVERIFY(f.albero()->isExpanded(f.albero()->nodeAt(0)) && f.albero()->isExpanded(f.albero()->nodeAt(1)));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_GD02_ID"))->text(), QString::number(n1));

        auto *levels = f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"));
        QCOMPARE(levels->count(), 3);
        QCOMPARE(levels->itemText(0), QStringLiteral("1° livello"));
        QCOMPARE(levels->currentText(), QStringLiteral("3° livello"));
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("COMPRIMI LIVELLO 3"));
        QCOMPARE(f.titolo(), QStringLiteral("Struttura distinta")); // the start-up leaves the header alone
        QVERIFY(f.host.log().isQuiet());
    }

    void expandAndCollapseOneLevelAtATime()
    {
        Clienti f;
        const qint64 n1 = f.nodo(f.a01, 0, 10);
        const qint64 n2 = f.nodo(f.a01, 0, 20, {.parent = n1});
        f.nodo(f.a01, 0, 30, {.parent = n2});
        f.nodo(f.a01, 0, 40);
        f.apri();
        fw::TreeList *tree = f.albero();
        auto *button = f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"));
        const fw::TreeListNode alfa = tree->nodeAt(0);
        const fw::TreeListNode beta = tree->nodeAt(1);

        const QList<std::tuple<QString, int, bool, bool>> steps = {
            {QStringLiteral("COMPRIMI LIVELLO 2"), 1, true, false},
            {QStringLiteral("ESPANDI LIVELLO 1"), 0, false, false},
            {QStringLiteral("ESPANDI LIVELLO 2"), 1, true, false},
            {QStringLiteral("COMPRIMI LIVELLO 3"), 2, true, true},
            {QStringLiteral("COMPRIMI LIVELLO 2"), 1, true, false},
        };
        for (const auto &[caption, level, alfaOpen, betaOpen] : steps) {
            button->click();
            QCOMPARE(f.didascaliaLivelli(), caption);
            QCOMPARE(f.form->parti().albero.livelli().livelloCorrente(), level);
            QCOMPARE(tree->isExpanded(alfa), alfaOpen);
            QCOMPARE(tree->isExpanded(beta), betaOpen);
        }
        QCOMPARE(f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"))->count(), 3); // the combo stays
    }

    void rootsOnlyAndEmptyTypes()
    {
        Clienti f;
        f.nodo(f.b01, 0, 10);
        f.nodo(f.b01, 0, 20);
        f.apri(); // A01 has no node
        auto *levels = f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"));
        QCOMPARE(f.albero()->count(), 0);
        QCOMPARE(levels->count(), 0);
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("ESPANDI/COMPRIMI"));
        f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->click();
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("ESPANDI/COMPRIMI"));

        f.clicca(QStringLiteral("C%1").arg(f.b01));
        QCOMPARE(f.codiciAlbero(), QStringList({"10", "20"}));
        QCOMPARE(levels->count(), 1);
        QCOMPARE(levels->itemText(0), QStringLiteral("1° livello"));
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("COMPRIMI LIVELLO 1"));
        f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->click(); // nothing to collapse at level 0
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("ESPANDI LIVELLO 1"));
        QCOMPARE(f.form->parti().albero.livelli().livelloCorrente(), 0);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", "20"}));
        QCOMPARE(levels->count(), 1);
        QVERIFY(f.host.log().isQuiet());
    }

    void headerLineNamesKindTypeAndDivision()
    {
        Clienti f;
        const qint64 nord = f.divisione(QStringLiteral("N"), QStringLiteral("Nord"));
        const qint64 d01 = f.tipo(0, QStringLiteral("D01"), QStringLiteral("Catene del nord"), nord);
        f.apri();

        f.clicca(QStringLiteral("C%1").arg(d01));
        QCOMPARE(f.titolo(),
                 QStringLiteral("CLIENTI       DISTINTA D01-Catene del nord      (Divisione: %1 - Nord)").arg(nord));
        QCOMPARE(f.form->parti().albero.divisione(), std::optional<qint64>(nord));
        QVERIFY(!f.form->parti().albero.guidDistinta().isEmpty());

        f.clicca(QStringLiteral("C%1").arg(f.a01));
        QCOMPARE(f.titolo(), QStringLiteral("CLIENTI       DISTINTA A01-Grande distribuzione      (Divisioni: tutte)"));
        QVERIFY(!f.form->parti().albero.divisione());

        f.clicca(QStringLiteral("F%1").arg(f.f01));
        QCOMPARE(f.form->parti().albero.tipoSoggetto(), 1);
        QCOMPARE(f.titolo(), QStringLiteral("FORNITORI       DISTINTA F01-Fornitori merci      (Divisioni: tutte)"));
    }

    void aRootClickClearsTheTree()
    {
        Clienti f;
        f.nodo(f.a01, 0, 10);
        f.nodo(f.a01, 0, 20);
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        QCOMPARE(f.albero()->count(), 2);

        for (const QString &root : {QStringLiteral("P1"), QStringLiteral("P0")}) {
            f.clicca(QStringLiteral("C%1").arg(f.a01));
            f.clicca(root);
            QCOMPARE(f.albero()->count(), 0);
            QCOMPARE(f.titolo(), QStringLiteral("Struttura distinta"));
            QCOMPARE(f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"))->count(), 0);
            QCOMPARE(f.form->parti().albero.tipoSoggetto(), root == QLatin1String("P1") ? 1 : 0);
        }
        QVERIFY(f.host.log().isQuiet());
    }

    // The billing name and the priority descriptions are read once per load, one statement per
    // distinct value, and painting the tree sends nothing to the database.
    void drawnTextsAreReadOncePerLoad()
    {
        Clienti f;
        f.exec(QStringLiteral("INSERT INTO LP09_TESTATAPRIORITA (LP09_ID, LP09_DITTA_CG18, LP09_CODICE, LP09_DESCR, "
                              "LP09_INDTIPOTABPRIORITA) VALUES (7, 1, 'GDO', 'Priorità grande distribuzione', 0)"));
        const qint64 n1 = f.nodo(f.a01, 0, 10, {.billingCode = 20, .structurePriority = 7});
        f.nodo(f.a01, 0, 30, {.parent = n1, .billingCode = 20});
        f.nodo(f.a01, 0, 40, {.parent = n1, .billingCode = 99}); // no such subject
        f.apri();

        QTemporaryDir folder;
        const QString tracePath = folder.filePath(QStringLiteral("trace.sql"));
        qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
        f.form->CaricaDistinta();
        f.albero()->grab();
        qunsetenv("DISTINTA_SQL_TRACE");

        fw::TreeList *tree = f.albero();
        QCOMPARE(tree->nodeAt(0).displayText(QStringLiteral("RagioneSocialeFatt")), QStringLiteral("Beta"));
        QCOMPARE(tree->nodeAt(1).displayText(QStringLiteral("RagioneSocialeFatt")), QStringLiteral("Beta"));
        QCOMPARE(tree->nodeAt(2).displayText(QStringLiteral("RagioneSocialeFatt")), QString());
        QCOMPARE(tree->nodeAt(0).displayText(QStringLiteral("trGD02_IDSTRUTTURA_LP09")),
                 QStringLiteral("Priorità grande distribuzione"));
        QCOMPARE(tree->nodeAt(1).displayText(QStringLiteral("trGD02_IDSTRUTTURA_LP09")), QString());
        QCOMPARE(tree->nodeAt(1).displayText(QStringLiteral("RagioneSociale")), QStringLiteral("Gamma"));

        QFile trace(tracePath);
        QVERIFY(trace.open(QIODevice::ReadOnly));
        QStringList statements = QString::fromUtf8(trace.readAll()).split(QStringLiteral("\nGO\n"), Qt::SkipEmptyParts);
        // The focus given to the first node reads that node's parameters, state, settled bonuses
        // and the page under the tree, not texts; the undo buttons ask the journal.
        statements.removeIf([](const QString &sql) {
            return sql.contains(QLatin1String("GD03_PARAMETRI")) || sql.contains(QLatin1String("gd02_guid"))
                || sql.contains(QLatin1String("GD90_OPERAZIONI")) || sql.contains(QLatin1String("WF02_STATORIGA"))
                || sql.contains(QLatin1String("GD18_LIQUIDAZIONE")) || sql.contains(QLatin1String("AS Soggetto"));
        });
        const QStringList expected = {
            distintastatements::nodesQuery(1, 0, f.a01),     distintastatements::businessNameQuery(1, 0, 20),
            distintastatements::businessNameQuery(1, 0, 99), distintastatements::priorityDescriptionQuery(7),
            prioritastatements::priorityCodeQuery(7), // the focused node's code, for its priority field
        };
        QCOMPARE(QSet<QString>(statements.cbegin(), statements.cend()),
                 QSet<QString>(expected.cbegin(), expected.cend()));
        QCOMPARE(statements.size(), expected.size());
        QVERIFY(f.host.log().isQuiet());
    }

    // Every area the editor will hold is in place, the managements' menu is filled at start-up
    // and the theme's colours reach the tree.
    void theFormHoldsEveryAreaFromTheStart()
    {
        Clienti f;
        f.apri();
        for (const char *name : {"TAB_VISUALIZZAGESTIONE",
                                 "TVW_SELDISTINTE",
                                 "GRD_ANAGRAFICHEDISTINTA",
                                 "CMD_ADDANAGR",
                                 "CMD_ADDANAGRCAPO",
                                 "CMD_REMANAGR",
                                 "TXT_CODICE",
                                 "TXT_RAGIONESOC",
                                 "CMD_RICERCA",
                                 "GRD_CERCADISTINTA",
                                 "TAB_DETTAGLIOSOGGETTO",
                                 "GRD_DATIANAGRAFICI",
                                 "GRD_PROMO",
                                 "GRD_PREMI",
                                 "lblDescDistinta",
                                 "CMB_LIVELLO",
                                 "CMD_ESPANDICOLLASSA",
                                 "TXTCERCA",
                                 "CMD_CERCA",
                                 "CMD_STAMPA",
                                 "CMD_PARAMETRI",
                                 "CMD_GESTIONICOLLEGATE",
                                 "CBO_EREPROMO",
                                 "TXT_GD02_STATO",
                                 "TXT_IDPRIORITA_STRUTTURA",
                                 "TXT_IDPRIORITA_LOCALIZZATA",
                                 "TXT_GD02_ID",
                                 "SPLITTERVerticale",
                                 "SPLITTERorizzontale",
                                 "TVW_DISTINTA"})
            QVERIFY2(f.form->findChild<QWidget *>(QString::fromLatin1(name)), name);
        auto *tabs = f.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"));
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(1), QStringLiteral("Anagrafiche"));
        QCOMPARE(f.control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"))->count(), 4);
        QCOMPARE(f.control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"))->tabText(3), QStringLiteral("Storico"));
        QVERIFY(f.control<QLineEdit>(QStringLiteral("TXT_IDPRIORITA_STRUTTURA"))->isHidden());
        QVERIFY(f.control<QLineEdit>(QStringLiteral("TXT_GD02_ID"))->isHidden());

        auto *promo = f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"));
        QCOMPARE(promo->count(), 3);
        QCOMPARE(promo->itemText(2), QStringLiteral("Specifica per Cli/For Distinta"));
        QCOMPARE(promo->itemData(2).toInt(), 2);

        QStringList managements;
        for (QAction *action : f.control<QToolButton>(QStringLiteral("CMD_GESTIONICOLLEGATE"))->menu()->actions())
            managements << action->text() + QLatin1Char('=') + action->data().toString();
        QCOMPARE(managements,
                 QStringList({"Gestione listini e condizioni=Listini", "Configurazione condizioni=Provider",
                              "Configurazione priorità=Priorita", "Anagrafica distinta=Distinta"}));

        QCOMPARE(f.albero()->colors().highlight, QColor(0, 0, 128));     // GridHighLightColor
        QCOMPARE(f.albero()->colors().gridLines, QColor(192, 192, 192)); // GridBorderColor
        QCOMPARE(f.albero()->font().family(), QStringLiteral("Tahoma"));
    }

    void captionsAndRootsPassThroughTheDictionary()
    {
        Clienti f;
        f.host.translations().insert(QStringLiteral("Clienti"), QStringLiteral("Clientela"));
        f.host.translations().insert(QStringLiteral("Dettaglio distinta"), QStringLiteral("Dettaglio della distinta"));
        f.host.translations().insert(QStringLiteral("Codice"), QStringLiteral("Cod."));
        f.apri();
        QCOMPARE(f.selettore()->topLevelItem(0)->text(0), QStringLiteral("Clientela"));
        QCOMPARE(f.albero()->bandCaption(), QStringLiteral("Dettaglio della distinta"));
        QCOMPARE(f.albero()->column(0).caption, QStringLiteral("Cod."));
        QCOMPARE(f.albero()->column(f.albero()->columnIndex(QStringLiteral("RagioneSocialeFatt"))).caption,
                 QStringLiteral("Rag. Sociale fatturazione"));
    }

    // Without a parameters row the editor uses its own defaults; a row with empty columns gets
    // the statement's defaults, which differ on purpose.
    void parameterSnapshotDefaults()
    {
        Clienti f;
        f.apri();
        distinta::Parametri p = f.form->parametri();
        QCOMPARE(p.dataFissaInizio, QDate(2000, 1, 1));
        QCOMPARE(p.dataFissaFine, QDate(2099, 12, 31));
        QVERIFY(p.flgAnagrafica && p.flgCondVendita && p.flgClassificazioni && p.flgProvvigioni);
        QCOMPARE(p.tipoCaricaData, short(0));

        f.exec(QStringLiteral("INSERT INTO GD03_PARAMETRI (GD03_DITTA_CG18, GD03_ID_WF02) VALUES (1, 6)"));
        f.form->parti().parametri.CaricaParametri();
        p = f.form->parametri();
        QCOMPARE(p.dataFissaInizio, QDate(2000, 1, 1));
        QCOMPARE(p.dataFissaFine, QDate(2099, 1, 1));
        QVERIFY(!p.flgAnagrafica && !p.flgCondVendita && !p.flgClassificazioni && !p.flgProvvigioni);
        QCOMPARE(p.statoLegame, short(0));

        f.exec(QStringLiteral(
            "UPDATE GD03_PARAMETRI SET GD03_TIPOCARICODATA = 1, GD03_DATAINIZIOVAL = '2025-03-01 00:00:00', "
            "GD03_DATAFINEVAL = '2026-02-28 00:00:00', GD03_FLG_CLAS = 1, GD03_TIPOANAGFATT = 4"));
        f.form->parti().parametri.CaricaParametri();
        p = f.form->parametri();
        QCOMPARE(p.tipoCaricaData, short(1));
        QCOMPARE(p.dataFissaInizio, QDate(2025, 3, 1));
        QCOMPARE(p.dataFissaFine, QDate(2026, 2, 28));
        QVERIFY(p.flgClassificazioni && !p.flgProvvigioni);
        QCOMPARE(p.tipoCaricaFatt, short(4));
        QVERIFY(f.host.log().isQuiet());
    }
};

QTEST_MAIN(TestDistintaAlbero)
#include "tst_distinta_albero.moc"
