#include "db/sqlitefile.h"
#include "framework/dictionarytranslationservice.h"
#include "framework/hostglobalservices.h"
#include "tests/forms/distintafixture.h"

#include <QMenu>
#include <QToolButton>
#include <functional>

// A statement of the editor that fails reaches the user through the error dialog under its
// procedure's name, with the database's errors, and the user's answer decides what follows.
class TestDistintaErrori : public QObject
{
    Q_OBJECT

    // Lets a test act on the database while the error dialog is showing, as a user fixing the
    // cause before pressing Retry would.
    class LogConIntervento : public ScriptedLogService
    {
    public:
        std::function<void(int dialog)> duranteIlDialogo;

        int showErrorDialog(const QString &procedure, const QString &applicationTitle, const QString &caption,
                            int style) override
        {
            if (duranteIlDialogo)
                duranteIlDialogo(int(errorDialogs().size()));
            return ScriptedLogService::showErrorDialog(procedure, applicationTitle, caption, style);
        }
    };

    // Customer types A01 (nodes 30 > 10) and B01 (node 20); the editor opens on A01. The log
    // service of the editor is the one above.
    struct Guasti : DistintaFixture
    {
        Guasti()
        {
            soggetto(0, 10, QStringLiteral("Bar dell'Angolo"));
            soggetto(0, 20, QStringLiteral("Pasticceria Rossi"));
            soggetto(0, 30, QStringLiteral("Bar Sport"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Bar e locali"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Pasticcerie"));
            const qint64 sport = nodo(a01, 0, 30);
            nodo(a01, 0, 10, {.parent = sport});
            nodo(b01, 0, 20);
            host.globals().setLogServiceFactory([log = log] { return log; });
        }

        // The business names' table out of the way (or back), behind the editor's back.
        void rinomina(const QString &from, const QString &to)
        {
            dbsetup::SqliteFile file(host.database().path());
            file.exec(QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(from, to));
        }
        void togliAnagrafiche() { rinomina(QStringLiteral("CG16_ANAGGEN"), QStringLiteral("CG16_ALTROVE")); }
        void rimettiAnagrafiche() { rinomina(QStringLiteral("CG16_ALTROVE"), QStringLiteral("CG16_ANAGGEN")); }

        std::shared_ptr<LogConIntervento> log = std::make_shared<LogConIntervento>();
        qint64 a01 = 0, b01 = 0;
    };

    static bool nominaLaTabella(const ScriptedLogService::ErrorDialog &dialog, const QString &table)
    {
        for (const db::DbError &error : dialog.databaseErrors) {
            if (error.description.contains(table) && error.source == QLatin1String("SQLite"))
                return true;
        }
        return false;
    }

private slots:
    // Retry runs the failing statement again: once the cause is gone the tree loads as if
    // nothing had happened.
    void retryAfterTheCauseIsFixedLoadsTheTree()
    {
        Guasti f;
        f.apri();
        QCOMPARE(f.codiciAlbero(), QStringList({"30", ".10"}));
        f.togliAnagrafiche();
        f.log->answerNext({fw::Answer::Retry, fw::Answer::Retry});
        f.log->duranteIlDialogo = [&](int dialog) {
            if (dialog == 1) // the second dialog: the user has put the table back
                f.rimettiAnagrafiche();
        };

        f.clicca(QStringLiteral("C%1").arg(f.b01));
        const QList<ScriptedLogService::ErrorDialog> &dialogs = f.log->errorDialogs();
        QCOMPARE(dialogs.size(), 2);
        for (const ScriptedLogService::ErrorDialog &dialog : dialogs) {
            QCOMPARE(dialog.procedure, QStringLiteral("CaricaDistinta"));
            QCOMPARE(dialog.style, 4370);
            QCOMPARE(dialog.applicationTitle, QStringLiteral("VRAX Prove"));
            QVERIFY2(nominaLaTabella(dialog, QStringLiteral("CG16_ANAGGEN")), qPrintable(dialog.errors.join('\n')));
        }
        QCOMPARE(f.codiciAlbero(), QStringList({"20"}));
        QCOMPARE(f.albero()->focusedNode().value(QStringLiteral("RagioneSociale")).toString(),
                 QStringLiteral("Pasticceria Rossi"));
        QCOMPARE(f.form->parti().albero.idDistinta(), QString::number(f.b01));
        QCOMPARE(f.host.log().errorDialogs().size(), 0); // the editor used the host's service
    }

    // Abort leaves the loading at once; the next choice of a type loads normally again.
    void abortLeavesTheLoadingAndNothingLingers()
    {
        Guasti f;
        f.apri();
        f.togliAnagrafiche();
        f.log->answerNext(fw::Answer::Abort);
        f.clicca(QStringLiteral("C%1").arg(f.b01));
        QCOMPARE(f.log->errorDialogs().size(), 1);
        QVERIFY(!f.form->parti().albero.frameDistinta()); // the old tree's frame was released before loading
        QVERIFY(f.didascaliaLivelli() != f.host.translations().text(94563, QString())); // nothing after it ran
        QVERIFY(f.log->messages().isEmpty());

        f.rimettiAnagrafiche();
        f.clicca(QStringLiteral("C%1").arg(f.a01));
        QCOMPARE(f.log->errorDialogs().size(), 1);
        QCOMPARE(f.codiciAlbero(), QStringList({"30", ".10"}));
        QVERIFY(f.form->parti().albero.frameDistinta());
    }

    // Ignore goes on after the failed statement: with no rows read the tree is empty, with no
    // second dialog and no stale nodes of the previous type.
    void ignoreGoesOnWithAnEmptyTree()
    {
        Guasti f;
        f.apri();
        f.togliAnagrafiche();
        f.log->answerNext(fw::Answer::Ignore);
        f.clicca(QStringLiteral("C%1").arg(f.b01));
        QCOMPARE(f.log->errorDialogs().size(), 1);
        QCOMPARE(f.albero()->count(), 0);
        QVERIFY(!f.form->nodi());
        // The statement after the failed one did run: the level button shows its neutral caption.
        QCOMPARE(f.didascaliaLivelli(), f.host.translations().text(94563, QString()));
        QVERIFY(!f.form->parti().albero.frameDistinta());

        // With nothing loaded the in-tree search and the level button do nothing, silently.
        f.control<QLineEdit>(QStringLiteral("TXTCERCA"))->setText(QStringLiteral("Bar"));
        QTest::keyClick(f.control<QLineEdit>(QStringLiteral("TXTCERCA")), Qt::Key_Return);
        f.control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->click();
        QCOMPARE(f.log->errorDialogs().size(), 1);
        QVERIFY(f.log->messages().isEmpty());
    }

    // A failing cross-list search is reported under the label of what started it: the key
    // handlers share one, the button has its own.
    void failingSearchIsReportedUnderItsLabel()
    {
        Guasti f;
        f.apri();
        f.togliAnagrafiche();
        f.log->answerNext(fw::Answer::Abort);
        f.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(2);
        auto *code = f.control<QLineEdit>(QStringLiteral("TXT_CODICE"));
        code->setText(QStringLiteral("20"));
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(f.log->errorDialogs().size(), 1);
        QCOMPARE(f.log->errorDialogs().first().procedure, QStringLiteral("TXT_RAGIONESOC_KeyDown"));
        QVERIFY(nominaLaTabella(f.log->errorDialogs().first(), QStringLiteral("CG16_ANAGGEN")));
        QVERIFY(f.log->messages().isEmpty()); // no "no result" message after a failure
        f.log->answerNext(fw::Answer::Abort);
        f.control<QPushButton>(QStringLiteral("CMD_RICERCA"))->click();
        QCOMPARE(f.log->errorDialogs().size(), 2);
        QCOMPARE(f.log->errorDialogs().last().procedure, QStringLiteral("CMD_RICERCA_ButtonClick"));

        f.rimettiAnagrafiche();
        QTest::keyClick(code, Qt::Key_Return);
        const db::RecordsetPtr found = f.control<fw::RecordsetGrid>(QStringLiteral("GRD_CERCADISTINTA"))->recordset();
        QVERIFY(found);
        QCOMPARE(DistintaFixture::colonna(found, QStringLiteral("ANAGRAFICA")),
                 QVariantList({QStringLiteral("20-Pasticceria Rossi")}));
    }
};

QTEST_MAIN(TestDistintaErrori)
#include "tst_distinta_errori.moc"
