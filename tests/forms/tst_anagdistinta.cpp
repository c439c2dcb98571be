#include "framework/hostglobalservices.h"
#include "framework/recordsetgrid.h"
#include "tests/forms/gestionifixture.h"
#include "tests/support/altletters.h"

#include <QTemporaryDir>

// The maintenance of classification types, driven through its controls on a real database:
// what a save writes (stamps, identifiers of the codes typed), what it refuses, the delete
// refusal, the lookups and decodes of division and priority, rows changed by someone else.
class TestAnagDistinta : public QObject
{
    Q_OBJECT

    // Company 1 with divisions ALI and BEV, company 2 with UNI; priorities STD and GDO of
    // company 1; customer type A01 (division ALI, priority GDO) with one node, supplier type
    // F01 without nodes.
    struct Tipi : GestioniFixture
    {
        Tipi()
        {
            ali = divisioneDi(1, QStringLiteral("ALI"), QStringLiteral("Divisione alimentare"));
            bev = divisioneDi(1, QStringLiteral("BEV"), QStringLiteral("Divisione bevande"));
            uni = divisioneDi(2, QStringLiteral("UNI"), QStringLiteral("Divisione unica"));
            std = priorita(QStringLiteral("STD"), QStringLiteral("Priorità standard"));
            gdo = priorita(QStringLiteral("GDO"), QStringLiteral("Priorità grande distribuzione"));
            soggetto(0, 10, QStringLiteral("Bar Sport"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Bar e locali"), ali);
            exec(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_ID_LP09 = %1 WHERE GD01_ID = %2").arg(gdo).arg(a01));
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori vari"));
            nodo(a01, 0, 10);
        }
        QString stored(const QString &column, qint64 id)
        {
            return scalar(QStringLiteral("SELECT %1 FROM GD01_TIPODISTINTA WHERE GD01_ID = %2").arg(column).arg(id))
                .toString();
        }
        QString etichetta(const QString &name) { return campo<QLabel>(name)->text(); }
        qint64 ali = 0, bev = 0, uni = 0, std = 0, gdo = 0, a01 = 0, f01 = 0;
    };

private slots:
    // A new type is written with the company, the identifiers of the codes typed and both
    // stamps; a later save changes only the change stamp. The row is read again after the save,
    // so its guid (given by the database) reaches the state control.
    void savingStampsCreationOnceAndChangeEveryTime()
    {
        Tipi f;
        f.apriAnagrafica();
        f.nuovoTipo(QStringLiteral("for-srv"), QStringLiteral("Fornitori di servizi"), 1, QStringLiteral("bev"),
                    QStringLiteral("STD"));
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join('\n')));
        const qint64 id = f.scalar(
                               QStringLiteral("SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'FOR-SRV'"))
                              .toLongLong();
        QVERIFY(id > 0);
        QCOMPARE(f.stored(QStringLiteral("GD01_DITTA_CG18"), id), QStringLiteral("1"));
        QCOMPARE(f.stored(QStringLiteral("GD01_INDTIPOSOGG"), id), QStringLiteral("1"));
        QCOMPARE(f.stored(QStringLiteral("GD01_IDDIV_CO1A"), id).toLongLong(), f.bev);
        QCOMPARE(f.stored(QStringLiteral("GD01_ID_LP09"), id).toLongLong(), f.std);
        QCOMPARE(f.stored(QStringLiteral("GD01_UTENTECRE"), id), QStringLiteral("tester"));
        QCOMPARE(f.stored(QStringLiteral("GD01_GRUPPOCRE"), id), QStringLiteral("ADMIN"));
        QCOMPARE(f.stored(QStringLiteral("GD01_UTENTEVAR"), id), QStringLiteral("tester"));
        const QString created = f.stored(QStringLiteral("GD01_DATACRE"), id);
        QVERIFY(!created.isEmpty());
        QCOMPARE(f.stored(QStringLiteral("GD01_DATAVAR"), id), created);

        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Browse));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_IDDIV_CO1A"))->text(), QStringLiteral("BEV"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRDIV")), QStringLiteral("Divisione bevande"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRLISTINO")), QStringLiteral("Priorità standard"));
        QVERIFY(f.campo<fw::WorkflowStateControl>(QStringLiteral("TXT_GD01_STATO"))->isEnabled());
        QCOMPARE(f.campo<fw::WorkflowStateControl>(QStringLiteral("TXT_GD01_STATO"))->guid(),
                 f.stored(QStringLiteral("GD01_GUID"), id));

        // Another clerk changes it later: creation stays, the change stamp moves.
        f.host.globals().setUser(QStringLiteral("altro"));
        f.host.globals().setUserGroup(QStringLiteral("VENDITE"));
        f.digita(f.testo(QStringLiteral("TXT_GD01_DESCR")), QStringLiteral("Servizi e manutenzioni"));
        f.digita(f.testo(QStringLiteral("TXT_GD01_IDDIV_CO1A")), QString());
        f.premi(QStringLiteral("Salva"));
        QVERIFY(f.host.log().isQuiet());
        QCOMPARE(f.stored(QStringLiteral("GD01_DESCR"), id), QStringLiteral("Servizi e manutenzioni"));
        QCOMPARE(f.stored(QStringLiteral("GD01_DATACRE"), id), created);
        QCOMPARE(f.stored(QStringLiteral("GD01_UTENTECRE"), id), QStringLiteral("tester"));
        QCOMPARE(f.stored(QStringLiteral("GD01_UTENTEVAR"), id), QStringLiteral("altro"));
        QCOMPARE(f.stored(QStringLiteral("GD01_GRUPPOVAR"), id), QStringLiteral("VENDITE"));
        QVERIFY(f.stored(QStringLiteral("GD01_DATAVAR"), id) >= created);
        // An emptied division field leaves the stored division, and the form shows it again.
        QCOMPARE(f.stored(QStringLiteral("GD01_IDDIV_CO1A"), id).toLongLong(), f.bev);
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_IDDIV_CO1A"))->text(), QStringLiteral("BEV"));
    }

    // Each bad input gets its message, the row stays in the form as typed and nothing is written.
    void badInputIsRefusedAndNothingIsWritten()
    {
        struct Caso
        {
            QString code, description;
            int kind;
            QString division, priority, message;
        };
        const QList<Caso> casi = {
            {{}, QStringLiteral("Senza codice"), 0, {}, {}, QStringLiteral("Inserire il codice della distinta.")},
            {QStringLiteral("L'UNO"),
             QStringLiteral("Con apice"),
             0,
             {},
             {},
             QStringLiteral("Il codice della distinta non può contenere apici.")},
            {QStringLiteral("N01"), {}, 0, {}, {}, QStringLiteral("Inserire la descrizione della distinta.")},
            {QStringLiteral("N01"),
             QStringLiteral("Senza tipo"),
             -1,
             {},
             {},
             QStringLiteral("Scegliere il tipo distinta: Cliente o Fornitore.")},
            {QStringLiteral("N01"),
             QStringLiteral("Divisione d'altri"),
             0,
             QStringLiteral("UNI"),
             {},
             QStringLiteral("La divisione UNI non esiste.")},
            {QStringLiteral("N01"),
             QStringLiteral("Divisione con apice"),
             0,
             QStringLiteral("A'LI"),
             {},
             QStringLiteral("La divisione A'LI non esiste.")},
            {QStringLiteral("N01"),
             QStringLiteral("Priorità ignota"),
             0,
             {},
             QStringLiteral("XYZ"),
             QStringLiteral("La priorità listini XYZ non esiste.")},
        };
        for (const Caso &caso : casi) {
            Tipi f;
            f.apriAnagrafica();
            const int before = f.tipi();
            f.nuovoTipo(caso.code, caso.description, caso.kind, caso.division, caso.priority);
            QVERIFY2(f.host.log().messageTexts().contains(caso.message),
                     qPrintable(caso.message + QStringLiteral(" / ") + f.host.log().messageTexts().join('|')));
            QCOMPARE(f.host.log().messages().last().style, int(fw::MessageStyle::Warning));
            QCOMPARE(f.host.log().messages().last().title, QStringLiteral("Anagrafica distinta"));
            QCOMPARE(f.tipi(), before);
            QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Insert));
            QVERIFY(f.host.log().errorDialogs().isEmpty());
        }

        // A code another type has: with the kind chosen first, no supplier type is found for a
        // customer type, and the save is refused.
        Tipi f;
        f.apriAnagrafica();
        f.premi(QStringLiteral("Nuovo"));
        f.scegliTipo(0);
        f.digita(f.testo(QStringLiteral("TXT_GD01_CODICE")), QStringLiteral("F01"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Insert));
        f.digita(f.testo(QStringLiteral("TXT_GD01_DESCR")), QStringLiteral("Doppione"));
        f.premi(QStringLiteral("Salva"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Esiste già una distinta con il codice F01: Fornitori vari.")});
        QCOMPARE(f.tipi(), 2);
        QCOMPARE(f.stored(QStringLiteral("GD01_DESCR"), f.f01), QStringLiteral("Fornitori vari"));

        // An existing type given another type's code.
        f.premi(QStringLiteral("Annulla"));
        f.premi(QStringLiteral("primo"));
        f.host.log().clear();
        f.digita(f.testo(QStringLiteral("TXT_GD01_CODICE")), QStringLiteral("F01"));
        f.premi(QStringLiteral("Salva"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Esiste già una distinta con il codice F01: Fornitori vari.")});
        QCOMPARE(f.stored(QStringLiteral("GD01_CODICE"), f.a01), QStringLiteral("A01"));
    }

    // A type bound to nodes is not deleted; one without nodes is, once the user confirms.
    void deletingATypeInUseIsRefused()
    {
        Tipi f;
        f.apriAnagrafica(f.a01);
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("A01"));
        f.premi(QStringLiteral("Elimina"));
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList {QStringLiteral("Non è possibile cancellare l'anagrafica distinta perchè legata a dei nodi.")});
        QCOMPARE(f.tipi(), 2);

        f.host.log().clear();
        f.premi(QStringLiteral("successivo"));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("F01"));
        f.host.log().answerNext(fw::Answer::No);
        f.premi(QStringLiteral("Elimina"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Cancellare l'anagrafica distinta F01 - Fornitori vari?")});
        QCOMPARE(f.host.log().messages().first().style, int(fw::MessageStyle::YesNoQuestion));
        QCOMPARE(f.tipi(), 2);
        f.host.log().answerNext(fw::Answer::Yes);
        f.premi(QStringLiteral("Elimina"));
        QCOMPARE(f.tipi(), 1);
        QCOMPARE(f.frame()->recordset()->recordCount(), 1);
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE"))->text(), QStringLiteral("A01"));

        // The kind of a type in use cannot change either: its nodes are of that kind.
        f.host.log().clear();
        f.scegliTipo(1);
        f.premi(QStringLiteral("Salva"));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral(
                     "Non è possibile cambiare il tipo dell'anagrafica distinta perchè legata a dei nodi.")});
        QCOMPARE(f.stored(QStringLiteral("GD01_INDTIPOSOGG"), f.a01), QStringLiteral("0"));
    }

    // Every action of the form has its own Alt letter: the navigator's as well as the form's.
    void everyAltLetterOnce()
    {
        Tipi f;
        f.apriAnagrafica();
        for (const char *key : {"Nuovo", "Salva", "Annulla", "Elimina", "Stampa"})
            QVERIFY2(!QKeySequence::mnemonic(
                          f.campo<fw::GridNavigator>(QStringLiteral("GRIDNAV"))->button(QLatin1String(key))->text())
                          .isEmpty(),
                     key);
        QCOMPARE(altLetterClashes(f.anagrafica), QStringList());
    }

    // On a new row, a code that an existing type has shows that type at once.
    void typingAnExistingCodeFindsTheType()
    {
        Tipi f;
        const auto modo = [&f] { return f.campo<QLabel>(QStringLiteral("lblModo"))->text(); };
        f.apriAnagrafica();
        f.premi(QStringLiteral("Nuovo"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Insert));
        QCOMPARE(modo(), QStringLiteral("Nuova riga"));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_CODICE")), QApplication::focusWidget());
        f.digita(f.testo(QStringLiteral("TXT_GD01_CODICE")), QStringLiteral("f01"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Browse));
        // The form says plainly that it no longer holds a new type, also once it is changed.
        QCOMPARE(modo(), QStringLiteral("Riga esistente richiamata"));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_DESCR"))->text(), QStringLiteral("Fornitori vari"));
        QCOMPARE(f.campo<QComboBox>(QStringLiteral("CMB_GD01_INDTIPOSOGG"))->currentText(),
                 QStringLiteral("Fornitore"));
        QCOMPARE(f.frame()->recordset()->recordCount(), 2); // the new row was dropped
        QCOMPARE(f.tipi(), 2);
        f.digita(f.testo(QStringLiteral("TXT_GD01_DESCR")), QStringLiteral("Fornitori esteri"));
        QCOMPARE(modo(), QStringLiteral("Riga esistente richiamata, con modifiche non salvate"));
        f.premi(QStringLiteral("Annulla"));
        QCOMPARE(modo(), QString());
    }

    // The division list is the company's; the decode of a typed code is not filtered by company,
    // and the identifier of the code is looked up in the company when the row is saved.
    void divisionLookupAndDecode()
    {
        Tipi f;
        f.apriAnagrafica(f.a01);
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_IDDIV_CO1A"))->text(), QStringLiteral("ALI"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRDIV")), QStringLiteral("Divisione alimentare"));
        QCOMPARE(f.testo(QStringLiteral("TXT_GD01_ID_LP09"))->text(), QStringLiteral("GDO"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRLISTINO")), QStringLiteral("Priorità grande distribuzione"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Browse)); // showing a row is no change

        auto *division = f.campo<fw::LookupEdit>(QStringLiteral("TXT_GD01_IDDIV_CO1A"));
        division->lookupButton()->trigger();
        fw::LookupPopup *popup = division->popup();
        QVERIFY(popup);
        QCOMPARE(popup->objectName(), QStringLiteral("lkp_Divisioni"));
        QCOMPARE(popup->title(), QStringLiteral("Divisioni"));
        fw::RecordsetGrid *rows = popup->grid();
        QCOMPARE(rows->model()->rowCount(), 2); // company 2's division is not offered
        QCOMPARE(rows->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Codice"));
        QCOMPARE(rows->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Descrizioni"));
        rows->setCurrentIndex(rows->model()->index(1, 0));
        QTest::keyClick(rows, Qt::Key_Return);
        QCOMPARE(division->text(), QStringLiteral("BEV"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRDIV")), QStringLiteral("Divisione bevande"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Edit));
        f.premi(QStringLiteral("Salva"));
        QCOMPARE(f.stored(QStringLiteral("GD01_IDDIV_CO1A"), f.a01).toLongLong(), f.bev);

        // Another company's code decodes into the label, but is no division of this company.
        f.digita(division, QStringLiteral("UNI"));
        QCOMPARE(f.etichetta(QStringLiteral("TXT_DESCRDIV")), QStringLiteral("Divisione unica"));
        f.premi(QStringLiteral("Salva"));
        QCOMPARE(f.host.log().messageTexts(), QStringList {QStringLiteral("La divisione UNI non esiste.")});
        QCOMPARE(f.stored(QStringLiteral("GD01_IDDIV_CO1A"), f.a01).toLongLong(), f.bev);

        // A code nobody has is told when the field is left.
        f.host.log().clear();
        f.digita(division, QStringLiteral("ZZZ"));
        QCOMPARE(f.host.log().messageTexts(), QStringList {QStringLiteral("La divisione ZZZ non esiste.")});
        QVERIFY(f.etichetta(QStringLiteral("TXT_DESCRDIV")).isEmpty());
        f.premi(QStringLiteral("Annulla"));
        QCOMPARE(division->text(), QStringLiteral("BEV"));
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Browse));
    }

    // The grid shows the division and the priority decoded, read once per load: painting the
    // grid sends nothing to the database.
    void gridShowsDecodedTextsReadOncePerLoad()
    {
        Tipi f;
        QTemporaryDir folder;
        const QString tracePath = folder.filePath(QStringLiteral("trace.sql"));
        f.apriAnagrafica();
        auto *grid = f.campo<fw::RecordsetGrid>(QStringLiteral("GRID_TIPODISTINTA"));
        QCOMPARE(grid->model()->rowCount(), 2);
        const int division = grid->columnOf(QStringLiteral("GD01_IDDIV_CO1A"));
        const int priority = grid->columnOf(QStringLiteral("GD01_ID_LP09"));
        QCOMPARE(grid->model()->headerData(division, Qt::Horizontal).toString(), QStringLiteral("Divisione"));
        QCOMPARE(grid->model()->headerData(priority, Qt::Horizontal).toString(), QStringLiteral("Priorità"));
        QCOMPARE(grid->model()->index(0, division).data().toString(), QStringLiteral("ALI - Divisione alimentare"));
        QCOMPARE(grid->model()->index(0, priority).data().toString(),
                 QStringLiteral("GDO - Priorità grande distribuzione"));
        QVERIFY(grid->model()->index(1, division).data().toString().isEmpty());

        qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
        grid->grab();
        grid->resize(900, 300);
        grid->grab();
        qunsetenv("DISTINTA_SQL_TRACE");
        QVERIFY(!QFileInfo::exists(tracePath) || QFileInfo(tracePath).size() == 0);
    }

    // Two clerks save the same type: the second save is refused, not applied over the first,
    // and the second clerk sees the row as the first one left it.
    void theSecondSaveOfTheSameTypeIsRefused()
    {
        Tipi f;
        FRMGD_ANAGDISTINTA *first = f.apriAnagrafica(f.f01);
        auto second = std::make_unique<FRMGD_ANAGDISTINTA>();
        second->setActiveDll(f.entry.get());
        second->setEntryClass(f.entry.get());
        second->setIdDistinta(f.f01);
        second->show();
        second->Form_Activate();
        QCoreApplication::processEvents();

        f.digita(GestioniFixture::in<QLineEdit>(first, QStringLiteral("TXT_GD01_DESCR")), QStringLiteral("Dal primo"));
        GestioniFixture::in<fw::GridNavigator>(first, QStringLiteral("GRIDNAV"))->press(QStringLiteral("Salva"));
        QCoreApplication::processEvents();

        auto *secondDescription = GestioniFixture::in<QLineEdit>(second.get(), QStringLiteral("TXT_GD01_DESCR"));
        f.digita(secondDescription, QStringLiteral("Dal secondo"));
        GestioniFixture::in<fw::GridNavigator>(second.get(), QStringLiteral("GRIDNAV"))->press(QStringLiteral("Salva"));
        QCoreApplication::processEvents();

        QCOMPARE(f.stored(QStringLiteral("GD01_DESCR"), f.f01), QStringLiteral("Dal primo"));
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.host.log().messages().first().text,
                 QStringLiteral("La riga è stata modificata da un altro utente dopo la lettura: le modifiche non sono "
                                "state salvate.\nLa distinta è stata riletta dal database."));
        QVERIFY(f.host.log().errorDialogs().isEmpty());
        QCOMPARE(secondDescription->text(), QStringLiteral("Dal primo"));
        QCOMPARE(second->recordFrame()->state(), int(fw::RecordFrame::Browse));
    }

    // Closing with pending changes asks; Cancel keeps the form, No discards, Yes saves unless
    // the row is refused, which keeps the form open too.
    void closingWithUnsavedChanges()
    {
        Tipi f;
        f.apriAnagrafica(f.f01);
        f.digita(f.testo(QStringLiteral("TXT_GD01_DESCR")), QStringLiteral("Da non perdere"));
        f.host.log().answerNext(fw::Answer::Cancel);
        QVERIFY(!f.anagrafica->unload());
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("I dati sono stati modificati. Salvare le modifiche?")});
        QVERIFY(f.anagrafica);

        f.digita(f.testo(QStringLiteral("TXT_GD01_DESCR")), QString());
        f.host.log().clear();
        f.host.log().answerNext(fw::Answer::Yes);
        QVERIFY(!f.anagrafica->unload());
        QCOMPARE(f.host.log().messageTexts().last(), QStringLiteral("Inserire la descrizione della distinta."));
        QCOMPARE(f.stored(QStringLiteral("GD01_DESCR"), f.f01), QStringLiteral("Fornitori vari"));

        f.host.log().answerNext(fw::Answer::No);
        QVERIFY(f.anagrafica->unload());
        QCOMPARE(f.stored(QStringLiteral("GD01_DESCR"), f.f01), QStringLiteral("Fornitori vari"));
    }

    // The state control shows and stores the type's state; "Assegna a nodi" hands it on to
    // every node of the type.
    void stateOfTheTypeAndItsNodes()
    {
        Tipi f;
        f.exec(QStringLiteral("INSERT INTO WF01_STATI (WF01_ID, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, WF01_ORDINE) "
                              "VALUES (0, 'NUOVO', 'Nuovo', 1, 0), (6, 'ATTIVO', 'Attivo', 0, 6)"));
        f.apriAnagrafica(f.a01);
        auto *state = f.campo<fw::WorkflowStateControl>(QStringLiteral("TXT_GD01_STATO"));
        auto *assign = f.campo<QPushButton>(QStringLiteral("cmdAssegnaStato"));
        QVERIFY(state->isEnabled());
        QCOMPARE(state->state().has_value(), false);
        QVERIFY(!assign->isEnabled());

        state->combo()->setCurrentIndex(state->combo()->findText(QStringLiteral("ATTIVO")));
        const QString guid = f.stored(QStringLiteral("GD01_GUID"), f.a01);
        QCOMPARE(f.scalar(QStringLiteral("SELECT WF02_ID_WF01 FROM WF02_STATORIGA WHERE WF02_GUID = '%1'").arg(guid))
                     .toInt(),
                 6);
        QVERIFY(assign->isEnabled());
        QCOMPARE(f.frame()->state(), int(fw::RecordFrame::Browse)); // the state is no change of the row

        f.host.log().answerNext(fw::Answer::Yes);
        assign->click();
        QCOMPARE(f.host.log().messageTexts().first(),
                 QStringLiteral("Assegnare lo stato ATTIVO a tutti i nodi della distinta A01?"));
        QCOMPARE(f.host.log().messageTexts().last(), QStringLiteral("Stato ATTIVO assegnato a 1 nodi."));
        QCOMPARE(f.scalar(QStringLiteral("SELECT WF02_ID_WF01 FROM WF02_STATORIGA INNER JOIN GD02_DISTINTA "
                                         "ON WF02_GUID = gd02_guid WHERE GD02_ID_GD01 = %1")
                              .arg(f.a01))
                     .toInt(),
                 6);
        // Both are the user's operations on the type, a row each, none another program's change.
        QCOMPARE(f.scalar(QStringLiteral("SELECT MIN(GD90_OPERAZIONE) + '/' + MAX(GD90_OPERAZIONE) FROM "
                                         "GD90_OPERAZIONI WHERE GD90_ID_GD01 = %1")
                              .arg(f.a01))
                     .toString(),
                 QStringLiteral("Modifica/Propagazione"));
        QCOMPARE(
            f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 IS NOT NULL")).toInt(),
            2);
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD91_RIGHESTORICO WHERE GD91_ID_GD90 IS NULL "
                                         "AND GD91_TABELLA = 'WF02_STATORIGA'"))
                     .toInt(),
                 0);
    }
};

QTEST_MAIN(TestAnagDistinta)
#include "tst_anagdistinta.moc"
