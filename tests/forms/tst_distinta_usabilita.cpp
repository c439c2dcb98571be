#include "tests/forms/distintafixture.h"
#include "tests/support/altletters.h"

#include "forms/listini/frmgd_listini.h"
#include "framework/emptyviewhint.h"
#include "framework/italiantranslations.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/treelist/treelistview.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QApplication>
#include <QFileInfo>
#include <QHash>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>

// The editor as a clerk uses it all day: the subject list's filter and order, the keyboard, what
// empty areas say, and the layout each user leaves.
class TestDistintaUsabilita : public QObject
{
    Q_OBJECT

    // Customers 10 to 50; a type A01 with 10 as its only root, an empty type B01.
    struct Editor : DistintaFixture
    {
        Editor()
        {
            soggetto(0, 10, QStringLiteral("Rossi Mario"));
            soggetto(0, 20, QStringLiteral("Bianchi & Figli"));
            soggetto(0, 30, QStringLiteral("Rossi Luigi"));
            soggetto(0, 40, QStringLiteral("D'Amico 100% Srl"));
            soggetto(0, 50, QStringLiteral("Verdi"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Clienti"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Vuota"));
            nodo(a01, 0, 10);
        }
        fw::RecordsetGrid *griglia() const
        {
            return control<fw::RecordsetGrid>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
        }
        QLineEdit *filtro() const { return control<QLineEdit>(QStringLiteral("TXT_FILTROANAGRAFICHE")); }
        QStringList codiciMostrati() const
        {
            QStringList codes;
            for (int row = 0; row < griglia()->model()->rowCount(); ++row)
                codes << griglia()->model()->index(row, 2).data().toString();
            return codes;
        }
        void spuntaMostrato(int code)
        {
            QAbstractItemModel *model = griglia()->model();
            for (int row = 0; row < model->rowCount(); ++row) {
                if (model->index(row, 2).data().toInt() == code) {
                    QVERIFY(model->setData(model->index(row, 0), Qt::Checked, Qt::CheckStateRole));
                    return;
                }
            }
            QFAIL("not shown");
        }
        // As typed: one change of the text per character.
        void filtra(const QString &text)
        {
            filtro()->clear();
            for (qsizetype n = 1; n <= text.size(); ++n)
                filtro()->setText(text.left(n));
        }
        qint64 a01 = 0, b01 = 0;
    };

private slots:
    // Typing narrows the rows without a statement; ticks given under different filters all stay,
    // the count beside the box says how many, and the hidden ticked subjects are added too.
    void filterKeepsTicksAndHiddenTicksAreAdded()
    {
        Editor f;
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        f.paginaAnagrafiche();
        DistintaFixture::attendi();
        QCOMPARE(f.codiciMostrati(), (QStringList {"10", "20", "30", "40", "50"}));
        QCOMPARE(f.filtro()->placeholderText(), QStringLiteral("Filtra per codice, ragione sociale o città"));

        QTemporaryDir traceFolder;
        const QString trace = traceFolder.filePath(QStringLiteral("filtro.sql"));
        qputenv("DISTINTA_SQL_TRACE", trace.toLocal8Bit());
        f.filtra(QStringLiteral("ROSSI"));
        QCOMPARE(f.codiciMostrati(), (QStringList {"10", "30"}));
        f.spuntaMostrato(30);
        f.filtra(QStringLiteral("100%"));
        QCOMPARE(f.codiciMostrati(), (QStringList {"40"}));
        f.spuntaMostrato(40);
        f.filtra(QStringLiteral("Bianchi"));
        qunsetenv("DISTINTA_SQL_TRACE");
        QVERIFY(!QFileInfo::exists(trace)); // no statement while filtering
        DistintaFixture::attendi();
        QCOMPARE(f.control<QLabel>(QStringLiteral("LBL_SELEZIONATI"))->text(), QStringLiteral("2 selezionati"));

        f.premi(QStringLiteral("CMD_ADDANAGRCAPO"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.codiciAlbero(), (QStringList {"10", "30", "40"}));
        // The rebuilt list keeps the filter typed.
        QCOMPARE(f.codiciMostrati(), (QStringList {"20"}));
    }

    // A click on a heading orders the rows (a second one reverses them); the "Sel." heading
    // still ticks every subject; every heading says what its column holds.
    void headingsSortAndExplain()
    {
        Editor f;
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        f.paginaAnagrafiche();
        fw::RecordsetGrid *grid = f.griglia();
        f.spuntaMostrato(50);
        QHeaderView *header = grid->horizontalHeader();
        const auto clickHeading = [&](int column) {
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(column) + 4, header->height() / 2));
        };
        header->resizeSection(3, 200);
        clickHeading(3);
        QCOMPARE(f.codiciMostrati(), (QStringList {"20", "40", "30", "10", "50"}));
        clickHeading(3);
        QCOMPARE(f.codiciMostrati(), (QStringList {"50", "10", "30", "40", "20"}));
        QCOMPARE(grid->model()->index(0, 0).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);
        QCOMPARE(DistintaFixture::colonna(f.form->parti().anagrafiche.lista(), QStringLiteral("Codice")),
                 (QVariantList {10, 20, 30, 40, 50}));

        clickHeading(0);
        QCOMPARE(DistintaFixture::colonna(f.form->parti().anagrafiche.lista(), QStringLiteral("Seleziona"))
                     .count(QVariant(1)),
                 5);
        QCOMPARE(f.codiciMostrati(), (QStringList {"50", "10", "30", "40", "20"}));

        for (int column = 0; column < grid->model()->columnCount(); ++column)
            QVERIFY2(!grid->model()->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty(),
                     qPrintable(QString::number(column)));
        QCOMPARE(grid->model()->headerData(8, Qt::Horizontal, Qt::ToolTipRole).toString(),
                 QStringLiteral("Città del soggetto"));
    }

    // Selector, tree, search, subject list, details, in that order; every button has its
    // Alt+letter and the main commands their keys, named in the tooltips.
    void keyboardReachesEverything()
    {
        Editor f;
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        const auto nextStop = [](QWidget *from) {
            for (QWidget *w = from->nextInFocusChain(); w != from; w = w->nextInFocusChain()) {
                if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(w->window()) && w->isEnabled())
                    return w;
            }
            return from;
        };
        const auto widget = [](QWidget *w) { return w; };
        QWidget *stop = f.selettore();
        QCOMPARE(stop = nextStop(stop), widget(f.albero()->view()));
        QCOMPARE(stop = nextStop(stop), widget(f.control<QLineEdit>(QStringLiteral("TXTCERCA"))));
        QCOMPARE(stop = nextStop(stop), widget(f.control<QToolButton>(QStringLiteral("CMD_CERCA"))));
        QCOMPARE(stop = nextStop(stop),
                 widget(f.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->tabBar()));
        f.paginaAnagrafiche();
        QCOMPARE(stop = nextStop(stop), widget(f.filtro()));
        QCOMPARE(stop = nextStop(stop), widget(f.griglia()));

        for (QAbstractButton *button : f.form->findChildren<QAbstractButton *>()) {
            // Each letter of "Importa" is another command's: it answers to Alt+K, as its tooltip says.
            if (!button->objectName().startsWith(QLatin1String("CMD_"))
                || button->objectName() == QLatin1String("CMD_ESPANDICOLLASSA")
                || button->objectName() == QLatin1String("CMD_IMPORTA"))
                continue;
            QVERIFY2(button->text().contains(QLatin1Char('&')), qPrintable(button->objectName()));
            QVERIFY2(button->toolTip().contains(QLatin1String("Alt+")), qPrintable(button->objectName()));
        }
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_ADDANAGR"))->toolTip().contains(QLatin1String("Ins")));
        // Two controls showing the same Alt+letter at once would each only take the focus; two
        // items of a menu with one letter would need a second key.
        QCOMPARE(altLetterClashes(f.form), QStringList());
        for (const QMenu *menu : f.form->findChildren<QMenu *>())
            QVERIFY2(altLetterClashes(menu).isEmpty(), qPrintable(altLetterClashes(menu).join(u'\n')));

        QVERIFY(f.attiva());
        f.albero()->setFocus();
        QTest::keyClick(f.albero()->view(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), widget(f.control<QLineEdit>(QStringLiteral("TXTCERCA"))));

        // Ins adds the ticked subjects under the focused node, as the button does.
        f.spunta(20);
        DistintaFixture::attendi();
        f.focalizza(10);
        QTest::keyClick(f.albero()->view(), Qt::Key_Insert);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.codiciAlbero(), (QStringList {"10", ".20"}));

        // F5 reads the tree again: a node written meanwhile by someone else shows.
        f.nodo(f.a01, 0, 50);
        QTest::keyClick(f.albero()->view(), Qt::Key_F5);
        QCOMPARE(f.codiciAlbero(), (QStringList {"10", ".20", "50"}));
    }

    // Empty areas say what to do; a search in the tree without result marks its box, and F3
    // goes on from the focused node, round to the top.
    void emptyAreasAndSearchesSaySomething()
    {
        Editor f;
        f.apri();
        auto *view = f.albero()->view();
        f.clicca(QStringLiteral("P0"));
        DistintaFixture::attendi();
        QCOMPARE(f.indicazione(view), QStringLiteral("Scegliere una distinta nella pagina «Distinte»."));
        f.clicca(QStringLiteral("C%1").arg(f.b01));
        DistintaFixture::attendi();
        QVERIFY(f.indicazione(view).startsWith(QStringLiteral("La distinta è vuota")));
        // Nothing to expand or to look for in an empty tree.
        QVERIFY(!f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->isEnabled());
        QVERIFY(!f.control<QToolButton>(QStringLiteral("CMD_CERCA"))->isEnabled());
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        DistintaFixture::attendi();
        QCOMPARE(f.indicazione(view), QString());
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->isEnabled());
        QCOMPARE(f.indicazione(f.control<fw::RecordsetGrid>(QStringLiteral("GRD_CERCADISTINTA"))),
                 QStringLiteral("Indicare un codice o una ragione sociale e premere «Cerca»."));
        f.paginaAnagrafiche();
        f.filtra(QStringLiteral("nessuno così"));
        DistintaFixture::attendi();
        QCOMPARE(f.indicazione(f.griglia()), QStringLiteral("Nessun soggetto corrisponde al filtro."));

        f.nodo(f.a01, 0, 30);
        f.nodo(f.a01, 0, 20);
        f.form->CaricaDistinta();
        QLineEdit *search = f.control<QLineEdit>(QStringLiteral("TXTCERCA"));
        search->setText(QStringLiteral("Rossi"));
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QVERIFY(search->styleSheet().isEmpty());
        QVERIFY(f.attiva());
        QTest::keyClick(f.albero()->view(), Qt::Key_F3);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30"));
        QVERIFY(f.host.statusBar().currentMessage().isEmpty());
        // Past the last match F3 starts again from the top, and says so.
        QTest::keyClick(f.albero()->view(), Qt::Key_F3);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QCOMPARE(f.host.statusBar().currentMessage(), QStringLiteral("Ricerca ripresa dall'inizio della distinta."));
        QVERIFY(search->styleSheet().isEmpty());

        // The field of the last search is checked in the menu and named by the empty box; Enter
        // searches by name again.
        auto menu = [&] {
            QMap<QString, bool> checked;
            for (QAction *action : f.control<QToolButton>(QStringLiteral("CMD_CERCA"))->menu()->actions())
                checked.insert(action->text(), action->isChecked());
            return checked;
        };
        QCOMPARE(menu(), (QMap<QString, bool> {{"Rag. Sociale", true}, {"Codice", false}}));
        search->setText(QStringLiteral("20"));
        f.control<QToolButton>(QStringLiteral("CMD_CERCA"))->menu()->actions().at(1)->trigger();
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("20"));
        QCOMPARE(menu(), (QMap<QString, bool> {{"Rag. Sociale", false}, {"Codice", true}}));
        QCOMPARE(search->placeholderText(), QStringLiteral("Cerca per codice"));
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(search->placeholderText(), QStringLiteral("Cerca per ragione sociale"));

        search->setText(QStringLiteral("Neri"));
        QVERIFY(search->styleSheet().isEmpty()); // a new text, no mark
        QTest::keyClick(search, Qt::Key_Return);
        QVERIFY(f.host.log().isQuiet()); // no dialog
        QVERIFY(!search->styleSheet().isEmpty());
        QTest::keyClick(search, Qt::Key_Backspace);
        QVERIFY(search->styleSheet().isEmpty());

        // Another classification starts with an empty box; the same one keeps it.
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        QCOMPARE(search->text(), QStringLiteral("Ner"));
        f.clicca(QStringLiteral("C%1").arg(f.b01));
        QCOMPARE(search->text(), QString());
    }

    // The widths a user sets and the splitters come back for that user; a file kept for another
    // set of columns leaves the design.
    void layoutRememberedPerUser()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("finestre.ini"));
        distinta::Aspetto::impostaFileAspetto(file);
        QList<std::pair<QString, int>> design;
        {
            Editor f;
            f.apri();
            f.clicca(QStringLiteral("C%1").arg(f.a01));
            design = f.albero()->designWidths();
            f.albero()->view()->header()->resizeSection(1, f.albero()->view()->columnWidth(1) + 120);
            auto *splitter = f.control<QSplitter>(QStringLiteral("SPLITTERVerticale"));
            splitter->setSizes({500, 900});
            emit splitter->splitterMoved(500, 1);
            QVERIFY(f.form->unload());
        }
        {
            Editor f;
            f.apri();
            const auto restored = f.albero()->designWidths();
            QVERIFY(restored.at(1).second > design.at(1).second);
            QVERIFY(restored.at(0).second != design.at(0).second);
            const QList<int> sizes = f.control<QSplitter>(QStringLiteral("SPLITTERVerticale"))->sizes();
            QVERIFY2(qAbs(double(sizes.at(0)) / (sizes.at(0) + sizes.at(1)) - 500.0 / 1400) < 0.02,
                     qPrintable(QString::number(sizes.at(0))));
            f.form->unload();
        }
        QSettings(file, QSettings::IniFormat)
            .setValue(QStringLiteral("utente_tester/FRMGD_DISTINTA/TVW_DISTINTA/colonne"),
                      QStringList {QStringLiteral("trGD02_CLIFOR_CG44")});
        {
            Editor f;
            f.apri();
            QCOMPARE(f.albero()->designWidths(), design);
        }
        distinta::Aspetto::impostaFileAspetto(QString());
    }

    // A tree wider than its room scrolls with a bar under it; whose row it is, the code and the
    // name, stays at the left edge.
    void codeAndNameStayInViewWhileTheTreeScrolls()
    {
        Editor f;
        f.apri();
        QVERIFY(f.attiva());
        f.form->resize(900, 700);
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        DistintaFixture::attendi();
        fw::TreeList *tree = f.albero();
        QScrollBar *sideways = tree->view()->horizontalScrollBar();
        QVERIFY(sideways->isVisible());
        const fw::TreeListNode root = tree->firstNode();
        const QRect code = tree->cellRect(root, QStringLiteral("trGD02_CLIFOR_CG44"));
        const QRect name = tree->cellRect(root, QStringLiteral("RagioneSociale"));
        const QRect start = tree->cellRect(root, QStringLiteral("trGD02_DATAINIZIOVAL"));
        sideways->setValue(sideways->maximum());
        QVERIFY(sideways->value() > 0);
        QCOMPARE(tree->cellRect(root, QStringLiteral("trGD02_CLIFOR_CG44")), code);
        QCOMPARE(tree->cellRect(root, QStringLiteral("RagioneSociale")), name);
        QCOMPARE(tree->cellRect(root, QStringLiteral("trGD02_DATAINIZIOVAL")), start.translated(-sideways->value(), 0));
    }

    // With DISTINTA_SHOTS_DIR set: pictures of the editor on the demo company at two sizes, the
    // tree (also scrolled to the far right), the subject list filtered and ticked, and the empty
    // areas.
    void picturesOnTheDemoData()
    {
        const QString folder = qEnvironmentVariable("DISTINTA_SHOTS_DIR");
        if (folder.isEmpty())
            QSKIP("DISTINTA_SHOTS_DIR not set");
        for (const QSize size : {QSize(1280, 800), QSize(1920, 1080)}) {
            DistintaFixture demo(TestDatabase::DemoData);
            demo.tipo(0, QStringLiteral("ZZZ"), QStringLiteral("Distinta appena creata"));
            demo.apri();
            demo.form->resize(size);
            demo.form->show();
            const QString suffix = QStringLiteral("_%1x%2.png").arg(size.width()).arg(size.height());
            const auto foto = [&](const QString &name) {
                DistintaFixture::attendi();
                QVERIFY(demo.form->grab().save(QDir(folder).filePath(name + suffix)));
            };
            foto(QStringLiteral("albero"));
            QScrollBar *sideways = demo.albero()->view()->horizontalScrollBar();
            sideways->setValue(sideways->maximum());
            foto(QStringLiteral("albero_scorso"));
            sideways->setValue(0);
            demo.paginaAnagrafiche();
            foto(QStringLiteral("anagrafiche"));
            auto *filtro = demo.control<QLineEdit>(QStringLiteral("TXT_FILTROANAGRAFICHE"));
            filtro->setText(QStringLiteral("Mil"));
            auto *grid = demo.control<fw::RecordsetGrid>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
            for (int row = 0; row < std::min(3, grid->model()->rowCount()); ++row)
                grid->model()->setData(grid->model()->index(row * 2, 0), Qt::Checked, Qt::CheckStateRole);
            foto(QStringLiteral("anagrafiche_filtrate_spuntate"));
            filtro->setText(QStringLiteral("nessun soggetto così"));
            foto(QStringLiteral("anagrafiche_filtro_senza_esito"));
            auto *tabs = demo.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"));
            tabs->setCurrentIndex(2);
            foto(QStringLiteral("ricerca_vuota"));
            demo.clicca(QStringLiteral("C%1").arg(
                demo.scalar(QStringLiteral("SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'ZZZ'"))
                    .toLongLong()));
            foto(QStringLiteral("albero_vuoto"));
            demo.clicca(QStringLiteral("P0"));
            foto(QStringLiteral("nessuna_distinta"));
            QTreeWidgetItem *first = demo.selettore()->topLevelItem(0)->child(0);
            demo.clicca(first->data(0, Qt::UserRole).toString());
            auto *search = demo.control<QLineEdit>(QStringLiteral("TXTCERCA"));
            search->setText(QStringLiteral("Nessuno con questo nome"));
            QTest::keyClick(search, Qt::Key_Return);
            foto(QStringLiteral("ricerca_albero_senza_esito"));
            tabs->setCurrentIndex(2);
            demo.control<QLineEdit>(QStringLiteral("TXT_RAGIONESOC"))->setText(QStringLiteral("Bar"));
            demo.premi(QStringLiteral("CMD_RICERCA"));
            foto(QStringLiteral("ricerca_risultati"));

            // The priority picker, opened on the focused node's priority, and Qt's own file
            // dialog, in Italian as the program shows it.
            PrioritaScelta scelta;
            auto *picker = new FRMGD_LISTINI(scelta);
            picker->setActiveDll(demo.form->ActiveDll());
            picker->setEntryClass(demo.form->entryClass());
            picker->showModeless(nullptr);
            picker->Form_Activate();
            DistintaFixture::attendi();
            QVERIFY(picker->grab().save(QDir(folder).filePath(QStringLiteral("priorita") + suffix)));
            delete picker;
        }
        QVERIFY(fw::installItalianTranslations(*QCoreApplication::instance()));
        QFileDialog save(nullptr, QStringLiteral("Esporta la distinta"));
        save.setOption(QFileDialog::DontUseNativeDialog);
        save.setAcceptMode(QFileDialog::AcceptSave);
        save.resize(800, 500);
        save.show();
        DistintaFixture::attendi();
        QVERIFY(save.grab().save(QDir(folder).filePath(QStringLiteral("dialogo_file.png"))));
    }
};

QTEST_MAIN(TestDistintaUsabilita)
#include "tst_distinta_usabilita.moc"
