#include "framework/mdihost.h"
#include "framework/recordsetgrid.h"
#include "shell/cards/subjectcardcomponent.h"
#include "shell/cards/subjectcardform.h"
#include "framework/hostglobalservices.h"
#include "tests/forms/gestionifixture.h"

#include <QDir>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScreen>

namespace {

// The shell's window as far as the forms see it: an MDI area they open in.
class Shell : public QMainWindow, public fw::MdiHost
{
    Q_OBJECT
    Q_INTERFACES(fw::MdiHost)

public:
    Shell()
        : area(new QMdiArea)
    {
        setCentralWidget(area);
        resize(1280, 800);
    }
    void addForm(QWidget *form) override
    {
        QMdiSubWindow *window = area->addSubWindow(form);
        window->setWindowTitle(form->windowTitle());
        window->showMaximized();
    }
    QMdiArea *area;
};

} // namespace

// The whole way on the demo company, inside an MDI area as in the shell: a supplier type of a
// division is made in the type maintenance opened from "Gestioni collegate", shows in the
// selector, a node gets a price-list priority from the picker, and the card of the node's
// subject opens from the tree's menu. With DISTINTA_SHOTS_DIR set, pictures of the type form,
// the picker and the card are saved there.
class TestGestioniDemo : public QObject
{
    Q_OBJECT

    static void foto(QWidget *widget, const QString &name, bool wholeScreen = false)
    {
        const QString folder = qEnvironmentVariable("DISTINTA_SHOTS_DIR");
        if (folder.isEmpty())
            return;
        QCoreApplication::processEvents();
        QPixmap picture = widget->grab();
        if (wholeScreen && QGuiApplication::platformName() == QLatin1String("xcb"))
            picture = widget->screen()->grabWindow(0);
        QVERIFY(picture.save(QDir(folder).filePath(name)));
    }

private slots:
    void fromANewTypeToTheSubjectCard()
    {
        GestioniFixture f(TestDatabase::DemoData);
        Shell shell;
        f.entry->setActiveFrame(&shell);
        shell.show();
        std::vector<std::unique_ptr<SubjectCardComponent>> cards;
        QPointer<SubjectCardForm> card;
        f.host.modules().cardOpener = [&](const QString &programId, int company, qint64 code) {
            auto component = std::make_unique<SubjectCardComponent>(
                programId == SubjectCardComponent::CustomerCard ? 0 : 1);
            fw::HostContext context = f.host.context();
            context.activeFrame = &shell;
            fw::fillHostContract(*component, context);
            component->ShowForm();
            component->TransferData(QVariantMap {{QStringLiteral("Ditta"), company}, {QStringLiteral("CliFor"), code}});
            card = component->form();
            cards.push_back(std::move(component));
            return true;
        };
        f.apri();
        QVERIFY(f.form->isVisible());
        QCOMPARE(shell.area->subWindowList().size(), 1); // the editor, in the area

        // The type maintenance from the linked managements, on the type the editor shows.
        for (QAction *action : f.control<QToolButton>(QStringLiteral("CMD_GESTIONICOLLEGATE"))->menu()->actions()) {
            if (action->data() == QStringLiteral("Distinta"))
                action->trigger();
        }
        f.anagrafica = f.form->parti().gestioni.anagraficaDistinta();
        QVERIFY(f.anagrafica);
        QVERIFY(qobject_cast<QMdiSubWindow *>(f.anagrafica->parentWidget()));
        f.anagrafica->Form_Activate();
        QCoreApplication::processEvents();
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("CLI-ALI"));
        f.nuovoTipo(QStringLiteral("FOR-LOG"), QStringLiteral("Fornitori di logistica"), 1, QStringLiteral("ALI"),
                    QStringLiteral("STD"));
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join('\n')));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("FOR-LOG"));
        QCOMPARE(f.campo<QLabel>(QStringLiteral("TXT_DESCRDIV"))->text(), QStringLiteral("Divisione Alimentare"));
        foto(&shell, QStringLiteral("anagdistinta.png"));
        QVERIFY(f.anagrafica->unload());

        const qint64 type = f.scalar(
                                 QStringLiteral("SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'FOR-LOG'"))
                                .toLongLong();
        QTreeWidgetItem *added = f.voce(QStringLiteral("F%1").arg(type));
        QVERIFY(added);
        QCOMPARE(added->parent(), f.voce(QStringLiteral("P1")));
        QCOMPARE(added->text(0), QStringLiteral("FOR-LOG-Fornitori di logistica"));

        // A price-list priority for a node, from the picker.
        fw::TreeList *tree = f.albero();
        const fw::TreeListNode node = tree->firstNode().next();
        const QString subject = node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toString();
        const qint64 nodeId =
            f.form->nodi()->valueAt(node.row(), f.form->nodi()->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        GestioniFixture::conPicker(
            [&] {
                f.form->parti().priorita.TVW_DISTINTA_OnEditButtonClick(node,
                                                                        QStringLiteral("trGD02_IDLOCALIZZATA_LP09"));
            },
            [&](FRMGD_LISTINI *picker) {
                picker->move(shell.geometry().center() - QPoint(picker->width() / 2, picker->height() / 2));
                auto *grid = GestioniFixture::in<fw::RecordsetGroupGrid>(picker, QStringLiteral("QGRID_LISTINI"));
                QCOMPARE(grid->groupModel()->groupCount(), 3); // GDO, HOR and STD; NEW has no conditions
                grid->setCurrentIndex(grid->groupModel()->index(1, 1, grid->groupModel()->index(1, 0)));
                foto(picker, QStringLiteral("listini.png"), true);
                QTest::keyClick(grid, Qt::Key_Return);
            });
        QCOMPARE(f.scalar(QStringLiteral("SELECT LP09_CODICE FROM GD02_DISTINTA INNER JOIN LP09_TESTATAPRIORITA "
                                         "ON LP09_ID = GD02_IDLOCALIZZATA_LP09 WHERE GD02_ID = %1")
                              .arg(nodeId))
                     .toString(),
                 QStringLiteral("HOR"));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_PRIORITA_LOCALIZZATA"))->text(), QStringLiteral("HOR"));

        // The subject's card from the tree's menu.
        const QRect cell = tree->cellRect(tree->focusedNode(), QStringLiteral("RagioneSociale"));
        QTest::mouseClick(tree->view()->viewport(), Qt::RightButton, {},
                          tree->view()->viewport()->mapFrom(tree, cell.center()));
        auto *menu = f.form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"));
        QVERIFY(menu->isVisible());
        for (QAction *action : menu->actions()) {
            if (action->objectName() == QLatin1String("mnuSchedaCF"))
                action->trigger();
        }
        menu->close();
        QVERIFY(card);
        card->Form_Activate();
        QCOMPARE(GestioniFixture::in<QLineEdit>(card, QStringLiteral("txtCodice"))->text(), subject);
        QVERIFY(card->distinte()->recordCount() >= 1);
        QVERIFY(f.host.log().isQuiet());
        foto(&shell, QStringLiteral("scheda.png"));
        card->unload();
    }
};

QTEST_MAIN(TestGestioniDemo)
#include "tst_gestioni_demo.moc"
