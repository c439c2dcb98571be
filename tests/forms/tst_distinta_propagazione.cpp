#include "tests/forms/distintafixture.h"

#include "framework/workflowstatecontrol.h"
#include "tests/support/wheel.h"

#include <QAction>
#include <QMenu>

// Pushing a node's billing values and link state down its branch, from the tree's context menu,
// and the state control of the focused node.
class TestDistintaPropagazione : public QObject
{
    Q_OBJECT

    // 10 (Manuale, billing 13) > 11 > 12 > 13, 10 > 14; root 15 after the branch.
    struct Ramo : DistintaFixture
    {
        Ramo()
        {
            for (int code = 10; code <= 15; ++code)
                soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            n10 = nodo(a01, 0, 10, {.billingCode = 13, .billingRule = 4});
            n11 = nodo(a01, 0, 11, {.parent = n10, .billingRule = 0});
            n12 = nodo(a01, 0, 12, {.parent = n11, .billingCode = 10, .billingRule = 1});
            n13 = nodo(a01, 0, 13, {.parent = n12, .billingRule = 0});
            n14 = nodo(a01, 0, 14, {.parent = n10, .billingRule = 0});
            n15 = nodo(a01, 0, 15, {.billingRule = 2});
            exec(QStringLiteral(
                "INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, "
                "WF01_ORDINE) VALUES (0, 'DISTINTA', 'NUOVO', 'Nuovo', 1, 0), "
                "(3, 'DISTINTA', 'APPROV', 'Approvato', 0, 3)"));
        }

        QString fatturazione(qint64 node)
        {
            return scalar(QStringLiteral("SELECT GD02_TIPOANAGFATT || '/' || COALESCE(GD02_CLIFORFATT_CG44, '-') "
                                         "FROM GD02_DISTINTA WHERE GD02_ID = %1")
                              .arg(node))
                .toString();
        }
        QString stato(qint64 node)
        {
            return scalar(QStringLiteral("SELECT COALESCE(MAX(WF01_DESCR), '-') FROM GD02_DISTINTA "
                                         "LEFT JOIN WF02_STATORIGA ON WF02_GUID = gd02_guid "
                                         "LEFT JOIN WF01_STATI ON WF01_ID = WF02_ID_WF01 WHERE GD02_ID = %1")
                              .arg(node))
                .toString();
        }
        QComboBox *controlloStato() const
        {
            return control<fw::WorkflowStateControl>(QStringLiteral("TXT_GD02_STATO"))->findChild<QComboBox *>();
        }

        qint64 a01 = 0, n10 = 0, n11 = 0, n12 = 0, n13 = 0, n14 = 0, n15 = 0;
    };

private slots:
    // Every node below, at every depth, takes the rule and the code; the next root does not.
    // The walk does not reload what follows the focus, and the focus comes back.
    void billingValuesReachTheWholeBranchOnly()
    {
        Ramo f;
        f.apri();
        QTemporaryDir folder;
        const QString tracePath = folder.filePath(QStringLiteral("trace.sql"));
        f.focalizza(10);
        qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
        f.comando(10, QStringLiteral("mnuPropagaFigli"));
        qunsetenv("DISTINTA_SQL_TRACE");
        for (qint64 node : {f.n11, f.n12, f.n13, f.n14})
            QCOMPARE(f.fatturazione(node), QStringLiteral("4/13"));
        QCOMPARE(f.fatturazione(f.n15), QStringLiteral("2/-"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QVERIFY(f.host.log().isQuiet());
        QFile trace(tracePath);
        QVERIFY(trace.open(QIODevice::ReadOnly));
        const QString sent = QString::fromUtf8(trace.readAll());
        QCOMPARE(sent.count(QStringLiteral("UPDATE GD02_DISTINTA")), 4);
        QVERIFY(!sent.contains(QStringLiteral("GD03_PARAMETRI")));

        // An empty code is pushed down as no code.
        f.comando(11, QStringLiteral("mnuPropagaFigli")); // 11 now holds 4/13: nothing changes
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_CLIFORFATT_CG44 = NULL, GD02_TIPOANAGFATT = 2 "
                              "WHERE GD02_ID = %1")
                   .arg(f.n11));
        f.form->CaricaDistinta();
        f.comando(11, QStringLiteral("mnuPropagaFigli"));
        QCOMPARE(f.fatturazione(f.n12), QStringLiteral("2/-"));
        QCOMPARE(f.fatturazione(f.n13), QStringLiteral("2/-"));
        QCOMPARE(f.fatturazione(f.n14), QStringLiteral("4/13"));
    }

    // A node another clerk changed since the tree was read keeps that clerk's values and is
    // named; the others are written.
    void aNodeChangedElsewhereIsReportedNotOverwritten()
    {
        Ramo f;
        f.apri();
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_TIPOANAGFATT = 3 WHERE GD02_ID = %1").arg(f.n12));
        f.comando(10, QStringLiteral("mnuPropagaFigli"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Nodi non aggiornati perché modificati da un altro utente dopo la lettura "
                                             "(i loro dati sono stati riletti):\n12 - Cliente 12")}));
        QCOMPARE(f.fatturazione(f.n12), QStringLiteral("3/10"));
        QCOMPARE(f.fatturazione(f.n13), QStringLiteral("4/13"));
        QCOMPARE(f.fatturazione(f.n14), QStringLiteral("4/13"));
    }

    // The state of the node is copied below; a node without one first takes the default.
    void linkStateReachesTheBranch()
    {
        Ramo f;
        f.apri();
        f.comando(11, QStringLiteral("mnuRilasciaFigli"));
        QCOMPARE(f.stato(f.n11), QStringLiteral("Nuovo"));
        QCOMPARE(f.stato(f.n12), QStringLiteral("Nuovo"));
        QCOMPARE(f.stato(f.n13), QStringLiteral("Nuovo"));
        QCOMPARE(f.stato(f.n14), QStringLiteral("-"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("11"));

        // The user's choice in the state control is stored; showing a node stores nothing.
        f.focalizza(10);
        QCOMPARE(f.controlloStato()->currentIndex(), -1);
        f.controlloStato()->setCurrentIndex(f.controlloStato()->findData(3));
        emit f.controlloStato()->activated(f.controlloStato()->currentIndex());
        QCOMPARE(f.stato(f.n10), QStringLiteral("Approvato"));
        f.focalizza(12);
        QCOMPARE(f.controlloStato()->currentText(), QStringLiteral("Nuovo"));
        QCOMPARE(f.stato(f.n15), QStringLiteral("-"));

        f.comando(10, QStringLiteral("mnuRilasciaFigli"));
        for (qint64 node : {f.n11, f.n12, f.n13, f.n14})
            QCOMPARE(f.stato(node), QStringLiteral("Approvato"));
        QVERIFY(f.host.log().isQuiet());
    }

    // The state control and the promotion rule store what they show the moment it changes: a
    // wheel turned over them while the tree has the focus changes and stores nothing.
    void aWheelOverTheNodesControlsStoresNothing()
    {
        Ramo f;
        f.apri();
        f.focalizza(10);
        QComboBox *stato = f.controlloStato();
        auto *regola = f.control<QComboBox>(QStringLiteral("CBO_EREPROMO"));
        const int regolaMostrata = regola->currentIndex();
        const QString regolaSalvata = QStringLiteral("SELECT GD02_INDEREPROMO FROM GD02_DISTINTA WHERE GD02_ID = %1");
        const QVariant regolaPrima = f.scalar(regolaSalvata.arg(f.n10));
        QVERIFY(stato->isEnabled() && regola->isEnabled());
        for (int notches : {-1, 1}) {
            turnWheel(stato, notches);
            turnWheel(regola, notches);
        }
        QCOMPARE(stato->currentIndex(), -1);
        QCOMPARE(f.stato(f.n10), QStringLiteral("-"));
        QCOMPARE(regola->currentIndex(), regolaMostrata);
        QCOMPARE(f.scalar(regolaSalvata.arg(f.n10)), regolaPrima);
        QVERIFY(f.host.log().isQuiet());
    }

    void leafHasNothingToPropagate()
    {
        Ramo f;
        f.apri();
        f.focalizza(15);
        emit f.albero()->contextMenuRequested(f.albero()->focusedNode(), QPoint());
        f.form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"))->hide();
        QVERIFY(!f.form->findChild<QAction *>(QStringLiteral("mnuPropagaFigli"))->isEnabled());
        QVERIFY(f.form->findChild<QAction *>(QStringLiteral("mnuRilasciaFigli"))->isEnabled());
    }
};

QTEST_MAIN(TestDistintaPropagazione)
#include "tst_distinta_propagazione.moc"
