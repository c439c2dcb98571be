#include "db/sqlitefile.h"
#include "framework/report/defaultreportengine.h"
#include "framework/report/reportlayoutreader.h"
#include "tests/support/pdftext.h"
#include "tests/support/testdatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

// The report engine of a standalone installation, on the demo data: the types' list to PDF, the
// print dialog and what it remembers, a cancel in the middle, and the destinations that fail.
class TestDefaultReportEngine : public QObject
{
    Q_OBJECT

    static const QString typesQuery;

    std::unique_ptr<fw::DefaultReportEngine> engine(const QString &user, const db::ConnectionPtr &connection)
    {
        auto result = std::make_unique<fw::DefaultReportEngine>(user);
        result->setSettingsFile(m_settings.filePath(QStringLiteral("stampe.ini")));
        result->setTitle(QStringLiteral("Tipi Distinta"));
        result->setReportFile(QStringLiteral("MO09_TIPODIST_01.rpt"));
        result->setConnection(connection);
        result->setQuery(typesQuery);
        return result;
    }

    // Acts on the first visible top-level widget of that name, as soon as it shows up while
    // the engine runs its own event loops.
    static void whenShown(const QString &name, const std::function<void(QWidget *)> &act)
    {
        auto *poll = new QTimer;
        QObject::connect(poll, &QTimer::timeout, poll, [poll, name, act] {
            for (QWidget *widget : QApplication::topLevelWidgets()) {
                if (widget->objectName() == name && widget->isVisible()) {
                    poll->stop();
                    poll->deleteLater();
                    act(widget);
                    return;
                }
            }
        });
        poll->start(0);
    }

    template<typename Control>
    static Control *child(QWidget *dialog, const QString &name)
    {
        auto *found = dialog->findChild<Control *>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }

    static QString runError(fw::DefaultReportEngine &engine)
    {
        try {
            engine.run();
        } catch (const std::exception &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    QTemporaryDir m_settings;

private slots:
    void initTestCase()
    {
        if (!PdfText::toolAvailable())
            QFAIL("pdftotext is missing: scripts/setup-debian.sh installs poppler-utils");
    }

    void printsTheTypesToPdf()
    {
        TestDatabase database(TestDatabase::DemoData);
        QTemporaryDir folder;
        auto types = engine(QStringLiteral("anna"), database.connection());
        types->setInteractive(false);
        types->setRunMode(fw::ReportEngine::RunMode::Pdf);
        types->setOutputFile(folder.filePath(QStringLiteral("tipi.pdf")));
        int before = 0;
        QString refused;
        connect(types.get(), &fw::ReportEngine::BeforePrintReport, this, [&] {
            ++before;
            try {
                types->setParameter(QStringLiteral("NOTE"), QStringLiteral("x")); // the layout has none
            } catch (const std::invalid_argument &error) {
                refused = QString::fromUtf8(error.what());
            }
        });
        types->run();
        QCOMPARE(before, 1);
        QCOMPARE(refused,
                 QStringLiteral("Il modello di stampa \"%1\" non ha il parametro NOTE.").arg(types->layoutPath()));
        QVERIFY(!types->wasCancelled());
        QCOMPARE(types->pageCount(), 1);

        const PdfText text(folder.filePath(QStringLiteral("tipi.pdf")));
        QVERIFY2(text.isValid(), qPrintable(text.error()));
        const QStringList lines = text.lines(1);
        QCOMPARE(lines.value(0), QStringLiteral("Tipi Distinta"));
        QCOMPARE(lines.value(1), QStringLiteral("Ditta Codice Descrizione Tipo Divisione Priorità listini"));
        QStringList codes;
        for (const QString &line : lines.mid(2, 7))
            codes << line.section(QLatin1Char(' '), 1, 1);
        QCOMPARE(codes, QStringList({"CLI-ALI", "CLI-EXP", "CLI-GDO", "CLI-HOR", "CLI-TOS", "FOR-MP", "FOR-SRV"}));
        QVERIFY2(lines.value(2).startsWith(QStringLiteral("1 CLI-ALI Rete vendita alimentare Cliente ALI ")),
                 qPrintable(lines.value(2)));
        QVERIFY(lines.value(7).startsWith(QStringLiteral("1 FOR-MP Fornitori materie prime Fornitore")));
        QVERIFY(lines.last().endsWith(QStringLiteral("Pagina 1 di 1")));
    }

    // The dialog proposes the user's name the first time, then each user's last answers; a PDF
    // cannot be chosen without a file; Annulla prints nothing and is no error.
    void thePrintDialogRemembersEachUser()
    {
        TestDatabase database(TestDatabase::DemoData);
        QTemporaryDir folder;
        const QString pdf = folder.filePath(QStringLiteral("tipi.pdf"));

        auto first = engine(QStringLiteral("anna"), database.connection());
        QString proposed;
        bool okWithoutFile = true;
        whenShown(QStringLiteral("FRM_STAMPA"), [&](QWidget *dialog) {
            proposed = child<QLineEdit>(dialog, QStringLiteral("TXT_ESEGUITODA"))->text();
            child<QLineEdit>(dialog, QStringLiteral("TXT_ESEGUITODA"))->setText(QStringLiteral("Anna Bianchi"));
            child<QLineEdit>(dialog, QStringLiteral("TXT_DESTINATOA"))->setText(QStringLiteral("Direzione vendite"));
            child<QLineEdit>(dialog, QStringLiteral("TXT_NOTE"))->setText(QStringLiteral("Verifica trimestrale"));
            child<QRadioButton>(dialog, QStringLiteral("OPT_PDF"))->click();
            okWithoutFile = child<QAbstractButton>(dialog, QStringLiteral("CMD_OK"))->isEnabled();
            child<QLineEdit>(dialog, QStringLiteral("TXT_FILEPDF"))->setText(pdf);
            child<QAbstractButton>(dialog, QStringLiteral("CMD_OK"))->click();
        });
        first->run();
        QCOMPARE(proposed, QStringLiteral("anna"));
        QVERIFY(!okWithoutFile);
        QVERIFY(QFileInfo::exists(pdf));
        QCOMPARE(first->printedBy(), QStringLiteral("Anna Bianchi"));
        QCOMPARE(first->printedFor(), QStringLiteral("Direzione vendite"));
        QCOMPARE(first->notes(), QStringLiteral("Verifica trimestrale"));

        QFile::remove(pdf);
        auto again = engine(QStringLiteral("anna"), database.connection());
        QStringList shown;
        whenShown(QStringLiteral("FRM_STAMPA"), [&](QWidget *dialog) {
            for (const char *name : {"TXT_ESEGUITODA", "TXT_DESTINATOA", "TXT_NOTE", "TXT_FILEPDF"})
                shown << child<QLineEdit>(dialog, QLatin1String(name))->text();
            shown << (child<QRadioButton>(dialog, QStringLiteral("OPT_PDF"))->isChecked() ? "pdf" : "other");
            child<QAbstractButton>(dialog, QStringLiteral("CMD_ANNULLA"))->click();
        });
        int before = 0;
        connect(again.get(), &fw::ReportEngine::BeforePrintReport, this, [&] { ++before; });
        again->run();
        QCOMPARE(shown, QStringList({"Anna Bianchi", "Direzione vendite", "Verifica trimestrale", pdf, "pdf"}));
        QVERIFY(again->wasCancelled());
        QCOMPARE(before, 0);
        QVERIFY(!QFileInfo::exists(pdf));

        auto other = engine(QStringLiteral("bruno"), database.connection());
        whenShown(QStringLiteral("FRM_STAMPA"), [&](QWidget *dialog) {
            shown = {child<QLineEdit>(dialog, QStringLiteral("TXT_ESEGUITODA"))->text(),
                     child<QLineEdit>(dialog, QStringLiteral("TXT_NOTE"))->text(),
                     child<QRadioButton>(dialog, QStringLiteral("OPT_ANTEPRIMA"))->isChecked() ? "preview" : "other"};
            child<QAbstractButton>(dialog, QStringLiteral("CMD_ANNULLA"))->click();
        });
        other->run();
        QCOMPARE(shown, QStringList({"bruno", "", "preview"}));
    }

    // "Annulla" on the progress box stops the drawing: the PDF that was there stays as it was
    // and nothing else is left in its folder.
    void aCancelStopsCleanly()
    {
        TestDatabase database;
        QTemporaryDir layouts;
        QFile layout(layouts.filePath(QStringLiteral("RIGHE.layout")));
        QVERIFY(layout.open(QIODevice::WriteOnly));
        layout.write("layout 1\ndetail\n  row 4\n    field 0 40 GD04_CLIFOR_CG44\nend\n");
        layout.close();
        dbsetup::SqliteFile(database.path())
            .exec(QStringLiteral("WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 3000) "
                                 "INSERT INTO GD04_STDISTINTA (GD04_KEY, GD04_DITTA_CG18, GD04_CLIFOR_CG44) "
                                 "SELECT 'K', 1, I FROM N"));

        QTemporaryDir folder;
        const QString pdf = folder.filePath(QStringLiteral("righe.pdf"));
        QFile old(pdf);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("vecchio");
        old.close();

        QWidget window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        fw::DefaultReportEngine rows(QStringLiteral("anna"));
        rows.setSettingsFile(m_settings.filePath(QStringLiteral("annulla.ini")));
        rows.setReportFolder(layouts.path());
        rows.setReportFile(QStringLiteral("RIGHE.rpt"));
        rows.setConnection(database.connection());
        rows.setQuery(QStringLiteral("SELECT GD04_CLIFOR_CG44 FROM GD04_STDISTINTA ORDER BY GD04_ID"));
        rows.setProgressDelay(0);
        QStringList questions;
        bool keptOpen = false;
        const auto answer = [&questions](QMessageBox::StandardButton button) {
            whenShown(QStringLiteral("dlgSostituisciFile"), [&questions, button](QWidget *box) {
                questions << static_cast<QMessageBox *>(box)->text();
                static_cast<QMessageBox *>(box)->button(button)->click();
            });
        };
        whenShown(QStringLiteral("FRM_STAMPA"), [&](QWidget *dialog) {
            child<QRadioButton>(dialog, QStringLiteral("OPT_PDF"))->click();
            child<QLineEdit>(dialog, QStringLiteral("TXT_FILEPDF"))->setText(pdf);
            // The file is there: replacing it takes a Yes.
            answer(QMessageBox::No);
            child<QAbstractButton>(dialog, QStringLiteral("CMD_OK"))->click();
            keptOpen = dialog->isVisible();
            answer(QMessageBox::Yes);
            child<QAbstractButton>(dialog, QStringLiteral("CMD_OK"))->click();
            whenShown(QStringLiteral("PRG_LAVORO"), [](QWidget *progress) {
                QVERIFY(progress->findChild<QAbstractButton *>());
                static_cast<QProgressDialog *>(progress)->cancel();
            });
        });
        rows.run();
        QVERIFY(keptOpen);
        QCOMPARE(questions.size(), 2);
        QCOMPARE(questions.first(), QStringLiteral("Il file \"%1\" esiste già. Sostituirlo?").arg(pdf));
        QVERIFY(rows.wasCancelled());
        QVERIFY(rows.writtenPdf().isEmpty());
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("vecchio"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList {"righe.pdf"});
    }

    void whatCannotBePrintedSaysWhy()
    {
        TestDatabase database(TestDatabase::DemoData);
        QTemporaryDir folder;
        auto types = engine(QStringLiteral("anna"), database.connection());
        types->setInteractive(false);
        types->setRunMode(fw::ReportEngine::RunMode::Pdf);

        types->setOutputFile(folder.path());
        QCOMPARE(runError(*types),
                 QStringLiteral("Impossibile scrivere il file PDF \"%1\": è una cartella.").arg(folder.path()));
        const QString nowhere = folder.filePath(QStringLiteral("manca/tipi.pdf"));
        types->setOutputFile(nowhere);
        QVERIFY(runError(*types).startsWith(QStringLiteral("Impossibile scrivere il file PDF \"%1\": ").arg(nowhere)));

        types->setRunMode(fw::ReportEngine::RunMode::Print);
        types->setPrinterName(QStringLiteral("STAMPANTE_INESISTENTE"));
        QCOMPARE(runError(*types), QStringLiteral("Stampante non disponibile: \"STAMPANTE_INESISTENTE\"."));
        types->setRunMode(fw::ReportEngine::RunMode::Preview);
        QCOMPARE(runError(*types),
                 QStringLiteral("L'anteprima di stampa richiede una finestra: indicare un file PDF o una stampante."));

        // A field the query does not give names the layout's line; the report file maps to ours.
        types->setRunMode(fw::ReportEngine::RunMode::Pdf);
        types->setOutputFile(folder.filePath(QStringLiteral("tipi.pdf")));
        types->setQuery(QStringLiteral("SELECT MO09_CODDIST FROM MO09_TIPODIST"));
        QCOMPARE(runError(*types),
                 QStringLiteral("Modello di stampa \"%1\", riga 26: il campo MO09_DITTA non è tra "
                                "quelli letti dalla stampa")
                     .arg(types->layoutPath()));
        QVERIFY(types->layoutPath().endsWith(QStringLiteral("/reports/MO09_TIPODIST_01.layout")));
        QVERIFY(!QFileInfo::exists(folder.filePath(QStringLiteral("tipi.pdf"))));
    }
};

const QString TestDefaultReportEngine::typesQuery = QStringLiteral("SELECT * FROM MO09_TIPODIST ORDER BY MO09_CODDIST");

QTEST_MAIN(TestDefaultReportEngine)
#include "tst_defaultreportengine.moc"
