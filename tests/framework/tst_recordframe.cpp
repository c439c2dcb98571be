#include "framework/recordframe.h"
#include "platform/db/recordset.h"
#include "tests/support/scriptedlogservice.h"
#include "tests/support/testdatabase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

// The record frame on a real table: controls in step with the row, states, events, saving.
class TestRecordFrame : public QObject
{
    Q_OBJECT

    struct Fixture
    {
        TestDatabase database;
        ScriptedLogService log;
        fw::RecordFrame frame {database.connection()};
        QLineEdit code;
        QLineEdit description;
        QComboBox kind;

        Fixture()
        {
            db::Connection &db = *database.connection();
            db.execute(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, "
                                      "GD01_INDTIPOSOGG) VALUES (1, 'A', 'Prima', 0)"));
            db.execute(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, "
                                      "GD01_INDTIPOSOGG) VALUES (1, 'B', 'Seconda', 1)"));
            kind.addItem(QStringLiteral("Cliente"), 0);
            kind.addItem(QStringLiteral("Fornitore"), 1);
            frame.setLogService(&log, QStringLiteral("Prova"));
            frame.open(QStringLiteral("SELECT * FROM GD01_TIPODISTINTA ORDER BY GD01_CODICE"),
                       QStringLiteral("GD01_ID"));
            frame.bind(&code, QStringLiteral("GD01_CODICE"));
            frame.bind(&description, QStringLiteral("GD01_DESCR"));
            frame.bind(&kind, QStringLiteral("GD01_INDTIPOSOGG"));
        }
        QVariant stored(const QString &sql) { return database.scalar(sql); }
    };

private slots:
    void controlsFollowTheCurrentRow()
    {
        Fixture f;
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse));
        QCOMPARE(f.code.text(), QStringLiteral("A"));
        QCOMPARE(f.kind.currentText(), QStringLiteral("Cliente"));
        f.frame.recordset()->moveNext();
        QCOMPARE(f.description.text(), QStringLiteral("Seconda"));
        QCOMPARE(f.kind.currentText(), QStringLiteral("Fornitore"));
        f.frame.recordset()->moveNext(); // EOF: nothing to show
        QVERIFY(f.code.text().isEmpty());
        QCOMPARE(f.kind.currentIndex(), -1);
    }

    void editingSavesThroughTheEvents()
    {
        Fixture f;
        QSignalSpy status(&f.frame, &fw::RecordFrame::ChangeStatus);
        bool refuse = true;
        int validations = 0;
        connect(&f.frame, &fw::RecordFrame::ValidateRecord, this, [&](bool &) { ++validations; });
        connect(&f.frame, &fw::RecordFrame::BeforeUpdate, this, [&](bool &cancel) {
            cancel = refuse;
            f.frame.recordset()->setValue(QStringLiteral("GD01_UTENTEVAR"), QStringLiteral("tester"));
        });

        f.description.setText(QStringLiteral("Rinominata"));
        f.kind.setCurrentIndex(1);
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Edit));
        QCOMPARE(status.size(), 1);
        QCOMPARE(f.frame.update(), false); // refused: nothing written
        QCOMPARE(
            f.stored(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'A'")).toString(),
            QStringLiteral("Prima"));

        refuse = false;
        QCOMPARE(f.frame.update(), true);
        QCOMPARE(validations, 2);
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse));
        QCOMPARE(f.stored(QStringLiteral("SELECT GD01_DESCR || '/' || GD01_INDTIPOSOGG || '/' || GD01_UTENTEVAR FROM "
                                         "GD01_TIPODISTINTA WHERE GD01_CODICE = 'A'"))
                     .toString(),
                 QStringLiteral("Rinominata/1/tester"));
    }

    void undoRestoresTheRow()
    {
        Fixture f;
        QSignalSpy undone(&f.frame, &fw::RecordFrame::AfterUndo);
        f.description.setText(QStringLiteral("Da scartare"));
        f.frame.undo();
        QCOMPARE(undone.size(), 1);
        QCOMPARE(f.description.text(), QStringLiteral("Prima"));
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse));
        QVERIFY(f.frame.mayClose());
        QVERIFY(f.log.isQuiet());
    }

    void newRowIsInsertedWithItsKey()
    {
        Fixture f;
        QSignalSpy added(&f.frame, &fw::RecordFrame::AfterAddNew);
        f.frame.addNew();
        QCOMPARE(added.size(), 1);
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Insert));
        QVERIFY(f.code.text().isEmpty());
        f.code.setText(QStringLiteral("C"));
        f.description.setText(QStringLiteral("Terza"));
        f.frame.recordset()->setValue(QStringLiteral("GD01_DITTA_CG18"), 1);
        QVERIFY(f.frame.update());
        QCOMPARE(f.stored(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA")).toInt(), 3);
        f.frame.requery();
        QCOMPARE(f.code.text(), QStringLiteral("C")); // still on the row just saved
    }

    void deleteAsksItsHandlerFirst()
    {
        Fixture f;
        bool refuse = true;
        connect(&f.frame, &fw::RecordFrame::BeforeDelete, this, [&](bool &cancel) { cancel = refuse; });
        QCOMPARE(f.frame.deleteCurrent(), false);
        refuse = false;
        QCOMPARE(f.frame.deleteCurrent(), true);
        QCOMPARE(f.stored(QStringLiteral("SELECT COUNT(*) FROM GD01_TIPODISTINTA")).toInt(), 1);
    }

    void closingWithPendingChangesAsks()
    {
        Fixture f;
        f.description.setText(QStringLiteral("Modificata"));
        f.log.answerNext({fw::Answer::Cancel, fw::Answer::No});
        QCOMPARE(f.frame.mayClose(), false);
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Edit));
        QCOMPARE(f.frame.mayClose(), true);
        QCOMPARE(f.description.text(), QStringLiteral("Prima"));
        QCOMPARE(f.log.messages().size(), 2);
        QCOMPARE(f.log.messages().first().style, 3 + 32 + 512); // Yes/No/Cancel, Cancel default
        QCOMPARE(f.log.messages().first().title, QStringLiteral("Prova"));

        f.frame.addNew(); // an untouched new row is no pending change
        QVERIFY(f.frame.mayClose());
        QCOMPARE(f.log.messages().size(), 2);
    }

    void failuresReachTheCaller()
    {
        Fixture f;
        f.frame.addNew(); // GD01_DITTA_CG18 is mandatory
        f.code.setText(QStringLiteral("X"));
        f.description.setText(QStringLiteral("Senza ditta"));
        QVERIFY_THROWS_EXCEPTION(db::DatabaseError, f.frame.update());
        QVERIFY_THROWS_EXCEPTION(db::DatabaseError, f.frame.open(QStringLiteral("SELECT * FROM NESSUNA")));
    }

    // A watched control is filled by the form, never by the frame; what the user types in it
    // is a change of the row, which the handlers write when it is saved.
    void watchedControlsCountAsChangesOfTheRow()
    {
        Fixture f;
        QLineEdit shownCode;
        f.frame.watch(&shownCode);
        int shown = 0;
        connect(&f.frame, &fw::RecordFrame::rowShown, this, [&] {
            ++shown;
            shownCode.setText(f.frame.recordset()->value(QStringLiteral("GD01_CODICE")).toString().toLower());
        });
        f.frame.recordset()->moveNext();
        QVERIFY(shown >= 1);
        QCOMPARE(shownCode.text(), QStringLiteral("b"));
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse)); // filling is no change

        connect(&f.frame, &fw::RecordFrame::BeforeUpdate, this,
                [&](bool &) { f.frame.recordset()->setValue(QStringLiteral("GD01_DESCR"), shownCode.text()); });
        shownCode.setText(QStringLiteral("scritto"));
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Edit));
        QVERIFY(f.frame.update());
        QCOMPARE(
            f.stored(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'B'")).toString(),
            QStringLiteral("scritto"));

        shownCode.setText(QStringLiteral("annullato"));
        f.frame.undo();
        QCOMPARE(shownCode.text(), QStringLiteral("b")); // shown again from the row
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse));
    }

    // Leaving a row drops a new row nothing was typed in and saves pending changes through the
    // handlers, which may refuse.
    void leavingARowSavesOrDropsIt()
    {
        Fixture f;
        f.frame.addNew();
        QCOMPARE(f.frame.recordset()->recordCount(), 3);
        QVERIFY(f.frame.leaveRow());
        QCOMPARE(f.frame.recordset()->recordCount(), 2);
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Browse));

        bool refuse = true;
        connect(&f.frame, &fw::RecordFrame::ValidateRecord, this, [&](bool &cancel) { cancel = refuse; });
        f.description.setText(QStringLiteral("Cambiata"));
        QVERIFY(!f.frame.leaveRow());
        QCOMPARE(f.frame.state(), int(fw::RecordFrame::Edit));
        refuse = false;
        QVERIFY(f.frame.leaveRow());
        QCOMPARE(
            f.stored(QStringLiteral("SELECT GD01_DESCR FROM GD01_TIPODISTINTA WHERE GD01_CODICE = 'A'")).toString(),
            QStringLiteral("Cambiata"));
    }
};

QTEST_MAIN(TestRecordFrame)
#include "tst_recordframe.moc"
