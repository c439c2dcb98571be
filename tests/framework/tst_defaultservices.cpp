#include "framework/defaulttheme.h"
#include "framework/dictionarytranslationservice.h"
#include "framework/hostglobalservices.h"
#include "framework/messageboxlogservice.h"
#include "framework/sqlworkflowstateservice.h"
#include "framework/unattendedrun.h"
#include "platform/db/recordset.h"
#include "tests/support/testdatabase.h"

#include <QtTest>

// The services any host can use as they are.
class TestDefaultServices : public QObject
{
    Q_OBJECT

private slots:
    void messageStylesAnswerWithTheirDefaultButton_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("answer");
        QTest::newRow("warning") << 48 << int(fw::Answer::Ok);
        QTest::newRow("information") << 64 << int(fw::Answer::Ok);
        QTest::newRow("yes/no, No default") << 308 << int(fw::Answer::No);
        QTest::newRow("question, No default") << 4 + 256 + 32 << int(fw::Answer::No);
        QTest::newRow("error dialog, Retry default") << 4370 << int(fw::Answer::Retry);
        QTest::newRow("yes/no/cancel, third") << 3 + 32 + 512 << int(fw::Answer::Cancel);
        QTest::newRow("default beyond the buttons") << 512 << int(fw::Answer::Ok);
    }

    void messageStylesAnswerWithTheirDefaultButton()
    {
        QFETCH(int, style);
        QFETCH(int, answer);
        QCOMPARE(fw::MessageBoxLogService::defaultAnswer(style), answer);
        // Without a user the default is taken too, except Retry, which would only repeat a failure.
        fw::MessageBoxLogService unattended(std::make_shared<fw::UnattendedRun>());
        QCOMPARE(unattended.showMessage(QStringLiteral("x"), QStringLiteral("t"), style),
                 answer == fw::Answer::Retry ? int(fw::Answer::Abort) : answer);
    }

    void dictionaryHoldsTheEditorTexts()
    {
        fw::DictionaryTranslationService dictionary;
        QVERIFY(dictionary.text(94561, QString()).startsWith(QStringLiteral("COMPRIMI")));
        QVERIFY(!dictionary.text(94560, QString()).left(8).trimmed().toUpper().startsWith(QStringLiteral("COMPRIMI")));
        for (int id : {94560, 94562, 94563})
            QVERIFY(!dictionary.text(id, QString()).isEmpty());
        QCOMPARE(dictionary.text(1, QStringLiteral("Predefinito")), QStringLiteral("Predefinito"));
        QCOMPARE(dictionary.translate(QStringLiteral("Clienti")), QStringLiteral("Clienti"));
        QCOMPARE(dictionary.translate(QStringLiteral("Fornitori")), QStringLiteral("Fornitori"));
        QCOMPARE(dictionary.translate(QStringLiteral("Codice")), QStringLiteral("Codice"));
    }

    void themeNamesEveryGridColour()
    {
        fw::DefaultTheme theme;
        for (const char *name :
             {"GridHeaderColor", "GridFontColor", "GridBorderColor", "GridFooterColor", "GridHeaderFontColor",
              "GridHideSelectionColor", "GridHighLightColor", "GridHighLightFontColor"})
            QVERIFY2(theme.color(QLatin1String(name)).isValid(), name);
        QVERIFY(!theme.color(QStringLiteral("Sconosciuto")).isValid());
    }

    void divisionVisibilityFragment()
    {
        fw::HostGlobalServices globals;
        QVERIFY(globals.divisionVisibility(QStringLiteral("CO1C_IDDIV_CO1A")).isEmpty());
        globals.setVisibleDivisions({3, 7});
        QCOMPARE(globals.divisionVisibility(QStringLiteral("CO1C_IDDIV_CO1A")),
                 QStringLiteral(" AND (CO1C_IDDIV_CO1A IS NULL OR CO1C_IDDIV_CO1A IN (3,7))"));

        // Appended to a real query it keeps the division-less rows and those of the visible
        // divisions, and nothing else.
        TestDatabase database;
        database.connection()->execute(QStringLiteral(
            "INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, GD01_IDDIV_CO1A) VALUES"
            " (1, 'T', 'Tutte', NULL), (1, 'D3', 'Tre', 3), (1, 'D5', 'Cinque', 5), (1, 'D7', 'Sette', 7)"));
        const auto visible = [&] {
            const db::RecordsetPtr rows = database.connection()->openRecordset(
                QStringLiteral("SELECT GD01_CODICE FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1")
                + globals.divisionVisibility(QStringLiteral("GD01_IDDIV_CO1A"))
                + QStringLiteral(" ORDER BY GD01_CODICE"));
            QStringList codes;
            for (int row = 0; row < rows->recordCount(); ++row)
                codes << rows->valueAt(row, 0).toString();
            return codes;
        };
        QCOMPARE(visible(), QStringList({"D3", "D7", "T"}));
        globals.setVisibleDivisions({5});
        QCOMPARE(visible(), QStringList({"D5", "T"}));
        globals.setVisibleDivisions({});
        QCOMPARE(visible(), QStringList({"D3", "D5", "D7", "T"}));
    }

    void workflowStatesOfRows()
    {
        TestDatabase database;
        db::Connection &db = *database.connection();
        db.execute(QStringLiteral(
            "INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, WF01_ORDINE)"
            " VALUES (5, 'DISTINTA', 'BOZ', 'Bozza', 1, 1)"));
        db.execute(QStringLiteral(
            "INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, WF01_ORDINE)"
            " VALUES (6, 'DISTINTA', 'APP', 'Approvata', 0, 2)"));
        fw::SqlWorkflowStateService states(database.connection(), QStringLiteral("tester"), QStringLiteral("ADMIN"));

        QCOMPARE(states.GetDefaultFlussoStato(QStringLiteral("DISTINTA")), 5);
        QCOMPARE(states.GetDefaultFlussoStato(QStringLiteral("ALTRO")), 0);
        QVERIFY(states.GetDescrizioneStatoFromGUID(QStringLiteral("g-1")).isEmpty());

        states.ConfermaStato(QStringLiteral("g-1"), 5);
        states.ConfermaStato(QStringLiteral("g-1"), 6); // changes the state, no second record
        QCOMPARE(states.GetDescrizioneStatoFromGUID(QStringLiteral("g-1")), QStringLiteral("Approvata"));
        QCOMPARE(database.scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA")).toInt(), 1);
        QCOMPARE(database.scalar(QStringLiteral("SELECT WF02_UTENTEVAR FROM WF02_STATORIGA")).toString(),
                 QStringLiteral("tester"));

        states.DuplicaStato(QStringLiteral("g-1"), QStringLiteral("g'2"));
        QCOMPARE(states.GetDescrizioneStatoFromGUID(QStringLiteral("g'2")), QStringLiteral("Approvata"));
        states.DuplicaStato(QStringLiteral("senza"), QStringLiteral("g-3")); // no state to copy
        QCOMPARE(database.scalar(QStringLiteral("SELECT COUNT(*) FROM WF02_STATORIGA")).toInt(), 2);
    }
};

QTEST_MAIN(TestDefaultServices)
#include "tst_defaultservices.moc"
