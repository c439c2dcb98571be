#include "forms/distinta/frmgd_distinta.h"
#include "framework/mdihost.h"
#include "framework/recordframe.h"
#include "module/clsgd_distinta.h"
#include "platform/db/recordset.h"
#include "tests/support/scriptedhost.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

namespace {

// A form of the frame over the classification types, with the usual fixed filter field.
class TypesForm : public FormFrame
{
    Q_OBJECT

public:
    TypesForm()
    {
        setObjectName(QStringLiteral("FRMTEST_TIPI"));
        code->setObjectName(QStringLiteral("TXT_GD01_CODICE"));
    }

    QLineEdit *code = new QLineEdit(this);
    QLineEdit *description = new QLineEdit(this);
    int activations = 0;

protected:
    bool activateForm() override
    {
        ++activations;
        return step(QStringLiteral("ImpostaFME_TIPI"), [this] {
            fw::RecordFrame *frame = openRecordFrame(
                QStringLiteral("SELECT * FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = %1").arg(companyCode()),
                QStringLiteral("GD01_ID"));
            frame->bind(code, QStringLiteral("GD01_CODICE"));
            frame->bind(description, QStringLiteral("GD01_DESCR"));
        });
    }
    void writeFixedFilterFields(db::Recordset &recordset) override
    {
        recordset.setValue(QStringLiteral("GD01_DITTA_CG18"), companyCode());
    }
};

// The shell's MDI area, as far as forms see it.
class MdiArea : public QMdiArea, public fw::MdiHost
{
    Q_OBJECT
    Q_INTERFACES(fw::MdiHost)

public:
    void addForm(QWidget *form) override { addSubWindow(form)->show(); }
};

} // namespace

class TestFormFrame : public QObject
{
    Q_OBJECT

    // A types form opened by an entry class of the scripted host, through its first activation.
    std::unique_ptr<TypesForm> openTypesForm(ScriptedHost &host, CLSGD_DISTINTA &entry)
    {
        auto form = std::make_unique<TypesForm>();
        form->setActiveDll(&entry);
        form->setEntryClass(&entry);
        form->setWindowTitle(QStringLiteral("Tipi distinta"));
        form->Form_Load();
        form->Form_Activate();
        Q_UNUSED(host)
        return form;
    }

private slots:
    void executeFormEventTellsOnlyOpenAndClose()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        QList<ScriptedNavigator::FormEvent> &events = host.navigator().formEvents;
        QCOMPARE(events.size(), 1); // tsOpen at start-up
        QCOMPARE(events.first().formIdentifier, QStringLiteral("FRMGD_DISTINTA"));
        QCOMPARE(events.first().open, 1);

        QVERIFY(form->ExecuteFormEvent(QStringLiteral("tsAltro")).isNull());
        QVERIFY(form->ExecuteFormEvent(QStringLiteral("tsopen")).isNull());
        QCOMPARE(events.size(), 1);

        QVERIFY(form->ExecuteFormEvent(QStringLiteral("tsClose")).isNull());
        QCOMPARE(events.size(), 2);
        QCOMPARE(events.last().open, 0);
        QVERIFY(events.last().text.isEmpty());
        QVERIFY(host.log().isQuiet());
    }

    void secondActivationReloadsNothing()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        QVERIFY(!form->isFirstActivation());
        const db::ConnectionPtr connection = form->connection();
        QVERIFY(connection && connection != host.database().connection()); // a connection of its own
        QCOMPARE(connection->connectionString(), host.database().connectionString());
        const db::RecordsetPtr recordset = form->recordFrame()->recordset();

        form->Form_Activate();
        QCOMPARE(form->connection(), connection);
        QCOMPARE(form->recordFrame()->recordset(), recordset);
        QCOMPARE(host.navigator().formEvents.size(), 1);
    }

    void eseguiQueryOnAnEmptyRecordsetLeavesTheFrameAlone()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        fw::RecordFrame *frame = form->recordFrame();
        QVERIFY(frame && frame->recordset()->isEmpty());
        QCOMPARE(frame->recordset()->fieldIndex(QStringLiteral("RagioneSociale")) >= 0, true);
        QSignalSpy status(frame, &fw::RecordFrame::ChangeStatus);
        QSignalSpy replaced(frame, &fw::RecordFrame::recordsetReplaced);

        QCOMPARE(form->EseguiQuery(), false);
        QCOMPARE(frame->state(), int(fw::RecordFrame::Browse));
        QVERIFY(status.isEmpty() && replaced.isEmpty());
        QVERIFY(host.log().isQuiet());
    }

    void eseguiQueryFindsTheTypedRowOfTheCompany()
    {
        ScriptedHost host;
        db::Connection &db = *host.database().connection();
        db.execute(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (2, "
                                  "'GDO', 'Altra ditta')"));
        db.execute(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (1, "
                                  "'GDO', 'Grande distribuzione')"));
        auto entry = host.createEntryClass();
        auto form = openTypesForm(host, *entry);
        fw::RecordFrame *frame = form->recordFrame();

        QCOMPARE(form->EseguiQuery(), false); // browsing: nothing to search
        frame->addNew();
        form->code->setText(QStringLiteral("NUOVO"));
        QCOMPARE(form->EseguiQuery(), false); // not there: the new row stays
        QCOMPARE(frame->state(), int(fw::RecordFrame::Insert));
        QCOMPARE(form->code->text(), QStringLiteral("NUOVO"));

        form->code->setText(QStringLiteral("gdo "));
        QCOMPARE(form->EseguiQuery(), true);
        QCOMPARE(frame->state(), int(fw::RecordFrame::Browse));
        QCOMPARE(form->description->text(), QStringLiteral("Grande distribuzione"));
        QCOMPARE(frame->recordset()->value(QStringLiteral("GD01_DITTA_CG18")).toInt(), 1);
        QVERIFY(host.log().isQuiet());
    }

    void errorHandlerRetriesIgnoresOrAborts()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        auto form = openTypesForm(host, *entry);
        ScriptedLogService &log = host.log();
        int attempts = 0;
        auto failOnce = [&] {
            if (attempts++ == 0)
                form->connection()->execute(QStringLiteral("UPDATE TABELLA_INESISTENTE SET X = 1"));
        };

        log.answerNext(fw::Answer::Retry);
        QCOMPARE(form->step(QStringLiteral("Salva"), failOnce), true);
        QCOMPARE(attempts, 2);
        QCOMPARE(log.errorDialogs().size(), 1);
        const ScriptedLogService::ErrorDialog &dialog = log.errorDialogs().first();
        QCOMPARE(dialog.procedure, QStringLiteral("Salva"));
        QCOMPARE(dialog.style, 4370);
        QCOMPARE(dialog.applicationTitle, QStringLiteral("VRAX Prove"));
        QCOMPARE(dialog.caption, QStringLiteral("Tipi distinta"));
        QCOMPARE(dialog.errors.size(), 1);
        QVERIFY(dialog.errors.first().startsWith(QStringLiteral("Salva: ")));
        QVERIFY(!dialog.databaseErrors.isEmpty());

        // Ignore: the failing statement is skipped and the procedure goes on.
        QStringList ran;
        auto procedure = [&](int answer) {
            log.answerNext(answer);
            ran.clear();
            attempts = 0;
            if (!form->step(QStringLiteral("Procedura"), failOnce))
                return;
            ran << QStringLiteral("seguente");
        };
        procedure(fw::Answer::Ignore);
        QCOMPARE(attempts, 1);
        QCOMPARE(ran, QStringList(QStringLiteral("seguente")));
        procedure(fw::Answer::Abort);
        QVERIFY(ran.isEmpty());
        procedure(fw::Answer::Ok); // any other answer leaves too
        QVERIFY(ran.isEmpty());
        QCOMPARE(log.errorDialogs().size(), 4);
    }

    // A checked write: another user's change is no failure for the error dialog but the stale
    // callback's to tell; any other failure still goes to the dialog.
    void writeRowHandsAStaleRowToItsCallback()
    {
        ScriptedHost host;
        host.database().connection()->execute(QStringLiteral(
            "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (1, 'A', 'Prima')"));
        auto entry = host.createEntryClass();
        auto form = openTypesForm(host, *entry);
        const db::RecordsetPtr rows = form->recordFrame()->recordset();
        QList<db::DatabaseError> stale;
        const auto writeDescription = [&](const QString &text) {
            return form->writeRow(
                QStringLiteral("Salva"),
                [&] {
                    rows->setValue(QStringLiteral("GD01_DESCR"), text);
                    rows->update();
                },
                [&](const db::DatabaseError &error) { stale << error; });
        };

        host.database().connection()->execute(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Altrove'"));
        QVERIFY(!writeDescription(QStringLiteral("Mia")));
        QCOMPARE(stale.size(), 1);
        QVERIFY(stale.first().isStaleRow());
        QVERIFY(form->connection()->errors().isEmpty());
        QVERIFY(host.log().isQuiet());
        QCOMPARE(host.database().scalar(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA")).toString(),
                 QStringLiteral("Altrove"));

        rows->cancelUpdate();
        rows->resync();
        QVERIFY(writeDescription(QStringLiteral("Mia")));
        QCOMPARE(host.database().scalar(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA")).toString(),
                 QStringLiteral("Mia"));

        host.log().answerNext(fw::Answer::Abort);
        QVERIFY(!form->writeRow(
            QStringLiteral("Salva"),
            [&] { form->connection()->execute(QStringLiteral("UPDATE TABELLA_INESISTENTE SET X = 1")); },
            [&](const db::DatabaseError &error) { stale << error; }));
        QCOMPARE(stale.size(), 1);
        QCOMPARE(host.log().errorDialogs().size(), 1);
        QCOMPARE(host.log().errorDialogs().first().procedure, QStringLiteral("Salva"));
    }

    void errorHandlerWithoutLogServiceAborts()
    {
        TypesForm form; // no host: no log service
        form.setWindowTitle(QStringLiteral("Tipi distinta"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Classe Log non settata")));
        int attempts = 0;
        QCOMPARE(form.step(QStringLiteral("Form_Activate"),
                           [&] {
                               ++attempts;
                               throw std::runtime_error("x");
                           }),
                 false);
        QCOMPARE(attempts, 1);
    }

    void pendingChangesAreConfirmedBeforeClosing()
    {
        ScriptedHost host;
        host.database().connection()->execute(QStringLiteral(
            "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR) VALUES (1, 'A', 'Prima')"));
        auto entry = host.createEntryClass();
        auto form = openTypesForm(host, *entry);
        form->description->setText(QStringLiteral("Cambiata"));
        QCOMPARE(form->recordFrame()->state(), int(fw::RecordFrame::Edit));

        host.log().answerNext(fw::Answer::Cancel);
        QCOMPARE(form->unload(), false);
        QCOMPARE(host.log().messages().size(), 1);
        QCOMPARE(host.log().messages().first().title, QStringLiteral("Tipi distinta"));
        QVERIFY(host.navigator().closeQuestions.isEmpty()); // stopped before the script layer

        // Saving fails (another user changed the row): whatever the answer to the error, the
        // form stays open with the change, nothing is lost.
        host.database().connection()->execute(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Altrove'"));
        for (const int answer : {fw::Answer::Abort, fw::Answer::Ignore}) {
            host.log().answerNext({fw::Answer::Yes, answer});
            QCOMPARE(form->unload(), false);
            QCOMPARE(form->description->text(), QStringLiteral("Cambiata"));
        }
        QCOMPARE(host.log().errorDialogs().size(), 2);
        host.database().connection()->execute(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Prima'"));

        host.log().answerNext(fw::Answer::Yes);
        QCOMPARE(form->unload(), true);
        QCOMPARE(host.database().scalar(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA")).toString(),
                 QStringLiteral("Cambiata"));
        QVERIFY(!form->connection() && !form->recordFrame() && !form->logService() && !form->ActiveDll());
    }

    void unloadInsideTheMdiAreaClosesItsSubWindow()
    {
        ScriptedHost host;
        MdiArea area;
        area.show();
        auto entry = host.createEntryClass();
        entry->setActiveFrame(&area);
        FRMGD_DISTINTA *form = host.openEditor(*entry);
        QCOMPARE(area.subWindowList().size(), 1);
        QCOMPARE(area.subWindowList().first()->widget(), form);

        host.navigator().setRefuseClose(true);
        QCOMPARE(form->unload(), false);
        QVERIFY(area.subWindowList().first()->isVisible());

        host.navigator().setRefuseClose(false);
        QCOMPARE(entry->CloseForm().toBool(), true);
        QVERIFY(area.subWindowList().isEmpty() || !area.subWindowList().first()->isVisible());
    }

    void companyChangeWarnsAndCloses()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass(QStringLiteral("Distinta clienti"));
        QPointer<FRMGD_DISTINTA> form = host.openEditor(*entry);
        host.log().setDefaultAnswer(fw::Answer::Ok);

        form->workingCompanyChanged();
        QCOMPARE(host.log().messages().size(), 1);
        const ScriptedLogService::Message &message = host.log().messages().first();
        QCOMPARE(message.text,
                 QStringLiteral("Cambiando la ditta di lavoro è necessario uscire e rientrare nel programma."));
        QCOMPARE(message.style, 48);
        QCOMPARE(message.title, QStringLiteral("Distinta clienti"));
        QVERIFY(!form || (!form->isVisible() && !form->ActiveDll()));
        QCOMPARE(host.navigator().formEvents.last().open, 0);

        TypesForm other; // a form without the operation ignores the change
        other.workingCompanyChanged();
        QCOMPARE(host.log().messages().size(), 1);
    }

    // Once unloaded a form no longer hears its own controls: a field that loses the focus as the
    // window goes away reaches nothing.
    void anUnloadedFormHearsNothingFromItsControls()
    {
        ScriptedHost host;
        auto entry = host.createEntryClass();
        auto form = openTypesForm(host, *entry);
        int heard = 0;
        connect(form->code, &QLineEdit::textChanged, form.get(), [&] { ++heard; });
        form->code->setText(QStringLiteral("A"));
        QCOMPARE(heard, 1);
        form->Form_UnLoad();
        form->code->setText(QStringLiteral("B"));
        QCOMPARE(heard, 1);
    }
};

QTEST_MAIN(TestFormFrame)
#include "tst_formframe.moc"
