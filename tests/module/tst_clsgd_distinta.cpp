#include "forms/anagdistinta/frmgd_anagdistinta.h"
#include "forms/distinta/frmgd_distinta.h"
#include "module/clsgd_distinta.h"
#include "tests/support/scriptedhost.h"

#include <QSignalSpy>
#include <QtTest>

// The entry class as the shell drives it.
class TestClsgdDistinta : public QObject
{
    Q_OBJECT

private slots:
    void startsWithNothingButItself()
    {
        CLSGD_DISTINTA entry;
        QCOMPARE(entry.ActiveDll(), static_cast<fw::Cinterface *>(&entry));
        QVERIFY(!entry.CanInsert() && !entry.CanDelete() && !entry.CanUpdate() && !entry.CanQbe());
        QVERIFY(entry.Caption().isEmpty() && entry.MenuProg().isEmpty());
        QVERIFY(!entry.Connection() && !entry.ClsGlobal() && !entry.ActiveNavigator());
        QVERIFY(entry.CloseForm().isValid());
        QCOMPARE(entry.CloseForm().toBool(), false); // nothing to close
    }

    void filtroIsDiscarded()
    {
        CLSGD_DISTINTA entry;
        entry.setFiltro(QStringLiteral(" MG94_CODCAMP IN ('A')"));
        QVERIFY(entry.Filtro().isNull());
    }

    void sixteenBitValuesKeepThePreviousOneOnOverflow()
    {
        CLSGD_DISTINTA entry;
        entry.setProgramMode(-32768);
        QCOMPARE(entry.ProgramMode(), -32768);
        entry.setProgramMode(32768);
        QCOMPARE(entry.ProgramMode(), -32768);
        entry.setWindowState(2);
        entry.setWindowState(-40000);
        QCOMPARE(entry.WindowState(), 2);
        entry.setWindowState(32767);
        QCOMPARE(entry.WindowState(), 32767);
    }

    void transferDataRaisesDataTransfer()
    {
        CLSGD_DISTINTA entry;
        QSignalSpy spy(&entry, &CLSGD_DISTINTA::DataTransfer);
        const QVariantMap data {{QStringLiteral("CliFor"), 42}};
        QVERIFY(entry.TransferData(data).isNull());
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0), QVariant(data));
    }

    void showFormTwiceKeepsOnlyTheNewest()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass(QStringLiteral("Distinte"));
        entry->ShowForm();
        QPointer<FRMGD_DISTINTA> first = entry->form();
        entry->ShowForm();
        QPointer<FRMGD_DISTINTA> second = entry->form();

        QVERIFY(first && second && first != second);
        QVERIFY(first->isVisible()); // the earlier editor stays open
        QCOMPARE(second->objectName(), QStringLiteral("FRMGD_DISTINTA"));
        QCOMPARE(second->windowTitle(), QStringLiteral("Distinte"));
        QCOMPARE(second->entryClass(), static_cast<fw::Cinterface *>(entry.get()));
        QCOMPARE(second->ActiveDll(), entry->ActiveDll());

        QCOMPARE(entry->CloseForm().toBool(), true); // closes the newest only
        QVERIFY(first->isVisible());
        QVERIFY(first->ActiveDll());
        QVERIFY(host.log().isQuiet());
    }

    void closeFormAnswersWhetherTheEditorLetGo()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        QVERIFY(form);

        host.navigator().setRefuseClose(true);
        QCOMPARE(entry->CloseForm().toBool(), false);
        QCOMPARE(entry->form(), form);
        QVERIFY(form->isVisible() && form->ActiveDll() && form->connection());

        host.navigator().setRefuseClose(false);
        QCOMPARE(entry->CloseForm().toBool(), true);
        QVERIFY(!entry->form() || !entry->form()->ActiveDll());
        QCOMPARE(host.navigator().closeQuestions,
                 QStringList({QStringLiteral("FRMGD_DISTINTA"), QStringLiteral("FRMGD_DISTINTA")}));
        QVERIFY(host.log().isQuiet());
    }

    void navigatorModelsGetTheEditorOnlyWhenActive()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        ScriptedNavigator &navigator = host.navigator();

        entry->setIsActive(false);
        emit navigator.InitializeScriptObjectModel(&navigator);
        emit navigator.InitializeLayoutObjectModel(&navigator);
        QVERIFY(navigator.registrations.isEmpty() && navigator.layouts.isEmpty());

        entry->setIsActive(true);
        emit navigator.InitializeScriptObjectModel(&navigator);
        emit navigator.InitializeLayoutObjectModel(&navigator);
        emit navigator.BeforeExportToOffice();
        QCOMPARE(navigator.registrations.size(), 1);
        QCOMPARE(navigator.registrations.first().object, form);
        QCOMPARE(navigator.layouts, QStringList(QStringLiteral("FRMGD_DISTINTA")));
        QCOMPARE(entry->form(), form); // the model gave the same editor back
    }

    // The instance the editor makes for the classification types opens the type maintenance on
    // the type it was given, and closes it as it would close the editor.
    void anInstanceForTheTypesOpensTheTypeMaintenance()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        std::unique_ptr<fw::Cinterface> made = entry->createInstance();
        auto *types = dynamic_cast<CLSGD_DISTINTA *>(made.get());
        QVERIFY(types && types != entry.get());
        QCOMPARE(types->ActiveDll(), static_cast<fw::Cinterface *>(types));
        QVERIFY(!types->Connection() && types->Caption().isEmpty()); // as new as the host's own
        fw::HostContext context = host.context();
        context.caption = QStringLiteral("Anagrafica distinta");
        fw::fillHostContract(*types, context);
        types->setTypeMaintenance(42);
        types->ShowForm();

        auto *form = qobject_cast<FRMGD_ANAGDISTINTA *>(types->shownForm());
        QVERIFY(form);
        QVERIFY(!types->form());
        QCOMPARE(form->idDistinta(), std::optional<qint64>(42));
        QCOMPARE(form->windowTitle(), QStringLiteral("Anagrafica distinta"));
        QCOMPARE(form->entryClass(), static_cast<fw::Cinterface *>(types));
        emit host.navigator().InitializeLayoutObjectModel(&host.navigator());
        QCOMPARE(host.navigator().layouts, QStringList(QStringLiteral("FRMGD_ANAGDISTINTA")));
        QCOMPARE(types->CloseForm().toBool(), true);
        QVERIFY(!entry->shownForm()); // the first instance never opened anything
        QVERIFY(host.log().isQuiet());
    }

    void editorOutlivesTheEntryClassSafely()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        QPointer<FRMGD_DISTINTA> form = host.openEditor(*entry);
        entry.reset();
        QVERIFY(form);
        QVERIFY(!form->entryClass() && !form->ActiveDll());
        QVERIFY(form->unload()); // closes without the host and without failing
        QVERIFY(host.log().isQuiet());
    }
};

QTEST_MAIN(TestClsgdDistinta)
#include "tst_clsgd_distinta.moc"
