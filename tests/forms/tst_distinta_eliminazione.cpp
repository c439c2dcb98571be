#include "tests/forms/distintafixture.h"

#include "data/legamistatements.h"
#include "framework/messagestyle.h"

// Removing a node: the questions in their order, the one hard refusal, what the database removes
// with the node, and a second clerk's change in between.
class TestDistintaEliminazione : public QObject
{
    Q_OBJECT

    // Customers 10..16; a tree 10 > 11 > 12 > 13 > 14 (five levels) with 15 under 10, and a root 16.
    struct Albero : DistintaFixture
    {
        Albero()
        {
            for (int code = 10; code <= 16; ++code)
                soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            n10 = nodo(a01, 0, 10);
            n11 = nodo(a01, 0, 11, {.parent = n10});
            n12 = nodo(a01, 0, 12, {.parent = n11});
            n13 = nodo(a01, 0, 13, {.parent = n12});
            n14 = nodo(a01, 0, 14, {.parent = n13});
            n15 = nodo(a01, 0, 15, {.parent = n10});
            n16 = nodo(a01, 0, 16);
        }

        void rimuovi(int code)
        {
            focalizza(code);
            premi(QStringLiteral("CMD_REMANAGR"));
        }
        int nodiInDatabase() { return scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")).toInt(); }

        qint64 a01 = 0, n10 = 0, n11 = 0, n12 = 0, n13 = 0, n14 = 0, n15 = 0, n16 = 0;
    };

    static QString domandaFigli()
    {
        return QStringLiteral(
            "L'anagrafica selezionata ha altre anagrafiche figlie che verranno cancellate.\nSi vuole proseguire?");
    }
    static QString domandaContrattoFigli()
    {
        return QStringLiteral(
            "Uno o più figli del nodo risultano legati a un contratto.\nSi vuole proseguire con la cancellazione?");
    }

private slots:
    void leafGoesAtOnceAndTheTreeKeepsItsPlace()
    {
        Albero f;
        f.apri();
        f.rimuovi(15);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.nodiInDatabase(), 6);
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "..12", "...13", "....14", "16"}));
        // The focus stays at the same place in the tree: the node after the removed one.
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("16"));
    }

    // The database takes the whole branch below the node, five levels deep; the questions come in
    // their order, with the children's contract question asked although no child has one.
    void branchGoesWholeAfterTheQuestions()
    {
        Albero f;
        f.apri();
        f.host.log().answerNext({fw::Answer::Yes, fw::Answer::No});
        f.rimuovi(10);
        QCOMPARE(f.host.log().messageTexts(), QStringList({domandaFigli(), domandaContrattoFigli()}));
        for (const auto &message : f.host.log().messages()) {
            QCOMPARE(message.style, fw::MessageStyle::YesNoWarning);
            QCOMPARE(message.title, f.form->windowTitle());
        }
        // No to the children's contract question does not stop: no child has a contract.
        QCOMPARE(f.nodiInDatabase(), 1);
        QCOMPARE(f.codiciAlbero(), QStringList({"16"}));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("16"));
    }

    void noToTheChildrenKeepsEverything()
    {
        Albero f;
        f.apri();
        f.rimuovi(12);
        QCOMPARE(f.host.log().messageTexts(), QStringList({domandaFigli()}));
        QCOMPARE(f.nodiInDatabase(), 7);
        QCOMPARE(f.codiciAlbero().size(), 7);
    }

    // A definitive bonus of the node forbids the removal whatever is answered; a bonus not yet
    // definitive, or one the node is excluded from, does not.
    void definitiveBonusIsTheOnlyRefusal()
    {
        Albero f;
        const qint64 contract = f.contratto(99);
        f.scadenza(f.condizione(contract, f.n16), QStringLiteral("2024-06-30"), 2);
        const qint64 pending = f.condizione(contract, f.n15);
        f.scadenza(pending, QStringLiteral("2024-06-30"), 1);
        f.apri();

        f.host.log().setDefaultAnswer(fw::Answer::Yes);
        f.rimuovi(16);
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.host.log().messages().at(0).text,
                 QStringLiteral(
                     "La cancellazione del nodo e dei figli non è permessa perchè usati in un premio definitivo."));
        QCOMPARE(f.host.log().messages().at(0).style, fw::MessageStyle::Warning);
        QCOMPARE(f.nodiInDatabase(), 7);

        // State 1 does not block; the node is still reached by the condition, so that is asked.
        f.host.log().clear();
        f.rimuovi(15);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(
                     {QStringLiteral("Il nodo o i figli risultano legati ad un'attività promozionale o a un premio.\n"
                                     "Si vuole proseguire con la cancellazione?")}));
        QCOMPARE(f.nodiInDatabase(), 6);

        // Excluded from the condition: the definitive deadline no longer concerns the node.
        f.exec(
            QStringLiteral("INSERT INTO GD27_SOGGCONTRDISAB (GD27_DITTA_CG18, GD27_CODCONTR_GD10, GD27_VERCONTR_GD10, "
                           "GD27_PROGRCOND_GD13, GD27_ID_GD02) VALUES (1, 'C1', 1, %1, %2)")
                .arg(contract)
                .arg(f.n16));
        f.host.log().clear();
        f.rimuovi(16);
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.nodiInDatabase(), 5);
    }

    // Contracts of the node's subject and of its children, and conditions that reach the node or
    // a child; a grandchild's are never looked at. No ends the removal each time.
    void linksAskBeforeRemoving()
    {
        Albero f;
        f.contratto(11);
        f.condizione(f.contratto(77, QStringLiteral("C2")), f.n12); // the grandchild of 10
        f.apri();

        // 10: its child 11 has a contract; the grandchild's condition is not seen.
        f.host.log().answerNext({fw::Answer::Yes, fw::Answer::No});
        f.rimuovi(10);
        QCOMPARE(f.host.log().messageTexts(), QStringList({domandaFigli(), domandaContrattoFigli()}));
        QCOMPARE(f.nodiInDatabase(), 7);

        // 11: its own contract, then its child 12's condition.
        f.host.log().clear();
        f.host.log().answerNext({fw::Answer::Yes, fw::Answer::Yes, fw::Answer::Yes, fw::Answer::No});
        f.rimuovi(11);
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList({domandaFigli(),
                         QStringLiteral("Il nodo risulta legato a un contratto.\n"
                                        "Si vuole proseguire con la cancellazione?"),
                         domandaContrattoFigli(),
                         QStringLiteral("Uno o più figli del nodo risultano legati ad un'attività promozionale o a "
                                        "un premio.\nSi vuole proseguire con la cancellazione?")}));
        QCOMPARE(f.nodiInDatabase(), 7);
    }

    // A condition on the subject (node 0) counts only when its period meets the node's.
    void subjectConditionsCountWhenTheirPeriodMeetsTheNode()
    {
        Albero f;
        const qint64 contract = f.contratto(50);
        f.condizione(contract, 0, 16, QStringLiteral("2020-01-01"), QStringLiteral("2023-12-31"));
        f.apri();
        f.rimuovi(16); // the node starts on 01/01/2024: the condition ended the day before
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.nodiInDatabase(), 6);

        f.condizione(contract, 0, 15, QStringLiteral("2020-01-01"), QStringLiteral("2024-01-01"));
        f.rimuovi(15); // ends on the node's first day: it counts
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.nodiInDatabase(), 6);
    }

    // The editor holds no lock: a node another clerk changed or removed after it was read is not
    // removed; the tree shows the database as it is.
    void secondClerksChangeStopsTheRemoval()
    {
        Albero f;
        f.apri();
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'cambiato' WHERE GD02_ID = %1").arg(f.n16));
        f.rimuovi(16);
        QCOMPARE(f.host.log().messages().size(), 1);
        QVERIFY(f.host.log().messages().at(0).text.contains(QStringLiteral("modificato da un altro utente")));
        QCOMPARE(f.nodiInDatabase(), 7);
        QCOMPARE(f.albero()->focusedNode().value(QStringLiteral("trGD02_DESCR")).toString(),
                 QStringLiteral("cambiato"));

        // Read again, the node now goes.
        f.host.log().clear();
        f.premi(QStringLiteral("CMD_REMANAGR"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.nodiInDatabase(), 6);

        f.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n15));
        f.rimuovi(15);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("Il nodo è stato eliminato da un altro utente dopo la lettura: "
                                             "la distinta viene ricaricata.")}));
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".11", "..12", "...13", "....14"}));
    }

    // A failing check counts as no link and says so; the remove button acts only on a node.
    void failuresAndNothingToRemove()
    {
        Albero f;
        f.apri();
        f.exec(QStringLiteral("DROP VIEW GDVISTA03_SOGGETTICOND"));
        f.host.log().setDefaultAnswer(fw::Answer::Abort);
        f.rimuovi(16);
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().at(0).procedure, QStringLiteral("LegamiPremiPromoAtt:"));
        QCOMPARE(f.nodiInDatabase(), 6);

        f.clicca(QStringLiteral("P0"));
        QVERIFY(!f.control<QPushButton>(QStringLiteral("CMD_REMANAGR"))->isEnabled());
    }
};

QTEST_MAIN(TestDistintaEliminazione)
#include "tst_distinta_eliminazione.moc"
