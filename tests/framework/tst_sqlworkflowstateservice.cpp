#include "framework/sqlworkflowstateservice.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QtTest>

// The default workflow-state service against the schema's WF01_STATI and WF02_STATORIGA: the
// four operations the editor uses, their audit stamps, and what they make of awkward input.
class TestSqlWorkflowStateService : public QObject
{
    Q_OBJECT

    // Workflow "DISTINTA": 5 Bozza (default, order 2), 6 Approvata, 7 Sospesa (default, order 1),
    // 8 Annullata (order 0, not a default). Workflow "O'CONTRATTI": 9, its only default.
    struct Fixture
    {
        TestDatabase database;
        fw::SqlWorkflowStateService states {database.connection(), QStringLiteral("tester"), QStringLiteral("ADMIN")};

        Fixture()
        {
            database.connection()->execute(
                QStringLiteral("INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, "
                               "WF01_FLGDEFAULT, WF01_ORDINE) VALUES"
                               " (5, 'DISTINTA', 'BOZ', 'Bozza   ', 1, 2), (6, 'DISTINTA', 'APP', 'Approvata', 0, 3),"
                               " (7, 'DISTINTA', 'SOS', 'Sospesa', 1, 1), (8, 'DISTINTA', 'ANN', 'Annullata', 0, 0),"
                               " (9, 'O''CONTRATTI', 'NUO', 'Nuovo', 1, 1)"));
        }

        db::RecordsetPtr record(const QString &guid) const
        {
            return database.connection()->openRecordset(
                QStringLiteral("SELECT * FROM WF02_STATORIGA WHERE WF02_GUID = '%1'").arg(guid));
        }
        int records() const { return database.scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA")).toInt(); }
    };

private slots:
    // Of several defaults the first in the workflow's order wins; states that are not defaults
    // never do, whatever their order.
    void defaultStateIsTheFirstDefaultInOrder()
    {
        Fixture f;
        QCOMPARE(f.states.GetDefaultFlussoStato(QStringLiteral("DISTINTA")), 7);
        QCOMPARE(f.states.GetDefaultFlussoStato(QStringLiteral("O'CONTRATTI")), 9);
        QCOMPARE(f.states.GetDefaultFlussoStato(QString()), 0);
        f.database.connection()->execute(QStringLiteral("UPDATE WF01_STATI SET WF01_FLGDEFAULT = 0"));
        QCOMPARE(f.states.GetDefaultFlussoStato(QStringLiteral("DISTINTA")), 0);
    }

    // The first confirmation creates the record stamped as created and changed by the user;
    // later ones change the state and the change stamp only.
    void confirmingStampsCreationOnceAndEveryChange()
    {
        Fixture f;
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        f.states.ConfermaStato(QStringLiteral("0A1B-01"), 5);
        const QDateTime after = QDateTime::currentDateTime().addSecs(1);

        db::RecordsetPtr row = f.record(QStringLiteral("0A1B-01"));
        QCOMPARE(row->recordCount(), 1);
        QCOMPARE(row->value(QStringLiteral("WF02_ID_WF01")).toInt(), 5);
        for (const char *column : {"WF02_UTENTECRE", "WF02_UTENTEVAR"})
            QCOMPARE(row->value(QLatin1String(column)).toString(), QStringLiteral("tester"));
        for (const char *column : {"WF02_GRUPPOCRE", "WF02_GRUPPOVAR"})
            QCOMPARE(row->value(QLatin1String(column)).toString(), QStringLiteral("ADMIN"));
        for (const char *column : {"WF02_DATACRE", "WF02_DATAVAR"}) {
            const QDateTime stamp = row->value(QLatin1String(column)).toDateTime();
            QVERIFY2(stamp >= before && stamp <= after, column); // day, month and time as they are
        }
        // Stored as the embedded database keeps dates, so that they compare in order.
        QCOMPARE(f.database
                     .scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA WHERE WF02_DATACRE LIKE"
                                            " '____-__-__ __:__:__' AND WF02_DATAVAR = WF02_DATACRE"))
                     .toInt(),
                 1);
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("0A1B-01")), QStringLiteral("Bozza"));

        // Another user approves: the creation stamp stays, the change stamp is theirs.
        f.database.connection()->execute(QStringLiteral(
            "UPDATE WF02_STATORIGA SET WF02_DATACRE = '2020-01-02 03:04:05', WF02_DATAVAR = '2020-01-02 03:04:05'"));
        fw::SqlWorkflowStateService other(f.database.connection(), QStringLiteral("rossi"), QStringLiteral("VENDITE"));
        other.ConfermaStato(QStringLiteral("0A1B-01"), 6);
        row = f.record(QStringLiteral("0A1B-01"));
        QCOMPARE(f.records(), 1);
        QCOMPARE(row->value(QStringLiteral("WF02_ID_WF01")).toInt(), 6);
        QCOMPARE(row->value(QStringLiteral("WF02_UTENTECRE")).toString(), QStringLiteral("tester"));
        QCOMPARE(row->value(QStringLiteral("WF02_DATACRE")).toDateTime(), QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
        QCOMPARE(row->value(QStringLiteral("WF02_UTENTEVAR")).toString(), QStringLiteral("rossi"));
        QCOMPARE(row->value(QStringLiteral("WF02_GRUPPOVAR")).toString(), QStringLiteral("VENDITE"));
        QVERIFY(row->value(QStringLiteral("WF02_DATAVAR")).toDateTime() >= before);
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("0A1B-01")), QStringLiteral("Approvata"));
    }

    // A copy takes the source's current state, also onto a row that already has one; a source
    // without a state leaves the target as it was.
    void duplicatingCopiesTheCurrentState()
    {
        Fixture f;
        f.states.ConfermaStato(QStringLiteral("padre"), 6);
        f.states.ConfermaStato(QStringLiteral("figlio"), 5);
        f.states.DuplicaStato(QStringLiteral("padre"), QStringLiteral("figlio"));
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("figlio")), QStringLiteral("Approvata"));
        QCOMPARE(f.records(), 2);

        f.states.DuplicaStato(QStringLiteral("padre"), QStringLiteral("nuovo"));
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("nuovo")), QStringLiteral("Approvata"));
        QCOMPARE(f.records(), 3);

        f.states.DuplicaStato(QStringLiteral("nessuno"), QStringLiteral("figlio"));
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("figlio")), QStringLiteral("Approvata"));
        QCOMPARE(f.records(), 3);

        // The copy is of the state only: the source keeps its own record.
        f.states.ConfermaStato(QStringLiteral("nuovo"), 7);
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("padre")), QStringLiteral("Approvata"));
    }

    // The states to choose from, in the workflow's order, and a row's state: state 0 is a state
    // like any other, copied as the others are; a row without a record has none.
    void statesToChooseAndStateZero()
    {
        Fixture f;
        f.database.connection()->execute(QStringLiteral(
            "INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, WF01_ORDINE)"
            " VALUES (0, 'DISTINTA', 'NUO', 'Nuovo', 0, 0)"));
        QStringList described;
        for (const fw::WorkflowState &state : f.states.GetStatiFlusso(QStringLiteral("DISTINTA")))
            described << QStringLiteral("%1 %2%3").arg(state.id).arg(state.description, state.isDefault ? "*" : "");
        QCOMPARE(described, QStringList({"0 Nuovo", "8 Annullata", "7 Sospesa*", "5 Bozza*", "6 Approvata"}));
        QVERIFY(f.states.GetStatiFlusso(QStringLiteral("ALTRO")).isEmpty());

        QVERIFY(!f.states.GetStatoFromGUID(QStringLiteral("g")).has_value());
        f.states.ConfermaStato(QStringLiteral("g"), 0);
        QCOMPARE(f.states.GetStatoFromGUID(QStringLiteral("g")), std::optional<int>(0));
        f.states.DuplicaStato(QStringLiteral("g"), QStringLiteral("h"));
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("h")), QStringLiteral("Nuovo"));
    }

    // Guids and names reach the statements quoted; a state whose row in WF01_STATI is gone has
    // no description.
    void awkwardKeysAndMissingStates()
    {
        Fixture f;
        const QString quoteGuid = QStringLiteral("x' OR '1'='1");
        f.states.ConfermaStato(QStringLiteral("a"), 5);
        QVERIFY(f.states.GetDescrizioneStatoFromGUID(quoteGuid).isEmpty());
        f.states.ConfermaStato(quoteGuid, 6);
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(quoteGuid), QStringLiteral("Approvata"));
        QCOMPARE(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("a")), QStringLiteral("Bozza"));
        QCOMPARE(f.records(), 2);

        f.states.ConfermaStato(QStringLiteral("orfano"), 42);
        QVERIFY(f.states.GetDescrizioneStatoFromGUID(QStringLiteral("orfano")).isEmpty());
        f.states.DuplicaStato(QStringLiteral("orfano"), QStringLiteral("copia"));
        QCOMPARE(f.database.scalar(QStringLiteral("SELECT WF02_ID_WF01 FROM WF02_STATORIGA WHERE WF02_GUID = 'copia'"))
                     .toInt(),
                 42);
    }

    void databaseFailuresReachTheCaller()
    {
        Fixture f;
        f.database.connection()->execute(QStringLiteral("DROP TABLE WF02_STATORIGA"));
        QVERIFY_THROWS_EXCEPTION(db::DatabaseError, f.states.ConfermaStato(QStringLiteral("g"), 5));
        QVERIFY_THROWS_EXCEPTION(db::DatabaseError, f.states.GetDescrizioneStatoFromGUID(QStringLiteral("g")));
        QVERIFY(!f.database.connection()->errors().isEmpty());
        QCOMPARE(f.states.GetDefaultFlussoStato(QStringLiteral("DISTINTA")), 7); // WF01 is still there
    }
};

QTEST_MAIN(TestSqlWorkflowStateService)
#include "tst_sqlworkflowstateservice.moc"
