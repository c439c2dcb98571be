#include "framework/messageboxlogservice.h"
#include "framework/messagestyle.h"
#include "framework/unattendedrun.h"
#include "platform/db/databaseerror.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <optional>

// The desktop log service as the user meets it: each style gives its buttons, icon and default
// button; the error dialog names the procedure and lists what was logged before it.
class TestMessageBoxLogService : public QObject
{
    Q_OBJECT

    // What the box looked like when it appeared.
    struct Seen
    {
        QList<QMessageBox::StandardButton> buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        std::optional<QMessageBox::StandardButton> defaultButton;
        QString title;
        QString text;
        bool onTop = false;
        QStringList captions;
    };

    // Answers the next box that opens with press(box) once the box's event loop runs.
    static void whenTheBoxOpens(Seen *seen, std::function<void(QMessageBox *)> press)
    {
        QTimer::singleShot(0, qApp, [seen, press] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box) {
                whenTheBoxOpens(seen, press);
                return;
            }
            for (QAbstractButton *button : box->buttons()) {
                seen->buttons << box->standardButton(button);
                seen->captions << button->text();
            }
            seen->icon = box->icon();
            if (box->defaultButton())
                seen->defaultButton = box->standardButton(box->defaultButton());
            seen->title = box->windowTitle();
            seen->text = box->text();
            seen->onTop = box->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
            press(box);
        });
    }

    static std::function<void(QMessageBox *)> pressing(QMessageBox::StandardButton which)
    {
        return [which](QMessageBox *box) { box->button(which)->click(); };
    }

    static std::function<void(QMessageBox *)> pressingEscape()
    {
        return [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); };
    }

    static QList<QMessageBox::StandardButton> sorted(QList<QMessageBox::StandardButton> buttons)
    {
        std::sort(buttons.begin(), buttons.end());
        return buttons;
    }

private slots:
    // Whatever the system's language, the buttons read in Italian.
    void buttonsSpeakItalian()
    {
        fw::MessageBoxLogService log;
        Seen question;
        whenTheBoxOpens(&question, pressing(QMessageBox::No));
        log.showMessage(QStringLiteral("Domanda"), QStringLiteral("Titolo"), fw::MessageStyle::YesNoWarning);
        question.captions.sort();
        QCOMPARE(question.captions, QStringList({QStringLiteral("No"), QStringLiteral("Sì")}));
        Seen error;
        whenTheBoxOpens(&error, pressing(QMessageBox::Abort));
        log.showMessage(QStringLiteral("Errore"), QStringLiteral("Titolo"), fw::MessageStyle::ErrorDialog);
        error.captions.sort();
        QCOMPARE(error.captions,
                 QStringList({QStringLiteral("Ignora"), QStringLiteral("Interrompi"), QStringLiteral("Riprova")}));
    }

    void stylesGiveButtonsIconAndDefault_data()
    {
        using B = QMessageBox::StandardButton;
        QTest::addColumn<int>("style");
        QTest::addColumn<QList<QMessageBox::StandardButton>>("buttons");
        QTest::addColumn<int>("icon");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<int>("pressed");
        QTest::addColumn<int>("answer");

        QTest::newRow("48 warning") << 48 << QList<B> {B::Ok} << int(QMessageBox::Warning) << int(B::Ok) << int(B::Ok)
                                    << int(fw::Answer::Ok);
        QTest::newRow("64 notice") << 64 << QList<B> {B::Ok} << int(QMessageBox::Information) << int(B::Ok)
                                   << int(B::Ok) << int(fw::Answer::Ok);
        QTest::newRow("308 yes/no, No default, Yes taken")
            << 308 << QList<B> {B::Yes, B::No} << int(QMessageBox::Warning) << int(B::No) << int(B::Yes)
            << int(fw::Answer::Yes);
        QTest::newRow("292 question") << 292 << QList<B> {B::Yes, B::No} << int(QMessageBox::Question) << int(B::No)
                                      << int(B::No) << int(fw::Answer::No);
        QTest::newRow("4370 error dialog, Ignore taken")
            << 4370 << QList<B> {B::Abort, B::Retry, B::Ignore} << int(QMessageBox::Critical) << int(B::Retry)
            << int(B::Ignore) << int(fw::Answer::Ignore);
        QTest::newRow("yes/no/cancel, Cancel default")
            << 3 + 32 + 512 << QList<B> {B::Yes, B::No, B::Cancel} << int(QMessageBox::Question) << int(B::Cancel)
            << int(B::No) << int(fw::Answer::No);
        QTest::newRow("ok/cancel, first default") << 1 + 16 << QList<B> {B::Ok, B::Cancel} << int(QMessageBox::Critical)
                                                  << int(B::Ok) << int(B::Cancel) << int(fw::Answer::Cancel);
        QTest::newRow("retry/cancel") << 5 << QList<B> {B::Retry, B::Cancel} << int(QMessageBox::NoIcon)
                                      << int(B::Retry) << int(B::Retry) << int(fw::Answer::Retry);
    }

    void stylesGiveButtonsIconAndDefault()
    {
        QFETCH(int, style);
        QFETCH(QList<QMessageBox::StandardButton>, buttons);
        QFETCH(int, icon);
        QFETCH(int, defaultButton);
        QFETCH(int, pressed);
        QFETCH(int, answer);

        fw::MessageBoxLogService log;
        Seen seen;
        whenTheBoxOpens(&seen, pressing(QMessageBox::StandardButton(pressed)));
        QCOMPARE(log.showMessage(QStringLiteral("Testo"), QStringLiteral("Titolo"), style), answer);
        QCOMPARE(sorted(seen.buttons), sorted(buttons));
        QCOMPARE(int(seen.icon), icon);
        QVERIFY(seen.defaultButton.has_value());
        QCOMPARE(int(*seen.defaultButton), defaultButton);
        QCOMPARE(seen.title, QStringLiteral("Titolo"));
        QCOMPARE(seen.text, QStringLiteral("Testo"));
        QCOMPARE(seen.onTop, bool(style & fw::MessageStyle::SystemModal)); // system-modal stays in front
        // The unattended service answers what the default button would.
        QCOMPARE(fw::MessageBoxLogService::defaultAnswer(style), [&] {
            switch (defaultButton) {
            case QMessageBox::Ok: return int(fw::Answer::Ok);
            case QMessageBox::Cancel: return int(fw::Answer::Cancel);
            case QMessageBox::Retry: return int(fw::Answer::Retry);
            case QMessageBox::No: return int(fw::Answer::No);
            default: return -1;
            }
        }());
    }

    // Escape is Cancel where the box has one; otherwise the default button's answer.
    void escapeAnswersCancelOrTheDefault_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("answer");
        QTest::newRow("yes/no/cancel, Yes default") << 3 << int(fw::Answer::Cancel);
        QTest::newRow("yes/no, No default") << 308 << int(fw::Answer::No);
        QTest::newRow("warning") << 48 << int(fw::Answer::Ok);
        QTest::newRow("error dialog leaves") << 4370 << int(fw::Answer::Abort);
    }

    void escapeAnswersCancelOrTheDefault()
    {
        QFETCH(int, style);
        QFETCH(int, answer);
        fw::MessageBoxLogService log;
        Seen seen;
        whenTheBoxOpens(&seen, pressingEscape());
        QCOMPARE(log.showMessage(QStringLiteral("Uscire?"), QStringLiteral("Titolo"), style), answer);
    }

    // The error dialog names the procedure, then what was logged since the previous dialog;
    // its title joins the application's title and the form's caption.
    void errorDialogListsWhatWasLogged()
    {
        fw::MessageBoxLogService log;
        log.logError(QStringLiteral("CaricaDistinta"), QStringLiteral("no such table: GD02_DISTINTA"));
        log.logDatabaseErrors(
            {{QStringLiteral("no such table: GD02_DISTINTA"), QStringLiteral("SQLite"), QString(), 1},
             {QStringLiteral("Login non riuscito"), QStringLiteral("ODBC"), QStringLiteral("28000"), 18456}});
        Seen seen;
        whenTheBoxOpens(&seen, pressing(QMessageBox::Retry));
        QCOMPARE(log.showErrorDialog(QStringLiteral("CaricaDistinta"), QStringLiteral("VRAX Prove"),
                                     QStringLiteral("Distinta di classificazione"), fw::MessageStyle::ErrorDialog),
                 int(fw::Answer::Retry));
        QCOMPARE(seen.title, QStringLiteral("VRAX Prove - Distinta di classificazione"));
        QCOMPARE(seen.text,
                 QStringLiteral("Si è verificato un errore in CaricaDistinta.\n"
                                "\nno such table: GD02_DISTINTA\n"
                                "\nErrori del database:\n"
                                "SQLite (1): no such table: GD02_DISTINTA\n"
                                "ODBC [28000] (18456): Login non riuscito"));
        QVERIFY(seen.onTop);

        // The next dialog starts afresh; without a caption the title is the application's.
        Seen second;
        whenTheBoxOpens(&second, pressing(QMessageBox::Abort));
        QCOMPARE(log.showErrorDialog(QStringLiteral("Form_Load"), QStringLiteral("VRAX Prove"), QString(),
                                     fw::MessageStyle::ErrorDialog),
                 int(fw::Answer::Abort));
        QCOMPARE(second.title, QStringLiteral("VRAX Prove"));
        QCOMPARE(second.text, QStringLiteral("Si è verificato un errore in Form_Load."));
    }

    // Unattended, nothing waits for a user and nothing is retried: the first error dialog hands
    // its text (procedure and database message) to the run and answers Abort, and so does every
    // later one, without replacing the first report.
    void unattendedErrorsAbortAndEndTheRun()
    {
        const auto run = std::make_shared<fw::UnattendedRun>();
        fw::MessageBoxLogService log(run);
        log.logError(QStringLiteral("CaricaDistinta"), QStringLiteral("database disk image is malformed"));
        log.logDatabaseErrors(
            {{QStringLiteral("database disk image is malformed"), QStringLiteral("SQLite"), QString(), 11}});
        QCOMPARE(log.showErrorDialog(QStringLiteral("CaricaDistinta"), QStringLiteral("VRAX"),
                                     QStringLiteral("Distinta"), fw::MessageStyle::ErrorDialog),
                 int(fw::Answer::Abort));
        QVERIFY(run->failed());
        QCOMPARE(run->report(),
                 QStringLiteral("VRAX - Distinta: Si è verificato un errore in CaricaDistinta.\n"
                                "\ndatabase disk image is malformed\n"
                                "\nErrori del database:\n"
                                "SQLite (11): database disk image is malformed"));
        log.logError(QStringLiteral("Form_Activate"), QStringLiteral("altro"));
        QCOMPARE(log.showErrorDialog(QStringLiteral("Form_Activate"), QStringLiteral("VRAX"), QString(),
                                     fw::MessageStyle::ErrorDialog),
                 int(fw::Answer::Abort));
        QVERIFY(run->report().contains(QStringLiteral("CaricaDistinta")));
        // A question whose default would retry is cancelled instead.
        QCOMPARE(log.showMessage(QStringLiteral("Riprovare?"), QStringLiteral("VRAX"), fw::MessageStyle::RetryCancel),
                 int(fw::Answer::Cancel));
        QVERIFY(!QApplication::activeModalWidget());
    }
};

QTEST_MAIN(TestMessageBoxLogService)
#include "tst_messageboxlogservice.moc"
