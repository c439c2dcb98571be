#include "db/sqlitefile.h"
#include "framework/hostglobalservices.h"
#include "tests/forms/gestionifixture.h"

#include <QMenu>

// The editor's ways out: the linked managements asked of the host by name, this module's type
// maintenance, the subject's master data and card from the tree's menu; and the node's two
// price-list priorities, typed as codes or picked, stored through the bound recordset.
class TestDistintaGestioni : public QObject
{
    Q_OBJECT

    // Customer type A01 (nodes 10 > 20, node 10 with priority STD), supplier type F01 (node 500);
    // priorities STD, GDO (structural, with conditions) and O'NE (a code with a quote).
    struct Editor : GestioniFixture
    {
        Editor()
        {
            soggetto(0, 10, QStringLiteral("Bar Sport"));
            soggetto(0, 20, QStringLiteral("Caffè Roma"));
            soggetto(1, 500, QStringLiteral("Trasporti Veloci"));
            std = priorita(QStringLiteral("STD"), QStringLiteral("Priorità standard"), 0,
                           {QStringLiteral("Listino base")});
            gdo = priorita(QStringLiteral("GDO"), QStringLiteral("Priorità grande distribuzione"), 0,
                           {QStringLiteral("Prezzi netti"), QStringLiteral("Listino base")});
            one = priorita(QStringLiteral("O'NE"), QStringLiteral("Priorità con apice"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Bar e locali"));
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori vari"));
            n10 = nodo(a01, 0, 10, {.structurePriority = std});
            n20 = nodo(a01, 0, 20, {.parent = n10});
            nodo(f01, 1, 500);
        }

        QAction *gestione(const QString &key) const
        {
            for (QAction *action : control<QToolButton>(QStringLiteral("CMD_GESTIONICOLLEGATE"))->menu()->actions()) {
                if (action->data().toString() == key)
                    return action;
            }
            qFatal("no management %s", qPrintable(key));
        }

        // A right click on the node of a subject, then a choice in the menu.
        void menuSu(const QString &code, const QString &entryName)
        {
            fw::TreeList *tree = albero();
            for (fw::TreeListNode node = tree->firstNode(); node.isValid(); node = node.next()) {
                if (node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toString() == code) {
                    const QRect cell = tree->cellRect(node, QStringLiteral("RagioneSociale"));
                    QTest::mouseClick(tree->view()->viewport(), Qt::RightButton, {},
                                      tree->view()->viewport()->mapFrom(tree, cell.center()));
                    break;
                }
            }
            auto *menu = form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"));
            QVERIFY(menu && menu->isVisible());
            for (QAction *action : menu->actions()) {
                if (action->objectName() == entryName)
                    action->trigger();
            }
            menu->close();
        }

        void focalizza(qint64 nodeId)
        {
            const int row = [&] {
                const db::RecordsetPtr nodes = form->nodi();
                for (int r = 0; r < nodes->recordCount(); ++r) {
                    if (nodes->valueAt(r, nodes->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong() == nodeId)
                        return r;
                }
                return -1;
            }();
            albero()->setFocusedNode(albero()->nodeOfRow(row));
        }

        QVariant prioritaNodo(const QString &column, qint64 node)
        {
            return scalar(QStringLiteral("SELECT %1 FROM GD02_DISTINTA WHERE GD02_ID = %2").arg(column).arg(node));
        }

        qint64 std = 0, gdo = 0, one = 0, a01 = 0, f01 = 0, n10 = 0, n20 = 0;
    };

private slots:
    // The three managements of the suite are asked of the host's module manager by their
    // registered names, with the module's host objects; the editor says nothing itself.
    void linkedManagementsAreAskedOfTheHostByName()
    {
        Editor f;
        f.apri();
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_PARAMETRI"))->isEnabled());
        for (const char *key : {"Listini", "Provider", "Priorita"})
            f.gestione(QLatin1String(key))->trigger();
        QCOMPARE(f.host.modules().requests.size(), 3);
        const QStringList expected = {"PRIOLIST.PriceLists", "PRIOPROV.Providers", "PRIOTAB.PriorityTables"};
        for (int i = 0; i < 3; ++i) {
            const ScriptedModuleManager::Request &request = f.host.modules().requests.at(i);
            QCOMPARE(request.what, QStringLiteral("component"));
            QCOMPARE(request.programId, expected.at(i));
            QVERIFY(request.callerHasConnection);
            QCOMPARE(request.callerCaption, QStringLiteral("Distinta di classificazione"));
        }
        QVERIFY(f.host.log().isQuiet());

        // A host without a module manager: one message naming the management, nothing else.
        f.host.globals().setModuleManager(nullptr);
        f.gestione(QStringLiteral("Listini"))->trigger();
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList {QStringLiteral("Il programma non può aprire la gestione \"Gestione listini e condizioni\".")});
        QCOMPARE(f.host.log().messages().first().style, int(fw::MessageStyle::Warning));
        QVERIFY(f.host.log().errorDialogs().isEmpty());
        QCOMPARE(f.host.modules().requests.size(), 3);
    }

    // "Anagrafica distinta" is a new instance of the module's entry class, with the editor's host
    // objects, that the host opens and keeps as one more component: the type maintenance, on the
    // chosen type, or on no type from a root. A host that cannot open it opens nothing.
    void typeMaintenanceOpensOnTheChosenType()
    {
        Editor f;
        f.apri();
        f.clicca(QStringLiteral("F%1").arg(f.f01));
        f.gestione(QStringLiteral("Distinta"))->trigger();
        FRMGD_ANAGDISTINTA *types = f.form->parti().gestioni.anagraficaDistinta();
        QVERIFY(types);
        f.anagrafica = types;
        QCOMPARE(f.host.modules().requests.size(), 1);
        QCOMPARE(f.host.modules().requests.first().what, QStringLiteral("created"));
        QCOMPARE(f.host.modules().requests.first().callerCaption, QStringLiteral("Anagrafica distinta"));
        QVERIFY(f.host.modules().requests.first().callerHasConnection);
        QCOMPARE(f.host.modules().createdComponents.size(), size_t(1));
        auto *instance = dynamic_cast<CLSGD_DISTINTA *>(f.host.modules().createdComponents.front().get());
        QVERIFY(instance && instance != f.entry.get());
        QCOMPARE(instance->shownForm(), types);
        QVERIFY(!instance->form()); // no second editor
        QCOMPARE(instance->ClsGlobal(), f.entry->ClsGlobal());
        QCOMPARE(instance->ActiveNavigator(), f.entry->ActiveNavigator());
        types->Form_Activate();
        QCoreApplication::processEvents();
        QCOMPARE(types->idDistinta(), std::optional<qint64>(f.f01));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("F01"));
        QCOMPARE(types->windowTitle(), QStringLiteral("Anagrafica distinta"));

        f.gestione(QStringLiteral("Distinta"))->trigger(); // already open: the same form
        QCOMPARE(f.form->parti().gestioni.anagraficaDistinta(), types);
        QCOMPARE(f.host.modules().requests.size(), 1);
        QVERIFY(types->unload());

        f.host.modules().installed = [](const QString &) { return false; };
        f.gestione(QStringLiteral("Distinta"))->trigger();
        QVERIFY(!f.form->parti().gestioni.anagraficaDistinta());
        QCOMPARE(f.host.modules().createdComponents.size(), size_t(1));
        f.host.modules().installed = [](const QString &) { return true; };

        f.clicca(QStringLiteral("P0"));
        f.gestione(QStringLiteral("Distinta"))->trigger();
        QVERIFY(f.form->parti().gestioni.anagraficaDistinta());
        QCOMPARE(f.form->parti().gestioni.anagraficaDistinta()->idDistinta(), std::nullopt);
        f.anagrafica = f.form->parti().gestioni.anagraficaDistinta();
    }

    // A type made in the maintenance shows in the selector as soon as the maintenance closes,
    // and the type the user had chosen stays chosen, with its tree.
    void aNewTypeShowsInTheSelectorOnceTheMaintenanceCloses()
    {
        Editor f;
        f.divisioneDi(1, QStringLiteral("ALI"), QStringLiteral("Divisione alimentare"));
        f.apri();
        f.clicca(QStringLiteral("F%1").arg(f.f01));
        QCOMPARE(f.codiciAlbero(), QStringList {"500"});
        f.gestione(QStringLiteral("Distinta"))->trigger();
        f.anagrafica = f.form->parti().gestioni.anagraficaDistinta();
        f.anagrafica->Form_Activate();
        QCoreApplication::processEvents();
        f.nuovoTipo(QStringLiteral("F02"), QStringLiteral("Fornitori alimentari"), 1, QStringLiteral("ALI"));
        QVERIFY(f.host.log().isQuiet());
        const qint64 f02 = f.scalar(QStringLiteral("SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'F02'"))
                               .toLongLong();
        QVERIFY(!f.voce(QStringLiteral("F%1").arg(f02)));

        QVERIFY(f.anagrafica->unload());
        QTreeWidgetItem *added = f.voce(QStringLiteral("F%1").arg(f02));
        QVERIFY(added);
        QCOMPARE(added->text(0), QStringLiteral("F02-Fornitori alimentari"));
        QCOMPARE(f.selettore()->currentItem(), f.voce(QStringLiteral("F%1").arg(f.f01)));
        QCOMPARE(f.codiciAlbero(), QStringList {"500"});
        QVERIFY(f.titolo().contains(QStringLiteral("F01-Fornitori vari")));
    }

    // The tree's menu asks the host for the master data and the card of the node's subject,
    // by the company and the subject's code; a supplier's card is the supplier card.
    void subjectMasterDataAndCardFromTheTreeMenu()
    {
        Editor f;
        f.apri();
        f.menuSu(QStringLiteral("20"), QStringLiteral("mnuAnagCF"));
        f.menuSu(QStringLiteral("20"), QStringLiteral("mnuSchedaCF"));
        f.clicca(QStringLiteral("F%1").arg(f.f01));
        f.menuSu(QStringLiteral("500"), QStringLiteral("mnuSchedaCF"));

        const QList<ScriptedModuleManager::Request> &requests = f.host.modules().requests;
        QCOMPARE(requests.size(), 3);
        QCOMPARE(requests.at(0).what, QStringLiteral("masterData"));
        QCOMPARE(requests.at(0).subjectKind, 0);
        QCOMPARE(requests.at(0).subjectCode, 20);
        QCOMPARE(requests.at(1).what, QStringLiteral("card"));
        QCOMPARE(requests.at(1).programId, QStringLiteral("CARDS.CustomerCard"));
        QCOMPARE(requests.at(1).company, 1);
        QCOMPARE(requests.at(1).subjectCode, 20);
        QCOMPARE(requests.at(2).programId, QStringLiteral("CARDS.SupplierCard"));
        QCOMPARE(requests.at(2).subjectCode, 500);
        QVERIFY(f.host.log().isQuiet());

        auto *menu = f.form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"));
        QStringList entries;
        for (const QAction *action : menu->actions())
            entries << action->text();
        QCOMPARE(
            entries,
            QStringList({QStringLiteral("Collegamento ad anagrafica"), QStringLiteral("Collegamento scheda anagrafica"),
                         QStringLiteral("Imposta valori fatturazione sui figli"), QStringLiteral("Gestione stato"),
                         QString(), QStringLiteral("Dove è usato")}));

        f.host.globals().setModuleManager(nullptr);
        f.menuSu(QStringLiteral("500"), QStringLiteral("mnuSchedaCF"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Il programma non può aprire la gestione \"Scheda fornitore\".")});
    }

    // The fields show the focused node's priority codes; a code typed, its quotes doubled,
    // becomes the node's identifier; an empty field clears it, and so does an unknown code, told.
    void typedPriorityCodesAreStoredOnTheNode()
    {
        Editor f;
        f.apri();
        QLineEdit *structure = f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_STRUTTURA"));
        QLineEdit *localised = f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_LOCALIZZATA"));
        f.focalizza(f.n10);
        QCOMPARE(structure->text(), QStringLiteral("STD"));
        QVERIFY(localised->text().isEmpty());
        f.focalizza(f.n20);
        QVERIFY(structure->text().isEmpty());

        f.digita(structure, QStringLiteral("O'NE"));
        QCOMPARE(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n20).toLongLong(), f.one);
        QCOMPARE(f.albero()->focusedNode().displayText(QStringLiteral("trGD02_IDSTRUTTURA_LP09")),
                 QStringLiteral("Priorità con apice"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_IDPRIORITA_STRUTTURA"))->text(), QString::number(f.one));
        QVERIFY(f.host.log().isQuiet());

        f.digita(localised, QStringLiteral("XX"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Attenzione il codice della priorità listini localizzata non è valido")});
        QVERIFY(f.prioritaNodo(QStringLiteral("GD02_IDLOCALIZZATA_LP09"), f.n20).isNull());
        QVERIFY(localised->text().isEmpty());

        // An unknown code takes the node's priority away.
        f.digita(structure, QStringLiteral("XX"));
        QVERIFY(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n20).isNull());
        QVERIFY(structure->text().isEmpty());
        f.digita(structure, QStringLiteral("O'NE"));
        f.digita(structure, QString());
        QVERIFY(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n20).isNull());
        f.focalizza(f.n10);
        QCOMPARE(structure->text(), QStringLiteral("STD")); // the other node kept its own

        // An empty tree leaves nothing to type into.
        f.clicca(QStringLiteral("P0"));
        QVERIFY(!structure->isEnabled());
        QVERIFY(structure->text().isEmpty());
    }

    // The button of a priority cell opens the picker; the priority chosen is stored on that
    // node, and closing the picker without a choice changes nothing.
    void priorityCellButtonsOpenThePicker()
    {
        Editor f;
        f.apri();
        fw::TreeList *tree = f.albero();
        fw::TreeListNode child = tree->firstNode().next();
        GestioniFixture::conPicker(
            [&] {
                f.form->parti().priorita.TVW_DISTINTA_OnEditButtonClick(child,
                                                                        QStringLiteral("trGD02_IDLOCALIZZATA_LP09"));
            },
            [](FRMGD_LISTINI *picker) {
                auto *grid = GestioniFixture::in<fw::RecordsetGroupGrid>(picker, QStringLiteral("QGRID_LISTINI"));
                QCOMPARE(grid->groupModel()->groupText(0), QStringLiteral("Priorità grande distribuzione"));
                grid->setCurrentIndex(grid->groupModel()->index(1, 1, grid->groupModel()->index(0, 0)));
                QTest::keyClick(grid, Qt::Key_Return);
            });
        QCOMPARE(f.prioritaNodo(QStringLiteral("GD02_IDLOCALIZZATA_LP09"), f.n20).toLongLong(), f.gdo);
        QCOMPARE(tree->focusedNode().value(QStringLiteral("trGD02_CLIFOR_CG44")).toString(), QStringLiteral("20"));
        QCOMPARE(tree->focusedNode().displayText(QStringLiteral("trGD02_IDLOCALIZZATA_LP09")),
                 QStringLiteral("Priorità grande distribuzione"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_LOCALIZZATA"))->text(), QStringLiteral("GDO"));

        GestioniFixture::conPicker(
            [&] {
                f.form->parti().priorita.TVW_DISTINTA_OnEditButtonClick(tree->firstNode(),
                                                                        QStringLiteral("trGD02_IDSTRUTTURA_LP09"));
            },
            [](FRMGD_LISTINI *picker) {
                QTest::keyClick(GestioniFixture::in<fw::RecordsetGroupGrid>(picker, QStringLiteral("QGRID_LISTINI")),
                                Qt::Key_Escape);
            });
        QCOMPARE(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n10).toLongLong(), f.std);
        QVERIFY(f.host.log().isQuiet());
    }

    // A node changed by someone else since the tree was read is not overwritten: the user is
    // told, the node is read again and keeps the focus.
    void aNodeChangedMeanwhileIsNotOverwritten()
    {
        Editor f;
        f.apri();
        f.focalizza(f.n10);
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDSTRUTTURA_LP09 = %1 WHERE GD02_ID = %2")
                   .arg(f.gdo)
                   .arg(f.n10));
        f.digita(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_STRUTTURA")), QStringLiteral("O'NE"));
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList {QStringLiteral("La riga è stata modificata da un altro utente dopo la lettura: le modifiche "
                                        "non sono state salvate.")});
        QCOMPARE(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n10).toLongLong(), f.gdo);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_STRUTTURA"))->text(), QStringLiteral("GDO"));
        QVERIFY(f.host.log().errorDialogs().isEmpty());
    }

    // A priority lookup that fails is told under its name with the database's text, and the
    // node keeps its priority.
    void aFailingPriorityLookupIsToldAndWritesNothing()
    {
        Editor f;
        f.apri();
        f.focalizza(f.n10);
        {
            dbsetup::SqliteFile file(f.host.database().path());
            file.exec(QStringLiteral("ALTER TABLE LP09_TESTATAPRIORITA RENAME TO LP09_ALTROVE"));
        }
        f.digita(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_STRUTTURA")), QStringLiteral("GDO"));
        QCOMPARE(f.host.log().messages().size(), 1);
        QVERIFY2(f.host.log().messages().first().text.startsWith(QStringLiteral("Get_MG3G_ID_LP09:\n")),
                 qPrintable(f.host.log().messages().first().text));
        QVERIFY(f.host.log().messages().first().text.contains(QStringLiteral("LP09_TESTATAPRIORITA")));
        QCOMPARE(f.host.log().messages().first().style, int(fw::MessageStyle::Critical));
        QCOMPARE(f.prioritaNodo(QStringLiteral("GD02_IDSTRUTTURA_LP09"), f.n10).toLongLong(), f.std);
    }
};

QTEST_MAIN(TestDistintaGestioni)
#include "tst_distinta_gestioni.moc"
